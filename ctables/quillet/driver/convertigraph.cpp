#include "driver/convertigraph.h"

#include "driver/messagecatalogue.h"
#include "driver/outputwriter.h"

namespace quillet {

void ConvertIgraph(const CodePage& /*codePage*/, TAVQTokenSequence* /*pSequence*/, OutputFile& out,
                   long /*lineOffset*/, ConversionListener& listener) {
    WriteCommand(kBeginGgraph, out, 0);
    WriteCommand(kIgraphNotValid, out, 0);
    WriteCommand(kEndGgraph, out, 0);
    listener.OnResultLine(kIgraphFailed);
}

}  // namespace quillet
