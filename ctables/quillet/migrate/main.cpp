// The command-line program that converts whole archives.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>

#include "migrate/exitstatus.h"
#include "migrate/mergereports.h"
#include "migrate/migration.h"
#include "migrate/options.h"
#include "platform/system.h"

namespace {

// What did not arrive must not look as if all went well.
int Show(std::string_view text) {
    const bool isWritten = quillet::WriteToStream(stdout, text);
    if (std::fclose(stdout) == 0 && isWritten) return quillet::migrate::kSuccessStatus;
    quillet::WriteToStream(stderr, "quillet-migrate: Standard output cannot be written\n");
    return quillet::migrate::kTroubleStatus;
}

// Such as "de_DE.UTF-8" or "C.utf8". With it, files that are not UTF-8 are Windows-1252 in any
// case.
bool IsUtf8Locale(std::string_view name) {
    name.remove_prefix(std::min(name.find('.'), name.size()));
    name = name.substr(0, name.find('@'));
    return name == ".UTF-8" || name == ".utf8" || name == ".UTF8" || name == ".utf-8";
}

int Run(int argc, char* argv[]) {
    using namespace quillet;  // NOLINT(google-build-using-namespace): one function long
    const bool hasLocale = EnableLocale();
    OpenClosedStandardStreams();
    IgnoreWriteSignals();
    const migrate::CommandLine commandLine =
        migrate::ParseCommandLine(ProgramArguments(argc, argv));
    if (!commandLine.settings) {
        if (!commandLine.isError) return Show(commandLine.text);
        WriteToStream(stderr,
                      "quillet-migrate: " + commandLine.text + "\nTry quillet-migrate --help\n");
        return migrate::kTroubleStatus;
    }
    const migrate::Settings& settings = *commandLine.settings;
    if (!hasLocale && settings.reports.empty() && settings.encoding.empty() &&
        !IsUtf8Locale(UserLocaleName())) {
        WriteToStream(stderr,
                      "quillet-migrate: The locale " + UserLocaleName() +
                          " is not installed, so that nobody can tell how files are to be "
                          "read that are not UTF-8: install it, or name their encoding with "
                          "--encoding\n");
        return migrate::kTroubleStatus;
    }
    return settings.reports.empty() ? migrate::RunMigration(settings)
                                    : migrate::MergeReports(settings);
}

void WriteOutOfMemory() {
    quillet::WriteToStream(stderr, "quillet-migrate: there is not enough memory\n");
}

// Memory may run out where nothing may throw, as in a destructor that needs some. What was migrated
// is noted in the journal, and the next run goes on from there.
[[noreturn]] void EndWithoutMemory() {
    try {
        if (std::current_exception()) std::rethrow_exception(std::current_exception());
    } catch (const std::bad_alloc&) {
        WriteOutOfMemory();
        std::_Exit(quillet::migrate::kTroubleStatus);
    } catch (...) {
        std::abort();
    }
    std::abort();
}

}  // namespace

int main(int argc, char* argv[]) {
    std::set_terminate(EndWithoutMemory);
    try {
        return Run(argc, argv);
    } catch (const std::bad_alloc&) {
        WriteOutOfMemory();
        return quillet::migrate::kTroubleStatus;
    }
}
