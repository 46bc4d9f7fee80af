// The encodings that the files of an archive are written in.
#ifndef QUILLET_MIGRATE_ENCODINGS_H
#define QUILLET_MIGRATE_ENCODINGS_H

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "migrate/pattern.h"
#include "platform/utf16.h"
#include "quillet.h"

namespace quillet::migrate {

/// An encoding that somebody has named.
struct Encoding {
    std::string name;                          ///< As it was written first, by whomever.
    std::shared_ptr<const CodePage> codePage;  ///< Null for UTF-16,
    std::optional<ByteOrder> byteOrder = {};   ///< of which this is known then.
};

/// What all spellings of a name have in common: the name in lower case.
[[nodiscard]] std::string EncodingKeyOf(std::string_view name);

/// Finds encodings by name. Safe for threads; what it gives lives as long as it does.
class Encodings {
public:
    /// Null when the system does not know it, or syntax cannot be read in it.
    [[nodiscard]] const Encoding* Find(std::string_view name);

private:
    std::mutex m_mutex;
    std::map<std::string, std::unique_ptr<const Encoding>, std::less<>> m_found;
};

/// Which encoding the user wants which files to be read in, unless they are UTF-8. Constant once
/// it is filled.
class EncodingRules {
public:
    /// All are borrowed.
    void SetForAll(const Encoding& encoding) { m_pForAll = &encoding; }
    void Add(std::string_view pattern, const Encoding& encoding) {
        m_rules.emplace_back(NamePattern(pattern), &encoding);
    }

    /// For a file with this path below the root: what the last pattern says that matches, else
    /// that for all. Null when there is none.
    [[nodiscard]] const Encoding* ForPath(std::string_view path) const;

private:
    const Encoding* m_pForAll = nullptr;
    std::vector<std::pair<NamePattern, const Encoding*>> m_rules;
};

/// The name in a text that begins with a line "* Encoding: NAME.", blanks and letter case aside;
/// empty when it begins otherwise. `beginning` is as much of a text as there is, or that line.
[[nodiscard]] std::string_view EncodingNamedIn(std::string_view beginning);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_ENCODINGS_H
