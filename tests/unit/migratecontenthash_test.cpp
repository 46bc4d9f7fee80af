#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "migrate/contenthash.h"

namespace quillet::migrate {
namespace {

TEST(MigrateContentHashTest, PiecesMakeNoDifference) {
    const std::string text(100000, 'x');
    ContentHasher whole;
    whole.Add(text);
    ContentHasher pieces;
    pieces.Add("something else");
    pieces.Clear();
    for (std::size_t at = 0; at < text.size(); at += 333) {
        pieces.Add(std::string_view(text).substr(at, 333));
    }
    EXPECT_EQ(whole.Value(), pieces.Value());
    // Of nothing, as the algorithm's description has it: what was recorded stays valid.
    EXPECT_EQ(TextOf(ContentHasher().Value()), "99aa06d3014798d86001c324468d497f");
    EXPECT_EQ(ChecksumOf(""), "2d06800538d394c2");
}

TEST(MigrateContentHashTest, TextsComeBack) {
    const ContentHash hash = {0x0123456789ABCDEF, 15};
    EXPECT_EQ(TextOf(hash), "0123456789abcdef000000000000000f");
    EXPECT_EQ(ContentHashOf(TextOf(hash)), hash);
    for (const char* text :
         {"", "0", "0123456789abcdef000000000000000", "x123456789abcdef000000000000000f",
          "0123456789ABCDEF000000000000000f", "0123456789abcdef000000000000000f0",
          "0123456789abcdef -00000000000000"}) {
        EXPECT_EQ(ContentHashOf(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace quillet::migrate
