#include "platform/includepaths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/rownames.h"

namespace quillet {
namespace {

struct PathCase {
    const char* name;
    std::string path;
    std::string includingFile;
    std::string expected;  // empty: none
};

class IncludePathsTest : public testing::TestWithParam<PathCase> {};

TEST_P(IncludePathsTest, FindsTheFile) {
    const std::vector<std::string> names = {
        "main.sps",         "lib/tables.sps",   "lib/old/tables.sps", "wave1/Labels.sps",
        "wave1/labels.sps", "wave2/labels.sps", "wave2/run.sps",      "wave2/Setup.SPS",
    };
    const PathCase& c = GetParam();
    const auto index = IncludePaths(names).Find(c.path, c.includingFile);
    EXPECT_EQ(index ? names[*index] : "", c.expected);
}

const PathCase kCases[] = {
    {"as it stands", "lib/tables.sps", "wave2/run.sps", "lib/tables.sps"},
    {"as it stands before relative", "main.sps", "wave2/run.sps", "main.sps"},
    {"relative", "labels.sps", "wave2/run.sps", "wave2/labels.sps"},
    {"relative and upwards", "..\\lib\\old\\tables.sps", "wave2/run.sps", "lib/old/tables.sps"},
    {"relative below", "./old/tables.sps", "lib/tables.sps", "lib/old/tables.sps"},
    {"beside the file itself", "./main.sps", "run.sps", "main.sps"},
    {"any letter case", "WAVE2/LABELS.SPS", "main.sps", "wave2/labels.sps"},
    {"letter case decides", "wave1/Labels.sps", "main.sps", "wave1/Labels.sps"},
    {"letter case does not decide", "wave1/LABELS.SPS", "main.sps", ""},
    {"the last components", "C:\\Data\\Wave2\\setup.sps", "main.sps", "wave2/Setup.SPS"},
    {"the last component", "/home/somebody/setup.sps", "main.sps", "wave2/Setup.SPS"},
    {"the longest tail", "K:\\lib\\tables.sps", "main.sps", "lib/tables.sps"},
    {"several with the longest tail", "K:\\tables.sps", "main.sps", ""},
    {"letter case decides between tails", "K:\\Labels.sps", "main.sps", "wave1/Labels.sps"},
    {"letter case does not decide between tails", "K:\\labels.sps", "main.sps", ""},
    {"no shorter tail after one with several", "K:\\x\\wave1\\LABELS.sps", "main.sps", ""},
    {"part of a component", "ables.sps", "main.sps", ""},
    {"a folder", "lib", "main.sps", ""},
    {"nothing", "", "main.sps", ""},
    {"only separators", "//", "main.sps", ""},
    {"upwards out of everything", "../../../run.sps", "main.sps", "wave2/run.sps"},
};
INSTANTIATE_TEST_SUITE_P(Table, IncludePathsTest, testing::ValuesIn(kCases), NameOfRow<PathCase>);

TEST(IncludePathsTest, OfNoFilesFindsNone) { EXPECT_FALSE(IncludePaths({}).Find("a", "b")); }

}  // namespace
}  // namespace quillet
