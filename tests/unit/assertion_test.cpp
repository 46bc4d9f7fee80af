#include "platform/assertion.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace quillet {
namespace {

constexpr std::string_view kModule = "assertiontest";

using Texts = std::vector<std::string>;

AssertionHandler KeepIn(Texts& texts) {
    return [&texts](const AssertionFailure& failure) { texts.emplace_back(failure.text); };
}

TEST(AssertionTest, ReportsInOneLine) {
    EXPECT_EQ(AssertionLine({"ixEnd < m_lineBuffer.size()", "commandstream", 17}),
              "Assertion failed: ixEnd < m_lineBuffer.size(), commandstream:17");
    EXPECT_EQ(AssertionLine({"IsInvalidUnquoted( currChar.Code() )", "tavqtokenvector", 1}),
              "Assertion failed: IsInvalidUnquoted( currChar.Code() ), tavqtokenvector:1");
    EXPECT_EQ(AssertionLine({"100% of %s", "m", 2000000000}),
              "Assertion failed: 100% of %s, m:2000000000");
}

TEST(AssertionTest, YieldsItsCondition) {
    Texts texts;
    const ScopedAssertionHandler handler(KeepIn(texts));
    EXPECT_TRUE(QUILLET_ASSERT(true, "holds"));
    EXPECT_TRUE(texts.empty());
    EXPECT_FALSE(QUILLET_ASSERT(false, "does not hold"));
    EXPECT_EQ(texts, Texts{"does not hold"});
    const int* pNothing = nullptr;
    EXPECT_FALSE(QUILLET_ASSERT(pNothing, "pNothing"));
    EXPECT_EQ(texts, (Texts{"does not hold", "pNothing"}));
}

TEST(AssertionTest, LooksAtItsConditionOnce) {
    Texts texts;
    const ScopedAssertionHandler handler(KeepIn(texts));
    int looks = 0;
    EXPECT_TRUE(QUILLET_ASSERT(++looks == 1, "++looks == 1"));
    EXPECT_FALSE(QUILLET_ASSERT(++looks == 1, "++looks == 1"));
    EXPECT_EQ(looks, 2);
    EXPECT_EQ(texts.size(), 1U);
}

TEST(AssertionTest, TellsModuleAndLine) {
    std::string module;
    int line = 0;
    const ScopedAssertionHandler handler([&](const AssertionFailure& failure) {
        module = failure.module;
        line = failure.line;
    });
    EXPECT_FALSE(QUILLET_ASSERT(false, "false"));
    EXPECT_EQ(line, __LINE__ - 1);
    EXPECT_EQ(module, "assertiontest");
}

TEST(AssertionTest, CallsTheInnermostHandlerAlone) {
    Texts outer;
    Texts inner;
    const ScopedAssertionHandler outerHandler(KeepIn(outer));
    ReportAssertion({"1", kModule, 1});
    {
        const ScopedAssertionHandler innerHandler(KeepIn(inner));
        ReportAssertion({"2", kModule, 1});
        ReportAssertion({"3", kModule, 1});
    }
    ReportAssertion({"4", kModule, 1});
    EXPECT_EQ(outer, (Texts{"1", "4"}));
    EXPECT_EQ(inner, (Texts{"2", "3"}));
}

TEST(AssertionTest, GoesToStandardErrorWithoutAHandler) {
    testing::internal::CaptureStderr();
    ReportAssertion({"Count() == 1", "tavqtokenvector", 3});
    ReportAssertion({"Count() == 2", "tavqtokenvector", 4});
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Assertion failed: Count() == 1, tavqtokenvector:3\n"
              "Assertion failed: Count() == 2, tavqtokenvector:4\n");
}

TEST(AssertionTest, GoesToStandardErrorAgainAfterTheLastHandler) {
    Texts texts;
    testing::internal::CaptureStderr();
    {
        const ScopedAssertionHandler handler(KeepIn(texts));
        ReportAssertion({"1", "m", 1});
    }
    ReportAssertion({"2", "m", 1});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Assertion failed: 2, m:1\n");
    EXPECT_EQ(texts, Texts{"1"});
}

TEST(AssertionTest, AHandlerIsItsThreadsOwn) {
    Texts mine;
    Texts theirs;
    testing::internal::CaptureStderr();
    const ScopedAssertionHandler handler(KeepIn(mine));
    std::thread other([&theirs] {
        ReportAssertion({"before", "m", 1});
        const ScopedAssertionHandler otherHandler(KeepIn(theirs));
        ReportAssertion({"theirs", "m", 1});
    });
    other.join();
    ReportAssertion({"mine", "m", 1});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Assertion failed: before, m:1\n");
    EXPECT_EQ(mine, Texts{"mine"});
    EXPECT_EQ(theirs, Texts{"theirs"});
}

}  // namespace
}  // namespace quillet
