// The words of the TABLES command: its subcommands and its functions.
#ifndef QUILLET_OUTLINE_ASKEDWORDS_H
#define QUILLET_OUTLINE_ASKEDWORDS_H

#include <string_view>

#include "outline/commandtokens.h"

namespace quillet::outline {

/// A subcommand, by what its text means.
enum class AskedSubcommand : unsigned char {
    kUnknown,
    kAutoLabel,
    kBase,
    kBreak,
    kFormat,
    kFollowingTotal,
    kGroupBase,
    kHeading,
    kCategorySet,   ///< MRGROUP
    kDichotomySet,  ///< MDGROUP
    kMissing,
    kObservation,
    kPassedOver,  ///< What says nothing about what is in a table.
    kPrecedingTotal,
    kSort,
    kStatistics,
    kTable,
};

/// A subcommand's word.
struct SubcommandWord {
    std::string_view word;  ///< The whole name, in upper case.
    AskedSubcommand subcommand;
    HeadingKind heading = HeadingKind::kTitle;  ///< Of `kHeading`.
};

/// The subcommand that a word means by its first three letters; null for none.
[[nodiscard]] const SubcommandWord* FindSubcommand(const CommandToken& word);

/// True for a word that is a setting of a subcommand and never begins one. After a "/" it goes on
/// with what stands before.
[[nodiscard]] bool IsSetting(const CommandToken& word);

/// What a function counts for a percentage.
enum class PercentageOf : unsigned char { kNothing, kCases, kResponses, kValues, kValidValues };

/// A summary function.
struct FunctionWord {
    std::string_view word;  ///< The whole name, in upper case.
    PercentageOf percentage = PercentageOf::kNothing;
};

/// The function that a word means by its first three letters; null for none.
[[nodiscard]] const FunctionWord* FindFunction(const CommandToken& word);

/// What the function of this whole name counts; `kNothing` for one that is no percentage.
[[nodiscard]] PercentageOf PercentageOfFunction(std::string_view name);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ASKEDWORDS_H
