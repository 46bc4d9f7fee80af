#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "driver/legacywords.h"
#include "quillet.h"

namespace quillet {
namespace {

LegacyFindings Find(const std::string& text, bool batchMode = false) {
    FindOptions options;
    options.conversion.batchMode = batchMode;
    return FindLegacyCommands(text, options);
}

std::string_view NameOf(LegacyOutcome outcome) {
    switch (outcome) {
        case LegacyOutcome::kConverted:
            return "converted";
        case LegacyOutcome::kFailed:
            return "failed";
        case LegacyOutcome::kUnreadable:
            return "unreadable";
        case LegacyOutcome::kOverlooked:
            break;
    }
    return "overlooked";
}

// A command in a line, as "TABLES 2-3 converted".
std::vector<std::string> CommandsOf(const LegacyFindings& found) {
    std::vector<std::string> commands;
    for (const LegacyCommand& command : found.commands) {
        commands.push_back(
            std::string(WordOf(command.type)) + " " + std::to_string(command.firstLine) + "-" +
            std::to_string(command.lastLine) + " " + std::string(NameOf(command.outcome)));
    }
    return commands;
}

// The findings' codes and lines, as "same-line 1-1".
std::vector<std::string> CodesOf(const LegacyFindings& found) {
    std::vector<std::string> codes;
    for (const Finding& finding : found.findings) {
        codes.push_back(std::string(NameOf(finding.code)) + " " +
                        std::to_string(finding.firstLine) + "-" + std::to_string(finding.lastLine));
    }
    return codes;
}

struct FindingCase {
    const char* name;
    std::string text;
    FindingCode code;
    CommandType command;
    long firstLine;
    long lastLine;
    long causeLine;
    std::string macro;
    std::string sentence;
    std::string found;  // what it is about
    bool batchMode = false;
};

void PrintTo(const FindingCase& c, std::ostream* pStream) { *pStream << c.name; }

class FindingTest : public testing::TestWithParam<FindingCase> {};

TEST_P(FindingTest, IsTheOnlyOne) {
    const FindingCase& c = GetParam();
    const LegacyFindings found = Find(c.text, c.batchMode);
    ASSERT_EQ(found.findings.size(), 1U) << testing::PrintToString(CodesOf(found));
    const Finding& finding = found.findings.front();
    EXPECT_EQ(NameOf(finding.code), NameOf(c.code));
    EXPECT_EQ(finding.command, c.command);
    EXPECT_EQ(finding.firstLine, c.firstLine);
    EXPECT_EQ(finding.lastLine, c.lastLine);
    EXPECT_EQ(finding.causeLine, c.causeLine);
    EXPECT_EQ(finding.macro, c.macro);
    EXPECT_EQ(finding.sentence, c.sentence);
    EXPECT_EQ(finding.text, c.found);
    const bool isOverlooked = KindOf(c.code) == FindingKind::kOverlooked;
    EXPECT_EQ(found.Count(LegacyOutcome::kOverlooked), isOverlooked ? 1 : 0);
}

TEST_P(FindingTest, IsTheSameWithOtherLineEnds) {
    const FindingCase& c = GetParam();
    std::string text = "\xEF\xBB\xBF";
    for (const char byte : c.text) text += byte == '\n' ? "\r\n" : std::string(1, byte);
    // Only a text that is UTF-8 can have a mark.
    if (c.code == FindingCode::kEncodingDoubtful) return;
    const LegacyFindings found = Find(text, c.batchMode);
    ASSERT_EQ(found.findings.size(), 1U) << testing::PrintToString(CodesOf(found));
    EXPECT_EQ(found.findings.front().sentence, c.sentence);
    EXPECT_EQ(found.findings.front().text, c.found);
}

constexpr CommandType kTables = CommandType::kTables;
constexpr CommandType kIgraph = CommandType::kIgraph;
constexpr CommandType kOrdinaryCommand = CommandType::kOrdinary;

const FindingCase kOverlookedCases[] = {
    {"after_stop", "TITLE 'open.\nEXECUTE.\nTABLES /TABLE=a.\n", FindingCode::kAfterStop, kTables,
     3, 3, 1, "",
     "The conversion stopped in line 1 at text that is no syntax; TABLES in line 3 comes after "
     "that and was not read.",
     "TABLES /TABLE=a."},
    {"after_stop_in_an_open_command", "COMPUTE x=\x01.\nSORT \x01.\nLIST\n IGRAPH /PIE.\n",
     FindingCode::kAfterStop, kIgraph, 4, 4, 2, "",
     "The conversion stopped in line 2 at text that is no syntax; IGRAPH in line 4 comes after "
     "that and was not read.",
     "IGRAPH /PIE."},
    {"data_lines", "BEGIN DATA.\n1 2\n END DATA.\nTABLES /TABLE=a.\n", FindingCode::kDataLines,
     kTables, 4, 4, 1, "",
     "No line that begins with exactly END DATA ends the inline data of line 1, so TABLES in line "
     "4 was taken for data; line 3 looks like the end.",
     "TABLES /TABLE=a."},
    {"data_lines_without_any_end", "EXECUTE.\nBEGIN DATA\n1 2\nTABLES\n  /TABLE=a.\nLIST.\n",
     FindingCode::kDataLines, kTables, 4, 5, 2, "",
     "No line that begins with exactly END DATA ends the inline data of line 2, so TABLES in line "
     "4 was taken for data.",
     "TABLES\n  /TABLE=a."},
    {"macro_body", "DEFINE !f (x=!TOKENS(1))\nTABLES /TABLE=a BY !x.\n!ENDDEFINE.\n",
     FindingCode::kMacroBody, kTables, 2, 2, 1, "!f",
     "TABLES in line 2 is in the macro !f of line 1, which this file does not call.",
     "TABLES /TABLE=a BY !x."},
    {"macro_body_called_once",
     "DEFINE tabs (x=!TOKENS(1))\nEXECUTE.\nTABLES /TABLE=a BY !x\n!ENDDEFINE.\n"
     "Tabs x=b /* tabs */.\n* tabs.\nTITLE 'tabs'.\n",
     FindingCode::kMacroBody, kTables, 3, 3, 1, "tabs",
     "TABLES in line 3 is in the macro tabs of line 1, which is called once, in line 5.",
     "TABLES /TABLE=a BY !x"},
    {"macro_body_called",
     "DEFINE !f (!POS !CHAREND(')') )\nTABLES\n\n /TABLE=a BY !1.\n!ENDDEFINE.\n!f b). !F c).\n"
     "!f d).\n",
     FindingCode::kMacroBody, kTables, 2, 4, 1, "!f",
     "TABLES in line 2 is in the macro !f of line 1, which is called 3 times, first in line 6.",
     "TABLES\n\n /TABLE=a BY !1."},
    {"macro_body_on_one_line", "DEFINE !one () TABLES /TABLE=a. !ENDDEFINE.\n",
     FindingCode::kMacroBody, kTables, 1, 1, 1, "!one",
     "TABLES in line 1 is in the macro !one of line 1, which this file does not call.",
     "TABLES /TABLE=a."},
    {"macro_body_after_a_macro_word",
     "DEFINE !one (x=!TOKENS(1))\n!IF (!x=1) !THEN TABLES /TABLE=a. !IFEND\n!ENDDEFINE.\n",
     FindingCode::kMacroBody, kTables, 2, 2, 1, "!one",
     "TABLES in line 2 is in the macro !one of line 1, which this file does not call.",
     "TABLES /TABLE=a."},
    {"layout", "GET FILE=X\nTABLES TABLE=A\n  /STATISTICS=COUNT\nFINISH\n", FindingCode::kLayout,
     kTables, 2, 3, 1, "",
     "TABLES in line 2 is a part of the command that begins in line 1: the file looks like batch "
     "layout and was read in interactive layout.",
     "TABLES TABLE=A\n  /STATISTICS=COUNT"},
    {"layout_the_other_way",
     "GET FILE='x'.\n FREQUENCIES a.\n TABLES /TABLE=a\n /STATISTICS=COUNT.\n LIST.\n",
     FindingCode::kLayout, kTables, 3, 4, 1, "",
     "TABLES in line 3 is a part of the command that begins in line 1: the file looks like "
     "interactive layout and was read in batch layout.",
     "TABLES /TABLE=a\n /STATISTICS=COUNT.", /*batchMode=*/true},
    {"open_comment", "* Income\nTABLES /TABLE=a.\n", FindingCode::kOpenComment, kTables, 2, 2, 1,
     "", "The comment of line 1 does not end in a period and runs over TABLES in line 2.",
     "TABLES /TABLE=a."},
    {"open_comment_in_words", "LIST.\nComment Income. Don't use it\n\n  tabl table=a\n /sort=b. \n",
     FindingCode::kOpenComment, kTables, 4, 5, 2, "",
     "The comment of line 2 does not end in a period and runs over TABLES in line 4.",
     "tabl table=a\n /sort=b."},
    {"open_comment_over_a_period", "* Income\nEXECUTE. TABLES /TABLE=a.\n",
     FindingCode::kOpenComment, kTables, 2, 2, 1, "",
     "The comment of line 1 does not end in a period and runs over TABLES in line 2.",
     "TABLES /TABLE=a."},
    {"comment_behind", "EXECUTE. /* old */\nTABLES /TABLE=a.\n", FindingCode::kCommentBehind,
     kTables, 2, 2, 1, "",
     "The comment after the period in line 1 keeps that command from ending before TABLES in line "
     "2: put the comment on a line of its own.",
     "TABLES /TABLE=a."},
    {"comment_behind_with_a_star", "LIST.\nEXECUTE. * old\n\nTABLES /TABLE=a.\n",
     FindingCode::kCommentBehind, kTables, 4, 4, 2, "",
     "The comment after the period in line 2 keeps that command from ending before TABLES in line "
     "4: put the comment on a line of its own.",
     "TABLES /TABLE=a."},
    {"comment_behind_compute", "COMPUTE x=1. /* one\nTABLES /TABLE=a.\n",
     FindingCode::kCommentBehind, kTables, 2, 2, 1, "",
     "The comment after the period in line 1 keeps that command from ending before TABLES in line "
     "2: put the comment on a line of its own.",
     "TABLES /TABLE=a."},
    {"comment_behind_a_legacy_command", "TABLES /TABLE=a. /* one */\nTABLES /TABLE=b.\n",
     FindingCode::kCommentBehind, kTables, 2, 2, 1, "",
     "The comment after the period in line 1 keeps that command from ending before TABLES in line "
     "2: put the comment on a line of its own.",
     "TABLES /TABLE=b."},
    {"comment_behind_in_a_comment", "* Income. /* old */\nTABLES /TABLE=a.\n",
     FindingCode::kCommentBehind, kTables, 2, 2, 1, "",
     "The comment after the period in line 1 keeps that command from ending before TABLES in line "
     "2: put the comment on a line of its own.",
     "TABLES /TABLE=a."},
    {"block_comment_before", "/* next */\nTABLES /TABLE=a.\n", FindingCode::kBlockCommentBefore,
     kTables, 2, 2, 1, "",
     "The comment of line 1 stands at the beginning of TABLES in line 2: take the comment away or "
     "end it with a period.",
     "TABLES /TABLE=a."},
    {"block_comment_before_on_its_line", "/* a */ /* b */ igr\n/y=var(a).\n",
     FindingCode::kBlockCommentBefore, kIgraph, 1, 2, 1, "",
     "The comment of line 1 stands at the beginning of IGRAPH in line 1: take the comment away or "
     "end it with a period.",
     "igr\n/y=var(a)."},
    {"sign_before", "+ TABLES /TABLE=a.\n", FindingCode::kSignBefore, kTables, 1, 1, 1, "",
     "A + stands in the first column before TABLES in line 1: the file, or this part of it, was "
     "written for batch layout.",
     "TABLES /TABLE=a."},
    {"minus_before", "LIST.\n-TABLES\n /TABLE=a.\n", FindingCode::kSignBefore, kTables, 2, 3, 2, "",
     "A - stands in the first column before TABLES in line 2: the file, or this part of it, was "
     "written for batch layout.",
     "TABLES\n /TABLE=a."},
    {"same_line", "EXECUTE. TABLES /TABLE=c BY d.\n", FindingCode::kSameLine, kTables, 1, 1, 1, "",
     "TABLES in line 1 comes after another command's period on the same line: a command has to "
     "begin on a line of its own.",
     "TABLES /TABLE=c BY d."},
    {"same_line_after_a_comment", "* Income. TABLES /TABLE=c.\n", FindingCode::kSameLine, kTables,
     1, 1, 1, "",
     "TABLES in line 1 comes after another command's period on the same line: a command has to "
     "begin on a line of its own.",
     "TABLES /TABLE=c."},
    {"same_line_in_batch_layout", "LIST\nEXECUTE.  TABLES\n /TABLE=c BY d\nLIST\n",
     FindingCode::kSameLine, kTables, 2, 3, 2, "",
     "TABLES in line 2 comes after another command's period on the same line: a command has to "
     "begin on a line of its own.",
     "TABLES\n /TABLE=c BY d", /*batchMode=*/true},
    {"open_command", "GET FILE='x'\nTABLES /TABLE=a.\n", FindingCode::kOpenCommand, kTables, 2, 2,
     1, "", "The command of line 1 does not end in a period and runs over TABLES in line 2.",
     "TABLES /TABLE=a."},
    {"open_command_before_a_blank_line", "GET FILE='x'\n\nTABLES /TABLE=a.\n",
     FindingCode::kOpenCommand, kTables, 3, 3, 1, "",
     "The command of line 1 does not end in a period and runs over TABLES in line 3; a blank line "
     "stands between them: see --end-at-blank-lines.",
     "TABLES /TABLE=a."},
    {"open_command_after_another", "EXECUTE. /* old */\nGET FILE='x'\nTABLES /TABLE=a.\n",
     FindingCode::kOpenCommand, kTables, 3, 3, 2, "",
     "The command of line 2 does not end in a period and runs over TABLES in line 3.",
     "TABLES /TABLE=a."},
    {"open_compute", "COMPUTE x=1\n  TABLES /TABLE=a.\n", FindingCode::kOpenCommand, kTables, 2, 2,
     1, "", "The command of line 1 does not end in a period and runs over TABLES in line 2.",
     "TABLES /TABLE=a."},
    {"open_legacy_command", "TABLES /TABLE=a\n  TABLES /TABLE=b.\n", FindingCode::kOpenCommand,
     kTables, 2, 2, 1, "",
     "The command of line 1 does not end in a period and runs over TABLES in line 2.",
     "TABLES /TABLE=b."},
};

const FindingCase kOtherCases[] = {
    {"command_lost", "TABLES /TABLE=a BY b. /* foo */\n\nGET FILE=x.\n", FindingCode::kCommandLost,
     kTables, 3, 3, 1, "",
     "GET in line 3 stands in the text of the TABLES command of line 1, is commented out with it, "
     "and no longer runs.",
     "GET FILE=x."},
    {"command_lost_without_a_period", "LIST.\nIGRAPH /PIE\nsort cases\n by a.\n",
     FindingCode::kCommandLost, kIgraph, 3, 4, 2, "",
     "SORT CASES in line 3 stands in the text of the IGRAPH command of line 2, is commented out "
     "with it, and no longer runs.",
     "sort cases\n by a."},
    {"command_lost_on_the_same_line", "TABLES /TABLE=a. LIST b.\nLIST.\n",
     FindingCode::kCommandLost, kTables, 1, 1, 1, "",
     "LIST in line 1 stands in the text of the TABLES command of line 1, is commented out with it, "
     "and no longer runs.",
     "LIST b."},
    {"swallowed", "GET FILE='x'\n\n  SORT CASES BY a.\n", FindingCode::kSwallowed, kOrdinaryCommand,
     3, 3, 1, "",
     "SORT CASES in line 3 is a command of its own for a reader who ends commands at blank lines, "
     "but a part of the command of line 1, which has no period.",
     "SORT CASES BY a."},
    {"swallowed_by_a_comment", "* Income\n\nSORT CASES BY a.\n", FindingCode::kSwallowed,
     kOrdinaryCommand, 3, 3, 1, "",
     "SORT CASES in line 3 is a command of its own for a reader who ends comments at blank lines, "
     "but a part of the comment of line 1, which has no period.",
     "SORT CASES BY a."},
    {"comment_dropped", "LIST. /* not the first time\n", FindingCode::kCommentDropped,
     kOrdinaryCommand, 1, 1, 1, "",
     "What stands after the period in line 1 is not in the result: /* not the first time",
     "/* not the first time"},
    {"layout_unclear", "mytext.\nyours.\nTABLES /TABLE=a\n/STATISTICS=COUNT.\n",
     FindingCode::kLayoutUnclear, kTables, 3, 4, 3, "",
     "The file reads well neither in interactive nor in batch layout, and TABLES in line 3 is "
     "another command in the one than in the other.",
     ""},
    {"include", "INCLUDE FILE='a\\b.sps'.\n", FindingCode::kInclude, kOrdinaryCommand, 1, 1, 1, "",
     "Line 1 runs the file a\\b.sps.", "INCLUDE FILE='a\\b.sps'"},
    {"insert", "LIST.\nINSERT\n  FILE = \"x\" SYNTAX=BATCH.\n", FindingCode::kInclude,
     kOrdinaryCommand, 2, 3, 2, "", "Line 2 runs the file x.",
     "INSERT\n  FILE = \"x\" SYNTAX=BATCH"},
    {"encoding_doubtful", "TITLE '\xCF\xF0\xE8\xE2\xE5\xF2'.\n", FindingCode::kEncodingDoubtful,
     kOrdinaryCommand, 1, 1, 1, "",
     "The file is not UTF-8, and read as windows-1252 its letters look wrong: give its encoding to "
     "--encoding, probably windows-1251.",
     ""},
    {"encoding_doubtful_korean",
     "TITLE '\xC1\xF6\xBF\xAA\xBA\xB0 \xBC\xD2\xB5\xE6 \xC5\xEB\xB0\xE8'.\n",
     FindingCode::kEncodingDoubtful, kOrdinaryCommand, 1, 1, 1, "",
     "The file is not UTF-8, and read as windows-1252 its letters look wrong: give its encoding to "
     "--encoding, probably EUC-KR.",
     ""},
    {"encoding_doubtful_japanese",
     "TITLE '\x92n\x88\xE6\x95\xCA\x82\xCC\x8F\x8A\x93\xBE\x93\x9D\x8Cv\x95\\'.\n",
     FindingCode::kEncodingDoubtful, kOrdinaryCommand, 1, 1, 1, "",
     "The file is not UTF-8, and read as windows-1252 its letters look wrong: give its encoding to "
     "--encoding, probably SHIFT_JIS.",
     ""},
    {"encoding_named",
     "* Encoding: windows-1250.\nTITLE 'Gr\xF6\xDF"
     "e'.\n",
     FindingCode::kEncodingDoubtful, kOrdinaryCommand, 1, 1, 1, "",
     "The file is read as windows-1252, but its first line names another encoding: give "
     "windows-1250 to --encoding.",
     ""},
};

template <class Case>
std::string NameOfCase(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Overlooked, FindingTest, testing::ValuesIn(kOverlookedCases),
                         NameOfCase<FindingCase>);
INSTANTIATE_TEST_SUITE_P(Other, FindingTest, testing::ValuesIn(kOtherCases),
                         NameOfCase<FindingCase>);

struct QuietCase {
    const char* name;
    std::string text;
    std::vector<std::string> commands;
    bool batchMode = false;
};

void PrintTo(const QuietCase& c, std::ostream* pStream) { *pStream << c.name; }

class QuietTest : public testing::TestWithParam<QuietCase> {};

TEST_P(QuietTest, HasNothingToTell) {
    const QuietCase& c = GetParam();
    const LegacyFindings found = Find(c.text, c.batchMode);
    EXPECT_EQ(CommandsOf(found), c.commands);
    EXPECT_EQ(CodesOf(found), std::vector<std::string>{});
}

const QuietCase kQuietCases[] = {
    {"nothing", "", {}},
    {"converted", "TABLES /TABLE=a.\n", {"TABLES 1-1 converted"}},
    {"converted_in_words", "LIST.\n  tab\n table a.\n", {"TABLES 2-3 converted"}},
    {"failed", "LIST.\n\nTABLES\n /TABLE=a BY.\n", {"TABLES 3-4 failed"}},
    {"an_igraph_fails", "IGRAPH /NOTHING.\n", {"IGRAPH 1-1 failed"}},
    {"what_only_begins_like_one_fails", "TABULATE a.\n", {"TABLES 1-1 failed"}},
    {"unreadable", "LIST.\nTABLES /TITLE='a\n", {"TABLES 2-2 unreadable"}},
    {"unreadable_after_its_first_line", "TABLES\n /TABLE=\x01.\n", {"TABLES 1-2 unreadable"}},
    {"another_command_is_unreadable", "TITLE 'a\nLIST.\n", {}},
    {"a_sign_in_batch_layout", "+TABLES /TABLE=a\nLIST\n", {"TABLES 1-1 converted"}, true},
    {"an_open_block_comment_before", "/* next\nTABLES /TABLE=a.\n", {"TABLES 1-2 converted"}},
    {"a_closed_comment_with_a_period", "/* next */.\nTABLES /TABLE=a.\n", {"TABLES 2-2 converted"}},
    {"under_crosstabs", "CROSSTABS\nTABLES=a BY b.\nCROSSTABS\n /TABLES = a BY b.\n", {}},
    {"under_means", "MEANS\n  TABLES = income BY sex.\nMEANS TABLES=a\n  BY b.\n", {}},
    {"variables",
     "FREQUENCIES tables tab1 tab.\nMEANS\n tab1 tables BY sex.\nLIST\n tables sex\n tab1.\n",
     {}},
    {"a_variable_before_a_slash_is_one_by_the_rule_but_not_here",
     "FREQUENCIES a tables /STATISTICS=MEAN.\n",
     {}},
    {"document", "DOCUMENT These\nTABLES /TABLE=a\n are old. TABLES /TABLE=b.\n", {}},
    {"inline_data", "BEGIN DATA.\nTABLES /TABLE=a.\nEND DATA.\n", {}},
    {"literals", "TITLE 'Old. TABLES /TABLE=a'.\nTITLE x \"it's. TABLES /TABLE=a.\".\n", {}},
    {"a_glued_literal", "TITLE 'a. '+\n'TABLES /TABLE=a'.\n", {}},
    {"block_comments", "LIST /* TABLES /TABLE=a. */ a. \nLIST a /* x. TABLES /TABLE=b\n b.\n", {}},
    {"a_block_comment_in_a_comment", "* Old: /* here. TABLES /TABLE=a. */ gone.\n", {}},
    {"ctables", "CTABLES\n  /TABLE a BY b\n  /TITLES TITLE='x'.\nGGRAPH /GRAPHDATASET.\n", {}},
    {"a_comment_about_tables",
     "* The TABLES /TABLE=a here\n are old, and\n tables are many.\n",
     {}},
    {"a_comment_of_stars", "* TABLES /TABLE=a.\n** TABLES /TABLE=a.\n", {}},
    {"a_commented_macro", "* DEFINE !f ().\n* TABLES /TABLE=a.\n* !ENDDEFINE.\n", {}},
    {"a_word_in_a_name", "FREQUENCIES a.TABLES\n /STATISTICS=x.tables /b.\n", {}},
    {"a_sentence", "* Note\ntables are\n  tables, tables or\ntables.\n", {}},
    {"periods_after_the_period", "LIST.. . \n", {}},
    {"blank_lines_in_a_macro", "DEFINE !f ()\nLIST a\n\nSORT CASES BY a.\n!ENDDEFINE.\n", {}},
    {"a_blank_line_in_a_command", "FREQUENCIES\n\n  a\n\n  /STATISTICS=MEAN.\n", {}},
    {"a_word_in_a_comment_that_is_indented", "* Note\n\n  list of names.\n", {}},
    {"a_variable_that_is_a_word", "TABLES /TABLE=age BY\nlist + sex.\n", {"TABLES 1-2 converted"}},
    {"a_subcommand_that_is_a_word", "TABLES\nFORMAT ZERO /TABLE=a.\n", {"TABLES 1-2 converted"}},
    {"a_title_with_a_period",
     "TABLES /TABLE=a /TITLE='Old. List of names' /* x. list */ /CORNER=\"Not. Show\".\n",
     {"TABLES 1-1 converted"}},
    {"a_list_of_one_line", "SHOW ALL.\nINCLUDE x.\n", {}},
    {"western_letters",
     "TITLE 'Gr\xF6\xDF"
     "e \xE0 la carte, na\xEFve, \xC5land, s\xE4\xE4, m\xB2, 20 \xB0"
     "C'.\n",
     {}},
};

INSTANTIATE_TEST_SUITE_P(Near, QuietTest, testing::ValuesIn(kQuietCases), NameOfCase<QuietCase>);

TEST(LegacyCommandsTest, EveryFindingHasItsOwnName) {
    std::set<std::string_view> names;
    for (const FindingCode code : {
#define QUILLET_FINDING(code, name, kind, sentence) FindingCode::code,
#include "quillet-findings.def"
         }) {
        EXPECT_TRUE(names.insert(NameOf(code)).second) << NameOf(code);
        EXPECT_EQ(NameOf(code).find_first_not_of("abcdefghijklmnopqrstuvwxyz-"),
                  std::string_view::npos);
    }
    EXPECT_EQ(names.size(), 20U);
}

TEST(LegacyCommandsTest, ReadsLinesThatEndInCrAlone) {
    const LegacyFindings found = Find("* Income\rTABLES /TABLE=a.\rTABLES /TABLE=b.\r");
    EXPECT_EQ(CodesOf(found), (std::vector<std::string>{"old-line-ends 1-1", "open-comment 2-2"}));
    EXPECT_EQ(CommandsOf(found),
              (std::vector<std::string>{"TABLES 2-2 overlooked", "TABLES 3-3 converted"}));
    EXPECT_EQ(found.findings.front().sentence,
              "The lines of the file end in a carriage return alone.");
}

TEST(LegacyCommandsTest, TellsOnlyThatATextIsUtf16) {
    using namespace std::string_literals;
    const LegacyFindings found = Find("\xFF\xFET\0A\0B\0 \0/\0"s);
    EXPECT_EQ(CodesOf(found), std::vector<std::string>{"wide-text 1-1"});
    EXPECT_EQ(found.findings.front().sentence, "The file is UTF-16.");
    EXPECT_TRUE(found.commands.empty());
}

TEST(LegacyCommandsTest, TellsWhatTheFileWas) {
    FindOptions options;
    options.wasUtf16 = true;
    options.hadOldLineEnds = true;
    EXPECT_EQ(CodesOf(FindLegacyCommands("LIST.\n", options)),
              (std::vector<std::string>{"old-line-ends 1-1", "wide-text 1-1"}));
}

TEST(LegacyCommandsTest, TellsWhetherAnIncludedFileIsAtHand) {
    FindOptions options;
    std::vector<std::string> asked;
    options.isIncludeAtHand = [&asked](std::string_view path) {
        asked.emplace_back(path);
        return path == "a'b.sps";
    };
    const std::string text = "INSERT FILE='a''b.sps'.\nINCLUDE 'c'.\n* INCLUDE 'd'.\n";
    const LegacyFindings found = FindLegacyCommands(text, options);
    ASSERT_EQ(found.findings.size(), 2U);
    EXPECT_EQ(found.findings[0].sentence,
              "Line 1 runs the file a'b.sps, which is in the source folder.");
    EXPECT_EQ(found.findings[1].sentence,
              "Line 2 runs the file c, which is not in the source folder.");
    EXPECT_EQ(asked, (std::vector<std::string>{"a'b.sps", "c"}));
}

// In batch layout line 2 is a command of its own; line 3 is one in both.
TEST(LegacyCommandsTest, NamesTheFirstCommandThatDependsOnTheLayout) {
    const LegacyFindings found = Find("mytext\nTABLES /TABLE=a.\nTABLES /TABLE=b.\n");
    EXPECT_EQ(CodesOf(found), (std::vector<std::string>{"open-command 2-2", "layout-unclear 2-2"}));
}

TEST(LegacyCommandsTest, NoLayoutMattersToCommandsOfMacros) {
    const LegacyFindings found =
        Find("mytext.\nyours.\nDEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE.\n");
    EXPECT_EQ(CodesOf(found), std::vector<std::string>{"macro-body 4-4"});
}

// A macro's commands that the conversion takes for its own are not counted twice.
TEST(LegacyCommandsTest, CommandsOfMacrosAreOverlookedWhateverBecameOfThem) {
    const LegacyFindings found = Find(
        "DEFINE !f ()\nTABLES /TABLE=a.\nTABLES /TABLE=b.\nTABLES /TABLE=c BY.\n!ENDDEFINE.\n"
        "TABLES /TABLE=d.\n");
    EXPECT_EQ(CommandsOf(found),
              (std::vector<std::string>{"TABLES 2-2 overlooked", "TABLES 3-3 overlooked",
                                        "TABLES 4-4 overlooked", "TABLES 6-6 converted"}));
    EXPECT_EQ(CodesOf(found),
              (std::vector<std::string>{"macro-body 2-2", "macro-body 3-3", "macro-body 4-4"}));
    EXPECT_EQ(found.findings[1].text, "TABLES /TABLE=b.");
}

TEST(LegacyCommandsTest, ADefinitionWithoutItsEndIsNone) {
    const LegacyFindings found = Find("DEFINE !f ()\nLIST.\nTABLES /TABLE=b.\n");
    EXPECT_EQ(CommandsOf(found), std::vector<std::string>{"TABLES 3-3 converted"});
}

// The conversion copies such a command as it is, so no budget keeps it from being read.
TEST(LegacyCommandsTest, APathThatGrowsBeyondAllMeasureIsNone) {
    for (const int pieces : {2000, 7000}) {
        std::string text = "INCLUDE 'a'";
        for (int piece = 0; piece < pieces; ++piece) text += "+b'";
        const LegacyFindings found = Find(text + ".\nTABLES /TABLE=a.\n");
        EXPECT_EQ(CodesOf(found), std::vector<std::string>());
        EXPECT_EQ(CommandsOf(found), std::vector<std::string>{"TABLES 2-2 converted"});
    }
}

TEST(LegacyCommandsTest, NoFindingHoldsTheTextOfTheNext) {
    const LegacyFindings found =
        Find("GET FILE=x\nEXECUTE\nEXECUTE\nEXECUTE\n* c\n TABLES /TABLE=a\n TABLES /TABLE=b\n");
    ASSERT_EQ(CodesOf(found), (std::vector<std::string>{"layout 6-6", "layout 7-7"}));
    EXPECT_EQ(found.findings[0].text, "TABLES /TABLE=a");
}

TEST(LegacyCommandsTest, SaysNothingOfWhatTheConversionHasTold) {
    testing::internal::CaptureStderr();
    for (const bool batchMode : {false, true}) {
        const std::string text = "X 1e999.\nX ^ 2.\n\nTABLES /TABLE=a 1e999.";
        EXPECT_GT(Find(text, batchMode).commands.size(), 0U);
        static_cast<void>(ChooseLayout(text, Options()));
        static_cast<void>(EndAtBlankLines(text, Options()));
        static_cast<void>(FindMacroNames(text + "!ENDDEFINE.", Options()));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(LegacyCommandsTest, EveryPlaceOfATextIsSearched) {
    const LegacyFindings found = Find(
        "* One\nTABLES /TABLE=a. TABLES /TABLE=b.\n"
        "GET FILE='x'\nTABLES /TABLE=c\nTABLES /TABLE=d. /* no */\nTABLES /TABLE=e.\n"
        "TABLES /TABLE=f\n  /* and */ TABLES /TABLE=g.\nTITLE 'x\nIGRAPH /PIE. IGRAPH /BAR.\n");
    EXPECT_EQ(CodesOf(found), (std::vector<std::string>{
                                  "open-comment 2-2", "open-comment 2-2", "layout-unclear 2-2",
                                  "open-command 4-4", "open-command 5-5", "comment-behind 6-6",
                                  "open-command 8-8", "after-stop 10-10", "after-stop 10-10"}));
    EXPECT_EQ(found.commands.size(), 9U);
    EXPECT_EQ(found.Count(LegacyOutcome::kOverlooked), 8);
}

}  // namespace
}  // namespace quillet
