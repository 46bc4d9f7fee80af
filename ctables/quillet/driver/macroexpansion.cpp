// The expander knows nothing of legacy commands, and whoever uses the library nothing of the
// expander: here its results become those of the library, with what the bodies hold.
#include "driver/macroexpansion.h"

#include <memory>
#include <unordered_map>
#include <utility>

#include "driver/findingtexts.h"
#include "driver/legacycommands.h"
#include "driver/stringstreams.h"
#include "driver/textencoding.h"
#include "macro/commandcutter.h"
#include "macro/expandfile.h"
#include "macro/lexer.h"
#include "platform/assertion.h"
#include "platform/multibyte.h"

namespace quillet {

namespace {

class CallingResolver final : public macro::IncludeResolver {
public:
    explicit CallingResolver(const MacroOptions& options) : m_options(options) {}

    bool Find(std::string_view path, const std::string& includingFile,
              macro::IncludedFile& file) override {
        IncludedText included;
        if (!m_options.findInclude || !m_options.findInclude(path, includingFile, included)) {
            return false;
        }
        file.name = std::move(included.name);
        file.text = std::move(included.text);
        file.layout.batchMode = included.batchMode;
        return true;
    }

private:
    const MacroOptions& m_options;
};

MacroFault FaultOf(const macro::Fault& fault) {
    return {std::string(NameOf(fault.kind)), ReasonText(fault), fault.line, fault.file};
}

class ExpansionMaker {
public:
    ExpansionMaker(const Options& options, const CodePage& codePage)
        : m_options(options), m_codePage(codePage) {}

    MacroExpansion Make(macro::FileExpansion expansion) {
        for (const macro::Definition& definition : expansion.definitions) {
            DefinedMacro& defined = m_result.macros[PlaceOf(*definition.macro)];
            defined.lastLine = definition.lastLine;
            defined.begin = definition.begin;
            defined.end = definition.end;
        }
        for (macro::Call& call : expansion.calls) Add(call);
        for (const macro::Fault& fault : expansion.faults) {
            m_result.faults.push_back(FaultOf(fault));
            if (fault.file.empty() && fault.kind != macro::FaultKind::kIncludeNotFound) {
                TellOf(m_result.faults.back(), Wording::kMacroFaultInDefinition, fault.line, {});
            }
        }
        return std::move(m_result);
    }

private:
    void Add(macro::Call& call) {
        MacroCall added;
        added.macro = PlaceOf(*call.macro);
        added.line = call.line;
        added.begin = call.begin;
        added.end = call.end;
        added.text = std::move(call.text);
        if (call.fault) {
            added.fault = FaultOf(*call.fault);
            TellOf(*added.fault, Wording::kMacroFault, call.line, call.name);
        }
        for (const auto& macro : call.expanded) added.expanded.push_back(PlaceOf(*macro));
        if (added.expanded.empty()) added.expanded.push_back(added.macro);
        for (const std::size_t place : added.expanded) {
            DefinedMacro& macro = m_result.macros[place];
            if (macro.calls == 0) macro.firstCallLine = call.line;
            ++macro.calls;
            if (added.fault) ++macro.callsLeft;
        }
        added.droppedBegin = call.droppedBegin;
        added.droppedEnd = call.droppedEnd;
        added.commandBegin = call.commandBegin;
        added.commandEnd = call.commandEnd;
        m_result.calls.push_back(std::move(added));
    }

    void TellOf(const MacroFault& fault, Wording wording, long line, std::string_view name) {
        Finding finding;
        finding.code = FindingCode::kMacroFault;
        finding.firstLine = finding.lastLine = line;
        finding.causeLine = fault.file.empty() ? fault.line : line;
        finding.macro = name;
        finding.sentence = SentenceOf(wording, {.name = name, .other = fault.reason, .line = line});
        m_result.findings.push_back(std::move(finding));
    }

    std::size_t PlaceOf(const macro::Macro& macro) {
        const auto [place, isNew] = m_places.emplace(&macro, m_result.macros.size());
        if (!isNew) return place->second;
        DefinedMacro defined;
        defined.name = macro.name;
        defined.file = macro.file;
        defined.firstLine = macro.firstLine;
        defined.lastLine = macro.LineOf(macro.body.size());
        defined.commands =
            FindInBody(macro.name, macro.body, macro.bodyLine, m_options, m_codePage).commands;
        m_result.macros.push_back(std::move(defined));
        return place->second;
    }

    const Options& m_options;
    const CodePage& m_codePage;
    std::unordered_map<const macro::Macro*, std::size_t> m_places;
    MacroExpansion m_result;
};

// Takes the blanks away that stand before commands in their lines.
std::string WithoutIndentation(const std::string& text, const CodePage& codePage) {
    macro::CommandCutter cutter(codePage, text, {}, macro::CommandCutter::Content::kCommands);
    std::string result;
    std::size_t copied = 0;
    macro::Command command;
    while (cutter.Next(command)) {
        std::size_t lineBegin = command.begin;
        while (lineBegin > copied && macro::IsBlank(text[lineBegin - 1])) --lineBegin;
        if (lineBegin == 0 || !macro::IsLineBreak(text[lineBegin - 1])) continue;
        result.append(text, copied, lineBegin - copied);
        copied = command.begin;
    }
    return result.append(text, copied);
}

}  // namespace

std::vector<CommandWithCalls> CommandsWithCalls(const MacroExpansion& expansion) {
    std::vector<CommandWithCalls> commands;
    for (std::size_t index = 0; index < expansion.calls.size(); ++index) {
        const MacroCall& call = expansion.calls[index];
        if (commands.empty() || commands.back().begin != call.commandBegin) {
            commands.push_back({call.commandBegin, call.commandEnd, index, 0});
        }
        ++commands.back().callCount;
    }
    return commands;
}

std::string ExpandedTextOf(std::string_view text, const MacroExpansion& expansion,
                           const CommandWithCalls& command, const CodePage& codePage,
                           bool batchMode) {
    std::string result;
    std::size_t copied = command.begin;
    for (std::size_t index = 0; index < command.callCount; ++index) {
        const MacroCall& call = expansion.calls[command.firstCall + index];
        if (call.fault) continue;
        result.append(text.substr(copied, call.begin - copied)).append(call.text);
        copied = call.end;
        if (call.droppedEnd == 0) continue;
        result.append(text.substr(copied, call.droppedBegin - copied));
        copied = call.droppedEnd;
    }
    result.append(text.substr(copied, command.end - copied));
    return batchMode ? WithoutIndentation(result, codePage) : result;
}

bool MayHoldLegacyCommand(std::string_view text) {
    constexpr std::size_t kWordSize = 3;
    for (std::size_t place = 0; place + kWordSize <= text.size(); ++place) {
        const char first = LowerAscii(text[place]);
        const char second = LowerAscii(text[place + 1]);
        const char third = LowerAscii(text[place + 2]);
        if (first == 't' && second == 'a' && third == 'b') return true;
        if (first == 'i' && second == 'g' && third == 'r') return true;
        // A word may be a literal, and glued together.
        if (first == '+' && (second == '\'' || second == '"')) return true;
    }
    return false;
}

LegacyFindings FindInBody(std::string_view name, std::string_view body, long bodyLine,
                          const Options& options, const CodePage& codePage) {
    if (!MayHoldLegacyCommand(body)) return {};
    std::string text = "DEFINE ";
    text.append(name).append(" ()").append(body).append("\n!ENDDEFINE.\n");
    FindOptions search;
    search.conversion = options;
    InputPlace place;
    place.linesBefore = bodyLine - 1;
    return FindLegacyCommandsIn(text, search, {}, codePage, place);
}

MacroExpansion ExpandMacros(std::string_view text, const MacroOptions& options) {
    StringInput input(text);
    const CodePage* pCodePage = ChooseCodePage(input, options.conversion);
    if (pCodePage == nullptr) return {};
    const ScopedAssertionHandler handler(TellNobody);
    macro::ExpansionOptions expansion;
    expansion.pCodePage = pCodePage;
    expansion.layout.batchMode = options.conversion.batchMode;
    expansion.fileName = options.name;
    CallingResolver resolver(options);
    return ExpansionMaker(options.conversion, *pCodePage)
        .Make(ExpandFile(text, expansion, &resolver));
}

}  // namespace quillet
