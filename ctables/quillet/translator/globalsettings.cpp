#include "translator/globalsettings.h"

#include <cstddef>

namespace quillet {

namespace {

NodeType SettingOf(const TbTrParseNode& subcommand) {
    const TbTrParseNode* pValue = subcommand.GetChild(0);
    return pValue ? pValue->GetNodeType() : kNoNodeType;
}

}  // namespace

GlobalSettings::GlobalSettings(const TbTrParseNode* pGlobals) {
    const std::size_t count = pGlobals ? pGlobals->GetChildCount() : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const TbTrParseNode* pSubcommand = pGlobals->GetChild(i);
        if (!pSubcommand) continue;
        switch (pSubcommand->GetNodeType()) {
            case TB_AUTOLABEL:
                autolabel = SettingOf(*pSubcommand);
                break;
            case TB_BASE:
                base = SettingOf(*pSubcommand);
                break;
            case TB_GBASE:
                gbase = SettingOf(*pSubcommand);
                break;
            case TB_MISSINGSUBCOM:
                missing = SettingOf(*pSubcommand);
                break;
            case TB_FORMAT:
                pFormat = pSubcommand;
                break;
            default:
                break;
        }
    }
}

}  // namespace quillet
