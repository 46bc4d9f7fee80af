// The old command has words that a conversion does not know, and passes over. Whoever asks what the
// command meant has to know them, so these lists are not those of the parser and the translator.
#include "outline/askedwords.h"

#include <algorithm>
#include <iterator>

namespace quillet::outline {

namespace {

constexpr SubcommandWord kSubcommands[] = {
    {"AUTOLABEL", AskedSubcommand::kAutoLabel},
    {"BASE", AskedSubcommand::kBase},
    {"BOXCHARS", AskedSubcommand::kPassedOver},
    {"BREAK", AskedSubcommand::kBreak},
    {"CAPTION", AskedSubcommand::kHeading, HeadingKind::kCaption},
    {"CONTINUED", AskedSubcommand::kPassedOver},
    {"CORNER", AskedSubcommand::kHeading, HeadingKind::kCorner},
    {"FONTCHARS", AskedSubcommand::kPassedOver},
    {"FOOTNOTE", AskedSubcommand::kHeading, HeadingKind::kFootnote},
    {"FORMAT", AskedSubcommand::kFormat},
    {"FTOTAL", AskedSubcommand::kFollowingTotal},
    {"GBASE", AskedSubcommand::kGroupBase},
    {"INDEX", AskedSubcommand::kPassedOver},
    {"MDGROUP", AskedSubcommand::kDichotomySet},
    {"MISSING", AskedSubcommand::kMissing},
    {"MRGROUP", AskedSubcommand::kCategorySet},
    {"OBSERVATION", AskedSubcommand::kObservation},
    {"PFOOTNOTE", AskedSubcommand::kHeading, HeadingKind::kPageFootnote},
    {"PTITLE", AskedSubcommand::kHeading, HeadingKind::kPageTitle},
    {"PTOTAL", AskedSubcommand::kPrecedingTotal},
    {"SORT", AskedSubcommand::kSort},
    {"STATISTICS", AskedSubcommand::kStatistics},
    {"TABLE", AskedSubcommand::kTable},
    {"TFOOTNOTE", AskedSubcommand::kHeading, HeadingKind::kFootnote},
    {"TITLE", AskedSubcommand::kHeading, HeadingKind::kTitle},
    {"TTITLE", AskedSubcommand::kHeading, HeadingKind::kTitle},
    {"WRITE", AskedSubcommand::kPassedOver},
};

constexpr std::string_view kSettings[] = {
    "ALL",        "ANSWERING", "ASCENDING", "BLANK",      "CASES", "DEFAULT",
    "DESCENDING", "EXCLUDE",   "INCLUDE",   "LABELS",     "OFF",   "ON",
    "QUALIFIED",  "RESPONSES", "U",         "UNWEIGHTED", "ZERO",
};

constexpr FunctionWord kFunctions[] = {
    {"CASES"},
    {"COUNT"},
    {"CPCT", PercentageOf::kCases},
    {"CSPCT", PercentageOf::kResponses},
    {"MAXIMUM"},
    {"MEAN"},
    {"MEDIAN"},
    {"MODE"},
    {"MINIMUM"},
    {"PTILE"},
    {"RANGE"},
    {"RPCT", PercentageOf::kResponses},
    {"RESPONSES"},
    {"SEMEAN"},
    {"SPCT", PercentageOf::kValues},
    {"STDDEV"},
    {"SUM"},
    {"VALIDN"},
    {"VARIANCE"},
    {"VPCT", PercentageOf::kValidValues},
    {"HPTILE"},
    {"WPTILE"},
    {"RPTILE"},
    {"EPTILE"},
    {"APTILE"},
};

// The same as `Means`, for lists of words most of which begin with another letter.
bool MeansWord(const CommandToken& token, std::string_view word) {
    return !token.value.empty() && token.value.front() == word.front() && token.Means(word);
}

// The entry of a list whose word a token means; null for none.
template <typename List>
auto FindWord(const List& list, const CommandToken& token) -> decltype(std::begin(list)) {
    const auto* pFound =
        std::find_if(std::begin(list), std::end(list),
                     [&token](const auto& entry) { return MeansWord(token, entry.word); });
    return pFound == std::end(list) ? nullptr : pFound;
}

}  // namespace

const SubcommandWord* FindSubcommand(const CommandToken& word) {
    return FindWord(kSubcommands, word);
}

bool IsSetting(const CommandToken& word) {
    return std::any_of(std::begin(kSettings), std::end(kSettings),
                       [&word](std::string_view setting) { return MeansWord(word, setting); });
}

const FunctionWord* FindFunction(const CommandToken& word) { return FindWord(kFunctions, word); }

PercentageOf PercentageOfFunction(std::string_view name) {
    for (const FunctionWord& function : kFunctions) {
        if (function.word == name) return function.percentage;
    }
    return PercentageOf::kNothing;
}

}  // namespace quillet::outline
