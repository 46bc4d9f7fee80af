// The numbers of the slots, and the checks that what stands in them is what the grammar and the
// translator put there.
//
// The texts of the assertions are known to users, so each check keeps its own, even where two
// look at the same slot: they tell which step has come across it.
#include "parser/tbtrnodeviews.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tbtrnodeviews";

using Node = TbTrParseNode;

// TBI_GENERICLIST, as the command and as a table group
constexpr std::size_t kGlobalsOfCommand = 0;
constexpr std::size_t kTableOfGroup = 0;
// TB_AUTOLABEL, TB_BASE, TB_GBASE, TB_MISSINGSUBCOM
constexpr std::size_t kValueOfSetting = 0;
// SP_VARNAME
constexpr std::size_t kLabelOfVariable = 0;
constexpr std::size_t kTotalOfVariable = 1;
// TBI_VARRANGE
constexpr std::size_t kFirstOfRange = 0;
constexpr std::size_t kLastOfRange = 1;
// TB_OBSERVATION
constexpr std::size_t kListOfObservation = 0;
// TB_MRGROUP, TB_MDGROUP
constexpr std::size_t kNameOfSet = 0;
constexpr std::size_t kMembersOfSet = 1;
constexpr std::size_t kCountedValueOfSet = 2;
// TB_SORT, TBI_SORTVAR, TBI_SORTFUNCTION
constexpr std::size_t kDirectionOfSort = 0;
constexpr std::size_t kFunctionOfSortKey = 0;
constexpr std::size_t kArgumentOfSortFunction = 0;
// TBI_FULLSTATFUNCTION, TBI_STATFUNCTION
constexpr std::size_t kWeightOfStatistic = 0;
constexpr std::size_t kFunctionOfStatistic = 1;
constexpr std::size_t kArgumentsOfStatistic = 2;
constexpr std::size_t kBaseNamesOfStatistic = 3;
constexpr std::size_t kNumberOfStatFunction = 0;
// TBI_STATFUNCARG
constexpr std::size_t kVariableOfArgument = 0;
constexpr std::size_t kFormatOfArgument = 1;
constexpr std::size_t kLabelOfArgument = 2;
// SP_PLUS, SP_GREATERTHAN
constexpr std::size_t kFirstOperand = 0;
constexpr std::size_t kSecondOperand = 1;

bool IsOfType(const Node* pNode, NodeType type) { return pNode && pNode->GetNodeType() == type; }

NodeType TypeOf(const Node* pNode) { return pNode ? pNode->GetNodeType() : kNoNodeType; }

const TAVQToken* TokenOf(const Node* pNode) { return pNode ? pNode->GetToken() : nullptr; }

bool IsFill(NodeType type) { return type == TB_BLANK || type == TB_ZERO; }

bool IsTotalSubcommand(NodeType type) { return type == TB_FTOTAL || type == TB_PTOTAL; }

}  // namespace

NodeOwner MakeListNode(NodeType listType) {
    NodeOwner list = MakeNode(listType, nullptr);
    if (listType == TB_SORT) list->InsertNullChildren(kDirectionOfSort, 1);
    return list;
}

void MoveChildren(TbTrParseNode& from, TbTrParseNode& to) {
    for (std::size_t index = 0; index < from.GetChildCount(); ++index) {
        to.AddChild(from.ReplaceChild(index, nullptr));
    }
}

// ---- Command and groups

NodeOwner CommandView::Make(NodeOwner globals, NodeOwner tableGroups) {
    NodeOwner root = MakeListNode(TBI_GENERICLIST);
    root->AddChild(std::move(globals));
    MoveChildren(*tableGroups, *root);
    return root;
}

bool CommandView::HasShape() const {
    if (!QUILLET_ASSERT(m_node.GetNodeType() == TBI_GENERICLIST,
                        "pTablesCommand->GetNodeType() == TBI_GENERICLIST") ||
        !QUILLET_ASSERT(m_node.GetChildCount() > 0, "tablesCommand.GetChildCount() > 0")) {
        return false;
    }
    return !Globals() || QUILLET_ASSERT(Globals()->GetNodeType() == TBI_GENERICLIST,
                                        "pGlobalsList->GetNodeType() == TBI_GENERICLIST");
}

bool CommandView::HasShapeForSets() const {
    if (!QUILLET_ASSERT(m_node.GetNodeType() == TBI_GENERICLIST,
                        "pTree->GetNodeType() == TBI_GENERICLIST") ||
        !QUILLET_ASSERT(m_node.GetChildCount() > 0, "pTree->GetChildCount() > 0")) {
        return false;
    }
    return !Globals() || QUILLET_ASSERT(IsOfType(Globals(), TBI_GENERICLIST),
                                        "pGlobalSubcommandList->GetNodeType() == TBI_GENERICLIST");
}

const TbTrParseNode* CommandView::Globals() const { return m_node.GetChild(kGlobalsOfCommand); }

NodeChildren CommandView::TableGroups() const {
    return NodeChildren(&m_node, kGlobalsOfCommand + 1);
}

NodeOwner TableGroupView::Make(NodeOwner table, NodeOwner localSubcommands) {
    NodeOwner group = MakeListNode(TBI_GENERICLIST);
    group->AddChild(std::move(table));
    MoveChildren(*localSubcommands, *group);
    return group;
}

std::optional<TableGroupView> TableGroupView::Of(const TbTrParseNode* pNode) {
    if (!QUILLET_ASSERT(pNode && pNode->GetNodeType() == TBI_GENERICLIST,
                        "pTableGroup && pTableGroup->GetNodeType() == TBI_GENERICLIST")) {
        return std::nullopt;
    }
    const TableGroupView group(*pNode);
    if (!QUILLET_ASSERT(group.Table(), "pTableSubcommand")) return std::nullopt;
    return group;
}

TbTrParseNode* TableGroupView::Table() const { return m_node.GetChild(kTableOfGroup); }

NodeChildren TableGroupView::Subcommands() const {
    return NodeChildren(&m_node, kTableOfGroup + 1);
}

const TbTrParseNode* TableGroupView::First(NodeType type) const {
    for (const Node* pSubcommand : Subcommands()) {
        if (IsOfType(pSubcommand, type)) return pSubcommand;
    }
    return nullptr;
}

const TbTrParseNode* TableGroupView::Last(NodeType type) const {
    const Node* pLast = nullptr;
    for (const Node* pSubcommand : Subcommands()) {
        if (IsOfType(pSubcommand, type)) pLast = pSubcommand;
    }
    return pLast;
}

// ---- Settings

NodeOwner SettingView::Make(NodeType type, NodeOwner setting) {
    NodeOwner node = MakeNode(type, nullptr);
    if (setting) node->AddChild(std::move(setting));
    return node;
}

NodeType SettingView::Value() const { return TypeOf(m_node.GetChild(kValueOfSetting)); }

void FormatView::Add(TbTrParseNode& format, NodeOwner setting) {
    const NodeType newType = setting->GetNodeType();
    for (std::size_t index = 0; index < format.GetChildCount(); ++index) {
        const NodeType oldType = format.GetChild(index)->GetNodeType();
        if (oldType == newType || (IsFill(oldType) && IsFill(newType))) {
            format.ReplaceChild(index, std::move(setting));
            return;
        }
    }
    format.AddChild(std::move(setting));
}

void FormatView::Check(const TbTrParseNode& format) {
    QUILLET_ASSERT(format.GetChildCount() <= 2, "numchildren >=0 && numchildren <= 2");
    int nblanks = 0;
    int nzeros = 0;
    for (const Node* pChild : ChildrenOf(format)) {
        const NodeType type = TypeOf(pChild);
        QUILLET_ASSERT(type == SP_SLITERAL || IsFill(type),
                       "child->GetNodeType() == SP_SLITERAL || child->GetNodeType() == TB_ZERO || "
                       "child->GetNodeType() == TB_BLANK");
        if (!IsFill(type)) continue;
        QUILLET_ASSERT(nblanks == 0, "nblanks == 0");
        QUILLET_ASSERT(nzeros == 0, "nzeros == 0");
        ++(type == TB_BLANK ? nblanks : nzeros);
    }
}

std::optional<FormatView> FormatView::Of(const TbTrParseNode& format) {
    FormatView view;
    for (const Node* pSetting : ChildrenOf(format)) {
        const NodeType nodeType = TypeOf(pSetting);
        if (IsFill(nodeType)) {
            view.m_emptyCells = nodeType;
            continue;
        }
        if (!QUILLET_ASSERT(nodeType == SP_SLITERAL, "nodeType == SP_SLITERAL")) {
            return std::nullopt;
        }
        view.m_pMissing = pSetting->GetToken();
    }
    return view;
}

// ---- Variables, totals and sets

void VariableView::SetLabel(TbTrParseNode& variable, NodeOwner label) {
    variable.ReplaceChild(kLabelOfVariable, std::move(label));
}

void VariableView::SetTotal(TbTrParseNode& variable, NodeOwner total) {
    variable.ReplaceChild(kTotalOfVariable, std::move(total));
}

NodeType VariableView::TotalType() const { return TypeOf(m_node.GetChild(kTotalOfVariable)); }

const TAVQToken* VariableView::TotalName() const {
    if (!QUILLET_ASSERT(m_node.GetChildCount() > kTotalOfVariable, "pVar->GetChildCount() > 1")) {
        return nullptr;
    }
    const Node* pTotal = m_node.GetChild(kTotalOfVariable);
    if (!pTotal) return nullptr;
    const NodeType totalType = pTotal->GetNodeType();
    if (!QUILLET_ASSERT(totalType == TBI_FTOTALVAR || totalType == TBI_PTOTALVAR,
                        "totalType == TBI_FTOTALVAR || totalType == TBI_PTOTALVAR") ||
        !QUILLET_ASSERT(pTotal->GetToken(), "pTotalTok")) {
        return nullptr;
    }
    return pTotal->GetToken();
}

namespace {

// The subcommand that a declaration stands in says what kind of total it is.
bool IsDeclared(const Node& declaration) {
    const Node* pParent = declaration.GetParent();
    return QUILLET_ASSERT(declaration.GetNodeType() == SP_VARNAME,
                          "totalVarDecl.GetNodeType() == SP_VARNAME") &&
           QUILLET_ASSERT(pParent, "pParent") &&
           QUILLET_ASSERT(IsTotalSubcommand(pParent->GetNodeType()),
                          "totalType == TB_FTOTAL || totalType == TB_PTOTAL");
}

// A total is called by its label, which may only be a literal, or by its name.
bool IsLabeled(const Node& declaration) {
    if (!QUILLET_ASSERT(declaration.GetChildCount() > 0, "pTotalDecl->GetChildCount()")) {
        return false;
    }
    const Node* pLabel = declaration.GetChild(kLabelOfVariable);
    if (!pLabel) return QUILLET_ASSERT(declaration.GetToken(), "pTotVarNameTok");
    return QUILLET_ASSERT(pLabel->GetNodeType() == SP_SLITERAL,
                          "pLabel->GetNodeType() == SP_SLITERAL") &&
           QUILLET_ASSERT(pLabel->GetToken(), "pLabelTok");
}

}  // namespace

std::optional<TotalView> TotalView::Of(const TbTrParseNode& declaration) {
    if (!IsDeclared(declaration) || !IsLabeled(declaration)) return std::nullopt;
    return TotalView(declaration);
}

const TAVQToken* TotalView::Label() const { return TokenOf(m_node.GetChild(kLabelOfVariable)); }

NodeType TotalView::Type() const { return m_node.GetParent()->GetNodeType(); }

NodeOwner ObservationView::Make(NodeOwner variableList) {
    NodeOwner observation = MakeNode(TB_OBSERVATION, nullptr);
    observation->AddChild(std::move(variableList));
    return observation;
}

bool ObservationView::HasRange(const TbTrParseNode& variableList) {
    const NodeChildren children = ChildrenOf(variableList);
    return std::any_of(children.begin(), children.end(), [](const Node* pChild) {
        const NodeType childNodeType = TypeOf(pChild);
        QUILLET_ASSERT(childNodeType == TBI_VARRANGE || childNodeType == SP_VARNAME,
                       "childNodeType == TBI_VARRANGE || childNodeType == SP_VARNAME");
        return childNodeType == TBI_VARRANGE;
    });
}

NodeChildren ObservationView::Variables() const {
    return NodeChildren(m_node.GetChild(kListOfObservation));
}

NodeOwner SetView::Make(NodeType type, NodeOwner name, NodeOwner members) {
    NodeOwner set = MakeNode(type, nullptr);
    set->AddChild(std::move(name));
    set->AddChild(std::move(members));
    return set;
}

void SetView::AddCountedValue(TbTrParseNode& set, NodeOwner value) {
    set.AddChild(std::move(value));
}

const TbTrParseNode* SetView::NameIn(const TbTrParseNode& set) { return set.GetChild(kNameOfSet); }

namespace {

bool HasSetShape(const Node& group) {
    if (group.GetNodeType() == TB_MRGROUP) {
        if (!QUILLET_ASSERT(group.GetChildCount() == 2, "pMRGroup->GetChildCount() == 2")) {
            return false;
        }
    } else {
        const Node* pLastChild = group.GetChild(kCountedValueOfSet);
        if (!QUILLET_ASSERT(group.GetChildCount() == 3, "pMDGroup->GetChildCount() == 3") ||
            !QUILLET_ASSERT(IsOfType(pLastChild, SP_SLITERAL) || IsOfType(pLastChild, SP_NUMBER),
                            "pLastChild != 0 && (pLastChild->GetNodeType() == SP_SLITERAL || "
                            "pLastChild->GetNodeType() == SP_NUMBER)")) {
            return false;
        }
    }
    return QUILLET_ASSERT(IsOfType(group.GetChild(kNameOfSet), SP_VARNAME),
                          "pMGroup->GetChild(0)->GetNodeType() == SP_VARNAME") &&
           QUILLET_ASSERT(IsOfType(group.GetChild(kMembersOfSet), TBI_VARLIST),
                          "pVarlistNode->GetNodeType() == TBI_VARLIST");
}

bool HasSetNameShape(const Node& name) {
    if (!QUILLET_ASSERT(name.GetChildCount() > 0, "pVarnameNode->GetChildCount() > 0")) {
        return false;
    }
    const Node* pLabel = name.GetChild(kLabelOfVariable);
    return !pLabel ||
           QUILLET_ASSERT(IsOfType(pLabel, SP_SLITERAL), "pLabel->GetNodeType() == SP_SLITERAL");
}

}  // namespace

std::optional<SetView> SetView::Of(const TbTrParseNode& group) {
    if (!HasSetShape(group)) return std::nullopt;
    const SetView set(group);
    if (!HasSetNameShape(set.Name())) return std::nullopt;
    return set;
}

const TbTrParseNode& SetView::Name() const { return *m_node.GetChild(kNameOfSet); }

const TAVQToken* SetView::Label() const { return TokenOf(Name().GetChild(kLabelOfVariable)); }

NodeChildren SetView::Members() const { return NodeChildren(m_node.GetChild(kMembersOfSet)); }

const TAVQToken& SetView::CountedValue() const {
    return *m_node.GetChild(kCountedValueOfSet)->GetToken();
}

std::optional<SetMemberView> SetMemberView::Of(const TbTrParseNode* pNode) {
    if (IsOfType(pNode, SP_VARNAME)) return SetMemberView(pNode, nullptr);
    if (!QUILLET_ASSERT(IsOfType(pNode, TBI_VARRANGE),
                        "pChild->GetNodeType() == SP_VARNAME || "
                        "pChild->GetNodeType() == TBI_VARRANGE") ||
        !QUILLET_ASSERT(pNode->GetChildCount() > 1, "pChild->GetChildCount() > 1")) {
        return std::nullopt;
    }
    const Node* pFirst = pNode->GetChild(kFirstOfRange);
    const Node* pLast = pNode->GetChild(kLastOfRange);
    if (!QUILLET_ASSERT(pFirst && pLast, "pFirst && pLast")) return std::nullopt;
    return SetMemberView(pFirst, pLast);
}

// ---- SORT

void SortView::SetDirection(TbTrParseNode& sort, NodeOwner direction) {
    if (!QUILLET_ASSERT(sort.GetChildCount() > 0, "pSortSubNode->GetChildCount() > 0")) return;
    const NodeOwner pExistingChild = sort.ReplaceChild(kDirectionOfSort, std::move(direction));
    QUILLET_ASSERT(pExistingChild == nullptr, "pExistingChild == 0");
}

std::optional<SortView> SortView::Of(const TbTrParseNode& sort) {
    if (!QUILLET_ASSERT(sort.GetChildCount() > 0, "sortChildCount > 0")) return std::nullopt;
    return SortView(sort);
}

bool SortView::IsAscending() const {
    return IsOfType(m_node.GetChild(kDirectionOfSort), TB_ASCENDING);
}

NodeChildren SortView::Keys() const { return NodeChildren(&m_node, kDirectionOfSort + 1); }

NodeOwner SortKeyView::Make(std::unique_ptr<TAVQToken> name) {
    return MakeNode(TBI_SORTVAR, std::move(name));
}

void SortKeyView::AddFunction(TbTrParseNode& key, NodeOwner function) {
    key.AddChild(std::move(function));
}

std::optional<SortKeyView> SortKeyView::Of(const TbTrParseNode* pNode) {
    if (!QUILLET_ASSERT(IsOfType(pNode, TBI_SORTVAR),
                        "pSortVar && pSortVar->GetNodeType() == TBI_SORTVAR") ||
        !QUILLET_ASSERT(pNode->GetToken(), "pSortVarTok")) {
        return std::nullopt;
    }
    return SortKeyView(*pNode);
}

const TbTrParseNode* SortKeyView::Function() const { return m_node.GetChild(kFunctionOfSortKey); }

void SortFunctionView::AddArgument(TbTrParseNode& function, NodeOwner variable) {
    function.AddChild(std::move(variable));
}

std::optional<SortFunctionView> SortFunctionView::Of(const TbTrParseNode& function) {
    if (!QUILLET_ASSERT(function.GetToken(), "pSortFuncTok")) return std::nullopt;
    return SortFunctionView(function);
}

const TbTrParseNode* SortFunctionView::Argument() const {
    return m_node.GetChild(kArgumentOfSortFunction);
}

// ---- STATISTICS

NodeOwner StatFunctionView::Make(NodeOwner function) {
    NodeOwner fullFunction = MakeNode(TBI_FULLSTATFUNCTION, nullptr);
    fullFunction->InsertNullChildren(kWeightOfStatistic, 1);
    fullFunction->AddChild(std::move(function));
    return fullFunction;
}

void StatFunctionView::AddArguments(TbTrParseNode& fullFunction, NodeOwner argumentList) {
    fullFunction.AddChild(std::move(argumentList));
}

void StatFunctionView::AddBaseNames(TbTrParseNode& fullFunction, NodeOwner nameList) {
    fullFunction.AddChild(std::move(nameList));
}

void StatFunctionView::SetUnweighted(TbTrParseNode& fullFunction, NodeOwner keyword) {
    const NodeOwner pOldChild = fullFunction.ReplaceChild(kWeightOfStatistic, std::move(keyword));
    QUILLET_ASSERT(pOldChild == nullptr, "pOldChild == 0");
}

void StatFunctionView::AddNumber(TbTrParseNode& function, NodeOwner number) {
    function.AddChild(std::move(number));
}

std::optional<StatFunctionView> StatFunctionView::Of(const TbTrParseNode* pNode) {
    if (!QUILLET_ASSERT(IsOfType(pNode, TBI_FULLSTATFUNCTION),
                        "pNode->GetNodeType() == TBI_FULLSTATFUNCTION")) {
        return std::nullopt;
    }
    const Node* pFunction = pNode->GetChild(kFunctionOfStatistic);
    const Node* pBaseVarList = pNode->GetChild(kBaseNamesOfStatistic);
    if (!QUILLET_ASSERT(IsOfType(pFunction, TBI_STATFUNCTION) && pFunction->GetToken(),
                        "pNode->GetNodeType() == TBI_STATFUNCTION") ||
        !QUILLET_ASSERT(!pBaseVarList || pBaseVarList->GetNodeType() == TBI_VARLIST,
                        "pBaseVarList->GetNodeType() == TBI_VARLIST")) {
        return std::nullopt;
    }
    return StatFunctionView(*pNode);
}

const TAVQToken& StatFunctionView::Name() const {
    return *m_node.GetChild(kFunctionOfStatistic)->GetToken();
}

const TAVQToken* StatFunctionView::Number() const {
    return TokenOf(m_node.GetChild(kFunctionOfStatistic)->GetChild(kNumberOfStatFunction));
}

bool StatFunctionView::IsUnweighted() const {
    return m_node.GetChild(kWeightOfStatistic) != nullptr;
}

NodeChildren StatFunctionView::Arguments() const {
    return NodeChildren(m_node.GetChild(kArgumentsOfStatistic));
}

bool StatFunctionView::HasBaseNames() const {
    return m_node.GetChild(kBaseNamesOfStatistic) != nullptr;
}

NodeChildren StatFunctionView::BaseNames() const {
    return NodeChildren(m_node.GetChild(kBaseNamesOfStatistic));
}

NodeOwner StatArgumentView::Make(NodeOwner variable, NodeOwner format, NodeOwner label) {
    NodeOwner argument = MakeNode(TBI_STATFUNCARG, nullptr);
    argument->AddChild(std::move(variable));
    argument->AddChild(std::move(format));
    argument->AddChild(std::move(label));
    return argument;
}

void StatArgumentView::SetVariable(TbTrParseNode& argument, NodeOwner variable) {
    if (!QUILLET_ASSERT(argument.GetChildCount() > 0, "pStatArgVarSpecNode->GetChildCount() > 0")) {
        return;
    }
    const NodeOwner pOldChild = argument.ReplaceChild(kVariableOfArgument, std::move(variable));
    QUILLET_ASSERT(pOldChild == nullptr, "pOldChild == 0");
}

std::optional<StatArgumentView> StatArgumentView::Of(const TbTrParseNode* pNode) {
    if (!QUILLET_ASSERT(IsOfType(pNode, TBI_STATFUNCARG),
                        "pNode->GetNodeType() == TBI_STATFUNCARG")) {
        return std::nullopt;
    }
    const Node* pFormat = pNode->GetChild(kFormatOfArgument);
    const Node* pLabel = pNode->GetChild(kLabelOfArgument);
    if (!QUILLET_ASSERT(!pFormat || pFormat->GetNodeType() == TBI_FMT,
                        "pFormat->GetNodeType() == TBI_FMT") ||
        !QUILLET_ASSERT(!pLabel || pLabel->GetNodeType() == SP_SLITERAL,
                        "pLabel->GetNodeType() == SP_SLITERAL")) {
        return std::nullopt;
    }
    return StatArgumentView(*pNode);
}

const TbTrParseNode* StatArgumentView::Variable() const {
    return m_node.GetChild(kVariableOfArgument);
}

const TAVQToken* StatArgumentView::Format() const {
    return TokenOf(m_node.GetChild(kFormatOfArgument));
}

const TAVQToken* StatArgumentView::Label() const {
    return TokenOf(m_node.GetChild(kLabelOfArgument));
}

// ---- TABLE and its dimensions

NodeOwner TableView::Make() { return MakeNode(TB_TABLE, nullptr); }

void TableView::AddDimension(TbTrParseNode& table, NodeOwner dimension) {
    table.AddChild(std::move(dimension));
}

bool TableView::HasShape() const {
    if (!QUILLET_ASSERT(m_node.GetNodeType() == TB_TABLE,
                        "tableSubcommand.GetNodeType() == TB_TABLE")) {
        return false;
    }
    const std::size_t nDim = DimensionCount();
    if (!QUILLET_ASSERT(0 < nDim && nDim <= kMaxDimensions, "0 < nDim && nDim <= 3")) return false;
    const NodeChildren dimensions = Dimensions();
    return std::all_of(dimensions.begin(), dimensions.end(), [](const Node* pDimension) {
        return !pDimension || HasDimensionShape(*pDimension);
    });
}

bool TableView::IsTable() const {
    return QUILLET_ASSERT(m_node.GetNodeType() == TB_TABLE,
                          "pTableSubcommand && pTableSubcommand->GetNodeType() == TB_TABLE");
}

bool TableView::HasDimensions() const {
    const std::size_t dimCount = DimensionCount();
    return QUILLET_ASSERT(0 < dimCount && dimCount <= kMaxDimensions,
                          "0 < dimCount && dimCount <= 3");
}

TbTrParseNode* TableView::Dimension(std::size_t number) const {
    return m_node.GetChild(number - 1);
}

namespace {

bool HasLeafShape(const Node& leaf) {
    const NodeType nodeType = leaf.GetNodeType();
    if (nodeType == SP_VARNAME) return QUILLET_ASSERT(leaf.GetToken(), "pVarToken");
    return QUILLET_ASSERT(nodeType == TB_STATISTICS || nodeType == TB_LABELS,
                          "nodeType==TB_STATISTICS || nodeType==TB_LABELS");
}

}  // namespace

// Not recursive: a dimension is as deep as a command nests.
bool HasDimensionShape(const TbTrParseNode& subtree) {
    std::vector<const Node*> pending = {&subtree};
    while (!pending.empty()) {
        const Node* pNode = pending.back();
        pending.pop_back();
        if (!IsOperator(pNode->GetNodeType())) {
            if (!HasLeafShape(*pNode)) return false;
            continue;
        }
        if (!QUILLET_ASSERT(pNode->GetChildCount() > 0, "pChild->GetChildCount() > 0")) {
            return false;
        }
        for (const Node* pChild : ChildrenOf(*pNode)) {
            if (!QUILLET_ASSERT(pChild, "pChild")) return false;
            pending.push_back(pChild);
        }
    }
    return true;
}

namespace {

// How many children `operand` adds to a chain of `type`.
std::size_t LengthInChain(NodeType type, const Node* pOperand) {
    if (!pOperand) return 0;
    return pOperand->GetNodeType() == type ? pOperand->GetChildCount() : 1;
}

// Puts what `operand` adds to a chain into the slots of `chain` from `index` on.
void FillSlots(Node& chain, std::size_t index, NodeOwner operand) {
    if (!operand) return;
    if (operand->GetNodeType() != chain.GetNodeType()) {
        chain.ReplaceChild(index, std::move(operand));
        return;
    }
    for (std::size_t child = 0; child < operand->GetChildCount(); ++child) {
        chain.ReplaceChild(index + child, operand->ReplaceChild(child, nullptr));
    }
}

}  // namespace

// The chain of both operands, either of which may be missing. Of two chains the longer one
// stays in place and the shorter one is moved, so that however a long chain is put together,
// with parentheses on the left or on the right, its operands are moved only a few times.
NodeOwner OperatorView::Join(NodeType type, NodeOwner left, NodeOwner right) {
    const std::size_t leftLength = LengthInChain(type, left.get());
    const std::size_t rightLength = LengthInChain(type, right.get());
    NodeOwner chain;
    if (left && left->GetNodeType() == type && leftLength >= rightLength) {
        chain.swap(left);
    } else if (right && right->GetNodeType() == type) {
        chain.swap(right);
    } else {
        chain = MakeNode(type, nullptr);
    }
    if (left) chain->InsertNullChildren(kFirstOperand, leftLength);
    if (right) chain->InsertNullChildren(chain->GetChildCount(), rightLength);
    FillSlots(*chain, kFirstOperand, std::move(left));
    FillSlots(*chain, chain->GetChildCount() - rightLength, std::move(right));
    return chain;
}

TbTrParseNode* OperatorView::First() const { return m_node.GetChild(kFirstOperand); }

TbTrParseNode* OperatorView::Last() const { return m_node.GetChild(m_node.GetChildCount() - 1); }

TbTrParseNode* OperatorView::Second() const {
    Node* pRightOperand = m_node.GetChild(kSecondOperand);
    if (!QUILLET_ASSERT(m_node.GetChildCount() > 1, "pLastNestOp->GetChildCount() > 1") ||
        !QUILLET_ASSERT(pRightOperand, "pRightOp")) {
        return nullptr;
    }
    return pRightOperand;
}

NodeOwner TakeOnlyOperand(TbTrParseNode& operation) { return operation.RemoveChild(kFirstOperand); }

}  // namespace quillet
