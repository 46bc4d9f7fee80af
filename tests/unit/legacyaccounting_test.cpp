// Texts made of pieces of which it is known what they hold: all of it has to be accounted for.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "driver/stringstreams.h"
#include "quillet.h"

namespace quillet {
namespace {

// How many legacy commands a text has, by their outcomes.
using Counts = std::array<long, 4>;

constexpr std::array kOutcomes = {LegacyOutcome::kConverted, LegacyOutcome::kFailed,
                                  LegacyOutcome::kUnreadable, LegacyOutcome::kOverlooked};

struct Piece {
    std::string text;
    Counts counts;
    /// The findings, by their codes, in order.
    std::vector<std::string> codes;
};

const Piece kPieces[] = {
    {"TABLES /TABLE=a BY b.\n", {1, 0, 0, 0}, {}},
    {"TABLES\n\n  /TABLE=a.\n", {1, 0, 0, 0}, {}},
    {"tabl table=a\n.\n", {1, 0, 0, 0}, {}},
    {"TABLES /TABLE=a BY.\n", {0, 1, 0, 0}, {}},
    {"IGRAPH /NOTHING.\n", {0, 1, 0, 0}, {}},
    {"* Income\nTABLES /TABLE=a.\n", {0, 0, 0, 1}, {"open-comment"}},
    {"* Income\n\nTABLES /TABLE=a\nIGRAPH /PIE.\n", {0, 0, 0, 2}, {"open-comment", "open-comment"}},
    {"EXECUTE. /* old */\nTABLES /TABLE=a.\n", {0, 0, 0, 1}, {"comment-behind"}},
    {"/* next */\nTABLES /TABLE=a.\n", {0, 0, 0, 1}, {"block-comment-before"}},
    {"LIST.\n+ TABLES /TABLE=a.\nLIST.\nLIST.\n", {0, 0, 0, 1}, {"sign-before"}},
    {"EXECUTE. TABLES /TABLE=c BY d.\n", {0, 0, 0, 1}, {"same-line"}},
    {"GET FILE='x'\n\nTABLES /TABLE=a.\n", {0, 0, 0, 1}, {"open-command"}},
    {"TABLES /TABLE=a BY b\nTABLES /TABLE=c.\n", {0, 1, 0, 1}, {"open-command"}},
    {"DEFINE !f ()\nTABLES /TABLE=a.\nTABLES /TABLE=b.\n!ENDDEFINE.\n",
     {0, 0, 0, 2},
     {"macro-body", "macro-body"}},
    {"TABLES /TABLE=a BY b. /* foo */\n\nGET FILE=x.\n", {1, 0, 0, 0}, {"command-lost"}},
    {"* Note\n\nSORT CASES BY a.\n", {0, 0, 0, 0}, {"swallowed"}},
    {"LIST. /* all\n", {0, 0, 0, 0}, {"comment-dropped"}},
    {"INCLUDE 'x'.\n", {0, 0, 0, 0}, {"include"}},
    {"CROSSTABS\nTABLES=a BY b.\n", {0, 0, 0, 0}, {}},
    {"MEANS TABLES = a BY b.\n", {0, 0, 0, 0}, {}},
    {"CTABLES\n  /TABLE a BY b.\n", {0, 0, 0, 0}, {}},
    {"BEGIN DATA.\nTABLES /TABLE=a.\n\nEND DATA.\n", {0, 0, 0, 0}, {}},
    {"DOCUMENT The\nTABLES /TABLE=a\nare old.\n", {0, 0, 0, 0}, {}},
    {"TITLE 'Old. TABLES /TABLE=a'.\n", {0, 0, 0, 0}, {}},
    {"* Old: TABLES /TABLE=a.\n", {0, 0, 0, 0}, {}},
    {"LIST /* a. TABLES /TABLE=a */ b.\n", {0, 0, 0, 0}, {}},
    {"FREQUENCIES tables tab1.\n", {0, 0, 0, 0}, {}},
    {"EXECUTE.\n", {0, 0, 0, 0}, {}},
    {"\n", {0, 0, 0, 0}, {}},
};

// They end what can be cut, so they come last.
const Piece kLastPieces[] = {
    {"", {0, 0, 0, 0}, {}},
    {"LIST", {0, 0, 0, 0}, {}},
    {"TABLES /TITLE='a\nTABLES /TABLE=a.\n", {0, 0, 1, 1}, {"after-stop"}},
    {"TITLE 'a\n* x\nTABLES /TABLE=a.\nLIST. IGRAPH /PIE.\n",
     {0, 0, 0, 2},
     {"after-stop", "after-stop"}},
    {"COMPUTE x='.\nLIST \x01.\nBEGIN DATA\nTABLES /TABLE=a.\nEND DATA.\nTABLES /TABLE=a.\n",
     {0, 0, 0, 1},
     {"after-stop"}},
    {"BEGIN DATA.\n1\n END DATA.\nTABLES /TABLE=a.\nLIST.\n", {0, 0, 0, 1}, {"data-lines"}},
};

// What the conversion itself says of its commands.
class OwnCounts final : public ConversionListener, public TextOutput {
public:
    void OnResultLine(std::string_view /*line*/) override { ++m_count; }
    void OnDiagnostic(std::string_view line) override { ADD_FAILURE() << line; }
    bool Write(std::string_view /*bytes*/) override { return true; }
    [[nodiscard]] long Count() const { return m_count; }

private:
    long m_count = 0;
};

long OwnCountOf(const std::string& text) {
    StringInput input(text);
    OwnCounts counts;
    static_cast<void>(ConvertStream(input, counts, counts, Options()));
    return counts.Count();
}

TEST(LegacyAccountingTest, FindsWhatWasPlanted) {
    std::minstd_rand random(13);
    for (int file = 0; file < 5000; ++file) {
        // So many commands with periods that no file of these pieces looks like batch layout.
        std::string text;
        for (int line = 0; line < 30; ++line) text += "LIST.\n";
        Counts planted = {};
        std::vector<std::string> codes;
        long inMacros = 0;
        const auto plant = [&](const Piece& piece) {
            text += piece.text;
            for (std::size_t row = 0; row < planted.size(); ++row)
                planted[row] += piece.counts[row];
            codes.insert(codes.end(), piece.codes.begin(), piece.codes.end());
            // The conversion takes the second command of the macro for one of its own.
            if (!piece.codes.empty() && piece.codes.front() == "macro-body") ++inMacros;
        };
        const std::size_t count = random() % 12;
        for (std::size_t number = 0; number < count; ++number) {
            plant(kPieces[random() % std::size(kPieces)]);
        }
        plant(kLastPieces[random() % std::size(kLastPieces)]);
        SCOPED_TRACE(text);

        const LegacyFindings found = FindLegacyCommands(text, FindOptions());
        std::vector<std::string> told;
        for (const Finding& finding : found.findings) {
            if (finding.code != FindingCode::kLayoutUnclear)
                told.emplace_back(NameOf(finding.code));
        }
        ASSERT_EQ(told, codes);
        long sum = 0;
        for (std::size_t row = 0; row < planted.size(); ++row) {
            ASSERT_EQ(found.Count(kOutcomes[row]), planted[row]) << row;
            sum += planted[row];
        }
        ASSERT_EQ(static_cast<long>(found.commands.size()), sum);
        ASSERT_EQ(OwnCountOf(text), planted[0] + planted[1] + inMacros);
    }
}

// Whatever the bytes, each command counts once, and each that is overlooked has one finding.
TEST(LegacyAccountingTest, HoldsForAnyText) {
    const std::vector<std::string> parts = {"TABLES",
                                            " /TABLE=a",
                                            ".",
                                            "\n",
                                            "\n",
                                            "\r\n",
                                            " ",
                                            "/*",
                                            "*/",
                                            "* ",
                                            "'",
                                            "\"",
                                            "DEFINE !f (",
                                            ")",
                                            "!ENDDEFINE",
                                            "BEGIN DATA",
                                            "END DATA",
                                            "IGRAPH",
                                            " /PIE",
                                            "+",
                                            "LIST",
                                            "\t",
                                            "=",
                                            "\x01",
                                            "\xE4",
                                            "DOCUMENT x",
                                            "COMPUTE x=1",
                                            "!THEN ",
                                            "INCLUDE 'x'",
                                            "\r",
                                            std::string(1, '\0')};
    std::minstd_rand random(4);
    for (int file = 0; file < 3000; ++file) {
        std::string text;
        const std::size_t count = random() % 40;
        for (std::size_t part = 0; part < count; ++part) text += parts[random() % parts.size()];
        SCOPED_TRACE(testing::PrintToString(text));
        for (const bool batchMode : {false, true}) {
            FindOptions options;
            options.conversion.batchMode = batchMode;
            const LegacyFindings found = FindLegacyCommands(text, options);
            long sum = 0;
            for (const LegacyOutcome outcome : kOutcomes) sum += found.Count(outcome);
            ASSERT_EQ(static_cast<long>(found.commands.size()), sum);
            long overlooked = 0;
            for (const Finding& finding : found.findings) {
                if (KindOf(finding.code) == FindingKind::kOverlooked) ++overlooked;
                ASSERT_GE(finding.firstLine, 1);
                ASSERT_GE(finding.lastLine, finding.firstLine);
                ASSERT_GE(finding.causeLine, 1);
                ASSERT_FALSE(finding.sentence.empty());
            }
            ASSERT_EQ(found.Count(LegacyOutcome::kOverlooked), overlooked);
            static_cast<void>(EndAtBlankLines(text, options.conversion));
            static_cast<void>(ChooseLayout(text, options.conversion));
        }
    }
}

}  // namespace
}  // namespace quillet
