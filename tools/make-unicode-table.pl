#!/usr/bin/env perl
# Writes ctables/quillet/platform/unicodeuppercase.cpp from the Unicode data of the running perl:
#
#     tools/make-unicode-table.pl > ctables/quillet/platform/unicodeuppercase.cpp
#
# The table holds the simple upper-case mapping of single letters. Letters below 128 and letters
# whose capital lies below 128 are left out: no letter outside ASCII may become an ASCII letter.
use strict;
use warnings;
use Unicode::UCD qw(prop_invmap);

my ($starts, $values, $format, $default) = prop_invmap('Simple_Uppercase_Mapping');
die "unexpected format $format\n" unless $format eq 'a';

my @pairs;
for my $i (0 .. $#$starts) {
    next if $values->[$i] == 0;
    my $end = $i < $#$starts ? $starts->[ $i + 1 ] - 1 : 0x10FFFF;
    for my $letter ($starts->[$i] .. $end) {
        my $capital = $values->[$i] + $letter - $starts->[$i];
        push @pairs, [$letter, $capital] if $letter >= 128 && $capital >= 128;
    }
}

# A run: letters a fixed step apart whose capitals lie at one distance.
my @runs;
for my $pair (@pairs) {
    my ($letter, $capital) = @$pair;
    my $run = $runs[-1];
    if ($run && $capital - $letter == $run->{distance}) {
        my $step = $letter - $run->{last};
        if ($step <= 2 && ($run->{first} == $run->{last} || $step == $run->{step})) {
            $run->{step} = $step;
            $run->{last} = $letter;
            next;
        }
    }
    push @runs,
        {first => $letter, last => $letter, step => 1, distance => $capital - $letter};
}

my $version = Unicode::UCD::UnicodeVersion();
print <<"HEAD";
// Made by tools/make-unicode-table.pl from Unicode $version; do not edit.
#include "platform/unicodeuppercase.h"

#include <algorithm>
#include <iterator>

namespace quillet {

namespace {

// Letters from first to last, `step` apart, whose capitals lie `distance` further on.
struct UppercaseRun {
    char32_t first;
    char32_t last;
    char32_t step;
    int distance;
};

// Sorted by letter.
constexpr UppercaseRun kUppercaseRuns[] = {
HEAD
printf "    {0x%04X, 0x%04X, %d, %d},\n", @$_{qw(first last step distance)} for @runs;
print <<'TAIL';
};

}  // namespace

char32_t SimpleUppercase(char32_t letter) {
    const auto* pRun =
        std::lower_bound(std::begin(kUppercaseRuns), std::end(kUppercaseRuns), letter,
                         [](const UppercaseRun& run, char32_t key) { return run.last < key; });
    if (pRun == std::end(kUppercaseRuns) || letter < pRun->first) return letter;
    if ((letter - pRun->first) % pRun->step != 0) return letter;
    return static_cast<char32_t>(static_cast<int>(letter) + pRun->distance);
}

}  // namespace quillet
TAIL
