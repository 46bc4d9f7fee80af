// What the expansion of macros may ask for.
//
// A macro multiplies: a line of text can ask for any number of passes, of expansions and of bytes.
// The first five limits are those that users of the language know; the others keep the cost of a
// file in proportion to its size and to that of what comes out.
#ifndef QUILLET_MACRO_LIMITS_H
#define QUILLET_MACRO_LIMITS_H

#include <cstddef>
#include <cstdint>

namespace quillet::macro {

/// A call that goes beyond one of these is reported and left as it is.
struct Limits {
    /// Macros inside macros: the call in the file has depth 1, one in an argument of it or in its
    /// expansion depth 2.
    int macroDepth = 50;
    /// `!IF`, `!DO`, parentheses and functions inside one another, in one body.
    int nesting = 200;
    /// Passes that one loop makes.
    long loopPasses = 1000;
    /// Passes of all loops for one call in the file.
    long passes = 1'000'000;
    /// Expansions for one call in the file, itself among them.
    long expansions = 100'000;
    /// Bytes of any single text that is built: an argument, a value, an expansion.
    std::size_t textSize = std::size_t{16} * 1024 * 1024;
    /// Bytes of the expansions of one file together, which are all kept.
    std::size_t fileTextSize = std::size_t{256} * 1024 * 1024;
    /// Steps for one file, about one for each byte that is looked at while macros expand. Grows by
    /// `workPerByte` for each byte of the file.
    std::uint64_t work = std::uint64_t{1} << 32;
    std::uint64_t workPerByte = 1024;
    /// Files included inside one another, and the bytes of all that one file includes.
    int includeDepth = 50;
    std::size_t includedSize = std::size_t{256} * 1024 * 1024;
};

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_LIMITS_H
