// What a migration knows about each file, and in all: plain data.
#ifndef QUILLET_MIGRATE_REPORTDATA_H
#define QUILLET_MIGRATE_REPORTDATA_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <variant>
#include <vector>

#include "migrate/shard.h"
#include "quillet.h"

namespace quillet::migrate {

class StoredFile;

/// From bad to good: the first that fits is that of a file.
enum class FileOutcome {
    kFailed,       ///< It could not be read or its result not be written.
    kStopped,      ///< A text that is no syntax ended its conversion.
    kOverlooked,   ///< A legacy command was not seen by the conversion.
    kUnconverted,  ///< None of its legacy commands could be converted.
    kPartly,       ///< Some of them could not be converted.
    kChanged,      ///< All were converted, but other text was lost or joined.
    kConverted,    ///< All its legacy commands were converted.
    kNothing,      ///< There is no legacy command in it; copied, if at all.
    kCopied,       ///< Not looked at.
    kSkipped,
};

/// The name that reports use.
[[nodiscard]] std::string_view NameOf(FileOutcome outcome);
[[nodiscard]] std::optional<FileOutcome> FileOutcomeOf(std::string_view name);

/// True when the file was converted, however well, so that its commands are in the report.
[[nodiscard]] bool IsOfConversion(FileOutcome outcome);

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

/// The name that reports use.
[[nodiscard]] std::string_view NameOf(FindingKind kind);
[[nodiscard]] std::optional<FindingKind> FindingKindOf(std::string_view name);

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
    // How it was read, and why so; all are empty for what was not converted.
    std::string encoding;
    std::string encodingReason;
    std::string layout;
    std::string layoutReason;
    std::string blankLines;
    std::string blankLinesReason;
    std::int64_t lines = 0;
    // Numbers of commands. Each legacy command is counted once: those that were found are the sum
    // of those converted, failed, unreadable and overlooked.
    std::int64_t copied = 0;
    std::int64_t found = 0;
    std::int64_t converted = 0;
    std::int64_t failed = 0;
    std::int64_t unreadable = 0;
    std::int64_t overlooked = 0;
    std::int64_t listed = 0;  ///< Those that the report shows because they were not copied.
    std::int64_t warnings = 0;
    // Numbers of findings that are about no legacy command.
    std::int64_t changed = 0;
    std::int64_t told = 0;
    // What the report tells of macros.
    std::int64_t fromMacros = 0;    ///< Those found that come from expansions.
    std::int64_t listedMacros = 0;  ///< Macros that the report shows.
    std::int64_t macroCalls = 0;    ///< Calls of them that give legacy commands, or are left.
    std::int64_t macroCallsConverted = 0;  ///< All that they give can be converted.
    std::int64_t macroCallsFailed = 0;     ///< Something that they give cannot.
    std::int64_t macroCallsLeft = 0;       ///< They cannot be expanded.
    std::string message;              ///< Why it was skipped or failed, or its result left alone.
    std::vector<std::string> errors;  ///< The reasons of its failed commands, sorted, once each.
    std::vector<std::string> codes;   ///< Those of its findings, sorted, once each.

    friend bool operator==(const FileFacts&, const FileFacts&) = default;
};

/// A number that is known about a file, under the name that it has wherever it is written.
struct FileNumber {
    const char* pName = nullptr;
    std::int64_t FileFacts::*pMember = nullptr;
    bool isSummed = false;  ///< Reports show how many there are in all files.
    /// Records of version 0.1 have it.
    bool isInOldRecords = false;
    /// It is written only when it is not 0.
    bool isOptional = false;
};

/// In the order in which they are written.
inline constexpr std::array<FileNumber, 17> kFileNumbers = {{
    {"lines", &FileFacts::lines, false, true},
    {"copied", &FileFacts::copied, true, true},
    {"found", &FileFacts::found, true, false},
    {"converted", &FileFacts::converted, true, true},
    {"failed", &FileFacts::failed, true, true},
    {"unreadable", &FileFacts::unreadable, true, true},
    {"overlooked", &FileFacts::overlooked, true, false},
    {"listed", &FileFacts::listed, true, false},
    {"warnings", &FileFacts::warnings, true, true},
    {"changed", &FileFacts::changed, true, false},
    {"told", &FileFacts::told, true, false},
    {"fromMacros", &FileFacts::fromMacros, true, false, true},
    {"listedMacros", &FileFacts::listedMacros, true, false, true},
    {"macroCalls", &FileFacts::macroCalls, true, false, true},
    {"macroCallsConverted", &FileFacts::macroCallsConverted, true, false, true},
    {"macroCallsFailed", &FileFacts::macroCallsFailed, true, false, true},
    {"macroCallsLeft", &FileFacts::macroCallsLeft, true, false, true},
}};

/// A text of a few letters that tells how a file was read, under the name that it has wherever it
/// is written.
struct FileText {
    const char* pName = nullptr;
    std::string FileFacts::*pMember = nullptr;
    bool isInOldRecords = false;  ///< As with `FileNumber`.
};

/// In the order in which they are written.
inline constexpr std::array<FileText, 6> kReadingTexts = {{
    {"encoding", &FileFacts::encoding, true},
    {"encodingReason", &FileFacts::encodingReason, false},
    {"layout", &FileFacts::layout, false},
    {"layoutReason", &FileFacts::layoutReason, false},
    {"blankLines", &FileFacts::blankLines, false},
    {"blankLinesReason", &FileFacts::blankLinesReason, false},
}};

/// The number of all commands of the file.
[[nodiscard]] std::int64_t CommandCountOf(const FileFacts& facts);

/// True when the file has commands that would stand in a report.
[[nodiscard]] bool HasCommands(const FileFacts& facts);
/// The same of findings, and of macros.
[[nodiscard]] bool HasFindings(const FileFacts& facts);
[[nodiscard]] bool HasMacros(const FileFacts& facts);

/// True when every legacy command that was found has come to something, once.
[[nodiscard]] bool IsAccountedFor(const FileFacts& facts);

/// Adds a name to a list of names that is sorted and has each once.
void AddName(std::string_view name, std::vector<std::string>& names);

/// Forgets what is known about commands, findings and how the file was read.
void ForgetConversion(FileFacts& facts);

/// Gives `facts` the numbers of macros and calls that `known` has.
void TakeMacroNumbers(const FileFacts& known, FileFacts& facts);

/// Turns the facts into those of a file that failed, and tells why.
void MarkAsFailed(FileFacts& facts, std::string_view what, const std::error_code& error);

/// Where the commands of a file, its findings or its macros stand as the text of a JSON array.
struct ArrayPlace {
    const StoredFile* pFile = nullptr;  ///< Borrowed; null when there are none.
    std::uint64_t offset = 0;           ///< In bytes.
    std::uint64_t length = 0;
};

/// Where the arrays of a file begin in a JSON report, in bytes.
struct ArrayOffsets {
    std::uint64_t commands = 0;
    std::uint64_t findings = 0;
    std::uint64_t macros = 0;
};

/// Which of the commands of a file is meant: by its text, for its lines change with any other.
struct CommandKey {
    std::string hash;         ///< See `TextHashOf`.
    std::int64_t number = 0;  ///< Which of those with this text, from 1, by their lines.
    /// How many of the file have this text. With another number of them nobody knows which is
    /// which.
    std::int64_t copies = 1;

    friend bool operator==(const CommandKey&, const CommandKey&) = default;
    friend bool operator<(const CommandKey& left, const CommandKey& right) {
        return std::tie(left.hash, left.number, left.copies) <
               std::tie(right.hash, right.number, right.copies);
    }
};

/// What somebody has found out about a command.
enum class SignOffState {
    kChecked,  ///< It is right as it is.
    kMended,   ///< It was put right by hand.
};

/// The name that files use.
[[nodiscard]] std::string_view NameOf(SignOffState state);
[[nodiscard]] std::optional<SignOffState> SignOffStateOf(std::string_view name);

/// That somebody has looked at a command.
struct SignOff {
    CommandKey key;
    SignOffState state = SignOffState::kChecked;
    std::string remark;          ///< UTF-8; may be empty.
    std::int64_t firstLine = 0;  ///< Where the command stands, or last stood; 0 for not known.
};

/// Which legacy commands of a file came to something else than in the run before. Those that are
/// not converted have failed, are unreadable or were overlooked. Each list has the first lines of
/// commands, in order.
struct FileChanges {
    std::vector<std::int64_t> mended;   ///< Converted, and were not.
    std::vector<std::int64_t> failing;  ///< Not converted, but they were, or were not there.
    std::vector<std::int64_t> gone;     ///< Were not converted, and are not there any more.
};

/// The same in all files, as numbers.
struct ChangeSums {
    std::int64_t started = 0;  ///< When the run before began, in seconds since 1970.
    std::int64_t mended = 0;
    std::int64_t failing = 0;
    std::int64_t stillFailing = 0;  ///< Not converted, as before.
    std::int64_t gone = 0;          ///< Those of files that are not in the report, too.
};

/// One of these numbers, under the name that it has in reports.
struct ChangeNumber {
    const char* pName = nullptr;
    std::int64_t ChangeSums::*pSum = nullptr;
    std::vector<std::int64_t> FileChanges::*pLines = nullptr;  ///< Null for none.
};

/// In the order in which they are written.
inline constexpr std::array<ChangeNumber, 4> kChangeNumbers = {{
    {"mended", &ChangeSums::mended, &FileChanges::mended},
    {"new", &ChangeSums::failing, &FileChanges::failing},
    {"stillFailing", &ChangeSums::stillFailing, nullptr},
    {"gone", &ChangeSums::gone, &FileChanges::gone},
}};

struct FileEntry {
    FileFacts facts;
    ArrayPlace commands;
    ArrayPlace findings;
    ArrayPlace macros = {};
    std::vector<SignOff> signOffs = {};  ///< Of its commands, by their lines.
    FileChanges changes = {};
};

/// One that is about no command of the report.
struct OtherSignOff {
    std::string path;  ///< Bytes.
    SignOff signOff;
};

/// How reports name the commands that have to be converted, the legacy commands.
inline constexpr std::array<std::string_view, 2> kLegacyTypes = {"TABLES", "IGRAPH"};
inline constexpr std::string_view kTablesType = kLegacyTypes[0];
inline constexpr std::string_view kIgraphType = kLegacyTypes[1];
/// And any other that stands in one.
inline constexpr std::string_view kOtherType = "command";

/// True for the types that legacy commands have.
[[nodiscard]] bool IsLegacyType(std::string_view type);

/// One command that was not just copied. Texts are UTF-8.
struct CommandFacts {
    std::string type;
    std::string outcome;
    std::int64_t firstLine = 0;
    std::int64_t lastLine = 0;
    std::string source;
    std::string generated;
    std::int64_t generatedLine = 0;  ///< Of the result; 0 for none.
    std::string error;
    std::int64_t errorLine = 0;
    std::int64_t errorColumn = 0;
    std::string message;
    std::string hint;  ///< Empty for none.
    std::vector<std::string> warnings;
};

/// One finding. Texts are UTF-8.
struct FindingFacts {
    std::string code;
    std::string kind;
    std::string command;  ///< Empty for none.
    std::int64_t firstLine = 0;
    std::int64_t lastLine = 0;
    std::int64_t causeLine = 0;
    std::string sentence;
    std::string text;
};

/// One macro as a file knows it.
struct MacroFacts {
    std::string name;  ///< UTF-8.
    std::int64_t calls = 0;
    // Those of them that give legacy commands, or are left.
    std::int64_t converted = 0;
    std::int64_t failed = 0;
    std::int64_t left = 0;
};

struct Totals {
    std::int64_t files = 0;
    std::int64_t filesConverted = 0;
    std::int64_t filesChanged = 0;
    std::int64_t filesPartly = 0;
    std::int64_t filesUnconverted = 0;
    std::int64_t filesOverlooked = 0;
    std::int64_t filesStopped = 0;
    std::int64_t filesNothing = 0;
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
    std::int64_t commandsFound = 0;
    std::int64_t commandsConverted = 0;
    std::int64_t commandsFailed = 0;
    std::int64_t commandsUnreadable = 0;
    std::int64_t commandsOverlooked = 0;
    std::int64_t commandsChecked = 0;       ///< By someone who said so.
    std::int64_t commandsMendedByHand = 0;  ///< As someone said, too.
    std::int64_t warnings = 0;
    std::int64_t findingsChanged = 0;
    std::int64_t findingsTold = 0;
    // As in `FileFacts`.
    std::int64_t commandsFromMacros = 0;
    std::int64_t macros = 0;
    std::int64_t macroCalls = 0;
    std::int64_t macroCallsConverted = 0;
    std::int64_t macroCallsFailed = 0;
    std::int64_t macroCallsLeft = 0;
};

/// One of the totals, under the name that it has in reports.
struct TotalNumber {
    const char* pName = nullptr;
    std::variant<std::int64_t Totals::*, std::uint64_t Totals::*> member;
    bool isOptional = false;  ///< It is written only when it is not 0.
};

/// In the order in which they are written.
inline constexpr std::array<TotalNumber, 35> kTotalNumbers = {{
    {"files", &Totals::files},
    {"filesConverted", &Totals::filesConverted},
    {"filesChanged", &Totals::filesChanged},
    {"filesPartly", &Totals::filesPartly},
    {"filesUnconverted", &Totals::filesUnconverted},
    {"filesOverlooked", &Totals::filesOverlooked},
    {"filesStopped", &Totals::filesStopped},
    {"filesNothing", &Totals::filesNothing},
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
    {"commandsFound", &Totals::commandsFound},
    {"commandsConverted", &Totals::commandsConverted},
    {"commandsFailed", &Totals::commandsFailed},
    {"commandsUnreadable", &Totals::commandsUnreadable},
    {"commandsOverlooked", &Totals::commandsOverlooked},
    {"commandsChecked", &Totals::commandsChecked},
    {"commandsMendedByHand", &Totals::commandsMendedByHand},
    {"warnings", &Totals::warnings},
    {"findingsChanged", &Totals::findingsChanged},
    {"findingsTold", &Totals::findingsTold},
    {"commandsFromMacros", &Totals::commandsFromMacros, true},
    {"macros", &Totals::macros, true},
    {"macroCalls", &Totals::macroCalls, true},
    {"macroCallsConverted", &Totals::macroCallsConverted, true},
    {"macroCallsFailed", &Totals::macroCallsFailed, true},
    {"macroCallsLeft", &Totals::macroCallsLeft, true},
}};

/// About the run as a whole. `source` and `target` are bytes.
struct RunFacts {
    std::string source;
    std::string target;
    std::string layout;  ///< That was asked for: "auto", "interactive", "batch" or, of several
                         ///< runs, "mixed".
    bool dryRun = false;
    bool isInterrupted = false;  ///< Only a part of the files was looked at.
    std::optional<Shard> shard;
    std::int64_t started = 0;  ///< Seconds since 1970.
    double seconds = 0;
};

struct Report {
    RunFacts run;
    std::vector<FileEntry> files;
    std::vector<OtherSignOff> otherSignOffs = {};  ///< By path and key.
    /// Nothing where there was no run before, or nothing is known about it.
    std::optional<ChangeSums> sinceLastRun = {};
};

[[nodiscard]] Totals TotalsOf(const std::vector<FileEntry>& files);

/// Puts the files into the order of the bytes of their paths.
void SortByPath(std::vector<FileEntry>& files);

/// One of exitstatus.h. What needs a person are commands that could not be converted or were
/// overlooked, files that were stopped, edited results whose sources have changed, and links that
/// were not followed.
[[nodiscard]] int ExitStatusOf(const Totals& totals);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_REPORTDATA_H
