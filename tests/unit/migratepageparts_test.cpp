#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/commandkeys.h"
#include "migrate/htmlreport.h"
#include "migrate/jsonreport.h"
#include "migrate/pageparts.h"
#include "migrate/reportdigest.h"
#include "migratehelper.h"
#include "support/rownames.h"

namespace quillet::migrate {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

struct SizedFile {
    const char* path;
    std::uint64_t size;
};

struct PartsCase {
    const char* name;
    std::vector<SizedFile> files;      // by their paths
    std::vector<std::string> folders;  // of the part of each file
};

class PartsOfTest : public testing::TestWithParam<PartsCase> {};

TEST_P(PartsOfTest, FoldersAreParts) {
    Report report;
    for (const SizedFile& file : GetParam().files) {
        FileEntry entry;
        entry.facts.path = file.path;
        entry.commands.length = file.size;
        report.files.push_back(entry);
    }
    const PageParts parts = PartsOf(report, 100000);
    std::vector<std::string> folders;
    for (const std::size_t part : parts.partOfFile) folders.push_back(parts.parts[part].folder);
    EXPECT_EQ(folders, GetParam().folders);
    std::size_t count = 0;
    for (std::size_t part = 0; part < parts.parts.size(); ++part) {
        EXPECT_FALSE(parts.parts[part].files.empty());
        for (const std::size_t file : parts.parts[part].files) {
            EXPECT_EQ(parts.partOfFile[file], part);
            ++count;
        }
    }
    EXPECT_EQ(count, report.files.size());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PartsOfTest,
    testing::Values(
        PartsCase{"no files", {}, {}}, PartsCase{"all is small", {{"a/x", 1}, {"b", 1}}, {"", ""}},
        PartsCase{"outer folders are parts",
                  {{"a/b/x", 40000}, {"a/y", 40000}, {"b/z", 90000}},
                  {"a", "a", "b"}},
        PartsCase{"what is too large is split further",
                  {{"a/b/x", 90000}, {"a/c", 1}, {"a/d/e/y", 1}, {"a/d/z", 90000}, {"e", 1}},
                  {"a/b", "a", "a/d", "a/d", ""}},
        PartsCase{"the only folder", {{"s/a/x", 90000}, {"s/b/y", 90000}}, {"s/a", "s/b"}},
        PartsCase{"a folder with too much of its own stays one",
                  {{"a/x", 90000}, {"a/y", 90000}, {"b", 1}},
                  {"a", "a", ""}},
        PartsCase{"names that begin alike",
                  {{"a-b/x", 90000}, {"a/x", 90000}, {"ab/x", 1}},
                  {"a-b", "a", "ab"}}),
    NameOfRow<PartsCase>);

TEST(MigratePagePartsTest, NamesFollowFromFolders) {
    EXPECT_EQ(PartNameOf(""), "-part-cbf29ce484222325");
    EXPECT_EQ(PartNameOf("foobar"), "-part-foobar-85944171f73967e8");
    EXPECT_EQ(PartNameOf("a b/\xFF.<"), "-part-a-b-----" + TextHashOf("a b/\xFF.<"));
    EXPECT_NE(PartNameOf("a/b"), PartNameOf("a-b"));
    EXPECT_LE(PartNameOf(std::string(1000, 'x')).size(), 80U);
}

// What stands in the script element with this id.
json DataOf(const std::string& page, const std::string& id) {
    const std::string start = "<script type=\"application/json\" id=\"" + id + "\">";
    const std::size_t begin = page.find(start);
    if (begin == std::string::npos) return nullptr;
    const std::size_t end = page.find("</script>", begin);
    return json::parse(page.substr(begin + start.size(), end - begin - start.size()));
}

std::string FailuresText(int count) {
    std::string text;
    for (int number = 0; number < count; ++number) {
        CommandReport command;
        command.type = CommandType::kTables;
        command.outcome = CommandOutcome::kFailed;
        command.source = "TABLES </script>.";
        command.errorKind = ErrorKind::kTablesSyntax;
        text += (text.empty() ? "[" : ",") + CommandJson(command, TextEncoding::kUtf8);
    }
    return text + "]";
}

TEST(MigratePagePartsTest, AnIndexLeadsToItsParts) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands = folder.Store("commands", FailuresText(2));
    Report report;
    for (const char* pPath : {"a/x", "b/\xFF", "b/y", "c"}) {
        FileEntry file;
        file.facts.path = pPath;
        file.facts.encoding = "utf-8";
        if (file.facts.path != "c") {
            file.facts.failed = file.facts.found = file.facts.listed = 2;
            file.commands = {commands.get(), 0, commands->Size()};
        }
        report.files.push_back(file);
    }
    SignOff signOff;
    signOff.key = {TextHashOf("x"), 1};
    signOff.remark = "</script>";
    report.files[1].signOffs.push_back(signOff);
    report.otherSignOffs.push_back({"gone", signOff});
    report.sinceLastRun = ChangeSums();
    ReportDigest digest;
    ASSERT_TRUE(ReadDigest(report, digest, [](const FileFacts&, const ListedCommand&) {}));
    const PageParts parts = PartsOf(report, commands->Size() + 1100);
    const std::string name = "r-dry-run.html";
    const SplitReport split(report, digest, parts, name);
    EXPECT_EQ(split.NameOfPart(0), "r-dry-run" + PartNameOf("a") + ".html");

    TextCollector indexPage;
    ASSERT_TRUE(split.WriteIndex("A<!-- data -->B", indexPage));
    EXPECT_THAT(indexPage.text, Not(HasSubstr("TABLES")));
    const json index = DataOf(indexPage.text, "report");
    EXPECT_EQ(index["parts"],
              json::parse(R"([{"name":"r-dry-run)" + PartNameOf("a") + R"(.html","folder":"a"},)" +
                          R"({"name":"r-dry-run)" + PartNameOf("b") + R"(.html","folder":"b"},)" +
                          R"({"name":"r-dry-run)" + PartNameOf("") + R"(.html","folder":""}])"));
    std::vector<int> numbers;
    for (const json& file : index["files"]) numbers.push_back(file["part"].get<int>());
    EXPECT_THAT(numbers, ElementsAre(0, 1, 1, 2));
    EXPECT_EQ(index["files"][1]["rawPath"], "b/%FF");
    EXPECT_EQ(index["files"][1]["failed"], 2);
    EXPECT_EQ(index["files"][1]["errors"], json::parse(R"({"tables-syntax":2})"));
    EXPECT_FALSE(index["files"][1].contains("encoding"));
    EXPECT_EQ(index["groups"][0]["places"].size(), 6U);
    EXPECT_EQ(index["allSignOffs"].size(), 2U);
    EXPECT_EQ(index["otherSignOffs"].size(), 1U);
    EXPECT_TRUE(index["sinceLastRun"].is_object());

    TextCollector partPage;
    ASSERT_TRUE(split.WritePart(1, "A<!-- data -->B", partPage));
    const json part = DataOf(partPage.text, "report");
    EXPECT_EQ(part["index"], name);
    EXPECT_EQ(part["folder"], "b");
    EXPECT_EQ(part["totals"]["files"], 2);
    EXPECT_EQ(part["totals"]["commandsFailed"], 4);
    EXPECT_EQ(part["files"][0]["encoding"], "utf-8");
    EXPECT_EQ(part["files"][1]["chunk"], 1);
    EXPECT_EQ(part["groups"],
              json::parse(R"([{"error":"tables-syntax","places":[[0,0],[0,1],[1,0],[1,1]]}])"));
    EXPECT_EQ(part["allSignOffs"], index["allSignOffs"]);
    EXPECT_EQ(part["allSignOffs"][0]["rawPath"], "b/%FF");
    EXPECT_TRUE(part["otherSignOffs"].empty());
    EXPECT_EQ(DataOf(partPage.text, "chunk-1")["commands"].size(), 2U);
    EXPECT_TRUE(DataOf(partPage.text, "chunk-2").is_null());

    TextCollector narrow(10);
    EXPECT_FALSE(split.WriteIndex("<!-- data -->", narrow));
    EXPECT_FALSE(split.WritePart(0, "no mark", partPage));
}

TEST(MigratePagePartsTest, PagesBearTheirMarkEarly) {
    EXPECT_LT(ReportPage().find(kPageMark), kMostBytesBeforeMark - kPageMark.size());
}

}  // namespace
}  // namespace quillet::migrate
