#include "translator/parsetree.h"

#include <cstddef>
#include <optional>
#include <string_view>

#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"
#include "translator/multipleresponse.h"
#include "translator/outputsequence.h"
#include "translator/statistics.h"
#include "translator/subcommands.h"
#include "translator/tableexpression.h"
#include "translator/totals.h"
#include "translator/translationcontext.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "parsetree";

using Node = TbTrParseNode;

constexpr std::size_t kLineWidth = 80;
constexpr std::size_t kIndentation = 2;

std::string_view DimensionWord(std::size_t dimension) {
    if (dimension == 1) return "ROW";
    return dimension == 2 ? "COLUMN" : "LAYER";
}

// One table group of the command.
class TableTranslation {
public:
    TableTranslation(Node& group, Node& table, std::size_t tableIndex,
                     const TranslationContext& context, OutputSequence& out)
        : m_group(group),
          m_table(table),
          m_tableIndex(tableIndex),
          m_context(context),
          m_out(out) {}

    [[nodiscard]] bool Run() {
        m_out.Add("/TABLE ", false);
        if (!TableView(m_table).HasShape() || !RemoveAllMarkers() || !CollectAllTotals() ||
            !PrepareStatistics()) {
            return false;
        }
        WriteDimensions();
        WriteCategories();
        if (!WriteTotalCategories(m_totals, m_context, m_out)) return false;
        WriteCategoryLabelPosition();
        WriteStatisticsLabelPosition();
        if (!WriteSortOrder()) return false;
        WriteTitles(m_group, m_context.Settings(), m_out);
        return true;
    }

private:
    [[nodiscard]] bool RemoveAllMarkers() {
        m_statsDisplayDim = RemoveMarkers(m_table, TB_STATISTICS);
        m_labelsDim = RemoveMarkers(m_table, TB_LABELS);
        return QUILLET_ASSERT(m_statsDisplayDim <= TableView::kMaxDimensions &&
                                  m_labelsDim <= TableView::kMaxDimensions,
                              "statsDisplayDim <= 3 && labelsDim <= 3");
    }

    [[nodiscard]] bool CollectAllTotals() {
        for (std::size_t i = 0; i < TableView(m_table).DimensionCount(); ++i) {
            if (!CollectTotals(m_table, i, m_context, m_totals)) return false;
        }
        return true;
    }

    // Decides where the statistics go, and what they are.
    [[nodiscard]] bool PrepareStatistics() {
        if (!m_statistics.Read(m_group)) return false;
        m_statsCompDim = FindStatsCompDim(m_table, m_totals, m_statistics, m_context.Types());
        if (m_statsCompDim == 0) return false;
        if (IsTooLarge(m_table)) {
            m_context.ReportTooLarge(m_tableIndex);
            return false;
        }
        return m_statistics.LookUpFunctions(m_context);
    }

    void WriteDimensions() {
        const TableView table(m_table);
        std::size_t count = table.DimensionCount();
        while (!table.Dimension(count)) --count;
        for (std::size_t number = 1; number <= count; ++number) {
            if (number > 1) m_out.Add(" BY ", false);
            const Node* pDimension = table.Dimension(number);
            if (!pDimension) continue;
            if (number == m_statsCompDim) {
                m_pFirstMagnet = WriteStatisticsDimension(m_table, m_statsCompDim, m_statistics,
                                                          m_context, m_out);
            } else {
                WriteDimension(*pDimension, m_context.Types(), m_out);
            }
        }
    }

    void WriteCategories() {
        m_out.NewLine();
        m_out.Add("/CATEGORIES VAR=ALL EMPTY=EXCLUDE", false);
        m_out.Add("MISSING=", true);
        m_out.Add(m_context.Settings().missing == TB_INCLUDE ? "INCLUDE" : "EXCLUDE", false);
    }

    // The marker was in the dimension that shows the labels. They belong to the variables of the
    // opposite one, which is what the new command names.
    void WriteCategoryLabelPosition() {
        if (m_labelsDim != 1 && m_labelsDim != 2) return;
        m_out.NewLine();
        m_out.Add("/CLABELS ", false);
        m_out.Add(m_labelsDim == 1 ? "COL" : "ROW", false);
        m_out.Add("=OPPOSITE", false);
    }

    // Statistics are shown where the command says, else where they are computed. Without a
    // STATISTICS subcommand there is nothing to say about them, so their labels are hidden.
    void WriteStatisticsLabelPosition() {
        const bool hasStatistics = TableGroupView(m_group).First(TB_STATISTICS) != nullptr;
        m_out.NewLine();
        m_out.Add("/SLABELS", false);
        if (m_statsDisplayDim != 0 || hasStatistics) {
            m_out.Add("POSITION=", true);
            m_out.Add(DimensionWord(m_statsDisplayDim != 0 ? m_statsDisplayDim : m_statsCompDim),
                      false);
        }
        if (!hasStatistics) m_out.Add("VISIBLE=NO", true);
    }

    [[nodiscard]] bool WriteSortOrder() {
        return WriteSort(m_group, *TableView(m_table).Dimension(m_statsCompDim), m_pFirstMagnet,
                         m_context, m_out);
    }

    const Node& m_group;
    Node& m_table;
    std::size_t m_tableIndex;
    const TranslationContext& m_context;
    OutputSequence& m_out;

    std::size_t m_statsDisplayDim = 0;
    std::size_t m_labelsDim = 0;
    std::size_t m_statsCompDim = 0;
    TotalRecords m_totals;
    TableStatistics m_statistics;
    const Node* m_pFirstMagnet = nullptr;
};

[[nodiscard]] bool WriteGlobals(const TranslationContext& context, OutputSequence& out) {
    out.Add("CTABLES", false);
    out.NewLine();
    // Written whether or not there are sets: the old command always counts duplicates.
    out.Add("/MRSETS COUNTDUPLICATES=YES", false);
    return WriteGlobalFormat(context.Settings(), out);
}

[[nodiscard]] bool WriteTableGroup(Node* pTableGroup, std::size_t tableIndex,
                                   const TranslationContext& context, OutputSequence& out) {
    out.NewLine();
    const std::optional<TableGroupView> group = TableGroupView::Of(pTableGroup);
    if (!group) return false;
    try {
        return TableTranslation(*pTableGroup, *group->Table(), tableIndex, context, out).Run();
    } catch (const CommandTooLarge&) {
        context.ReportTooLarge(tableIndex);
        return false;
    }
}

[[nodiscard]] bool WriteTables(const CommandView& view, const TranslationContext& context,
                               std::string& text) {
    OutputSequence out(text, kLineWidth, kIndentation);
    if (!WriteGlobals(context, out)) return false;
    std::size_t tableIndex = 0;
    for (Node* pTableGroup : view.TableGroups()) {
        if (!WriteTableGroup(pTableGroup, tableIndex++, context, out)) return false;
    }
    out.Finish();
    return true;
}

// The command that defines the sets comes first.
[[nodiscard]] bool WriteSets(const CodePage& codePage, const Node& root, std::string& text) {
    OutputSequence sets(text, kLineWidth, kIndentation);
    if (!WriteSetsCommand(codePage, root, sets)) return false;
    sets.Finish();
    if (!sets.IsEmpty()) text += ".\n";
    return true;
}

}  // namespace

bool TranslateTablesCommand(NodeOwner root, TablesCommand& command, const CodePage& codePage,
                            std::string& text) {
    text.clear();
    if (!root) return true;
    const CommandView view(*root);
    if (!view.HasShape()) return false;
    const TranslationContext context(command, codePage, view.Globals());
    if (WriteSets(codePage, *root, text) && WriteTables(view, context, text)) return true;
    text.clear();
    return false;
}

}  // namespace quillet
