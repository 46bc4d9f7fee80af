#include "driver/outputfile.h"

#include <algorithm>

namespace quillet {

namespace {

// Lines of this many bytes are worth a call of their own; fewer are gathered first.
constexpr std::size_t kLargeRun = 16UL * 1024;

}  // namespace

bool IsBlankLine(std::string_view line) {
    return line.find_first_not_of(" \t\n\r") == std::string_view::npos;
}

// Most texts have none, and then nothing is moved.
void RemoveBlankLines(std::string& text) {
    const std::string_view whole = text;
    std::size_t kept = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        const std::string_view line = whole.substr(begin, end - begin);
        if (!IsBlankLine(line)) {
            if (kept < begin) std::copy(line.begin(), line.end(), text.data() + kept);
            kept += line.size();
        }
        begin = end;
    }
    text.resize(kept);
}

OutputFile::OutputFile(TextOutput& output, std::size_t size) : m_output(output) {
    // A large one has room for a block and for what comes when a block is full.
    m_buffer.reserve(size);
}

void OutputFile::Write(std::string_view text) {
    while (!text.empty() && !m_failed) {
        const std::size_t end = text.find('\n');
        const std::string_view part = text.substr(0, end);
        m_lineIsBlank = m_lineIsBlank && IsBlankLine(part);
        if (part.size() < kBlockSize || m_lineIsBlank) {
            m_buffer.append(part);
        } else {
            HandOn(m_buffer.size());
            if (!m_failed) m_failed = !m_output.Write(part);
        }
        if (end != std::string_view::npos) EndLine();
        if (m_buffer.size() >= kBlockSize) HandOn(m_lineIsBlank ? m_lineBegin : m_buffer.size());
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
    }
}

void OutputFile::WritePlainLines(const PlainLines& lines) {
    m_lineCount += lines.count;
    if (lines.text.size() < kLargeRun) {
        m_buffer.append(lines.text);
        m_lineBegin = m_buffer.size();
        if (m_buffer.size() >= kBlockSize) HandOn(m_buffer.size());
        return;
    }
    HandOn(m_buffer.size());
    if (!m_failed) m_failed = !m_output.Write(lines.text);
}

// Ends the line being written, or drops it when it is blank.
void OutputFile::EndLine() {
    if (m_lineIsBlank) {
        m_buffer.resize(m_lineBegin);
        return;
    }
    m_buffer.append(m_lineEnd);
    m_lineBegin = m_buffer.size();
    m_lineIsBlank = true;
    ++m_lineCount;
}

// Hands on the first `length` bytes of the buffer.
void OutputFile::HandOn(std::size_t length) {
    if (!m_failed && length > 0) m_failed = !m_output.Write({m_buffer.data(), length});
    m_buffer.erase(0, length);
    m_lineBegin -= std::min(m_lineBegin, length);
}

void OutputFile::BreakOff() {
    EndLine();
    HandOn(m_buffer.size());
}

bool OutputFile::Finish() {
    EndLine();
    if (m_lineCount == 0) m_buffer.append(m_lineEnd);
    if (!m_buffer.empty()) HandOn(m_buffer.size());
    return !m_failed;
}

}  // namespace quillet
