// SORT and STATISTICS: lists of functions, with what they are applied to.
#include <memory>
#include <string_view>
#include <utility>

#include "bison/tbtrparsebuilder.h"
#include "bison/tbtrparsevalues.h"
#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "bison/tbtrparsestatistics";

bool CheckStatFunction(const OpaqueValue& statFunc) {
    return QUILLET_ASSERT(OpaqueValue_CheckParseNode(statFunc, TBI_STATFUNCTION, 0, 0),
                          "OpaqueValue_CheckParseNode(statFunc, TBI_STATFUNCTION, 0, 0)");
}

}  // namespace

OpaqueValue BuildSort(OpaqueValue& keyword, OpaqueValue& sortVariableList) {
    const ConsumedValues consumed(keyword, sortVariableList);
    if (!CheckKeyword(keyword) || !CheckList(TB_SORT, sortVariableList)) return {};
    return ValueWith(OpaqueValue_ReleaseParseNode(sortVariableList));
}

OpaqueValue BuildSort(Arena& arena, OpaqueValue& keyword, OpaqueValue& direction,
                      OpaqueValue& sortVariableList) {
    const ConsumedValues consumed(direction);
    OpaqueValue sort = BuildSort(keyword, sortVariableList);
    if (OpaqueValue_IsEmpty(sort)) return {};
    const NodeType tbTokenType = OpaqueValue_GetTbTokenType(direction);
    if (!QUILLET_ASSERT(tbTokenType == TB_ASCENDING || tbTokenType == TB_DESCENDING,
                        "tbTokenType == TB_ASCENDING || tbTokenType == TB_DESCENDING")) {
        return sort;
    }
    NodeOwner pSortSubNode = OpaqueValue_ReleaseParseNode(sort);
    SortView::SetDirection(*pSortSubNode, ReleaseKeyword(arena, direction));
    return ValueWith(std::move(pSortSubNode));
}

OpaqueValue BuildSortVariable(Arena& arena, OpaqueValue& varname) {
    const ConsumedValues consumed(varname);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0),
                        "OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0)")) {
        return {};
    }
    return ValueWith(SortKeyView::Make(arena, OpaqueValue_ReleaseTAVQToken(varname)));
}

OpaqueValue BuildSortVariable(Arena& arena, OpaqueValue& varname, OpaqueValue& leftParen,
                              OpaqueValue& sortFunction, OpaqueValue& rightParen) {
    const ConsumedValues consumed(varname, leftParen, sortFunction, rightParen);
    if (!CheckParentheses(leftParen, rightParen) ||
        !QUILLET_ASSERT(OpaqueValue_CheckParseNode(sortFunction, TBI_SORTFUNCTION, 0, 0),
                        "OpaqueValue_CheckParseNode(sortFunction, TBI_SORTFUNCTION, 0, 0)")) {
        return {};
    }
    OpaqueValue variable = BuildSortVariable(arena, varname);
    NodeOwner node = OpaqueValue_ReleaseParseNode(variable);
    if (node) SortKeyView::AddFunction(*node, OpaqueValue_ReleaseParseNode(sortFunction));
    return ValueWith(std::move(node));
}

OpaqueValue BuildSortFunction(Arena& arena, OpaqueValue& functionName) {
    const ConsumedValues consumed(functionName);
    return ValueWith(ReleaseNamedNode(arena, TBI_SORTFUNCTION, functionName));
}

OpaqueValue BuildSortFunction(Arena& arena, OpaqueValue& functionName, OpaqueValue& leftParen,
                              OpaqueValue& varname, OpaqueValue& rightParen) {
    const ConsumedValues consumed(functionName, leftParen, varname, rightParen);
    if (!CheckParentheses(leftParen, rightParen)) return {};
    NodeOwner function = ReleaseNamedNode(arena, TBI_SORTFUNCTION, functionName);
    NodeOwner argument = ReleaseVariable(arena, varname);
    if (!function || !argument) return {};
    SortFunctionView::AddArgument(*function, std::move(argument));
    return ValueWith(std::move(function));
}

OpaqueValue BuildStatistics(OpaqueValue& keyword, OpaqueValue& statFuncList) {
    const ConsumedValues consumed(keyword, statFuncList);
    if (!CheckKeyword(keyword) || !CheckList(TB_STATISTICS, statFuncList)) return {};
    return ValueWith(OpaqueValue_ReleaseParseNode(statFuncList));
}

OpaqueValue BuildUnweighted(Arena& arena, OpaqueValue& unweighted, OpaqueValue& statFuncSpec) {
    const ConsumedValues consumed(unweighted, statFuncSpec);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(unweighted, TB_UNWEIGHTED, 0, 0),
                        "OpaqueValue_CheckTAVQToken(unweighted, TB_UNWEIGHTED, 0, 0)") ||
        !QUILLET_ASSERT(OpaqueValue_CheckParseNode(statFuncSpec, TBI_FULLSTATFUNCTION, 0, 0),
                        "OpaqueValue_CheckParseNode(statFuncSpec, TBI_FULLSTATFUNCTION, 0, 0)")) {
        return {};
    }
    NodeOwner function = OpaqueValue_ReleaseParseNode(statFuncSpec);
    StatFunctionView::SetUnweighted(*function, ReleaseKeyword(arena, unweighted));
    return ValueWith(std::move(function));
}

OpaqueValue BuildFullStatFunction(Arena& arena, OpaqueValue& statFunc) {
    const ConsumedValues consumed(statFunc);
    if (!CheckStatFunction(statFunc)) return {};
    return ValueWith(
        StatFunctionView::Make(arena, OpaqueValue_ReleaseParseNode(statFunc), nullptr));
}

OpaqueValue BuildFullStatFunction(Arena& arena, OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& rightParen) {
    const ConsumedValues consumed(statFunc, leftParen, rightParen);
    if (!CheckParentheses(leftParen, rightParen)) return {};
    return BuildFullStatFunction(arena, statFunc);
}

OpaqueValue BuildFullStatFunction(Arena& arena, OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& statFuncArgs, OpaqueValue& rightParen) {
    const ConsumedValues consumed(statFunc, leftParen, statFuncArgs, rightParen);
    if (!CheckParentheses(leftParen, rightParen)) return {};
    if (!CheckStatFunction(statFunc)) return {};
    NodeOwner arguments =
        CheckGenericList(statFuncArgs) ? OpaqueValue_ReleaseParseNode(statFuncArgs) : nullptr;
    return ValueWith(StatFunctionView::Make(arena, OpaqueValue_ReleaseParseNode(statFunc),
                                            std::move(arguments)));
}

OpaqueValue BuildFullStatFunction(Arena& arena, OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& statFuncArgs, OpaqueValue& colon,
                                  OpaqueValue& variableNameList, OpaqueValue& rightParen) {
    const ConsumedValues consumed(colon, variableNameList);
    OpaqueValue value = BuildFullStatFunction(arena, statFunc, leftParen, statFuncArgs, rightParen);
    if (OpaqueValue_IsEmpty(value) || !CheckVariableList(variableNameList)) return value;
    NodeOwner function = OpaqueValue_ReleaseParseNode(value);
    StatFunctionView::AddBaseNames(*function, OpaqueValue_ReleaseParseNode(variableNameList));
    return ValueWith(std::move(function));
}

OpaqueValue BuildStatFunction(Arena& arena, OpaqueValue& functionName) {
    const ConsumedValues consumed(functionName);
    return ValueWith(ReleaseNamedNode(arena, TBI_STATFUNCTION, functionName));
}

OpaqueValue BuildStatFunction(Arena& arena, OpaqueValue& functionName, OpaqueValue& number) {
    const ConsumedValues consumed(functionName, number);
    NodeOwner function = ReleaseNamedNode(arena, TBI_STATFUNCTION, functionName);
    NodeOwner numberNode = ReleaseNumber(arena, number);
    if (!function || !numberNode) return {};
    StatFunctionView::AddNumber(*function, std::move(numberNode));
    return ValueWith(std::move(function));
}

OpaqueValue BuildStatDisplay(Arena& arena, OpaqueValue& label) {
    const ConsumedValues consumed(label);
    NodeOwner labelNode = ReleaseLiteral(arena, label);
    if (!labelNode) return {};
    return ValueWith(StatArgumentView::Make(arena, nullptr, std::move(labelNode)));
}

OpaqueValue BuildStatDisplay(Arena& arena, OpaqueValue& leftParen, OpaqueValue& statFormat,
                             OpaqueValue& rightParen) {
    OpaqueValue noLabel;
    return BuildStatDisplay(arena, leftParen, statFormat, rightParen, noLabel);
}

OpaqueValue BuildStatDisplay(Arena& arena, OpaqueValue& leftParen, OpaqueValue& statFormat,
                             OpaqueValue& rightParen, OpaqueValue& label) {
    const ConsumedValues consumed(leftParen, statFormat, rightParen, label);
    if (!CheckParentheses(leftParen, rightParen) ||
        !QUILLET_ASSERT(OpaqueValue_CheckParseNode(statFormat, TBI_FMT, 0, 0),
                        "OpaqueValue_CheckParseNode(statFormat, TBI_FMT, 0, 0)")) {
        return {};
    }
    NodeOwner labelNode;
    if (!OpaqueValue_IsEmpty(label)) labelNode = ReleaseLiteral(arena, label);
    return ValueWith(StatArgumentView::Make(arena, OpaqueValue_ReleaseParseNode(statFormat),
                                            std::move(labelNode)));
}

OpaqueValue BuildStatFormat(Arena& arena, OpaqueValue& formatWord) {
    const ConsumedValues consumed(formatWord);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(formatWord, SP_VARNAME, SP_NONVARNAME, 0),
                        "OpaqueValue_CheckTAVQToken(formatWord, SP_VARNAME, SP_NONVARNAME, 0)")) {
        return {};
    }
    return ValueWith(MakeNode(arena, TBI_FMT, OpaqueValue_ReleaseTAVQToken(formatWord)));
}

OpaqueValue BuildStatArgument(Arena& arena, OpaqueValue& varname) {
    const ConsumedValues consumed(varname);
    return ValueWith(ReleaseVariable(arena, varname));
}

OpaqueValue BuildStatArgument(Arena& arena, OpaqueValue& varname, OpaqueValue& statDisplaySpec) {
    const ConsumedValues consumed(varname, statDisplaySpec);
    if (!QUILLET_ASSERT(OpaqueValue_CheckParseNode(statDisplaySpec, TBI_STATFUNCARG, 0, 0),
                        "OpaqueValue_CheckParseNode(statDisplaySpec, TBI_STATFUNCARG, 0, 0)")) {
        return {};
    }
    NodeOwner pStatArgVarSpecNode = OpaqueValue_ReleaseParseNode(statDisplaySpec);
    StatArgumentView::SetVariable(*pStatArgVarSpecNode, ReleaseVariable(arena, varname));
    return ValueWith(std::move(pStatArgVarSpecNode));
}

}  // namespace quillet
