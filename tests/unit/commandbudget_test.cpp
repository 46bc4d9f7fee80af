// What a command may ask for beyond its own size, at the edge and from both sides.
#include "platform/commandbudget.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "conversionhelper.h"
#include "igraph/gpl/gplcolumns.h"
#include "quillet.h"
#include "tokenizing.h"

namespace quillet {
namespace {

using tokenizing::KeptTokens;

constexpr std::size_t kMaxText = CommandBudget::kMaxText;
constexpr std::size_t kMaxCopies = CommandBudget::kMaxCopies;

std::string Repeated(const std::string& text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

std::string Literal(std::size_t size) { return "'" + std::string(size - 2, 'x') + "'"; }

void ExpectTooLarge(const std::string& source) {
    const TablesConversion conversion = ConvertTablesCommand(source);
    EXPECT_FALSE(conversion.parsed && conversion.translated);
    EXPECT_EQ(conversion.report.kind, TablesErrorKind::kTableTooLarge);
    EXPECT_TRUE(conversion.assertions.empty());
}

void ExpectConverted(const std::string& source) {
    const TablesConversion conversion = ConvertTablesCommand(source);
    EXPECT_TRUE(conversion.translated);
    EXPECT_EQ(conversion.report.kind, TablesErrorKind::kNone);
}

TEST(CommandBudgetTest, HoldsWhatItSays) {
    CommandBudget budget;
    budget.ChargeText(kMaxText - 1);
    EXPECT_THROW(budget.ChargeText(2), CommandTooLarge);
    budget.ChargeText(1);
    EXPECT_THROW(budget.ChargeText(1), CommandTooLarge);
    budget.ChargeText(0);
    budget.ChargeCopies(kMaxCopies);
    EXPECT_THROW(budget.ChargeCopies(1), CommandTooLarge);
    EXPECT_THROW(budget.ChargeCopies(static_cast<std::size_t>(-1)), CommandTooLarge);
}

// "COUNT,'xx...'" on five terms, the first of which is what the command says itself.
TEST(CommandBudgetTest, ALabelOnManyTerms) {
    const auto source = [](std::size_t groupSize) {
        const std::string label = Literal(groupSize - std::string("COUNT,").size());
        return "TABLES /TABLE a+b+c+d+e /STATISTICS COUNT(" + label + ")";
    };
    ExpectConverted(source(kMaxText / 4));
    ExpectTooLarge(source(kMaxText / 4 + 1));
}

TEST(CommandBudgetTest, APercentageWithSeveralBases) {
    // "ROWPCT.VALIDN,'xx...'" comes first, then the same after a comma with LAYERPCT.
    const auto source = [](std::size_t groupSize) {
        const std::string label = Literal(groupSize - std::string(",LAYERPCT.VALIDN,").size());
        return "TABLES /TABLE a + b BY c /STATISTICS CPCT(c " + label + ":a)";
    };
    ExpectConverted(source(kMaxText));
    ExpectTooLarge(source(kMaxText + 1));
}

TEST(CommandBudgetTest, VariablesThatAreMultipliedOut) {
    const std::string outer =
        std::string(64, 'a') + ">" + std::string(64, 'b') + ">" + std::string(64, 'c');
    constexpr std::size_t kRepetitions = kMaxText / (std::size_t{3} * 64);
    const auto source = [&outer](std::size_t terms) {
        return "TABLES /TABLE " + outer + ">(x" + Repeated("+x", terms - 1) + ")";
    };
    ExpectConverted(source(kRepetitions + 1));
    ExpectTooLarge(source(kRepetitions + 2));
}

TEST(CommandBudgetTest, TokensOfBreakInEveryTable) {
    // "+" and "a", each with its source text and its value.
    constexpr std::size_t kOfATable = 2 * (CommandBudget::kTokenCopy + 2);
    constexpr std::size_t kRepetitions = kMaxCopies / kOfATable;
    const auto source = [](std::size_t tables) {
        return "TABLES /BREAK +a " + Repeated("/TABLE b ", tables);
    };
    ExpectConverted(source(kRepetitions + 1));
    ExpectTooLarge(source(kRepetitions + 2));
}

TEST(CommandBudgetTest, ALongNameOfBreak) {
    // A name that long is no variable, so the command fails either way; but not for its size.
    const std::string source = "TABLES /BREAK + " + std::string(kMaxCopies, 'a') + " /TABLE b";
    EXPECT_EQ(ConvertTablesCommand(source).report.kind, TablesErrorKind::kSubcommandSyntax);
}

TEST(CommandBudgetTest, ATotalOfManyTables) {
    const auto source = [](std::size_t labelSize) {
        return "TABLES /FTOTAL t " + Literal(labelSize) + Repeated("/TABLE a+t ", 5);
    };
    ExpectConverted(source(kMaxText / 4));
    ExpectTooLarge(source(kMaxText / 4 + 1));
}

TEST(CommandBudgetTest, TheNameOfATotalOnManyVariables) {
    // Its 64 bytes and their capitals hang on every variable.
    const std::string total(64, 't');
    constexpr std::size_t kMost = kMaxCopies / 128;
    const auto source = [&total](std::size_t variables) {
        return "TABLES /OBSERVATION s /FTOTAL " + total + " /TABLE s>(x" +
               Repeated("+x", variables - 1) + ")+" + total;
    };
    ExpectConverted(source(kMost));
    ExpectTooLarge(source(kMost + 1));
}

TEST(CommandBudgetTest, TheMagnetInManySortKeys) {
    const std::string magnet(64, 'm');
    constexpr std::size_t kMost = kMaxText / 64;
    const auto source = [&magnet](std::size_t keys) {
        return "TABLES /TABLE a BY " + magnet + " /SORT" + Repeated(" a", keys);
    };
    ExpectConverted(source(kMost + 1));
    ExpectTooLarge(source(kMost + 2));
}

TEST(CommandBudgetTest, FunctionsOnManyTerms) {
    // Their base variables are looked up in every term, too.
    std::string functions;
    for (int i = 0; i < 1024; ++i) functions += " CPCT((F5):y" + std::to_string(i) + " z)";
    const auto source = [&functions](std::size_t terms) {
        return "TABLES /TABLE a>b" + Repeated("+a>b", terms - 1) + " /STATISTICS" + functions;
    };
    constexpr std::size_t kOfATerm = 1024 * std::string_view(",COLPCT.VALIDN,F5").size() - 1;
    constexpr std::size_t kRepetitions = kMaxText / kOfATerm;
    ExpectConverted(source(kRepetitions + 1));
    ExpectTooLarge(source(kRepetitions + 2));
}

TEST(CommandBudgetTest, ALiteralThatRepeatsItself) {
    const auto tokenize = [](std::size_t size) {
        return KeptTokens(CodePage::Windows1252(), "'" + std::string(size, 'x') + "'+y'", false, 0)
            .tokens.Count();
    };
    EXPECT_EQ(tokenize(kMaxText), 1);
    EXPECT_THROW(tokenize(kMaxText + 1), CommandTooLarge);
}

TEST(CommandBudgetTest, AllLiteralsOfACommandTogether) {
    const auto tokenize = [](std::size_t size) {
        const std::string literal = "'" + std::string(size, 'x') + "'+y' ";
        return KeptTokens(CodePage::Windows1252(), Repeated(literal, 32), false, 0).tokens.Count();
    };
    EXPECT_EQ(tokenize(kMaxText / 32), 32);
    EXPECT_THROW(tokenize(kMaxText / 32 + 1), CommandTooLarge);
}

TEST(CommandBudgetTest, WhatIsGluedOnceIsFree) {
    const std::string part = "'" + std::string(kMaxText, 'x') + "'";
    KeptTokens kept(CodePage::Windows1252(), part + "\n+" + part, false, 0);
    EXPECT_EQ(kept.tokens.At(0)->texts.value, std::string(2 * kMaxText, 'x'));
}

// The columns of a graph whose Y axis is a variable with a name of `size` bytes are handed to
// `use`.
template <class Use>
void UseColumns(std::size_t size, Use use) {
    igraph::IgraphCommand command;
    command.y.variable.source = igraph::VariableReference::Source::kVariable;
    command.y.variable.name = std::string(size, 'n');
    command.y.variable.key = std::string(size, 'N');
    command.y.level = igraph::MeasurementLevel::kScale;
    CommandBudget budget;
    igraph::Columns columns(command, igraph::VariableRoles(command), /*needsCaseLabels=*/false,
                            budget);
    use(columns, command.y.variable);
}

TEST(CommandBudgetTest, ANameInManyElementsOfAGraph) {
    const auto useOften = [](std::size_t size, int times) {
        UseColumns(size, [times](const igraph::Columns& columns,
                                 const igraph::VariableReference& variable) {
            for (int i = 0; i < times; ++i) {
                static_cast<void>(columns.Use(variable, igraph::MeasurementLevel::kScale));
            }
        });
    };
    constexpr std::size_t kMost = kMaxCopies - CommandBudget::kNodeCopy;
    useOften(kMost + 1, 1);
    useOften(kMost, 2);
    EXPECT_THROW(useOften(kMost + 1, 2), CommandTooLarge);
    EXPECT_THROW(useOften(kMost, 3), CommandTooLarge);
}

TEST(CommandBudgetTest, ANameThatIsComputed) {
    const auto compute = [](std::size_t size) {
        UseColumns(size, [](igraph::Columns& columns, const igraph::VariableReference& variable) {
            EXPECT_FALSE(columns.TakeComputedName(variable).empty());
        });
    };
    constexpr std::size_t kMost = kMaxCopies / 2 - CommandBudget::kNodeCopy;
    compute(kMost);
    EXPECT_THROW(compute(kMost + 1), CommandTooLarge);
}

// However large a command is: what stands there once is never too much.
TEST(CommandBudgetTest, ALargeCommandThatMultipliesNothing) {
    const std::string label = Literal(kMaxText + 1000);
    ExpectConverted("TABLES /TABLE a BY b /STATISTICS COUNT(" + label + ") /TITLE " + label);
    ExpectConverted("TABLES /BREAK +b" + Repeated("+c", 150000) + " /TABLE a");
}

TEST(CommandBudgetTest, TheNextCommandIsConverted) {
    const std::string tables =
        "TABLES /TABLE a+b+c+d+e /STATISTICS COUNT(" + Literal(kMaxText / 4) + ").\n";
    std::string igraph =
        "IGRAPH /X1=VAR(" + std::string(8000, 'n') + ") TYPE=CATEGORICAL /Y=$count";
    igraph += Repeated(" /BAR", 8000) + ".\n";
    const std::string after = "TABLES /TABLE a.\nIGRAPH /X1=VAR(x) /Y=$count /BAR.\nLIST.\n";
    const Conversion conversion = ConvertText(tables + igraph + after, Options{});
    EXPECT_EQ(conversion.outcome, Outcome::kDone);
    EXPECT_EQ(conversion.resultLines,
              "Tables conversion failed!\nIgraph conversion failed!\n"
              "Tables conversion was successful!\nIgraph conversion was successful!\n");
    EXPECT_NE(conversion.output.find("COMMENT -- Begin CTABLES command.\n"
                                     "***** Error while parsing or translating input syntax file. "
                                     "Line 1, column 24.\n"
                                     "***** The table expression is too large to be converted.\n"
                                     "COMMENT -- End CTABLES command.\n"),
              std::string::npos);
    EXPECT_NE(conversion.output.find("COMMENT -- Begin GGRAPH command.\n"
                                     "*IGRAPH conversion is not possible: the command is too "
                                     "large.\nCOMMENT -- End GGRAPH command.\n"),
              std::string::npos);
    EXPECT_TRUE(conversion.output.ends_with("LIST.\n"));
    EXPECT_TRUE(conversion.diagnostics.empty());
}

}  // namespace
}  // namespace quillet
