// libquillet: converts legacy commands in statistical command syntax.
//
// This is the library's one public header. It touches no file, no console and no global state;
// conversions may run side by side in several threads.
#ifndef QUILLET_QUILLET_H
#define QUILLET_QUILLET_H

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "quillet_export.h"

namespace quillet {

/// How to read a text that is not valid UTF-8. Valid UTF-8 is always read as such.
enum class LegacyCodePage {
    kWindows1252,  ///< The same on every machine; every byte is a character.
    kSystem,       ///< The system's legacy code page; Windows-1252 where it has none.
};

/// How bytes group into characters; there is nothing to be done with it but pass it on.
class CodePage;

/// The code page that the system knows as `name`, such as "windows-1250" or "EUC-KR"; letter case
/// does not count. To be found once for many conversions, which may run side by side.
///
/// Null for a name that the system does not know, and for an encoding in which syntax cannot be
/// read byte by byte, such as UTF-16 or those of mainframes.
[[nodiscard]] QUILLET_EXPORT std::shared_ptr<const CodePage> FindCodePage(const std::string& name);

struct Options {
    /// Commands continue on lines that begin with a blank, and a "+" or "-" that begins a
    /// command is skipped.
    bool batchMode = false;
    LegacyCodePage legacyCodePage = LegacyCodePage::kWindows1252;
    /// In place of `legacyCodePage`, unless it is null.
    std::shared_ptr<const CodePage> namedCodePage;
};

/// How a conversion ended.
enum class Outcome {
    kDone,             ///< Everything was read and written; single commands may have failed.
    kTokenizingError,  ///< A text that is no syntax ended the run; the output says where and why.
    /// The input failed before its end, was not the same text when it was read again, or is
    /// UTF-16; the output is incomplete.
    kReadError,
    kWriteError,   ///< The output did not take all bytes.
    kOutOfMemory,  ///< Memory ran out for a command; the output says where and ends there.
};

/// What a whole conversion gives back.
struct Conversion {
    std::string output;       ///< The converted syntax, in the code page of the input.
    std::string resultLines;  ///< A line for each converted or failed command, each with "\n".
    std::string diagnostics;  ///< Failed internal assertions, a line each; normally empty.
    Outcome outcome = Outcome::kDone;
};

/// Converts `input` in memory.
///
/// Bytes in, bytes out: the output has a UTF-8 byte-order mark if and only if the input has,
/// and CR LF line ends if and only if the input's first line ends in CR LF. Every input is taken,
/// at worst the outcome is `kTokenizingError` or `kOutOfMemory`, but for those that begin with a
/// byte-order mark of UTF-16 (FF FE or FE FF): then it is `kReadError`, and the output is empty.
/// Throws `std::bad_alloc` alone, and that only where not even the result itself can be kept. Time
/// is linear in the input and the output; what a command asks for beyond its own size is limited
/// to 64 MiB.
[[nodiscard]] QUILLET_EXPORT Conversion ConvertText(std::string_view input, const Options& options);

/// A text that is read in pieces, twice: the whole of it decides the code page.
class QUILLET_EXPORT TextInput {
public:
    virtual ~TextInput() = default;
    /// Reads up to `size` bytes into `buffer`, returns how many. 0 at the end and after an
    /// error, which `Failed` then tells.
    virtual std::size_t Read(char* buffer, std::size_t size) = 0;
    /// Goes back to the first byte. False when that cannot be done.
    virtual bool Rewind() = 0;
    [[nodiscard]] virtual bool Failed() const = 0;
    /// True when the text may have become another one since the first byte was read. Asked when
    /// the conversion is over; that both readings have the same length is seen without it.
    [[nodiscard]] virtual bool HasChanged() const { return false; }

protected:
    TextInput() = default;
    TextInput(const TextInput&) = default;
    TextInput& operator=(const TextInput&) = default;
};

/// Takes the converted text in pieces, in order.
class QUILLET_EXPORT TextOutput {
public:
    virtual ~TextOutput() = default;
    /// Takes all of `bytes`, or returns false; it is not called again after that.
    virtual bool Write(std::string_view bytes) = 0;

protected:
    TextOutput() = default;
    TextOutput(const TextOutput&) = default;
    TextOutput& operator=(const TextOutput&) = default;
};

/// The kinds of commands that a conversion tells apart.
enum class CommandType {
    kOrdinary,    ///< Any command that is none of the others.
    kComment,     ///< A comment command.
    kDocument,    ///< DOCUMENT and its text.
    kInlineData,  ///< BEGIN DATA and the lines up to END DATA.
    kTables,
    kIgraph,
};

/// What became of a command.
enum class CommandOutcome {
    kCopied,
    kConverted,   ///< Commented out and followed by its replacement.
    kFailed,      ///< Commented out; there is no replacement.
    kUnreadable,  ///< It is no syntax, or memory ran out; the conversion of the whole input ended.
};

/// Why a command could not be converted: `kNone`, or one of the reasons that lists and explains
/// "quillet-messages.def", which is installed beside this file.
enum class ErrorKind {
    kNone,
#define QUILLET_REASON(kind, name, message, heading) kind,
#include "quillet-messages.def"
};

/// A short name of lower-case words and hyphens, such as "tables-syntax", that stays the same
/// in all versions; "none" for `kNone`.
[[nodiscard]] QUILLET_EXPORT std::string_view NameOf(ErrorKind kind);

/// How the bytes of a text are to be read.
enum class TextEncoding {
    kUtf8,
    kWindows1252,
    kSystem,  ///< The system's legacy code page.
    kNamed,   ///< The `namedCodePage` of the options.
};

/// What became of one command. All texts are bytes in the input's encoding, with LF line ends
/// and good only during the call.
struct CommandReport {
    CommandType type = CommandType::kOrdinary;
    CommandOutcome outcome = CommandOutcome::kCopied;
    long firstLine = 0;  ///< In the input, from 1.
    long lastLine = 0;   ///< In the input; that of the command's period, where it has one.
    /// The command with its period; only for commands that are not copied.
    std::string_view source;
    /// What replaces the command, whole commands each with its period; only when converted.
    std::string_view generated;
    long generatedLine = 0;  ///< The output line, from 1, on which that begins; 0 for none.
    /// What the conversion left out, a message each.
    std::vector<std::string> warnings;
    ErrorKind errorKind = ErrorKind::kNone;
    long errorLine = 0;        ///< In the input, from 1; 0 when the place is not known.
    int errorColumn = 0;       ///< In characters, as the message in the output counts them.
    std::string_view message;  ///< The reason in words, as it stands in the output.
    /// The macro whose call the command comes from, which stands on `firstLine`; empty for a
    /// command that stands in the input itself.
    std::string_view macro;
};

/// Takes what a conversion has to say while it runs.
class QUILLET_EXPORT ConversionListener {
public:
    virtual ~ConversionListener() = default;
    /// A command was converted or could not be; `line` ends in "\n".
    virtual void OnResultLine(std::string_view line) = 0;
    /// An internal assertion failed, or memory ran out; `line` has no line end.
    virtual void OnDiagnostic(std::string_view line) = 0;
    /// The input is read in `encoding`; comes before everything else.
    virtual void OnEncoding(TextEncoding /*encoding*/) {}
    /// A command was dealt with. Called for every command, in order.
    virtual void OnCommand(const CommandReport& /*report*/) {}

protected:
    ConversionListener() = default;
    ConversionListener(const ConversionListener&) = default;
    ConversionListener& operator=(const ConversionListener&) = default;
};

/// `text`, which is in `encoding`, in UTF-8. Each byte that is no character there becomes the
/// replacement character U+FFFD. `pNamed` is what `kNamed` means; without it, Windows-1252.
[[nodiscard]] QUILLET_EXPORT std::string ToUtf8(std::string_view text, TextEncoding encoding,
                                                const CodePage* pNamed = nullptr);

/// Converts a text of any size, keeping no more of it than its largest command (inline data:
/// its longest line). Otherwise as `ConvertText`.
///
/// Takes at most 4 MiB, 4 times the size of the largest command that is copied, and for the
/// largest one that is converted 16 times its size and once that of its replacement, besides what
/// it asks for beyond its own size. Where names of a letter or two and the signs between them are
/// most of a command, it may be 24 times.
[[nodiscard]] QUILLET_EXPORT Outcome ConvertStream(TextInput& input, TextOutput& output,
                                                   ConversionListener& listener,
                                                   const Options& options);

/// Kinds of findings, by what they mean for the whole text.
enum class FindingKind {
    kOverlooked,  ///< A legacy command was not dealt with.
    kChanged,     ///< Text is lost or joined.
    kTold,        ///< Worth knowing.
};

/// What a finding is about; "quillet-findings.def" lists them.
enum class FindingCode {
#define QUILLET_FINDING(code, name, kind, sentence) code,
#include "quillet-findings.def"
};

/// A short name of lower-case words and hyphens, such as "macro-body", that stays the same in all
/// versions.
[[nodiscard]] QUILLET_EXPORT std::string_view NameOf(FindingCode code);

[[nodiscard]] QUILLET_EXPORT FindingKind KindOf(FindingCode code);

/// Something to tell of a text besides the results of its conversion. Lines are those of the
/// source, from 1; all texts are bytes in the input's encoding.
struct Finding {
    FindingCode code = FindingCode::kAfterStop;
    /// The legacy command that it is about: `kTables` or `kIgraph`; `kOrdinary` for none.
    CommandType command = CommandType::kOrdinary;
    long firstLine = 0;  ///< Of what it is about; 1 for the whole text.
    long lastLine = 0;
    long causeLine = 0;  ///< The line to look at for the reason.
    std::string macro;   ///< The macro in whose body or expansion it stands; else empty.
    std::string sentence;
    std::string text;  ///< What it is about, with LF line ends.
};

/// What became of a legacy command.
enum class LegacyOutcome {
    kConverted,
    kFailed,
    kUnreadable,
    kOverlooked,  ///< A finding tells why.
};

/// A TABLES or IGRAPH command, wherever in a text it stands.
struct LegacyCommand {
    CommandType type = CommandType::kTables;  ///< `kTables` or `kIgraph`.
    LegacyOutcome outcome = LegacyOutcome::kOverlooked;
    long firstLine = 0;  ///< From 1.
    long lastLine = 0;
};

/// All legacy commands of a text, each of them once, and what there is to tell.
struct LegacyFindings {
    std::vector<LegacyCommand> commands;  ///< By their first lines.
    std::vector<Finding> findings;        ///< By their first lines.
    long fromMacros = 0;  ///< How many of the commands come from expansions that were put in.

    /// How many of the commands came to `outcome`.
    [[nodiscard]] QUILLET_EXPORT long Count(LegacyOutcome outcome) const;
};

/// A command as a conversion has dealt with it: what is kept of a `CommandReport` to look for
/// legacy commands later.
struct CommandOutline {
    CommandType type = CommandType::kOrdinary;
    CommandOutcome outcome = CommandOutcome::kCopied;
    long firstLine = 0;
    long lastLine = 0;
    long errorLine = 0;
};

/// What is known of a text that is searched.
struct FindOptions {
    Options conversion;  ///< With which the text is converted.
    /// The file had these before it became the text: there is a finding for each.
    bool hadOldLineEnds = false;
    bool wasUtf16 = false;
    /// The name of the encoding that the text is in, where `TextEncoding` has none for it.
    std::string encodingName;
    /// Asked for each file that INCLUDE or INSERT names, in the text's encoding: whether it is at
    /// hand. Empty where nobody knows.
    std::function<bool(std::string_view path)> isIncludeAtHand;
};

/// Finds the legacy commands of `text`, converted or not, and what else there is to tell of it.
///
/// A text whose lines end in CR alone is read as lines, other than by `ConvertText`. Of UTF-16
/// nothing is told but that. Every text is taken; throws `std::bad_alloc` alone. Linear in the
/// text. The commands of macros, includes and the like are those that stand in the text.
[[nodiscard]] QUILLET_EXPORT LegacyFindings FindLegacyCommands(std::string_view text,
                                                               const FindOptions& options);

/// The same for a text that has been converted with the options' `conversion`: `commands` is what
/// the listener was told of, in order.
[[nodiscard]] QUILLET_EXPORT LegacyFindings FindLegacyCommands(
    std::string_view text, const FindOptions& options, const std::vector<CommandOutline>& commands);

/// What is known of a text with a command that could not be converted.
struct HintOptions {
    bool batchMode = false;
    TextEncoding encoding = TextEncoding::kUtf8;  ///< As the listener was told.
    const CodePage* pNamed = nullptr;             ///< What `kNamed` means; borrowed.
    std::set<std::string> macroNames;             ///< See `FindMacroNames`.
    /// How many legacy commands follow an unreadable one; below 0 where nobody knows.
    long commandsAfter = -1;
};

/// What to change in `command`, which failed or was unreadable, so that it can be converted: a
/// sentence for people, with names of the command in it, in the input's encoding. It has no period
/// at its end; what is to be written word for word stands between grave accents. Never empty, but
/// for a command that was copied or converted. Linear in the command.
[[nodiscard]] QUILLET_EXPORT std::string HintFor(const CommandReport& command,
                                                 const HintOptions& options);

/// The names of the macros that `text` defines, with their exclamation marks; letters of ASCII are
/// in upper case. Of UTF-16 none are known. Linear in the text.
[[nodiscard]] QUILLET_EXPORT std::set<std::string> FindMacroNames(std::string_view text,
                                                                  const Options& options);

/// How a text reads in a layout. Counted are commands but for comments, DOCUMENT, inline data and
/// the bodies of macros.
struct LayoutReading {
    long commands = 0;
    long withCommandWord = 0;  ///< Begin with the word of a command, or call a macro.
    long withoutPeriod = 0;    ///< Do not end in a period.
    long withSign = 0;         ///< Have a "+" or "-" in the first column.
    bool hasTokenizingError = false;
};

/// The layout in which a text reads well.
struct LayoutChoice {
    /// True for batch layout: at least nine in ten commands begin with a command word there, twice
    /// as many as in interactive layout, most of them have no period, and there is no tokenizing
    /// error.
    bool batchMode = false;
    LayoutReading interactive;
    LayoutReading batch;  ///< All 0 where there are too few lines for so many commands.
};

/// Chooses the layout of `text`. `batchMode` of the options means nothing. Linear in the text.
[[nodiscard]] QUILLET_EXPORT LayoutChoice ChooseLayout(std::string_view text,
                                                       const Options& options);

/// `text` with a period where a blank line follows a command or comment that has none: after its
/// last token, before any comment, which is then lost. Blank lines in macros, DOCUMENT, inline
/// data and glued literals end nothing, nor do any in batch layout. Linear in the text.
[[nodiscard]] QUILLET_EXPORT std::string EndAtBlankLines(std::string_view text,
                                                         const Options& options);

/// A file that a text includes by INCLUDE or INSERT.
struct IncludedText {
    std::string name;  ///< The same for the same file, however its path is written.
    std::string text;  ///< In the encoding of the text that includes it.
    bool batchMode = false;
};

/// How a text with macros is to be read. Where blank lines end commands, they do so after
/// `EndAtBlankLines`, here and in included texts.
struct MacroOptions {
    Options conversion;  ///< With which the text is converted.
    std::string name;    ///< The text's own, as `findInclude` would give it.
    /// Finds the file that `includingFile` includes by `path`, as that is written there; false when
    /// there is none. Empty where nobody can.
    std::function<bool(std::string_view path, const std::string& includingFile, IncludedText& file)>
        findInclude;
};

/// Something that went wrong with a definition, a call or an include.
struct MacroFault {
    /// A short name of lower-case words and hyphens that stays the same in all versions.
    std::string kind;
    std::string reason;  ///< In words, with the line; without a period at the end.
    long line = 0;       ///< From 1, in `file`.
    std::string file;    ///< The name by which it was included; empty for the text itself.
};

/// A macro that a text, or a file that it includes, defines.
struct DefinedMacro {
    std::string name;    ///< As it is written, with "!" where it has one.
    std::string file;    ///< The name by which it was included; empty for the text itself.
    long firstLine = 0;  ///< Of the definition, from 1.
    long lastLine = 0;   ///< Of !ENDDEFINE.
    /// The bytes of the definition, from DEFINE to the period after !ENDDEFINE; both 0 for one of
    /// another file.
    std::size_t begin = 0;
    std::size_t end = 0;
    /// The legacy commands in the body, with the lines of the file.
    std::vector<LegacyCommand> commands;
    long calls = 0;      ///< Of the text, for which it was expanded; within other macros, too.
    long callsLeft = 0;  ///< Those of them that could not be expanded.
    /// The same of other texts, to be filled in by whoever knows them before `ConvertExpanded`.
    long callsElsewhere = 0;
    long callsLeftElsewhere = 0;
    long firstCallLine = 0;  ///< From 1; 0 where there is none.
};

/// A call in the text itself, outside of all definitions.
struct MacroCall {
    std::size_t macro = 0;  ///< Its place in the list of macros.
    long line = 0;          ///< From 1.
    std::size_t begin = 0;  ///< Its bytes, from the name to the last argument, without a period.
    std::size_t end = 0;
    std::string text;                 ///< What it becomes; empty after a fault.
    std::optional<MacroFault> fault;  ///< Why it is left as it is.
    /// The macros that were expanded for it, by their places: its own, then those that it calls.
    std::vector<std::size_t> expanded;
    // What follows is for `ConvertExpanded` and its like.
    std::size_t droppedBegin = 0;  ///< White space and a period that go with the call.
    std::size_t droppedEnd = 0;
    std::size_t commandBegin = 0;  ///< The command that it stands in, with its period.
    std::size_t commandEnd = 0;
};

/// The macros of a text.
struct MacroExpansion {
    /// Those of the text in its order, and those of included files that the text calls.
    std::vector<DefinedMacro> macros;
    std::vector<MacroCall> calls;  ///< In the order of the text.
    /// Definitions that define nothing, and includes that were not found or not followed.
    std::vector<MacroFault> faults;
    /// A finding for each fault of the text itself, and for each call that cannot be expanded. Of
    /// an include that was not found `FindLegacyCommands` tells.
    std::vector<Finding> findings;
};

/// Expands the calls of macros in `text`, whose lines end in LF or CR LF. Layout and encoding are
/// settled by the options. Of UTF-16 nothing is told. Every text is taken; throws `std::bad_alloc`
/// alone. Linear in the text, in what it includes, and in the expansions, which are limited to
/// 256 MiB.
[[nodiscard]] QUILLET_EXPORT MacroExpansion ExpandMacros(std::string_view text,
                                                         const MacroOptions& options);

/// A command of a text whose calls were expanded, with at least one legacy command in it then.
/// Good only during the call that tells of it.
struct ExpandedCommand {
    long firstLine = 0;  ///< In the text, from 1.
    long lastLine = 0;
    /// Its calls are this many from this place in the list of calls on. Those that could not be
    /// expanded are among them; the first that could is that which the command is named after.
    std::size_t firstCall = 0;
    std::size_t callCount = 0;
    std::string_view macro;  ///< The name of that call's macro.
    std::string_view text;   ///< With all calls expanded that can be.
    /// False where the expansion stays out of the result: it is no syntax.
    bool isConverted = true;
    /// What its commands came to but for copied ones. Lines and columns are those of the calls,
    /// `generatedLine` is not known.
    const std::vector<CommandReport>& commands;
    /// All legacy commands in it, and what else there is to tell.
    const LegacyFindings& found;
};

/// Takes what becomes of expansions.
class QUILLET_EXPORT ExpansionListener {
public:
    virtual ~ExpansionListener() = default;
    virtual void OnExpandedCommand(const ExpandedCommand& command) = 0;

protected:
    ExpansionListener() = default;
    ExpansionListener(const ExpansionListener&) = default;
    ExpansionListener& operator=(const ExpansionListener&) = default;
};

/// Converts the commands of `text` whose calls become legacy commands, each for itself, and only to
/// tell of them. `expansion` is what `ExpandMacros` gave for the same text and options. Linear in
/// the text and the expansions.
QUILLET_EXPORT void ConvertExpansions(std::string_view text, const MacroExpansion& expansion,
                                      const Options& options, ExpansionListener& listener);

/// Where `ConvertExpanded` tells what it does.
struct ExpandedConversion {
    TextOutput& output;
    ConversionListener& listener;
    ExpansionListener& expansions;
};

/// Converts `text` as `ConvertStream` does, and expands calls: a command with calls, whose
/// expansion holds a legacy command, is commented out and followed by a comment with the macro and
/// the line, and by its expansion, converted. Definitions and all other calls stay as they are. An
/// expansion that is no syntax is not put in.
///
/// `found` becomes what `FindLegacyCommands` is for a conversion without macros. The commands of an
/// expansion count at the line of the call. Those in the body of a macro count as overlooked as
/// long as the text does not call the macro, or a call is left; else they do not count, and there
/// is a finding `kMacroExpanded` for each. The findings of `expansion`
/// are among those found.
[[nodiscard]] QUILLET_EXPORT Outcome ConvertExpanded(std::string_view text,
                                                     const ExpandedConversion& conversion,
                                                     const MacroExpansion& expansion,
                                                     const FindOptions& options,
                                                     LegacyFindings& found);

/// A command outside of a text that calls macros of it.
struct OutsideCall {
    std::string command;  ///< The whole command, in the encoding of the text.
    std::string file;     ///< Where it stands, for who reads the verdict.
    long line = 0;
};

/// Commands outside of a text for which the same definitions are in force: those of `before`, then
/// the text's, then those of `after`. A later one replaces an earlier one of its name.
struct OutsideCalls {
    std::string before;  ///< Definitions, in the encoding of the text; may be empty, as `after`.
    std::string after;
    bool batchMode = false;  ///< How the commands are laid out.
    std::vector<OutsideCall> calls;
};

/// What became of the body of a macro.
enum class MacroBodyOutcome {
    kConverted,       ///< Its legacy commands are replaced, which is proven for every call.
    kNoCall,          ///< No call that is known comes to a legacy command of it.
    kDisproved,       ///< For one of its calls, the new body would give something else.
    kNotConvertible,  ///< There is no new body.
};

/// A macro whose body holds legacy commands, and what became of them. All texts are in the encoding
/// of the text.
struct MacroBody {
    std::string name;  ///< As it is written.
    long firstLine = 0;
    long lastLine = 0;
    long legacyCommands = 0;
    /// Those among them that no call comes to: they stay as they are in any case.
    long unusedCommands = 0;
    MacroBodyOutcome outcome = MacroBodyOutcome::kNoCall;
    long calls = 0;  ///< How many calls are known; when it is converted, proven for all of them.
    std::string reason;  ///< Why it is not converted, in words; else empty.
    /// Of a body that is disproved: the call that does it. `callFile` is empty for the text itself.
    std::string callFile;
    long callLine = 0;
    /// Where the two first part: the conversion of the expanded call, and the expansion of the new
    /// body. Both are empty where the call cannot be expanded or converted at all.
    std::string expected;
    std::string found;
};

/// A text with the bodies of its macros converted, and all those that hold legacy commands.
struct MacroBodies {
    std::string text;
    std::vector<MacroBody> bodies;  ///< In the order of the text.
};

/// Converts legacy commands in the bodies of macros, in place: each is written as a comment and
/// followed by its replacement with the arguments of the macro in it.
///
/// Only a body is changed for which it is proven that every call, in the text and among
/// `outsideCalls`, gives the same in either order: expanded first and converted then, or expanded
/// with the new body. The same are two results but for blanks, line ends, comments, the letter case
/// of names, and the order of CATEGORIES subcommands of different variables. Nothing else in the
/// text changes. Layout and blank lines are those that the text already has. Every text is taken;
/// throws `std::bad_alloc` alone. Linear in the text and in the expansions of all calls; for each
/// of `outsideCalls` the definitions of the text are read once more.
[[nodiscard]] QUILLET_EXPORT MacroBodies
ConvertMacroBodies(std::string_view text, const MacroOptions& options,
                   const std::vector<OutsideCalls>& outsideCalls);

}  // namespace quillet

#endif  // QUILLET_QUILLET_H
