// Turns calls of macros into text.
#ifndef QUILLET_MACRO_EXPANDER_H
#define QUILLET_MACRO_EXPANDER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "macro/argumentreader.h"
#include "macro/commandcutter.h"
#include "macro/fault.h"
#include "macro/limits.h"
#include "macro/macro.h"
#include "macro/markedtext.h"
#include "platform/codepage.h"

namespace quillet::macro {

/// Expands the calls of one file.
class Expander {
public:
    /// Borrows all. `fileSize` is in bytes; work is allowed in proportion to it.
    Expander(const CodePage& codePage, Layout layout, const Limits& limits, std::size_t fileSize,
             const MacroTable& macros);

    /// The expansion of a call in the file, with LF at line ends. `beginsCommand`: the call is the
    /// first token of its command, so that the expansion may begin with a comment. False when
    /// something goes wrong; the line of `fault` is then 0 where it is about the call itself.
    [[nodiscard]] bool ExpandCall(const Macro& macro, const GivenArguments& given,
                                  bool beginsCommand, std::string& expansion, Fault& fault);

    /// The macros that the last call has expanded, or begun to, once each, in the order in which
    /// they were begun.
    [[nodiscard]] const std::vector<const Macro*>& ExpandedMacros() const { return m_expanded; }

private:
    struct Loop;
    struct Activation;

    [[nodiscard]] bool ExpandMacro(const Macro& macro, const GivenArguments& given,
                                   bool beginsCommand, int depth, std::string& expansion);
    [[nodiscard]] bool RunBody(const Macro& macro, const GivenArguments& given, int depth,
                               MarkedText& body);
    [[nodiscard]] bool ExpandText(const MarkedView& text, bool beginsCommand, int depth,
                                  std::string& expansion);
    [[nodiscard]] bool ExpandCommand(const MarkedView& text, const Command& command,
                                     bool isFragment, int depth, TextBuilder& builder,
                                     std::size_t& written);
    [[nodiscard]] bool ExpandCallAt(const MarkedView& command, const Macro& macro,
                                    bool beginsCommand, int depth, std::size_t& position,
                                    std::string& expansion);

    [[nodiscard]] bool Run(Activation& activation);
    [[nodiscard]] bool Execute(Activation& activation, const Instruction& instruction);
    [[nodiscard]] bool ExecuteText(Activation& activation, const Instruction& instruction);
    [[nodiscard]] bool ExecuteValue(Activation& activation, const Instruction& instruction);
    [[nodiscard]] static bool ExecuteCondition(Activation& activation,
                                               const Instruction& instruction);
    [[nodiscard]] bool ExecuteLoop(Activation& activation, const Instruction& instruction);

    [[nodiscard]] bool Write(Activation& activation, const Instruction& instruction);
    [[nodiscard]] bool FindValue(Activation& activation, std::size_t slot,
                                 const std::string*& pValue);
    [[nodiscard]] bool PushAll(Activation& activation);
    [[nodiscard]] bool Push(Activation& activation, std::string value);
    [[nodiscard]] static std::string Pop(Activation& activation);
    [[nodiscard]] bool Store(Activation& activation, std::size_t slot, std::string value);
    [[nodiscard]] bool Call(Activation& activation, const Instruction& instruction);
    [[nodiscard]] bool CallSubstr(Activation& activation, std::size_t count);
    [[nodiscard]] bool PopWhole(Activation& activation, std::string_view what, std::int64_t least,
                                std::int64_t& number);
    [[nodiscard]] bool BeginCount(Activation& activation, std::size_t slot);
    [[nodiscard]] bool EndList(Activation& activation, std::size_t slot);
    [[nodiscard]] bool NextPass(Activation& activation, std::size_t exit);
    [[nodiscard]] bool Break(Activation& activation, std::size_t exit);

    [[nodiscard]] bool Charge(std::uint64_t steps);
    [[nodiscard]] bool Fits(std::size_t size);
    [[nodiscard]] bool Fail(FaultKind kind, std::string_view name = {});

    const CodePage& m_codePage;
    Layout m_layout;
    Limits m_limits;
    const MacroTable& m_macros;
    std::uint64_t m_work = 0;
    std::uint64_t m_maxWork;

    // Of the call in the file that is being expanded.
    long m_passes = 0;
    long m_expansions = 0;
    std::size_t m_heldBytes = 0;  // in all values
    std::vector<const Macro*> m_expanded;
    std::unordered_set<const Macro*> m_isExpanded;  // the same ones
    Fault m_fault;
    // What is being expanded: its body and the place in it, for what goes wrong.
    const Macro* m_pMacro = nullptr;
    std::size_t m_bodyPosition = 0;
};

/// What is left out when a call is replaced by an expansion that ends with a period: the period of
/// the call, at `end` in `text`, and the white space before it. Nothing, an empty range, unless
/// only white space and comments stand between the call, which ends at `position`, and that period.
struct DroppedPeriod {
    std::size_t begin = 0;
    std::size_t end = 0;
};
[[nodiscard]] DroppedPeriod FindDroppedPeriod(const Lexer& command, bool isEnded,
                                              std::size_t position, std::string_view expansion);

/// The macro that the token calls; null when it calls none.
[[nodiscard]] const Macro* FindCalled(const MacroTable& macros, const MarkedView& text,
                                      const Token& token);

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_EXPANDER_H
