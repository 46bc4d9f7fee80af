#include "translator/termpieces.h"

#include <cstddef>

namespace quillet {

namespace {

constexpr std::size_t kShortLength = 79;

}  // namespace

void KeepTogetherIfShort(OutputSequence& sequence) {
    if (sequence.CurrentLineLength() < kShortLength) sequence.JoinCurrentLine();
}

void KeepTogetherIfShort(OutputSequence& sequence, OutputSequence::Place begin) {
    if (sequence.Here().byte - begin.byte < kShortLength) sequence.JoinSince(begin);
}

}  // namespace quillet
