// A macro, as its definition tells.
#ifndef QUILLET_MACRO_MACRO_H
#define QUILLET_MACRO_MACRO_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "macro/argumentlist.h"
#include "macro/lexer.h"
#include "macro/program.h"
#include "platform/codepage.h"

namespace quillet::macro {

/// What a macro is called, and where it stands.
struct MacroHead {
    std::string name;    ///< As it is written, with "!" where it has one.
    std::string file;    ///< The name by which its file was included; empty for the file itself.
    long firstLine = 0;  ///< Of the definition, from 1.
    long bodyLine = 0;   ///< The line on which the body begins.
};

/// One definition. Nothing in it is borrowed. Always owned by shared pointers: whoever tells of a
/// call keeps the definition that it was expanded by, which may have been replaced by then.
struct Macro : MacroHead, std::enable_shared_from_this<Macro> {
    ArgumentList list;
    std::string body;  ///< With LF at the end of each line.
    /// Where the lines of the body after its first begin.
    std::vector<std::size_t> lineBegins;
    Program program;

    /// The line of the file on which a byte of the body stands. Takes the logarithm of the number
    /// of lines.
    [[nodiscard]] long LineOf(std::size_t position) const;
};

/// The macro whose body is `source`, with any line breaks. Where the body's statements do not fit
/// their forms, the program of the macro says so. Linear in the source.
[[nodiscard]] std::shared_ptr<const Macro> MakeMacro(const CodePage& codePage, MacroHead head,
                                                     ArgumentList list, std::string_view source,
                                                     int maxNesting);

/// The macros that are known at a place, by their names.
class MacroTable {
public:
    /// Borrows the code page.
    explicit MacroTable(const CodePage& codePage) : m_pCodePage(&codePage) {}

    /// Makes a macro known, in place of an earlier one of its name.
    void Add(std::shared_ptr<const Macro> macro);

    /// The macro of a name, in any letter case; null when there is none.
    [[nodiscard]] const Macro* Find(std::string_view name) const;

    [[nodiscard]] bool IsEmpty() const { return m_macros.empty(); }

private:
    const CodePage* m_pCodePage;
    std::unordered_map<std::string, std::shared_ptr<const Macro>> m_macros;
};

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_MACRO_H
