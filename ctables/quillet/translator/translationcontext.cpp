#include "translator/translationcontext.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace quillet {

void TranslationContext::ChargeRepeated(const TbTrParseNode& node, std::size_t size) const {
    if (!m_written.insert(&node).second) Budget().ChargeText(size);
}

void TranslationContext::Report(TablesErrorKind kind, const TAVQToken& token) const {
    ReportEntry entry;
    entry.kind = kind;
    entry.text = token.Text(/*raw=*/true);
    m_command.FindEnd(token, entry.line, entry.column);
    m_command.AddReport(std::move(entry));
}

void TranslationContext::ReportTooLarge(std::size_t tableIndex) const {
    ReportEntry entry;
    entry.kind = TablesErrorKind::kTableTooLarge;
    entry.subcommand = TB_TABLE;
    const std::vector<TablesLocation>& locations = m_command.TableLocations();
    if (tableIndex < locations.size()) {
        entry.line = locations[tableIndex].last_line;
        entry.column = locations[tableIndex].last_column;
    }
    m_command.AddReport(std::move(entry));
}

}  // namespace quillet
