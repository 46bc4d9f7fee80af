#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "driver/stringstreams.h"
#include "migrate/recodedtext.h"
#include "support/rownames.h"

namespace quillet::migrate {
namespace {

using namespace std::string_literals;

// Gives out a few bytes at a time.
class SlowInput final : public TextInput {
public:
    SlowInput(std::string_view text, std::size_t step) : m_input(text), m_step(step) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        return m_input.Read(buffer, std::min(size, m_step));
    }
    bool Rewind() override { return m_input.Rewind(); }
    [[nodiscard]] bool Failed() const override { return false; }

private:
    StringInput m_input;
    std::size_t m_step;
};

std::string ReadAll(TextInput& input) {
    std::string text;
    std::vector<char> buffer(3);
    while (const std::size_t count = input.Read(buffer.data(), buffer.size())) {
        text.append(buffer.data(), count);
    }
    return text;
}

const std::string kUtf16 = "\xFF\xFEL\0\xE9\0=\xD8\0\xDE\n\0"s;
const std::string kUtf8 = "\xEF\xBB\xBFLé😀\n";

TEST(MigrateRecodedTextTest, ReadsUtf16AsUtf8Twice) {
    for (std::size_t step = 1; step <= kUtf16.size(); ++step) {
        SCOPED_TRACE(step);
        SlowInput source(kUtf16, step);
        Utf16Input input(source, ByteOrder::kLittleEndian);
        EXPECT_EQ(ReadAll(input), kUtf8);
        EXPECT_FALSE(input.Failed());
        ASSERT_TRUE(input.Rewind());
        EXPECT_EQ(ReadAll(input), kUtf8);
    }
}

TEST(MigrateRecodedTextTest, FailsOnWhatIsNoUtf16) {
    for (const std::string& text : {"\xFF\xFEL"s, "\xFF\xFE\0\xDE"s, "\xFF\xFE=\xD8"s}) {
        StringInput source(text);
        Utf16Input input(source, ByteOrder::kLittleEndian);
        static_cast<void>(ReadAll(input));
        EXPECT_TRUE(input.Failed());
        EXPECT_TRUE(input.IsInvalid());
    }
}

struct LineEndCase {
    std::string_view name;
    std::string_view text;
    std::string_view second;  // what is read the second time
    bool endsLinesInCr;
};

constexpr LineEndCase kLineEnds[] = {
    {"CR", "LIST.\rLIST.\r", "LIST.\nLIST.\n", true},
    {"CR within", "LIST\r.", "LIST\n.", true},
    {"CR LF", "LIST.\r\nLIST.\r\n", "LIST.\r\nLIST.\r\n", false},
    {"LF", "LIST.\nLIST.\n", "LIST.\nLIST.\n", false},
    {"both", "LIST.\rLIST.\rLIST.\n", "LIST.\rLIST.\rLIST.\n", false},
    {"none", "LIST.", "LIST.", false},
    {"nothing", "", "", false},
};

class LineEndTest : public testing::TestWithParam<LineEndCase> {};

// Whether the first reading goes to the end or stops soon.
TEST_P(LineEndTest, AreToldByTheWholeText) {
    const LineEndCase& c = GetParam();
    for (const bool isFirstWhole : {false, true}) {
        SlowInput source(c.text, 3);
        LineEndInput input(source);
        std::string first(2, 'x');
        first.resize(input.Read(first.data(), first.size()));
        if (isFirstWhole) first += ReadAll(input);
        EXPECT_TRUE(c.text.starts_with(first));
        ASSERT_TRUE(input.Rewind());
        EXPECT_EQ(input.EndsLinesInCr(), c.endsLinesInCr);
        const std::string second = ReadAll(input);
        EXPECT_EQ(second, c.second);
        std::string written;
        StringOutput target(written);
        EXPECT_TRUE(LineEndOutput(target, input).Write(second));
        EXPECT_EQ(written, c.text);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, LineEndTest, testing::ValuesIn(kLineEnds), NameOfRow<LineEndCase>);

TEST(MigrateRecodedTextTest, WritesUtf16) {
    std::string written;
    StringOutput target(written);
    Utf16Output output(target, ByteOrder::kLittleEndian);
    for (const char byte : kUtf8) EXPECT_TRUE(output.Write({&byte, 1}));
    EXPECT_EQ(written, kUtf16);
}

std::string InUtf8(std::string_view text, std::size_t step,
                   TextEncoding encoding = TextEncoding::kWindows1252) {
    std::string written;
    StringOutput target(written);
    Utf8Output output(target, nullptr);
    output.ReadAs(encoding);
    for (; !text.empty(); text.remove_prefix(std::min(step, text.size()))) {
        EXPECT_TRUE(output.Write(text.substr(0, step)));
    }
    EXPECT_TRUE(output.Finish());
    return written;
}

TEST(MigrateRecodedTextTest, WritesUtf8) {
    for (std::size_t step = 1; step < 12; ++step) {
        SCOPED_TRACE(step);
        EXPECT_EQ(InUtf8("\xE9t\xE9.\nLIST \x80.\n", step), "été.\nLIST €.\n");
        EXPECT_EQ(InUtf8("LIST.\nno end \xE9", step), "LIST.\nno end é");
        EXPECT_EQ(InUtf8("* Encoding: windows-1252.\n* \xE9.\n", step),
                  "* Encoding: UTF-8.\n* é.\n");
        EXPECT_EQ(InUtf8("LIST.\n* Encoding: windows-1252.\n", step),
                  "LIST.\n* Encoding: windows-1252.\n");
        EXPECT_EQ(InUtf8("* Encoding: utf8.\n", step), "* Encoding: utf8.\n");
    }
}

struct Utf8Case {
    std::string_view name;
    std::string_view text;
    std::string_view written;
};

constexpr Utf8Case kUtf8Texts[] = {
    {"another name", "* Encoding: windows-1250.\nLIST é.\n", "* Encoding: UTF-8.\nLIST é.\n"},
    {"after a byte-order mark", "\xEF\xBB\xBF* Encoding: UTF-16.\r\nLIST.",
     "\xEF\xBB\xBF* Encoding: UTF-8.\r\nLIST."},
    {"the only line", "* Encoding: UTF-16.", "* Encoding: UTF-8."},
    {"its own name", "* Encoding: utf-8.\nLIST.\n", "* Encoding: utf-8.\nLIST.\n"},
    {"its own name, short", "* Encoding: UTF8.\nLIST.\n", "* Encoding: UTF8.\nLIST.\n"},
    {"the second line", "LIST.\n* Encoding: UTF-16.\n", "LIST.\n* Encoding: UTF-16.\n"},
    {"no name", "LIST.\n\nno end", "LIST.\n\nno end"},
    {"what is no UTF-8", "LIST.\n\xFF\n", "LIST.\n\xFF\n"},
    {"nothing", "", ""},
};

class Utf8OutputTest : public testing::TestWithParam<Utf8Case> {};

TEST_P(Utf8OutputTest, NamesUtf8InUtf8) {
    for (std::size_t step = 1; step < 40; ++step) {
        SCOPED_TRACE(step);
        EXPECT_EQ(InUtf8(GetParam().text, step, TextEncoding::kUtf8), GetParam().written);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, Utf8OutputTest, testing::ValuesIn(kUtf8Texts), NameOfRow<Utf8Case>);

}  // namespace
}  // namespace quillet::migrate
