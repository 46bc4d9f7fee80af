// Fingerprints of what files hold.
#ifndef QUILLET_MIGRATE_CONTENTHASH_H
#define QUILLET_MIGRATE_CONTENTHASH_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "quillet.h"

namespace quillet::migrate {

/// 128 bits by which two contents are told apart; that two differ and it does not is not to be
/// expected of any archive. No protection against someone who makes such contents on purpose.
struct ContentHash {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    friend bool operator==(const ContentHash&, const ContentHash&) = default;
};

/// 32 hexadecimal digits. And back; nothing for any other text.
[[nodiscard]] std::string TextOf(const ContentHash& hash);
[[nodiscard]] std::optional<ContentHash> ContentHashOf(std::string_view text);

/// Hashes a content that comes in pieces of any size.
class ContentHasher {
public:
    ContentHasher();
    ~ContentHasher();
    ContentHasher(const ContentHasher&) = delete;
    ContentHasher& operator=(const ContentHasher&) = delete;

    /// Begins anew.
    void Clear();
    void Add(std::string_view bytes);
    /// That of everything since the beginning.
    [[nodiscard]] ContentHash Value() const;

private:
    struct State;

    std::unique_ptr<State> m_state;
};

/// Hashes the rest of `input`; look at `input.Failed` afterwards.
[[nodiscard]] ContentHash HashRest(TextInput& input);

/// 16 hexadecimal digits that change with every single damage to `text`, and very probably with
/// any other.
[[nodiscard]] std::string ChecksumOf(std::string_view text);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_CONTENTHASH_H
