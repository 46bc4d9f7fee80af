// A table, and the rule by which a word means one of its rows. Rows of two words are those whose
// first word alone would be found in every other comment; the words after them make sure.
#include "driver/commandwords.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "platform/multibyte.h"
#include "tokenizer/scanning.h"

namespace quillet {

namespace {

// Sorted by their first letter, which is what a search begins with.
constexpr std::string_view kCommands[] = {
    "ACF",
    "ADD DOCUMENT",
    "ADD FILES",
    "ADD VALUE",
    "ADP",
    "AGGREGATE",
    "AIM",
    "ALSCAL",
    "ALTER TYPE",
    "ANACOR",
    "ANOVA",
    "APPLY DICTIONARY",
    "ARIMA",
    "AUTORECODE",
    "BEGIN DATA",
    "BEGIN GPL",
    "BEGIN PROGRAM",
    "BREAK",
    "CACHE",
    "CASESTOVARS",
    "CASEPLOT",
    "CATPCA",
    "CATREG",
    "CCF",
    "CD",
    "CLEAR TRANSFORMATIONS",
    "CLUSTER",
    "CNLR",
    "CODEBOOK",
    "COMMENT",
    "COMPARE DATASETS",
    "COMPUTE",
    "CONJOINT",
    "CORRELATIONS",
    "CORRESPONDENCE",
    "COUNT",
    "COXREG",
    "CREATE",
    "CROSSTABS",
    "CSCOXREG",
    "CSDESCRIPTIVES",
    "CSGLM",
    "CSLOGISTIC",
    "CSORDINAL",
    "CSPLAN",
    "CSSELECT",
    "CSTABULATE",
    "CTABLES",
    "CURVEFIT",
    "DATA LIST",
    "DATAFILE ATTRIBUTE",
    "DATASET ACTIVATE",
    "DATASET CLOSE",
    "DATASET COPY",
    "DATASET DECLARE",
    "DATASET DISPLAY",
    "DATASET NAME",
    "DATE",
    "DEFINE",
    "DELETE VARIABLES",
    "DESCRIPTIVES",
    "DETECTANOMALY",
    "DISCRIMINANT",
    "DISPLAY",
    "DO IF",
    "DO REPEAT",
    "DOCUMENT",
    "DROP DOCUMENTS",
    "ECHO",
    "ELSE",
    "END CASE",
    "END DATA",
    "END FILE",
    "END GPL",
    "END IF",
    "END INPUT",
    "END LOOP",
    "END MATRIX",
    "END PROGRAM",
    "END REPEAT",
    "ERASE FILE",
    "EXAMINE",
    "EXECUTE",
    "EXPORT",
    "EXSMOOTH",
    "EXTENSION",
    "FACTOR",
    "FILE HANDLE",
    "FILE LABEL",
    "FILE TYPE",
    "FILTER",
    "FINISH",
    "FIT",
    "FLIP",
    "FORMATS",
    "FREQUENCIES",
    "GENLIN",
    "GENLINMIXED",
    "GENLOG",
    "GET",
    "GGRAPH",
    "GLM",
    "GRAPH",
    "HILOGLINEAR",
    "HOMALS",
    "HOST",
    "IF",
    "IGRAPH",
    "IMPORT",
    "INCLUDE",
    "INFO",
    "INPUT PROGRAM",
    "INSERT",
    "KEYED DATA",
    "KM",
    "LEAVE",
    "LIST",
    "LOGISTIC REGRESSION",
    "LOGLINEAR",
    "LOOP",
    "MANOVA",
    "MAPS",
    "MATCH FILES",
    "MATRIX",
    "MCONVERT",
    "MEANS",
    "MISSING VALUES",
    "MIXED",
    "MLP",
    "MODEL",
    "MRSETS",
    "MULT RESPONSE",
    "MULTIPLE IMPUTATION",
    "MVA",
    "N OF",
    "NAIVEBAYES",
    "NEW FILE",
    "NLR",
    "NOMREG",
    "NONPAR",
    "NPAR",
    "NPPLOT",
    "NPTESTS",
    "NUMERIC",
    "OLAP CUBES",
    "OMS",
    "OMSEND",
    "OMSINFO",
    "OMSLOG",
    "ONEWAY",
    "ORTHOPLAN",
    "OUTPUT ACTIVATE",
    "OUTPUT CLOSE",
    "OUTPUT DISPLAY",
    "OUTPUT EXPORT",
    "OUTPUT MODIFY",
    "OUTPUT NAME",
    "OUTPUT NEW",
    "OUTPUT OPEN",
    "OUTPUT SAVE",
    "OVERALS",
    "PACF",
    "PARTIAL CORR",
    "PERMISSIONS",
    "PLANCARDS",
    "PLOT",
    "PLS",
    "PLUM",
    "POINT",
    "PPLOT",
    "PREDICT",
    "PREFSCAL",
    "PRESERVE",
    "PRINCALS",
    "PRINT",
    "PROBIT",
    "PROCEDURE OUTPUT",
    "PROXIMITIES",
    "PROXSCAL",
    "QUICK CLUSTER",
    "RANK",
    "RATIO STATISTICS",
    "RBF",
    "READ MODEL",
    "RECODE",
    "RECORD TYPE",
    "REFORMAT",
    "REGRESSION",
    "RELIABILITY",
    "RENAME VARIABLES",
    "REPEATING DATA",
    "REPORT",
    "REREAD",
    "RESTORE",
    "RMV",
    "ROC",
    "SAMPLE",
    "SAVE",
    "SCRIPT",
    "SEASON",
    "SELECT IF",
    "SELECTPRED",
    "SET",
    "SHOW",
    "SORT CASES",
    "SORT VARIABLES",
    "SPCHART",
    "SPECTRA",
    "SPLIT FILE",
    "STAR JOIN",
    "STRING",
    "SUBTITLE",
    "SUMMARIZE",
    "SURVIVAL",
    "SYSFILE INFO",
    "T-TEST",
    "TABLES",
    "TDISPLAY",
    "TEMPORARY",
    "TITLE",
    "TREE",
    "TSAPPLY",
    "TSET",
    "TSHOW",
    "TSMODEL",
    "TSPLOT",
    "TWOSTEP CLUSTER",
    "UNIANOVA",
    "UPDATE",
    "USE",
    "VALIDATEDATA",
    "VALUE LABELS",
    "VARCOMP",
    "VARIABLE ALIGNMENT",
    "VARIABLE ATTRIBUTE",
    "VARIABLE LABELS",
    "VARIABLE LEVEL",
    "VARIABLE ROLE",
    "VARIABLE WIDTH",
    "VARSTOCASES",
    "VECTOR",
    "VERIFY",
    "WEIGHT",
    "WLS",
    "WRITE",
    "XGRAPH",
    "XSAVE",
};

constexpr std::size_t kEnoughLetters = 4;

// A first letter has a few dozen rows at most.
constexpr bool IsSortedByFirstLetter() {
    for (std::size_t row = 1; row < std::size(kCommands); ++row) {
        if (kCommands[row].front() < kCommands[row - 1].front()) return false;
    }
    return true;
}
static_assert(IsSortedByFirstLetter());

bool IsNameByte(char c) { return static_cast<unsigned char>(c) > 127 || kNameContinuation.Has(c); }

// What a command's word is made of; "T-TEST" has a hyphen.
bool IsCommandByte(char c) { return IsNameByte(c) || c == '-'; }

std::string_view CommandWordOf(std::string_view text) {
    if (text.starts_with('.')) return {};
    std::size_t length = 0;
    while (length < text.size() && IsCommandByte(text[length])) ++length;
    while (length > 0 && text[length - 1] == '.') --length;
    return text.substr(0, length);
}

std::string_view WithoutBlanks(std::string_view text) {
    while (!text.empty() && kBlanks.Has(text.front())) text.remove_prefix(1);
    return text;
}

bool MeansWord(std::string_view word, std::string_view name) {
    const bool isLongEnough = word.size() >= std::min(name.size(), kEnoughLetters);
    if (!isLongEnough || word.size() > name.size()) return false;
    return std::equal(word.begin(), word.end(), name.begin(),
                      [](char c, char upper) { return UpperAscii(c) == upper; });
}

bool MeansCommand(std::string_view word, std::string_view rest, std::string_view command) {
    const std::size_t blank = command.find(' ');
    if (!MeansWord(word, command.substr(0, blank))) return false;
    return blank == std::string_view::npos ||
           MeansWord(CommandWordOf(WithoutBlanks(rest)), command.substr(blank + 1));
}

}  // namespace

std::string_view CommandAt(std::string_view text) {
    const std::string_view word = CommandWordOf(text);
    if (word.empty()) return {};
    const std::string_view rest = text.substr(word.size());
    if (WithoutBlanks(rest).starts_with('=')) return {};
    const char first = UpperAscii(word.front());
    const auto* pRow = std::lower_bound(
        std::begin(kCommands), std::end(kCommands), first,
        [](std::string_view command, char letter) { return command.front() < letter; });
    for (; pRow != std::end(kCommands) && pRow->front() == first; ++pRow) {
        if (MeansCommand(word, rest, *pRow)) return *pRow;
    }
    return {};
}

bool BeginsWithWord(std::string_view text, std::string_view word) {
    return WordLength(text) == word.size() &&
           std::equal(word.begin(), word.end(), text.begin(),
                      [](char upper, char c) { return UpperAscii(c) == upper; });
}

std::size_t WordLength(std::string_view text) {
    // A row of periods must not be looked at from each of them.
    if (text.starts_with('.')) return 0;
    std::size_t length = 0;
    while (length < text.size() && IsNameByte(text[length])) ++length;
    while (length > 0 && text[length - 1] == '.') --length;
    return length;
}

}  // namespace quillet
