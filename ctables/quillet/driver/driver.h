// The driver: reads command after command and sends each on its way into the output.
#ifndef QUILLET_DRIVER_DRIVER_H
#define QUILLET_DRIVER_DRIVER_H

#include "driver/commandstream.h"
#include "driver/outputfile.h"
#include "driver/stepresult.h"
#include "platform/codepage.h"
#include "platform/linereader.h"
#include "quillet.h"
#include "tokenizer/parseerror.h"

namespace quillet {

struct ConvertedCommand;

/// One conversion. It alone writes the frames around converted commands and tells the listener;
/// the steps that convert a command give back a value.
class Driver {
public:
    /// All but `batchMode` are borrowed; `input` stands at its first byte.
    Driver(TextInput& input, TextOutput& output, ConversionListener& listener,
           const CodePage& codePage, bool batchMode);

    /// Converts the whole input. To be called once.
    [[nodiscard]] Outcome Run();

private:
    [[nodiscard]] Outcome HandleCommands();
    [[nodiscard]] bool ReadCommand();
    void HandleCommand();

    [[nodiscard]] const ConvertedCommand* FindConversion();
    void CopyThrough();
    void Convert(const ConvertedCommand& command);
    [[nodiscard]] StepResult RunStep(const ConvertedCommand& command) const;
    void WriteConverted(const ConvertedCommand& command, CommandReport& report);
    void WriteFailed(const ConvertedCommand& command, const CommandReport& report, bool hasPlace);
    void WriteSource(const ConvertedCommand& command);

    void StopAtError(const ParseError& error);
    void StopWithoutMemory();
    [[nodiscard]] CommandReport ReportOfCommand() const;

    LineReader m_lines;
    CommandStream m_commands;
    OutputFile m_out;
    ConversionListener& m_listener;
    const CodePage& m_codePage;
    bool m_batchMode;
    CommandKind m_kind = CommandKind::kOrdinary;  // of the command in work
};

/// What `Driver::Run` does when memory runs out before there is a driver.
[[nodiscard]] Outcome StopBeforeTheFirstCommand(TextOutput& output, ConversionListener& listener);

}  // namespace quillet

#endif  // QUILLET_DRIVER_DRIVER_H
