#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "migrate/journalrecord.h"
#include "migratereports.h"

namespace quillet::migrate {
namespace {

JournalRecord FullRecord() {
    JournalRecord record = RecordOf("a \"b\"\n/\xFF%41.syn");
    record.identity.isAccepted = true;
    FileFacts& facts = record.facts;
    facts.outcome = FileOutcome::kPartly;
    facts.bytes = 5000000000;
    facts.encoding = "windows-1252";
    facts.encodingReason = "option";
    facts.layout = "interactive";
    facts.blankLines = "end-commands";
    facts.lines = 40;
    facts.copied = 7;
    facts.found = 8;
    facts.overlooked = 2;
    facts.codes = {"include", "macro-body"};
    facts.converted = 2;
    facts.failed = 3;
    facts.unreadable = 1;
    facts.warnings = 4;
    facts.message = "a \"word\"";
    facts.errors = {"igraph-syntax", "tables-syntax"};
    record.commands = {StoredArray::Place::kReport, 77, 99, {0xFEDCBA9876543210, 5}};
    record.findings = {StoredArray::Place::kJournal, 12, 34, {5, 6}};
    return record;
}

void ExpectSame(const JournalRecord& left, const JournalRecord& right) {
    EXPECT_EQ(left.identity, right.identity);
    ExpectSameFacts(left.facts, right.facts);
    EXPECT_EQ(left.commands.place, right.commands.place);
    EXPECT_EQ(left.commands.offset, right.commands.offset);
    EXPECT_EQ(left.commands.length, right.commands.length);
    EXPECT_EQ(left.commands.hash, right.commands.hash);
    EXPECT_EQ(left.hasFindings, right.hasFindings);
    EXPECT_EQ(left.findings.place, right.findings.place);
    EXPECT_EQ(left.findings.offset, right.findings.offset);
    EXPECT_EQ(left.findings.length, right.findings.length);
    EXPECT_EQ(left.findings.hash, right.findings.hash);
}

std::vector<JournalRecord> RecordsIn(std::string_view text) {
    std::vector<JournalRecord> records;
    JournalReader reader(
        [&records](JournalRecord record) { records.push_back(std::move(record)); });
    reader.Add(text);
    return records;
}

TEST(MigrateJournalRecordTest, ComesBackAsItWasWritten) {
    for (const JournalRecord& record : {FullRecord(), RecordOf("a")}) {
        const std::string line = FormatRecord(record);
        EXPECT_EQ(line.find('\n'), line.size() - 1);
        const std::vector<JournalRecord> records = RecordsIn(line + line);
        ASSERT_EQ(records.size(), 2U);
        ExpectSame(records[0], record);
        ExpectSame(records[1], record);
    }
}

// As version 0.1 has written them.
TEST(MigrateJournalRecordTest, OldRecordsTellNothingAboutFindings) {
    const std::string json =
        R"({"path":"a","source":"00000000000000000000000000000001",)"
        R"("result":"00000000000000000000000000000002","version":"0.1.0",)"
        R"("options":"layout=interactive;encoding=windows-1252","outcome":"partly","bytes":10,)"
        R"("encoding":"utf-8","lines":4,"copied":3,"converted":2,"failed":1,"unreadable":0,)"
        R"("warnings":5,"message":"","errors":["tables-syntax"],)"
        R"("commands":{"in":"report","offset":7,"length":8,)"
        R"("hash":"00000000000000000000000000000003"}})";
    const std::string line = "quillet1 " + ChecksumOf(json) + " " + json;
    const std::optional<JournalRecord> record = ParseRecord(line);
    ASSERT_TRUE(record);
    EXPECT_FALSE(record->hasFindings);
    EXPECT_EQ(record->facts.converted, 2);
    EXPECT_EQ(record->facts.found, 0);
    EXPECT_EQ(record->facts.encoding, "utf-8");
    // And that stays so.
    EXPECT_EQ(FormatRecord(*record), line + "\n");
}

TEST(MigrateJournalRecordTest, EveryDamageIsNoticedOrDoesNoHarm) {
    const JournalRecord before = RecordOf("before");
    const JournalRecord damaged = FullRecord();
    const JournalRecord after = RecordOf("after");
    const std::string line = FormatRecord(damaged);
    std::size_t found = 0;
    const auto expectHarmless = [&](const std::string& text, std::size_t position) {
        SCOPED_TRACE(position);
        // Without its end the line takes the next one along.
        const bool hasEnd = text.ends_with('\n');
        const std::vector<JournalRecord> records =
            RecordsIn(FormatRecord(before) + text + FormatRecord(after));
        for (const JournalRecord& record : records) {
            if (record.facts.path == "before") {
                ExpectSame(record, before);
            } else if (record.facts.path == "after") {
                ExpectSame(record, after);
            } else {
                ++found;
                ExpectSame(record, damaged);
            }
        }
        ASSERT_GE(records.size(), hasEnd ? 2U : 1U);
        EXPECT_EQ(records.front().facts.path, "before");
    };
    for (std::size_t position = 0; position < line.size(); ++position) {
        for (int value = 0; value < 256; ++value) {
            std::string changed = line;
            if (changed[position] == static_cast<char>(value)) continue;
            changed[position] = static_cast<char>(value);
            EXPECT_FALSE(ParseRecord(std::string_view(changed).substr(0, line.size() - 1)) &&
                         position + 1 < line.size());
            // What the line does to those around it depends on where lines end alone.
            if (value == '\n' || value == '0' || position + 1 == line.size()) {
                expectHarmless(changed, position);
            }
        }
        expectHarmless(line.substr(0, position), position);
        expectHarmless(line.substr(0, position) + line.substr(position + 1), position);
        expectHarmless(line.substr(0, position) + "0" + line.substr(position), position);
        expectHarmless(line.substr(position + 1), position);
    }
    EXPECT_EQ(found, 0U);
}

TEST(MigrateJournalRecordTest, WholeLinesOfAnotherKindAreNoRecords) {
    const auto seal = [](const std::string& json) {
        return "quillet1 " + ChecksumOf(json) + " " + json + "\n";
    };
    const std::string line = FormatRecord(FullRecord());
    const std::string json = line.substr(26, line.size() - 27);
    ASSERT_EQ(RecordsIn(seal(json)).size(), 1U);
    const struct {
        const char* name;
        const char* from;
        const char* to;
    } cases[] = {
        {"a path that leads out", R"("path":"a)", R"("path":"../a)"},
        {"an absolute path", R"("path":"a)", R"("path":"/a)"},
        {"a path that ends in a slash", ".syn\"", ".syn/\""},
        {"a path with a NUL", R"("path":"a)", R"("path":"%00a)"},
        {"a path with half a byte", R"("path":"a)", R"("path":"%a)"},
        {"no path", R"("path":"a)", R"("pth":"a)"},
        {"a hash that is too short", R"("source":"0)", R"("source":")"},
        {"a hash that is none", R"("result":"0)", R"("result":"x)"},
        {"an outcome without a result", "\"partly\"", "\"failed\""},
        {"an outcome that is not known", "\"partly\"", "\"nearly\""},
        {"a number below zero", "\"failed\":3", "\"failed\":-3"},
        {"a number that is too large", "\"failed\":3", "\"failed\":18446744073709551615"},
        {"a number beyond all", "\"failed\":3", "\"failed\":1e300"},
        {"a text for a number", "\"failed\":3", "\"failed\":\"3\""},
        {"a size that is too large", "\"bytes\":5", "\"bytes\":123456789015"},
        {"a number for a text", R"("encoding":"windows-1252")", R"("encoding":1252)"},
        {"a number for a flag", "\"accepted\":true", "\"accepted\":1"},
        {"reasons that are none", "[\"igraph-syntax\"", "[5"},
        {"a place that is not known", R"("in":"report")", R"("in":"cellar")"},
        {"an offset that is too large", "\"offset\":77", "\"offset\":9223372036854775807"},
        {"commands that are none", "\"commands\":{", "\"commands\":[],\"more\":{"},
        {"an array", "{\"path\"", "[{\"path\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::string changed = json;
        ASSERT_NE(changed.find(c.from), std::string::npos);
        changed.replace(changed.find(c.from), std::string(c.from).size(), c.to);
        EXPECT_EQ(RecordsIn(seal(changed)).size(), 0U);
    }
    for (const std::string text :
         {"", "null", "5", "\"\"", "[]", "{}", "{", "[[[[", "{\"path\":"}) {
        EXPECT_EQ(RecordsIn(seal(text)).size(), 0U) << text;
    }
    EXPECT_EQ(RecordsIn("quillet2" + line.substr(8)).size(), 0U);
    // What a later version adds is no reason to convert everything again.
    std::string extended = json;
    extended.insert(1, R"("colour":["blue"],)");
    EXPECT_EQ(RecordsIn(seal(extended)).size(), 1U);
}

TEST(MigrateJournalRecordTest, PiecesMakeNoDifference) {
    const std::string text = "[{}]\n" + FormatRecord(RecordOf("a")) + "\n\nnonsense\n" +
                             FormatRecord(FullRecord()) + "half a line";
    for (std::size_t size = 1; size <= text.size(); ++size) {
        std::vector<std::string> paths;
        JournalReader reader(
            [&paths](const JournalRecord& record) { paths.push_back(record.facts.path); });
        for (std::size_t at = 0; at < text.size(); at += size) {
            reader.Add(std::string_view(text).substr(at, size));
        }
        EXPECT_THAT(paths, testing::ElementsAre("a", FullRecord().facts.path)) << size;
        EXPECT_EQ(reader.EndOfLines(), text.rfind('\n') + 1) << size;
    }
}

TEST(MigrateJournalRecordTest, LongLinesArePassedOver) {
    std::vector<std::string> paths;
    JournalReader reader(
        [&paths](const JournalRecord& record) { paths.push_back(record.facts.path); });
    JournalRecord record = RecordOf("long");
    record.facts.message.assign(kLongestRecord, 'x');
    const std::string line = FormatRecord(record);
    reader.Add(line);
    for (std::size_t at = 0; at < line.size(); at += 1000) {
        reader.Add(std::string_view(line).substr(at, 1000));
    }
    reader.Add(FormatRecord(RecordOf("short")));
    EXPECT_THAT(paths, testing::ElementsAre("short"));
}

}  // namespace
}  // namespace quillet::migrate
