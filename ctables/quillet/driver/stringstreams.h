// Input, output and listener of a conversion of strings.
#ifndef QUILLET_DRIVER_STRINGSTREAMS_H
#define QUILLET_DRIVER_STRINGSTREAMS_H

#include <cstddef>
#include <string>
#include <string_view>

#include "quillet.h"

namespace quillet {

/// Reads a text that outlives it.
class StringInput final : public TextInput {
public:
    explicit StringInput(std::string_view text) : m_text(text), m_rest(text) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = m_rest.copy(buffer, size);
        m_rest.remove_prefix(count);
        return count;
    }
    bool Rewind() override {
        m_rest = m_text;
        return true;
    }
    [[nodiscard]] bool Failed() const override { return false; }

private:
    std::string_view m_text;
    std::string_view m_rest;
};

/// Appends to a text, which is borrowed.
class StringOutput final : public TextOutput {
public:
    explicit StringOutput(std::string& text) : m_text(text) {}

    bool Write(std::string_view bytes) override {
        m_text.append(bytes);
        return true;
    }

private:
    std::string& m_text;
};

/// Appends the lines to those of a `Conversion`, which is borrowed.
class ConversionRecorder final : public ConversionListener {
public:
    explicit ConversionRecorder(Conversion& conversion) : m_conversion(conversion) {}

    void OnResultLine(std::string_view line) override { m_conversion.resultLines.append(line); }
    void OnDiagnostic(std::string_view line) override {
        m_conversion.diagnostics.append(line).append("\n");
    }

private:
    Conversion& m_conversion;
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_STRINGSTREAMS_H
