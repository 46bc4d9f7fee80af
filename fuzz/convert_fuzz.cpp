// Bytes in, conversion out, in every mode, as a whole and in pieces. The first byte chooses the
// mode and the size of the pieces, the rest is the syntax.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quillet.h"

namespace {

// What holds for every output, whatever the input.
void CheckOutput(std::string_view output) {
    if (!output.ends_with('\n')) std::abort();
    const bool isOnlyLineEnd = output == "\n" || output == "\r\n";
    while (!isOnlyLineEnd && !output.empty()) {
        const std::size_t end = output.find('\n');
        if (output.substr(0, end).find_first_not_of(" \t\r") == std::string_view::npos) {
            std::abort();
        }
        output.remove_prefix(end + 1);
    }
}

// Nothing else is refused.
bool BeginsAsUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

// Delivers a text in pieces of a few bytes.
class PiecewiseInput final : public quillet::TextInput {
public:
    PiecewiseInput(std::string_view text, std::size_t pieceSize)
        : m_text(text), m_rest(text), m_pieceSize(pieceSize) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = m_rest.copy(buffer, std::min(size, m_pieceSize));
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
    std::size_t m_pieceSize;
};

class StringOutput final : public quillet::TextOutput {
public:
    bool Write(std::string_view bytes) override {
        text.append(bytes);
        return true;
    }

    std::string text;
};

// Holds the reports of commands against one another.
class ReportChecker final : public quillet::ConversionListener {
public:
    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view /*line*/) override {}
    void OnCommand(const quillet::CommandReport& report) override {
        using quillet::CommandOutcome;
        Expect(report.firstLine > m_lastLine && report.lastLine >= report.firstLine);
        m_lastLine = report.lastLine;
        const bool isCopied = report.outcome == CommandOutcome::kCopied;
        const bool isConverted = report.outcome == CommandOutcome::kConverted;
        Expect(report.source.empty() == isCopied);
        Expect((report.errorKind == quillet::ErrorKind::kNone) == (isCopied || isConverted));
        Expect(report.generated.empty() != isConverted);
        Expect((report.generatedLine > 0) == isConverted);
        Expect(!isConverted || report.generated.ends_with('.'));
    }

private:
    static void Expect(bool condition) {
        if (!condition) std::abort();
    }

    long m_lastLine = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    quillet::Options options;
    options.batchMode = (data[0] & 1U) != 0;
    if ((data[0] & 2U) != 0) options.legacyCodePage = quillet::LegacyCodePage::kSystem;
    const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
    const quillet::Conversion conversion = quillet::ConvertText(input, options);
    if (conversion.outcome != quillet::Outcome::kReadError) {
        CheckOutput(conversion.output);
    } else if (!BeginsAsUtf16(input) || !conversion.output.empty()) {
        std::abort();
    }

    PiecewiseInput pieces(input, (data[0] >> 2U) + std::size_t{1});
    StringOutput output;
    ReportChecker checker;
    const quillet::Outcome outcome = quillet::ConvertStream(pieces, output, checker, options);
    if (outcome != conversion.outcome || output.text != conversion.output) std::abort();
    return 0;
}
