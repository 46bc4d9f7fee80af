// The global subcommands of a TABLES command that hold for all of its tables.
#ifndef QUILLET_TRANSLATOR_GLOBALSETTINGS_H
#define QUILLET_TRANSLATOR_GLOBALSETTINGS_H

#include "parser/tbtrparsenode.h"

namespace quillet {

/// The settings, read off once. A subcommand that was given several times counts as it was given
/// last, and a last one without a value is as good as none: its setting is `kNoNodeType`.
struct GlobalSettings {
    /// `pGlobals` is the list of global subcommands; null for none.
    explicit GlobalSettings(const TbTrParseNode* pGlobals);

    NodeType autolabel = kNoNodeType;        ///< TB_DEFAULT, TB_ON or TB_OFF.
    NodeType base = kNoNodeType;             ///< TB_ANSWERING, TB_QUALIFIED or SP_ALL.
    NodeType gbase = kNoNodeType;            ///< TB_CASES or TB_RESPONSES.
    NodeType missing = kNoNodeType;          ///< TB_EXCLUDE or TB_INCLUDE.
    const TbTrParseNode* pFormat = nullptr;  ///< The last FORMAT; null when there is none.
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_GLOBALSETTINGS_H
