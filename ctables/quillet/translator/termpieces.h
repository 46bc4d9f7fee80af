// Text that is kept on one line where it fits on one.
#ifndef QUILLET_TRANSLATOR_TERMPIECES_H
#define QUILLET_TRANSLATOR_TERMPIECES_H

#include "translator/outputsequence.h"

namespace quillet {

/// Makes one piece of the current line of `sequence`, so that it is never broken, if it fits on
/// a line of a command (is shorter than 79 bytes). Constant time.
void KeepTogetherIfShort(OutputSequence& sequence);

/// The same for all pieces after `begin`: a term that stands in other terms is put together where
/// it stands, instead of being copied once for every term around it.
void KeepTogetherIfShort(OutputSequence& sequence, OutputSequence::Place begin);

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_TERMPIECES_H
