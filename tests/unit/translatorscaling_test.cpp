// Commands that grow in one respect: time must grow in proportion, and nothing may recurse.
#include <gtest/gtest.h>

#include <string>

#include "conversionhelper.h"
#include "lineartime.h"

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

std::string Repeated(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

struct ScalingCase {
    const char* name;
    std::string (*source)(int size);
    bool growsWhenMultiplied = true;
};

const ScalingCase kWideCases[] = {
    {"a stacking", [](int n) { return "/TABLE " + Numbered("a", n, "+") + " BY b"; }},
    {"a nesting over a stacking",
     [](int n) { return "/TABLE " + Numbered("a", n, ">") + ">(x+y)"; }},
    {"multiplied out",
     [](int n) { return "/TABLE (a+b+c+d) > (e+f) > (" + Numbered("x", n / 4, "+") + ")"; }},
    {"markers", [](int n) { return "/TABLE a" + Repeated("+(LABELS)", n) + " BY b"; }},
    {"markers between variables",
     [](int n) { return "/TABLE a" + Repeated("+(STATISTICS)+b", n / 2) + " BY b"; }},
    {"a total behind each variable",
     [](int n) { return "/FTOTAL t /TABLE " + Repeated("a+t+", n / 2) + "a BY b"; }},
    {"a total in front of each variable",
     [](int n) { return "/PTOTAL t /TABLE a" + Repeated("+t+a", n / 2) + " BY b"; }},
    {"totals behind one variable",
     [](int n) { return "/FTOTAL t /PTOTAL p /TABLE a" + Repeated("+t+p", n) + "+b BY c"; }},
    {"totals behind a wide nesting",
     [](int n) {
         return "/FTOTAL t u /OBSERVATION s /TABLE s>(" + Numbered("a", n / 4, "+") + ")" +
                Repeated("+t+u", n / 2);
     }},
    {"different totals",
     [](int n) {
         std::string rows = "a";
         for (int i = 0; i < n / 4; ++i) {
             rows += "+a" + std::to_string(i) + "+t" + std::to_string(i);
         }
         return "/FTOTAL " + Numbered("t", n / 4, " ") + "/TABLE " + rows + " BY b";
     }},
    {"functions", [](int n) { return "/TABLE a /STATISTICS" + Repeated(" COUNT()", n / 2); }},
    {"functions that go nowhere",
     [](int n) {
         return "/TABLE " + Numbered("a", n / 2, "+") + "/STATISTICS" + Repeated(" MEAN()", n / 2);
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
         return "/OBSERVATION " + Numbered("a", n / 8, " ") + Repeated("/TABLE a BY b ", n / 8);
     }},
    {"settings and functions",
     [](int n) {
         return Repeated("/BASE ALL ", n / 4) + "/TABLE a /STATISTICS" + Repeated(" CPCT()", n / 4);
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
    {"titles", [](int n) { return "/TABLE a " + Repeated("/TITLE 'x'\"y\"", n / 2); }},
};

TEST(TranslatorScalingTest, TimeGrowsInProportion) {
    for (const ScalingCase& c : kWideCases) {
        SCOPED_TRACE(c.name);
        ExpectLinearTime(2000, [&c](int size) {
            EXPECT_TRUE(ConvertTablesCommand("TABLES " + c.source(size)).translated);
        });
    }
}

// Nearly as deep as a command can be.
TEST(TranslatorScalingTest, DeepTablesAreTranslated) {
    const ScalingCase cases[] = {
        {"to the right",
         [](int n) { return "/TABLE " + Repeated("(a>(b+", n) + "c" + Repeated("))", n); }},
        {"to the left",
         [](int n) { return "/TABLE " + Repeated("((", n) + "c" + Repeated("+b)>a)", n); }},
        {"with totals",
         [](int n) {
             return "/FTOTAL t /TABLE " + Repeated("((", n) + "c" + Repeated("+t+b+t)>a+t)", n);
         }},
        {"with markers everywhere",
         [](int n) { return "/TABLE " + Repeated("(a>((LABELS)+", n) + "c" + Repeated("))", n); },
         false},
        {"with base variables",
         [](int n) {
             return "/TABLE " + Repeated("(a>(b+", n) + "c" + Repeated("))", n) +
                    " BY d /STATISTICS CPCT(d:c)";
         }},
    };
    for (const ScalingCase& c : cases) {
        SCOPED_TRACE(c.name);
        // Multiplied out, such a table grows with the square of its depth.
        const TablesConversion deep = ConvertTablesCommand("TABLES " + c.source(600));
        EXPECT_TRUE(deep.translated);
        EXPECT_TRUE(deep.assertions.empty());
        const TablesConversion deeper = ConvertTablesCommand("TABLES " + c.source(1600));
        EXPECT_TRUE(deeper.parsed);
        EXPECT_EQ(deeper.translated, !c.growsWhenMultiplied);
        EXPECT_EQ(deeper.report.kind == TablesErrorKind::kTableTooLarge, c.growsWhenMultiplied);
    }
}

}  // namespace
}  // namespace quillet
