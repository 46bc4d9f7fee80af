// A text can nest as deep as it is long. What is open is kept on a stack of the program's own, so
// that no depth can exhaust that of the system.
#include "macro/expressioncompiler.h"

#include <utility>

namespace quillet::macro {

namespace {

struct RelationWord {
    std::string_view sign;
    std::string_view word;
    Relation relation;
};

// Longer signs before those that they begin with.
constexpr RelationWord kRelations[] = {
    {"~=", "!NE", Relation::kNotEqual},    {"<>", "!NE", Relation::kNotEqual},
    {"<=", "!LE", Relation::kLessOrEqual}, {">=", "!GE", Relation::kGreaterOrEqual},
    {"=", "!EQ", Relation::kEqual},        {"<", "!LT", Relation::kLess},
    {">", "!GT", Relation::kGreater},
};

}  // namespace

BodyWord BodyWordAt(const CodePage& codePage, const Lexer& lexer, std::size_t position) {
    BodyWord word;
    word.end = position + 1;
    if (lexer.At(word.end) == '*') {
        word.kind = BodyWord::Kind::kAll;
        ++word.end;
    } else if (IsDigit(lexer.At(word.end))) {
        word.kind = BodyWord::Kind::kPositional;
        while (IsDigit(lexer.At(word.end))) ++word.end;
    } else if (lexer.IsAtName(word.end)) {
        const Token token = lexer.TokenAt(position);
        word.kind = BodyWord::Kind::kName;
        word.end = token.end;
        word.word = Capitals(codePage, lexer.TextOf(token));
    }
    return word;
}

bool IsBeforeStatement(const CodePage& codePage, const Lexer& lexer, const Slots& slots,
                       std::size_t position) {
    position = lexer.SkipBlanks(position);
    if (lexer.At(position) != '!') return false;
    const BodyWord word = BodyWordAt(codePage, lexer, position);
    return word.kind == BodyWord::Kind::kName && !slots.IsDeclared(word.Name()) &&
           StatementOf(word.word);
}

bool ExpressionCompiler::CompileOperand(std::size_t& position, int depth, int maxDepth,
                                        Fault& fault) {
    m_open.clear();
    m_hasOperand = m_isCondition = false;
    return Compile(position, depth, maxDepth, fault);
}

bool ExpressionCompiler::CompileCondition(std::size_t& position, int depth, int maxDepth,
                                          Fault& fault) {
    m_open.clear();
    m_hasOperand = m_isCondition = false;
    position = m_lexer.SkipSpace(position);
    if (m_lexer.At(position) != '(') {
        fault.kind = FaultKind::kStatementForm;
        return false;
    }
    m_open.push_back({Open::Kind::kGroup, 0, 0, position});
    ++position;
    return Compile(position, depth + 1, maxDepth, fault);
}

bool ExpressionCompiler::CompileFunction(Function function, std::size_t& position, int depth,
                                         int maxDepth, Fault& fault) {
    m_open.clear();
    m_hasOperand = m_isCondition = false;
    m_open.push_back({Open::Kind::kFunction, static_cast<std::size_t>(function), 0, position});
    return Compile(position, depth + 1, maxDepth, fault);
}

std::optional<Function> ExpressionCompiler::FunctionAt(const BodyWord& word,
                                                       std::size_t& position) const {
    const std::optional<Function> function = FunctionOf(word.word);
    if (!function) return std::nullopt;
    const std::size_t parenthesis = m_lexer.SkipSpace(word.end);
    if (m_lexer.At(parenthesis) != '(') return std::nullopt;
    position = parenthesis + 1;
    return function;
}

bool ExpressionCompiler::Compile(std::size_t& position, int depth, int maxDepth, Fault& fault) {
    m_position = position;
    m_depth = depth;
    m_maxDepth = maxDepth;
    m_pFault = &fault;
    Step step = Step::kGoOn;
    if (depth > maxDepth) step = Fail(FaultKind::kNestingTooDeep, {});
    while (step == Step::kGoOn) step = m_hasOperand ? AfterOperand() : BeforeOperand();
    position = m_position;
    return step == Step::kDone;
}

ExpressionCompiler::Step ExpressionCompiler::BeforeOperand() {
    m_position = m_lexer.SkipSpace(m_position);
    if (IsInCondition() && m_open.back().kind != Open::Kind::kRelation) {
        std::size_t end = 0;
        std::size_t relationEnd = 0;
        if (!RelationAt(m_position, relationEnd) && IsOperator(m_position, '~', "!NOT", end)) {
            m_open.push_back({Open::Kind::kNot, 0, 0, m_position});
            m_position = end;
            return Step::kGoOn;
        }
        if (m_lexer.At(m_position) == '(') {
            const bool fits = Begin(Open::Kind::kGroup, 0, m_position + 1);
            return fits ? Step::kGoOn : Step::kWrong;
        }
    }
    if (m_lexer.At(m_position) == '!') return PushWord();
    const Token token = m_lexer.NextToken(m_position);
    if (!PushPlainToken(token)) return Fail(FaultKind::kStatementForm, {});
    m_hasOperand = true;
    return Step::kGoOn;
}

// A function, or a word that has a value.
ExpressionCompiler::Step ExpressionCompiler::PushWord() {
    const BodyWord word = BodyWordAt(m_codePage, m_lexer, m_position);
    const std::size_t begin = m_position;
    m_hasOperand = true;
    std::optional<std::size_t> slot;
    if (word.kind == BodyWord::Kind::kAll) {
        Add(Operation::kPushAll);
    } else if (word.kind == BodyWord::Kind::kName) {
        const std::string name = word.Name();
        std::size_t end = 0;
        if (!m_slots.IsDeclared(name)) {
            if (StatementOf(word.word)) return Fail(FaultKind::kStatementForm, {});
            if (const std::optional<Function> function = FunctionAt(word, end)) {
                m_hasOperand = false;
                const auto code = static_cast<std::size_t>(*function);
                return Begin(Open::Kind::kFunction, code, end) ? Step::kGoOn : Step::kWrong;
            }
        }
        if (word.word == "!NULL" && !m_slots.IsDeclared(name)) {
            AddConstant({});
        } else {
            slot = m_slots.SlotOf(name);
        }
    } else {
        slot = m_slots.PositionalSlot(m_lexer.Text().substr(begin + 1, word.end - begin - 1));
        if (!slot) AddConstant(std::string(m_lexer.Text().substr(begin, word.end - begin)));
    }
    if (slot) Add(Operation::kPushSlot, *slot, begin, word.end);
    m_position = word.end;
    return Step::kGoOn;
}

bool ExpressionCompiler::PushPlainToken(const Token& token) {
    if (token.kind == TokenKind::kEnd) return false;
    std::size_t end = token.end;
    const char first = m_lexer.At(token.begin);
    if (token.kind == TokenKind::kLiteral) {
        AddConstant(LiteralContents(m_lexer.TextOf(token)));
        m_position = end;
        return true;
    }
    if (token.kind == TokenKind::kIdentifier) {
        // A period that ends a command does not belong to the name before it.
        if (m_lexer.At(end - 1) == '.' && IsBeforeStatement(m_codePage, m_lexer, m_slots, end)) {
            while (m_lexer.At(end - 1) == '.') --end;
        }
    } else if (token.kind == TokenKind::kOther) {
        const std::size_t number = m_lexer.NumberLength(end);
        if ((first == '+' || first == '-') && number > 0) {
            end += number;
        } else if (first == '(' || first == ')' || first == ',') {
            return false;
        } else if (IsInCondition()) {
            std::size_t relationEnd = 0;
            if (RelationAt(token.begin, relationEnd)) return false;
        }
    }
    AddConstant(std::string(m_lexer.Text().substr(token.begin, end - token.begin)));
    m_position = end;
    return true;
}

ExpressionCompiler::Step ExpressionCompiler::AfterOperand() {
    if (m_open.empty()) return Step::kDone;
    m_position = m_lexer.SkipSpace(m_position);
    if (m_isCondition) return AfterCondition();
    return IsInCondition() ? AfterConditionOperand() : AfterFunctionOperand();
}

ExpressionCompiler::Step ExpressionCompiler::AfterFunctionOperand() {
    ++m_open.back().operandCount;
    const char next = m_lexer.At(m_position);
    if (next == ',') {
        ++m_position;
        m_hasOperand = false;
        return Step::kGoOn;
    }
    if (next == ')') return CloseFunction();
    const auto function = static_cast<Function>(m_open.back().code);
    return Fail(FaultKind::kStatementForm, WordOf(function));
}

ExpressionCompiler::Step ExpressionCompiler::CloseFunction() {
    const Open open = m_open.back();
    const auto function = static_cast<Function>(open.code);
    const OperandCount count = OperandCountOf(function);
    const auto least = static_cast<std::size_t>(count.least);
    const auto most = static_cast<std::size_t>(count.most);
    if (open.operandCount < least || open.operandCount > most) {
        return Fail(FaultKind::kOperandCount, WordOf(function));
    }
    m_open.pop_back();
    --m_depth;
    Add(Operation::kCall, open.code, open.operandCount);
    ++m_position;
    return Step::kGoOn;
}

ExpressionCompiler::Step ExpressionCompiler::AfterConditionOperand() {
    if (m_open.back().kind == Open::Kind::kRelation) {
        Add(Operation::kCompare, m_open.back().code);
        m_open.pop_back();
    } else {
        std::size_t end = 0;
        if (const std::optional<Relation> relation = RelationAt(m_position, end)) {
            m_open.push_back(
                {Open::Kind::kRelation, static_cast<std::size_t>(*relation), 0, m_position});
            m_position = end;
            m_hasOperand = false;
            return Step::kGoOn;
        }
        Add(Operation::kTest);
    }
    m_isCondition = true;
    return Step::kGoOn;
}

ExpressionCompiler::Step ExpressionCompiler::AfterCondition() {
    CloseOperators(Open::Kind::kNot);
    if (m_lexer.At(m_position) == ')') return CloseGroup();
    std::size_t end = 0;
    Open::Kind kind = Open::Kind::kAnd;
    if (!IsOperator(m_position, '&', "!AND", end)) {
        kind = Open::Kind::kOr;
        if (!IsOperator(m_position, '|', "!OR", end)) {
            return Fail(FaultKind::kStatementForm, {});
        }
    }
    CloseOperators(kind);
    m_open.push_back({kind, 0, 0, m_position});
    m_position = end;
    m_hasOperand = m_isCondition = false;
    return Step::kGoOn;
}

ExpressionCompiler::Step ExpressionCompiler::CloseGroup() {
    CloseOperators(Open::Kind::kOr);
    m_open.pop_back();
    --m_depth;
    ++m_position;
    return m_open.empty() ? Step::kDone : Step::kGoOn;
}

// Closes what binds at least as tightly as `lowest`.
void ExpressionCompiler::CloseOperators(Open::Kind lowest) {
    while (true) {
        const Open::Kind kind = m_open.back().kind;
        if (kind == Open::Kind::kNot) {
            Add(Operation::kNot);
        } else if (kind == Open::Kind::kAnd && lowest != Open::Kind::kNot) {
            Add(Operation::kAnd);
        } else if (kind == Open::Kind::kOr && lowest == Open::Kind::kOr) {
            Add(Operation::kOr);
        } else {
            return;
        }
        m_open.pop_back();
    }
}

bool ExpressionCompiler::Begin(Open::Kind kind, std::size_t code, std::size_t end) {
    if (m_depth >= m_maxDepth) {
        static_cast<void>(Fail(FaultKind::kNestingTooDeep, {}));
        return false;
    }
    ++m_depth;
    m_open.push_back({kind, code, 0, m_position});
    m_position = end;
    return true;
}

bool ExpressionCompiler::IsInCondition() const {
    return !m_open.empty() && m_open.back().kind != Open::Kind::kFunction;
}

std::optional<Relation> ExpressionCompiler::RelationAt(std::size_t position,
                                                       std::size_t& end) const {
    for (const RelationWord& relation : kRelations) {
        if (m_lexer.Text().substr(position).starts_with(relation.sign)) {
            end = position + relation.sign.size();
            return relation.relation;
        }
    }
    if (m_lexer.At(position) != '!') return std::nullopt;
    const BodyWord word = BodyWordAt(m_codePage, m_lexer, position);
    for (const RelationWord& relation : kRelations) {
        if (word.word == relation.word) {
            end = word.end;
            return relation.relation;
        }
    }
    return std::nullopt;
}

bool ExpressionCompiler::IsOperator(std::size_t position, char sign, std::string_view word,
                                    std::size_t& end) const {
    if (m_lexer.At(position) == sign) {
        end = position + 1;
        return true;
    }
    if (m_lexer.At(position) != '!') return false;
    const BodyWord next = BodyWordAt(m_codePage, m_lexer, position);
    end = next.end;
    return next.word == word;
}

ExpressionCompiler::Step ExpressionCompiler::Fail(FaultKind kind, std::string_view name) {
    m_pFault->kind = kind;
    m_pFault->name = name;
    return Step::kWrong;
}

void ExpressionCompiler::Add(Operation operation, std::size_t first, std::size_t second,
                             std::size_t third) {
    m_program.instructions.push_back({operation, first, second, third, m_position});
}

void ExpressionCompiler::AddConstant(std::string text) {
    Add(Operation::kPushConstant, m_program.constants.size());
    m_program.constants.push_back(std::move(text));
}

}  // namespace quillet::macro
