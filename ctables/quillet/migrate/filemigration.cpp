#include "migrate/filemigration.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "migrate/jsonreport.h"
#include "migrate/legacysearch.h"
#include "migrate/macroreport.h"
#include "migrate/recodedtext.h"
#include "platform/byteblock.h"
#include "quillet.h"

namespace quillet::migrate {

namespace {

// A conversion that stopped leaves what is counted all the same.
void ReadRest(TextInput& input) {
    ByteBlock block;
    while (input.Read(block.data(), block.size()) > 0) continue;
}

// Counts bytes, and hashes them, when the text is read for the second time, which is the time when
// it is converted.
class CountingInput final : public TextInput {
public:
    CountingInput(SourceFile& source, std::atomic<std::uint64_t>& progress)
        : m_source(source), m_progress(progress) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = m_source.Read(buffer, size);
        if (!m_isSecondTime || count == 0) return count;
        m_bytes += count;
        m_hasher.Add({buffer, count});
        m_progress.fetch_add(count, std::memory_order_relaxed);
        return count;
    }
    bool Rewind() override {
        m_isSecondTime = true;
        return m_source.Rewind();
    }
    [[nodiscard]] bool Failed() const override { return m_source.Failed(); }
    [[nodiscard]] bool HasChanged() const override { return m_source.HasChanged(); }

    [[nodiscard]] std::uint64_t Bytes() const { return m_bytes; }
    [[nodiscard]] ContentHash Hash() const { return m_hasher.Value(); }

private:
    SourceFile& m_source;
    std::atomic<std::uint64_t>& m_progress;
    bool m_isSecondTime = false;
    std::uint64_t m_bytes = 0;
    ContentHasher m_hasher;
};

// Counts lines of the text that is converted.
class LineCountingInput final : public TextInput {
public:
    explicit LineCountingInput(TextInput& input) : m_input(input) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = m_input.Read(buffer, size);
        m_lines += std::count(buffer, buffer + count, '\n');
        if (count > 0) m_endsInLine = buffer[count - 1] != '\n';
        return count;
    }
    bool Rewind() override {
        m_lines = 0;
        m_endsInLine = false;
        return m_input.Rewind();
    }
    [[nodiscard]] bool Failed() const override { return m_input.Failed(); }
    [[nodiscard]] bool HasChanged() const override { return m_input.HasChanged(); }
    [[nodiscard]] std::int64_t Lines() const { return m_lines + (m_endsInLine ? 1 : 0); }

private:
    TextInput& m_input;
    bool m_endsInLine = false;
    std::int64_t m_lines = 0;
};

// Hashes what goes into a file, or what would go into one.
class HashingOutput final : public TextOutput {
public:
    explicit HashingOutput(NewFile* pFile) : m_pFile(pFile) {}

    bool Write(std::string_view bytes) override {
        m_hasher.Add(bytes);
        return m_pFile == nullptr || m_pFile->Write(bytes);
    }
    [[nodiscard]] ContentHash Hash() const { return m_hasher.Value(); }

private:
    NewFile* m_pFile;
    ContentHasher m_hasher;
};

std::string_view EncodingName(TextEncoding encoding) {
    switch (encoding) {
        case TextEncoding::kUtf8:
            return "utf-8";
        case TextEncoding::kWindows1252:
            return "windows-1252";
        case TextEncoding::kSystem:
        case TextEncoding::kNamed:
            break;
    }
    return "system";
}

// Why a text is read so that nobody has said anything about.
std::string_view ReasonOf(TextEncoding encoding) {
    if (encoding == TextEncoding::kUtf8) return "valid-utf-8";
    return encoding == TextEncoding::kSystem ? "locale" : "default";
}

// Puts what a conversion tells about its commands into the facts of its file.
class FactsCollector final : public ConversionListener {
public:
    // All are borrowed.
    FactsCollector(FileFacts& facts, ArraySpool& commands, ProgressCounters& progress,
                   const std::string& text, const Options& options)
        : m_facts(facts),
          m_commands(commands),
          m_progress(progress),
          m_text(text),
          m_options(options) {
        m_hints.batchMode = options.batchMode;
        m_hints.pNamed = options.namedCodePage.get();
    }

    // What all commands came to.
    [[nodiscard]] const std::vector<CommandOutline>& Outlines() const { return m_outlines; }
    [[nodiscard]] TextEncoding Encoding() const { return m_encoding; }

    // Has `output` told what the text is read in.
    void TellEncodingTo(Utf8Output& output) { m_pOutput = &output; }

    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view line) override {
        constexpr int kMostShown = 5;
        if (++m_diagnostics > kMostShown) return;
        if (!m_facts.message.empty()) m_facts.message += "; ";
        m_facts.message += line;
    }
    void OnEncoding(TextEncoding encoding) override {
        m_encoding = encoding;
        if (encoding != TextEncoding::kNamed) {
            m_facts.encoding = EncodingName(encoding);
            m_facts.encodingReason = ReasonOf(encoding);
        }
        if (m_pOutput != nullptr) m_pOutput->ReadAs(encoding);
    }
    void OnCommand(const CommandReport& report) override {
        m_outlines.push_back(
            {report.type, report.outcome, report.firstLine, report.lastLine, report.errorLine});
        ++(report.outcome == CommandOutcome::kCopied ? m_facts.copied : m_facts.listed);
        m_progress.commands.fetch_add(1, std::memory_order_relaxed);
        m_facts.warnings += static_cast<std::int64_t>(report.warnings.size());
        if (report.outcome == CommandOutcome::kCopied) return;
        if (report.outcome == CommandOutcome::kUnreadable) {
            Keep(report);
        } else {
            Add(report);
        }
        if (report.outcome == CommandOutcome::kConverted) return;
        m_progress.failures.fetch_add(1, std::memory_order_relaxed);
        m_isOutOfMemory = m_isOutOfMemory || report.errorKind == ErrorKind::kOutOfMemory;
        AddName(quillet::NameOf(report.errorKind), m_facts.errors);
    }

    // Adds the command that ended the conversion, if there is one, when it is known which it is and
    // how many legacy commands follow it.
    void AddUnreadable(const LegacyFindings& found) {
        if (!m_unreadable) return;
        for (const LegacyCommand& command : found.commands) {
            if (command.outcome != LegacyOutcome::kUnreadable) continue;
            m_unreadable->report.type = command.type;
        }
        m_hints.commandsAfter = static_cast<long>(std::count_if(
            found.findings.begin(), found.findings.end(),
            [](const Finding& finding) { return finding.code == FindingCode::kAfterStop; }));
        m_unreadable->report.source = m_unreadable->source;
        m_unreadable->report.message = m_unreadable->message;
        Add(m_unreadable->report);
        m_unreadable.reset();
    }

    // Macros matter to failures alone, and few texts have any.
    [[nodiscard]] std::string Hint(const CommandReport& report) {
        m_hints.encoding = m_encoding;
        if (report.outcome == CommandOutcome::kFailed && !m_hasMacroNames) {
            m_hints.macroNames = FindMacroNames(m_text, m_options);
            m_hasMacroNames = true;
        }
        return HintFor(report, m_hints);
    }

    // A result that lacks a command for want of memory must not be kept as if it were whole.
    [[nodiscard]] bool IsOutOfMemory() const { return m_isOutOfMemory; }

private:
    // A report whose texts are good for longer than a call.
    struct KeptReport {
        CommandReport report;
        std::string source;
        std::string message;
    };

    void Keep(const CommandReport& report) {
        m_unreadable = KeptReport{report, std::string(report.source), std::string(report.message)};
    }

    void Add(const CommandReport& report) {
        m_commands.Add(CommandJson(report, m_encoding, m_hints.pNamed, Hint(report)));
    }

    FileFacts& m_facts;
    ArraySpool& m_commands;
    ProgressCounters& m_progress;
    const std::string& m_text;
    const Options& m_options;
    HintOptions m_hints;
    bool m_hasMacroNames = false;
    std::optional<KeptReport> m_unreadable;
    Utf8Output* m_pOutput = nullptr;
    TextEncoding m_encoding = TextEncoding::kUtf8;
    std::vector<CommandOutline> m_outlines;
    bool m_isOutOfMemory = false;
    int m_diagnostics = 0;
};

void AddFindings(const std::vector<Finding>& findings, LegacyFindings& found) {
    found.findings.insert(found.findings.end(), findings.begin(), findings.end());
    std::stable_sort(
        found.findings.begin(), found.findings.end(),
        [](const Finding& left, const Finding& right) { return left.firstLine < right.firstLine; });
}

Outcome CopyText(TextInput& input, TextOutput& output) {
    ByteBlock block;
    if (!input.Rewind()) return Outcome::kReadError;
    while (const std::size_t count = input.Read(block.data(), block.size())) {
        if (!output.Write({block.data(), count})) return Outcome::kWriteError;
    }
    return input.Failed() ? Outcome::kReadError : Outcome::kDone;
}

}  // namespace

FileMigration::FileMigration(const MigrationContext& context, unsigned worker)
    : m_context(context), m_temporaryPurpose(std::to_string(worker)) {}

void FileMigration::Run(const FileTask& task) {
    m_context.publisher.PrepareFor(task.entry.size);
    m_facts = {};
    m_facts.path = task.entry.path;
    m_namedCodePage.reset();
    m_encodingName.clear();
    m_encodingReason.clear();
    m_byteOrder.reset();
    m_isInvalidUtf16 = false;
    m_resultFolder.reset();
    m_resultFolderError.clear();
    m_identity = {};
    m_commands.Clear();
    m_findings.Clear();
    m_macros.Clear();
    m_includes.clear();
    m_newResult.reset();
    m_recorded.reset();
    m_bytesCounted = 0;
    try {
        Migrate(task);
    } catch (const std::bad_alloc&) {
        Fail("there is not enough memory for it");
    }
    Finish(task);
}

void FileMigration::Migrate(const FileTask& task) {
    if (task.entry.kind == TreeEntry::Kind::kUnreadable) return Fail(task.entry.message);
    if (task.entry.kind == TreeEntry::Kind::kSkipped) {
        m_facts.outcome = FileOutcome::kSkipped;
        m_facts.isLinkNotFollowed = task.entry.isLinkNotFollowed;
        m_facts.message = task.entry.message;
        return;
    }
    std::error_code error;
    const std::unique_ptr<SourceFile> source = SourceFile::Open(
        m_context.sourceRoot, task.entry.place.empty() ? task.entry.path : task.entry.place, error);
    if (source == nullptr) return Fail("it cannot be opened", error);
    m_facts.bytes = source->Status().size;
    m_facts.modified = source->Status().modified;
    MigrateOpened(task, *source);
}

void FileMigration::MigrateOpened(const FileTask& task, SourceFile& source) {
    if (!FindResultFolder()) return;
    const Content content = LookAtContent(source);
    if (source.Failed()) return Fail("it cannot be read", source.Error());
    if (task.isConverted && content == Content::kUtf32) {
        return Fail("it is UTF-32, which cannot be converted: save it as UTF-8");
    }
    const bool isConverted = task.isConverted && ChooseEncoding(source, content);
    if (source.Failed()) return Fail("it cannot be read", source.Error());
    if (!isConverted && !m_context.copiesOthers) {
        m_facts.outcome = FileOutcome::kSkipped;
        m_facts.message = "no text: there is a zero byte in its first 64 KiB";
        return;
    }
    m_action = isConverted ? Action::kConvert : Action::kCopy;
    m_identity.version = QUILLET_VERSION;
    ResultOptions options = m_context.options;
    options.layout = m_context.layoutRules.ForPath(m_facts.path);
    // However the name is spelled, the result is the same.
    if (!m_encodingName.empty()) options.legacyEncoding = EncodingKeyOf(m_encodingName);
    m_identity.options = m_action == Action::kConvert ? TextOf(options) : kCopyOptionsText;
    const Standing standing = m_context.replacesAll ? Standing::kNothing : HashStandingResult();
    if (standing == Standing::kNothing) Make(source);
    if (standing == Standing::kFile) Judge(source);
}

// False when it is no text in any encoding.
bool FileMigration::ChooseEncoding(SourceFile& source, Content content) {
    constexpr const char* kLittleEndianName = "utf-16le";
    constexpr const char* kBigEndianName = "utf-16be";
    if (content == Content::kUtf16LittleEndian) m_byteOrder = ByteOrder::kLittleEndian;
    if (content == Content::kUtf16BigEndian) m_byteOrder = ByteOrder::kBigEndian;
    if (m_byteOrder) m_encodingReason = "byte-order-mark";
    std::string name;
    const Encoding* pNamed = m_byteOrder ? nullptr : NamedEncoding(source, name);
    // What holds no NUL is no syntax in UTF-16.
    if (pNamed != nullptr && content == Content::kOther) m_byteOrder = pNamed->byteOrder;
    if (m_byteOrder) {
        m_encodingName =
            m_byteOrder == ByteOrder::kLittleEndian ? kLittleEndianName : kBigEndianName;
    } else if (pNamed != nullptr && pNamed->codePage != nullptr) {
        m_namedCodePage = pNamed->codePage;
        m_encodingName = std::move(name);
    }
    return m_byteOrder || content == Content::kText;
}

// What the user says of a file counts more than what it says of itself. `name` becomes the name as
// it is written there: which file has spelled it first depends on how fast others are converted.
const Encoding* FileMigration::NamedEncoding(SourceFile& source, std::string& name) {
    constexpr std::size_t kFirstLine = 200;
    const Encoding* pRuled = m_context.encodingRules.ForPath(m_facts.path);
    m_encodingReason = pRuled != nullptr ? "option" : "first-line";
    if (pRuled != nullptr) {
        name = pRuled->name;
        return pRuled;
    }
    std::array<char, kFirstLine> buffer{};
    const std::size_t count = source.Read(buffer.data(), buffer.size());
    if (!source.Rewind()) return nullptr;
    name = EncodingNamedIn({buffer.data(), count});
    return name.empty() ? nullptr : m_context.encodings.Find(name);
}

// False when it is no place for a result. Where there is none nothing can be written, either,
// but a dry run makes none.
bool FileMigration::FindResultFolder() {
    FolderProblem problem;
    m_resultFolder = m_context.target.OpenFolder(FolderPartOf(m_facts.path), problem);
    if (m_resultFolder == nullptr) {
        m_resultFolderError = problem.error;
        if (problem.kind == FolderProblem::Kind::kLink) SkipLink(problem.message);
        if (problem.kind == FolderProblem::Kind::kSource) Fail(problem.message);
        return problem.kind == FolderProblem::Kind::kTrouble;
    }
    FileStatus result;
    std::error_code error;
    const bool isLink = m_resultFolder->ReadStatus(NamePartOf(m_facts.path), result, error) &&
                        result.kind == FileKind::kLink;
    if (isLink) SkipLink("the result's name in TARGET is a link, which is not followed");
    return !isLink;
}

// What is neither a file nor missing is left to be found out when the result gets its name.
FileMigration::Standing FileMigration::HashStandingResult() {
    const std::string name = NamePartOf(m_facts.path);
    FileStatus status;
    std::error_code error;
    if (m_resultFolder == nullptr || !m_resultFolder->ReadStatus(name, status, error) ||
        status.kind != FileKind::kFile) {
        return Standing::kNothing;
    }
    const std::unique_ptr<SourceFile> result = SourceFile::Open(*m_resultFolder, name, error);
    if (result != nullptr) {
        m_identity.result = HashRest(*result);
        if (!result->Failed()) return Standing::kFile;
        error = result->Error();
    }
    // Nobody can say what would be lost if another took its place.
    Fail("its result cannot be read", error);
    return Standing::kUnreadable;
}

void FileMigration::Judge(SourceFile& source) {
    m_identity.source = HashRest(source);
    if (!source.Rewind() || !IsSourceWhole(source)) return;
    const std::vector<JournalRecord>& records = m_context.earlier.RecordsOf(m_facts.path);
    bool isOwn = false;
    for (const JournalRecord& record : records) {
        m_identity.isAccepted = record.identity.isAccepted;
        if (record.identity == m_identity && IsUpToDate(record)) {
            m_facts.result = ResultState::kKept;
            if (TakeRecorded(record)) return;
            // What is known of its commands was lost.
            ContentHash ignored;
            if (MakeInto(nullptr, source, ignored)) m_facts.result = ResultState::kKept;
            return;
        }
        const bool holdsTheSame = record.identity.result == m_identity.result;
        isOwn = isOwn || (holdsTheSame && !record.identity.isAccepted);
    }
    m_identity.isAccepted = false;
    if (isOwn) {
        const ContentHash standing = m_identity.result;
        Make(source);
        if (m_facts.outcome != FileOutcome::kNothing || HasResult()) return;
        m_identity.result = standing;
        LeaveStanding();
    } else {
        JudgeUnknown(source);
    }
}

// Nobody has recorded what the result holds: someone has edited it, another program made it, or
// the record was lost.
void FileMigration::JudgeUnknown(SourceFile& source) {
    const ContentHash standing = m_identity.result;
    const ContentHash current = m_identity.source;
    const std::vector<JournalRecord>& records = m_context.earlier.RecordsOf(m_facts.path);
    ContentHash made;
    if (!MakeInto(nullptr, source, made)) return;
    if (!HasResult()) {
        if (records.empty() || standing == current) return LeaveStanding();
        made = current;
    }
    m_identity.isAccepted = made != standing && m_context.acceptsEdited;
    if (made == standing || m_identity.isAccepted) {
        m_facts.result = ResultState::kKept;
        return;
    }
    m_facts.result = ResultState::kEdited;
    m_facts.hasSourceChanged = std::any_of(
        records.begin(), records.end(),
        [&current](const JournalRecord& record) { return record.identity.source != current; });
    m_facts.message = m_facts.hasSourceChanged
                          ? "the result was edited, and its source has changed since"
                          : "the result was edited";
}

// An included file may have become another one since, or another file may call more: then the
// result, or what is told of it, may be another one as well.
bool FileMigration::IsUpToDate(const JournalRecord& record) const {
    if (record.identity.isAccepted) return true;
    return m_context.macroCalls.HashOf(m_facts.path) == CallsHashIn(record.includes) &&
           m_context.includes.AreTheSame(record.includes);
}

bool FileMigration::TakeRecorded(const JournalRecord& record) {
    const std::optional<ArrayPlace> commands = m_context.earlier.CommandsOf(record);
    const std::optional<ArrayPlace> findings = m_context.earlier.FindingsOf(record);
    const std::optional<ArrayPlace> macros = m_context.earlier.MacrosOf(record);
    if (!commands || !findings || !macros) return false;
    FileFacts facts = record.facts;
    facts.result = m_facts.result;
    facts.bytes = m_facts.bytes;
    facts.modified = m_facts.modified;
    m_recorded = FinishedFile{{std::move(facts), *commands, *findings, *macros},
                              m_identity,
                              record.commands.hash,
                              record.findings.hash,
                              record.macros.hash,
                              record.includes};
    return true;
}

void FileMigration::Make(SourceFile& source) {
    if (m_context.isDryRun) {
        if (!MakeInto(nullptr, source, m_identity.result)) return;
        if (HasResult()) m_facts.result = ResultState::kNew;
        return;
    }
    const std::string purpose = m_temporaryPurpose + "-" + std::to_string(m_temporaryNumber++);
    std::error_code error = m_resultFolderError;
    std::unique_ptr<NewFile> result;
    if (m_resultFolder != nullptr) {
        result = NewFile::Create(m_resultFolder, m_context.target.TemporaryName(purpose), error);
    }
    if (result == nullptr) return Fail("the result cannot be written", error);
    if (!MakeInto(result.get(), source, m_identity.result) || !HasResult()) return;
    if (!result->Complete(source.Status().permissions)) {
        return Fail("the result cannot be written", result->Error());
    }
    m_facts.result = ResultState::kNew;
    m_newResult = std::move(result);
}

// Without a file only the facts are found out, and what the result would hold. What has nothing to
// convert is copied, if at all: a conversion would change it for nothing.
bool FileMigration::MakeInto(NewFile* pResult, SourceFile& source, ContentHash& made) {
    if (m_action == Action::kCopy) {
        m_facts.outcome = FileOutcome::kCopied;
        return CopyInto(pResult, source, made);
    }
    if (!ConvertInto(pResult, source, made)) return false;
    if (m_facts.outcome != FileOutcome::kNothing || !m_context.copiesUnconverted) return true;
    if (pResult != nullptr && !pResult->Restart()) {
        Fail("the result cannot be written", pResult->Error());
        return false;
    }
    return CopyInto(pResult, source, made);
}

bool FileMigration::ConvertInto(NewFile* pResult, SourceFile& source, ContentHash& made) {
    HashingOutput output(pResult);
    CountingInput input(source, m_context.progress.bytes);
    const Outcome outcome = Convert(input, output);
    ReadRest(input);
    m_bytesCounted += input.Bytes();
    if (!IsWritten(outcome, pResult, source)) return false;
    m_facts.outcome = OutcomeOf(m_facts, outcome);
    if (m_facts.outcome == FileOutcome::kNothing) {
        // It need not have been read to its end.
        ForgetUnconverted();
        return true;
    }
    m_context.progress.overlooked.fetch_add(static_cast<std::uint64_t>(m_facts.overlooked),
                                            std::memory_order_relaxed);
    m_identity.source = input.Hash();
    made = output.Hash();
    return true;
}

bool FileMigration::CopyInto(NewFile* pResult, SourceFile& source, ContentHash& made) {
    HashingOutput output(pResult);
    CountingInput input(source, m_context.progress.bytes);
    const Outcome outcome = CopyText(input, output);
    m_bytesCounted += input.Bytes();
    if (!IsWritten(outcome, pResult, source)) return false;
    m_identity.source = input.Hash();
    made = output.Hash();
    return true;
}

// Otherwise the file has failed.
bool FileMigration::IsWritten(Outcome outcome, NewFile* pResult, SourceFile& source) {
    if (outcome == Outcome::kWriteError) {
        Fail("the result cannot be written",
             pResult != nullptr ? pResult->Error() : std::error_code());
        return false;
    }
    if (outcome == Outcome::kOutOfMemory) {
        Fail("there is not enough memory for it");
        return false;
    }
    if (m_isInvalidUtf16) {
        Fail("it is no valid UTF-16");
        return false;
    }
    // The look at its beginning has found no other reason why a text is not read to its end.
    if (outcome == Outcome::kReadError && !source.Failed()) {
        Fail("it was changed while it was read");
        return false;
    }
    return IsSourceWhole(source);
}

// The first reading tells what ends the lines, and whether there is anything to convert at all.
// Only then is the text kept: what surrounds a command decides what becomes of it.
Outcome FileMigration::Convert(TextInput& input, TextOutput& output) {
    std::optional<Utf16Input> decoded;
    if (m_byteOrder) decoded.emplace(input, *m_byteOrder);
    LineEndInput lineEnds(decoded ? static_cast<TextInput&>(*decoded) : input);
    LineCountingInput lines(lineEnds);
    WordSearch words;
    ByteBlock block;
    while (const std::size_t count = lines.Read(block.data(), block.size())) {
        words.Add({block.data(), count});
    }
    m_facts.lines = lines.Lines();
    m_isInvalidUtf16 = decoded && decoded->IsInvalid();
    if (lines.Failed()) return Outcome::kReadError;
    if (!words.IsWorthALook()) return Outcome::kDone;
    std::string text;
    if (!lines.Rewind()) return Outcome::kReadError;
    ReadText(lines, text);
    if (lines.Failed()) return Outcome::kReadError;
    m_facts.lines = lines.Lines();  // which may end in CR

    std::optional<Utf16Output> encoded;
    TextOutput* pOutput = &output;
    if (m_byteOrder && !m_context.options.isUtf8) pOutput = &encoded.emplace(output, *m_byteOrder);
    LineEndOutput result(*pOutput, lineEnds);
    return ConvertWhole(std::move(text), result, lineEnds.EndsLinesInCr());
}

Outcome FileMigration::ConvertWhole(std::string text, TextOutput& output, bool endsLinesInCr) {
    m_facts.encoding = m_encodingName;
    m_facts.encodingReason = m_encodingReason;
    const Options options = ChooseLayoutFor(text);
    if (EndsAtBlankLines(options)) text = EndAtBlankLines(text, options);
    const MacroExpansion expansion = ExpandIn(text, options);
    FactsCollector collector(m_facts, m_commands, m_context.progress, text, options);
    Utf8Output inUtf8(output, m_namedCodePage.get());
    if (m_context.options.isUtf8) collector.TellEncodingTo(inUtf8);
    TextOutput& result = m_context.options.isUtf8 ? static_cast<TextOutput&>(inUtf8) : output;
    const FindingEncoding encoding = {EncodingOfText(text, m_namedCodePage).encoding,
                                      m_namedCodePage.get()};
    const FindOptions search = SearchOptions(options, endsLinesInCr, encoding);
    MacroCollector macros(expansion, encoding, [&collector](const CommandReport& report) {
        return collector.Hint(report);
    });
    const bool expands =
        m_context.options.macros != MacroMode::kReport && !expansion.macros.empty();
    LegacyFindings found;
    Outcome outcome = Outcome::kDone;
    if (expands) {
        outcome = ConvertExpanded(text, {result, collector, macros}, expansion, search, found);
    } else {
        TextView input(text);
        outcome = ConvertStream(input, result, collector, options);
    }
    if (outcome != Outcome::kWriteError && !inUtf8.Finish()) outcome = Outcome::kWriteError;
    if (m_byteOrder) {
        m_facts.encoding = m_encodingName;
        m_facts.encodingReason = m_encodingReason;
    }
    if (collector.IsOutOfMemory()) return Outcome::kOutOfMemory;
    if (!expands) {
        found = FindLegacyCommands(text, search, collector.Outlines());
        AddFindings(expansion.findings, found);
        ConvertExpansions(text, expansion, options, macros);
    }
    TakeFindings(found, encoding, m_facts, m_findings);
    macros.Finish(m_facts, m_macros);
    collector.AddUnreadable(found);
    return outcome;
}

FindOptions FileMigration::SearchOptions(const Options& options, bool endsLinesInCr,
                                         const FindingEncoding& encoding) const {
    FindOptions search;
    search.conversion = options;
    search.hadOldLineEnds = endsLinesInCr;
    search.wasUtf16 = m_byteOrder.has_value();
    search.encodingName =
        m_encodingName.empty() ? m_context.options.legacyEncoding : m_encodingName;
    if (m_context.hasFile) {
        search.isIncludeAtHand = [this, encoding](std::string_view path) {
            return m_context.hasFile(ToUtf8(path, encoding.encoding, encoding.pNamed),
                                     m_facts.path);
        };
    }
    return search;
}

// Most files have no macros at all, and are not looked at for them.
MacroExpansion FileMigration::ExpandIn(const std::string& text, const Options& options) {
    m_includes.clear();
    if (!MayHoldMacros(text)) return {};
    const TextInEncoding encoding = EncodingOfText(text, m_namedCodePage);
    MacroOptions macros;
    macros.conversion = options;
    macros.name = m_facts.path;
    macros.findInclude = [this, &encoding](std::string_view path, const std::string& includingFile,
                                           IncludedText& file) {
        const std::string name = ToUtf8(path, encoding.encoding, encoding.named.get());
        IncludeLookup lookup;
        const bool isFound = m_context.includes.Find(name, includingFile, encoding, file, lookup);
        if (std::find(m_includes.begin(), m_includes.end(), lookup) == m_includes.end()) {
            m_includes.push_back(std::move(lookup));
        }
        return isFound;
    };
    MacroExpansion expansion = ExpandMacros(text, macros);
    m_context.macroCalls.TellOf(m_facts.path, expansion);
    if (const std::optional<ContentHash> hash = m_context.macroCalls.HashOf(m_facts.path)) {
        m_includes.push_back(CallsLookup(*hash));
    }
    return expansion;
}

Options FileMigration::ChooseLayoutFor(const std::string& text) {
    Options options;
    options.legacyCodePage = LegacyCodePage::kSystem;
    options.namedCodePage = m_namedCodePage;
    const LayoutRules& rules = m_context.layoutRules;
    const Layout layout = rules.ForPath(m_facts.path);
    options.batchMode =
        layout == Layout::kAuto ? ChooseLayout(text, options).batchMode : layout == Layout::kBatch;
    m_facts.layout = NameOf(options.batchMode ? Layout::kBatch : Layout::kInteractive);
    if (rules.IsBatchByName(m_facts.path)) {
        m_facts.layoutReason = "pattern";
    } else if (layout != Layout::kAuto) {
        m_facts.layoutReason = "option";
    } else {
        m_facts.layoutReason = options.batchMode ? "reads-well" : "default";
    }
    return options;
}

// In batch layout no command needs a period.
bool FileMigration::EndsAtBlankLines(const Options& options) {
    const bool isWanted = m_context.options.endsAtBlankLines;
    const bool endCommands = isWanted && !options.batchMode;
    m_facts.blankLines = endCommands ? "end-commands" : "mean-nothing";
    m_facts.blankLinesReason = endCommands ? "option" : isWanted ? "layout" : "default";
    return endCommands;
}

// Nothing of what a conversion has told holds for a file that is not converted.
void FileMigration::ForgetUnconverted() {
    const FileFacts facts = m_facts;
    ForgetConversion(m_facts);
    m_facts.lines = facts.lines;
    m_facts.told = facts.told;
    m_facts.codes = facts.codes;
    TakeMacroNumbers(facts, m_facts);
    m_facts.message.clear();
    m_commands.Clear();
}

bool FileMigration::HasResult() const {
    return m_facts.outcome != FileOutcome::kNothing || m_context.copiesUnconverted;
}

// There was something to convert once, or someone has put a file there.
void FileMigration::LeaveStanding() {
    if (m_identity.result != m_identity.source) {
        m_facts.message = "TARGET has a file of this name, which is left alone";
    }
}

bool FileMigration::IsSourceWhole(SourceFile& source) {
    if (source.Failed()) {
        Fail("it cannot be read", source.Error());
        return false;
    }
    if (source.HasChanged()) {
        Fail("it was changed while it was read");
        return false;
    }
    return true;
}

void FileMigration::SkipLink(std::string_view message) {
    m_facts.outcome = FileOutcome::kSkipped;
    m_facts.isLinkNotFollowed = true;
    m_facts.message = message;
}

void FileMigration::Fail(std::string_view what, const std::error_code& error) {
    ForgetConversion(m_facts);
    m_commands.Clear();
    m_findings.Clear();
    m_macros.Clear();
    MarkAsFailed(m_facts, what, error);
}

void FileMigration::Finish(const FileTask& task) {
    ProgressCounters& progress = m_context.progress;
    if (m_recorded) {
        m_context.journal.Note(std::move(*m_recorded));
    } else {
        FinishResult();
    }
    progress.bytes.fetch_add(task.entry.size - std::min(m_bytesCounted, task.entry.size),
                             std::memory_order_relaxed);
    progress.files.fetch_add(1, std::memory_order_relaxed);
}

void FileMigration::FinishResult() {
    JournalRecord record;
    record.commands = m_context.journal.Store(m_commands);
    record.findings = m_context.journal.Store(m_findings);
    record.macros = m_context.journal.Store(m_macros);
    record.includes = m_includes;
    FinishedFile finished;
    if (m_facts.result == ResultState::kNew || m_facts.result == ResultState::kKept) {
        record.facts = m_facts;
        record.identity = m_identity;
        std::error_code error;
        if (m_context.journal.Record(record, error)) {
            finished.identity = m_identity;
        } else if (m_newResult != nullptr) {
            m_newResult.reset();
            Fail("the result cannot be recorded", error);
        }
    }
    if (m_facts.outcome == FileOutcome::kFailed) {
        m_newResult.reset();
        m_context.progress.failures.fetch_add(1, std::memory_order_relaxed);
    }
    finished.entry = {std::move(m_facts), m_context.journal.PlaceOf(record.commands),
                      m_context.journal.PlaceOf(record.findings),
                      m_context.journal.PlaceOf(record.macros)};
    finished.commandsHash = record.commands.hash;
    finished.findingsHash = record.findings.hash;
    finished.macrosHash = record.macros.hash;
    finished.includes = std::move(m_includes);
    if (m_newResult != nullptr) {
        m_context.publisher.Add(std::move(m_newResult), std::move(finished));
    } else {
        m_context.journal.Note(std::move(finished));
    }
}

}  // namespace quillet::migrate
