// The command-line program: files in and out around the library.
#include <cstdio>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "driver/messagecatalogue.h"
#include "driver/reasons.h"
#include "platform/system.h"
#include "platform/textfile.h"
#include "quillet.h"

namespace quillet {

namespace {

// Kept for graph libraries that want to know the program they run in.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
ModuleHandle g_moduleHandle = nullptr;

constexpr int kSuccess = 0;
constexpr int kFailure = 1;

void WriteErrorLine(std::string_view text, std::string_view fileName = "") {
    WriteToStream(stderr, text);
    WriteToStream(stderr, fileName);
    WriteToStream(stderr, "\n");
}

int FailWithUsage() {
    WriteErrorLine(kUsageHeading);
    WriteErrorLine(kUsageLine);
    return kFailure;
}

int FailToOpen(std::string_view message, const std::string& fileName) {
    WriteErrorLine(message, fileName);
    WriteErrorLine("");
    return FailWithUsage();
}

struct CommandLine {
    bool batchMode = false;
    std::string inputName;
    std::string outputName;
};

// Letters after the "b" of the switch are not looked at.
bool IsBatchSwitch(std::string_view argument) {
    return argument.starts_with("-b") || argument.starts_with("/b");
}

[[nodiscard]] bool ParseCommandLine(const std::vector<std::string>& arguments,
                                    CommandLine& commandLine) {
    if (arguments.size() != 2 && arguments.size() != 3) return false;
    commandLine.batchMode = arguments.size() == 3;
    if (commandLine.batchMode && !IsBatchSwitch(arguments.front())) return false;
    commandLine.inputName = arguments[arguments.size() - 2];
    commandLine.outputName = arguments.back();
    return true;
}

// Shows result lines as they come, or keeps them back where the output goes to the same place.
class Console final : public ConversionListener {
public:
    explicit Console(bool holdsResultLines) : m_holdsResultLines(holdsResultLines) {}

    void OnResultLine(std::string_view line) override {
        m_hasResultLines = true;
        if (m_holdsResultLines) {
            m_heldLines.append(line);
        } else {
            Show(line);
        }
    }
    void OnDiagnostic(std::string_view line) override { WriteErrorLine(line); }

    // Shows the lines held back. False when some line has not arrived where standard output
    // goes; without any, it may be closed or full.
    [[nodiscard]] bool Finish() {
        if (!m_hasResultLines) return true;
        Show(m_heldLines);
        return std::fclose(stdout) == 0 && !m_hasFailed;
    }

private:
    void Show(std::string_view text) { m_hasFailed = !WriteToStream(stdout, text) || m_hasFailed; }

    bool m_holdsResultLines;
    bool m_hasResultLines = false;
    bool m_hasFailed = false;
    std::string m_heldLines;
};

int Report(Outcome outcome, const CommandLine& commandLine) {
    switch (outcome) {
        case Outcome::kDone:
            return kSuccess;
        case Outcome::kTokenizingError:
            WriteErrorLine(kConversionFailed);
            break;
        case Outcome::kOutOfMemory:
            // The listener has been told for which command.
            break;
        case Outcome::kReadError:
            WriteErrorLine(kInputReadError, commandLine.inputName);
            break;
        case Outcome::kWriteError:
            WriteErrorLine(kOutputWriteError, commandLine.outputName);
            break;
    }
    return kFailure;
}

int Run(const std::vector<std::string>& arguments) {
    g_moduleHandle = GetModuleHandleA(nullptr);
    static_cast<void>(EnableLocale());
    OpenClosedStandardStreams();
    IgnoreWriteSignals();
    CommandLine commandLine;
    if (!ParseCommandLine(arguments, commandLine)) return FailWithUsage();
    const std::unique_ptr<FileInput> input = FileInput::Open(commandLine.inputName);
    if (input == nullptr) return FailToOpen(kInputOpenError, commandLine.inputName);
    const std::unique_ptr<FileOutput> output = FileOutput::Open(commandLine.outputName, *input);
    if (output == nullptr) return FailToOpen(kOutputOpenError, commandLine.outputName);

    Options options;
    options.batchMode = commandLine.batchMode;
    options.legacyCodePage = LegacyCodePage::kSystem;
    Console console(output->IsStandardOutput());
    Outcome outcome = ConvertStream(*input, *output, console, options);
    if (!output->Close() && outcome != Outcome::kReadError) outcome = Outcome::kWriteError;
    const bool hasShownAll = console.Finish();
    const int status = Report(outcome, commandLine);
    // Where the output goes there as well, it has been told.
    if (hasShownAll || (outcome == Outcome::kWriteError && output->IsStandardOutput())) {
        return status;
    }
    WriteErrorLine(kStandardOutputError);
    return kFailure;
}

}  // namespace

}  // namespace quillet

int main(int argc, char* argv[]) {
    try {
        return quillet::Run(quillet::ProgramArguments(argc, argv));
    } catch (const std::bad_alloc&) {
        // Nothing was read yet.
        quillet::WriteErrorLine(quillet::OutOfMemoryLine(1).Text());
        return quillet::kFailure;
    }
}
