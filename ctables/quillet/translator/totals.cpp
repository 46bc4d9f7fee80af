#include "translator/totals.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"
#include "translator/treeediting.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "totals";

using Node = TbTrParseNode;
using Declaration = VariableTypes::Declaration;

NodeType TotalTypeOf(const Declaration& declaration) {
    return declaration.type == TB_FTOTAL ? TBI_FTOTALVAR : TBI_PTOTALVAR;
}

// The variables that a total of `term` stands for: in a nesting the outermost, in a stacking
// all.
std::vector<Node*> TotaledVariables(Node& term) {
    std::vector<Node*> variables;
    std::vector<Node*> pending = {&term};
    while (!pending.empty()) {
        Node* pNode = pending.back();
        pending.pop_back();
        if (pNode->GetNodeType() == SP_GREATERTHAN) {
            pending.push_back(OperatorView(*pNode).First());
        } else if (pNode->GetNodeType() == SP_PLUS) {
            const auto before = static_cast<std::ptrdiff_t>(pending.size());
            const NodeChildren operands = OperatorView(*pNode).Operands();
            pending.insert(pending.end(), operands.begin(), operands.end());
            std::reverse(pending.begin() + before, pending.end());
        } else {
            variables.push_back(pNode);
        }
    }
    return variables;
}

// Which total goes to which term, in the order of the command. Of all following totals of a term
// the last one replaces the others, so those are passed over: thousands of them may follow a
// nesting over thousands of variables. There is no second preceding total of a term, since that
// would have to stand in front of the first.
class Associations {
public:
    // True when `term` has had a total before, so that its variables need no second check.
    [[nodiscard]] bool Knows(const Node& term) const { return m_lastFollowing.contains(&term); }

    void Add(Node& term, const Declaration& total) {
        if (total.type == TB_FTOTAL) {
            const auto [found, isNew] = m_lastFollowing.try_emplace(&term, m_inOrder.size());
            if (!isNew) {
                m_inOrder[found->second].pTerm = nullptr;
                found->second = m_inOrder.size();
            }
        }
        m_inOrder.push_back({&term, &total});
    }

    void Apply(const TranslationContext& context, TotalRecords& records) const {
        for (const Association& association : m_inOrder) {
            if (!association.pTerm) continue;
            for (Node* pVariable : TotaledVariables(*association.pTerm)) {
                Attach(*pVariable, *association.pTotal, context.Budget(), context.Memory());
                Record(*pVariable, *association.pTotal, context.Types(), records);
            }
        }
    }

private:
    struct Association {
        Node* pTerm;  // null when a later association replaces this one
        const Declaration* pTotal;
    };

    static void Attach(Node& variable, const Declaration& total, CommandBudget& budget,
                       Arena& memory) {
        const NodeType totalType = TotalTypeOf(total);
        if (totalType == TBI_PTOTALVAR && VariableView(variable).TotalType() == TBI_FTOTALVAR) {
            return;
        }
        // The node itself is paid for by the variable that it hangs on.
        const TAVQToken& name = *total.pVariable->GetToken();
        budget.ChargeCopies(name.Text(/*raw=*/true).size() + name.Text(/*raw=*/false).size());
        VariableView::SetTotal(variable, MakeNode(memory, totalType, name));
    }

    static void Record(const Node& variable, const Declaration& total, const VariableTypes& types,
                       TotalRecords& records) {
        const std::string name = types.OutputKey(variable);
        if (total.type == TB_FTOTAL) {
            records[name] = total.pVariable;
        } else {
            records.try_emplace(name, total.pVariable);
        }
    }

    std::vector<Association> m_inOrder;
    std::unordered_map<const Node*, std::size_t> m_lastFollowing;  // index in m_inOrder
};

class TotalCollector {
public:
    explicit TotalCollector(const TranslationContext& context) : m_context(context) {}

    [[nodiscard]] LeafDecision Decide(Node& leaf, const LeafPlace& place) {
        if (leaf.GetNodeType() != SP_VARNAME) return LeafDecision::kKeep;
        const Declaration* pTotal = m_context.Types().Find(leaf);
        if (!pTotal || !IsTotal(pTotal->type)) return LeafDecision::kKeep;
        if (place.parentType == TB_TABLE) return LeafDecision::kRemove;
        if (place.parentType != SP_PLUS) {
            return Fail(TablesErrorKind::kTotalWithoutStacking, leaf);
        }
        Node* pNeighbor = NeighborOf(*pTotal, place);
        if (!pNeighbor) {
            return Fail(pTotal->type == TB_FTOTAL ? TablesErrorKind::kNothingToFollow
                                                  : TablesErrorKind::kNothingToPrecede,
                        leaf);
        }
        return GiveToNeighbor(leaf, *pTotal, *pNeighbor);
    }

    void Apply(TotalRecords& records) const { m_associations.Apply(m_context, records); }

private:
    // The variable that is nearest to a total.
    struct Nearest {
        Node* pVariable = nullptr;
        Node* pLastNesting = nullptr;  // the last nesting on the way to it; null for none
    };

    static Node* NeighborOf(const Declaration& total, const LeafPlace& place) {
        return total.type == TB_FTOTAL ? place.pPrevious : place.pNext;
    }

    LeafDecision Fail(TablesErrorKind kind, const Node& variable) const {
        m_context.Report(kind, *variable.GetToken());
        return LeafDecision::kFail;
    }

    // The variable at the near end of a stacking, the outermost one of a nesting.
    static Nearest FindNearest(const Declaration& total, Node& neighbor) {
        Nearest nearest{&neighbor, nullptr};
        while (IsOperator(nearest.pVariable->GetNodeType())) {
            const OperatorView operation(*nearest.pVariable);
            if (!operation.IsStacking()) nearest.pLastNesting = nearest.pVariable;
            const bool atEnd = operation.IsStacking() && total.type == TB_FTOTAL;
            nearest.pVariable = atEnd ? operation.Last() : operation.First();
        }
        return nearest;
    }

    // A neighbor may be a deep tree that a thousand totals follow: look into it once.
    Nearest NearestTo(const Declaration& total, Node& neighbor) {
        if (total.type != TB_FTOTAL) return FindNearest(total, neighbor);
        if (m_pLastFollowed != &neighbor) {
            m_lastFollowedNearest = FindNearest(total, neighbor);
            m_pLastFollowed = &neighbor;
        }
        return m_lastFollowedNearest;
    }

    [[nodiscard]] LeafDecision GiveToNeighbor(const Node& leaf, const Declaration& total,
                                              Node& neighbor) {
        const Nearest nearest = NearestTo(total, neighbor);
        if (nearest.pVariable->GetNodeType() != SP_VARNAME) return LeafDecision::kRemove;
        const VariableType type = m_context.Types().TypeOf(*nearest.pVariable);
        if (IsTotal(type)) return LeafDecision::kRemove;
        if (type != TB_OBSERVATION) return AssociateWithTerm(*nearest.pVariable, total);
        if (!nearest.pLastNesting) return Fail(TablesErrorKind::kTotalBesideScale, leaf);
        Node* pRightOperand = OperatorView(*nearest.pLastNesting).Second();
        if (!pRightOperand) return LeafDecision::kFail;
        return AssociateWithTerm(*pRightOperand, total);
    }

    [[nodiscard]] LeafDecision AssociateWithTerm(Node& term, const Declaration& total) {
        if (!m_associations.Knows(term)) {
            for (const Node* pVariable : TotaledVariables(term)) {
                if (!QUILLET_ASSERT(pVariable->GetNodeType() == SP_VARNAME,
                                    "assocVar.GetNodeType() == SP_VARNAME") ||
                    !QUILLET_ASSERT(pVariable->GetToken(), "assocVar.GetToken()")) {
                    return LeafDecision::kFail;
                }
                if (!CanHaveTotal(*pVariable)) {
                    return Fail(TablesErrorKind::kMisplacedTotal, *pVariable);
                }
            }
        }
        m_associations.Add(term, total);
        return LeafDecision::kRemove;
    }

    [[nodiscard]] bool CanHaveTotal(const Node& variable) const {
        const VariableType type = m_context.Types().TypeOf(variable);
        return type == kNoNodeType || IsSet(type);
    }

    const TranslationContext& m_context;
    Associations m_associations;
    const Node* m_pLastFollowed = nullptr;
    Nearest m_lastFollowedNearest;
};

// The variables of one total, in the order of their names.
struct TotalLine {
    const Node* pTotal;
    std::vector<std::string_view> names;
};

std::vector<TotalLine> GroupByTotal(const TotalRecords& records) {
    std::vector<TotalLine> lines;
    std::unordered_map<const Node*, std::size_t> lineOfTotal;
    for (const auto& [name, pTotal] : records) {
        const auto [found, isNew] = lineOfTotal.try_emplace(pTotal, lines.size());
        if (isNew) lines.push_back({pTotal, {}});
        lines[found->second].names.push_back(name);
    }
    return lines;
}

std::string LabelOf(const TotalView& total) {
    if (total.Label()) return std::string(total.Label()->Text(/*raw=*/true));
    return "\"" + std::string(total.Name()->Text(/*raw=*/false)) + "\"";
}

void WriteTotalLine(const std::vector<std::string_view>& names, const TotalView& total,
                    OutputSequence& out) {
    out.Add("/CATEGORIES VAR=", false);
    for (const std::string_view name : names) out.Add(name, name != names.front());
    out.Add("TOTAL=YES", true);
    out.Add("POSITION=", true);
    out.Add(total.Type() == TB_FTOTAL ? "AFTER" : "BEFORE", false);
    out.Add("LABEL=", true);
    out.Add(LabelOf(total), false);
}

}  // namespace

bool CollectTotals(TbTrParseNode& table, std::size_t dimension, const TranslationContext& context,
                   TotalRecords& records) {
    if (!TableView(table).IsTable()) return false;
    if (!TableView(table).Dimension(dimension + 1)) return true;
    TotalCollector collector(context);
    const auto decide = [&collector](Node& leaf, const LeafPlace& place) {
        return collector.Decide(leaf, place);
    };
    if (!RemoveLeaves(table, dimension, decide)) return false;
    collector.Apply(records);
    if (Node* pDimension = TableView(table).Dimension(dimension + 1)) Flatten(*pDimension);
    return true;
}

bool WriteTotalCategories(const TotalRecords& records, const TranslationContext& context,
                          OutputSequence& out) {
    for (const TotalLine& line : GroupByTotal(records)) {
        const std::optional<TotalView> total =
            TotalView::Of(*line.pTotal, context.Types().TypeOf(*line.pTotal));
        if (!total) return false;
        context.ChargeRepeated(*line.pTotal, LabelOf(*total).size());
        out.NewLine();
        WriteTotalLine(line.names, *total, out);
    }
    return true;
}

}  // namespace quillet
