#include "translator/subcommands.h"

#include <optional>
#include <string>
#include <string_view>

#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"
#include "translator/summaryfunctions.h"
#include "translator/term.h"
#include "translator/treeediting.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "subcommands";

using Node = TbTrParseNode;

constexpr std::string_view kCountKey = "COUNT";

// The title that AUTOLABEL stands for.
constexpr std::string_view kAutolabelTitle = "/TITLES TITLE=')TABLE'";

// Writes what stands around one table, on a line that begins with the first of it.
class TitleWriter {
public:
    explicit TitleWriter(OutputSequence& out) : m_out(out) {}

    void WriteTableTitle(const TableGroupView& group, const GlobalSettings& settings) {
        const Node* pTitle = group.Last(TB_TITLE);
        if (!pTitle && settings.autolabel == TB_ON) return StartWith(kAutolabelTitle);
        // TITLE= is one piece with its subcommand.
        WriteTexts(pTitle, "/TITLES TITLE=", "");
    }

    // Writes the texts of a subcommand, which may be null. They stand after `keyword`, which is
    // left out with them; a `subcommand` goes in front if nothing was written yet.
    void WriteTexts(const Node* pTexts, std::string_view subcommand, std::string_view keyword) {
        bool isFirst = true;
        for (const Node* pText : NodeChildren(pTexts)) {
            if (!m_hasStarted) StartWith(subcommand);
            if (isFirst && !keyword.empty()) m_out.Add(keyword, false);
            m_out.Add(pText->GetToken()->Text(/*raw=*/true), /*leadingSpace=*/!isFirst);
            isFirst = false;
        }
    }

private:
    void StartWith(std::string_view text) {
        m_out.NewLine();
        m_out.Add(text, false);
        m_hasStarted = true;
    }

    OutputSequence& m_out;
    bool m_hasStarted = false;
};

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
        LeafWalk walk(statsDimension);
        while (const Node* pLeaf = walk.Next()) m_statsNames.insert(UpperCaseName(*pLeaf));
    }

    [[nodiscard]] bool Write(const Node& subcommand, OutputSequence& out) const {
        const SortView sort(subcommand);
        for (const Node* pKey : sort.Keys()) {
            const std::optional<SortKeyView> sortKey = SortKeyView::Of(pKey);
            std::string key;
            if (!sortKey || !MakeKey(*sortKey, key)) return false;
            out.NewLine();
            out.Add("/CATEGORIES VAR=", false);
            out.Add(m_context.Types().OutputName(sortKey->Variable()), false);
            out.Add("ORDER=", true);
            out.Add(sort.IsAscending() ? "A" : "D", false);
            out.Add("KEY=", true);
            out.Add(key, false);
        }
        return true;
    }

private:
    [[nodiscard]] bool MakeKey(const SortKeyView& sortKey, std::string& key) const {
        key = kCountKey;
        const Node* pFunction = sortKey.Function();
        if (pFunction && !MakeFunctionKey(*pFunction, key)) return false;
        if (key == kCountKey && !m_statsNames.contains(UpperCaseName(sortKey.Variable())) &&
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
    [[nodiscard]] bool MakeFunctionKey(const Node& node, std::string& key) const {
        const std::optional<SortFunctionView> sortFunction = SortFunctionView::Of(node);
        if (!sortFunction) return false;
        const TAVQToken& name = sortFunction->Name();
        const SummaryFunction function = LookUpSummaryFunction(
            name.Text(/*raw=*/false), /*multipleResponse=*/false, m_context.Settings());
        if (function.name.empty()) {
            m_context.Report(TablesErrorKind::kUnknownSortFunction, name);
            return false;
        }
        key = function.percent ? kCountKey : function.name;
        if (const Node* pArgument = sortFunction->Argument()) {
            key = KeyOf(key, m_context.Types().OutputName(*pArgument));
        }
        return true;
    }

    const Node* m_pFirstMagnet;
    const TranslationContext& m_context;
    VariableNames m_statsNames;
};

}  // namespace

bool WriteGlobalFormat(const GlobalSettings& settings, OutputSequence& out) {
    std::optional<FormatView> format = FormatView();
    if (settings.pFormat) format = FormatView::Of(*settings.pFormat);
    if (!format) return false;
    out.NewLine();
    out.Add("/FORMAT EMPTY=", false);
    out.Add(format->EmptyCells() == TB_ZERO ? "ZERO" : "BLANK", false);
    if (format->Missing()) {
        out.Add("MISSING=", true);
        out.Add(format->Missing()->Text(/*raw=*/true), false);
    }
    return true;
}

void WriteTitles(const TbTrParseNode& group, const GlobalSettings& settings, OutputSequence& out) {
    const TableGroupView tableGroup(group);
    TitleWriter writer(out);
    writer.WriteTableTitle(tableGroup, settings);
    writer.WriteTexts(tableGroup.Last(TB_CAPTION), "/TITLES", " CAPTION=");
    // A corner alone has always been introduced without the final S.
    writer.WriteTexts(tableGroup.Last(TB_CORNER), "/TITLE", " CORNER=");
}

bool WriteSort(const TbTrParseNode& group, const TbTrParseNode& statsDimension,
               const TbTrParseNode* pFirstMagnet, const TranslationContext& context,
               OutputSequence& out) {
    const Node* pSort = TableGroupView(group).First(TB_SORT);
    return !pSort || SortWriter(statsDimension, pFirstMagnet, context).Write(*pSort, out);
}

}  // namespace quillet
