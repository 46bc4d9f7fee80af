#include "gplchecker.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <sstream>

namespace quillet::igraph {

namespace {

constexpr std::array<std::string_view, 7> kLabels = {"SOURCE", "DATA",  "TRANS",  "COORD",
                                                     "GUIDE",  "SCALE", "ELEMENT"};

const std::set<std::string_view> kFunctions = {"userSource",
                                               "id",
                                               "col",
                                               "source",
                                               "name",
                                               "unit.category",
                                               "eval",
                                               "abs",
                                               "dim",
                                               "rect",
                                               "cluster",
                                               "transpose",
                                               "polar.theta",
                                               "startAngle",
                                               "linear",
                                               "cat",
                                               "min",
                                               "max",
                                               "include",
                                               "dataMinimum",
                                               "dataMaximum",
                                               "reverse",
                                               "origin",
                                               "sort.statistic",
                                               "sort.data",
                                               "sort.natural",
                                               "aesthetic",
                                               "axis",
                                               "legend",
                                               "label",
                                               "null",
                                               "opposite",
                                               "text.title",
                                               "text.subtitle",
                                               "text.footnote",
                                               "form.line",
                                               "position",
                                               "point",
                                               "point.jitter",
                                               "line",
                                               "interval",
                                               "interval.stack",
                                               "interval.dodge",
                                               "area",
                                               "area.stack",
                                               "schema",
                                               "color.interior",
                                               "shape.interior",
                                               "texture.pattern.interior",
                                               "size",
                                               "summary.count",
                                               "summary.mean",
                                               "summary.median",
                                               "summary.mode",
                                               "summary.sum",
                                               "summary.sd",
                                               "summary.variance",
                                               "summary.min",
                                               "summary.max",
                                               "summary.range",
                                               "summary.first",
                                               "summary.last",
                                               "summary.se",
                                               "summary.kurtosis",
                                               "summary.skewness",
                                               "summary.se.kurtosis",
                                               "summary.se.skewness",
                                               "summary.percentile",
                                               "summary.percent.count",
                                               "summary.percent.sum",
                                               "summary.count.cumulative",
                                               "summary.percent.count.cumulative",
                                               "summary.countTrue",
                                               "summary.percentTrue",
                                               "base.all",
                                               "base.coordinate",
                                               "acrossPanels",
                                               "alpha",
                                               "multiple",
                                               "bin.rect",
                                               "binCount",
                                               "binWidth",
                                               "bin.quantile.letter",
                                               "density.normal",
                                               "smooth.linear",
                                               "smooth.loess",
                                               "smooth.mean",
                                               "smooth.spline",
                                               "smooth.step.left",
                                               "smooth.step.center",
                                               "smooth.step.right",
                                               "jump",
                                               "noConstant",
                                               "normal",
                                               "uniform",
                                               "epanechnikov",
                                               "region.confi.mean",
                                               "region.confi.smooth.linear",
                                               "region.confi.smooth.mean",
                                               "region.spread.sd",
                                               "region.spread.se",
                                               "missing.gap",
                                               "missing.interpolate"};

const std::set<std::string_view> kConstants = {"shape.square",
                                               "shape.ibeam",
                                               "shape.line",
                                               "aesthetic.color.interior",
                                               "aesthetic.shape.interior",
                                               "aesthetic.texture.pattern.interior",
                                               "aesthetic.size"};

const std::set<std::string_view> kAesthetics = {"color.interior", "shape.interior",
                                                "texture.pattern.interior", "size"};

const std::set<std::string_view> kWordsOfExpressions = {"s", "and", "or", "not", "true", "false"};

struct Token {
    enum class Kind { kName, kNumber, kText, kPunctuation };

    Kind kind;
    std::string text;  // of a string: its contents, unescaped
};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsNameByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || IsDigit(c) || c == '_' ||
           static_cast<unsigned char>(c) >= 128;
}

// Letters outside ASCII are left as they are: two identifiers that differ in them alone differ.
std::string Lower(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

class Checker {
public:
    explicit Checker(std::string_view usedNames) {
        std::istringstream stream{std::string(usedNames)};
        for (std::string name; stream >> name;) m_usedNames.insert(Lower(name));
    }

    std::vector<std::string> Check(std::string_view gpl);

private:
    void Fault(std::string_view what, std::string_view where = "") {
        std::string fault(what);
        if (!where.empty()) fault += ": " + std::string(where);
        m_faults.push_back(std::move(fault));
    }

    void CheckStatement(std::string_view statement);
    bool Tokenize(std::string_view text);
    void CheckParentheses(std::string_view statement);
    void CheckOrder(std::string_view label);
    void CheckWords(std::string_view label, std::size_t begin);
    void CheckColumn(std::string_view statement);
    void Declare(const std::string& identifier);
    void CheckDimensions(std::string_view label);
    void CheckTargets();

    [[nodiscard]] bool IsAt(std::size_t index, std::string_view punctuation) const {
        return index < m_tokens.size() && m_tokens[index].kind == Token::Kind::kPunctuation &&
               m_tokens[index].text == punctuation;
    }

    std::set<std::string> m_usedNames;    // in lower case
    std::set<std::string> m_columnNames;  // likewise
    std::set<std::string> m_identifiers;  // as declared
    std::set<std::string> m_lowerIdentifiers;
    std::set<std::string> m_shownAesthetics;
    std::set<std::string> m_legendAesthetics;  // those with a legend or a scale
    std::size_t m_mostFactors = 0;             // of the positions
    std::size_t m_highestDimension = 0;        // of the axes and scales
    std::array<std::size_t, kLabels.size()> m_counts{};
    std::size_t m_lastLabel = 0;
    std::vector<Token> m_tokens;  // of the current statement
    std::vector<std::string> m_faults;
};

std::vector<std::string> Checker::Check(std::string_view gpl) {
    if (!gpl.starts_with('\n') || !gpl.ends_with('\n') || gpl.size() < 2) {
        Fault("does not begin and end with a line end");
        return m_faults;
    }
    gpl.remove_prefix(1);
    std::string statement;
    while (!gpl.empty()) {
        const std::size_t end = gpl.find('\n');
        const std::string_view line = gpl.substr(0, end);
        gpl.remove_prefix(end + 1);
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) Fault("an empty line");
        if (line.find('\r') != std::string_view::npos) Fault("a carriage return", line);
        if (line.starts_with("    ")) {
            if (!statement.ends_with(',')) Fault("broken elsewhere than after a comma", line);
            statement += ' ';
            statement += line.substr(4);
        } else {
            if (!statement.empty()) CheckStatement(statement);
            if (!line.starts_with("  ") || line.starts_with("   ")) Fault("indentation", line);
            statement = line.substr(std::min<std::size_t>(2, line.size()));
        }
    }
    CheckStatement(statement);
    if (m_counts[0] != 1) Fault("not one SOURCE");
    if (m_counts[3] > 1) Fault("more than one COORD");
    if (m_counts[6] == 0) Fault("no ELEMENT");
    for (const std::string& name : m_usedNames) {
        if (!m_columnNames.contains(name)) Fault("a used variable without a column", name);
    }
    CheckTargets();
    return m_faults;
}

bool Checker::Tokenize(std::string_view text) {
    m_tokens.clear();
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (c == ' ') {
            ++i;
        } else if (c == '"') {
            Token token{Token::Kind::kText, ""};
            ++i;
            while (i < text.size() && text[i] != '"') {
                if (text[i] == '\\') ++i;
                if (i < text.size()) token.text += text[i++];
            }
            if (i >= text.size()) {
                Fault("a string without an end", text);
                return false;
            }
            ++i;
            m_tokens.push_back(std::move(token));
        } else if (IsDigit(c) || (c == '-' && i + 1 < text.size() && IsDigit(text[i + 1]))) {
            std::size_t end = i + 1;
            const auto isExponentSign = [&text](std::size_t at) {
                return (text[at] == '+' || text[at] == '-') && text[at - 1] == 'e';
            };
            while (end < text.size() && (IsDigit(text[end]) || text[end] == '.' ||
                                         text[end] == 'e' || isExponentSign(end))) {
                ++end;
            }
            m_tokens.push_back({Token::Kind::kNumber, std::string(text.substr(i, end - i))});
            i = end;
        } else if (IsNameByte(c)) {
            std::size_t end = i + 1;
            while (end < text.size() && (IsNameByte(text[end]) || text[end] == '.')) ++end;
            m_tokens.push_back({Token::Kind::kName, std::string(text.substr(i, end - i))});
            i = end;
        } else if (std::string_view("()*,=:&<>").find(c) != std::string_view::npos) {
            const bool isDouble =
                i + 1 < text.size() && text[i + 1] == '=' && (c == '=' || c == '<' || c == '>');
            m_tokens.push_back(
                {Token::Kind::kPunctuation, std::string(text.substr(i, isDouble ? 2 : 1))});
            i += isDouble ? 2 : 1;
        } else {
            Fault("a character that belongs nowhere", text.substr(i));
            return false;
        }
    }
    return true;
}

void Checker::CheckParentheses(std::string_view statement) {
    int depth = 0;
    for (std::size_t i = 0; i < m_tokens.size(); ++i) {
        if (IsAt(i, "(")) ++depth;
        if (IsAt(i, ")")) --depth;
        if (depth < 0) break;
    }
    if (depth != 0) Fault("parentheses do not match", statement);
}

void Checker::CheckOrder(std::string_view label) {
    const auto found = std::find(kLabels.begin(), kLabels.end(), label);
    if (found == kLabels.end()) {
        Fault("not a label", label);
        return;
    }
    const auto index = static_cast<std::size_t>(found - kLabels.begin());
    if (index < m_lastLabel) Fault("out of order", label);
    m_lastLabel = std::max(m_lastLabel, index);
    ++m_counts[index];
}

void Checker::Declare(const std::string& identifier) {
    if (identifier.find('.') != std::string::npos) Fault("not an identifier", identifier);
    if (IsDigit(identifier.front()) || identifier.front() == '_') {
        Fault("an identifier that begins wrongly", identifier);
    }
    const bool isWordOfExpressions = kWordsOfExpressions.contains(Lower(identifier));
    if (isWordOfExpressions && !m_identifiers.empty()) Fault("a word as identifier", identifier);
    if (!m_lowerIdentifiers.insert(Lower(identifier)).second) Fault("declared twice", identifier);
    m_identifiers.insert(identifier);
}

// Every name is a known function, a known constant or a declared identifier.
void Checker::CheckWords(std::string_view label, std::size_t begin) {
    for (std::size_t i = begin; i < m_tokens.size(); ++i) {
        if (m_tokens[i].kind != Token::Kind::kName) continue;
        const std::string& name = m_tokens[i].text;
        const bool isCall = IsAt(i + 1, "(");
        if (isCall && !kFunctions.contains(name)) Fault("not a function", name);
        if (isCall && label == "ELEMENT" && kAesthetics.contains(name) && i > 0) {
            // A shape that is a constant is no legend.
            if (!kConstants.contains(m_tokens[i + 2].text)) m_shownAesthetics.insert(name);
        }
        if (isCall) continue;
        if (kConstants.contains(name)) {
            if (name.starts_with("aesthetic.")) {
                m_legendAesthetics.insert(name.substr(std::string_view("aesthetic.").size()));
            }
        } else if (!m_identifiers.contains(name)) {
            Fault("not declared", name);
        }
    }
}

// id=col(source(s), name("...")), perhaps with unit.category().
void Checker::CheckColumn(std::string_view statement) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i + 2 < m_tokens.size(); ++i) {
        if (m_tokens[i].text == "name" && IsAt(i + 1, "(") &&
            m_tokens[i + 2].kind == Token::Kind::kText) {
            names.push_back(m_tokens[i + 2].text);
        }
    }
    if (names.size() != 1 || statement.find("=col(source(s), name(\"") == std::string_view::npos) {
        Fault("not a column", statement);
        return;
    }
    if (names.front() == "$CASENUM") return;
    if (!m_usedNames.contains(Lower(names.front()))) {
        Fault("a column that is not in the list of variables", names.front());
    }
    m_columnNames.insert(Lower(names.front()));
}

void Checker::CheckDimensions(std::string_view label) {
    std::size_t factors = 1;
    std::size_t most = 1;
    for (std::size_t i = 0; i < m_tokens.size(); ++i) {
        if (IsAt(i, "*")) {
            most = std::max(most, ++factors);
        } else if (m_tokens[i].kind == Token::Kind::kPunctuation) {
            factors = 1;
        }
        if (label != "COORD" && m_tokens[i].text == "dim" && IsAt(i + 1, "(") &&
            m_tokens[i + 2].kind == Token::Kind::kNumber) {
            m_highestDimension = std::max(
                m_highestDimension, static_cast<std::size_t>(std::stoul(m_tokens[i + 2].text)));
        }
    }
    if (label == "ELEMENT") m_mostFactors = std::max(m_mostFactors, most);
}

void Checker::CheckTargets() {
    for (const std::string& aesthetic : m_legendAesthetics) {
        if (!m_shownAesthetics.contains(aesthetic)) {
            Fault("a legend or scale of what no element shows", aesthetic);
        }
    }
    for (const std::string& aesthetic : m_shownAesthetics) {
        if (!m_legendAesthetics.contains(aesthetic)) Fault("no legend", aesthetic);
    }
    // A count leaves the measure out of the crossing, so one more dimension is there.
    if (m_highestDimension > m_mostFactors + 1) Fault("more dimensions than the crossing has");
}

void Checker::CheckStatement(std::string_view statement) {
    if (!Tokenize(statement)) return;
    if (m_tokens.size() < 5 || m_tokens[0].kind != Token::Kind::kName || !IsAt(1, ":")) {
        Fault("not a statement", statement);
        return;
    }
    const std::string label = m_tokens[0].text;
    CheckOrder(label);
    CheckParentheses(statement);
    CheckDimensions(label);
    const bool isNamed = label == "SOURCE" || label == "DATA" || label == "TRANS";
    if (isNamed != IsAt(3, "=")) Fault("named where it must not be, or not named", statement);
    const std::size_t begin = isNamed ? 4 : 2;
    if (m_tokens[begin].kind != Token::Kind::kName || !IsAt(begin + 1, "(") ||
        !IsAt(m_tokens.size() - 1, ")")) {
        Fault("not a call", statement);
    }
    CheckWords(label, begin);
    if (label == "DATA") CheckColumn(statement);
    if (isNamed) Declare(m_tokens[2].text);
}

}  // namespace

std::vector<std::string> CheckGpl(std::string_view gpl, std::string_view usedNames) {
    return Checker(usedNames).Check(gpl);
}

}  // namespace quillet::igraph
