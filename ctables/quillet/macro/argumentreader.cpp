#include "macro/argumentreader.h"

#include <string_view>
#include <utility>

#include "macro/lexer.h"

namespace quillet::macro {

namespace {

class CallReader {
public:
    CallReader(const CodePage& codePage, const ArgumentList& list, const MarkedView& command,
               std::size_t position)
        : m_codePage(codePage),
          m_list(list),
          m_command(command),
          m_lexer(codePage, command.text),
          m_position(position) {}

    [[nodiscard]] bool Read(GivenArguments& given, Fault& fault);
    [[nodiscard]] std::size_t Position() const { return m_position; }

private:
    [[nodiscard]] bool FindKeyword(std::size_t& index);
    [[nodiscard]] bool ReadValue(std::size_t index, GivenArguments& given, Fault& fault);
    [[nodiscard]] std::size_t ReadTokens(std::size_t begin, std::size_t count);
    [[nodiscard]] std::size_t ReadTo(const std::string& character, std::size_t begin,
                                     bool& isFound);
    [[nodiscard]] std::size_t ReadRest(std::size_t begin);
    [[nodiscard]] bool IsAt(const std::string& character, std::size_t position) const {
        return m_command.text.substr(position).starts_with(character);
    }

    const CodePage& m_codePage;
    const ArgumentList& m_list;
    MarkedView m_command;
    Lexer m_lexer;
    std::size_t m_position;
};

bool CallReader::Read(GivenArguments& given, Fault& fault) {
    for (std::size_t index = 0; index < m_list.positionalCount; ++index) {
        if (m_lexer.SkipSpace(m_position) == m_command.text.size()) return true;
        if (!ReadValue(index, given, fault)) return false;
        ++given.positionalCount;
    }
    std::size_t index = 0;
    while (FindKeyword(index)) {
        if (!ReadValue(index, given, fault)) return false;
    }
    return true;
}

// Steps over "name =" if the next is that of a keyword argument.
bool CallReader::FindKeyword(std::size_t& index) {
    const Token word = m_lexer.NextToken(m_position);
    const bool isMacroWord = word.kind == TokenKind::kMacroWord;
    if (!isMacroWord && word.kind != TokenKind::kIdentifier) return false;
    const Token sign = m_lexer.NextToken(word.end);
    if (sign.kind != TokenKind::kOther || m_lexer.At(sign.begin) != '=') return false;
    const std::string_view name = m_lexer.TextOf(word).substr(isMacroWord ? 1 : 0);
    const auto keyword = m_list.keywords.find(Capitals(m_codePage, name));
    if (keyword == m_list.keywords.end()) return false;
    index = keyword->second;
    m_position = sign.end;
    return true;
}

bool CallReader::ReadValue(std::size_t index, GivenArguments& given, Fault& fault) {
    const Argument& argument = m_list.arguments[index];
    std::size_t begin = m_lexer.SkipSpace(m_position);
    std::size_t end = begin;
    if (begin == m_command.text.size()) {
        // A keyword with nothing after it is given, and empty, whatever its kind.
    } else if (argument.kind == Argument::Kind::kTokens) {
        end = ReadTokens(begin, argument.tokenCount);
    } else if (argument.kind == Argument::Kind::kCommandEnd) {
        end = ReadRest(begin);
    } else {
        const bool isEnclosed = argument.kind == Argument::Kind::kEnclose;
        fault.name = argument.name.empty() ? "!" + std::to_string(index + 1) : argument.name;
        if (isEnclosed && !IsAt(argument.first, begin)) {
            fault.kind = FaultKind::kNoFirstCharacter;
            return false;
        }
        if (isEnclosed) begin += argument.first.size();
        bool isFound = false;
        end = ReadTo(argument.last, begin, isFound);
        if (isEnclosed && !isFound) {
            fault.kind = FaultKind::kNoLastCharacter;
            return false;
        }
    }
    given.arguments.push_back({index, ArgumentText(m_codePage, m_command, begin, end)});
    return true;
}

// These read a value from `begin` on, set the position after all that belongs to it and return
// where the value ends.

std::size_t CallReader::ReadTokens(std::size_t begin, std::size_t count) {
    m_position = begin;
    for (; count > 0; --count) {
        const Token token = m_lexer.NextToken(m_position);
        if (token.kind == TokenKind::kEnd) break;
        m_position = token.end;
    }
    return m_position;
}

std::size_t CallReader::ReadTo(const std::string& character, std::size_t begin, bool& isFound) {
    std::size_t position = begin;
    while (position < m_command.text.size()) {
        if (m_lexer.IsAtComment(position)) {
            position = m_lexer.CommentEnd(position);
        } else if (IsAt(character, position)) {
            isFound = true;
            m_position = position + character.size();
            return position;
        } else if (IsQuote(m_command.text[position])) {
            position = m_lexer.LiteralEnd(position);
        } else {
            position = m_lexer.CharacterEnd(position);
        }
    }
    return ReadRest(begin);
}

// Comments and white space before the end of the command do not belong to the call.
std::size_t CallReader::ReadRest(std::size_t begin) {
    m_position = begin;
    while (true) {
        const std::size_t next = m_lexer.SkipSpace(m_position);
        if (next == m_command.text.size()) return m_position;
        const bool isLiteral = IsQuote(m_command.text[next]);
        m_position = isLiteral ? m_lexer.LiteralEnd(next) : m_lexer.CharacterEnd(next);
    }
}

}  // namespace

bool ReadArguments(const CodePage& codePage, const ArgumentList& list, const MarkedView& command,
                   std::size_t& position, GivenArguments& given, Fault& fault) {
    CallReader reader(codePage, list, command, position);
    const bool isRead = reader.Read(given, fault);
    position = reader.Position();
    return isRead;
}

}  // namespace quillet::macro
