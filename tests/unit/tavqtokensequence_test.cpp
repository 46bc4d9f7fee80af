#include "tokenizer/tavqtokensequence.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "support/assertionrecorder.h"
#include "support/sign.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tokensurvey.h"

namespace quillet {
namespace {

constexpr const char* kLineAssertion = "m_pImp->m_curr < m_pImp->m_tokenVec.Count()";

using TextReader = std::size_t (TokenSequenceBase::*)(const char*&, std::size_t&) const;

std::string Read(const TokenSequenceBase& sequence, TextReader reader) {
    const char* chars = nullptr;
    std::size_t length = 12345;
    EXPECT_EQ((sequence.*reader)(chars, length), length);
    if (chars == nullptr) {
        EXPECT_EQ(length, 0U);
        return "(null)";
    }
    return {chars, length};
}

void ExpectAtEnd(TokenSequenceBase& sequence, AssertionRecorder& assertions) {
    EXPECT_EQ(sequence.CurrentIndex(), sequence.Count());
    EXPECT_EQ(sequence.Type(), 1);
    EXPECT_EQ(sequence.Operator(), 0);
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "(null)");
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetValueText), "(null)");
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetSourceText), "(null)");
    EXPECT_EQ(sequence.NumberValue(), 0.0);
    EXPECT_EQ(sequence.Column(), 0);
    std::ostringstream stream;
    sequence.DumpCurrent(stream);
    EXPECT_EQ(stream.str(), "");
    EXPECT_EQ(sequence.CompareCurrent("", 0), -1);
    EXPECT_EQ(sequence.CompareCurrent("A", 1), -1);
    EXPECT_EQ(sequence.CloneCurrent().Type(), TokenCodes::kAtEnd);
    EXPECT_EQ(assertions.Take(), std::vector<std::string>{});
    EXPECT_EQ(sequence.Line(), 0);
    EXPECT_EQ(assertions.Take(), std::vector<std::string>{kLineAssertion});
}

struct TokenView {
    const char* name;
    int type;
    int op;
    std::string text;
    std::string value;
    std::string source;
    double number;
    int line;
    int column;
    std::string dump;
};

TEST(TAVQTokenSequenceTest, ShowsEachTokenInTurn) {
    const std::string text = "Age by 2.5 =\n'it''s' ~=";
    const TokenView views[] = {
        {"an ordinary word", 2, 0, "Age", "AGE", "Age", 0.0, 1, 1,
         "kString\t1:1\tkNotOperator\tAge\n"},
        {"an operator word", 2, 34, "by", "BY", "by", 0.0, 1, 5, "kString\t1:5\tkBy\tby\n"},
        {"a number", 3, 0, "2.5", "2.5", "2.5", 2.5, 1, 8, "kNumber\t1:8\t2.5\t2.5\n"},
        {"an operator", 5, 3, "=", "=", "=", 0.0, 1, 12, "kOperator\t1:12\tkEquals\t=\n"},
        {"a literal", 4, 0, "it's", "it's", "'it''s' ", 0.0, 2, 0, "kLiteral\t2:0\n`it's`\n"},
        {"not equal", 5, 6, "~=", "~=", "~=", 0.0, 2, 8, "kOperator\t2:8\tkNotOperator\t~=\n"},
    };
    for (int round = 0; round < 2; ++round) {
        AssertionRecorder assertions;
        TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
        EXPECT_EQ(sequence.Count(), 6);
        int index = 0;
        for (const TokenView& v : views) {
            SCOPED_TRACE(v.name);
            ASSERT_TRUE(sequence.Next());
            EXPECT_EQ(sequence.CurrentIndex(), index++);
            EXPECT_EQ(sequence.Type(), v.type);
            EXPECT_EQ(sequence.Operator(), v.op);
            EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), v.text);
            EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetValueText), v.value);
            EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetSourceText), v.source);
            EXPECT_EQ(sequence.NumberValue(), v.number);
            EXPECT_EQ(sequence.Line(), v.line);
            EXPECT_EQ(sequence.Column(), v.column);
            std::ostringstream stream;
            sequence.DumpCurrent(stream);
            EXPECT_EQ(stream.str(), v.dump);
            const TAVQToken token = sequence.CloneCurrent();
            EXPECT_EQ(token.Type(), v.type);
            EXPECT_EQ(token.Text(true), v.source);
            EXPECT_EQ(token.Text(false), v.value);
            int line = 0;
            int column = 0;
            EXPECT_TRUE(sequence.FindPosition(token.Text(true), line, column));
            EXPECT_EQ(line, v.line);
            EXPECT_EQ(column, v.column);
        }
        EXPECT_EQ(assertions.Take(), std::vector<std::string>{});
        EXPECT_FALSE(sequence.Next());
        ExpectAtEnd(sequence, assertions);
        EXPECT_FALSE(sequence.Next());
        ExpectAtEnd(sequence, assertions);
    }
}

TEST(TAVQTokenSequenceTest, TheFirstTokenIsReadableBeforeTheFirstAdvance) {
    AssertionRecorder assertions;
    TAVQTokenSequence sequence(CodePage::Utf8(), "a b", false, 0);
    EXPECT_EQ(sequence.CurrentIndex(), 0);
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "a");
    EXPECT_EQ(sequence.Line(), 1);
    EXPECT_TRUE(sequence.Next());
    EXPECT_EQ(sequence.CurrentIndex(), 0);
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "a");
    EXPECT_TRUE(sequence.Next());
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "b");
    EXPECT_FALSE(sequence.Next());
    EXPECT_EQ(assertions.Take(), std::vector<std::string>{});
}

TEST(TAVQTokenSequenceTest, AnEmptySequenceIsAtItsEnd) {
    for (const char* text : {"", "  \n\t", ",", "/* open"}) {
        SCOPED_TRACE(text);
        AssertionRecorder assertions;
        TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
        EXPECT_EQ(sequence.Count(), 0);
        ExpectAtEnd(sequence, assertions);
        EXPECT_FALSE(sequence.Next());
        ExpectAtEnd(sequence, assertions);
        EXPECT_EQ(sequence.CommandKind(), CommandKind::kOrdinary);
    }
}

TEST(TAVQTokenSequenceTest, StepsToAnyToken) {
    AssertionRecorder assertions;
    TAVQTokenSequence sequence(CodePage::Utf8(), "a b c", false, 0);
    while (sequence.Next()) {
    }
    sequence.SetNextIndex(0);
    EXPECT_EQ(sequence.Type(), 1) << "nothing moves before Next";
    EXPECT_TRUE(sequence.Next());
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "a");
    sequence.SetNextIndex(2);
    EXPECT_EQ(sequence.CurrentIndex(), 0);
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "a");
    EXPECT_TRUE(sequence.Next());
    EXPECT_EQ(sequence.CurrentIndex(), 2);
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "c");
    sequence.SetNextIndex(1);
    EXPECT_TRUE(sequence.Next());
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "b");
    EXPECT_TRUE(sequence.Next());
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "c");
    sequence.SetNextIndex(3);
    EXPECT_FALSE(sequence.Next());
    ExpectAtEnd(sequence, assertions);
}

TEST(TAVQTokenSequenceTest, TextsLiveAsLongAsTheSequence) {
    auto pText = std::make_unique<std::string>("alpha 'beta'");
    const TAVQTokenSequence* pSequence = nullptr;
    TAVQTokenSequence sequence(CodePage::Utf8(), *pText, false, 0);
    pText.reset();
    pSequence = &sequence;
    const char* chars = nullptr;
    std::size_t length = 0;
    EXPECT_EQ(pSequence->GetSourceText(chars, length), 5U);
    EXPECT_TRUE(sequence.Next());
    EXPECT_TRUE(sequence.Next());
    EXPECT_EQ(std::string(chars, length), "alpha");
    EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "beta");
}

TEST(TAVQTokenSequenceTest, ComparesTheValueText) {
    const struct {
        const char* name;
        const char* text;
        const char* other;
        std::size_t count;
        int sign;
    } cases[] = {
        {"upper case", "tables", "TABLES", 0, 0},
        {"three bytes", "tab", "TABLES", 3, 0},
        {"three bytes of a longer word", "Tabulate", "TABLES", 3, 0},
        {"a shorter word", "ta", "TABLES", 3, -1},
        {"a literal's contents", "'TAB'", "TAB", 0, 0},
        {"greater", "u", "TABLES", 0, 1},
        {"an operator", "**", "**", 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const TAVQTokenSequence sequence(CodePage::Utf8(), c.text, false, 0);
        EXPECT_EQ(SignOf(sequence.CompareCurrent(c.other, c.count)), c.sign);
    }
}

struct KindCase {
    const char* name;
    std::string text;
    CommandKind kind;
    int count;
};

TEST(TAVQTokenSequenceTest, KnowsTheKindOfCommand) {
    const KindCase cases[] = {
        {"ordinary", "freq a", CommandKind::kOrdinary, 2},
        {"a star", "* it's free text", CommandKind::kComment, 1},
        {"COMMENT", "comment it's", CommandKind::kComment, 1},
        {"any word with COM", "COMPUTE x = 1", CommandKind::kComment, 1},
        {"DOCUMENT", "document it's", CommandKind::kDocument, 1},
        {"any word with DOC", "docs", CommandKind::kDocument, 1},
        {"BEGIN DATA", "begin data.", CommandKind::kInlineData, 2},
        {"BEGIN alone", "begin", CommandKind::kOrdinary, 1},
        {"BEGIN and another word", "begin program", CommandKind::kOrdinary, 2},
    };
    for (int round = 0; round < 2; ++round) {
        for (const KindCase& c : cases) {
            SCOPED_TRACE(c.name);
            const TAVQTokenSequence sequence(CodePage::Utf8(), c.text, false, 2);
            EXPECT_EQ(sequence.CommandKind(), c.kind);
            EXPECT_EQ(sequence.Count(), c.count);
            EXPECT_EQ(KindOf(SurveyTokens(CodePage::Utf8(), c.text, false, 2)), c.kind);
        }
    }
    EXPECT_EQ(static_cast<int>(CommandKind::kOrdinary), 0);
    EXPECT_EQ(static_cast<int>(CommandKind::kComment), 1);
    EXPECT_EQ(static_cast<int>(CommandKind::kDocument), 2);
    EXPECT_EQ(static_cast<int>(CommandKind::kInlineData), 3);
}

TEST(TAVQTokenSequenceTest, PassesItsSettingsToTheTokenizer) {
    {
        TAVQTokenSequence sequence(CodePage::Utf8(), "+freq a b c", true, 2);
        EXPECT_EQ(sequence.Count(), 2);
        EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetText), "freq");
        EXPECT_EQ(sequence.Column(), 2);
    }
    {
        const TAVQTokenSequence sequence(CodePage::Utf8(), "+freq", false, 0);
        EXPECT_EQ(sequence.Operator(), 8);
    }
    {
        const TAVQTokenSequence sequence(CodePage::Windows1252(), "\xE9", false, 0);
        EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetValueText), "\xC9");
    }
    {
        const TAVQTokenSequence sequence(CodePage::Utf8(), "é", false, 0);
        EXPECT_EQ(Read(sequence, &TokenSequenceBase::GetValueText), "É");
    }
}

TEST(TAVQTokenSequenceTest, PassesTheErrorOn) {
    for (int round = 0; round < 2; ++round) {
        try {
            const TAVQTokenSequence sequence(CodePage::Utf8(), "a\n 'b", false, 0);
            ADD_FAILURE() << "no error";
        } catch (const ParseError& error) {
            EXPECT_EQ(error.Kind(), ParseErrorKind::kUnclosedLiteral);
            EXPECT_EQ(error.Line(), 2);
            EXPECT_EQ(error.Column(), 3);
        }
        const TAVQTokenSequence limited(CodePage::Utf8(), "a\n 'b", false, 1);
        EXPECT_EQ(limited.Count(), 1);
    }
}

TEST(TAVQTokenSequenceTest, OffersTheTestsOfTheTokenizer) {
    EXPECT_TRUE(TAVQTokenSequence::IsEndData(CodePage::Utf8(), "end data.\n"));
    EXPECT_FALSE(TAVQTokenSequence::IsEndData(CodePage::Utf8(), " end data.\n"));
    EXPECT_EQ(TAVQTokenSequence::FindCommandEnd(CodePage::Utf8(), "it's.\n", true), 4);
    EXPECT_EQ(TAVQTokenSequence::FindCommandEnd(CodePage::Utf8(), "é.\n", false), 2);
    EXPECT_EQ(TAVQTokenSequence::FindCommandEnd(CodePage::Utf8(), "a.", false), -1);
    EXPECT_THROW((void)TAVQTokenSequence::FindCommandEnd(CodePage::Utf8(), "it's.\n", false),
                 ParseError);
}

}  // namespace
}  // namespace quillet
