#include "driver/outputwriter.h"

#include "driver/messagecatalogue.h"
#include "driver/reasons.h"

namespace quillet {

namespace {

// An indentation this deep is a runaway; one blank shows that there was one.
constexpr std::size_t kIndentLimit = 21;

// What a command that ends in `text` is closed with: one period, whoever wrote it, and a line end.
std::string_view ClosingOf(std::string_view text) { return text.ends_with('.') ? "\n" : ".\n"; }

}  // namespace

void WriteCommand(std::string_view text, OutputFile& out, std::size_t indent) {
    if (text.empty()) return;
    if (indent != 0) out.Write(std::string(indent < kIndentLimit ? indent : 1, ' '));
    if (text == "\n") {
        out.Write(text);
    } else {
        WriteLastLines(text, out);
    }
}

void EndWithPeriod(std::string& text) {
    if (text.empty()) return;
    if (text.ends_with('\n')) text.pop_back();
    if (!text.ends_with('.')) text += '.';
}

void WriteLastLines(std::string_view lines, OutputFile& out) {
    if (lines.ends_with('\n')) lines.remove_suffix(1);
    out.Write(lines);
    out.Write(ClosingOf(lines));
}

void WriteCommentedOut(std::string_view text, OutputFile& out) {
    while (true) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        out.Write(" *");
        out.Write(line);
        if (end == std::string_view::npos) return out.Write(ClosingOf(line));
        out.Write("\n");
        text.remove_prefix(end + 1);
    }
}

void WriteStarred(std::string_view message, OutputFile& out) {
    out.Write(kStars);
    WriteLastLines(message, out);
}

void WriteTokenizingError(const ParseError& error, OutputFile& out) {
    const bool hasKind = error.Kind() != ParseErrorKind::kNone;
    WriteStarred(
        hasKind ? FillPosition(kTokenizingPosition, error.Line(), error.Column()) : std::string(),
        out);
    WriteStarred(ReasonOf(ErrorKindOf(error.Kind())).message, out);
}

}  // namespace quillet
