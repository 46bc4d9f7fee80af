// Runs IGRAPH commands through the whole library for tests.
#ifndef QUILLET_TESTS_UNIT_IGRAPHTESTING_H
#define QUILLET_TESTS_UNIT_IGRAPHTESTING_H

#include <string>
#include <string_view>
#include <vector>

#include "igraph/gpl/chart.h"
#include "igraph/gpl/gplstatement.h"
#include "igraph/model/igraphcommand.h"
#include "igraph/read/completion.h"
#include "igraph/read/syntaxreader.h"
#include "platform/commandbudget.h"

namespace quillet::igraph {

/// Everything that comes out of one command.
struct IgraphResult {
    SyntaxFault syntaxFault = SyntaxFault::kNone;
    ValidityFault validityFault = ValidityFault::kNone;
    std::string gpl;    ///< Empty after a fault or an error.
    std::string error;  ///< The error message.
    std::string usedNames;
    std::string viewName;
    std::vector<std::string> chartLooks;
    IgraphCommand command;  ///< As completed; after a syntax fault of no use.

    /// The GPL lines that begin with `label`, without it, the colon and the blanks around it.
    [[nodiscard]] std::vector<std::string> Lines(std::string_view label) const;
};

/// The text of `expression`.
[[nodiscard]] std::string TextOf(const Expression& expression);

/// A chart of `command`, which is complete and outlives it, as does `budget`.
[[nodiscard]] Chart ChartOf(const IgraphCommand& command, CommandBudget& budget);

/// Converts `text`. A program that comes out is checked; its faults fail the test.
[[nodiscard]] IgraphResult ConvertIgraphText(const std::string& text);

}  // namespace quillet::igraph

#endif  // QUILLET_TESTS_UNIT_IGRAPHTESTING_H
