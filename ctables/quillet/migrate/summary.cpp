#include "migrate/summary.h"

#include <algorithm>

#include "platform/numbertext.h"

namespace quillet::migrate {

namespace {

constexpr int kMostFailuresShown = 20;

std::string Count(std::int64_t count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what);
}

// ", 3 skipped"; nothing for none.
std::string Also(std::int64_t count, std::string_view what) {
    return count > 0 ? ", " + Count(count, what) : "";
}

std::string CountOne(std::int64_t count, std::string_view what) {
    return Count(count, what) + (count == 1 ? "" : "s");
}

// About results that someone may want to look at; nothing for none.
std::string LeftAloneLine(const Totals& totals) {
    if (totals.filesEdited + totals.filesOrphaned == 0) return {};
    std::string text = "Left alone: ";
    if (totals.filesEdited > 0) {
        text += CountOne(totals.filesEdited, "edited result") +
                Also(totals.filesOutdated, "of them with a source that has changed since");
    }
    if (totals.filesOrphaned > 0) {
        text += (totals.filesEdited > 0 ? ", " : "") + CountOne(totals.filesOrphaned, "result") +
                " without a source";
    }
    return text + "\n";
}

// Nothing when all is as it was.
std::string ChangesLine(const std::optional<ChangeSums>& sums) {
    if (!sums || sums->mended + sums->failing + sums->gone == 0) return {};
    return "Since the last run: " + Count(sums->mended, "mended") +
           Also(sums->failing, "newly not converted") + Also(sums->gone, "gone") +
           Also(sums->stillFailing, "still not converted") + "\n";
}

// What the calls of macros give, whether it is put into the results or not; nothing for none.
std::string MacroLine(const Totals& totals) {
    if (totals.macros == 0) return {};
    std::string text = CountOne(totals.macros, "macro") + " with legacy commands";
    if (totals.macroCalls > 0) {
        text += ", " + CountOne(totals.macroCalls, "call") + ": " +
                Count(totals.macroCallsConverted, "can be converted") +
                Also(totals.macroCallsFailed, "cannot") +
                Also(totals.macroCallsLeft, "cannot be expanded");
    }
    return text + "\n";
}

// What people have said about commands; nothing when they have not.
std::string SignOffLine(const Report& report, const Totals& totals) {
    const auto others = static_cast<std::int64_t>(report.otherSignOffs.size());
    if (totals.commandsChecked + totals.commandsMendedByHand + others == 0) return {};
    std::string text = "Signed off: " + CountOne(totals.commandsChecked, "command") + " checked" +
                       Also(totals.commandsMendedByHand, "mended by hand");
    if (others > 0) {
        text += "; " + CountOne(others, "sign-off") +
                " about commands that are not there any more, or were not looked at";
    }
    return text + "\n";
}

}  // namespace

std::string Printable(std::string_view text) {
    constexpr unsigned char kFirstPrintable = 0x20;
    constexpr unsigned char kDelete = 0x7F;
    std::string printable(text);
    std::replace_if(
        printable.begin(), printable.end(),
        [](char byte) {
            const auto value = static_cast<unsigned char>(byte);
            return value < kFirstPrintable || value == kDelete;
        },
        '?');
    return printable;
}

std::string FormatFailures(const Report& report) {
    std::string text;
    std::int64_t count = 0;
    for (const FileEntry& file : report.files) {
        if (file.facts.outcome != FileOutcome::kFailed || ++count > kMostFailuresShown) continue;
        text += Printable(file.facts.path) + ": " + Printable(file.facts.message) + "\n";
    }
    if (count > kMostFailuresShown) {
        text += "and " + std::to_string(count - kMostFailuresShown) + " more; see the report\n";
    }
    return text;
}

std::string FormatSummary(const Report& report) {
    const Totals totals = TotalsOf(report.files);
    std::string text = report.run.isInterrupted ? "Stopped after " : "";
    text +=
        CountOne(totals.files, "file") + " in " + FixedText(report.run.seconds, 1) +
        " s: " + Count(totals.filesConverted, "converted") + Also(totals.filesChanged, "changed") +
        Also(totals.filesPartly, "partly") + Also(totals.filesUnconverted, "unconverted") +
        Also(totals.filesOverlooked, "with overlooked commands") +
        Also(totals.filesStopped, "stopped at an error") +
        Also(totals.filesNothing, "with nothing to convert") + Also(totals.filesCopied, "copied") +
        Also(totals.filesSkipped, "skipped") + Also(totals.filesFailed, "failed") +
        Also(totals.filesKept, "of them kept from an earlier run") + "\n";
    text += LeftAloneLine(totals);
    text += CountOne(totals.commandsFound, "legacy command") + ": " +
            Count(totals.commandsConverted, "converted") + Also(totals.commandsFailed, "failed") +
            Also(totals.commandsUnreadable, "unreadable") +
            Also(totals.commandsOverlooked, "overlooked") + "; " +
            CountOne(totals.warnings, "warning") + "; " +
            CountOne(totals.commandsCopied, "other command") + " copied\n";
    if (totals.findingsChanged > 0) {
        text += CountOne(totals.findingsChanged, "place") + " where other text is lost or joined\n";
    }
    text += MacroLine(totals);
    return text + ChangesLine(report.sinceLastRun) + SignOffLine(report, totals);
}

}  // namespace quillet::migrate
