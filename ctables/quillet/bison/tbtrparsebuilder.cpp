// The actions for lists, which every section of the grammar uses, and those at its top, which put
// the subcommands together. What an action may assume, and what becomes of its arguments, is told
// in the header.
#include "bison/tbtrparsebuilder.h"

#include <cstddef>
#include <memory>
#include <utility>

#include "bison/tbtrparsevalues.h"
#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "bison/tbtrparsebuilder";

}  // namespace

OpaqueValue NoList() { return {}; }

OpaqueValue BuildEmptyList(Arena& arena) { return ValueWith(MakeListNode(arena, TBI_GENERICLIST)); }

OpaqueValue StartList(Arena& arena, NodeType listType, OpaqueValue& element) {
    OpaqueValue list;
    return AddToList(arena, listType, list, element);
}

OpaqueValue AddToList(Arena& arena, NodeType listType, OpaqueValue& list, OpaqueValue& element) {
    const ConsumedValues consumed(list, element);
    if (!QUILLET_ASSERT(OpaqueValue_IsEmpty(element) || OpaqueValue_IsParseNode(element),
                        "OpaqueValue_IsEmpty(element) || OpaqueValue_IsParseNode(element)")) {
        return {};
    }
    NodeOwner listNode = ReleaseOrMakeList(arena, listType, list);
    if (listNode && OpaqueValue_IsParseNode(element)) {
        listNode->AddChild(OpaqueValue_ReleaseParseNode(element));
    }
    return ValueWith(std::move(listNode));
}

OpaqueValue StartNameList(Arena& arena, OpaqueValue& varname) {
    OpaqueValue list;
    return AddToNameList(arena, list, varname);
}

OpaqueValue AddToNameList(Arena& arena, OpaqueValue& list, OpaqueValue& varname) {
    OpaqueValue element = BuildVariable(arena, varname);
    return AddToList(arena, TBI_VARLIST, list, element);
}

OpaqueValue AddLiteralToList(Arena& arena, OpaqueValue& list, OpaqueValue& literal) {
    const ConsumedValues consumed(literal);
    OpaqueValue element = ValueWith(ReleaseLiteral(arena, literal));
    return AddToList(arena, TBI_GENERICLIST, list, element);
}

OpaqueValue DiscardToken(OpaqueValue& token) {
    OpaqueValue_Clear(token);
    return {};
}

OpaqueValue DiscardToken(OpaqueValue& discarded, OpaqueValue& token) {
    const ConsumedValues consumed(discarded);
    return DiscardToken(token);
}

// ---- Command and groups

OpaqueValue BuildCommand(TablesCommand& command, OpaqueValue& globalGroup,
                         OpaqueValue& tableGroupList) {
    const ConsumedValues consumed(globalGroup, tableGroupList);
    const bool hasGlobals = !OpaqueValue_IsEmpty(globalGroup);
    if ((hasGlobals && !CheckGenericList(globalGroup)) || !CheckGenericList(tableGroupList)) {
        return {};
    }
    NodeOwner globals = hasGlobals ? OpaqueValue_ReleaseParseNode(globalGroup)
                                   : MakeListNode(command.Memory(), TBI_GENERICLIST);
    command.SetParseResult(
        CommandView::Make(std::move(globals), OpaqueValue_ReleaseParseNode(tableGroupList)));
    return {};
}

OpaqueValue BuildTableGroup(Arena& arena, OpaqueValue& table, OpaqueValue& localSubcommandList) {
    const ConsumedValues consumed(table, localSubcommandList);
    if (!QUILLET_ASSERT(OpaqueValue_CheckParseNode(table, TB_TABLE, 0, 0),
                        "OpaqueValue_CheckParseNode(table, TB_TABLE, 0, 0)") ||
        (!OpaqueValue_IsEmpty(localSubcommandList) && !CheckGenericList(localSubcommandList))) {
        return {};
    }
    return ValueWith(TableGroupView::Make(arena, OpaqueValue_ReleaseParseNode(table),
                                          OpaqueValue_ReleaseParseNode(localSubcommandList)));
}

}  // namespace quillet
