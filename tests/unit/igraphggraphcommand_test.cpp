#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "igraph/gpl/ggraphcommand.h"

namespace quillet::igraph {

namespace {

// The command of a graph of one variable, a.
std::string CommandWith(const std::string& viewName, const std::vector<std::string>& looks,
                        const std::vector<std::string>& immediateTemplates) {
    iGraphSpec spec;
    spec.Command().x1.variable.source = VariableReference::Source::kVariable;
    spec.Command().x1.variable.name = "a";
    spec.Command().x1.variable.key = "A";
    spec.Command().viewName = viewName;
    spec.Command().chartLooks = looks;
    spec.SetComplete(VariableRoles(spec.Command()));
    return GgraphCommand(spec, "\n  ...\n", immediateTemplates);
}

TEST(IgraphGgraphCommandTest, WritesClausesOnlyForWhatIsThere) {
    struct Case {
        const char* name;
        const char* viewName;
        std::vector<std::string> looks;
        std::vector<std::string> immediateTemplates;
        const char* clauses;
    };
    const Case cases[] = {
        {"nothing", "", {}, {}, ""},
        {"a name", "v", {}, {}, " LABEL='v'"},
        {"a look", "", {"l"}, {}, "\n      TEMPLATE=[\"l\"]"},
        {"looks make one item", "", {"l", "NONE", "", "m"}, {}, "\n      TEMPLATE=[\"lm\"]"},
        {"a template", "", {}, {"t"}, "\n      INLINETEMPLATE=[\"t\"]"},
        {"templates make an item each", "", {}, {"t", "u"}, "\n      INLINETEMPLATE=[\"t\" \"u\"]"},
        {"all in their order",
         "v",
         {"l"},
         {"t"},
         " LABEL='v'\n      TEMPLATE=[\"l\"]\n      INLINETEMPLATE=[\"t\"]"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(CommandWith(c.viewName, c.looks, c.immediateTemplates),
                  "GGRAPH\n"
                  "  /GRAPHDATASET NAME=\"iGraphDataset\" VARIABLES=a\n"
                  "    MISSING=LISTWISE REPORTMISSING=NO\n"
                  "  /GRAPHSPEC SOURCE=INLINE EDITABLE=YES" +
                      std::string(c.clauses) +
                      ".\n"
                      "BEGIN GPL\n"
                      "  ...\n"
                      "END GPL.");
    }
}

}  // namespace

}  // namespace quillet::igraph
