// Rewrites the legacy commands of a macro's body.
//
// How that is done is a matter of good guesses: nothing here is sound by itself. Whoever uses it
// proves each result for each call.
#ifndef QUILLET_DRIVER_BODYREWRITER_H
#define QUILLET_DRIVER_BODYREWRITER_H

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "driver/bodyregions.h"
#include "driver/bodytree.h"
#include "macro/macro.h"
#include "platform/codepage.h"

namespace quillet {

/// What one run of a legacy command has put in at its sites, by their places in the body. Of a site
/// in a loop the last value. The places where the first branches of conditions begin are there as
/// well, without a value, when the run came to them.
using SiteValues = std::map<std::size_t, std::string>;

/// How many different runs of a legacy command are kept.
inline constexpr std::size_t kMostInstances = 64;

/// The runs of one legacy command of a body in all calls.
struct RegionTrace {
    long runs = 0;
    std::set<SiteValues> instances;                           ///< Different ones, some of them.
    std::map<std::size_t, std::set<std::string>> siteValues;  ///< The same for each site.
};

/// Whether a word calls a macro, and whether that takes arguments.
enum class MacroNameUse { kNone, kPlain, kWithArguments };
using FindMacroNameUse = std::function<MacroNameUse(std::string_view word)>;

/// One body and its legacy commands.
class BodyRewriter {
public:
    /// Borrows the macro, the code page and `findUse`.
    BodyRewriter(const macro::Macro& macro, const CodePage& codePage, bool batchMode,
                 const FindMacroNameUse& findUse);

    BodyRewriter(const BodyRewriter&) = delete;
    BodyRewriter& operator=(const BodyRewriter&) = delete;
    BodyRewriter(BodyRewriter&&) = delete;
    BodyRewriter& operator=(BodyRewriter&&) = delete;
    ~BodyRewriter() = default;

    [[nodiscard]] std::size_t RegionCount() const { return m_regions.size(); }

    /// The body with marks at its beginning, at each legacy command and around each site in one, so
    /// that an expansion tells what was put in where. `mark` tells this body from others.
    [[nodiscard]] std::string MarkedBody(std::size_t mark) const;

    /// What `MarkedBody` has told.
    [[nodiscard]] RegionTrace& TraceOf(std::size_t region) { return m_traces[region]; }

    /// The body with all its legacy commands that a call runs rewritten, in the `attempt`-th way
    /// from 0. None when there is no such way; `reason` then tells the first command for which
    /// there is none, unless it is for all the attempts before.
    [[nodiscard]] std::optional<std::string> Rewrite(int attempt, std::string& reason);

    /// How many legacy commands no call runs; these are not rewritten.
    [[nodiscard]] long CountUnused() const;

private:
    enum class ValueKind : int;
    struct Site;
    struct Branch;
    struct Piece;
    class RegionWriter;
    using Marks = std::multimap<std::size_t, std::string>;  // where they go

    void AddSiteMarks(const BodyNode& node, Marks& marks) const;

    const macro::Macro& m_macro;
    const CodePage& m_codePage;
    bool m_batchMode;
    std::size_t m_work = 0;  // bytes that were converted
    const FindMacroNameUse& m_findUse;
    std::vector<BodyNode> m_nodes;
    BodyCutter m_cutter;
    std::vector<BodyRegion> m_regions;
    std::vector<RegionTrace> m_traces;
};

/// The bytes that `MarkedBody` marks with. A text that holds one of them cannot be traced.
inline constexpr std::string_view kTraceBytes = "\x01\x02\x03";

}  // namespace quillet

#endif  // QUILLET_DRIVER_BODYREWRITER_H
