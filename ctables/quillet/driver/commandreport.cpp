// What a program needs to show the reports of commands.
#include "platform/codepage.h"
#include "quillet.h"

namespace quillet {

namespace {

const CodePage& PageOf(TextEncoding encoding) {
    switch (encoding) {
        case TextEncoding::kUtf8:
            return CodePage::Utf8();
        case TextEncoding::kWindows1252:
            return CodePage::Windows1252();
        case TextEncoding::kSystem:
            break;
    }
    const CodePage* pSystem = CodePage::System();
    return pSystem != nullptr ? *pSystem : CodePage::Windows1252();
}

}  // namespace

std::string_view NameOf(ErrorKind kind) {
    switch (kind) {
        case ErrorKind::kNone:
            return "none";
        case ErrorKind::kUnclosedLiteral:
            return "unclosed-literal";
        case ErrorKind::kExponentWithoutDigits:
            return "exponent-without-digits";
        case ErrorKind::kInvalidNumber:
            return "invalid-number";
        case ErrorKind::kInvalidCharacter:
            return "invalid-character";
        case ErrorKind::kSubcommandSyntax:
            return "subcommand-syntax";
        case ErrorKind::kObservationRange:
            return "observation-range";
        case ErrorKind::kParenthesizedWord:
            return "parenthesized-word";
        case ErrorKind::kTablesSyntax:
            return "tables-syntax";
        case ErrorKind::kUnknownFunction:
            return "unknown-function";
        case ErrorKind::kUnknownSortFunction:
            return "unknown-sort-function";
        case ErrorKind::kMisplacedTotal:
            return "misplaced-total";
        case ErrorKind::kNothingToFollow:
            return "nothing-to-follow";
        case ErrorKind::kNothingToPrecede:
            return "nothing-to-precede";
        case ErrorKind::kTotalWithoutStacking:
            return "total-without-stacking";
        case ErrorKind::kTotalBesideScale:
            return "total-beside-scale";
        case ErrorKind::kTableTooLarge:
            return "table-too-large";
        case ErrorKind::kIgraphSyntax:
            return "igraph-syntax";
        case ErrorKind::kIgraphNotExpressible:
            return "igraph-not-expressible";
        case ErrorKind::kIgraphTooLarge:
            return "igraph-too-large";
        case ErrorKind::kOutOfMemory:
            return "out-of-memory";
        case ErrorKind::kUnknown:
            break;
    }
    return "unknown";
}

std::string ToUtf8(std::string_view text, TextEncoding encoding) {
    return TextAsUtf8(PageOf(encoding), text);
}

}  // namespace quillet
