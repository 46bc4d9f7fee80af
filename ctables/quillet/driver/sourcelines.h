// The lines of a text, by their numbers.
#ifndef QUILLET_DRIVER_SOURCELINES_H
#define QUILLET_DRIVER_SOURCELINES_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillet {

/// Where the lines of a text begin. Lines end as `LineReader` reads them: in LF or CR LF. A
/// byte-order mark of UTF-8 is not a part of the first line. The text is borrowed.
class SourceLines {
public:
    explicit SourceLines(std::string_view text);

    [[nodiscard]] std::string_view Text() const { return m_text; }

    /// How many lines there are; what follows the last line end is one if it is not empty.
    [[nodiscard]] long Count() const { return static_cast<long>(m_begins.size()) - 1; }

    /// Line `number`, from 1, without its end; empty for a number that there is not.
    [[nodiscard]] std::string_view Line(long number) const;

    /// The offset of the first byte of line `number`, from 1; the text's size after the last one.
    [[nodiscard]] std::size_t BeginOf(long number) const;

    /// The offset after the last byte of line `number`, without its end.
    [[nodiscard]] std::size_t EndOf(long number) const {
        return BeginOf(number) + Line(number).size();
    }

    /// The line, from 1, in which the byte at `offset` stands.
    [[nodiscard]] long LineOf(std::size_t offset) const;

private:
    std::string_view m_text;
    std::vector<std::size_t> m_begins;  // and the end of the text
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_SOURCELINES_H
