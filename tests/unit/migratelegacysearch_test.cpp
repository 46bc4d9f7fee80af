#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/legacysearch.h"

namespace quillet::migrate {
namespace {

struct WordCase {
    const char* name;
    std::string text;
    bool isWorthALook;
};

class MigrateWordSearchTest : public testing::TestWithParam<WordCase> {};

// In pieces of every size.
TEST_P(MigrateWordSearchTest, FindsWhatACommandNeeds) {
    const WordCase& c = GetParam();
    for (std::size_t size = 1; size <= c.text.size() + 1; ++size) {
        WordSearch search;
        for (std::size_t begin = 0; begin < c.text.size(); begin += size) {
            search.Add(std::string_view(c.text).substr(begin, size));
        }
        EXPECT_EQ(search.IsWorthALook(), c.isWorthALook) << size;
    }
}

const WordCase kWordCases[] = {
    {"nothing", "", false},
    {"other_words", "ta bles ig raph 'T' + 'ABLES' i n s", false},
    {"tables", "LIST.\nTABLES", true},
    {"short_and_small", "tab", true},
    {"igraph", "x IgR", true},
    {"include", "INCLUDE 'x'.", true},
    {"insert", "insert file='x'.", true},
    {"inside_a_word", "stable", true},
    {"glued", "'T'\n+'ABLES' /TABLE=a.", true},
    {"glued_with_quotes", "\"I\"\n+\"GRAPH\".", true},
    {"at_the_end", "x +'", false},
};

INSTANTIATE_TEST_SUITE_P(Table, MigrateWordSearchTest, testing::ValuesIn(kWordCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(MigrateLegacySearchTest, AViewIsReadAsOftenAsNeeded) {
    TextView view("abcdefg");
    for (int reading = 0; reading < 2; ++reading) {
        std::string text;
        char buffer[3];
        while (const std::size_t count = view.Read(buffer, sizeof buffer)) {
            text.append(buffer, count);
        }
        EXPECT_EQ(text, "abcdefg");
        EXPECT_TRUE(view.Rewind());
        EXPECT_FALSE(view.Failed());
    }
    std::string text = "-";
    ReadText(view, text);
    EXPECT_EQ(text, "-abcdefg");
}

LegacyFindings Found(const std::vector<LegacyOutcome>& outcomes,
                     const std::vector<FindingCode>& codes) {
    LegacyFindings found;
    for (const LegacyOutcome outcome : outcomes) found.commands.push_back({.outcome = outcome});
    for (const FindingCode code : codes) {
        Finding finding;
        finding.code = code;
        found.findings.push_back(finding);
    }
    return found;
}

TEST(MigrateLegacySearchTest, FindingsBecomeFacts) {
    FileFacts facts;
    ArraySpool spool;
    TakeFindings(
        Found({LegacyOutcome::kConverted, LegacyOutcome::kOverlooked, LegacyOutcome::kFailed,
               LegacyOutcome::kConverted, LegacyOutcome::kUnreadable},
              {FindingCode::kSwallowed, FindingCode::kInclude, FindingCode::kMacroBody,
               FindingCode::kInclude}),
        {}, facts, spool);
    EXPECT_EQ(facts.found, 5);
    EXPECT_EQ(facts.converted, 2);
    EXPECT_EQ(facts.failed, 1);
    EXPECT_EQ(facts.unreadable, 1);
    EXPECT_EQ(facts.overlooked, 1);
    EXPECT_EQ(facts.changed, 1);
    EXPECT_EQ(facts.told, 2);
    EXPECT_EQ(facts.codes, (std::vector<std::string>{"include", "macro-body", "swallowed"}));
    EXPECT_TRUE(IsAccountedFor(facts));
    EXPECT_FALSE(spool.IsEmpty());
}

TEST(MigrateLegacySearchTest, OfAFileThatIsNotConvertedOnlyIncludesAreTold) {
    FileFacts facts;
    ArraySpool spool;
    TakeFindings(Found({}, {FindingCode::kSwallowed, FindingCode::kOldLineEnds}), {}, facts, spool);
    EXPECT_EQ(facts.changed + facts.told, 0);
    EXPECT_TRUE(spool.IsEmpty());
    TakeFindings(Found({}, {FindingCode::kInclude}), {}, facts, spool);
    EXPECT_EQ(facts.told, 1);
    EXPECT_FALSE(spool.IsEmpty());
}

struct OutcomeRow {
    const char* name;
    std::int64_t converted = 0;
    std::int64_t failed = 0;
    std::int64_t overlooked = 0;
    std::int64_t changed = 0;
    Outcome conversion = Outcome::kDone;
    FileOutcome outcome = FileOutcome::kConverted;
};

class MigrateOutcomeTest : public testing::TestWithParam<OutcomeRow> {};

TEST_P(MigrateOutcomeTest, TheWorstCounts) {
    const OutcomeRow& row = GetParam();
    FileFacts facts;
    facts.found = row.converted + row.failed + row.overlooked;
    facts.converted = row.converted;
    facts.failed = row.failed;
    facts.overlooked = row.overlooked;
    facts.changed = row.changed;
    EXPECT_EQ(NameOf(OutcomeOf(facts, row.conversion)), NameOf(row.outcome));
}

const OutcomeRow kOutcomeRows[] = {
    {"nothing", 0, 0, 0, 1, Outcome::kTokenizingError, FileOutcome::kNothing},
    {"stopped", 0, 0, 2, 0, Outcome::kTokenizingError, FileOutcome::kStopped},
    {"overlooked", 1, 1, 1, 1, Outcome::kDone, FileOutcome::kOverlooked},
    {"unconverted", 0, 1, 0, 1, Outcome::kDone, FileOutcome::kUnconverted},
    {"partly", 1, 1, 0, 1, Outcome::kDone, FileOutcome::kPartly},
    {"changed", 1, 0, 0, 1, Outcome::kDone, FileOutcome::kChanged},
    {"converted", 1, 0, 0, 0, Outcome::kDone, FileOutcome::kConverted},
};

INSTANTIATE_TEST_SUITE_P(Table, MigrateOutcomeTest, testing::ValuesIn(kOutcomeRows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace quillet::migrate
