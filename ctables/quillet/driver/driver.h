// The driver: reads command after command and sends each on its way into the output.
#ifndef QUILLET_DRIVER_DRIVER_H
#define QUILLET_DRIVER_DRIVER_H

#include <cstddef>

#include "driver/commandstream.h"
#include "driver/outputfile.h"
#include "driver/stepresult.h"
#include "platform/byteblock.h"
#include "platform/codepage.h"
#include "platform/linereader.h"
#include "quillet.h"
#include "tokenizer/parseerror.h"

namespace quillet {

struct ConvertedCommand;

/// Where an input stands in the text that the user knows, for what the output says about lines.
struct InputPlace {
    long linesBefore = 0;  ///< Lines of that text before the input's first one.
    /// The input is the expansion of a macro: everything is in this line and column. 0 for none.
    long callLine = 0;
    int callColumn = 0;
    /// How much of the input is read at a time, in bytes; not 0.
    std::size_t blockSize = kBlockSize;

    /// The line of the text for one of the input.
    [[nodiscard]] long LineOf(long line) const {
        return callLine != 0 ? callLine : line + linesBefore;
    }
};

/// One conversion. It alone writes the frames around converted commands and tells the listener;
/// the steps that convert a command give back a value.
class Driver {
public:
    /// All but `batchMode` and `place` are borrowed; `input` stands at its first byte. The listener
    /// is told the lines of the input.
    Driver(TextInput& input, OutputFile& output, ConversionListener& listener,
           const CodePage& codePage, bool batchMode, InputPlace place = {});

    /// Converts the whole input and finishes the output. To be called once.
    [[nodiscard]] Outcome Run();

    /// In place of `Run`: converts the input as a piece of a text, all of whose lines end alike,
    /// and goes on writing where the output stands. Each piece ends in a period.
    [[nodiscard]] Outcome RunPiece(bool endsLinesInCrLf);

private:
    [[nodiscard]] Outcome HandleAll();
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
    OutputFile& m_out;
    ConversionListener& m_listener;
    const CodePage& m_codePage;
    bool m_batchMode;
    InputPlace m_place;
    CommandKind m_kind = CommandKind::kOrdinary;  // of the command in work
};

/// What `Driver::Run` does when memory runs out before there is a driver.
[[nodiscard]] Outcome StopBeforeTheFirstCommand(TextOutput& output, ConversionListener& listener);

}  // namespace quillet

#endif  // QUILLET_DRIVER_DRIVER_H
