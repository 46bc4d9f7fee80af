// The calls that files of SOURCE make of macros that others define.
#ifndef QUILLET_MIGRATE_MACROCALLS_H
#define QUILLET_MIGRATE_MACROCALLS_H

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <tuple>

#include "migrate/contenthash.h"
#include "migrate/includedtexts.h"
#include "quillet.h"

namespace quillet::migrate {

/// Calls of the macros of all files from others, which a file's own text does not tell of. Files
/// are added from any thread; once all are, it is constant.
class MacroCalls {
public:
    /// Adds the calls that the file with this path below SOURCE makes, as its conversion will find
    /// them. What cannot be read makes none.
    void AddFile(const std::string& path, IncludedTexts& texts);

    /// Tells the macros that `path` defines in `expansion` how often other files call them.
    void TellOf(const std::string& path, MacroExpansion& expansion) const;

    /// Changes with anything that `TellOf` tells of macros of the file; nothing where that is
    /// nothing.
    [[nodiscard]] std::optional<ContentHash> HashOf(const std::string& path) const;

private:
    struct Key {
        std::string file;
        long firstLine = 0;
        std::string name;

        friend bool operator<(const Key& left, const Key& right) {
            return std::tie(left.file, left.firstLine, left.name) <
                   std::tie(right.file, right.firstLine, right.name);
        }
    };
    struct Calls {
        long count = 0;
        long left = 0;
    };

    std::mutex m_mutex;
    std::map<Key, Calls> m_calls;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_MACROCALLS_H
