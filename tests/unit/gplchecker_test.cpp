#include "gplchecker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace quillet::igraph {

namespace {

const std::string kGood =
    "\n"
    "  SOURCE: s=userSource(id(\"iGraphDataset\"))\n"
    "  DATA: a=col(source(s), name(\"a\"), unit.category())\n"
    "  DATA: b_c=col(source(s), name(\"b.c\"))\n"
    "  DATA: id=col(source(s), name(\"$CASENUM\"), unit.category())\n"
    "  TRANS: b_c_t1=eval(b_c >= -1.5 & b_c <= 3e+20)\n"
    "  COORD: rect(dim(1,2), transpose())\n"
    "  GUIDE: axis(dim(2), label(\"a \\\"b\\\" \\\\ (c\"))\n"
    "  GUIDE: legend(aesthetic(aesthetic.color.interior), null())\n"
    "  GUIDE: form.line(position(*, 3))\n"
    "  SCALE: cat(dim(1), sort.statistic(summary.count(a)), reverse())\n"
    "  ELEMENT: schema(position(bin.quantile.letter(a*b_c)), label(id))\n"
    "  ELEMENT: interval(position(summary.countTrue(a*b_c_t1)), color.interior(a),\n"
    "    shape.interior(shape.square))\n";

TEST(GplCheckerTest, AcceptsAGoodProgram) {
    EXPECT_THAT(CheckGpl(kGood, "a b.c"), testing::IsEmpty());
    EXPECT_THAT(CheckGpl(kGood, "A B.C"), testing::IsEmpty());
}

struct BrokenCase {
    const char* name;
    const char* from;
    const char* to;
    const char* fault;
};

TEST(GplCheckerTest, FindsEveryKindOfFault) {
    const BrokenCase cases[] = {
        {"no line end at the start", "\n  SOURCE", "  SOURCE", "does not begin and end"},
        {"an empty line", "  COORD", "\n  COORD", "an empty line"},
        {"a line of blanks", "  COORD", "  \n  COORD", "an empty line"},
        {"a carriage return", "transpose())\n", "transpose())\r\n", "a carriage return"},
        {"too little indentation", "  COORD", " COORD", "indentation"},
        {"too much indentation", "  COORD", "   COORD", "indentation"},
        {"a line broken elsewhere", "color.interior(a),\n    ", "color.\n    interior(a), ",
         "broken elsewhere"},
        {"a string without an end", "\\\\ (c\"", "\\\\ (c\\\"", "a string without an end"},
        {"an unescaped quote", "\\\"b\\\"", "\"b\"", "not declared: b"},
        {"a missing parenthesis", "transpose())", "transpose()", "parentheses do not match"},
        {"a parenthesis too many", "transpose())", "transpose()))", "parentheses do not match"},
        {"parentheses that close first", "transpose())", ")(transpose()", "parentheses do not"},
        {"an odd character", "reverse()", "reverse();", "a character that belongs nowhere"},
        {"an unknown label", "COORD:", "COORDS:", "not a label: COORDS"},
        {"no label", "  COORD: rect", "  rect", "not a statement"},
        {"a statement out of order", "COORD: rect(dim(1,2), transpose())", "SCALE: cat(dim(1))",
         "out of order: GUIDE"},
        {"no source", "  SOURCE: s=userSource(id(\"iGraphDataset\"))\n", "", "not one SOURCE"},
        {"two sources", "  DATA: a", "  SOURCE: q=userSource(id(\"x\"))\n  DATA: a",
         "not one SOURCE"},
        {"two coordinates", "  GUIDE: form", "  COORD: rect()\n  GUIDE: form",
         "more than one COORD"},
        {"a name where none belongs", "COORD: rect", "COORD: r=rect", "named where it must not"},
        {"no name where one belongs", "TRANS: b_c_t1=eval", "TRANS: eval", "or not named"},
        {"no call", "COORD: rect(dim(1,2), transpose())", "COORD: rect dim(1,2)", "not a call"},
        {"an unknown function", "reverse()", "revers()", "not a function: revers"},
        {"an unknown constant", "shape.square", "shape.round", "not declared: shape.round"},
        {"an undeclared variable", "letter(a*b_c)", "letter(a*c)", "not declared: c"},
        {"a variable in another case", "letter(a*b_c)", "letter(A*b_c)", "not declared: A"},
        {"use before declaration", "eval(b_c >=", "eval(b_c_t1 >=", "not declared: b_c_t1"},
        {"an infinite number", "<= 3e+20", "<= inf", "not declared: inf"},
        {"declared twice", "DATA: id", "DATA: B_C", "declared twice: B_C"},
        {"a word as identifier", "DATA: id", "DATA: and", "a word as identifier: and"},
        {"the source's name again", "DATA: id", "DATA: S", "a word as identifier: S"},
        {"a period in an identifier", "DATA: id", "DATA: i.d", "not an identifier: i.d"},
        {"an identifier with a wrong beginning", "DATA: id", "DATA: _d", "begins wrongly: _d"},
        {"a column that is not used", "name(\"b.c\")", "name(\"b.d\")",
         "not in the list of variables: b.d"},
        {"a used variable without a column", "name(\"b.c\")", "name(\"b.d\")",
         "a used variable without a column: b.c"},
        {"a column of something else", "col(source(s), name(\"b.c\"))", "col(name(\"b.c\"))",
         "not a column"},
        {"a legend too many", "GUIDE: legend(aesthetic(aesthetic.color.interior)",
         "GUIDE: legend(aesthetic(aesthetic.size)", "of what no element shows: size"},
        {"no legend", "  GUIDE: legend(aesthetic(aesthetic.color.interior), null())\n", "",
         "no legend: color.interior"},
        {"a dimension too many", "axis(dim(2)", "axis(dim(4)", "more dimensions than"},
    };
    for (const BrokenCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::string gpl = kGood;
        const std::size_t at = gpl.find(c.from);
        ASSERT_NE(at, std::string::npos);
        gpl.replace(at, std::string(c.from).size(), c.to);
        EXPECT_THAT(CheckGpl(gpl, "a b.c"), testing::Contains(testing::HasSubstr(c.fault)));
    }
}

TEST(GplCheckerTest, FindsMissingParts) {
    EXPECT_THAT(CheckGpl("", ""), testing::Not(testing::IsEmpty()));
    EXPECT_THAT(CheckGpl("\n", ""), testing::Not(testing::IsEmpty()));
    const std::string withoutElements = kGood.substr(0, kGood.find("  ELEMENT"));
    EXPECT_THAT(CheckGpl(withoutElements, "a b.c"), testing::Contains("no ELEMENT"));
}

}  // namespace

}  // namespace quillet::igraph
