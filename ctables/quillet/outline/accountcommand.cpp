// What holds for a whole command.
#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "outline/accountsettings.h"

namespace quillet::outline {

namespace {

class CommandAccount {
public:
    CommandAccount(const CommandOutline& asked, const CommandOutline& written,
                   AccountBuilder& builder)
        : m_asked(asked), m_written(written), m_builder(builder) {}

    void Run() {
        AccountForEmptyCells();
        AccountForMissingText();
        if (!m_written.settings.countsDuplicates) {
            m_builder.EnterSetting(AccountedSetting::kDuplicates, Fate::kLost, 0);
            Differs("The counting of repeated responses", "on", "off", 0);
        }
        for (std::size_t index = 0; index < m_asked.remarks.size(); ++index) AddRemark(index);
        AccountForSets();
        NoteSetsOfOne();
    }

private:
    void Differs(std::string_view name, std::string_view asked, std::string_view written,
                 long line) {
        m_builder.Note(NoteWording::kSettingDiffers,
                       {.name = name, .asked = asked, .written = written}, line);
    }

    void AccountForEmptyCells() {
        const Settings& asked = m_asked.settings;
        const bool isSame = asked.emptyCells == m_written.settings.emptyCells;
        const long line = asked.emptyCellsLine;
        if (isSame && line == 0) return;
        m_builder.EnterSetting(AccountedSetting::kEmptyCells, isSame ? Fate::kKept : Fate::kDropped,
                               line);
        if (isSame) return;
        if (asked.emptyCells == EmptyCells::kZero) {
            m_builder.Note(NoteWording::kFormatZeroDropped, {.asked = "ZERO"}, line);
        } else {
            Differs("The sign for empty cells", "a blank", "a zero", line);
        }
    }

    void AccountForMissingText() {
        const Literal& asked = m_asked.settings.missingText;
        const Literal& written = m_written.settings.missingText;
        const long line = m_asked.settings.missingTextLine;
        const bool isSame =
            asked.IsEmpty() == written.IsEmpty() && Normalized(asked) == Normalized(written);
        if (isSame && asked.IsEmpty()) return;
        m_builder.EnterSetting(AccountedSetting::kMissingText,
                               isSame ? Fate::kKept : Fate::kDropped, line);
        if (isSame) return;
        if (written.IsEmpty()) {
            const std::string text = "MISSING(" + asked.source + ")";
            m_builder.Note(NoteWording::kFormatZeroDropped, {.asked = text}, line);
        } else {
            Differs("The sign for missing values", asked.IsEmpty() ? "none" : asked.source,
                    written.source, line);
        }
    }

    void AddRemark(std::size_t index) {
        const Remark& remark = m_asked.remarks[index];
        const std::string_view name = remark.subcommand.key;
        // What follows a period in the text of the command is no part of it.
        if (remark.kind == Remark::Kind::kUnreadable && name.empty()) return;
        m_builder.Enter(Subject::kRemark, Fate::kDropped, index).line = remark.line;
        m_builder.Note(WordingOf(remark), {.name = name, .asked = remark.text}, remark.line);
    }

    [[nodiscard]] static NoteWording WordingOf(const Remark& remark) {
        const bool isFormat = remark.subcommand.key == "FORMAT";
        switch (remark.kind) {
            case Remark::Kind::kPassedOver:
                return NoteWording::kLooksDropped;
            case Remark::Kind::kUnknown:
                return NoteWording::kSubcommandDropped;
            case Remark::Kind::kSetting:
                return NoteWording::kFormatDropped;
            case Remark::Kind::kUnreadable:
                break;
        }
        return isFormat ? NoteWording::kFormatDropped : NoteWording::kPartDropped;
    }

    [[nodiscard]] static bool AreSame(const VariableRange& one, const VariableRange& other) {
        return one.first.key == other.first.key && one.last.key == other.last.key;
    }

    [[nodiscard]] static bool AreSame(const ResponseSet& asked, const ResponseSet& written) {
        return asked.countsOneValue == written.countsOneValue &&
               asked.label.IsEmpty() == written.label.IsEmpty() &&
               Normalized(asked.label) == Normalized(written.label) &&
               Normalized(asked.value) == Normalized(written.value) &&
               std::equal(asked.variables.begin(), asked.variables.end(), written.variables.begin(),
                          written.variables.end(),
                          [](const VariableRange& one, const VariableRange& other) {
                              return AreSame(one, other);
                          });
    }

    void AccountForSets() {
        std::unordered_map<std::string, std::vector<std::size_t>> places;
        for (std::size_t index = m_written.sets.size(); index-- > 0;) {
            places[m_written.sets[index].name.key].push_back(index);
        }
        std::unordered_map<std::string, std::size_t> first;  // asked, by written name
        for (std::size_t index = 0; index < m_asked.sets.size(); ++index) {
            const ResponseSet& set = m_asked.sets[index];
            const std::string key = WrittenSetName(m_builder.Page(), set.name.key);
            std::vector<std::size_t>& found = places[key];
            if (found.empty()) {
                NoteLostSet(index);
                continue;
            }
            const std::size_t written = Take(set, found);
            m_builder.Enter(Subject::kSet, Fate::kKept, index, {written}).line = set.line;
            if (!AreSame(set, m_written.sets[written])) {
                Differs("The set " + set.name.text, "another one",
                        m_written.sets[written].name.text, set.line);
            }
            const auto [clash, isNew] = first.try_emplace(key, index);
            if (!isNew) NoteClash(m_asked.sets[clash->second], set);
        }
        for (const ResponseSet& set : m_written.sets) {
            if (places[set.name.key].empty()) continue;
            places[set.name.key].clear();
            Differs("The set " + set.name.text, "not declared", "declared", 0);
        }
    }

    // One that is the same, rather than the first one.
    [[nodiscard]] std::size_t Take(const ResponseSet& set, std::vector<std::size_t>& found) {
        m_builder.Charge(found.size());
        auto place = std::find_if(found.rbegin(), found.rend(), [&](std::size_t index) {
            return AreSame(set, m_written.sets[index]);
        });
        if (place == found.rend()) place = found.rbegin();
        const std::size_t written = *place;
        found.erase(std::next(place).base());
        return written;
    }

    void NoteLostSet(std::size_t index) {
        const ResponseSet& set = m_asked.sets[index];
        m_builder.Enter(Subject::kSet, Fate::kDropped, index).line = set.line;
        const std::string name = std::string(set.countsOneValue ? "MDGROUP " : "MRGROUP ");
        m_builder.Note(NoteWording::kDroppedAfterFormat, {.name = name + set.name.text}, set.line);
    }

    void NoteClash(const ResponseSet& first, const ResponseSet& set) {
        const bool isSame = first.name.key == set.name.key;
        m_builder.Note(isSame ? NoteWording::kSetDeclaredTwice : NoteWording::kSetNameClash,
                       {.name = first.name.text,
                        .other = set.name.text,
                        .written = WrittenSetName(m_builder.Page(), set.name.text)},
                       set.line);
    }

    void NoteSetsOfOne() {
        std::unordered_set<std::string_view> used;
        for (const TableOutline& table : m_written.tables) {
            for (const Dimension& dimension : table.dimensions) {
                for (const Node& node : dimension) {
                    if (node.role == Role::kSet) used.insert(node.name.key);
                }
            }
        }
        for (const ResponseSet& set : m_asked.sets) {
            if (set.variables.size() != 1 || !set.variables.front().last.IsEmpty()) continue;
            if (!used.contains(WrittenSetName(m_builder.Page(), set.name.key))) continue;
            m_builder.Note(NoteWording::kSetOfOne, {.name = set.name.text}, set.line);
        }
    }

    const CommandOutline& m_asked;
    const CommandOutline& m_written;
    AccountBuilder& m_builder;
};

// The words of the new command that a macro could fill in.
class MacroSearch {
public:
    MacroSearch(const AccountContext& context, AccountBuilder& builder)
        : m_builder(builder), m_macros(context.macroNames.begin(), context.macroNames.end()) {}

    void Run(const CommandOutline& asked, const CommandOutline& written) {
        for (const ResponseSet& set : asked.sets) Look(set.name, set.line);
        for (const ResponseSet& set : written.sets) {
            for (const VariableRange& range : set.variables) {
                Look(range.first, 0);
                Look(range.last, 0);
            }
        }
        for (const TableOutline& table : written.tables) LookIn(table);
    }

private:
    void LookIn(const TableOutline& table) {
        for (const Dimension& dimension : table.dimensions) {
            for (const Node& node : dimension) Look(node.name, 0);
        }
        for (const Assignment& one : table.assignments) {
            Look({one.format.text, one.format.text}, 0);
            Look({one.argument, one.argument}, 0);
        }
        for (const Sort& sort : table.sorts) {
            Look(sort.variable, 0);
            Look(sort.of, 0);
        }
    }

    void Look(const Name& name, long line) {
        std::string_view key = name.key;
        const bool isMacro = m_macros.contains(key) ||
                             (key.starts_with('$') && m_macros.contains(key.substr(1))) ||
                             key.find('!') != std::string_view::npos;
        if (!isMacro || !m_told.insert(key).second) return;
        m_builder.Note(NoteWording::kMacroName, {.name = name.text}, line);
    }

    AccountBuilder& m_builder;
    std::unordered_set<std::string_view> m_macros;
    std::unordered_set<std::string_view> m_told;
};

}  // namespace

bool HasBrokenFormat(const CommandOutline& asked) {
    return std::any_of(asked.remarks.begin(), asked.remarks.end(), [](const Remark& remark) {
        return remark.kind == Remark::Kind::kUnreadable && remark.subcommand.key == "FORMAT";
    });
}

void AccountForCommand(const CommandOutline& asked, const CommandOutline& written,
                       const AccountContext& context, AccountBuilder& builder) {
    CommandAccount(asked, written, builder).Run();
    MacroSearch(context, builder).Run(asked, written);
    for (const LostCommand& lost : context.lostCommands) {
        builder.Note(NoteWording::kCommandLost, {.name = lost.name}, lost.line);
    }
}

}  // namespace quillet::outline
