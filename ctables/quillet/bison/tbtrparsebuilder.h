// The actions of the grammar: they turn the values of a rule's right-hand side into the value of
// its left-hand side, and report what cannot be parsed or is passed over.
//
// Every action takes over what its `OpaqueValue` arguments hold: what it keeps goes into the
// node it returns, the rest is destroyed, and all of them are empty afterwards. An argument of a
// kind or type that the grammar cannot deliver asserts, and the result is then an empty value
// (or, for the two actions that return a bool, false without a report). Nodes made from keywords
// of subcommands carry no token. Cost: each is linear in the children it moves, and no child is
// moved more often than there are rules around it, or, in a chain of operators, more often than
// the number of operands has binary digits.
//
// There is a source file for each section of the grammar; tbtrparsevalues.h has what they share.
#ifndef QUILLET_BISON_TBTRPARSEBUILDER_H
#define QUILLET_BISON_TBTRPARSEBUILDER_H

#include <string_view>

#include "bison/opaquevaluemethods.h"
#include "parser/tbtrparsenode.h"
#include "parser/tbtrtablescommand.h"

namespace quillet {

// ---- Reports and warnings (tbtrparsereports.cpp)
//
// A report ends the parse: the grammar gives up right after it. It stands where `location` ends.
// All of these return an empty value.

/// The command is wrong in a place that no subcommand answers for.
OpaqueValue reportGenericError(TablesCommand& command, const TablesLocation& location);

/// What follows `keyword` is wrong for that subcommand.
OpaqueValue reportSubcommandArgumentError(TablesCommand& command, const TablesLocation& location,
                                          OpaqueValue& keyword);

/// Warns that the subcommand of `keyword` is passed over.
OpaqueValue reportObsoleteSubcommand(TablesCommand& command, OpaqueValue& keyword,
                                     OpaqueValue& arguments);

/// Warns that the subcommand whose word is no keyword is passed over.
OpaqueValue reportUnknownSubcommand(TablesCommand& command, OpaqueValue& subcommandString,
                                    OpaqueValue& arguments);

/// Warns that a FORMAT subcommand is passed over, unless that was the last warning already, and
/// goes on to the next slash. `lookAhead` is the token the parser stumbled over; the parser must
/// forget that it read it.
OpaqueValue reportObsoleteFormat(TablesCommand& command, OpaqueValue& keyword,
                                 OpaqueValue& lookAhead);

/// Writes what the parser calls a syntax error to the trace. Not a report: those follow.
void TraceSyntaxError(const TablesCommand& command, const TablesLocation& location,
                      std::string_view message);

// ---- Lists (tbtrparsebuilder.cpp)

/// A `TBI_GENERICLIST` without children.
OpaqueValue BuildEmptyList();

/// A list of `listType` with one element. A `TB_SORT` list begins with the empty slot of the
/// sort direction.
OpaqueValue StartList(NodeType listType, OpaqueValue& element);

/// Appends `element`; an empty one appends nothing, an empty `list` is started.
OpaqueValue AddToList(NodeType listType, OpaqueValue& list, OpaqueValue& element);

/// The same for a `TBI_VARLIST` of `SP_VARNAME` nodes made from name tokens.
OpaqueValue StartNameList(OpaqueValue& varname);
OpaqueValue AddToNameList(OpaqueValue& list, OpaqueValue& varname);

/// The same for a `TBI_GENERICLIST` of `SP_SLITERAL` nodes made from literal tokens.
OpaqueValue AddLiteralToList(OpaqueValue& list, OpaqueValue& literal);

/// Destroys tokens that mean nothing; an empty value.
OpaqueValue DiscardToken(OpaqueValue& token);
OpaqueValue DiscardToken(OpaqueValue& discarded, OpaqueValue& token);

// ---- Command and groups (tbtrparsebuilder.cpp)

/// Makes the root, a `TBI_GENERICLIST` of the global list and the table groups, and stores it in
/// `command`; an empty value.
OpaqueValue BuildCommand(TablesCommand& command, OpaqueValue& globalGroup,
                         OpaqueValue& tableGroupList);

/// A `TBI_GENERICLIST` of the `TB_TABLE` node and its subcommands.
OpaqueValue BuildTableGroup(OpaqueValue& table, OpaqueValue& localSubcommandList);

// ---- Settings (tbtrparsesettings.cpp)

/// A `TB_AUTOLABEL` node without children, or with the node of the setting.
OpaqueValue BuildAutolabel(OpaqueValue& keyword);
OpaqueValue BuildAutolabel(OpaqueValue& keyword, OpaqueValue& settingKeyword);

/// The same for `TB_BASE`.
OpaqueValue BuildBase(OpaqueValue& keyword);
OpaqueValue BuildBase(OpaqueValue& keyword, OpaqueValue& settingKeyword);

/// The same for `TB_GBASE`.
OpaqueValue BuildGbase(OpaqueValue& keyword);
OpaqueValue BuildGbase(OpaqueValue& keyword, OpaqueValue& settingKeyword);

/// The same for `TB_MISSINGSUBCOM`.
OpaqueValue BuildMissing(OpaqueValue& keyword, OpaqueValue& settingKeyword);

/// A node of `type` (CAPTION, TITLE or CORNER) with the literals as children.
OpaqueValue BuildTexts(NodeType type, OpaqueValue& keyword, OpaqueValue& list);

/// An empty value: FORMAT without settings says nothing.
OpaqueValue DropEmptyFormat(OpaqueValue& keyword);

/// The `TB_FORMAT` node that the settings were collected in.
OpaqueValue BuildFormat(OpaqueValue& keyword, OpaqueValue& formatSettingList);

/// A `TB_FORMAT` node with one setting.
OpaqueValue StartFormat(OpaqueValue& formatSetting);

/// Adds a setting to a `TB_FORMAT` node. It takes the place of one of its kind (BLANK and ZERO
/// are of one kind), so that the last one written counts.
OpaqueValue AddFormatSetting(OpaqueValue& formatSettingList, OpaqueValue& formatSetting);

/// A `TB_BLANK` or `TB_ZERO` node.
OpaqueValue BuildEmptyCellSetting(OpaqueValue& settingKeyword);

/// The `SP_SLITERAL` node of what missing values are shown as.
OpaqueValue BuildMissingSetting(OpaqueValue& settingKeyword, OpaqueValue& leftParen,
                                OpaqueValue& literal, OpaqueValue& rightParen);

// ---- Totals, sets and observation (tbtrparsevariables.cpp)

/// A node of `type` (FTOTAL or PTOTAL) with the total variables as children.
OpaqueValue BuildTotals(NodeType type, OpaqueValue& keyword, OpaqueValue& totalVarSpecList);

/// An `SP_VARNAME` node with two empty slots.
OpaqueValue BuildVariable(OpaqueValue& varname);

/// The same with the `SP_SLITERAL` node of the label in slot 0.
OpaqueValue BuildLabeledVariable(OpaqueValue& varname, OpaqueValue& label);

/// A `TBI_VARRANGE` node of two `SP_VARNAME` nodes.
OpaqueValue BuildVariableRange(OpaqueValue& fromVarname, OpaqueValue& to, OpaqueValue& toVarname);

/// A `TB_MRGROUP` node: the set's name as from `BuildVariable` or, with a label,
/// `BuildLabeledVariable`; the `TBI_VARLIST`.
OpaqueValue BuildMrGroup(OpaqueValue& keyword, OpaqueValue& varname, OpaqueValue& variableSpecList);
OpaqueValue BuildMrGroup(OpaqueValue& keyword, OpaqueValue& varname, OpaqueValue& label,
                         OpaqueValue& variableSpecList);

/// A `TB_MDGROUP` node: as above, and then the `SP_SLITERAL` or `SP_NUMBER` node of the counted
/// value.
OpaqueValue BuildMdGroup(OpaqueValue& keyword, OpaqueValue& varname, OpaqueValue& variableSpecList,
                         OpaqueValue& leftParen, OpaqueValue& countedValue,
                         OpaqueValue& rightParen);
OpaqueValue BuildMdGroup(OpaqueValue& keyword, OpaqueValue& varname, OpaqueValue& label,
                         OpaqueValue& variableSpecList, OpaqueValue& leftParen,
                         OpaqueValue& countedValue, OpaqueValue& rightParen);

/// Sets `result` to a `TB_OBSERVATION` node with the `TBI_VARLIST` as its child. False, with a
/// report and an empty result, when the list holds a range: that cannot be converted.
[[nodiscard]] bool BuildObservation(TablesCommand& command, const TablesLocation& location,
                                    OpaqueValue& result, OpaqueValue& keyword,
                                    OpaqueValue& variableSpecList);

// ---- SORT and STATISTICS (tbtrparsestatistics.cpp)

/// The `TB_SORT` node of the keys, the direction's keyword node in slot 0 if there is one.
OpaqueValue BuildSort(OpaqueValue& keyword, OpaqueValue& sortVariableList);
OpaqueValue BuildSort(OpaqueValue& keyword, OpaqueValue& direction, OpaqueValue& sortVariableList);

/// A `TBI_SORTVAR` node that owns the name; its child, if any, is the `TBI_SORTFUNCTION` node.
OpaqueValue BuildSortVariable(OpaqueValue& varname);
OpaqueValue BuildSortVariable(OpaqueValue& varname, OpaqueValue& leftParen,
                              OpaqueValue& sortFunction, OpaqueValue& rightParen);

/// A `TBI_SORTFUNCTION` node that owns the function's name; its child, if any, is the
/// `SP_VARNAME` node of the argument.
OpaqueValue BuildSortFunction(OpaqueValue& functionName);
OpaqueValue BuildSortFunction(OpaqueValue& functionName, OpaqueValue& leftParen,
                              OpaqueValue& varname, OpaqueValue& rightParen);

/// The `TB_STATISTICS` node of the functions.
OpaqueValue BuildStatistics(OpaqueValue& keyword, OpaqueValue& statFuncList);

/// Puts the `TB_UNWEIGHTED` node into slot 0 of a `TBI_FULLSTATFUNCTION`.
OpaqueValue BuildUnweighted(OpaqueValue& unweighted, OpaqueValue& statFuncSpec);

/// A `TBI_FULLSTATFUNCTION` node: an empty slot, the `TBI_STATFUNCTION`, and as far as written
/// the `TBI_GENERICLIST` of arguments and the `TBI_VARLIST` of the names after the colon.
OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc);
OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& rightParen);
OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& statFuncArgs, OpaqueValue& rightParen);
OpaqueValue BuildFullStatFunction(OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& statFuncArgs, OpaqueValue& colon,
                                  OpaqueValue& variableNameList, OpaqueValue& rightParen);

/// A `TBI_STATFUNCTION` node that owns the function's name; its child, if any, is an `SP_NUMBER`
/// node.
OpaqueValue BuildStatFunction(OpaqueValue& functionName);
OpaqueValue BuildStatFunction(OpaqueValue& functionName, OpaqueValue& number);

/// A `TBI_STATFUNCARG` node of three slots: empty, the `TBI_FMT` node, the label's `SP_SLITERAL`
/// node; what is not written stays an empty slot.
OpaqueValue BuildStatDisplay(OpaqueValue& label);
OpaqueValue BuildStatDisplay(OpaqueValue& leftParen, OpaqueValue& statFormat,
                             OpaqueValue& rightParen);
OpaqueValue BuildStatDisplay(OpaqueValue& leftParen, OpaqueValue& statFormat,
                             OpaqueValue& rightParen, OpaqueValue& label);

/// A `TBI_FMT` node that owns the format word.
OpaqueValue BuildStatFormat(OpaqueValue& formatWord);

/// A `TBI_STATFUNCARG` node with the `SP_VARNAME` node in slot 0: a new one, or that of the
/// display specification.
OpaqueValue BuildStatArgument(OpaqueValue& varname);
OpaqueValue BuildStatArgument(OpaqueValue& varname, OpaqueValue& statDisplaySpec);

// ---- TABLE and table expressions (tbtrparsetables.cpp)

/// A `TB_TABLE` node of the rows, columns and layers, as many as are written. Records where the
/// subcommand stands.
OpaqueValue BuildTable(TablesCommand& command, const TablesLocation& location, OpaqueValue& keyword,
                       OpaqueValue& tableExpressionRows);
OpaqueValue BuildTable(TablesCommand& command, const TablesLocation& location, OpaqueValue& keyword,
                       OpaqueValue& tableExpressionRows, OpaqueValue& by,
                       OpaqueValue& tableExpressionColumns);
OpaqueValue BuildTable(TablesCommand& command, const TablesLocation& location, OpaqueValue& keyword,
                       OpaqueValue& tableExpressionRows, OpaqueValue& columnsBy,
                       OpaqueValue& tableExpressionColumns, OpaqueValue& layersBy,
                       OpaqueValue& tableExpressionLayers);

/// Sets `result` to the `TB_STATISTICS` or `TB_LABELS` node that a word in parentheses stands
/// for (its first three letters decide). False, with a report and an empty result, for any other
/// word.
[[nodiscard]] bool BuildParenthesizedWord(TablesCommand& command, const TablesLocation& location,
                                          OpaqueValue& result, OpaqueValue& leftParen,
                                          OpaqueValue& word, OpaqueValue& rightParen);

/// The same for an expression in parentheses: a single variable may be spelled like one of the two
/// words, everything else comes out as it is.
[[nodiscard]] bool BuildParenthesizedExpression(TablesCommand& command,
                                                const TablesLocation& location, OpaqueValue& result,
                                                OpaqueValue& leftParen,
                                                OpaqueValue& tableExpression,
                                                OpaqueValue& rightParen);

/// A node of the operator's type (`SP_PLUS` stacks, `SP_GREATERTHAN` nests) with both operands;
/// an operand of the same type is dissolved into it, so that chains come out flat.
OpaqueValue BuildOperation(OpaqueValue& left, OpaqueValue& operation, OpaqueValue& right);
OpaqueValue BuildOperation(OpaqueValue& leftParen, OpaqueValue& left, OpaqueValue& operation,
                           OpaqueValue& right, OpaqueValue& rightParen);

}  // namespace quillet

#endif  // QUILLET_BISON_TBTRPARSEBUILDER_H
