// The macros of a file: what it defines, what it calls, and what the calls become.
//
// The facade of this folder: what others include.
#ifndef QUILLET_MACRO_EXPANDFILE_H
#define QUILLET_MACRO_EXPANDFILE_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "macro/argumentreader.h"
#include "macro/commandcutter.h"
#include "macro/fault.h"
#include "macro/limits.h"
#include "macro/macro.h"
#include "platform/codepage.h"

namespace quillet::macro {

/// A file that another one includes.
struct IncludedFile {
    /// The same for the same file, however its path is written.
    std::string name;
    std::string text;  ///< In the code page of the file that is expanded.
    Layout layout;
};

/// Finds included files; this library opens none.
class IncludeResolver {
public:
    IncludeResolver() = default;
    IncludeResolver(const IncludeResolver&) = delete;
    IncludeResolver& operator=(const IncludeResolver&) = delete;
    virtual ~IncludeResolver() = default;

    /// The file that `includingFile` includes by `path`, as it is written there. False when there
    /// is none.
    [[nodiscard]] virtual bool Find(std::string_view path, const std::string& includingFile,
                                    IncludedFile& file) = 0;
};

/// How a file is to be read.
struct ExpansionOptions {
    const CodePage* pCodePage = &CodePage::Utf8();  ///< Borrowed.
    Layout layout;
    Limits limits;
    /// The file's own name, as the resolver would give it.
    std::string fileName;
};

/// A definition in the file itself. Byte offsets are in the file.
struct Definition {
    std::string name;  ///< As it is written, with "!" where it has one.
    long firstLine = 0;
    long lastLine = 0;
    std::size_t begin = 0;  ///< Of the word DEFINE.
    std::size_t bodyBegin = 0;
    std::size_t bodyEnd = 0;  ///< Where !ENDDEFINE begins.
    std::size_t end = 0;      ///< After the period of !ENDDEFINE, or the word.
    std::shared_ptr<const Macro> macro;
};

/// A call in the file itself, outside of all definitions. Byte offsets are in the file.
struct Call {
    std::string name;  ///< The macro's, as its definition writes it.
    long line = 0;
    std::size_t begin = 0;  ///< The call's bytes are [begin, end), without its period.
    std::size_t end = 0;
    /// The white space and the period [droppedBegin, droppedEnd) go as well when the expansion
    /// stands in place of the call. Empty when they stay.
    std::size_t droppedBegin = 0;
    std::size_t droppedEnd = 0;
    /// The expansion, with line breaks of the file's own kind. Empty after a fault.
    std::string text;
    /// Why the call is left as it is.
    std::optional<Fault> fault;
    /// What the call gives, as it is written there. Not whole when it cannot be read.
    GivenArguments arguments;
    /// The definition that was known at the call; of the file itself or of one that it includes.
    std::shared_ptr<const Macro> macro;
    /// All that were expanded for the call, or begun to be, once each: its own first, then those
    /// that it calls. Empty when the call cannot be read.
    std::vector<std::shared_ptr<const Macro>> expanded;
    /// The command that the call stands in: its bytes are [commandBegin, commandEnd), with its
    /// period.
    std::size_t commandBegin = 0;
    std::size_t commandEnd = 0;
};

/// An INCLUDE or INSERT command of the file itself.
struct Include {
    std::string path;  ///< As it is written.
    std::string file;  ///< The name of the file; empty when it was not found.
    long line = 0;
    std::size_t begin = 0;  ///< The command's bytes are [begin, end), without its period.
    std::size_t end = 0;
};

/// All that there is to tell of the macros of a file, in the order in which it stands there.
struct FileExpansion {
    std::vector<Definition> definitions;
    std::vector<Call> calls;
    std::vector<Include> includes;
    /// Definitions that define nothing and includes that could not be followed, also those of
    /// included files. What is wrong with calls stands with these.
    std::vector<Fault> faults;
};

/// Reads `source` and expands every call in it. A byte-order mark is skipped. `pResolver` may be
/// null: then no included file is found. Offsets and results are good as long as they are kept;
/// nothing is borrowed from the source.
///
/// Never fails as a whole. Linear in the source, the included files and the expansions.
[[nodiscard]] FileExpansion ExpandFile(std::string_view source, const ExpansionOptions& options,
                                       IncludeResolver* pResolver);

/// `source` with every call replaced that could be expanded; definitions and includes stay.
[[nodiscard]] std::string ExpandedText(std::string_view source, const FileExpansion& expansion);

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_EXPANDFILE_H
