// Bytes in, read as a file of sign-offs. What is accepted is counted again in the file itself.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "migrate/signoffs.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    quillet::migrate::SignOffs signOffs;
    std::string problem;
    const bool isRead = quillet::migrate::ParseSignOffs(text, signOffs, problem);
    if (isRead != problem.empty()) std::abort();
    if (!isRead) return 0;
    std::size_t count = 0;
    for (const auto& [path, ofFile] : signOffs) count += ofFile.size();
    if (count != nlohmann::json::parse(text)["signOffs"].size()) {
        std::fputs("a sign-off is lost\n", stderr);
        std::abort();
    }
    return 0;
}
