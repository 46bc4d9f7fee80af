#include "igraphtesting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "gplchecker.h"
#include "igraph/gpl/gplgenerator.h"
#include "igraph/gpl/layout.h"
#include "igraph/model/variableroles.h"
#include "igraph/read/igraphparser.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {

std::vector<std::string> IgraphResult::Lines(std::string_view label) const {
    const std::string beginning = "  " + std::string(label) + ": ";
    std::vector<std::string> lines;
    std::istringstream stream(gpl);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(beginning)) lines.push_back(line.substr(beginning.size()));
    }
    return lines;
}

std::string TextOf(const Expression& expression) {
    std::string text;
    expression.AppendTo(text);
    return text;
}

Chart ChartOf(const IgraphCommand& command, CommandBudget& budget) {
    return {command, LayoutOf(command), VariableRoles(command), budget};
}

IgraphResult ConvertIgraphText(const std::string& text) {
    TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
    sequence.SetNextIndex(0);
    parser igraphParser(nullptr, nullptr);
    IgraphResult result;
    const bool isParsed = igraphParser.Parse(sequence);
    result.syntaxFault = igraphParser.LastSyntaxFault();
    EXPECT_EQ(isParsed, result.syntaxFault == SyntaxFault::kNone);
    if (!isParsed) return result;
    const bool isValid = igraphParser.CompleteAndValidateSyntax();
    result.validityFault = igraphParser.LastValidityFault();
    EXPECT_EQ(isValid, result.validityFault == ValidityFault::kNone);
    iGraphSpec& spec = igraphParser.GetSettings();
    result.command = spec.Command();
    if (!isValid) return result;
    result.usedNames = spec.getUsedVarName();
    result.gpl = gplGenerator(spec, nullptr, nullptr).getGPL();
    result.error = spec.errorMessage();
    result.viewName = spec.getViewName();
    result.chartLooks = spec.getChartLooks();
    EXPECT_EQ(result.usedNames, spec.getUsedVarName());
    EXPECT_EQ(result.gpl.empty(), !result.error.empty());
    if (!result.gpl.empty()) {
        EXPECT_THAT(CheckGpl(result.gpl, result.usedNames), testing::IsEmpty()) << result.gpl;
    }
    return result;
}

}  // namespace quillet::igraph
