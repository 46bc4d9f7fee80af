#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <iosfwd>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "igraph/gpl/gplstatement.h"
#include "igraph/read/syntaxitems.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {

namespace {

// All items, the end included.
std::vector<SyntaxItem> ReadSyntaxItems(TokenSequenceBase& sequence) {
    SyntaxItems items(sequence);
    std::vector<SyntaxItem> result;
    do {
        result.push_back(items.Next());
    } while (result.back().kind != SyntaxItem::Kind::kEnd);
    EXPECT_EQ(items.Next().kind, SyntaxItem::Kind::kEnd);
    return result;
}

// Each item as a letter for its kind and its text.
std::vector<std::string> Items(const std::string& text) {
    TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
    std::vector<std::string> result;
    for (const SyntaxItem& item : ReadSyntaxItems(sequence)) {
        switch (item.kind) {
            case SyntaxItem::Kind::kEnd:
                result.emplace_back("end");
                break;
            case SyntaxItem::Kind::kWord:
                result.push_back("w " + std::string(item.value) + " " + std::string(item.source));
                break;
            case SyntaxItem::Kind::kReservedWord:
                result.push_back("r " + std::string(item.value));
                break;
            case SyntaxItem::Kind::kNumber:
                result.push_back("n " + FormatNumber(item.number));
                break;
            case SyntaxItem::Kind::kLiteral:
                result.push_back("l " + std::string(item.value));
                break;
            case SyntaxItem::Kind::kSlash:
                result.emplace_back("/");
                break;
            case SyntaxItem::Kind::kLeftParen:
                result.emplace_back("(");
                break;
            case SyntaxItem::Kind::kRightParen:
                result.emplace_back(")");
                break;
            case SyntaxItem::Kind::kOther:
                result.push_back("o " + std::string(item.source));
                break;
        }
    }
    return result;
}

TEST(IgraphSyntaxItemsTest, ReadsTokens) {
    struct Case {
        const char* name;
        const char* text;
        std::vector<std::string> items;
    };
    const Case cases[] = {
        {"nothing", "", {"end"}},
        {"words keep their spelling", "iGraph", {"w IGRAPH iGraph", "end"}},
        {"equals signs are left out", "= a == = b =", {"w A a", "w B b", "end"}},
        {"commas never arrive", "NIN(1,3)", {"w NIN NIN", "(", "n 1", "n 3", ")", "end"}},
        {"a minus before a number", "a -3", {"w A a", "n -3", "end"}},
        {"a plus before a number", "a + 3", {"w A a", "n 3", "end"}},
        {"a sign after an equals sign", "a = -.5", {"w A a", "n -0.5", "end"}},
        {"two signs", "- - 3", {"o -", "n -3", "end"}},
        {"a sign after a number", "3 - 4 -", {"n 3", "n -4", "o -", "end"}},
        {"a zero has no sign", "-0", {"n 0", "end"}},
        {"a sign before a word", "- a", {"o -", "w A a", "end"}},
        {"a literal", "'it''s'", {"l it's", "end"}},
        {"reserved words", "a BY b", {"w A a", "r BY", "w B b", "end"}},
        {"a word of equality is no equals sign", "a EQ b", {"w A a", "r EQ", "w B b", "end"}},
        {"built-in names", "$count", {"w $COUNT $count", "end"}},
        {"a comment leaves a slash", "a /* x */ b", {"w A a", "/", "w B b", "end"}},
        {"the last word's period", "a b.", {"w A a", "w B b", "end"}},
        {"one period only", "b..", {"w B. b.", "end"}},
        {"an inner word's period", "a. b", {"w A. a.", "w B b", "end"}},
        {"a lone last period", "a .", {"w A a", "end"}},
        {"a lone last period leaves the word its own", "a. .", {"w A. a.", "end"}},
        {"an inner period", "a . b", {"w A a", "o .", "w B b", "end"}},
        {"a reserved word's period", "a by.", {"w A a", "r BY", "end"}},
        {"a period after a literal", "'a'.", {"l a", "end"}},
        {"a period alone", ".", {"end"}},
        {"a comment after the last word's period", "a b. /* c */", {"w A a", "w B b", "/", "end"}},
        {"a comment after a lone last period", "a . /* c */", {"w A a", "/", "end"}},
        {"slashes after a lone last period", "a . / /", {"w A a", "/", "/", "end"}},
        {"slashes alone", "/ /", {"/", "/", "end"}},
        {"other operators", "a < b", {"w A a", "o <", "w B b", "end"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_THAT(Items(c.text), testing::ElementsAreArray(c.items));
    }
}

TEST(IgraphSyntaxItemsTest, BeginsWithTheTokenThatNextMakesCurrent) {
    TAVQTokenSequence sequence(CodePage::Utf8(), "a b c", false, 0);
    sequence.SetNextIndex(1);
    EXPECT_EQ(ReadSyntaxItems(sequence).size(), 3U);
    sequence.SetNextIndex(0);
    EXPECT_EQ(ReadSyntaxItems(sequence).size(), 4U);
}

// Numbers beyond the range of a double cannot be written as GPL numbers.
TEST(IgraphSyntaxItemsTest, ANumberWithoutAValueIsNone) {
    class Infinite : public TokenSequenceBase {
    public:
        bool Next() override { return m_index++ == 0; }
        [[nodiscard]] int CurrentIndex() const override { return m_index; }
        void SetNextIndex(int index) override { m_index = index; }
        [[nodiscard]] int Count() const override { return 1; }
        [[nodiscard]] int Type() const override { return kNumber; }
        [[nodiscard]] int Operator() const override { return kNotOperator; }
        std::size_t GetText(const char*& chars, std::size_t& length) const override {
            chars = "1";
            return length = 1;
        }
        std::size_t GetValueText(const char*& chars, std::size_t& length) const override {
            return GetText(chars, length);
        }
        [[nodiscard]] double NumberValue() const override {
            return std::numeric_limits<double>::infinity();
        }
        [[nodiscard]] int Line() const override { return 1; }
        [[nodiscard]] int Column() const override { return 1; }
        std::size_t GetSourceText(const char*& chars, std::size_t& length) const override {
            return GetText(chars, length);
        }
        void DumpCurrent(std::ostream& /*stream*/) const override {}
        [[nodiscard]] int CompareCurrent(std::string_view /*text*/,
                                         std::size_t /*count*/) const override {
            return -1;
        }
        [[nodiscard]] TAVQToken CloneCurrent() override { return {}; }

    private:
        int m_index = 0;
    };
    Infinite sequence;
    const std::vector<SyntaxItem> items = ReadSyntaxItems(sequence);
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].kind, SyntaxItem::Kind::kOther);
}

}  // namespace

}  // namespace quillet::igraph
