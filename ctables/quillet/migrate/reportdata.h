// What a migration knows about each file, and in all: plain data.
#ifndef QUILLET_MIGRATE_REPORTDATA_H
#define QUILLET_MIGRATE_REPORTDATA_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>
#include <vector>

#include "migrate/shard.h"
#include "quillet.h"

namespace quillet::migrate {

class StoredFile;

enum class FileOutcome {
    kConverted,  ///< All its commands went well, also when there were none to convert.
    kPartly,     ///< Some of its commands could not be converted.
    kStopped,    ///< A text that is no syntax ended its conversion.
    kCopied,
    kSkipped,
    kFailed,  ///< It could not be read or its result not be written.
};

/// The name that reports use.
[[nodiscard]] std::string_view NameOf(FileOutcome outcome);
[[nodiscard]] std::optional<FileOutcome> FileOutcomeOf(std::string_view name);

/// What became of the result of a file.
enum class ResultState {
    kNone,  ///< There is none: the file was skipped, or failed.
    kNew,   ///< Made by this run; a dry run would make it.
    kKept,  ///< It stood already, and was what this run would have made, or accepted as it is.
    /// It stood already and no run has made what it holds now, so that it was left alone.
    kEdited,
    kOrphaned,  ///< It stands, but its source is gone.
};

/// The name that reports use; empty for `kNone`.
[[nodiscard]] std::string_view NameOf(ResultState state);
[[nodiscard]] std::optional<ResultState> ResultStateOf(std::string_view name);

/// The name that reports use.
[[nodiscard]] std::string_view NameOf(CommandOutcome outcome);
/// True for the names of those outcomes that a command in a report can have: copied ones are only
/// counted.
[[nodiscard]] bool IsOutcomeInReport(std::string_view name);

/// True when a result stood already and this run did not touch it.
[[nodiscard]] bool IsLeftAlone(ResultState state);

/// Everything about one file but its commands. Texts are UTF-8, the path excepted.
struct FileFacts {
    std::string path;  ///< Relative, bytes, "/" between folders.
    FileOutcome outcome = FileOutcome::kFailed;
    ResultState result = ResultState::kNone;
    /// Since the result was made or accepted the source has changed, but the result was edited.
    bool hasSourceChanged = false;
    bool isLinkNotFollowed = false;  ///< It was skipped because of a link in SOURCE or TARGET.
    std::uint64_t bytes = 0;
    std::int64_t modified = 0;  ///< Seconds since 1970.
    std::string encoding;       ///< Empty for what was not converted.
    std::int64_t lines = 0;
    // Numbers of commands.
    std::int64_t copied = 0;
    std::int64_t converted = 0;
    std::int64_t failed = 0;
    std::int64_t unreadable = 0;
    std::int64_t warnings = 0;
    std::string message;              ///< Why it was skipped or failed, or its result left alone.
    std::vector<std::string> errors;  ///< The reasons of its failed commands, sorted, once each.

    friend bool operator==(const FileFacts&, const FileFacts&) = default;
};

/// A number that is known about a file, under the name that it has wherever it is written.
struct FileNumber {
    const char* pName = nullptr;
    std::int64_t FileFacts::*pMember = nullptr;
    bool isSummed = false;  ///< Reports show how many there are in all files.
};

/// In the order in which they are written.
inline constexpr std::array<FileNumber, 6> kFileNumbers = {{
    {"lines", &FileFacts::lines, false},
    {"copied", &FileFacts::copied, true},
    {"converted", &FileFacts::converted, true},
    {"failed", &FileFacts::failed, true},
    {"unreadable", &FileFacts::unreadable, true},
    {"warnings", &FileFacts::warnings, true},
}};

/// The number of all commands of the file.
[[nodiscard]] std::int64_t CommandCountOf(const FileFacts& facts);

/// True when the file has commands that would stand in a report.
[[nodiscard]] bool HasCommands(const FileFacts& facts);

/// Turns the facts into those of a file that failed, and tells why.
void MarkAsFailed(FileFacts& facts, std::string_view what, const std::error_code& error);

/// Where the commands of a file stand as the text of a JSON array.
struct CommandsPlace {
    const StoredFile* pFile = nullptr;  ///< Borrowed; null when there are none.
    std::uint64_t offset = 0;           ///< In bytes.
    std::uint64_t length = 0;
};

struct FileEntry {
    FileFacts facts;
    CommandsPlace commands;
};

/// One command that was not just copied. Texts are UTF-8.
struct CommandFacts {
    std::string type;
    std::string outcome;
    std::int64_t firstLine = 0;
    std::int64_t lastLine = 0;
    std::string source;
    std::string generated;
    std::string error;
    std::int64_t errorLine = 0;
    std::int64_t errorColumn = 0;
    std::string message;
    std::vector<std::string> warnings;
};

struct Totals {
    std::int64_t files = 0;
    std::int64_t filesConverted = 0;
    std::int64_t filesPartly = 0;
    std::int64_t filesStopped = 0;
    // These are counted under their outcomes as well.
    std::int64_t filesKept = 0;      ///< Their results were left alone, edited or not.
    std::int64_t filesEdited = 0;    ///< Those of them that were edited.
    std::int64_t filesOutdated = 0;  ///< Those of the edited whose sources have changed since.
    std::int64_t filesOrphaned = 0;
    std::int64_t filesCopied = 0;
    std::int64_t filesSkipped = 0;
    std::int64_t filesFailed = 0;
    std::int64_t linksNotFollowed = 0;  ///< Counted under its outcome as well.
    std::uint64_t bytes = 0;
    std::int64_t commands = 0;
    std::int64_t commandsCopied = 0;
    std::int64_t commandsConverted = 0;
    std::int64_t commandsFailed = 0;
    std::int64_t commandsUnreadable = 0;
    std::int64_t warnings = 0;
};

/// One of the totals, under the name that it has in reports.
struct TotalNumber {
    const char* pName = nullptr;
    std::variant<std::int64_t Totals::*, std::uint64_t Totals::*> member;
};

/// In the order in which they are written.
inline constexpr std::array<TotalNumber, 19> kTotalNumbers = {{
    {"files", &Totals::files},
    {"filesConverted", &Totals::filesConverted},
    {"filesPartly", &Totals::filesPartly},
    {"filesStopped", &Totals::filesStopped},
    {"filesKept", &Totals::filesKept},
    {"filesEdited", &Totals::filesEdited},
    {"filesOutdated", &Totals::filesOutdated},
    {"filesOrphaned", &Totals::filesOrphaned},
    {"filesCopied", &Totals::filesCopied},
    {"filesSkipped", &Totals::filesSkipped},
    {"filesFailed", &Totals::filesFailed},
    {"linksNotFollowed", &Totals::linksNotFollowed},
    {"bytes", &Totals::bytes},
    {"commands", &Totals::commands},
    {"commandsCopied", &Totals::commandsCopied},
    {"commandsConverted", &Totals::commandsConverted},
    {"commandsFailed", &Totals::commandsFailed},
    {"commandsUnreadable", &Totals::commandsUnreadable},
    {"warnings", &Totals::warnings},
}};

/// About the run as a whole. `source` and `target` are bytes.
struct RunFacts {
    std::string source;
    std::string target;
    bool batchMode = false;
    bool dryRun = false;
    bool isInterrupted = false;  ///< Only a part of the files was looked at.
    std::optional<Shard> shard;
    std::int64_t started = 0;  ///< Seconds since 1970.
    double seconds = 0;
};

struct Report {
    RunFacts run;
    std::vector<FileEntry> files;
};

[[nodiscard]] Totals TotalsOf(const std::vector<FileEntry>& files);

/// Puts the files into the order of the bytes of their paths.
void SortByPath(std::vector<FileEntry>& files);

/// One of exitstatus.h. What needs a person are commands that could not be converted, files that
/// were stopped, edited results whose sources have changed, and links that were not followed.
[[nodiscard]] int ExitStatusOf(const Totals& totals);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_REPORTDATA_H
