// What the words of a body stand for, while it is compiled.
#ifndef QUILLET_MACRO_SLOTS_H
#define QUILLET_MACRO_SLOTS_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "macro/argumentlist.h"

namespace quillet::macro {

/// The slots of one body: the arguments' own, and one for each other "!name" of the body, which may
/// become a variable.
class Slots {
public:
    /// Borrows the list.
    explicit Slots(const ArgumentList& list) : m_list(list), m_next(list.arguments.size()) {}

    /// The slot of a name, in capitals and without "!".
    [[nodiscard]] std::size_t SlotOf(const std::string& name) {
        const auto argument = m_list.keywords.find(name);
        if (argument != m_list.keywords.end()) return argument->second;
        const auto [place, isNew] = m_others.try_emplace(name, Other{m_next, false});
        if (isNew) ++m_next;
        return place->second.slot;
    }

    /// Makes a name that of a variable from here on, unless it is an argument's. Its slot.
    std::size_t Declare(const std::string& name) {
        const std::size_t slot = SlotOf(name);
        const auto other = m_others.find(name);
        if (other != m_others.end()) other->second.isVariable = true;
        return slot;
    }

    /// Whether the name is that of an argument, or of a variable that has been declared.
    [[nodiscard]] bool IsDeclared(const std::string& name) const {
        if (m_list.keywords.contains(name)) return true;
        const auto other = m_others.find(name);
        return other != m_others.end() && other->second.isVariable;
    }

    /// The slot of a positional argument by its number; none for a number beyond them or one that
    /// is written in another way than with its digits alone.
    [[nodiscard]] std::optional<std::size_t> PositionalSlot(std::string_view digits) const {
        if (digits.empty() || digits.front() == '0') return std::nullopt;
        std::size_t number = 0;
        for (const char digit : digits) {
            number = number * 10 + static_cast<std::size_t>(digit - '0');
            if (number > m_list.positionalCount) return std::nullopt;
        }
        return number - 1;
    }

private:
    struct Other {
        std::size_t slot = 0;
        bool isVariable = false;
    };

    const ArgumentList& m_list;
    std::size_t m_next;
    std::unordered_map<std::string, Other> m_others;
};

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_SLOTS_H
