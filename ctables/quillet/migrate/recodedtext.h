// Texts that are converted in another encoding than the one they are kept in.
#ifndef QUILLET_MIGRATE_RECODEDTEXT_H
#define QUILLET_MIGRATE_RECODEDTEXT_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/utf16.h"
#include "quillet.h"

namespace quillet::migrate {

/// A text of UTF-16 as one of UTF-8, byte-order mark and all.
class Utf16Input final : public TextInput {
public:
    /// `input` is borrowed.
    Utf16Input(TextInput& input, ByteOrder order)
        : m_input(input), m_order(order), m_decoder(order) {}

    std::size_t Read(char* buffer, std::size_t size) override;
    bool Rewind() override;
    [[nodiscard]] bool Failed() const override { return m_isInvalid || m_input.Failed(); }
    [[nodiscard]] bool HasChanged() const override { return m_input.HasChanged(); }

    /// The text is no UTF-16; it has failed for that reason.
    [[nodiscard]] bool IsInvalid() const { return m_isInvalid; }

private:
    void Fill();

    TextInput& m_input;
    ByteOrder m_order;
    Utf16Decoder m_decoder;
    std::string m_decoded;
    std::size_t m_position = 0;  // in it
    bool m_isInvalid = false;
};

/// A text whose lines all end in CR, as those of one that end in LF; any other as it is. What ends
/// its lines is known, and heeded, from the second reading on.
class LineEndInput final : public TextInput {
public:
    /// `input` is borrowed.
    explicit LineEndInput(TextInput& input) : m_input(input) {}

    std::size_t Read(char* buffer, std::size_t size) override;
    bool Rewind() override;
    [[nodiscard]] bool Failed() const override { return m_input.Failed(); }
    [[nodiscard]] bool HasChanged() const override { return m_input.HasChanged(); }

    /// There is a CR in it, and no LF.
    [[nodiscard]] bool EndsLinesInCr() const { return m_endsLinesInCr; }

private:
    void Look(std::string_view block);

    TextInput& m_input;
    bool m_hasCr = false;
    bool m_hasLf = false;
    bool m_endsLinesInCr = false;
};

/// Writes a text with CR in place of LF if that is how the lines of a `LineEndInput` ended.
class LineEndOutput final : public TextOutput {
public:
    /// Both are borrowed.
    LineEndOutput(TextOutput& output, const LineEndInput& input)
        : m_output(output), m_input(input) {}

    bool Write(std::string_view bytes) override;

private:
    TextOutput& m_output;
    const LineEndInput& m_input;
    std::string m_text;
};

/// Writes a text of UTF-8 in UTF-16.
class Utf16Output final : public TextOutput {
public:
    /// `output` is borrowed.
    Utf16Output(TextOutput& output, ByteOrder order) : m_output(output), m_encoder(order) {}

    bool Write(std::string_view bytes) override;

private:
    TextOutput& m_output;
    Utf16Encoder m_encoder;
    std::string m_bytes;
};

/// Writes a text in UTF-8 that comes in another encoding, or in UTF-8 from a file in another one.
/// A first line that names another encoding than UTF-8 names UTF-8 then.
class Utf8Output final : public TextOutput {
public:
    /// `output` and `pNamed`, which is what `TextEncoding::kNamed` means, are borrowed.
    Utf8Output(TextOutput& output, const CodePage* pNamed) : m_output(output), m_pNamed(pNamed) {}

    /// Says what the text comes in; before the first write. Without that it is UTF-8, of which all
    /// but the first line is left as it is.
    void ReadAs(TextEncoding encoding) { m_encoding = encoding; }

    /// Takes pieces of any size, and keeps what no line end follows yet: of UTF-8 only as long as
    /// the first line is not whole.
    bool Write(std::string_view bytes) override;
    /// Writes what is left. To be called at the end, unless a write has failed.
    [[nodiscard]] bool Finish();

private:
    TextOutput& m_output;
    const CodePage* m_pNamed;
    TextEncoding m_encoding = TextEncoding::kUtf8;
    std::string m_pending;
    bool m_isAfterFirstLine = false;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_RECODEDTEXT_H
