#include "macro/argumentlist.h"

#include <limits>
#include <string_view>
#include <utility>

#include "macro/words.h"

namespace quillet::macro {

namespace {

// Reads one list. Its words stand apart, with white space and comments between them.
class ListReader {
public:
    ListReader(const CodePage& codePage, const Lexer& lexer, std::size_t position,
               ArgumentList& list)
        : m_codePage(codePage), m_lexer(lexer), m_position(position), m_list(list) {}

    [[nodiscard]] bool Read();
    [[nodiscard]] std::size_t Position() const { return m_position; }
    [[nodiscard]] FaultKind Kind() const { return m_kind; }
    /// The argument that the fault is about; empty when it is about the whole list.
    [[nodiscard]] const std::string& ArgumentName() const { return m_name; }

private:
    [[nodiscard]] bool ReadArgument();
    [[nodiscard]] bool AddArgument(Argument&& argument, bool isPositional);
    [[nodiscard]] bool ReadHow(Argument& argument);
    [[nodiscard]] bool ReadHowWord(const std::string& word, Argument& argument);
    [[nodiscard]] bool ReadKind(Argument& argument, Argument::Kind kind);
    [[nodiscard]] bool ReadTokenCount(Argument& argument);
    [[nodiscard]] bool ReadCharacter(std::string& character);
    [[nodiscard]] bool ReadDefault(Argument& argument);

    [[nodiscard]] Token Peek() const { return m_lexer.NextToken(m_position); }
    [[nodiscard]] std::string Word(const Token& token) const {
        return Capitals(m_codePage, m_lexer.TextOf(token));
    }
    [[nodiscard]] bool Take(char wanted) {
        const Token token = Peek();
        if (token.kind != TokenKind::kOther || m_lexer.At(token.begin) != wanted) return false;
        m_position = token.end;
        return true;
    }
    [[nodiscard]] bool Fail(FaultKind kind) {
        m_kind = kind;
        return false;
    }

    const CodePage& m_codePage;
    Lexer m_lexer;
    std::size_t m_position;
    ArgumentList& m_list;
    FaultKind m_kind = FaultKind::kArgumentListForm;
    std::string m_name;
    bool m_hasKind = false;
};

bool ListReader::Read() {
    if (!Take('(')) return Fail(FaultKind::kNoArgumentList);
    if (Take(')')) return true;
    do {
        if (!ReadArgument()) return false;
    } while (Take('/'));
    return Take(')');
}

bool ListReader::ReadArgument() {
    const Token token = Peek();
    std::string name = Word(token);
    Argument argument;
    const bool isMacroWord = token.kind == TokenKind::kMacroWord;
    const bool isPositional = isMacroWord && IsShortFor(name, "!POSITIONAL");
    if (!isMacroWord && token.kind != TokenKind::kIdentifier) return false;
    m_position = token.end;
    const bool hasSign = Take('=');
    if (!isPositional) {
        if (!hasSign) return false;
        argument.name = isMacroWord ? name.substr(1) : std::move(name);
    }
    return ReadHow(argument) && AddArgument(std::move(argument), isPositional);
}

bool ListReader::AddArgument(Argument&& argument, bool isPositional) {
    const std::size_t index = m_list.arguments.size();
    if (isPositional) {
        if (index != m_list.positionalCount) return Fail(FaultKind::kPositionalAfterKeyword);
        ++m_list.positionalCount;
        const std::optional<std::string>& defaultText = argument.defaultText;
        if (defaultText && !defaultText->empty()) m_list.positionalDefaults.push_back(index);
    } else if (!m_list.keywords.emplace(argument.name, index).second) {
        m_name = argument.name;
        return Fail(FaultKind::kArgumentTwice);
    }
    m_list.arguments.push_back(std::move(argument));
    return true;
}

// One kind and what modifies it, in any order.
bool ListReader::ReadHow(Argument& argument) {
    m_hasKind = false;
    while (true) {
        const Token token = Peek();
        if (token.kind != TokenKind::kMacroWord) return m_hasKind;
        m_position = token.end;
        if (!ReadHowWord(Word(token), argument)) return false;
    }
}

bool ListReader::ReadHowWord(const std::string& word, Argument& argument) {
    if (IsShortFor(word, "!TOKENS")) {
        return ReadKind(argument, Argument::Kind::kTokens) && ReadTokenCount(argument);
    }
    if (IsShortFor(word, "!CHAREND")) {
        return ReadKind(argument, Argument::Kind::kCharEnd) && Take('(') &&
               ReadCharacter(argument.last) && Take(')');
    }
    if (IsShortFor(word, "!ENCLOSE")) {
        return ReadKind(argument, Argument::Kind::kEnclose) && Take('(') &&
               ReadCharacter(argument.first) && Take(',') && ReadCharacter(argument.last) &&
               Take(')');
    }
    if (IsShortFor(word, "!CMDEND")) return ReadKind(argument, Argument::Kind::kCommandEnd);
    if (IsShortFor(word, "!DEFAULT")) return ReadDefault(argument);
    return IsShortFor(word, "!NOEXPAND") && std::exchange(argument.expandsMacros, false);
}

bool ListReader::ReadKind(Argument& argument, Argument::Kind kind) {
    argument.kind = kind;
    return !std::exchange(m_hasKind, true);
}

bool ListReader::ReadTokenCount(Argument& argument) {
    if (!Take('(')) return false;
    const Token token = Peek();
    if (token.kind != TokenKind::kNumber) return false;
    constexpr std::size_t kMany = std::numeric_limits<std::size_t>::max() / 16;
    for (const char digit : m_lexer.TextOf(token)) {
        if (!IsDigit(digit)) return false;
        // More than any text has.
        if (argument.tokenCount < kMany) {
            argument.tokenCount = argument.tokenCount * 10 + static_cast<std::size_t>(digit - '0');
        }
    }
    m_position = token.end;
    return argument.tokenCount > 0 && Take(')');
}

bool ListReader::ReadCharacter(std::string& character) {
    const Token token = Peek();
    if (token.kind != TokenKind::kLiteral) return false;
    character = LiteralContents(m_lexer.TextOf(token));
    const Lexer contents(m_codePage, character);
    if (character.empty() || contents.CharacterEnd(0) != character.size()) return false;
    m_position = token.end;
    return true;
}

bool ListReader::ReadDefault(Argument& argument) {
    if (argument.defaultText || !Take('(')) return false;
    const std::size_t begin = m_position;
    std::size_t end = begin;
    for (int depth = 1; depth > 0;) {
        const Token token = m_lexer.NextToken(m_position);
        if (token.kind == TokenKind::kEnd) return false;
        const char first = m_lexer.At(token.begin);
        if (first == '(') ++depth;
        if (first == ')') --depth;
        end = token.begin;
        m_position = token.end;
    }
    argument.defaultText = ArgumentText(m_codePage, {m_lexer.Text(), {}}, begin, end).text;
    return true;
}

}  // namespace

bool ReadArgumentList(const CodePage& codePage, const Lexer& lexer, const std::string& macroName,
                      std::size_t& position, ArgumentList& list, Fault& fault) {
    ListReader reader(codePage, lexer, position, list);
    const bool isList = reader.Read();
    position = reader.Position();
    if (!isList) {
        fault.kind = reader.Kind();
        fault.name = reader.ArgumentName().empty() ? macroName : reader.ArgumentName();
    }
    return isList;
}

MarkedText ArgumentText(const CodePage& codePage, const MarkedView& source, std::size_t begin,
                        std::size_t end) {
    const Lexer lexer(codePage, source.text.substr(0, end));
    MarkedText result;
    std::size_t position = begin;
    while (position < end) {
        const std::size_t text = lexer.SkipSpace(position);
        if (text >= end) break;
        const bool isOneBlank =
            source.text.substr(position, text - position).find_first_not_of(" \t") !=
            std::string_view::npos;
        if (!result.text.empty()) {
            if (isOneBlank) {
                result.Append(" ", kWritten);
            } else {
                result.Append(source.Part(position, text));
            }
        }
        position = text;
        while (position < end && !IsSpace(source.text[position]) && !lexer.IsAtComment(position)) {
            const bool isLiteral = IsQuote(source.text[position]);
            position = isLiteral ? lexer.LiteralEnd(position) : lexer.CharacterEnd(position);
        }
        result.Append(source.Part(text, position));
    }
    return result;
}

}  // namespace quillet::macro
