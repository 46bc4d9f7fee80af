// How the work on a hint grows with the command that it is about.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "driver/stringstreams.h"
#include "quillet.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"

namespace quillet {
namespace {

// The first command of a text that is not converted, with the texts that its report points to.
class Failure final : public ConversionListener, public TextOutput {
public:
    explicit Failure(const std::string& text) {
        StringInput input(text);
        static_cast<void>(ConvertStream(input, *this, *this, Options()));
        m_report.source = m_source;
        m_report.message = m_message;
    }
    // The report points into it.
    Failure(const Failure&) = delete;
    Failure& operator=(const Failure&) = delete;

    [[nodiscard]] const CommandReport& Report() const { return m_report; }

    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view /*line*/) override {}
    void OnCommand(const CommandReport& report) override {
        const bool isFailure = report.outcome == CommandOutcome::kFailed ||
                               report.outcome == CommandOutcome::kUnreadable;
        if (!isFailure || m_report.errorKind != ErrorKind::kNone) return;
        m_report = report;
        m_source = report.source;
        m_message = report.message;
    }
    bool Write(std::string_view /*bytes*/) override { return true; }

private:
    CommandReport m_report;
    std::string m_source;
    std::string m_message;
};

// A command that grows by its repeated part, and why it fails.
struct HintGrowth {
    const char* name;
    std::string before;
    std::string part;
    std::string after;
    ErrorKind kind;
};

class HintWorkTest : public testing::TestWithParam<HintGrowth> {};

TEST_P(HintWorkTest, IsLinear) {
    constexpr int kCount = 1000;
    const HintGrowth& c = GetParam();
    const Failure failure(c.before + Repeat(c.part, kCount) + c.after);
    const Failure longFailure(c.before + Repeat(c.part, 4 * kCount) + c.after);
    ASSERT_EQ(failure.Report().errorKind, c.kind);
    ASSERT_EQ(longFailure.Report().errorKind, c.kind);
    HintOptions options;
    options.macroNames = {"A_MACRO"};
    ExpectLinearWork(std::size_t{1}, [&](std::size_t size) {
        EXPECT_NE(HintFor((size == 1 ? failure : longFailure).Report(), options), "");
    });
}

const HintGrowth kHintGrowths[] = {
    {"subcommands before the mistake", "TABLES /TABLE=a", " /TITLE='x'", " /TABLE=a b.",
     ErrorKind::kTablesSyntax},
    {"subcommands after the mistake", "TABLES /TABLE=a b", " /TITLE='x'", ".",
     ErrorKind::kTablesSyntax},
    {"variables", "TABLES /TABLE=a", " + b", " c.", ErrorKind::kTablesSyntax},
    {"settings of FORMAT", "TABLES /FORMAT=ZERO", " CWIDTH(1,2)", " /TABLE=a.",
     ErrorKind::kTablesSyntax},
    {"variables on BREAK", "TABLES /BREAK=region", " + region", " /TABLE=sex.",
     ErrorKind::kTablesSyntax},
    {"blank lines", "TABLES /TABLE=a\n", "\n \n", " b.", ErrorKind::kTablesSyntax},
    {"lines after blank ones", "TABLES /TABLE=a", "\n\n + b", " c.", ErrorKind::kTablesSyntax},
    {"variables of a set", "TABLES /MDGROUP=m", " v", " /TABLE=m.", ErrorKind::kSubcommandSyntax},
    {"macro words", "TABLES /TABLE=a", " !x", ".", ErrorKind::kTablesSyntax},
    {"variables before TO", "TABLES /OBSERVATION=a", " b", " TO c /TABLE=a.",
     ErrorKind::kObservationRange},
    {"a long function", "TABLES /TABLE=a /STATISTICS=AV", "X", "(a).", ErrorKind::kUnknownFunction},
    {"scale variables beside a total", "TABLES /FTOTAL=t /OBSERVATION=x /TABLE=a", " + x", " + t.",
     ErrorKind::kTotalBesideScale},
    {"declarations", "TABLES /FTOTAL=t /OBSERVATION=x", " /OBSERVATION=y", " /TABLE=x + t.",
     ErrorKind::kTotalBesideScale},
    {"an open literal", "TABLES /TABLE=a /TITLE='", "x ", "\n", ErrorKind::kUnclosedLiteral},
    {"slashes in an open literal", "TABLES /TABLE=a /TITLE='", " /", "\n",
     ErrorKind::kUnclosedLiteral},
    {"literals before an open one", "TABLES /TABLE=a /TITLE=", "'x' ", "'y\n",
     ErrorKind::kUnclosedLiteral},
    {"apostrophes in literals", "TABLES /TABLE=a /TITLE=", "'x'y ", "'z\n",
     ErrorKind::kUnclosedLiteral},
    {"lines before an open literal", "TABLES /TABLE=a", "\n /TITLE='x'", "'y\n",
     ErrorKind::kUnclosedLiteral},
    {"a character after a long literal", "TABLES /TABLE=a /TITLE='", "\xC3\xA9", "' `.\n",
     ErrorKind::kInvalidCharacter},
    {"a number without its exponent", "TABLES /TABLE=a BY ", "1", "E b.\n",
     ErrorKind::kExponentWithoutDigits},
    {"subcommands of a graph", "IGRAPH /X1=VAR(a)", " /REFLINE a 3", " /FOO.",
     ErrorKind::kIgraphSyntax},
    {"panels of a graph", "IGRAPH /X1=VAR(a) /Y=VAR(b)", " /PANEL p", " /BOX.",
     ErrorKind::kIgraphNotExpressible},
};
INSTANTIATE_TEST_SUITE_P(Growth, HintWorkTest, testing::ValuesIn(kHintGrowths),
                         NameOfRow<HintGrowth>);

}  // namespace
}  // namespace quillet
