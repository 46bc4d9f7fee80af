// What happens to a graph between its GPL program and its output.
#ifndef QUILLET_IGRAPH_GPL_POSTPROCESSING_H
#define QUILLET_IGRAPH_GPL_POSTPROCESSING_H

#include <string>
#include <vector>

#include "igraph/model/foreigntypes.h"
#include "igraph/model/igraphspec.h"

namespace quillet::igraph {

/// The processing of one graph. Everything that an IGRAPH command says about looks is in the GPL
/// program or in a chart look, so there is nothing left to do.
class doPostProcessing {
public:
    /// All pointers are null.
    doPostProcessing(XDocument* pDocument, FacSTDictionary* pDictionary,
                     const TAVQ_DataSource* pSource);

    void process(const iGraphSpec& spec);

    /// Templates to be written into the command; none.
    [[nodiscard]] std::vector<std::string> getImmediateTemplates() const;

private:
    std::vector<std::string> m_immediateTemplates;
};

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_POSTPROCESSING_H
