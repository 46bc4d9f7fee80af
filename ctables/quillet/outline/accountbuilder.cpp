#include "outline/accountbuilder.h"

#include <algorithm>
#include <utility>

#include "platform/commandbudget.h"
#include "platform/multibyte.h"

namespace quillet::outline {

namespace {

struct Wording {
    NoteCode code;
    Light light;
    std::string_view sentence;
};

// The code of a variant is that of the note before it.
constexpr NoteCode kNoCode = static_cast<NoteCode>(255);
constexpr Wording kWordings[] = {
#define QUILLET_NOTE(code, name, light, sentence) {NoteCode::code, Light::light, sentence},
#define QUILLET_NOTE_VARIANT(wording, light, sentence) {kNoCode, Light::light, sentence},
#include "outline/accountnotes.def"
};

constexpr std::string_view kNames[] = {
#define QUILLET_NOTE(code, name, light, sentence) name,
#include "outline/accountnotes.def"
};

constexpr std::size_t kStepsAlways = std::size_t{8} * 1024 * 1024;
constexpr std::size_t kStepsForEachPart = 64;

// As much of a name or text as a sentence may hold.
constexpr std::size_t kLongestPart = 300;

constexpr std::size_t kMostNames = 8;

[[nodiscard]] bool IsWhiteSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

}  // namespace

std::string_view NameOf(Light light) {
    switch (light) {
        case Light::kSame:
            return "same";
        case Light::kMore:
            return "more";
        case Light::kLess:
            return "less";
        case Light::kDiffers:
            break;
    }
    return "differs";
}

std::string_view NameOf(NoteCode code) { return kNames[static_cast<std::size_t>(code)]; }

AccountBuilder::AccountBuilder(const CodePage& codePage, std::size_t size, Account& account)
    : m_codePage(codePage),
      m_account(account),
      m_stepsLeft(kStepsAlways + kStepsForEachPart * size) {}

void AccountBuilder::Charge(std::size_t steps) {
    if (steps > m_stepsLeft) throw CommandTooLarge();
    m_stepsLeft -= steps;
}

void AccountBuilder::BeginTable(std::size_t asked, std::size_t written) {
    m_askedTable = asked;
    m_writtenTable = written;
}

void AccountBuilder::Note(NoteWording wording, const NoteNames& names, long line) {
    auto index = static_cast<std::size_t>(wording);
    AccountNote note;
    note.light = kWordings[index].light;
    note.text = Fill(kWordings[index].sentence, names);
    note.table = m_askedTable == kNowhere ? m_writtenTable : m_askedTable;
    note.line = line;
    while (kWordings[index].code == kNoCode) --index;
    note.code = kWordings[index].code;
    m_account.light = std::max(m_account.light, note.light);
    m_account.notes.push_back(std::move(note));
}

AccountEntry& AccountBuilder::Enter(Subject subject, Fate fate, std::size_t asked,
                                    const std::vector<std::size_t>& written) {
    AccountEntry entry;
    entry.subject = subject;
    entry.fate = fate;
    entry.askedTable = m_askedTable;
    entry.writtenTable = m_writtenTable;
    entry.asked = asked;
    entry.written = {m_account.written.size(), written.size()};
    m_account.written.insert(m_account.written.end(), written.begin(), written.end());
    m_account.entries.push_back(entry);
    return m_account.entries.back();
}

void AccountBuilder::EnterSetting(AccountedSetting setting, Fate fate, long line) {
    Enter(Subject::kSetting, fate, static_cast<std::size_t>(setting)).line = line;
}

std::string AccountBuilder::Fill(std::string_view sentence, const NoteNames& names) const {
    const std::pair<std::string_view, std::string_view> parts[] = {{"{function}", names.function},
                                                                   {"{name}", names.name},
                                                                   {"{other}", names.other},
                                                                   {"{asked}", names.asked},
                                                                   {"{written}", names.written}};
    std::string text;
    while (!sentence.empty()) {
        const std::size_t brace = std::min(sentence.find('{'), sentence.size());
        text += sentence.substr(0, brace);
        sentence.remove_prefix(brace);
        for (const auto& [placeholder, value] : parts) {
            if (!sentence.starts_with(placeholder)) continue;
            sentence.remove_prefix(placeholder.size());
            const std::string_view shown = TAVQMBStringTruncate_A(m_codePage, value, kLongestPart);
            text += shown;
            if (shown.size() < value.size()) text += "...";
            break;
        }
    }
    return text;
}

std::string WrittenSetName(const CodePage& codePage, std::string_view name) {
    constexpr std::size_t kMostBytes = 8;
    if (name.starts_with('$')) return std::string(name);
    std::string written = "$";
    written += name;
    if (written.size() > kMostBytes) {
        written.resize(TAVQMBStringTruncate_A(codePage, written, kMostBytes).size());
    }
    return written;
}

std::string ListOfNames(const std::vector<std::string_view>& names) {
    const std::size_t shown = std::min(names.size(), kMostNames);
    std::string list;
    for (std::size_t index = 0; index < shown; ++index) {
        const bool isLast = index + 1 == names.size();
        if (index > 0) list += isLast ? " and " : ", ";
        list += names[index];
    }
    if (shown < names.size()) list += " and " + std::to_string(names.size() - shown) + " more";
    return list;
}

std::string Normalized(const Literal& literal) {
    std::string text;
    bool isSpace = false;
    for (const char c : literal.value) {
        if (IsWhiteSpace(c)) {
            isSpace = !text.empty();
            continue;
        }
        if (isSpace) text += ' ';
        isSpace = false;
        text += c;
    }
    return text;
}

void SortOut(std::vector<std::size_t>& values) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

}  // namespace quillet::outline
