// What the tests of the TABLES parser share: parsing a command and reading its tree as a line.
#ifndef QUILLET_TESTS_UNIT_TABLESPARSING_H
#define QUILLET_TESTS_UNIT_TABLESPARSING_H

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bison/tbtrtables.h"
#include "driver/reasons.h"
#include "parser/tbtrparsenode.h"
#include "parser/tbtrtablescommand.h"
#include "platform/codepage.h"
#include "support/assertionrecorder.h"
#include "tokenizer/tavqtoken.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::tablesparsing {

/// The name of a node type without its prefix, such as "TABLE" for `TB_TABLE`; "LIST" for a
/// `TBI_GENERICLIST`.
inline std::string TypeName(NodeType type) {
    static constexpr std::pair<NodeType, std::string_view> kNames[] = {
        {TBI_GENERICLIST, "TBI_LIST"},
#define QUILLET_TOKEN(code, number) {code, #code},
#define QUILLET_NODE(code, number) {code, #code},
#include "parser/tbtrcodes.def"
    };
    for (const auto& [code, name] : kNames) {
        if (code == type) return std::string(name.substr(name.find('_') + 1));
    }
    return std::to_string(static_cast<unsigned>(type));
}

/// The source text of a token. That of a literal runs up to where the tokenizer looked for its
/// continuation; the blanks there are left out.
inline std::string SourceOf(const TAVQToken& token) {
    const std::string_view text = token.Text(/*raw=*/true);
    return std::string(text.substr(0, text.find_last_not_of(" \n") + 1));
}

/// The tree on one line: a node's name, ":" and its token where it has one, and its children in
/// parentheses. A variable is its name alone, and what hangs on it follows in brackets; literals
/// and numbers are their source text; a list always shows its parentheses. For small trees:
/// recursive.
inline std::string TreeText(const TbTrParseNode* pNode) {
    if (!pNode) return "-";
    const NodeType type = pNode->GetNodeType();
    const std::string token = pNode->GetToken() ? SourceOf(*pNode->GetToken()) : "";
    std::string children;
    for (std::size_t index = 0; index < pNode->GetChildCount(); ++index) {
        const TbTrParseNode* pChild = pNode->GetChild(index);
        children += (index > 0 ? " " : "") + TreeText(pChild);
    }
    if (type == SP_VARNAME) return children.empty() ? token : token + "[" + children + "]";
    const bool isLeafText = type == SP_SLITERAL || type == SP_NUMBER;
    std::string text = isLeafText ? token : TypeName(type);
    if (!isLeafText && pNode->GetToken()) text += ":" + token;
    if (pNode->GetChildCount() > 0 || type == TBI_GENERICLIST) text += "(" + children + ")";
    return text;
}

/// One command, tokenized, and its command object.
struct Command {
    explicit Command(const std::string& text, const CodePage& page = CodePage::Utf8())
        : sequence(page, text, /*skipLeadingSign=*/false, /*maxTokens=*/0),
          command(page, &sequence) {}

    TAVQTokenSequence sequence;
    TablesCommand command;
};

struct Parsed {
    ParseStatus status = ParseStatus::kSuccess;
    std::string tree;  ///< Empty after a failure.
    ReportEntry report;
    std::vector<std::string> warnings;
    std::vector<std::string> assertions;
};

inline Parsed Parse(const std::string& text) {
    AssertionRecorder assertions;
    Command parsed(text);
    Parsed result;
    result.status = ParseTables(parsed.command);
    if (parsed.command.ParseResult()) result.tree = TreeText(parsed.command.ParseResult());
    result.report = parsed.command.FirstReport();
    for (const Warning& warning : parsed.command.Warnings()) {
        result.warnings.push_back(MessageOf(warning));
    }
    result.assertions = assertions.Texts();
    return result;
}

}  // namespace quillet::tablesparsing

#endif  // QUILLET_TESTS_UNIT_TABLESPARSING_H
