// A body is taken apart once, when it is defined, and not again for each call. So it is known early
// whether its statements fit their forms, and a loop or a condition costs what is run of it.
//
// What is open stands on a stack of its own, as in expressions.
#include "macro/bodycompiler.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "macro/expressioncompiler.h"
#include "macro/lexer.h"
#include "macro/slots.h"
#include "macro/words.h"

namespace quillet::macro {

namespace {

class BodyCompiler {
public:
    BodyCompiler(const CodePage& codePage, const ArgumentList& list, std::string_view body,
                 int maxNesting)
        : m_codePage(codePage),
          m_lexer(codePage, body),
          m_slots(list),
          m_expressions(codePage, m_lexer, m_slots, m_program),
          m_maxNesting(maxNesting) {}

    [[nodiscard]] Program Compile();

private:
    // A part of the body that something has to end.
    struct Block {
        enum class Kind : int { kIf, kElse, kLoop, kList };

        Kind kind = Kind::kIf;
        std::size_t position = 0;           // of the statement
        std::size_t jump = 0;               // the instruction that jumps to the block's end
        std::string variable{};             // of a list's loop
        long openParentheses = 0;           // of a list
        std::vector<std::size_t> breaks{};  // of a loop: its kBreak instructions
    };

    void SkipFirstPeriod();
    [[nodiscard]] bool Step();
    [[nodiscard]] bool CompileParenthesis(bool opens);
    [[nodiscard]] bool CompileWord();
    [[nodiscard]] bool CompileName(const BodyWord& word);
    [[nodiscard]] bool CompileStatement(Statement statement, const BodyWord& word);
    [[nodiscard]] bool CompileIf();
    [[nodiscard]] bool CompileElse();
    [[nodiscard]] bool CompileIfEnd();
    [[nodiscard]] bool CompileDo();
    [[nodiscard]] bool CompileCount(const std::string& variable);
    [[nodiscard]] bool CompileDoEnd();
    [[nodiscard]] bool CompileLet();
    void CompileBreak();
    void BeginLoopBody(const std::string& variable, Operation operation);

    [[nodiscard]] bool TakeWord(std::string_view wanted);
    [[nodiscard]] bool TakeSign(char sign);
    [[nodiscard]] bool TakeVariable(std::string& name);
    [[nodiscard]] bool Operand();
    [[nodiscard]] int Depth() const { return static_cast<int>(m_blocks.size()); }
    [[nodiscard]] bool IsTooDeep();

    void FlushText(std::size_t end);
    void FlushTextBeforeStatement(std::size_t end);
    std::size_t Add(Operation operation, std::size_t first = 0, std::size_t second = 0,
                    std::size_t third = 0);
    void JumpHere(std::size_t instruction) {
        m_program.instructions[instruction].first = m_program.instructions.size();
    }
    [[nodiscard]] bool Fail(FaultKind kind, std::string_view name, std::size_t position);
    [[nodiscard]] bool FailForm() {
        return Fail(FaultKind::kStatementForm, m_statementWord, m_statementBegin);
    }

    const CodePage& m_codePage;
    Lexer m_lexer;
    Slots m_slots;
    Program m_program;
    ExpressionCompiler m_expressions;
    int m_maxNesting;

    std::size_t m_position = 0;
    std::size_t m_textBegin = 0;  // of the text that no instruction writes yet
    std::size_t m_lastPeriod = kNowhere;
    std::size_t m_statementBegin = 0;
    std::string m_statementWord;
    std::vector<Block> m_blocks;
};

Program BodyCompiler::Compile() {
    SkipFirstPeriod();
    while (m_position < m_lexer.Text().size()) {
        if (!Step()) return std::move(m_program);
    }
    FlushText(m_position);
    if (!m_blocks.empty()) {
        const Block& block = m_blocks.back();
        const bool isIf = block.kind == Block::Kind::kIf || block.kind == Block::Kind::kElse;
        static_cast<void>(
            Fail(FaultKind::kUnclosedStatement, isIf ? "!IF" : "!DO", block.position));
    }
    return std::move(m_program);
}

// Some write a period after the argument list.
void BodyCompiler::SkipFirstPeriod() {
    while (m_position < m_lexer.Text().size() && IsSpace(m_lexer.At(m_position))) ++m_position;
    if (m_lexer.At(m_position) == '.' && !IsDigit(m_lexer.At(m_position + 1))) {
        m_textBegin = ++m_position;
    } else {
        m_position = 0;
    }
}

bool BodyCompiler::Step() {
    const char byte = m_lexer.At(m_position);
    if (IsQuote(byte)) {
        m_position = m_lexer.LiteralEnd(m_position);
    } else if (m_lexer.IsAtComment(m_position)) {
        m_position = m_lexer.CommentEnd(m_position);
    } else if (byte == '!') {
        return CompileWord();
    } else if ((byte == '(' || byte == ')') && !m_blocks.empty() &&
               m_blocks.back().kind == Block::Kind::kList) {
        return CompileParenthesis(byte == '(');
    } else {
        if (byte == '.') m_lastPeriod = m_position;
        m_position = m_lexer.CharacterEnd(m_position);
    }
    return true;
}

// In the list of a loop: its own closing parenthesis begins the loop.
bool BodyCompiler::CompileParenthesis(bool opens) {
    Block& list = m_blocks.back();
    if (opens || list.openParentheses > 0) {
        list.openParentheses += opens ? 1 : -1;
        ++m_position;
        return true;
    }
    FlushText(m_position);
    const std::string variable = std::move(list.variable);
    m_statementBegin = list.position;
    m_blocks.pop_back();
    ++m_position;
    BeginLoopBody(variable, Operation::kEndList);
    return true;
}

bool BodyCompiler::CompileWord() {
    const BodyWord word = BodyWordAt(m_codePage, m_lexer, m_position);
    if (word.kind == BodyWord::Kind::kName) return CompileName(word);
    std::optional<std::size_t> slot;
    if (word.kind == BodyWord::Kind::kPositional) {
        slot = m_slots.PositionalSlot(
            m_lexer.Text().substr(m_position + 1, word.end - m_position - 1));
    }
    if (slot || word.kind == BodyWord::Kind::kAll) {
        FlushText(m_position);
        if (slot) {
            Add(Operation::kWriteSlot, *slot, m_position, word.end);
        } else {
            Add(Operation::kPushAll);
            Add(Operation::kWriteValue);
        }
        m_textBegin = word.end;
    }
    m_position = word.end;
    return true;
}

bool BodyCompiler::CompileName(const BodyWord& word) {
    const std::size_t begin = m_position;
    if (!m_slots.IsDeclared(word.Name())) {
        if (const std::optional<Statement> statement = StatementOf(word.word)) {
            return CompileStatement(*statement, word);
        }
        std::size_t end = 0;
        if (const std::optional<Function> function = m_expressions.FunctionAt(word, end)) {
            FlushText(begin);
            m_position = end;
            Fault fault;
            if (!m_expressions.CompileFunction(*function, m_position, Depth(), m_maxNesting,
                                               fault)) {
                return Fail(fault.kind, fault.name.empty() ? WordOf(*function) : fault.name, begin);
            }
            Add(Operation::kWriteValue);
            m_textBegin = m_position;
            return true;
        }
        if (word.word == "!NULL") {
            FlushText(begin);
            m_textBegin = m_position = word.end;
            return true;
        }
    }
    FlushText(begin);
    Add(Operation::kWriteSlot, m_slots.SlotOf(word.Name()), begin, word.end);
    m_textBegin = m_position = word.end;
    return true;
}

bool BodyCompiler::CompileStatement(Statement statement, const BodyWord& word) {
    FlushTextBeforeStatement(m_position);
    m_statementBegin = m_position;
    m_statementWord = word.word;
    m_position = word.end;
    bool fits = true;
    switch (statement) {
        case Statement::kIf:
            fits = CompileIf();
            break;
        case Statement::kElse:
            fits = CompileElse();
            break;
        case Statement::kIfEnd:
            fits = CompileIfEnd();
            break;
        case Statement::kDo:
            fits = CompileDo();
            break;
        case Statement::kDoEnd:
            fits = CompileDoEnd();
            break;
        case Statement::kLet:
            fits = CompileLet();
            break;
        case Statement::kBreak:
            CompileBreak();
            break;
        case Statement::kOffExpand:
            Add(Operation::kOffExpand);
            break;
        case Statement::kOnExpand:
            Add(Operation::kOnExpand);
            break;
    }
    m_textBegin = m_position;
    return fits;
}

bool BodyCompiler::CompileIf() {
    if (IsTooDeep()) return false;
    Fault fault;
    if (!m_expressions.CompileCondition(m_position, Depth(), m_maxNesting, fault)) {
        return Fail(fault.kind, fault.name.empty() ? m_statementWord : fault.name, m_position);
    }
    if (!TakeWord("!THEN")) return FailForm();
    m_blocks.push_back({Block::Kind::kIf, m_statementBegin, Add(Operation::kJumpUnless)});
    return true;
}

bool BodyCompiler::CompileElse() {
    if (m_blocks.empty() || m_blocks.back().kind != Block::Kind::kIf) {
        return Fail(FaultKind::kStrayStatement, m_statementWord, m_statementBegin);
    }
    Block& block = m_blocks.back();
    const std::size_t jump = Add(Operation::kJump);
    JumpHere(block.jump);
    block.kind = Block::Kind::kElse;
    block.jump = jump;
    return true;
}

bool BodyCompiler::CompileIfEnd() {
    if (m_blocks.empty() ||
        (m_blocks.back().kind != Block::Kind::kIf && m_blocks.back().kind != Block::Kind::kElse)) {
        return Fail(FaultKind::kStrayStatement, m_statementWord, m_statementBegin);
    }
    JumpHere(m_blocks.back().jump);
    m_blocks.pop_back();
    return true;
}

bool BodyCompiler::CompileDo() {
    if (IsTooDeep()) return false;
    std::string name;
    if (!TakeVariable(name)) return FailForm();
    if (TakeSign('=')) return CompileCount(name);
    if (!TakeWord("!IN") || !TakeSign('(')) return FailForm();
    Add(Operation::kBeginList);
    Block list;
    list.kind = Block::Kind::kList;
    list.position = m_statementBegin;
    list.variable = std::move(name);
    m_blocks.push_back(std::move(list));
    return true;
}

bool BodyCompiler::CompileCount(const std::string& variable) {
    if (!Operand()) return false;
    if (!TakeWord("!TO")) return FailForm();
    if (!Operand()) return false;
    if (TakeWord("!BY")) {
        if (!Operand()) return false;
    } else {
        Add(Operation::kPushConstant, m_program.constants.size());
        m_program.constants.emplace_back("1");
    }
    BeginLoopBody(variable, Operation::kBeginCount);
    return true;
}

void BodyCompiler::BeginLoopBody(const std::string& variable, Operation operation) {
    Add(operation, m_slots.Declare(variable));
    Block loop;
    loop.kind = Block::Kind::kLoop;
    loop.position = m_statementBegin;
    loop.jump = Add(Operation::kNextPass);
    m_blocks.push_back(std::move(loop));
    m_textBegin = m_position;
}

bool BodyCompiler::CompileDoEnd() {
    if (m_blocks.empty() || m_blocks.back().kind != Block::Kind::kLoop) {
        return Fail(FaultKind::kStrayStatement, m_statementWord, m_statementBegin);
    }
    const Block& loop = m_blocks.back();
    Add(Operation::kJump, loop.jump);
    JumpHere(loop.jump);
    for (const std::size_t jump : loop.breaks) JumpHere(jump);
    m_blocks.pop_back();
    return true;
}

bool BodyCompiler::CompileLet() {
    std::string name;
    if (!TakeVariable(name) || !TakeSign('=')) return FailForm();
    if (!Operand()) return false;
    Add(Operation::kStore, m_slots.Declare(name));
    return true;
}

void BodyCompiler::CompileBreak() {
    const std::size_t jump = Add(Operation::kBreak, kNowhere);
    for (std::size_t i = m_blocks.size(); i-- > 0;) {
        if (m_blocks[i].kind == Block::Kind::kLoop) {
            m_blocks[i].breaks.push_back(jump);
            return;
        }
    }
}

// These step over the next word or sign, if it is the one that is wanted.
bool BodyCompiler::TakeWord(std::string_view wanted) {
    const std::size_t begin = m_lexer.SkipSpace(m_position);
    if (m_lexer.At(begin) != '!') return false;
    const BodyWord word = BodyWordAt(m_codePage, m_lexer, begin);
    if (word.word != wanted) return false;
    m_position = word.end;
    return true;
}

bool BodyCompiler::TakeSign(char sign) {
    const std::size_t begin = m_lexer.SkipSpace(m_position);
    if (m_lexer.At(begin) != sign) return false;
    m_position = begin + 1;
    return true;
}

bool BodyCompiler::TakeVariable(std::string& name) {
    const std::size_t begin = m_lexer.SkipSpace(m_position);
    if (m_lexer.At(begin) != '!') return false;
    const BodyWord word = BodyWordAt(m_codePage, m_lexer, begin);
    if (word.kind != BodyWord::Kind::kName) return false;
    name = word.Name();
    m_position = word.end;
    return true;
}

bool BodyCompiler::Operand() {
    Fault fault;
    if (m_expressions.CompileOperand(m_position, Depth(), m_maxNesting, fault)) return true;
    return Fail(fault.kind, fault.name.empty() ? m_statementWord : fault.name, m_statementBegin);
}

bool BodyCompiler::IsTooDeep() {
    if (Depth() < m_maxNesting) return false;
    return !Fail(FaultKind::kNestingTooDeep, {}, m_statementBegin);
}

void BodyCompiler::FlushText(std::size_t end) {
    if (m_textBegin < end) Add(Operation::kWriteBody, m_textBegin, end);
    m_textBegin = end;
}

// A period before a statement ends a command.
void BodyCompiler::FlushTextBeforeStatement(std::size_t end) {
    std::size_t textEnd = end;
    while (textEnd > m_textBegin && IsBlank(m_lexer.At(textEnd - 1))) --textEnd;
    if (textEnd > m_textBegin && textEnd - 1 == m_lastPeriod) {
        FlushText(textEnd);
        Add(Operation::kEndCommand);
    } else {
        FlushText(end);
    }
    m_textBegin = end;
}

std::size_t BodyCompiler::Add(Operation operation, std::size_t first, std::size_t second,
                              std::size_t third) {
    m_program.instructions.push_back({operation, first, second, third, m_position});
    return m_program.instructions.size() - 1;
}

bool BodyCompiler::Fail(FaultKind kind, std::string_view name, std::size_t position) {
    if (m_program.fault) return false;
    const std::string_view before = m_lexer.Text().substr(0, position);
    Fault fault;
    fault.kind = kind;
    fault.name = name;
    fault.line = 1 + static_cast<long>(std::count(before.begin(), before.end(), '\n'));
    m_program.fault = std::move(fault);
    return false;
}

}  // namespace

Program CompileBody(const CodePage& codePage, const ArgumentList& list, std::string_view body,
                    int maxNesting) {
    return BodyCompiler(codePage, list, body, maxNesting).Compile();
}

}  // namespace quillet::macro
