#include "bison/tbtrparsebuilder.h"

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <ostream>
#include <string>
#include <utility>

#include "driver/messagecatalogue.h"
#include "platform/assertion.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "bison/tbtrparsebuilder";

constexpr std::size_t kLabelSlotOfVariable = 0;
constexpr std::size_t kDirectionSlotOfSort = 0;
constexpr std::size_t kWeightSlotOfFunction = 0;
constexpr std::size_t kVariableSlotOfArgument = 0;

constexpr std::string_view kStatisticsWord = "STATISTICS";
constexpr std::string_view kLabelsWord = "LABELS";

/// Destroys, when an action ends, whatever it left in its arguments.
template <std::size_t kCount>
class ConsumedValues {
public:
    template <typename... Values>
    explicit ConsumedValues(Values&... values) : m_values{&values...} {}
    ~ConsumedValues() {
        for (OpaqueValue* pValue : m_values) OpaqueValue_Clear(*pValue);
    }
    ConsumedValues(const ConsumedValues&) = delete;
    ConsumedValues& operator=(const ConsumedValues&) = delete;

private:
    std::array<OpaqueValue*, kCount> m_values;
};

template <typename... Values>
ConsumedValues(Values&...) -> ConsumedValues<sizeof...(Values)>;

OpaqueValue ValueOf(std::unique_ptr<TbTrParseNode> node) {
    OpaqueValue value;
    if (node) OpaqueValue_SetParseNode(value, std::move(node));
    return value;
}

std::unique_ptr<TbTrParseNode> ReleaseVariable(OpaqueValue& varname) {
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0),
                        "OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0)")) {
        return nullptr;
    }
    std::unique_ptr<TAVQToken> token = OpaqueValue_ReleaseTAVQToken(varname);
    return MakeVarNameNode(token);
}

std::unique_ptr<TbTrParseNode> ReleaseLiteral(OpaqueValue& literal) {
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(literal, SP_SLITERAL, 0, 0),
                        "OpaqueValue_CheckTAVQToken(literal, SP_SLITERAL, 0, 0)")) {
        return nullptr;
    }
    std::unique_ptr<TAVQToken> token = OpaqueValue_ReleaseTAVQToken(literal);
    return MakeLiteralNode(token);
}

std::unique_ptr<TbTrParseNode> ReleaseNumber(OpaqueValue& number) {
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(number, SP_NUMBER, 0, 0),
                        "OpaqueValue_CheckTAVQToken(number, SP_NUMBER, 0, 0)")) {
        return nullptr;
    }
    return MakeNode(SP_NUMBER, OpaqueValue_ReleaseTAVQToken(number));
}

/// A node of `type` that owns a name, which need not be a valid variable name.
std::unique_ptr<TbTrParseNode> ReleaseName(NodeType type, OpaqueValue& functionName) {
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(functionName, SP_VARNAME, SP_NONVARNAME, 0),
                        "OpaqueValue_CheckTAVQToken(functionName, SP_VARNAME, SP_NONVARNAME, 0)")) {
        return nullptr;
    }
    return MakeNode(type, OpaqueValue_ReleaseTAVQToken(functionName));
}

std::unique_ptr<TbTrParseNode> ReleaseKeyword(OpaqueValue& settingKeyword) {
    const NodeType type = OpaqueValue_GetTbTokenType(settingKeyword);
    std::unique_ptr<TAVQToken> token = OpaqueValue_ReleaseTAVQToken(settingKeyword);
    const bool hasToken = token != nullptr;
    std::unique_ptr<TbTrParseNode> node = MakeKeywordNode(type, token);
    // The token went into a node that was never made. A setting must not be lost in silence.
    if (!node && hasToken && !token) throw std::bad_alloc();
    return node;
}

bool CheckParentheses(const OpaqueValue& leftParen, const OpaqueValue& rightParen) {
    const bool left = QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(leftParen, SP_LPAREN, 0, 0),
                                     "OpaqueValue_CheckTAVQToken(leftParen, SP_LPAREN, 0, 0)");
    const bool right = QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(rightParen, SP_RPAREN, 0, 0),
                                      "OpaqueValue_CheckTAVQToken(rightParen, SP_RPAREN, 0, 0)");
    return left && right;
}

bool CheckKeyword(const OpaqueValue& keyword) {
    return QUILLET_ASSERT(OpaqueValue_IsTAVQToken(keyword), "OpaqueValue_IsTAVQToken(keyword)");
}

bool CheckGenericList(const OpaqueValue& list) {
    return QUILLET_ASSERT(OpaqueValue_IsParseNode(list), "OpaqueValue_IsParseNode(list)") &&
           QUILLET_ASSERT(OpaqueValue_GetParseNodeType(list) == TBI_GENERICLIST,
                          "OpaqueValue_GetParseNodeType(list) == TBI_GENERICLIST");
}

bool CheckVariableList(const OpaqueValue& list) {
    return QUILLET_ASSERT(OpaqueValue_IsParseNode(list), "OpaqueValue_IsParseNode(list)") &&
           QUILLET_ASSERT(OpaqueValue_GetParseNodeType(list) == TBI_VARLIST,
                          "OpaqueValue_GetParseNodeType(list) == TBI_VARLIST");
}

bool CheckList(NodeType listType, const OpaqueValue& list) {
    switch (listType) {
        case TBI_GENERICLIST:
            return CheckGenericList(list);
        case TBI_VARLIST:
            return CheckVariableList(list);
        case TB_SORT:
            return QUILLET_ASSERT(OpaqueValue_CheckParseNode(list, TB_SORT, 0, 0),
                                  "OpaqueValue_CheckParseNode(list, TB_SORT, 0, 0)");
        case TB_STATISTICS:
            return QUILLET_ASSERT(OpaqueValue_CheckParseNode(list, TB_STATISTICS, 0, 0),
                                  "OpaqueValue_CheckParseNode(list, TB_STATISTICS, 0, 0)");
        case TB_FORMAT:
            return QUILLET_ASSERT(OpaqueValue_CheckParseNode(list, TB_FORMAT, 0, 0),
                                  "OpaqueValue_CheckParseNode(list, TB_FORMAT, 0, 0)");
        default:
            return QUILLET_ASSERT(false, "0 && \"illegal list node type\"");
    }
}

std::unique_ptr<TbTrParseNode> MakeListNode(NodeType listType) {
    std::unique_ptr<TbTrParseNode> listNode = MakeNode(listType, nullptr);
    if (listType == TB_SORT) listNode->InsertNullChildren(kDirectionSlotOfSort, 1);
    return listNode;
}

/// The node of a list that grows; null, behind an assertion, when the value is something else.
std::unique_ptr<TbTrParseNode> ReleaseOrMakeList(NodeType listType, OpaqueValue& list) {
    if (!OpaqueValue_IsEmpty(list)) {
        return CheckList(listType, list) ? OpaqueValue_ReleaseParseNode(list) : nullptr;
    }
    std::unique_ptr<TbTrParseNode> listNode = MakeListNode(listType);
    return QUILLET_ASSERT(listNode != nullptr, "listNode != 0") ? std::move(listNode) : nullptr;
}

void MoveChildren(TbTrParseNode& from, TbTrParseNode& to) {
    for (std::size_t index = 0; index < from.GetChildCount(); ++index) {
        to.AddChild(from.ReplaceChild(index, nullptr));
    }
}

/// A node of `type` with the children of the `TBI_GENERICLIST` or `TBI_VARLIST` in `list`.
OpaqueValue BuildFromList(NodeType type, NodeType listType, OpaqueValue& keyword,
                          OpaqueValue& list) {
    const ConsumedValues consumed(keyword, list);
    const bool keywordIsSound = CheckKeyword(keyword);
    if (!CheckList(listType, list) || !keywordIsSound) return {};
    const std::unique_ptr<TbTrParseNode> listNode = OpaqueValue_ReleaseParseNode(list);
    std::unique_ptr<TbTrParseNode> node = MakeNode(type, nullptr);
    MoveChildren(*listNode, *node);
    return ValueOf(std::move(node));
}

/// A subcommand node with the node of its setting, if there is one.
OpaqueValue BuildSetting(NodeType type, OpaqueValue& settingKeyword) {
    std::unique_ptr<TbTrParseNode> node = MakeNode(type, nullptr);
    if (OpaqueValue_IsTAVQToken(settingKeyword)) node->AddChild(ReleaseKeyword(settingKeyword));
    return ValueOf(std::move(node));
}

bool CheckSettingKeyword(const OpaqueValue& settingKeyword) {
    return QUILLET_ASSERT(OpaqueValue_IsTAVQToken(settingKeyword),
                          "OpaqueValue_IsTAVQToken(settingKeyword)");
}

void AddTrace(const TablesCommand& command, std::string_view report, std::string_view text) {
    if (command.Trace()) *command.Trace() << report << text << '\n';
}

void AddReport(TablesCommand& command, TablesErrorKind kind, const TablesLocation& location,
               NodeType subcommand) {
    ReportEntry entry;
    entry.kind = kind;
    entry.line = location.last_line;
    entry.column = location.last_column;
    entry.subcommand = subcommand;
    command.AddReport(std::move(entry));
}

}  // namespace

// ---- Reports and warnings

OpaqueValue reportGenericError(TablesCommand& command, const TablesLocation& location) {
    AddTrace(command, "reportGenericError ", "");
    AddReport(command, TablesErrorKind::kGeneric, location, kNoNodeType);
    return {};
}

OpaqueValue reportSubcommandArgumentError(TablesCommand& command, const TablesLocation& location,
                                          OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    CheckKeyword(keyword);
    const NodeType subcommand =
        OpaqueValue_IsTAVQToken(keyword) ? OpaqueValue_GetTbTokenType(keyword) : kNoNodeType;
    AddTrace(command, "reportSubcommandArgumentError for ", std::to_string(subcommand));
    AddReport(command, TablesErrorKind::kSubcommandArgument, location, subcommand);
    return {};
}

OpaqueValue reportObsoleteSubcommand(TablesCommand& command, OpaqueValue& keyword,
                                     OpaqueValue& arguments) {
    const ConsumedValues consumed(keyword, arguments);
    const std::string_view name = TablesCommand::NameOfCode(OpaqueValue_GetTbTokenType(keyword));
    AddTrace(command, "reportObsoleteSubcommand for ", name);
    command.AddWarning(FillMessage(kObsoleteSubcommand, name));
    return {};
}

OpaqueValue reportUnknownSubcommand(TablesCommand& command, OpaqueValue& subcommandString,
                                    OpaqueValue& arguments) {
    const ConsumedValues consumed(subcommandString, arguments);
    const TAVQToken* pWord = OpaqueValue_IsTAVQToken(subcommandString)
                                 ? OpaqueValue_PeekTAVQToken(subcommandString)
                                 : nullptr;
    if (!QUILLET_ASSERT(pWord, "subcommandString")) return {};
    const std::string& text = pWord->Text(/*raw=*/false);
    AddTrace(command, "reportUnknownSubcommand for ", text);
    command.AddWarning(FillMessage(kUnknownSubcommand, text));
    return {};
}

OpaqueValue reportObsoleteFormat(TablesCommand& command, OpaqueValue& keyword,
                                 OpaqueValue& lookAhead) {
    const ConsumedValues consumed(keyword, lookAhead);
    // One line is enough however often a command does it.
    if (command.LastWarning() != kObsoleteFormat) {
        command.AddWarning(std::string(kObsoleteFormat));
    }
    command.SkipToNextSlash();
    return {};
}

void TraceSyntaxError(const TablesCommand& command, const TablesLocation& location,
                      std::string_view message) {
    if (!command.Trace()) return;
    *command.Trace() << location.last_line << ':' << location.last_column << ": " << message
                     << '\n';
}

// ---- Lists

OpaqueValue BuildEmptyList() { return ValueOf(MakeListNode(TBI_GENERICLIST)); }

OpaqueValue StartList(NodeType listType, OpaqueValue& element) {
    OpaqueValue list;
    return AddToList(listType, list, element);
}

OpaqueValue AddToList(NodeType listType, OpaqueValue& list, OpaqueValue& element) {
    const ConsumedValues consumed(list, element);
    if (!QUILLET_ASSERT(OpaqueValue_IsEmpty(element) || OpaqueValue_IsParseNode(element),
                        "OpaqueValue_IsEmpty(element) || OpaqueValue_IsParseNode(element)")) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> listNode = ReleaseOrMakeList(listType, list);
    if (listNode && OpaqueValue_IsParseNode(element)) {
        listNode->AddChild(OpaqueValue_ReleaseParseNode(element));
    }
    return ValueOf(std::move(listNode));
}

OpaqueValue StartNameList(OpaqueValue& varname) {
    OpaqueValue list;
    return AddToNameList(list, varname);
}

OpaqueValue AddToNameList(OpaqueValue& list, OpaqueValue& varname) {
    OpaqueValue element = BuildVariable(varname);
    return AddToList(TBI_VARLIST, list, element);
}

OpaqueValue AddLiteralToList(OpaqueValue& list, OpaqueValue& literal) {
    const ConsumedValues consumed(literal);
    OpaqueValue element = ValueOf(ReleaseLiteral(literal));
    return AddToList(TBI_GENERICLIST, list, element);
}

OpaqueValue DiscardToken(OpaqueValue& token) {
    OpaqueValue_Clear(token);
    return {};
}

OpaqueValue DiscardToken(OpaqueValue& discarded, OpaqueValue& token) {
    const ConsumedValues consumed(discarded);
    return DiscardToken(token);
}

// ---- Command and groups

OpaqueValue BuildCommand(TablesCommand& command, OpaqueValue& globalGroup,
                         OpaqueValue& tableGroupList) {
    const ConsumedValues consumed(globalGroup, tableGroupList);
    if (!CheckGenericList(globalGroup) || !CheckGenericList(tableGroupList)) return {};
    std::unique_ptr<TbTrParseNode> root = MakeListNode(TBI_GENERICLIST);
    root->AddChild(OpaqueValue_ReleaseParseNode(globalGroup));
    const std::unique_ptr<TbTrParseNode> groups = OpaqueValue_ReleaseParseNode(tableGroupList);
    MoveChildren(*groups, *root);
    command.SetParseResult(std::move(root));
    return {};
}

OpaqueValue BuildTableGroup(OpaqueValue& table, OpaqueValue& localSubcommandList) {
    const ConsumedValues consumed(table, localSubcommandList);
    if (!QUILLET_ASSERT(OpaqueValue_CheckParseNode(table, TB_TABLE, 0, 0),
                        "OpaqueValue_CheckParseNode(table, TB_TABLE, 0, 0)") ||
        !CheckGenericList(localSubcommandList)) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> group = MakeListNode(TBI_GENERICLIST);
    group->AddChild(OpaqueValue_ReleaseParseNode(table));
    const std::unique_ptr<TbTrParseNode> locals = OpaqueValue_ReleaseParseNode(localSubcommandList);
    MoveChildren(*locals, *group);
    return ValueOf(std::move(group));
}

// ---- Settings

OpaqueValue BuildAutolabel(OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    OpaqueValue none;
    return CheckKeyword(keyword) ? BuildSetting(TB_AUTOLABEL, none) : none;
}

OpaqueValue BuildAutolabel(OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(tokenType == TB_DEFAULT || tokenType == TB_ON || tokenType == TB_OFF,
                        "tokenType == TB_DEFAULT || tokenType == TB_ON || tokenType == TB_OFF")) {
        return {};
    }
    return BuildSetting(TB_AUTOLABEL, settingKeyword);
}

OpaqueValue BuildBase(OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    OpaqueValue none;
    return CheckKeyword(keyword) ? BuildSetting(TB_BASE, none) : none;
}

OpaqueValue BuildBase(OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(
            tokenType == TB_ANSWERING || tokenType == TB_QUALIFIED || tokenType == SP_ALL,
            "tokenType == TB_ANSWERING || tokenType == TB_QUALIFIED || tokenType == SP_ALL")) {
        return {};
    }
    return BuildSetting(TB_BASE, settingKeyword);
}

OpaqueValue BuildGbase(OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    OpaqueValue none;
    return CheckKeyword(keyword) ? BuildSetting(TB_GBASE, none) : none;
}

OpaqueValue BuildGbase(OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType nodeType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(nodeType == TB_CASES || nodeType == TB_RESPONSES,
                        "nodeType == TB_CASES || nodeType == TB_RESPONSES")) {
        return {};
    }
    return BuildSetting(TB_GBASE, settingKeyword);
}

OpaqueValue BuildMissing(OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(tokenType == TB_EXCLUDE || tokenType == TB_INCLUDE,
                        "tokenType == TB_EXCLUDE || tokenType == TB_INCLUDE")) {
        return {};
    }
    return BuildSetting(TB_MISSINGSUBCOM, settingKeyword);
}

OpaqueValue BuildTexts(NodeType type, OpaqueValue& keyword, OpaqueValue& list) {
    return BuildFromList(type, TBI_GENERICLIST, keyword, list);
}

OpaqueValue DropEmptyFormat(OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    CheckKeyword(keyword);
    return {};
}

OpaqueValue BuildFormat(OpaqueValue& keyword, OpaqueValue& formatSettingList) {
    const ConsumedValues consumed(keyword, formatSettingList);
    if (!CheckKeyword(keyword) || !QUILLET_ASSERT(OpaqueValue_IsParseNode(formatSettingList),
                                                  "OpaqueValue_IsParseNode(formatSettingList)")) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> parseNode = OpaqueValue_ReleaseParseNode(formatSettingList);
    if (!QUILLET_ASSERT(parseNode->GetNodeType() == TB_FORMAT,
                        "parseNode->GetNodeType() == TB_FORMAT")) {
        return {};
    }
    const std::size_t numchildren = parseNode->GetChildCount();
    QUILLET_ASSERT(numchildren <= 2, "numchildren >=0 && numchildren <= 2");
    int nblanks = 0;
    int nzeros = 0;
    for (std::size_t index = 0; index < numchildren; ++index) {
        const TbTrParseNode* child = parseNode->GetChild(index);
        const NodeType type = child ? child->GetNodeType() : kNoNodeType;
        QUILLET_ASSERT(type == SP_SLITERAL || type == TB_ZERO || type == TB_BLANK,
                       "child->GetNodeType() == SP_SLITERAL || child->GetNodeType() == TB_ZERO || "
                       "child->GetNodeType() == TB_BLANK");
        if (type != TB_BLANK && type != TB_ZERO) continue;
        QUILLET_ASSERT(nblanks == 0, "nblanks == 0");
        QUILLET_ASSERT(nzeros == 0, "nzeros == 0");
        ++(type == TB_BLANK ? nblanks : nzeros);
    }
    return ValueOf(std::move(parseNode));
}

OpaqueValue StartFormat(OpaqueValue& formatSetting) {
    OpaqueValue formatSettingList;
    return AddFormatSetting(formatSettingList, formatSetting);
}

OpaqueValue AddFormatSetting(OpaqueValue& formatSettingList, OpaqueValue& formatSetting) {
    const ConsumedValues consumed(formatSettingList, formatSetting);
    std::unique_ptr<TbTrParseNode> listNode = ReleaseOrMakeList(TB_FORMAT, formatSettingList);
    if (!listNode || OpaqueValue_IsEmpty(formatSetting)) return ValueOf(std::move(listNode));
    if (!QUILLET_ASSERT(OpaqueValue_IsParseNode(formatSetting),
                        "OpaqueValue_IsParseNode(formatSetting)")) {
        return ValueOf(std::move(listNode));
    }
    const auto isFill = [](NodeType type) { return type == TB_BLANK || type == TB_ZERO; };
    const NodeType newType = OpaqueValue_GetParseNodeType(formatSetting);
    std::unique_ptr<TbTrParseNode> setting = OpaqueValue_ReleaseParseNode(formatSetting);
    for (std::size_t index = 0; index < listNode->GetChildCount(); ++index) {
        const NodeType oldType = listNode->GetChild(index)->GetNodeType();
        if (oldType == newType || (isFill(oldType) && isFill(newType))) {
            listNode->ReplaceChild(index, std::move(setting));
            return ValueOf(std::move(listNode));
        }
    }
    listNode->AddChild(std::move(setting));
    return ValueOf(std::move(listNode));
}

OpaqueValue BuildEmptyCellSetting(OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(settingKeyword);
    if (!CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(tokenType == TB_BLANK || tokenType == TB_ZERO,
                        "tokenType == TB_BLANK || tokenType == TB_ZERO")) {
        return {};
    }
    return ValueOf(ReleaseKeyword(settingKeyword));
}

OpaqueValue BuildMissingSetting(OpaqueValue& settingKeyword, OpaqueValue& leftParen,
                                OpaqueValue& literal, OpaqueValue& rightParen) {
    const ConsumedValues consumed(settingKeyword, leftParen, literal, rightParen);
    if (!CheckSettingKeyword(settingKeyword) || !CheckParentheses(leftParen, rightParen)) {
        return {};
    }
    return ValueOf(ReleaseLiteral(literal));
}

// ---- Totals, sets and observation

OpaqueValue BuildTotals(NodeType type, OpaqueValue& keyword, OpaqueValue& totalVarSpecList) {
    return BuildFromList(type, TBI_VARLIST, keyword, totalVarSpecList);
}

OpaqueValue BuildVariable(OpaqueValue& varname) {
    const ConsumedValues consumed(varname);
    return ValueOf(ReleaseVariable(varname));
}

OpaqueValue BuildLabelledVariable(OpaqueValue& varname, OpaqueValue& label) {
    const ConsumedValues consumed(varname, label);
    std::unique_ptr<TbTrParseNode> variable = ReleaseVariable(varname);
    if (variable) variable->ReplaceChild(kLabelSlotOfVariable, ReleaseLiteral(label));
    return ValueOf(std::move(variable));
}

OpaqueValue BuildVariableRange(OpaqueValue& fromVarname, OpaqueValue& to, OpaqueValue& toVarname) {
    const ConsumedValues consumed(fromVarname, to, toVarname);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(fromVarname, SP_VARNAME, 0, 0),
                        "OpaqueValue_CheckTAVQToken(fromVarname, SP_VARNAME, 0, 0)") ||
        !QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(to, SP_TO, 0, 0),
                        "OpaqueValue_CheckTAVQToken(to, SP_TO, 0, 0)") ||
        !QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(toVarname, SP_VARNAME, 0, 0),
                        "OpaqueValue_CheckTAVQToken(toVarname, SP_VARNAME, 0, 0)")) {
        return {};
    }
    std::unique_ptr<TAVQToken> fromToken = OpaqueValue_ReleaseTAVQToken(fromVarname);
    std::unique_ptr<TAVQToken> toToken = OpaqueValue_ReleaseTAVQToken(toVarname);
    return ValueOf(MakeVarRangeNode(fromToken, toToken));
}

namespace {

/// A set's node with the two children that both kinds of set have; null behind an assertion.
std::unique_ptr<TbTrParseNode> BuildSet(NodeType type, OpaqueValue& keyword, OpaqueValue& varname,
                                        OpaqueValue& label, OpaqueValue& variableSpecList) {
    const ConsumedValues consumed(keyword, varname, label, variableSpecList);
    if (!CheckKeyword(keyword) || !CheckVariableList(variableSpecList)) return nullptr;
    OpaqueValue name =
        OpaqueValue_IsEmpty(label) ? BuildVariable(varname) : BuildLabelledVariable(varname, label);
    if (OpaqueValue_IsEmpty(name)) return nullptr;
    std::unique_ptr<TbTrParseNode> nameNode = OpaqueValue_ReleaseParseNode(name);
    std::unique_ptr<TbTrParseNode> set = MakeNode(type, nullptr);
    set->AddChild(std::move(nameNode));
    set->AddChild(OpaqueValue_ReleaseParseNode(variableSpecList));
    return set;
}

}  // namespace

OpaqueValue BuildMrGroup(OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& variableSpecList) {
    OpaqueValue noLabel;
    return BuildMrGroup(keyword, varname, noLabel, variableSpecList);
}

OpaqueValue BuildMrGroup(OpaqueValue& keyword, OpaqueValue& varname, OpaqueValue& label,
                         OpaqueValue& variableSpecList) {
    return ValueOf(BuildSet(TB_MRGROUP, keyword, varname, label, variableSpecList));
}

OpaqueValue BuildMdGroup(OpaqueValue& keyword, OpaqueValue& varname, OpaqueValue& variableSpecList,
                         OpaqueValue& leftParen, OpaqueValue& countedValue,
                         OpaqueValue& rightParen) {
    OpaqueValue noLabel;
    return BuildMdGroup(keyword, varname, noLabel, variableSpecList, leftParen, countedValue,
                        rightParen);
}

OpaqueValue BuildMdGroup(OpaqueValue& keyword, OpaqueValue& varname, OpaqueValue& label,
                         OpaqueValue& variableSpecList, OpaqueValue& leftParen,
                         OpaqueValue& countedValue, OpaqueValue& rightParen) {
    const ConsumedValues consumed(leftParen, countedValue, rightParen);
    std::unique_ptr<TbTrParseNode> set =
        BuildSet(TB_MDGROUP, keyword, varname, label, variableSpecList);
    if (!set || !CheckParentheses(leftParen, rightParen) ||
        !QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(countedValue, SP_SLITERAL, SP_NUMBER, 0),
                        "OpaqueValue_CheckTAVQToken(countedValue, SP_SLITERAL, SP_NUMBER, 0)")) {
        return {};
    }
    const bool isNumber = OpaqueValue_GetTbTokenType(countedValue) == SP_NUMBER;
    set->AddChild(isNumber ? ReleaseNumber(countedValue) : ReleaseLiteral(countedValue));
    return ValueOf(std::move(set));
}

bool BuildObservation(TablesCommand& command, const TablesLocation& location, OpaqueValue& result,
                      OpaqueValue& keyword, OpaqueValue& variableSpecList) {
    const ConsumedValues consumed(keyword, variableSpecList);
    // The parser's slot for the result holds a stale copy of an argument, not a value.
    OpaqueValue_Init(result);
    if (!CheckKeyword(keyword) || !CheckVariableList(variableSpecList)) return false;
    std::unique_ptr<TbTrParseNode> list = OpaqueValue_ReleaseParseNode(variableSpecList);
    bool hasRange = false;
    for (std::size_t index = 0; index < list->GetChildCount() && !hasRange; ++index) {
        const TbTrParseNode* pChild = list->GetChild(index);
        const NodeType childNodeType = pChild ? pChild->GetNodeType() : kNoNodeType;
        QUILLET_ASSERT(childNodeType == TBI_VARRANGE || childNodeType == SP_VARNAME,
                       "childNodeType == TBI_VARRANGE || childNodeType == SP_VARNAME");
        hasRange = childNodeType == TBI_VARRANGE;
    }
    if (hasRange) {
        AddTrace(command, "reportObservationRange ", "");
        AddReport(command, TablesErrorKind::kObservationRange, location, kNoNodeType);
        return false;
    }
    std::unique_ptr<TbTrParseNode> observation = MakeNode(TB_OBSERVATION, nullptr);
    observation->AddChild(std::move(list));
    OpaqueValue_SetParseNode(result, std::move(observation));
    return true;
}

// ---- SORT and STATISTICS

OpaqueValue BuildSort(OpaqueValue& keyword, OpaqueValue& sortVariableList) {
    const ConsumedValues consumed(keyword, sortVariableList);
    if (!CheckKeyword(keyword) || !CheckList(TB_SORT, sortVariableList)) return {};
    return ValueOf(OpaqueValue_ReleaseParseNode(sortVariableList));
}

OpaqueValue BuildSort(OpaqueValue& keyword, OpaqueValue& direction, OpaqueValue& sortVariableList) {
    const ConsumedValues consumed(direction);
    OpaqueValue sort = BuildSort(keyword, sortVariableList);
    if (OpaqueValue_IsEmpty(sort)) return {};
    const NodeType tbTokenType = OpaqueValue_GetTbTokenType(direction);
    if (!QUILLET_ASSERT(tbTokenType == TB_ASCENDING || tbTokenType == TB_DESCENDING,
                        "tbTokenType == TB_ASCENDING || tbTokenType == TB_DESCENDING")) {
        return sort;
    }
    std::unique_ptr<TbTrParseNode> pSortSubNode = OpaqueValue_ReleaseParseNode(sort);
    if (QUILLET_ASSERT(pSortSubNode->GetChildCount() > 0, "pSortSubNode->GetChildCount() > 0")) {
        const std::unique_ptr<TbTrParseNode> pExistingChild =
            pSortSubNode->ReplaceChild(kDirectionSlotOfSort, ReleaseKeyword(direction));
        QUILLET_ASSERT(pExistingChild == nullptr, "pExistingChild == 0");
    }
    return ValueOf(std::move(pSortSubNode));
}

OpaqueValue BuildSortVariable(OpaqueValue& varname) {
    const ConsumedValues consumed(varname);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0),
                        "OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0)")) {
        return {};
    }
    return ValueOf(MakeNode(TBI_SORTVAR, OpaqueValue_ReleaseTAVQToken(varname)));
}

OpaqueValue BuildSortVariable(OpaqueValue& varname, OpaqueValue& leftParen,
                              OpaqueValue& sortFunction, OpaqueValue& rightParen) {
    const ConsumedValues consumed(varname, leftParen, sortFunction, rightParen);
    if (!CheckParentheses(leftParen, rightParen) ||
        !QUILLET_ASSERT(OpaqueValue_CheckParseNode(sortFunction, TBI_SORTFUNCTION, 0, 0),
                        "OpaqueValue_CheckParseNode(sortFunction, TBI_SORTFUNCTION, 0, 0)")) {
        return {};
    }
    OpaqueValue variable = BuildSortVariable(varname);
    std::unique_ptr<TbTrParseNode> node = OpaqueValue_ReleaseParseNode(variable);
    if (node) node->AddChild(OpaqueValue_ReleaseParseNode(sortFunction));
    return ValueOf(std::move(node));
}

OpaqueValue BuildSortFunction(OpaqueValue& functionName) {
    const ConsumedValues consumed(functionName);
    return ValueOf(ReleaseName(TBI_SORTFUNCTION, functionName));
}

OpaqueValue BuildSortFunction(OpaqueValue& functionName, OpaqueValue& leftParen,
                              OpaqueValue& varname, OpaqueValue& rightParen) {
    const ConsumedValues consumed(functionName, leftParen, varname, rightParen);
    if (!CheckParentheses(leftParen, rightParen)) return {};
    std::unique_ptr<TbTrParseNode> function = ReleaseName(TBI_SORTFUNCTION, functionName);
    std::unique_ptr<TbTrParseNode> argument = ReleaseVariable(varname);
    if (!function || !argument) return {};
    function->AddChild(std::move(argument));
    return ValueOf(std::move(function));
}

OpaqueValue BuildStatistics(OpaqueValue& keyword, OpaqueValue& statFuncList) {
    const ConsumedValues consumed(keyword, statFuncList);
    if (!CheckKeyword(keyword) || !CheckList(TB_STATISTICS, statFuncList)) return {};
    return ValueOf(OpaqueValue_ReleaseParseNode(statFuncList));
}

OpaqueValue BuildUnweighted(OpaqueValue& unweighted, OpaqueValue& statFuncSpec) {
    const ConsumedValues consumed(unweighted, statFuncSpec);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(unweighted, TB_UNWEIGHTED, 0, 0),
                        "OpaqueValue_CheckTAVQToken(unweighted, TB_UNWEIGHTED, 0, 0)") ||
        !QUILLET_ASSERT(OpaqueValue_CheckParseNode(statFuncSpec, TBI_FULLSTATFUNCTION, 0, 0),
                        "OpaqueValue_CheckParseNode(statFuncSpec, TBI_FULLSTATFUNCTION, 0, 0)")) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> function = OpaqueValue_ReleaseParseNode(statFuncSpec);
    const std::unique_ptr<TbTrParseNode> pOldChild =
        function->ReplaceChild(kWeightSlotOfFunction, ReleaseKeyword(unweighted));
    QUILLET_ASSERT(pOldChild == nullptr, "pOldChild == 0");
    return ValueOf(std::move(function));
}

OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc) {
    const ConsumedValues consumed(statFunc);
    if (!QUILLET_ASSERT(OpaqueValue_CheckParseNode(statFunc, TBI_STATFUNCTION, 0, 0),
                        "OpaqueValue_CheckParseNode(statFunc, TBI_STATFUNCTION, 0, 0)")) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> function = MakeNode(TBI_FULLSTATFUNCTION, nullptr);
    function->InsertNullChildren(kWeightSlotOfFunction, 1);
    function->AddChild(OpaqueValue_ReleaseParseNode(statFunc));
    return ValueOf(std::move(function));
}

OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& rightParen) {
    const ConsumedValues consumed(statFunc, leftParen, rightParen);
    if (!CheckParentheses(leftParen, rightParen)) return {};
    return BuildFullStatFunction(statFunc);
}

OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& statFuncArgs, OpaqueValue& rightParen) {
    const ConsumedValues consumed(statFunc, statFuncArgs);
    OpaqueValue value = BuildFullStatFunction(statFunc, leftParen, rightParen);
    if (OpaqueValue_IsEmpty(value) || !CheckGenericList(statFuncArgs)) return value;
    std::unique_ptr<TbTrParseNode> function = OpaqueValue_ReleaseParseNode(value);
    function->AddChild(OpaqueValue_ReleaseParseNode(statFuncArgs));
    return ValueOf(std::move(function));
}

OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& statFuncArgs, OpaqueValue& colon,
                                  OpaqueValue& variableNameList, OpaqueValue& rightParen) {
    const ConsumedValues consumed(colon, variableNameList);
    OpaqueValue value = BuildFullStatFunction(statFunc, leftParen, statFuncArgs, rightParen);
    if (OpaqueValue_IsEmpty(value) || !CheckVariableList(variableNameList)) return value;
    std::unique_ptr<TbTrParseNode> function = OpaqueValue_ReleaseParseNode(value);
    function->AddChild(OpaqueValue_ReleaseParseNode(variableNameList));
    return ValueOf(std::move(function));
}

OpaqueValue BuildStatFunction(OpaqueValue& functionName) {
    const ConsumedValues consumed(functionName);
    return ValueOf(ReleaseName(TBI_STATFUNCTION, functionName));
}

OpaqueValue BuildStatFunction(OpaqueValue& functionName, OpaqueValue& number) {
    const ConsumedValues consumed(functionName, number);
    std::unique_ptr<TbTrParseNode> function = ReleaseName(TBI_STATFUNCTION, functionName);
    std::unique_ptr<TbTrParseNode> numberNode = ReleaseNumber(number);
    if (!function || !numberNode) return {};
    function->AddChild(std::move(numberNode));
    return ValueOf(std::move(function));
}

namespace {

OpaqueValue BuildArgumentSlots(std::unique_ptr<TbTrParseNode> variable,
                               std::unique_ptr<TbTrParseNode> format,
                               std::unique_ptr<TbTrParseNode> label) {
    std::unique_ptr<TbTrParseNode> argument = MakeNode(TBI_STATFUNCARG, nullptr);
    argument->AddChild(std::move(variable));
    argument->AddChild(std::move(format));
    argument->AddChild(std::move(label));
    return ValueOf(std::move(argument));
}

}  // namespace

OpaqueValue BuildStatDisplay(OpaqueValue& label) {
    const ConsumedValues consumed(label);
    std::unique_ptr<TbTrParseNode> labelNode = ReleaseLiteral(label);
    if (!labelNode) return {};
    return BuildArgumentSlots(nullptr, nullptr, std::move(labelNode));
}

OpaqueValue BuildStatDisplay(OpaqueValue& leftParen, OpaqueValue& statFormat,
                             OpaqueValue& rightParen) {
    OpaqueValue noLabel;
    return BuildStatDisplay(leftParen, statFormat, rightParen, noLabel);
}

OpaqueValue BuildStatDisplay(OpaqueValue& leftParen, OpaqueValue& statFormat,
                             OpaqueValue& rightParen, OpaqueValue& label) {
    const ConsumedValues consumed(leftParen, statFormat, rightParen, label);
    if (!CheckParentheses(leftParen, rightParen) ||
        !QUILLET_ASSERT(OpaqueValue_CheckParseNode(statFormat, TBI_FMT, 0, 0),
                        "OpaqueValue_CheckParseNode(statFormat, TBI_FMT, 0, 0)")) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> labelNode;
    if (!OpaqueValue_IsEmpty(label)) labelNode = ReleaseLiteral(label);
    return BuildArgumentSlots(nullptr, OpaqueValue_ReleaseParseNode(statFormat),
                              std::move(labelNode));
}

OpaqueValue BuildStatFormat(OpaqueValue& formatWord) {
    const ConsumedValues consumed(formatWord);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(formatWord, SP_VARNAME, SP_NONVARNAME, 0),
                        "OpaqueValue_CheckTAVQToken(formatWord, SP_VARNAME, SP_NONVARNAME, 0)")) {
        return {};
    }
    return ValueOf(MakeNode(TBI_FMT, OpaqueValue_ReleaseTAVQToken(formatWord)));
}

OpaqueValue BuildStatArgument(OpaqueValue& varname) {
    const ConsumedValues consumed(varname);
    std::unique_ptr<TbTrParseNode> variable = ReleaseVariable(varname);
    if (!variable) return {};
    return BuildArgumentSlots(std::move(variable), nullptr, nullptr);
}

OpaqueValue BuildStatArgument(OpaqueValue& varname, OpaqueValue& statDisplaySpec) {
    const ConsumedValues consumed(varname, statDisplaySpec);
    if (!QUILLET_ASSERT(OpaqueValue_CheckParseNode(statDisplaySpec, TBI_STATFUNCARG, 0, 0),
                        "OpaqueValue_CheckParseNode(statDisplaySpec, TBI_STATFUNCARG, 0, 0)")) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> pStatArgVarSpecNode =
        OpaqueValue_ReleaseParseNode(statDisplaySpec);
    if (QUILLET_ASSERT(pStatArgVarSpecNode->GetChildCount() > 0,
                       "pStatArgVarSpecNode->GetChildCount() > 0")) {
        const std::unique_ptr<TbTrParseNode> pOldChild =
            pStatArgVarSpecNode->ReplaceChild(kVariableSlotOfArgument, ReleaseVariable(varname));
        QUILLET_ASSERT(pOldChild == nullptr, "pOldChild == 0");
    }
    return ValueOf(std::move(pStatArgVarSpecNode));
}

// ---- TABLE and table expressions

namespace {

bool IsDimension(const OpaqueValue& tableExpression) {
    return OpaqueValue_CheckParseNode(tableExpression, SP_PLUS, SP_GREATERTHAN, SP_VARNAME) ||
           OpaqueValue_CheckParseNode(tableExpression, TB_STATISTICS, TB_LABELS, 0);
}

OpaqueValue BuildDimensions(TablesCommand& command, const TablesLocation& location,
                            OpaqueValue& keyword, OpaqueValue& tableExpressionRows,
                            OpaqueValue& tableExpressionColumns,
                            OpaqueValue& tableExpressionLayers) {
    const ConsumedValues consumed(keyword, tableExpressionRows, tableExpressionColumns,
                                  tableExpressionLayers);
    if (!CheckKeyword(keyword)) return {};
    if (OpaqueValue_IsEmpty(tableExpressionColumns) &&
        !QUILLET_ASSERT(OpaqueValue_IsEmpty(tableExpressionLayers),
                        "OpaqueValue_IsEmpty(tableExpressionLayers)")) {
        return {};
    }
    if (OpaqueValue_IsEmpty(tableExpressionRows)) {
        QUILLET_ASSERT(OpaqueValue_IsEmpty(tableExpressionColumns),
                       "OpaqueValue_IsEmpty(tableExpressionColumns)");
        QUILLET_ASSERT(false, "0 && \"Illegal TABLE subcommand: no arguments\"");
        return {};
    }
    std::unique_ptr<TbTrParseNode> table = MakeNode(TB_TABLE, nullptr);
    for (OpaqueValue* pDimension :
         {&tableExpressionRows, &tableExpressionColumns, &tableExpressionLayers}) {
        if (OpaqueValue_IsEmpty(*pDimension)) break;
        if (!QUILLET_ASSERT(IsDimension(*pDimension), "IsDimension(tableExpression)")) return {};
        table->AddChild(OpaqueValue_ReleaseParseNode(*pDimension));
    }
    command.AddTableLocation(location);
    return ValueOf(std::move(table));
}

/// The check of words in parentheses. `leaf` is an `SP_VARNAME` or `SP_NONVARNAME` node.
bool BuildMarkerOrVariable(TablesCommand& command, const TablesLocation& location,
                           OpaqueValue& result, std::unique_ptr<TbTrParseNode> leaf) {
    const TAVQToken* pWord = leaf->GetToken();
    const auto isSpelt = [pWord](std::string_view word) {
        return pWord != nullptr && pWord->CompareText(word, kSignificantBytes, /*raw=*/false) == 0;
    };
    std::unique_ptr<TAVQToken> noToken;
    if (isSpelt(kStatisticsWord)) {
        leaf = MakeKeywordNode(TB_STATISTICS, noToken);
    } else if (isSpelt(kLabelsWord)) {
        leaf = MakeKeywordNode(TB_LABELS, noToken);
    } else if (leaf->GetNodeType() != SP_VARNAME) {
        AddTrace(command, "reportParenthesizedWord ", "");
        AddReport(command, TablesErrorKind::kParenthesizedWord, location, kNoNodeType);
        return false;
    }
    if (!leaf) throw std::bad_alloc();
    OpaqueValue_SetParseNode(result, std::move(leaf));
    return true;
}

/// An operand of `type`; null, behind an assertion, when it is missing or no operand.
std::unique_ptr<TbTrParseNode> ReleaseOperand(NodeType type, OpaqueValue& operand) {
    if (OpaqueValue_IsEmpty(operand)) {
        if (type == SP_PLUS) {
            QUILLET_ASSERT(false, "0 && \"Illegal TABLE STACK subcommand: missing argument\"");
        } else {
            QUILLET_ASSERT(false, "0 && \"Illegal TABLE NEST subcommand: missing argument\"");
        }
        return nullptr;
    }
    if (!QUILLET_ASSERT(IsDimension(operand),
                        "0 && \"illegal left node type for TABLE operation\"")) {
        return nullptr;
    }
    return OpaqueValue_ReleaseParseNode(operand);
}

/// How many children `operand` adds to a chain of `type`.
std::size_t LengthInChain(NodeType type, const TbTrParseNode* pOperand) {
    if (!pOperand) return 0;
    return pOperand->GetNodeType() == type ? pOperand->GetChildCount() : 1;
}

/// Puts what `operand` adds to a chain into the slots of `chain` from `index` on.
void FillSlots(TbTrParseNode& chain, std::size_t index, std::unique_ptr<TbTrParseNode> operand) {
    if (!operand) return;
    if (operand->GetNodeType() != chain.GetNodeType()) {
        chain.ReplaceChild(index, std::move(operand));
        return;
    }
    for (std::size_t child = 0; child < operand->GetChildCount(); ++child) {
        chain.ReplaceChild(index + child, operand->ReplaceChild(child, nullptr));
    }
}

/// The chain of both operands, either of which may be missing. Of two chains the longer one
/// stays in place and the shorter one is moved, so that however a long chain is put together,
/// with parentheses on the left or on the right, its operands are moved only a few times.
std::unique_ptr<TbTrParseNode> JoinOperands(NodeType type, std::unique_ptr<TbTrParseNode> left,
                                            std::unique_ptr<TbTrParseNode> right) {
    const std::size_t leftLength = LengthInChain(type, left.get());
    const std::size_t rightLength = LengthInChain(type, right.get());
    std::unique_ptr<TbTrParseNode> chain;
    if (left && left->GetNodeType() == type && leftLength >= rightLength) {
        chain.swap(left);
    } else if (right && right->GetNodeType() == type) {
        chain.swap(right);
    } else {
        chain = MakeNode(type, nullptr);
    }
    if (left) chain->InsertNullChildren(0, leftLength);
    if (right) chain->InsertNullChildren(chain->GetChildCount(), rightLength);
    FillSlots(*chain, 0, std::move(left));
    FillSlots(*chain, chain->GetChildCount() - rightLength, std::move(right));
    return chain;
}

}  // namespace

OpaqueValue BuildTable(TablesCommand& command, const TablesLocation& location, OpaqueValue& keyword,
                       OpaqueValue& tableExpressionRows) {
    OpaqueValue noColumns;
    OpaqueValue noLayers;
    return BuildDimensions(command, location, keyword, tableExpressionRows, noColumns, noLayers);
}

OpaqueValue BuildTable(TablesCommand& command, const TablesLocation& location, OpaqueValue& keyword,
                       OpaqueValue& tableExpressionRows, OpaqueValue& by,
                       OpaqueValue& tableExpressionColumns) {
    const ConsumedValues consumed(by);
    OpaqueValue noLayers;
    return BuildDimensions(command, location, keyword, tableExpressionRows, tableExpressionColumns,
                           noLayers);
}

OpaqueValue BuildTable(TablesCommand& command, const TablesLocation& location, OpaqueValue& keyword,
                       OpaqueValue& tableExpressionRows, OpaqueValue& columnsBy,
                       OpaqueValue& tableExpressionColumns, OpaqueValue& layersBy,
                       OpaqueValue& tableExpressionLayers) {
    const ConsumedValues consumed(columnsBy, layersBy);
    return BuildDimensions(command, location, keyword, tableExpressionRows, tableExpressionColumns,
                           tableExpressionLayers);
}

bool BuildParenthesizedWord(TablesCommand& command, const TablesLocation& location,
                            OpaqueValue& result, OpaqueValue& leftParen, OpaqueValue& word,
                            OpaqueValue& rightParen) {
    const ConsumedValues consumed(leftParen, word, rightParen);
    // The parser's slot for the result holds a stale copy of an argument, not a value.
    OpaqueValue_Init(result);
    if (!CheckParentheses(leftParen, rightParen)) return false;
    const NodeType type = OpaqueValue_GetTbTokenType(word);
    if (!QUILLET_ASSERT(type == SP_VARNAME || type == SP_NONVARNAME,
                        "type == SP_VARNAME || type == SP_NONVARNAME")) {
        return false;
    }
    std::unique_ptr<TbTrParseNode> leaf =
        type == SP_VARNAME ? ReleaseVariable(word) : ReleaseName(SP_NONVARNAME, word);
    return leaf && BuildMarkerOrVariable(command, location, result, std::move(leaf));
}

bool BuildParenthesizedExpression(TablesCommand& command, const TablesLocation& location,
                                  OpaqueValue& result, OpaqueValue& leftParen,
                                  OpaqueValue& tableExpression, OpaqueValue& rightParen) {
    const ConsumedValues consumed(leftParen, tableExpression, rightParen);
    OpaqueValue_Init(result);
    if (!CheckParentheses(leftParen, rightParen) ||
        !QUILLET_ASSERT(OpaqueValue_IsParseNode(tableExpression),
                        "OpaqueValue_IsParseNode(tableExpression)")) {
        return false;
    }
    if (!OpaqueValue_CheckParseNode(tableExpression, SP_VARNAME, SP_NONVARNAME, 0)) {
        OpaqueValue_Move(result, tableExpression);
        return true;
    }
    return BuildMarkerOrVariable(command, location, result,
                                 OpaqueValue_ReleaseParseNode(tableExpression));
}

OpaqueValue BuildOperation(OpaqueValue& left, OpaqueValue& operation, OpaqueValue& right) {
    const ConsumedValues consumed(left, operation, right);
    const NodeType type = OpaqueValue_GetTbTokenType(operation);
    if (!QUILLET_ASSERT(type == SP_PLUS || type == SP_GREATERTHAN,
                        "type == SP_PLUS || type == SP_GREATERTHAN")) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> leftNode = ReleaseOperand(type, left);
    std::unique_ptr<TbTrParseNode> rightNode = ReleaseOperand(type, right);
    return ValueOf(JoinOperands(type, std::move(leftNode), std::move(rightNode)));
}

OpaqueValue BuildOperation(OpaqueValue& leftParen, OpaqueValue& left, OpaqueValue& operation,
                           OpaqueValue& right, OpaqueValue& rightParen) {
    const ConsumedValues consumed(leftParen, left, operation, right, rightParen);
    if (!CheckParentheses(leftParen, rightParen)) return {};
    return BuildOperation(left, operation, right);
}

}  // namespace quillet
