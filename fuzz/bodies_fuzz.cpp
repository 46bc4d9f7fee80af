// Bytes in, macros whose bodies are converted out. The first byte chooses the layout and whether
// the second half of the rest are calls from another file. The verdicts have to agree with one
// another and with the text, which is another one when a body is converted, and then alone.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "driver/macrobodies.h"
#include "macro/limits.h"
#include "quillet.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

// So that a short text reaches them, and none takes long.
quillet::macro::Limits SmallLimits() {
    quillet::macro::Limits limits;
    limits.loopPasses = 20;
    limits.passes = 200;
    limits.expansions = 200;
    limits.macroDepth = 12;
    limits.nesting = 200;
    limits.textSize = 4096;
    limits.fileTextSize = std::size_t{64} * 1024;
    limits.work = std::uint64_t{1} << 18U;
    limits.workPerByte = 64;
    limits.includedSize = std::size_t{16} * 1024;
    return limits;
}

std::vector<quillet::OutsideCalls> CallsFrom(std::string_view text, bool batchMode) {
    quillet::OutsideCalls calls;
    calls.batchMode = batchMode;
    calls.before = "DEFINE @x () sex !ENDDEFINE.\n";
    calls.calls.push_back({std::string(text), "other", 3});
    return {calls};
}

void CheckBody(const quillet::MacroBody& body) {
    Require(body.firstLine > 0 && body.firstLine <= body.lastLine);
    Require(body.legacyCommands > 0 && body.unusedCommands <= body.legacyCommands);
    const bool isConverted = body.outcome == quillet::MacroBodyOutcome::kConverted;
    Require(isConverted == body.reason.empty());
    if (isConverted) Require(body.calls > 0 && body.unusedCommands < body.legacyCommands);
    const bool isDisproved = body.outcome == quillet::MacroBodyOutcome::kDisproved;
    Require(isDisproved == (body.callLine > 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    std::string_view source(reinterpret_cast<const char*>(data) + 1, size - 1);
    quillet::MacroOptions options;
    options.conversion.batchMode = (data[0] & 1U) != 0;
    std::vector<quillet::OutsideCalls> calls;
    if ((data[0] & 4U) != 0) {
        calls = CallsFrom(source.substr(source.size() / 2), (data[0] & 8U) != 0);
        source = source.substr(0, source.size() / 2);
    }
    const quillet::MacroBodies result =
        ConvertMacroBodies(source, options, calls, /*changeBody=*/{}, SmallLimits());
    bool isAnyConverted = false;
    for (const quillet::MacroBody& body : result.bodies) {
        CheckBody(body);
        isAnyConverted = isAnyConverted || body.outcome == quillet::MacroBodyOutcome::kConverted;
    }
    Require(isAnyConverted == (result.text != source));
    return 0;
}
