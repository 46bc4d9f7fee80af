// How the work on a TABLES command, from tokens to text, grows with what it has many of.
#include <gtest/gtest.h>

#include <string>

#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"
#include "unit/conversionhelper.h"

namespace quillet {
namespace {

// "<prefix>0<separator><prefix>1..."
std::string Numbered(const std::string& prefix, int count, const std::string& separator) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        if (i > 0) text += separator;
        text += prefix + std::to_string(i);
    }
    return text;
}

struct TableCase {
    const char* name;
    std::string (*source)(int size);
};

const TableCase kWideCases[] = {
    {"a stacking", [](int n) { return "/TABLE " + Numbered("a", n, "+") + " BY b"; }},
    {"a nesting over a stacking",
     [](int n) { return "/TABLE " + Numbered("a", n, ">") + ">(x+y)"; }},
    {"multiplied out",
     [](int n) { return "/TABLE (a+b+c+d) > (e+f) > (" + Numbered("x", n / 4, "+") + ")"; }},
    {"markers", [](int n) { return "/TABLE a" + Repeat("+(LABELS)", n) + " BY b"; }},
    {"markers between variables",
     [](int n) { return "/TABLE a" + Repeat("+(STATISTICS)+b", n / 2) + " BY b"; }},
    {"a total after each variable",
     [](int n) { return "/FTOTAL t /TABLE " + Repeat("a+t+", n / 2) + "a BY b"; }},
    {"a total in front of each variable",
     [](int n) { return "/PTOTAL t /TABLE a" + Repeat("+t+a", n / 2) + " BY b"; }},
    {"totals after one variable",
     [](int n) { return "/FTOTAL t /PTOTAL p /TABLE a" + Repeat("+t+p", n) + "+b BY c"; }},
    {"totals after a wide nesting",
     [](int n) {
         return "/FTOTAL t u /OBSERVATION s /TABLE s>(" + Numbered("a", n / 4, "+") + ")" +
                Repeat("+t+u", n / 2);
     }},
    {"different totals",
     [](int n) {
         std::string rows = "a";
         for (int i = 0; i < n / 4; ++i) {
             rows += "+a" + std::to_string(i) + "+t" + std::to_string(i);
         }
         return "/FTOTAL " + Numbered("t", n / 4, " ") + "/TABLE " + rows + " BY b";
     }},
    {"functions", [](int n) { return "/TABLE a /STATISTICS" + Repeat(" COUNT()", n / 2); }},
    {"functions that go nowhere",
     [](int n) {
         return "/TABLE " + Numbered("a", n / 2, "+") + "/STATISTICS" + Repeat(" MEAN()", n / 2);
     }},
    {"a function for each variable",
     [](int n) {
         return "/TABLE " + Numbered("a", n / 4, "+") + "/STATISTICS COUNT(" +
                Numbered("a", n / 4, " ") + ")";
     }},
    {"a base variable for each function",
     [](int n) {
         std::string functions;
         for (int i = 0; i < n / 8; ++i) functions += " CPCT(b:a" + std::to_string(i) + ")";
         return "/TABLE " + Numbered("a", n / 8, "+") + " BY b /STATISTICS" + functions;
     }},
    {"many base variables for many terms",
     [](int n) {
         return "/TABLE " + Numbered("a", n / 4, "+") +
                " BY b /STATISTICS CPCT(a1:" + Numbered("a", n / 4, " ") + ")";
     }},
    {"many base variables for terms of the statistics",
     [](int n) {
         return "/OBSERVATION s /TABLE s>(" + Numbered("a", n / 4, "+") +
                ")/STATISTICS CPCT(s:" + Numbered("a", n / 4, " ") + ")";
     }},
    {"tables",
     [](int n) {
         return "/OBSERVATION " + Numbered("a", n / 8, " ") + Repeat("/TABLE a BY b ", n / 8);
     }},
    {"settings and functions",
     [](int n) {
         return Repeat("/BASE ALL ", n / 4) + "/TABLE a /STATISTICS" + Repeat(" CPCT()", n / 4);
     }},
    {"groups and sets",
     [](int n) {
         std::string groups;
         for (int i = 0; i < n / 8; ++i) groups += "/MRGROUP g" + std::to_string(i) + " a b ";
         return groups + "/TABLE " + Numbered("g", n / 8, "+");
     }},
    {"sorted variables",
     [](int n) {
         return "/TABLE b BY " + Numbered("a", n / 4, "+") + "/SORT " + Numbered("a", n / 4, " ");
     }},
    {"titles", [](int n) { return "/TABLE a " + Repeat("/TITLE 'x'\"y\"", n / 2); }},
};

class TranslatorWorkTest : public testing::TestWithParam<TableCase> {};

TEST_P(TranslatorWorkTest, IsLinear) {
    ExpectLinearWork(2000, [](int size) {
        EXPECT_TRUE(ConvertTablesCommand("TABLES " + GetParam().source(size)).translated);
    });
}

INSTANTIATE_TEST_SUITE_P(Tables, TranslatorWorkTest, testing::ValuesIn(kWideCases),
                         NameOfRow<TableCase>);

}  // namespace
}  // namespace quillet
