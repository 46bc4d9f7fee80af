// A text with calls of macros whose bodies can be exchanged.
#ifndef QUILLET_DRIVER_MACROSCENE_H
#define QUILLET_DRIVER_MACROSCENE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "macro/expandfile.h"

namespace quillet {

/// The bodies that stand in for those of definitions, by their numbers; null where the definition
/// keeps its own. Line ends are those of the text.
using BodyReplacements = std::vector<const std::string*>;

/// A command that holds calls: the bytes [begin, end) of the text, with its period.
struct CallingCommand {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t firstCall = 0;  ///< Those [firstCall, lastCall) of the expansion.
    std::size_t lastCall = 0;
};

/// A scene, expanded with certain bodies.
struct ExpandedScene {
    std::string text;
    macro::FileExpansion expansion;
    std::vector<CallingCommand> commands;

    /// The text of a command with its calls expanded; those with faults stay.
    [[nodiscard]] std::string Expanded(const CallingCommand& command) const;
};

/// What a scene consists of: parts of text, and between two of them a body.
class MacroScene {
public:
    /// Nothing is borrowed but what the options and the resolver borrow.
    MacroScene(macro::ExpansionOptions options, macro::IncludeResolver* pResolver)
        : m_options(std::move(options)), m_pResolver(pResolver) {}

    /// Adds text.
    void Add(std::string_view text) { m_last += text; }
    /// Adds the body of a definition, which is `body` when nothing stands in for it.
    void AddBody(std::size_t definition, std::string_view body);

    /// The whole text with some bodies exchanged.
    [[nodiscard]] std::string TextWith(const BodyReplacements& bodies) const;
    /// How long it is so far with its own bodies.
    [[nodiscard]] std::size_t Size() const { return m_size + m_last.size(); }

    /// Linear in the text and its expansions.
    [[nodiscard]] ExpandedScene ExpandWith(const BodyReplacements& bodies) const;

private:
    struct Part {
        std::string text;  // before the body
        std::size_t definition = 0;
        std::string body;
    };

    macro::ExpansionOptions m_options;
    macro::IncludeResolver* m_pResolver;
    std::vector<Part> m_parts;
    std::string m_last;
    std::size_t m_size = 0;
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_MACROSCENE_H
