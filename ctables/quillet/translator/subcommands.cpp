#include "translator/subcommands.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/assertion.h"
#include "translator/summaryfunctions.h"
#include "translator/term.h"
#include "translator/treeediting.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "subcommands";

using Node = TbTrParseNode;

constexpr std::string_view kCountKey = "COUNT";

// The settings of a FORMAT subcommand. The parser has left one of each kind, the last.
struct FormatSettings {
    NodeType emptyCells = kNoNodeType;  // TB_BLANK or TB_ZERO
    const TAVQToken* pMissing = nullptr;
};

[[nodiscard]] bool ReadFormat(const Node& format, FormatSettings& settings) {
    for (std::size_t i = 0; i < format.GetChildCount(); ++i) {
        const Node* pSetting = format.GetChild(i);
        const NodeType nodeType = pSetting ? pSetting->GetNodeType() : kNoNodeType;
        if (nodeType == TB_BLANK || nodeType == TB_ZERO) {
            settings.emptyCells = nodeType;
            continue;
        }
        if (!QUILLET_ASSERT(nodeType == SP_SLITERAL, "nodeType == SP_SLITERAL")) return false;
        settings.pMissing = pSetting->GetToken();
    }
    return true;
}

// Writes the texts of a title subcommand, which may be null. They stand after `keyword`, which
// is left out with them; a `subcommand` goes in front if nothing was written yet.
void WriteTexts(const Node* pTexts, std::string_view subcommand, std::string_view keyword,
                OutputSequence& out) {
    bool isFirst = true;
    const std::size_t count = pTexts ? pTexts->GetChildCount() : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Node* pText = pTexts->GetChild(i);
        if (!pText) continue;
        if (out.IsEmpty()) out.Add(subcommand, false);
        if (isFirst) out.Add(keyword, false);
        out.Add(pText->GetToken()->Text(/*raw=*/true), /*leadingSpace=*/!isFirst);
        isFirst = false;
    }
}

// The title that AUTOLABEL stands for.
constexpr std::string_view kAutolabelTitle = "/TITLES TITLE=')TABLE'";

void WriteTableTitle(const Node& group, const GlobalSettings& settings, OutputSequence& out) {
    const Node* pTitle = LastTableSubcommand(group, TB_TITLE);
    if (!pTitle && settings.autolabel == TB_ON) {
        out.Add(kAutolabelTitle, false);
        return;
    }
    // TITLE= is one piece with its subcommand.
    const std::size_t count = pTitle ? pTitle->GetChildCount() : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Node* pText = pTitle->GetChild(i);
        if (!pText) continue;
        const bool isFirst = out.IsEmpty();
        if (isFirst) out.Add("/TITLES TITLE=", false);
        out.Add(pText->GetToken()->Text(/*raw=*/true), /*leadingSpace=*/!isFirst);
    }
}

// "COUNT(x)"
std::string KeyOf(std::string_view function, std::string_view argument) {
    std::string key(function);
    key.append("(").append(argument).append(")");
    return key;
}

class SortWriter {
public:
    SortWriter(const Node& statsDimension, const Node* pFirstMagnet,
               const TranslationContext& context)
        : m_pFirstMagnet(pFirstMagnet), m_context(context) {
        for (const Node* pLeaf : LeavesOf(statsDimension))
            m_statsNames.insert(UpperCaseName(*pLeaf));
    }

    [[nodiscard]] bool Write(const Node& sort, OutputSequence& out) const {
        if (!QUILLET_ASSERT(sort.GetChildCount() > 0, "sortChildCount > 0")) return false;
        const Node* pDirection = sort.GetChild(0);
        const bool ascending = pDirection && pDirection->GetNodeType() == TB_ASCENDING;
        for (std::size_t i = 1; i < sort.GetChildCount(); ++i) {
            const Node* pSortVar = sort.GetChild(i);
            if (!QUILLET_ASSERT(pSortVar && pSortVar->GetNodeType() == TBI_SORTVAR,
                                "pSortVar && pSortVar->GetNodeType() == TBI_SORTVAR") ||
                !QUILLET_ASSERT(pSortVar->GetToken(), "pSortVarTok")) {
                return false;
            }
            std::string key;
            if (!MakeKey(*pSortVar, key)) return false;
            if (!out.IsEmpty()) out.NewLine();
            out.Add("/CATEGORIES VAR=", false);
            out.Add(m_context.Types().OutputName(*pSortVar), false);
            out.Add("ORDER=", true);
            out.Add(ascending ? "A" : "D", false);
            out.Add("KEY=", true);
            out.Add(key, false);
        }
        return true;
    }

private:
    [[nodiscard]] bool MakeKey(const Node& sortVariable, std::string& key) const {
        key = kCountKey;
        const Node* pFunction = sortVariable.GetChild(0);
        if (pFunction && !MakeFunctionKey(*pFunction, key)) return false;
        if (key == kCountKey && !m_statsNames.contains(UpperCaseName(sortVariable)) &&
            HasFirstMagnet()) {
            const std::string magnet = m_context.Types().OutputName(*m_pFirstMagnet);
            m_context.ChargeRepeated(*m_pFirstMagnet, magnet.size());
            key = KeyOf(kCountKey, magnet);
        }
        return true;
    }

    [[nodiscard]] bool HasFirstMagnet() const {
        return QUILLET_ASSERT(m_pFirstMagnet, "pFirstMagnetVar") &&
               QUILLET_ASSERT(m_pFirstMagnet->GetToken(), "pFirstMagnetVarTok");
    }

    // The new command cannot sort by a percentage; the count gives the same order.
    [[nodiscard]] bool MakeFunctionKey(const Node& sortFunction, std::string& key) const {
        const TAVQToken* pToken = sortFunction.GetToken();
        if (!QUILLET_ASSERT(pToken, "pSortFuncTok")) return false;
        const SummaryFunction function = LookUpSummaryFunction(
            pToken->Text(/*raw=*/false), /*multipleResponse=*/false, m_context.Settings());
        if (function.name.empty()) {
            m_context.Report(TablesErrorKind::kUnknownSortFunction, *pToken);
            return false;
        }
        key = function.percent ? kCountKey : function.name;
        if (const Node* pArgument = sortFunction.GetChild(0)) {
            key = KeyOf(key, m_context.Types().OutputName(*pArgument));
        }
        return true;
    }

    const Node* m_pFirstMagnet;
    const TranslationContext& m_context;
    VariableNames m_statsNames;
};

}  // namespace

const TbTrParseNode* FirstTableSubcommand(const TbTrParseNode& group, NodeType type) {
    for (std::size_t i = 1; i < group.GetChildCount(); ++i) {
        const Node* pSubcommand = group.GetChild(i);
        if (pSubcommand && pSubcommand->GetNodeType() == type) return pSubcommand;
    }
    return nullptr;
}

const TbTrParseNode* LastTableSubcommand(const TbTrParseNode& group, NodeType type) {
    for (std::size_t i = group.GetChildCount(); i > 1; --i) {
        const Node* pSubcommand = group.GetChild(i - 1);
        if (pSubcommand && pSubcommand->GetNodeType() == type) return pSubcommand;
    }
    return nullptr;
}

bool WriteGlobalFormat(const GlobalSettings& settings, OutputSequence& out) {
    out.Clear();
    FormatSettings format;
    if (settings.pFormat && !ReadFormat(*settings.pFormat, format)) return false;
    out.Add("/FORMAT EMPTY=", false);
    out.Add(format.emptyCells == TB_ZERO ? "ZERO" : "BLANK", false);
    if (format.pMissing) {
        out.Add("MISSING=", true);
        out.Add(format.pMissing->Text(/*raw=*/true), false);
    }
    return true;
}

void WriteTitles(const TbTrParseNode& group, const GlobalSettings& settings, OutputSequence& out) {
    out.Clear();
    WriteTableTitle(group, settings, out);
    WriteTexts(LastTableSubcommand(group, TB_CAPTION), "/TITLES", " CAPTION=", out);
    // A corner alone has always been introduced without the final S.
    WriteTexts(LastTableSubcommand(group, TB_CORNER), "/TITLE", " CORNER=", out);
}

bool WriteSort(const TbTrParseNode& group, const TbTrParseNode& statsDimension,
               const TbTrParseNode* pFirstMagnet, const TranslationContext& context,
               OutputSequence& out) {
    out.Clear();
    const Node* pSort = FirstTableSubcommand(group, TB_SORT);
    return !pSort || SortWriter(statsDimension, pFirstMagnet, context).Write(*pSort, out);
}

}  // namespace quillet
