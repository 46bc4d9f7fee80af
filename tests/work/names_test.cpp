// How the work on names and on text in a code page grows.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "platform/codepage.h"
#include "platform/multibyte.h"
#include "support/repetition.h"
#include "support/work.h"
#include "tokenizer/namerepair.h"
#include "tokenizer/variablenames.h"

namespace quillet {
namespace {

TEST(NameWorkTest, IsLinear) {
    for (const char* piece : {"a", "é", ".", "_", " ", "-", "7", "\xFF", "@#"}) {
        SCOPED_TRACE(piece);
        ExpectLinearWork(std::size_t{20'000}, [piece](std::size_t count) {
            const std::string text = Repeat(piece, count);
            std::string name = text;
            MakeValidName(CodePage::Utf8(), name, 1, {});
            EXPECT_LE(name.size(), kMaxNameLength);
            EXPECT_FALSE(name.empty());
            EXPECT_EQ(ClassifyName(CodePage::Utf8(), text), NameClass::kBadLength);
            EXPECT_FALSE(NumberToName(name, text));
            EXPECT_LE(AppendNameSuffix(CodePage::Utf8(), name, text, 0, 65), 1);
        });
    }
}

TEST(MultibyteWorkTest, IsLinear) {
    for (const char* piece : {"a", "é", "ɐ", "\xFF", "."}) {
        SCOPED_TRACE(piece);
        ExpectLinearWork(std::size_t{20'000}, [piece](std::size_t count) {
            const CodePage& utf8 = CodePage::Utf8();
            const std::string text = Repeat(piece, count);
            EXPECT_GE(TAVQMBstrupr_A(utf8, text).size(), text.size());
            EXPECT_LT(TAVQMBStringTruncate_A(utf8, text, text.size() - 1).size(), text.size());
            EXPECT_EQ(TAVQMBstrrchr_A(utf8, text, 'x'), std::string::npos);
            EXPECT_EQ(TAVQMBqstricmp_A(utf8, text, text), 0);
        });
    }
}

}  // namespace
}  // namespace quillet
