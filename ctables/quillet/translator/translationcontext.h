// What all steps of a translation share.
#ifndef QUILLET_TRANSLATOR_TRANSLATIONCONTEXT_H
#define QUILLET_TRANSLATOR_TRANSLATIONCONTEXT_H

#include <cstddef>
#include <unordered_set>

#include "parser/tbtrparsenode.h"
#include "parser/tbtrtablescommand.h"
#include "platform/codepage.h"
#include "platform/commandbudget.h"
#include "tokenizer/tavqtoken.h"
#include "translator/globalsettings.h"
#include "translator/variabletypes.h"

namespace quillet {

/// The command that is translated. Borrows everything; the tree's list of global subcommands
/// must stay as it is.
class TranslationContext {
public:
    /// `pGlobals` is the list of global subcommands; null for none.
    TranslationContext(TablesCommand& command, const CodePage& codePage,
                       const TbTrParseNode* pGlobals)
        : m_command(command), m_settings(pGlobals), m_types(codePage, pGlobals) {}

    [[nodiscard]] const GlobalSettings& Settings() const { return m_settings; }
    [[nodiscard]] const VariableTypes& Types() const { return m_types; }
    /// Charged by every step that writes something more often than the command says it.
    [[nodiscard]] CommandBudget& Budget() const { return m_command.Budget(); }

    /// Where further nodes of the tree lie.
    [[nodiscard]] Arena& Memory() const { return m_command.Memory(); }

    /// Charges `size` bytes of text when `node` is written for the second time and later; throws
    /// `CommandTooLarge`.
    void ChargeRepeated(const TbTrParseNode& node, std::size_t size) const;

    /// Reports an error about the name that `token` is, at its last character.
    void Report(TablesErrorKind kind, const TAVQToken& token) const;

    /// Reports that the table at `tableIndex`, from 0, is too large, at the end of its TABLE
    /// subcommand.
    void ReportTooLarge(std::size_t tableIndex) const;

private:
    TablesCommand& m_command;
    GlobalSettings m_settings;
    VariableTypes m_types;
    mutable std::unordered_set<const TbTrParseNode*> m_written;  // of the nodes charged
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_TRANSLATIONCONTEXT_H
