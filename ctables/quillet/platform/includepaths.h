// Which file of a folder an INCLUDE means.
#ifndef QUILLET_PLATFORM_INCLUDEPATHS_H
#define QUILLET_PLATFORM_INCLUDEPATHS_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillet {

/// The files of a folder, to be found by the paths that syntax files name them by. These were
/// written on another machine, often years ago, so that only their last components may still hold.
class IncludePaths {
public:
    /// `names` are paths relative to the folder, with "/" or "\". Linear in their number; a name
    /// takes its length for each of its components.
    explicit IncludePaths(const std::vector<std::string>& names);

    /// The index of the file that `path` means in `includingFile`, itself a path like the names:
    /// `path` as it stands, then relative to the including file, then the file with the longest
    /// tail of `path`, if it is the only one with that tail. Letter case (of ASCII letters) counts
    /// only where that decides between several. None when no file fits, or several do.
    [[nodiscard]] std::optional<std::size_t> Find(std::string_view path,
                                                  std::string_view includingFile) const;

private:
    struct Fits {
        std::size_t count = 0;
        std::size_t index = 0;
    };
    using FitsByPath = std::unordered_map<std::string, Fits>;

    static void Add(FitsByPath& fits, const std::string& path, std::size_t index);
    [[nodiscard]] static const Fits* FindIn(const FitsByPath& fits, const std::string& path);
    [[nodiscard]] static std::optional<std::size_t> OnlyOne(const FitsByPath& anyCase,
                                                            const FitsByPath& sameCase,
                                                            const std::string& path);

    // By the whole name and by each tail of it; in capitals and as they are.
    FitsByPath m_names, m_namesAsTheyAre;
    FitsByPath m_tails, m_tailsAsTheyAre;
    std::size_t m_longestName = 0;  // in bytes
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_INCLUDEPATHS_H
