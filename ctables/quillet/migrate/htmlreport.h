// The report as a page for people: the data goes into a page that is already written.
#ifndef QUILLET_MIGRATE_HTMLREPORT_H
#define QUILLET_MIGRATE_HTMLREPORT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/pageparts.h"
#include "migrate/reportdata.h"
#include "migrate/reportdigest.h"
#include "quillet.h"

namespace quillet::migrate {

/// Where in the page the data belongs.
inline constexpr std::string_view kDataMark = "<!-- data -->";

/// The page that the program brings along.
[[nodiscard]] std::string_view ReportPage();

/// Stands in the first bytes of every page, so that it can be told from those of others.
inline constexpr std::string_view kPageMark =
    R"(<meta name="generator" content="quillet-migrate">)";
inline constexpr std::size_t kMostBytesBeforeMark = 1024;

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

/// Fills `bytes` with how many each file of the report takes on a page that shows its commands, at
/// the most and within a few. False when commands cannot be read. Cost: that of writing the page.
[[nodiscard]] bool MeasureFiles(const Report& report, const ReportDigest& digest,
                                std::vector<std::uint64_t>& bytes);

/// The pages of a report that is too large for one: an index of all files without the texts of
/// their commands and findings, and the parts, which are pages such as `WriteHtmlReport` makes, of
/// some of the files each.
class SplitReport {
public:
    /// All are borrowed; `pageName` is the name of the index, and `parts` have to be those of
    /// `report`. Their names are that without ".html" and `PartNameOf`.
    SplitReport(const Report& report, const ReportDigest& digest, const PageParts& parts,
                const std::string& pageName);

    [[nodiscard]] std::string NameOfPart(std::size_t part) const;

    /// False when `output` fails or the page has no mark.
    [[nodiscard]] bool WriteIndex(std::string_view page, TextOutput& output) const;
    /// False, too, when commands cannot be read.
    [[nodiscard]] bool WritePart(std::size_t part, std::string_view page, TextOutput& output) const;

private:
    const Report& m_report;
    const ReportDigest& m_digest;
    const PageParts& m_parts;
    const std::string& m_pageName;
    std::vector<std::vector<FailureGroup>> m_groups;  // of each part, as far as they lie in it
    std::string m_signOffs;                           // all of them as a JSON array
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_HTMLREPORT_H
