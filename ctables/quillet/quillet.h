// libquillet: converts legacy commands in statistical command syntax.
//
// This is the library's one public header. It touches no file, no console and no global state;
// conversions may run side by side in several threads.
#ifndef QUILLET_QUILLET_H
#define QUILLET_QUILLET_H

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

/// How to read a text that is not valid UTF-8. Valid UTF-8 is always read as such.
enum class LegacyCodePage {
    kWindows1252,  ///< The same on every machine; every byte is a character.
    kSystem,       ///< The system's legacy code page; Windows-1252 where it has none.
};

struct Options {
    /// Commands continue on lines that begin with a blank, and a "+" or "-" that begins a
    /// command is skipped.
    bool batchMode = false;
    LegacyCodePage legacyCodePage = LegacyCodePage::kWindows1252;
};

/// How a conversion ended.
enum class Outcome {
    kDone,             ///< Everything was read and written; single commands may have failed.
    kTokenizingError,  ///< A text that is no syntax ended the run; the output says where and why.
    kReadError,        ///< The input failed before its end; the output is incomplete.
    kWriteError,       ///< The output did not take all bytes.
};

/// What a whole conversion gives back.
struct Conversion {
    std::string output;       ///< The converted syntax, in the code page of the input.
    std::string resultLines;  ///< A line for each converted or failed command, each with "\n".
    std::string diagnostics;  ///< Failed internal assertions, a line each; normally empty.
    Outcome outcome = Outcome::kDone;
};

/// Converts `input` in memory.
///
/// Bytes in, bytes out: the output has a UTF-8 byte-order mark if and only if the input has,
/// and CR LF line ends if and only if the input's first line ends in CR LF. No input is invalid;
/// at worst the outcome is `kTokenizingError`. Throws `std::bad_alloc` alone. Time is linear in
/// the input and the output.
[[nodiscard]] Conversion ConvertText(std::string_view input, const Options& options);

/// A text that is read in pieces, twice: the whole of it decides the code page.
class TextInput {
public:
    virtual ~TextInput() = default;
    /// Reads up to `size` bytes into `buffer`, returns how many. 0 at the end and after an
    /// error, which `Failed` then tells.
    virtual std::size_t Read(char* buffer, std::size_t size) = 0;
    /// Goes back to the first byte. False when that cannot be done.
    virtual bool Rewind() = 0;
    [[nodiscard]] virtual bool Failed() const = 0;

protected:
    TextInput() = default;
    TextInput(const TextInput&) = default;
    TextInput& operator=(const TextInput&) = default;
};

/// Takes the converted text in pieces, in order.
class TextOutput {
public:
    virtual ~TextOutput() = default;
    /// Takes all of `bytes`, or returns false; it is not called again after that.
    virtual bool Write(std::string_view bytes) = 0;

protected:
    TextOutput() = default;
    TextOutput(const TextOutput&) = default;
    TextOutput& operator=(const TextOutput&) = default;
};

/// Takes what a conversion has to say while it runs.
class ConversionListener {
public:
    virtual ~ConversionListener() = default;
    /// A command was converted or could not be; `line` ends in "\n".
    virtual void OnResultLine(std::string_view line) = 0;
    /// An internal assertion failed; `line` has no line end.
    virtual void OnDiagnostic(std::string_view line) = 0;

protected:
    ConversionListener() = default;
    ConversionListener(const ConversionListener&) = default;
    ConversionListener& operator=(const ConversionListener&) = default;
};

/// Converts a text of any size, keeping no more of it than its largest command (inline data:
/// its longest line) and a few hundred KiB. Otherwise as `ConvertText`.
[[nodiscard]] Outcome ConvertStream(TextInput& input, TextOutput& output,
                                    ConversionListener& listener, const Options& options);

}  // namespace quillet

#endif  // QUILLET_QUILLET_H
