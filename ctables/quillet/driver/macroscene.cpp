#include "driver/macroscene.h"

#include <algorithm>
#include <utility>

#include "macro/commandcutter.h"
#include "platform/linereader.h"

namespace quillet {

namespace {

// The commands of a text that hold calls, in their order.
std::vector<CallingCommand> FindCallingCommands(std::string_view source,
                                                const std::vector<macro::Call>& calls,
                                                const macro::ExpansionOptions& options) {
    std::vector<CallingCommand> commands;
    const std::size_t offset = source.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    const std::string_view text = source.substr(offset);
    macro::CommandCutter cutter(*options.pCodePage, text, options.layout,
                                macro::CommandCutter::Content::kFile);
    macro::Command command;
    std::size_t next = 0;
    while (next < calls.size() && cutter.Next(command)) {
        if (command.kind != macro::Command::Kind::kOrdinary) continue;
        CallingCommand calling;
        calling.begin = offset + command.begin;
        calling.end = offset + command.end + (command.isEnded ? 1 : 0);
        calling.firstCall = next;
        while (next < calls.size() && calls[next].begin < calling.end) ++next;
        calling.lastCall = next;
        if (calling.firstCall < calling.lastCall) commands.push_back(calling);
    }
    return commands;
}

}  // namespace

std::string ExpandedScene::Expanded(const CallingCommand& command) const {
    std::string result;
    std::size_t written = command.begin;
    for (std::size_t i = command.firstCall; i < command.lastCall; ++i) {
        const macro::Call& call = expansion.calls[i];
        if (call.fault) continue;
        result.append(text, written, call.begin - written).append(call.text);
        written = call.end;
        if (call.droppedEnd > 0) {
            result.append(text, written, call.droppedBegin - written);
            written = call.droppedEnd;
        }
    }
    if (written < command.end) result.append(text, written, command.end - written);
    return result;
}

void MacroScene::AddBody(std::size_t definition, std::string_view body) {
    m_size += m_last.size() + body.size();
    m_parts.push_back({std::move(m_last), definition, std::string(body)});
    m_last.clear();
}

std::string MacroScene::TextWith(const BodyReplacements& bodies) const {
    std::string text;
    for (const Part& part : m_parts) {
        const std::string* pBody = bodies[part.definition];
        text.append(part.text).append(pBody != nullptr ? *pBody : part.body);
    }
    return text.append(m_last);
}

ExpandedScene MacroScene::ExpandWith(const BodyReplacements& bodies) const {
    ExpandedScene scene;
    scene.text = TextWith(bodies);
    scene.expansion = macro::ExpandFile(scene.text, m_options, m_pResolver);
    scene.commands = FindCallingCommands(scene.text, scene.expansion.calls, m_options);
    return scene;
}

}  // namespace quillet
