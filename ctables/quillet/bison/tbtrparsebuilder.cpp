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

OpaqueValue BuildEmptyList() { return ValueWith(MakeListNode(TBI_GENERICLIST)); }

OpaqueValue StartList(NodeType listType, OpaqueValue& element) {
    OpaqueValue list;
    return AddToList(listType, list, element);
}

OpaqueValue AddToList(NodeType listType, OpaqueValue& list, OpaqueValue& element) {
    const ConsumedValues consumed(list, element);
    if (!QUILLET_ASSERT(OpaqueValue_IsEmpty(element) || OpaqueValue_IsParseNode(element),
                        "OpaqueValue_IsEmpty(element) || OpaqueValue_IsParseNode(element)")) {
        return {};
    }
    std::unique_ptr<TbTrParseNode> listNode = ReleaseOrMakeList(listType, list);
    if (listNode && OpaqueValue_IsParseNode(element)) {
        listNode->AddChild(OpaqueValue_ReleaseParseNode(element));
    }
    return ValueWith(std::move(listNode));
}

OpaqueValue StartNameList(OpaqueValue& varname) {
    OpaqueValue list;
    return AddToNameList(list, varname);
}

OpaqueValue AddToNameList(OpaqueValue& list, OpaqueValue& varname) {
    OpaqueValue element = BuildVariable(varname);
    return AddToList(TBI_VARLIST, list, element);
}

OpaqueValue AddLiteralToList(OpaqueValue& list, OpaqueValue& literal) {
    const ConsumedValues consumed(literal);
    OpaqueValue element = ValueWith(ReleaseLiteral(literal));
    return AddToList(TBI_GENERICLIST, list, element);
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
    if (!CheckGenericList(globalGroup) || !CheckGenericList(tableGroupList)) return {};
    command.SetParseResult(CommandView::Make(OpaqueValue_ReleaseParseNode(globalGroup),
                                             OpaqueValue_ReleaseParseNode(tableGroupList)));
    return {};
}

OpaqueValue BuildTableGroup(OpaqueValue& table, OpaqueValue& localSubcommandList) {
    const ConsumedValues consumed(table, localSubcommandList);
    if (!QUILLET_ASSERT(OpaqueValue_CheckParseNode(table, TB_TABLE, 0, 0),
                        "OpaqueValue_CheckParseNode(table, TB_TABLE, 0, 0)") ||
        !CheckGenericList(localSubcommandList)) {
        return {};
    }
    return ValueWith(TableGroupView::Make(OpaqueValue_ReleaseParseNode(table),
                                          OpaqueValue_ReleaseParseNode(localSubcommandList)));
}

}  // namespace quillet
