// The conversion says itself that it succeeded; here nobody takes its word for it. Both texts are
// read on their own, and what the one asks for is looked for in the other.
#include "outline/account.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "outline/accountbuilder.h"
#include "outline/accountsettings.h"
#include "outline/accountstatistics.h"
#include "outline/accounttotals.h"
#include "outline/tablepair.h"
#include "platform/commandbudget.h"

namespace quillet::outline {

namespace {

[[nodiscard]] std::size_t SizeOf(const CommandOutline& outline) {
    std::size_t size = outline.sets.size() + outline.remarks.size() + outline.tables.size();
    for (const ResponseSet& set : outline.sets) size += set.variables.size();
    for (const TableOutline& table : outline.tables) {
        for (const Dimension& dimension : table.dimensions) size += dimension.size();
        size += table.assignments.size() + table.baseVariables.size() + table.totals.size() +
                table.headings.size() + table.sorts.size();
        for (const Total& total : table.totals) size += total.variables.size();
    }
    return size;
}

class Comparison {
public:
    Comparison(const CodePage& codePage, const CommandOutline& asked, const CommandOutline& written)
        : m_asked(asked),
          m_written(written),
          m_builder(codePage, SizeOf(asked) + SizeOf(written), m_account) {}

    Account Run(const AccountContext& context) {
        try {
            Compare(context);
        } catch (const CommandTooLarge&) {
            m_account.isComplete = false;
            m_builder.BeginTable(kNowhere, kNowhere);
            m_builder.Note(NoteWording::kTooLarge, {}, 0);
        }
        std::stable_sort(
            m_account.notes.begin(), m_account.notes.end(),
            [](const AccountNote& one, const AccountNote& other) { return one.line < other.line; });
        return std::move(m_account);
    }

private:
    void Compare(const AccountContext& context) {
        AccountForCommand(m_asked, m_written, context, m_builder);
        AccountForDroppedHeadings(m_asked.headings, m_builder);
        PairTables();
        std::size_t next = 0;  // of the written ones
        for (std::size_t asked = 0; asked < m_writtenOf.size(); ++asked) {
            const std::size_t written = m_writtenOf[asked];
            m_builder.BeginTable(asked, written);
            if (written == kNowhere) {
                AddDropped(asked);
                continue;
            }
            for (; next < written; ++next) AddExtra(next);
            m_builder.BeginTable(asked, written);
            CompareTables(m_asked.tables[asked], m_written.tables[written]);
            ++next;
        }
        for (; next < m_written.tables.size(); ++next) AddExtra(next);
    }

    // Tables that a FORMAT takes along are not written. Should there still be more of the one than
    // of the other, those are left over that have other variables than the rest.
    void PairTables() {
        m_writtenOf.assign(m_asked.tables.size(), kNowhere);
        std::vector<bool> isTaken(m_asked.tables.size());
        for (const TakenByFormat& taken : m_asked.takenByFormat) {
            if (taken.table < isTaken.size()) isTaken[taken.table] = true;
        }
        std::vector<std::size_t> asked;
        for (std::size_t table = 0; table < isTaken.size(); ++table) {
            if (!isTaken[table]) asked.push_back(table);
        }
        std::size_t written = m_written.tables.size();
        while (!asked.empty() && written > 0) {
            const TableOutline& last = m_asked.tables[asked.back()];
            if (asked.size() == written ||
                VariablesOf(last) == VariablesOf(m_written.tables[written - 1])) {
                m_writtenOf[asked.back()] = --written;
                asked.pop_back();
            } else if (asked.size() > written) {
                asked.pop_back();
            } else {
                --written;
            }
        }
    }

    // The names in a table, but for what may be written in another way.
    [[nodiscard]] static std::set<std::string_view> VariablesOf(const TableOutline& table) {
        std::set<std::string_view> names;
        for (const Dimension& dimension : table.dimensions) {
            for (const Node& node : dimension) {
                if (node.role == Role::kCategory || node.role == Role::kScale) {
                    names.insert(node.name.key);
                }
            }
        }
        return names;
    }

    void AddDropped(std::size_t index) {
        const TableOutline& table = m_asked.tables[index];
        m_builder.Enter(Subject::kTable, Fate::kDropped, index).line = table.line;
        m_builder.Note(NoteWording::kTableDropped, {.asked = std::to_string(table.line)},
                       table.line);
        AccountForLostStatistics(table, m_builder, m_account.statistics);
        AccountForDroppedHeadings(table.headings, m_builder);
    }

    void AddExtra(std::size_t index) {
        const TableOutline& table = m_written.tables[index];
        m_builder.BeginTable(kNowhere, index);
        m_builder.Enter(Subject::kTable, Fate::kExtra, kNowhere, {index}).writtenLine = table.line;
        m_builder.Note(NoteWording::kTableExtra, {}, 0);
        AccountForExtraStatistics(table, m_builder, m_account.statistics);
    }

    void CompareTables(const TableOutline& asked, const TableOutline& written) {
        const TablePair tables(m_asked, asked, written, m_builder);
        AccountForTable(tables, m_asked, m_builder);
        const std::vector<TotaledVariable> totaled = AccountForTotals(tables, m_builder);
        AccountForStatistics(tables, totaled, m_builder, m_account.statistics);
        AccountForSorts(tables, m_builder);
    }

    const CommandOutline& m_asked;
    const CommandOutline& m_written;
    Account m_account;
    AccountBuilder m_builder;
    std::vector<std::size_t> m_writtenOf;  // by table that was asked for
};

}  // namespace

Account CompareOutlines(const CodePage& codePage, const CommandOutline& asked,
                        const CommandOutline& written, const AccountContext& context) {
    return Comparison(codePage, asked, written).Run(context);
}

}  // namespace quillet::outline
