// Steps through the tokens of a generated command.
#ifndef QUILLET_OUTLINE_WRITTENCURSOR_H
#define QUILLET_OUTLINE_WRITTENCURSOR_H

#include <string>
#include <string_view>
#include <vector>

#include "outline/readwritten.h"
#include "outline/tableoutline.h"
#include "outline/writtenscanner.h"
#include "platform/codepage.h"

namespace quillet::outline {

/// The token at which a reader stands, and the one after it. What is expected and not there goes
/// into the error; whoever gets a false back reads no further.
class WrittenCursor {
public:
    /// Everything is borrowed.
    WrittenCursor(const CodePage& codePage, std::string_view text, ReadingError& error);

    [[nodiscard]] const WrittenToken& Current() const { return m_current.token; }
    [[nodiscard]] const WrittenToken& Following() const { return m_following.token; }
    void Advance();

    /// False always: `message` is wrong with the current token.
    [[nodiscard]] bool Fail(std::string_view message);

    /// True after a step over `sign`; false, with no error, when another token stands there.
    [[nodiscard]] bool Take(char sign);

    /// The same for a word.
    [[nodiscard]] bool Take(std::string_view word);

    /// A step over `sign`; another token is an error.
    [[nodiscard]] bool Expect(char sign, std::string_view message);
    [[nodiscard]] bool Expect(std::string_view word, std::string_view message);

    /// True at a word and an equals sign after it, which begin a setting.
    [[nodiscard]] bool IsAtSetting() const {
        return Current().Is(WrittenTokenKind::kWord) && Following().IsSign('=');
    }

    /// A step over the word and the sign of a setting. `word` is the word. That it stands twice in
    /// a subcommand is an error.
    [[nodiscard]] bool ReadSetting(std::string_view& word);

    /// A step over `word` and an equals sign.
    [[nodiscard]] bool ExpectSetting(std::string_view word, std::string_view message);

    /// True at a word that begins no setting.
    [[nodiscard]] bool IsAtName() const {
        return Current().Is(WrittenTokenKind::kWord) && !Following().IsSign('=');
    }

    [[nodiscard]] bool ReadName(Name& name);
    [[nodiscard]] bool ReadLiteral(Literal& literal);
    [[nodiscard]] bool ReadLiteralOrNumber(Literal& literal);

    [[nodiscard]] bool ReadFormat(Format& format);

private:
    struct Place {
        WrittenToken token;
        std::string value;  // of a literal
    };

    void Read(Place& place);

    const CodePage& m_codePage;
    WrittenScanner m_scanner;
    ReadingError& m_error;
    Place m_current;
    Place m_following;
    std::vector<std::string_view> m_settings;  // those of the subcommand that have been read
};

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_WRITTENCURSOR_H
