// Reads GPL programs back, so that tests need not trust the code that wrote them.
#ifndef QUILLET_TESTS_UNIT_GPLCHECKER_H
#define QUILLET_TESTS_UNIT_GPLCHECKER_H

#include <string>
#include <string_view>
#include <vector>

namespace quillet::igraph {

/// The faults of a program, in words; none for a good one.
///
/// A good program begins and ends with a line end and has no empty line. Each statement begins
/// after two blanks and goes on after four; statements stand in the order SOURCE, DATA, TRANS,
/// COORD, GUIDE, SCALE, ELEMENT, with one SOURCE, at most one COORD and at least one ELEMENT.
/// Quotes and parentheses are balanced. Every identifier is declared once, before its first use,
/// but for letter case; every function and constant is a known one. The columns of the data set
/// are those in `usedNames`, a list with blanks between the names, and the case number; legends
/// and scales belong to aesthetics that some element shows, and to dimensions that there are.
[[nodiscard]] std::vector<std::string> CheckGpl(std::string_view gpl, std::string_view usedNames);

}  // namespace quillet::igraph

#endif  // QUILLET_TESTS_UNIT_GPLCHECKER_H
