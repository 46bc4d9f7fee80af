// How much is read and written at a time.
#ifndef QUILLET_PLATFORM_BLOCKSIZE_H
#define QUILLET_PLATFORM_BLOCKSIZE_H

#include <cstddef>

namespace quillet {

/// The size, in bytes, of the blocks in which files go through memory: large enough that calls to
/// the system cost nothing beside the work, small enough to stay in the processor's cache.
inline constexpr std::size_t kBlockSize = 128UL * 1024;

}  // namespace quillet

#endif  // QUILLET_PLATFORM_BLOCKSIZE_H
