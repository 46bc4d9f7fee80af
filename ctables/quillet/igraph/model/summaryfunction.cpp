#include "igraph/model/summaryfunction.h"

#include <string_view>

#include "platform/assertion.h"

namespace quillet::igraph {

namespace {

constexpr std::string_view kModule = "summaryfunction";

}  // namespace

const SummaryFunction& FindSummaryFunction(Keyword keyword) {
    const SummaryFunction* pFound = nullptr;
    for (const SummaryFunction& function : kSummaryFunctionTable) {
        if (function.keyword == keyword) pFound = &function;
    }
    if (!QUILLET_ASSERT(pFound != nullptr, "pFound != nullptr"))
        return kSummaryFunctionTable.front();
    return *pFound;
}

}  // namespace quillet::igraph
