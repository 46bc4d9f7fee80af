#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <numeric>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/commandkeys.h"
#include "migrate/htmlreport.h"
#include "migrate/jsonreport.h"
#include "migrate/pageparts.h"
#include "migrate/reportdigest.h"
#include "migrate/reportmembers.h"
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

// What a part tells about its folders, for each file.
std::vector<std::string> FoldersOf(const PageParts& parts) {
    std::vector<std::string> folders;
    for (const std::size_t part : parts.partOfFile) {
        folders.push_back(FolderTextOf(parts.parts[part]));
    }
    return folders;
}

TEST_P(PartsOfTest, FoldersAreParts) {
    Report report;
    std::vector<std::uint64_t> bytes;
    for (const SizedFile& file : GetParam().files) {
        report.files.emplace_back().facts.path = file.path;
        bytes.push_back(file.size);
    }
    const PageParts parts = PartsOf(report, bytes, 100);
    EXPECT_EQ(FoldersOf(parts), GetParam().folders);
    std::size_t count = 0;
    std::set<std::string> names;
    std::size_t first = 0;
    for (std::size_t part = 0; part < parts.parts.size(); ++part) {
        const PagePart& onePart = parts.parts[part];
        ASSERT_FALSE(onePart.files.empty());
        EXPECT_TRUE(std::is_sorted(onePart.files.begin(), onePart.files.end()));
        EXPECT_TRUE(part == 0 || first < onePart.files.front());
        first = onePart.files.front();
        EXPECT_TRUE(names.insert(onePart.folder).second) << onePart.folder;
        for (const std::size_t file : onePart.files) {
            EXPECT_EQ(parts.partOfFile[file], part);
            ++count;
        }
    }
    EXPECT_EQ(count, report.files.size());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PartsOfTest,
    testing::Values(PartsCase{"no files", {}, {}},
                    PartsCase{"all is small", {{"a/x", 1}, {"b", 1}}, {"", ""}},
                    PartsCase{"just small enough", {{"a/x", 60}, {"b/x", 40}}, {"", ""}},
                    PartsCase{"outer folders are parts",
                              {{"a/b/x", 40}, {"a/y", 40}, {"b/z", 90}},
                              {"a", "a", "b"}},
                    PartsCase{"what is too large is split further",
                              {{"a/b/x", 90}, {"a/c", 1}, {"a/d/e/y", 1}, {"a/d/z", 90}, {"e", 1}},
                              {"a/b", "a", "a/d", "a/d", ""}},
                    PartsCase{"the only folder", {{"s/a/x", 90}, {"s/b/y", 90}}, {"s/a", "s/b"}},
                    PartsCase{"a folder with too much of its own stays one",
                              {{"a/x", 90}, {"a/y", 90}, {"b", 1}},
                              {"a", "a", ""}},
                    PartsCase{"names that begin alike",
                              {{"a-b/x", 90}, {"a/x", 90}, {"ab/x", 90}},
                              {"a-b", "a", "ab"}},
                    PartsCase{"small neighbors share a part",
                              {{"a/x", 40}, {"b/x", 60}, {"c/x", 1}, {"d/x", 30}, {"e/x", 90}},
                              {"a to b", "a to b", "c to d", "c to d", "e"}},
                    PartsCase{"what lies between them in their folder is none of them",
                              {{"s/a/x", 40}, {"s/b", 50}, {"s/c/x", 50}},
                              {"s/a to s/c", "s", "s/a to s/c"}},
                    PartsCase{"a large one between small ones",
                              {{"a/x", 1}, {"b/c/x", 90}, {"b/d/x", 20}, {"c/x", 1}},
                              {"a", "b/c", "b/d", "c"}},
                    PartsCase{"those of several folders are not mixed",
                              {{"a/b/x", 90}, {"a/c/x", 20}, {"d/b/x", 20}, {"d/c/x", 90}},
                              {"a/b", "a/c", "d/b", "d/c"}},
                    PartsCase{"a path from the root", {{"/x", 101}}, {""}},
                    PartsCase{"empty names", {{"//a", 90}, {"/b", 90}}, {"/", ""}}),
    NameOfRow<PartsCase>);

TEST(MigratePagePartsTest, ManySmallFoldersAreFewParts) {
    Report report;
    for (int number = 1000; number < 5000; ++number) {
        report.files.emplace_back().facts.path = std::to_string(number) + "/x";
    }
    const PageParts parts = PartsOf(report, std::vector<std::uint64_t>(4000, 6000), 20'000'000);
    ASSERT_EQ(parts.parts.size(), 2U);
    EXPECT_EQ(FolderTextOf(parts.parts[0]), "1000 to 4332");
    EXPECT_EQ(FolderTextOf(parts.parts[1]), "4333 to 4999");
}

// The longest path that a report may have: to look at each of its folders as a whole would take
// gigabytes, and a part for each would be as bad.
TEST(MigratePagePartsTest, DeepFoldersAreFewParts) {
    Report report;
    std::string folder;
    while (folder.size() + 3 < kMostPathBytes) {
        folder += "a/";
        if (folder.size() % 1000 == 0) report.files.emplace_back().facts.path = folder + "b";
    }
    report.files.emplace_back().facts.path = folder + "b";
    std::sort(report.files.begin(), report.files.end(),
              [](const FileEntry& left, const FileEntry& right) {
                  return left.facts.path < right.facts.path;
              });
    const PageParts parts =
        PartsOf(report, std::vector<std::uint64_t>(report.files.size(), 90), 100);
    EXPECT_EQ(parts.parts.size(), 1U);
}

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
    std::vector<std::uint64_t> bytes;
    ASSERT_TRUE(MeasureFiles(report, digest, bytes));
    const PageParts parts = PartsOf(report, bytes, bytes[1] + bytes[2]);
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

TEST(MigratePagePartsTest, FilesAreMeasuredAsTheyAreWritten) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands = folder.Store("commands", FailuresText(500));
    Report report;
    for (const char* pPath : {"<a", "b/\xFF", "b/y"}) {
        FileEntry file;
        file.facts.path = pPath;
        file.facts.failed = file.facts.found = file.facts.listed = 500;
        file.commands = {commands.get(), 0, commands->Size()};
        report.files.push_back(file);
    }
    ReportDigest digest;
    ASSERT_TRUE(ReadDigest(report, digest, [](const FileFacts&, const ListedCommand&) {}));
    std::vector<std::uint64_t> bytes;
    ASSERT_TRUE(MeasureFiles(report, digest, bytes));
    TextCollector page;
    ASSERT_TRUE(WriteHtmlReport(report, digest, "<!-- data -->", page));
    TextCollector empty;
    ASSERT_TRUE(WriteHtmlReport({}, {}, "<!-- data -->", empty));
    const std::uint64_t written = page.text.size() - empty.text.size();
    const std::uint64_t measured = std::accumulate(bytes.begin(), bytes.end(), std::uint64_t{0});
    EXPECT_GE(measured, written);
    EXPECT_LT(measured, written + written / 10);
    // Every "<" takes six bytes.
    EXPECT_GT(measured, 3 * (commands->Size() + std::uint64_t{5} * 500));

    const std::unique_ptr<StoredFile> damaged = folder.Store("damaged", "[");
    report.files[1].commands.pFile = damaged.get();
    EXPECT_FALSE(MeasureFiles(report, digest, bytes));
}

TEST(MigratePagePartsTest, PagesBearTheirMarkEarly) {
    EXPECT_LT(ReportPage().find(kPageMark), kMostBytesBeforeMark - kPageMark.size());
}

}  // namespace
}  // namespace quillet::migrate
