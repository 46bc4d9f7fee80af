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
OpaqueValue BuildSetting(NodeType type, OpaqueValue& settingKeyword) {
    const bool isSet = OpaqueValue_IsTAVQToken(settingKeyword);
    return ValueWith(SettingView::Make(type, isSet ? ReleaseKeyword(settingKeyword) : nullptr));
}

}  // namespace

OpaqueValue BuildAutolabel(OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    OpaqueValue none;
    return CheckKeyword(keyword) ? BuildSetting(TB_AUTOLABEL, none) : none;
}

OpaqueValue BuildAutolabel(OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(tokenType == TB_DEFAULT || tokenType == TB_ON || tokenType == TB_OFF,
                        "tokenType == TB_DEFAULT || tokenType == TB_ON || tokenType == TB_OFF")) {
        return {};
    }
    return BuildSetting(TB_AUTOLABEL, settingKeyword);
}

OpaqueValue BuildBase(OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    OpaqueValue none;
    return CheckKeyword(keyword) ? BuildSetting(TB_BASE, none) : none;
}

OpaqueValue BuildBase(OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(
            tokenType == TB_ANSWERING || tokenType == TB_QUALIFIED || tokenType == SP_ALL,
            "tokenType == TB_ANSWERING || tokenType == TB_QUALIFIED || tokenType == SP_ALL")) {
        return {};
    }
    return BuildSetting(TB_BASE, settingKeyword);
}

OpaqueValue BuildGbase(OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    OpaqueValue none;
    return CheckKeyword(keyword) ? BuildSetting(TB_GBASE, none) : none;
}

OpaqueValue BuildGbase(OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType nodeType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(nodeType == TB_CASES || nodeType == TB_RESPONSES,
                        "nodeType == TB_CASES || nodeType == TB_RESPONSES")) {
        return {};
    }
    return BuildSetting(TB_GBASE, settingKeyword);
}

OpaqueValue BuildMissing(OpaqueValue& keyword, OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(keyword, settingKeyword);
    if (!CheckKeyword(keyword) || !CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(tokenType == TB_EXCLUDE || tokenType == TB_INCLUDE,
                        "tokenType == TB_EXCLUDE || tokenType == TB_INCLUDE")) {
        return {};
    }
    return BuildSetting(TB_MISSINGSUBCOM, settingKeyword);
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
    std::unique_ptr<TbTrParseNode> parseNode = OpaqueValue_ReleaseParseNode(formatSettingList);
    if (!QUILLET_ASSERT(parseNode->GetNodeType() == TB_FORMAT,
                        "parseNode->GetNodeType() == TB_FORMAT")) {
        return {};
    }
    FormatView::Check(*parseNode);
    return ValueWith(std::move(parseNode));
}

OpaqueValue StartFormat(OpaqueValue& formatSetting) {
    OpaqueValue formatSettingList;
    return AddFormatSetting(formatSettingList, formatSetting);
}

OpaqueValue AddFormatSetting(OpaqueValue& formatSettingList, OpaqueValue& formatSetting) {
    const ConsumedValues consumed(formatSettingList, formatSetting);
    std::unique_ptr<TbTrParseNode> listNode = ReleaseOrMakeList(TB_FORMAT, formatSettingList);
    if (!listNode || OpaqueValue_IsEmpty(formatSetting)) return ValueWith(std::move(listNode));
    if (!QUILLET_ASSERT(OpaqueValue_IsParseNode(formatSetting),
                        "OpaqueValue_IsParseNode(formatSetting)")) {
        return ValueWith(std::move(listNode));
    }
    FormatView::Add(*listNode, OpaqueValue_ReleaseParseNode(formatSetting));
    return ValueWith(std::move(listNode));
}

OpaqueValue BuildEmptyCellSetting(OpaqueValue& settingKeyword) {
    const ConsumedValues consumed(settingKeyword);
    if (!CheckSettingKeyword(settingKeyword)) return {};
    const NodeType tokenType = OpaqueValue_GetTbTokenType(settingKeyword);
    if (!QUILLET_ASSERT(tokenType == TB_BLANK || tokenType == TB_ZERO,
                        "tokenType == TB_BLANK || tokenType == TB_ZERO")) {
        return {};
    }
    return ValueWith(ReleaseKeyword(settingKeyword));
}

OpaqueValue BuildMissingSetting(OpaqueValue& settingKeyword, OpaqueValue& leftParen,
                                OpaqueValue& literal, OpaqueValue& rightParen) {
    const ConsumedValues consumed(settingKeyword, leftParen, literal, rightParen);
    if (!CheckSettingKeyword(settingKeyword) || !CheckParentheses(leftParen, rightParen)) {
        return {};
    }
    return ValueWith(ReleaseLiteral(literal));
}

}  // namespace quillet
