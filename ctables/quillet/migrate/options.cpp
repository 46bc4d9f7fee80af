#include "migrate/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

namespace quillet::migrate {

namespace {

constexpr unsigned kMostJobs = 1024;

constexpr const char* kDescription =
    "Converts a file or a folder with everything below it, and writes a report about it.";

constexpr const char* kUsage =
    "Usage: quillet-migrate [OPTIONS] SOURCE TARGET\n"
    "       quillet-migrate [OPTIONS] --merge-reports FILE... TARGET\n";

constexpr const char* kFooter =
    "TARGET is a folder, made when it is missing; it gets the results, the report,\n"
    "quillet-report.html, .json and .csv, and a journal. With --shard, -I-of-N is added to\n"
    "these names. A result that stands is left alone when the journal says that it was made of "
    "the\n"
    "same source, by the same options and version; so a run that was ended goes on where it\n"
    "stopped. A result that was edited is left alone in any case. SOURCE is never written to.\n"
    "\n"
    "A PATTERN is matched against the file's name or, when it has a \"/\", against its path below\n"
    "SOURCE: * stands for any characters, ? for one, [a-z] for one of a set. Letter case does not\n"
    "count.\n"
    "\n"
    "A file without a legacy command is not converted; with --include or --copy-others it is\n"
    "copied. In the layout \"auto\", a file is read in batch layout when it reads well there.\n"
    "\n"
    "Exit status: 0 when all went well; 1 when something of the source needs a person: a command\n"
    "could not be converted or read, or was overlooked, an edited result has a source that has "
    "changed since, or a\n"
    "link was not followed; 2 when something could not be read or written, and for wrong usage;\n"
    "130 when stopped.";

/// What the parser finds and what has to be looked at before it can be used.
struct Parsed {
    Settings settings;
    std::vector<std::string> paths;
    std::string jobs;
    std::string layout;
    std::string macros;
    bool isBatch = false;
    std::string shard;
    bool mergesReports = false;
};

// The library would show what we call the two positional arguments only under one name.
class HelpFormatter final : public CLI::Formatter {
public:
    std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override {
        return kUsage;
    }
};

class Parser {
public:
    Parser() {
        m_app.name("quillet-migrate");
        m_app.footer(kFooter);
        m_app.formatter(std::make_shared<HelpFormatter>());
        m_app.set_version_flag("--version", "quillet-migrate " QUILLET_VERSION,
                               "Show the version and exit");
        m_app.set_help_flag("-h,--help", "Show this help and exit");
        AddPatterns();
        AddFlags();
        AddTexts();
        // Declared as arguments, names in brackets would be taken apart.
        m_app.allow_extras();
    }

    CommandLine Run(std::vector<std::string> arguments) {
        std::reverse(arguments.begin(), arguments.end());  // as the library wants them
        try {
            m_app.parse(std::move(arguments));
        } catch (const CLI::CallForHelp&) {
            return {std::nullopt, m_app.help(), false};
        } catch (const CLI::CallForVersion& version) {
            return {std::nullopt, std::string(version.what()) + "\n", false};
        } catch (const CLI::ParseError& error) {
            return Refuse(error.what());
        }
        std::string problem = TakePaths(m_app.remaining());
        if (!problem.empty()) return Refuse(std::move(problem));
        m_parsed.settings.include = m_pInclude->results();
        m_parsed.settings.exclude = m_pExclude->results();
        m_parsed.settings.batchInclude = m_pBatchInclude->results();
        return Check();
    }

private:
    void AddPatterns() {
        const auto add = [this](const char* name, const std::string& text) {
            return m_app.add_option(name, text)
                ->type_name("PATTERN")
                ->expected(1)
                ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
                ->allow_extra_args(false);
        };
        m_pInclude = add("--include", "Convert files of such names only (repeatable)");
        m_pExclude = add("--exclude", "Convert no files of such names (repeatable)");
        m_pEncodings =
            add("--encoding-include", "Read files of such names in that encoding (repeatable)")
                ->type_name("PATTERN=NAME");
        m_pBatchInclude =
            add("--batch-include", "Read files of such names in batch layout (repeatable)");
    }

    void AddFlags() {
        Settings& settings = m_parsed.settings;
        m_app.add_flag("--copy-others", settings.copyOthers,
                       "Copy the files that are not converted");
        m_app.add_flag("--batch", m_parsed.isBatch, "The old name of --layout=batch");
        m_app.add_flag("--end-at-blank-lines", settings.endAtBlankLines,
                       "End commands and comments without a period at blank lines");
        m_app.add_flag("--to-utf8", settings.toUtf8, "Write all results in UTF-8");
        m_app.add_flag("--dry-run", settings.dryRun, "Write the report alone");
        m_app.add_flag("--force", settings.force, "Replace all results, edited ones too");
        m_app.add_flag("--accept-edited", settings.acceptEdited,
                       "Take edited results as they are from now on");
        m_app.add_flag("--quiet", settings.isQuiet, "Show nothing but errors");
        m_app.add_flag("--merge-reports", m_parsed.mergesReports,
                       "Join JSON reports, those of slices for example, into one in TARGET");
    }

    void AddTexts() {
        const auto add = [this](const char* name, std::string& value, const char* type,
                                const char* text) {
            return m_app.add_option(name, value, text)->type_name(type);
        };
        m_pLayout = add("--layout", m_parsed.layout, "NAME",
                        "auto, interactive or batch: how the files are laid out (default: auto)");
        m_pMacros = add("--macros", m_parsed.macros, "MODE",
                        "report or expand: what is done about macros (default: report)");
        m_pJobs = add("--jobs", m_parsed.jobs, "N", "Files to convert at a time (default: cores)");
        m_pEncoding = add("--encoding", m_parsed.settings.encoding, "NAME",
                          "Encoding of the files that are not UTF-8 (default: the locale's)");
        m_pShard = add("--shard", m_parsed.shard, "I/N", "Take the I-th of N slices");
        m_pJunit = add("--junit", m_parsed.settings.junitPath, "FILE",
                       "Write a JUnit report for build servers, too");
    }

    // What no option took: the paths, and what looks like an option unless it follows "--".
    std::string TakePaths(const std::vector<std::string>& rest) {
        bool areAllPaths = false;
        for (const std::string& argument : rest) {
            if (!areAllPaths && argument == "--") {
                areAllPaths = true;
            } else if (!areAllPaths && argument.size() > 1 && argument.starts_with('-')) {
                return argument + " is not an option";
            } else {
                m_parsed.paths.push_back(argument);
            }
        }
        return {};
    }

    static CommandLine Refuse(std::string text) { return {std::nullopt, std::move(text), true}; }

    CommandLine Check() {
        for (const std::string& path : m_parsed.paths) {
            if (path.empty()) return Refuse("A file or folder without a name was given");
        }
        if (m_pJunit->count() > 0 && m_parsed.settings.junitPath.empty()) {
            return Refuse("--junit: the name is empty");
        }
        if (m_pEncoding->count() > 0 && m_parsed.settings.encoding.empty()) {
            return Refuse("--encoding: the name is empty");
        }
        for (const std::string& rule : m_pEncodings->results()) {
            const std::size_t sign = rule.rfind('=');
            if (sign == std::string::npos || sign == 0 || sign + 1 == rule.size()) {
                return Refuse("--encoding-include: PATTERN=NAME is expected instead of \"" + rule +
                              "\"");
            }
            m_parsed.settings.encodings.emplace_back(rule.substr(0, sign), rule.substr(sign + 1));
        }
        for (const CLI::Option* pPatterns : {m_pInclude, m_pExclude, m_pBatchInclude}) {
            for (const std::string& pattern : pPatterns->results()) {
                if (pattern.empty())
                    return Refuse(pPatterns->get_name() + ": the pattern is empty");
            }
        }
        return m_parsed.mergesReports ? CheckMerging() : CheckMigration();
    }

    CommandLine CheckMerging() {
        if (m_parsed.paths.size() < 2) return Refuse("--merge-reports needs FILE... and TARGET");
        for (const char* pName :
             {"--include", "--exclude", "--copy-others", "--batch", "--layout", "--batch-include",
              "--macros", "--end-at-blank-lines", "--jobs", "--dry-run", "--force",
              "--accept-edited", "--shard", "--encoding", "--encoding-include", "--to-utf8"}) {
            if (m_app.count(pName) > 0) {
                return Refuse(std::string(pName) + " does not go with --merge-reports");
            }
        }
        m_parsed.settings.target = std::move(m_parsed.paths.back());
        m_parsed.paths.pop_back();
        m_parsed.settings.reports = std::move(m_parsed.paths);
        return {std::move(m_parsed.settings), {}, false};
    }

    CommandLine CheckMigration() {
        if (m_parsed.paths.empty()) return Refuse("SOURCE and TARGET are missing");
        if (m_parsed.paths.size() == 1) return Refuse("TARGET is missing");
        if (m_parsed.paths.size() > 2) {
            return Refuse("One SOURCE and one TARGET are expected; \"" + m_parsed.paths[2] +
                          "\" is too much");
        }
        if (m_parsed.settings.force && m_parsed.settings.acceptEdited) {
            return Refuse("--accept-edited does not go with --force");
        }
        m_parsed.settings.source = std::move(m_parsed.paths[0]);
        m_parsed.settings.target = std::move(m_parsed.paths[1]);
        if (!TakeLayout()) {
            return Refuse("--layout: auto, interactive or batch is expected instead of \"" +
                          m_parsed.layout + "\"");
        }
        if (m_parsed.isBatch && m_pLayout->count() > 0 &&
            m_parsed.settings.layout != Layout::kBatch) {
            return Refuse("--batch does not go with --layout=" + m_parsed.layout);
        }
        if (m_parsed.isBatch) m_parsed.settings.layout = Layout::kBatch;
        if (!TakeMacros()) {
            return Refuse("--macros: report or expand is expected instead of \"" + m_parsed.macros +
                          "\"");
        }
        if (!TakeJobs()) {
            return Refuse("--jobs: a number from 1 to " + std::to_string(kMostJobs) +
                          " is expected instead of \"" + m_parsed.jobs + "\"");
        }
        if (m_pShard->count() > 0) {
            m_parsed.settings.shard = ParseShard(m_parsed.shard);
            if (!m_parsed.settings.shard) {
                return Refuse("--shard: I/N with I from 1 to N is expected instead of \"" +
                              m_parsed.shard + "\"");
            }
        }
        return {std::move(m_parsed.settings), {}, false};
    }

    bool TakeLayout() {
        if (m_pLayout->count() == 0) return true;
        const std::optional<Layout> layout = LayoutOf(m_parsed.layout);
        m_parsed.settings.layout = layout.value_or(Layout::kAuto);
        return layout.has_value();
    }

    bool TakeMacros() {
        if (m_pMacros->count() == 0) return true;
        const std::optional<MacroMode> mode = MacroModeOf(m_parsed.macros);
        m_parsed.settings.macros = mode.value_or(MacroMode::kReport);
        return mode.has_value();
    }

    bool TakeJobs() {
        unsigned& jobs = m_parsed.settings.jobs;
        if (m_pJobs->count() == 0) {
            jobs = std::max(std::thread::hardware_concurrency(), 1U);
            return true;
        }
        const std::string& text = m_parsed.jobs;
        const char* pEnd = text.data() + text.size();
        const auto [pStop, error] = std::from_chars(text.data(), pEnd, jobs);
        return error == std::errc() && pStop == pEnd && jobs >= 1 && jobs <= kMostJobs;
    }

    CLI::App m_app{kDescription};
    Parsed m_parsed;
    CLI::Option* m_pInclude = nullptr;
    CLI::Option* m_pExclude = nullptr;
    CLI::Option* m_pBatchInclude = nullptr;
    CLI::Option* m_pLayout = nullptr;
    CLI::Option* m_pMacros = nullptr;
    CLI::Option* m_pJobs = nullptr;
    CLI::Option* m_pShard = nullptr;
    CLI::Option* m_pEncoding = nullptr;
    CLI::Option* m_pEncodings = nullptr;
    CLI::Option* m_pJunit = nullptr;
};

}  // namespace

CommandLine ParseCommandLine(std::vector<std::string> arguments) {
    return Parser().Run(std::move(arguments));
}

}  // namespace quillet::migrate
