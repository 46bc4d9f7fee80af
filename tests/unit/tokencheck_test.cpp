#include "tokenizer/tokencheck.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "platform/codepage.h"
#include "support/assertionrecorder.h"
#include "support/doublebytepage.h"
#include "tokenizer/parseerror.h"
#include "tokenizing.h"

namespace quillet {
namespace {

using namespace tokenizing;

// The check must find the errors that building the tokens finds, and no others.
void ExpectCheckAgrees(const CodePage& codePage, const std::string& text, bool skipLeadingSign) {
    const TokenRun kept = Tokenize(codePage, text, skipLeadingSign, 0);
    const AssertionRecorder assertions;
    std::string error;
    try {
        CheckTokens(codePage, text, skipLeadingSign);
    } catch (const ParseError& thrown) {
        error = Describe(thrown);
    }
    ASSERT_EQ(error, kept.error);
    ASSERT_EQ(assertions.Texts(), kept.assertions);
}

TEST(TokenCheckTest, AgreesWithTheKeptTokens) {
    for (const CodePage* pPage : {&CodePage::Utf8(), &CodePage::Windows1252(), &DoubleByte()}) {
        for (const std::string& text : AllTexts()) {
            for (const bool skipLeadingSign : {false, true}) {
                SCOPED_TRACE(text);
                ExpectCheckAgrees(*pPage, text, skipLeadingSign);
                // After a first word the text is that of an ordinary command.
                ExpectCheckAgrees(*pPage, "x " + text, skipLeadingSign);
                if (testing::Test::HasFatalFailure()) return;
            }
        }
    }
}

TEST(TokenCheckTest, AgreesWithTheKeptTokensOnRandomTexts) {
    std::mt19937 random(4242);
    const CodePage* const pages[] = {&CodePage::Utf8(), &CodePage::Windows1252(), &DoubleByte()};
    for (int run = 0; run < 20000; ++run) {
        const std::string text = (random() % 2 == 0 ? "x " : "") + RandomText(random);
        SCOPED_TRACE("run " + std::to_string(run) + ": " + text);
        ExpectCheckAgrees(*pages[random() % 3], text, random() % 2 == 0);
        if (testing::Test::HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace quillet
