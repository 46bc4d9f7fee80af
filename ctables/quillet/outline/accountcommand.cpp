// What holds for a whole command.
#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
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
        NoteTaken();
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

    void AccountForSets() {
        // Those that are the same go first, so that one that is missing is not taken for the next.
        std::vector<std::size_t> writtenOf(m_asked.sets.size(), kNowhere);
        std::vector<bool> isAsked(m_written.sets.size());
        MatchSets(TextOfSet, writtenOf, isAsked);
        MatchSets([](const std::string& key, const ResponseSet& /*set*/) { return key; }, writtenOf,
                  isAsked);
        std::unordered_map<std::string, std::size_t> first;  // asked, by written name
        for (std::size_t index = 0; index < m_asked.sets.size(); ++index) {
            const ResponseSet& set = m_asked.sets[index];
            const std::size_t written = writtenOf[index];
            if (written == kNowhere) {
                NoteLostSet(index);
                continue;
            }
            m_builder.Enter(Subject::kSet, Fate::kKept, index, {written}).line = set.line;
            const ResponseSet& match = m_written.sets[written];
            if (TextOfSet(match.name.key, set) != TextOfSet(match.name.key, match)) {
                Differs("The set " + set.name.text, "another one",
                        m_written.sets[written].name.text, set.line);
            }
            const auto [clash, isNew] = first.try_emplace(m_written.sets[written].name.key, index);
            if (!isNew) NoteClash(m_asked.sets[clash->second], set);
        }
        for (std::size_t index = 0; index < isAsked.size(); ++index) {
            if (isAsked[index]) continue;
            Differs("The set " + m_written.sets[index].name.text, "not declared", "declared", 0);
        }
    }

    // Matches what has no match yet and the same text.
    template <typename TextOf>
    void MatchSets(const TextOf& textOf, std::vector<std::size_t>& writtenOf,
                   std::vector<bool>& isAsked) const {
        std::unordered_map<std::string, std::vector<std::size_t>> places;  // the last one first
        for (std::size_t index = m_written.sets.size(); index-- > 0;) {
            const ResponseSet& set = m_written.sets[index];
            if (!isAsked[index]) places[textOf(set.name.key, set)].push_back(index);
        }
        for (std::size_t index = 0; index < writtenOf.size(); ++index) {
            if (writtenOf[index] != kNowhere) continue;
            const ResponseSet& set = m_asked.sets[index];
            const auto found =
                places.find(textOf(WrittenSetName(m_builder.Page(), set.name.key), set));
            if (found == places.end() || found->second.empty()) continue;
            writtenOf[index] = found->second.back();
            isAsked[found->second.back()] = true;
            found->second.pop_back();
        }
    }

    // All that a set is, the same text for the same sets.
    [[nodiscard]] static std::string TextOfSet(const std::string& key, const ResponseSet& set) {
        std::string text = key + (set.countsOneValue ? "\nD" : "\nC");
        if (!set.label.IsEmpty()) text += '\'' + Normalized(set.label);
        text += '\n' + Normalized(set.value);
        for (const VariableRange& range : set.variables) {
            text += '\n' + range.first.key + ' ' + range.last.key;
        }
        return text;
    }

    void NoteLostSet(std::size_t index) {
        const ResponseSet& set = m_asked.sets[index];
        m_builder.Enter(Subject::kSet, Fate::kDropped, index).line = set.line;
        if (IsTakenByFormat(m_asked, set.countsOneValue ? "MDGROUP" : "MRGROUP")) return;
        Differs("The set " + set.name.text, "declared", "not declared", set.line);
    }

    // Tables have notes of their own, and so has what is passed over anyway.
    void NoteTaken() {
        std::set<std::pair<long, std::string_view>> noted;
        for (const Remark& remark : m_asked.remarks) {
            const bool isWhole =
                remark.kind == Remark::Kind::kPassedOver || remark.kind == Remark::Kind::kUnknown;
            if (isWhole) noted.insert({remark.line, remark.subcommand.key});
        }
        for (const TakenByFormat& taken : m_asked.takenByFormat) {
            if (taken.table != kNowhere) continue;
            if (noted.contains({taken.line, taken.subcommand.key})) continue;
            m_builder.Note(NoteWording::kDroppedAfterFormat, {.name = taken.subcommand.key},
                           taken.line);
        }
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

bool IsTakenByFormat(const CommandOutline& asked, std::string_view subcommand) {
    return std::any_of(
        asked.takenByFormat.begin(), asked.takenByFormat.end(),
        [subcommand](const TakenByFormat& taken) { return taken.subcommand.key == subcommand; });
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
