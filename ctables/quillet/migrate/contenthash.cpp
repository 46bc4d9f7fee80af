#include "migrate/contenthash.h"

// The library's code becomes a part of this file; nothing is linked.
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <charconv>

#include "platform/byteblock.h"

namespace quillet::migrate {

namespace {

constexpr std::size_t kHalfDigits = 16;
constexpr int kBase = 16;

std::string HexDigitsOf(std::uint64_t value) {
    std::string digits(kHalfDigits, '0');
    char* const pEnd = digits.data() + digits.size();
    for (char* pDigit = pEnd; value != 0; value /= kBase) {
        *--pDigit = "0123456789abcdef"[value % kBase];
    }
    return digits;
}

bool ReadHexDigits(std::string_view text, std::uint64_t& value) {
    // The library would also take capitals, and one spelling is enough.
    if (text.find_first_not_of("0123456789abcdef") != std::string_view::npos) return false;
    const char* const pEnd = text.data() + text.size();
    const auto [pStop, error] = std::from_chars(text.data(), pEnd, value, kBase);
    return error == std::errc() && pStop == pEnd;
}

}  // namespace

struct ContentHasher::State {
    XXH3_state_t state;
};

ContentHasher::ContentHasher() : m_state(std::make_unique<State>()) { Clear(); }
ContentHasher::~ContentHasher() = default;

void ContentHasher::Clear() { static_cast<void>(XXH3_128bits_reset(&m_state->state)); }

void ContentHasher::Add(std::string_view bytes) {
    static_cast<void>(XXH3_128bits_update(&m_state->state, bytes.data(), bytes.size()));
}

ContentHash ContentHasher::Value() const {
    const XXH128_hash_t hash = XXH3_128bits_digest(&m_state->state);
    return {hash.high64, hash.low64};
}

std::string TextOf(const ContentHash& hash) {
    return HexDigitsOf(hash.high) + HexDigitsOf(hash.low);
}

std::optional<ContentHash> ContentHashOf(std::string_view text) {
    ContentHash hash;
    if (text.size() != 2 * kHalfDigits || !ReadHexDigits(text.substr(0, kHalfDigits), hash.high) ||
        !ReadHexDigits(text.substr(kHalfDigits), hash.low)) {
        return std::nullopt;
    }
    return hash;
}

ContentHash HashRest(TextInput& input) {
    ContentHasher hasher;
    ByteBlock block;
    while (const std::size_t count = input.Read(block.data(), block.size())) {
        hasher.Add({block.data(), count});
    }
    return hasher.Value();
}

std::string ChecksumOf(std::string_view text) {
    return HexDigitsOf(XXH3_64bits(text.data(), text.size()));
}

}  // namespace quillet::migrate
