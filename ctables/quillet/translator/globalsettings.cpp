#include "translator/globalsettings.h"

#include <cstddef>

namespace quillet {

namespace {

NodeType ValueOf(const TbTrParseNode& subcommand) {
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
                autolabel = ValueOf(*pSubcommand);
                break;
            case TB_BASE:
                base = ValueOf(*pSubcommand);
                break;
            case TB_GBASE:
                gbase = ValueOf(*pSubcommand);
                break;
            case TB_MISSINGSUBCOM:
                missing = ValueOf(*pSubcommand);
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
