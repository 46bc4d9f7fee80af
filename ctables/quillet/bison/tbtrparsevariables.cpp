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

OpaqueValue BuildVariable(OpaqueValue& varname) {
    const ConsumedValues consumed(varname);
    return ValueWith(ReleaseVariable(varname));
}

OpaqueValue BuildLabeledVariable(OpaqueValue& varname, OpaqueValue& label) {
    const ConsumedValues consumed(varname, label);
    std::unique_ptr<TbTrParseNode> variable = ReleaseVariable(varname);
    if (variable) VariableView::SetLabel(*variable, ReleaseLiteral(label));
    return ValueWith(std::move(variable));
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
    return ValueWith(MakeVarRangeNode(fromToken, toToken));
}

namespace {

/// A set's node with the two children that both kinds of set have; null after an assertion.
std::unique_ptr<TbTrParseNode> BuildSet(NodeType type, OpaqueValue& keyword, OpaqueValue& varname,
                                        OpaqueValue& label, OpaqueValue& variableSpecList) {
    const ConsumedValues consumed(keyword, varname, label, variableSpecList);
    if (!CheckKeyword(keyword) || !CheckVariableList(variableSpecList)) return nullptr;
    OpaqueValue name =
        OpaqueValue_IsEmpty(label) ? BuildVariable(varname) : BuildLabeledVariable(varname, label);
    if (OpaqueValue_IsEmpty(name)) return nullptr;
    std::unique_ptr<TbTrParseNode> nameNode = OpaqueValue_ReleaseParseNode(name);
    return SetView::Make(type, std::move(nameNode), OpaqueValue_ReleaseParseNode(variableSpecList));
}

}  // namespace

OpaqueValue BuildMrGroup(OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& variableSpecList) {
    OpaqueValue noLabel;
    return BuildMrGroup(keyword, varname, noLabel, variableSpecList);
}

OpaqueValue BuildMrGroup(OpaqueValue& keyword, OpaqueValue& varname, OpaqueValue& label,
                         OpaqueValue& variableSpecList) {
    return ValueWith(BuildSet(TB_MRGROUP, keyword, varname, label, variableSpecList));
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
    SetView::AddCountedValue(*set,
                             isNumber ? ReleaseNumber(countedValue) : ReleaseLiteral(countedValue));
    return ValueWith(std::move(set));
}

bool BuildObservation(TablesCommand& command, const TablesLocation& location, OpaqueValue& result,
                      OpaqueValue& keyword, OpaqueValue& variableSpecList) {
    const ConsumedValues consumed(keyword, variableSpecList);
    // The parser's slot for the result holds a stale copy of an argument, not a value.
    OpaqueValue_Init(result);
    if (!CheckKeyword(keyword) || !CheckVariableList(variableSpecList)) return false;
    std::unique_ptr<TbTrParseNode> list = OpaqueValue_ReleaseParseNode(variableSpecList);
    if (ObservationView::HasRange(*list)) {
        AddTrace(command, "reportObservationRange ", "");
        AddReport(command, TablesErrorKind::kObservationRange, location, kNoNodeType);
        return false;
    }
    OpaqueValue_SetParseNode(result, ObservationView::Make(std::move(list)));
    return true;
}

}  // namespace quillet
