// Writes a report in all its forms.
#ifndef QUILLET_MIGRATE_REPORTFILES_H
#define QUILLET_MIGRATE_REPORTFILES_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "migrate/reportdata.h"
#include "migrate/targetfolder.h"
#include "platform/folder.h"

namespace quillet::migrate {

/// The file that `--junit` names. Its folder is held from the start of a run to its end.
struct JunitFile {
    std::shared_ptr<const Folder> folder;
    std::string name;  ///< In the folder.
    std::string path;  ///< As people are told.
};

/// Opens the folder of the file that the user has named, over links if need be. False with
/// `problem` set, a whole sentence, when no file can be written there.
[[nodiscard]] bool OpenJunitFile(const std::string& path, JunitFile& file, std::string& problem);

/// What is added to the report's name for reports that tell less than the results that stand,
/// those of dry runs and of runs that were stopped: they never take the place of a whole one.
[[nodiscard]] std::string ReportSuffixOf(const RunFacts& run);

/// What is beside the report to be told and written.
struct ReportWriting {
    const std::optional<JunitFile>& junit;
    unsigned threads = 1;  ///< May be at work; more than two are of no use.
};

/// Writes the JSON file, the list of commands and the page into the folder and, if there is to be
/// one, the JUnit file. Where the page would be too large it is an index and its parts; parts of an
/// earlier report that are not among them go. None takes its name before all of these are written,
/// nor the JUnit file before they have theirs. False with
/// `error` set, a whole sentence, when that fails. `offsets` gets, for each file, where its arrays
/// begin in the JSON file.
[[nodiscard]] bool WriteReportFiles(const Report& report, const TargetFolder& target,
                                    const ReportWriting& writing,
                                    std::vector<ArrayOffsets>& offsets, std::string& error);

/// Removes the report of a run that was stopped, where there is one: what it tells is told by a
/// whole one now.
void RemoveInterruptedReport(const TargetFolder& target);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_REPORTFILES_H
