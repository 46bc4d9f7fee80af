#include "translator/percentagebases.h"

#include <string>

#include "translator/treeediting.h"
#include "translator/variabletypes.h"

namespace quillet {

DimensionBaseTest::DimensionBaseTest(const TbTrParseNode& dimension) {
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
            m_parentsOfName[NameOf(*current.pNode)].push_back(current.parent);
            continue;
        }
        const std::size_t childCount = current.pNode->GetChildCount();
        for (std::size_t i = 0; i < childCount; ++i) {
            pending.push_back({current.pNode->GetChild(i), m_nodes.size()});
        }
        m_nodes.push_back({current.parent, type == SP_PLUS, childCount});
    }
}

HoldsBase DimensionBaseTest::Test(const VariableNames& names) {
    bool holds = false;
    bool avoids = true;
    for (const std::string_view name : names) {
        const auto found = m_parentsOfName.find(name);
        if (found == m_parentsOfName.end()) continue;
        holds = true;
        for (const std::size_t parent : found->second) {
            if (!CountChildInTheWay(parent)) avoids = false;
        }
    }
    for (const std::size_t node : m_touched) m_nodes[node].childrenInTheWay = 0;
    m_touched.clear();
    if (!holds) return HoldsBase::kNo;
    return avoids ? HoldsBase::kDisagree : HoldsBase::kYes;
}

// Notes that a child of `node` cannot avoid the names, and what follows from it further up.
// False when it follows that no term can.
bool DimensionBaseTest::CountChildInTheWay(std::size_t node) {
    while (node != kNoParent) {
        Node& current = m_nodes[node];
        if (current.childrenInTheWay == 0) m_touched.push_back(node);
        ++current.childrenInTheWay;
        const std::size_t decisive = current.isStacking ? current.childCount : 1;
        if (current.childrenInTheWay != decisive) return true;
        node = current.parent;
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
    return "TABLEPCT.";
}

PercentageBases::PercentageBases(const TbTrParseNode& table, std::size_t statsCompDim)
    : m_statsCompIndex(statsCompDim - 1) {
    for (std::size_t i = 0; i < m_otherDimensions.size(); ++i) {
        const TbTrParseNode* pDimension = table.GetChild(i);
        if (pDimension && i != m_statsCompIndex) m_otherDimensions[i].emplace(*pDimension);
    }
}

unsigned PercentageBases::BasesOf(const VariableNames* pNames, const Term& term) {
    if (!pNames) return TBTR_TABPCT;
    Answers holds = OtherDimensions(*pNames);
    holds[m_statsCompIndex] = term.HasAnyOf(*pNames) ? HoldsBase::kYes : HoldsBase::kNo;
    return BasesFor(holds[0], holds[1], holds[2]);
}

// A dimension that is not there counts as one that holds the base variables.
const PercentageBases::Answers& PercentageBases::OtherDimensions(const VariableNames& names) {
    const auto found = m_answers.find(&names);
    if (found != m_answers.end()) return found->second;
    Answers answers = {HoldsBase::kYes, HoldsBase::kYes, HoldsBase::kYes};
    for (std::size_t i = 0; i < answers.size(); ++i) {
        if (m_otherDimensions[i]) answers[i] = m_otherDimensions[i]->Test(names);
    }
    return m_answers.emplace(&names, answers).first->second;
}

}  // namespace quillet
