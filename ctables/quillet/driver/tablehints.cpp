// A hint names what the reader has to touch. It is read off the tokens, by the same few rules that
// the grammar has: a subcommand is what stands between slashes, three letters of a word decide.
#include "driver/tablehints.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "driver/commandwords.h"
#include "driver/hinttexts.h"
#include "driver/reasons.h"
#include "translator/summaryfunctions.h"

namespace quillet {

namespace {

constexpr std::array<std::string_view, 10> kGlobalWords = {
    "AUTOLABEL", "BASE",    "FORMAT",  "FTOTAL",      "GBASE",
    "MDGROUP",   "MISSING", "MRGROUP", "OBSERVATION", "PTOTAL"};
constexpr std::array<std::string_view, 5> kLocalWords = {"CAPTION", "CORNER", "SORT", "STATISTICS",
                                                         "TITLE"};
constexpr std::array<std::string_view, 3> kFormatSettings = {"BLANK", "MISSING", "ZERO"};

struct AllowedSettings {
    std::string_view subcommand;
    std::string_view list;
};

constexpr AllowedSettings kAllowedSettings[] = {
    {"AUTOLABEL", "ON, OFF or DEFAULT"},
    {"BASE", "ANSWERING, QUALIFIED or ALL"},
    {"GBASE", "CASES or RESPONSES"},
    {"MISSING", "INCLUDE or EXCLUDE"},
};

// What people write for functions whose names have other letters.
constexpr std::pair<std::string_view, std::string_view> kOtherFunctionNames[] = {
    {"AVERAGE", "MEAN"}, {"AVG", "MEAN"},      {"N", "COUNT or VALIDN"}, {"NUMBER", "COUNT"},
    {"PCT", "CPCT"},     {"PERCENT", "CPCT"},  {"SD", "STDDEV"},         {"SE", "SEMEAN"},
    {"STERR", "SEMEAN"}, {"TOTAL", "SUM"},     {"FREQUENCY", "COUNT"},   {"COLPCT", "CPCT"},
    {"ROWPCT", "CPCT"},  {"TABLEPCT", "CPCT"}, {"TPCT", "CPCT"},         {"PERCENTILE", "PTILE"}};

template <typename Words>
bool MeansOneOf(const PlacedToken& token, const Words& words) {
    return std::any_of(words.begin(), words.end(),
                       [&token](std::string_view word) { return token.Means(word); });
}

// How many letters have to be changed, put in or left out to make `right` of `left`. Both are
// short.
std::size_t DistanceBetween(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    for (std::size_t column = 0; column <= right.size(); ++column) row[column] = column;
    for (std::size_t line = 0; line < left.size(); ++line) {
        std::size_t diagonal = std::exchange(row[0], line + 1);
        for (std::size_t column = 0; column < right.size(); ++column) {
            const std::size_t changed = diagonal + (left[line] == right[column] ? 0 : 1);
            diagonal = row[column + 1];
            row[column + 1] = std::min({changed, row[column] + 1, row[column + 1] + 1});
        }
    }
    return row.back();
}

std::string NearestFunctions(std::string_view word) {
    constexpr std::size_t kLongest = 12;
    constexpr std::size_t kMost = 3;
    for (const auto& [other, known] : kOtherFunctionNames) {
        if (word == other) return std::string(known);
    }
    word = word.substr(0, kLongest);
    std::vector<std::pair<std::size_t, std::string_view>> names;
    for (const std::string_view name : SummaryFunctionNames()) {
        names.emplace_back(DistanceBetween(word, name), name);
    }
    std::stable_sort(names.begin(), names.end(),
                     [](const auto& one, const auto& two) { return one.first < two.first; });
    std::string list;
    for (std::size_t number = 0; number < kMost; ++number) {
        if (number > 0) list += number + 1 == kMost ? " and " : ", ";
        list += names[number].second;
    }
    return list;
}

class TablesHintFinder {
public:
    explicit TablesHintFinder(const FailedCommand& command)
        : m_command(command), m_tokens(command.Tokens()) {}

    std::string Find() {
        switch (m_command.Report().errorKind) {
            case ErrorKind::kSubcommandSyntax:
                return HintOnSubcommand();
            case ErrorKind::kTablesSyntax:
                return HintOnCommand();
            case ErrorKind::kObservationRange:
                return HintOnRange();
            case ErrorKind::kUnknownFunction:
            case ErrorKind::kUnknownSortFunction:
                return HintOnFunction();
            case ErrorKind::kTotalBesideScale:
                return HintBesideScale();
            case ErrorKind::kTotalWithoutStacking:
                return HintOnNestedTotal();
            case ErrorKind::kMisplacedTotal:
                return NamedHint(HintWording::kMisplacedTotal);
            case ErrorKind::kNothingToFollow:
                return NamedHint(HintWording::kNothingToFollow);
            case ErrorKind::kNothingToPrecede:
                return NamedHint(HintWording::kNothingToPrecede);
            case ErrorKind::kParenthesizedWord:
                return HintOnLongWord();
            case ErrorKind::kUnknown:
                return HintOnMarkers();
            default:
                return {};
        }
    }

private:
    [[nodiscard]] std::string Quote(std::string_view text) const {
        return Quoted(m_command.Page(), text);
    }
    [[nodiscard]] std::string QuoteToken(std::size_t index) const {
        return Quote(m_command.At(index).source);
    }

    // A sentence that names the token where the failure was found, and nothing else.
    [[nodiscard]] std::string NamedHint(HintWording wording) const {
        if (!m_command.HasErrorToken()) return {};
        const std::string name = QuoteToken(m_command.ErrorIndex());
        return HintSentence(wording, {.name = name});
    }

    // The failure is found at the parenthesis after the word.
    [[nodiscard]] std::string HintOnLongWord() const {
        if (!m_command.HasErrorToken()) return {};
        const std::size_t error = m_command.ErrorIndex();
        const bool isAfter = error > 0 && m_command.At(error).Is(TokenCodes::kRightParen);
        const std::string name = QuoteToken(isAfter ? error - 1 : error);
        return HintSentence(HintWording::kLongWord, {.name = name});
    }

    [[nodiscard]] bool PartMeans(const CommandPart& part, std::string_view word) const {
        return part.first < part.end && m_command.At(part.first).Means(word);
    }

    // Where the operands of a subcommand begin: after its word and the sign.
    [[nodiscard]] std::size_t OperandsOf(const CommandPart& part) const {
        const std::size_t next = std::min(part.first + 1, part.end);
        const bool hasSign = next < part.end && m_command.At(next).Is(TokenCodes::kEquals);
        return next + (hasSign ? 1 : 0);
    }

    [[nodiscard]] std::string HintOnSubcommand() const {
        const CommandPart* pPart = m_command.BrokenPart();
        if (pPart == nullptr || m_command.NameOf(*pPart).empty()) return {};
        const std::size_t begin = OperandsOf(*pPart);
        if (PartMeans(*pPart, "MDGROUP") && begin < pPart->end) {
            const bool hasValue = std::any_of(
                Place(begin), Place(pPart->end),
                [](const PlacedToken& token) { return token.Is(TokenCodes::kLeftParen); });
            const std::string name = QuoteToken(begin);
            if (!hasValue) return HintSentence(HintWording::kCountedValue, {.name = name});
        }
        HintParts parts;
        parts.name = m_command.NameOf(*pPart);
        parts.line = m_command.Report().errorLine;
        const std::size_t error = m_command.ErrorIndex();
        const bool isInside = error >= begin && error < pPart->end;
        if (isInside) {
            for (const AllowedSettings& allowed : kAllowedSettings) {
                if (!PartMeans(*pPart, allowed.subcommand)) continue;
                const std::string other = QuoteToken(error);
                parts.list = allowed.list;
                parts.other = other;
                return HintSentence(HintWording::kAllowedSettings, parts);
            }
        }
        const bool isOpen = isInside && error + 1 == pPart->end &&
                            m_command.At(error).operatorCode != TokenCodes::kNotOperator &&
                            !m_command.At(error).Is(TokenCodes::kRightParen);
        const bool isAtEnd = !isInside || isOpen;
        const std::string other = QuoteToken(isAtEnd ? pPart->end - 1 : error);
        parts.other = other;
        return HintSentence(isAtEnd ? HintWording::kSubcommandEnd : HintWording::kSubcommandAt,
                            parts);
    }

    [[nodiscard]] std::string HintOnCommand() const {
        const CommandPart* pPart = m_command.ErrorPart();
        if (pPart == nullptr) return {};
        if (std::string hint = HintOnFormat(*pPart); !hint.empty()) return hint;
        if (const long line = LineAfterBlankLine(m_command.Report(), true); line > 0) {
            return HintSentence(HintWording::kMissingPeriod, {.line = line});
        }
        if (!HasTableBefore(m_command.Parts().size())) {
            return HintSentence(HintWording::kNoTable, {});
        }
        if (std::string hint = HintOnBreak(*pPart); !hint.empty()) return hint;
        if (std::string hint = HintOnOrder(*pPart); !hint.empty()) return hint;
        const std::size_t error = m_command.ErrorIndex();
        const std::string name = QuoteToken(error);
        if (error > OperandsOf(*pPart) && m_command.At(error).IsWord() &&
            m_command.At(error - 1).IsWord() && PartMeans(*pPart, "TABLE")) {
            const std::string before = QuoteToken(error - 1);
            return HintSentence(HintWording::kTwoVariables, {.name = before, .other = name});
        }
        return HintSentence(HintWording::kCommandAt, {.name = name, .line = LineOfError()});
    }

    [[nodiscard]] long LineOfError() const { return m_command.Report().errorLine; }

    // One of its words is none that FORMAT may have beside those that it has.
    [[nodiscard]] std::string HintOnFormat(const CommandPart& part) const {
        if (!PartMeans(part, "FORMAT")) return {};
        std::string foreign;
        std::string known;
        int depth = 0;
        for (std::size_t index = OperandsOf(part); index < part.end; ++index) {
            const PlacedToken& token = m_command.At(index);
            if (token.Is(TokenCodes::kLeftParen)) ++depth;
            if (token.Is(TokenCodes::kRightParen)) --depth;
            if (depth > 0 || !token.IsWord()) continue;
            std::string& list = MeansOneOf(token, kFormatSettings) ? known : foreign;
            AddToList(token.source, list);
        }
        if (foreign.empty() || known.empty()) return {};
        return HintSentence(HintWording::kForeignFormat, {.other = known, .list = foreign});
    }

    // Whoever has more of them sees by the first what is meant.
    static void AddToList(std::string_view word, std::string& list) {
        constexpr std::size_t kMostBytes = 160;
        constexpr std::string_view kMore = ", ...";
        if (list.ends_with(kMore)) return;
        if (list.size() + word.size() > kMostBytes) {
            list += list.empty() ? "..." : kMore;
            return;
        }
        if (!list.empty()) list += ", ";
        list += word;
    }

    [[nodiscard]] std::string HintOnBreak(const CommandPart& part) const {
        const std::size_t begin = OperandsOf(part);
        if (!PartMeans(part, "BREAK") || begin >= part.end || !m_command.At(begin).IsWord()) {
            return {};
        }
        const std::string list = Quote(m_command.TextOf(begin, part.end));
        return HintSentence(HintWording::kBreakOfVariables, {.list = list});
    }

    // The subcommand itself is what does not fit: its word is where the failure was found.
    [[nodiscard]] std::string HintOnOrder(const CommandPart& part) const {
        const std::size_t error = m_command.ErrorIndex();
        if (error != part.first) return {};
        const auto number = static_cast<std::size_t>(&part - m_command.Parts().data());
        const PlacedToken& word = m_command.At(error);
        const CommandPart* pBefore = number > 1 ? &part - 1 : nullptr;
        if (pBefore != nullptr && !m_command.NameOf(*pBefore).empty() &&
            OperandsOf(*pBefore) == pBefore->end) {
            return HintSentence(HintWording::kEmptySubcommand,
                                {.name = m_command.NameOf(*pBefore)});
        }
        const bool isAfterTable = HasTableBefore(number);
        if (isAfterTable && MeansOneOf(word, kGlobalWords)) {
            return HintSentence(HintWording::kGlobalAfterTable, {.name = word.source});
        }
        if (!isAfterTable && MeansOneOf(word, kLocalWords)) {
            return HintSentence(HintWording::kLocalBeforeTable, {.name = word.source});
        }
        return {};
    }

    // The first part is the command's own word, which may be TABLE.
    [[nodiscard]] bool HasTableBefore(std::size_t number) const {
        const std::vector<CommandPart>& parts = m_command.Parts();
        if (number == 0) return false;
        return std::any_of(parts.begin() + 1, parts.begin() + static_cast<std::ptrdiff_t>(number),
                           [this](const CommandPart& part) { return PartMeans(part, "TABLE"); });
    }

    [[nodiscard]] std::string HintOnRange() const {
        for (const CommandPart& part : m_command.Parts()) {
            if (!PartMeans(part, "OBSERVATION")) continue;
            for (std::size_t index = part.first + 1; index + 1 < part.end; ++index) {
                if (!m_command.At(index).Is(TokenCodes::kTo)) continue;
                const std::string first = QuoteToken(index - 1);
                const std::string last = QuoteToken(index + 1);
                return HintSentence(HintWording::kRangeOfVariables, {.name = first, .other = last});
            }
        }
        return {};
    }

    [[nodiscard]] std::string HintOnFunction() const {
        if (!m_command.HasErrorToken()) return {};
        const PlacedToken& function = m_command.At(m_command.ErrorIndex());
        const std::string name = Quote(function.source);
        const std::string list = NearestFunctions(function.value);
        return HintSentence(HintWording::kUnknownFunction, {.name = name, .list = list});
    }

    [[nodiscard]] std::string HintOnNestedTotal() const {
        if (!m_command.HasErrorToken()) return {};
        const std::size_t error = m_command.ErrorIndex();
        const std::string name = QuoteToken(error);
        const std::string_view total = m_command.At(error).source;
        std::string expression;
        if (error >= 2 && m_command.At(error - 1).Is(TokenCodes::kGreaterThan) &&
            m_command.At(error - 2).IsWord()) {
            expression = std::string(m_command.At(error - 2).source) + " + " + std::string(total);
        } else if (error + 2 < m_tokens.size() &&
                   m_command.At(error + 1).Is(TokenCodes::kGreaterThan) &&
                   m_command.At(error + 2).IsWord()) {
            expression = std::string(m_command.At(error + 2).source) + " + " + std::string(total);
        }
        if (expression.empty()) return HintSentence(HintWording::kUnstackedTotal, {.name = name});
        expression = Quote(expression);
        return HintSentence(HintWording::kNestedTotal, {.name = name, .expression = expression});
    }

    // (STATISTICS) and (LABELS) may stand in one dimension of a table.
    [[nodiscard]] std::string HintOnMarkers() const {
        for (const CommandPart& part : m_command.Parts()) {
            if (!PartMeans(part, "TABLE") || part.first == 0) continue;
            std::array<int, 2> counts{};
            for (std::size_t index = part.first + 2; index + 1 < part.end; ++index) {
                const bool isInParentheses = m_command.At(index - 1).Is(TokenCodes::kLeftParen) &&
                                             m_command.At(index + 1).Is(TokenCodes::kRightParen);
                if (!isInParentheses) continue;
                const std::size_t row = m_command.At(index).Means("LABELS") ? 1 : 0;
                if (row == 0 && !m_command.At(index).Means("STATISTICS")) continue;
                if (++counts[row] < 2) continue;
                const std::string name = Quote(m_command.TextOf(index - 1, index + 2));
                return HintSentence(HintWording::kMarkerTwice, {.name = name});
            }
        }
        return {};
    }

    [[nodiscard]] std::vector<PlacedToken>::const_iterator Place(std::size_t index) const {
        return m_tokens.begin() + static_cast<std::ptrdiff_t>(index);
    }

    // ---- Totals beside scale variables ----

    enum class Sort { kScale, kFollowingTotal, kPrecedingTotal };

    // Of several declarations of a name the first decides.
    void ReadDeclarations() {
        constexpr std::pair<std::string_view, Sort> kDeclaring[] = {
            {"OBSERVATION", Sort::kScale},
            {"FTOTAL", Sort::kFollowingTotal},
            {"PTOTAL", Sort::kPrecedingTotal}};
        for (const CommandPart& part : m_command.Parts()) {
            for (const auto& [word, sort] : kDeclaring) {
                if (!PartMeans(part, word)) continue;
                for (std::size_t index = OperandsOf(part); index < part.end; ++index) {
                    const PlacedToken& token = m_command.At(index);
                    if (token.IsWord()) m_declared.try_emplace(token.value, sort);
                }
            }
        }
    }

    [[nodiscard]] std::optional<Sort> SortOf(const PlacedToken& token) const {
        const auto found = m_declared.find(token.value);
        return found == m_declared.end() ? std::nullopt : std::optional(found->second);
    }

    // An operand of a stacking: a variable, or variables nested without parentheses.
    struct Operand {
        std::size_t first = 0;
        std::size_t end = 0;
    };

    // Walks away from a total through the stacking in which it stands, over what one could write
    // without parentheses as well.
    class StackingWalker {
    public:
        // `part` is that of the total at `total`; `isForward` is the direction.
        StackingWalker(const FailedCommand& command, const CommandPart& part, std::size_t total,
                       bool isForward)
            : m_command(command), m_part(part), m_index(total), m_isForward(isForward) {}

        // The next operand; none at the end of the stacking and where parentheses matter.
        [[nodiscard]] std::optional<Operand> Next() {
            bool hasPlus = false;
            while (Step()) {
                const PlacedToken& token = m_command.At(m_index);
                if (token.Is(TokenCodes::kPlus)) {
                    hasPlus = true;
                } else if (hasPlus && token.IsWord()) {
                    return ReadOperand();
                } else if (!IsTransparent(token)) {
                    break;
                }
            }
            return std::nullopt;
        }

        // True when the walk ended where the stacking does.
        [[nodiscard]] bool IsAtEnd() const { return m_isAtEnd; }

    private:
        bool Step() {
            const bool canStep = m_isForward ? m_index + 1 < m_part.end : m_index > m_part.first;
            if (canStep) m_index = m_isForward ? m_index + 1 : m_index - 1;
            m_isAtEnd = !canStep || m_command.At(m_index).Is(TokenCodes::kBy) ||
                        m_command.At(m_index).Is(TokenCodes::kEquals);
            return canStep && !m_isAtEnd;
        }

        // The end of parentheses around the total. Into others the walk does not go: whether they
        // matter stands after them.
        [[nodiscard]] bool IsTransparent(const PlacedToken& token) const {
            return token.Is(m_isForward ? TokenCodes::kRightParen : TokenCodes::kLeftParen);
        }

        [[nodiscard]] std::optional<Operand> ReadOperand() {
            const std::size_t begin = m_index;
            while (true) {
                const std::size_t nesting = m_isForward ? m_index + 1 : m_index - 1;
                const std::size_t next = m_isForward ? m_index + 2 : m_index - 2;
                const bool isThere = m_isForward ? next < m_part.end : m_index >= m_part.first + 2;
                if (!isThere || !m_command.At(nesting).Is(TokenCodes::kGreaterThan)) break;
                if (!m_command.At(next).IsWord()) return std::nullopt;
                m_index = next;
            }
            return Operand{std::min(begin, m_index), std::max(begin, m_index) + 1};
        }

        const FailedCommand& m_command;
        const CommandPart& m_part;
        std::size_t m_index;
        bool m_isForward;
        bool m_isAtEnd = false;
    };

    [[nodiscard]] std::string HintBesideScale() {
        const CommandPart* pPart = m_command.ErrorPart();
        if (pPart == nullptr || !PartMeans(*pPart, "TABLE")) return {};
        ReadDeclarations();
        const std::size_t total = m_command.ErrorIndex();
        const bool isForward = SortOf(m_command.At(total)) == Sort::kPrecedingTotal;
        StackingWalker walker(m_command, *pPart, total, isForward);
        std::vector<Operand> scales;
        std::optional<Operand> categorical;
        while (!categorical) {
            const std::optional<Operand> operand = walker.Next();
            if (!operand) break;
            // Of a nesting the outermost variable has the total.
            const PlacedToken& variable = m_command.At(operand->first);
            const std::optional<Sort> sort = SortOf(variable);
            if (sort == Sort::kScale) {
                scales.push_back(*operand);
            } else if (!sort) {
                categorical = operand;
            }
        }
        if (scales.empty() || (!categorical && !walker.IsAtEnd())) return {};
        const std::string name = QuoteToken(total);
        const std::string scale = QuoteToken(scales.front().first);
        if (!categorical) {
            return HintSentence(
                isForward ? HintWording::kTotalBeforeScaleOnly : HintWording::kTotalAfterScaleOnly,
                {.name = name, .other = scale});
        }
        const std::string nearest = QuoteToken(categorical->first);
        const std::string expression =
            Quote(Rearranged(total, *categorical, std::move(scales), isForward));
        return HintSentence(
            isForward ? HintWording::kTotalBeforeScale : HintWording::kTotalAfterScale,
            {.name = name, .other = scale, .list = nearest, .expression = expression});
    }

    // The total, the categorical variable and the scale variables between them, so that the first
    // two are neighbors.
    [[nodiscard]] std::string Rearranged(std::size_t total, const Operand& categorical,
                                         std::vector<Operand> scales, bool isForward) const {
        std::vector<Operand> operands = {{total, total + 1}, categorical};
        operands.insert(operands.end(), scales.begin(), scales.end());
        if (!isForward) std::reverse(operands.begin(), operands.end());
        std::string text;
        for (const Operand& operand : operands) {
            if (!text.empty()) text += " + ";
            text += m_command.TextOf(operand.first, operand.end);
        }
        return text;
    }

    const FailedCommand& m_command;
    const std::vector<PlacedToken>& m_tokens;
    std::unordered_map<std::string_view, Sort> m_declared;
};

}  // namespace

long LineAfterBlankLine(const CommandReport& report, bool isAnywhere) {
    std::string_view rest = report.source;
    long line = report.firstLine;
    long found = 0;
    bool isAfterBlank = false;
    while (!rest.empty()) {
        if (report.errorLine != 0 && line > report.errorLine) break;
        const std::string_view text = rest.substr(0, rest.find('\n'));
        const std::size_t begin = text.find_first_not_of(" \t\r");
        if (begin == std::string_view::npos) {
            isAfterBlank = true;
        } else if (std::exchange(isAfterBlank, false)) {
            if (isAnywhere || !CommandAt(text.substr(begin)).empty()) found = line;
        }
        rest.remove_prefix(std::min(text.size() + 1, rest.size()));
        ++line;
    }
    return found;
}

std::string TablesHint(const FailedCommand& command) { return TablesHintFinder(command).Find(); }

}  // namespace quillet
