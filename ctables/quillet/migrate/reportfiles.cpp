#include "migrate/reportfiles.h"

#include <functional>
#include <future>
#include <memory>
#include <system_error>
#include <utility>

#include "migrate/htmlreport.h"
#include "migrate/jsonreport.h"
#include "migrate/junitreport.h"
#include "migrate/systemfiles.h"

namespace quillet::migrate {

namespace {

// One form of the report on its way to its name.
class ReportFile {
public:
    ReportFile(std::string path, std::string temporaryName)
        : m_path(std::move(path)), m_temporaryName(std::move(temporaryName)) {}

    [[nodiscard]] bool Write(const std::function<bool(TextOutput&)>& write, std::string& error) {
        std::error_code openError;
        m_file = NewFile::Create(FolderOf(m_path), m_temporaryName, openError);
        if (m_file == nullptr) return Fail(openError, error);
        return write(*m_file) || Fail(m_file->Error(), error);
    }

    [[nodiscard]] bool Commit(std::string& error) {
        return m_file->Commit(m_path, DefaultPermissions()) || Fail(m_file->Error(), error);
    }

private:
    [[nodiscard]] bool Fail(const std::error_code& code, std::string& error) const {
        error = "The report " + m_path + " cannot be written: " +
                (code ? code.message() : "what it is made of cannot be read");
        return false;
    }

    std::string m_path;
    std::string m_temporaryName;
    std::unique_ptr<NewFile> m_file;
};

}  // namespace

bool WriteReportFiles(const Report& report, const TargetFolder& target,
                      const std::string& junitPath, unsigned threads, std::string& error) {
    ReportFile json(target.ReportPath(".json"), target.TemporaryName("json"));
    ReportFile page(target.ReportPath(".html"), target.TemporaryName("html"));
    const auto writeJson = [&] {
        return json.Write([&report](TextOutput& output) { return WriteJsonReport(report, output); },
                          error);
    };
    std::string pageError;
    const auto writePage = [&] {
        return page.Write(
            [&report](TextOutput& output) { return WriteHtmlReport(report, ReportPage(), output); },
            pageError);
    };
    // With many processors at work these two would be what takes longest.
    const std::launch policy =
        threads > 1 ? std::launch::async | std::launch::deferred : std::launch::deferred;
    std::future<bool> pageResult = std::async(policy, writePage);
    const bool isJsonWritten = writeJson();
    const bool isPageWritten = pageResult.get();
    if (isJsonWritten && !isPageWritten) error = pageError;
    if (!isJsonWritten || !isPageWritten || !json.Commit(error) || !page.Commit(error)) {
        return false;
    }
    if (junitPath.empty()) return true;
    ReportFile junit(junitPath, target.TemporaryName("junit"));
    const auto writeJunit = [&report](TextOutput& output) {
        return WriteJunitReport(report, output);
    };
    return junit.Write(writeJunit, error) && junit.Commit(error);
}

}  // namespace quillet::migrate
