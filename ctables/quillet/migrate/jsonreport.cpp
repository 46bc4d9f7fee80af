#include "migrate/jsonreport.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>
#include <variant>

#include "migrate/percentcode.h"
#include "migrate/reportmembers.h"
#include "migrate/storedtext.h"
#include "migrate/timetext.h"
#include "platform/codepage.h"

namespace quillet::migrate {

namespace {

using OrderedJson = nlohmann::ordered_json;

std::string Dump(const OrderedJson& value) {
    // Bytes that are no UTF-8 would throw otherwise.
    return value.dump(-1, ' ', false, OrderedJson::error_handler_t::replace);
}

std::string DumpOpen(const OrderedJson& object) {
    std::string text = Dump(object);
    text.pop_back();
    return text;
}

bool IsUtf8(std::string_view bytes) {
    Utf8Validator validator;
    return validator.Add(bytes) && validator.IsValid();
}

std::string_view TypeName(CommandType type) {
    switch (type) {
        case CommandType::kTables:
            return kTablesType;
        case CommandType::kIgraph:
            return kIgraphType;
        case CommandType::kOrdinary:
        case CommandType::kComment:
        case CommandType::kDocument:
        case CommandType::kInlineData:
            break;
    }
    return kOtherType;
}

OrderedJson TotalsJson(const Totals& totals) {
    OrderedJson json = OrderedJson::object();
    for (const TotalNumber& number : kTotalNumbers) {
        OrderedJson value = std::visit(
            [&totals](auto pMember) { return OrderedJson(totals.*pMember); }, number.member);
        if (!number.isOptional || value != 0) json[number.pName] = std::move(value);
    }
    return json;
}

OrderedJson ShardJson(const std::optional<Shard>& shard) {
    if (!shard) return nullptr;
    return {{"index", shard->index}, {"count", shard->count}};
}

// A path has the form of its bytes beside it where it cannot be shown as it is.
void AddPath(std::string_view path, OrderedJson& json) {
    json["path"] = ToUtf8(path, TextEncoding::kUtf8);
    if (!IsUtf8(path)) json["rawPath"] = PercentEncode(path);
}

void AddSignOff(const SignOff& signOff, OrderedJson& json) {
    json["hash"] = signOff.key.hash;
    json["number"] = signOff.key.number;
    json["copies"] = signOff.key.copies;
    json["state"] = NameOf(signOff.state);
    json["remark"] = signOff.remark;
    json["firstLine"] = signOff.firstLine;
}

OrderedJson SignOffsJson(const std::vector<SignOff>& signOffs) {
    OrderedJson array = OrderedJson::array();
    for (const SignOff& signOff : signOffs) {
        OrderedJson json = OrderedJson::object();
        AddSignOff(signOff, json);
        array.push_back(std::move(json));
    }
    return array;
}

OrderedJson OtherSignOffsJson(const std::vector<OtherSignOff>& signOffs) {
    OrderedJson array = OrderedJson::array();
    for (const OtherSignOff& other : signOffs) {
        OrderedJson json = OrderedJson::object();
        AddPath(other.path, json);
        AddSignOff(other.signOff, json);
        array.push_back(std::move(json));
    }
    return array;
}

OrderedJson SinceLastRunJson(const std::optional<ChangeSums>& sums) {
    if (!sums) return nullptr;
    OrderedJson json = {{"started", FormatTime(sums->started)}};
    for (const ChangeNumber& number : kChangeNumbers) json[number.pName] = *sums.*number.pSum;
    return json;
}

// Empty when nothing has changed.
OrderedJson ChangesJson(const FileChanges& changes) {
    OrderedJson json = OrderedJson::object();
    for (const ChangeNumber& number : kChangeNumbers) {
        if (number.pLines == nullptr || (changes.*number.pLines).empty()) continue;
        json[number.pName] = changes.*number.pLines;
    }
    return json;
}

}  // namespace

std::string CommandJson(const CommandReport& command, TextEncoding encoding, const CodePage* pNamed,
                        std::string_view hint) {
    OrderedJson json = {{"type", TypeName(command.type)},
                        {"outcome", NameOf(command.outcome)},
                        {"firstLine", command.firstLine},
                        {"lastLine", command.lastLine},
                        {"source", ToUtf8(command.source, encoding, pNamed)}};
    if (!command.macro.empty()) json["macro"] = ToUtf8(command.macro, encoding, pNamed);
    if (command.outcome == CommandOutcome::kConverted) {
        json["generated"] = ToUtf8(command.generated, encoding, pNamed);
        json["generatedLine"] = command.generatedLine;
    } else {
        json["error"] = NameOf(command.errorKind);
        json["errorLine"] = command.errorLine;
        json["errorColumn"] = command.errorColumn;
        json["message"] = ToUtf8(command.message, encoding, pNamed);
        if (!hint.empty()) json["hint"] = ToUtf8(hint, encoding, pNamed);
    }
    OrderedJson& warnings = json["warnings"] = OrderedJson::array();
    for (const std::string& warning : command.warnings) {
        warnings.push_back(ToUtf8(warning, encoding, pNamed));
    }
    return Dump(json);
}

std::string FindingJson(const Finding& finding, TextEncoding encoding, const CodePage* pNamed) {
    OrderedJson json = {{"code", NameOf(finding.code)},
                        {"kind", NameOf(KindOf(finding.code))},
                        {"command", nullptr},
                        {"firstLine", finding.firstLine},
                        {"lastLine", finding.lastLine},
                        {"causeLine", finding.causeLine},
                        {"macro", nullptr},
                        {"sentence", ToUtf8(finding.sentence, encoding, pNamed)},
                        {"text", ToUtf8(finding.text, encoding, pNamed)}};
    if (finding.command != CommandType::kOrdinary) json["command"] = TypeName(finding.command);
    if (!finding.macro.empty()) json["macro"] = ToUtf8(finding.macro, encoding, pNamed);
    return Dump(json);
}

std::string MacroCallJson(const MacroCallFacts& call, TextEncoding encoding,
                          const CodePage* pNamed) {
    OrderedJson json = {
        {"firstLine", call.firstLine}, {"lastLine", call.lastLine}, {"outcome", call.outcome}};
    if (!call.reason.empty()) json["reason"] = ToUtf8(call.reason, encoding, pNamed);
    if (call.sharesCommand) json["sharesCommand"] = true;
    if (!call.text.empty()) json["text"] = ToUtf8(call.text, encoding, pNamed);
    std::string text = DumpOpen(json);
    if (!call.findings.empty()) text.append(kFindingsMember).append("[" + call.findings + "]");
    if (!call.commands.empty()) text.append(kCommandsMember).append("[" + call.commands + "]");
    return text + "}";
}

std::string MacroJson(const DefinedMacro& macro, std::string_view calls, TextEncoding encoding,
                      const CodePage* pNamed) {
    OrderedJson json = {{"name", ToUtf8(macro.name, encoding, pNamed)}, {"file", nullptr}};
    if (!macro.file.empty()) json["file"] = ToUtf8(macro.file, TextEncoding::kUtf8);
    json["firstLine"] = macro.firstLine;
    json["lastLine"] = macro.lastLine;
    OrderedJson& commands = json["legacyCommands"] = OrderedJson::array();
    for (const LegacyCommand& command : macro.commands) {
        commands.push_back({{"type", TypeName(command.type)},
                            {"firstLine", command.firstLine},
                            {"lastLine", command.lastLine}});
    }
    json["expansions"] = macro.calls;
    if (macro.callsElsewhere > 0) json["callsElsewhere"] = macro.callsElsewhere;
    return DumpOpen(json) + ",\"calls\":[" + std::string(calls) + "]}";
}

namespace {

// What any form of a report says about a file.
OrderedJson ShortFileJson(const FileEntry& file) {
    const FileFacts& facts = file.facts;
    OrderedJson json = OrderedJson::object();
    AddPath(facts.path, json);
    json["outcome"] = NameOf(facts.outcome);
    if (IsLeftAlone(facts.result)) json["kept"] = true;
    if (facts.result != ResultState::kNone) json["result"] = NameOf(facts.result);
    if (facts.hasSourceChanged) json["sourceChanged"] = true;
    if (facts.isLinkNotFollowed) json["linkNotFollowed"] = true;
    json["bytes"] = facts.bytes;
    return json;
}

void AddNumbers(const FileEntry& file, OrderedJson& json) {
    for (const FileNumber& number : kFileNumbers) {
        const std::int64_t value = file.facts.*number.pMember;
        if (!number.isOptional || value != 0) json[number.pName] = value;
    }
    json["message"] = file.facts.message;
    if (OrderedJson changes = ChangesJson(file.changes); !changes.empty()) {
        json["changes"] = std::move(changes);
    }
}

}  // namespace

std::string OpenFileJson(const FileEntry& file) {
    OrderedJson json = ShortFileJson(file);
    json["modified"] = file.facts.modified;
    for (const FileText& text : kReadingTexts) json[text.pName] = file.facts.*text.pMember;
    AddNumbers(file, json);
    if (!file.signOffs.empty()) json["signOffs"] = SignOffsJson(file.signOffs);
    return DumpOpen(json);
}

std::string OpenShortFileJson(const FileEntry& file) {
    OrderedJson json = ShortFileJson(file);
    AddNumbers(file, json);
    return DumpOpen(json);
}

std::string AllSignOffsJson(const Report& report) {
    std::vector<OtherSignOff> all;
    for (const FileEntry& file : report.files) {
        for (const SignOff& signOff : file.signOffs) all.push_back({file.facts.path, signOff});
    }
    all.insert(all.end(), report.otherSignOffs.begin(), report.otherSignOffs.end());
    return Dump(OtherSignOffsJson(all));
}

std::string OpenReportJson(const Report& report) {
    const RunFacts& run = report.run;
    constexpr double kMilli = 1000;
    const OrderedJson json = {{"format", kFormat},
                              {"formatVersion", kFormatVersion},
                              {"quilletVersion", QUILLET_VERSION},
                              {"source", ToUtf8(run.source, TextEncoding::kUtf8)},
                              {"target", ToUtf8(run.target, TextEncoding::kUtf8)},
                              {"layout", run.layout},
                              {"dryRun", run.dryRun},
                              {"interrupted", run.isInterrupted},
                              {"shard", ShardJson(run.shard)},
                              {"started", FormatTime(run.started)},
                              {"seconds", std::round(run.seconds * kMilli) / kMilli},
                              {"totals", TotalsJson(TotalsOf(report.files))},
                              {"sinceLastRun", SinceLastRunJson(report.sinceLastRun)},
                              {"otherSignOffs", OtherSignOffsJson(report.otherSignOffs)}};
    return DumpOpen(json) + ",\n\"files\":[\n";
}

bool CopyArray(const ArrayPlace& place, TextOutput& output) {
    if (place.pFile == nullptr) return output.Write("[]");
    return CopyStoredText(*place.pFile, place.offset, place.length, [&output](std::string& block) {
        // Outside of strings, where alone they can stand, line ends mean nothing. What this program
        // has written holds none, which is found out faster than each byte is copied.
        for (const char lineEnd : {'\n', '\r'}) {
            if (block.find(lineEnd) != std::string::npos) std::erase(block, lineEnd);
        }
        return output.Write(block);
    });
}

namespace {

class CountingOutput final : public TextOutput {
public:
    explicit CountingOutput(TextOutput& output) : m_output(output) {}

    bool Write(std::string_view bytes) override {
        m_size += bytes.size();
        return m_output.Write(bytes);
    }
    [[nodiscard]] std::uint64_t Size() const { return m_size; }

private:
    TextOutput& m_output;
    std::uint64_t m_size = 0;
};

}  // namespace

bool WriteJsonReport(const Report& report, TextOutput& textOutput,
                     std::vector<ArrayOffsets>* pOffsets) {
    CountingOutput output(textOutput);
    if (!output.Write(OpenReportJson(report))) return false;
    bool isFirst = true;
    for (const FileEntry& file : report.files) {
        const std::string_view separator = std::exchange(isFirst, false) ? "" : ",\n";
        ArrayOffsets offsets;
        if (!output.Write(separator) || !output.Write(OpenFileJson(file)) ||
            !output.Write(kFindingsMember)) {
            return false;
        }
        offsets.findings = output.Size();
        if (!CopyArray(file.findings, output)) return false;
        if (file.macros.pFile != nullptr) {
            if (!output.Write(kMacrosMember)) return false;
            offsets.macros = output.Size();
            if (!CopyArray(file.macros, output)) return false;
        }
        if (!output.Write(kCommandsMember)) return false;
        offsets.commands = output.Size();
        if (!CopyArray(file.commands, output) || !output.Write("}")) return false;
        if (pOffsets != nullptr) pOffsets->push_back(offsets);
    }
    return output.Write("\n]}\n");
}

}  // namespace quillet::migrate
