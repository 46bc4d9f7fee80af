// The subcommands that set something: for the whole command, or the texts around one table.
#include <memory>
#include <string_view>
#include <utility>

#include "bison/tbtrparsebuilder.h"
#include "bison/tbtrparsevalues.h"
#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "bison/tbtrparsesettings";

/// A subcommand node with the node of its setting, if there is one.
OpaqueValue BuildSetting(Arena& arena, NodeType type, OpaqueValue& settingKeyword) {
    const bool isSet = OpaqueValue_IsTAVQToken(settingKeyword);
    return ValueWith(
        SettingView::Make(arena, type, isSet ? ReleaseKeyword(arena, settingKeyword) : nullptr));
}

}  // namespace

OpaqueValue BuildAutolabel(Arena& arena, OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    OpaqueValue none;
    return CheckKeyword(keyword) ? BuildSetting(arena, TB_AUTOLABEL, none) : none;
}

OpaqueValue BuildAutolabel(Arena& arena, OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(tokenType == TB_DEFAULT || tokenType == TB_ON || tokenType == TB_OFF,
                        "tokenType == TB_DEFAULT || tokenType == TB_ON || tokenType == TB_OFF")) {
        return {};
    }
    return BuildSetting(arena, TB_AUTOLABEL, settingKeyword);
}

OpaqueValue BuildBase(Arena& arena, OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    OpaqueValue none;
    return CheckKeyword(keyword) ? BuildSetting(arena, TB_BASE, none) : none;
}

OpaqueValue BuildBase(Arena& arena, OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(
            tokenType == TB_ANSWERING || tokenType == TB_QUALIFIED || tokenType == SP_ALL,
            "tokenType == TB_ANSWERING || tokenType == TB_QUALIFIED || tokenType == SP_ALL")) {
        return {};
    }
    return BuildSetting(arena, TB_BASE, settingKeyword);
}

OpaqueValue BuildGbase(Arena& arena, OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    OpaqueValue none;
    return CheckKeyword(keyword) ? BuildSetting(arena, TB_GBASE, none) : none;
}

OpaqueValue BuildGbase(Arena& arena, OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType nodeType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(nodeType == TB_CASES || nodeType == TB_RESPONSES,
                        "nodeType == TB_CASES || nodeType == TB_RESPONSES")) {
        return {};
    }
    return BuildSetting(arena, TB_GBASE, settingKeyword);
}

OpaqueValue BuildMissing(Arena& arena, OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(tokenType == TB_EXCLUDE || tokenType == TB_INCLUDE,
                        "tokenType == TB_EXCLUDE || tokenType == TB_INCLUDE")) {
        return {};
    }
    return BuildSetting(arena, TB_MISSINGSUBCOM, settingKeyword);
}

OpaqueValue BuildTexts(NodeType type, OpaqueValue& keyword, OpaqueValue& list) {
    return BuildFromList(type, TBI_GENERICLIST, keyword, list);
}

OpaqueValue DropEmptyFormat(OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    CheckKeyword(keyword);
    return {};
}

OpaqueValue BuildFormat(OpaqueValue& keyword, OpaqueValue& formatSettingList) {
    const ConsumedValues consumed(keyword, formatSettingList);
    if (!CheckKeyword(keyword) || !QUILLET_ASSERT(OpaqueValue_IsParseNode(formatSettingList),
                                                  "OpaqueValue_IsParseNode(formatSettingList)")) {
        return {};
    }
    NodeOwner parseNode = OpaqueValue_ReleaseParseNode(formatSettingList);
    if (!QUILLET_ASSERT(parseNode->GetNodeType() == TB_FORMAT,
                        "parseNode->GetNodeType() == TB_FORMAT")) {
        return {};
    }
    FormatView::Check(*parseNode);
    return ValueWith(std::move(parseNode));
}

OpaqueValue StartFormat(Arena& arena, OpaqueValue& formatSetting) {
    OpaqueValue formatSettingList;
    return AddFormatSetting(arena, formatSettingList, formatSetting);
}

OpaqueValue AddFormatSetting(Arena& arena, OpaqueValue& formatSettingList,
                             OpaqueValue& formatSetting) {
    const ConsumedValues consumed(formatSettingList, formatSetting);
    NodeOwner listNode = ReleaseOrMakeList(arena, TB_FORMAT, formatSettingList);
    if (!listNode || OpaqueValue_IsEmpty(formatSetting)) return ValueWith(std::move(listNode));
    if (!QUILLET_ASSERT(OpaqueValue_IsParseNode(formatSetting),
                        "OpaqueValue_IsParseNode(formatSetting)")) {
        return ValueWith(std::move(listNode));
    }
    FormatView::Add(*listNode, OpaqueValue_ReleaseParseNode(formatSetting));
    return ValueWith(std::move(listNode));
}

OpaqueValue BuildEmptyCellSetting(Arena& arena, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(settingKeyword);
    if (!CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(tokenType == TB_BLANK || tokenType == TB_ZERO,
                        "tokenType == TB_BLANK || tokenType == TB_ZERO")) {
        return {};
    }
    return ValueWith(ReleaseKeyword(arena, settingKeyword));
}

OpaqueValue BuildMissingSetting(Arena& arena, OpaqueValue& settingKeyword, OpaqueValue& leftParen,
                                OpaqueValue& literal, OpaqueValue& rightParen) {
    const ConsumedValues consumed(settingKeyword, leftParen, literal, rightParen);
    if (!CheckSettingKeyword(settingKeyword) || !CheckParentheses(leftParen, rightParen)) {
        return {};
    }
    return ValueWith(ReleaseLiteral(arena, literal));
}

}  // namespace quillet
