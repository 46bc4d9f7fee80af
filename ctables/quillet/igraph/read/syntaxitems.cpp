#include "igraph/read/syntaxitems.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "tokenizer/words.h"

namespace quillet::igraph {

namespace {

using Kind = SyntaxItem::Kind;

struct RawToken {
    int operatorCode = TokenCodes::kNotOperator;
    SyntaxItem item;
};

Kind KindOfOperator(int operatorCode) {
    switch (operatorCode) {
        case TokenCodes::kSlash:
            return Kind::kSlash;
        case TokenCodes::kLeftParen:
            return Kind::kLeftParen;
        case TokenCodes::kRightParen:
            return Kind::kRightParen;
        default:
            return Kind::kOther;
    }
}

RawToken CurrentToken(const TokenSequenceBase& sequence) {
    RawToken token;
    token.operatorCode = sequence.Operator();
    const char* chars = nullptr;
    std::size_t length = 0;
    if (sequence.GetValueText(chars, length) > 0) token.item.value = {chars, length};
    if (sequence.GetSourceText(chars, length) > 0) token.item.source = {chars, length};
    switch (sequence.Type()) {
        case TokenCodes::kString:
            token.item.kind =
                token.operatorCode == TokenCodes::kNotOperator ? Kind::kWord : Kind::kReservedWord;
            break;
        case TokenCodes::kNumber:
            token.item.number = sequence.NumberValue();
            // What does not fit into a double cannot be written into the graph either.
            token.item.kind = std::isfinite(token.item.number) ? Kind::kNumber : Kind::kOther;
            break;
        case TokenCodes::kLiteral:
            token.item.kind = Kind::kLiteral;
            break;
        default:
            token.item.kind = KindOfOperator(token.operatorCode);
            break;
    }
    return token;
}

bool IsSign(const RawToken& token) {
    return token.item.kind == Kind::kOther &&
           (token.operatorCode == TokenCodes::kMinus || token.operatorCode == TokenCodes::kPlus);
}

// The period hid a reserved word from the tokenizer, so it is looked up here once more.
void CutTerminator(SyntaxItem& word) {
    if (!word.value.ends_with('.') || !word.source.ends_with('.')) return;
    word.value.remove_suffix(1);
    word.source.remove_suffix(1);
    if (ReservedWordOperator(word.value) != TokenCodes::kNotOperator) {
        word.kind = Kind::kReservedWord;
    }
}

// The period that ends the command is an operator, or the last byte of the last word. A comment
// after it leaves a slash. `lastCode` is the operator code of the last item that is no slash.
void TakeOffTerminator(std::vector<SyntaxItem>& items, int lastCode) {
    const auto afterLast = std::find_if(items.rbegin(), items.rend(), [](const SyntaxItem& item) {
                               return item.kind != Kind::kSlash;
                           }).base();
    if (afterLast == items.begin()) return;
    const auto last = afterLast - 1;
    if (last->kind == Kind::kOther && lastCode == TokenCodes::kPeriod) {
        items.erase(last);
    } else if (last->kind == Kind::kWord) {
        CutTerminator(*last);
    }
}

}  // namespace

std::vector<SyntaxItem> ReadSyntaxItems(TokenSequenceBase& sequence) {
    std::vector<SyntaxItem> items;
    items.reserve(static_cast<std::size_t>(sequence.Count()) + 1);
    RawToken previous;
    int lastCode = TokenCodes::kNotOperator;  // of the last token that is no slash
    while (sequence.Next()) {
        RawToken token = CurrentToken(sequence);
        if (token.item.kind == Kind::kOther && token.operatorCode == TokenCodes::kEquals) continue;
        if (token.item.kind == Kind::kNumber && IsSign(previous)) {
            // 0.0 - 0.0 is a zero without a sign, which -0.0 is not.
            if (previous.operatorCode == TokenCodes::kMinus) {
                token.item.number = 0.0 - token.item.number;
            }
            items.pop_back();
        }
        items.push_back(token.item);
        previous = token;
        if (token.item.kind != Kind::kSlash) lastCode = token.operatorCode;
    }
    TakeOffTerminator(items, lastCode);
    items.push_back(SyntaxItem{});
    return items;
}

}  // namespace quillet::igraph
