#include "translator/percentagebases.h"

#include <algorithm>
#include <utility>

#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"
#include "translator/variabletypes.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "percentagebases";

}  // namespace

DimensionBaseTest::DimensionBaseTest(const TbTrParseNode& dimension, CommandBudget& budget)
    : m_budget(budget) {
    struct Pending {
        const TbTrParseNode* pNode;
        std::size_t parent;
    };
    // A lone variable gets a nesting around it, which changes nothing.
    m_nodes.push_back({kNoParent, false, 1});
    std::vector<Pending> pending = {{&dimension, 0}};
    while (!pending.empty()) {
        const Pending current = pending.back();
        pending.pop_back();
        const NodeType type = current.pNode->GetNodeType();
        if (!IsOperator(type)) {
            std::vector<Parent>& parents = m_placesOfName[UpperCaseName(*current.pNode)].parents;
            if (!parents.empty() && parents.back().node == current.parent) {
                ++parents.back().childCount;
            } else {
                parents.push_back({current.parent, 1});
            }
            continue;
        }
        const OperatorView operation(*current.pNode);
        for (const TbTrParseNode* pOperand : operation.Operands()) {
            pending.push_back({pOperand, m_nodes.size()});
        }
        m_nodes.push_back({current.parent, operation.IsStacking(), operation.Operands().Count()});
    }
}

HoldsBase DimensionBaseTest::Test(const VariableNames& names) {
    bool holds = false;
    bool avoids = true;
    for (const std::string_view name : names) {
        const auto found = m_placesOfName.find(name);
        if (found == m_placesOfName.end()) continue;
        holds = true;
        Places& places = found->second;
        if (std::exchange(places.wereVisited, true)) {
            m_budget.ChargeCopies(places.parents.size() - 1);
        }
        for (const Parent& parent : places.parents) {
            if (!CountChildrenInTheWay(parent.node, parent.childCount)) avoids = false;
        }
    }
    for (const std::size_t node : m_touched) m_nodes[node].childrenInTheWay = 0;
    m_touched.clear();
    if (!holds) return HoldsBase::kNo;
    return avoids ? HoldsBase::kDisagree : HoldsBase::kYes;
}

// Notes that `count` further children of `node` cannot avoid the names, and what follows from it
// further up. False when it follows that no term can.
bool DimensionBaseTest::CountChildrenInTheWay(std::size_t node, std::size_t count) {
    while (node != kNoParent) {
        Node& current = m_nodes[node];
        const std::size_t decisive = current.isStacking ? current.childCount : 1;
        const bool wasDecided = current.childrenInTheWay >= decisive;
        if (current.childrenInTheWay == 0) m_touched.push_back(node);
        current.childrenInTheWay += count;
        if (wasDecided || current.childrenInTheWay < decisive) return true;
        node = current.parent;
        count = 1;
    }
    return false;
}

unsigned BasesFor(HoldsBase rows, HoldsBase columns, HoldsBase layers) {
    const auto can = [](HoldsBase holds, bool answer) {
        return holds == HoldsBase::kDisagree || (holds == HoldsBase::kYes) == answer;
    };
    unsigned bases = 0;
    for (const bool r : {true, false}) {
        for (const bool c : {true, false}) {
            for (const bool l : {true, false}) {
                if (!can(rows, r) || !can(columns, c) || !can(layers, l)) continue;
                if (r && !c && l) {
                    bases |= TBTR_ROWPCT;
                } else if (!r && c && l) {
                    bases |= TBTR_COLPCT;
                } else if (!r && !c && l) {
                    bases |= TBTR_LAYERPCT;
                } else {
                    bases |= TBTR_TABPCT;
                }
            }
        }
    }
    return bases;
}

std::string_view BaseWord(PercentageBase base) {
    switch (base) {
        case TBTR_ROWPCT:
            return "ROWPCT.";
        case TBTR_COLPCT:
            return "COLPCT.";
        case TBTR_LAYERPCT:
            return "LAYERPCT.";
        case TBTR_TABPCT:
            break;
    }
    static_cast<void>(QUILLET_ASSERT((base & TBTR_TABPCT) != 0, "pctBases & TBTR_TABPCT"));
    return "TABLEPCT.";
}

PercentageBases::PercentageBases(const TbTrParseNode& table, std::size_t statsCompDim,
                                 CommandBudget& budget)
    : m_budget(budget), m_statsCompIndex(statsCompDim - 1) {
    for (std::size_t i = 0; i < m_dimensions.size(); ++i) {
        if (i != m_statsCompIndex) m_dimensions[i] = TableView(table).Dimension(i + 1);
    }
}

unsigned PercentageBases::BasesOf(const VariableNames* pNames, const Term& term) {
    if (!pNames) return TBTR_TABPCT;
    if (!QUILLET_ASSERT(m_statsCompIndex < m_dimensions.size(),
                        "0 < statsCompDim && statsCompDim <= 3")) {
        return TBTR_TABPCT;
    }
    Answers holds = OtherDimensions(*pNames);
    // Every term may ask for every set of names. What one look-up costs, writing costs anyway.
    const std::size_t lookUps = std::min(pNames->size(), term.Names().size());
    if (lookUps > 1) m_budget.ChargeCopies(lookUps - 1);
    holds[m_statsCompIndex] = term.HasAnyOf(*pNames) ? HoldsBase::kYes : HoldsBase::kNo;
    return BasesFor(holds[0], holds[1], holds[2]);
}

// A dimension that is not there counts as one that holds the base variables.
const PercentageBases::Answers& PercentageBases::OtherDimensions(const VariableNames& names) {
    const auto found = m_answers.find(&names);
    if (found != m_answers.end()) return found->second;
    Answers answers = {HoldsBase::kYes, HoldsBase::kYes, HoldsBase::kYes};
    for (std::size_t i = 0; i < answers.size(); ++i) {
        if (!m_dimensions[i]) continue;
        if (!m_tests[i]) m_tests[i].emplace(*m_dimensions[i], m_budget);
        answers[i] = m_tests[i]->Test(names);
    }
    return m_answers.emplace(&names, answers).first->second;
}

}  // namespace quillet
