#include "macro/macro.h"

#include <algorithm>
#include <utility>

#include "macro/bodycompiler.h"

namespace quillet::macro {

namespace {

std::string WithLineFeeds(std::string_view source) {
    const Lexer lexer(CodePage::Utf8(), source);
    std::string text;
    text.reserve(source.size());
    std::size_t begin = 0;
    while (true) {
        const std::size_t end = lexer.LineEnd(begin);
        text += source.substr(begin, end - begin);
        if (end == source.size()) return text;
        text += '\n';
        begin = lexer.LineBreakEnd(end);
    }
}

}  // namespace

long Macro::LineOf(std::size_t position) const {
    const auto after = std::upper_bound(lineBegins.begin(), lineBegins.end(), position);
    return bodyLine + static_cast<long>(after - lineBegins.begin());
}

std::shared_ptr<const Macro> MakeMacro(const CodePage& codePage, MacroHead head, ArgumentList list,
                                       std::string_view source, int maxNesting) {
    auto macro = std::make_shared<Macro>();
    static_cast<MacroHead&>(*macro) = std::move(head);
    macro->list = std::move(list);
    macro->body = WithLineFeeds(source);
    for (std::size_t end = macro->body.find('\n'); end != std::string::npos;
         end = macro->body.find('\n', end + 1)) {
        macro->lineBegins.push_back(end + 1);
    }
    macro->program = CompileBody(codePage, macro->list, macro->body, maxNesting);
    return macro;
}

void MacroTable::Add(std::shared_ptr<const Macro> macro) {
    std::string name = Capitals(*m_pCodePage, macro->name);
    m_macros.insert_or_assign(std::move(name), std::move(macro));
}

const Macro* MacroTable::Find(std::string_view name) const {
    if (m_macros.empty()) return nullptr;
    const auto macro = m_macros.find(Capitals(*m_pCodePage, name));
    return macro == m_macros.end() ? nullptr : macro->second.get();
}

}  // namespace quillet::macro
