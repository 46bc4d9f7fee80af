// Bytes in, macros defined and called, expansions out. The first byte chooses the layout and the
// code page, the rest is the syntax; a file that it includes is made of its second half.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "macro/expandfile.h"
#include "macro/fault.h"
#include "platform/assertion.h"

namespace {

using quillet::macro::Call;
using quillet::macro::Definition;
using quillet::macro::ExpandFile;
using quillet::macro::ExpansionOptions;
using quillet::macro::FileExpansion;

void Require(bool condition) {
    if (!condition) std::abort();
}

// Every path means the same file, but for the names of none.
class OneFileResolver final : public quillet::macro::IncludeResolver {
public:
    explicit OneFileResolver(std::string_view text) : m_text(text) {}

    bool Find(std::string_view path, const std::string& /*includingFile*/,
              quillet::macro::IncludedFile& file) override {
        if (path.empty() || path.front() == 'n') return false;
        file.name = path;
        file.text = m_text;
        return true;
    }

private:
    std::string_view m_text;
};

ExpansionOptions OptionsFor(std::uint8_t choice) {
    ExpansionOptions options;
    options.layout.batchMode = (choice & 1U) != 0;
    options.layout.endAtBlankLines = (choice & 2U) != 0;
    if ((choice & 4U) != 0) options.pCodePage = &quillet::CodePage::Windows1252();
    // So that a short text reaches them, and none takes long.
    options.limits.loopPasses = 20;
    options.limits.passes = 200;
    options.limits.expansions = 200;
    options.limits.macroDepth = 12;
    options.limits.nesting = 20;
    options.limits.textSize = 4096;
    options.limits.fileTextSize = std::size_t{64} * 1024;
    options.limits.work = std::uint64_t{1} << 18U;
    options.limits.workPerByte = 64;
    options.limits.includedSize = std::size_t{16} * 1024;
    options.fileName = "main";
    return options;
}

void CheckFault(const quillet::macro::Fault& fault) {
    Require(fault.line > 0);
    const std::string reason = ReasonText(fault);
    Require(reason.find("%s") == std::string::npos || fault.name.find("%s") != std::string::npos ||
            fault.file.find("%s") != std::string::npos);
}

void CheckDefinitions(std::string_view source, const FileExpansion& expansion) {
    std::size_t end = 0;
    long line = 1;
    for (const Definition& definition : expansion.definitions) {
        Require(end <= definition.begin && definition.begin < definition.bodyBegin);
        Require(definition.bodyBegin <= definition.bodyEnd && definition.bodyEnd < definition.end);
        Require(definition.end <= source.size() && !definition.name.empty());
        Require(line <= definition.firstLine && definition.firstLine <= definition.lastLine);
        end = definition.end;
        line = definition.lastLine;
    }
}

bool IsSpace(char byte) { return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r'; }

void CheckCalls(std::string_view source, const FileExpansion& expansion,
                const ExpansionOptions& options) {
    std::size_t end = 0;
    long line = 1;
    for (const Call& call : expansion.calls) {
        Require(end <= call.begin && call.begin < call.end && call.end <= source.size());
        Require(line <= call.line && call.macro != nullptr && !call.name.empty());
        end = call.end;
        line = call.line;
        if (call.fault) {
            CheckFault(*call.fault);
            Require(call.text.empty() && call.droppedEnd == 0);
            continue;
        }
        Require(call.text.size() <= 2 * options.limits.textSize);
        Require(call.text.empty() || (!IsSpace(call.text.front()) && !IsSpace(call.text.back())));
        if (call.droppedEnd > 0) {
            Require(call.end <= call.droppedBegin && call.droppedBegin < call.droppedEnd);
            Require(source[call.droppedEnd - 1] == '.' && call.text.ends_with('.'));
            end = call.droppedEnd;
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const quillet::ScopedAssertionHandler handler(
        [](const quillet::AssertionFailure& /*failure*/) { std::abort(); });
    const std::string_view source(reinterpret_cast<const char*>(data) + 1, size - 1);
    const ExpansionOptions options = OptionsFor(data[0]);
    OneFileResolver resolver(source.substr(source.size() / 2));
    const FileExpansion expansion = ExpandFile(source, options, &resolver);
    CheckDefinitions(source, expansion);
    CheckCalls(source, expansion, options);
    for (const quillet::macro::Fault& fault : expansion.faults) CheckFault(fault);
    const std::string text = ExpandedText(source, expansion);
    Require(ExpandedText(source, ExpandFile(source, options, &resolver)) == text);
    Require(!expansion.calls.empty() || text == source);
    return 0;
}
