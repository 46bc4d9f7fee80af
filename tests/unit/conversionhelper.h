// Parses and converts the text of TABLES commands for the tests of the translator.
#ifndef QUILLET_TESTS_UNIT_CONVERSIONHELPER_H
#define QUILLET_TESTS_UNIT_CONVERSIONHELPER_H

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bison/tbtrtables.h"
#include "nodemaking.h"
#include "parser/tbtrparsenode.h"
#include "parser/tbtrtablescommand.h"
#include "platform/codepage.h"
#include "support/assertionrecorder.h"
#include "tokenizer/tavqtokensequence.h"
#include "translator/parsetree.h"

namespace quillet {

/// A parsed TABLES command, read as UTF-8. `source` is the whole command, with the word TABLES,
/// without the final period.
class ParsedCommand {
public:
    explicit ParsedCommand(const std::string& source)
        : m_sequence(CodePage::Utf8(), source, /*skipLeadingSign=*/false, /*maxTokens=*/0),
          m_command(CodePage::Utf8(), &m_sequence) {
        m_parsed = ParseTables(m_command) == ParseStatus::kSuccess;
        m_root = m_command.ReleaseParseResult();
    }

    [[nodiscard]] bool Parsed() const { return m_parsed; }
    [[nodiscard]] TablesCommand& Command() { return m_command; }

    [[nodiscard]] NodeOwner TakeRoot() { return std::move(m_root); }
    [[nodiscard]] TbTrParseNode& Root() { return *m_root; }
    [[nodiscard]] const TbTrParseNode* Globals() const { return m_root->GetChild(0); }
    /// The group of the table at `index`, from 0, and its TABLE subcommand.
    [[nodiscard]] TbTrParseNode& Group(std::size_t index = 0) {
        return *m_root->GetChild(index + 1);
    }
    [[nodiscard]] TbTrParseNode& Table(std::size_t index = 0) { return *Group(index).GetChild(0); }

private:
    TAVQTokenSequence m_sequence;
    TablesCommand m_command;
    bool m_parsed = false;
    NodeOwner m_root;
};

struct TablesConversion {
    bool parsed = false;
    bool translated = false;
    std::string text = "not cleared";  ///< Of the commands that replace the old one.
    ReportEntry report;
    std::vector<Warning> warnings;
    std::vector<std::string> assertions;
};

inline TablesConversion ConvertTablesCommand(const std::string& source) {
    TablesConversion conversion;
    const AssertionRecorder assertions;
    ParsedCommand parsed(source);
    conversion.parsed = parsed.Parsed();
    if (conversion.parsed) {
        conversion.translated = TranslateTablesCommand(parsed.TakeRoot(), parsed.Command(),
                                                       CodePage::Utf8(), conversion.text);
    }
    conversion.report = parsed.Command().FirstReport();
    conversion.warnings = parsed.Command().Warnings();
    conversion.assertions = assertions.Texts();
    return conversion;
}

/// The subcommands of a CTABLES command that begin with `word`, in order, with the line breaks
/// inside them.
inline std::vector<std::string> SubcommandsOf(const std::string& text, std::string_view word) {
    std::vector<std::string> found;
    const std::string breakBefore = "\n  /";
    std::size_t begin = 0;
    while (begin != std::string::npos) {
        const std::size_t end = text.find(breakBefore, begin + 1);
        const std::size_t first = begin == 0 ? 0 : begin + breakBefore.size() - 1;
        const std::string part = text.substr(first, end == std::string::npos ? end : end - first);
        if (part.compare(0, word.size(), word) == 0) found.push_back(part);
        begin = end;
    }
    return found;
}

/// What stands after "/TABLE " in the first table that `source` is converted to; the outcome in
/// angle brackets when it is not converted.
inline std::string ConvertedTable(const std::string& source) {
    const TablesConversion conversion = ConvertTablesCommand(source);
    if (!conversion.parsed) return "<not parsed>";
    if (!conversion.assertions.empty()) return "<" + conversion.assertions.front() + ">";
    if (!conversion.translated) {
        return "<kind " + std::to_string(static_cast<int>(conversion.report.kind)) + ">";
    }
    const std::string word = "/TABLE ";
    const std::vector<std::string> tables = SubcommandsOf(conversion.text, word);
    return tables.empty() ? "<no table>" : tables.front().substr(word.size());
}

}  // namespace quillet

#endif  // QUILLET_TESTS_UNIT_CONVERSIONHELPER_H
