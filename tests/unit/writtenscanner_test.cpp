#include "outline/writtenscanner.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "support/doublebytepage.h"
#include "support/rownames.h"

namespace quillet::outline {
namespace {

// The tokens, one blank apart: signs as they are, words after "w:", numbers after "n:", literals
// between angle brackets, with their value after an arrow where it is not what the quotes enclose.
std::string ScannedTokens(std::string_view text, const CodePage& codePage = CodePage::Utf8()) {
    WrittenScanner scanner(codePage, text);
    std::string tokens;
    while (true) {
        const WrittenToken token = scanner.Next();
        if (token.Is(WrittenTokenKind::kEnd)) return tokens;
        if (!tokens.empty()) tokens += " ";
        if (token.Is(WrittenTokenKind::kUnclosed)) return tokens + "unclosed";
        if (token.Is(WrittenTokenKind::kTooLong)) return tokens + "too long";
        if (token.Is(WrittenTokenKind::kWord)) tokens += "w:";
        if (token.Is(WrittenTokenKind::kNumber)) tokens += "n:";
        const bool isLiteral = token.Is(WrittenTokenKind::kLiteral);
        if (isLiteral) tokens += "<";
        tokens += token.text;
        if (isLiteral && scanner.LiteralValue() != token.text.substr(1, token.text.size() - 2)) {
            tokens.append("->").append(scanner.LiteralValue());
        }
        if (isLiteral) tokens += ">";
    }
}

struct ScannedCase {
    const char* name;
    const char* text;
    const char* tokens;
};

void PrintTo(const ScannedCase& scannedCase, std::ostream* pStream) {
    *pStream << scannedCase.name;
}

class WrittenScannerTest : public testing::TestWithParam<ScannedCase> {};

TEST_P(WrittenScannerTest, CutsIntoTokens) {
    EXPECT_EQ(ScannedTokens(GetParam().text), GetParam().tokens);
}

INSTANTIATE_TEST_SUITE_P(
    Words, WrittenScannerTest,
    testing::Values(
        ScannedCase{"nothing", "", ""}, ScannedCase{"blanks", " \t\r\n ", ""},
        ScannedCase{"a variable with its mark", "a[C]", "w:a [ w:C ]"},
        ScannedCase{"a set", "$many+$x", "w:$many + w:$x"},
        ScannedCase{"all that a name may hold", "#a_1.b@$", "w:#a_1.b@$"},
        ScannedCase{"letters outside ASCII", "größe>이름", "w:größe > w:이름"},
        ScannedCase{"bytes that are no character", "a\xFF\xC3[", "w:a\xFF\xC3 ["},
        ScannedCase{"a period at the end of a name", "a.[C]+b.c", "w:a. [ w:C ] + w:b.c"},
        ScannedCase{"a function", "ROWPCT.RESPONSES.COUNT", "w:ROWPCT.RESPONSES.COUNT"},
        ScannedCase{"a format", ",F8.2,f8.", ", w:F8.2 , w:f8 ."},
        ScannedCase{"a format inside", "f8.,x", "w:f8. , w:x"},
        ScannedCase{"words of macros", "!fmt,!1,!*,!12x !", "w:!fmt , w:!1 , w:!* , w:!12 w:x w:!"},
        ScannedCase{"signs", "/=(),[]+>", "/ = ( ) , [ ] + >"},
        ScannedCase{"what no command holds", "\\ ^ \x01", "\\ ^ \x01"}),
    NameOfRow<ScannedCase>);

INSTANTIATE_TEST_SUITE_P(
    Numbers, WrittenScannerTest,
    testing::Values(ScannedCase{"digits", "PTILE 25]", "w:PTILE n:25 ]"},
                    ScannedCase{"signs before", "+5 -2.5", "n:+5 n:-2.5"},
                    ScannedCase{"no digits before the period", ".5 -.5", "n:.5 n:-.5"},
                    ScannedCase{"no digits after the period", "75.,", "n:75. ,"},
                    ScannedCase{"exponents", "1e3 2E-4 .5e+1", "n:1e3 n:2E-4 n:.5e+1"},
                    ScannedCase{"an exponent without digits", "1e+", "n:1 w:e +"},
                    ScannedCase{"no number after a sign", "+a -.b", "+ w:a - . w:b"}),
    NameOfRow<ScannedCase>);

INSTANTIATE_TEST_SUITE_P(
    Periods, WrittenScannerTest,
    testing::Values(
        ScannedCase{"at the end", "VISIBLE=NO.", "w:VISIBLE = w:NO ."},
        ScannedCase{"at the end before blanks", "NO. \n\n", "w:NO ."},
        ScannedCase{"a name and the end", "b..", "w:b. ."},
        ScannedCase{"a number and the end", "5..", "n:5. ."},
        ScannedCase{"a number that is the end", "5.", "n:5 ."},
        ScannedCase{"alone", "'x'\n  .", "<'x'> ."},
        ScannedCase{"before the next command", "b.\nCTABLES\n  c", "w:b . w:CTABLES w:c"},
        ScannedCase{"a name with one before the next command", "b..\nCTABLES", "w:b. . w:CTABLES"},
        ScannedCase{"a number before the next command", "VALUE=5.\nCTABLES ",
                    "w:VALUE = n:5 . w:CTABLES"},
        ScannedCase{"before a name on the next line", "b.\n  CTABLES c", "w:b. w:CTABLES w:c"},
        ScannedCase{"before a longer name", "b.\nCTABLESX c", "w:b. w:CTABLESX w:c"},
        ScannedCase{"in the middle", "a. b", "w:a. w:b"}),
    NameOfRow<ScannedCase>);

INSTANTIATE_TEST_SUITE_P(
    Literals, WrittenScannerTest,
    testing::Values(
        ScannedCase{"apostrophes", "'ab'", "<'ab'>"}, ScannedCase{"quotes", "\"ab\"", "<\"ab\">"},
        ScannedCase{"empty", "''", "<''>"},
        ScannedCase{"blanks after it do not count", "'a' \n ,", "<'a'> ,"},
        ScannedCase{"a doubled quote", "'it''s'", "<'it''s'->it's>"},
        ScannedCase{"the other quote", "'say \"x\"'", "<'say \"x\"'>"},
        ScannedCase{"signs and periods inside", "'a, [b].' .", "<'a, [b].'> ."},
        ScannedCase{"glued", "'a'+'b'", "<'a'+'b'->ab>"},
        ScannedCase{"glued with the other quote", "'a' +\"b'\"", "<'a' +\"b'\"->ab'>"},
        ScannedCase{"glued over a line break", "'a'+\n  'b'", "<'a'+\n  'b'->ab>"},
        ScannedCase{"not glued after a blank", "'a' + 'b'", "<'a' +->a> <'b'>"},
        ScannedCase{"a plus that is dropped", "'a' + ,", "<'a' +->a> ,"},
        ScannedCase{"two pluses that are dropped", "'a' + +\n ,", "<'a' + +->a> ,"},
        ScannedCase{"it goes on after a plus", "'abc'+x'+y'", "<'abc'+x'+y'->abcabc'+xabc'+x'+y>"},
        ScannedCase{"it goes on after a plus and a tab", "'a'+\t'", "<'a'+\t'->aa'+\t>"},
        ScannedCase{"not closed", "a 'b", "w:a unclosed"},
        ScannedCase{"not closed on its line", "'b\n'", "unclosed"},
        ScannedCase{"not closed after a plus", "'b'+x\n", "unclosed"},
        ScannedCase{"two literals", "'a' 'b'", "<'a'> <'b'>"}),
    NameOfRow<ScannedCase>);

TEST(WrittenScannerTest, TellsWhereTokensStand) {
    WrittenScanner scanner(CodePage::Utf8(), "é\n  'a'+\n'b' c\n\nd");
    struct Place {
        std::string_view text;
        std::size_t offset;
        long line;
    };
    for (const Place& place : {Place{"é", 0, 1}, Place{"'a'+\n'b'", 5, 2}, Place{"c", 14, 3},
                               Place{"d", 17, 5}, Place{"", 18, 5}, Place{"", 18, 5}}) {
        SCOPED_TRACE(place.text);
        const WrittenToken token = scanner.Next();
        EXPECT_EQ(token.text, place.text);
        EXPECT_EQ(token.offset, place.offset);
        EXPECT_EQ(token.line, place.line);
    }
}

// The second byte of a character may look like anything.
TEST(WrittenScannerTest, SplitsNoCharacter) {
    EXPECT_EQ(ScannedTokens("\x81[+\x81'\x81.", DoubleByte()), "w:\x81[ + w:\x81'\x81.");
    EXPECT_EQ(ScannedTokens("'\x81''", DoubleByte()), "<'\x81''>");
}

TEST(WrittenScannerTest, LimitsWhatLiteralsRepeat) {
    std::string text = "'a'";
    for (int i = 0; i < 10000; ++i) text += "+xyz'";
    EXPECT_EQ(ScannedTokens(text), "too long");
    EXPECT_EQ(ScannedTokens("'" + std::string(100000, 'x') + "'+x'").substr(0, 3), "<'x");
}

}  // namespace
}  // namespace quillet::outline
