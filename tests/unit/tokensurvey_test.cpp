#include "tokenizer/tokensurvey.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "platform/codepage.h"
#include "support/assertionrecorder.h"
#include "support/doublebytepage.h"
#include "support/sign.h"
#include "tokenizer/tavqtoken.h"
#include "tokenizing.h"

namespace quillet {
namespace {

using namespace tokenizing;

// The survey must answer as the kept tokens do.
void ExpectSurveyAgrees(const CodePage& codePage, const std::string& text, bool skipLeadingSign,
                        int maxTokens) {
    const TokenRun kept = Tokenize(codePage, text, skipLeadingSign, maxTokens);
    const TokenRun counted = Survey(codePage, text, skipLeadingSign, maxTokens);
    ASSERT_EQ(counted.error, kept.error);
    ASSERT_EQ(counted.assertions, kept.assertions);
    ASSERT_EQ(counted.state, kept.state);
    ASSERT_EQ(counted.count, kept.count);
    ASSERT_EQ(counted.firstIsLiteral, kept.firstIsLiteral);
    ASSERT_EQ(counted.firstValue, kept.firstValue.substr(0, counted.firstValue.size()));
    ASSERT_EQ(counted.firstValue.empty(), kept.firstValue.empty());
    for (const char* word : {"*", "COMMENT", "**", "*>", "DOCUMENT", "TABLES", "IGRAPH"}) {
        ASSERT_EQ(SignOf(CompareTextPrefix(counted.firstValue, word, 3)),
                  SignOf(CompareTextPrefix(kept.firstValue, word, 3)))
            << word;
    }
    for (const char* word : {"BEGIN", "DATA", "TABLES", "IGRAPH"}) {
        ASSERT_EQ(CompareTextPrefix(counted.firstValue, word, 0) == 0,
                  CompareTextPrefix(kept.firstValue, word, 0) == 0)
            << word;
    }
}

TEST(TokenSurveyTest, AgreesWithTheKeptTokens) {
    for (const CodePage* pPage : {&CodePage::Utf8(), &CodePage::Windows1252(), &DoubleByte()}) {
        for (const std::string& text : AllTexts()) {
            for (const int maxTokens : {0, 1, 2, 3}) {
                for (const bool skipLeadingSign : {false, true}) {
                    SCOPED_TRACE(text);
                    ExpectSurveyAgrees(*pPage, text, skipLeadingSign, maxTokens);
                    if (testing::Test::HasFatalFailure()) return;
                }
            }
        }
    }
}

TEST(TokenSurveyTest, AgreesWithTheKeptTokensOnRandomTexts) {
    std::mt19937 random(20240611);
    const CodePage* const pages[] = {&CodePage::Utf8(), &CodePage::Windows1252(), &DoubleByte()};
    for (int run = 0; run < 20000; ++run) {
        const std::string text = RandomText(random);
        const CodePage& codePage = *pages[random() % 3];
        const bool skipLeadingSign = random() % 2 == 0;
        const int maxTokens = static_cast<int>(random() % 4);
        SCOPED_TRACE("run " + std::to_string(run) + ": " + text);
        ExpectSurveyAgrees(codePage, text, skipLeadingSign, maxTokens);
        if (testing::Test::HasFatalFailure()) return;
    }
}

// Who knows the first line alone need not look at the next ones when it has a first token that is
// no literal, or has a second one.
TEST(TokenSurveyTest, OnlyALiteralAloneOnItsLineGoesOn) {
    std::mt19937 random(8080);
    int wentOn = 0;
    for (int run = 0; run < 40000; ++run) {
        const std::string text = (random() % 4 == 0 ? "'*'" : "") + RandomText(random) + "\n" +
                                 (random() % 2 == 0 ? "+'x'" : "") + RandomText(random);
        SCOPED_TRACE("run " + std::to_string(run) + ": " + text);
        const TokenRun line =
            Survey(CodePage::Utf8(), text.substr(0, text.find('\n') + 1), false, 2);
        const TokenRun whole = Survey(CodePage::Utf8(), text, false, 1);
        if (!line.error.empty() || !whole.error.empty() || line.count == 0) continue;
        const bool goesOn = line.firstValue != whole.firstValue;
        wentOn += goesOn ? 1 : 0;
        ASSERT_TRUE(!goesOn || (line.count == 1 && line.firstIsLiteral));
    }
    EXPECT_GT(wentOn, 100);
}

TEST(TokenSurveyTest, ANullTextIsEmpty) {
    const AssertionRecorder assertions;
    const TokenSurvey survey = SurveyTokens(CodePage::Utf8(), std::string_view(), true, 2);
    EXPECT_EQ(survey.count, 0);
    EXPECT_EQ(survey.state, SpecialCommandState::kOrdinary);
    EXPECT_EQ(survey.firstValue, "");
    EXPECT_TRUE(assertions.Texts().empty());
}

}  // namespace
}  // namespace quillet
