// Finds the lines of inline data that need no look at each of them.
#ifndef QUILLET_DRIVER_DATALINES_H
#define QUILLET_DRIVER_DATALINES_H

#include <string_view>

namespace quillet {

/// Data lines that go from the input into the output as they stand: none is blank, and each ends
/// as the input's first line does.
struct PlainLines {
    std::string_view text;  ///< Whole lines with their ends; borrowed.
    long count = 0;
};

/// The plain lines at the beginning of `text`, which end in CR LF if `endsInCrLf`, else in LF
/// alone. None can close the data, which a line that begins with "END DATA", in any case, does.
/// A line counts only when something follows it in `text`, so that the input's last line is
/// never among them.
[[nodiscard]] PlainLines FindPlainDataLines(std::string_view text, bool endsInCrLf);

}  // namespace quillet

#endif  // QUILLET_DRIVER_DATALINES_H
