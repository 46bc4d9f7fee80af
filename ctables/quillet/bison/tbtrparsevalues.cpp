#include "bison/tbtrparsevalues.h"

#include <ostream>
#include <utility>

#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "bison/tbtrparsevalues";

}  // namespace

OpaqueValue ValueWith(NodeOwner node) {
    OpaqueValue value;
    if (node) OpaqueValue_SetParseNode(value, std::move(node));
    return value;
}

NodeOwner ReleaseVariable(Arena& arena, OpaqueValue& varname) {
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0),
                        "OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0)")) {
        return nullptr;
    }
    return MakeVarNameNode(arena, OpaqueValue_ReleaseTAVQToken(varname));
}

NodeOwner ReleaseLiteral(Arena& arena, OpaqueValue& literal) {
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(literal, SP_SLITERAL, 0, 0),
                        "OpaqueValue_CheckTAVQToken(literal, SP_SLITERAL, 0, 0)")) {
        return nullptr;
    }
    return MakeLiteralNode(arena, OpaqueValue_ReleaseTAVQToken(literal));
}

NodeOwner ReleaseNumber(Arena& arena, OpaqueValue& number) {
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(number, SP_NUMBER, 0, 0),
                        "OpaqueValue_CheckTAVQToken(number, SP_NUMBER, 0, 0)")) {
        return nullptr;
    }
    return MakeNode(arena, SP_NUMBER, OpaqueValue_ReleaseTAVQToken(number));
}

NodeOwner ReleaseNamedNode(Arena& arena, NodeType type, OpaqueValue& functionName) {
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(functionName, SP_VARNAME, SP_NONVARNAME, 0),
                        "OpaqueValue_CheckTAVQToken(functionName, SP_VARNAME, SP_NONVARNAME, 0)")) {
        return nullptr;
    }
    return MakeNode(arena, type, OpaqueValue_ReleaseTAVQToken(functionName));
}

NodeOwner ReleaseKeyword(Arena& arena, OpaqueValue& settingKeyword) {
    const NodeType type = OpaqueValue_GetTbTokenType(settingKeyword);
    static_cast<void>(OpaqueValue_ReleaseTAVQToken(settingKeyword));
    return MakeKeywordNode(arena, type);
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

NodeOwner ReleaseOrMakeList(Arena& arena, NodeType listType, OpaqueValue& list) {
    if (!OpaqueValue_IsEmpty(list)) {
        return CheckList(listType, list) ? OpaqueValue_ReleaseParseNode(list) : nullptr;
    }
    NodeOwner listNode = MakeListNode(arena, listType);
    return QUILLET_ASSERT(listNode != nullptr, "listNode != 0") ? std::move(listNode) : nullptr;
}

OpaqueValue BuildFromList(NodeType type, NodeType listType, OpaqueValue& keyword,
                          OpaqueValue& list) {
    const ConsumedValues consumed(keyword, list);
    const bool keywordIsSound = CheckKeyword(keyword);
    if (!CheckList(listType, list) || !keywordIsSound) return {};
    NodeOwner node = OpaqueValue_ReleaseParseNode(list);
    node->SetNodeType(type);
    return ValueWith(std::move(node));
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

}  // namespace quillet
