#include "migrate/shard.h"

#include <charconv>
#include <system_error>

namespace quillet::migrate {

namespace {

// Digits alone: no sign, no blank.
std::optional<std::uint32_t> ParseNumber(std::string_view text) {
    std::uint32_t number = 0;
    const char* pEnd = text.data() + text.size();
    const auto [pStop, error] = std::from_chars(text.data(), pEnd, number);
    if (error != std::errc() || pStop != pEnd) return std::nullopt;
    return number;
}

}  // namespace

std::uint64_t StableHash(std::string_view bytes) {
    constexpr std::uint64_t kOffsetBasis = 14695981039346656037ULL;
    constexpr std::uint64_t kPrime = 1099511628211ULL;
    std::uint64_t hash = kOffsetBasis;
    for (const char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= kPrime;
    }
    return hash;
}

bool IsInShard(std::string_view path, const Shard& shard) {
    return StableHash(path) % shard.count == shard.index - 1;
}

std::optional<Shard> ParseShard(std::string_view text) {
    const std::size_t slash = text.find('/');
    if (slash == std::string_view::npos) return std::nullopt;
    const std::optional<std::uint32_t> index = ParseNumber(text.substr(0, slash));
    const std::optional<std::uint32_t> count = ParseNumber(text.substr(slash + 1));
    if (!index || !count || *index < 1 || *index > *count) return std::nullopt;
    return Shard{*index, *count};
}

std::string LabelOf(const Shard& shard) {
    return std::to_string(shard.index) + "-of-" + std::to_string(shard.count);
}

}  // namespace quillet::migrate
