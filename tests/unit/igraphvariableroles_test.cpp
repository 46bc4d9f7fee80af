#include <gtest/gtest.h>

#include <string>

#include "igraph/model/variableroles.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

TEST(IgraphVariableRolesTest, ListsRolesInOrderOfTheCommand) {
    const IgraphCommand command =
        ConvertIgraphText("IGRAPH /PANEL p /X1=$case /COLOR=VAR(c) /Y=VAR(y) /LINE").command;
    std::string roles;
    for (const VariableRole& role : VariableRoles(command)) {
        roles += role.pReference->IsCaseNumber() ? "$case" : role.pReference->name;
        roles += role.level == MeasurementLevel::kScale ? " scale, " : " categories, ";
    }
    EXPECT_EQ(roles, "p categories, $case categories, c categories, y scale, ");
}

}  // namespace

}  // namespace quillet::igraph
