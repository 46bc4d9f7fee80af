// The report as a page for people: the data goes into a page that is already written.
#ifndef QUILLET_MIGRATE_HTMLREPORT_H
#define QUILLET_MIGRATE_HTMLREPORT_H

#include <string>
#include <string_view>

#include "migrate/reportdata.h"
#include "migrate/reportdigest.h"
#include "quillet.h"

namespace quillet::migrate {

/// Where in the page the data belongs.
inline constexpr std::string_view kDataMark = "<!-- data -->";

/// The page that the program brings along.
[[nodiscard]] std::string_view ReportPage();

/// Passes JSON text on with every character escaped that could end a script element or that
/// scripts take for a line end. All of these stand in strings alone, where JSON allows for it.
class ScriptEscaper final : public TextOutput {
public:
    /// Borrowed.
    explicit ScriptEscaper(TextOutput& output) : m_output(output) {}

    bool Write(std::string_view bytes) override;
    /// After the last piece: passes on what may have been the beginning of such a character.
    [[nodiscard]] bool Finish();

private:
    void TakeSpecial(char byte, std::string& escaped);

    TextOutput& m_output;
    std::string m_pending;  // the first bytes of a three-byte character
};

/// Writes `page` with the report in place of its mark. The commands and findings of each file
/// become an element of their own, so that the page need not look at them before they are asked
/// for; what they come to in all stands in `digest`, which has to be that of `report`. False when
/// `output` fails, commands cannot be read or the page has no mark.
[[nodiscard]] bool WriteHtmlReport(const Report& report, const ReportDigest& digest,
                                   std::string_view page, TextOutput& output);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_HTMLREPORT_H
