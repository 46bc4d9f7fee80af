#include "platform/system.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace quillet {
namespace {

TEST(SystemTest, TheProgramHasOneModuleHandle) {
    const ModuleHandle handle = GetModuleHandleA(nullptr);
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(GetModuleHandleA(nullptr), handle);
}

// The locale belongs to the whole process, so it is changed in a process of its own.
[[noreturn]] void ExitWithLocales(const char* variable, const char* locale) {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LC_NUMERIC", "LANG"}) unsetenv(name);
    if (variable != nullptr) setenv(variable, locale, 1);
    static_cast<void>(EnableLocale());
    const std::string characters = std::setlocale(LC_CTYPE, nullptr);
    const std::string numbers = std::setlocale(LC_NUMERIC, nullptr);
    const std::string expected = variable == nullptr ? "C" : locale;
    const bool isRight = characters == expected && numbers == "C";
    std::_Exit(isRight ? 0 : 1);
}

TEST(SystemTest, EnablesTheUsersCharactersAlone) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(ExitWithLocales(nullptr, ""), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(ExitWithLocales("LC_ALL", "C.UTF-8"), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(ExitWithLocales("LC_CTYPE", "C.UTF-8"), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(ExitWithLocales("LANG", "C.UTF-8"), testing::ExitedWithCode(0), "");
}

[[noreturn]] void ExitAfterAnUnknownLocale() {
    setenv("LC_ALL", "xx_XX.no-such-locale", 1);
    static_cast<void>(EnableLocale());
    const bool isPlain = std::setlocale(LC_CTYPE, nullptr) == std::string("C") &&
                         std::setlocale(LC_NUMERIC, nullptr) == std::string("C");
    std::_Exit(isPlain ? 0 : 1);
}

TEST(SystemTest, AnUnknownLocaleIsThePlainOne) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(ExitAfterAnUnknownLocale(), testing::ExitedWithCode(0), "");
}

[[noreturn]] void WriteIntoAClosedPipe(bool ignore) {
    std::signal(SIGPIPE, SIG_DFL);
    if (ignore) IgnoreWriteSignals();
    int ends[2];
    if (pipe(ends) != 0) std::_Exit(2);
    close(ends[0]);
    const bool hasFailed = write(ends[1], "x", 1) == -1 && errno == EPIPE;
    std::_Exit(hasFailed ? 0 : 1);
}

TEST(SystemTest, AClosedPipeDoesNotEndTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(WriteIntoAClosedPipe(false), testing::KilledBySignal(SIGPIPE), "");
    EXPECT_EXIT(WriteIntoAClosedPipe(true), testing::ExitedWithCode(0), "");
}

[[noreturn]] void WriteBeyondTheLargestFile(bool ignore) {
    std::signal(SIGXFSZ, SIG_DFL);
    if (ignore) IgnoreWriteSignals();
    const rlimit none{0, 0};
    std::FILE* pFile = std::tmpfile();
    if (pFile == nullptr || setrlimit(RLIMIT_FSIZE, &none) != 0) std::_Exit(2);
    const bool hasFailed = write(fileno(pFile), "x", 1) == -1 && errno == EFBIG;
    std::_Exit(hasFailed ? 0 : 1);
}

TEST(SystemTest, AFileThatMayNotGrowDoesNotEndTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(WriteBeyondTheLargestFile(false), testing::KilledBySignal(SIGXFSZ), "");
    EXPECT_EXIT(WriteBeyondTheLargestFile(true), testing::ExitedWithCode(0), "");
}

TEST(SystemTest, TellsThatATextWasNotWritten) {
    std::FILE* pFull = std::fopen("/dev/full", "w");
    if (pFull == nullptr) GTEST_SKIP() << "this system has no full device";
    std::setvbuf(pFull, nullptr, _IONBF, 0);
    EXPECT_FALSE(WriteToStream(pFull, "x"));
    std::fclose(pFull);
    std::FILE* pFile = std::tmpfile();
    ASSERT_NE(pFile, nullptr);
    EXPECT_TRUE(WriteToStream(pFile, "x"));
    EXPECT_TRUE(WriteToStream(pFile, ""));
    std::fclose(pFile);
}

}  // namespace
}  // namespace quillet
