// Types of data access that graphs can be built on elsewhere. A converter has no data, so they
// stay undefined here, and pointers to them are always null.
#ifndef QUILLET_IGRAPH_MODEL_FOREIGNTYPES_H
#define QUILLET_IGRAPH_MODEL_FOREIGNTYPES_H

namespace quillet::igraph {

class FacSTDictionary;
class ProcedureDataSource;
class TAVQ_DataSource;
class XDocument;

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_MODEL_FOREIGNTYPES_H
