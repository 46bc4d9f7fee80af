// A legacy command of a body is no command yet: arguments stand in it. So it is converted with
// stand-ins in their places, one for each argument, variable and function, and where these come out
// again the sources are put back. What kind of stand-in fits, a name, a literal, a list, is told by
// what the calls put in there; where none fits, the command is converted with the values of the
// calls, one after the other, and what comes out has to be the same for all of them.
#include "driver/bodyrewriter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "driver/bodytemplate.h"
#include "driver/convertedcommands.h"
#include "macro/lexer.h"
#include "platform/multibyte.h"

namespace quillet {

namespace {

using macro::Lexer;
using macro::Token;
using macro::TokenKind;

constexpr int kMostConditions = 8;  // one after the other in one command
constexpr int kMostLeaves = 32;     // ways through the conditions of one command

std::string InCapitals(std::string_view text) { return InUpperAscii(text); }

std::string InSmallLetters(std::string_view text) {
    std::string result(text);
    for (char& character : result) character = LowerAscii(character);
    return result;
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    std::size_t position = text.find(from);
    while (position != std::string::npos) {
        text.replace(position, from.size(), to);
        position = text.find(from, position + to.size());
    }
}

std::string WithoutOuterSpace(const std::string& text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t\n"), text.size());
    return text.substr(begin, text.find_last_not_of(" \t\n") + 1 - begin);
}

bool GoesOnAName(char byte) {
    return static_cast<unsigned char>(byte) >= 0x80 || macro::IsDigit(byte) ||
           ('a' <= LowerAscii(byte) && LowerAscii(byte) <= 'z') || byte == '_' || byte == '.' ||
           byte == '$' || byte == '#' || byte == '@';
}

// The words and signs that join the elements of a list.
bool IsJoint(const CodePage& codePage, const Token& token, std::string_view text) {
    if (token.kind == TokenKind::kOther) {
        constexpr std::string_view kSigns = "+*>(),-";
        return text.size() == 1 && kSigns.find(text.front()) != std::string_view::npos;
    }
    const std::string word = macro::Capitals(codePage, text);
    return word == "BY" || word == "TO";
}

}  // namespace

// What the calls put in at a site.
enum class BodyRewriter::ValueKind : int {
    kName,
    kNumber,
    kLiteral,
    kList,   // names and signs
    kOther,  // has no stand-in
};

// An argument, a variable, a function or a macro's name, wherever in a command it stands.
struct BodyRewriter::Site {
    std::string source;
    bool isMacroName = false;
    ValueKind kind = ValueKind::kName;
    bool canBeEmpty = false;
    char quote = '\'';
    std::set<std::string> joints;  // in capitals
    bool changesInLoop = false;
    bool isLong = false;  // some values do not fit into the name of a set
    // The variable of a loop over a list that stands in the command itself: the site of the list.
    std::size_t elementOf = macro::kNowhere;
    std::size_t number = 0;  // of its stand-ins

    // As an operand of a function or a condition.
    [[nodiscard]] std::string Operand() const {
        return isMacroName ? "!EVAL(" + source + ")" : source;
    }
};

// The branch of a condition that is followed: the run came to a place, or it did not.
struct BodyRewriter::Branch {
    std::size_t place = 0;
    bool isTaken = true;
};

// A part of a command as it is converted.
struct BodyRewriter::Piece {
    enum class Kind : int { kText, kSite, kLoop };

    Kind kind = Kind::kText;
    std::string text;      // of a loop: its header and what it sets
    std::string source{};  // of a loop: all of it
    std::size_t site = 0;
    std::size_t place = 0;  // of a site, in the body
    // Of a loop: the list that it is over, in capitals, and its variable; empty for a count.
    std::string list{};
    std::string variable{};
    std::size_t linkedSite = macro::kNowhere;  // the same list as a site
    std::vector<Piece> inner{};
};

// Writes one legacy command anew.
class BodyRewriter::RegionWriter {
public:
    RegionWriter(BodyRewriter& owner, const BodyRegion& region, const RegionTrace& trace,
                 int attempt)
        : m_owner(owner),
          m_body(owner.m_macro.body),
          m_lexer(owner.m_codePage, m_body),
          m_region(region),
          m_trace(trace),
          m_attempt(attempt) {
        FindSources(region.elements);
        ChooseNames();
    }

    [[nodiscard]] bool Write(std::string& out) {
        WriteSource(out);
        return Expand(m_region.elements, {}, 0, out);
    }

    [[nodiscard]] const std::string& Reason() const { return m_reason; }
    // There is something else to try.
    [[nodiscard]] bool IsLastAttempt() const { return !m_hasMore; }

private:
    // How the sites of a command are filled in.
    struct Filling {
        std::size_t doubledList = macro::kNowhere;  // the site of the list with two elements
        std::size_t doubledLoop = macro::kNowhere;  // the number of the loop with two passes
        const SiteValues* pValues = nullptr;        // for those whose values are put in
        std::set<std::size_t> valued{};             // these sites
    };

    bool Fail(std::string reason) {
        if (m_reason.empty()) m_reason = std::move(reason);
        return false;
    }

    // What stands at the sites of the command, by their places.
    void FindSources(const std::vector<BodyElement>& elements) {
        for (const BodyElement& element : elements) {
            if (element.pNode->kind == BodyNode::Kind::kText) continue;
            FindSources(*element.pNode);
        }
    }
    void FindSources(const BodyNode& node) {
        if (node.kind == BodyNode::Kind::kSite || node.kind == BodyNode::Kind::kName) {
            m_placesOf[InCapitals(Source(node.begin, node.end))].push_back(node.begin);
        }
        for (const BodyNode& child : node.children) FindSources(child);
        for (const BodyNode& child : node.otherwise) FindSources(child);
    }

    // A name that nothing in the body or in the calls contains.
    void ChooseNames() {
        std::string text = InSmallLetters(m_body);
        constexpr std::size_t kEnough = std::size_t{1024} * 1024;
        for (const auto& [place, values] : m_trace.siteValues) {
            if (text.size() > m_body.size() + kEnough) break;
            for (const std::string& value : values) text.append(" ").append(InSmallLetters(value));
        }
        for (const auto& [keyword, index] : m_owner.m_macro.list.keywords) {
            text.append(" ").append(InSmallLetters(keyword));
        }
        constexpr std::array<std::string_view, 8> kPrefixes = {"zq", "zx", "qz", "jq",
                                                               "xq", "qx", "vq", "wq"};
        m_prefix = "zqjq";
        for (const std::string_view prefix : kPrefixes) {
            if (text.find(prefix) == std::string::npos) {
                m_prefix = prefix;
                break;
            }
        }
        m_firstPrefix = "a0zq";
        for (const std::string_view prefix : {"a0", "aa0", "a00"}) {
            if (text.find(prefix) != std::string::npos) continue;
            m_firstPrefix = prefix;
            break;
        }
        m_variable = m_prefix;
        for (const std::string_view word : {"item", "element", "each"}) {
            if (text.find(word) != std::string::npos) continue;
            m_variable = word;
            break;
        }
        for (const int number : {37, 43, 53, 61, 67, 71, 73, 79, 83, 97}) {
            const std::string digits = std::to_string(number);
            if (text.find(digits) == std::string::npos) m_numbers.push_back(digits);
        }
    }

    // The old command stays as a comment. In a comment of this form nothing is replaced, and it
    // ends with its line.
    void WriteSource(std::string& out) const {
        const std::string source = Source(m_region.begin, m_region.end);
        while (!out.empty() && macro::IsBlank(out.back())) out.pop_back();
        if (!out.empty() && out.back() != '\n') out += '\n';
        std::size_t begin = 0;
        while (begin < source.size()) {
            const std::size_t end = std::min(source.find('\n', begin), source.size());
            std::string line(source.substr(begin, end - begin));
            line.erase(line.find_last_not_of(" \t\r") + 1);
            ReplaceAll(line, "*/", "* /");
            if (!line.empty()) {
                if (m_owner.m_batchMode) out += ' ';
                out.append("/* ").append(line).append(" */\n");
            }
            begin = end + 1;
        }
    }

    // Follows the conditions of the command, in order. `rest` is what is left of it.
    bool Expand(std::vector<BodyElement> rest, std::vector<Piece> line, int conditions,
                std::string& out) {
        for (std::size_t i = 0; i < rest.size(); ++i) {
            const BodyElement& element = rest[i];
            switch (element.pNode->kind) {
                case BodyNode::Kind::kText:
                    line.push_back({Piece::Kind::kText, Source(element.begin, element.end)});
                    break;
                case BodyNode::Kind::kSite:
                case BodyNode::Kind::kName:
                    if (!AddSite(*element.pNode, line)) return false;
                    break;
                case BodyNode::Kind::kLoop:
                    if (!AddLoop(*element.pNode, line)) return false;
                    break;
                case BodyNode::Kind::kLet:
                    out.append(Source(element.begin, element.end)).append("\n");
                    break;
                case BodyNode::Kind::kOther:
                    return Fail("it holds " + Source(element.begin, element.end));
                case BodyNode::Kind::kCondition: {
                    const BodyNode& condition = *element.pNode;
                    rest.erase(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(i) + 1);
                    return ExpandCondition(condition, rest, line, conditions, out);
                }
            }
        }
        return WriteLeaf(line, {}, out);
    }

    bool ExpandCondition(const BodyNode& condition, const std::vector<BodyElement>& rest,
                         const std::vector<Piece>& line, int conditions, std::string& out) {
        if (conditions == kMostConditions) return Fail("it holds too many conditions");
        const auto expand = [&](const std::vector<BodyNode>& nodes, Branch branch) {
            std::vector<BodyElement> elements = m_owner.m_cutter.Cut(nodes);
            elements.insert(elements.end(), rest.begin(), rest.end());
            m_path.push_back(branch);
            const bool isExpanded = Expand(std::move(elements), line, conditions + 1, out);
            m_path.pop_back();
            return isExpanded;
        };
        out.append(Source(condition.begin, condition.headerEnd)).append(" !THEN\n");
        if (!expand(condition.children, {condition.contentBegin, true})) return false;
        out += "\n!ELSE\n";
        if (!expand(condition.otherwise, {condition.contentBegin, false})) return false;
        out += "\n!IFEND\n";
        return true;
    }

    [[nodiscard]] std::string Source(std::size_t begin, std::size_t end) const {
        return m_body.substr(begin, end - begin);
    }

    bool AddSite(const BodyNode& node, std::vector<Piece>& line) {
        Site site;
        site.source = Source(node.begin, node.end);
        if (InCapitals(site.source) == "!NULL") return true;
        site.isMacroName = node.kind == BodyNode::Kind::kName;
        if (site.isMacroName && m_owner.m_findUse(site.source) == MacroNameUse::kWithArguments) {
            return Fail("it holds a call with arguments (" + site.source + ")");
        }
        const auto [known, isNew] =
            m_sitesBySource.try_emplace(InCapitals(site.source), m_sites.size());
        if (isNew) {
            constexpr std::size_t kMostSites = 300;
            if (m_sites.size() == kMostSites) return Fail("it holds too many arguments");
            site.number = m_sites.size();
            FindKind(site);
            m_sites.push_back(std::move(site));
        }
        Piece piece;
        piece.kind = Piece::Kind::kSite;
        piece.site = known->second;
        piece.place = node.begin;
        line.push_back(std::move(piece));
        return true;
    }

    bool AddLoop(const BodyNode& node, std::vector<Piece>& line) {
        Piece loop;
        loop.kind = Piece::Kind::kLoop;
        loop.text = Source(node.begin, node.headerEnd);
        loop.source = Source(node.begin, node.end);
        loop.variable = VariableOf(node);
        loop.list = InCapitals(ListOf(node));
        std::string variables = InCapitals(loop.variable);
        for (const BodyElement& element : m_owner.m_cutter.Cut(node.children)) {
            const std::string source = Source(element.begin, element.end);
            switch (element.pNode->kind) {
                case BodyNode::Kind::kText:
                    loop.inner.push_back({Piece::Kind::kText, source});
                    break;
                case BodyNode::Kind::kSite:
                case BodyNode::Kind::kName:
                    if (!AddSite(*element.pNode, loop.inner)) return false;
                    if (!loop.inner.empty() && loop.inner.back().kind == Piece::Kind::kSite &&
                        Mentions(source, variables)) {
                        m_sites[loop.inner.back().site].changesInLoop = true;
                    }
                    break;
                case BodyNode::Kind::kLet:
                    loop.text.append(" ").append(source);
                    variables.append(" ").append(InCapitals(VariableOf(*element.pNode)));
                    break;
                default:
                    return Fail("it holds a statement in a loop");
            }
        }
        line.push_back(std::move(loop));
        return true;
    }

    // What stands between the parentheses of a loop over a list.
    [[nodiscard]] std::string ListOf(const BodyNode& loop) const {
        const std::string header = Source(loop.begin, loop.headerEnd);
        const std::size_t begin = header.find('(');
        const std::size_t end = header.rfind(')');
        if (begin == std::string::npos || end + 1 != header.size()) return {};
        return WithoutOuterSpace(header.substr(begin + 1, end - begin - 1));
    }

    // "!name" of a loop or of what is set.
    [[nodiscard]] std::string VariableOf(const BodyNode& node) const {
        const Token word = m_lexer.NextToken(node.begin);
        return std::string(m_lexer.TextOf(m_lexer.NextToken(word.end)));
    }

    // Whether one of `variables`, which stand between blanks, is in `source`.
    [[nodiscard]] bool Mentions(std::string_view source, const std::string& variables) const {
        const Lexer lexer(m_owner.m_codePage, source);
        const std::string known = " " + variables + " ";
        std::size_t position = 0;
        while (position < source.size()) {
            if (source[position] == '!' && lexer.IsAtName(position + 1)) {
                const Token token = lexer.TokenAt(position);
                const std::string word = " " + InCapitals(lexer.TextOf(token)) + " ";
                if (known.find(word) != std::string::npos) return true;
                position = token.end;
            } else {
                position = lexer.CharacterEnd(position);
            }
        }
        return false;
    }

    // What the calls put in wherever this source stands in the command.
    void FindKind(Site& site) const {
        std::set<ValueKind> kinds;
        const std::string source = InCapitals(site.source);
        for (const std::size_t place : m_placesOf.at(source)) {
            const auto known = m_trace.siteValues.find(place);
            if (known == m_trace.siteValues.end()) continue;
            for (const std::string& value : known->second) {
                if (value.find_first_not_of(" \t\n") == std::string::npos) {
                    site.canBeEmpty = true;
                } else {
                    constexpr std::size_t kLongest = 7;  // after the dollar sign
                    if (value.size() > kLongest) site.isLong = true;
                    kinds.insert(KindOf(value, site));
                }
            }
        }
        if (kinds.empty()) {
            const bool isQuoted = source.starts_with("!QUO");
            site.kind = isQuoted ? ValueKind::kLiteral : ValueKind::kName;
        } else if (kinds.size() == 1) {
            site.kind = *kinds.begin();
        } else {
            kinds.erase(ValueKind::kName);
            const bool isList = kinds.size() == 1 && kinds.contains(ValueKind::kList);
            site.kind = isList ? ValueKind::kList : ValueKind::kOther;
        }
        if (site.kind == ValueKind::kNumber && m_numbers.size() <= site.number) {
            site.kind = ValueKind::kOther;
        }
    }

    [[nodiscard]] ValueKind KindOf(const std::string& value, Site& site) const {
        const Lexer lexer(m_owner.m_codePage, value);
        std::size_t count = 0;
        bool isList = true;
        Token token = lexer.NextToken(0);
        const Token first = token;
        for (; token.kind != TokenKind::kEnd; token = lexer.NextToken(token.end)) {
            ++count;
            if (IsJoint(m_owner.m_codePage, token, lexer.TextOf(token))) {
                site.joints.insert(InCapitals(lexer.TextOf(token)));
            } else if (token.kind != TokenKind::kIdentifier) {
                isList = false;
            }
        }
        if (count == 1 && first.kind == TokenKind::kLiteral) site.quote = value[first.begin];
        if (count == 1 && first.kind == TokenKind::kLiteral) return ValueKind::kLiteral;
        if (count == 1 && first.kind == TokenKind::kNumber) return ValueKind::kNumber;
        if (count == 1 && first.kind == TokenKind::kIdentifier) return ValueKind::kName;
        return isList && count > 1 ? ValueKind::kList : ValueKind::kOther;
    }

    // One way through the conditions. `decided` holds the sites of which it is known that they are
    // not empty.
    bool WriteLeaf(const std::vector<Piece>& line, const std::set<std::size_t>& decided,
                   std::string& out) {
        for (const Piece& piece : line) {
            if (piece.kind != Piece::Kind::kSite) continue;
            const Site& site = m_sites[piece.site];
            if (!site.canBeEmpty || decided.contains(piece.site)) continue;
            return WriteGuarded(line, piece.site, decided, out);
        }
        if (++m_leaves > kMostLeaves) return Fail("it holds too many conditions");
        if (WriteConverted(line, out)) return true;
        // Where no call comes, everything may stay.
        const bool isAllKnown = m_trace.instances.size() < kMostInstances;
        if (!isAllKnown || !InstancesOf(line).empty()) return false;
        m_reason.clear();
        for (const Piece& piece : line) {
            switch (piece.kind) {
                case Piece::Kind::kText:
                    out += piece.text;
                    break;
                case Piece::Kind::kSite:
                    out += m_sites[piece.site].source;
                    break;
                case Piece::Kind::kLoop:
                    out += piece.source;
                    break;
            }
        }
        return true;
    }

    bool WriteGuarded(const std::vector<Piece>& line, std::size_t site,
                      const std::set<std::size_t>& decided, std::string& out) {
        std::vector<Piece> without;
        for (const Piece& piece : line) {
            if (piece.kind != Piece::Kind::kSite || piece.site != site) without.push_back(piece);
        }
        std::set<std::size_t> nowDecided = decided;
        nowDecided.insert(site);
        out.append("!IF (").append(m_sites[site].Operand()).append(" = !NULL) !THEN\n");
        if (!WriteLeaf(without, nowDecided, out)) return false;
        out += "\n!ELSE\n";
        if (!WriteLeaf(line, nowDecided, out)) return false;
        out += "\n!IFEND\n";
        return true;
    }

    // Tries one way of filling in after the other, and takes that of the attempt, or the last one
    // there is.
    bool WriteConverted(std::vector<Piece> line, std::string& out) {
        std::set<std::size_t> sites;
        CollectSites(line, sites);
        std::set<std::size_t> others;
        for (const std::size_t site : sites) {
            if (m_sites[site].kind == ValueKind::kOther) others.insert(site);
        }
        std::vector<std::set<std::size_t>> ways = {others};
        constexpr std::size_t kMostWays = 8;
        for (const std::size_t site : sites) {
            std::set<std::size_t> valued = others;
            if (valued.insert(site).second && ways.size() < kMostWays) {
                ways.push_back(std::move(valued));
            }
        }
        if (sites.size() > others.size() + 1) ways.push_back(sites);
        std::vector<std::string> results;
        LinkLoops(line);
        const auto isEnough = [&] { return results.size() > static_cast<std::size_t>(m_attempt); };
        for (const std::set<std::size_t>& valued : ways) {
            std::string text;
            if (ConvertLine(line, valued, text) &&
                std::find(results.begin(), results.end(), text) == results.end()) {
                results.push_back(text);
                const bool isFirst = results.size() == 1 && !isEnough();
                if (isFirst && ConvertInOrder(line, valued, text)) results.push_back(text);
            }
            if (isEnough()) break;
        }
        if (results.empty()) return false;
        m_reason.clear();
        if (results.size() > static_cast<std::size_t>(m_attempt)) m_hasMore = true;
        out += results.back();
        return true;
    }

    // A loop over a list that the command also has as a whole goes along with it.
    void LinkLoops(std::vector<Piece>& line) {
        for (Piece& loop : line) {
            if (loop.kind != Piece::Kind::kLoop || loop.list.empty()) continue;
            const auto known = m_sitesBySource.find(loop.list);
            if (known == m_sitesBySource.end()) continue;
            const std::size_t number = known->second;
            Site& site = m_sites[number];
            const bool isThere = std::any_of(line.begin(), line.end(), [&](const Piece& piece) {
                return piece.kind == Piece::Kind::kSite && piece.site == number;
            });
            const bool isList = site.kind == ValueKind::kList && site.joints.empty();
            if (!isThere || (!isList && site.kind != ValueKind::kName)) continue;
            site.kind = ValueKind::kList;
            loop.linkedSite = number;
            const auto variable = m_sitesBySource.find(InCapitals(loop.variable));
            if (variable != m_sitesBySource.end()) m_sites[variable->second].elementOf = number;
        }
    }

    // Names come out in their alphabetical order in some places. So the macro has to compare them:
    // the first two, or the first and a name in the command, for which the order changes something.
    bool ConvertInOrder(const std::vector<Piece>& line, const std::set<std::size_t>& valued,
                        std::string& text) {
        const std::string before = text;
        std::vector<std::size_t> names;
        for (const Piece& piece : line) {
            const bool isName = piece.kind == Piece::Kind::kSite && !valued.contains(piece.site) &&
                                m_sites[piece.site].kind == ValueKind::kName;
            if (isName && std::find(names.begin(), names.end(), piece.site) == names.end()) {
                names.push_back(piece.site);
            }
        }
        constexpr std::size_t kMostNames = 6;
        names.resize(std::min(names.size(), kMostNames));
        for (std::size_t i = 0; i < names.size(); ++i) {
            for (std::size_t k = 0; k < i; ++k) {
                if (ConvertExchanged(line, valued, names[k], names[i], before, text)) return true;
            }
        }
        return std::any_of(names.begin(), names.end(), [&](std::size_t name) {
            return ConvertAsFirst(line, valued, name, before, text);
        });
    }

    // Two names: `before` is for those that are in the order of their stand-ins.
    bool ConvertExchanged(const std::vector<Piece>& line, const std::set<std::size_t>& valued,
                          std::size_t first, std::size_t second, const std::string& before,
                          std::string& text) {
        if (m_sites[first].number > m_sites[second].number) std::swap(first, second);
        std::string after;
        std::swap(m_sites[first].number, m_sites[second].number);
        const bool isConverted = ConvertLine(line, valued, after);
        std::swap(m_sites[first].number, m_sites[second].number);
        if (!isConverted || after == before) return false;
        WriteInOrder(m_sites[first], "!UPCASE(" + m_sites[second].Operand() + ")", before, after,
                     text);
        return true;
    }

    // A name that comes before all those that stand in the command; `before` is for one that comes
    // after them.
    bool ConvertAsFirst(const std::vector<Piece>& line, const std::set<std::size_t>& valued,
                        std::size_t name, const std::string& before, std::string& text) {
        std::string first;
        m_firstSite = name;
        const bool isConverted = ConvertLine(line, valued, first);
        m_firstSite = macro::kNowhere;
        if (!isConverted || first == before) return false;
        const std::string& after = before;
        const std::optional<std::string> other = NameBeside(m_sites[name].source, after);
        if (!other) return false;
        WriteInOrder(m_sites[name], "'" + *other + "'", first, after, text);
        return true;
    }

    static void WriteInOrder(const Site& site, const std::string& other, const std::string& before,
                             const std::string& after, std::string& text) {
        text = "!IF (!UPCASE(" + site.Operand() + ") < " + other + ") !THEN\n";
        text.append(before).append("\n!ELSE\n").append(after).append("\n!IFEND\n");
    }

    // The one name, in capitals, that stands in a list of variables together with `source`.
    [[nodiscard]] std::optional<std::string> NameBeside(const std::string& source,
                                                        const std::string& text) const {
        std::set<std::string> found;
        const std::vector<TemplateToken> tokens = TokensOfTemplate(text, m_owner.m_codePage);
        for (std::size_t i = 2; i < tokens.size(); ++i) {
            if (tokens[i - 2].text != "VAR" || tokens[i - 1].text != "=") continue;
            std::set<std::string> names;
            bool hasSource = false;
            for (; i + 1 < tokens.size() && tokens[i + 1].text != "="; ++i) {
                const bool isSource = InCapitals(tokens[i].text) == InCapitals(source);
                hasSource = hasSource || isSource;
                if (!isSource && tokens[i].kind == TokenKind::kIdentifier) {
                    names.insert(InCapitals(tokens[i].text));
                }
            }
            if (hasSource) found.insert(names.begin(), names.end());
        }
        if (found.size() != 1) return std::nullopt;
        return *found.begin();
    }

    static void CollectSites(const std::vector<Piece>& line, std::set<std::size_t>& sites) {
        for (const Piece& piece : line) {
            if (piece.kind == Piece::Kind::kSite) sites.insert(piece.site);
            if (piece.kind != Piece::Kind::kLoop) continue;
            for (const Piece& inner : piece.inner) {
                if (inner.kind == Piece::Kind::kSite) sites.insert(inner.site);
            }
        }
    }

    // The runs of the command that came this way.
    [[nodiscard]] std::vector<const SiteValues*> InstancesOf(const std::vector<Piece>& line) const {
        std::vector<const SiteValues*> result;
        for (const SiteValues& instance : m_trace.instances) {
            const bool isHere = std::all_of(m_path.begin(), m_path.end(), [&](Branch branch) {
                return instance.contains(branch.place) == branch.isTaken;
            });
            if (!isHere) continue;
            const bool fits = std::all_of(line.begin(), line.end(), [&](const Piece& piece) {
                if (piece.kind != Piece::Kind::kSite) return true;
                const auto value = instance.find(piece.place);
                return value != instance.end() &&
                       (!m_sites[piece.site].canBeEmpty || !value->second.empty());
            });
            if (fits) result.push_back(&instance);
        }
        return result;
    }

    bool ConvertLine(const std::vector<Piece>& line, const std::set<std::size_t>& valued,
                     std::string& text) {
        if (valued.empty()) return ConvertFilled(line, {}, text);
        const std::vector<const SiteValues*> instances = InstancesOf(line);
        if (instances.empty()) return Fail("no call tells what its arguments are");
        std::set<std::vector<std::string>> seen;
        for (const SiteValues* pInstance : instances) {
            Filling filling;
            filling.pValues = pInstance;
            filling.valued = valued;
            if (!seen.insert(ValuesOf(line, filling)).second) continue;
            std::string next;
            if (!ConvertFilled(line, filling, next)) return false;
            if (seen.size() > 1 && next != text) {
                return Fail("what becomes of it depends on the values of its arguments");
            }
            text = std::move(next);
        }
        return true;
    }

    [[nodiscard]] static std::vector<std::string> ValuesOf(const std::vector<Piece>& line,
                                                           const Filling& filling) {
        std::vector<std::string> values;
        for (const Piece& piece : line) {
            if (piece.kind == Piece::Kind::kSite && filling.valued.contains(piece.site)) {
                values.push_back(filling.pValues->at(piece.place));
            }
        }
        return values;
    }

    bool ConvertFilled(const std::vector<Piece>& line, const Filling& filling, std::string& text) {
        std::vector<TemplateToken> tokens;
        if (!Convert(line, filling, tokens)) return false;
        std::vector<Repetition> repetitions;
        if (!FindRepetitions(line, filling, tokens, repetitions)) return false;
        if (!PutValuesBack(line, filling, tokens)) return false;
        return WriteTokens(tokens, repetitions, text);
    }

    // A part that is repeated, and for what.
    struct Repetition {
        RepeatedPart part;
        std::size_t list = macro::kNowhere;  // the site of the list
        const Piece* pLoop = nullptr;
    };

    bool Convert(const std::vector<Piece>& line, const Filling& filling,
                 std::vector<TemplateToken>& tokens) {
        std::string source;
        std::size_t loops = 0;
        for (const Piece& piece : line) {
            const bool isFilled = piece.kind == Piece::Kind::kLoop
                                      ? FillLoop(piece, filling, loops++, source)
                                      : Fill(piece, filling, 0, source);
            if (!isFilled) return false;
        }
        constexpr std::size_t kLeastWork = std::size_t{512} * 1024;
        constexpr std::size_t kWorkPerByte = 64;
        constexpr std::size_t kWorkOfCommand = 256;
        if (m_owner.m_work > kLeastWork + kWorkPerByte * m_body.size()) {
            return Fail("it takes too much work");
        }
        m_owner.m_work += source.size() + kWorkOfCommand;
        const ConvertedCommands result =
            ConvertCommands(source, m_owner.m_codePage, m_owner.m_batchMode);
        if (result.hasFailed) {
            return Fail(result.failure.empty() ? "it is no syntax" : InSource(result.failure));
        }
        if (result.legacyCommands == 0) return Fail("it is no legacy command by itself");
        std::string text;
        for (const ConvertedPiece& piece : result.pieces) {
            text.append(piece.text).append(piece.text.ends_with('\n') ? "" : "\n");
        }
        m_owner.m_work += text.size();
        tokens = TokensOfTemplate(text, m_owner.m_codePage);
        return true;
    }

    bool FillLoop(const Piece& loop, const Filling& filling, std::size_t number,
                  std::string& source) {
        const bool isLinked = loop.linkedSite != macro::kNowhere;
        const bool isDoubled =
            filling.doubledLoop == number || (isLinked && filling.doubledList == loop.linkedSite);
        for (int pass = 0; pass < (isDoubled ? 2 : 1); ++pass) {
            for (const Piece& inner : loop.inner) {
                if (!Fill(inner, filling, pass, source)) return false;
            }
        }
        return true;
    }

    // A message with the sources of sites in place of what stands for them.
    [[nodiscard]] std::string InSource(std::string message) const {
        for (const Site& site : m_sites) {
            for (const int pass : {0, 1}) ReplaceAll(message, NameOf(site, pass), site.source);
        }
        return message;
    }

    // Adds a text or what stands for a site.
    bool Fill(const Piece& piece, const Filling& filling, int pass, std::string& source) {
        if (piece.kind == Piece::Kind::kText) {
            source += piece.text;
            return true;
        }
        const Site& site = m_sites[piece.site];
        if (filling.valued.contains(piece.site)) {
            const auto value = filling.pValues->find(piece.place);
            if (value == filling.pValues->end())
                return Fail("no call tells what its arguments are");
            source += value->second;
            return true;
        }
        switch (site.kind) {
            case ValueKind::kName:
                source += NameOf(site, pass);
                break;
            case ValueKind::kNumber:
                source += IsInName(source) ? NameOf(site, pass) : m_numbers[site.number];
                break;
            case ValueKind::kLiteral:
                source.append(1, site.quote).append(NameOf(site, pass)).append(1, site.quote);
                break;
            case ValueKind::kList:
                if (pass > 0 || site.changesInLoop) return Fail("it has a list in a loop");
                source += NameOf(site, 0);
                if (filling.doubledList == piece.site) {
                    source.append(JointOf(site)).append(NameOf(site, 1));
                }
                break;
            case ValueKind::kOther:
                return Fail("what becomes of it depends on the values of its arguments");
        }
        return true;
    }

    // What comes next in `source` goes on with a name.
    static bool IsInName(const std::string& source) {
        return !source.empty() && GoesOnAName(source.back()) && source.back() != '.';
    }

    [[nodiscard]] std::string NameOf(const Site& site, int pass) const {
        if (site.elementOf != macro::kNowhere) return NameOf(m_sites[site.elementOf], pass);
        const std::size_t second = pass > 0 && (site.changesInLoop || IsList(site)) ? 1 : 0;
        const std::size_t number = 2 * site.number + second;
        constexpr std::size_t kLetters = 26;
        const bool isFirst = m_firstSite < m_sites.size() && &m_sites[m_firstSite] == &site;
        std::string name = isFirst ? m_firstPrefix : m_prefix;
        name += static_cast<char>('a' + number / kLetters);
        name += static_cast<char>('a' + number % kLetters);
        return name;
    }

    static bool IsList(const Site& site) { return site.kind == ValueKind::kList; }

    // What stands between two elements of the list.
    static std::string JointOf(const Site& site) {
        for (const char* pJoint : {"+", ">", "BY", "*", ",", "TO"}) {
            if (site.joints.contains(pJoint)) return std::string(" ") + pJoint + " ";
        }
        return " ";
    }

    bool FindRepetitions(const std::vector<Piece>& line, const Filling& filling,
                         const std::vector<TemplateToken>& tokens,
                         std::vector<Repetition>& repetitions) {
        std::set<std::size_t> sites;
        CollectSites(line, sites);
        for (const std::size_t number : sites) {
            const Site& site = m_sites[number];
            if (!IsList(site) || filling.valued.contains(number)) continue;
            Filling doubled = filling;
            doubled.doubledList = number;
            PassNames names = {{NameOf(site, 0), NameOf(site, 1)}};
            Repetition repetition;
            repetition.list = number;
            for (const Piece& piece : line) {
                if (piece.linkedSite != number) continue;
                AddPassNames(piece, names);
                repetition.pLoop = &piece;
            }
            if (!Repeat(line, doubled, names, tokens, repetition, repetitions)) return false;
        }
        std::size_t loops = 0;
        for (const Piece& piece : line) {
            if (piece.kind != Piece::Kind::kLoop) continue;
            Filling doubled = filling;
            doubled.doubledLoop = loops++;
            if (piece.linkedSite != macro::kNowhere) continue;
            PassNames names;
            AddPassNames(piece, names);
            if (names.empty()) return Fail("it holds a loop that repeats the same");
            Repetition repetition;
            repetition.pLoop = &piece;
            if (!Repeat(line, doubled, names, tokens, repetition, repetitions)) return false;
        }
        std::sort(repetitions.begin(), repetitions.end(),
                  [](const auto& a, const auto& b) { return a.part.begin < b.part.begin; });
        for (std::size_t i = 1; i < repetitions.size(); ++i) {
            if (repetitions[i].part.begin < repetitions[i - 1].part.end) {
                return Fail("its lists depend on one another");
            }
        }
        return true;
    }

    void AddPassNames(const Piece& loop, PassNames& names) const {
        for (const Piece& inner : loop.inner) {
            if (inner.kind != Piece::Kind::kSite) continue;
            const Site& site = m_sites[inner.site];
            const bool isNew = site.changesInLoop && site.elementOf == macro::kNowhere;
            if (isNew) names.emplace_back(NameOf(site, 0), NameOf(site, 1));
        }
    }

    bool Repeat(const std::vector<Piece>& line, const Filling& doubled, const PassNames& names,
                const std::vector<TemplateToken>& tokens, const Repetition& repetition,
                std::vector<Repetition>& repetitions) {
        std::vector<TemplateToken> twice;
        if (!Convert(line, doubled, twice)) return false;
        const auto parts = FindRepeatedParts(tokens, twice, names);
        if (!parts) return Fail("what becomes of its list is not a list");
        for (const RepeatedPart& part : *parts) {
            repetitions.push_back(repetition);
            repetitions.back().part = part;
        }
        return true;
    }

    // Where the values of the calls come out again, their sites are written. The tokens keep their
    // numbers, so that those of a value but for its first become empty.
    bool PutValuesBack(const std::vector<Piece>& line, const Filling& filling,
                       std::vector<TemplateToken>& tokens) {
        for (const Piece& piece : line) {
            if (piece.kind != Piece::Kind::kSite || !filling.valued.contains(piece.site)) continue;
            const std::string& value = filling.pValues->at(piece.place);
            const std::vector<TemplateToken> wanted = TokensOfTemplate(value, m_owner.m_codePage);
            if (wanted.empty()) continue;
            const std::string& source = m_sites[piece.site].source;
            bool isFound = std::any_of(
                tokens.begin(), tokens.end(),
                [&](const TemplateToken& token) { return token.isSource && token.text == source; });
            for (std::size_t i = 0; i + wanted.size() <= tokens.size(); ++i) {
                if (!IsValueAt(tokens, i, wanted)) continue;
                for (std::size_t k = 0; k < wanted.size(); ++k) {
                    tokens[i + k] = {k == 0 ? tokens[i].space : "", k == 0 ? source : "",
                                     TokenKind::kMacroWord, true};
                }
                isFound = true;
            }
            if (!isFound) return Fail("what becomes of it depends on " + source);
        }
        return true;
    }

    [[nodiscard]] static bool IsValueAt(const std::vector<TemplateToken>& tokens, std::size_t begin,
                                        const std::vector<TemplateToken>& wanted) {
        for (std::size_t k = 0; k < wanted.size(); ++k) {
            const TemplateToken& token = tokens[begin + k];
            if (token.isSource || token.kind != wanted[k].kind) return false;
            const bool isSame = token.kind == TokenKind::kIdentifier
                                    ? InCapitals(token.text) == InCapitals(wanted[k].text)
                                    : token.text == wanted[k].text;
            if (!isSame) return false;
        }
        return true;
    }

    bool WriteTokens(const std::vector<TemplateToken>& tokens,
                     const std::vector<Repetition>& repetitions, std::string& text) {
        std::size_t position = 0;
        for (const Repetition& repetition : repetitions) {
            if (!WriteRange(tokens, position, repetition.part.begin, nullptr, text)) return false;
            if (!WriteRepetition(tokens, repetition, text)) return false;
            position = repetition.part.end;
        }
        return WriteRange(tokens, position, tokens.size(), nullptr, text);
    }

    bool WriteRange(const std::vector<TemplateToken>& tokens, std::size_t begin, std::size_t end,
                    const Repetition* pIn, std::string& text) {
        for (std::size_t i = begin; i < end; ++i) {
            const TemplateToken& token = tokens[i];
            text += token.space;
            if (token.isSource) {
                text += token.text;
            } else if (!WriteToken(token, pIn, text)) {
                return false;
            }
        }
        return true;
    }

    // Whether the list comes out as it is.
    bool WriteWholeList(const std::vector<TemplateToken>& tokens, const Repetition& repetition,
                        std::string& text) const {
        if (repetition.list == macro::kNowhere) return false;
        const RepeatedPart& part = repetition.part;
        const Site& site = m_sites[repetition.list];
        const bool isWhole = part.end == part.begin + 1 && KeepsJoints(site, part) &&
                             InSmallLetters(tokens[part.begin].text) == NameOf(site, 0);
        if (isWhole) text.append(tokens[part.begin].space).append(site.source);
        return isWhole;
    }

    static bool KeepsJoints(const Site& site, const RepeatedPart& part) {
        if (site.joints.empty()) return part.separator.empty();
        return site.joints.contains(InCapitals(part.separator));
    }

    bool WriteRepetition(const std::vector<TemplateToken>& tokens, const Repetition& repetition,
                         std::string& text) {
        const RepeatedPart& part = repetition.part;
        if (WriteWholeList(tokens, repetition, text)) return true;
        if (repetition.pLoop != nullptr) {
            if (!part.separator.empty()) return Fail("its loop leaves out what stands between");
            text.append(tokens[part.begin].space.empty() ? "" : "\n");
            text.append(repetition.pLoop->text).append(" ");
            if (!WriteRange(tokens, part.begin, part.end, &repetition, text)) return false;
            text += " !DOEND ";
            return true;
        }
        const Site& site = m_sites[repetition.list];
        text.append(tokens[part.begin].space).append("!DO !").append(m_variable).append(" !IN (");
        text.append(site.source).append(") ");
        if (site.joints.empty()) {
            if (!part.separator.empty()) return Fail("its list has nothing between its elements");
        } else {
            WriteJointCondition(site, text);
            if (!part.separator.empty()) {
                if (!KeepsJoints(site, part))
                    return Fail("its list has something else between its elements");
                text.append("!").append(m_variable).append(" ");
            }
            text += "!ELSE ";
        }
        if (!WriteRange(tokens, part.begin, part.end, &repetition, text)) return false;
        text += site.joints.empty() ? " !DOEND " : " !IFEND !DOEND ";
        return true;
    }

    void WriteJointCondition(const Site& site, std::string& text) const {
        text += "!IF (";
        bool isFirst = true;
        for (const std::string& joint : site.joints) {
            if (!isFirst) text += " !OR ";
            isFirst = false;
            text.append("!UPCASE(!").append(m_variable).append(") = '").append(joint).append("'");
        }
        text += ") !THEN ";
    }

    // What is written for a stand-in.
    struct Back {
        std::string source;
        const Site* pSite = nullptr;
    };

    // The site whose stand-in begins at `position` of `lower`, and its length there, which is 0
    // when there is none. False when the source must not stand there.
    bool FindStandIn(const std::string& lower, std::size_t position, const Repetition* pIn,
                     Back& back, std::size_t& length) {
        if (FindNumber(lower, position, back, length)) return true;
        const bool canBeName = lower.compare(position, m_prefix.size(), m_prefix) == 0 ||
                               lower.compare(position, m_firstPrefix.size(), m_firstPrefix) == 0;
        for (std::size_t i = 0; canBeName && i < m_sites.size(); ++i) {
            const Site& site = m_sites[i];
            if (site.elementOf != macro::kNowhere) continue;
            const std::string name = NameOf(site, 0);
            if (lower.compare(position, name.size(), name) != 0) continue;
            length = name.size();
            back = {site.source, &site};
            return !IsList(site) ? IsInItsLoop(site, pIn) : FindElement(i, pIn, back);
        }
        return true;
    }

    bool IsInItsLoop(const Site& site, const Repetition* pIn) {
        if (!site.changesInLoop || (pIn != nullptr && pIn->pLoop != nullptr)) return true;
        return Fail("it needs a variable outside of its loop");
    }

    // Outside of what is repeated nobody knows which element is meant.
    bool FindElement(std::size_t list, const Repetition* pIn, Back& back) {
        if (pIn == nullptr || pIn->list != list) return Fail("it needs one of a list");
        back.source = pIn->pLoop != nullptr ? pIn->pLoop->variable : "!" + m_variable;
        return true;
    }

    bool FindNumber(const std::string& lower, std::size_t position, Back& back,
                    std::size_t& length) const {
        if (position > 0 && macro::IsDigit(lower[position - 1])) return false;
        for (const Site& site : m_sites) {
            if (site.kind != ValueKind::kNumber) continue;
            const std::string& number = m_numbers[site.number];
            if (lower.compare(position, number.size(), number) != 0) continue;
            const std::size_t end = position + number.size();
            if (end < lower.size() && macro::IsDigit(lower[end])) continue;
            length = number.size();
            back = {site.source, &site};
            return true;
        }
        return false;
    }

    bool WriteToken(const TemplateToken& token, const Repetition* pIn, std::string& text) {
        const std::string lower = InSmallLetters(token.text);
        // Pieces of the token's own text and sources, by turns.
        std::vector<std::string> texts = {""};
        std::vector<Back> backs;
        std::size_t position = 0;
        while (position < lower.size()) {
            Back back;
            std::size_t length = 0;
            if (!FindStandIn(lower, position, pIn, back, length)) return false;
            if (length > 0) {
                backs.push_back(std::move(back));
                texts.emplace_back();
                position += length;
            } else {
                texts.back() += token.text[position++];
            }
        }
        if (backs.empty()) {
            text += token.text;
        } else if (token.kind == TokenKind::kLiteral) {
            WriteLiteral(texts, backs, text);
        } else {
            WriteJoined(texts, backs, text);
        }
        return true;
    }

    // The stand-in of a literal alone is the literal; within another one its contents count.
    static void WriteLiteral(const std::vector<std::string>& texts, const std::vector<Back>& backs,
                             std::string& text) {
        const Site& first = *backs.front().pSite;
        if (backs.size() == 1 && first.kind == ValueKind::kLiteral &&
            texts.front() == std::string(1, first.quote) && texts.back() == texts.front()) {
            text += backs.front().source;
            return;
        }
        WriteConcat(texts, backs, /*inLiteral=*/true, text);
    }

    // A name that goes on after the stand-in would be taken for a longer one.
    static void WriteJoined(const std::vector<std::string>& texts, const std::vector<Back>& backs,
                            std::string& text) {
        const Site& first = *backs.front().pSite;
        const bool isAlone = backs.size() == 1 && texts.back().empty();
        if (isAlone && texts.front() == "$" && first.isLong) {
            text.append("!SUBSTR(!CONCAT('$', ").append(first.source).append("), 1, 8)");
            return;
        }
        const bool isJoined = std::any_of(texts.begin() + 1, texts.end(), [](const auto& part) {
            return !part.empty() && GoesOnAName(part.front());
        });
        if (isJoined || backs.size() > 1) {
            WriteConcat(texts, backs, /*inLiteral=*/false, text);
        } else {
            text.append(texts.front()).append(backs.front().source).append(texts.back());
        }
    }

    // Texts and sources by turns, run together.
    static void WriteConcat(const std::vector<std::string>& texts, const std::vector<Back>& backs,
                            bool inLiteral, std::string& text) {
        std::vector<std::string> operands;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            if (i > 0) {
                const Back& back = backs[i - 1];
                const std::string operand =
                    back.pSite->isMacroName ? back.pSite->Operand() : back.source;
                const bool isQuoted = inLiteral && back.pSite->kind == ValueKind::kLiteral;
                operands.push_back(isQuoted ? "!UNQUOTE(" + operand + ")" : operand);
            }
            if (texts[i].empty()) continue;
            std::string contents = texts[i];
            ReplaceAll(contents, "'", "''");
            operands.push_back("'" + contents + "'");
        }
        text += "!CONCAT(";
        for (std::size_t i = 0; i < operands.size(); ++i) {
            text.append(i > 0 ? ", " : "").append(operands[i]);
        }
        text += ")";
    }

    BodyRewriter& m_owner;
    const std::string& m_body;
    Lexer m_lexer;
    const BodyRegion& m_region;
    const RegionTrace& m_trace;
    int m_attempt;

    std::string m_prefix;       // of all stand-ins but one that comes before all other names
    std::string m_firstPrefix;  // of that one
    std::size_t m_firstSite = macro::kNowhere;
    std::string m_variable;              // of our own loops, without "!"
    std::vector<std::string> m_numbers;  // that stand for numbers
    std::vector<Site> m_sites;
    std::map<std::string, std::size_t> m_sitesBySource;
    std::map<std::string, std::vector<std::size_t>> m_placesOf;  // sites by sources in capitals
    std::string m_reason;
    std::vector<Branch> m_path;  // that is being followed
    int m_leaves = 0;
    bool m_hasMore = false;
};

BodyRewriter::BodyRewriter(const macro::Macro& macro, const CodePage& codePage, bool batchMode,
                           const FindMacroNameUse& findUse)
    : m_macro(macro),
      m_codePage(codePage),
      m_batchMode(batchMode),
      m_findUse(findUse),
      m_cutter(macro.body, codePage, batchMode) {
    const IsMacroName isMacroName = [this](std::string_view word) {
        return m_findUse(word) != MacroNameUse::kNone;
    };
    auto nodes = ParseBody(macro, codePage, isMacroName);
    if (!nodes) return;
    m_nodes = std::move(*nodes);
    m_cutter.FindLegacy(m_nodes, m_regions);
    m_traces.resize(m_regions.size());
}

// A call with arguments would take the marks for some of them.
void BodyRewriter::AddSiteMarks(const BodyNode& node, Marks& marks) const {
    const bool isName = node.kind == BodyNode::Kind::kName;
    const bool isCall =
        isName && m_findUse(m_macro.body.substr(node.begin, node.end - node.begin)) ==
                      MacroNameUse::kWithArguments;
    if ((isName || node.kind == BodyNode::Kind::kSite) && !isCall) {
        marks.emplace(node.begin, "\x01S" + std::to_string(node.begin) + "\x02");
        marks.emplace(node.end, "\x03");
    }
    if (node.kind == BodyNode::Kind::kCondition) {
        marks.emplace(node.contentBegin, "\x01S" + std::to_string(node.contentBegin) + "\x02\x03");
    }
    for (const BodyNode& child : node.children) AddSiteMarks(child, marks);
    for (const BodyNode& child : node.otherwise) AddSiteMarks(child, marks);
}

std::string BodyRewriter::MarkedBody(std::size_t mark) const {
    const std::string& body = m_macro.body;
    const Lexer lexer(m_codePage, body);
    Marks marks;
    // A period that comes first is no text of the body.
    std::size_t begin = lexer.SkipSpace(0);
    begin = lexer.At(begin) == '.' && !macro::IsDigit(lexer.At(begin + 1)) ? begin + 1 : 0;
    marks.emplace(begin, "\x01" + ("B" + std::to_string(mark)) + "\x02\x03");
    for (std::size_t i = 0; i < m_regions.size(); ++i) {
        const BodyRegion& region = m_regions[i];
        const std::string name = std::to_string(mark) + "." + std::to_string(i);
        marks.emplace(region.begin, "\x01R" + name + "\x02\x03");
        for (const BodyElement& element : region.elements) {
            if (element.pNode->kind != BodyNode::Kind::kText) AddSiteMarks(*element.pNode, marks);
        }
    }
    std::string text;
    std::size_t written = 0;
    for (const auto& [place, bytes] : marks) {
        text.append(body, written, place - written).append(bytes);
        written = place;
    }
    return text.append(body, written);
}

std::optional<std::string> BodyRewriter::Rewrite(int attempt, std::string& reason) {
    std::string text;
    std::size_t written = 0;
    bool hasMore = attempt == 0;
    const Lexer lexer(m_codePage, m_macro.body);
    for (std::size_t i = 0; i < m_regions.size(); ++i) {
        const BodyRegion& region = m_regions[i];
        if (m_traces[i].runs == 0) continue;
        text.append(m_macro.body, written, region.begin - written);
        RegionWriter writer(*this, region, m_traces[i], attempt);
        if (!writer.Write(text)) {
            reason = writer.Reason();
            return std::nullopt;
        }
        hasMore = hasMore || !writer.IsLastAttempt();
        written = region.end;
        while (macro::IsSpace(text.back())) text.pop_back();
        if (!macro::IsLineBreak(lexer.At(written))) text += '\n';
    }
    if (!hasMore || written == 0) return std::nullopt;
    return text.append(m_macro.body, written);
}

long BodyRewriter::CountUnused() const {
    return static_cast<long>(
        std::count_if(m_traces.begin(), m_traces.end(),
                      [](const RegionTrace& trace) { return trace.runs == 0; }));
}

}  // namespace quillet
