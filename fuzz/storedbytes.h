// Bytes as an open file, as quillet-migrate reads them.
#ifndef QUILLET_FUZZ_STOREDBYTES_H
#define QUILLET_FUZZ_STOREDBYTES_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include "migrate/systemfiles.h"

namespace quillet::fuzz {

/// A file in memory that holds `bytes`. It is gone with the object that is returned, never null.
[[nodiscard]] inline std::unique_ptr<migrate::StoredFile> StoreBytes(std::string_view bytes) {
    const int descriptor = memfd_create("bytes", MFD_CLOEXEC);
    if (descriptor < 0) std::abort();
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count <= 0) std::abort();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    std::error_code error;
    std::unique_ptr<migrate::StoredFile> file =
        migrate::StoredFile::Open("/proc/self/fd/" + std::to_string(descriptor), error);
    static_cast<void>(close(descriptor));
    if (file == nullptr) std::abort();
    return file;
}

}  // namespace quillet::fuzz

#endif  // QUILLET_FUZZ_STOREDBYTES_H
