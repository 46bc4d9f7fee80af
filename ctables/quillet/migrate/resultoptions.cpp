#include "migrate/resultoptions.h"

#include <langinfo.h>

#include "platform/codepage.h"

namespace quillet::migrate {

std::string TextOf(const ResultOptions& options) {
    return std::string("layout=") + (options.batchMode ? "batch" : "interactive") +
           ";encoding=" + options.legacyEncoding;
}

std::string LegacyEncodingName() {
    return CodePage::System() != nullptr ? nl_langinfo(CODESET) : "windows-1252";
}

}  // namespace quillet::migrate
