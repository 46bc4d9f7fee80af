// What one command may ask for beyond its own size.
//
// The commands multiply: a BREAK subcommand comes again in every table, nestings are multiplied out
// over stackings, every term gets every statistic, a literal may repeat itself. A short text could
// so ask for any amount of memory. Whoever multiplies asks here first; what a command writes or
// keeps once, however large it is, costs nothing.
#ifndef QUILLET_PLATFORM_COMMANDBUDGET_H
#define QUILLET_PLATFORM_COMMANDBUDGET_H

#include <cstddef>
#include <exception>

namespace quillet {

/// Thrown when a command would need far more memory than its text has bytes. It is no error of the
/// text: the command can still be copied, only not converted.
class CommandTooLarge : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "command too large"; }
};

/// The budget of one command. A plain value; sizes are in bytes.
class CommandBudget {
public:
    /// So much text may come out of multiplying, and so much may its copies of tokens, nodes and
    /// other parts take. No command that people wrote comes near either.
    static constexpr std::size_t kMaxText = std::size_t{32} * 1024 * 1024;
    static constexpr std::size_t kMaxCopies = std::size_t{32} * 1024 * 1024;

    /// What a copied node takes besides its text, and what a copied token does together with the
    /// node that is made of it. Fixed, so that every system refuses the same commands; whoever
    /// charges them checks that they are enough.
    static constexpr std::size_t kNodeCopy = 128;
    static constexpr std::size_t kTokenCopy = 256;

    /// Takes `size` bytes of multiplied text from the budget. Throws `CommandTooLarge` when there
    /// are fewer left.
    void ChargeText(std::size_t size) { Charge(m_text, size); }

    /// The same for copies.
    void ChargeCopies(std::size_t size) { Charge(m_copies, size); }

private:
    static void Charge(std::size_t& left, std::size_t size) {
        if (size > left) throw CommandTooLarge();
        left -= size;
    }

    std::size_t m_text = kMaxText;      // what is left of it
    std::size_t m_copies = kMaxCopies;  // what is left of them
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_COMMANDBUDGET_H
