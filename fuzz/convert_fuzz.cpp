// Bytes in, conversion out, in every mode. The first byte chooses the mode, the rest is the
// syntax.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "quillet.h"

namespace {

// What holds for every output, whatever the input.
void CheckOutput(std::string_view output) {
    if (!output.ends_with('\n')) std::abort();
    const bool isOnlyLineEnd = output == "\n" || output == "\r\n";
    while (!isOnlyLineEnd && !output.empty()) {
        const std::size_t end = output.find('\n');
        if (output.substr(0, end).find_first_not_of(" \t\r") == std::string_view::npos) {
            std::abort();
        }
        output.remove_prefix(end + 1);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    quillet::Options options;
    options.batchMode = (data[0] & 1U) != 0;
    if ((data[0] & 2U) != 0) options.legacyCodePage = quillet::LegacyCodePage::kSystem;
    const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
    CheckOutput(quillet::ConvertText(input, options).output);
    return 0;
}
