// Completes an IGRAPH command with what it leaves out, and decides whether it makes sense.
#ifndef QUILLET_IGRAPH_READ_COMPLETION_H
#define QUILLET_IGRAPH_READ_COMPLETION_H

#include <vector>

#include "igraph/model/igraphcommand.h"
#include "igraph/model/variableroles.h"

namespace quillet::igraph {

/// Why a command that could be read makes no sense. Users are not told; it makes the tests
/// precise. A fit line with the method NONE counts as absent.
enum class ValidityFault {
    kNone,
    kNothingToDraw,            ///< No element, no fit line, no spikes.
    kNoVariable,               ///< The graph would need no data.
    kNoY,                      ///< Only a pie can do without.
    kNoX1,                     ///< SCATTER, HISTOGRAM and FITLINE need it.
    kWrongBuiltin,             ///< $count, $pct or $case at a place that takes variables alone.
    kCountedY,                 ///< SCATTER, BOX, ERRORBAR or FITLINE of $count or $pct.
    kHistogramAxes,            ///< HISTOGRAM of a variable on Y, or over categories.
    kFunctionWithoutVariable,  ///< A function of $count, $pct or $case.
    kCategoricalY,             ///< A statistic that categories do not have.
    kLegendLevel,              ///< STYLE as a scale, or a scale in clusters or stacks.
    kCoordinates,              ///< COORDINATE does not fit the number of axes.
    kNumberOutOfRange,
    kNoExtent,           ///< ERRORBAR without CI, SD and SE.
    kPie,                ///< A pie with company, without slices or with a wrong function.
    kReferenceLine,      ///< REFLINE of something that is on no axis.
    kFitLineLevel,       ///< FITLINE over categories.
    kScaleEnds,          ///< MIN not below MAX.
    kCaseNumberY,        ///< $case on Y with something other than points.
    kSpikesWithoutAxes,  ///< SPIKE alone, and X1 or Y is missing.
};

/// Sets all levels, coordinates and arrangements of `command` and the ends of its scales, then
/// validates it. `roles` become the `VariableRoles` of the complete command. Linear in the command
/// but for the sorting of the roles.
[[nodiscard]] ValidityFault CompleteCommand(IgraphCommand& command,
                                            std::vector<VariableRole>& roles);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_READ_COMPLETION_H
