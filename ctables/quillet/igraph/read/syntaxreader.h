// Reads the parts that the subcommands of an IGRAPH command are made of.
#ifndef QUILLET_IGRAPH_READ_SYNTAXREADER_H
#define QUILLET_IGRAPH_READ_SYNTAXREADER_H

#include <cstddef>
#include <string>

#include "igraph/model/igraphcommand.h"
#include "igraph/read/keywordsets.h"
#include "igraph/read/syntaxitems.h"

namespace quillet::igraph {

/// Why a text is no IGRAPH command. Users are not told; it makes the tests precise.
enum class SyntaxFault {
    kNone,
    kNotIgraph,    ///< The first word is another one.
    kStrayToken,   ///< Something other than a slash follows a complete subcommand.
    kSubcommand,   ///< No subcommand of that name, or more than one.
    kSetting,      ///< No setting or value of that name at this place, or more than one.
    kValue,        ///< A keyword, name, number, literal or ON or OFF is missing.
    kParenthesis,  ///< One is missing or not closed.
    kFunction,     ///< No such summary function, or a wrong number of arguments.
    kTwoExtents,   ///< An error bar with two of CI, SD and SE.
    kEmptyList,    ///< Empty parentheses after an element, or a PANEL without variables.
};

/// The numbers that a setting takes, both ends included.
struct NumberRange {
    double lowest;
    double highest;
};

/// Walks the items of a command from first to last.
///
/// Every function that reads returns false once something else than expected comes; the fault is
/// then set, and whoever called stops. A number outside its range is no such fault: the command
/// has been understood, it only makes no sense.
class SyntaxReader {
public:
    /// Begins with the token that the first `Next` of `sequence` makes current. The sequence is
    /// borrowed, and nobody else moves it meanwhile.
    explicit SyntaxReader(TokenSequenceBase& sequence)
        : m_items(sequence), m_current(m_items.Next()), m_following(m_items.Next()) {}

    /// Good until the next step; its texts live as long as the sequence.
    [[nodiscard]] const SyntaxItem& Current() const { return m_current; }
    [[nodiscard]] bool IsAt(SyntaxItem::Kind kind) const { return Current().kind == kind; }
    /// Steps to the next item; stays at the end.
    void Advance() {
        if (IsAt(SyntaxItem::Kind::kEnd)) return;
        m_current = m_following;
        m_following = m_items.Next();
        ++m_position;
    }

    /// Sets the fault and returns false.
    [[nodiscard]] bool Fail(SyntaxFault fault) {
        m_fault = fault;
        return false;
    }
    [[nodiscard]] SyntaxFault Fault() const { return m_fault; }

    void MarkOutOfRange() { m_hasNumberOutOfRange = true; }
    [[nodiscard]] bool HasNumberOutOfRange() const { return m_hasNumberOutOfRange; }

    [[nodiscard]] bool ReadKeyword(KeywordSet set, Keyword& keyword);
    [[nodiscard]] bool SkipKeyword(KeywordSet set);
    /// Reads a keyword of `set` if one comes. A keyword of `outer`, the settings that may come
    /// instead, is left alone, as is anything that is no word.
    [[nodiscard]] bool ReadOptionalKeyword(KeywordSet set, KeywordSet outer, bool& isRead,
                                           Keyword& keyword);
    [[nodiscard]] bool ReadOnOff(bool& isOn);
    [[nodiscard]] bool SkipOnOff();
    [[nodiscard]] bool ReadNumber(double& number);
    [[nodiscard]] bool ReadNumberIn(NumberRange range, double& number);
    /// A number above 0.
    [[nodiscard]] bool ReadLength(double& number);
    /// A number, with or without parentheses around it.
    [[nodiscard]] bool ReadParenthesizedNumber(NumberRange range, double& number);
    /// A literal's contents, with blanks for line breaks.
    [[nodiscard]] bool ReadLiteral(std::string& text);
    /// Reads a parenthesis.
    [[nodiscard]] bool Expect(SyntaxItem::Kind parenthesis);

    /// True when a variable comes or something that stands where only one can. The exact
    /// keywords of `settings` do not count as bare names.
    [[nodiscard]] bool IsAtReference(KeywordSet settings) const;
    /// Reads VAR(name), a bare name or one of $count, $pct and $case.
    [[nodiscard]] bool ReadReference(KeywordSet settings, VariableReference& reference);
    /// Reads the number after MIN or MAX.
    [[nodiscard]] bool ReadEnd(Keyword end, ScaleEnds& ends);
    /// Reads a summary function with its arguments.
    [[nodiscard]] bool ReadSummary(SummaryCall& call);
    /// Reads the arguments of `call.function`.
    [[nodiscard]] bool ReadSummaryArguments(SummaryCall& call);

    /// Reads settings of `set` until something other than a word comes. `read`, called after
    /// each setting's keyword with it, reads the rest and returns whether it could.
    template <typename ReadSetting>
    [[nodiscard]] bool ReadSettings(KeywordSet set, ReadSetting read) {
        while (IsAt(SyntaxItem::Kind::kWord)) {
            Keyword keyword{};
            if (!ReadKeyword(set, keyword) || !read(keyword)) return false;
        }
        return true;
    }

    /// Reads words of `set` until one of `outer` comes, or something other than a word. `take`
    /// is called with each.
    template <typename TakeWord>
    [[nodiscard]] bool ReadWords(KeywordSet set, KeywordSet outer, TakeWord take) {
        bool isRead = true;
        while (isRead) {
            Keyword keyword{};
            if (!ReadOptionalKeyword(set, outer, isRead, keyword)) return false;
            if (isRead) take(keyword);
        }
        return true;
    }
    [[nodiscard]] bool SkipWords(KeywordSet set, KeywordSet outer);

private:
    // The end is its own successor.
    [[nodiscard]] const SyntaxItem& Following() const { return m_following; }
    [[nodiscard]] int Position() const { return m_position; }
    [[nodiscard]] bool ReadName(VariableReference& reference);

    SyntaxItems m_items;
    SyntaxItem m_current;
    SyntaxItem m_following;
    int m_position = 0;
    SyntaxFault m_fault = SyntaxFault::kNone;
    bool m_hasNumberOutOfRange = false;
};

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_READ_SYNTAXREADER_H
