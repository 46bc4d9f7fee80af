#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "igraph/read/keywordsets.h"

namespace quillet::igraph {

namespace {

using Outcome = KeywordMatch::Outcome;

struct SetCase {
    const char* name;
    KeywordSet set;
};

const SetCase kSets[] = {
    {"subcommands", keywords::kSubcommands},
    {"on or off", keywords::kOnOff},
    {"axis settings", keywords::kAxisSettings},
    {"legend settings", keywords::kLegendSettings},
    {"measures", keywords::kMeasures},
    {"scale ends", keywords::kScaleEnds},
    {"category order", keywords::kCategoryOrder},
    {"point label settings", keywords::kPointLabelSettings},
    {"coordinates", keywords::kCoordinates},
    {"effects", keywords::kEffects},
    {"reference line settings", keywords::kRefLineSettings},
    {"spike settings", keywords::kSpikeSettings},
    {"total", keywords::kTotal},
    {"scatter settings", keywords::kScatterSettings},
    {"coincident", keywords::kCoincident},
    {"bar settings", keywords::kBarSettings},
    {"bar labels", keywords::kBarLabels},
    {"bar shapes", keywords::kBarShapes},
    {"bases", keywords::kBases},
    {"auto", keywords::kAuto},
    {"area settings", keywords::kAreaSettings},
    {"point labels", keywords::kPointLabels},
    {"category labels", keywords::kCategoryLabels},
    {"breaks", keywords::kBreaks},
    {"interpolations", keywords::kInterpolations},
    {"line settings", keywords::kLineSettings},
    {"line styles", keywords::kLineStyles},
    {"pie settings", keywords::kPieSettings},
    {"slice labels", keywords::kSliceLabels},
    {"box settings", keywords::kBoxSettings},
    {"box labels", keywords::kBoxLabels},
    {"whiskers", keywords::kWhiskers},
    {"error bar settings", keywords::kErrorBarSettings},
    {"error bar labels", keywords::kErrorBarLabels},
    {"directions", keywords::kDirections},
    {"cap styles", keywords::kCapStyles},
    {"histogram settings", keywords::kHistogramSettings},
    {"histogram shapes", keywords::kHistogramShapes},
    {"intervals", keywords::kIntervals},
    {"fit settings", keywords::kFitSettings},
    {"fit methods", keywords::kFitMethods},
    {"linear", keywords::kLinear},
    {"kernels", keywords::kKernels},
    {"fit intervals", keywords::kFitIntervals},
    {"fit scopes", keywords::kFitScopes},
    {"bandwidths", keywords::kBandwidths},
    {"summary functions", keywords::kSummaryFunctions},
};

std::ptrdiff_t CountBeginningWith(std::string_view word, KeywordSet set) {
    return std::count_if(set.begin(), set.end(),
                         [word](Keyword keyword) { return Spelling(keyword).starts_with(word); });
}

TEST(IgraphKeywordSetsTest, EveryBeginningOfEveryKeywordMatchesAsItShould) {
    for (const SetCase& c : kSets) {
        ASSERT_FALSE(c.set.empty()) << c.name;
        for (const Keyword keyword : c.set) {
            const std::string_view spelling = Spelling(keyword);
            for (std::size_t length = 1; length <= spelling.size(); ++length) {
                const std::string word(spelling.substr(0, length));
                SCOPED_TRACE(std::string(c.name) + ": " + word);
                const KeywordMatch match = MatchKeyword(word, c.set);
                if (IsExactKeyword(word, c.set)) {
                    EXPECT_EQ(match.outcome, Outcome::kMatch);
                    EXPECT_EQ(Spelling(match.keyword), word);
                } else if (length < 3 || word == "VAR") {
                    EXPECT_EQ(match.outcome, Outcome::kNoMatch);
                } else if (CountBeginningWith(word, c.set) > 1) {
                    EXPECT_EQ(match.outcome, Outcome::kAmbiguous);
                } else {
                    EXPECT_EQ(match.outcome, Outcome::kMatch);
                    EXPECT_EQ(match.keyword, keyword);
                }
            }
            EXPECT_EQ(MatchKeyword(std::string(spelling) + "X", c.set).outcome,
                      CountBeginningWith(std::string(spelling) + "X", c.set) == 1
                          ? Outcome::kMatch
                          : Outcome::kNoMatch)
                << c.name;
        }
    }
}

TEST(IgraphKeywordSetsTest, MatchesAbbreviations) {
    struct Case {
        const char* word;
        KeywordSet set;
        Outcome outcome;
        const char* keyword;
    };
    const Case cases[] = {
        {"HIST", keywords::kSubcommands, Outcome::kMatch, "HISTOGRAM"},
        {"SCAT", keywords::kSubcommands, Outcome::kMatch, "SCATTER"},
        {"SCA", keywords::kSubcommands, Outcome::kAmbiguous, ""},
        {"BARS", keywords::kSubcommands, Outcome::kNoMatch, ""},
        {"CATEG", keywords::kMeasures, Outcome::kMatch, "CATEGORICAL"},
        {"VALUE", keywords::kCategoryOrder, Outcome::kMatch, "VALUES"},
        {"LABEL", keywords::kCategoryOrder, Outcome::kMatch, "LABELS"},
        {"MIN", keywords::kSummaryFunctions, Outcome::kMatch, "MINIMUM"},
        {"MAX", keywords::kSummaryFunctions, Outcome::kMatch, "MAXIMUM"},
        {"VAR", keywords::kSummaryFunctions, Outcome::kNoMatch, ""},
        {"VARI", keywords::kSummaryFunctions, Outcome::kMatch, "VARIANCE"},
        {"SKEW", keywords::kSummaryFunctions, Outcome::kMatch, "SKEWNESS"},
        {"SUM", keywords::kSummaryFunctions, Outcome::kMatch, "SUM"},
        {"DOT", keywords::kLineStyles, Outcome::kMatch, "DOT"},
        {"DOTL", keywords::kLineStyles, Outcome::kMatch, "DOTLINE"},
        {"CAP", keywords::kErrorBarSettings, Outcome::kAmbiguous, ""},
        {"", keywords::kSubcommands, Outcome::kNoMatch, ""},
        {"X", keywords::kSubcommands, Outcome::kNoMatch, ""},
        {"bar", keywords::kSubcommands, Outcome::kNoMatch, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.word);
        const KeywordMatch match = MatchKeyword(c.word, c.set);
        EXPECT_EQ(match.outcome, c.outcome);
        if (match.outcome == Outcome::kMatch) {
            EXPECT_EQ(Spelling(match.keyword), c.keyword);
        }
    }
}

TEST(IgraphKeywordSetsTest, TwoSetsCountAsOne) {
    struct Case {
        const char* word;
        Outcome outcome;
        bool inFirstSet;
    };
    // REGRESSION may be followed by LINEAR or by the setting LINE.
    const Case cases[] = {
        {"LINEAR", Outcome::kMatch, true}, {"LINEA", Outcome::kMatch, true},
        {"LINE", Outcome::kMatch, false},  {"LIN", Outcome::kAmbiguous, false},
        {"SPIKE", Outcome::kMatch, false}, {"OTHER", Outcome::kNoMatch, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.word);
        const KeywordMatch match = MatchKeyword(c.word, keywords::kLinear, keywords::kFitSettings);
        EXPECT_EQ(match.outcome, c.outcome);
        if (match.outcome == Outcome::kMatch) {
            EXPECT_EQ(match.inFirstSet, c.inFirstSet);
        }
    }
    const KeywordMatch both = MatchKeyword("MEAN", keywords::kFitIntervals, keywords::kFitSettings);
    EXPECT_EQ(both.outcome, Outcome::kMatch);
    EXPECT_TRUE(both.inFirstSet);
    const KeywordMatch abbreviated =
        MatchKeyword("MEA", keywords::kFitIntervals, keywords::kFitSettings);
    EXPECT_EQ(abbreviated.outcome, Outcome::kMatch);
    EXPECT_TRUE(abbreviated.inFirstSet);
}

TEST(IgraphKeywordSetsTest, ExactKeywordsAreNotAbbreviated) {
    EXPECT_TRUE(IsExactKeyword("TYPE", keywords::kAxisSettings));
    EXPECT_FALSE(IsExactKeyword("TYP", keywords::kAxisSettings));
    EXPECT_FALSE(IsExactKeyword("LEGEND", keywords::kAxisSettings));
}

}  // namespace

}  // namespace quillet::igraph
