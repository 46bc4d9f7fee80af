#include "driver/converttables.h"

#include "driver/messagecatalogue.h"
#include "driver/outputwriter.h"

namespace quillet {

void ConvertTables(TAVQTokenSequence* /*pSequence*/, OutputFile& out, long /*lineOffset*/,
                   ConversionListener& listener) {
    WriteCommand(kBeginCtables, out, 0);
    listener.OnResultLine(kTablesFailed);
    WriteCommand(kEndCtables, out, 0);
}

}  // namespace quillet
