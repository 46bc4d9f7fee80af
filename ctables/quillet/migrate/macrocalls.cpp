// Whether the body of a macro is dealt with depends on its calls, and these may stand in any file.
// So all files that include others are looked at before the first one is converted, whatever slice
// they belong to: each slice then says the same of a macro.
#include "migrate/macrocalls.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillet::migrate {

namespace {

// Finds the calls that are left since their expansion is no syntax.
class LeftCalls final : public ExpansionListener {
public:
    explicit LeftCalls(const MacroExpansion& expansion)
        : m_expansion(expansion), m_left(expansion.macros.size(), 0) {
        for (std::size_t place = 0; place < m_left.size(); ++place) {
            m_left[place] = expansion.macros[place].callsLeft;
        }
    }

    void OnExpandedCommand(const ExpandedCommand& command) override {
        if (command.isConverted) return;
        for (std::size_t index = 0; index < command.callCount; ++index) {
            const MacroCall& call = m_expansion.calls[command.firstCall + index];
            if (call.fault) continue;
            for (const std::size_t place : call.expanded) ++m_left[place];
        }
    }

    [[nodiscard]] long Of(std::size_t place) const { return m_left[place]; }

private:
    const MacroExpansion& m_expansion;
    std::vector<long> m_left;
};

bool CallsOthers(const MacroExpansion& expansion) {
    // Macros of other files come last, and only where they are called.
    return !expansion.macros.empty() && !expansion.macros.back().file.empty();
}

}  // namespace

void MacroCalls::AddFile(const std::string& path, IncludedTexts& texts) {
    const std::shared_ptr<const SettledText> text = texts.Read(path);
    if (text == nullptr || !MayHoldMacros(text->text)) return;
    MacroOptions options;
    options.conversion = text->ConversionOptions();
    options.name = path;
    options.findInclude = [&](std::string_view name, const std::string& includingFile,
                              IncludedText& file) {
        IncludeLookup ignored;
        const std::string inUtf8 =
            ToUtf8(name, text->encoding.encoding, text->encoding.named.get());
        return texts.Find(inUtf8, includingFile, text->encoding, file, ignored);
    };
    const MacroExpansion expansion = ExpandMacros(text->text, options);
    if (!CallsOthers(expansion)) return;
    LeftCalls left(expansion);
    ConvertExpansions(text->text, expansion, options.conversion, left);
    const std::lock_guard lock(m_mutex);
    for (std::size_t place = 0; place < expansion.macros.size(); ++place) {
        const DefinedMacro& macro = expansion.macros[place];
        if (macro.file.empty()) continue;
        Calls& calls = m_calls[{macro.file, macro.firstLine, macro.name}];
        calls.count += macro.calls;
        calls.left += left.Of(place);
    }
}

void MacroCalls::TellOf(const std::string& path, MacroExpansion& expansion) const {
    for (DefinedMacro& macro : expansion.macros) {
        if (!macro.file.empty()) break;
        const auto found = m_calls.find({path, macro.firstLine, macro.name});
        if (found == m_calls.end()) continue;
        macro.callsElsewhere = found->second.count;
        macro.callsLeftElsewhere = found->second.left;
    }
}

std::optional<ContentHash> MacroCalls::HashOf(const std::string& path) const {
    std::string text;
    for (auto found = m_calls.lower_bound({path, 0, {}});
         found != m_calls.end() && found->first.file == path; ++found) {
        text.append(found->first.name).append("\n");
        for (const long number :
             {found->first.firstLine, found->second.count, found->second.left}) {
            text.append(std::to_string(number)).append("\n");
        }
    }
    if (text.empty()) return std::nullopt;
    ContentHasher hasher;
    hasher.Add(text);
    return hasher.Value();
}

}  // namespace quillet::migrate
