// The actions of the grammar: they turn the values of a rule's right-hand side into the value of
// its left-hand side, and report what cannot be parsed or is passed over.
//
// Every action takes over what its `OpaqueValue` arguments hold: what it keeps goes into the
// node it returns, the rest is forgotten, and all of them are empty afterwards. New nodes are made
// in `arena`, or in the memory of the command. An argument of a
// kind or type that the grammar cannot deliver asserts, and the result is then an empty value
// (or, for the two actions that return a bool, false without a report). Nodes made from keywords
// of subcommands carry no token. Cost: constant time each, but for `BuildObservation`, which is
// linear in its list.
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

/// An empty value: a list is made with its first element.
OpaqueValue NoList();

/// A `TBI_GENERICLIST` without children.
OpaqueValue BuildEmptyList(Arena& arena);

/// A list of `listType` with one element.
OpaqueValue StartList(Arena& arena, NodeType listType, OpaqueValue& element);

/// Appends `element`; an empty one appends nothing, an empty `list` is started.
OpaqueValue AddToList(Arena& arena, NodeType listType, OpaqueValue& list, OpaqueValue& element);

/// The same for a `TBI_VARLIST` of `SP_VARNAME` nodes made from name tokens.
OpaqueValue StartNameList(Arena& arena, OpaqueValue& varname);
OpaqueValue AddToNameList(Arena& arena, OpaqueValue& list, OpaqueValue& varname);

/// The same for a `TBI_GENERICLIST` of `SP_SLITERAL` nodes made from literal tokens.
OpaqueValue AddLiteralToList(Arena& arena, OpaqueValue& list, OpaqueValue& literal);

/// Forgets tokens that mean nothing; an empty value.
OpaqueValue DiscardToken(OpaqueValue& token);
OpaqueValue DiscardToken(OpaqueValue& discarded, OpaqueValue& token);

// ---- Command and groups (tbtrparsebuilder.cpp)

/// Makes the root, a `TBI_GENERICLIST` of the global list and the table groups, and stores it in
/// `command`; an empty value.
OpaqueValue BuildCommand(TablesCommand& command, OpaqueValue& globalGroup,
                         OpaqueValue& tableGroupList);

/// A `TBI_GENERICLIST` of the `TB_TABLE` node and its subcommands.
OpaqueValue BuildTableGroup(Arena& arena, OpaqueValue& table, OpaqueValue& localSubcommandList);

// ---- Settings (tbtrparsesettings.cpp)

/// A `TB_AUTOLABEL` node without children, or with the node of the setting.
OpaqueValue BuildAutolabel(Arena& arena, OpaqueValue& keyword);
OpaqueValue BuildAutolabel(Arena& arena, OpaqueValue& keyword, OpaqueValue& settingKeyword);

/// The same for `TB_BASE`.
OpaqueValue BuildBase(Arena& arena, OpaqueValue& keyword);
OpaqueValue BuildBase(Arena& arena, OpaqueValue& keyword, OpaqueValue& settingKeyword);

/// The same for `TB_GBASE`.
OpaqueValue BuildGbase(Arena& arena, OpaqueValue& keyword);
OpaqueValue BuildGbase(Arena& arena, OpaqueValue& keyword, OpaqueValue& settingKeyword);

/// The same for `TB_MISSINGSUBCOM`.
OpaqueValue BuildMissing(Arena& arena, OpaqueValue& keyword, OpaqueValue& settingKeyword);

/// A node of `type` (CAPTION, TITLE or CORNER) with the literals as children.
OpaqueValue BuildTexts(NodeType type, OpaqueValue& keyword, OpaqueValue& list);

/// An empty value: FORMAT without settings says nothing.
OpaqueValue DropEmptyFormat(OpaqueValue& keyword);

/// The `TB_FORMAT` node that the settings were collected in.
OpaqueValue BuildFormat(OpaqueValue& keyword, OpaqueValue& formatSettingList);

/// A `TB_FORMAT` node with one setting.
OpaqueValue StartFormat(Arena& arena, OpaqueValue& formatSetting);

/// Adds a setting to a `TB_FORMAT` node. It takes the place of one of its kind (BLANK and ZERO
/// are of one kind), so that the last one written counts.
OpaqueValue AddFormatSetting(Arena& arena, OpaqueValue& formatSettingList,
                             OpaqueValue& formatSetting);

/// A `TB_BLANK` or `TB_ZERO` node.
OpaqueValue BuildEmptyCellSetting(Arena& arena, OpaqueValue& settingKeyword);

/// The `SP_SLITERAL` node of what missing values are shown as.
OpaqueValue BuildMissingSetting(Arena& arena, OpaqueValue& settingKeyword, OpaqueValue& leftParen,
                                OpaqueValue& literal, OpaqueValue& rightParen);

// ---- Totals, sets and observation (tbtrparsevariables.cpp)

/// A node of `type` (FTOTAL or PTOTAL) with the total variables as children.
OpaqueValue BuildTotals(NodeType type, OpaqueValue& keyword, OpaqueValue& totalVarSpecList);

/// An `SP_VARNAME` node.
OpaqueValue BuildVariable(Arena& arena, OpaqueValue& varname);

/// The same with the `SP_SLITERAL` node of the label.
OpaqueValue BuildLabeledVariable(Arena& arena, OpaqueValue& varname, OpaqueValue& label);

/// A `TBI_VARRANGE` node of two `SP_VARNAME` nodes.
OpaqueValue BuildVariableRange(Arena& arena, OpaqueValue& fromVarname, OpaqueValue& to,
                               OpaqueValue& toVarname);

/// A `TB_MRGROUP` node: the set's name as from `BuildVariable` or, with a label,
/// `BuildLabeledVariable`; the `TBI_VARLIST`.
OpaqueValue BuildMrGroup(Arena& arena, OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& variableSpecList);
OpaqueValue BuildMrGroup(Arena& arena, OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& label, OpaqueValue& variableSpecList);

/// A `TB_MDGROUP` node: as above, and then the `SP_SLITERAL` or `SP_NUMBER` node of the counted
/// value.
OpaqueValue BuildMdGroup(Arena& arena, OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& variableSpecList, OpaqueValue& leftParen,
                         OpaqueValue& countedValue, OpaqueValue& rightParen);
OpaqueValue BuildMdGroup(Arena& arena, OpaqueValue& keyword, OpaqueValue& varname,
                         OpaqueValue& label, OpaqueValue& variableSpecList, OpaqueValue& leftParen,
                         OpaqueValue& countedValue, OpaqueValue& rightParen);

/// Sets `result` to a `TB_OBSERVATION` node with the `TBI_VARLIST` as its child. False, with a
/// report and an empty result, when the list holds a range: that cannot be converted.
[[nodiscard]] bool BuildObservation(TablesCommand& command, const TablesLocation& location,
                                    OpaqueValue& result, OpaqueValue& keyword,
                                    OpaqueValue& variableSpecList);

// ---- SORT and STATISTICS (tbtrparsestatistics.cpp)

/// The `TB_SORT` node of the keys, the direction's keyword node in front if there is one.
OpaqueValue BuildSort(OpaqueValue& keyword, OpaqueValue& sortVariableList);
OpaqueValue BuildSort(Arena& arena, OpaqueValue& keyword, OpaqueValue& direction,
                      OpaqueValue& sortVariableList);

/// A `TBI_SORTVAR` node that owns the name; its child, if any, is the `TBI_SORTFUNCTION` node.
OpaqueValue BuildSortVariable(Arena& arena, OpaqueValue& varname);
OpaqueValue BuildSortVariable(Arena& arena, OpaqueValue& varname, OpaqueValue& leftParen,
                              OpaqueValue& sortFunction, OpaqueValue& rightParen);

/// A `TBI_SORTFUNCTION` node that owns the function's name; its child, if any, is the
/// `SP_VARNAME` node of the argument.
OpaqueValue BuildSortFunction(Arena& arena, OpaqueValue& functionName);
OpaqueValue BuildSortFunction(Arena& arena, OpaqueValue& functionName, OpaqueValue& leftParen,
                              OpaqueValue& varname, OpaqueValue& rightParen);

/// The `TB_STATISTICS` node of the functions.
OpaqueValue BuildStatistics(OpaqueValue& keyword, OpaqueValue& statFuncList);

/// Puts the `TB_UNWEIGHTED` node into a `TBI_FULLSTATFUNCTION`.
OpaqueValue BuildUnweighted(Arena& arena, OpaqueValue& unweighted, OpaqueValue& statFuncSpec);

/// A `TBI_FULLSTATFUNCTION` node: the `TBI_STATFUNCTION` and the arguments, and in front of them,
/// as far as written, the `TBI_VARLIST` of the names after the colon.
OpaqueValue BuildFullStatFunction(Arena& arena, OpaqueValue& statFunc);
OpaqueValue BuildFullStatFunction(Arena& arena, OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& rightParen);
OpaqueValue BuildFullStatFunction(Arena& arena, OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& statFuncArgs, OpaqueValue& rightParen);
OpaqueValue BuildFullStatFunction(Arena& arena, OpaqueValue& statFunc, OpaqueValue& leftParen,
                                  OpaqueValue& statFuncArgs, OpaqueValue& colon,
                                  OpaqueValue& variableNameList, OpaqueValue& rightParen);

/// A `TBI_STATFUNCTION` node that owns the function's name; its child, if any, is an `SP_NUMBER`
/// node.
OpaqueValue BuildStatFunction(Arena& arena, OpaqueValue& functionName);
OpaqueValue BuildStatFunction(Arena& arena, OpaqueValue& functionName, OpaqueValue& number);

/// A `TBI_STATFUNCARG` node of the `TBI_FMT` node and the label's `SP_SLITERAL` node, as far as
/// written.
OpaqueValue BuildStatDisplay(Arena& arena, OpaqueValue& label);
OpaqueValue BuildStatDisplay(Arena& arena, OpaqueValue& leftParen, OpaqueValue& statFormat,
                             OpaqueValue& rightParen);
OpaqueValue BuildStatDisplay(Arena& arena, OpaqueValue& leftParen, OpaqueValue& statFormat,
                             OpaqueValue& rightParen, OpaqueValue& label);

/// A `TBI_FMT` node that owns the format word.
OpaqueValue BuildStatFormat(Arena& arena, OpaqueValue& formatWord);

/// The `SP_VARNAME` node, in front of what is in the display specification if there is one.
OpaqueValue BuildStatArgument(Arena& arena, OpaqueValue& varname);
OpaqueValue BuildStatArgument(Arena& arena, OpaqueValue& varname, OpaqueValue& statDisplaySpec);

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
OpaqueValue BuildOperation(Arena& arena, OpaqueValue& left, OpaqueValue& operation,
                           OpaqueValue& right);
OpaqueValue BuildOperation(Arena& arena, OpaqueValue& leftParen, OpaqueValue& left,
                           OpaqueValue& operation, OpaqueValue& right, OpaqueValue& rightParen);

}  // namespace quillet

#endif  // QUILLET_BISON_TBTRPARSEBUILDER_H
