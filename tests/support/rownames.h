// Names for the rows of parameterized tests, so that one row can be run.
#ifndef QUILLET_TESTS_SUPPORT_ROWNAMES_H
#define QUILLET_TESTS_SUPPORT_ROWNAMES_H

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace quillet {

/// What a row with this description is called: "a '+' first" becomes "a_quote_plus_quote_first".
/// What is no letter or digit is told in a word, so that pieces of syntax make names as well.
[[nodiscard]] inline std::string RowNameOf(std::string_view description) {
    static constexpr std::pair<char, std::string_view> kWords[] = {
        {'+', "plus"},       {'-', "minus"},   {'*', "star"},       {'/', "slash"},
        {'(', "open"},       {')', "close"},   {'\'', "quote"},     {'"', "doublequote"},
        {'<', "less"},       {'>', "greater"}, {'=', "equals"},     {',', "comma"},
        {'.', "period"},     {':', "colon"},   {';', "semicolon"},  {'!', "bang"},
        {'$', "dollar"},     {'#', "hash"},    {'@', "at"},         {'&', "ampersand"},
        {'|', "bar"},        {'~', "tilde"},   {'^', "circumflex"}, {'`', "grave"},
        {'\\', "escape"},    {'%', "percent"}, {'?', "question"},   {'[', "bracket"},
        {']', "endbracket"}, {'{', "brace"},   {'}', "endbrace"},   {'\n', "newline"},
        {'\t', "tab"},       {'\r', "return"},
    };
    std::string name;
    const auto separate = [&name] {
        if (!name.empty() && name.back() != '_') name += '_';
    };
    for (const char character : description) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isDigit = '0' <= character && character <= '9';
        const bool isLetter =
            ('A' <= character && character <= 'Z') || ('a' <= character && character <= 'z');
        if (isDigit || isLetter) {
            name += character;
            continue;
        }
        separate();
        for (const auto& [symbol, word] : kWords) {
            if (symbol == character) name.append(word).append("_");
        }
        if (byte >= 128) name += "x";
    }
    while (name.ends_with('_')) name.pop_back();
    return name;
}

/// The namer of INSTANTIATE_TEST_SUITE_P for rows with a description in `name`.
template <typename Row>
[[nodiscard]] std::string NameOfRow(const testing::TestParamInfo<Row>& info) {
    return RowNameOf(info.param.name);
}

}  // namespace quillet

#endif  // QUILLET_TESTS_SUPPORT_ROWNAMES_H
