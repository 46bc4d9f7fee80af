#include "translator/globalsettings.h"

#include "parser/tbtrnodeviews.h"

namespace quillet {

GlobalSettings::GlobalSettings(const TbTrParseNode* pGlobals) {
    for (const TbTrParseNode* pSubcommand : NodeChildren(pGlobals)) {
        if (!pSubcommand) continue;
        switch (pSubcommand->GetNodeType()) {
            case TB_AUTOLABEL:
                autolabel = SettingView(*pSubcommand).Value();
                break;
            case TB_BASE:
                base = SettingView(*pSubcommand).Value();
                break;
            case TB_GBASE:
                gbase = SettingView(*pSubcommand).Value();
                break;
            case TB_MISSINGSUBCOM:
                missing = SettingView(*pSubcommand).Value();
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
