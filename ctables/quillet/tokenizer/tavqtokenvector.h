// The tokens of one command, in any order.
#ifndef QUILLET_TOKENIZER_TAVQTOKENVECTOR_H
#define QUILLET_TOKENIZER_TAVQTOKENVECTOR_H

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/arena.h"
#include "platform/codepage.h"
#include "platform/commandbudget.h"
#include "tokenizer/commandkind.h"
#include "tokenizer/tavqtoken.h"
#include "tokenizer/tokenscanner.h"

namespace quillet {

/// A token with all that is known about it. The texts live as long as the vector that it is from.
struct ScannedToken {
    TokenCodes::TokenType type = TokenCodes::kAtEnd;
    int operatorCode = TokenCodes::kNotOperator;
    TokenTexts texts;
    double number = 0.0;
    int line = 0;    ///< From 1 within the command.
    int column = 0;  ///< In characters, from 1 on the first line and from 0 on every later one.
};

/// The tokens of one command. They are counted and checked once, and read from the text whenever
/// they are asked for: kept, they would take a hundred times the text of a command of short names.
///
/// Texts are byte strings in `codePage`; a NUL among their bytes ends the text for the tokenizer.
/// Lines of a `ParseError` count from 1 within the text; its column counts characters, from 1 on
/// the first line and from 0 on every later one.
class TAVQTokenVector {
public:
    /// Tokenizes a copy of `text`; throws `ParseError`, or `CommandTooLarge` when literals repeat
    /// more text than `budget` allows. With `skipLeadingSign` a "+" or "-" that is the first
    /// character is stepped over. `maxTokens` above 0 stops after that many tokens; a special
    /// command stops by itself, since its body is no syntax. Linear in the text and what the
    /// literals repeat. Values of which the text has no copy lie in `arena`, which is borrowed, as
    /// `codePage` is.
    TAVQTokenVector(const CodePage& codePage, std::string_view text, bool skipLeadingSign,
                    int maxTokens, CommandBudget& budget, Arena& arena);

    ~TAVQTokenVector() = default;
    TAVQTokenVector(const TAVQTokenVector&) = delete;
    TAVQTokenVector& operator=(const TAVQTokenVector&) = delete;

    [[nodiscard]] int Count() const { return m_count; }

    /// The token at `index`, from 0; null, after an assertion, when there is none. Good until the
    /// next call. Takes the time of one token for the token after the last one that was asked for;
    /// else that of a few hundred at most, and that of one for a place that was left, or come to,
    /// by one of the last two jumps.
    [[nodiscard]] const ScannedToken* At(int index);

    /// Where a token of this vector stands whose source text is `source`: sets `line` and `column`.
    /// False when there is none. Linear in the text.
    [[nodiscard]] bool FindPosition(std::string_view source, int& line, int& column);

    /// `kOrdinary`, `kComment`, `kDocument` or `kBeginData`.
    [[nodiscard]] SpecialCommandState State() const { return m_state; }

private:
    class Checker;

    // The value of a token that is longer or shorter than its source, and no part of it.
    struct OtherValue {
        const char* pSource;
        std::string_view value;
    };
    struct PlacedToken {
        int index;
        ScannerPlace place;  // before the token
    };

    // Receives the tokens when the text is read again.
    class Reader {
    public:
        static constexpr bool kReadsAgain = true;

        explicit Reader(const TAVQTokenVector& vector, ScannedToken& token)
            : m_vector(vector), m_token(token) {}

        [[nodiscard]] int Count() const { return m_count; }
        void AddWord(const SourceRange& source);
        void AddMacroWord(const SourceRange& source);
        void AddNumber(const SourceRange& source, double value);
        void AddOperator(const SourceRange& source, int code);
        void BeginLiteral();
        void AppendToLiteral(std::string_view part, std::size_t repeated);
        void EndLiteral(const SourceRange& source);
        [[nodiscard]] static bool MayLeaveUnconverted(std::string_view /*number*/) { return false; }

    private:
        // What is the same for all kinds.
        void Add(TokenCodes::TokenType type, const SourceRange& source);

        const TAVQTokenVector& m_vector;
        ScannedToken& m_token;
        int m_count = 0;
        std::string_view m_firstPart;  // of the literal
        std::size_t m_literalSize = 0;
        int m_partCount = 0;
    };

    void CheckText(bool skipLeadingSign, int maxTokens, CommandBudget& budget);
    void ReadNext();
    void JumpTo(int index);
    [[nodiscard]] const ScannerPlace* FindPlace(int index) const;
    [[nodiscard]] std::string_view ValueOf(std::string_view source) const;

    static constexpr int kMilestone = 256;
    static constexpr std::size_t kRecentTokens = 8;

    const CodePage& m_codePage;
    Arena& m_arena;
    // The text, and after it the values of its tokens, all of them equally far from their sources.
    std::unique_ptr<char[]> m_texts;
    std::size_t m_size = 0;
    std::vector<OtherValue> m_otherValues;  // in the order of the text
    int m_count = 0;
    SpecialCommandState m_state = SpecialCommandState::kOrdinary;
    std::vector<ScannerPlace> m_milestones;  // before every so many tokens, from the first on

    ScannedToken m_token;
    int m_index = -1;  // of `m_token`
    Reader m_reader;
    TokenScanner<Reader> m_scanner;
    std::array<PlacedToken, kRecentTokens> m_recent;  // by the last bits of their indices
    std::array<PlacedToken, 4> m_jumps;               // left and come to by the last two jumps
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TAVQTOKENVECTOR_H
