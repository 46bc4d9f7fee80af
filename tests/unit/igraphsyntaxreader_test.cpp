#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "igraph/read/syntaxreader.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {

namespace {

using ItemKind = SyntaxItem::Kind;

// A reader over a text, with the sequence that its items look into.
class ReaderOf {
public:
    explicit ReaderOf(const std::string& text)
        : m_sequence(CodePage::Utf8(), text, false, 0), m_reader(m_sequence) {}

    SyntaxReader* operator->() { return &m_reader; }

private:
    TAVQTokenSequence m_sequence;
    SyntaxReader m_reader;
};

TEST(IgraphSyntaxReaderTest, StaysAtTheEnd) {
    ReaderOf reader("a");
    EXPECT_TRUE(reader->IsAt(ItemKind::kWord));
    reader->Advance();
    reader->Advance();
    reader->Advance();
    EXPECT_TRUE(reader->IsAt(ItemKind::kEnd));
    double number = 0.0;
    EXPECT_FALSE(reader->ReadNumber(number));
    EXPECT_EQ(reader->Fault(), SyntaxFault::kValue);
}

TEST(IgraphSyntaxReaderTest, ReadsValues) {
    ReaderOf reader("5 (7) 8 'text' ON off SCA )");
    double number = 0.0;
    EXPECT_TRUE(reader->ReadNumber(number));
    EXPECT_EQ(number, 5.0);
    EXPECT_TRUE(reader->ReadParenthesizedNumber({0.0, 9.0}, number));
    EXPECT_EQ(number, 7.0);
    EXPECT_TRUE(reader->ReadParenthesizedNumber({0.0, 9.0}, number));
    EXPECT_EQ(number, 8.0);
    std::string text;
    EXPECT_TRUE(reader->ReadLiteral(text));
    EXPECT_EQ(text, "text");
    bool isOn = false;
    EXPECT_TRUE(reader->ReadOnOff(isOn));
    EXPECT_TRUE(isOn);
    EXPECT_TRUE(reader->ReadOnOff(isOn));
    EXPECT_FALSE(isOn);
    Keyword keyword{};
    EXPECT_TRUE(reader->ReadKeyword(keywords::kMeasures, keyword));
    EXPECT_EQ(keyword, Keyword::kScale);
    EXPECT_TRUE(reader->Expect(ItemKind::kRightParen));
    EXPECT_TRUE(reader->IsAt(ItemKind::kEnd));
    EXPECT_FALSE(reader->HasNumberOutOfRange());
    EXPECT_EQ(reader->Fault(), SyntaxFault::kNone);
}

TEST(IgraphSyntaxReaderTest, NumbersOutOfRangeAreReadAndMarked) {
    const char* const outside[] = {"-1", "9.5"};
    for (const char* text : outside) {
        ReaderOf reader(text);
        double number = 0.0;
        EXPECT_TRUE(reader->ReadNumberIn({0.0, 9.0}, number)) << text;
        EXPECT_TRUE(reader->HasNumberOutOfRange()) << text;
    }
    const char* const inside[] = {"0", "9"};
    for (const char* text : inside) {
        ReaderOf reader(text);
        double number = 0.0;
        EXPECT_TRUE(reader->ReadNumberIn({0.0, 9.0}, number)) << text;
        EXPECT_FALSE(reader->HasNumberOutOfRange()) << text;
    }
    ReaderOf length("0");
    double number = 0.0;
    EXPECT_TRUE(length->ReadLength(number));
    EXPECT_TRUE(length->HasNumberOutOfRange());
}

TEST(IgraphSyntaxReaderTest, RecognizesReferences) {
    struct Case {
        const char* text;
        bool isReference;
    };
    const Case cases[] = {
        {"a", true},     {"VAR(a)", true}, {"$count", true},   {"$count (x)", true},
        {"by", true},    {"VAR", true},    {"a (b)", false},   {"TYPE", false},
        {"type", false}, {"5", false},     {"'a'", false},     {"(", false},
        {"", false},     {"TYP", true},    {"TYPE(a)", false}, {"MIN", false},
    };
    for (const Case& c : cases) {
        ReaderOf reader(c.text);
        EXPECT_EQ(reader->IsAtReference(keywords::kAxisSettings), c.isReference) << c.text;
    }
}

TEST(IgraphSyntaxReaderTest, OptionalWordsLeaveOthersAlone) {
    ReaderOf reader("NORMAL SPIKE");
    bool isRead = false;
    Keyword keyword{};
    EXPECT_TRUE(
        reader->ReadOptionalKeyword(keywords::kKernels, keywords::kFitSettings, isRead, keyword));
    EXPECT_TRUE(isRead);
    EXPECT_EQ(keyword, Keyword::kNormal);
    EXPECT_TRUE(
        reader->ReadOptionalKeyword(keywords::kKernels, keywords::kFitSettings, isRead, keyword));
    EXPECT_FALSE(isRead);
    EXPECT_EQ(reader->Current().value, "SPIKE");
    ReaderOf other("QUADRATIC");
    EXPECT_FALSE(
        other->ReadOptionalKeyword(keywords::kKernels, keywords::kFitSettings, isRead, keyword));
    EXPECT_EQ(other->Fault(), SyntaxFault::kSetting);
}

// Each reads all that there is, so that nobody after it could notice what it has not.
struct SyntaxFaultCase {
    const char* name;
    const char* text;
    bool (*read)(SyntaxReader& reader);
    SyntaxFault fault;
};

void PrintTo(const SyntaxFaultCase& c, std::ostream* pStream) { *pStream << c.text; }

bool ReadAnyNumber(SyntaxReader& reader) {
    double number = 0.0;
    return reader.ReadNumberIn({0.0, 9.0}, number);
}

bool ReadAnyLength(SyntaxReader& reader) {
    double length = 0.0;
    return reader.ReadLength(length);
}

bool ReadAnyParenthesizedNumber(SyntaxReader& reader) {
    double number = 0.0;
    return reader.ReadParenthesizedNumber({0.0, 9.0}, number);
}

bool ReadAnyReference(SyntaxReader& reader) {
    VariableReference reference;
    return reader.ReadReference({}, reference);
}

bool ReadAnyEnd(SyntaxReader& reader) {
    ScaleEnds ends;
    return reader.ReadEnd(Keyword::kMin, ends);
}

bool ReadAnySummary(SyntaxReader& reader) {
    SummaryCall call;
    return reader.ReadSummary(call);
}

bool ReadKernels(SyntaxReader& reader) {
    return reader.SkipWords(keywords::kKernels, keywords::kFitSettings);
}

bool ReadMeasures(SyntaxReader& reader) {
    return reader.ReadSettings(keywords::kMeasures,
                               [](Keyword keyword) { return keyword == Keyword::kScale; });
}

class IgraphSyntaxReaderFaultTest : public testing::TestWithParam<SyntaxFaultCase> {};

TEST_P(IgraphSyntaxReaderFaultTest, StopsAtIt) {
    TAVQTokenSequence sequence(CodePage::Utf8(), GetParam().text, false, 0);
    SyntaxReader reader(sequence);
    EXPECT_FALSE(GetParam().read(reader));
    EXPECT_EQ(reader.Fault(), GetParam().fault);
}

const SyntaxFaultCase kSyntaxFaults[] = {
    {"NoNumber", "x", ReadAnyNumber, SyntaxFault::kValue},
    {"NoLength", "x", ReadAnyLength, SyntaxFault::kValue},
    {"NoBareNumber", "x", ReadAnyParenthesizedNumber, SyntaxFault::kValue},
    {"NoNumberInParentheses", "()", ReadAnyParenthesizedNumber, SyntaxFault::kValue},
    {"OpenNumber", "(5", ReadAnyParenthesizedNumber, SyntaxFault::kParenthesis},
    {"NoReference", "5", ReadAnyReference, SyntaxFault::kValue},
    {"NoName", "VAR()", ReadAnyReference, SyntaxFault::kValue},
    {"OpenName", "VAR(a", ReadAnyReference, SyntaxFault::kParenthesis},
    {"NoEnd", "MAX", ReadAnyEnd, SyntaxFault::kValue},
    {"NoSummary", "5", ReadAnySummary, SyntaxFault::kFunction},
    {"UnknownSummary", "NOSUCH", ReadAnySummary, SyntaxFault::kFunction},
    {"NoArgument", "PTILE", ReadAnySummary, SyntaxFault::kFunction},
    {"NoSecondArgument", "NIN(1)", ReadAnySummary, SyntaxFault::kFunction},
    {"AnArgumentTooMany", "PTILE(5 6)", ReadAnySummary, SyntaxFault::kFunction},
    {"OpenArguments", "PTILE(5", ReadAnySummary, SyntaxFault::kParenthesis},
    {"UnknownWord", "NORMAL NOSUCH", ReadKernels, SyntaxFault::kSetting},
    {"UnknownSetting", "SCALE NOSUCH", ReadMeasures, SyntaxFault::kSetting},
    {"RefusedSetting", "CATEGORICAL", ReadMeasures, SyntaxFault::kNone},
};

INSTANTIATE_TEST_SUITE_P(Parts, IgraphSyntaxReaderFaultTest, testing::ValuesIn(kSyntaxFaults),
                         [](const testing::TestParamInfo<SyntaxFaultCase>& tested) {
                             return std::string(tested.param.name);
                         });

}  // namespace

}  // namespace quillet::igraph
