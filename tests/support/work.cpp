#include "support/work.h"

#include <cstddef>

namespace {

// Tests run one after the other.
std::uint64_t steps = 0;

constexpr std::size_t kBytesOfAStep = 16;

void CountBytes(std::size_t size) { steps += size / kBytesOfAStep; }

}  // namespace

extern "C" {

// The compiler calls this one, the linker puts the others in place of the functions of the C
// library that they are named after. All have the names that they must have.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
void __sanitizer_cov_trace_pc();
void* __real_memcpy(void* target, const void* source, std::size_t size);
void* __real_memmove(void* target, const void* source, std::size_t size);
void* __real_memset(void* target, int byte, std::size_t size);
int __real_memcmp(const void* left, const void* right, std::size_t size);
const void* __real_memchr(const void* bytes, int byte, std::size_t size);
void* __wrap_memcpy(void* target, const void* source, std::size_t size);
void* __wrap_memmove(void* target, const void* source, std::size_t size);
void* __wrap_memset(void* target, int byte, std::size_t size);
int __wrap_memcmp(const void* left, const void* right, std::size_t size);
const void* __wrap_memchr(const void* bytes, int byte, std::size_t size);

void __sanitizer_cov_trace_pc() { ++steps; }

void* __wrap_memcpy(void* target, const void* source, std::size_t size) {
    CountBytes(size);
    return __real_memcpy(target, source, size);
}

void* __wrap_memmove(void* target, const void* source, std::size_t size) {
    CountBytes(size);
    return __real_memmove(target, source, size);
}

void* __wrap_memset(void* target, int byte, std::size_t size) {
    CountBytes(size);
    return __real_memset(target, byte, size);
}

int __wrap_memcmp(const void* left, const void* right, std::size_t size) {
    CountBytes(size);
    return __real_memcmp(left, right, size);
}

// What is searched is what lies in front of the byte that is found.
const void* __wrap_memchr(const void* bytes, int byte, std::size_t size) {
    const void* pFound = __real_memchr(bytes, byte, size);
    CountBytes(pFound == nullptr ? size
                                 : static_cast<std::size_t>(static_cast<const char*>(pFound) -
                                                            static_cast<const char*>(bytes)));
    return pFound;
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)

}  // extern "C"

namespace quillet {

std::uint64_t WorkOf(const std::function<void()>& action) {
    const std::uint64_t before = steps;
    action();
    return steps - before;
}

}  // namespace quillet
