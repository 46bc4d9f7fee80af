// Brings one file after the other from the source to the target.
#ifndef QUILLET_MIGRATE_FILEMIGRATION_H
#define QUILLET_MIGRATE_FILEMIGRATION_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "migrate/commandspool.h"
#include "migrate/filetree.h"
#include "migrate/journal.h"
#include "migrate/progress.h"
#include "migrate/reportdata.h"
#include "migrate/systemfiles.h"
#include "migrate/targetfolder.h"

namespace quillet::migrate {

/// One thing to be done.
struct FileTask {
    TreeEntry entry;
    bool isConverted = true;  ///< Its name is one of those to be converted; else it is copied.
};

/// What all files of a run have in common. Everything is borrowed, and safe for threads.
struct MigrationContext {
    const Folder& sourceRoot;
    const TargetFolder& target;
    const EarlierFacts& earlier;
    Journal& journal;
    ProgressCounters& progress;
    bool copiesOthers = false;
    bool batchMode = false;
    bool isDryRun = false;
    bool replacesNewer = false;
};

/// True when the result, which has `result` as its status, stands for this state of its source.
/// One that is just as old does: the clock of a file system may be coarse.
[[nodiscard]] bool IsResultCurrent(const FileStatus& source, const FileStatus& result);

/// Works on one file at a time; each thread has one of its own.
class FileMigration {
public:
    /// `worker` tells the threads apart.
    FileMigration(const MigrationContext& context, unsigned worker);

    /// Does it, whatever happens, and notes the outcome in the journal.
    void Run(const FileTask& task);

private:
    void Migrate(const FileTask& task);
    void MigrateOpened(const FileTask& task, SourceFile& source);
    [[nodiscard]] bool FindResultFolder();
    [[nodiscard]] bool StandsAlready(const SourceFile& source) const;
    [[nodiscard]] bool TakeEarlierFacts(const SourceFile& source);
    void Convert(SourceFile& source);
    void NoteOutcome(Outcome outcome, SourceFile& source, const NewFile* pResult);
    void Copy(SourceFile& source);
    [[nodiscard]] bool WritesNothing() const { return m_context.isDryRun || m_facts.isKept; }
    [[nodiscard]] std::unique_ptr<NewFile> CreateResult();
    void CommitResult(const SourceFile& source, NewFile& result);
    void SkipLink(std::string_view message);
    void Fail(std::string_view what, const std::error_code& error = {});
    void Finish(const FileTask& task);

    const MigrationContext& m_context;
    std::string m_temporaryPurpose;
    // The file in work.
    FileFacts m_facts;
    std::shared_ptr<const Folder> m_resultFolder;  // null when there is none:
    std::error_code m_resultFolderError;           // this is why
    CommandSpool m_commands;
    std::optional<FileEntry> m_earlierEntry;
    std::uint64_t m_bytesCounted = 0;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_FILEMIGRATION_H
