#include "platform/numberconversion.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>

namespace quillet {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct NumberCase {
    const char* name;
    std::string text;
    double value;
    std::size_t length;  // how many bytes are converted
    bool outOfRange;
};

const NumberCase kNumberCases[] = {
    {"an integer", "42", 42.0, 2, false},
    {"zero", "0", 0.0, 1, false},
    {"leading zeros", "007", 7.0, 3, false},
    {"a fraction", "1.25", 1.25, 4, false},
    {"no digit before the period", ".5", 0.5, 2, false},
    {"no digit after the period", "5.", 5.0, 2, false},
    {"an exponent", "1e5", 1e5, 3, false},
    {"a large E", "2.5E3", 2500.0, 5, false},
    {"a plus in the exponent", "1e+5", 1e5, 4, false},
    {"a minus in the exponent", "1e-2", 0.01, 4, false},
    {"an exponent without digits is left", "1e", 1.0, 1, false},
    {"a sign without digits is left", "1e+", 1.0, 1, false},
    {"a comma ends the number", "1,5", 1.0, 1, false},
    {"a blank ends it", "1 5", 1.0, 1, false},
    {"a letter ends it", "12x", 12.0, 2, false},
    {"a second period ends it", "1.5.2", 1.5, 3, false},
    {"hexadecimal", "0x1F", 31.0, 4, false},
    {"hexadecimal, large X", "0X1f", 31.0, 4, false},
    {"hexadecimal with an exponent", "0x1p4", 16.0, 5, false},
    {"an x without hexadecimal digits is left", "0x", 0.0, 1, false},
    {"too large", "1e999", kInfinity, 5, true},
    {"too large by its digits", std::string(400, '9'), kInfinity, 400, true},
    {"too small", "1e-999", 0.0, 6, true},
    {"the largest", "1.7976931348623157e308", 1.7976931348623157e308, 22, false},
    {"the smallest normal one", "2.2250738585072014e-308", 2.2250738585072014e-308, 23, false},
    {"just representable", "9007199254740993", 9007199254740992.0, 16, false},
    {"rounded correctly", "0.1", 0.1, 3, false},
    {"many zeros are no matter", "0." + std::string(1000, '0') + "1e1001", 1.0, 1008, false},
    {"nothing", "", 0.0, 0, false},
    {"no number", "abc", 0.0, 0, false},
    {"a period alone", ".", 0.0, 0, false},
};

void ExpectAllConverted() {
    for (const NumberCase& c : kNumberCases) {
        SCOPED_TRACE(c.name);
        const ConvertedNumber number = ConvertNumber(c.text.c_str());
        EXPECT_EQ(number.value, c.value);
        EXPECT_EQ(number.pEnd - c.text.c_str(), static_cast<std::ptrdiff_t>(c.length));
        EXPECT_EQ(number.outOfRange, c.outOfRange);
    }
}

TEST(NumberConversionTest, ConvertsTheBeginningOfAText) {
    ExpectAllConverted();
    ExpectAllConverted();  // the out-of-range numbers leave nothing behind
}

TEST(NumberConversionTest, AgreesWithTheStandardLibrary) {
    for (const char* text : {"3.14159265358979323846", "4.9e-324", "1e-310", "1e22", "1e23",
                             "123456789012345678901234567890", "0x.8", "0x1.8p-1", "inf", "nan",
                             "1e2147483648", "1e-2147483648", "0e999", "179769313486231580e291"}) {
        SCOPED_TRACE(text);
        char* pEnd = nullptr;
        errno = 0;
        const double expected = std::strtod(text, &pEnd);
        const bool outOfRange = errno == ERANGE;
        const ConvertedNumber number = ConvertNumber(text);
        if (std::isnan(expected)) {
            EXPECT_TRUE(std::isnan(number.value));
        } else {
            EXPECT_EQ(number.value, expected);
        }
        EXPECT_EQ(number.pEnd, pEnd);
        EXPECT_EQ(number.outOfRange, outOfRange);
    }
}

// A locale whose numbers have a decimal comma, made for the test: few systems have one ready.
class CommaLocale {
public:
    CommaLocale() : m_folder(testing::TempDir() + "quillet-comma-locale") {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
        const std::string command = "localedef -c -i de_DE -f ISO-8859-1 --no-archive '" +
                                    m_folder + "/de_DE' >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0) return;
        setenv("LOCPATH", m_folder.c_str(), 1);
        m_isSet = std::setlocale(LC_ALL, "de_DE") != nullptr &&
                  std::localeconv()->decimal_point == std::string(",");
    }
    ~CommaLocale() {
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
        std::filesystem::remove_all(m_folder);
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    [[nodiscard]] bool IsSet() const { return m_isSet; }

private:
    std::string m_folder;
    bool m_isSet = false;
};

TEST(NumberConversionTest, DoesNotMindTheLocale) {
    const CommaLocale locale;
    if (!locale.IsSet()) GTEST_SKIP() << "no locale with a decimal comma could be made";
    ASSERT_EQ(std::strtod("1,5", nullptr), 1.5) << "the locale is in force";
    ExpectAllConverted();
    EXPECT_EQ(std::localeconv()->decimal_point, std::string(",")) << "and stays in force";
}

}  // namespace
}  // namespace quillet
