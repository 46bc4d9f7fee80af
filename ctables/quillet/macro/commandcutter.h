// Cuts a text into commands, as far as macros need to know where one ends and what it is.
#ifndef QUILLET_MACRO_COMMANDCUTTER_H
#define QUILLET_MACRO_COMMANDCUTTER_H

#include <cstddef>
#include <string_view>

#include "macro/lexer.h"
#include "platform/codepage.h"

namespace quillet::macro {

/// How commands are laid out.
struct Layout {
    /// A command goes on over the lines that begin with a blank and ends with them, instead of with
    /// a period at the end of a line. A "+" or "-" in column 1 is no part of it.
    bool batchMode = false;
    /// Without `batchMode`: a blank line ends a command as well.
    bool endAtBlankLines = false;
};

/// A command: the bytes [begin, end) of the text, without its period.
struct Command {
    enum class Kind : int {
        kOrdinary,
        kComment,     ///< A comment command.
        kDocument,    ///< DOCUMENT text.
        kInlineData,  ///< From BEGIN DATA to the line that begins with END DATA, both included.
        kDefinition,  ///< DEFINE to !ENDDEFINE; only where definitions are asked for.
    };

    Kind kind = Kind::kOrdinary;
    std::size_t begin = 0;
    /// Of a definition: where the word !ENDDEFINE begins.
    std::size_t end = 0;
    /// The period that ends it stands at `end`. Of a definition: there is an !ENDDEFINE; without
    /// it `end` is the end of the text.
    bool isEnded = false;
    /// Where the next command is looked for.
    std::size_t next = 0;
};

/// Finds the commands of a text, one after the other.
class CommandCutter {
public:
    /// The text may also be a part of a command, then called a fragment: its first words say
    /// nothing about its kind.
    enum class Content : int { kFile, kCommands, kFragment };

    /// Borrows `codePage` and `text`. Definitions are found in a file alone.
    CommandCutter(const CodePage& codePage, std::string_view text, Layout layout, Content content)
        : m_lexer(codePage, text), m_layout(layout), m_content(content) {}

    /// Finds the next command; false when there is none. All calls together are linear in the
    /// text.
    [[nodiscard]] bool Next(Command& command);

private:
    [[nodiscard]] std::size_t FindBegin() const;
    [[nodiscard]] Command::Kind KindAt(std::size_t position) const;
    void FindEnd(Command& command) const;
    void FindDataEnd(Command& command) const;
    void FindDefinitionEnd(Command& command) const;
    void FindBatchEnd(Command& command) const;
    [[nodiscard]] bool FindPeriod(bool isFreeText, std::size_t begin, std::size_t end,
                                  std::size_t& period) const;
    [[nodiscard]] bool FindFreeTextPeriod(std::size_t begin, std::size_t end,
                                          std::size_t& period) const;

    Lexer m_lexer;
    Layout m_layout;
    Content m_content;
    std::size_t m_next = 0;
};

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_COMMANDCUTTER_H
