#include "tokenizer/mbcharpointer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/assertion.h"
#include "platform/codepage.h"
#include "support/doublebytepage.h"

namespace quillet {
namespace {

using namespace std::string_literals;

// A faulty page whose characters swallow all bytes that there are, the closing NUL as well.
class GreedyPage : public CodePage {
public:
    GreedyPage() = default;

    [[nodiscard]] std::size_t NonAsciiLength(const char* /*bytes*/,
                                             std::size_t maxBytes) const override {
        return maxBytes;
    }
    void AppendUpper(std::string_view character, std::string& result) const override {
        result += character;
    }
    void AppendAsUtf8(std::string_view /*character*/, std::string& result) const override {
        AppendCodePoint(kReplacementCharacter, result);
    }
};

struct Step {
    std::int32_t code;
    std::int32_t column;
    std::ptrdiff_t offset;

    bool operator==(const Step& other) const {
        return code == other.code && column == other.column && offset == other.offset;
    }
};

std::ostream& operator<<(std::ostream& stream, const Step& step) {
    return stream << "{" << step.code << ", " << step.column << ", " << step.offset << "}";
}

std::vector<Step> Walk(const CodePage& codePage, const std::string& text) {
    MbCharPointer cursor(codePage, text);
    std::vector<Step> steps;
    steps.push_back({cursor.Code(), cursor.Column(), cursor.Position() - text.data()});
    while (cursor.Code() != 0) {
        const std::int32_t code = cursor.Advance();
        EXPECT_EQ(code, cursor.Code());
        steps.push_back({code, cursor.Column(), cursor.Position() - text.data()});
    }
    return steps;
}

struct WalkCase {
    const char* name;
    const CodePage& codePage;
    std::string text;
    std::vector<Step> steps;  // code, column, byte offset; the last one is the end
};

TEST(MbCharPointerTest, WalksCharacterByCharacter) {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    const DoubleBytePage doubleByte;
    const WalkCase cases[] = {
        {"an empty text is at its end in column 1", utf8, "", {{0, 1, 0}}},
        {"an empty text in a single-byte page", latin, "", {{0, 1, 0}}},
        {"ASCII gives its bytes; the end has a column too",
         utf8,
         "aZ",
         {{97, 1, 0}, {90, 2, 1}, {0, 3, 2}}},
        {"controls and DEL are characters",
         latin,
         "\x01\t\n\x7F",
         {{1, 1, 0}, {9, 2, 1}, {10, 3, 2}, {127, 4, 3}, {0, 5, 4}}},
        {"a two-byte character is one column", utf8, "é.", {{4096, 1, 0}, {46, 2, 2}, {0, 3, 3}}},
        {"three and four bytes have the same code",
         utf8,
         "a€𐐨b",
         {{97, 1, 0}, {4096, 2, 1}, {4096, 3, 4}, {98, 4, 8}, {0, 5, 9}}},
        {"a lead byte without its trail byte ends the text",
         utf8,
         "a\xC3",
         {{97, 1, 0}, {0, 2, 1}}},
        {"a lead byte before ASCII ends the text", utf8, "a\xC3x", {{97, 1, 0}, {0, 2, 1}}},
        {"a stray trail byte ends the text", utf8, "a\xA9x", {{97, 1, 0}, {0, 2, 1}}},
        {"an invalid byte at the start ends the text at once", utf8, "\xFFx", {{0, 1, 0}}},
        {"a NUL byte ends the text", utf8, "a\0b"s, {{97, 1, 0}, {0, 2, 1}}},
        {"a NUL byte ends the text in a single-byte page",
         latin,
         "\xE9\0b"s,
         {{-23, 1, 0}, {0, 2, 1}}},
        {"single bytes above 127 are sign-extended",
         latin,
         "\x80\xE9\xFF",
         {{-128, 1, 0}, {-23, 2, 1}, {-1, 3, 2}, {0, 4, 3}}},
        {"bytes without a character in Windows-1252 are characters",
         latin,
         "\x81\x9D",
         {{-127, 1, 0}, {-99, 2, 1}, {0, 3, 2}}},
        {"a trail byte that looks like ASCII is no character",
         doubleByte,
         "\x81'\x9F.x",
         {{4096, 1, 0}, {4096, 2, 2}, {120, 3, 4}, {0, 4, 5}}},
        {"a double-byte lead byte without its trail byte ends the text",
         doubleByte,
         "a\x81",
         {{97, 1, 0}, {0, 2, 1}}},
        {"single bytes of a double-byte page are sign-extended",
         doubleByte,
         "\xB1",
         {{-79, 1, 0}, {0, 2, 1}}},
    };
    for (int round = 0; round < 2; ++round) {
        for (const WalkCase& c : cases) {
            SCOPED_TRACE(c.name);
            std::vector<std::string> assertions;
            const ScopedAssertionHandler handler(
                [&](const AssertionFailure& f) { assertions.emplace_back(f.text); });
            EXPECT_EQ(Walk(c.codePage, c.text), c.steps);
            EXPECT_TRUE(assertions.empty());
        }
    }
}

TEST(MbCharPointerTest, StaysAtTheEnd) {
    const std::pair<const char*, std::string> cases[] = {
        {"the closing NUL", "a"}, {"an invalid byte", "a\xFF"}, {"a NUL within", "a\0b"s}};
    for (const auto& [name, text] : cases) {
        SCOPED_TRACE(name);
        MbCharPointer cursor(CodePage::Utf8(), text);
        EXPECT_EQ(cursor.Advance(), 0);
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(cursor.Advance(), 0);
            EXPECT_EQ(cursor.Code(), 0);
            EXPECT_EQ(cursor.Column(), 2);
            EXPECT_EQ(cursor.Position(), text.data() + 1);
        }
    }
}

TEST(MbCharPointerTest, ReportsATextWithoutAnEnd) {
    const GreedyPage greedy;
    const std::string text = "a\x81\x82";
    std::vector<std::string> assertions;
    const ScopedAssertionHandler handler(
        [&](const AssertionFailure& f) { assertions.emplace_back(f.text); });
    for (int round = 0; round < 2; ++round) {
        assertions.clear();
        MbCharPointer cursor(greedy, text);
        EXPECT_EQ(cursor.Advance(), MbCharPointer::kMultibyteCode);
        EXPECT_TRUE(assertions.empty());
        EXPECT_EQ(cursor.Advance(), 0);
        EXPECT_EQ(cursor.Code(), 0);
        EXPECT_EQ(assertions, std::vector<std::string>{"m_charCount == m_charLen && m_code == 0"});
        EXPECT_EQ(cursor.Advance(), 0);
        EXPECT_EQ(assertions.size(), 1U);
    }
}

TEST(MbCharPointerTest, ColumnCanBeSet) {
    const std::string text = "aéb";
    MbCharPointer cursor(CodePage::Utf8(), text);
    cursor.SetColumn(0);
    EXPECT_EQ(cursor.Column(), 0);
    EXPECT_EQ(cursor.Code(), 'a');
    EXPECT_EQ(cursor.Advance(), 4096);
    EXPECT_EQ(cursor.Column(), 1);
    EXPECT_EQ(cursor.Advance(), 'b');
    EXPECT_EQ(cursor.Column(), 2);
}

TEST(MbCharPointerTest, ACopyRemembersAPlace) {
    const std::string text = "aéb";
    MbCharPointer cursor(CodePage::Utf8(), text);
    cursor.Advance();
    const MbCharPointer remembered = cursor;
    EXPECT_EQ(cursor.Advance(), 'b');
    EXPECT_EQ(cursor.Advance(), 0);
    EXPECT_EQ(remembered.Code(), 4096);
    cursor = remembered;
    EXPECT_EQ(cursor.Code(), 4096);
    EXPECT_EQ(cursor.Column(), 2);
    EXPECT_EQ(cursor.Position(), text.data() + 1);
    EXPECT_EQ(cursor.Advance(), 'b');
    EXPECT_EQ(cursor.Column(), 3);
}

TEST(MbCharPointerTest, SkipRunEqualsAdvancingOneByOne) {
    const AsciiSet blanks = AsciiSet().With(" \t");
    const AsciiSet letters = AsciiSet().WithRange('a', 'z');
    const AsciiSet noQuote = AsciiSet().WithRange('\x01', '\x7F').Without("'\n\r");
    const std::string texts[] = {
        "",        "   x",   "x   ",   "   ", "abc def",   "éabc",    "abcé",        "ab\377cd",
        "ab\0cd"s, "ab\xC3", " \t \t", "a'b", "'abc\ndef", "\201abc", "a\201b\x9F.", "\351a\xE9"};
    const DoubleBytePage doubleByte;
    const CodePage* const pages[] = {&CodePage::Utf8(), &CodePage::Windows1252(), &doubleByte};
    for (const CodePage* pPage : pages) {
        for (const std::string& text : texts) {
            for (const AsciiSet* pSet : {&blanks, &letters, &noQuote}) {
                SCOPED_TRACE(text);
                MbCharPointer fast(*pPage, text);
                MbCharPointer slow(*pPage, text);
                while (true) {
                    fast.SkipRun(*pSet);
                    while (pSet->HasCode(slow.Code())) slow.Advance();
                    ASSERT_EQ(fast.Position(), slow.Position());
                    ASSERT_EQ(fast.Code(), slow.Code());
                    ASSERT_EQ(fast.Column(), slow.Column());
                    if (slow.Code() == 0) break;
                    ASSERT_EQ(fast.Advance(), slow.Advance());
                }
                ASSERT_EQ(fast.Advance(), 0);
                ASSERT_EQ(fast.Column(), slow.Column());
            }
        }
    }
}

TEST(AsciiSetTest, HoldsWhatWasAdded) {
    const AsciiSet set = AsciiSet().With("xyz_").WithRange('0', '9').Without("y5");
    for (int code = -128; code < 300; ++code) {
        SCOPED_TRACE(code);
        const bool expected = code == 'x' || code == 'z' || code == '_' ||
                              (code >= '0' && code <= '9' && code != '5');
        EXPECT_EQ(set.HasCode(code), expected);
        if (code >= 0 && code < 256) {
            EXPECT_EQ(set.Has(static_cast<char>(static_cast<unsigned char>(code))), expected);
        }
    }
    EXPECT_FALSE(set.HasCode(MbCharPointer::kMultibyteCode));
}

}  // namespace
}  // namespace quillet
