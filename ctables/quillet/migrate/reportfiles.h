// Writes a report in all its forms.
#ifndef QUILLET_MIGRATE_REPORTFILES_H
#define QUILLET_MIGRATE_REPORTFILES_H

#include <memory>
#include <optional>
#include <string>

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

/// Writes the JSON file and the page into the folder and, if there is to be one, the JUnit file.
/// None takes its name before those of the folder are whole. False with `error` set, a whole
/// sentence, when that fails. `threads` may be at work, of which more than two are of no use.
[[nodiscard]] bool WriteReportFiles(const Report& report, const TargetFolder& target,
                                    const std::optional<JunitFile>& junit, unsigned threads,
                                    std::string& error);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_REPORTFILES_H
