#include "platform/utf16.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/codepage.h"

namespace quillet {
namespace {

using namespace std::string_literals;

// In pieces of `size` bytes.
template <typename Action>
void InPieces(std::string_view text, std::size_t size, Action action) {
    for (; !text.empty(); text.remove_prefix(std::min(size, text.size()))) {
        action(text.substr(0, size));
    }
}

struct Decoded {
    std::string text;
    bool isValid = true;
    bool isWhole = false;
};

Decoded Decode(std::string_view bytes, ByteOrder order, std::size_t pieceSize) {
    Utf16Decoder decoder(order);
    Decoded decoded;
    InPieces(bytes, pieceSize,
             [&](std::string_view piece) { decoded.isValid = decoder.Add(piece, decoded.text); });
    decoded.isWhole = decoder.IsWhole();
    return decoded;
}

std::string Encode(std::string_view text, ByteOrder order, std::size_t pieceSize) {
    Utf16Encoder encoder(order);
    std::string bytes;
    InPieces(text, pieceSize, [&](std::string_view piece) { encoder.Add(piece, bytes); });
    return bytes;
}

TEST(Utf16Test, KnowsBothByteOrders) {
    const std::string little = "\xFF\xFE\x41\x00\xE9\x00\xAC\x20\x3D\xD8\x00\xDE\n\0"s;
    const std::string big = "\xFE\xFF\x00\x41\x00\xE9\x20\xAC\xD8\x3D\xDE\x00\0\n"s;
    const std::string text =
        "\xEF\xBB\xBF"
        "Aé€😀\n";
    for (std::size_t size = 1; size <= big.size(); ++size) {
        SCOPED_TRACE(size);
        const Decoded fromLittle = Decode(little, ByteOrder::kLittleEndian, size);
        EXPECT_EQ(fromLittle.text, text);
        EXPECT_TRUE(fromLittle.isValid && fromLittle.isWhole);
        const Decoded fromBig = Decode(big, ByteOrder::kBigEndian, size);
        EXPECT_EQ(fromBig.text, text);
        EXPECT_TRUE(fromBig.isValid && fromBig.isWhole);
        EXPECT_EQ(Encode(text, ByteOrder::kLittleEndian, size), little);
        EXPECT_EQ(Encode(text, ByteOrder::kBigEndian, size), big);
    }
}

TEST(Utf16Test, EveryCharacterComesBack) {
    std::string text;
    for (char32_t code = 0; code < 0x110000; ++code) {
        if (code < 0xD800 || code >= 0xE000) AppendCodePoint(code, text);
    }
    for (const ByteOrder order : {ByteOrder::kLittleEndian, ByteOrder::kBigEndian}) {
        const std::string bytes = Encode(text, order, text.size());
        EXPECT_EQ(bytes.size(), 2 * (0x10000 - 0x800) + 4 * 0x100000);
        const Decoded decoded = Decode(bytes, order, 4095);
        EXPECT_TRUE(decoded.text == text && decoded.isWhole);
    }
}

TEST(Utf16Test, RefusesHalfCharacters) {
    constexpr ByteOrder kBig = ByteOrder::kBigEndian;
    EXPECT_FALSE(Decode("\0x\xD8\x3D\0y"s, kBig, 1).isValid);
    EXPECT_FALSE(Decode("\xDE\x00\0y"s, kBig, 1).isValid);
    EXPECT_FALSE(Decode("\xD8\x3D\xD8\x3D\xDE\x00"s, kBig, 1).isValid);
    EXPECT_TRUE(Decode("\xD8\x3D"s, kBig, 1).isValid);
    EXPECT_FALSE(Decode("\xD8\x3D"s, kBig, 1).isWhole);
    EXPECT_TRUE(Decode("\0x\0"s, kBig, 2).isValid);
    EXPECT_FALSE(Decode("\0x\0"s, kBig, 2).isWhole);
    EXPECT_EQ(Decode("\0x\xDE\x00\0y"s, kBig, 1).text, "x");
}

TEST(Utf16Test, ReplacesBytesThatAreNoCharacter) {
    const std::string none = "\xFF\xFD";
    for (std::size_t size = 1; size <= 6; ++size) {
        SCOPED_TRACE(size);
        EXPECT_EQ(Encode("a\xFFz", ByteOrder::kBigEndian, size), "\0a"s + none + "\0z"s);
        EXPECT_EQ(Encode("\xE2\x82z", ByteOrder::kBigEndian, size), none + none + "\0z"s);
        EXPECT_EQ(Encode("\xE2\xC3\xA9", ByteOrder::kBigEndian, size), none + "\0\xE9"s);
        EXPECT_EQ(Encode("\xF0\x9F\x98z\n", ByteOrder::kBigEndian, size),
                  none + none + none + "\0z\0\n"s);
    }
}

}  // namespace
}  // namespace quillet
