#include "translator/summaryfunctions.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "conversionhelper.h"

namespace quillet {

// Found by googletest, for readable failures.
static std::ostream& operator<<(std::ostream& stream, SummaryKind kind) {
    return stream << static_cast<char>(kind);
}

namespace {

constexpr SummaryKind C = SummaryKind::kCases;
constexpr SummaryKind R = SummaryKind::kResponses;
constexpr SummaryKind S = SummaryKind::kVariable;

SummaryFunction LookUp(std::string_view name) {
    return LookUpSummaryFunction(name, /*multipleResponse=*/false, GlobalSettings(nullptr));
}

TEST(SummaryFunctionsTest, EveryNameHasItsFunction) {
    struct Case {
        const char* name;
        const char* newName;
        SummaryKind kind;
        bool percent;
    };
    const Case cases[] = {
        {"CASES", "RESPONSES", R, false},
        {"COUNT", "COUNT", C, false},
        {"CPCT", "VALIDN", C, true},
        {"CSPCT", "RESPONSES.COUNT", R, true},
        {"MAXIMUM", "MAXIMUM", S, false},
        {"MEAN", "MEAN", S, false},
        {"MEDIAN", "MEDIAN", S, false},
        {"MODE", "MODE", S, false},
        {"MINIMUM", "MINIMUM", S, false},
        {"PTILE", "PTILE", S, false},
        {"RANGE", "RANGE", S, false},
        {"RPCT", "RESPONSES.COUNT", R, true},
        {"RESPONSES", "RESPONSES", R, false},
        {"SEMEAN", "SEMEAN", S, false},
        {"SPCT", "SUM", S, true},
        {"STDDEV", "STDDEV", S, false},
        {"SUM", "SUM", S, false},
        {"VALIDN", "VALIDN", S, false},
        {"VARIANCE", "VARIANCE", S, false},
        {"VPCT", "VALIDN", S, true},
        {"HPTILE", "PTILE", S, false},
        {"WPTILE", "PTILE", S, false},
        {"RPTILE", "PTILE", S, false},
        {"EPTILE", "PTILE", S, false},
        {"APTILE", "PTILE", S, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const SummaryFunction function = LookUp(c.name);
        EXPECT_EQ(function.name, c.newName);
        EXPECT_EQ(function.kind, c.kind);
        EXPECT_EQ(function.percent, c.percent);
    }
}

TEST(SummaryFunctionsTest, ThreeBytesDecideAnAbbreviation) {
    struct Case {
        const char* name;
        const char* newName;
    };
    const Case cases[] = {
        {"MEA", "MEAN"},     {"MEANS", "MEAN"},
        {"MEASURE", "MEAN"}, {"MED", "MEDIAN"},
        {"MEDI", "MEDIAN"},  {"MOD", "MODE"},
        {"MO", ""},          {"MOX", ""},
        {"M", ""},           {"", ""},
        {"PTI", "PTILE"},    {"PTIL", "PTILE"},
        {"HPT", "PTILE"},    {"CAS", "RESPONSES"},
        {"COU", "COUNT"},    {"COUNTER", "COUNT"},
        {"RAN", "RANGE"},    {"RES", "RESPONSES"},
        {"STD", "STDDEV"},   {"SUM", "SUM"},
        {"SUMMARY", "SUM"},  {"SU", ""},
        {"VAL", "VALIDN"},   {"VAR", "VARIANCE"},
        {"MIN", "MINIMUM"},  {"MAX", "MAXIMUM"},
        {"mean", ""},        {"XYZ", ""},
        {"SEM", "SEMEAN"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(LookUp(c.name).name, c.newName);
    }
}

TEST(SummaryFunctionsTest, SettingsChooseTheBaseOfPercentages) {
    struct Case {
        const char* globals;
        const char* countPercent;
        const char* countPercentOfSet;
        const char* responsePercent;
    };
    const Case cases[] = {
        {"", "VALIDN", "COUNT", "RESPONSES.COUNT"},
        {"/BASE ANSWERING", "VALIDN", "COUNT", "RESPONSES.COUNT"},
        {"/BASE ALL", "TOTALN", "COUNT", "RESPONSES.COUNT"},
        {"/BASE QUALIFIED", "COUNT", "COUNT", "RESPONSES.COUNT"},
        {"/BASE", "VALIDN", "COUNT", "RESPONSES.COUNT"},
        {"/GBASE CASES", "VALIDN", "COUNT", "RESPONSES.COUNT"},
        {"/GBASE RESPONSES", "VALIDN", "COUNT.RESPONSES", "RESPONSES"},
        {"/GBASE RESPONSES /BASE QUALIFIED", "COUNT", "COUNT.RESPONSES", "RESPONSES"},
        {"/GBASE RESPONSES /GBASE CASES", "VALIDN", "COUNT", "RESPONSES.COUNT"},
        {"/BASE ALL /BASE QUALIFIED", "COUNT", "COUNT", "RESPONSES.COUNT"},
        {"/BASE ALL /BASE", "VALIDN", "COUNT", "RESPONSES.COUNT"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.globals);
        const AssertionRecorder assertions;
        ParsedCommand parsed(std::string("TABLES ") + c.globals + " /TABLE a");
        ASSERT_TRUE(parsed.Parsed());
        const GlobalSettings settings(parsed.Globals());
        const auto lookUp = [&settings](std::string_view name, bool multipleResponse) {
            return LookUpSummaryFunction(name, multipleResponse, settings);
        };
        EXPECT_EQ(lookUp("CPCT", false).name, c.countPercent);
        EXPECT_EQ(lookUp("CPCT", true).name, c.countPercentOfSet);
        for (const bool multipleResponse : {false, true}) {
            EXPECT_EQ(lookUp("CPCT", multipleResponse).kind, C);
            EXPECT_TRUE(lookUp("CPCT", multipleResponse).percent);
            for (const char* name : {"CSPCT", "RPCT"}) {
                EXPECT_EQ(lookUp(name, multipleResponse).name, c.responsePercent);
                EXPECT_EQ(lookUp(name, multipleResponse).kind, R);
                EXPECT_TRUE(lookUp(name, multipleResponse).percent);
            }
        }
        EXPECT_TRUE(assertions.Texts().empty());
    }
}

TEST(SummaryFunctionsTest, AnImpossibleBaseAsserts) {
    GlobalSettings settings(nullptr);
    settings.base = TB_CASES;
    const AssertionRecorder assertions;
    EXPECT_EQ(LookUpSummaryFunction("CPCT", false, settings).name, "VALIDN");
    EXPECT_EQ(assertions.Texts(),
              std::vector<std::string>({"bAttr == TB_ANSWERING || bAttr == 0"}));
}

}  // namespace
}  // namespace quillet
