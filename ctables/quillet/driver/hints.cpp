// What to change in a command that could not be converted.
//
// A failure tells where reading ended, which is seldom where the mistake is. A hint guesses at that
// from the command's own text; where there is nothing to guess, the advice on the reason remains.
#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "driver/commandwords.h"
#include "driver/failedcommand.h"
#include "driver/hinttexts.h"
#include "driver/macrodefinitions.h"
#include "driver/reasons.h"
#include "driver/sourcelines.h"
#include "driver/stringstreams.h"
#include "driver/tablehints.h"
#include "driver/textcut.h"
#include "driver/textencoding.h"
#include "platform/assertion.h"
#include "platform/multibyte.h"
#include "quillet.h"
#include "tokenizer/operatorspellings.h"

namespace quillet {

namespace {

bool MayHoldDefinition(std::string_view text) {
    constexpr std::string_view kEnd = "!ENDDEFINE";
    return std::search(text.begin(), text.end(), kEnd.begin(), kEnd.end(),
                       [](char one, char other) { return UpperAscii(one) == other; }) != text.end();
}

// ---- Texts that cannot be cut into tokens ----

// The line of the failure, without its end.
std::string_view LineOfFailure(const CommandReport& report) {
    std::string_view rest = report.source;
    for (long line = report.firstLine; line < report.errorLine; ++line) {
        const std::size_t end = rest.find('\n');
        if (end == std::string_view::npos) return {};
        rest.remove_prefix(end + 1);
    }
    return rest.substr(0, rest.find('\n'));
}

// The quotes of a line, by twos: where literals begin and end. The last one may have no end.
struct LineQuotes {
    std::size_t open = std::string_view::npos;        // of the literal that is not closed
    std::size_t apostrophe = std::string_view::npos;  // a quote that may be meant as text
};

LineQuotes FindQuotes(std::string_view line) {
    LineQuotes quotes;
    std::size_t position = line.find_first_of("'\"");
    while (position != std::string_view::npos) {
        const char quote = line[position];
        const std::size_t end = line.find(quote, position + 1);
        if (end == std::string_view::npos) {
            quotes.open = position;
            return quotes;
        }
        // A word goes on after it.
        const bool isInWord = end > position + 1 && WordLength(line.substr(end - 1, 1)) > 0 &&
                              WordLength(line.substr(end + 1)) > 0;
        if (isInWord && quotes.apostrophe == std::string_view::npos) quotes.apostrophe = end;
        position = line.find_first_of("'\"", end + 1);
    }
    return quotes;
}

// How much of an open literal is its text: up to the next subcommand, the end of the parentheses
// around it, or the period at the end of the line.
std::size_t LikelyEnd(std::string_view line, std::size_t open) {
    std::size_t end = line.size();
    int depth = 0;
    for (std::size_t position = open + 1; position < line.size(); ++position) {
        const bool isSlash = line[position] == '/' && line[position - 1] == ' ' &&
                             WordLength(line.substr(position + 1)) > 0;
        if (line[position] == '(') ++depth;
        if (line[position] == ')') --depth;
        if (isSlash || depth < 0) {
            end = position;
            break;
        }
    }
    end = std::min(end, line.find_last_not_of(" \t\r", end - 1) + 1);
    if (end > open + 2 && end == line.find_last_not_of(" \t\r") + 1 && line[end - 1] == '.') --end;
    return std::max(line.find_last_not_of(" \t", end - 1) + 1, open + 1);
}

std::string AfterClause(long count) {
    if (count < 0) return {};
    if (count == 0) return HintSentence(HintWording::kNothingAfter, {});
    if (count == 1) return HintSentence(HintWording::kOneCommandAfter, {});
    return HintSentence(HintWording::kCommandsAfter, {.count = count});
}

std::string LiteralHint(const CommandReport& report, const CodePage& codePage) {
    const std::string_view line = LineOfFailure(report);
    const LineQuotes quotes = FindQuotes(line);
    if (quotes.open == std::string_view::npos) return {};
    HintParts parts;
    parts.line = report.errorLine;
    if (quotes.apostrophe != std::string_view::npos) {
        const char quote = line[quotes.apostrophe];
        std::size_t begin = quotes.apostrophe;
        while (begin > 0 && line[begin - 1] != ' ' && line[begin - 1] != quote) --begin;
        const std::size_t length = WordLength(line.substr(quotes.apostrophe + 1));
        std::string word(line.substr(begin, quotes.apostrophe - begin));
        word.append(2, quote).append(line.substr(quotes.apostrophe + 1, length));
        const std::string name = Quoted(codePage, word);
        parts.name = name;
        return HintSentence(quote == '\'' ? HintWording::kApostropheInLiteral
                                          : HintWording::kQuotationMarkInLiteral,
                            parts);
    }
    const std::size_t end = LikelyEnd(line, quotes.open);
    const std::string name = Quoted(codePage, line.substr(quotes.open));
    const std::string text = Quoted(codePage, line.substr(quotes.open, end - quotes.open));
    parts.name = name;
    parts.other = text;
    return HintSentence(line[quotes.open] == '\'' ? HintWording::kMissingApostrophe
                                                  : HintWording::kMissingQuotationMark,
                        parts);
}

// The offset in `line` of the character with this number, from 0.
std::size_t OffsetOfCharacter(std::string_view line, long number, const CodePage& codePage) {
    std::size_t offset = 0;
    for (; number > 0 && offset < line.size(); --number) {
        offset += std::max<std::size_t>(
            TAVQMBmblen_A(codePage, line.data() + offset, line.size() - offset), 1);
    }
    return std::min(offset, line.size());
}

bool IsPartOfNumber(char c) {
    return c == '.' || c == '+' || c == '-' || WordLength(std::string_view(&c, 1)) > 0;
}

// The place is the end of what was read of the number.
std::string NumberHint(const CommandReport& report, const CodePage& codePage, HintWording wording) {
    const std::string_view line = LineOfFailure(report);
    std::size_t end = OffsetOfCharacter(line, report.errorColumn, codePage);
    while (end > 0 && !IsPartOfNumber(line[end - 1])) --end;
    std::size_t begin = end;
    while (begin > 0 && IsPartOfNumber(line[begin - 1])) --begin;
    while (end < line.size() && IsPartOfNumber(line[end])) ++end;
    if (begin == end) return {};
    const std::string name = Quoted(codePage, line.substr(begin, end - begin));
    return HintSentence(wording, {.name = name, .line = report.errorLine});
}

// A line that is not the command's first counts its characters from 0.
std::string CharacterHint(const CommandReport& report, const CodePage& codePage) {
    const std::string_view line = LineOfFailure(report);
    for (const long number : {report.errorColumn - 1L, report.errorColumn + 0L}) {
        const std::size_t offset = OffsetOfCharacter(line, std::max(number, 0L), codePage);
        if (offset >= line.size()) continue;
        const auto byte = static_cast<unsigned char>(line[offset]);
        constexpr unsigned char kFirstVisible = 0x20;
        constexpr unsigned char kDelete = 0x7F;
        constexpr std::string_view kValid = " \t'\"!";
        if (byte > kDelete || kValid.find(line[offset]) != std::string_view::npos ||
            OneCharacterOperator(byte) != TokenCodes::kNotOperator ||
            // No word begins with it, though it may go on with it.
            (line[offset] != '_' && WordLength(line.substr(offset, 1)) > 0)) {
            continue;
        }
        if (byte < kFirstVisible || byte == kDelete) {
            constexpr std::string_view kDigits = "0123456789ABCDEF";
            const std::string code = {'U', '+', '0', '0', kDigits[byte / 16], kDigits[byte % 16]};
            return HintSentence(HintWording::kInvisibleCharacter,
                                {.name = code, .line = report.errorLine});
        }
        const std::string name = "`" + std::string(1, line[offset]) + "`";
        return HintSentence(HintWording::kInvalidCharacter,
                            {.name = name, .line = report.errorLine});
    }
    return {};
}

// ---- Commands whose tokens are known ----

bool IsMacroWord(const PlacedToken& token, const HintOptions& options) {
    if (token.type != TokenCodes::kString) return false;
    return token.source.starts_with('!') || options.macroNames.contains(InUpperAscii(token.source));
}

bool MayComeOfMacro(ErrorKind kind) {
    switch (kind) {
        case ErrorKind::kSubcommandSyntax:
        case ErrorKind::kTablesSyntax:
        case ErrorKind::kUnknownFunction:
        case ErrorKind::kUnknownSortFunction:
        case ErrorKind::kIgraphSyntax:
        case ErrorKind::kUnknown:
            return true;
        default:
            return false;
    }
}

// Where the place is known, only a word before it, in the same subcommand, can be the reason; a
// function that is not known can only itself be one.
std::string MacroHint(const FailedCommand& command, const HintOptions& options) {
    const ErrorKind kind = command.Report().errorKind;
    if (!MayComeOfMacro(kind)) return {};
    std::size_t first = 0;
    std::size_t end = command.Tokens().size();
    if (const CommandPart* pPart = command.ErrorPart()) {
        const bool isFunction =
            kind == ErrorKind::kUnknownFunction || kind == ErrorKind::kUnknownSortFunction;
        first = isFunction ? command.ErrorIndex() : pPart->first;
        const bool isSecond = pPart == command.Parts().data() + 1;
        if (!isFunction && (kind == ErrorKind::kSubcommandSyntax || isSecond)) {
            first = command.BrokenPart()->first;
        }
        end = command.ErrorIndex() + 1;
    }
    for (std::size_t index = end; index > first; --index) {
        const PlacedToken& token = command.At(index - 1);
        if (!IsMacroWord(token, options)) continue;
        const std::string name = Quoted(command.Page(), token.source);
        return HintSentence(HintWording::kMacroWord, {.name = name});
    }
    return {};
}

std::string FailureHint(const CommandReport& report, const CodePage& codePage,
                        const HintOptions& options) {
    const FailedCommand command(report, codePage, options.batchMode);
    std::string hint = MacroHint(command, options);
    if (!hint.empty()) return hint;
    if (report.type == CommandType::kTables) return TablesHint(command);
    if (report.errorKind == ErrorKind::kIgraphNotExpressible) {
        const std::string_view format = ReasonOf(report.errorKind).message;
        return ChartHint(FilledIn(format, report.message).value_or(std::string_view()));
    }
    if (report.errorKind == ErrorKind::kIgraphSyntax) {
        const long line = LineAfterBlankLine(report, false);
        if (line > 0) return HintSentence(HintWording::kMissingPeriod, {.line = line});
    }
    return {};
}

std::string ParticularHint(const CommandReport& report, const CodePage& codePage,
                           const HintOptions& options) {
    switch (report.errorKind) {
        case ErrorKind::kUnclosedLiteral:
            return LiteralHint(report, codePage);
        case ErrorKind::kExponentWithoutDigits:
            return NumberHint(report, codePage, HintWording::kExponentWithoutDigits);
        case ErrorKind::kInvalidNumber:
            return NumberHint(report, codePage, HintWording::kInvalidNumber);
        case ErrorKind::kInvalidCharacter:
            return CharacterHint(report, codePage);
        case ErrorKind::kOutOfMemory:
            return HintSentence(HintWording::kOutOfMemory, {.line = report.firstLine});
        case ErrorKind::kTableTooLarge:
            return HintSentence(HintWording::kTableTooLarge, {.line = report.errorLine});
        default:
            return FailureHint(report, codePage, options);
    }
}

}  // namespace

std::string HintFor(const CommandReport& command, const HintOptions& options) {
    if (command.outcome != CommandOutcome::kFailed &&
        command.outcome != CommandOutcome::kUnreadable) {
        return {};
    }
    const ScopedAssertionHandler handler(TellNobody);
    std::string hint =
        ParticularHint(command, CodePageFor(options.encoding, options.pNamed), options);
    if (hint.empty()) hint = AdviceOn(command.errorKind);
    if (command.errorKind == ErrorKind::kUnclosedLiteral)
        hint += AfterClause(options.commandsAfter);
    return hint;
}

std::set<std::string> FindMacroNames(std::string_view text, const Options& options) {
    std::set<std::string> names;
    if (!MayHoldDefinition(text)) return names;
    StringInput input(text);
    const CodePage* pCodePage = ChooseCodePage(input, options);
    if (pCodePage == nullptr) return names;
    const ScopedAssertionHandler handler(TellNobody);
    const SourceLines lines(text);
    CutSettings settings;
    settings.batchMode = options.batchMode;
    const TextCut cut = CutText(lines, *pCodePage, settings);
    for (const MacroDefinition& definition : FindMacroDefinitions(lines, cut.extents)) {
        names.insert(InUpperAscii(definition.name));
    }
    return names;
}

}  // namespace quillet
