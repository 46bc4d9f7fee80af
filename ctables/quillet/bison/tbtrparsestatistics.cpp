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

}  // namespace

OpaqueValue BuildSort(OpaqueValue& keyword, OpaqueValue& sortVariableList) {
    const ConsumedValues consumed(keyword, sortVariableList);
    if (!CheckKeyword(keyword) || !CheckList(TB_SORT, sortVariableList)) return {};
    return ValueWith(OpaqueValue_ReleaseParseNode(sortVariableList));
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
    SortView::SetDirection(*pSortSubNode, ReleaseKeyword(direction));
    return ValueWith(std::move(pSortSubNode));
}

OpaqueValue BuildSortVariable(OpaqueValue& varname) {
    const ConsumedValues consumed(varname);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0),
                        "OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0)")) {
        return {};
    }
    return ValueWith(SortKeyView::Make(OpaqueValue_ReleaseTAVQToken(varname)));
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
    if (node) SortKeyView::AddFunction(*node, OpaqueValue_ReleaseParseNode(sortFunction));
    return ValueWith(std::move(node));
}

OpaqueValue BuildSortFunction(OpaqueValue& functionName) {
    const ConsumedValues consumed(functionName);
    return ValueWith(ReleaseNamedNode(TBI_SORTFUNCTION, functionName));
}

OpaqueValue BuildSortFunction(OpaqueValue& functionName, OpaqueValue& leftParen,
                              OpaqueValue& varname, OpaqueValue& rightParen) {
    const ConsumedValues consumed(functionName, leftParen, varname, rightParen);
    if (!CheckParentheses(leftParen, rightParen)) return {};
    std::unique_ptr<TbTrParseNode> function = ReleaseNamedNode(TBI_SORTFUNCTION, functionName);
    std::unique_ptr<TbTrParseNode> argument = ReleaseVariable(varname);
    if (!function || !argument) return {};
    SortFunctionView::AddArgument(*function, std::move(argument));
    return ValueWith(std::move(function));
}

OpaqueValue BuildStatistics(OpaqueValue& keyword, OpaqueValue& statFuncList) {
    const ConsumedValues consumed(keyword, statFuncList);
    if (!CheckKeyword(keyword) || !CheckList(TB_STATISTICS, statFuncList)) return {};
    return ValueWith(OpaqueValue_ReleaseParseNode(statFuncList));
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
    StatFunctionView::SetUnweighted(*function, ReleaseKeyword(unweighted));
    return ValueWith(std::move(function));
}

OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc) {
    const ConsumedValues consumed(statFunc);
    if (!QUILLET_ASSERT(OpaqueValue_CheckParseNode(statFunc, TBI_STATFUNCTION, 0, 0),
                        "OpaqueValue_CheckParseNode(statFunc, TBI_STATFUNCTION, 0, 0)")) {
        return {};
    }
    return ValueWith(StatFunctionView::Make(OpaqueValue_ReleaseParseNode(statFunc)));
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
    StatFunctionView::AddArguments(*function, OpaqueValue_ReleaseParseNode(statFuncArgs));
    return ValueWith(std::move(function));
}

OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& statFuncArgs, OpaqueValue& colon,
                                  OpaqueValue& variableNameList, OpaqueValue& rightParen) {
    const ConsumedValues consumed(colon, variableNameList);
    OpaqueValue value = BuildFullStatFunction(statFunc, leftParen, statFuncArgs, rightParen);
    if (OpaqueValue_IsEmpty(value) || !CheckVariableList(variableNameList)) return value;
    std::unique_ptr<TbTrParseNode> function = OpaqueValue_ReleaseParseNode(value);
    StatFunctionView::AddBaseNames(*function, OpaqueValue_ReleaseParseNode(variableNameList));
    return ValueWith(std::move(function));
}

OpaqueValue BuildStatFunction(OpaqueValue& functionName) {
    const ConsumedValues consumed(functionName);
    return ValueWith(ReleaseNamedNode(TBI_STATFUNCTION, functionName));
}

OpaqueValue BuildStatFunction(OpaqueValue& functionName, OpaqueValue& number) {
    const ConsumedValues consumed(functionName, number);
    std::unique_ptr<TbTrParseNode> function = ReleaseNamedNode(TBI_STATFUNCTION, functionName);
    std::unique_ptr<TbTrParseNode> numberNode = ReleaseNumber(number);
    if (!function || !numberNode) return {};
    StatFunctionView::AddNumber(*function, std::move(numberNode));
    return ValueWith(std::move(function));
}

OpaqueValue BuildStatDisplay(OpaqueValue& label) {
    const ConsumedValues consumed(label);
    std::unique_ptr<TbTrParseNode> labelNode = ReleaseLiteral(label);
    if (!labelNode) return {};
    return ValueWith(StatArgumentView::Make(nullptr, nullptr, std::move(labelNode)));
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
    return ValueWith(StatArgumentView::Make(nullptr, OpaqueValue_ReleaseParseNode(statFormat),
                                            std::move(labelNode)));
}

OpaqueValue BuildStatFormat(OpaqueValue& formatWord) {
    const ConsumedValues consumed(formatWord);
    if (!QUILLET_ASSERT(OpaqueValue_CheckTAVQToken(formatWord, SP_VARNAME, SP_NONVARNAME, 0),
                        "OpaqueValue_CheckTAVQToken(formatWord, SP_VARNAME, SP_NONVARNAME, 0)")) {
        return {};
    }
    return ValueWith(MakeNode(TBI_FMT, OpaqueValue_ReleaseTAVQToken(formatWord)));
}

OpaqueValue BuildStatArgument(OpaqueValue& varname) {
    const ConsumedValues consumed(varname);
    std::unique_ptr<TbTrParseNode> variable = ReleaseVariable(varname);
    if (!variable) return {};
    return ValueWith(StatArgumentView::Make(std::move(variable), nullptr, nullptr));
}

OpaqueValue BuildStatArgument(OpaqueValue& varname, OpaqueValue& statDisplaySpec) {
    const ConsumedValues consumed(varname, statDisplaySpec);
    if (!QUILLET_ASSERT(OpaqueValue_CheckParseNode(statDisplaySpec, TBI_STATFUNCARG, 0, 0),
                        "OpaqueValue_CheckParseNode(statDisplaySpec, TBI_STATFUNCARG, 0, 0)")) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> pStatArgVarSpecNode =
        OpaqueValue_ReleaseParseNode(statDisplaySpec);
    StatArgumentView::SetVariable(*pStatArgVarSpecNode, ReleaseVariable(varname));
    return ValueWith(std::move(pStatArgVarSpecNode));
}

}  // namespace quillet
