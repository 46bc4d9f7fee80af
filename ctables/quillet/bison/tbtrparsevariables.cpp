// The subcommands that declare variables: totals, multiple-response groups and scale variables.
#include <memory>
#include <string_view>
#include <utility>

#include "bison/tbtrparsebuilder.h"
#include "bison/tbtrparsevalues.h"
#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "bison/tbtrparsevariables";

}  // namespace

OpaqueValue BuildTotals(NodeType type, OpaqueValue& keyword, OpaqueValue& totalVarSpecList) {
    return BuildFromList(type, TBI_VARLIST, keyword, totalVarSpecList);
}

OpaqueValue BuildVariable(Arena& arena, OpaqueValue& varname) {
    const ConsumedValues consumed(varname);
    return ValueWith(ReleaseVariable(arena, varname));
}

OpaqueValue BuildLabeledVariable(Arena& arena, OpaqueValue& varname, OpaqueValue& label) {
    const ConsumedValues consumed(varname, label);
    NodeOwner variable = ReleaseVariable(arena, varname);
    if (variable) VariableView::SetLabel(*variable, ReleaseLiteral(arena, label));
    return ValueWith(std::move(variable));
}

OpaqueValue BuildVariableRange(Arena& arena, OpaqueValue& fromVarname, OpaqueValue& to,
                               OpaqueValue& toVarname) {
    const ConsumedValues consumed(fromVarname, to, toVarname);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(fromVarname, SP_VARNAME, 0, 0),
                        "OpaqueValue_CheckTAVQToken(fromVarname, SP_VARNAME, 0, 0)") ||
        !QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(to, SP_TO, 0, 0),
                        "OpaqueValue_CheckTAVQToken(to, SP_TO, 0, 0)") ||
        !QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(toVarname, SP_VARNAME, 0, 0),
                        "OpaqueValue_CheckTAVQToken(toVarname, SP_VARNAME, 0, 0)")) {
        return {};
    }
    const TAVQToken fromToken = OpaqueValue_ReleaseTAVQToken(fromVarname);
    const TAVQToken toToken = OpaqueValue_ReleaseTAVQToken(toVarname);
    return ValueWith(MakeVarRangeNode(arena, fromToken, toToken));
}

namespace {

/// A set's node with the two children that both kinds of set have; null after an assertion.
NodeOwner BuildSet(Arena& arena, NodeType type, OpaqueValue& keyword, OpaqueValue& varname,
                   OpaqueValue& label, OpaqueValue& variableSpecList) {
    const ConsumedValues consumed(keyword, varname, label, variableSpecList);
    if (!CheckKeyword(keyword) || !CheckVariableList(variableSpecList)) return nullptr;
    OpaqueValue name = OpaqueValue_IsEmpty(label) ? BuildVariable(arena, varname)
                                                  : BuildLabeledVariable(arena, varname, label);
    if (OpaqueValue_IsEmpty(name)) return nullptr;
    NodeOwner nameNode = OpaqueValue_ReleaseParseNode(name);
    return SetView::Make(arena, type, std::move(nameNode),
                         OpaqueValue_ReleaseParseNode(variableSpecList));
}

}  // namespace

OpaqueValue BuildMrGroup(Arena& arena, OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& variableSpecList) {
    OpaqueValue noLabel;
    return BuildMrGroup(arena, keyword, varname, noLabel, variableSpecList);
}

OpaqueValue BuildMrGroup(Arena& arena, OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& label, OpaqueValue& variableSpecList) {
    return ValueWith(BuildSet(arena, TB_MRGROUP, keyword, varname, label, variableSpecList));
}

OpaqueValue BuildMdGroup(Arena& arena, OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& variableSpecList, OpaqueValue& leftParen,
                         OpaqueValue& countedValue, OpaqueValue& rightParen) {
    OpaqueValue noLabel;
    return BuildMdGroup(arena, keyword, varname, noLabel, variableSpecList, leftParen, countedValue,
                        rightParen);
}

OpaqueValue BuildMdGroup(Arena& arena, OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& label, OpaqueValue& variableSpecList, OpaqueValue& leftParen,
                         OpaqueValue& countedValue, OpaqueValue& rightParen) {
    const ConsumedValues consumed(leftParen, countedValue, rightParen);
    NodeOwner set = BuildSet(arena, TB_MDGROUP, keyword, varname, label, variableSpecList);
    if (!set || !CheckParentheses(leftParen, rightParen) ||
        !QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(countedValue, SP_SLITERAL, SP_NUMBER, 0),
                        "OpaqueValue_CheckTAVQToken(countedValue, SP_SLITERAL, SP_NUMBER, 0)")) {
        return {};
    }
    const bool isNumber = OpaqueValue_GetTbTokenType(countedValue) == SP_NUMBER;
    SetView::AddCountedValue(
        *set, isNumber ? ReleaseNumber(arena, countedValue) : ReleaseLiteral(arena, countedValue));
    return ValueWith(std::move(set));
}

bool BuildObservation(TablesCommand& command, const TablesLocation& location, OpaqueValue& result,
                      OpaqueValue& keyword, OpaqueValue& variableSpecList) {
    const ConsumedValues consumed(keyword, variableSpecList);
    // The parser's slot for the result holds a stale copy of an argument, not a value.
    OpaqueValue_Init(result);
    if (!CheckKeyword(keyword) || !CheckVariableList(variableSpecList)) return false;
    NodeOwner list = OpaqueValue_ReleaseParseNode(variableSpecList);
    if (ObservationView::HasRange(*list)) {
        AddTrace(command, "reportObservationRange ", "");
        AddReport(command, TablesErrorKind::kObservationRange, location, kNoNodeType);
        return false;
    }
    OpaqueValue_SetParseNode(result, ObservationView::Make(command.Memory(), std::move(list)));
    return true;
}

}  // namespace quillet
