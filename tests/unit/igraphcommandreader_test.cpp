#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "igraph/model/keyword.h"
#include "igraph/read/commandreader.h"
#include "igraphtesting.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {

namespace {

// Commands that hold every keyword. A bar shows how much of a keyword is enough.
const char* const kMarkedCommands[] = {
    "IGR|APH /VIE|WNAME='v' /CHA|RTLOOK='l' /TIT|LE='t' /SUB|TITLE='u' /CAP|TION='c' "
    "/YLE|NGTH=3 /X1L|ENGTH=4 /X2L|ENGTH=5 /EFF|ECT=THR|EE /KEY=ON "
    "/FOR|MAT SPI|KE COL|OR=ON STY|LE=OFF /X1=VAR(a) TYP|E=SCA|LE(MIN=1 MAX=9) TIT|LE='x' "
    "/Y=VAR(b) TYP|E=SCA|LE /COO|RDINATE=VER|TICAL "
    "/COL|OR=VAR(c) TYP|E=CAT|EGORICAL LEG|END=ON TIT|LE='k' /STY|LE=VAR(d) LEG|END=OFF "
    "/SIZ|E=VAR(e) TYP|E=SCA|LE MIN=0 MAX=5 /SCAL|ERANGE=VAR(b) MIN=2 MAX=8 "
    "/POI|NTLABEL VAR(f) NON|E /CAS|ELABEL VAR(f) ALL /PAN|EL VAR(g) VAR(h) "
    "/REF|LINE a 5 LAB|EL=ON SPI|KE=OFF COL|OR=ON STY|LE=OFF /SCAT|TER COI|NCIDENT=JIT|TER(2) "
    "/SCAT|TER COI|NCIDENT=NON|E",
    "IGR|APH /COO|RDINATE=HOR|IZONTAL /EFF|ECT=NON|E /X1=VAR(a) /Y=VAR(b) /STA|CK=VAR(c) "
    "/NOR|MALIZE /BAR(SUM) KEY=ON LAB|EL INS|IDE VAL SHA|PE=REC|TANGLE BAR|BASE=SQU|ARE "
    "BAS|ELINE=AUT|O /BAR(SUM) LAB|EL OUT|SIDE N SHA|PE=PYR|AMID BAR|BASE=CIR|CLE "
    "/BAR(SUM) LAB|EL PCT SHA|PE=OBE|LISK BAS|ELINE=3 /BAR(SUM) LAB|EL NON|E",
    "IGR|APH /X1=VAR(a) /Y=VAR(b) /CLU|STER=VAR(c) /BAR(MEAN)",
    "IGR|APH /X1=VAR(a) /Y=VAR(b) /COL|OR=VAR(c) CLU|STER /BAR(MEAN)",
    "IGR|APH /X1=VAR(a) /Y=VAR(b) /COL|OR=VAR(c) STA|CK /BAR(MEAN)",
    "IGR|APH /X1=VAR(a) TYP|E=SCA|LE /Y=VAR(b) /ARE|A KEY=OFF POI|NTLABEL VAL "
    "ARE|ALABEL CAT PCT N NON|E BRE|AK=MIS|SING BAS|ELINE=AUT|O INT|ERPOLATE=LST|EP "
    "/ARE|A POI|NTLABEL N BRE|AK=NON|E INT|ERPOLATE=STR|AIGHT /ARE|A POI|NTLABEL PCT "
    "INT|ERPOLATE=CST|EP /ARE|A POI|NTLABEL NON|E INT|ERPOLATE=RST|EP",
    "IGR|APH /X1=VAR(a) TYP|E=SCA|LE /Y=VAR(b) /LIN|E KEY=ON STY|LE=DOTL|INE DRO|PLINE=OFF "
    "LAB|EL VAL LIN|ELABEL CAT PCT N NON|E BRE|AK=MIS|SING INT|ERPOLATE=LJU|MP "
    "/LIN|E STY|LE=LIN|E LAB|EL N INT|ERPOLATE=CJU|MP /LIN|E STY|LE=DOT LAB|EL PCT BRE|AK=NON|E "
    "/LIN|E STY|LE=NON|E LAB|EL NON|E /LIN|E INT|ERPOLATE=RJU|MP /LIN|E INT|ERPOLATE=SPL|INE",
    "IGR|APH /X1=VAR(a) TYP|E=SCA|LE /Y=VAR(b) /LIN|E INT|ERPOLATE=LAGRANGE3",
    "IGR|APH /X1=VAR(a) TYP|E=SCA|LE /Y=VAR(b) /LIN|E INT|ERPOLATE=LAGRANGE5 DRO|PLINE=ON",
    "IGR|APH /SUM|MARYVAR=VAR(a) /COL|OR=VAR(b) /PIE(SUM) KEY=ON STAR|T=45 CW CCW "
    "SLI|CE=INS|IDE OUT|SIDE LAB|EL PCT N VAL NON|E TEX|TIN NUM|IN URI|GHT LRI|GHT ULE|FT LLE|FT "
    "STAC|K=INS|IDE PCT CLU|STER=OUT|SIDE N",
    "IGR|APH /X1=VAR(a) /Y=VAR(b) /BOX KEY=ON OUT|LIERS=ON EXT|REME=ON MED|IAN=ON LAB|EL=N "
    "BOX|BASE=SQU|ARE WHI|SKER=T CAP|WIDTH(45) /BOX BOX|BASE=CIR|CLE WHI|SKER=LIN|E CAP|WIDTH=30 "
    "/BOX WHI|SKER=FAN|CY",
    "IGR|APH /X1=VAR(a) /Y=VAR(b) /ERR|ORBAR KEY=OFF CI(90) LAB|EL VAL N INS|IDE OUT|SIDE "
    "DIR|ECTION=BOT|H CAPS|TYLE=T SYM|BOL=ON BAS|ELINE=2 CAPW|IDTH(20) "
    "/ERR|ORBAR SD(2) DIR|ECTION=UP CAPS|TYLE=NON|E SYM|BOL=OFF "
    "/ERR|ORBAR SE 2 DIR|ECTION=DOW|N CAPS|TYLE=FAN|CY /ERR|ORBAR SD=1 DIR|ECTION=SIG|N",
    "IGR|APH /X1=VAR(a) /Y=$pct /HIS|TOGRAM KEY=ON SHA|PE=HIS|TOGRAM CUM CUR|VE=OFF X1S|TART=0 "
    "X2S|TART=5 X1I|NTERVAL AUT|O X2I|NTERVAL NUM=7 /HIS|TOGRAM CUR|VE=ON X1I|NTERVAL NUM=7 "
    "/HIS|TOGRAM X1I|NTERVAL WID|TH=2 X2I|NTERVAL WID|TH=3",
    "IGR|APH /X1=VAR(a) /Y=VAR(b) /COL|OR=VAR(c) /SCAT|TER "
    "/FIT|LINE MET|HOD=REG|RESSION LINEA|R INT|ERVAL(90)=MEA|N LINE=TOT|AL SPI|KE=OFF "
    "/FIT|LINE ORI|GIN LINEA|R LINE=MEF|FECT TOT|AL BAN|DWIDTH=FAS|T "
    "/FIT|LINE MEA|N BAN|DWIDTH=CON|STRAINED X1M|ULTIPLIER=1 X2M|ULTIPLIER=1 "
    "/FIT|LINE LLR NOR|MAL INT|ERVAL IND|IVIDUAL MEA|N /FIT|LINE LLR EPA|NECHNIKOV "
    "/FIT|LINE LLR UNI|FORM /FIT|LINE NON|E",
    "IGR|APH /X1=VAR(a) /X2=VAR(d) /Y=VAR(b) /COO|RDINATE=THR|EE "
    "/SPI|KE X1 X2 Y COR|NER ORI|GIN FLO|OR CEN|TROID TOT|AL",
    "IGR|APH /X1=VAR(a) /Y=VAR(b) /PAN|EL VAR(c) /CAT|ORDER VAR(a) (COU|NT ASC|ENDING SHO|WEMPTY) "
    "/CAT|ORDER VAR(c) (OCC|URRENCE DES|CENDING OMI|TEMPTY) /BAR(MEA|N)",
    "IGR|APH /X1=VAR(a) /Y=VAR(b) /PAN|EL VAR(c) /CAT|ORDER VAR(a) (LAB|ELS) "
    "/CAT|ORDER VAR(c) (VAL|UES) /BAR(MEA|N) /BAR(MED|IAN) /BAR(MOD|E) /BAR(SUM) /BAR(STD|DEV) "
    "/BAR(VARI|ANCE) /BAR(MIN|IMUM) /BAR(MAX|IMUM) /BAR(RAN|GE) /BAR(FIR|ST) /BAR(LAS|T) "
    "/BAR(SEM|EAN) /BAR(KUR|TOSIS) /BAR(SEK|URT) /BAR(SKE|WNESS) /BAR(SES|KEW) /BAR(SUMS|Q) "
    "/BAR(SUMA|V) /BAR(COU|NT) /BAR(PCT) /BAR(PTI|LE 5) /BAR(NGT 1) /BAR(NLT 1) /BAR(NGE 1) "
    "/BAR(NLE 1) /BAR(NEQ 1) /BAR(PGT 1) /BAR(PLT 1) /BAR(PGE 1) /BAR(PLE 1) /BAR(PEQ 1) "
    "/BAR(NIN 1 2) /BAR(PIN 1 2)",
    "IGR|APH /X1=VAR(a) /Y=VAR(b) /BAR(GME|DIAN)",
};

bool IsWordByte(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

std::string InFull(std::string_view marked) {
    std::string text;
    for (const char c : marked) {
        if (c != '|') text += c;
    }
    return text;
}

std::string Abbreviated(std::string_view marked) {
    std::string text;
    bool isCut = false;
    for (const char c : marked) {
        if (c == '|') isCut = true;
        if (!IsWordByte(c) && c != '|') isCut = false;
        if (!isCut) text += c;
    }
    return text;
}

std::string InLowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string WithoutEqualsSigns(std::string text) {
    for (char& c : text) {
        if (c == '=') c = ' ';
    }
    return text;
}

void ExpectSame(const IgraphResult& actual, const IgraphResult& expected) {
    EXPECT_EQ(actual.syntaxFault, expected.syntaxFault);
    EXPECT_EQ(actual.validityFault, expected.validityFault);
    EXPECT_EQ(actual.gpl, expected.gpl);
    EXPECT_EQ(actual.error, expected.error);
    EXPECT_EQ(actual.usedNames, expected.usedNames);
}

TEST(IgraphCommandReaderTest, KeywordsMayBeAbbreviated) {
    for (const char* marked : kMarkedCommands) {
        SCOPED_TRACE(marked);
        const IgraphResult full = ConvertIgraphText(InFull(marked));
        EXPECT_EQ(full.syntaxFault, SyntaxFault::kNone);
        EXPECT_EQ(full.validityFault, ValidityFault::kNone);
        ExpectSame(ConvertIgraphText(Abbreviated(marked)), full);
    }
}

TEST(IgraphCommandReaderTest, NeitherCaseNorEqualsSignsMatter) {
    for (const char* marked : kMarkedCommands) {
        SCOPED_TRACE(marked);
        const IgraphResult full = ConvertIgraphText(InFull(marked));
        ExpectSame(ConvertIgraphText(InLowerCase(InFull(marked))), full);
        ExpectSame(ConvertIgraphText(WithoutEqualsSigns(InFull(marked))), full);
    }
}

// One letter less than the bar allows must not do.
TEST(IgraphCommandReaderTest, AbbreviationsCannotBeShorter) {
    for (const std::string_view marked : kMarkedCommands) {
        for (std::size_t bar = marked.find('|'); bar != std::string_view::npos;
             bar = marked.find('|', bar + 1)) {
            std::size_t end = bar + 1;
            while (end < marked.size() && IsWordByte(marked[end])) ++end;
            const std::string command =
                InFull(marked.substr(0, bar - 1)) + InFull(marked.substr(end));
            const std::string_view before = marked.substr(0, bar);
            const bool isFreeText = before.find("/FOR|MAT ") != std::string_view::npos &&
                                    before.find("/FOR|MAT ") == before.rfind('/');
            // SUM and DOT are keywords of their own.
            const bool isOther =
                before.ends_with("SUMS") || before.ends_with("SUMA") || before.ends_with("DOTL");
            if (isFreeText || isOther) continue;
            EXPECT_NE(ConvertIgraphText(command).syntaxFault, SyntaxFault::kNone) << command;
        }
    }
}

TEST(IgraphCommandReaderTest, TheMarkedCommandsHoldEveryKeyword) {
    std::set<std::string> words;
    for (const char* marked : kMarkedCommands) {
        std::string word;
        for (const char c : InFull(marked) + " ") {
            if (IsWordByte(c)) {
                word += c;
            } else {
                words.insert(word);
                word.clear();
            }
        }
    }
    for (int i = 0; i <= static_cast<int>(Keyword::kYLength); ++i) {
        const std::string spelling(Spelling(static_cast<Keyword>(i)));
        EXPECT_TRUE(words.contains(spelling)) << spelling;
    }
}

struct CommandFaultCase {
    const char* name;
    const char* command;
    SyntaxFault fault;
};

const CommandFaultCase kCommandFaults[] = {
    // The first word.
    {"no token", "", SyntaxFault::kNotIgraph},
    {"another command", "TABLES /X1=VAR(a) /Y=VAR(b) /BAR.", SyntaxFault::kNotIgraph},
    {"too short a word", "IG /X1=VAR(a) /Y=VAR(b) /BAR.", SyntaxFault::kNotIgraph},
    {"a literal", "'IGRAPH' /BAR.", SyntaxFault::kNotIgraph},
    {"a number", "1 /BAR.", SyntaxFault::kNotIgraph},
    {"three letters are enough", "IGR /X1=VAR(a) /Y=VAR(b) /BAR.", SyntaxFault::kNone},
    {"the word may go on otherwise", "igrams /X1=VAR(a) /Y=VAR(b) /BAR.", SyntaxFault::kNone},
    {"nothing else", "IGRAPH.", SyntaxFault::kNone},
    // Slashes.
    {"the first may be missing", "IGRAPH X1=VAR(a) /Y=VAR(b) /BAR.", SyntaxFault::kNone},
    {"others may not", "IGRAPH /NORMALIZE NORMALIZE.", SyntaxFault::kStrayToken},
    {"doubled slashes", "IGRAPH //X1=VAR(a) ///Y=VAR(b) /BAR //.", SyntaxFault::kNone},
    {"a comment between subcommands", "IGRAPH /X1=VAR(a) /* x */ /Y=VAR(b) /BAR.",
     SyntaxFault::kNone},
    {"a comment at the end", "IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR /* x */", SyntaxFault::kNone},
    {"a comment inside", "IGRAPH /X1=VAR(a) /* x */ TYPE=SCALE /Y=VAR(b) /BAR.",
     SyntaxFault::kSubcommand},
    // Stray tokens.
    {"a number after a label", "IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR LABEL VAL 7.",
     SyntaxFault::kStrayToken},
    {"a literal after a literal", "IGRAPH /TITLE='a' 'b' /BAR.", SyntaxFault::kStrayToken},
    {"a parenthesis after an element", "IGRAPH /SCATTER (MEAN).", SyntaxFault::kStrayToken},
    {"a closing parenthesis", "IGRAPH /X1=VAR(a)) /Y=VAR(b) /BAR.", SyntaxFault::kStrayToken},
    {"a period inside", "IGRAPH /X1=VAR(a) . /Y=VAR(b) /BAR.", SyntaxFault::kStrayToken},
    {"a reserved word", "IGRAPH /X1=VAR(a) BY /Y=VAR(b) /BAR.", SyntaxFault::kStrayToken},
    {"two variables", "IGRAPH /STACK=VAR(a) VAR(b) /BAR.", SyntaxFault::kStrayToken},
    {"parentheses after categories", "IGRAPH /X1=VAR(a) TYPE=CATEGORICAL(MIN=1) /BAR.",
     SyntaxFault::kStrayToken},
    // Subcommands.
    {"unknown", "IGRAPH /X1=VAR(a) /Y=VAR(b) /BARS.", SyntaxFault::kSubcommand},
    {"two of that beginning", "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCA.", SyntaxFault::kSubcommand},
    {"too short", "IGRAPH /X1=VAR(a) /Y=VAR(b) /BA.", SyntaxFault::kSubcommand},
    {"no word", "IGRAPH /7.", SyntaxFault::kSubcommand},
    {"no word at once", "IGRAPH 'a'.", SyntaxFault::kSubcommand},
    {"a reserved word as subcommand", "IGRAPH /BY.", SyntaxFault::kSubcommand},
    {"an abbreviation", "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCAT COIN JIT.", SyntaxFault::kNone},
    // Settings.
    {"unknown setting", "IGRAPH /X1=VAR(a) TYPES=SCALE.", SyntaxFault::kSetting},
    {"an abbreviated keyword is a name", "IGRAPH /X1=TYP SCALE.", SyntaxFault::kSetting},
    {"unknown value", "IGRAPH /X1=VAR(a) TYPE=ORDINAL.", SyntaxFault::kSetting},
    {"a title for a level", "IGRAPH /X1=VAR(a) TYPE TITLE='x'.", SyntaxFault::kSetting},
    {"a setting of another element", "IGRAPH /BAR STYLE=LINE.", SyntaxFault::kSetting},
    {"two of that beginning", "IGRAPH /ERRORBAR CAP.", SyntaxFault::kSetting},
    {"an ambiguous optional word", "IGRAPH /FITLINE REGRESSION LIN.", SyntaxFault::kSetting},
    {"unknown coordinate", "IGRAPH /COORDINATE=POLAR.", SyntaxFault::kSetting},
    {"unknown effect", "IGRAPH /EFFECT=TWO.", SyntaxFault::kSetting},
    {"unknown order", "IGRAPH /CATORDER VAR(a) (RANDOM).", SyntaxFault::kSetting},
    {"unknown spike", "IGRAPH /SPIKE CEILING.", SyntaxFault::kSetting},
    {"unknown method", "IGRAPH /FITLINE METHOD=QUADRATIC.", SyntaxFault::kSetting},
    {"unknown interval", "IGRAPH /FITLINE INTERVAL(90)=REGRESSION.", SyntaxFault::kSetting},
    {"unknown point label", "IGRAPH /POINTLABEL VAR(a) SOME.", SyntaxFault::kSetting},
    {"unknown label of a box", "IGRAPH /BOX LABEL=VAL.", SyntaxFault::kSetting},
    {"a legend of an axis", "IGRAPH /X1=VAR(a) LEGEND=ON.", SyntaxFault::kSetting},
    // Values.
    {"a word for a literal", "IGRAPH /X1=VAR(a) /Y=VAR(b) /TITLE=hello /BAR.", SyntaxFault::kValue},
    {"no literal", "IGRAPH /TITLE.", SyntaxFault::kValue},
    {"no literal for a view name", "IGRAPH /VIEWNAME=3.", SyntaxFault::kValue},
    {"no literal for a chart look", "IGRAPH /CHARTLOOK=NONE.", SyntaxFault::kValue},
    {"a reserved word as name", "IGRAPH /X1=VAR(by) /Y=$count /BAR.", SyntaxFault::kValue},
    {"a reserved word at the end", "IGRAPH /SUMMARYVAR=to.", SyntaxFault::kValue},
    {"a bare reserved word", "IGRAPH /X1=ALL /Y=$count /BAR.", SyntaxFault::kValue},
    {"an unknown built-in", "IGRAPH /Y=$sum /BAR.", SyntaxFault::kValue},
    {"an unknown built-in in parentheses", "IGRAPH /Y=VAR($sum) /BAR.", SyntaxFault::kValue},
    {"a built-in in parentheses", "IGRAPH /X1=VAR(a) /Y=VAR($count) /BAR.", SyntaxFault::kNone},
    {"a macro call as name", "IGRAPH /X1=VAR(!a) /Y=$count /BAR.", SyntaxFault::kValue},
    {"a bare macro call", "IGRAPH /X1=!a /Y=$count /BAR.", SyntaxFault::kValue},
    {"no name", "IGRAPH /X1=VAR() /Y=VAR(b) /BAR.", SyntaxFault::kValue},
    {"a number as name", "IGRAPH /X1=VAR(3) /Y=VAR(b) /BAR.", SyntaxFault::kValue},
    {"no variable", "IGRAPH /COLOR /BAR.", SyntaxFault::kValue},
    {"a setting for a variable", "IGRAPH /COLOR TYPE=SCALE /BAR.", SyntaxFault::kValue},
    {"NONE for a variable", "IGRAPH /POINTLABEL NONE /BAR.", SyntaxFault::kValue},
    {"no variable of a range", "IGRAPH /SCALERANGE /BAR.", SyntaxFault::kValue},
    {"no end of a range", "IGRAPH /SCALERANGE=VAR(a) MIN /BAR.", SyntaxFault::kValue},
    {"no name of a second panel", "IGRAPH /PANEL a VAR() /BAR.", SyntaxFault::kValue},
    {"no variable of a reference line", "IGRAPH /REFLINE /BAR.", SyntaxFault::kValue},
    {"no ON or OFF of a reference line", "IGRAPH /REFLINE a 3 LABEL /BAR.", SyntaxFault::kValue},
    {"a word before a parenthesis", "IGRAPH /STACK=a(b).", SyntaxFault::kValue},
    {"no number", "IGRAPH /X1LENGTH=long.", SyntaxFault::kValue},
    {"no number for an end", "IGRAPH /X1=VAR(a) MIN=MAX.", SyntaxFault::kValue},
    {"no number for a reference line", "IGRAPH /REFLINE a /BAR.", SyntaxFault::kValue},
    {"a lone sign", "IGRAPH /REFLINE a - /BAR.", SyntaxFault::kValue},
    {"two signs", "IGRAPH /REFLINE a --3 /BAR.", SyntaxFault::kValue},
    {"no ON or OFF", "IGRAPH /KEY=YES.", SyntaxFault::kValue},
    {"no ON or OFF at the end", "IGRAPH /KEY.", SyntaxFault::kValue},
    {"a shortened OFF", "IGRAPH /KEY=OF.", SyntaxFault::kValue},
    {"no keyword", "IGRAPH /COORDINATE=3.", SyntaxFault::kValue},
    {"no start", "IGRAPH /PIE START CW.", SyntaxFault::kValue},
    {"no error bar number", "IGRAPH /ERRORBAR CI.", SyntaxFault::kValue},
    {"an empty error bar number", "IGRAPH /ERRORBAR CI().", SyntaxFault::kValue},
    {"no interval", "IGRAPH /FITLINE INTERVAL(90) /BAR.", SyntaxFault::kValue},
    {"no bins", "IGRAPH /HISTOGRAM X1INTERVAL NUM.", SyntaxFault::kValue},
    // Parentheses.
    {"a name's not closed", "IGRAPH /X1=VAR(a /Y=VAR(b) /BAR.", SyntaxFault::kParenthesis},
    {"two names in one", "IGRAPH /X1=VAR(a b) /Y=VAR(b) /BAR.", SyntaxFault::kParenthesis},
    {"a scale's not closed", "IGRAPH /X1=VAR(a) TYPE=SCALE(MIN=1 /BAR.", SyntaxFault::kParenthesis},
    {"an order's missing", "IGRAPH /CATORDER VAR(a) ASCENDING /BAR.", SyntaxFault::kParenthesis},
    {"an order's not closed", "IGRAPH /CATORDER VAR(a) (ASCENDING /BAR.",
     SyntaxFault::kParenthesis},
    {"an order's at the end", "IGRAPH /CATORDER VAR(a) (", SyntaxFault::kParenthesis},
    {"a number in an order", "IGRAPH /CATORDER VAR(a) (3) /BAR.", SyntaxFault::kParenthesis},
    {"a function's not closed", "IGRAPH /BAR(MEAN /X1=VAR(a).", SyntaxFault::kParenthesis},
    {"two functions", "IGRAPH /BAR(MEAN SUM).", SyntaxFault::kParenthesis},
    {"arguments' not closed", "IGRAPH /BAR(PTILE(5 /X1=VAR(a).", SyntaxFault::kParenthesis},
    {"arguments' not closed in an order", "IGRAPH /CATORDER VAR(a) (PTILE(5 ASCENDING) /BAR.",
     SyntaxFault::kParenthesis},
    {"a jitter's not closed", "IGRAPH /SCATTER COINCIDENT=JITTER(2 /X1=VAR(a).",
     SyntaxFault::kParenthesis},
    {"an interval's not closed", "IGRAPH /FITLINE INTERVAL(90 MEAN.", SyntaxFault::kParenthesis},
    // Functions.
    {"unknown function", "IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR(CPTILE(5)).", SyntaxFault::kFunction},
    {"another unknown function", "IGRAPH /BAR(CUMN).", SyntaxFault::kFunction},
    {"VAR is no function", "IGRAPH /BAR(VAR).", SyntaxFault::kFunction},
    {"ambiguous function", "IGRAPH /BAR(SEX).", SyntaxFault::kFunction},
    {"a number for a function", "IGRAPH /LINE(5).", SyntaxFault::kFunction},
    {"no argument", "IGRAPH /BAR(PTILE).", SyntaxFault::kFunction},
    {"no argument in parentheses", "IGRAPH /BAR(PTILE()).", SyntaxFault::kFunction},
    {"one of two arguments", "IGRAPH /BAR(NIN(1)).", SyntaxFault::kFunction},
    {"three of two arguments", "IGRAPH /BAR(NIN(1,2,3)).", SyntaxFault::kFunction},
    {"three bare arguments", "IGRAPH /BAR(NIN 1 2 3).", SyntaxFault::kFunction},
    {"an argument too many", "IGRAPH /BAR(MEAN(1)).", SyntaxFault::kFunction},
    {"parentheses for nothing", "IGRAPH /BAR(MEAN()).", SyntaxFault::kFunction},
    {"a bare argument too many", "IGRAPH /BAR(MEAN 1).", SyntaxFault::kFunction},
    {"too few arguments in an order", "IGRAPH /CATORDER VAR(a) (NGT).", SyntaxFault::kFunction},
    // Error bars.
    {"two extents", "IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR CI(95) SE(2).",
     SyntaxFault::kTwoExtents},
    {"one extent twice", "IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR SD(1) SD(2).",
     SyntaxFault::kTwoExtents},
    // Empty lists.
    {"no function in a bar", "IGRAPH /BAR().", SyntaxFault::kEmptyList},
    {"no function in an area", "IGRAPH /AREA().", SyntaxFault::kEmptyList},
    {"no function in a line", "IGRAPH /LINE().", SyntaxFault::kEmptyList},
    {"no function in a pie", "IGRAPH /PIE().", SyntaxFault::kEmptyList},
    {"no panel", "IGRAPH /PANEL /BAR.", SyntaxFault::kEmptyList},
    {"no panel but a number", "IGRAPH /PANEL 3 /BAR.", SyntaxFault::kEmptyList},
};

TEST(IgraphCommandReaderTest, FindsFaults) {
    for (const CommandFaultCase& c : kCommandFaults) {
        SCOPED_TRACE(std::string(c.name) + ": " + c.command);
        EXPECT_EQ(ConvertIgraphText(c.command).syntaxFault, c.fault);
        // A second time, so that nothing of the first is left.
        EXPECT_EQ(ConvertIgraphText(c.command).syntaxFault, c.fault);
    }
}

TEST(IgraphCommandReaderTest, EveryElementStandsAloneWithItsSlash) {
    for (const char* element :
         {"SCATTER", "BAR", "AREA", "LINE", "PIE", "BOX", "ERRORBAR", "HISTOGRAM", "FITLINE"}) {
        EXPECT_EQ(ConvertIgraphText("IGRAPH /" + std::string(element)).syntaxFault,
                  SyntaxFault::kNone)
            << element;
        EXPECT_EQ(ConvertIgraphText("IGRAPH /" + std::string(element) + " ,").syntaxFault,
                  SyntaxFault::kNone)
            << element;
        EXPECT_EQ(ConvertIgraphText("IGRAPH /" + std::string(element) + " ;").syntaxFault,
                  SyntaxFault::kStrayToken)
            << element;
    }
}

// What the command says.
IgraphCommand Read(const std::string& text) {
    TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
    IgraphCommand command;
    EXPECT_EQ(ReadCommand(sequence, command), SyntaxFault::kNone) << text;
    return command;
}

TEST(IgraphCommandReaderTest, ReadsReferences) {
    struct Case {
        const char* command;
        VariableReference::Source source;
        const char* name;
        const char* key;
    };
    using Source = VariableReference::Source;
    const Case cases[] = {
        {"IGRAPH /X1=VAR(Ab)", Source::kVariable, "Ab", "AB"},
        {"IGRAPH /X1 VAR ( Ab ) TYPE=SCALE", Source::kVariable, "Ab", "AB"},
        {"IGRAPH /X1=Ab", Source::kVariable, "Ab", "AB"},
        {"IGRAPH /X1=Ab.", Source::kVariable, "Ab", "AB"},
        {"IGRAPH /X1=VAR", Source::kVariable, "VAR", "VAR"},
        {"IGRAPH /X1=VAR TYPE=SCALE", Source::kVariable, "VAR", "VAR"},
        {"IGRAPH /X1=VAR(VAR)", Source::kVariable, "VAR", "VAR"},
        {"IGRAPH /X1=VAR(type)", Source::kVariable, "type", "TYPE"},
        {"IGRAPH /X1=LEGEND", Source::kVariable, "LEGEND", "LEGEND"},
        {"IGRAPH /X1=gr\xc3\xb6sse", Source::kVariable, "gr\xc3\xb6sse", "GR\xc3\x96SSE"},
        {"IGRAPH /X1=$Count", Source::kCount, "", ""},
        {"IGRAPH /X1=$PCT TYPE=SCALE", Source::kPercent, "", ""},
        {"IGRAPH /X1 $case.", Source::kCaseNumber, "", ""},
        {"IGRAPH /X1", Source::kAbsent, "", ""},
        {"IGRAPH /X1 TYPE=SCALE", Source::kAbsent, "", ""},
        {"IGRAPH /X1=VAR(a) /X1=VAR(b)", Source::kVariable, "b", "B"},
        {"IGRAPH /X1=VAR(a) /X1 TITLE='t'", Source::kAbsent, "", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        const VariableReference variable = Read(c.command).x1.variable;
        EXPECT_EQ(variable.source, c.source);
        EXPECT_EQ(variable.name, c.name);
        EXPECT_EQ(variable.key, c.key);
    }
}

std::vector<std::string> NamesOf(const std::vector<VariableReference>& references) {
    std::vector<std::string> names;
    for (const VariableReference& reference : references) names.push_back(reference.name);
    return names;
}

TEST(IgraphCommandReaderTest, RepeatedSubcommandsAddUpOrReplace) {
    EXPECT_EQ(NamesOf(Read("IGRAPH /PANEL a VAR(b) /PANEL c").panels),
              (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(Read("IGRAPH /CHARTLOOK='a' /CHARTLOOK='b'").chartLooks,
              (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(Read("IGRAPH /REFLINE a 1 /REFLINE a 2").referenceLines.size(), 2U);
    EXPECT_EQ(Read("IGRAPH /CATORDER VAR(a) () /CATORDER VAR(a) ()").categoryOrders.size(), 2U);
    EXPECT_EQ(Read("IGRAPH /SCALERANGE a MIN 1 /SCALERANGE a").scaleRanges.size(), 2U);
    EXPECT_EQ(Read("IGRAPH /FITLINE /FITLINE").fitLines.size(), 2U);
    EXPECT_EQ(Read("IGRAPH /BAR /LINE /BAR").elements.size(), 3U);
    EXPECT_EQ(Read("IGRAPH /TITLE='a' /TITLE='b'").title, "b");
    EXPECT_EQ(Read("IGRAPH /VIEWNAME='a' /VIEWNAME=''").viewName, "");
    EXPECT_EQ(Read("IGRAPH /STACK a /STACK b").stack->variable.name, "b");
    EXPECT_TRUE(Read("IGRAPH /POINTLABEL a NONE /POINTLABEL b").pointLabel.isShown);
}

TEST(IgraphCommandReaderTest, LineBreaksInLiteralsBecomeBlanks) {
    // A literal put together from parts, the second of which lacks its quote.
    EXPECT_EQ(Read("IGRAPH /VIEWNAME='a'+\nb'").viewName, "aa'+ b");
}

TEST(IgraphCommandReaderTest, AnOptionalWordIsNotMistakenForASetting) {
    const FitLine fitLine = Read("IGRAPH /FITLINE REGRESSION LINE=TOTAL").fitLines.front();
    EXPECT_TRUE(fitLine.forTotal);
    const FitLine mean = Read("IGRAPH /FITLINE ORIGIN INTERVAL(80)=MEAN").fitLines.front();
    EXPECT_EQ(mean.method, Keyword::kOrigin);
    EXPECT_TRUE(mean.hasMeanInterval);
    EXPECT_EQ(mean.confidence, 80.0);
    const FitLine both = Read("IGRAPH /FITLINE INTERVAL INDIVIDUAL MEAN LLR").fitLines.front();
    EXPECT_EQ(both.method, Keyword::kLocalLinear);
    EXPECT_TRUE(both.hasMeanInterval);
    EXPECT_TRUE(both.hasIndividualInterval);
    const ChartElement bar = Read("IGRAPH /BAR LABEL INSIDE N SHAPE=PYRAMID").elements.front();
    EXPECT_EQ(bar.label, Keyword::kN);
}

TEST(IgraphCommandReaderTest, TheFirstLabelCounts) {
    EXPECT_EQ(Read("IGRAPH /BAR LABEL OUTSIDE PCT VAL N").elements.front().label,
              Keyword::kPercent);
    EXPECT_EQ(Read("IGRAPH /BAR LABEL").elements.front().label, std::nullopt);
    EXPECT_EQ(Read("IGRAPH /BAR LABEL NONE").elements.front().label, std::nullopt);
    EXPECT_EQ(Read("IGRAPH /PIE SLICE TEXTIN LABEL PCT").elements.front().label, Keyword::kLabel);
    EXPECT_EQ(Read("IGRAPH /PIE STACK PCT CLUSTER N").elements.front().label, std::nullopt);
}

TEST(IgraphCommandReaderTest, ReadsPercentilesWithAndWithoutParentheses) {
    for (const char* command :
         {"IGRAPH /BAR(PTILE 90)", "IGRAPH /BAR (PTILE(90))", "IGRAPH /BAR=(PTILE=(90))"}) {
        const ChartElement bar = Read(command).elements.front();
        ASSERT_TRUE(bar.summary) << command;
        EXPECT_EQ(bar.summary->function, Keyword::kPercentile);
        EXPECT_EQ(bar.summary->arguments[0], 90.0);
    }
}

}  // namespace

}  // namespace quillet::igraph
