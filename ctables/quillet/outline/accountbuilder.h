// Where the parts of an account write down what they find.
#ifndef QUILLET_OUTLINE_ACCOUNTBUILDER_H
#define QUILLET_OUTLINE_ACCOUNTBUILDER_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "outline/account.h"
#include "outline/tableoutline.h"
#include "platform/codepage.h"

namespace quillet::outline {

/// The sentences of the notes: each code has one of its own name, and some have more.
enum class NoteWording : unsigned char {
#define QUILLET_NOTE(code, name, light, sentence) code,
#define QUILLET_NOTE_VARIANT(wording, light, sentence) wording,
#include "outline/accountnotes.def"
};

/// What stands in a sentence. Only those that it asks for are looked at. Long texts are cut.
struct NoteNames {
    std::string_view function = {};
    std::string_view name = {};
    std::string_view other = {};
    std::string_view asked = {};
    std::string_view written = {};
};

/// An account in the making.
class AccountBuilder {
public:
    /// All are borrowed. `size` is that of both outlines, in parts of any kind: so much may be
    /// looked at many times over.
    AccountBuilder(const CodePage& codePage, std::size_t size, Account& account);

    /// Takes `steps` from what may be done for one command. Throws `CommandTooLarge` when there
    /// are fewer left.
    void Charge(std::size_t steps);

    /// The tables that are compared now; what is entered and noted from here on is about them.
    void BeginTable(std::size_t asked, std::size_t written);

    void Note(NoteWording wording, const NoteNames& names, long line);
    /// Adds an entry of these tables, with what was written for it, in order.
    AccountEntry& Enter(Subject subject, Fate fate, std::size_t asked,
                        const std::vector<std::size_t>& written = {});
    /// The same for a setting.
    void EnterSetting(AccountedSetting setting, Fate fate, long line);

    [[nodiscard]] const CodePage& Page() const { return m_codePage; }

private:
    [[nodiscard]] std::string Fill(std::string_view sentence, const NoteNames& names) const;

    const CodePage& m_codePage;
    Account& m_account;
    std::size_t m_stepsLeft;
    std::size_t m_askedTable = kNowhere;
    std::size_t m_writtenTable = kNowhere;
};

/// The name that a set of this name has in the new command, in the letter case of `name`.
[[nodiscard]] std::string WrittenSetName(const CodePage& codePage, std::string_view name);

/// Up to eight names, "a, b and c", and how many more there are.
[[nodiscard]] std::string ListOfNames(const std::vector<std::string_view>& names);

/// The same text for comparing, white space left out of account.
[[nodiscard]] std::string Normalized(const Literal& literal);

/// Sorts the values, and keeps one of those that are equal.
void SortOut(std::vector<std::size_t>& values);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ACCOUNTBUILDER_H
