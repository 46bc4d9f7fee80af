#include "migrate/filemigration.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "migrate/jsonreport.h"
#include "quillet.h"

namespace quillet::migrate {

namespace {

constexpr std::size_t kBlockSize = 128UL * 1024;

// Counts lines and bytes when the text is read for the second time, which is the time when it is
// converted.
class CountingInput final : public TextInput {
public:
    CountingInput(SourceFile& source, std::atomic<std::uint64_t>& progress)
        : m_source(source), m_progress(progress) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = m_source.Read(buffer, size);
        if (!m_isSecondTime || count == 0) return count;
        m_bytes += count;
        m_progress.fetch_add(count, std::memory_order_relaxed);
        m_lines += std::count(buffer, buffer + count, '\n');
        m_endsInLine = buffer[count - 1] != '\n';
        return count;
    }
    bool Rewind() override {
        m_isSecondTime = true;
        return m_source.Rewind();
    }
    [[nodiscard]] bool Failed() const override { return m_source.Failed(); }
    [[nodiscard]] bool HasChanged() const override { return m_source.HasChanged(); }

    // A conversion that stopped leaves lines that are counted all the same.
    void ReadRest() {
        std::vector<char> block(kBlockSize);
        while (Read(block.data(), block.size()) > 0) continue;
    }
    [[nodiscard]] std::int64_t Lines() const { return m_lines + (m_endsInLine ? 1 : 0); }
    [[nodiscard]] std::uint64_t Bytes() const { return m_bytes; }

private:
    SourceFile& m_source;
    std::atomic<std::uint64_t>& m_progress;
    bool m_isSecondTime = false;
    bool m_endsInLine = false;
    std::int64_t m_lines = 0;
    std::uint64_t m_bytes = 0;
};

// For conversions of which only the facts are wanted.
class NoOutput final : public TextOutput {
public:
    bool Write(std::string_view /*bytes*/) override { return true; }
};

std::string_view NameOf(TextEncoding encoding) {
    switch (encoding) {
        case TextEncoding::kUtf8:
            return "utf-8";
        case TextEncoding::kWindows1252:
            return "windows-1252";
        case TextEncoding::kSystem:
            break;
    }
    return "system";
}

// Puts what a conversion tells about its commands into the facts of its file.
class FactsCollector final : public ConversionListener {
public:
    FactsCollector(FileFacts& facts, CommandSpool& commands, ProgressCounters& progress)
        : m_facts(facts), m_commands(commands), m_progress(progress) {}

    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view line) override {
        constexpr int kMostShown = 5;
        if (++m_diagnostics > kMostShown) return;
        if (!m_facts.message.empty()) m_facts.message += "; ";
        m_facts.message += line;
    }
    void OnEncoding(TextEncoding encoding) override {
        m_encoding = encoding;
        m_facts.encoding = NameOf(encoding);
    }
    void OnCommand(const CommandReport& report) override {
        ++CounterOf(report.outcome);
        m_progress.commands.fetch_add(1, std::memory_order_relaxed);
        m_facts.warnings += static_cast<std::int64_t>(report.warnings.size());
        if (report.outcome == CommandOutcome::kCopied) return;
        m_commands.Add(CommandJson(report, m_encoding));
        if (report.outcome == CommandOutcome::kConverted) return;
        m_progress.failures.fetch_add(1, std::memory_order_relaxed);
        AddError(quillet::NameOf(report.errorKind));
    }

private:
    std::int64_t& CounterOf(CommandOutcome outcome) {
        switch (outcome) {
            case CommandOutcome::kCopied:
                return m_facts.copied;
            case CommandOutcome::kConverted:
                return m_facts.converted;
            case CommandOutcome::kFailed:
                return m_facts.failed;
            case CommandOutcome::kUnreadable:
                break;
        }
        return m_facts.unreadable;
    }
    void AddError(std::string_view name) {
        std::vector<std::string>& errors = m_facts.errors;
        const auto place = std::lower_bound(errors.begin(), errors.end(), name);
        if (place == errors.end() || *place != name) errors.emplace(place, name);
    }

    FileFacts& m_facts;
    CommandSpool& m_commands;
    ProgressCounters& m_progress;
    TextEncoding m_encoding = TextEncoding::kUtf8;
    int m_diagnostics = 0;
};

}  // namespace

bool IsResultCurrent(const FileStatus& source, const FileStatus& result) {
    return result.kind == FileKind::kFile && !IsOlder(result, source);
}

FileMigration::FileMigration(const MigrationContext& context, unsigned worker)
    : m_context(context), m_temporaryPurpose(std::to_string(worker)) {}

void FileMigration::Run(const FileTask& task) {
    m_facts = {};
    m_facts.path = task.entry.path;
    m_resultFolder.reset();
    m_resultFolderError.clear();
    m_commands.Clear();
    m_earlierEntry.reset();
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
    m_facts.isKept = StandsAlready(source);
    if (m_facts.isKept && TakeEarlierFacts(source)) return;
    const Content content = LookAtContent(source);
    if (source.Failed()) return Fail("it cannot be read", source.Error());
    if (task.isConverted && content == Content::kUtf16) {
        return Fail("it is UTF-16, which cannot be converted: save it as UTF-8");
    }
    if (task.isConverted && content == Content::kText) {
        Convert(source);
    } else if (m_context.copiesOthers) {
        Copy(source);
    } else {
        m_facts.isKept = false;
        m_facts.outcome = FileOutcome::kSkipped;
        m_facts.message = "no text: there is a zero byte in its first 64 KiB";
    }
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

bool FileMigration::StandsAlready(const SourceFile& source) const {
    FileStatus result;
    std::error_code error;
    return !m_context.replacesNewer && m_resultFolder != nullptr &&
           m_resultFolder->ReadStatus(NamePartOf(m_facts.path), result, error) &&
           IsResultCurrent(source.Status(), result);
}

bool FileMigration::TakeEarlierFacts(const SourceFile& source) {
    const FileEntry* pEntry =
        m_context.earlier.Find(m_facts.path, source.Status().size, source.Status().modified);
    if (pEntry == nullptr) return false;
    m_earlierEntry = *pEntry;
    m_earlierEntry->facts.isKept = true;
    return true;
}

std::unique_ptr<NewFile> FileMigration::CreateResult() {
    std::error_code error = m_resultFolderError;
    std::unique_ptr<NewFile> result;
    if (m_resultFolder != nullptr) {
        result = NewFile::Create(m_resultFolder, m_context.target.TemporaryName(m_temporaryPurpose),
                                 error);
    }
    if (result == nullptr) Fail("the result cannot be written", error);
    return result;
}

void FileMigration::CommitResult(const SourceFile& source, NewFile& result) {
    // Someone may have moved the folder meanwhile; then the result would be elsewhere, and this
    // may be in the source.
    FolderProblem problem;
    const std::shared_ptr<const Folder> folder =
        m_context.target.OpenFolder(FolderPartOf(m_facts.path), problem);
    if (folder == nullptr) return Fail(problem.message);
    if (folder->Identity() != m_resultFolder->Identity()) {
        return Fail("the folder of its result was replaced while it was converted");
    }
    if (!result.Commit(NamePartOf(m_facts.path), source.Status().permissions)) {
        Fail("the result cannot be written", result.Error());
    }
}

void FileMigration::Convert(SourceFile& source) {
    std::unique_ptr<NewFile> result;
    if (!WritesNothing()) {
        result = CreateResult();
        if (result == nullptr) return;
    }
    NoOutput nothing;
    TextOutput& output = result != nullptr ? static_cast<TextOutput&>(*result) : nothing;
    CountingInput input(source, m_context.progress.bytes);
    FactsCollector collector(m_facts, m_commands, m_context.progress);
    Options options;
    options.batchMode = m_context.batchMode;
    options.legacyCodePage = LegacyCodePage::kSystem;
    const Outcome outcome = ConvertStream(input, output, collector, options);
    input.ReadRest();
    m_facts.lines = input.Lines();
    m_bytesCounted = input.Bytes();
    NoteOutcome(outcome, source, result.get());
    if (result != nullptr && m_facts.outcome != FileOutcome::kFailed) {
        CommitResult(source, *result);
    }
}

void FileMigration::NoteOutcome(Outcome outcome, SourceFile& source, const NewFile* pResult) {
    if (source.Failed()) return Fail("it cannot be read", source.Error());
    if (outcome == Outcome::kWriteError) {
        return Fail("the result cannot be written",
                    pResult != nullptr ? pResult->Error() : std::error_code());
    }
    // The look at its beginning has found no other reason why a text is not read to its end.
    if (outcome == Outcome::kReadError || source.HasChanged()) {
        return Fail("it was changed while it was read");
    }
    if (outcome == Outcome::kTokenizingError) {
        m_facts.outcome = FileOutcome::kStopped;
    } else {
        m_facts.outcome = m_facts.failed > 0 ? FileOutcome::kPartly : FileOutcome::kConverted;
    }
}

void FileMigration::Copy(SourceFile& source) {
    m_facts.outcome = FileOutcome::kCopied;
    if (WritesNothing()) return;
    const std::unique_ptr<NewFile> result = CreateResult();
    if (result == nullptr) return;
    std::vector<char> block(kBlockSize);
    while (const std::size_t count = source.Read(block.data(), block.size())) {
        if (!result->Write({block.data(), count})) {
            return Fail("the result cannot be written", result->Error());
        }
    }
    if (source.Failed()) return Fail("it cannot be read", source.Error());
    if (source.HasChanged()) return Fail("it was changed while it was read");
    CommitResult(source, *result);
}

void FileMigration::SkipLink(std::string_view message) {
    m_facts.outcome = FileOutcome::kSkipped;
    m_facts.isLinkNotFollowed = true;
    m_facts.message = message;
}

void FileMigration::Fail(std::string_view what, const std::error_code& error) {
    m_facts.outcome = FileOutcome::kFailed;
    m_facts.isKept = false;
    m_facts.message = what;
    if (error) m_facts.message += ": " + DescribeError(error);
}

void FileMigration::Finish(const FileTask& task) {
    ProgressCounters& progress = m_context.progress;
    if (m_facts.outcome == FileOutcome::kFailed && !m_earlierEntry) {
        progress.failures.fetch_add(1, std::memory_order_relaxed);
    }
    if (m_earlierEntry) {
        m_context.journal.AddKept(std::move(*m_earlierEntry));
    } else {
        m_context.journal.Add(std::move(m_facts), m_commands);
    }
    progress.bytes.fetch_add(task.entry.size - std::min(m_bytesCounted, task.entry.size),
                             std::memory_order_relaxed);
    progress.files.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace quillet::migrate
