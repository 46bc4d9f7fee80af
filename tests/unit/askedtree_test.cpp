// Where the conversion reads a whole command, the outline says the same as the parse tree. Neither
// of the two readers knows of the other.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "outline/askedcommand.h"
#include "outlinetext.h"
#include "parser/tbtrnodeviews.h"
#include "tablesparsing.h"

namespace quillet::outline {
namespace {

Name NameOf(const TAVQToken& token) {
    return {std::string(token.Text(true)), std::string(token.Text(false))};
}

Literal LiteralOf(const TAVQToken* pToken) {
    if (pToken == nullptr) return {};
    const std::string source(pToken->Text(true));
    const bool isNumber = pToken->Type() == TokenCodes::kNumber;
    // Blanks after a text, and a "+" without effect, are no part of it.
    return {std::string(pToken->Text(false)),
            isNumber ? source : source.substr(0, source.rfind('\'') + 1)};
}

// The functions of the commands below, each of which begins with three letters of its own.
constexpr std::array<std::string_view, 5> kFunctions = {"COUNT", "CPCT", "MEAN", "PTILE", "RPCT"};

Name FunctionOf(const TAVQToken& token) {
    Name name = NameOf(token);
    for (const std::string_view function : kFunctions) {
        if (name.key.substr(0, 3) == function.substr(0, 3)) name.key = function;
    }
    return name;
}

// The outline of a parse tree, as far as a tree tells it: without lines and without what follows
// from several parts of a command.
class TreeOutline {
public:
    CommandOutline Read(const TbTrParseNode& root) {
        const CommandView command(root);
        for (const TbTrParseNode* pGlobal : NodeChildren(command.Globals())) ReadGlobal(*pGlobal);
        for (const TbTrParseNode* pGroup : command.TableGroups()) {
            ReadTable(TableGroupView(*pGroup));
        }
        return std::move(m_outline);
    }

private:
    void ReadGlobal(const TbTrParseNode& node) {
        Settings& settings = m_outline.settings;
        const NodeType value = SettingView(node).Value();
        switch (node.GetNodeType()) {
            case TB_AUTOLABEL:
                settings.autoLabel = value == TB_ON    ? AutoLabel::kOn
                                     : value == TB_OFF ? AutoLabel::kOff
                                                       : AutoLabel::kDefault;
                break;
            case TB_BASE:
                settings.base = value == SP_ALL         ? CaseBase::kAll
                                : value == TB_QUALIFIED ? CaseBase::kQualified
                                                        : CaseBase::kAnswering;
                break;
            case TB_GBASE:
                settings.groupBase =
                    value == TB_RESPONSES ? GroupBase::kResponses : GroupBase::kCases;
                break;
            case TB_MISSINGSUBCOM:
                settings.missing = value == TB_INCLUDE ? Missing::kInclude : Missing::kExclude;
                break;
            case TB_FORMAT:
                ReadFormat(node);
                break;
            case TB_OBSERVATION:
                for (const TbTrParseNode* pVariable : ObservationView(node).Variables()) {
                    m_outline.scaleVariables.push_back({NameOf(*pVariable->GetToken()), Name(), 0});
                    Declare(*pVariable->GetToken(), Role::kScale);
                }
                break;
            case TB_FTOTAL:
            case TB_PTOTAL:
                for (const TbTrParseNode* pTotal : ChildrenOf(node))
                    ReadTotal(*pTotal, node.GetNodeType());
                break;
            default:
                ReadSet(node);
        }
    }

    // Each setting counts as it was given last, in whichever FORMAT that was.
    void ReadFormat(const TbTrParseNode& node) {
        const std::optional<FormatView> format = FormatView::Of(node);
        Settings& settings = m_outline.settings;
        if (format->EmptyCells() != kNoNodeType) {
            settings.emptyCells =
                format->EmptyCells() == TB_ZERO ? EmptyCells::kZero : EmptyCells::kBlank;
        }
        if (format->Missing() != nullptr) settings.missingText = LiteralOf(format->Missing());
    }

    void ReadTotal(const TbTrParseNode& node, NodeType subcommand) {
        const std::optional<TotalView> total = TotalView::Of(node, subcommand);
        const bool isAfter = total->Type() == TB_FTOTAL;
        m_outline.declaredTotals.push_back({NameOf(*total->Name()), LiteralOf(total->Label()),
                                            isAfter ? Position::kAfter : Position::kBefore, 0});
        Declare(*total->Name(), Role::kTotal);
    }

    void ReadSet(const TbTrParseNode& node) {
        const std::optional<SetView> view = SetView::Of(node);
        ResponseSet set;
        set.name = NameOf(*view->Name().GetToken());
        set.label = LiteralOf(view->Label());
        set.countsOneValue = view->CountsOneValue();
        if (set.countsOneValue) set.value = LiteralOf(&view->CountedValue());
        for (const TbTrParseNode* pMember : view->Members()) {
            const std::optional<SetMemberView> member = SetMemberView::Of(pMember);
            VariableRange& range = set.variables.emplace_back();
            range.first = NameOf(*member->First().GetToken());
            if (member->Last() != nullptr) range.last = NameOf(*member->Last()->GetToken());
        }
        m_outline.sets.push_back(std::move(set));
        Declare(*view->Name().GetToken(), Role::kSet);
    }

    void Declare(const TAVQToken& name, Role role) {
        m_roles.try_emplace(std::string(name.Text(false)), role);
    }

    void ReadTable(const TableGroupView& group) {
        TableOutline table;
        const TableView view(*group.Table());
        for (std::size_t axis = 0; axis < kAxes; ++axis) {
            const TbTrParseNode* pDimension = view.Dimension(axis + 1);
            if (pDimension != nullptr) ReadNode(*pDimension, table.dimensions[axis]);
        }
        std::size_t sorts = 0;
        for (const TbTrParseNode* pNode : group.Subcommands()) {
            switch (pNode->GetNodeType()) {
                case TB_STATISTICS:
                    table.hasStatistics = true;
                    for (const TbTrParseNode* pFunction : ChildrenOf(*pNode)) {
                        ReadFunction(*StatFunctionView::Of(pFunction), table);
                    }
                    break;
                case TB_SORT:
                    ReadSort(SortView(*pNode), sorts++, table);
                    break;
                default:
                    ReadHeading(*pNode, table);
            }
        }
        table.missing = m_outline.settings.missing;
        m_outline.tables.push_back(std::move(table));
    }

    // The commands below are no deep ones.
    void ReadNode(const TbTrParseNode& tree, Dimension& dimension) {
        const std::size_t at = dimension.size();
        Node& node = dimension.emplace_back();
        switch (tree.GetNodeType()) {
            case SP_PLUS:
                node.role = Role::kStacking;
                break;
            case SP_GREATERTHAN:
                node.role = Role::kNesting;
                break;
            case TB_STATISTICS:
                node.role = Role::kStatistics;
                break;
            case TB_LABELS:
                node.role = Role::kLabels;
                break;
            default: {
                node.name = NameOf(*tree.GetToken());
                const auto role = m_roles.find(node.name.key);
                if (role != m_roles.end()) node.role = role->second;
            }
        }
        if (quillet::IsOperator(tree.GetNodeType())) {
            for (const TbTrParseNode* pOperand : ChildrenOf(tree)) ReadNode(*pOperand, dimension);
        }
        dimension[at].end = dimension.size();
    }

    static void ReadFunction(const StatFunctionView& view, TableOutline& table) {
        Assignment function;
        function.function = FunctionOf(view.Name());
        function.isUnweighted = view.IsUnweighted();
        if (view.Number() != nullptr) function.argument = view.Number()->Text(true);
        function.baseVariables.first = table.baseVariables.size();
        for (const TbTrParseNode* pName : view.BaseNames()) {
            table.baseVariables.push_back(NameOf(*pName->GetToken()));
        }
        function.baseVariables.count = table.baseVariables.size() - function.baseVariables.first;
        if (view.Arguments().IsEmpty()) table.assignments.push_back(function);
        for (const TbTrParseNode* pArgument : view.Arguments()) {
            const std::optional<StatArgumentView> argument = StatArgumentView::Of(pArgument);
            Assignment& assignment = table.assignments.emplace_back(function);
            if (argument->Variable() != nullptr) {
                assignment.on = NameOf(*argument->Variable()->GetToken());
            }
            assignment.label = LiteralOf(argument->Label());
            if (argument->Format() != nullptr) {
                assignment.format.text = argument->Format()->Text(true);
            }
        }
    }

    static void ReadSort(const SortView& view, std::size_t number, TableOutline& table) {
        for (const TbTrParseNode* pKey : view.Keys()) {
            const std::optional<SortKeyView> key = SortKeyView::Of(pKey);
            Sort& sort = table.sorts.emplace_back();
            sort.variable = NameOf(*key->Variable().GetToken());
            sort.direction = view.IsAscending() ? Direction::kAscending : Direction::kDescending;
            sort.subcommand = number;
            if (key->Function() == nullptr) continue;
            const std::optional<SortFunctionView> function = SortFunctionView::Of(*key->Function());
            sort.key = FunctionOf(function->Name());
            if (function->Argument() != nullptr) {
                sort.of = NameOf(*function->Argument()->GetToken());
            }
        }
    }

    static void ReadHeading(const TbTrParseNode& node, TableOutline& table) {
        Heading heading;
        heading.kind = node.GetNodeType() == TB_CAPTION  ? HeadingKind::kCaption
                       : node.GetNodeType() == TB_CORNER ? HeadingKind::kCorner
                                                         : HeadingKind::kTitle;
        for (const TbTrParseNode* pText : ChildrenOf(node)) {
            heading.texts.push_back(LiteralOf(pText->GetToken()));
        }
        table.headings.push_back(std::move(heading));
    }

    CommandOutline m_outline;
    std::map<std::string, Role> m_roles;
};

// A text that says everything that both readers know.
std::string Comparable(CommandOutline outline) {
    Settings& settings = outline.settings;
    settings.emptyCellsLine = settings.missingTextLine = settings.missingLine = 1;
    settings.baseLine = settings.groupBaseLine = settings.autoLabelLine = 1;
    for (VariableRange& range : outline.scaleVariables) range.line = 1;
    for (DeclaredTotal& total : outline.declaredTotals) total.line = 1;
    for (ResponseSet& set : outline.sets) set.line = 1;
    for (TableOutline& table : outline.tables) {
        table.line = 1;
        table.totals.clear();
        table.statisticsLabels = table.categoryLabels = LabelPosition();
        table.hasAutomaticTitle = false;
        for (Assignment& assignment : table.assignments) {
            assignment.line = 1;
            assignment.format = {assignment.format.text, "", -1, -1};
            assignment.percentOf = PercentOf::kNothing;
        }
        for (Sort& sort : table.sorts) sort.line = 1;
        for (Heading& heading : table.headings) heading.line = 1;
    }
    outline.remarks.clear();
    return TextOfOutline(outline);
}

// Writes commands of all kinds, most of which can be parsed.
class CommandWriter {
public:
    explicit CommandWriter(unsigned seed) : m_random(seed) {}

    std::string Write() {
        std::string text = "TABLES";
        for (unsigned count = Below(4); count > 0; --count) text += Global();
        text += "/TABLE=" + Expressions();
        for (unsigned count = Below(5); count > 0; --count) text += Local();
        return text;
    }

private:
    unsigned Below(unsigned limit) { return static_cast<unsigned>(m_random()) % limit; }

    template <std::size_t kCount>
    std::string OneOf(const std::string_view (&pieces)[kCount]) {
        return std::string(pieces[Below(kCount)]);
    }

    std::string Variable() {
        return OneOf({"a", "b", "C", "x", "y", "t", "n", "g", "labels", "zero", "$h", "on"});
    }
    std::string Variables() {
        std::string text = Variable();
        for (unsigned count = Below(3); count > 0; --count) text += " " + Variable();
        return text;
    }
    std::string Text() { return OneOf({"'A'", "'it''s'", "'a'+'b'", "''", "'x' \n", "'y.' + "}); }
    std::string MaybeText() { return Below(2) == 0 ? " " + Text() : ""; }

    std::string Global() {
        switch (Below(12)) {
            case 0:
                return "/OBSERVATION=" + Variables() + "\n";
            case 1:
                return "/FTOTAL=t" + MaybeText() + OneOf({"", " u", " x 'X'"}) + "\n";
            case 2:
                return "/PTOTAL=n" + MaybeText() + "\n";
            case 3:
                return "/MRGROUP=g" + MaybeText() + " a b TO c\n";
            case 4:
                return "/MDGROUP=$h" + MaybeText() + " a b" + OneOf({"(1)", "(-1)", "( 'x' )"});
            case 5:
                return "/FORMAT=" +
                       OneOf({"ZERO", "BLANK", "MISSING('-')", "zer mis('x') bla", ""});
            case 6:
                return "/MISSING=" + OneOf({"INCLUDE", "EXCLUDE", "inc"});
            case 7:
                return "/BASE" + OneOf({"", "=ALL", "=QUALIFIED", " ANS"});
            case 8:
                return "/GBASE" + OneOf({"", "=CASES", "=RESPONSES"});
            case 9:
                return "/AUTOLABEL" + OneOf({"", "=ON", "=OFF", "=DEFAULT", "/ON"});
            case 10:
                return OneOf({"/BREAK=BY a", "/BREAK=+b", "/BREAK=>c ", "/BREAK "});
            default:
                return OneOf({"/BOXCHARS='x' y ", "/LAYOUT 1", "/ / ", "= ", "/* c */", "\n"});
        }
    }

    std::string Local() {
        switch (Below(8)) {
            case 0:
                return "/TABLE=" + Expressions();
            case 1:
                return "\n/SORT=" + OneOf({"", "ASC ", "DESCENDING "}) + Variable() +
                       OneOf({"", " (COUNT)", " (MEA(x)) b", " c (CPCT(a))"});
            case 2:
                return OneOf({"/TITLE=", "/CAPTION ", "/CORNER="}) + Text() + MaybeText();
            case 3:
                return OneOf({"/TITLE", "/BREAK=+b", "/WRITE=x"});
            default:
                return "/STATISTICS=" + Function() + Function() + "\n";
        }
    }

    std::string Expressions() {
        std::string text = Expression(3);
        for (unsigned count = Below(3); count > 0; --count) text += " BY " + Expression(2);
        return text;
    }
    std::string Expression(unsigned depth) {
        const unsigned kind = Below(depth == 0 ? 2 : 6);
        if (kind == 0) return Variable();
        if (kind == 1) return OneOf({"a", "(b)", "(STATISTICS)", "(lab)", "((c))"});
        const std::string left = Expression(depth - 1);
        const std::string text = left + OneOf({"+", " > ", " GT ", " +\n"}) + Expression(depth - 1);
        return kind == 2 ? text : "(" + text + ")";
    }

    std::string Function() {
        std::string text = OneOf({" ", "U ", " UNWEIGHTED "});
        text += OneOf({"COUNT", "cpct", "MEAns", "PTILE 25", "PTI -5", "RPC"});
        switch (Below(4)) {
            case 0:
                return text;
            case 1:
                return text + OneOf({"()", "('l')", "((F8.2))", "('l' (F5))", "((F5) 'l':a)"});
            default:
                text += "(" + Variable() + Display() + " " + Variable() + Display();
                return text + OneOf({")", ":a)", ":a,b C)"});
        }
    }
    std::string Display() {
        return OneOf({"", "", " 'l'", "(F8.2)", " 'l' (F5)", "(PCT5.1) 'l'", ","});
    }

    std::mt19937 m_random;
};

TEST(AskedTreeTest, SaysWhatTheTreeSays) {
    constexpr unsigned kCount = 3000;
    unsigned parsedCount = 0;
    for (unsigned seed = 0; seed < kCount; ++seed) {
        const std::string text = CommandWriter(seed).Write();
        SCOPED_TRACE(text);
        tablesparsing::Command parsed(text);
        if (ParseTables(parsed.command) != ParseStatus::kSuccess) continue;
        ++parsedCount;
        ASSERT_EQ(Comparable(ReadAskedCommand(CodePage::Utf8(), text, false)),
                  Comparable(TreeOutline().Read(*parsed.command.ParseResult())));
    }
    EXPECT_GT(parsedCount, kCount / 3);
    RecordProperty("parsed", static_cast<int>(parsedCount));
}

// The tables of an outline that a conversion sees, without what other subcommands say of them.
std::vector<std::string> TablesSeen(CommandOutline outline) {
    for (const TakenByFormat& taken : outline.takenByFormat) {
        if (taken.table != kNowhere) outline.tables[taken.table].dimensions[0].clear();
    }
    std::vector<std::string> tables;
    for (TableOutline& table : outline.tables) {
        if (table.dimensions[0].empty()) continue;
        std::string& text = tables.emplace_back();
        for (Dimension& dimension : table.dimensions) {
            for (Node& node : dimension) {
                if (!IsOperator(node.role) && !node.name.IsEmpty()) node.role = Role::kCategory;
            }
            text += TextOfDimension(dimension) + " ";
        }
    }
    return tables;
}

// How many of its subcommands say something of a kind, of those that a conversion sees.
std::map<std::string, std::ptrdiff_t> CountsSeen(const CommandOutline& outline) {
    std::map<std::string, std::ptrdiff_t> counts;
    counts["OBSERVATION"] = std::ssize(outline.scaleVariables);
    counts["FTOTAL"] = std::ssize(outline.declaredTotals);
    const auto addHeadings = [&counts](const std::vector<Heading>& headings) {
        for (const Heading& heading : headings) {
            if (heading.subcommand.key == "TTITLE") continue;
            ++counts[heading.kind == HeadingKind::kTitle ? "TITLE" : "CORNER"];
        }
    };
    addHeadings(outline.headings);
    for (const TableOutline& table : outline.tables) {
        counts["STATISTICS"] += std::ssize(table.assignments);
        counts["SORT"] += std::ssize(table.sorts);
        addHeadings(table.headings);
    }
    for (const TakenByFormat& taken : outline.takenByFormat) --counts[taken.subcommand.key];
    for (const char* pOther : {"AUTOLABEL", "FORMAT", "LAYOUT", "MISSING", "TABLE", "TTITLE"}) {
        counts.erase(pOther);
    }
    std::erase_if(counts, [](const auto& count) { return count.second == 0; });
    return counts;
}

TEST(AskedTreeTest, KnowsWhatFormatTakesAlong) {
    constexpr std::string_view kFormats[] = {"/FORMAT",
                                             "/FORMAT=MISSING",
                                             "/FORMAT=ZERO MISSING",
                                             "/FORMAT MISSING(",
                                             "/FORMAT BLANK MISSING('x'",
                                             "/FORMAT=CWIDTH(1) MISSING",
                                             "/FORMAT=MISSING 5",
                                             "/FORMAT=ZERO",
                                             "/FORMAT=MISSING('x')",
                                             "/FORMAT=MISSING /BREAK=BY r ",
                                             "/FORMAT=NBOX(",
                                             "/FORMAT=MISSING(x"};
    constexpr std::string_view kOthers[] = {
        "/TABLE=a",         "/TABLE=b BY c",     "/TABLE=d + e", "/OBSERVATION=x", "/FTOTAL=t 'x'",
        "/TITLE='x'",       "/STATISTICS=COUNT", "/LAYOUT x",    "/TTITLE='x'",    "/BREAK=BY s",
        "/MISSING=INCLUDE", "/* c */",           "/SORT=a",      "/CORNER",        "/AUTOLABEL=ON"};
    unsigned parsedCount = 0;
    unsigned takenCount = 0;
    std::mt19937 random(1);
    const auto oneOf = [&random](const auto& pieces) {
        return " " + std::string(pieces[random() % std::size(pieces)]);
    };
    for (int number = 0; number < 5000; ++number) {
        std::string text = "TABLES";
        while (random() % 3 > 0) text += oneOf(kOthers);
        text += oneOf(kFormats);
        while (random() % 4 > 0) text += random() % 5 == 0 ? oneOf(kFormats) : oneOf(kOthers);
        text += " /TABLE=z";
        SCOPED_TRACE(text);
        tablesparsing::Command parsed(text);
        if (ParseTables(parsed.command) != ParseStatus::kSuccess) continue;
        ++parsedCount;
        const CommandOutline outline = ReadAskedCommand(CodePage::Utf8(), text, false);
        if (!outline.takenByFormat.empty()) ++takenCount;
        const CommandOutline tree = TreeOutline().Read(*parsed.command.ParseResult());
        ASSERT_EQ(TablesSeen(outline), TablesSeen(tree));
        ASSERT_EQ(CountsSeen(outline), CountsSeen(tree));
    }
    EXPECT_GT(parsedCount, 500U);
    EXPECT_GT(takenCount, 200U);
}

}  // namespace
}  // namespace quillet::outline
