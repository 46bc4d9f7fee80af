#include "migrate/reportfiles.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <numeric>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "migrate/csvreport.h"
#include "migrate/htmlreport.h"
#include "migrate/jsonreport.h"
#include "migrate/junitreport.h"
#include "migrate/pageparts.h"
#include "migrate/systemfiles.h"
#include "platform/process.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kDryRun = "-dry-run";
constexpr std::string_view kInterrupted = "-interrupted";

// One form of the report on its way to its name.
class ReportFile {
public:
    // `path` is what people are told.
    ReportFile(std::shared_ptr<const Folder> folder, std::string name, std::string path,
               std::string temporaryName)
        : m_folder(std::move(folder)),
          m_name(std::move(name)),
          m_path(std::move(path)),
          m_temporaryName(std::move(temporaryName)) {}

    [[nodiscard]] bool Write(const std::function<bool(TextOutput&)>& write, std::string& error) {
        std::error_code openError;
        m_file = NewFile::Create(m_folder, m_temporaryName, openError);
        if (m_file == nullptr) return Fail(openError, error);
        return write(*m_file) || Fail(m_file->Error(), error);
    }

    // After this it is on its medium, and closed, without its name.
    [[nodiscard]] bool Finish(std::string& error) {
        return (m_file->Complete(DefaultPermissions()) && m_file->Sync()) ||
               Fail(m_file->Error(), error);
    }

    [[nodiscard]] bool Publish(std::string& error) {
        return m_file->Publish(m_name) || Fail(m_file->Error(), error);
    }

    [[nodiscard]] bool Commit(std::string& error) { return Finish(error) && Publish(error); }

private:
    [[nodiscard]] bool Fail(const std::error_code& code, std::string& error) const {
        error = "The report " + m_path + " cannot be written: " +
                (code ? code.message() : "what it is made of cannot be read");
        return false;
    }

    std::shared_ptr<const Folder> m_folder;
    std::string m_name;
    std::string m_path;
    std::string m_temporaryName;
    std::unique_ptr<NewFile> m_file;
};

ReportFile FileOfTarget(const TargetFolder& target, const std::string& suffix,
                        const std::string& extension) {
    const std::string ending = suffix + "." + extension;
    return {target.RootFolder(), target.ReportName(ending), target.ReportPath(ending),
            target.TemporaryName(extension)};
}

// What the files of a page may take. The page itself is on every part and, as whoever saves
// sign-offs saves all of them, so are these: to spread a report makes no page smaller by them.
std::uint64_t RoomForFiles(const Report& report) {
    constexpr std::uint64_t kBytesOfRun = 100'000;
    constexpr std::uint64_t kMostEscaped = 6;
    const std::uint64_t others =
        ReportPage().size() + AllSignOffsJson(report).size() + kBytesOfRun +
        (report.run.source.size() + report.run.target.size()) * kMostEscaped;
    return kMostPageBytes - std::min(others, kMostPageBytes / 2);
}

// More bytes than the file takes on a page.
std::uint64_t MostBytesOf(const FileEntry& file) {
    // One of a text becomes up to six.
    constexpr std::uint64_t kMostEscaped = 6;
    constexpr std::uint64_t kBytesOfNumbers = 4000;
    constexpr std::uint64_t kBytesOfLine = 20;
    std::uint64_t texts = file.commands.length + file.findings.length + file.macros.length +
                          file.facts.path.size() * 4 + file.facts.message.size();
    for (const FileText& text : kReadingTexts) texts += (file.facts.*text.pMember).size();
    for (const SignOff& signOff : file.signOffs) texts += signOff.remark.size() + kBytesOfNumbers;
    const std::uint64_t lines =
        file.changes.mended.size() + file.changes.failing.size() + file.changes.gone.size();
    return texts * kMostEscaped + lines * kBytesOfLine + kBytesOfNumbers;
}

// Sets `parts` where the files take too much for one page. False, too, when their texts cannot be
// read, which whoever writes them will find.
bool IsTooLargeForOnePage(const Report& report, const ReportDigest& digest, PageParts& parts) {
    const std::uint64_t room = RoomForFiles(report);
    // Most reports are so small that no bytes need to be counted.
    std::uint64_t most = 0;
    for (const FileEntry& file : report.files) most += MostBytesOf(file);
    std::vector<std::uint64_t> bytes;
    if (most <= room || !MeasureFiles(report, digest, bytes)) return false;
    if (std::accumulate(bytes.begin(), bytes.end(), std::uint64_t{0}) <= room) return false;
    parts = PartsOf(report, bytes, room);
    return true;
}

// A part of an earlier report, but not a file that somebody else has given such a name.
bool IsPart(const Folder& folder, const std::string& name) {
    std::error_code error;
    const std::unique_ptr<StoredFile> file = StoredFile::Open(folder, name, error);
    if (file == nullptr) return false;
    std::string start(kMostBytesBeforeMark, ' ');
    return file->ReadAt(0, start.data(), start.size()) > 0 &&
           start.find(kPageMark) != std::string::npos;
}

// Those that are not among `kept`. What cannot be removed does no harm.
void RemoveParts(const TargetFolder& target, const std::string& suffix,
                 const std::set<std::string>& kept) {
    const std::string start = target.ReportName(suffix + std::string(kPartNameStart));
    const Folder& folder = *target.RootFolder();
    std::vector<std::string> names;
    std::error_code ignored;
    static_cast<void>(folder.List(names, ignored));
    for (const std::string& name : names) {
        if (name.starts_with(start) && name.ends_with(".html") && !kept.contains(name) &&
            IsPart(folder, name)) {
            static_cast<void>(folder.Remove(name, ignored));
        }
    }
}

// The page or, where that would be too large, an index and its parts.
class ReportPages {
public:
    ReportPages(const TargetFolder& target, std::string suffix)
        : m_target(target),
          m_suffix(std::move(suffix)),
          m_page(FileOfTarget(target, m_suffix, "html")) {}

    [[nodiscard]] bool Write(const Report& report, const ReportDigest& digest, std::string& error) {
        PageParts parts;
        if (IsTooLargeForOnePage(report, digest, parts)) {
            return WriteSplit(report, digest, parts, error);
        }
        return m_page.Write(
            [&](TextOutput& output) {
                return WriteHtmlReport(report, digest, ReportPage(), output);
            },
            error);
    }

    // The index comes last, for it leads to the parts.
    [[nodiscard]] bool Commit(std::string& error) {
        if (!m_page.Finish(error)) return false;
        for (ReportFile& part : m_parts) {
            if (!part.Publish(error)) return false;
        }
        if (!m_page.Publish(error)) return false;
        RemoveParts(m_target, m_suffix, m_partNames);
        return true;
    }

private:
    [[nodiscard]] bool WriteSplit(const Report& report, const ReportDigest& digest,
                                  const PageParts& parts, std::string& error) {
        const std::string pageName = m_target.ReportName(m_suffix + ".html");
        const SplitReport split(report, digest, parts, pageName);
        for (std::size_t part = 0; part < parts.parts.size(); ++part) {
            const std::string name = split.NameOfPart(part);
            m_partNames.insert(name);
            ReportFile& file =
                m_parts.emplace_back(m_target.RootFolder(), name, JoinPath(m_target.Root(), name),
                                     m_target.TemporaryName("part-" + std::to_string(part)));
            // There may be more of them than files can be open at a time.
            const auto write = [&split, part](TextOutput& output) {
                return split.WritePart(part, ReportPage(), output);
            };
            if (!file.Write(write, error) || !file.Finish(error)) return false;
        }
        const auto write = [&split](TextOutput& output) {
            return split.WriteIndex(ReportPage(), output);
        };
        return m_page.Write(write, error);
    }

    const TargetFolder& m_target;
    std::string m_suffix;
    ReportFile m_page;
    std::vector<ReportFile> m_parts;
    std::set<std::string> m_partNames;
};

// The folders were looked at when the run began, but they may have been moved since.
bool MayBeWritten(const TargetFolder& target, const std::optional<JunitFile>& junit,
                  std::string& error) {
    FolderProblem problem;
    if (target.OpenFolder({}, problem) == nullptr) {
        error =
            "The report " + target.ReportPath(".json") + " cannot be written: " + problem.message;
        return false;
    }
    // A single file may have the report beside it.
    if (!junit || !target.Source().withAllBelow) return true;
    std::error_code code;
    const bool isInSource = BelongsToSource(*junit->folder, target.Source(), code);
    if (!isInSource && !code) return true;
    error = "The report " + junit->path +
            " cannot be written: " + (isInSource ? "it would lie in SOURCE" : code.message());
    return false;
}

}  // namespace

bool OpenJunitFile(const std::string& path, JunitFile& file, std::string& problem) {
    std::error_code error;
    file.path = ResolvePath(path, error);
    file.name = NamePartOf(file.path);
    if (!error) file.folder = Folder::Open(FolderOf(file.path), error);
    FileStatus status;
    std::error_code statusError;
    if (error) {
        problem = "--junit " + path + ": " + error.message();
    } else if (file.name.empty() || (file.folder->ReadStatus(file.name, status, statusError) &&
                                     status.kind != FileKind::kFile)) {
        problem = "--junit " + path + " is not a regular file";
    }
    return problem.empty();
}

std::string ReportSuffixOf(const RunFacts& run) {
    return std::string(run.isInterrupted ? kInterrupted : run.dryRun ? kDryRun : "");
}

void RemoveInterruptedReport(const TargetFolder& target) {
    for (const char* pExtension : {".json", ".html", ".csv"}) {
        const std::string name = target.ReportName(std::string(kInterrupted) + pExtension);
        std::error_code ignored;
        static_cast<void>(target.RootFolder()->Remove(name, ignored));
    }
    RemoveParts(target, std::string(kInterrupted), {});
}

bool WriteReportFiles(const Report& report, const TargetFolder& target,
                      const ReportWriting& writing, std::vector<ArrayOffsets>& offsets,
                      std::string& error) {
    const std::optional<JunitFile>& junit = writing.junit;
    if (!MayBeWritten(target, junit, error)) return false;
    const std::string suffix = ReportSuffixOf(report.run);
    ReportFile json = FileOfTarget(target, suffix, "json");
    ReportPages pages(target, suffix);
    ReportFile list = FileOfTarget(target, suffix, "csv");
    const auto writeJson = [&] {
        return json.Write(
            [&](TextOutput& output) { return WriteJsonReport(report, output, &offsets); }, error);
    };
    std::string pageError;
    // What the list finds out about all commands is told by the page.
    const auto writePages = [&] {
        ReportDigest digest;
        return list.Write(
                   [&](TextOutput& output) { return WriteCsvReport(report, output, digest); },
                   pageError) &&
               pages.Write(report, digest, pageError);
    };
    // With many processors at work these two would be what takes longest.
    const std::launch policy =
        writing.threads > 1 ? std::launch::async | std::launch::deferred : std::launch::deferred;
    std::future<bool> pagesResult = std::async(policy, writePages);
    const bool isJsonWritten = writeJson();
    const bool arePagesWritten = pagesResult.get();
    if (isJsonWritten && !arePagesWritten) error = pageError;
    if (!isJsonWritten || !arePagesWritten || !MayBeWritten(target, junit, error) ||
        !json.Commit(error) || !list.Commit(error) || !pages.Commit(error)) {
        return false;
    }
    if (!junit) return true;
    ReportFile junitReport(junit->folder, junit->name, junit->path, target.TemporaryName("junit"));
    const auto writeJunit = [&report](TextOutput& output) {
        return WriteJunitReport(report, output);
    };
    return junitReport.Write(writeJunit, error) && junitReport.Commit(error);
}

}  // namespace quillet::migrate
