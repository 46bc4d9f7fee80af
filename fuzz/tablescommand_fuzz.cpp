// Bytes in, TABLES command, parse tree out. The first byte chooses how the rest is read: as the
// text of a command, or, structure-aware, each byte as one word of the language.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "bison/tbtrtables.h"
#include "parser/tbtrparsenode.h"
#include "parser/tbtrtablescommand.h"
#include "platform/assertion.h"
#include "platform/codepage.h"
#include "reachableassertions.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tavqtokensequence.h"

namespace {

// Whole subcommands stand beside single words, so that a few bytes get past the global part.
constexpr std::string_view kWords[] = {
#define QUILLET_SUBCOMMAND(word, code) "/" word,
#include "parser/tbtrcodes.def"
    "/XYZ",
    "/ON",
    "/",
    "//",
    "AUTOLABEL",
    "BASE",
    "BREAK",
    "CAPTION",
    "FORMAT",
    "MISSING",
    "SORT",
    "STATISTICS",
    "TABLE",
#define QUILLET_SETTING(word, code) word,
#include "parser/tbtrcodes.def"
    "STA",
    "lab",
    "x",
    "y",
    "#s",
    "$sysmis",
    "income",
    "F8.2",
    "!macro",
    "!stat",
    "averyveryverylongwordthatismorethansixtyfourbytesandsonovariablename",
    "MEAN",
    "COUNT",
    "CPCT",
    "PTILE",
    "TO",
    "BY",
    "WITH",
    "AND",
    "NOT",
    "GT",
    "EQ",
    "5",
    "2.5",
    "-1",
    "+",
    "-",
    ">",
    "(",
    ")",
    "((",
    "))",
    ":",
    "=",
    ",",
    "*",
    "<>",
    "&",
    "[",
    "'text'",
    "\"other\"",
    "'a' + 'b'",
    "''",
    "\n",
    "\n  ",
    "\xC3\xA4",
    "/TABLE x",
    "/TABLE x BY y",
    "/TABLE x + y > (a + b) BY (STATISTICS)",
    "/STATISTICS MEAN(x (F8.2) 'm' y : z)",
    "/FORMAT MISSING('-') ZERO",
    "/FORMAT CWIDTH(10)",
    "/MDGROUP d 'l' x TO y (1)",
    "/BREAK + r",
    "/SORT DESCENDING x (MEAN(y)) z",
};

std::string CommandText(const std::uint8_t* data, std::size_t size) {
    if (data[0] == 0) {
        return "TABLES " + std::string(reinterpret_cast<const char*>(data) + 1, size - 1);
    }
    std::string text = "TABLES";
    for (std::size_t index = 1; index < size; ++index) {
        text += ' ';
        text += kWords[data[index] % std::size(kWords)];
    }
    return text;
}

void Require(bool condition) {
    if (!condition) std::abort();
}

// No text that a user can write may fail an assertion of the parser.
void OnAssertion(const quillet::AssertionFailure& failure) {
    Require(quillet::fuzz::IsReachableByTokenizing(failure.text));
}

// The children of a node end with its last one, and no node stands in two places.
void CheckLinks(const quillet::TbTrParseNode& root) {
    std::vector<const quillet::TbTrParseNode*> pending{&root};
    std::unordered_set<const quillet::TbTrParseNode*> seen;
    while (!pending.empty()) {
        const quillet::TbTrParseNode* pNode = pending.back();
        pending.pop_back();
        Require(seen.insert(pNode).second);
        const quillet::TbTrParseNode* pLast = nullptr;
        for (const quillet::TbTrParseNode* pChild = pNode->FirstChild(); pChild;
             pChild = pNode->ChildAfter(*pChild)) {
            pending.push_back(pChild);
            pLast = pChild;
        }
        Require(pLast == pNode->LastChild());
    }
}

std::string Listing(const quillet::TbTrParseNode& root) {
    std::ostringstream stream;
    root.Dump(stream, 0);
    return stream.str();
}

// What a parse came to, in a form that two of them can be compared in.
std::string Outcome(const std::string& text, const quillet::CodePage& codePage) {
    quillet::TAVQTokenSequence sequence(codePage, text, /*skipLeadingSign=*/false,
                                        /*maxTokens=*/0);
    quillet::TablesCommand command(codePage, &sequence);
    const quillet::ParseStatus status = quillet::ParseTables(command);
    const quillet::ReportEntry report = command.FirstReport();
    const int kind = static_cast<int>(report.kind);
    if (status == quillet::ParseStatus::kSuccess) {
        Require(kind == 0);
        const quillet::NodeOwner root = command.ReleaseParseResult();
        Require(root != nullptr && root->GetChildCount() > 1);
        Require(command.TableLocations().size() == root->GetChildCount() - 1);
        CheckLinks(*root);
        return Listing(*root);
    }
    Require(command.ParseResult() == nullptr);
    if (status == quillet::ParseStatus::kStackExhausted) {
        Require(kind == 0);
        return "exhausted";
    }
    Require(1 <= kind && kind <= 4 && report.line >= 1 && report.column >= 0);
    Require((kind == 1) == (report.subcommand != quillet::kNoNodeType));
    return std::to_string(kind) + "@" + std::to_string(report.line) + ":" +
           std::to_string(report.column);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const quillet::ScopedAssertionHandler handler(OnAssertion);
    const std::string text = CommandText(data, size);
    const quillet::CodePage& codePage =
        data[0] % 2 == 0 ? quillet::CodePage::Utf8() : quillet::CodePage::Windows1252();
    try {
        const std::string first = Outcome(text, codePage);
        Require(Outcome(text, codePage) == first);
    } catch (const quillet::ParseError&) {
        // A text that is no syntax never reaches the parser.
    }
    return 0;
}
