#include "migrate/resultoptions.h"

#include "platform/codepage.h"
#include "platform/process.h"

namespace quillet::migrate {

std::string TextOf(const ResultOptions& options) {
    return std::string("layout=") + (options.batchMode ? "batch" : "interactive") +
           ";encoding=" + options.legacyEncoding + (options.isUtf8 ? ";result=utf-8" : "");
}

std::string LegacyEncodingName() {
    return CodePage::System() != nullptr ? LocaleEncodingName() : "windows-1252";
}

}  // namespace quillet::migrate
