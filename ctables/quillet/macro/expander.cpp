// A body is run twice over: its program makes a text out of it, and then the calls in that text are
// expanded, which read their arguments from the text as it is by then. Marks tell which names stand
// in the body itself.
//
// Macros inside macros are the only recursion; how deep it goes is limited. What a call keeps is on
// the heap, so that the stack holds little for each of them.
#include "macro/expander.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "macro/functions.h"
#include "macro/lexer.h"
#include "macro/words.h"

namespace quillet::macro {

namespace {

// What an instruction takes, compared with a byte that is looked at.
constexpr std::uint64_t kInstructionWork = 16;
// All values that a call holds at one time may be that many times the longest text.
constexpr std::size_t kHeldTexts = 16;
// The operands of a function likewise.
constexpr std::size_t kStackedTexts = 4;

}  // namespace

// A loop that is running.
struct Expander::Loop {
    std::size_t slot = 0;
    long passes = 0;
    std::size_t writerCount = 0;  // when it began
    // Over numbers:
    bool counts = false;
    std::int64_t next = 0;
    std::int64_t last = 0;
    std::int64_t step = 0;
    // Over the tokens of a list:
    std::string list{};
    std::size_t position = 0;
};

// A macro that is being expanded.
struct Expander::Activation {
    const Macro& macro;
    std::size_t positionalCount = 0;  // that the call gives
    int depth = 0;
    std::unordered_map<std::size_t, std::string> values{};  // by their slots
    std::size_t heldBytes = 0;
    std::vector<std::string> stack{};
    std::size_t stackedBytes = 0;
    std::vector<bool> truths{};
    std::vector<Loop> loops{};
    std::vector<TextBuilder> writers{TextBuilder()};  // the last one is written to
    bool expandsNames = true;
    std::size_t next = 0;  // instruction
};

Expander::Expander(const CodePage& codePage, Layout layout, const Limits& limits,
                   std::size_t fileSize, const MacroTable& macros)
    : m_codePage(codePage),
      m_layout(layout),
      m_limits(limits),
      m_macros(macros),
      m_maxWork(limits.work + limits.workPerByte * fileSize) {}

bool Expander::ExpandCall(const Macro& macro, const GivenArguments& given, bool beginsCommand,
                          std::string& expansion, Fault& fault) {
    m_passes = 0;
    m_expansions = 0;
    m_heldBytes = 0;
    m_pMacro = nullptr;
    m_expanded.clear();
    m_isExpanded.clear();
    m_fault = {};
    if (ExpandMacro(macro, given, beginsCommand, /*depth=*/1, expansion)) return true;
    fault = std::move(m_fault);
    return false;
}

bool Expander::ExpandMacro(const Macro& macro, const GivenArguments& given, bool beginsCommand,
                           int depth, std::string& expansion) {
    if (depth > m_limits.macroDepth) return Fail(FaultKind::kMacrosTooDeep, macro.name);
    if (++m_expansions > m_limits.expansions) return Fail(FaultKind::kTooManyExpansions);
    if (m_isExpanded.insert(&macro).second) m_expanded.push_back(&macro);
    if (macro.program.fault) {
        m_fault = *macro.program.fault;
        m_fault.line += macro.bodyLine - 1;
        m_fault.file = macro.file;
        return false;
    }
    MarkedText body;
    if (!RunBody(macro, given, depth, body)) return false;
    const Macro* pOuter = std::exchange(m_pMacro, &macro);
    m_bodyPosition = 0;
    const bool isExpanded = ExpandText(body.View(), beginsCommand, depth, expansion);
    m_pMacro = pOuter;
    return isExpanded;
}

bool Expander::RunBody(const Macro& macro, const GivenArguments& given, int depth,
                       MarkedText& body) {
    const auto activation =
        std::make_unique<Activation>(Activation{macro, given.positionalCount, depth});
    for (const GivenArgument& argument : given.arguments) {
        std::string value;
        if (!macro.list.arguments[argument.index].expandsMacros) {
            value = argument.value.text;
        } else if (!ExpandText(argument.value.View(), /*beginsCommand=*/false, depth, value)) {
            return false;
        }
        if (!Store(*activation, argument.index, std::move(value))) return false;
    }
    const Macro* pOuter = std::exchange(m_pMacro, &macro);
    const bool hasRun = Run(*activation);
    m_pMacro = pOuter;
    m_heldBytes -= activation->heldBytes;
    if (hasRun) body = activation->writers.back().Take();
    return hasRun;
}

bool Expander::ExpandText(const MarkedView& text, bool beginsCommand, int depth,
                          std::string& expansion) {
    if (!Charge(text.text.size())) return false;
    using Content = CommandCutter::Content;
    CommandCutter cutter(m_codePage, text.text, m_layout,
                         beginsCommand ? Content::kCommands : Content::kFragment);
    const auto builder = std::make_unique<TextBuilder>();
    std::size_t written = 0;
    bool isFragment = !beginsCommand;
    Command command;
    while (cutter.Next(command)) {
        if (command.kind == Command::Kind::kOrdinary &&
            !ExpandCommand(text, command, isFragment, depth, *builder, written)) {
            return false;
        }
        isFragment = false;
    }
    builder->Append(text.Part(written, text.text.size()));
    if (!Fits(builder->Size())) return false;
    expansion = builder->Take().text;
    return true;
}

bool Expander::ExpandCommand(const MarkedView& text, const Command& command, bool isFragment,
                             int depth, TextBuilder& builder, std::size_t& written) {
    const MarkedView part = text.Part(0, command.end);
    const Lexer lexer(m_codePage, part.text);
    std::string expansion;
    Token token = lexer.NextToken(command.begin);
    while (token.kind != TokenKind::kEnd) {
        std::size_t position = token.end;
        if (const Macro* pMacro = FindCalled(m_macros, part, token)) {
            const bool beginsCommand = !isFragment && token.begin == command.begin;
            if (!ExpandCallAt(part, *pMacro, beginsCommand, depth, position, expansion)) {
                return false;
            }
            builder.Append(text.Part(written, token.begin));
            builder.AppendPutIn(expansion);
            written = position;
            const DroppedPeriod dropped =
                FindDroppedPeriod(lexer, command.isEnded, position, expansion);
            if (dropped.end > 0) {
                builder.Append(text.Part(written, dropped.begin));
                written = dropped.end;
            }
            if (!Fits(builder.Size())) return false;
        }
        token = lexer.NextToken(position);
    }
    return true;
}

bool Expander::ExpandCallAt(const MarkedView& command, const Macro& macro, bool beginsCommand,
                            int depth, std::size_t& position, std::string& expansion) {
    const auto given = std::make_unique<GivenArguments>();
    Fault fault;
    if (!ReadArguments(m_codePage, macro.list, command, position, *given, fault)) {
        return Fail(fault.kind, fault.name);
    }
    return ExpandMacro(macro, *given, beginsCommand, depth + 1, expansion);
}

bool Expander::Run(Activation& activation) {
    const std::vector<Instruction>& instructions = activation.macro.program.instructions;
    while (activation.next < instructions.size()) {
        const Instruction& instruction = instructions[activation.next];
        ++activation.next;
        m_bodyPosition = instruction.position;
        if (!Charge(kInstructionWork) || !Execute(activation, instruction)) return false;
    }
    return true;
}

bool Expander::Execute(Activation& activation, const Instruction& instruction) {
    switch (instruction.operation) {
        case Operation::kWriteBody:
        case Operation::kEndCommand:
        case Operation::kWriteSlot:
        case Operation::kWriteValue:
        case Operation::kOffExpand:
        case Operation::kOnExpand:
            return ExecuteText(activation, instruction);
        case Operation::kPushConstant:
        case Operation::kPushSlot:
        case Operation::kPushAll:
        case Operation::kCall:
        case Operation::kStore:
            return ExecuteValue(activation, instruction);
        case Operation::kCompare:
        case Operation::kTest:
        case Operation::kNot:
        case Operation::kAnd:
        case Operation::kOr:
            return ExecuteCondition(activation, instruction);
        default:
            return ExecuteLoop(activation, instruction);
    }
}

bool Expander::ExecuteText(Activation& activation, const Instruction& instruction) {
    TextBuilder& writer = activation.writers.back();
    switch (instruction.operation) {
        case Operation::kEndCommand:
            writer.EndCommand();
            break;
        case Operation::kOffExpand:
            activation.expandsNames = false;
            break;
        case Operation::kOnExpand:
            activation.expandsNames = true;
            break;
        case Operation::kWriteValue: {
            const std::string value = Pop(activation);
            if (!Charge(value.size())) return false;
            writer.AppendPutIn(value);
            break;
        }
        default:
            return Write(activation, instruction);
    }
    return Fits(writer.Size());
}

// The value of a slot, or text of the body.
bool Expander::Write(Activation& activation, const Instruction& instruction) {
    const std::string* pValue = nullptr;
    std::size_t begin = instruction.first;
    std::size_t end = instruction.second;
    if (instruction.operation == Operation::kWriteSlot) {
        if (!FindValue(activation, instruction.first, pValue)) return false;
        begin = instruction.second;
        end = instruction.third;
    }
    const std::string_view body = activation.macro.body;
    const std::string_view text = pValue != nullptr ? *pValue : body.substr(begin, end - begin);
    if (!Charge(text.size())) return false;
    TextBuilder& writer = activation.writers.back();
    writer.AddSeam();
    if (pValue == nullptr && activation.expandsNames) {
        writer.AppendWritten(text);
    } else {
        writer.AppendPutIn(text);
    }
    return Fits(writer.Size());
}

bool Expander::ExecuteValue(Activation& activation, const Instruction& instruction) {
    switch (instruction.operation) {
        case Operation::kPushConstant:
            return Push(activation, activation.macro.program.constants[instruction.first]);
        case Operation::kPushAll:
            return PushAll(activation);
        case Operation::kCall:
            return Call(activation, instruction);
        case Operation::kStore:
            return Store(activation, instruction.first, Pop(activation));
        default:
            break;
    }
    const std::string* pValue = nullptr;
    if (!FindValue(activation, instruction.first, pValue)) return false;
    if (pValue != nullptr) return Push(activation, *pValue);
    return Push(activation, activation.macro.body.substr(instruction.second,
                                                         instruction.third - instruction.second));
}

// Looks for the value of a slot; null when it has none. The default of an argument is expanded when
// it is wanted for the first time: a macro can have more arguments than its calls care for.
bool Expander::FindValue(Activation& activation, std::size_t slot, const std::string*& pValue) {
    const auto found = activation.values.find(slot);
    if (found != activation.values.end()) {
        pValue = &found->second;
        return true;
    }
    if (slot >= activation.macro.list.arguments.size()) return true;
    const Argument& argument = activation.macro.list.arguments[slot];
    std::string value = argument.defaultText.value_or(std::string());
    if (argument.expandsMacros && !value.empty()) {
        const std::string text = std::exchange(value, {});
        if (!ExpandText({text, {}}, /*beginsCommand=*/false, activation.depth, value)) return false;
    }
    if (!Store(activation, slot, std::move(value))) return false;
    pValue = &activation.values.at(slot);
    return true;
}

bool Expander::PushAll(Activation& activation) {
    std::string all;
    const auto add = [&](std::size_t slot) {
        const std::string* pValue = nullptr;
        if (!Charge(kInstructionWork) || !FindValue(activation, slot, pValue)) return false;
        if (pValue != nullptr && !pValue->empty()) {
            if (!all.empty()) all += ' ';
            all += *pValue;
        }
        return Fits(all.size());
    };
    for (std::size_t slot = 0; slot < activation.positionalCount; ++slot) {
        if (!add(slot)) return false;
    }
    const std::vector<std::size_t>& defaults = activation.macro.list.positionalDefaults;
    for (auto slot = std::lower_bound(defaults.begin(), defaults.end(), activation.positionalCount);
         slot != defaults.end(); ++slot) {
        if (!add(*slot)) return false;
    }
    return Push(activation, std::move(all));
}

bool Expander::Push(Activation& activation, std::string value) {
    if (!Charge(value.size()) || !Fits(value.size())) return false;
    activation.stackedBytes += value.size();
    if (activation.stackedBytes > kStackedTexts * m_limits.textSize) {
        return Fail(FaultKind::kTextTooLong);
    }
    activation.stack.push_back(std::move(value));
    return true;
}

std::string Expander::Pop(Activation& activation) {
    std::string value = std::move(activation.stack.back());
    activation.stack.pop_back();
    activation.stackedBytes -= value.size();
    return value;
}

bool Expander::Store(Activation& activation, std::size_t slot, std::string value) {
    if (!Charge(kInstructionWork + value.size()) || !Fits(value.size())) return false;
    std::string& place = activation.values[slot];
    activation.heldBytes += value.size() - place.size();
    m_heldBytes += value.size() - place.size();
    place = std::move(value);
    if (m_heldBytes <= kHeldTexts * m_limits.textSize) return true;
    return Fail(FaultKind::kTextTooLong);
}

bool Expander::Call(Activation& activation, const Instruction& instruction) {
    const auto function = static_cast<Function>(instruction.first);
    const std::string_view word = WordOf(function);
    if (function == Function::kSubstr) return CallSubstr(activation, instruction.second);
    if (function == Function::kBlanks) {
        std::int64_t count = 0;
        if (!PopWhole(activation, word, 0, count)) return false;
        const auto size = static_cast<std::size_t>(count);
        return Fits(size) && Push(activation, std::string(size, ' '));
    }
    if (function == Function::kConcat) {
        std::string all;
        for (std::size_t i = activation.stack.size() - instruction.second;
             i < activation.stack.size(); ++i) {
            all += activation.stack[i];
        }
        for (std::size_t i = 0; i < instruction.second; ++i) static_cast<void>(Pop(activation));
        return Push(activation, std::move(all));
    }
    std::string last = Pop(activation);
    switch (function) {
        case Function::kLength:
            return Push(activation, std::to_string(LengthOf(m_codePage, last)));
        case Function::kIndex: {
            const std::string text = Pop(activation);
            return Push(activation, std::to_string(IndexOf(m_codePage, text, last)));
        }
        case Function::kHead:
            return Push(activation, std::string(HeadOf(m_codePage, last)));
        case Function::kTail:
            return Push(activation, std::string(TailOf(m_codePage, last)));
        case Function::kQuote:
            return Push(activation, Quoted(last));
        case Function::kUnquote:
            return Push(activation, Unquoted(m_codePage, last));
        case Function::kUpcase:
            return Push(activation, Capitals(m_codePage, last));
        default:
            break;
    }
    std::string value;
    return ExpandText({last, {}}, /*beginsCommand=*/false, activation.depth, value) &&
           Push(activation, std::move(value));
}

bool Expander::CallSubstr(Activation& activation, std::size_t count) {
    const std::string_view word = WordOf(Function::kSubstr);
    std::int64_t length = std::numeric_limits<std::int64_t>::max();
    std::int64_t from = 0;
    if (count == 3 && !PopWhole(activation, word, 0, length)) return false;
    if (!PopWhole(activation, word, 1, from)) return false;
    const std::string text = Pop(activation);
    return Push(activation, std::string(Substring(m_codePage, text, static_cast<std::size_t>(from),
                                                  static_cast<std::size_t>(length))));
}

bool Expander::PopWhole(Activation& activation, std::string_view what, std::int64_t least,
                        std::int64_t& number) {
    const std::optional<std::int64_t> whole = WholeNumberOf(Pop(activation));
    if (!whole) return Fail(FaultKind::kNoWholeNumber, what);
    number = *whole;
    return number >= least || Fail(FaultKind::kNumberTooSmall, what);
}

bool Expander::ExecuteCondition(Activation& activation, const Instruction& instruction) {
    if (instruction.operation == Operation::kTest) {
        activation.truths.push_back(IsTrue(Pop(activation)));
        return true;
    }
    if (instruction.operation == Operation::kCompare) {
        const std::string right = Pop(activation);
        const std::string left = Pop(activation);
        activation.truths.push_back(Holds(left, static_cast<Relation>(instruction.first), right));
        return true;
    }
    const bool right = activation.truths.back();
    if (instruction.operation == Operation::kNot) {
        activation.truths.back() = !right;
        return true;
    }
    activation.truths.pop_back();
    const bool left = activation.truths.back();
    const bool isAnd = instruction.operation == Operation::kAnd;
    activation.truths.back() = isAnd ? left && right : left || right;
    return true;
}

bool Expander::ExecuteLoop(Activation& activation, const Instruction& instruction) {
    switch (instruction.operation) {
        case Operation::kJump:
            activation.next = instruction.first;
            return true;
        case Operation::kJumpUnless:
            if (!activation.truths.back()) activation.next = instruction.first;
            activation.truths.pop_back();
            return true;
        case Operation::kBeginCount:
            return BeginCount(activation, instruction.first);
        case Operation::kBeginList:
            activation.writers.emplace_back();
            return true;
        case Operation::kEndList:
            return EndList(activation, instruction.first);
        case Operation::kNextPass:
            return NextPass(activation, instruction.first);
        default:
            return Break(activation, instruction.first);
    }
}

bool Expander::BeginCount(Activation& activation, std::size_t slot) {
    constexpr std::int64_t kAny = std::numeric_limits<std::int64_t>::min();
    Loop loop;
    loop.slot = slot;
    loop.writerCount = activation.writers.size();
    loop.counts = true;
    if (!PopWhole(activation, "!DO", kAny, loop.step) ||
        !PopWhole(activation, "!DO", kAny, loop.last) ||
        !PopWhole(activation, "!DO", kAny, loop.next)) {
        return false;
    }
    if (loop.step == 0) return Fail(FaultKind::kStepIsZero);
    activation.loops.push_back(std::move(loop));
    return true;
}

bool Expander::EndList(Activation& activation, std::size_t slot) {
    const MarkedText list = activation.writers.back().Take();
    activation.writers.pop_back();
    Loop loop;
    loop.slot = slot;
    loop.writerCount = activation.writers.size();
    if (!ExpandText(list.View(), /*beginsCommand=*/false, activation.depth, loop.list)) {
        return false;
    }
    activation.loops.push_back(std::move(loop));
    return true;
}

bool Expander::NextPass(Activation& activation, std::size_t exit) {
    Loop& loop = activation.loops.back();
    std::string value;
    bool hasNext = false;
    if (loop.counts) {
        hasNext = loop.step > 0 ? loop.next <= loop.last : loop.next >= loop.last;
        if (hasNext) value = std::to_string(loop.next);
        loop.next += loop.step;
    } else {
        const Lexer lexer(m_codePage, loop.list);
        const Token token = lexer.NextToken(loop.position);
        hasNext = token.kind != TokenKind::kEnd;
        value = lexer.TextOf(token);
        loop.position = token.end;
    }
    if (!hasNext) {
        activation.loops.pop_back();
        activation.next = exit;
        return true;
    }
    if (++loop.passes > m_limits.loopPasses) return Fail(FaultKind::kTooManyLoopPasses);
    if (++m_passes > m_limits.passes) return Fail(FaultKind::kTooManyPasses);
    return Store(activation, loop.slot, std::move(value));
}

bool Expander::Break(Activation& activation, std::size_t exit) {
    if (exit == kNowhere) return Fail(FaultKind::kBreakOutsideLoop);
    // A list that is being written belongs to a loop that has not begun.
    activation.writers.resize(activation.loops.back().writerCount);
    activation.loops.pop_back();
    activation.next = exit;
    return true;
}

bool Expander::Charge(std::uint64_t steps) {
    m_work += steps;
    return m_work <= m_maxWork || Fail(FaultKind::kTooMuchWork);
}

bool Expander::Fits(std::size_t size) {
    return size <= m_limits.textSize || Fail(FaultKind::kTextTooLong);
}

bool Expander::Fail(FaultKind kind, std::string_view name) {
    m_fault = {};
    m_fault.kind = kind;
    m_fault.name = name;
    if (m_pMacro != nullptr) {
        m_fault.line = m_pMacro->LineOf(m_bodyPosition);
        m_fault.file = m_pMacro->file;
    }
    return false;
}

DroppedPeriod FindDroppedPeriod(const Lexer& command, bool isEnded, std::size_t position,
                                std::string_view expansion) {
    const std::size_t end = command.Text().size();
    if (!isEnded || !expansion.ends_with('.') || command.SkipSpace(position) != end) return {};
    std::size_t begin = end;
    while (begin > position && IsSpace(command.At(begin - 1))) --begin;
    return {begin, end + 1};
}

const Macro* FindCalled(const MacroTable& macros, const MarkedView& text, const Token& token) {
    if (token.kind != TokenKind::kIdentifier && token.kind != TokenKind::kMacroWord) return nullptr;
    const std::string_view name = text.text.substr(token.begin, token.end - token.begin);
    const Macro* pMacro = macros.Find(name);
    return pMacro != nullptr && text.IsWritten(token.begin, token.end) ? pMacro : nullptr;
}

}  // namespace quillet::macro
