// The library's entry: what stands around the driver.
#include "quillet.h"

#include <new>
#include <optional>

#include "driver/driver.h"
#include "driver/outputfile.h"
#include "driver/rereadinput.h"
#include "driver/stringstreams.h"
#include "driver/textencoding.h"
#include "platform/assertion.h"

namespace quillet {

Outcome ConvertStream(TextInput& input, TextOutput& output, ConversionListener& listener,
                      const Options& options) {
    const ScopedAssertionHandler handler([&listener](const AssertionFailure& failure) {
        listener.OnDiagnostic(AssertionLine(failure));
    });
    RereadInput source(input);
    std::optional<OutputFile> out;
    std::optional<Driver> driver;
    try {
        const CodePage* pCodePage = ChooseCodePage(source, options);
        if (pCodePage == nullptr) return Outcome::kReadError;
        listener.OnEncoding(EncodingOf(*pCodePage, options));
        out.emplace(output);
        driver.emplace(source, *out, listener, *pCodePage, options.batchMode);
    } catch (const std::bad_alloc&) {
        return StopBeforeTheFirstCommand(output, listener);
    }
    const Outcome outcome = driver->Run();
    return outcome != Outcome::kWriteError && source.HasChanged() ? Outcome::kReadError : outcome;
}

Conversion ConvertText(std::string_view input, const Options& options) {
    Conversion conversion;
    StringInput source(input);
    StringOutput target(conversion.output);
    ConversionRecorder listener(conversion);
    conversion.outcome = ConvertStream(source, target, listener, options);
    return conversion;
}

}  // namespace quillet
