// The shapes of the parse tree: which node has what in which of its slots.
//
// A node knows its children by their order and their types alone. Which of them means what is
// written down here and nowhere else: each kind of node has a view, which makes it, reads it, and
// asserts that it has the shape that the grammar gives it. Builder and translator see the tree
// through the views.
//
// A view looks at a node, which must outlive it. Where it is made by `Of`, the shape was checked;
// the accessors of such a view need no check. All take constant time unless they say otherwise.
#ifndef QUILLET_PARSER_TBTRNODEVIEWS_H
#define QUILLET_PARSER_TBTRNODEVIEWS_H

#include <cstddef>
#include <iterator>
#include <optional>
#include <vector>

#include "parser/tbtrparsenode.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

/// The children of a node from one of them on, in order. They must not change meanwhile.
class NodeChildren {
public:
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = TbTrParseNode*;
        using difference_type = std::ptrdiff_t;
        using pointer = TbTrParseNode* const*;
        using reference = TbTrParseNode*;

        /// At `pChild` of `pNode`; null for the end.
        Iterator(const TbTrParseNode* pNode, TbTrParseNode* pChild)
            : m_pNode(pNode), m_pChild(pChild) {}
        [[nodiscard]] TbTrParseNode* operator*() const { return m_pChild; }
        Iterator& operator++() {
            m_pChild = m_pNode->ChildAfter(*m_pChild);
            return *this;
        }
        Iterator operator++(int) {
            const Iterator before = *this;
            ++*this;
            return before;
        }
        [[nodiscard]] bool operator==(const Iterator& other) const {
            return m_pChild == other.m_pChild;
        }

    private:
        const TbTrParseNode* m_pNode;
        TbTrParseNode* m_pChild;
    };

    /// Those of `pNode`; none when it is null.
    explicit NodeChildren(const TbTrParseNode* pNode, std::size_t first = 0)
        : m_pNode(pNode), m_pFirst(pNode ? pNode->GetChild(first) : nullptr) {}

    /// Those of `node` after `child`, which is one of them.
    [[nodiscard]] static NodeChildren After(const TbTrParseNode& node, const TbTrParseNode& child) {
        NodeChildren children(&node);
        children.m_pFirst = node.ChildAfter(child);
        return children;
    }

    [[nodiscard]] Iterator begin() const { return {m_pNode, m_pFirst}; }
    [[nodiscard]] Iterator end() const { return {m_pNode, nullptr}; }
    /// Linear in them.
    [[nodiscard]] std::size_t Count() const {
        return static_cast<std::size_t>(std::distance(begin(), end()));
    }
    [[nodiscard]] bool IsEmpty() const { return !m_pFirst; }

private:
    const TbTrParseNode* m_pNode;
    TbTrParseNode* m_pFirst;
};

[[nodiscard]] inline NodeChildren ChildrenOf(const TbTrParseNode& node) {
    return NodeChildren(&node);
}

/// A list without elements, of a type that grows: `TBI_GENERICLIST`, `TBI_VARLIST`, `TB_SORT`,
/// `TB_STATISTICS` or `TB_FORMAT`.
[[nodiscard]] NodeOwner MakeListNode(Arena& arena, NodeType listType);

// ---- Command and groups

/// The root: the list of global subcommands, then the table groups.
class CommandView {
public:
    /// Of the list of table groups, which becomes the root.
    [[nodiscard]] static NodeOwner Make(NodeOwner globals, NodeOwner tableGroups);

    explicit CommandView(const TbTrParseNode& root) : m_node(root) {}

    /// False, after an assertion, when this is no command or its globals are no list.
    [[nodiscard]] bool HasShape() const;
    /// The same, in the words of the step that defines the sets.
    [[nodiscard]] bool HasShapeForSets() const;

    /// The list of global subcommands; null for none.
    [[nodiscard]] const TbTrParseNode* Globals() const;
    [[nodiscard]] NodeChildren TableGroups() const;

private:
    const TbTrParseNode& m_node;
};

/// A TABLE subcommand and the subcommands that belong to it.
class TableGroupView {
public:
    /// Of the list of subcommands, which becomes the group; it may be null.
    [[nodiscard]] static NodeOwner Make(Arena& arena, NodeOwner table, NodeOwner localSubcommands);

    /// Nothing, after an assertion, when `pNode` is no group with a table.
    [[nodiscard]] static std::optional<TableGroupView> Of(const TbTrParseNode* pNode);
    explicit TableGroupView(const TbTrParseNode& group) : m_node(group) {}

    /// The `TB_TABLE` node; null alone where the shape was not checked.
    [[nodiscard]] TbTrParseNode* Table() const;
    [[nodiscard]] NodeChildren Subcommands() const;
    /// The first or the last subcommand of `type`; null when there is none. Linear in them.
    [[nodiscard]] const TbTrParseNode* First(NodeType type) const;
    [[nodiscard]] const TbTrParseNode* Last(NodeType type) const;

private:
    const TbTrParseNode& m_node;
};

// ---- Settings

/// A subcommand that takes one setting at most: AUTOLABEL, BASE, GBASE, MISSING.
class SettingView {
public:
    /// `setting` may be null.
    [[nodiscard]] static NodeOwner Make(Arena& arena, NodeType type, NodeOwner setting);

    explicit SettingView(const TbTrParseNode& subcommand) : m_node(subcommand) {}

    /// The type of the setting's node; `kNoNodeType` for none.
    [[nodiscard]] NodeType Value() const;

private:
    const TbTrParseNode& m_node;
};

/// FORMAT: how empty and missing cells are shown.
class FormatView {
public:
    /// Adds a setting, in place of one of its kind: BLANK and ZERO are of one kind.
    static void Add(TbTrParseNode& format, NodeOwner setting);
    /// Asserts what the grammar leaves in a format: one setting of each kind at most.
    static void Check(const TbTrParseNode& format);

    /// Nothing, after an assertion, when a setting is none.
    [[nodiscard]] static std::optional<FormatView> Of(const TbTrParseNode& format);

    /// `TB_BLANK` or `TB_ZERO`, as the last of them says; `kNoNodeType` for neither.
    [[nodiscard]] NodeType EmptyCells() const { return m_emptyCells; }
    /// What missing values are shown as; null for none.
    [[nodiscard]] const TAVQToken* Missing() const { return m_pMissing; }

private:
    NodeType m_emptyCells = kNoNodeType;
    const TAVQToken* m_pMissing = nullptr;
};

// ---- Variables, totals and sets

/// The name of a variable: what hangs on it is its label, in a declaration, and its total, in a
/// table.
class VariableView {
public:
    static void SetLabel(TbTrParseNode& variable, NodeOwner label);
    static void SetTotal(TbTrParseNode& variable, NodeOwner total);

    explicit VariableView(const TbTrParseNode& variable) : m_node(variable) {}

    /// The type of the total; `kNoNodeType` for none.
    [[nodiscard]] NodeType TotalType() const;
    /// The name of the total; null for none, and after an assertion.
    [[nodiscard]] const TAVQToken* TotalName() const;

private:
    const TbTrParseNode& m_node;
};

/// A total where FTOTAL or PTOTAL declares it.
class TotalView {
public:
    /// `subcommand` is the one that the declaration stands in. Nothing, after an assertion, when
    /// that is another one, or `declaration` no variable, or without a label and a name.
    [[nodiscard]] static std::optional<TotalView> Of(const TbTrParseNode& declaration,
                                                     NodeType subcommand);

    /// The literal that the total is called by; null when it is called by its name.
    [[nodiscard]] const TAVQToken* Label() const;
    [[nodiscard]] const TAVQToken* Name() const { return m_node.GetToken(); }
    /// The subcommand that declares it, `TB_FTOTAL` or `TB_PTOTAL`.
    [[nodiscard]] NodeType Type() const { return m_type; }

private:
    TotalView(const TbTrParseNode& declaration, NodeType type)
        : m_node(declaration), m_type(type) {}

    const TbTrParseNode& m_node;
    NodeType m_type;
};

/// OBSERVATION: the list of the scale variables.
class ObservationView {
public:
    [[nodiscard]] static NodeOwner Make(Arena& arena, NodeOwner variableList);
    /// True when `variableList` holds a range, up to which its elements are looked at. Asserts what
    /// they are.
    [[nodiscard]] static bool HasRange(const TbTrParseNode& variableList);

    explicit ObservationView(const TbTrParseNode& observation) : m_node(observation) {}

    /// The variables; none when the list is missing.
    [[nodiscard]] NodeChildren Variables() const;

private:
    const TbTrParseNode& m_node;
};

/// A multiple-response group, which becomes a set.
class SetView {
public:
    /// `type` is `TB_MRGROUP` or `TB_MDGROUP`.
    [[nodiscard]] static NodeOwner Make(Arena& arena, NodeType type, NodeOwner name,
                                        NodeOwner members);
    /// For an `TB_MDGROUP`: `value` is a literal or a number.
    static void AddCountedValue(TbTrParseNode& set, NodeOwner value);
    /// The name's node in a set whose shape was not checked; may be null.
    [[nodiscard]] static const TbTrParseNode* NameIn(const TbTrParseNode& set);

    /// Nothing, after an assertion, when `group` has another shape or its name a wrong one. What
    /// the members are is not looked at.
    [[nodiscard]] static std::optional<SetView> Of(const TbTrParseNode& group);

    [[nodiscard]] bool CountsOneValue() const { return m_node.GetNodeType() == TB_MDGROUP; }
    /// The `SP_VARNAME` node of the name.
    [[nodiscard]] const TbTrParseNode& Name() const;
    /// Null for none.
    [[nodiscard]] const TAVQToken* Label() const;
    [[nodiscard]] NodeChildren Members() const;
    /// Only where one value is counted.
    [[nodiscard]] const TAVQToken& CountedValue() const;

private:
    explicit SetView(const TbTrParseNode& group) : m_node(group) {}

    const TbTrParseNode& m_node;
};

/// A member of a set: one variable, or the first and the last one of a range.
class SetMemberView {
public:
    /// Nothing, after an assertion, when `pNode` is neither.
    [[nodiscard]] static std::optional<SetMemberView> Of(const TbTrParseNode* pNode);

    [[nodiscard]] const TbTrParseNode& First() const { return *m_pFirst; }
    /// Null for a single variable.
    [[nodiscard]] const TbTrParseNode* Last() const { return m_pLast; }

private:
    SetMemberView(const TbTrParseNode* pFirst, const TbTrParseNode* pLast)
        : m_pFirst(pFirst), m_pLast(pLast) {}

    const TbTrParseNode* m_pFirst;
    const TbTrParseNode* m_pLast;
};

// ---- SORT

/// SORT: a direction and the keys.
class SortView {
public:
    /// Puts the direction's keyword before the keys. There must be none; asserts.
    static void SetDirection(TbTrParseNode& sort, NodeOwner direction);

    explicit SortView(const TbTrParseNode& sort) : m_node(sort) {}

    [[nodiscard]] bool IsAscending() const;
    [[nodiscard]] NodeChildren Keys() const;

private:
    // Null for none.
    [[nodiscard]] const TbTrParseNode* Direction() const;

    const TbTrParseNode& m_node;
};

/// One key: a variable, and the function that it is sorted by.
class SortKeyView {
public:
    [[nodiscard]] static NodeOwner Make(Arena& arena, const TAVQToken& name);
    static void AddFunction(TbTrParseNode& key, NodeOwner function);

    /// Nothing, after an assertion, when `pNode` is no key with a name.
    [[nodiscard]] static std::optional<SortKeyView> Of(const TbTrParseNode* pNode);

    /// The node whose token is the variable's name.
    [[nodiscard]] const TbTrParseNode& Variable() const { return m_node; }
    /// The `TBI_SORTFUNCTION` node; null for none.
    [[nodiscard]] const TbTrParseNode* Function() const;

private:
    explicit SortKeyView(const TbTrParseNode& key) : m_node(key) {}

    const TbTrParseNode& m_node;
};

/// A function that a key is sorted by.
class SortFunctionView {
public:
    static void AddArgument(TbTrParseNode& function, NodeOwner variable);

    /// Nothing, after an assertion, when the function has no name.
    [[nodiscard]] static std::optional<SortFunctionView> Of(const TbTrParseNode& function);

    [[nodiscard]] const TAVQToken& Name() const { return *m_node.GetToken(); }
    /// The variable's node; null for none.
    [[nodiscard]] const TbTrParseNode* Argument() const;

private:
    explicit SortFunctionView(const TbTrParseNode& function) : m_node(function) {}

    const TbTrParseNode& m_node;
};

// ---- STATISTICS

/// One function: its name and number, how it is weighted, its arguments and its base variables.
class StatFunctionView {
public:
    /// A `TBI_FULLSTATFUNCTION` of a `TBI_STATFUNCTION` and the arguments in the list, which
    /// becomes the node; it may be null. What else belongs to it stands in front of the function.
    [[nodiscard]] static NodeOwner Make(Arena& arena, NodeOwner function, NodeOwner argumentList);
    static void AddBaseNames(TbTrParseNode& fullFunction, NodeOwner nameList);
    /// Puts the keyword in its place, which must be free; asserts.
    static void SetUnweighted(TbTrParseNode& fullFunction, NodeOwner keyword);
    /// Gives a `TBI_STATFUNCTION` its number.
    static void AddNumber(TbTrParseNode& function, NodeOwner number);

    /// Nothing, after an assertion, when `pNode` is none or its function has no name. What the
    /// arguments are is not looked at.
    [[nodiscard]] static std::optional<StatFunctionView> Of(const TbTrParseNode* pNode);

    [[nodiscard]] const TAVQToken& Name() const { return *m_function.GetToken(); }
    /// The percentile; null for none.
    [[nodiscard]] const TAVQToken* Number() const;
    [[nodiscard]] bool IsUnweighted() const;
    [[nodiscard]] NodeChildren Arguments() const;
    /// False where no colon was written.
    [[nodiscard]] bool HasBaseNames() const;
    [[nodiscard]] NodeChildren BaseNames() const;

private:
    StatFunctionView(const TbTrParseNode& fullFunction, const TbTrParseNode& function)
        : m_node(fullFunction), m_function(function) {}

    const TbTrParseNode& m_node;
    const TbTrParseNode& m_function;
};

/// One argument of a function: a variable, and how its results are shown. A variable alone is an
/// argument, too; with anything else it is a `TBI_STATFUNCARG`.
class StatArgumentView {
public:
    /// A `TBI_STATFUNCARG` without a variable. Each of the two may be null.
    [[nodiscard]] static NodeOwner Make(Arena& arena, NodeOwner format, NodeOwner label);
    /// Puts the variable in its place, which must be free; asserts.
    static void SetVariable(TbTrParseNode& argument, NodeOwner variable);

    /// Nothing, after an assertion, when `pNode` is no argument.
    [[nodiscard]] static std::optional<StatArgumentView> Of(const TbTrParseNode* pNode);

    /// The `SP_VARNAME` node; null for none.
    [[nodiscard]] const TbTrParseNode* Variable() const { return m_pVariable; }
    /// Null for none.
    [[nodiscard]] const TAVQToken* Format() const { return m_pFormat; }
    [[nodiscard]] const TAVQToken* Label() const { return m_pLabel; }

private:
    StatArgumentView(const TbTrParseNode* pVariable, const TAVQToken* pFormat,
                     const TAVQToken* pLabel)
        : m_pVariable(pVariable), m_pFormat(pFormat), m_pLabel(pLabel) {}

    const TbTrParseNode* m_pVariable;
    const TAVQToken* m_pFormat;
    const TAVQToken* m_pLabel;
};

// ---- TABLE and its dimensions

/// TABLE: rows, columns and layers, as many as are written. An edit may leave a dimension empty: it
/// is then a node without a type, which is shown as none.
class TableView {
public:
    static constexpr std::size_t kMaxDimensions = 3;

    [[nodiscard]] static NodeOwner Make(Arena& arena);
    static void AddDimension(TbTrParseNode& table, NodeOwner dimension);
    /// Makes the dimension at `index`, from 0, empty, or puts `dimension` in its place.
    static void EmptyDimension(TbTrParseNode& table, std::size_t index);
    static void ReplaceDimension(TbTrParseNode& table, std::size_t index, NodeOwner dimension);

    explicit TableView(const TbTrParseNode& table) : m_node(table) {}

    /// False, after an assertion, unless this is a table of one to three dimensions, each of them
    /// empty or in the shape of `HasDimensionShape`. Linear in the tree.
    [[nodiscard]] bool HasShape() const;
    /// False, after an assertion, unless this is a table.
    [[nodiscard]] bool IsTable() const;
    /// False, after an assertion, unless there are one to three dimensions.
    [[nodiscard]] bool HasDimensions() const;

    /// Empty ones included.
    [[nodiscard]] std::size_t DimensionCount() const { return m_node.GetChildCount(); }
    /// The dimensions that are not empty, in order.
    [[nodiscard]] std::vector<TbTrParseNode*> Dimensions() const;
    /// The dimension of a number, from 1: rows, columns, layers. Null when it is empty or not
    /// there.
    [[nodiscard]] TbTrParseNode* Dimension(std::size_t number) const;

private:
    const TbTrParseNode& m_node;
};

/// True for a stacking (`SP_PLUS`) and a nesting (`SP_GREATERTHAN`).
[[nodiscard]] constexpr bool IsOperator(NodeType type) {
    return type == SP_PLUS || type == SP_GREATERTHAN;
}

/// True when every stacking and nesting of `subtree` has children, and every leaf is a variable
/// with a name or one of the markers STATISTICS and LABELS; asserts otherwise. Whatever is told of
/// a dimension holds for such trees. Linear in the tree.
[[nodiscard]] bool HasDimensionShape(const TbTrParseNode& subtree);

/// A stacking or nesting in a dimension.
class OperatorView {
public:
    /// The chain of `type` of both operands, either of which may be null. An operand of the same
    /// type is dissolved into it. Constant time.
    [[nodiscard]] static NodeOwner Join(Arena& arena, NodeType type, NodeOwner left,
                                        NodeOwner right);

    explicit OperatorView(const TbTrParseNode& operation) : m_node(operation) {}

    [[nodiscard]] bool IsStacking() const { return m_node.GetNodeType() == SP_PLUS; }
    [[nodiscard]] NodeChildren Operands() const { return ChildrenOf(m_node); }
    /// Of a nesting the outermost operand. Null when there is none.
    [[nodiscard]] TbTrParseNode* First() const;
    [[nodiscard]] TbTrParseNode* Last() const;
    /// Null, after an assertion, when there is none.
    [[nodiscard]] TbTrParseNode* Second() const;

private:
    const TbTrParseNode& m_node;
};

}  // namespace quillet

#endif  // QUILLET_PARSER_TBTRNODEVIEWS_H
