#include "accountof.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

#include "driver/stringstreams.h"
#include "outline/askedcommand.h"
#include "outline/readwritten.h"
#include "platform/codepage.h"
#include "quillet.h"

namespace quillet::outline {

namespace {

// Keeps the texts of the last command that was converted.
class TextsListener final : public ConversionListener, public TextOutput {
public:
    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view line) override { ADD_FAILURE() << line; }
    void OnCommand(const CommandReport& report) override {
        if (report.outcome != CommandOutcome::kConverted) return;
        source = report.source;
        generated = report.generated;
    }
    bool Write(std::string_view /*bytes*/) override { return true; }

    std::string source;
    std::string generated;
};

[[nodiscard]] std::string_view WithoutPeriod(std::string_view command) {
    const std::size_t last = command.find_last_not_of(" \n");
    command = command.substr(0, last + 1);
    if (command.ends_with('.')) command.remove_suffix(1);
    return command;
}

}  // namespace

Account AccountOf(const std::string& text, const AccountContext& context, const Change& change) {
    TextsListener listener;
    StringInput input(text);
    EXPECT_EQ(ConvertStream(input, listener, listener, Options()), Outcome::kDone);
    EXPECT_NE(listener.generated, "") << text;
    if (change) change(listener.generated);
    const CodePage& codePage = CodePage::Utf8();
    CommandOutline written;
    ReadingError error;
    EXPECT_TRUE(ReadWritten(codePage, listener.generated, written, error))
        << error.message << " in\n"
        << listener.generated;
    const std::string source(WithoutPeriod(listener.source));
    return CompareOutlines(codePage, ReadAskedCommand(codePage, source, /*isBatch=*/false), written,
                           context);
}

std::string SummaryOf(const Account& account) {
    std::set<std::string> names;
    for (const AccountNote& note : account.notes) {
        const std::string name(NameOf(note.code));
        names.insert(note.light == Light::kSame ? "(" + name + ")" : name);
    }
    std::string summary(NameOf(account.light));
    std::string_view separator = " | ";
    for (const std::string& name : names) {
        summary.append(separator).append(name);
        separator = ", ";
    }
    return summary;
}

void ExpectSums(const Account& account) {
    const Tally& tally = account.statistics;
    EXPECT_EQ(tally.asked, tally.kept + tally.twice + tally.moved + tally.lost);
    EXPECT_EQ(tally.written, tally.kept + tally.writtenTwice + tally.writtenMoved + tally.extra);
    Tally entries;
    for (const AccountEntry& entry : account.entries) {
        if (entry.subject != Subject::kStatistic) continue;
        if (entry.fate == Fate::kKept) ++entries.kept;
        if (entry.fate == Fate::kTwice) ++entries.twice;
        if (entry.fate == Fate::kTwice) entries.writtenTwice += entry.written.count;
        if (entry.fate == Fate::kMoved) ++entries.moved;
        if (entry.fate == Fate::kMoved) entries.writtenMoved += entry.written.count;
        if (entry.fate == Fate::kLost) ++entries.lost;
        if (entry.fate == Fate::kExtra) ++entries.extra;
    }
    EXPECT_EQ(entries.kept, tally.kept);
    EXPECT_EQ(entries.twice, tally.twice);
    EXPECT_EQ(entries.writtenTwice, tally.writtenTwice);
    EXPECT_EQ(entries.moved, tally.moved);
    EXPECT_EQ(entries.writtenMoved, tally.writtenMoved);
    EXPECT_EQ(entries.lost, tally.lost);
    EXPECT_EQ(entries.extra, tally.extra);
}

}  // namespace quillet::outline
