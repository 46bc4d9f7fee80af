#include "migrate/legacysearch.h"

#include <algorithm>
#include <array>

#include "migrate/jsonreport.h"
#include "platform/byteblock.h"
#include "platform/multibyte.h"

namespace quillet::migrate {

namespace {

// The shortest forms of the words that legacy commands and includes begin with.
constexpr std::array<std::string_view, 4> kWords = {"tab", "igr", "inc", "ins"};
constexpr std::size_t kWordSize = 3;

// A first word may also be a literal, and glued together: 'TA', and on the next line +'BLES'.
bool MayHoldWord(std::string_view text) {
    for (std::size_t position = 0; position + kWordSize <= text.size(); ++position) {
        const char first = text[position];
        if (first == '+' && (text[position + 1] == '\'' || text[position + 1] == '"')) return true;
        if (first != 't' && first != 'i') continue;
        const std::string_view word = text.substr(position, kWordSize);
        if (std::find(kWords.begin(), kWords.end(), word) != kWords.end()) return true;
    }
    return false;
}

}  // namespace

void WordSearch::Add(std::string_view piece) {
    if (m_isWorthALook) return;
    const std::size_t begin = m_rest.size();
    m_rest.resize(begin + piece.size());
    std::transform(piece.begin(), piece.end(), m_rest.begin() + static_cast<std::ptrdiff_t>(begin),
                   LowerAscii);
    m_isWorthALook = MayHoldWord(m_rest);
    m_rest.erase(0, m_rest.size() - std::min(m_rest.size(), kWordSize - 1));
}

std::size_t TextView::Read(char* buffer, std::size_t size) {
    const std::size_t count = m_text.copy(buffer, size, m_position);
    m_position += count;
    return count;
}

bool TextView::Rewind() {
    m_position = 0;
    return true;
}

void ReadText(TextInput& input, std::string& text) {
    ByteBlock block;
    while (const std::size_t count = input.Read(block.data(), block.size())) {
        text.append(block.data(), count);
    }
}

void TakeFindings(const LegacyFindings& found, const FindingEncoding& encoding, FileFacts& facts,
                  ArraySpool& spool) {
    facts.found = static_cast<std::int64_t>(found.commands.size());
    facts.converted = found.Count(LegacyOutcome::kConverted);
    facts.failed = found.Count(LegacyOutcome::kFailed);
    facts.unreadable = found.Count(LegacyOutcome::kUnreadable);
    facts.overlooked = found.Count(LegacyOutcome::kOverlooked);
    facts.fromMacros = found.fromMacros;
    const bool hasLegacyCommands =
        !found.commands.empty() ||
        std::any_of(found.findings.begin(), found.findings.end(), [](const Finding& finding) {
            return finding.code == FindingCode::kMacroExpanded;
        });
    for (const Finding& finding : found.findings) {
        if (!hasLegacyCommands && finding.code != FindingCode::kInclude) continue;
        if (KindOf(finding.code) == FindingKind::kChanged) ++facts.changed;
        if (KindOf(finding.code) == FindingKind::kTold) ++facts.told;
        AddName(quillet::NameOf(finding.code), facts.codes);
        spool.Add(FindingJson(finding, encoding.encoding, encoding.pNamed));
    }
}

FileOutcome OutcomeOf(const FileFacts& facts, Outcome conversion) {
    // What was expanded in other files counts there; this one is of use to them.
    const bool isExpanded = std::binary_search(facts.codes.begin(), facts.codes.end(),
                                               quillet::NameOf(FindingCode::kMacroExpanded));
    if (facts.found == 0 && !isExpanded) return FileOutcome::kNothing;
    if (conversion == Outcome::kTokenizingError) return FileOutcome::kStopped;
    if (facts.overlooked > 0) return FileOutcome::kOverlooked;
    if (facts.failed > 0) {
        return facts.converted > 0 ? FileOutcome::kPartly : FileOutcome::kUnconverted;
    }
    return facts.changed > 0 ? FileOutcome::kChanged : FileOutcome::kConverted;
}

}  // namespace quillet::migrate
