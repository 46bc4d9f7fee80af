// Whether generated commands are read and printed alike.
#ifndef QUILLET_TESTS_UNIT_PRINTEDALIKE_H
#define QUILLET_TESTS_UNIT_PRINTEDALIKE_H

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "outline/printwritten.h"
#include "outline/readwritten.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::outline {

/// `text` without its white space.
inline std::string WithoutWhiteSpace(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') result += c;
    }
    return result;
}

/// The tokens of a generated text as the old language has them, which keep the white space inside
/// of literals; blanks after literals do not count.
inline std::vector<std::string> OldTokensOf(const CodePage& codePage, const std::string& text) {
    TAVQTokenSequence sequence(codePage, text, /*skipLeadingSign=*/false, /*maxTokens=*/0);
    std::vector<std::string> tokens;
    while (sequence.Next()) {
        const char* pText = nullptr;
        std::size_t length = 0;
        static_cast<void>(sequence.GetSourceText(pText, length));
        tokens.emplace_back(pText, length);
        tokens.back().resize(tokens.back().find_last_not_of(" \n\r") + 1);
    }
    return tokens;
}

/// Reads `text`, prints it and looks for differences; then the same again with what was printed.
inline void ExpectPrintedAlike(const CodePage& codePage, const std::string& text) {
    CommandOutline outline;
    ReadingError error;
    ASSERT_TRUE(ReadWritten(codePage, text, outline, error))
        << error.message << " on line " << error.line << " of\n"
        << text;
    const std::string printed = PrintWritten(outline);
    EXPECT_EQ(WithoutWhiteSpace(printed), WithoutWhiteSpace(text));
    EXPECT_EQ(OldTokensOf(codePage, printed), OldTokensOf(codePage, text));
    ASSERT_TRUE(ReadWritten(codePage, printed, outline, error)) << printed;
    EXPECT_EQ(PrintWritten(outline), printed);
}

}  // namespace quillet::outline

#endif  // QUILLET_TESTS_UNIT_PRINTEDALIKE_H
