// The command-line program: files in and out around the library.
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "driver/messagecatalogue.h"
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

// A console that takes nothing more is no reason to fail: the conversion is in the output file.
void WriteTo(std::FILE* pStream, std::string_view text) {
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), pStream));
}

void WriteErrorLine(std::string_view text, std::string_view fileName = {}) {
    WriteTo(stderr, text);
    WriteTo(stderr, fileName);
    WriteTo(stderr, "\n");
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

// Letters behind the "b" of the switch are not looked at.
bool IsBatchSwitch(std::string_view argument) {
    return argument.starts_with("-b") || argument.starts_with("/b");
}

[[nodiscard]] bool ParseCommandLine(int argc, char* argv[], CommandLine& commandLine) {
    if (argc != 3 && argc != 4) return false;
    commandLine.batchMode = argc == 4;
    if (commandLine.batchMode && !IsBatchSwitch(argv[1])) return false;
    commandLine.inputName = argv[argc - 2];
    commandLine.outputName = argv[argc - 1];
    return true;
}

// Shows result lines as they come, or keeps them back where the output goes to the same place.
class Console final : public ConversionListener {
public:
    explicit Console(bool holdsResultLines) : m_holdsResultLines(holdsResultLines) {}

    void OnResultLine(std::string_view line) override {
        if (m_holdsResultLines) {
            m_heldLines.append(line);
        } else {
            WriteTo(stdout, line);
        }
    }
    void OnDiagnostic(std::string_view line) override { WriteErrorLine(line); }

    void ShowHeldLines() {
        WriteTo(stdout, m_heldLines);
        static_cast<void>(std::fflush(stdout));
    }

private:
    bool m_holdsResultLines;
    std::string m_heldLines;
};

int Report(Outcome outcome, const CommandLine& commandLine) {
    switch (outcome) {
        case Outcome::kDone:
            return kSuccess;
        case Outcome::kTokenizingError:
            WriteErrorLine(kConversionFailed);
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

int Run(int argc, char* argv[]) {
    g_moduleHandle = GetModuleHandleA(nullptr);
    EnableLocale();
    OpenClosedStandardStreams();
    IgnoreBrokenPipes();
    CommandLine commandLine;
    if (!ParseCommandLine(argc, argv, commandLine)) return FailWithUsage();
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
    console.ShowHeldLines();
    return Report(outcome, commandLine);
}

}  // namespace

}  // namespace quillet

int main(int argc, char* argv[]) { return quillet::Run(argc, argv); }
