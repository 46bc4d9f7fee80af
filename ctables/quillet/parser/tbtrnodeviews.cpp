// Which child is what, and the checks that what stands in them is what the grammar and the
// translator put there. What may be missing is told by its type, what is always there by its place.
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
// TBI_VARRANGE
constexpr std::size_t kFirstOfRange = 0;
constexpr std::size_t kLastOfRange = 1;
// TB_MRGROUP, TB_MDGROUP
constexpr std::size_t kNameOfSet = 0;
constexpr std::size_t kMembersOfSet = 1;
constexpr std::size_t kCountedValueOfSet = 2;
// SP_PLUS, SP_GREATERTHAN
constexpr std::size_t kSecondOperand = 1;

bool IsOfType(const Node* pNode, NodeType type) { return pNode && pNode->GetNodeType() == type; }

NodeType TypeOf(const Node* pNode) { return pNode ? pNode->GetNodeType() : kNoNodeType; }

const TAVQToken* TokenOf(const Node* pNode) { return pNode ? pNode->GetToken() : nullptr; }

bool IsFill(NodeType type) { return type == TB_BLANK || type == TB_ZERO; }

bool IsTotalSubcommand(NodeType type) { return type == TB_FTOTAL || type == TB_PTOTAL; }

}  // namespace

NodeOwner MakeListNode(Arena& arena, NodeType listType) { return MakeNode(arena, listType); }

// ---- Command and groups

NodeOwner CommandView::Make(NodeOwner globals, NodeOwner tableGroups) {
    tableGroups->AddFirstChild(std::move(globals));
    return tableGroups;
}

bool CommandView::HasShape() const {
    if (!QUILLET_ASSERT(m_node.GetNodeType() == TBI_GENERICLIST,
                        "pTablesCommand->GetNodeType() == TBI_GENERICLIST") ||
        !QUILLET_ASSERT(m_node.HasChildren(), "tablesCommand.GetChildCount() > 0")) {
        return false;
    }
    return !Globals() || QUILLET_ASSERT(Globals()->GetNodeType() == TBI_GENERICLIST,
                                        "pGlobalsList->GetNodeType() == TBI_GENERICLIST");
}

bool CommandView::HasShapeForSets() const {
    if (!QUILLET_ASSERT(m_node.GetNodeType() == TBI_GENERICLIST,
                        "pTree->GetNodeType() == TBI_GENERICLIST") ||
        !QUILLET_ASSERT(m_node.HasChildren(), "pTree->GetChildCount() > 0")) {
        return false;
    }
    return !Globals() || QUILLET_ASSERT(IsOfType(Globals(), TBI_GENERICLIST),
                                        "pGlobalSubcommandList->GetNodeType() == TBI_GENERICLIST");
}

const TbTrParseNode* CommandView::Globals() const { return m_node.GetChild(kGlobalsOfCommand); }

NodeChildren CommandView::TableGroups() const {
    return NodeChildren(&m_node, kGlobalsOfCommand + 1);
}

NodeOwner TableGroupView::Make(Arena& arena, NodeOwner table, NodeOwner localSubcommands) {
    NodeOwner group =
        localSubcommands ? std::move(localSubcommands) : MakeListNode(arena, TBI_GENERICLIST);
    group->AddFirstChild(std::move(table));
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

NodeOwner SettingView::Make(Arena& arena, NodeType type, NodeOwner setting) {
    NodeOwner node = MakeNode(arena, type);
    node->AddChild(std::move(setting));
    return node;
}

NodeType SettingView::Value() const { return TypeOf(m_node.FirstChild()); }

void FormatView::Add(TbTrParseNode& format, NodeOwner setting) {
    const NodeType newType = setting->GetNodeType();
    std::size_t index = 0;
    for (const Node* pSetting : ChildrenOf(format)) {
        const NodeType oldType = pSetting->GetNodeType();
        if (oldType == newType || (IsFill(oldType) && IsFill(newType))) {
            format.ReplaceChild(index, std::move(setting));
            return;
        }
        ++index;
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
    variable.AddFirstChild(std::move(label));
}

namespace {

bool IsTotalOfVariable(NodeType type) { return type == TBI_FTOTALVAR || type == TBI_PTOTALVAR; }

}  // namespace

void VariableView::SetTotal(TbTrParseNode& variable, NodeOwner total) {
    std::size_t index = 0;
    for (const Node* pChild : ChildrenOf(variable)) {
        if (IsTotalOfVariable(pChild->GetNodeType())) {
            variable.ReplaceChild(index, std::move(total));
            return;
        }
        ++index;
    }
    variable.AddChild(std::move(total));
}

namespace {

// What hangs on a variable and is no label.
const Node* TotalOf(const Node& variable) {
    const Node* pLast = variable.LastChild();
    return IsOfType(pLast, SP_SLITERAL) ? nullptr : pLast;
}

}  // namespace

NodeType VariableView::TotalType() const { return TypeOf(TotalOf(m_node)); }

const TAVQToken* VariableView::TotalName() const {
    const Node* pTotal = TotalOf(m_node);
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

bool IsVariable(const Node& declaration) {
    return QUILLET_ASSERT(declaration.GetNodeType() == SP_VARNAME,
                          "totalVarDecl.GetNodeType() == SP_VARNAME");
}

// The subcommand that a declaration stands in says what kind of total it is.
bool IsDeclaredIn(NodeType subcommand) {
    return QUILLET_ASSERT(IsTotalSubcommand(subcommand),
                          "totalType == TB_FTOTAL || totalType == TB_PTOTAL");
}

// A total is called by its label, which may only be a literal, or by its name.
bool IsLabeled(const Node& declaration) {
    const Node* pLabel = declaration.FirstChild();
    if (!pLabel) return QUILLET_ASSERT(declaration.GetToken(), "pTotVarNameTok");
    return QUILLET_ASSERT(pLabel->GetNodeType() == SP_SLITERAL,
                          "pLabel->GetNodeType() == SP_SLITERAL") &&
           QUILLET_ASSERT(pLabel->GetToken(), "pLabelTok");
}

}  // namespace

std::optional<TotalView> TotalView::Of(const TbTrParseNode& declaration, NodeType subcommand) {
    if (!IsVariable(declaration) || !IsLabeled(declaration) || !IsDeclaredIn(subcommand)) {
        return std::nullopt;
    }
    return TotalView(declaration, subcommand);
}

const TAVQToken* TotalView::Label() const { return TokenOf(m_node.FirstChild()); }

NodeOwner ObservationView::Make(Arena& arena, NodeOwner variableList) {
    NodeOwner observation = MakeNode(arena, TB_OBSERVATION);
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

NodeChildren ObservationView::Variables() const { return NodeChildren(m_node.FirstChild()); }

NodeOwner SetView::Make(Arena& arena, NodeType type, NodeOwner name, NodeOwner members) {
    NodeOwner set = MakeNode(arena, type);
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
    const Node* pLabel = name.FirstChild();
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

const TAVQToken* SetView::Label() const { return TokenOf(Name().FirstChild()); }

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
    const Node* pExistingChild = SortView(sort).Direction();
    if (!QUILLET_ASSERT(pExistingChild == nullptr, "pExistingChild == 0")) {
        sort.RemoveChild(0);
    }
    sort.AddFirstChild(std::move(direction));
}

const TbTrParseNode* SortView::Direction() const {
    const Node* pFirst = m_node.FirstChild();
    const bool isDirection = IsOfType(pFirst, TB_ASCENDING) || IsOfType(pFirst, TB_DESCENDING);
    return isDirection ? pFirst : nullptr;
}

bool SortView::IsAscending() const { return TypeOf(Direction()) == TB_ASCENDING; }

NodeChildren SortView::Keys() const { return NodeChildren(&m_node, Direction() ? 1 : 0); }

NodeOwner SortKeyView::Make(Arena& arena, const TAVQToken& name) {
    return MakeNode(arena, TBI_SORTVAR, name);
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

const TbTrParseNode* SortKeyView::Function() const { return m_node.FirstChild(); }

void SortFunctionView::AddArgument(TbTrParseNode& function, NodeOwner variable) {
    function.AddChild(std::move(variable));
}

std::optional<SortFunctionView> SortFunctionView::Of(const TbTrParseNode& function) {
    if (!QUILLET_ASSERT(function.GetToken(), "pSortFuncTok")) return std::nullopt;
    return SortFunctionView(function);
}

const TbTrParseNode* SortFunctionView::Argument() const { return m_node.FirstChild(); }

// ---- STATISTICS

namespace {

// What of a statistic comes before its function; null when it is missing.
const Node* FindBeforeFunction(const Node& fullFunction, NodeType type) {
    for (const Node* pChild : ChildrenOf(fullFunction)) {
        if (pChild->GetNodeType() == type) return pChild;
        if (pChild->GetNodeType() == TBI_STATFUNCTION) break;
    }
    return nullptr;
}

}  // namespace

NodeOwner StatFunctionView::Make(Arena& arena, NodeOwner function, NodeOwner argumentList) {
    NodeOwner fullFunction =
        argumentList ? std::move(argumentList) : MakeNode(arena, TBI_FULLSTATFUNCTION);
    fullFunction->SetNodeType(TBI_FULLSTATFUNCTION);
    fullFunction->AddFirstChild(std::move(function));
    return fullFunction;
}

void StatFunctionView::AddBaseNames(TbTrParseNode& fullFunction, NodeOwner nameList) {
    fullFunction.AddFirstChild(std::move(nameList));
}

void StatFunctionView::SetUnweighted(TbTrParseNode& fullFunction, NodeOwner keyword) {
    const Node* pOldChild = FindBeforeFunction(fullFunction, TB_UNWEIGHTED);
    if (QUILLET_ASSERT(pOldChild == nullptr, "pOldChild == 0")) {
        fullFunction.AddFirstChild(std::move(keyword));
    }
}

void StatFunctionView::AddNumber(TbTrParseNode& function, NodeOwner number) {
    function.AddChild(std::move(number));
}

std::optional<StatFunctionView> StatFunctionView::Of(const TbTrParseNode* pNode) {
    if (!QUILLET_ASSERT(IsOfType(pNode, TBI_FULLSTATFUNCTION),
                        "pNode->GetNodeType() == TBI_FULLSTATFUNCTION")) {
        return std::nullopt;
    }
    const Node* pFunction = pNode->FindChild(TBI_STATFUNCTION);
    if (!QUILLET_ASSERT(pFunction && pFunction->GetToken(),
                        "pNode->GetNodeType() == TBI_STATFUNCTION")) {
        return std::nullopt;
    }
    for (const Node* pChild : ChildrenOf(*pNode)) {
        if (pChild == pFunction) break;
        if (!QUILLET_ASSERT(IsOfType(pChild, TB_UNWEIGHTED) || IsOfType(pChild, TBI_VARLIST),
                            "pBaseVarList->GetNodeType() == TBI_VARLIST")) {
            return std::nullopt;
        }
    }
    return StatFunctionView(*pNode, *pFunction);
}

const TAVQToken* StatFunctionView::Number() const { return TokenOf(m_function.FirstChild()); }

bool StatFunctionView::IsUnweighted() const {
    return FindBeforeFunction(m_node, TB_UNWEIGHTED) != nullptr;
}

NodeChildren StatFunctionView::Arguments() const { return NodeChildren::After(m_node, m_function); }

bool StatFunctionView::HasBaseNames() const {
    return FindBeforeFunction(m_node, TBI_VARLIST) != nullptr;
}

NodeChildren StatFunctionView::BaseNames() const {
    return NodeChildren(FindBeforeFunction(m_node, TBI_VARLIST));
}

NodeOwner StatArgumentView::Make(Arena& arena, NodeOwner format, NodeOwner label) {
    NodeOwner argument = MakeNode(arena, TBI_STATFUNCARG);
    argument->AddChild(std::move(format));
    argument->AddChild(std::move(label));
    return argument;
}

void StatArgumentView::SetVariable(TbTrParseNode& argument, NodeOwner variable) {
    const bool hasOldChild = IsOfType(argument.FirstChild(), SP_VARNAME);
    if (!QUILLET_ASSERT(!hasOldChild, "pOldChild == 0")) argument.RemoveChild(0);
    argument.AddFirstChild(std::move(variable));
}

std::optional<StatArgumentView> StatArgumentView::Of(const TbTrParseNode* pNode) {
    if (IsOfType(pNode, SP_VARNAME)) return StatArgumentView(pNode, nullptr, nullptr);
    if (!QUILLET_ASSERT(IsOfType(pNode, TBI_STATFUNCARG),
                        "pNode->GetNodeType() == TBI_STATFUNCARG")) {
        return std::nullopt;
    }
    StatArgumentView view(nullptr, nullptr, nullptr);
    for (const Node* pChild : ChildrenOf(*pNode)) {
        if (IsOfType(pChild, SP_VARNAME)) {
            view.m_pVariable = pChild;
        } else if (IsOfType(pChild, TBI_FMT)) {
            view.m_pFormat = pChild->GetToken();
        } else if (QUILLET_ASSERT(IsOfType(pChild, SP_SLITERAL),
                                  "pLabel->GetNodeType() == SP_SLITERAL")) {
            view.m_pLabel = pChild->GetToken();
        } else {
            return std::nullopt;
        }
    }
    return view;
}

// ---- TABLE and its dimensions

NodeOwner TableView::Make(Arena& arena) { return MakeNode(arena, TB_TABLE); }

void TableView::AddDimension(TbTrParseNode& table, NodeOwner dimension) {
    table.AddChild(std::move(dimension));
}

void TableView::EmptyDimension(TbTrParseNode& table, std::size_t index) {
    Node* pDimension = table.GetChild(index);
    while (pDimension->HasChildren()) pDimension->RemoveChild(0);
    pDimension->SetNodeType(kNoNodeType);
}

void TableView::ReplaceDimension(TbTrParseNode& table, std::size_t index, NodeOwner dimension) {
    table.ReplaceChild(index, std::move(dimension));
}

std::vector<TbTrParseNode*> TableView::Dimensions() const {
    std::vector<Node*> dimensions;
    for (Node* pDimension : ChildrenOf(m_node)) {
        if (pDimension->GetNodeType() != kNoNodeType) dimensions.push_back(pDimension);
    }
    return dimensions;
}

bool TableView::HasShape() const {
    if (!QUILLET_ASSERT(m_node.GetNodeType() == TB_TABLE,
                        "tableSubcommand.GetNodeType() == TB_TABLE")) {
        return false;
    }
    const std::size_t nDim = DimensionCount();
    if (!QUILLET_ASSERT(0 < nDim && nDim <= kMaxDimensions, "0 < nDim && nDim <= 3")) return false;
    const std::vector<Node*> dimensions = Dimensions();
    return std::all_of(dimensions.begin(), dimensions.end(),
                       [](const Node* pDimension) { return HasDimensionShape(*pDimension); });
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
    Node* pDimension = m_node.GetChild(number - 1);
    return IsOfType(pDimension, kNoNodeType) ? nullptr : pDimension;
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
        if (!QUILLET_ASSERT(pNode->HasChildren(), "pChild->GetChildCount() > 0")) return false;
        for (const Node* pChild : ChildrenOf(*pNode)) {
            if (IsOperator(pChild->GetNodeType())) {
                pending.push_back(pChild);
            } else if (!HasLeafShape(*pChild)) {
                return false;
            }
        }
    }
    return true;
}

// The chain of both operands, either of which may be missing.
NodeOwner OperatorView::Join(Arena& arena, NodeType type, NodeOwner left, NodeOwner right) {
    if (left && left->GetNodeType() == type) {
        if (right && right->GetNodeType() == type) {
            left->TakeChildren(*right);
        } else {
            left->AddChild(std::move(right));
        }
        return left;
    }
    NodeOwner chain;
    if (right && right->GetNodeType() == type) {
        chain.swap(right);
    } else {
        chain = MakeNode(arena, type);
    }
    chain->AddFirstChild(std::move(left));
    chain->AddChild(std::move(right));
    return chain;
}

TbTrParseNode* OperatorView::First() const { return m_node.FirstChild(); }

TbTrParseNode* OperatorView::Last() const { return m_node.LastChild(); }

TbTrParseNode* OperatorView::Second() const {
    Node* pRightOperand = m_node.GetChild(kSecondOperand);
    return QUILLET_ASSERT(pRightOperand, "pRightOp") ? pRightOperand : nullptr;
}

}  // namespace quillet
