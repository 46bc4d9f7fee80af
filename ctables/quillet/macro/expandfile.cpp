#include "macro/expandfile.h"

#include <algorithm>
#include <utility>

#include "macro/expander.h"
#include "macro/lexer.h"
#include "platform/linereader.h"

namespace quillet::macro {

namespace {

// The line on which a place of a text stands. Places are asked for in ascending order.
class LineCounter {
public:
    // Line feeds make the lines of a file that has any, as everywhere.
    explicit LineCounter(std::string_view text)
        : m_text(text), m_lineEnd(text.find('\n') == std::string_view::npos ? '\r' : '\n') {}

    [[nodiscard]] long LineAt(std::size_t position) {
        if (position > m_position) {
            const auto* const pBegin = m_text.begin() + m_position;
            const auto* const pEnd = m_text.begin() + position;
            m_line += static_cast<long>(std::count(pBegin, pEnd, m_lineEnd));
            m_position = position;
        }
        return m_line;
    }

private:
    std::string_view m_text;
    char m_lineEnd;
    std::size_t m_position = 0;
    long m_line = 1;
};

std::string_view LineBreakOf(std::string_view text) {
    const std::size_t lineFeed = text.find('\n');
    if (lineFeed == std::string_view::npos) {
        return text.find('\r') == std::string_view::npos ? "\n" : "\r";
    }
    return lineFeed > 0 && text[lineFeed - 1] == '\r' ? "\r\n" : "\n";
}

std::string WithLineBreaks(std::string text, std::string_view lineBreak) {
    if (lineBreak == "\n") return text;
    std::string result;
    for (const char byte : text) {
        if (byte == '\n') {
            result += lineBreak;
        } else {
            result += byte;
        }
    }
    return result;
}

// The text of a file as commands, and where it stands in the file.
struct SourceFile {
    const std::string& name;
    std::string_view source;
    Layout layout;
    bool isIncluded = false;
};

// Reads a file and those that it includes.
class FileReader {
public:
    FileReader(std::string_view source, const ExpansionOptions& options, IncludeResolver* pResolver)
        : m_options(options),
          m_codePage(*options.pCodePage),
          m_pResolver(pResolver),
          m_lineBreak(LineBreakOf(source)),
          m_macros(m_codePage),
          m_expander(m_codePage, options.layout, options.limits, source.size(), m_macros) {}

    void Read(const SourceFile& file);
    [[nodiscard]] FileExpansion Take() { return std::move(m_result); }

private:
    struct Place;

    void ReadDefinition(const Place& place, const Command& command);
    [[nodiscard]] bool ReadHead(const Place& place, const Command& command, MacroHead& head,
                                ArgumentList& list, std::size_t& position);
    [[nodiscard]] bool ReadInclude(const Place& place, const Command& command);
    void FollowInclude(const Place& place, Include& include);
    void ReadCalls(const Place& place, const Command& command);
    void ExpandCall(Call& call, bool beginsCommand);
    void AddFault(const Place& place, Fault fault, std::size_t position);

    const ExpansionOptions& m_options;
    const CodePage& m_codePage;
    IncludeResolver* m_pResolver;
    std::string_view m_lineBreak;
    MacroTable m_macros;
    Expander m_expander;
    std::vector<std::string> m_openFiles;  // each includes the next
    std::size_t m_includedSize = 0;
    std::size_t m_textSize = 0;
    FileExpansion m_result;
};

// Where the reader is: in a file whose text begins at byte `offset` of its source.
struct FileReader::Place {
    const SourceFile& file;
    Lexer lexer;
    std::size_t offset = 0;
    LineCounter& lines;

    [[nodiscard]] long LineAt(std::size_t position) const { return lines.LineAt(position); }
};

void FileReader::Read(const SourceFile& file) {
    const bool hasMark = file.source.starts_with(kByteOrderMark);
    const std::size_t offset = hasMark ? kByteOrderMark.size() : 0;
    const std::string_view text = file.source.substr(offset);
    LineCounter lines(text);
    const Place place{file, Lexer(m_codePage, text), offset, lines};
    m_openFiles.push_back(file.name);
    CommandCutter cutter(m_codePage, text, file.layout, CommandCutter::Content::kFile);
    Command command;
    while (cutter.Next(command)) {
        if (command.kind == Command::Kind::kDefinition) {
            ReadDefinition(place, command);
        } else if (command.kind == Command::Kind::kOrdinary && !ReadInclude(place, command) &&
                   !file.isIncluded && !m_macros.IsEmpty()) {
            ReadCalls(place, command);
        }
    }
    m_openFiles.pop_back();
}

void FileReader::ReadDefinition(const Place& place, const Command& command) {
    Definition definition;
    definition.firstLine = place.LineAt(command.begin);
    definition.begin = place.offset + command.begin;
    MacroHead head;
    head.firstLine = definition.firstLine;
    if (place.file.isIncluded) head.file = place.file.name;
    ArgumentList list;
    std::size_t bodyBegin = 0;
    if (!ReadHead(place, command, head, list, bodyBegin)) return;
    definition.name = head.name;
    head.bodyLine = place.LineAt(bodyBegin);
    definition.lastLine = place.LineAt(command.end);
    definition.bodyBegin = place.offset + bodyBegin;
    definition.bodyEnd = place.offset + command.end;
    definition.end = place.offset + command.next;
    definition.macro = MakeMacro(m_codePage, std::move(head), std::move(list),
                                 place.lexer.Text().substr(bodyBegin, command.end - bodyBegin),
                                 m_options.limits.nesting);
    m_macros.Add(definition.macro);
    if (!place.file.isIncluded) m_result.definitions.push_back(std::move(definition));
}

// The name and the arguments; `position` is set to where the body begins.
bool FileReader::ReadHead(const Place& place, const Command& command, MacroHead& head,
                          ArgumentList& list, std::size_t& position) {
    const Lexer lexer(m_codePage, place.lexer.Text().substr(0, command.end));
    Fault fault;
    const Token word = lexer.NextToken(command.begin);
    const Token name = lexer.NextToken(word.end);
    const bool isName = name.kind == TokenKind::kIdentifier || name.kind == TokenKind::kMacroWord;
    head.name = isName ? lexer.TextOf(name) : std::string_view();
    position = name.end;
    if (!command.isEnded) {
        fault.kind = FaultKind::kUnclosedDefinition;
        fault.name = isName ? head.name : std::string(lexer.TextOf(word));
        position = command.begin;
    } else if (!isName) {
        fault.kind = FaultKind::kNoMacroName;
        position = command.begin;
    } else if (ReadArgumentList(m_codePage, lexer, head.name, position, list, fault)) {
        return true;
    }
    AddFault(place, std::move(fault), position);
    return false;
}

// INCLUDE [FILE=]'path' or INSERT FILE='path' ...
bool FileReader::ReadInclude(const Place& place, const Command& command) {
    const Lexer lexer(m_codePage, place.lexer.Text().substr(0, command.end));
    Token token = lexer.NextToken(command.begin);
    if (token.kind != TokenKind::kIdentifier) return false;
    constexpr std::size_t kLongestWord = 7;
    if (token.end - token.begin > kLongestWord) return false;
    const std::string word = Capitals(m_codePage, lexer.TextOf(token));
    if (word != "INCLUDE" && word != "INSERT") return false;
    token = lexer.NextToken(token.end);
    if (Capitals(m_codePage, lexer.TextOf(token)) == "FILE") {
        token = lexer.NextToken(token.end);
        if (lexer.TextOf(token) != "=") return false;
        token = lexer.NextToken(token.end);
    } else if (word == "INSERT") {
        return false;
    }
    if (token.kind != TokenKind::kLiteral) return false;
    Include include;
    include.path = LiteralContents(lexer.TextOf(token));
    include.line = place.LineAt(command.begin);
    include.begin = place.offset + command.begin;
    include.end = place.offset + command.end;
    FollowInclude(place, include);
    if (!place.file.isIncluded) m_result.includes.push_back(std::move(include));
    return true;
}

void FileReader::FollowInclude(const Place& place, Include& include) {
    const auto fail = [&](FaultKind kind) {
        Fault fault;
        fault.kind = kind;
        fault.name = include.path;
        AddFault(place, std::move(fault), include.begin - place.offset);
    };
    if (m_openFiles.size() > static_cast<std::size_t>(m_options.limits.includeDepth)) {
        return fail(FaultKind::kIncludesTooDeep);
    }
    IncludedFile included;
    if (m_pResolver == nullptr || !m_pResolver->Find(include.path, place.file.name, included)) {
        return fail(FaultKind::kIncludeNotFound);
    }
    include.file = included.name;
    if (std::find(m_openFiles.begin(), m_openFiles.end(), included.name) != m_openFiles.end()) {
        return fail(FaultKind::kIncludedWithinItself);
    }
    m_includedSize += included.text.size();
    if (m_includedSize > m_options.limits.includedSize) {
        return fail(FaultKind::kIncludesTooLarge);
    }
    Read({included.name, included.text, included.layout, /*isIncluded=*/true});
}

void FileReader::ReadCalls(const Place& place, const Command& command) {
    const MarkedView text{place.lexer.Text().substr(0, command.end), {}};
    const Lexer lexer(m_codePage, text.text);
    Token token = lexer.NextToken(command.begin);
    while (token.kind != TokenKind::kEnd) {
        std::size_t position = token.end;
        const Macro* pMacro = FindCalled(m_macros, text, token);
        if (pMacro != nullptr) {
            Call call;
            call.macro = pMacro->shared_from_this();
            call.name = pMacro->name;
            call.line = place.LineAt(token.begin);
            Fault fault;
            const bool isRead =
                ReadArguments(m_codePage, pMacro->list, text, position, call.arguments, fault);
            call.begin = place.offset + token.begin;
            call.end = place.offset + position;
            call.commandBegin = place.offset + command.begin;
            call.commandEnd = place.offset + command.end + (command.isEnded ? 1 : 0);
            if (isRead) {
                ExpandCall(call, token.begin == command.begin);
                const DroppedPeriod dropped =
                    FindDroppedPeriod(lexer, command.isEnded, position, call.text);
                if (dropped.end > 0) {
                    call.droppedBegin = place.offset + dropped.begin;
                    call.droppedEnd = place.offset + dropped.end;
                }
            } else {
                fault.line = call.line;
                call.fault = std::move(fault);
            }
            m_result.calls.push_back(std::move(call));
            // Nobody knows which words of the rest belong to the call.
            if (!isRead) return;
        }
        token = lexer.NextToken(position);
    }
}

void FileReader::ExpandCall(Call& call, bool beginsCommand) {
    Fault fault;
    std::string text;
    const bool isExpanded =
        m_expander.ExpandCall(*call.macro, call.arguments, beginsCommand, text, fault);
    for (const Macro* pMacro : m_expander.ExpandedMacros()) {
        call.expanded.push_back(pMacro->shared_from_this());
    }
    if (isExpanded) {
        text = WithLineBreaks(std::move(text), m_lineBreak);
        m_textSize += text.size();
        if (m_textSize <= m_options.limits.fileTextSize) {
            call.text = std::move(text);
            return;
        }
        m_textSize -= text.size();
        fault.kind = FaultKind::kFileTooLarge;
    }
    if (fault.line == 0) fault.line = call.line;
    call.fault = std::move(fault);
}

void FileReader::AddFault(const Place& place, Fault fault, std::size_t position) {
    fault.line = place.LineAt(position);
    if (place.file.isIncluded) fault.file = place.file.name;
    m_result.faults.push_back(std::move(fault));
}

}  // namespace

FileExpansion ExpandFile(std::string_view source, const ExpansionOptions& options,
                         IncludeResolver* pResolver) {
    FileReader reader(source, options, pResolver);
    reader.Read({options.fileName, source, options.layout});
    return reader.Take();
}

std::string ExpandedText(std::string_view source, const FileExpansion& expansion) {
    std::string text;
    std::size_t written = 0;
    for (const Call& call : expansion.calls) {
        if (call.fault) continue;
        text += source.substr(written, call.begin - written);
        text += call.text;
        written = call.end;
        if (call.droppedEnd > 0) {
            text += source.substr(written, call.droppedBegin - written);
            written = call.droppedEnd;
        }
    }
    text += source.substr(written);
    return text;
}

}  // namespace quillet::macro
