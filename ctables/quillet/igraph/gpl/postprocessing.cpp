#include "igraph/gpl/postprocessing.h"

namespace quillet::igraph {

doPostProcessing::doPostProcessing(XDocument* /*pDocument*/, FacSTDictionary* /*pDictionary*/,
                                   const TAVQ_DataSource* /*pSource*/) {}

void doPostProcessing::process(const iGraphSpec& /*spec*/) {}

std::vector<std::string> doPostProcessing::getImmediateTemplates() const {
    return m_immediateTemplates;
}

}  // namespace quillet::igraph
