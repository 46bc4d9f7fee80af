#include "igraph/read/syntaxreader.h"

#include <string_view>

#include "igraph/model/summaryfunction.h"

namespace quillet::igraph {

namespace {

using Kind = SyntaxItem::Kind;

// A literal that is put together from several may hold the line breaks between them, and a line
// break in the output could end the command.
std::string WithoutLineBreaks(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c == '\n' || c == '\r') c = ' ';
    }
    return result;
}

}  // namespace

bool SyntaxReader::ReadKeyword(KeywordSet set, Keyword& keyword) {
    if (!IsAt(Kind::kWord)) return Fail(SyntaxFault::kValue);
    const KeywordMatch match = MatchKeyword(Current().value, set);
    if (match.outcome != KeywordMatch::Outcome::kMatch) return Fail(SyntaxFault::kSetting);
    keyword = match.keyword;
    Advance();
    return true;
}

bool SyntaxReader::SkipKeyword(KeywordSet set) {
    Keyword ignored{};
    return ReadKeyword(set, ignored);
}

bool SyntaxReader::ReadOptionalKeyword(KeywordSet set, KeywordSet outer, bool& isRead,
                                       Keyword& keyword) {
    isRead = false;
    if (!IsAt(Kind::kWord)) return true;
    const KeywordMatch match = MatchKeyword(Current().value, set, outer);
    if (match.outcome != KeywordMatch::Outcome::kMatch) return Fail(SyntaxFault::kSetting);
    if (!match.inFirstSet) return true;
    isRead = true;
    keyword = match.keyword;
    Advance();
    return true;
}

bool SyntaxReader::ReadOnOff(bool& isOn) {
    if (!IsAt(Kind::kWord)) return Fail(SyntaxFault::kValue);
    const KeywordMatch match = MatchKeyword(Current().value, keywords::kOnOff);
    if (match.outcome != KeywordMatch::Outcome::kMatch) return Fail(SyntaxFault::kValue);
    isOn = match.keyword == Keyword::kOn;
    Advance();
    return true;
}

bool SyntaxReader::SkipOnOff() {
    bool ignored = false;
    return ReadOnOff(ignored);
}

bool SyntaxReader::ReadNumber(double& number) {
    if (!IsAt(Kind::kNumber)) return Fail(SyntaxFault::kValue);
    number = Current().number;
    Advance();
    return true;
}

bool SyntaxReader::ReadNumberIn(NumberRange range, double& number) {
    if (!ReadNumber(number)) return false;
    if (number < range.lowest || number > range.highest) MarkOutOfRange();
    return true;
}

bool SyntaxReader::ReadLength(double& number) {
    if (!ReadNumber(number)) return false;
    if (number <= 0.0) MarkOutOfRange();
    return true;
}

// The parentheses may be missing.
bool SyntaxReader::ReadParenthesizedNumber(NumberRange range, double& number) {
    if (!IsAt(Kind::kLeftParen)) return ReadNumberIn(range, number);
    Advance();
    return ReadNumberIn(range, number) && Expect(Kind::kRightParen);
}

bool SyntaxReader::ReadLiteral(std::string& text) {
    if (!IsAt(Kind::kLiteral)) return Fail(SyntaxFault::kValue);
    text = WithoutLineBreaks(Current().value);
    Advance();
    return true;
}

bool SyntaxReader::Expect(Kind parenthesis) {
    if (!IsAt(parenthesis)) return Fail(SyntaxFault::kParenthesis);
    Advance();
    return true;
}

// What a macro call stands for is not known here, so it can be no name.
bool SyntaxReader::ReadName(VariableReference& reference) {
    using Source = VariableReference::Source;
    const SyntaxItem& item = Current();
    if (!IsAt(Kind::kWord) || item.value.empty() || item.value.starts_with('!')) {
        return Fail(SyntaxFault::kValue);
    }
    reference = VariableReference{};
    reference.position = Position();
    if (item.value == "$COUNT") {
        reference.source = Source::kCount;
    } else if (item.value == "$PCT") {
        reference.source = Source::kPercent;
    } else if (item.value == "$CASE") {
        reference.source = Source::kCaseNumber;
    } else if (item.value.starts_with('$')) {
        return Fail(SyntaxFault::kValue);
    } else {
        reference.source = Source::kVariable;
        reference.name = item.source;
        reference.key = item.value;
    }
    Advance();
    return true;
}

bool SyntaxReader::IsAtReference(KeywordSet settings) const {
    if (IsAt(Kind::kReservedWord)) return true;  // it is no name, but it stands for one
    if (!IsAt(Kind::kWord)) return false;
    const std::string_view word = Current().value;
    if (Following().kind == Kind::kLeftParen) return word == "VAR" || word.starts_with('$');
    return !IsExactKeyword(word, settings);
}

bool SyntaxReader::ReadReference(KeywordSet settings, VariableReference& reference) {
    if (!IsAtReference(settings)) return Fail(SyntaxFault::kValue);
    if (Current().value != "VAR" || Following().kind != Kind::kLeftParen) {
        return ReadName(reference);
    }
    Advance();
    Advance();
    return ReadName(reference) && Expect(Kind::kRightParen);
}

bool SyntaxReader::ReadEnd(Keyword end, ScaleEnds& ends) {
    PlacedNumber number;
    number.position = Position();
    if (!ReadNumber(number.value)) return false;
    (end == Keyword::kMin ? ends.minimum : ends.maximum) = number;
    return true;
}

// Every use of a function checks its arguments, since a percentile outside the data has no
// meaning wherever it stands.
bool SyntaxReader::ReadSummaryArguments(SummaryCall& call) {
    const SummaryFunction& function = FindSummaryFunction(call.function);
    const bool isInParentheses = function.argumentCount > 0 && IsAt(Kind::kLeftParen);
    if (isInParentheses) Advance();
    for (int i = 0; i < function.argumentCount; ++i) {
        if (!IsAt(Kind::kNumber)) return Fail(SyntaxFault::kFunction);
        call.arguments[static_cast<std::size_t>(i)] = Current().number;
        Advance();
    }
    const bool hasMore = IsAt(Kind::kNumber) || (!isInParentheses && IsAt(Kind::kLeftParen));
    if (hasMore) return Fail(SyntaxFault::kFunction);
    if (isInParentheses && !Expect(Kind::kRightParen)) return false;
    if (call.function == Keyword::kPercentile &&
        (call.arguments[0] <= 0.0 || call.arguments[0] >= 100.0)) {
        MarkOutOfRange();
    }
    return true;
}

bool SyntaxReader::ReadSummary(SummaryCall& call) {
    if (!IsAt(Kind::kWord)) return Fail(SyntaxFault::kFunction);
    const KeywordMatch match = MatchKeyword(Current().value, keywords::kSummaryFunctions);
    if (match.outcome != KeywordMatch::Outcome::kMatch) return Fail(SyntaxFault::kFunction);
    Advance();
    call = SummaryCall{};
    call.function = match.keyword;
    return ReadSummaryArguments(call);
}

bool SyntaxReader::SkipWords(KeywordSet set, KeywordSet outer) {
    return ReadWords(set, outer, [](Keyword) {});
}

}  // namespace quillet::igraph
