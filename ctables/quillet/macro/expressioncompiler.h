// Operands, functions and conditions: from their text to instructions.
#ifndef QUILLET_MACRO_EXPRESSIONCOMPILER_H
#define QUILLET_MACRO_EXPRESSIONCOMPILER_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "macro/fault.h"
#include "macro/lexer.h"
#include "macro/program.h"
#include "macro/slots.h"
#include "macro/words.h"
#include "platform/codepage.h"

namespace quillet::macro {

/// What a "!" in a body begins.
struct BodyWord {
    enum class Kind : int {
        kName,        ///< "!" and an identifier.
        kPositional,  ///< "!" and digits.
        kAll,         ///< "!*".
        kNone,        ///< The "!" alone.
    };

    Kind kind = Kind::kNone;
    std::size_t end = 0;  ///< After it.
    std::string word;     ///< Of a name: in capitals, with "!".

    [[nodiscard]] std::string Name() const { return word.substr(1); }
};

/// The word at `position`, where a "!" stands.
[[nodiscard]] BodyWord BodyWordAt(const CodePage& codePage, const Lexer& lexer,
                                  std::size_t position);

/// Whether nothing but blanks stands between `position` and a word that is a statement of this
/// body.
[[nodiscard]] bool IsBeforeStatement(const CodePage& codePage, const Lexer& lexer,
                                     const Slots& slots, std::size_t position);

/// Adds instructions for the expressions of one body. Nothing is recursive: what is open stands on
/// a stack of its own, however deep it goes.
class ExpressionCompiler {
public:
    /// Borrows all.
    ExpressionCompiler(const CodePage& codePage, const Lexer& lexer, Slots& slots, Program& program)
        : m_codePage(codePage), m_lexer(lexer), m_slots(slots), m_program(program) {}

    /// One operand, the next thing at `position`, which is then after it. `depth` things are open
    /// around it, `maxDepth` may be. False, with a fault without line at `position`, when there is
    /// none or it is not well written.
    [[nodiscard]] bool CompileOperand(std::size_t& position, int depth, int maxDepth, Fault& fault);
    /// The same for a whole condition, with its parentheses.
    [[nodiscard]] bool CompileCondition(std::size_t& position, int depth, int maxDepth,
                                        Fault& fault);

    /// The function that this word begins, with `position` set after its parenthesis; none when it
    /// is no function here.
    [[nodiscard]] std::optional<Function> FunctionAt(const BodyWord& word,
                                                     std::size_t& position) const;

    /// The rest of a function whose parenthesis ends before `position`.
    [[nodiscard]] bool CompileFunction(Function function, std::size_t& position, int depth,
                                       int maxDepth, Fault& fault);

private:
    // What is open: a function, a parenthesis of a condition, an operator.
    struct Open {
        enum class Kind : int { kFunction, kGroup, kNot, kAnd, kOr, kRelation };

        Kind kind = Kind::kGroup;
        std::size_t code = 0;  // the function or the relation
        std::size_t operandCount = 0;
        std::size_t position = 0;
    };
    enum class Step : int { kGoOn, kDone, kWrong };

    [[nodiscard]] bool Compile(std::size_t& position, int depth, int maxDepth, Fault& fault);
    [[nodiscard]] Step BeforeOperand();
    [[nodiscard]] Step AfterOperand();
    [[nodiscard]] Step AfterFunctionOperand();
    [[nodiscard]] Step AfterConditionOperand();
    [[nodiscard]] Step AfterCondition();
    [[nodiscard]] Step CloseGroup();
    [[nodiscard]] Step PushWord();
    [[nodiscard]] bool PushPlainToken(const Token& token);
    [[nodiscard]] bool Begin(Open::Kind kind, std::size_t code, std::size_t end);
    [[nodiscard]] bool IsInCondition() const;
    [[nodiscard]] Step CloseFunction();
    void CloseOperators(Open::Kind lowest);
    [[nodiscard]] std::optional<Relation> RelationAt(std::size_t position, std::size_t& end) const;
    [[nodiscard]] bool IsOperator(std::size_t position, char sign, std::string_view word,
                                  std::size_t& end) const;
    [[nodiscard]] Step Fail(FaultKind kind, std::string_view name);

    void Add(Operation operation, std::size_t first = 0, std::size_t second = 0,
             std::size_t third = 0);
    void AddConstant(std::string text);

    const CodePage& m_codePage;
    const Lexer& m_lexer;
    Slots& m_slots;
    Program& m_program;

    std::vector<Open> m_open;
    std::size_t m_position = 0;
    bool m_hasOperand = false;   // the next thing stands after an operand
    bool m_isCondition = false;  // ... which is a whole condition
    int m_depth = 0;
    int m_maxDepth = 0;
    Fault* m_pFault = nullptr;
};

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_EXPRESSIONCOMPILER_H
