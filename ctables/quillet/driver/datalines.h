// Finds the lines of inline data that need no look at each of them.
#ifndef QUILLET_DRIVER_DATALINES_H
#define QUILLET_DRIVER_DATALINES_H

#include <cstddef>
#include <string_view>

namespace quillet {

/// Lines at the beginning of a text.
struct LineRun {
    std::size_t length = 0;  ///< Bytes, line ends included.
    long lineCount = 0;
};

/// The whole lines at the beginning of `text` that go from the input into the output as they
/// stand: none is blank, none can close the data (which a line that begins with "END DATA", in
/// any case, does), and each ends in CR LF if `endsInCrLf`, else in LF alone. A line counts only
/// when something follows it in `text`, so that the input's last line is never among them.
[[nodiscard]] LineRun FindPlainDataLines(std::string_view text, bool endsInCrLf);

}  // namespace quillet

#endif  // QUILLET_DRIVER_DATALINES_H
