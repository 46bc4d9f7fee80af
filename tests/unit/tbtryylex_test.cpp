#include "parser/tbtryylex.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tablesparsing.h"

namespace quillet {
namespace {

using tablesparsing::Command;
using tablesparsing::TypeName;

// What the token function delivers for a whole command: code, location, token text.
std::string Deliver(const std::string& text) {
    Command parsed(text);
    TablesLocation location;
    std::ostringstream delivered;
    for (;;) {
        OpaqueValue value;
        const int code = tbtryylex(&value, &location, parsed.command);
        EXPECT_TRUE(OpaqueValue_IsValid(value));
        delivered << (code == 0 ? "end" : TypeName(static_cast<NodeType>(code))) << ' '
                  << location.first_line << ':' << location.first_column << '-'
                  << location.last_line << ':' << location.last_column;
        if (code == 0) {
            EXPECT_TRUE(OpaqueValue_IsEmpty(value));
            return delivered.str();
        }
        EXPECT_EQ(OpaqueValue_GetTbTokenType(value), static_cast<NodeType>(code));
        delivered << ' ' << OpaqueValue_PeekTAVQToken(value)->Text(/*raw=*/true) << '\n';
        OpaqueValue_Clear(value);
    }
}

TEST(TbtrYylexTest, LocationsAndValues) {
    struct Case {
        const char* name;
        const char* text;
        const char* expected;
    };
    const Case cases[] = {
        {"nothing read: the start of the command", "TABLES", "end 1:1-1:1"},
        {"slashes are not delivered and leave no location", "TABLES // /", "end 1:1-1:1"},
        {"one line", "TABLES /TABLE age BY b",
         "TABLE 1:9-1:13 TABLE\n"
         "VARNAME 1:15-1:17 age\n"
         "BY 1:19-1:20 BY\n"
         "VARNAME 1:22-1:22 b\n"
         "end 1:22-1:22"},
        {"an implicit slash is not delivered either", "TABLES TABLE a",
         "TABLE 1:8-1:12 TABLE\n"
         "VARNAME 1:14-1:14 a\n"
         "end 1:14-1:14"},
        {"later lines count from 0", "TABLES\n/TITLE\n  'x y'",
         "TITLE 2:1-2:5 TITLE\n"
         "SLITERAL 3:2-3:6 'x y'\n"
         "end 3:2-3:6"},
        {"columns count characters, lengths bytes", "TABLES /TABLE \xC3\xA4 \xC3\xB6",
         "TABLE 1:9-1:13 TABLE\n"
         "VARNAME 1:15-1:16 \xC3\xA4\n"
         "VARNAME 1:17-1:18 \xC3\xB6\n"
         "end 1:17-1:18"},
        {"a merged number begins at its sign", "TABLES /STATISTICS P -  5",
         "STATISTICS 1:9-1:18 STATISTICS\n"
         "VARNAME 1:20-1:20 P\n"
         "NUMBER 1:22-1:23 -5\n"
         "end 1:22-1:23"},
        {"replayed tokens keep their places", "TABLES /BREAK r /TABLE a",
         "TABLE 1:18-1:22 TABLE\n"
         "VARNAME 1:24-1:24 a\n"
         "VARNAME 1:15-1:15 r\n"
         "end 1:15-1:15"},
        {"a slash at the end does not move the end", "TABLES /TABLE a /",
         "TABLE 1:9-1:13 TABLE\n"
         "VARNAME 1:15-1:15 a\n"
         "end 1:15-1:15"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Deliver(c.text), c.expected);
        EXPECT_EQ(Deliver(c.text), c.expected);
    }
}

TEST(TbtrYylexTest, TheTraceListsTheTokens) {
    Command parsed("TABLES /TABLE a");
    std::ostringstream trace;
    parsed.command.SetTrace(&trace);
    TablesLocation location;
    OpaqueValue value;
    while (tbtryylex(&value, &location, parsed.command) != 0) OpaqueValue_Clear(value);
    EXPECT_EQ(trace.str(),
              "kString\t1:9\tkNotOperator\tTABLE\n"
              "kString\t1:15\tkNotOperator\ta\n"
              "End-of-command-token-sequence\n");
}

// A sequence whose only token after the command word has no text, or is no token at all.
class FaultySequence final : public TokenSequenceBase {
public:
    explicit FaultySequence(bool hasToken) : m_hasToken(hasToken) {}
    bool Next() override {
        m_index = m_nextIndex;
        if (m_nextIndex < 2) ++m_nextIndex;
        return m_index < 2;
    }
    [[nodiscard]] int CurrentIndex() const override { return m_index; }
    void SetNextIndex(int index) override { m_nextIndex = index; }
    [[nodiscard]] int Count() const override { return 2; }
    [[nodiscard]] int Type() const override { return m_index < 2 ? kNumber : kAtEnd; }
    [[nodiscard]] int Operator() const override { return kNotOperator; }
    std::size_t GetText(const char*&, std::size_t& length) const override { return length = 0; }
    std::size_t GetValueText(const char*&, std::size_t& length) const override {
        return length = 0;
    }
    [[nodiscard]] double NumberValue() const override { return 0.0; }
    [[nodiscard]] int Line() const override { return 4; }
    [[nodiscard]] int Column() const override { return 7; }
    std::size_t GetSourceText(const char*&, std::size_t& length) const override {
        return length = 0;
    }
    void DumpCurrent(std::ostream&) const override {}
    [[nodiscard]] int CompareCurrent(std::string_view, std::size_t) const override { return -1; }
    [[nodiscard]] TAVQToken CloneCurrent() override {
        if (!m_hasToken) return {};
        static constexpr TokenTexts kNoTexts;
        return {kNumber, kNoTexts};
    }

private:
    bool m_hasToken;
    int m_index = 0;
    int m_nextIndex = 0;
};

TEST(TbtrYylexTest, ATokenWithoutTextCoversItsFirstColumn) {
    AssertionRecorder assertions;
    FaultySequence sequence(/*hasToken=*/true);
    TablesCommand command(CodePage::Utf8(), &sequence);
    TablesLocation location;
    OpaqueValue value;
    EXPECT_EQ(tbtryylex(&value, &location, command), SP_NUMBER);
    OpaqueValue_Clear(value);
    EXPECT_EQ(assertions.Texts(), std::vector<std::string>{"tokenStr.size()"});
    EXPECT_EQ(location.last_line, 4);
    EXPECT_EQ(location.last_column, 7);
}

TEST(TbtrYylexTest, ACodeWithoutATokenIsTheEnd) {
    AssertionRecorder assertions;
    FaultySequence sequence(/*hasToken=*/false);
    TablesCommand command(CodePage::Utf8(), &sequence);
    TablesLocation location;
    OpaqueValue value;
    EXPECT_EQ(tbtryylex(&value, &location, command), 0);
    EXPECT_TRUE(OpaqueValue_IsEmpty(value));
    EXPECT_EQ(assertions.Texts(), std::vector<std::string>{"yyTokenType == 0"});
}

}  // namespace
}  // namespace quillet
