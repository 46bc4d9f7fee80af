// All that golden tests hold of generated commands.
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "printedalike.h"

namespace quillet::outline {
namespace {

// What stands in a converted file between the lines around a CTABLES command, warnings left out.
std::vector<std::string> WrittenIn(std::string_view file) {
    constexpr std::string_view kBegin = "COMMENT -- Begin CTABLES command.\n";
    constexpr std::string_view kEnd = "COMMENT -- End CTABLES command.\n";
    std::vector<std::string> texts;
    for (std::size_t place = 0; (place = file.find(kBegin, place)) != std::string_view::npos;) {
        place += kBegin.size();
        const std::size_t end = file.find(kEnd, place);
        if (end == std::string_view::npos) break;
        std::string_view text = file.substr(place, end - place);
        while (text.starts_with("*****")) text.remove_prefix(text.find('\n') + 1);
        if (!text.empty()) texts.emplace_back(text);
        place = end;
    }
    return texts;
}

TEST(PrintWrittenGoldenTest, PrintsWhatTheyHold) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(QUILLET_GOLDEN_FOLDER)) {
        if (entry.path().extension() != ".expected") continue;
        SCOPED_TRACE(entry.path().string());
        std::ifstream stream(entry.path(), std::ios::binary);
        std::string file((std::istreambuf_iterator<char>(stream)), {});
        std::erase(file, '\r');
        Utf8Validator validator;
        const bool isUtf8 = validator.Add(file) && validator.IsValid();
        const CodePage& codePage = isUtf8 ? CodePage::Utf8() : CodePage::Windows1252();
        for (const std::string& text : WrittenIn(file)) {
            ExpectPrintedAlike(codePage, text);
            ++count;
        }
    }
    // As many as there were when this was written.
    EXPECT_GE(count, 470U);
}

}  // namespace
}  // namespace quillet::outline
