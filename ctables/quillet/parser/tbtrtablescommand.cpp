#include "parser/tbtrtablescommand.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "platform/assertion.h"
#include "tokenizer/variablenames.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tbtrtablescommand";

constexpr int kFirstIndexAfterCommandWord = 1;
constexpr int kSubcommandPosition = 1;
constexpr int kFirstArgumentPosition = 2;

struct Keyword {
    std::string_view text;
    NodeType code;
};

// The subcommands, then the settings.
constexpr Keyword kKeywords[] = {
#define QUILLET_SUBCOMMAND(word, code) {word, code},
#define QUILLET_SETTING(word, code) {word, code},
#include "parser/tbtrcodes.def"
};

constexpr bool NoTwoKeywordsMeanTheSame() {
    for (const Keyword& keyword : kKeywords) {
        for (const Keyword& other : kKeywords) {
            if (&keyword != &other && keyword.text.substr(0, kSignificantBytes) ==
                                          other.text.substr(0, kSignificantBytes)) {
                return false;
            }
        }
    }
    return true;
}
static_assert(NoTwoKeywordsMeanTheSame(), "a keyword would never be found");

// The bytes of a word that count, as a number; those of a shorter word end in zeros.
constexpr std::uint32_t SignificantBits(std::string_view word) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kSignificantBytes && i < word.size(); ++i) {
        bits |= static_cast<std::uint32_t>(static_cast<unsigned char>(word[i])) << (8 * i);
    }
    return bits;
}

// Finds a keyword by a hash under which no two of them collide. Words of a command are looked up
// one by one, and most of them are none.
class KeywordTable {
public:
    constexpr KeywordTable() {
        while (!Fill()) m_multiplier += 2;
    }

    // The code of the keyword that `word`, in upper case, means; `kNoNodeType` for none.
    [[nodiscard]] constexpr NodeType Find(std::string_view word) const {
        const std::uint32_t bits = SignificantBits(word);
        const Entry& entry = m_entries[SlotOf(bits)];
        return entry.bits == bits ? entry.code : kNoNodeType;
    }

private:
    static constexpr unsigned kSizeBits = 8;

    struct Entry {
        std::uint32_t bits = 0;
        NodeType code = kNoNodeType;
    };

    [[nodiscard]] constexpr std::size_t SlotOf(std::uint32_t bits) const {
        return static_cast<std::uint32_t>(bits * m_multiplier) >> (32 - kSizeBits);
    }

    constexpr bool Fill() {
        m_entries = {};
        for (const Keyword& keyword : kKeywords) {
            const std::uint32_t bits = SignificantBits(keyword.text);
            Entry& entry = m_entries[SlotOf(bits)];
            if (entry.bits != 0) return false;
            entry = {bits, keyword.code};
        }
        return true;
    }

    std::uint32_t m_multiplier = 0x9E3779B1;
    std::array<Entry, std::size_t{1} << kSizeBits> m_entries;
};
constexpr KeywordTable kKeywordTable;

constexpr bool EveryKeywordIsFound() {
    return std::all_of(std::begin(kKeywords), std::end(kKeywords), [](const Keyword& keyword) {
        return kKeywordTable.Find(keyword.text) == keyword.code;
    });
}
static_assert(EveryKeywordIsFound());

constexpr NodeType kObsoleteSubcommands[] = {
#define QUILLET_OBSOLETE_SUBCOMMAND(word, code) code,
#include "parser/tbtrcodes.def"
};

constexpr std::string_view kSubcommandWords[] = {
#define QUILLET_SUBCOMMAND(word, code) word,
#include "parser/tbtrcodes.def"
};

// Whatever stands in these subcommands is passed over.
bool IsIgnoredSubcommand(NodeType subcommand) {
    return subcommand == TB_UNKNOWNSUBCOM ||
           std::find(std::begin(kObsoleteSubcommands), std::end(kObsoleteSubcommands),
                     subcommand) != std::end(kObsoleteSubcommands);
}

}  // namespace

TablesCommand::TablesCommand(const CodePage& codePage, TokenSequenceBase* pTokSeq)
    : m_codePage(codePage), m_pTokSeq(pTokSeq) {}

TablesToken TablesCommand::NextToken() {
    if (!QUILLET_ASSERT(m_pTokSeq, "m_pTokSeq") || m_shortage != Shortage::kNone) return {};
    if (m_position == 0) return FirstToken();
    Advance();
    if (AtSubcommandEnd()) return EndSubcommand();
    return DeliverCurrent();
}

void TablesCommand::SkipToNextSlash() {
    if (!QUILLET_ASSERT(m_pTokSeq, "m_pTokSeq")) return;
    if (m_returnPoint) {
        m_pTokSeq->SetNextIndex(*m_returnPoint);
        m_returnPoint.reset();
    }
    while (m_pTokSeq->Next() && !AtOperator(TokenCodes::kSlash)) {
    }
    m_pTokSeq->SetNextIndex(m_pTokSeq->CurrentIndex());
    // A TABLE that was passed over has no use for the BREAK tokens.
    m_currentSubcommand = kNoNodeType;
}

void TablesCommand::SetParseResult(NodeOwner root) { m_parseResult = std::move(root); }

NodeOwner TablesCommand::ReleaseParseResult() { return std::move(m_parseResult); }

void TablesCommand::AddReport(ReportEntry entry) { m_reports.push_back(std::move(entry)); }

ReportEntry TablesCommand::FirstReport() const {
    if (m_shortage != Shortage::kNone) {
        return {TablesErrorKind::kTableTooLarge,
                m_placeGivenUp.last_line,
                m_placeGivenUp.last_column,
                TB_TABLE,
                {}};
    }
    return m_reports.empty() ? ReportEntry{} : m_reports.front();
}

void TablesCommand::FindEnd(const TAVQToken& token, int& line, int& column) const {
    line = column = 0;
    const std::string_view source = token.Text(/*raw=*/true);
    if (m_pTokSeq == nullptr || !m_pTokSeq->FindPosition(source, line, column)) return;
    column += static_cast<int>(source.size()) - 1;
}

void TablesCommand::GiveUp(Shortage shortage) noexcept {
    if (m_shortage != Shortage::kNone) return;
    m_shortage = shortage;
    if (m_pTokSeq == nullptr || AtEnd()) return;
    m_placeGivenUp.last_line = m_pTokSeq->Line();
    m_placeGivenUp.last_column = m_pTokSeq->Column();
}

void TablesCommand::AddWarning(Warning warning) { m_warnings.push_back(std::move(warning)); }

void TablesCommand::AddTableLocation(const TablesLocation& location) {
    m_tableLocations.push_back(location);
}

std::string_view TablesCommand::NameOfCode(NodeType code) {
    const auto* pFound =
        std::find_if(std::begin(kKeywords), std::end(kKeywords),
                     [code](const Keyword& keyword) { return keyword.code == code; });
    return pFound == std::end(kKeywords) ? std::string_view{} : pFound->text;
}

bool TablesCommand::IsSubcommand(std::string_view word) {
    return std::any_of(std::begin(kSubcommandWords), std::end(kSubcommandWords),
                       [word](std::string_view keyword) { return MeansKeyword(word, keyword); });
}

bool TablesCommand::AtEnd() const { return m_pTokSeq->Type() == TokenSequenceBase::kAtEnd; }

bool TablesCommand::AtOperator(int operatorCode) const {
    return m_pTokSeq->Type() == TokenSequenceBase::kOperator &&
           m_pTokSeq->Operator() == operatorCode;
}

bool TablesCommand::AtSubcommandEnd() const {
    return AtEnd() || AtOperator(TokenSequenceBase::kSlash);
}

void TablesCommand::GoTo(int index) {
    m_pTokSeq->SetNextIndex(index);
    m_pTokSeq->Next();
}

void TablesCommand::Advance() {
    do {
        m_pTokSeq->Next();
    } while (AtOperator(TokenSequenceBase::kEquals) || AtOperator(TokenSequenceBase::kComma));
}

TablesToken TablesCommand::FirstToken() {
    m_pTokSeq->SetNextIndex(kFirstIndexAfterCommandWord);
    Advance();
    if (AtBreakWord()) TakeOutBreak();
    if (AtSubcommandEnd()) return EndSubcommand();

    static constexpr TokenTexts kSlash = {"/", "/"};
    const TablesToken slash = DeliverSlash(TAVQToken(TokenSequenceBase::kOperator, kSlash));
    m_pTokSeq->SetNextIndex(m_pTokSeq->CurrentIndex());
    return slash;
}

// Stands on the slash, or at the end, that closes the current subcommand or the replayed BREAK
// tokens after it.
TablesToken TablesCommand::EndSubcommand() {
    if (m_returnPoint) {
        GoTo(*m_returnPoint);
        m_returnPoint.reset();
    } else {
        TakeOutBreaksAfterSlash();
        if (m_currentSubcommand == TB_TABLE && m_breakStart) {
            m_returnPoint = m_pTokSeq->CurrentIndex();
            m_isCopying = m_replayed == m_breakStart;
            m_replayed = m_breakStart;
            GoTo(*m_breakStart);
            return DeliverCurrent();
        }
    }
    if (AtEnd()) {
        // Reading on after the end must not replay BREAK once more.
        m_currentSubcommand = kNoNodeType;
        m_position = kSubcommandPosition;
        return {};
    }
    return DeliverSlash(m_pTokSeq->CloneCurrent());
}

TablesToken TablesCommand::DeliverSlash(const TAVQToken& slashToken) {
    m_currentSubcommand = kNoNodeType;
    m_position = kSubcommandPosition;
    m_parenthesisDepth = 0;
    if (!QUILLET_ASSERT(slashToken.Type() != TokenSequenceBase::kAtEnd, "slashToken != 0"))
        return {};
    return {SP_SLASH, slashToken, m_pTokSeq->Line(), m_pTokSeq->Column()};
}

TablesToken TablesCommand::DeliverCurrent() {
    TablesToken delivered;
    NodeType& code = delivered.code;
    code = SP_OTHEROP;
    delivered.line = m_pTokSeq->Line();
    delivered.column = m_pTokSeq->Column();
    switch (m_pTokSeq->Type()) {
        case TokenSequenceBase::kNumber:
            code = SP_NUMBER;
            break;
        case TokenSequenceBase::kLiteral:
            code = SP_SLITERAL;
            break;
        case TokenSequenceBase::kOperator:
            code = ClassifyOperator();
            delivered.token = MergeSign();
            if (delivered.HasToken()) code = SP_NUMBER;
            break;
        case TokenSequenceBase::kString:
            code = ClassifyWord();
            break;
        default:
            QUILLET_ASSERT(false, "0");
            break;
    }
    if (!delivered.HasToken()) delivered.token = m_pTokSeq->CloneCurrent();
    if (m_returnPoint && m_isCopying && delivered.HasToken()) ChargeCopy(delivered.token);
    CountToken(code);
    return delivered;
}

bool TablesCommand::AtBreakWord() const {
    return m_pTokSeq->Type() == TokenSequenceBase::kString &&
           m_pTokSeq->Operator() == TokenSequenceBase::kNotOperator && KeywordCode() == TB_BREAK;
}

void TablesCommand::TakeOutBreak() {
    Advance();
    if (!AtSubcommandEnd()) m_breakStart = m_pTokSeq->CurrentIndex();
    while (!AtSubcommandEnd()) m_pTokSeq->Next();
}

void TablesCommand::TakeOutBreaksAfterSlash() {
    while (!AtEnd()) {
        const int slashIndex = m_pTokSeq->CurrentIndex();
        Advance();
        if (!AtBreakWord()) {
            GoTo(slashIndex);
            return;
        }
        TakeOutBreak();
    }
}

NodeType TablesCommand::KeywordCode() const {
    if (!QUILLET_ASSERT(m_pTokSeq, "m_pTokSeq") ||
        !QUILLET_ASSERT(m_pTokSeq->Type() == TokenSequenceBase::kString,
                        "m_pTokSeq->Type() == TokenSequenceBase::kString") ||
        !QUILLET_ASSERT(m_pTokSeq->Operator() == TokenSequenceBase::kNotOperator,
                        "m_pTokSeq->Operator() == TokenSequenceBase::kNotOperator")) {
        return kNoNodeType;
    }
    const char* chars = nullptr;
    std::size_t length = 0;
    m_pTokSeq->GetValueText(chars, length);
    return kKeywordTable.Find({chars, length});
}

NodeType TablesCommand::ClassifyOperator() const {
    switch (m_pTokSeq->Operator()) {
        case TokenSequenceBase::kGreaterThan:
            return SP_GREATERTHAN;
        case TokenSequenceBase::kPlus:
            return SP_PLUS;
        case TokenSequenceBase::kSlash:
            return SP_SLASH;
        case TokenSequenceBase::kLeftParen:
            return SP_LPAREN;
        case TokenSequenceBase::kRightParen:
            return SP_RPAREN;
        case TokenSequenceBase::kColon:
            return SP_COLON;
        default:
            return SP_OTHEROP;
    }
}

NodeType TablesCommand::ClassifyWord() const {
    switch (m_pTokSeq->Operator()) {
        case TokenSequenceBase::kNotOperator:
            return ClassifyPlainWord();
        case TokenSequenceBase::kGreaterThan:
            return SP_GREATERTHAN;
        case TokenSequenceBase::kTo:
            return SP_TO;
        case TokenSequenceBase::kBy:
            return SP_BY;
        case TokenSequenceBase::kAll:
            return SP_ALL;
        default:
            return SP_OTHEROP;
    }
}

NodeType TablesCommand::ClassifyPlainWord() const {
    if (m_position == kSubcommandPosition) {
        const NodeType keyword = KeywordCode();
        if (keyword == TB_MISSING) return TB_MISSINGSUBCOM;
        return keyword == kNoNodeType ? TB_UNKNOWNSUBCOM : keyword;
    }
    const NodeType setting = SettingCode();
    if (setting != kNoNodeType) return setting;
    return VariableNameClass(m_codePage, *m_pTokSeq) != 0 ? SP_VARNAME : SP_NONVARNAME;
}

NodeType TablesCommand::SettingCode() const {
    switch (m_currentSubcommand) {
        case TB_AUTOLABEL:
        case TB_BASE:
        case TB_GBASE:
        case TB_MISSINGSUBCOM:
        case TB_FORMAT:
            return KeywordCode();
        case TB_SORT: {
            // Further on the words can only be variables.
            if (m_position != kFirstArgumentPosition) return kNoNodeType;
            const NodeType keyword = KeywordCode();
            return keyword == TB_ASCENDING || keyword == TB_DESCENDING ? keyword : kNoNodeType;
        }
        case TB_STATISTICS:
            if (m_parenthesisDepth != 0) return kNoNodeType;
            return KeywordCode() == TB_UNWEIGHTED ? TB_UNWEIGHTED : kNoNodeType;
        default:
            return kNoNodeType;
    }
}

TAVQToken TablesCommand::MergeSign() {
    const bool isMinus = AtOperator(TokenSequenceBase::kMinus);
    if (!isMinus && !AtOperator(TokenSequenceBase::kPlus)) return {};
    const int signIndex = m_pTokSeq->CurrentIndex();

    m_pTokSeq->Next();
    if (m_pTokSeq->Type() != TokenSequenceBase::kNumber) {
        GoTo(signIndex);
        return {};
    }
    const char* pNumber = nullptr;
    std::size_t length = 0;
    m_pTokSeq->GetSourceText(pNumber, length);
    const std::string text = (isMinus ? "-" : "+") + std::string(pNumber, length);
    const std::string_view kept = Memory().Keep(text);
    return {TokenSequenceBase::kNumber, *Memory().New<TokenTexts>(TokenTexts{kept, kept})};
}

void TablesCommand::ChargeCopy(const TAVQToken& token) {
    static_assert(CommandBudget::kTokenCopy >= sizeof(TokenTexts) + sizeof(TbTrParseNode));
    m_pTokSeq->Budget().ChargeCopies(CommandBudget::kTokenCopy + token.Text(/*raw=*/true).size() +
                                     token.Text(/*raw=*/false).size());
}

void TablesCommand::CountToken(NodeType& code) {
    if (m_position == kSubcommandPosition) {
        m_currentSubcommand = code;
    } else if (IsIgnoredSubcommand(m_currentSubcommand)) {
        code = TB_ANYSUBCOMTOKEN;
    }
    ++m_position;
    if (code == SP_LPAREN) ++m_parenthesisDepth;
    if (code == SP_RPAREN) --m_parenthesisDepth;
}

}  // namespace quillet
