// The files of SOURCE that others include, read for the macros in them.
#ifndef QUILLET_MIGRATE_INCLUDEDTEXTS_H
#define QUILLET_MIGRATE_INCLUDEDTEXTS_H

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "migrate/contenthash.h"
#include "migrate/encodings.h"
#include "migrate/includelookup.h"
#include "migrate/layouts.h"
#include "platform/folder.h"
#include "quillet.h"

namespace quillet::migrate {

/// How the encoding of a text is named to the library.
struct TextInEncoding {
    TextEncoding encoding = TextEncoding::kUtf8;
    std::shared_ptr<const CodePage> named;  ///< What `kNamed` means.
};

/// The encoding that a conversion reads `text` in, by the same rule.
[[nodiscard]] TextInEncoding EncodingOfText(std::string_view text,
                                            const std::shared_ptr<const CodePage>& named);

/// How files are read that nobody has asked for by name.
struct IncludeSettings {
    const Folder& sourceRoot;
    Encodings& encodings;
    const EncodingRules& encodingRules;
    const LayoutRules& layoutRules;
    bool endsAtBlankLines = false;
};

/// A file as it is read, with layout, encoding and blank lines settled. Empty when no macro can be
/// defined in it, and nothing be included.
struct SettledText {
    std::string text;
    TextInEncoding encoding;
    bool batchMode = false;
    ContentHash hash;  ///< Of the file.

    /// Those that it is converted with.
    [[nodiscard]] Options ConversionOptions() const;
};

/// Finds and reads included files. Safe for threads.
class IncludedTexts {
public:
    /// The path below SOURCE that an INCLUDE means; nothing for none.
    using PathFinder = std::function<std::optional<std::string>(std::string_view path,
                                                                const std::string& includingFile)>;

    /// What `settings` refers to is borrowed.
    IncludedTexts(const IncludeSettings& settings, PathFinder findPath)
        : m_settings(settings), m_findPath(std::move(findPath)) {}

    /// Finds the file and puts it into the encoding of the text that includes it, `target`. A file
    /// without macros and includes comes without its text. False when there is none, or it cannot
    /// be read. `lookup` tells what was found in any case.
    [[nodiscard]] bool Find(std::string_view path, const std::string& includingFile,
                            const TextInEncoding& target, IncludedText& file,
                            IncludeLookup& lookup);

    /// The file with this path below SOURCE; null when it cannot be read.
    [[nodiscard]] std::shared_ptr<const SettledText> Read(const std::string& path);

    /// True when all would be found again as they were.
    [[nodiscard]] bool AreTheSame(const std::vector<IncludeLookup>& lookups);

private:
    [[nodiscard]] std::shared_ptr<const SettledText> ReadFile(const std::string& path) const;

    IncludeSettings m_settings;
    PathFinder m_findPath;
    std::mutex m_mutex;  // for what follows
    std::unordered_map<std::string, std::shared_ptr<const SettledText>> m_texts;
    std::uint64_t m_textBytes = 0;
};

/// False when no macro can be defined, and no file be included, in `text`.
[[nodiscard]] bool MayHoldMacros(std::string_view text);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_INCLUDEDTEXTS_H
