#include "translator/globalsettings.h"

#include <gtest/gtest.h>

#include <string>

#include "conversionhelper.h"

namespace quillet {
namespace {

TEST(GlobalSettingsTest, TheLastOneCounts) {
    struct Case {
        const char* globals;
        NodeType autolabel;
        NodeType base;
        NodeType gbase;
        NodeType missing;
    };
    const NodeType none = kNoNodeType;
    const Case cases[] = {
        {"", none, none, none, none},
        {"/AUTOLABEL ON", TB_ON, none, none, none},
        {"/AUTOLABEL ON /AUTOLABEL OFF", TB_OFF, none, none, none},
        {"/AUTOLABEL ON /AUTOLABEL DEFAULT", TB_DEFAULT, none, none, none},
        {"/AUTOLABEL ON /AUTOLABEL", none, none, none, none},
        {"/BASE ALL", none, SP_ALL, none, none},
        {"/BASE ALL /BASE QUALIFIED", none, TB_QUALIFIED, none, none},
        {"/BASE ALL /BASE", none, none, none, none},
        {"/GBASE RESPONSES", none, none, TB_RESPONSES, none},
        {"/GBASE RESPONSES /GBASE CASES", none, none, TB_CASES, none},
        {"/GBASE RESPONSES /GBASE", none, none, none, none},
        {"/MISSING INCLUDE", none, none, none, TB_INCLUDE},
        {"/MISSING INCLUDE /MISSING EXCLUDE", none, none, none, TB_EXCLUDE},
        {"/MISSING EXCLUDE /MISSING INCLUDE", none, none, none, TB_INCLUDE},
        {"/AUTOLABEL ON /BASE ANSWERING /GBASE CASES /MISSING INCLUDE", TB_ON, TB_ANSWERING,
         TB_CASES, TB_INCLUDE},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.globals);
        ParsedCommand parsed(std::string("TABLES ") + c.globals + " /TABLE a");
        ASSERT_TRUE(parsed.Parsed());
        const GlobalSettings settings(parsed.Globals());
        EXPECT_EQ(settings.autolabel, c.autolabel);
        EXPECT_EQ(settings.base, c.base);
        EXPECT_EQ(settings.gbase, c.gbase);
        EXPECT_EQ(settings.missing, c.missing);
        EXPECT_EQ(settings.pFormat, nullptr);
    }
}

TEST(GlobalSettingsTest, TheLastFormatCounts) {
    ParsedCommand parsed("TABLES /FORMAT ZERO /BASE ALL /FORMAT BLANK /MISSING INCLUDE /TABLE a");
    ASSERT_TRUE(parsed.Parsed());
    EXPECT_EQ(GlobalSettings(parsed.Globals()).pFormat, parsed.Globals()->GetChild(2));
}

TEST(GlobalSettingsTest, OtherSubcommandsAreSkipped) {
    ParsedCommand parsed("TABLES /FTOTAL t /BASE ALL /OBSERVATION x /TABLE a");
    EXPECT_EQ(GlobalSettings(parsed.Globals()).base, SP_ALL);
}

TEST(GlobalSettingsTest, WithoutAListThereAreNoSettings) {
    const GlobalSettings settings(nullptr);
    EXPECT_EQ(settings.base, kNoNodeType);
    EXPECT_EQ(settings.pFormat, nullptr);
}

}  // namespace
}  // namespace quillet
