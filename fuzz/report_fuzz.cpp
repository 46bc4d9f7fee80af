// Bytes in, read as a JSON report. One that is accepted is written in every form, joined with
// nothing, and read again.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/csvreport.h"
#include "migrate/htmlreport.h"
#include "migrate/jsonreport.h"
#include "migrate/junitreport.h"
#include "migrate/mergereports.h"
#include "migrate/reportdata.h"
#include "migrate/reportreader.h"
#include "migrate/summary.h"
#include "platform/codepage.h"
#include "quillet.h"
#include "storedbytes.h"

namespace {

using quillet::fuzz::StoreBytes;
using quillet::migrate::Report;
using quillet::migrate::StoredFile;

void Require(bool condition, const char* reason) {
    if (condition) return;
    std::fprintf(stderr, "%s\n", reason);
    std::abort();
}

class StringOutput final : public quillet::TextOutput {
public:
    bool Write(std::string_view bytes) override {
        text.append(bytes);
        return true;
    }

    std::string text;
};

// But for the seconds, which are rounded.
bool IsSame(const quillet::migrate::RunFacts& left, const quillet::migrate::RunFacts& right) {
    const bool isSameShard = left.shard.has_value() == right.shard.has_value() &&
                             (!left.shard || (left.shard->index == right.shard->index &&
                                              left.shard->count == right.shard->count));
    return isSameShard && left.source == right.source && left.target == right.target &&
           left.layout == right.layout && left.dryRun == right.dryRun &&
           left.isInterrupted == right.isInterrupted && left.started == right.started;
}

bool IsSame(const Report& left, const Report& right) {
    if (left.files.size() != right.files.size() || !IsSame(left.run, right.run)) return false;
    for (std::size_t index = 0; index < left.files.size(); ++index) {
        if (left.files[index].facts != right.files[index].facts) return false;
    }
    return true;
}

std::string JsonOf(const Report& report) {
    StringOutput output;
    Require(WriteJsonReport(report, output), "JSON cannot be written");
    return output.text;
}

Report ReadAgain(const StoredFile& file) {
    Report report;
    std::string error;
    if (!ReadJsonReport(file, report, error)) Require(false, error.c_str());
    return report;
}

void CheckRoundTrip(const Report& report) {
    const std::string text = JsonOf(report);
    const std::unique_ptr<StoredFile> file = StoreBytes(text);
    const Report again = ReadAgain(*file);
    Require(IsSame(report, again), "other facts came back");
    Require(JsonOf(again) == text, "another text came back");
}

void CheckJoined(const Report& report) {
    Report joined;
    std::string error;
    Require(JoinReports({report}, {"one"}, joined, error), "a report alone cannot be joined");
    const std::unique_ptr<StoredFile> file = StoreBytes(JsonOf(joined));
    Require(IsSame(joined, ReadAgain(*file)), "other facts came back from what was joined");
    Report twice;
    Require(JoinReports({report, report}, {"one", "two"}, twice, error) == report.files.empty(),
            "a file may be there twice");
    static_cast<void>(quillet::migrate::MissingSlices({report}));
    Require(quillet::migrate::FormatSummary(joined).ends_with('\n'), "no summary");
    static_cast<void>(quillet::migrate::FormatFailures(joined));
}

// What XML takes, whatever the report holds.
void CheckJunit(const Report& report) {
    StringOutput output;
    Require(WriteJunitReport(report, output), "JUnit cannot be written");
    for (const char byte : output.text) {
        Require(byte == '\n' || static_cast<unsigned char>(byte) >= ' ', "a control character");
    }
    quillet::Utf8Validator validator;
    Require(validator.Add(output.text) && validator.IsValid(), "JUnit is no UTF-8");
}

// Nothing of the report ends its element or opens another.
void CheckPage(const Report& report) {
    StringOutput list;
    quillet::migrate::ReportDigest digest;
    Require(WriteCsvReport(report, list, digest), "no list is written");
    StringOutput output;
    Require(WriteHtmlReport(report, digest, quillet::migrate::kDataMark, output),
            "no page is written");
    const std::string_view text = output.text;
    for (std::size_t place = text.find('<'); place != std::string_view::npos;
         place = text.find('<', place + 1)) {
        const std::string_view rest = text.substr(place);
        Require(rest.starts_with("<script type=\"application/json\" id=\"") ||
                    rest.starts_with("</script>\n"),
                "an open tag in the page");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::unique_ptr<StoredFile> file =
        StoreBytes({reinterpret_cast<const char*>(data), size});
    Report report;
    std::string error;
    if (!ReadJsonReport(*file, report, error)) {
        // It says why, and shows nothing of what the text holds.
        constexpr std::size_t kLongestError = 2000;
        Require(!error.empty() && error.size() < kLongestError, "no error to be shown");
        for (const char byte : error) Require(byte >= ' ' && byte <= '~', "a text in the error");
        return 0;
    }
    CheckRoundTrip(report);
    CheckJoined(report);
    CheckJunit(report);
    CheckPage(report);
    return 0;
}
