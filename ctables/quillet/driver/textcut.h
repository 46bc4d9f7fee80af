// A text as the conversion cuts it into commands, without converting any.
#ifndef QUILLET_DRIVER_TEXTCUT_H
#define QUILLET_DRIVER_TEXTCUT_H

#include <cstddef>
#include <functional>
#include <vector>

#include "driver/sourcelines.h"
#include "platform/codepage.h"
#include "tokenizer/commandkind.h"

namespace quillet {

/// Where a command stands, or lines that no command could be made of.
struct CommandExtent {
    long firstLine = 0;
    long lastLine = 0;
    CommandKind kind = CommandKind::kOrdinary;  ///< As it was cut.
    bool isReadable = true;                     ///< False for lines up to a tokenizing error.
    bool isEnded = false;                       ///< A period ends it, or END DATA does.
    /// The offset in the text where it ends: that of its period, if `isEnded` and it is no inline
    /// data; else the end of its last line.
    std::size_t end = 0;
};

/// What a text is cut into.
struct TextCut {
    std::vector<CommandExtent> extents;  ///< In order; no line is in two of them.
    bool hasError = false;               ///< A tokenizing error stands in a command that was cut.
};

/// How to cut.
struct CutSettings {
    bool batchMode = false;
    /// Also look for errors that do not matter to where commands end.
    bool checksTokens = false;
    /// Where blank lines end commands, by their numbers from 1; empty: nowhere.
    std::function<bool(long line)> endsAtBlankLine;
};

/// Cuts `lines`, and goes on after each tokenizing error with the line after it. Linear.
[[nodiscard]] TextCut CutText(const SourceLines& lines, const CodePage& codePage,
                              const CutSettings& settings);

/// The offset of the first token in the lines from `firstLine` to `lastLine`, as the tokenizer
/// finds it but that closed comments are passed over as well; the end of the last line when there
/// is none. A sign in the first column is passed over if `skipLeadingSign`.
[[nodiscard]] std::size_t FirstTextIn(const SourceLines& lines, long firstLine, long lastLine,
                                      bool skipLeadingSign);

/// True when `extent` is a comment for a person, too; for the conversion COMPUTE is one.
[[nodiscard]] bool IsRealComment(const SourceLines& lines, const CommandExtent& extent,
                                 bool batchMode);

}  // namespace quillet

#endif  // QUILLET_DRIVER_TEXTCUT_H
