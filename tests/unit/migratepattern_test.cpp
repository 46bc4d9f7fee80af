#include <gtest/gtest.h>

#include <string>

#include "migrate/pattern.h"

namespace quillet::migrate {
namespace {

struct PatternCase {
    const char* pattern;
    const char* path;
    bool matches;
};

TEST(MigratePatternTest, Matches) {
    const PatternCase cases[] = {
        {"*.syn", "a.syn", true},
        {"*.syn", "A.SYN", true},
        {"*.SYN", "a.syn", true},
        {"*.syn", "a.syn2", false},
        {"*.syn", ".syn", true},
        {"*.syn", "folder.syn/a.txt", false},
        {"*.syn", "folder/a.syn", true},
        {"*", "", true},
        {"*", "any/thing", true},
        {"", "a", false},
        {"a", "a", true},
        {"a", "ab", false},
        {"a?c", "abc", true},
        {"a?c", "ac", false},
        {"a?c", "a/c", false},
        {"a*b*c", "aXbYbZc", true},
        {"a*b*c", "aXbYbZ", false},
        {"**a**", "xax", true},
        {"[abc]x", "Bx", true},
        {"[abc]x", "dx", false},
        {"[a-c]x", "bx", true},
        {"[A-C]x", "bx", true},
        {"[!a-c]x", "dx", true},
        {"[!a-c]x", "bx", false},
        {"[^a-c]x", "bx", false},
        {"[]]x", "]x", true},
        {"[!]]x", "]x", false},
        {"[a-]x", "-x", true},
        {"[-a]x", "-x", true},
        {"[*]x", "*x", true},
        {"[*]x", "ax", false},
        // What opens no set stands for itself.
        {"[ab", "[ab", true},
        {"[ab", "a", false},
        {"[]", "[]", true},
        {"a]", "a]", true},
        // With a slash the whole path counts, and a star crosses folders.
        {"old/*", "old/a.syn", true},
        {"old/*", "old/deeper/a.syn", true},
        {"old/*", "new/old/a.syn", false},
        {"*/old/*", "new/old/a.syn", true},
        {"/a.syn", "a.syn", true},
        {"/a.syn", "folder/a.syn", false},
        {"OLD/a?b", "old/a/b", true},
        // Characters, not bytes.
        {"b\xC3\xBCro*", "B\xC3\x9CRO 1", true},
        {"b?ro", "b\xC3\xBCro", true},
        {"b??ro", "b\xC3\xBCro", false},
        {"[\xC3\xA0-\xC3\xBC]", "\xC3\x89", true},
        {"[\xC3\xA0-\xC3\xBC]", "e", false},
        // A byte that is no character is one of its own.
        {"b?ro", "b\xFCro", true},
        {"b\xFCro", "b\xFCro", true},
        {"b\xFCro", "b\xFDro", false},
        {"*\xFC", "\xC3\xFC", true},
    };
    for (const PatternCase& c : cases) {
        EXPECT_EQ(NamePattern(c.pattern).Matches(c.path), c.matches)
            << '"' << c.pattern << "\" and \"" << c.path << '"';
    }
}

TEST(MigratePatternTest, FiltersNames) {
    EXPECT_TRUE(NameFilter({}, {}).Accepts("a"));
    EXPECT_FALSE(NameFilter({}, {"a"}).Accepts("a"));
    EXPECT_TRUE(NameFilter({}, {"a"}).Accepts("b"));
    const NameFilter filter({"*.syn", "*.sps"}, {"old/*", "x*"});
    EXPECT_TRUE(filter.Accepts("a.sps"));
    EXPECT_FALSE(filter.Accepts("a.txt"));
    EXPECT_FALSE(filter.Accepts("old/a.syn"));
    EXPECT_FALSE(filter.Accepts("new/X.syn"));
}

TEST(MigratePatternTest, TellsWhichPatternsMatch) {
    const NameFilter filter({"*.syn", "*.sps", "a/*"}, {"old/*"});
    std::vector<bool> areMatched;
    filter.NoteIncluded("b.txt", areMatched);
    EXPECT_EQ(areMatched, (std::vector<bool>{false, false, false}));
    filter.NoteIncluded("old/B.SYN", areMatched);
    EXPECT_EQ(areMatched, (std::vector<bool>{true, false, false}));
    filter.NoteIncluded("a/b", areMatched);
    EXPECT_EQ(areMatched, (std::vector<bool>{true, false, true}));
}

}  // namespace
}  // namespace quillet::migrate
