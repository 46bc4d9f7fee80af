#include "driver/bodytree.h"

#include <string>
#include <utility>

#include "macro/expressioncompiler.h"
#include "macro/lexer.h"
#include "macro/limits.h"
#include "macro/slots.h"
#include "macro/words.h"

namespace quillet {

namespace {

using macro::BodyWord;
using macro::Statement;

class BodyParser {
public:
    BodyParser(const macro::Macro& macro, const CodePage& codePage, const IsMacroName& isMacroName)
        : m_codePage(codePage),
          m_isMacroName(isMacroName),
          m_lexer(codePage, macro.body),
          m_slots(macro.list),
          m_expressions(codePage, m_lexer, m_slots, m_program) {}

    std::optional<std::vector<BodyNode>> Run() {
        m_open.emplace_back();
        while (m_position < m_lexer.Text().size()) {
            if (!Step()) return std::nullopt;
        }
        FlushText(m_position);
        if (m_open.size() != 1) return std::nullopt;
        return std::move(m_open.front().node.children);
    }

private:
    // A statement that something has to end. The first is the body itself.
    struct Open {
        BodyNode node;
        bool isInElse = false;
    };

    [[nodiscard]] bool Step() {
        const char byte = m_lexer.At(m_position);
        if (macro::IsQuote(byte)) {
            m_position = m_lexer.LiteralEnd(m_position);
        } else if (m_lexer.IsAtComment(m_position)) {
            m_position = m_lexer.CommentEnd(m_position);
        } else if (byte == '!') {
            return ReadWord();
        } else if (m_lexer.IsAtName(m_position)) {
            ReadName();
        } else {
            m_position = m_lexer.CharacterEnd(m_position);
        }
        return true;
    }

    void ReadName() {
        const macro::Token token = m_lexer.TokenAt(m_position);
        if (m_isMacroName(m_lexer.TextOf(token))) {
            AddLeaf(BodyNode::Kind::kName, token.begin, token.end);
        }
        m_position = token.end;
    }

    [[nodiscard]] bool ReadWord() {
        const BodyWord word = macro::BodyWordAt(m_codePage, m_lexer, m_position);
        const std::size_t begin = m_position;
        if (word.kind == BodyWord::Kind::kName) return ReadWordWithName(word);
        const bool isSite =
            word.kind == BodyWord::Kind::kAll ||
            (word.kind == BodyWord::Kind::kPositional &&
             m_slots.PositionalSlot(m_lexer.Text().substr(begin + 1, word.end - begin - 1)));
        if (isSite) AddLeaf(BodyNode::Kind::kSite, begin, word.end);
        m_position = word.end;
        return true;
    }

    [[nodiscard]] bool ReadWordWithName(const BodyWord& word) {
        const std::size_t begin = m_position;
        if (m_slots.IsDeclared(word.Name()) || word.word == "!NULL") {
            AddLeaf(BodyNode::Kind::kSite, begin, word.end);
        } else if (const std::optional<Statement> statement = macro::StatementOf(word.word)) {
            return ReadStatement(*statement, word.end);
        } else if (std::size_t end = 0; const auto function = m_expressions.FunctionAt(word, end)) {
            macro::Fault fault;
            if (!m_expressions.CompileFunction(*function, end, Depth(), MaxDepth(), fault)) {
                return false;
            }
            ForgetProgram();
            AddLeaf(BodyNode::Kind::kSite, begin, end);
        } else if (m_isMacroName(m_lexer.Text().substr(begin, word.end - begin))) {
            AddLeaf(BodyNode::Kind::kName, begin, word.end);
        } else {
            m_position = word.end;
        }
        return true;
    }

    [[nodiscard]] bool ReadStatement(Statement statement, std::size_t wordEnd) {
        FlushText(m_position);
        const std::size_t begin = m_position;
        m_position = wordEnd;
        bool fits = true;
        switch (statement) {
            case Statement::kIf:
                fits = BeginCondition(begin);
                break;
            case Statement::kElse:
                fits = BeginElse(begin);
                break;
            case Statement::kIfEnd:
                fits = EndBlock(BodyNode::Kind::kCondition, begin);
                break;
            case Statement::kDo:
                fits = BeginLoop(begin);
                break;
            case Statement::kDoEnd:
                fits = EndBlock(BodyNode::Kind::kLoop, begin);
                break;
            case Statement::kLet:
                fits = ReadLet(begin);
                break;
            case Statement::kBreak:
            case Statement::kOffExpand:
            case Statement::kOnExpand:
                AddLeaf(BodyNode::Kind::kOther, begin, m_position);
                break;
        }
        m_textBegin = m_position;
        return fits;
    }

    [[nodiscard]] bool BeginCondition(std::size_t begin) {
        macro::Fault fault;
        if (!m_expressions.CompileCondition(m_position, Depth(), MaxDepth(), fault)) return false;
        ForgetProgram();
        const std::size_t headerEnd = m_position;
        if (!TakeWord("!THEN")) return false;
        BodyNode node;
        node.kind = BodyNode::Kind::kCondition;
        node.begin = begin;
        node.headerEnd = headerEnd;
        return OpenBlock(std::move(node));
    }

    [[nodiscard]] bool BeginElse(std::size_t begin) {
        Open& open = m_open.back();
        if (open.node.kind != BodyNode::Kind::kCondition || open.isInElse) return false;
        open.isInElse = open.node.hasElse = true;
        open.node.thenEnd = begin;
        open.node.elseBegin = m_position;
        return true;
    }

    [[nodiscard]] bool EndBlock(BodyNode::Kind kind, std::size_t begin) {
        if (m_open.size() < 2 || m_open.back().node.kind != kind) return false;
        BodyNode node = std::move(m_open.back().node);
        m_open.pop_back();
        node.contentEnd = begin;
        if (!node.hasElse) node.thenEnd = begin;
        node.end = m_position;
        Siblings().push_back(std::move(node));
        return true;
    }

    [[nodiscard]] bool BeginLoop(std::size_t begin) {
        std::string variable;
        if (!TakeVariable(variable)) return false;
        if (TakeSign('=')) {
            if (!Operand() || !TakeWord("!TO") || !Operand()) return false;
            if (TakeWord("!BY") && !Operand()) return false;
        } else if (!TakeWord("!IN") || !TakeSign('(') || !SkipList()) {
            return false;
        }
        m_slots.Declare(variable);
        BodyNode node;
        node.kind = BodyNode::Kind::kLoop;
        node.begin = begin;
        node.headerEnd = m_position;
        return OpenBlock(std::move(node));
    }

    // After the parenthesis that closes the list of a loop. What stands in it is of no interest.
    [[nodiscard]] bool SkipList() {
        long depth = 1;
        while (m_position < m_lexer.Text().size()) {
            const char byte = m_lexer.At(m_position);
            if (macro::IsQuote(byte)) {
                m_position = m_lexer.LiteralEnd(m_position);
                continue;
            }
            if (m_lexer.IsAtComment(m_position)) {
                m_position = m_lexer.CommentEnd(m_position);
                continue;
            }
            if (byte == '(') ++depth;
            if (byte == ')') --depth;
            m_position = m_lexer.CharacterEnd(m_position);
            if (depth == 0) return true;
        }
        return false;
    }

    [[nodiscard]] bool ReadLet(std::size_t begin) {
        std::string variable;
        if (!TakeVariable(variable) || !TakeSign('=') || !Operand()) return false;
        m_slots.Declare(variable);
        AddLeaf(BodyNode::Kind::kLet, begin, m_position);
        return true;
    }

    [[nodiscard]] bool OpenBlock(BodyNode node) {
        if (Depth() >= MaxDepth()) return false;
        node.contentBegin = m_position;
        m_open.push_back({std::move(node)});
        return true;
    }

    [[nodiscard]] bool Operand() {
        macro::Fault fault;
        const bool isRead = m_expressions.CompileOperand(m_position, Depth(), MaxDepth(), fault);
        ForgetProgram();
        return isRead;
    }

    [[nodiscard]] bool TakeWord(std::string_view wanted) {
        const std::size_t begin = m_lexer.SkipSpace(m_position);
        if (m_lexer.At(begin) != '!') return false;
        const BodyWord word = macro::BodyWordAt(m_codePage, m_lexer, begin);
        if (word.word != wanted) return false;
        m_position = word.end;
        return true;
    }

    [[nodiscard]] bool TakeSign(char sign) {
        const std::size_t begin = m_lexer.SkipSpace(m_position);
        if (m_lexer.At(begin) != sign) return false;
        m_position = begin + 1;
        return true;
    }

    [[nodiscard]] bool TakeVariable(std::string& name) {
        const std::size_t begin = m_lexer.SkipSpace(m_position);
        if (m_lexer.At(begin) != '!') return false;
        const BodyWord word = macro::BodyWordAt(m_codePage, m_lexer, begin);
        if (word.kind != BodyWord::Kind::kName) return false;
        name = word.Name();
        m_position = word.end;
        return true;
    }

    // The places alone are wanted.
    void ForgetProgram() { m_program = {}; }

    std::vector<BodyNode>& Siblings() {
        Open& open = m_open.back();
        return open.isInElse ? open.node.otherwise : open.node.children;
    }

    void AddLeaf(BodyNode::Kind kind, std::size_t begin, std::size_t end) {
        FlushText(begin);
        BodyNode node;
        node.kind = kind;
        node.begin = begin;
        node.end = end;
        Siblings().push_back(std::move(node));
        m_textBegin = m_position = end;
    }

    void FlushText(std::size_t end) {
        if (m_textBegin >= end) return;
        BodyNode node;
        node.begin = m_textBegin;
        node.end = end;
        Siblings().push_back(std::move(node));
        m_textBegin = end;
    }

    [[nodiscard]] int Depth() const { return static_cast<int>(m_open.size()) - 1; }
    [[nodiscard]] static int MaxDepth() { return macro::Limits().nesting; }

    const CodePage& m_codePage;
    const IsMacroName& m_isMacroName;
    macro::Lexer m_lexer;
    macro::Slots m_slots;
    macro::Program m_program;  // is not run
    macro::ExpressionCompiler m_expressions;

    std::size_t m_position = 0;
    std::size_t m_textBegin = 0;  // of the text that is in no node yet
    std::vector<Open> m_open;
};

}  // namespace

std::optional<std::vector<BodyNode>> ParseBody(const macro::Macro& macro, const CodePage& codePage,
                                               const IsMacroName& isMacroName) {
    if (macro.program.fault) return std::nullopt;
    return BodyParser(macro, codePage, isMacroName).Run();
}

}  // namespace quillet
