#include "translator/multipleresponse.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/assertion.h"
#include "translator/variabletypes.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "multipleresponse";

using Node = TbTrParseNode;

// The slots of a group, and that of the label below its name.
constexpr std::size_t kNameSlot = 0;
constexpr std::size_t kMembersSlot = 1;
constexpr std::size_t kCountedValueSlot = 2;
constexpr std::size_t kLabelSlot = 0;

bool IsOfType(const Node* pNode, NodeType type) { return pNode && pNode->GetNodeType() == type; }

bool HasGroupShape(const Node& group) {
    if (group.GetNodeType() == TB_MRGROUP) {
        if (!QUILLET_ASSERT(group.GetChildCount() == 2, "pMRGroup->GetChildCount() == 2")) {
            return false;
        }
    } else {
        const Node* pLastChild = group.GetChild(kCountedValueSlot);
        if (!QUILLET_ASSERT(group.GetChildCount() == 3, "pMDGroup->GetChildCount() == 3") ||
            !QUILLET_ASSERT(IsOfType(pLastChild, SP_SLITERAL) || IsOfType(pLastChild, SP_NUMBER),
                            "pLastChild != 0 && (pLastChild->GetNodeType() == SP_SLITERAL || "
                            "pLastChild->GetNodeType() == SP_NUMBER)")) {
            return false;
        }
    }
    return QUILLET_ASSERT(IsOfType(group.GetChild(kNameSlot), SP_VARNAME),
                          "pMGroup->GetChild(0)->GetNodeType() == SP_VARNAME") &&
           QUILLET_ASSERT(IsOfType(group.GetChild(kMembersSlot), TBI_VARLIST),
                          "pVarlistNode->GetNodeType() == TBI_VARLIST");
}

[[nodiscard]] bool WriteName(const CodePage& codePage, const Node& name, OutputSequence& out) {
    if (!QUILLET_ASSERT(name.GetChildCount() > 0, "pVarnameNode->GetChildCount() > 0")) {
        return false;
    }
    out.Add("NAME=", true);
    out.Add(MakeSetName(codePage, SpellingOf(name)), false);
    const Node* pLabel = name.GetChild(kLabelSlot);
    if (!pLabel) return true;
    if (!QUILLET_ASSERT(IsOfType(pLabel, SP_SLITERAL), "pLabel->GetNodeType() == SP_SLITERAL")) {
        return false;
    }
    out.Add("LABEL=", true);
    out.Add(pLabel->GetToken()->Text(/*raw=*/true), false);
    return true;
}

// A variable, or the first and the last one of a range.
[[nodiscard]] bool ReadMember(const Node* pChild, std::string& member) {
    if (IsOfType(pChild, SP_VARNAME)) {
        member = SpellingOf(*pChild);
        return true;
    }
    if (!QUILLET_ASSERT(IsOfType(pChild, TBI_VARRANGE),
                        "pChild->GetNodeType() == SP_VARNAME || "
                        "pChild->GetNodeType() == TBI_VARRANGE") ||
        !QUILLET_ASSERT(pChild->GetChildCount() > 1, "pChild->GetChildCount() > 1")) {
        return false;
    }
    const Node* pFirst = pChild->GetChild(0);
    const Node* pLast = pChild->GetChild(1);
    if (!QUILLET_ASSERT(pFirst && pLast, "pFirst && pLast")) return false;
    member = SpellingOf(*pFirst);
    member.append(" TO ").append(SpellingOf(*pLast));
    return true;
}

[[nodiscard]] bool WriteMembers(const Node& members, OutputSequence& out) {
    out.Add("VARIABLES=", true);
    std::string member;
    for (std::size_t i = 0; i < members.GetChildCount(); ++i) {
        if (!ReadMember(members.GetChild(i), member)) return false;
        out.Add(member, /*leadingSpace=*/i > 0);
    }
    return true;
}

[[nodiscard]] bool WriteGroup(const CodePage& codePage, const Node& group, OutputSequence& out) {
    if (!HasGroupShape(group)) return false;
    const bool dichotomies = group.GetNodeType() == TB_MDGROUP;
    out.Add(dichotomies ? "/MDGROUP" : "/MCGROUP", false);
    if (!WriteName(codePage, *group.GetChild(kNameSlot), out) ||
        !WriteMembers(*group.GetChild(kMembersSlot), out)) {
        return false;
    }
    if (dichotomies) {
        out.Add("VALUE=", true);
        out.Add(group.GetChild(kCountedValueSlot)->GetToken()->Text(/*raw=*/true), false);
    }
    return true;
}

}  // namespace

bool WriteSetsCommand(const CodePage& codePage, const TbTrParseNode& tree, OutputSequence& out) {
    out.Clear();
    if (!QUILLET_ASSERT(tree.GetNodeType() == TBI_GENERICLIST,
                        "pTree->GetNodeType() == TBI_GENERICLIST") ||
        !QUILLET_ASSERT(tree.GetChildCount() > 0, "pTree->GetChildCount() > 0")) {
        return false;
    }
    const Node* pGlobals = tree.GetChild(0);
    if (!pGlobals) return true;
    if (!QUILLET_ASSERT(IsOfType(pGlobals, TBI_GENERICLIST),
                        "pGlobalSubcommandList->GetNodeType() == TBI_GENERICLIST")) {
        return false;
    }
    for (std::size_t i = 0; i < pGlobals->GetChildCount(); ++i) {
        const Node* pSubcommand = pGlobals->GetChild(i);
        if (!pSubcommand || !IsSet(pSubcommand->GetNodeType())) continue;
        if (out.IsEmpty()) out.Add("MRSETS", false);
        out.NewLine();
        if (!WriteGroup(codePage, *pSubcommand, out)) return false;
    }
    return true;
}

}  // namespace quillet
