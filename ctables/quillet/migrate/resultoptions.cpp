#include "migrate/resultoptions.h"

#include "platform/codepage.h"
#include "platform/process.h"

namespace quillet::migrate {

std::string TextOf(const ResultOptions& options) {
    return std::string("layout=").append(NameOf(options.layout)) +
           ";encoding=" + options.legacyEncoding + (options.isUtf8 ? ";result=utf-8" : "") +
           (options.endsAtBlankLines ? ";blank-lines=end" : "") +
           (options.macros == MacroMode::kReport
                ? ""
                : std::string(";macros=").append(NameOf(options.macros)));
}

std::string LegacyEncodingName() {
    return CodePage::System() != nullptr ? LocaleEncodingName() : "windows-1252";
}

}  // namespace quillet::migrate
