// Brings one file after the other from the source to the target.
#ifndef QUILLET_MIGRATE_FILEMIGRATION_H
#define QUILLET_MIGRATE_FILEMIGRATION_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "migrate/arrayspool.h"
#include "migrate/encodings.h"
#include "migrate/filetree.h"
#include "migrate/includedtexts.h"
#include "migrate/journal.h"
#include "migrate/layouts.h"
#include "migrate/legacysearch.h"
#include "migrate/macrocalls.h"
#include "migrate/progress.h"
#include "migrate/reportdata.h"
#include "migrate/resultoptions.h"
#include "migrate/resultpublisher.h"
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
    const EarlierResults& earlier;
    Journal& journal;
    ResultPublisher& publisher;
    ProgressCounters& progress;
    Encodings& encodings;
    const EncodingRules& encodingRules;
    ResultOptions options;
    const LayoutRules& layoutRules;
    IncludedTexts& includes;
    const MacroCalls& macroCalls;
    /// Whether the source holds the file that a path, in UTF-8, means in a file; may be empty.
    std::function<bool(std::string_view path, std::string_view includingFile)> hasFile;
    bool copiesOthers = false;
    bool copiesUnconverted = false;  ///< Files that have nothing to convert.
    bool isDryRun = false;
    bool replacesAll = false;    ///< Whatever stands in TARGET.
    bool acceptsEdited = false;  ///< From now on edited results are as they should be.
};

/// Works on one file at a time; each thread has one of its own.
class FileMigration {
public:
    /// `worker` tells the threads apart.
    FileMigration(const MigrationContext& context, unsigned worker);

    /// Does it, whatever happens, and notes the outcome in the journal, for results that have yet
    /// to be published when that is done.
    void Run(const FileTask& task);

private:
    enum class Action { kConvert, kCopy };
    enum class Standing { kNothing, kFile, kUnreadable };

    void Migrate(const FileTask& task);
    void MigrateOpened(const FileTask& task, SourceFile& source);
    [[nodiscard]] bool ChooseEncoding(SourceFile& source, Content content);
    [[nodiscard]] const Encoding* NamedEncoding(SourceFile& source, std::string& name);
    [[nodiscard]] bool FindResultFolder();
    [[nodiscard]] Standing HashStandingResult();
    void Judge(SourceFile& source);
    void JudgeUnknown(SourceFile& source);
    [[nodiscard]] bool IsUpToDate(const JournalRecord& record) const;
    [[nodiscard]] bool TakeRecorded(const JournalRecord& record);

    void Make(SourceFile& source);
    [[nodiscard]] bool MakeInto(NewFile* pResult, SourceFile& source, ContentHash& made);
    [[nodiscard]] bool ConvertInto(NewFile* pResult, SourceFile& source, ContentHash& made);
    [[nodiscard]] bool CopyInto(NewFile* pResult, SourceFile& source, ContentHash& made);
    [[nodiscard]] Outcome Convert(TextInput& input, TextOutput& output);
    [[nodiscard]] Outcome ConvertWhole(std::string text, TextOutput& output, bool endsLinesInCr);
    [[nodiscard]] MacroExpansion ExpandIn(const std::string& text, const Options& options);
    [[nodiscard]] FindOptions SearchOptions(const Options& options, bool endsLinesInCr,
                                            const FindingEncoding& encoding) const;
    [[nodiscard]] Options ChooseLayoutFor(const std::string& text);
    [[nodiscard]] bool EndsAtBlankLines(const Options& options);
    void ForgetUnconverted();
    [[nodiscard]] bool IsWritten(Outcome outcome, NewFile* pResult, SourceFile& source);
    [[nodiscard]] bool IsSourceWhole(SourceFile& source);
    [[nodiscard]] bool HasResult() const;
    void LeaveStanding();

    void SkipLink(std::string_view message);
    void Fail(std::string_view what, const std::error_code& error = {});
    void Finish(const FileTask& task);
    void FinishResult();

    const MigrationContext& m_context;
    std::string m_temporaryPurpose;
    std::uint64_t m_temporaryNumber = 0;  // for several wait for their names at a time
    // The file in work.
    FileFacts m_facts;
    std::shared_ptr<const Folder> m_resultFolder;  // null when there is none:
    std::error_code m_resultFolderError;           // this is why
    Action m_action = Action::kConvert;
    std::shared_ptr<const CodePage> m_namedCodePage;  // null for that of the user's locale
    std::string m_encodingName;                       // of it; empty as long as it is null
    std::string m_encodingReason;                     // why it is that one
    std::optional<ByteOrder> m_byteOrder;             // of UTF-16
    bool m_isInvalidUtf16 = false;
    ResultIdentity
        m_identity;  // of the result that was made or, before that, of the one that stands
    ArraySpool m_commands;
    ArraySpool m_findings;
    ArraySpool m_macros;
    std::vector<IncludeLookup> m_includes;
    std::unique_ptr<NewFile> m_newResult;    // complete, but without its name
    std::optional<FinishedFile> m_recorded;  // what was taken from a record
    std::uint64_t m_bytesCounted = 0;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_FILEMIGRATION_H
