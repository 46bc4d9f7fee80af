// Every legacy command of a text is found here and accounted for: by what the conversion has told
// of it, or by the reason why that never saw it.
#include "driver/legacycommands.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "driver/commandwords.h"
#include "driver/encodingdoubt.h"
#include "driver/findingtexts.h"
#include "driver/layoutreading.h"
#include "driver/legacywords.h"
#include "driver/macrodefinitions.h"
#include "driver/meantcommands.h"
#include "driver/sourcelines.h"
#include "driver/stringstreams.h"
#include "driver/textcut.h"
#include "driver/textencoding.h"
#include "platform/assertion.h"
#include "platform/commandbudget.h"
#include "quillet.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet {

namespace {

// Keeps what is needed of a conversion, and nothing of its output.
class OutlineRecorder final : public ConversionListener, public TextOutput {
public:
    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view /*line*/) override {}
    void OnCommand(const CommandReport& report) override {
        m_commands.push_back(
            {report.type, report.outcome, report.firstLine, report.lastLine, report.errorLine});
    }
    bool Write(std::string_view /*bytes*/) override { return true; }

    [[nodiscard]] const std::vector<CommandOutline>& Commands() const { return m_commands; }

private:
    std::vector<CommandOutline> m_commands;
};

std::string WithLfLineEnds(std::string_view text) {
    std::string result;
    while (true) {
        const std::size_t end = text.find("\r\n");
        result.append(text.substr(0, end));
        if (end == std::string_view::npos) return result;
        text.remove_prefix(end + 1);
    }
}

// A command has at least its word.
std::string_view WithoutLastBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(kWhiteSpace) + 1);
}

// The line that looks as if it was to end the inline data in `extent`; 0 for none.
long LookalikeOfEnd(const SourceLines& lines, const CommandExtent& extent) {
    for (long line = extent.firstLine + 1; line <= extent.lastLine; ++line) {
        std::string_view text = lines.Line(line);
        const std::size_t begin = std::min(text.find_first_not_of(" \t+-"), text.size());
        if (CommandAt(text.substr(begin)) == "END DATA") return line;
    }
    return 0;
}

class LegacyCommandFinder {
public:
    LegacyCommandFinder(std::string_view text, const FindOptions& options,
                        const std::vector<CommandOutline>& commands, const CodePage& codePage,
                        InputPlace place = {})
        : m_lines(text),
          m_place(place),
          m_options(options),
          m_batchMode(options.conversion.batchMode),
          m_outlines(commands),
          m_codePage(codePage),
          m_layouts(m_lines, m_codePage, m_definitions) {}

    LegacyFindings Run() {
        m_definitions = FindMacroDefinitions(m_lines, Extents());
        FindStop();
        TellOfText();
        for (const CommandExtent& extent : Extents()) LookAt(extent);
        TellOfLayout();
        return Sorted();
    }

    // Tells nothing about the text as a whole.
    LegacyFindings RunOnPiece() {
        m_definitions = FindMacroDefinitions(m_lines, Extents());
        FindStop();
        for (const CommandExtent& extent : Extents()) LookAt(extent);
        LegacyFindings found = Sorted();
        for (LegacyCommand& command : found.commands) {
            command.firstLine = m_place.LineOf(command.firstLine);
            command.lastLine = m_place.LineOf(command.lastLine);
        }
        for (Finding& finding : found.findings) {
            finding.firstLine = m_place.LineOf(finding.firstLine);
            finding.lastLine = m_place.LineOf(finding.lastLine);
            finding.causeLine = m_place.LineOf(finding.causeLine);
        }
        return found;
    }

    // Tells nothing but that.
    LegacyFindings RunOnWhole() {
        TellOfText();
        return Sorted();
    }

private:
    // What the conversion told of the command that begins where `extent` does; null after its stop.
    const CommandOutline* OutlineOf(const CommandExtent& extent) {
        while (m_next < m_outlines.size() && m_outlines[m_next].firstLine < extent.firstLine) {
            ++m_next;
        }
        const bool isThere =
            m_next < m_outlines.size() && m_outlines[m_next].firstLine == extent.firstLine;
        return isThere ? &m_outlines[m_next] : nullptr;
    }

    void FindStop() {
        if (m_outlines.empty()) return;
        const CommandOutline& last = m_outlines.back();
        if (last.outcome == CommandOutcome::kUnreadable) m_pStop = &last;
    }

    [[nodiscard]] bool IsAfterStop(long line) const {
        return m_pStop != nullptr && line > m_pStop->errorLine && line > m_pStop->firstLine;
    }

    void LookAt(const CommandExtent& extent) {
        const CommandOutline* pOutline = OutlineOf(extent);
        MeantCommandSearch search;
        search.isInResult = pOutline != nullptr && pOutline->outcome != CommandOutcome::kUnreadable;
        search.isLegacy = pOutline != nullptr && IsConvertedOrFailed(pOutline->outcome);
        if (pOutline != nullptr) search.ownPlace = AddOwn(extent, *pOutline);
        if (!IsSearched(extent)) return;
        const std::size_t begin = m_found.size();
        FindMeantCommands(m_lines, extent, m_batchMode, m_definitions, search, m_found);
        for (std::size_t number = begin; number < m_found.size(); ++number) {
            Tell(m_found[number], extent, pOutline);
        }
        m_found.clear();
        if (!search.isInResult) return;
        TellOfDroppedText(extent);
        if (!search.isLegacy) TellOfInclude(extent);
    }

    static bool IsConvertedOrFailed(CommandOutcome outcome) {
        return outcome == CommandOutcome::kConverted || outcome == CommandOutcome::kFailed;
    }

    // Adds the legacy command that the conversion has found in `extent`, if there is one. Returns
    // where it begins.
    std::optional<std::size_t> AddOwn(const CommandExtent& extent, const CommandOutline& outline) {
        const std::size_t begin =
            FirstTextIn(m_lines, extent.firstLine, extent.lastLine, m_batchMode);
        LegacyCommand command;
        command.firstLine = outline.firstLine;
        command.lastLine = outline.lastLine;
        if (IsConvertedOrFailed(outline.outcome)) {
            command.type = outline.type;
            command.outcome = outline.outcome == CommandOutcome::kConverted
                                  ? LegacyOutcome::kConverted
                                  : LegacyOutcome::kFailed;
        } else {
            command.type = LegacyCommandAt(m_lines.Text(), begin);
            command.outcome = LegacyOutcome::kUnreadable;
            const bool isOne = outline.outcome == CommandOutcome::kUnreadable &&
                               command.type != CommandType::kOrdinary && BeginsAt(extent, begin);
            if (!isOne) return std::nullopt;
        }
        const MacroDefinition* pMacro = DefinitionAround(m_definitions, begin);
        if (pMacro == nullptr) {
            m_result.commands.push_back(command);
        } else {
            MeantCommand inMacro;
            inMacro.type = command.type;
            inMacro.offset = begin;
            inMacro.line = m_lines.LineOf(begin);
            inMacro.end = std::min(extent.end + (extent.isEnded ? 1 : 0), pMacro->bodyEnd);
            TellOfMacro(inMacro, *pMacro);
        }
        return begin;
    }

    // True when the tokenizer sees its first token there: no closed comment stands before.
    [[nodiscard]] bool BeginsAt(const CommandExtent& extent, std::size_t begin) const {
        const std::size_t lineBegin = m_lines.BeginOf(extent.firstLine);
        return m_lines.Text().substr(lineBegin, begin - lineBegin).find("*/") ==
               std::string_view::npos;
    }

    void Tell(const MeantCommand& command, const CommandExtent& extent,
              const CommandOutline* pOutline) {
        switch (command.sort) {
            case MeantCommand::Sort::kLegacy:
                return TellOfOverlooked(command, extent);
            case MeantCommand::Sort::kLost: {
                Finding finding = FindingAbout(FindingCode::kCommandLost, command);
                finding.command = pOutline->type;
                finding.causeLine = pOutline->firstLine;
                return Add(std::move(finding), Wording::kCommandLost, {.name = command.name});
            }
            case MeantCommand::Sort::kSwallowed: {
                Finding finding = FindingAbout(FindingCode::kSwallowed, command);
                const bool isComment = IsRealComment(m_lines, extent, m_batchMode);
                finding.causeLine = isComment ? extent.firstLine : command.openCommandLine;
                return Add(std::move(finding),
                           isComment ? Wording::kSwallowedByComment : Wording::kSwallowed,
                           {.name = command.name});
            }
        }
    }

    // The first that fits, in the order in which the list of findings has them.
    void TellOfOverlooked(const MeantCommand& command, const CommandExtent& extent) {
        if (IsAfterStop(command.line)) return TellOfStop(command);
        if (extent.kind == CommandKind::kInlineData) return TellOfData(command, extent);
        const MacroDefinition* pMacro = DefinitionAround(m_definitions, command.offset);
        if (pMacro != nullptr) return TellOfMacro(command, *pMacro);
        if (m_layouts.IsForTheOther(m_batchMode)) return TellOfOtherLayout(command, extent);
        const bool isOnCommentLine = command.isAfterPeriod && command.line == extent.firstLine;
        const bool hasPeriod = isOnCommentLine || command.commentAfterPeriodLine != 0;
        if (!hasPeriod && IsRealComment(m_lines, extent, m_batchMode)) {
            return Overlook(command, FindingCode::kOpenComment, Wording::kOpenComment,
                            extent.firstLine);
        }
        if (command.commentAfterPeriodLine != 0) {
            return Overlook(command, FindingCode::kCommentBehind, Wording::kCommentBehind,
                            command.commentAfterPeriodLine);
        }
        if (command.isFirst && command.closedCommentLine != 0) {
            return Overlook(command, FindingCode::kBlockCommentBefore, Wording::kBlockCommentBefore,
                            command.closedCommentLine);
        }
        if (command.sign != '\0' && !m_batchMode) {
            const std::string sign(1, command.sign);
            return Overlook(command, FindingCode::kSignBefore, Wording::kSignBefore, command.line,
                            {.name = sign});
        }
        if (command.isAfterPeriod) {
            return Overlook(command, FindingCode::kSameLine, Wording::kSameLine, command.line);
        }
        Overlook(
            command, FindingCode::kOpenCommand,
            command.isAfterBlankLine ? Wording::kOpenCommandBeforeBlankLine : Wording::kOpenCommand,
            command.openCommandLine);
    }

    void TellOfStop(const MeantCommand& command) {
        Overlook(command, FindingCode::kAfterStop, Wording::kAfterStop, m_pStop->errorLine);
    }

    void TellOfData(const MeantCommand& command, const CommandExtent& extent) {
        if (m_dataLine != extent.firstLine) m_dataEnd = LookalikeOfEnd(m_lines, extent);
        m_dataLine = extent.firstLine;
        const std::string other = std::to_string(m_place.LineOf(m_dataEnd));
        Overlook(command, FindingCode::kDataLines,
                 m_dataEnd != 0 ? Wording::kDataLinesWithEnd : Wording::kDataLines,
                 extent.firstLine, {.other = other});
    }

    void TellOfMacro(const MeantCommand& command, const MacroDefinition& macro) {
        if (!m_hasCounted) CountMacroCalls(m_lines, Extents(), m_batchMode, m_definitions);
        m_hasCounted = true;
        m_macro = macro.name;
        const std::string firstCall = std::to_string(m_place.LineOf(macro.firstCallLine));
        constexpr std::array kWordings = {Wording::kMacroBody, Wording::kMacroBodyCalledOnce,
                                          Wording::kMacroBodyCalled};
        const auto row = static_cast<std::size_t>(std::min(macro.calls, 2L));
        Overlook(command, FindingCode::kMacroBody, kWordings[row], macro.line,
                 {.name = macro.name, .other = firstCall, .count = macro.calls});
        m_macro.clear();
    }

    // The command is as long as in the other layout.
    void TellOfOtherLayout(MeantCommand command, const CommandExtent& extent) {
        const std::vector<CommandExtent>& others = m_layouts.Cut(!m_batchMode).extents;
        const auto other = std::partition_point(others.begin(), others.end(),
                                                [&command](const CommandExtent& candidate) {
                                                    return candidate.lastLine < command.line;
                                                });
        // It may stand in the middle of another command there, too.
        if (other != others.end() && FirstTextIn(m_lines, other->firstLine, other->lastLine,
                                                 !m_batchMode) == command.offset) {
            command.end = std::max(command.end, other->end + (other->isEnded ? 1 : 0));
            if (!m_batchMode) command.end = other->end + (other->isEnded ? 1 : 0);
        }
        Overlook(command, FindingCode::kLayout,
                 m_batchMode ? Wording::kLayoutInteractive : Wording::kLayout, extent.firstLine);
    }

    void Overlook(const MeantCommand& command, FindingCode code, Wording wording, long causeLine,
                  SentenceParts parts = {}) {
        Finding finding = FindingAbout(code, command);
        finding.command = command.type;
        finding.causeLine = causeLine;
        finding.macro = m_macro;
        m_result.commands.push_back(
            {command.type, LegacyOutcome::kOverlooked, finding.firstLine, finding.lastLine});
        Add(std::move(finding), wording, parts);
    }

    [[nodiscard]] Finding FindingAbout(FindingCode code, const MeantCommand& command) const {
        Finding finding;
        finding.code = code;
        finding.firstLine = command.line;
        const std::size_t end = std::max(command.end, command.offset + 1);
        const std::string_view text =
            WithoutLastBlanks(m_lines.Text().substr(command.offset, end - command.offset));
        finding.lastLine = m_lines.LineOf(command.offset + text.size() - 1);
        finding.text = WithLfLineEnds(text);
        return finding;
    }

    void Add(Finding finding, Wording wording, SentenceParts parts) {
        parts.command = WordOf(finding.command);
        parts.line = m_place.LineOf(finding.firstLine);
        parts.cause = m_place.LineOf(finding.causeLine);
        finding.sentence = SentenceOf(wording, parts);
        m_result.findings.push_back(std::move(finding));
    }

    // What stands after the period that ends the command goes; periods and blanks are no text.
    void TellOfDroppedText(const CommandExtent& extent) {
        if (!extent.isEnded || extent.kind == CommandKind::kInlineData) return;
        const std::string_view rest =
            m_lines.Text().substr(extent.end, m_lines.EndOf(extent.lastLine) - extent.end);
        constexpr std::string_view kNoText = " \t\r.";
        const std::size_t begin = rest.find_first_not_of(kNoText);
        if (begin == std::string_view::npos) return;
        Finding finding;
        finding.code = FindingCode::kCommentDropped;
        finding.firstLine = finding.lastLine = finding.causeLine = extent.lastLine;
        finding.text = rest.substr(begin, rest.find_last_not_of(" \t\r") + 1 - begin);
        const std::string name = finding.text;
        Add(std::move(finding), Wording::kCommentDropped, {.name = name});
    }

    void TellOfInclude(const CommandExtent& extent) {
        if (extent.kind != CommandKind::kOrdinary) return;
        const std::size_t begin =
            FirstTextIn(m_lines, extent.firstLine, extent.lastLine, m_batchMode);
        const std::string_view text =
            m_lines.Text().substr(begin, std::max(extent.end, begin) - begin);
        const std::string_view name = CommandAt(text);
        if (name != "INCLUDE" && name != "INSERT") return;
        const std::string path = PathIn(text);
        if (path.empty()) return;
        Finding finding;
        finding.code = FindingCode::kInclude;
        finding.firstLine = finding.causeLine = m_lines.LineOf(begin);
        finding.lastLine = extent.lastLine;
        finding.text = WithLfLineEnds(text);
        Wording wording = Wording::kInclude;
        if (m_options.isIncludeAtHand) {
            wording = m_options.isIncludeAtHand(path) ? Wording::kIncludeInside
                                                      : Wording::kIncludeOutside;
        }
        Add(std::move(finding), wording, {.name = path});
    }

    // The literal that such a command begins with: INCLUDE 'path', INSERT FILE = 'path'. Of a text
    // longer than any path the beginning will do: a literal of many pieces is put together anew
    // for each.
    [[nodiscard]] std::string PathIn(std::string_view text) const {
        constexpr int kMostTokens = 4;
        constexpr std::size_t kMostBytes = 4096;
        try {
            TAVQTokenSequence tokens(m_codePage, std::string(text.substr(0, kMostBytes)), false,
                                     kMostTokens);
            tokens.SetNextIndex(0);
            while (tokens.Next()) {
                if (tokens.Type() != TokenCodes::kLiteral) continue;
                const char* pChars = nullptr;
                std::size_t length = 0;
                tokens.GetValueText(pChars, length);
                return {pChars, length};
            }
        } catch (const ParseError&) {
            // The conversion has read it without an error, so its tokens had another end.
        } catch (const CommandTooLarge&) {
            // The conversion copies it without putting its literals together.
        }
        return {};
    }

    void TellOfText() {
        if (m_options.hadOldLineEnds) AddForText(FindingCode::kOldLineEnds, Wording::kOldLineEnds);
        if (m_options.wasUtf16) AddForText(FindingCode::kWideText, Wording::kWideText);
        const EncodingDoubt doubt =
            DoubtEncoding(m_lines.Text(), m_codePage, m_options.encodingName);
        if (doubt.reason == EncodingDoubt::Reason::kNone) return;
        std::string_view readAs = m_options.encodingName;
        if (&m_codePage == &CodePage::Windows1252()) readAs = "windows-1252";
        AddForText(FindingCode::kEncodingDoubtful,
                   doubt.reason == EncodingDoubt::Reason::kOtherName ? Wording::kEncodingNamed
                                                                     : Wording::kEncodingDoubtful,
                   {.name = doubt.name, .other = readAs});
    }

    void AddForText(FindingCode code, Wording wording, SentenceParts parts = {}) {
        Finding finding;
        finding.code = code;
        finding.firstLine = finding.lastLine = finding.causeLine = 1;
        Add(std::move(finding), wording, parts);
    }

    // What the text is cut into by the conversion.
    const std::vector<CommandExtent>& Extents() { return m_layouts.Cut(m_batchMode).extents; }

    // Only a text with legacy commands is worth a look at its layout.
    void TellOfLayout() {
        if (m_result.commands.empty() || m_layouts.ReadsWell(m_batchMode) ||
            m_layouts.ReadsWell(!m_batchMode)) {
            return;
        }
        const std::vector<LegacyCommand> interactive = LegacyIn(m_layouts.Cut(false), false);
        const std::vector<LegacyCommand> batch = LegacyIn(m_layouts.Cut(true), true);
        const auto difference = std::mismatch(
            interactive.begin(), interactive.end(), batch.begin(), batch.end(),
            [](const LegacyCommand& one, const LegacyCommand& other) {
                return one.firstLine == other.firstLine && one.lastLine == other.lastLine;
            });
        const bool hasOne = difference.first != interactive.end();
        const bool hasOther = difference.second != batch.end();
        if (!hasOne && !hasOther) return;
        // What begins earlier in the one is a part of something else in the other.
        const bool isOne =
            !hasOther || (hasOne && difference.first->firstLine <= difference.second->firstLine);
        const LegacyCommand& command = isOne ? *difference.first : *difference.second;
        Finding finding;
        finding.code = FindingCode::kLayoutUnclear;
        finding.command = command.type;
        finding.firstLine = finding.causeLine = command.firstLine;
        finding.lastLine = command.lastLine;
        Add(std::move(finding), Wording::kLayoutUnclear, {});
    }

    // The commands of `cut` that are legacy commands there, but for those of macros, which are
    // overlooked in either layout.
    [[nodiscard]] std::vector<LegacyCommand> LegacyIn(const TextCut& cut, bool batchMode) const {
        std::vector<LegacyCommand> commands;
        for (const CommandExtent& extent : cut.extents) {
            if (extent.kind != CommandKind::kOrdinary) continue;
            const std::size_t begin =
                FirstTextIn(m_lines, extent.firstLine, extent.lastLine, batchMode);
            const CommandType type = LegacyCommandAt(m_lines.Text(), begin);
            if (type == CommandType::kOrdinary || !BeginsAt(extent, begin) ||
                DefinitionAround(m_definitions, begin) != nullptr) {
                continue;
            }
            commands.push_back(
                {type, LegacyOutcome::kOverlooked, m_lines.LineOf(begin), extent.lastLine});
        }
        return commands;
    }

    LegacyFindings Sorted() {
        const auto byLine = [](const auto& one, const auto& other) {
            return one.firstLine < other.firstLine;
        };
        std::stable_sort(m_result.commands.begin(), m_result.commands.end(), byLine);
        std::stable_sort(m_result.findings.begin(), m_result.findings.end(), byLine);
        return std::move(m_result);
    }

    SourceLines m_lines;
    InputPlace m_place;  // of the text, where it is a piece of another
    const FindOptions& m_options;
    bool m_batchMode;
    const std::vector<CommandOutline>& m_outlines;
    const CodePage& m_codePage;
    std::vector<MacroDefinition> m_definitions;
    LayoutComparison m_layouts;
    bool m_hasCounted = false;
    std::size_t m_next = 0;                   // the first outline not before the extent in work
    const CommandOutline* m_pStop = nullptr;  // where the conversion ended before the text did
    std::string m_macro;                      // of the finding in work
    long m_dataLine = 0;                      // of the inline data that `m_dataEnd` is about
    long m_dataEnd = 0;
    std::vector<MeantCommand> m_found;
    LegacyFindings m_result;
};

LegacyFindings OnlyWideText() {
    LegacyFindings result;
    Finding finding;
    finding.code = FindingCode::kWideText;
    finding.firstLine = finding.lastLine = finding.causeLine = 1;
    finding.sentence = SentenceOf(Wording::kWideText, {});
    result.findings.push_back(std::move(finding));
    return result;
}

const CodePage* CodePageOf(std::string_view text, const Options& options) {
    StringInput input(text);
    return ChooseCodePage(input, options);
}

}  // namespace

long LegacyFindings::Count(LegacyOutcome outcome) const {
    const auto count = std::count_if(
        commands.begin(), commands.end(),
        [outcome](const LegacyCommand& command) { return command.outcome == outcome; });
    return static_cast<long>(count);
}

LegacyFindings FindLegacyCommandsIn(std::string_view piece, const FindOptions& options,
                                    const std::vector<CommandOutline>& commands,
                                    const CodePage& codePage, const InputPlace& place) {
    const ScopedAssertionHandler handler(TellNobody);
    return LegacyCommandFinder(piece, options, commands, codePage, place).RunOnPiece();
}

LegacyFindings FindingsOfWhole(std::string_view text, const FindOptions& options,
                               const CodePage& codePage) {
    const ScopedAssertionHandler handler(TellNobody);
    return LegacyCommandFinder(text, options, {}, codePage).RunOnWhole();
}

LegacyFindings FindLegacyCommands(std::string_view text, const FindOptions& options,
                                  const std::vector<CommandOutline>& commands) {
    const CodePage* pCodePage = CodePageOf(text, options.conversion);
    if (pCodePage == nullptr) return OnlyWideText();
    const ScopedAssertionHandler handler(TellNobody);
    return LegacyCommandFinder(text, options, commands, *pCodePage).Run();
}

LegacyFindings FindLegacyCommands(std::string_view text, const FindOptions& options) {
    FindOptions settings = options;
    std::string lines(text);
    if (lines.find('\n') == std::string::npos && lines.find('\r') != std::string::npos) {
        settings.hadOldLineEnds = true;
        std::replace(lines.begin(), lines.end(), '\r', '\n');
    }
    StringInput input(lines);
    OutlineRecorder recorder;
    static_cast<void>(ConvertStream(input, recorder, recorder, settings.conversion));
    return FindLegacyCommands(lines, settings, recorder.Commands());
}

LayoutChoice ChooseLayout(std::string_view text, const Options& options) {
    LayoutChoice choice;
    const CodePage* pCodePage = CodePageOf(text, options);
    if (pCodePage == nullptr) return choice;
    const ScopedAssertionHandler handler(TellNobody);
    const SourceLines lines(text);
    std::vector<MacroDefinition> definitions;
    LayoutComparison layouts(lines, *pCodePage, definitions);
    definitions = FindMacroDefinitions(lines, layouts.Cut(false).extents);
    choice.interactive = layouts.Reading(false);
    choice.batchMode = layouts.IsForTheOther(false);
    if (layouts.IsRead(true)) choice.batch = layouts.Reading(true);
    return choice;
}

}  // namespace quillet
