#include "driver/reasons.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "driver/messagecatalogue.h"
#include "platform/assertion.h"

namespace quillet {
namespace {

TEST(ReasonsTest, EveryReasonHasItsOwnNameMessageAndHeading) {
    std::set<std::string_view> names;
    std::set<std::string_view> messages;
    std::set<std::string_view> headings;
    for (const Reason& reason : kReasons) {
        SCOPED_TRACE(reason.name);
        EXPECT_TRUE(names.insert(reason.name).second);
        EXPECT_EQ(reason.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"),
                  std::string_view::npos);
        EXPECT_TRUE(messages.insert(reason.message).second);
        EXPECT_TRUE(headings.insert(reason.heading).second);
        EXPECT_FALSE(reason.heading.empty());
        EXPECT_EQ(&ReasonOf(reason.kind), &reason);
        EXPECT_EQ(NameOf(reason.kind), reason.name);
    }
    EXPECT_EQ(NameOf(ErrorKind::kNone), "none");
    EXPECT_EQ(ReasonOf(ErrorKind::kNone).name, "unknown");
    EXPECT_EQ(ReasonOf(ErrorKind::kTablesSyntax).message, "Invalid TABLES command syntax");
    EXPECT_EQ(ReasonOf(ErrorKind::kUnknown).message, "");
}

TEST(ReasonsTest, AKindThatThereIsNotAsserts) {
    for (const int kind : {-1, static_cast<int>(ErrorKind::kUnknown) + 1, 1000}) {
        SCOPED_TRACE(kind);
        std::vector<std::string> assertions;
        const ScopedAssertionHandler handler([&assertions](const AssertionFailure& failure) {
            assertions.emplace_back(failure.text);
        });
        EXPECT_EQ(ReasonOf(static_cast<ErrorKind>(kind)).name, "unknown");
        EXPECT_EQ(ErrorKindOf(static_cast<ParseErrorKind>(kind)), ErrorKind::kUnknown);
        EXPECT_EQ(ErrorKindOf(static_cast<TablesErrorKind>(kind)), ErrorKind::kUnknown);
        EXPECT_EQ(MessageOf(Warning{static_cast<WarningKind>(kind), "x"}), "");
        EXPECT_EQ(assertions, std::vector<std::string>(4, "0"));
    }
}

TEST(ReasonsTest, EachSortKnowsItsReasonsByThePublicNames) {
    EXPECT_EQ(ErrorKindOf(ParseErrorKind::kNone), ErrorKind::kUnknown);
    EXPECT_EQ(ErrorKindOf(ParseErrorKind::kUnclosedLiteral), ErrorKind::kUnclosedLiteral);
    EXPECT_EQ(ErrorKindOf(ParseErrorKind::kInvalidCharacter), ErrorKind::kInvalidCharacter);
    EXPECT_EQ(ErrorKindOf(TablesErrorKind::kNone), ErrorKind::kUnknown);
    EXPECT_EQ(ErrorKindOf(TablesErrorKind::kSubcommandSyntax), ErrorKind::kSubcommandSyntax);
    EXPECT_EQ(ErrorKindOf(TablesErrorKind::kTableTooLarge), ErrorKind::kTableTooLarge);
}

TEST(ReasonsTest, WordsWarnings) {
    EXPECT_EQ(MessageOf(Warning{WarningKind::kObsoleteSubcommand, "BASE"}),
              "Obsolete subcommand BASE has been ignored.");
    EXPECT_EQ(MessageOf(Warning{WarningKind::kUnknownSubcommand, "XYZ"}),
              "Unrecognized or obsolete subcommand XYZ has been ignored.");
    EXPECT_EQ(MessageOf(Warning{WarningKind::kObsoleteFormat, {}}),
              "Obsolete form of the FORMAT subcommand has been ignored.");
}

TEST(ReasonsTest, SaysForWhichCommandMemoryWasNotEnough) {
    EXPECT_EQ(OutOfMemoryLine(1).Text(),
              "Not enough memory for the command that begins in line 1.");
    EXPECT_EQ(OutOfMemoryLine(std::numeric_limits<long>::max()).Text(),
              FillPosition(ReasonOf(ErrorKind::kOutOfMemory).message,
                           std::numeric_limits<long>::max(), 0));
}

}  // namespace
}  // namespace quillet
