// Which keywords may stand where in an IGRAPH command, and how words match them.
#ifndef QUILLET_IGRAPH_READ_KEYWORDSETS_H
#define QUILLET_IGRAPH_READ_KEYWORDSETS_H

#include <span>
#include <string_view>

#include "igraph/model/keyword.h"

namespace quillet::igraph {

/// The keywords allowed at one place of the command.
using KeywordSet = std::span<const Keyword>;

/// How a word compares with the keywords of a place.
struct KeywordMatch {
    enum class Outcome { kNoMatch, kAmbiguous, kMatch };

    Outcome outcome = Outcome::kNoMatch;
    Keyword keyword{};        ///< Only with `kMatch`.
    bool inFirstSet = false;  ///< Only with `kMatch`: which of the two sets holds it.
};

/// Compares `word`, in upper case, with the keywords of `first` and `second`.
///
/// A word is a keyword when it is equal to it, or when it has at least three characters and is
/// the beginning of one keyword alone. Both sets count as one for this, so that an optional word
/// is never mistaken for the setting after it; a keyword in both counts as of the first.
[[nodiscard]] KeywordMatch MatchKeyword(std::string_view word, KeywordSet first,
                                        KeywordSet second = {});

/// True when `word`, in upper case, is one of the keywords in full.
[[nodiscard]] bool IsExactKeyword(std::string_view word, KeywordSet set);

/// The sets, by the place where they may stand. Spans over constants.
namespace keywords {

extern const KeywordSet kSubcommands;
extern const KeywordSet kOnOff;

extern const KeywordSet kAxisSettings;
extern const KeywordSet kLegendSettings;  ///< The axis settings among them.
extern const KeywordSet kMeasures;
extern const KeywordSet kScaleEnds;
extern const KeywordSet kCategoryOrder;  ///< The summary functions among them.
extern const KeywordSet kPointLabelSettings;
extern const KeywordSet kCoordinates;
extern const KeywordSet kEffects;
extern const KeywordSet kRefLineSettings;
extern const KeywordSet kSpikeSettings;
extern const KeywordSet kTotal;

extern const KeywordSet kScatterSettings;
extern const KeywordSet kCoincident;
extern const KeywordSet kBarSettings;
extern const KeywordSet kBarLabels;
extern const KeywordSet kBarShapes;
extern const KeywordSet kBases;
extern const KeywordSet kAuto;
extern const KeywordSet kAreaSettings;
extern const KeywordSet kPointLabels;
extern const KeywordSet kCategoryLabels;
extern const KeywordSet kBreaks;
extern const KeywordSet kInterpolations;
extern const KeywordSet kLineSettings;
extern const KeywordSet kLineStyles;
extern const KeywordSet kPieSettings;
extern const KeywordSet kSliceLabels;
extern const KeywordSet kBoxSettings;
extern const KeywordSet kBoxLabels;
extern const KeywordSet kWhiskers;
extern const KeywordSet kErrorBarSettings;
extern const KeywordSet kErrorBarLabels;
extern const KeywordSet kDirections;
extern const KeywordSet kCapStyles;
extern const KeywordSet kHistogramSettings;
extern const KeywordSet kHistogramShapes;
extern const KeywordSet kIntervals;
extern const KeywordSet kFitSettings;
extern const KeywordSet kFitMethods;
extern const KeywordSet kLinear;
extern const KeywordSet kKernels;
extern const KeywordSet kFitIntervals;
extern const KeywordSet kFitScopes;
extern const KeywordSet kBandwidths;

extern const KeywordSet kSummaryFunctions;

}  // namespace keywords

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_READ_KEYWORDSETS_H
