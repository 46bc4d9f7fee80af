#include "migrate/recodedtext.h"

#include <algorithm>
#include <utility>

#include "migrate/encodings.h"
#include "platform/byteblock.h"

namespace quillet::migrate {

std::size_t Utf16Input::Read(char* buffer, std::size_t size) {
    if (m_position == m_decoded.size()) Fill();
    if (Failed()) return 0;
    const std::size_t count = m_decoded.copy(buffer, size, m_position);
    m_position += count;
    return count;
}

bool Utf16Input::Rewind() {
    m_decoder = Utf16Decoder(m_order);
    m_decoded.clear();
    m_position = 0;
    m_isInvalid = false;
    return m_input.Rewind();
}

// A block may be half a character, which gives no text yet.
void Utf16Input::Fill() {
    ByteBlock block;
    m_decoded.clear();
    m_position = 0;
    while (m_decoded.empty()) {
        const std::size_t count = m_input.Read(block.data(), block.size());
        m_isInvalid =
            count == 0 ? !m_decoder.IsWhole() : !m_decoder.Add({block.data(), count}, m_decoded);
        if (count == 0 || m_isInvalid) return;
    }
}

std::size_t LineEndInput::Read(char* buffer, std::size_t size) {
    const std::size_t count = m_input.Read(buffer, size);
    if (m_endsLinesInCr) {
        std::replace(buffer, buffer + count, '\r', '\n');
    } else {
        Look({buffer, count});
    }
    return count;
}

// The first reading may have stopped before it met a line end.
bool LineEndInput::Rewind() {
    ByteBlock block;
    while (!m_hasLf) {
        const std::size_t count = m_input.Read(block.data(), block.size());
        if (count == 0) break;
        Look({block.data(), count});
    }
    m_endsLinesInCr = m_hasCr && !m_hasLf;
    return m_input.Rewind();
}

void LineEndInput::Look(std::string_view block) {
    if (m_hasLf) return;
    m_hasLf = block.find('\n') != std::string_view::npos;
    m_hasCr = m_hasCr || block.find('\r') != std::string_view::npos;
}

bool LineEndOutput::Write(std::string_view bytes) {
    if (!m_input.EndsLinesInCr()) return m_output.Write(bytes);
    m_text = bytes;
    std::replace(m_text.begin(), m_text.end(), '\n', '\r');
    return m_output.Write(m_text);
}

bool Utf16Output::Write(std::string_view bytes) {
    m_bytes.clear();
    m_encoder.Add(bytes, m_bytes);
    return m_output.Write(m_bytes);
}

namespace {

// Of a text that was UTF-8, or UTF-16, its first line may still say something else.
void NameUtf8In(std::string& text) {
    const std::string_view named = EncodingNamedIn(text);
    const std::string key = EncodingKeyOf(named);
    if (named.empty() || key == "utf-8" || key == "utf8") return;
    text.replace(static_cast<std::size_t>(named.data() - text.data()), named.size(), "UTF-8");
}

}  // namespace

bool Utf8Output::Write(std::string_view bytes) {
    const bool isUtf8 = m_encoding == TextEncoding::kUtf8;
    if (isUtf8 && m_isAfterFirstLine) return m_output.Write(bytes);
    const std::size_t end = bytes.rfind('\n');
    if (end == std::string_view::npos) {
        m_pending.append(bytes);
        return true;
    }
    // A character of another encoding may be cut in two, but never by a line end.
    const std::size_t size = isUtf8 ? bytes.size() : end + 1;
    m_pending.append(bytes.substr(0, size));
    const bool isWritten = Finish();
    m_pending = bytes.substr(size);
    return isWritten;
}

bool Utf8Output::Finish() {
    std::string text = std::move(m_pending);
    m_pending.clear();
    if (m_encoding != TextEncoding::kUtf8) text = ToUtf8(text, m_encoding, m_pNamed);
    if (!m_isAfterFirstLine) {
        NameUtf8In(text);
        m_isAfterFirstLine = !text.empty();
    }
    return text.empty() || m_output.Write(text);
}

}  // namespace quillet::migrate
