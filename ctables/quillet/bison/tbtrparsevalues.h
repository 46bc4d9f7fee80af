// What the actions of the grammar share: taking over the values of a rule, checking them, and
// making nodes of them.
#ifndef QUILLET_BISON_TBTRPARSEVALUES_H
#define QUILLET_BISON_TBTRPARSEVALUES_H

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include "bison/opaquevaluemethods.h"
#include "parser/tbtrparsenode.h"
#include "parser/tbtrtablescommand.h"

namespace quillet {

/// Forgets, when an action ends, whatever it left in its arguments.
template <std::size_t kCount>
class ConsumedValues {
public:
    template <typename... Values>
    explicit ConsumedValues(Values&... values) : m_values{&values...} {}
    ~ConsumedValues() {
        for (OpaqueValue* pValue : m_values) OpaqueValue_Clear(*pValue);
    }
    ConsumedValues(const ConsumedValues&) = delete;
    ConsumedValues& operator=(const ConsumedValues&) = delete;

private:
    std::array<OpaqueValue*, kCount> m_values;
};

template <typename... Values>
ConsumedValues(Values&...) -> ConsumedValues<sizeof...(Values)>;

/// A value that holds `node`; an empty one for none.
[[nodiscard]] OpaqueValue ValueWith(NodeOwner node);

// ---- Nodes from the tokens of a rule
//
// Each takes the token out of its value. Null, after an assertion, when there is another token or
// none.

/// An `SP_VARNAME` node.
[[nodiscard]] NodeOwner ReleaseVariable(Arena& arena, OpaqueValue& varname);

/// An `SP_SLITERAL` node.
[[nodiscard]] NodeOwner ReleaseLiteral(Arena& arena, OpaqueValue& literal);

/// An `SP_NUMBER` node.
[[nodiscard]] NodeOwner ReleaseNumber(Arena& arena, OpaqueValue& number);

/// A node of `type` with a name, which need not be a valid variable name.
[[nodiscard]] NodeOwner ReleaseNamedNode(Arena& arena, NodeType type, OpaqueValue& functionName);

/// The node of a setting, without a token; null, and no assertion, for a keyword that is none.
[[nodiscard]] NodeOwner ReleaseKeyword(Arena& arena, OpaqueValue& settingKeyword);

// ---- Checks
//
// Each asserts that a value is what the grammar delivers, and tells whether it is.

[[nodiscard]] bool CheckParentheses(const OpaqueValue& leftParen, const OpaqueValue& rightParen);
bool CheckKeyword(const OpaqueValue& keyword);
[[nodiscard]] bool CheckSettingKeyword(const OpaqueValue& settingKeyword);
[[nodiscard]] bool CheckGenericList(const OpaqueValue& list);
[[nodiscard]] bool CheckVariableList(const OpaqueValue& list);
/// A list that grows: of the type TBI_GENERICLIST, TBI_VARLIST, TB_SORT, TB_STATISTICS or
/// TB_FORMAT.
[[nodiscard]] bool CheckList(NodeType listType, const OpaqueValue& list);

// ---- Lists

/// The node of a list that grows, a new one for an empty value; null, after an assertion, when the
/// value is something else.
[[nodiscard]] NodeOwner ReleaseOrMakeList(Arena& arena, NodeType listType, OpaqueValue& list);

/// The `TBI_GENERICLIST` or `TBI_VARLIST` in `list`, which becomes a node of `type`.
[[nodiscard]] OpaqueValue BuildFromList(NodeType type, NodeType listType, OpaqueValue& keyword,
                                        OpaqueValue& list);

// ---- Reports

/// Writes a line to the trace, if there is one.
void AddTrace(const TablesCommand& command, std::string_view report, std::string_view text);

/// Records that the command cannot be parsed, at the end of `location`.
void AddReport(TablesCommand& command, TablesErrorKind kind, const TablesLocation& location,
               NodeType subcommand);

}  // namespace quillet

#endif  // QUILLET_BISON_TBTRPARSEVALUES_H
