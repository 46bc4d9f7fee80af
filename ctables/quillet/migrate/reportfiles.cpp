#include "migrate/reportfiles.h"

#include <functional>
#include <future>
#include <memory>
#include <system_error>
#include <utility>

#include "migrate/csvreport.h"
#include "migrate/htmlreport.h"
#include "migrate/jsonreport.h"
#include "migrate/junitreport.h"
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

    [[nodiscard]] bool Commit(std::string& error) {
        return m_file->Commit(m_name, DefaultPermissions()) || Fail(m_file->Error(), error);
    }

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
}

bool WriteReportFiles(const Report& report, const TargetFolder& target,
                      const ReportWriting& writing, std::vector<ArrayOffsets>& offsets,
                      std::string& error) {
    const std::optional<JunitFile>& junit = writing.junit;
    if (!MayBeWritten(target, junit, error)) return false;
    const std::string suffix = ReportSuffixOf(report.run);
    ReportFile json = FileOfTarget(target, suffix, "json");
    ReportFile page = FileOfTarget(target, suffix, "html");
    ReportFile list = FileOfTarget(target, suffix, "csv");
    const auto writeJson = [&] {
        return json.Write(
            [&](TextOutput& output) { return WriteJsonReport(report, output, &offsets); }, error);
    };
    std::string pageError;
    // What the list finds out about all commands is told by the page.
    const auto writePage = [&] {
        ReportDigest digest;
        return list.Write(
                   [&](TextOutput& output) { return WriteCsvReport(report, output, digest); },
                   pageError) &&
               page.Write(
                   [&](TextOutput& output) {
                       return WriteHtmlReport(report, digest, ReportPage(), output);
                   },
                   pageError);
    };
    // With many processors at work these two would be what takes longest.
    const std::launch policy =
        writing.threads > 1 ? std::launch::async | std::launch::deferred : std::launch::deferred;
    std::future<bool> pageResult = std::async(policy, writePage);
    const bool isJsonWritten = writeJson();
    const bool isPageWritten = pageResult.get();
    if (isJsonWritten && !isPageWritten) error = pageError;
    if (!isJsonWritten || !isPageWritten || !MayBeWritten(target, junit, error) ||
        !json.Commit(error) || !list.Commit(error) || !page.Commit(error)) {
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
