// What became of all that is no statistic and no total: sets, settings, texts, orders, labels.
#ifndef QUILLET_OUTLINE_ACCOUNTSETTINGS_H
#define QUILLET_OUTLINE_ACCOUNTSETTINGS_H

#include <string_view>
#include <vector>

#include "outline/account.h"
#include "outline/accountbuilder.h"
#include "outline/tablepair.h"

namespace quillet::outline {

/// Enters what holds for a whole command: settings, sets, and what the old command says that has
/// no place in an outline; and notes what the context knows.
void AccountForCommand(const CommandOutline& asked, const CommandOutline& written,
                       const AccountContext& context, AccountBuilder& builder);

/// Enters the dimensions, labels, texts and settings of a pair of tables of these commands.
void AccountForTable(const TablePair& tables, const CommandOutline& asked, AccountBuilder& builder);

/// Enters the orders of categories of a pair of tables.
void AccountForSorts(const TablePair& tables, AccountBuilder& builder);

/// Enters texts for which there is no table in the new command.
void AccountForDroppedHeadings(const std::vector<Heading>& headings, AccountBuilder& builder);

/// True when a FORMAT that breaks off takes along a subcommand of this name. There is a note on it.
[[nodiscard]] bool IsTakenByFormat(const CommandOutline& asked, std::string_view subcommand);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ACCOUNTSETTINGS_H
