// The conversion's grammar gives up a command at the first thing that does not fit, and forgets
// what a FORMAT swallows before anybody has seen it. Here each subcommand is read by itself, so
// that whatever one of them says is known.
#include "outline/askedcommand.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "outline/askednames.h"
#include "outline/askedreading.h"
#include "outline/askedtotals.h"
#include "outline/askedwords.h"
#include "outline/commandtokens.h"

namespace quillet::outline {

namespace {

// A subcommand: its word, and what stands up to the next one.
struct Subcommand {
    const CommandToken* pHead = nullptr;
    const SubcommandWord* pWord = nullptr;  // null: it is unknown
    Range arguments;                        // in AskedReader::m_arguments
    Range breakArguments;                   // of a TABLE: what BREAK adds
    bool isTakenByFormat = false;

    [[nodiscard]] AskedSubcommand What() const {
        return pWord == nullptr ? AskedSubcommand::kUnknown : pWord->subcommand;
    }
};

// Arguments of several subcommands that are taken along without being copied.
using Arguments = std::vector<const CommandToken*>;

class AskedReader {
public:
    AskedReader(const CodePage& codePage, const CommandTokens& command)
        : m_command(command), m_reading(codePage, m_outline) {}

    CommandOutline Read() {
        CutSubcommands();
        AddBreaks();
        FindTakenByFormat();
        Attempt(&AskedReader::ReadSubcommands);
        Attempt(&AskedReader::Complete);
        m_reading.Begin({});
        if (!m_command.rest.empty()) {
            m_reading.Note(Remark::Kind::kUnreadable, m_command.rest, m_command.restLine);
        }
        return std::move(m_outline);
    }

private:
    // What asks for too much ends there, with a remark.
    void Attempt(void (AskedReader::*step)()) {
        try {
            (this->*step)();
        } catch (const CommandTooLarge&) {
            m_reading.Note(Remark::Kind::kUnreadable, std::string_view(), m_line);
        }
    }

    [[nodiscard]] TokenPointers ArgumentsIn(const Range& range) const {
        return TokenPointers(m_arguments).subspan(range.first, range.count);
    }

    // A "/" separates. What no subcommand begins with goes on with the one before.
    void CutSubcommands() {
        const std::vector<CommandToken>& tokens = m_command.tokens;
        bool isAtHead = true;
        for (std::size_t index = 1; index < tokens.size(); ++index) {
            const CommandToken& token = tokens[index];
            if (token.type == TokenCodes::kOperator && token.Is(TokenCodes::kSlash)) {
                isAtHead = true;
            } else if (token.type == TokenCodes::kOperator && token.Is(TokenCodes::kEquals)) {
                continue;
            } else if (std::exchange(isAtHead, false) && BeginsSubcommand(token)) {
                m_subcommands.push_back(
                    {&token, FindSubcommand(token), {m_arguments.size(), 0}, {}});
            } else {
                AddArgument(token);
            }
        }
    }

    [[nodiscard]] bool BeginsSubcommand(const CommandToken& token) const {
        return token.IsWord() && (m_subcommands.empty() || !IsSetting(token));
    }

    void AddArgument(const CommandToken& token) {
        m_arguments.push_back(&token);
        if (m_subcommands.empty()) {
            m_reading.Unreadable({&m_arguments.back(), 1});
        } else {
            ++m_subcommands.back().arguments.count;
        }
    }

    // BREAK is for the tables after it, and for one that stands right before it.
    void AddBreaks() {
        Range current;
        Subcommand* pTable = nullptr;  // right before
        for (Subcommand& subcommand : m_subcommands) {
            if (subcommand.What() == AskedSubcommand::kTable) {
                subcommand.breakArguments = current;
                pTable = &subcommand;
                m_pUnusedBreak = nullptr;
            } else if (subcommand.What() != AskedSubcommand::kBreak) {
                pTable = nullptr;
            } else if (subcommand.arguments.count > 0) {
                current = subcommand.arguments;
                m_pUnusedBreak = pTable == nullptr ? &subcommand : nullptr;
                if (pTable != nullptr) pTable->breakArguments = current;
            }
        }
    }

    // A FORMAT that breaks off takes along what follows; it looks past BREAK.
    void FindTakenByFormat() {
        FormatEnd end = FormatEnd::kWhole;
        for (Subcommand& subcommand : m_subcommands) {
            const AskedSubcommand what = subcommand.What();
            if (what == AskedSubcommand::kBreak) continue;
            subcommand.isTakenByFormat = end == FormatEnd::kBrokenOff ||
                                         (end == FormatEnd::kEmpty && IsOfATable(subcommand));
            const bool isRead = what == AskedSubcommand::kFormat && !subcommand.isTakenByFormat;
            end = isRead ? EndOfFormat(ArgumentsIn(subcommand.arguments)) : FormatEnd::kWhole;
        }
    }

    // True for what may only stand after a TABLE.
    [[nodiscard]] static bool IsOfATable(const Subcommand& subcommand) {
        const AskedSubcommand what = subcommand.What();
        if (what == AskedSubcommand::kStatistics || what == AskedSubcommand::kSort) return true;
        const std::string_view word = subcommand.pWord == nullptr ? "" : subcommand.pWord->word;
        return word == "TITLE" || word == "CAPTION" || word == "CORNER";
    }

    void ReadSubcommands() {
        std::vector<const Subcommand*> early;  // before the table that they belong to
        for (const Subcommand& subcommand : m_subcommands) {
            const AskedSubcommand what = subcommand.What();
            const bool isLocal =
                what == AskedSubcommand::kStatistics || what == AskedSubcommand::kSort;
            m_line = subcommand.pHead->line;
            if (subcommand.isTakenByFormat) NoteTaken(subcommand);
            if (isLocal && m_outline.tables.empty()) {
                early.push_back(&subcommand);
                continue;
            }
            ReadSubcommand(subcommand);
            if (what != AskedSubcommand::kTable) continue;
            for (const Subcommand* pEarly : early) ReadSubcommand(*pEarly);
            early.clear();
        }
        for (const Subcommand* pEarly : early) {
            m_reading.Begin(NameOfHead(*pEarly));
            m_reading.Note(Remark::Kind::kUnreadable,
                           TextOf(m_reading.Page(), ArgumentsIn(pEarly->arguments)),
                           pEarly->pHead->line);
        }
    }

    void NoteTaken(const Subcommand& subcommand) {
        const bool isTable = subcommand.What() == AskedSubcommand::kTable;
        m_outline.takenByFormat.push_back({NameOfHead(subcommand),
                                           isTable ? m_outline.tables.size() : kNowhere,
                                           subcommand.pHead->line});
    }

    [[nodiscard]] Name NameOfHead(const Subcommand& subcommand) const {
        return subcommand.pWord == nullptr
                   ? NameOf(*subcommand.pHead)
                   : KeywordName(m_reading.Page(), *subcommand.pHead, subcommand.pWord->word);
    }

    void ReadSubcommand(const Subcommand& subcommand) {
        const TokenPointers arguments = ArgumentsIn(subcommand.arguments);
        const long line = subcommand.pHead->line;
        m_reading.Begin(NameOfHead(subcommand));
        switch (subcommand.What()) {
            case AskedSubcommand::kUnknown:
                return Pass(Remark::Kind::kUnknown, subcommand);
            case AskedSubcommand::kPassedOver:
                return Pass(Remark::Kind::kPassedOver, subcommand);
            case AskedSubcommand::kHeading:
                return ReadHeading(subcommand);
            case AskedSubcommand::kTable:
                return ReadTable(subcommand);
            case AskedSubcommand::kStatistics:
                return ReadStatistics(m_reading, arguments, m_outline.tables.back());
            case AskedSubcommand::kSort:
                return ReadSort(m_reading, arguments, m_sorts++, m_outline.tables.back());
            case AskedSubcommand::kAutoLabel:
                return ReadAutoLabel(m_reading, arguments, line);
            case AskedSubcommand::kBase:
                return ReadBase(m_reading, arguments, line);
            case AskedSubcommand::kGroupBase:
                return ReadGroupBase(m_reading, arguments, line);
            case AskedSubcommand::kMissing:
                return ReadMissing(m_reading, arguments, line);
            case AskedSubcommand::kFormat:
                return ReadFormat(m_reading, arguments);
            case AskedSubcommand::kObservation:
            case AskedSubcommand::kFollowingTotal:
            case AskedSubcommand::kPrecedingTotal:
            case AskedSubcommand::kCategorySet:
            case AskedSubcommand::kDichotomySet:
                return ReadDeclarations(subcommand);
            case AskedSubcommand::kBreak:
                if (&subcommand == m_pUnusedBreak) m_reading.Unreadable(arguments);
                return;
        }
    }

    void Pass(Remark::Kind kind, const Subcommand& subcommand) {
        m_reading.Note(kind, TextOf(m_reading.Page(), ArgumentsIn(subcommand.arguments)),
                       subcommand.pHead->line);
    }

    void ReadDeclarations(const Subcommand& subcommand) {
        const TokenPointers arguments = ArgumentsIn(subcommand.arguments);
        const std::size_t scales = m_outline.scaleVariables.size();
        const std::size_t totals = m_outline.declaredTotals.size();
        const std::size_t sets = m_outline.sets.size();
        const AskedSubcommand what = subcommand.What();
        if (what == AskedSubcommand::kObservation) {
            ReadObservation(m_reading, arguments);
        } else if (what == AskedSubcommand::kFollowingTotal) {
            ReadDeclaredTotals(m_reading, arguments, Position::kAfter);
        } else if (what == AskedSubcommand::kPrecedingTotal) {
            ReadDeclaredTotals(m_reading, arguments, Position::kBefore);
        } else {
            ReadSet(m_reading, arguments, what == AskedSubcommand::kDichotomySet,
                    subcommand.pHead->line);
        }
        for (std::size_t at = scales; at < m_outline.scaleVariables.size(); ++at) {
            m_names.AddScale(m_outline.scaleVariables[at]);
        }
        for (std::size_t at = totals; at < m_outline.declaredTotals.size(); ++at) {
            m_names.AddTotal(m_outline.declaredTotals[at].name, at);
        }
        for (std::size_t at = sets; at < m_outline.sets.size(); ++at) {
            m_names.AddSet(m_outline.sets[at].name);
        }
    }

    void ReadHeading(const Subcommand& subcommand) {
        Heading heading;
        heading.kind = subcommand.pWord->heading;
        heading.subcommand = NameOfHead(subcommand);
        heading.line = subcommand.pHead->line;
        TokenCursor cursor(ArgumentsIn(subcommand.arguments));
        while (!cursor.AtEnd()) {
            if (cursor.Peek().IsLiteral()) {
                heading.texts.push_back(LiteralOf(cursor.Take()));
            } else {
                m_reading.SkipTo(cursor,
                                 [](const CommandToken& token) { return token.IsLiteral(); });
            }
        }
        std::vector<Heading>& headings =
            m_outline.tables.empty() ? m_outline.headings : m_outline.tables.back().headings;
        headings.push_back(std::move(heading));
    }

    void ReadTable(const Subcommand& subcommand) {
        const TokenPointers arguments = ArgumentsIn(subcommand.arguments);
        const TokenPointers added = ArgumentsIn(subcommand.breakArguments);
        m_sorts = 0;
        TableOutline& table = m_outline.tables.emplace_back();
        table.line = subcommand.pHead->line;
        if (arguments.empty()) Pass(Remark::Kind::kUnreadable, subcommand);
        if (added.empty()) return ReadExpression(m_reading, arguments, table);
        // The first time is what the command says itself.
        if (std::exchange(m_pLastBreak, added.data()) == added.data()) Charge(added);
        Arguments together(arguments.begin(), arguments.end());
        together.insert(together.end(), added.begin(), added.end());
        ReadExpression(m_reading, together, table);
    }

    void Charge(TokenPointers added) {
        for (const CommandToken* pToken : added) {
            m_reading.Budget().ChargeCopies(CommandBudget::kTokenCopy + pToken->source.size() +
                                            pToken->value.size());
        }
    }

    // What can be told only when all declarations and settings are known.
    void Complete() {
        m_names.Finish();
        for (TableOutline& table : m_outline.tables) {
            m_line = table.line;
            CompleteNodes(table);
            FindTotals(table, m_names, m_outline.declaredTotals, m_reading.Budget());
            for (Assignment& assignment : table.assignments) CompletePercentage(assignment);
            const Settings& settings = m_outline.settings;
            table.missing = settings.missing;
            table.hasAutomaticTitle =
                settings.autoLabel == AutoLabel::kOn &&
                std::none_of(table.headings.begin(), table.headings.end(),
                             [](const Heading& one) { return one.kind == HeadingKind::kTitle; });
        }
        std::stable_sort(
            m_outline.remarks.begin(), m_outline.remarks.end(),
            [](const Remark& one, const Remark& other) { return one.line < other.line; });
    }

    void CompleteNodes(TableOutline& table) {
        for (const Axis axis : {Axis::kRows, Axis::kColumns, Axis::kLayers}) {
            for (Node& node : table.dimensions[static_cast<std::size_t>(axis)]) {
                if (node.role == Role::kCategory) node.role = m_names.RoleOf(node.name.key);
                if (node.role == Role::kStatistics) Place(table.statisticsLabels, axis, node);
                if (node.role == Role::kLabels) Place(table.categoryLabels, axis, node);
            }
        }
        table.statisticsLabels.isVisible = table.hasStatistics;
    }

    // Of several markers the first counts.
    static void Place(LabelPosition& labels, Axis axis, const Node& marker) {
        if (labels.axis != Axis::kNone) return;
        labels.axis = axis;
        labels.line = marker.line;
    }

    void CompletePercentage(Assignment& assignment) const {
        const PercentageOf percentage = PercentageOfFunction(assignment.function.key);
        if (percentage == PercentageOf::kNothing) return;
        assignment.percentOf =
            assignment.baseVariables.count > 0 ? PercentOf::kBaseVariables : PercentOf::kTable;
        const Settings& settings = m_outline.settings;
        const Counted group =
            settings.groupBase == GroupBase::kResponses ? Counted::kResponses : Counted::kCases;
        switch (percentage) {
            case PercentageOf::kCases:
                assignment.counted = CasesOf(settings.base);
                assignment.against = assignment.counted;
                if (m_names.RoleOf(assignment.on.key) != Role::kSet) return;
                assignment.counted = Counted::kCases;
                assignment.against = group;
                return;
            case PercentageOf::kResponses:
                assignment.counted = Counted::kResponses;
                assignment.against = group;
                return;
            case PercentageOf::kValues:
                assignment.counted = Counted::kValues;
                assignment.against = Counted::kValues;
                return;
            case PercentageOf::kValidValues:
                assignment.counted = Counted::kValidValues;
                assignment.against = Counted::kValidValues;
                return;
            case PercentageOf::kNothing:
                return;
        }
    }

    [[nodiscard]] static Counted CasesOf(CaseBase base) {
        switch (base) {
            case CaseBase::kQualified:
                return Counted::kCases;
            case CaseBase::kAll:
                return Counted::kAllCases;
            case CaseBase::kAnswering:
                break;
        }
        return Counted::kValidCases;
    }

    const CommandTokens& m_command;
    CommandOutline m_outline;
    AskedReading m_reading;
    Arguments m_arguments;
    std::vector<Subcommand> m_subcommands;
    const Subcommand* m_pUnusedBreak = nullptr;  // no table has it
    AskedNames m_names;
    const CommandToken* const* m_pLastBreak = nullptr;  // what BREAK last added
    std::size_t m_sorts = 0;                            // of the last table
    long m_line = 1;                                    // of what is being read
};

}  // namespace

CommandOutline ReadAskedCommand(const CodePage& codePage, const std::string& text, bool isBatch) {
    const CommandTokens command = ReadCommandTokens(codePage, text, isBatch);
    return AskedReader(codePage, command).Read();
}

}  // namespace quillet::outline
