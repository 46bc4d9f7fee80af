// Bytes in, searched for legacy commands, in every mode. The first byte chooses the mode, the rest
// is the syntax. Whatever cannot be converted gets its hint.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "driver/stringstreams.h"
#include "platform/assertion.h"
#include "quillet.h"

namespace {

using quillet::Finding;
using quillet::LegacyCommand;
using quillet::LegacyFindings;
using quillet::LegacyOutcome;

void Require(bool condition, const char* reason) {
    if (condition) return;
    std::fprintf(stderr, "%s\n", reason);
    std::abort();
}

// `lines` is their number in the text.
template <class Entry>
void CheckLines(const std::vector<Entry>& entries, long lines) {
    long lastFirstLine = 0;
    for (const Entry& entry : entries) {
        Require(entry.firstLine >= std::max(lastFirstLine, 1L), "the order of the lines");
        Require(entry.lastLine >= entry.firstLine && entry.lastLine <= lines, "a last line");
        lastFirstLine = entry.firstLine;
    }
}

void CheckFindings(const LegacyFindings& found, std::string_view text) {
    const auto lines = static_cast<long>(std::count(text.begin(), text.end(), '\n') +
                                         std::count(text.begin(), text.end(), '\r') + 1);
    CheckLines(found.commands, lines);
    CheckLines(found.findings, lines);
    long overlooked = 0;
    for (const Finding& finding : found.findings) {
        Require(finding.causeLine >= 1 && finding.causeLine <= lines, "the line of a cause");
        Require(!finding.sentence.empty(), "a sentence");
        if (quillet::KindOf(finding.code) == quillet::FindingKind::kOverlooked) ++overlooked;
    }
    Require(overlooked == found.Count(LegacyOutcome::kOverlooked), "what was overlooked");
    long outcomes = 0;
    for (const LegacyOutcome outcome : {LegacyOutcome::kConverted, LegacyOutcome::kFailed,
                                        LegacyOutcome::kUnreadable, LegacyOutcome::kOverlooked}) {
        outcomes += found.Count(outcome);
    }
    Require(outcomes == static_cast<long>(found.commands.size()), "the account of the commands");
}

// Asks for a hint for each command that is not converted.
class HintAsker final : public quillet::ConversionListener, public quillet::TextOutput {
public:
    explicit HintAsker(quillet::HintOptions options) : m_options(std::move(options)) {}

    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view /*line*/) override {}
    void OnEncoding(quillet::TextEncoding encoding) override { m_options.encoding = encoding; }
    void OnCommand(const quillet::CommandReport& report) override {
        using quillet::CommandOutcome;
        const bool isConverted = report.outcome == CommandOutcome::kCopied ||
                                 report.outcome == CommandOutcome::kConverted;
        Require(HintFor(report, m_options).empty() == isConverted, "a hint");
    }
    bool Write(std::string_view /*bytes*/) override { return true; }

private:
    quillet::HintOptions m_options;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    // Nothing is told but to the listener of a conversion.
    const quillet::ScopedAssertionHandler handler(
        [](const quillet::AssertionFailure&) { Require(false, "an assertion that is told"); });
    quillet::FindOptions options;
    options.conversion.batchMode = (data[0] & 1U) != 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    CheckFindings(FindLegacyCommands(text, options), text);
    static_cast<void>(ChooseLayout(text, options.conversion));
    const std::string ended = EndAtBlankLines(text, options.conversion);
    CheckFindings(FindLegacyCommands(ended, options), ended);

    quillet::HintOptions hints;
    hints.batchMode = options.conversion.batchMode;
    hints.macroNames = FindMacroNames(text, options.conversion);
    HintAsker asker(hints);
    quillet::StringInput input(text);
    static_cast<void>(ConvertStream(input, asker, asker, options.conversion));
    return 0;
}
