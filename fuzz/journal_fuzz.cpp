// Reads a journal, whole and in pieces, as it is and with the checksums that its lines would need,
// so that what is below them is tried as well. What was read must come back when it is written.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/contenthash.h"
#include "migrate/journalrecord.h"

namespace {

using quillet::migrate::FormatRecord;
using quillet::migrate::JournalReader;
using quillet::migrate::JournalRecord;

struct Contents {
    std::vector<std::string> records;  // as they are written
    std::uint64_t endOfLines = 0;

    friend bool operator==(const Contents&, const Contents&) = default;
};

Contents Read(std::string_view text, std::size_t pieceSize) {
    Contents contents;
    JournalReader reader([&contents](const JournalRecord& record) {
        contents.records.push_back(FormatRecord(record));
    });
    while (!text.empty()) {
        const std::size_t size = std::min(text.size(), pieceSize);
        reader.Add(text.substr(0, size));
        text.remove_prefix(size);
    }
    contents.endOfLines = reader.EndOfLines();
    return contents;
}

void Check(bool isTrue) {
    if (!isTrue) std::abort();
}

void TryText(std::string_view text, std::size_t pieceSize) {
    const Contents contents = Read(text, text.size());
    Check(contents == Read(text, pieceSize));
    const std::size_t lineFeed = text.rfind('\n');
    Check(contents.endOfLines == (lineFeed == std::string_view::npos ? 0 : lineFeed + 1));
    std::string written;
    for (const std::string& record : contents.records) written += record;
    Check(Read(written, pieceSize).records == contents.records);
}

// Each line as a record with a checksum that is right.
std::string Seal(std::string_view text) {
    std::string sealed;
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        line.remove_prefix(std::min(line.find('{'), line.size()));
        sealed.append("quillet1 ").append(quillet::migrate::ChecksumOf(line)).append(" ");
        sealed.append(line).append("\n");
    }
    return sealed;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t pieceSize = data[0] % 64 + 1;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    TryText(text, pieceSize);
    TryText(Seal(text), pieceSize);
    return 0;
}
