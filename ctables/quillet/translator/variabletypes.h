// What kind of variable a name stands for, and what a group is called as a set.
#ifndef QUILLET_TRANSLATOR_VARIABLETYPES_H
#define QUILLET_TRANSLATOR_VARIABLETYPES_H

#include <string>
#include <string_view>
#include <unordered_map>

#include "parser/tbtrnodeviews.h"
#include "parser/tbtrparsenode.h"
#include "platform/codepage.h"

namespace quillet {

/// The kind of a variable is the subcommand that declares it: `TB_OBSERVATION` for a scale
/// variable, `TB_MRGROUP` or `TB_MDGROUP` for a multiple-response set, `TB_FTOTAL` or `TB_PTOTAL`
/// for a total, `kNoNodeType` for an ordinary, categorical one.
using VariableType = NodeType;

[[nodiscard]] constexpr bool IsSet(VariableType type) {
    return type == TB_MRGROUP || type == TB_MDGROUP;
}
[[nodiscard]] constexpr bool IsTotal(VariableType type) {
    return type == TB_FTOTAL || type == TB_PTOTAL;
}

/// The name of a variable in upper case, by which variables are compared. `variable` must have a
/// token, and the view lives as long as that.
[[nodiscard]] std::string_view UpperCaseName(const TbTrParseNode& variable);

/// The name of a variable as it is spelled in the command.
[[nodiscard]] std::string_view SpellingOf(const TbTrParseNode& variable);

/// The name under which a multiple-response group is known as a set: "$" in front unless it is
/// there, cut to 8 bytes where the name alone had as many.
[[nodiscard]] std::string MakeSetName(const CodePage& codePage, std::string_view name);

/// The declarations of a command, looked up by name in constant time. Looks at the tree's list of
/// global subcommands, which must stay as it is.
class VariableTypes {
public:
    struct Declaration {
        VariableType type = kNoNodeType;
        const TbTrParseNode* pVariable = nullptr;  ///< The name's node in the declaration.
    };

    /// `pGlobals` is the list of global subcommands; null for none. Of several declarations of
    /// a name the first decides.
    VariableTypes(const CodePage& codePage, const TbTrParseNode* pGlobals);

    /// Null for an ordinary variable.
    [[nodiscard]] const Declaration* Find(const TbTrParseNode& variable) const;

    [[nodiscard]] VariableType TypeOf(const TbTrParseNode& variable) const;

    /// The name that a variable has in the new command, spelled as in the old one.
    [[nodiscard]] std::string OutputName(const TbTrParseNode& variable) const;

    /// The name that a variable has in the new command, in upper case.
    [[nodiscard]] std::string OutputKey(const TbTrParseNode& variable) const;

private:
    void Declare(VariableType type, const TbTrParseNode* pVariable);
    void DeclareAll(VariableType type, NodeChildren variables);

    const CodePage& m_codePage;
    std::unordered_map<std::string_view, Declaration> m_declarations;
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_VARIABLETYPES_H
