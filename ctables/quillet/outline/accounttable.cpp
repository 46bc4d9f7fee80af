// What holds for one table, besides its statistics and totals.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "outline/accountsettings.h"
#include "outline/accountstatistics.h"

namespace quillet::outline {

namespace {

[[nodiscard]] std::vector<std::string> TextsOf(const Heading& heading) {
    std::vector<std::string> texts;
    for (const Literal& text : heading.texts) texts.push_back(Normalized(text));
    return texts;
}

[[nodiscard]] bool HasText(const Heading& heading) {
    return std::any_of(heading.texts.begin(), heading.texts.end(),
                       [](const Literal& text) { return !text.value.empty(); });
}

// True for what the new command has as well.
[[nodiscard]] bool IsOfTable(HeadingKind kind) {
    return kind == HeadingKind::kTitle || kind == HeadingKind::kCaption ||
           kind == HeadingKind::kCorner;
}

[[nodiscard]] std::string_view NewWord(HeadingKind kind) {
    switch (kind) {
        case HeadingKind::kTitle:
        case HeadingKind::kPageTitle:
            return "TITLE";
        case HeadingKind::kCorner:
            return "CORNER";
        default:
            return "CAPTION";
    }
}

void NoteDropped(const Heading& heading, AccountBuilder& builder) {
    if (!HasText(heading)) return;
    std::string text;
    for (const Literal& one : heading.texts) {
        if (!text.empty()) text += ' ';
        text += one.source;
    }
    std::string line = "/TITLES ";
    line += NewWord(heading.kind);
    line += '=' + text;
    builder.Note(NoteWording::kTitleDropped,
                 {.name = heading.subcommand.key, .asked = text, .written = line}, heading.line);
}

class TableAccount {
public:
    TableAccount(const TablePair& tables, const CommandOutline& asked, AccountBuilder& builder)
        : m_tables(tables),
          m_asked(tables.Asked()),
          m_written(tables.Written()),
          m_command(asked),
          m_builder(builder) {}

    void Run() {
        for (const Node* pNode : m_tables.DegradedNodes()) {
            m_builder.Note(NoteWording::kScaleLost,
                           {.name = pNode->name.text, .asked = NameOfRole(pNode->role)},
                           pNode->line);
        }
        for (const Axis axis : kAllAxes) {
            const DimensionPair& pair = m_tables.At(axis);
            if (pair.isSame && !pair.hasOtherRoles) continue;
            m_builder.Note(NoteWording::kTableDiffers, {.name = NameOf(axis)}, m_asked.line);
        }
        CompareLabels();
        CompareMissing();
        AccountForHeadings();
    }

private:
    [[nodiscard]] static std::string_view NameOfRole(Role role) {
        if (role == Role::kTotal) return "total";
        return role == Role::kSet ? "set of multiple responses" : "scale variable";
    }

    void EnterSetting(AccountedSetting setting, bool isSame, long line) {
        m_builder.EnterSetting(setting, isSame ? Fate::kKept : Fate::kLost, line);
    }

    void CompareLabels() {
        const LabelPosition& asked = m_asked.statisticsLabels;
        const LabelPosition& written = m_written.statisticsLabels;
        Axis wanted = asked.axis;
        if (wanted == Axis::kNone && asked.isVisible) wanted = StatisticsAxis(m_tables);
        // Where no function is left, and where a variable is not what it was declared as, another
        // dimension may carry the statistics.
        const bool isUnclear = asked.axis == Axis::kNone && asked.isVisible &&
                               (m_written.assignments.empty() || !m_tables.DegradedNodes().empty());
        const bool isThereAnyway = isUnclear && written.axis != Axis::kNone &&
                                   !m_tables.WrittenDimension(written.axis).empty();
        const bool isSame =
            (wanted == written.axis || isThereAnyway) && asked.isVisible == written.isVisible;
        EnterSetting(AccountedSetting::kStatisticsLabels, isSame, asked.line);
        if (!isSame) NoteLabels("statistics", asked.line);

        const LabelPosition& labels = m_asked.categoryLabels;
        // The new command has no layers for labels to go to.
        const Axis place = labels.axis == Axis::kLayers ? Axis::kNone : labels.axis;
        const bool isThere = place == m_written.categoryLabels.axis;
        if (isThere && place == Axis::kNone) return;
        EnterSetting(AccountedSetting::kCategoryLabels, isThere, labels.line);
        if (!isThere) NoteLabels("categories", labels.line);
    }

    void NoteLabels(std::string_view name, long line) {
        m_builder.Note(NoteWording::kLabelsDiffer, {.name = name}, line == 0 ? m_asked.line : line);
    }

    void CompareMissing() {
        const Settings& settings = m_tables.AskedSettings();
        const bool isSame = m_asked.missing == m_written.missing;
        EnterSetting(AccountedSetting::kMissing, isSame, settings.missingLine);
        if (!isSame) {
            const bool isIncluded = m_asked.missing == Missing::kInclude;
            if (!IsTakenByFormat(m_command, "MISSING")) {
                m_builder.Note(NoteWording::kSettingDiffers,
                               {.name = "The setting for missing values",
                                .asked = isIncluded ? "INCLUDE" : "EXCLUDE",
                                .written = isIncluded ? "EXCLUDE" : "INCLUDE"},
                               settings.missingLine);
            }
        }
        if (m_written.hidesEmptyCategories) return;
        EnterSetting(AccountedSetting::kEmptyCategories, false, m_asked.line);
        m_builder.Note(
            NoteWording::kSettingDiffers,
            {.name = "The setting for empty categories", .asked = "EXCLUDE", .written = "INCLUDE"},
            m_asked.line);
    }

    [[nodiscard]] std::size_t FindWritten(const Heading& asked) const {
        const std::vector<std::string> texts = TextsOf(asked);
        for (std::size_t index = 0; index < m_written.headings.size(); ++index) {
            const Heading& written = m_written.headings[index];
            if (IsOfTable(asked.kind) && written.kind != asked.kind) continue;
            if (TextsOf(written) == texts) return index;
        }
        return kNowhere;
    }

    void AccountForHeadings() {
        std::vector<bool> isAsked(m_written.headings.size());
        for (std::size_t index = 0; index < m_asked.headings.size(); ++index) {
            const Heading& heading = m_asked.headings[index];
            // A heading without a text asks for none.
            if (heading.texts.empty()) continue;
            const std::size_t written = FindWritten(heading);
            if (written == kNowhere) {
                m_builder.Enter(Subject::kHeading, Fate::kDropped, index).line = heading.line;
                NoteDropped(heading, m_builder);
                continue;
            }
            isAsked[written] = true;
            AccountEntry& entry = m_builder.Enter(Subject::kHeading, Fate::kKept, index, {written});
            entry.line = heading.line;
            entry.writtenLine = m_written.headings[written].line;
        }
        CompareAutomaticTitle(isAsked);
        for (std::size_t index = 0; index < isAsked.size(); ++index) {
            if (isAsked[index]) continue;
            m_builder.Enter(Subject::kHeading, Fate::kExtra, kNowhere, {index}).writtenLine =
                m_written.headings[index].line;
            const std::vector<Literal>& texts = m_written.headings[index].texts;
            m_builder.Note(NoteWording::kTextExtra,
                           {.written = texts.empty() ? std::string_view() : texts.front().source},
                           0);
        }
    }

    // Where another title was dropped, the conversion makes an automatic one.
    void CompareAutomaticTitle(std::vector<bool>& isAsked) {
        const Settings& settings = m_tables.AskedSettings();
        if (m_written.hasAutomaticTitle && settings.autoLabel == AutoLabel::kOn) {
            for (std::size_t index = 0; index < isAsked.size(); ++index) {
                if (m_written.headings[index].kind == HeadingKind::kTitle) isAsked[index] = true;
            }
        }
        if (m_asked.hasAutomaticTitle) {
            EnterSetting(AccountedSetting::kAutomaticTitle, m_written.hasAutomaticTitle,
                         settings.autoLabelLine);
        }
        if (!m_asked.hasAutomaticTitle || m_written.hasAutomaticTitle) return;
        if (IsTakenByFormat(m_command, "AUTOLABEL")) return;
        m_builder.Note(
            NoteWording::kSettingDiffers,
            {.name = "The title of the table", .asked = "automatic", .written = "left out"},
            settings.autoLabelLine);
    }

    const TablePair& m_tables;
    const TableOutline& m_asked;
    const TableOutline& m_written;
    const CommandOutline& m_command;  // that was asked for
    AccountBuilder& m_builder;
};

}  // namespace

void AccountForTable(const TablePair& tables, const CommandOutline& asked,
                     AccountBuilder& builder) {
    TableAccount(tables, asked, builder).Run();
}

void AccountForDroppedHeadings(const std::vector<Heading>& headings, AccountBuilder& builder) {
    for (std::size_t index = 0; index < headings.size(); ++index) {
        if (headings[index].texts.empty()) continue;
        builder.Enter(Subject::kHeading, Fate::kDropped, index).line = headings[index].line;
        NoteDropped(headings[index], builder);
    }
}

}  // namespace quillet::outline
