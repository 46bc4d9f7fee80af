#include "translator/tableexpression.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"
#include "translator/percentagebases.h"
#include "translator/term.h"
#include "translator/termpieces.h"
#include "translator/treeediting.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tableexpression";

using Node = TbTrParseNode;

// Sets have no measurement mark: they know what they are.
std::string MarkedName(const Node& variable, const VariableTypes& types) {
    std::string name = types.OutputName(variable);
    const VariableType varType = types.TypeOf(variable);
    if (varType == kNoNodeType) {
        name += "[C]";
    } else if (varType == TB_OBSERVATION) {
        name += "[S]";
    } else {
        static_cast<void>(QUILLET_ASSERT(varType == TB_MDGROUP || varType == TB_MRGROUP,
                                         "varType == TB_MDGROUP || varType == TB_MRGROUP"));
    }
    return name;
}

// A stacking or nesting that is being written.
struct OpenTerm {
    const Node* pOperator;
    const Node* pNext;  // null at its end
    OutputSequence::Place begin;
};

// Writes a tree of terms. The outermost operator stands without parentheses.
class TermWriter {
public:
    TermWriter(const VariableTypes& types, OutputSequence& out) : m_types(types), m_out(out) {}

    void Write(const Node& root) {
        Begin(root);
        while (!m_open.empty()) {
            OpenTerm& term = m_open.back();
            const Node* pNext = term.pNext;
            if (!pNext) {
                End();
                continue;
            }
            if (pNext != term.pOperator->FirstChild()) {
                m_out.Add(term.pOperator->GetNodeType() == SP_PLUS ? "+" : ">", false);
            }
            term.pNext = term.pOperator->ChildAfter(*pNext);
            Begin(*pNext);
        }
    }

private:
    void Begin(const Node& node) {
        if (!IsOperator(node.GetNodeType())) {
            m_out.Add(MarkedName(node, m_types), false);
            return;
        }
        const OutputSequence::Place begin = m_out.Here();
        if (!m_open.empty()) m_out.Add("(", false);
        m_open.push_back({&node, node.FirstChild(), begin});
    }

    void End() {
        const OutputSequence::Place begin = m_open.back().begin;
        m_open.pop_back();
        if (!m_open.empty()) m_out.Add(")", false);
        KeepTogetherIfShort(m_out, begin);
    }

    const VariableTypes& m_types;
    OutputSequence& m_out;
    std::vector<OpenTerm> m_open;  // outermost first
};

// How often the variables of a dimension are written: once is what the command says, more comes
// of multiplying.
class MultipliedNames {
public:
    MultipliedNames(const Node& dimension, CommandBudget& budget) : m_budget(budget) {
        LeafWalk walk(dimension);
        while (const Node* pLeaf = walk.Next()) m_free += SpellingOf(*pLeaf).size();
    }

    void Charge(const Node& variable) {
        const std::size_t size = SpellingOf(variable).size();
        const std::size_t covered = std::min(size, m_free);
        m_free -= covered;
        m_budget.ChargeText(size - covered);
    }

private:
    CommandBudget& m_budget;
    std::size_t m_free = 0;  // bytes that the command itself holds and that are still unwritten
};

// Writes the terms of the dimension that carries the statistics.
class StatisticsTermWriter {
public:
    StatisticsTermWriter(const Node& table, std::size_t statsCompDim, TableStatistics& statistics,
                         const TranslationContext& context, OutputSequence& out)
        : m_statistics(statistics),
          m_types(context.Types()),
          m_bases(table, statsCompDim, context.Budget()),
          m_names(*TableView(table).Dimension(statsCompDim), context.Budget()),
          m_budget(context.Budget()),
          m_out(out) {}

    void Write(const Term& term) {
        const OutputSequence::Place begin = m_out.Here();
        for (std::size_t i = 0; i < term.Variables().size(); ++i) {
            if (i > 0) m_out.Add(">", false);
            WriteVariable(term, i);
        }
        KeepTogetherIfShort(m_out, begin);
    }

private:
    // A variable, and after the magnet of a term the term's statistics in brackets.
    void WriteVariable(const Term& term, std::size_t index) {
        const OutputSequence::Place begin = m_out.Here();
        const Node& variable = *term.Variables()[index].pNode;
        m_names.Charge(variable);
        m_out.Add(MarkedName(variable, m_types), false);
        if (index == term.MagnetIndex()) m_statistics.WriteList(term, m_bases, m_budget, m_out);
        KeepTogetherIfShort(m_out, begin);
    }

    TableStatistics& m_statistics;
    const VariableTypes& m_types;
    PercentageBases m_bases;
    MultipliedNames m_names;
    CommandBudget& m_budget;
    OutputSequence& m_out;
};

// A variable decides for its dimension when there is something to compute from it.
bool DecidesForItsDimension(const Node& variable, const TotalRecords& records,
                            const TableStatistics& statistics, const VariableTypes& types) {
    if (types.TypeOf(variable) == TB_OBSERVATION) return true;
    if (statistics.IsArgument(UpperCaseName(variable))) return true;
    const auto found = records.find(types.OutputKey(variable));
    return found != records.end() && statistics.IsArgument(UpperCaseName(*found->second));
}

}  // namespace

std::size_t RemoveMarkers(TbTrParseNode& table, NodeType marker) {
    std::size_t markerDim = 0;
    for (std::size_t i = 0; i < TableView(table).DimensionCount(); ++i) {
        if (!TableView(table).Dimension(i + 1)) continue;
        bool found = false;
        const auto decide = [&](const Node& leaf, const LeafPlace&) {
            if (leaf.GetNodeType() != marker) return LeafDecision::kKeep;
            found = true;
            return LeafDecision::kRemove;
        };
        if (!QUILLET_ASSERT(RemoveLeaves(table, i, decide), "removed")) return kTwoDimensions;
        if (!found) continue;
        markerDim = markerDim == 0 ? i + 1 : kTwoDimensions;
        if (Node* pDimension = TableView(table).Dimension(i + 1)) Flatten(*pDimension);
    }
    return markerDim;
}

std::size_t FindStatsCompDim(const TbTrParseNode& table, const TotalRecords& records,
                             const TableStatistics& statistics, const VariableTypes& types) {
    const TableView view(table);
    if (!view.HasDimensions()) return 0;
    for (std::size_t number = 1; number <= view.DimensionCount(); ++number) {
        const Node* pDimension = view.Dimension(number);
        if (!pDimension) continue;
        LeafWalk walk(*pDimension);
        while (const Node* pLeaf = walk.Next()) {
            if (DecidesForItsDimension(*pLeaf, records, statistics, types)) return number;
        }
    }
    for (const std::size_t number : {2UL, 1UL, 3UL}) {
        if (view.Dimension(number)) return number;
    }
    return 0;
}

bool IsTooLarge(const TbTrParseNode& table) {
    const auto dimensions = TableView(table).Dimensions();
    return std::any_of(dimensions.begin(), dimensions.end(), [](const Node* pDimension) {
        return MultipliedLeafCount(*pDimension, kMaxMultipliedLeaves) > kMaxMultipliedLeaves;
    });
}

void WriteDimension(const TbTrParseNode& dimension, const VariableTypes& types,
                    OutputSequence& out) {
    const OutputSequence::Place begin = out.Here();
    TermWriter(types, out).Write(dimension);
    KeepTogetherIfShort(out, begin);
}

const TbTrParseNode* WriteStatisticsDimension(const TbTrParseNode& table, std::size_t statsCompDim,
                                              TableStatistics& statistics,
                                              const TranslationContext& context,
                                              OutputSequence& out) {
    const OutputSequence::Place begin = out.Here();
    const Node* pFirstMagnet = nullptr;
    StatisticsTermWriter writer(table, statsCompDim, statistics, context, out);
    MultipliedTerms terms(*TableView(table).Dimension(statsCompDim));
    while (terms.Next()) {
        const Term term(terms.Leaves(), context.Types());
        if (!pFirstMagnet) pFirstMagnet = term.Magnet().pNode;
        if (out.Here().piece > begin.piece) out.Add("+", false);
        writer.Write(term);
    }
    KeepTogetherIfShort(out, begin);
    return pFirstMagnet;
}

}  // namespace quillet
