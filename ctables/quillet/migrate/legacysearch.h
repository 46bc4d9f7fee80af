// What is to be done before and after a text is converted, so that none of its legacy commands is
// overlooked in silence.
#ifndef QUILLET_MIGRATE_LEGACYSEARCH_H
#define QUILLET_MIGRATE_LEGACYSEARCH_H

#include <cstddef>
#include <string>
#include <string_view>

#include "migrate/arrayspool.h"
#include "migrate/reportdata.h"
#include "quillet.h"

namespace quillet::migrate {

/// Looks through a text for what a legacy command, or an include, cannot do without: most files of
/// an archive have neither, and need not be looked at any closer.
class WordSearch {
public:
    /// The next piece of the text.
    void Add(std::string_view piece);

    /// False when the text holds no legacy command and includes no file.
    [[nodiscard]] bool IsWorthALook() const { return m_isWorthALook; }

private:
    bool m_isWorthALook = false;
    std::string m_rest;  // the end of the last piece, in lower case
};

/// A text that is kept by someone else.
class TextView final : public TextInput {
public:
    explicit TextView(std::string_view text) : m_text(text) {}

    std::size_t Read(char* buffer, std::size_t size) override;
    bool Rewind() override;
    [[nodiscard]] bool Failed() const override { return false; }

private:
    std::string_view m_text;
    std::size_t m_position = 0;
};

/// Appends the rest of `input` to `text`. Look at `input.Failed` afterwards.
void ReadText(TextInput& input, std::string& text);

/// What the texts of findings are in.
struct FindingEncoding {
    TextEncoding encoding = TextEncoding::kUtf8;
    const CodePage* pNamed = nullptr;
};

/// Puts what was found into the facts of its file, and the findings into `spool`. A file without
/// legacy commands is not converted: nothing of it is changed, and no more is told than what it
/// includes.
void TakeFindings(const LegacyFindings& found, const FindingEncoding& encoding, FileFacts& facts,
                  ArraySpool& spool);

/// The outcome of a file that was converted, or would have been if there was something to convert.
[[nodiscard]] FileOutcome OutcomeOf(const FileFacts& facts, Outcome conversion);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_LEGACYSEARCH_H
