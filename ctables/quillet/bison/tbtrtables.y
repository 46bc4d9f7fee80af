/* The language of the TABLES command.
 *
 * A command is a row of subcommands, each a slash and a word. Those that hold for the whole
 * command (AUTOLABEL to FORMAT) come first. Each TABLE after them opens a table group, and what
 * follows it up to the next TABLE (CAPTION, CORNER, SORT, STATISTICS, TITLE) belongs to it:
 *
 *     TABLES /OBSERVATION income
 *            /FTOTAL all_regions 'Total'
 *            /TABLE region + all_regions BY sex > income
 *            /STATISTICS MEAN(income (F8.2) 'Average')
 *            /TITLE 'Income'
 *            /TABLE age BY (STATISTICS).
 *
 * The lexer (parser/tbtryylex, parser/tbtrtablescommand) hands over tokens without slashes, "="
 * signs and BREAK subcommands. Words have codes of their own where the subcommand they stand in
 * knows them as keywords; everywhere else they are SP_VARNAME or, if no variable can be called
 * that, SP_NONVARNAME.
 *
 * Every rule has a line of its own, and its action is one call of a builder function
 * (bison/tbtrparsebuilder.h), which describes the node that comes out. Nodes are made in the
 * memory of the command. Rules without an action pass the value of their one symbol up. The builder takes what the symbols on the right hold
 * out of the values it is given. That matters most before YYABORT, which forgets those values;
 * every other value that the parser drops goes through %destructor.
 *
 * The order of the rules is fixed: the trace of a parse names them by number, from 1 to 152.
 *
 * To refresh the generated parser, in this directory:
 *     bison --no-lines --header=tbtrtables.tab.h --output=tbtrtables.tab.cpp tbtrtables.y
 */

%require "3.8"

/* "tbtryy" stands before every name that the generated parser gives to the linker. */
%define api.prefix {tbtryy}
%define api.pure full
%define api.header.include {"bison/tbtrtables.tab.h"}
%define api.value.type {quillet::OpaqueValue}
%define api.location.type {quillet::TablesLocation}
/* The names of the tokens are those of the node types; the enumeration that is made of them here
 * must not collide with those. */
%define api.token.prefix {TOK_}
%locations

/* The parser has no global state: all that it reads and makes is in the command object. */
%param {quillet::TablesCommand& command}

%code requires {
#include "bison/opaquevaluemethods.h"
#include "parser/tbtrtablescommand.h"

// The stacks may be copied byte by byte; without this they could not grow.
#define TBTRYYLTYPE_IS_TRIVIAL 1
}

%code {
#include <cstddef>
#include <cstdlib>
#include <new>

#include "bison/tbtrparsebuilder.h"
#include "parser/tbtryylex.h"

// A table expression needs a few entries for each parenthesis that is open. Beyond the maximum
// the command is given up without a report.
#define YYINITDEPTH 200
#define YYMAXDEPTH 10000

// Memory for the stacks; when there is none the command is given up.
static void* AllocateStack(quillet::TablesCommand& command, std::size_t size) {
    void* pStack = std::malloc(size);
    if (pStack == nullptr) command.GiveUp(quillet::Shortage::kMemory);
    return pStack;
}
#define YYMALLOC(size) AllocateStack(command, size)
#define YYFREE std::free

// An exception that passed through the parser would take along its stack. So none leaves an action:
// the values of the rule are forgotten here, the others by the parser, and the command is given up.
static void DiscardOperands(quillet::OpaqueValue* pLast, int count) {
    for (int i = 0; i < count; ++i) OpaqueValue_Clear(pLast[-i]);
}
#define CATCH_AFTER(cleanUp, ...)                    \
    try {                                            \
        __VA_ARGS__;                                 \
    } catch (const std::bad_alloc&) {                \
        cleanUp;                                     \
        command.GiveUp(quillet::Shortage::kMemory);  \
        YYABORT;                                     \
    }
#define BUILD(...) CATCH_AFTER(DiscardOperands(yyvsp, yylen), __VA_ARGS__)
// Reports take the values of their rule in any case, and that of an error symbol owns nothing.
#define REPORT(...) CATCH_AFTER((void)0, __VA_ARGS__)
#define BUILD_OR_ABORT(...) BUILD(if (!(__VA_ARGS__)) YYABORT)

// The actions below read best with the plain names of node types and builder functions.
using namespace quillet;

static void tbtryyerror(const TablesLocation* pLocation, const TablesCommand& command,
                        const char* message) {
    TraceSyntaxError(command, *pLocation, message);
}
}

/* What the parser throws away in error recovery and at its end. The value of the error symbol is
 * a copy of the look-ahead's and owns nothing; <> leaves it out. */
%destructor { OpaqueValue_Clear($$); } <>

/* The codes are those of the list (parser/tbtrcodes.def) and never change; see the end. */
%token SP_SLITERAL       257  /* a quoted string */
%token SP_NUMBER         258  /* a number, its sign included */
%token SP_NONVARNAME     259  /* a word that cannot name a variable, such as !mean */
%token SP_VARNAME        260  /* a word that can */
%token SP_PLUS           261
%token SP_GREATERTHAN    262
%token SP_SLASH          263
%token SP_COLON          264
%token SP_LPAREN         265
%token SP_RPAREN         266
%token SP_BY             267
%token SP_TO             268
%token TB_BREAK          269
%token TB_LABELS         270
%token SP_OTHEROP        271  /* an operator that has no meaning here; no rule accepts it */
%token TB_UNWEIGHTED     272
%token TB_AUTOLABEL      273
%token TB_BASE           274
%token TB_GBASE          275
%token TB_MISSING        276  /* the setting of FORMAT */
%token TB_MISSINGSUBCOM  277  /* the subcommand MISSING */
%token TB_DEFAULT        278
%token TB_ON             279
%token TB_OFF            280
%token TB_ANSWERING      281
%token TB_QUALIFIED      282
%token SP_ALL            283
%token TB_CASES          284
%token TB_RESPONSES      285
%token TB_INCLUDE        286
%token TB_EXCLUDE        287
%token TB_BLANK          288
%token TB_ZERO           289
%token TB_FORMAT         290
%token TB_FTOTAL         291
%token TB_PTOTAL         292
%token TB_MRGROUP        293
%token TB_MDGROUP        294
%token TB_SORT           295
%token TB_ASCENDING      296
%token TB_DESCENDING     297
%token TB_CAPTION        298
%token TB_TITLE          299
%token TB_CORNER         300
%token TB_STATISTICS     301
%token TB_TABLE          302
%token TB_OBSERVATION    303
%token TB_UNKNOWNSUBCOM  304
%token TB_BOXCHARS       305
%token TB_CONTINUED      306
%token TB_FONTCHARS      307
%token TB_FOOTNOTE       308
%token TB_INDEX          309
%token TB_PFOOTNOTE      310
%token TB_PTITLE         311
%token TB_TFOOTNOTE      312
%token TB_WRITE          313
%token TB_ANYSUBCOMTOKEN 314  /* whatever stands in a subcommand that is passed over */

/* Nesting binds tighter than stacking: a + b > c is a + (b > c). */
%left SP_PLUS
%left SP_GREATERTHAN

/* Two shift/reduce conflicts, both on the closing parenthesis. After "( e + e" it may close a
 * group that holds a finished stacking (reduce by rule 143, then 142) or be the end of rule 144;
 * in the same way 145 and 146 for nesting. Either reading gives the same tree. The parser
 * shifts, which is what it does unless told otherwise. */
%expect 2

%start start

%%

/* ---- Command and groups ------------------------------------------------------------------- */

start:
    globalGroup tableGroupList   { BUILD($$ = BuildCommand(command, $1, $2)); }
  | error                        { REPORT($$ = reportGenericError(command, @$)); YYABORT; }
  ;

globalGroup:
    %empty                        { BUILD($$ = NoList()); }
  | globalGroup globalSubcommand  { BUILD($$ = AddToList(command.Memory(), TBI_GENERICLIST, $1, $2)); }
  ;

globalSubcommand:
    autolabel
  | base
  | ftotal
  | ptotal
  | gbase
  | mdgroup
  | mrgroup
  | missing
  | observation
  | format
  | TB_BOXCHARS craplist       { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_CONTINUED craplist      { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_TFOOTNOTE craplist      { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_FONTCHARS craplist      { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_FOOTNOTE craplist       { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_INDEX craplist          { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_PFOOTNOTE craplist      { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_PTITLE craplist         { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_WRITE craplist          { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_UNKNOWNSUBCOM craplist  { REPORT($$ = reportUnknownSubcommand(command, $1, $2)); }
  ;

tableGroupList:
    tableGroup                 { BUILD($$ = StartList(command.Memory(), TBI_GENERICLIST, $1)); }
  | tableGroupList tableGroup  { BUILD($$ = AddToList(command.Memory(), TBI_GENERICLIST, $1, $2)); }
  ;

tableGroup:
    table localSubcommandList  { BUILD($$ = BuildTableGroup(command.Memory(), $1, $2)); }
  ;

localSubcommandList:
    %empty                               { BUILD($$ = NoList()); }
  | localSubcommandList localSubcommand  { BUILD($$ = AddToList(command.Memory(), TBI_GENERICLIST, $1, $2)); }
  ;

localSubcommand:
    caption
  | corner
  | sort
  | statistics
  | title
  | TB_BOXCHARS craplist       { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_CONTINUED craplist      { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_TFOOTNOTE craplist      { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_FONTCHARS craplist      { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_FOOTNOTE craplist       { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_INDEX craplist          { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_PFOOTNOTE craplist      { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_PTITLE craplist         { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_WRITE craplist          { REPORT($$ = reportObsoleteSubcommand(command, $1, $2)); }
  | TB_UNKNOWNSUBCOM craplist  { REPORT($$ = reportUnknownSubcommand(command, $1, $2)); }
  ;

/* ---- Settings ------------------------------------------------------------------------------
 *
 * A mistake inside a subcommand is reported against that subcommand and ends the parse. It is
 * found there only while the parser cannot yet take the subcommand as finished: AUTOLABEL XYZ is
 * a mistake in AUTOLABEL, but what follows AUTOLABEL ON, or a whole table expression, is a
 * mistake in the command (the second rule of start). */

autolabel:
    TB_AUTOLABEL             { BUILD($$ = BuildAutolabel(command.Memory(), $1)); }
  | TB_AUTOLABEL TB_DEFAULT  { BUILD($$ = BuildAutolabel(command.Memory(), $1, $2)); }
  | TB_AUTOLABEL TB_ON       { BUILD($$ = BuildAutolabel(command.Memory(), $1, $2)); }
  | TB_AUTOLABEL TB_OFF      { BUILD($$ = BuildAutolabel(command.Memory(), $1, $2)); }
  | TB_AUTOLABEL error       { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

base:
    TB_BASE               { BUILD($$ = BuildBase(command.Memory(), $1)); }
  | TB_BASE TB_ANSWERING  { BUILD($$ = BuildBase(command.Memory(), $1, $2)); }
  | TB_BASE TB_QUALIFIED  { BUILD($$ = BuildBase(command.Memory(), $1, $2)); }
  | TB_BASE SP_ALL        { BUILD($$ = BuildBase(command.Memory(), $1, $2)); }
  | TB_BASE error         { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

caption:
    TB_CAPTION strLiteralList  { BUILD($$ = BuildTexts(TB_CAPTION, $1, $2)); }
  | TB_CAPTION error           { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

title:
    TB_TITLE strLiteralList  { BUILD($$ = BuildTexts(TB_TITLE, $1, $2)); }
  | TB_TITLE error           { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

corner:
    TB_CORNER strLiteralList  { BUILD($$ = BuildTexts(TB_CORNER, $1, $2)); }
  | TB_CORNER error           { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

gbase:
    TB_GBASE               { BUILD($$ = BuildGbase(command.Memory(), $1)); }
  | TB_GBASE TB_CASES      { BUILD($$ = BuildGbase(command.Memory(), $1, $2)); }
  | TB_GBASE TB_RESPONSES  { BUILD($$ = BuildGbase(command.Memory(), $1, $2)); }
  | TB_GBASE error         { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

missing:
    TB_MISSINGSUBCOM TB_EXCLUDE  { BUILD($$ = BuildMissing(command.Memory(), $1, $2)); }
  | TB_MISSINGSUBCOM TB_INCLUDE  { BUILD($$ = BuildMissing(command.Memory(), $1, $2)); }
  | TB_MISSINGSUBCOM error       { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

/* FORMAT once took settings that have no meaning any more. They are dropped with a warning: the
 * rest of the subcommand is passed over and the parse goes on as if nothing had happened. */
format:
    TB_FORMAT                    { BUILD($$ = DropEmptyFormat($1)); }
  | TB_FORMAT formatSettingList  { BUILD($$ = BuildFormat($1, $2)); }
  | TB_FORMAT error              { REPORT($$ = reportObsoleteFormat(command, $1, yylval)); yyclearin; yyerrok; }
  ;

formatSettingList:
    formatSetting                    { BUILD($$ = StartFormat(command.Memory(), $1)); }
  | formatSettingList formatSetting  { BUILD($$ = AddFormatSetting(command.Memory(), $1, $2)); }
  ;

formatSetting:
    TB_BLANK                                  { BUILD($$ = BuildEmptyCellSetting(command.Memory(), $1)); }
  | TB_ZERO                                   { BUILD($$ = BuildEmptyCellSetting(command.Memory(), $1)); }
  | TB_MISSING SP_LPAREN SP_SLITERAL SP_RPAREN  { BUILD($$ = BuildMissingSetting(command.Memory(), $1, $2, $3, $4)); }
  ;

/* ---- Totals, sets and observation ---------------------------------------------------------- */

ftotal:
    TB_FTOTAL totalVarSpecList  { BUILD($$ = BuildTotals(TB_FTOTAL, $1, $2)); }
  | TB_FTOTAL error             { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

ptotal:
    TB_PTOTAL totalVarSpecList  { BUILD($$ = BuildTotals(TB_PTOTAL, $1, $2)); }
  | TB_PTOTAL error             { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

totalVarSpecList:
    totalVarSpec                   { BUILD($$ = StartList(command.Memory(), TBI_VARLIST, $1)); }
  | totalVarSpecList totalVarSpec  { BUILD($$ = AddToList(command.Memory(), TBI_VARLIST, $1, $2)); }
  ;

totalVarSpec:
    SP_VARNAME              { BUILD($$ = BuildVariable(command.Memory(), $1)); }
  | SP_VARNAME SP_SLITERAL  { BUILD($$ = BuildLabeledVariable(command.Memory(), $1, $2)); }
  ;

mrgroup:
    TB_MRGROUP SP_VARNAME variableSpecList              { BUILD($$ = BuildMrGroup(command.Memory(), $1, $2, $3)); }
  | TB_MRGROUP SP_VARNAME SP_SLITERAL variableSpecList  { BUILD($$ = BuildMrGroup(command.Memory(), $1, $2, $3, $4)); }
  | TB_MRGROUP error                                    { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

mdgroup:
    TB_MDGROUP SP_VARNAME variableSpecList SP_LPAREN SP_SLITERAL SP_RPAREN              { BUILD($$ = BuildMdGroup(command.Memory(), $1, $2, $3, $4, $5, $6)); }
  | TB_MDGROUP SP_VARNAME variableSpecList SP_LPAREN SP_NUMBER SP_RPAREN                { BUILD($$ = BuildMdGroup(command.Memory(), $1, $2, $3, $4, $5, $6)); }
  | TB_MDGROUP SP_VARNAME SP_SLITERAL variableSpecList SP_LPAREN SP_SLITERAL SP_RPAREN  { BUILD($$ = BuildMdGroup(command.Memory(), $1, $2, $3, $4, $5, $6, $7)); }
  | TB_MDGROUP SP_VARNAME SP_SLITERAL variableSpecList SP_LPAREN SP_NUMBER SP_RPAREN    { BUILD($$ = BuildMdGroup(command.Memory(), $1, $2, $3, $4, $5, $6, $7)); }
  | TB_MDGROUP error                                                                    { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

observation:
    TB_OBSERVATION variableSpecList  { BUILD_OR_ABORT(BuildObservation(command, @$, $$, $1, $2)); }
  | TB_OBSERVATION error             { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

variableNameList:
    SP_VARNAME                   { BUILD($$ = StartNameList(command.Memory(), $1)); }
  | variableNameList SP_VARNAME  { BUILD($$ = AddToNameList(command.Memory(), $1, $2)); }
  ;

variableSpecList:
    variableSpec                   { BUILD($$ = StartList(command.Memory(), TBI_VARLIST, $1)); }
  | variableSpecList variableSpec  { BUILD($$ = AddToList(command.Memory(), TBI_VARLIST, $1, $2)); }
  ;

/* ---- SORT and STATISTICS ------------------------------------------------------------------- */

sort:
    TB_SORT sortVariableList                { BUILD($$ = BuildSort($1, $2)); }
  | TB_SORT TB_ASCENDING sortVariableList   { BUILD($$ = BuildSort(command.Memory(), $1, $2, $3)); }
  | TB_SORT TB_DESCENDING sortVariableList  { BUILD($$ = BuildSort(command.Memory(), $1, $2, $3)); }
  | TB_SORT error                           { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

sortVariableList:
    sortVariable                   { BUILD($$ = StartList(command.Memory(), TB_SORT, $1)); }
  | sortVariableList sortVariable  { BUILD($$ = AddToList(command.Memory(), TB_SORT, $1, $2)); }
  ;

sortVariable:
    SP_VARNAME                                   { BUILD($$ = BuildSortVariable(command.Memory(), $1)); }
  | SP_VARNAME SP_LPAREN sortFunction SP_RPAREN  { BUILD($$ = BuildSortVariable(command.Memory(), $1, $2, $3, $4)); }
  ;

sortFunction:
    SP_VARNAME                                    { BUILD($$ = BuildSortFunction(command.Memory(), $1)); }
  | SP_NONVARNAME                                 { BUILD($$ = BuildSortFunction(command.Memory(), $1)); }
  | SP_VARNAME SP_LPAREN SP_VARNAME SP_RPAREN     { BUILD($$ = BuildSortFunction(command.Memory(), $1, $2, $3, $4)); }
  | SP_NONVARNAME SP_LPAREN SP_VARNAME SP_RPAREN  { BUILD($$ = BuildSortFunction(command.Memory(), $1, $2, $3, $4)); }
  ;

statistics:
    TB_STATISTICS statFuncSpecWithWeightList  { BUILD($$ = BuildStatistics($1, $2)); }
  | TB_STATISTICS error                       { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

statFuncSpecWithWeightList:
    statFuncSpecWithWeight                             { BUILD($$ = StartList(command.Memory(), TB_STATISTICS, $1)); }
  | statFuncSpecWithWeightList statFuncSpecWithWeight  { BUILD($$ = AddToList(command.Memory(), TB_STATISTICS, $1, $2)); }
  ;

statFuncSpecWithWeight:
    statFuncSpec
  | TB_UNWEIGHTED statFuncSpec  { BUILD($$ = BuildUnweighted(command.Memory(), $1, $2)); }
  ;

statFuncSpec:
    statFunc                                                       { BUILD($$ = BuildFullStatFunction(command.Memory(), $1)); }
  | statFunc SP_LPAREN SP_RPAREN                                   { BUILD($$ = BuildFullStatFunction(command.Memory(), $1, $2, $3)); }
  | statFunc SP_LPAREN statFuncArgs SP_RPAREN                      { BUILD($$ = BuildFullStatFunction(command.Memory(), $1, $2, $3, $4)); }
  | statFunc SP_LPAREN statFuncArgs SP_COLON variableNameList SP_RPAREN  { BUILD($$ = BuildFullStatFunction(command.Memory(), $1, $2, $3, $4, $5, $6)); }
  ;

statFunc:
    SP_VARNAME               { BUILD($$ = BuildStatFunction(command.Memory(), $1)); }
  | SP_NONVARNAME            { BUILD($$ = BuildStatFunction(command.Memory(), $1)); }
  | SP_VARNAME SP_NUMBER     { BUILD($$ = BuildStatFunction(command.Memory(), $1, $2)); }
  | SP_NONVARNAME SP_NUMBER  { BUILD($$ = BuildStatFunction(command.Memory(), $1, $2)); }
  ;

statFuncArgs:
    statDisplaySpec  { BUILD($$ = StartList(command.Memory(), TBI_GENERICLIST, $1)); }
  | statArgVarSpecList
  ;

statDisplaySpec:
    SP_LPAREN statFormat SP_RPAREN              { BUILD($$ = BuildStatDisplay(command.Memory(), $1, $2, $3)); }
  | SP_LPAREN statFormat SP_RPAREN SP_SLITERAL  { BUILD($$ = BuildStatDisplay(command.Memory(), $1, $2, $3, $4)); }
  | SP_SLITERAL SP_LPAREN statFormat SP_RPAREN  { BUILD($$ = BuildStatDisplay(command.Memory(), $2, $3, $4, $1)); }
  | SP_SLITERAL                                 { BUILD($$ = BuildStatDisplay(command.Memory(), $1)); }
  ;

statFormat:
    SP_VARNAME     { BUILD($$ = BuildStatFormat(command.Memory(), $1)); }
  | SP_NONVARNAME  { BUILD($$ = BuildStatFormat(command.Memory(), $1)); }
  ;

statArgVarSpecList:
    statArgVarSpec                     { BUILD($$ = StartList(command.Memory(), TBI_GENERICLIST, $1)); }
  | statArgVarSpecList statArgVarSpec  { BUILD($$ = AddToList(command.Memory(), TBI_GENERICLIST, $1, $2)); }
  ;

statArgVarSpec:
    SP_VARNAME                  { BUILD($$ = BuildStatArgument(command.Memory(), $1)); }
  | SP_VARNAME statDisplaySpec  { BUILD($$ = BuildStatArgument(command.Memory(), $1, $2)); }
  ;

/* ---- TABLE and table expressions ----------------------------------------------------------- */

table:
    TB_TABLE tableExpression                                              { BUILD($$ = BuildTable(command, @$, $1, $2)); }
  | TB_TABLE tableExpression SP_BY tableExpression                        { BUILD($$ = BuildTable(command, @$, $1, $2, $3, $4)); }
  | TB_TABLE tableExpression SP_BY tableExpression SP_BY tableExpression  { BUILD($$ = BuildTable(command, @$, $1, $2, $3, $4, $5, $6)); }
  | TB_TABLE error                                                        { REPORT($$ = reportSubcommandArgumentError(command, @$, $1)); YYABORT; }
  ;

tableExpression:
    SP_VARNAME                                                   { BUILD($$ = BuildVariable(command.Memory(), $1)); }
  | SP_LPAREN SP_NONVARNAME SP_RPAREN                            { BUILD_OR_ABORT(BuildParenthesizedWord(command, @$, $$, $1, $2, $3)); }
  | SP_LPAREN tableExpression SP_RPAREN                          { BUILD_OR_ABORT(BuildParenthesizedExpression(command, @$, $$, $1, $2, $3)); }
  | tableExpression SP_PLUS tableExpression                      { BUILD($$ = BuildOperation(command.Memory(), $1, $2, $3)); }
  | SP_LPAREN tableExpression SP_PLUS tableExpression SP_RPAREN  { BUILD($$ = BuildOperation(command.Memory(), $1, $2, $3, $4, $5)); }
  | tableExpression SP_GREATERTHAN tableExpression               { BUILD($$ = BuildOperation(command.Memory(), $1, $2, $3)); }
  | SP_LPAREN tableExpression SP_GREATERTHAN tableExpression SP_RPAREN  { BUILD($$ = BuildOperation(command.Memory(), $1, $2, $3, $4, $5)); }
  ;

variableSpec:
    SP_VARNAME                   { BUILD($$ = BuildVariable(command.Memory(), $1)); }
  | SP_VARNAME SP_TO SP_VARNAME  { BUILD($$ = BuildVariableRange(command.Memory(), $1, $2, $3)); }
  ;

/* ---- Lists of literals and tokens that are passed over -------------------------------------- */

strLiteralList:
    %empty                      { BUILD($$ = BuildEmptyList(command.Memory())); }
  | strLiteralList SP_SLITERAL  { BUILD($$ = AddLiteralToList(command.Memory(), $1, $2)); }
  ;

craplist:
    TB_ANYSUBCOMTOKEN           { BUILD($$ = DiscardToken($1)); }
  | craplist TB_ANYSUBCOMTOKEN  { BUILD($$ = DiscardToken($1, $2)); }
  ;

%%

// Each terminal of the list is one here, with the same code, and there are no others: Bison adds the
// end of the text, the error and what is no terminal.
#define QUILLET_TOKEN(code, number) static_assert(static_cast<unsigned>(TOK_##code) == (code));
#include "parser/tbtrcodes.def"
static_assert(YYNTOKENS == 3
#define QUILLET_TOKEN(code, number) +1
#include "parser/tbtrcodes.def"
);
