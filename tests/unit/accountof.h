// The account of a command that is converted for a test.
#ifndef QUILLET_TESTS_ACCOUNTOF_H
#define QUILLET_TESTS_ACCOUNTOF_H

#include <functional>
#include <string>

#include "outline/account.h"

namespace quillet::outline {

/// Changes a written text.
using Change = std::function<void(std::string& written)>;

/// Converts `text`, one TABLES command with its period, and compares what came of it with what it
/// asks for. `change` may change what was written before that is read. A command that is not
/// converted fails the test.
[[nodiscard]] Account AccountOf(const std::string& text, const AccountContext& context = {},
                                const Change& change = nullptr);

/// "differs | base-differs, statistic-twice": the light, and the names of the notes in the order of
/// the alphabet, each once. A note that shows nothing stands in parentheses.
[[nodiscard]] std::string SummaryOf(const Account& account);

/// Fails the test unless the sums of the account hold, in its tally and in its entries.
void ExpectSums(const Account& account);

}  // namespace quillet::outline

#endif  // QUILLET_TESTS_ACCOUNTOF_H
