// The token sequence of one command's text.
#ifndef QUILLET_TOKENIZER_TAVQTOKENSEQUENCE_H
#define QUILLET_TOKENIZER_TAVQTOKENSEQUENCE_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/codepage.h"
#include "tokenizer/commandkind.h"
#include "tokenizer/tokensequencebase.h"

namespace quillet {

struct ScannedToken;

/// Tokenizes a command when it is constructed. Owns a copy of its text, the tokens, and what is
/// made of them.
class TAVQTokenSequence final : public TokenSequenceBase {
public:
    /// For the parameters and the `ParseError` thrown see `TAVQTokenVector`. `text` need not
    /// outlive the constructor; `codePage` must outlive the sequence.
    TAVQTokenSequence(const CodePage& codePage, const std::string& text, bool skipLeadingSign,
                      int maxTokens);
    ~TAVQTokenSequence() override;
    TAVQTokenSequence(const TAVQTokenSequence&) = delete;
    TAVQTokenSequence& operator=(const TAVQTokenSequence&) = delete;

    bool Next() override;
    [[nodiscard]] int CurrentIndex() const override;
    void SetNextIndex(int index) override;
    [[nodiscard]] int Count() const override;
    [[nodiscard]] int Type() const override;
    [[nodiscard]] int Operator() const override;
    std::size_t GetText(const char*& chars, std::size_t& length) const override;
    std::size_t GetValueText(const char*& chars, std::size_t& length) const override;
    [[nodiscard]] double NumberValue() const override;
    [[nodiscard]] int Line() const override;
    [[nodiscard]] int Column() const override;
    std::size_t GetSourceText(const char*& chars, std::size_t& length) const override;
    void DumpCurrent(std::ostream& stream) const override;
    [[nodiscard]] int CompareCurrent(std::string_view text, std::size_t count) const override;
    [[nodiscard]] TAVQToken CloneCurrent() override;
    [[nodiscard]] bool FindPosition(std::string_view source, int& line, int& column) override;

    // What follows belongs to the given interface of a sequence. No conversion step uses it: each
    // asks the function that is named here, for which no token needs to be kept.

    /// The command's kind, as its first tokens tell: see `KindOf`.
    [[nodiscard]] quillet::CommandKind CommandKind() const;

    /// Classifies the current token as a variable name: see `VariableNameClass`.
    [[nodiscard]] int CurrentNameClass() const;

    /// True for the line that closes inline data: see `IsEndDataLine`.
    [[nodiscard]] static bool IsEndData(const CodePage& codePage, std::string_view line);

    /// The byte offset of the period that ends a command, or -1: see `FindCommandEndIn`.
    [[nodiscard]] static std::ptrdiff_t FindCommandEnd(const CodePage& codePage,
                                                       std::string_view lines, bool isFreeText);

private:
    struct Implementation;

    [[nodiscard]] const ScannedToken* Current() const;

    std::unique_ptr<Implementation> m_pImp;
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TAVQTOKENSEQUENCE_H
