#include "igraph/gpl/gplgenerator.h"

#include <string_view>

#include "igraph/gpl/chart.h"
#include "igraph/gpl/chartelements.h"
#include "igraph/gpl/chartguides.h"
#include "igraph/gpl/expressibility.h"
#include "igraph/gpl/layout.h"
#include "platform/assertion.h"

namespace quillet::igraph {

namespace {

constexpr std::string_view kModule = "gplgenerator";

}  // namespace

gplGenerator::gplGenerator(iGraphSpec& spec, const TAVQ_DataSource* /*pSource*/,
                           FacSTDictionary* /*pDictionary*/)
    : m_spec(spec) {}

std::string gplGenerator::getGPL() {
    const IgraphCommand& command = m_spec.Command();
    const Layout layout = LayoutOf(command);
    const std::string obstacle = QUILLET_ASSERT(m_spec.IsComplete(), "m_spec.IsComplete()")
                                     ? FindObstacle(command, layout, m_spec.getUsedVarName())
                                     : "the chart would be empty";
    if (!obstacle.empty()) {
        m_spec.SetErrorMessage(obstacle);
        return "";
    }
    Chart chart(command, layout, m_spec.Roles(), m_spec.Budget());
    chart.Data().Declare(chart.Statements());
    AddElements(chart);  // the guides and scales depend on what the elements show
    AddCoordinates(chart);
    AddGuides(chart);
    AddScales(chart);
    return chart.Statements().ToText();
}

}  // namespace quillet::igraph
