#include "igraph/read/syntaxitems.h"

#include <cmath>
#include <cstddef>

#include "tokenizer/words.h"

namespace quillet::igraph {

namespace {

using Kind = SyntaxItem::Kind;

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

bool IsSign(const SyntaxItem& item, int operatorCode) {
    return item.kind == Kind::kOther &&
           (operatorCode == TokenCodes::kMinus || operatorCode == TokenCodes::kPlus);
}

bool EndsInPeriod(const SyntaxItem& item) {
    return item.value.ends_with('.') && item.source.ends_with('.');
}

// The period hid a reserved word from the tokenizer, so it is looked up here once more.
void CutTerminator(SyntaxItem& word) {
    word.value.remove_suffix(1);
    word.source.remove_suffix(1);
    if (ReservedWordOperator(word.value) != TokenCodes::kNotOperator) {
        word.kind = Kind::kReservedWord;
    }
}

}  // namespace

SyntaxItems::RawToken SyntaxItems::CurrentToken() const {
    RawToken token;
    token.operatorCode = m_sequence.Operator();
    const char* chars = nullptr;
    std::size_t length = 0;
    if (m_sequence.GetValueText(chars, length) > 0) token.item.value = {chars, length};
    if (m_sequence.GetSourceText(chars, length) > 0) token.item.source = {chars, length};
    switch (m_sequence.Type()) {
        case TokenCodes::kString:
            token.item.kind =
                token.operatorCode == TokenCodes::kNotOperator ? Kind::kWord : Kind::kReservedWord;
            break;
        case TokenCodes::kNumber:
            token.item.number = m_sequence.NumberValue();
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

// The next token but for equals signs; of the kind `kEnd` when there is none.
SyntaxItems::RawToken SyntaxItems::Take() {
    if (m_next) {
        const RawToken token = *m_next;
        m_next.reset();
        return token;
    }
    while (m_sequence.Next()) {
        const RawToken token = CurrentToken();
        if (token.item.kind != Kind::kOther || token.operatorCode != TokenCodes::kEquals) {
            return token;
        }
    }
    return {};
}

SyntaxItem SyntaxItems::Next() {
    RawToken token = Take();
    if (IsSign(token.item, token.operatorCode)) {
        RawToken following = Take();
        if (following.item.kind != Kind::kNumber) {
            m_next = following;
            return token.item;
        }
        // 0.0 - 0.0 is a zero without a sign, which -0.0 is not.
        if (token.operatorCode == TokenCodes::kMinus) {
            following.item.number = 0.0 - following.item.number;
        }
        return following.item;
    }
    const bool isPeriod =
        token.item.kind == Kind::kOther && token.operatorCode == TokenCodes::kPeriod;
    const bool isWordWithPeriod = token.item.kind == Kind::kWord && EndsInPeriod(token.item);
    if ((!isPeriod && !isWordWithPeriod) || !IsLastButSlashes()) return token.item;
    // The period that ends the command is an operator, or the last byte of the last word.
    if (isPeriod) return Take().item;
    CutTerminator(token.item);
    return token.item;
}

// True when nothing but slashes, which a comment leaves, follows the token that was taken last.
bool SyntaxItems::IsLastButSlashes() {
    const int index = m_sequence.CurrentIndex();
    bool isLast = true;
    while (isLast && m_sequence.Next()) {
        const int code = m_sequence.Operator();
        isLast = m_sequence.Type() == TokenCodes::kOperator &&
                 (code == TokenCodes::kSlash || code == TokenCodes::kEquals);
    }
    m_sequence.SetNextIndex(index + 1);
    return isLast;
}

}  // namespace quillet::igraph
