#include "translator/tableexpression.h"

#include <string>
#include <string_view>
#include <vector>

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
    std::size_t next;
    TermPieces::Place begin;
};

// Writes a tree of terms. The outermost operator stands without parentheses.
class TermWriter {
public:
    explicit TermWriter(const VariableTypes& types) : m_types(types) {}

    void Write(const Node& root, OutputSequence& out) {
        Begin(root);
        while (!m_open.empty()) {
            OpenTerm& term = m_open.back();
            if (term.next == term.pOperator->GetChildCount()) {
                End();
                continue;
            }
            if (term.next > 0) {
                m_pieces.Add(term.pOperator->GetNodeType() == SP_PLUS ? "+" : ">");
            }
            Begin(*term.pOperator->GetChild(term.next++));
        }
        m_pieces.AppendTo(out);
    }

private:
    void Begin(const Node& node) {
        if (!IsOperator(node.GetNodeType())) {
            m_pieces.Add(MarkedName(node, m_types));
            return;
        }
        const TermPieces::Place begin = m_pieces.Here();
        if (!m_open.empty()) m_pieces.Add("(");
        m_open.push_back({&node, 0, begin});
    }

    void End() {
        const TermPieces::Place begin = m_open.back().begin;
        m_open.pop_back();
        if (!m_open.empty()) m_pieces.Add(")");
        m_pieces.EndTerm(begin);
    }

    const VariableTypes& m_types;
    TermPieces m_pieces;
    std::vector<OpenTerm> m_open;  // outermost first
};

// A variable, and behind the magnet of a term the term's statistics in brackets.
OutputSequence MakeVariable(const Term& term, std::size_t index, const TableStatistics& statistics,
                            PercentageBases& bases, const VariableTypes& types) {
    OutputSequence variable;
    variable.Add(MarkedName(*term.Variables()[index].pNode, types), false);
    if (index == term.MagnetIndex()) {
        OutputSequence list;
        statistics.WriteList(term, bases, list);
        if (!list.IsEmpty()) {
            OutputSequence bracketed;
            bracketed.Add("[", false);
            bracketed.Append(list);
            bracketed.Add("]", false);
            KeepTogetherIfShort(bracketed);
            variable.Append(bracketed);
        }
    }
    KeepTogetherIfShort(variable);
    return variable;
}

OutputSequence MakeTerm(const Term& term, const TableStatistics& statistics, PercentageBases& bases,
                        const VariableTypes& types) {
    OutputSequence sequence;
    for (std::size_t i = 0; i < term.Variables().size(); ++i) {
        if (i > 0) sequence.Add(">", false);
        sequence.Append(MakeVariable(term, i, statistics, bases, types));
    }
    KeepTogetherIfShort(sequence);
    return sequence;
}

// A variable decides for its dimension when there is something to compute from it.
bool DecidesForItsDimension(const Node& variable, const TotalRecords& records,
                            const TableStatistics& statistics, const VariableTypes& types) {
    if (types.TypeOf(variable) == TB_OBSERVATION) return true;
    if (statistics.IsArgument(NameOf(variable))) return true;
    const auto found = records.find(types.OutputKey(variable));
    return found != records.end() && statistics.IsArgument(NameOf(*found->second));
}

}  // namespace

bool HasTableShape(const TbTrParseNode& table) {
    if (!QUILLET_ASSERT(table.GetNodeType() == TB_TABLE,
                        "tableSubcommand.GetNodeType() == TB_TABLE")) {
        return false;
    }
    const std::size_t dimCount = table.GetChildCount();
    if (!QUILLET_ASSERT(0 < dimCount && dimCount <= kMaxDimensions,
                        "0 < dimCount && dimCount <= 3")) {
        return false;
    }
    for (std::size_t i = 0; i < dimCount; ++i) {
        const Node* pDimension = table.GetChild(i);
        if (pDimension && !HasDimensionShape(*pDimension)) return false;
    }
    return true;
}

std::size_t RemoveMarkers(TbTrParseNode& table, NodeType marker) {
    std::size_t markerDim = 0;
    for (std::size_t i = 0; i < table.GetChildCount(); ++i) {
        if (!table.GetChild(i)) continue;
        bool found = false;
        const auto decide = [&](const Node& leaf, const LeafPlace&) {
            if (leaf.GetNodeType() != marker) return LeafDecision::kKeep;
            found = true;
            return LeafDecision::kRemove;
        };
        if (!RemoveLeaves(table, i, decide)) return kTwoDimensions;
        if (!found) continue;
        markerDim = markerDim == 0 ? i + 1 : kTwoDimensions;
        if (Node* pDimension = table.GetChild(i)) Flatten(*pDimension);
    }
    return markerDim;
}

std::size_t FindStatsCompDim(const TbTrParseNode& table, const TotalRecords& records,
                             const TableStatistics& statistics, const VariableTypes& types) {
    for (std::size_t i = 0; i < table.GetChildCount(); ++i) {
        const Node* pDimension = table.GetChild(i);
        if (!pDimension) continue;
        for (const Node* pLeaf : LeavesOf(*pDimension)) {
            if (DecidesForItsDimension(*pLeaf, records, statistics, types)) return i + 1;
        }
    }
    for (const std::size_t dimension : {2UL, 1UL, 3UL}) {
        if (table.GetChild(dimension - 1)) return dimension;
    }
    return 0;
}

bool IsTooLarge(const TbTrParseNode& table) {
    for (std::size_t i = 0; i < table.GetChildCount(); ++i) {
        const Node* pDimension = table.GetChild(i);
        if (pDimension &&
            MultipliedLeafCount(*pDimension, kMaxMultipliedLeaves) > kMaxMultipliedLeaves) {
            return true;
        }
    }
    return false;
}

void WriteDimension(const TbTrParseNode& dimension, const VariableTypes& types,
                    OutputSequence& out) {
    out.Clear();
    TermWriter(types).Write(dimension, out);
    KeepTogetherIfShort(out);
}

const TbTrParseNode* WriteStatisticsDimension(const TbTrParseNode& table, std::size_t statsCompDim,
                                              const TableStatistics& statistics,
                                              const VariableTypes& types, OutputSequence& out) {
    out.Clear();
    const Node* pFirstMagnet = nullptr;
    PercentageBases bases(table, statsCompDim);
    MultipliedTerms terms(*table.GetChild(statsCompDim - 1));
    while (terms.Next()) {
        const Term term(terms.Leaves(), types);
        if (!pFirstMagnet) pFirstMagnet = term.Magnet().pNode;
        if (!out.IsEmpty()) out.Add("+", false);
        out.Append(MakeTerm(term, statistics, bases, types));
    }
    KeepTogetherIfShort(out);
    return pFirstMagnet;
}

}  // namespace quillet
