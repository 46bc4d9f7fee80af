#include "translator/multipleresponse.h"

#include <optional>
#include <string>

#include "parser/tbtrnodeviews.h"
#include "translator/variabletypes.h"

namespace quillet {

namespace {

void WriteName(const CodePage& codePage, const SetView& set, OutputSequence& out) {
    out.Add("NAME=", true);
    out.Add(MakeSetName(codePage, SpellingOf(set.Name())), false);
    if (!set.Label()) return;
    out.Add("LABEL=", true);
    out.Add(set.Label()->Text(/*raw=*/true), false);
}

[[nodiscard]] bool WriteMembers(const NodeChildren& members, OutputSequence& out) {
    out.Add("VARIABLES=", true);
    std::string text;
    bool isFirst = true;
    for (const TbTrParseNode* pNode : members) {
        const std::optional<SetMemberView> member = SetMemberView::Of(pNode);
        if (!member) return false;
        text = SpellingOf(member->First());
        if (member->Last()) text.append(" TO ").append(SpellingOf(*member->Last()));
        out.Add(text, /*leadingSpace=*/!isFirst);
        isFirst = false;
    }
    return true;
}

[[nodiscard]] bool WriteGroup(const CodePage& codePage, const TbTrParseNode& group,
                              OutputSequence& out) {
    const std::optional<SetView> set = SetView::Of(group);
    if (!set) return false;
    out.Add(set->CountsOneValue() ? "/MDGROUP" : "/MCGROUP", false);
    WriteName(codePage, *set, out);
    if (!WriteMembers(set->Members(), out)) return false;
    if (set->CountsOneValue()) {
        out.Add("VALUE=", true);
        out.Add(set->CountedValue().Text(/*raw=*/true), false);
    }
    return true;
}

}  // namespace

bool WriteSetsCommand(const CodePage& codePage, const TbTrParseNode& tree, OutputSequence& out) {
    const CommandView command(tree);
    if (!command.HasShapeForSets()) return false;
    for (const TbTrParseNode* pSubcommand : NodeChildren(command.Globals())) {
        if (!pSubcommand || !IsSet(pSubcommand->GetNodeType())) continue;
        if (out.IsEmpty()) out.Add("MRSETS", false);
        out.NewLine();
        if (!WriteGroup(codePage, *pSubcommand, out)) return false;
    }
    return true;
}

}  // namespace quillet
