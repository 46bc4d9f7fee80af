#include "driver/datalines.h"

#include <algorithm>
#include <cstddef>

namespace quillet {

namespace {

// Most data lines begin with a digit or a sign and end like the line before, so a text is looked
// at in chunks of this many bytes, with a loop that compilers turn into vector instructions.
constexpr std::size_t kChunkSize = 64;

constexpr bool MayCloseData(char first) { return first == 'E' || first == 'e'; }

// As unsigned bytes, so that the whole loop stays at one byte an element.
struct ChunkFindings {
    unsigned char lineFeeds = 0;
    unsigned char surprises = 0;  // 0 when no line end needs a closer look
};

// Looks at the `kChunkSize` bytes after the one at `pBefore`; one more must follow them.
ChunkFindings LookAtChunk(const char* pBefore, unsigned char endsInCrLf) {
    ChunkFindings findings;
    for (std::size_t i = 0; i < kChunkSize; ++i) {
        const auto before = static_cast<unsigned char>(pBefore[i]);
        const auto current = static_cast<unsigned char>(pBefore[i + 1]);
        const auto after = static_cast<unsigned char>(pBefore[i + 2]);
        const auto isLineFeed = static_cast<unsigned char>(current == '\n' ? 1 : 0);
        const auto isCrLf = static_cast<unsigned char>(before == '\r' ? 1 : 0);
        const auto isSpecial =
            static_cast<unsigned char>(after <= ' ' || after == 'E' || after == 'e' ? 1 : 0);
        findings.lineFeeds = static_cast<unsigned char>(findings.lineFeeds + isLineFeed);
        findings.surprises = static_cast<unsigned char>(
            findings.surprises | (isLineFeed & ((isCrLf ^ endsInCrLf) | isSpecial)));
    }
    return findings;
}

// True when the line that begins at `begin` is blank or may close the data. A line without an
// end counts as blank while nothing but blanks is there.
bool NeedsALook(std::string_view text, std::size_t begin) {
    if (MayCloseData(text[begin])) return true;
    const std::size_t position = text.find_first_not_of(" \t\r", begin);
    return position == std::string_view::npos || text[position] == '\n';
}

}  // namespace

PlainLines FindPlainDataLines(std::string_view text, bool endsInCrLf) {
    const auto crWanted = static_cast<unsigned char>(endsInCrLf ? 1 : 0);
    std::size_t length = 0;
    long count = 0;
    while (length < text.size() && !NeedsALook(text, length)) {
        std::size_t position = length + 1;
        while (position + kChunkSize < text.size()) {
            const ChunkFindings findings = LookAtChunk(&text[position - 1], crWanted);
            if (findings.surprises != 0) break;
            count += findings.lineFeeds;
            position += kChunkSize;
        }
        // The line in which the chunks ended began after the last line feed passed.
        length = std::max(length, text.rfind('\n', position - 1) + 1);
        const std::size_t end = text.find('\n', position);
        if (end == std::string_view::npos || end + 1 == text.size()) break;
        if ((text[end - 1] == '\r') != endsInCrLf) break;
        length = end + 1;
        ++count;
    }
    return {text.substr(0, length), count};
}

}  // namespace quillet
