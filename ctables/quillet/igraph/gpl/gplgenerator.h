// Writes the GPL program of a graph.
#ifndef QUILLET_IGRAPH_GPL_GPLGENERATOR_H
#define QUILLET_IGRAPH_GPL_GPLGENERATOR_H

#include <string>

#include "igraph/model/foreigntypes.h"
#include "igraph/model/igraphspec.h"

namespace quillet::igraph {

/// The generator for one specification, which it borrows.
class gplGenerator {
public:
    /// `spec` is complete and outlives the generator; the pointers are null.
    gplGenerator(iGraphSpec& spec, const TAVQ_DataSource* pSource, FacSTDictionary* pDictionary);

    /// The program's text: it begins and ends with a line end, and each statement is a line
    /// after two blanks. Where GPL cannot express the graph, sets the error message of the
    /// specification and returns an empty text. For an incomplete specification the message is
    /// that of an empty chart, after an assertion. Throws `CommandTooLarge` when names repeated
    /// in element after element exceed the command's budget. Linear in the command
    /// and the text.
    [[nodiscard]] std::string getGPL();

private:
    iGraphSpec& m_spec;
};

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_GPLGENERATOR_H
