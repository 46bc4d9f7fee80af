// TABLE: expressions over variables. Chains of one operator come out flat, however they are put in
// parentheses.
#include <memory>
#include <string_view>
#include <utility>

#include "bison/tbtrparsebuilder.h"
#include "bison/tbtrparsevalues.h"
#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "bison/tbtrparsetables";

constexpr std::string_view kStatisticsWord = "STATISTICS";
constexpr std::string_view kLabelsWord = "LABELS";

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
    NodeOwner table = TableView::Make(command.Memory());
    for (OpaqueValue* pDimension :
         {&tableExpressionRows, &tableExpressionColumns, &tableExpressionLayers}) {
        if (OpaqueValue_IsEmpty(*pDimension)) break;
        if (!QUILLET_ASSERT(IsDimension(*pDimension), "IsDimension(tableExpression)")) return {};
        TableView::AddDimension(*table, OpaqueValue_ReleaseParseNode(*pDimension));
    }
    command.AddTableLocation(location);
    return ValueWith(std::move(table));
}

/// The check of words in parentheses. `leaf` is an `SP_VARNAME` or `SP_NONVARNAME` node.
bool BuildMarkerOrVariable(TablesCommand& command, const TablesLocation& location,
                           OpaqueValue& result, NodeOwner leaf) {
    const TAVQToken* pWord = leaf->GetToken();
    const auto isSpelled = [pWord](std::string_view word) {
        return pWord != nullptr && pWord->CompareText(word, kSignificantBytes, /*raw=*/false) == 0;
    };
    if (isSpelled(kStatisticsWord)) {
        leaf = MakeKeywordNode(command.Memory(), TB_STATISTICS);
    } else if (isSpelled(kLabelsWord)) {
        leaf = MakeKeywordNode(command.Memory(), TB_LABELS);
    } else if (leaf->GetNodeType() != SP_VARNAME) {
        AddTrace(command, "reportParenthesizedWord ", "");
        AddReport(command, TablesErrorKind::kParenthesizedWord, location, kNoNodeType);
        return false;
    }
    OpaqueValue_SetParseNode(result, std::move(leaf));
    return true;
}

/// An operand of `type`; null, after an assertion, when it is missing or no operand.
NodeOwner ReleaseOperand(NodeType type, OpaqueValue& operand) {
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
    NodeOwner leaf = type == SP_VARNAME ? ReleaseVariable(command.Memory(), word)
                                        : ReleaseNamedNode(command.Memory(), SP_NONVARNAME, word);
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

OpaqueValue BuildOperation(Arena& arena, OpaqueValue& left, OpaqueValue& operation,
                           OpaqueValue& right) {
    const ConsumedValues consumed(left, operation, right);
    const NodeType type = OpaqueValue_GetTbTokenType(operation);
    if (!QUILLET_ASSERT(type == SP_PLUS || type == SP_GREATERTHAN,
                        "type == SP_PLUS || type == SP_GREATERTHAN")) {
        return {};
    }
    NodeOwner leftNode = ReleaseOperand(type, left);
    NodeOwner rightNode = ReleaseOperand(type, right);
    return ValueWith(OperatorView::Join(arena, type, std::move(leftNode), std::move(rightNode)));
}

OpaqueValue BuildOperation(Arena& arena, OpaqueValue& leftParen, OpaqueValue& left,
                           OpaqueValue& operation, OpaqueValue& right, OpaqueValue& rightParen) {
    const ConsumedValues consumed(leftParen, left, operation, right, rightParen);
    if (!CheckParentheses(leftParen, rightParen)) return {};
    return BuildOperation(arena, left, operation, right);
}

}  // namespace quillet
