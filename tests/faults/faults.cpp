// A library to be preloaded: it makes one call to the system fail that would not have failed.
//
// It stands before the C library in the search for functions, counts the calls of every kind, and
// has one of a chosen kind fail with a chosen error. What the C library does inside of itself goes
// past such a library; so standard output, standard error and files of `fopen` and `tmpfile` become
// streams whose reads and writes come back here (`fopencookie`).
//
// Set by the environment:
//
//     QUILLET_FAULT_RECORD  the file that tells what happened (`Record` is its layout). Without
//                           this variable the library does nothing.
//     QUILLET_FAULT_KIND    the kind of call that fails, one of `kKindNames`; without it none does
//     QUILLET_FAULT_AT      which call of this kind, counted from 1
//     QUILLET_FAULT_MODE    "once", or "from": it and all that follow, as on a full disk
//     QUILLET_FAULT_ERROR   the number of the error; "short": only half is read or written
//     QUILLET_FAULT_STOP    when set, a SIGTRAP precedes the fault, to stop a debugger there
//
// Counting begins when `main` does, and ends with the process. The record is a file that is mapped
// into memory: it needs no call at the end, and it holds when the process is killed.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

// The C library's own heap.
extern "C" {
void* __libc_malloc(std::size_t size) noexcept;
void* __libc_calloc(std::size_t count, std::size_t size) noexcept;
void* __libc_realloc(void* pBlock, std::size_t size) noexcept;
void* __libc_memalign(std::size_t alignment, std::size_t size) noexcept;
void __libc_free(void* pBlock) noexcept;
}

namespace {

enum class Kind : std::size_t {
    kWrite,
    kErrorWrite,
    kRead,
    kOpen,
    kClose,
    kRename,
    kStatus,  // of a name
    kDescriptorStatus,
    kTruncate,
    kSync,
    kMakeFolder,
    kUnlink,
    kFolder,
    kSeek,
    kDuplicate,
    kLock,
    kAttributes,
    kResolve,
    kThread,
    kAllocation,
    kCount
};

constexpr auto kKindCount = static_cast<std::size_t>(Kind::kCount);

// In the order of `Kind`.
constexpr std::array<const char*, kKindCount> kKindNames = {
    "write",     "error-write", "read",       "open",    "close",  "rename",    "stat",
    "fstat",     "trunc",       "sync",       "mkdir",   "unlink", "folder",    "seek",
    "duplicate", "lock",        "attributes", "resolve", "thread", "allocation"};

// The file. All numbers are in the byte order of the machine.
struct Record {
    struct Calls {
        std::array<char, 16> kind;  // its name, filled up with zeros
        std::atomic<std::uint64_t> count;
    };
    std::array<char, 16> magic;
    std::uint64_t kinds;                    // how many `calls` there are
    std::atomic<std::int64_t> allocations;  // blocks of memory that are in use
    std::atomic<std::uint64_t> delivered;   // calls that were made to fail
    std::atomic<std::int64_t> descriptor;   // of the first of them; -1 when it had none
    std::array<Calls, kKindCount> calls;
};
static_assert(std::atomic<std::uint64_t>::is_always_lock_free);

constexpr std::string_view kMagic = "quillet-faults";

struct Plan {
    Kind kind = Kind::kCount;  // none
    std::uint64_t at = 0;
    bool keepsFailing = false;
    bool isShort = false;
    bool stops = false;
    int error = EIO;
};

using Main = int (*)(int, char**, char**);

// Memory is in use before there is a file, and the dynamic linker is among those who ask for it.
Record g_beforeMain;
Record* g_pRecord = &g_beforeMain;
Plan g_plan;
Main g_pMain = nullptr;
bool g_isArmed = false;

// All of these are set before `main` begins and before there is a second thread.

[[noreturn]] void Abandon(std::string_view message) {
    constexpr int kStatus = 125;
    static_cast<void>(syscall(SYS_write, STDERR_FILENO, message.data(), message.size()));
    static_cast<void>(syscall(SYS_exit_group, kStatus));
    __builtin_trap();
}

// Counts a call of `kind` and tells whether it is to fail.
bool IsFaultDue(Kind kind, int descriptor = -1) {
    if (!g_isArmed) return false;
    Record::Calls& calls = g_pRecord->calls[static_cast<std::size_t>(kind)];
    const std::uint64_t number = calls.count.fetch_add(1) + 1;
    if (kind != g_plan.kind) return false;
    if (g_plan.keepsFailing ? number < g_plan.at : number != g_plan.at) return false;
    if (g_pRecord->delivered.fetch_add(1) == 0) g_pRecord->descriptor = descriptor;
    if (g_plan.stops) {
        static_cast<void>(syscall(SYS_tgkill, getpid(), syscall(SYS_gettid), SIGTRAP));
    }
    return true;
}

// The result of `call`, or `failure` where a fault is due.
template <class Result, class Function>
Result Guard(Kind kind, int descriptor, Result failure, Function call) {
    if (IsFaultDue(kind, descriptor)) {
        errno = g_plan.error;
        return failure;
    }
    return call();
}

template <class... Arguments>
long Guarded(Kind kind, int descriptor, long number, Arguments... arguments) {
    return Guard(kind, descriptor, -1L, [&] { return syscall(number, arguments...); });
}

// `call` gets the number of bytes to be moved.
template <class Function>
ssize_t Move(Kind kind, int descriptor, std::size_t size, Function call) {
    if (IsFaultDue(kind, descriptor)) {
        if (!g_plan.isShort) {
            errno = g_plan.error;
            return -1;
        }
        size = (size + 1) / 2;
    }
    return call(size);
}

template <class... Offset>
ssize_t Read(int descriptor, void* pBuffer, std::size_t size, long number, Offset... offset) {
    return Move(Kind::kRead, descriptor, size, [&](std::size_t count) {
        return syscall(number, descriptor, pBuffer, count, offset...);
    });
}

// A full disk does not keep a message from the terminal, so the two are faults of their own.
Kind WriteKindOf(int descriptor) {
    return descriptor == STDERR_FILENO ? Kind::kErrorWrite : Kind::kWrite;
}

template <class... Offset>
ssize_t Write(int descriptor, const void* pBuffer, std::size_t size, long number,
              Offset... offset) {
    return Move(WriteKindOf(descriptor), descriptor, size, [&](std::size_t count) {
        return syscall(number, descriptor, pBuffer, count, offset...);
    });
}

// A descriptor is closed even where closing it failed.
int Close(int descriptor) {
    const bool isFaultDue = IsFaultDue(Kind::kClose, descriptor);
    const long result = syscall(SYS_close, descriptor);
    if (!isFaultDue) return static_cast<int>(result);
    errno = g_plan.error;
    return -1;
}

int Open(int folder, const char* pName, int flags, mode_t mode) {
    return static_cast<int>(Guarded(Kind::kOpen, -1, SYS_openat, folder, pName, flags, mode));
}

mode_t ModeOf(int flags, va_list arguments) {
    const bool isCreated = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return isCreated ? va_arg(arguments, mode_t) : 0;
}

int Status(int folder, const char* pName, struct stat* pStatus, int flags) {
    // A program that asks by name again and again must end although it is told no time after time.
    const Kind kind = *pName == '\0' ? Kind::kDescriptorStatus : Kind::kStatus;
    return static_cast<int>(Guarded(kind, folder, SYS_newfstatat, folder, pName, pStatus, flags));
}

int StatusOfDescriptor(int descriptor, struct stat* pStatus) {
    return static_cast<int>(
        Guarded(Kind::kDescriptorStatus, descriptor, SYS_fstat, descriptor, pStatus));
}

off_t Seek(int descriptor, off_t offset, int origin) {
    return Guarded(Kind::kSeek, descriptor, SYS_lseek, descriptor, offset, origin);
}

bool IsDuplication(int command) { return command == F_DUPFD || command == F_DUPFD_CLOEXEC; }

bool IsLock(int command) {
    return command == F_SETLK || command == F_SETLKW || command == F_OFD_SETLK ||
           command == F_OFD_SETLKW;
}

int Control(int descriptor, int command, long argument) {
    const auto call = [&] {
        return static_cast<int>(syscall(SYS_fcntl, descriptor, command, argument));
    };
    // The others cannot fail with an open descriptor.
    if (IsDuplication(command)) return Guard(Kind::kDuplicate, descriptor, -1, call);
    return IsLock(command) ? Guard(Kind::kLock, descriptor, -1, call) : call();
}

// The function that this one stands before.
template <class Function>
Function* Next(Function* /*pOwn*/, const char* pName) {
    void* pNext = dlsym(RTLD_NEXT, pName);
    if (pNext == nullptr) Abandon("quillet_faults: a function of the C library is missing\n");
    return reinterpret_cast<Function*>(pNext);
}

// Streams. What they hold is their descriptor.

int DescriptorOf(void* pCookie) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(pCookie));
}

ssize_t ReadStream(void* pCookie, char* pBuffer, std::size_t size) {
    return read(DescriptorOf(pCookie), pBuffer, size);
}

// All of it, like any stream; less is an error.
ssize_t WriteStream(void* pCookie, const char* pBuffer, std::size_t size) {
    std::size_t total = 0;
    while (total < size) {
        const ssize_t count = write(DescriptorOf(pCookie), pBuffer + total, size - total);
        if (count < 0) break;
        total += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(total);
}

int SeekStream(void* pCookie, off64_t* pOffset, int origin) {
    *pOffset = lseek(DescriptorOf(pCookie), *pOffset, origin);
    return *pOffset < 0 ? -1 : 0;
}

int CloseStream(void* pCookie) { return close(DescriptorOf(pCookie)); }

FILE* OpenStream(int descriptor, const char* pMode) {
    const cookie_io_functions_t functions = {ReadStream, WriteStream, SeekStream, CloseStream};
    void* pCookie = reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor));
    return fopencookie(pCookie, pMode, functions);
}

FILE* OpenStreamOrClose(int descriptor, const char* pMode) {
    if (descriptor < 0) return nullptr;
    FILE* pStream = OpenStream(descriptor, pMode);
    if (pStream == nullptr) syscall(SYS_close, descriptor);
    return pStream;
}

FILE* OpenNamedStream(const char* pName, const char* pMode) {
    constexpr mode_t kReadableAndWritable = 0666;
    int flags = *pMode == 'r' ? O_RDONLY : O_WRONLY | O_CREAT;
    if (*pMode == 'w') flags |= O_TRUNC;
    if (*pMode == 'a') flags |= O_APPEND;
    if (std::strchr(pMode, '+') != nullptr) flags = (flags & ~O_ACCMODE) | O_RDWR;
    return OpenStreamOrClose(Open(AT_FDCWD, pName, flags, kReadableAndWritable), pMode);
}

FILE* OpenTemporaryStream() {
    return OpenStreamOrClose(
        static_cast<int>(Guarded(Kind::kOpen, -1, SYS_memfd_create, "tmpfile", 0U)), "w+");
}

// Not counted as freed: a run that ends before it closes standard output leaks nothing.
const void* g_pStandardOutput = nullptr;

// Buffered as they are otherwise, but never on the heap: a buffer that was asked for because of a
// fault would look like a leak.
void ReplaceStandardStreams() {
    static std::array<char, 4096> buffer;
    stdout = OpenStream(STDOUT_FILENO, "w");
    g_pStandardOutput = stdout;
    stderr = OpenStream(STDERR_FILENO, "w");
    if (stdout == nullptr || stderr == nullptr ||
        std::setvbuf(stdout, buffer.data(), _IOFBF, buffer.size()) != 0 ||
        std::setvbuf(stderr, nullptr, _IONBF, 0) != 0) {
        Abandon("quillet_faults: no streams\n");
    }
}

// Memory.

void* Counted(void* pBlock) {
    if (pBlock != nullptr) ++g_pRecord->allocations;
    return pBlock;
}

template <class Function>
void* Allocate(Function call) {
    if (IsFaultDue(Kind::kAllocation)) {
        errno = ENOMEM;
        return nullptr;
    }
    return Counted(call());
}

void* AllocateAligned(std::size_t alignment, std::size_t size) {
    return Allocate([&] { return __libc_memalign(alignment, size); });
}

// The beginning.

void MapRecord(const char* pName) {
    constexpr mode_t kReadableAndWritable = 0666;
    const long file = syscall(SYS_openat, AT_FDCWD, pName, O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC,
                              kReadableAndWritable);
    if (file < 0 || syscall(SYS_ftruncate, file, sizeof(Record)) != 0) {
        Abandon("quillet_faults: the record cannot be made\n");
    }
    void* pMemory = mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED,
                         static_cast<int>(file), 0);
    syscall(SYS_close, file);
    if (pMemory == MAP_FAILED) Abandon("quillet_faults: the record cannot be mapped\n");
    // The file is full of zeros, which is what the numbers in it begin with.
    auto* pRecord = static_cast<Record*>(pMemory);
    kMagic.copy(pRecord->magic.data(), kMagic.size());
    pRecord->kinds = kKindCount;
    pRecord->descriptor = -1;
    for (std::size_t kind = 0; kind < kKindCount; ++kind) {
        std::strncpy(pRecord->calls[kind].kind.data(), kKindNames[kind],
                     pRecord->calls[kind].kind.size() - 1);
    }
    pRecord->allocations = g_beforeMain.allocations.load();
    g_pRecord = pRecord;
}

Kind KindNamed(std::string_view name) {
    for (std::size_t kind = 0; kind < kKindCount; ++kind) {
        if (name == kKindNames[kind]) return static_cast<Kind>(kind);
    }
    Abandon("quillet_faults: there is no such kind of call\n");
}

const char* Setting(const char* pName) {
    const char* pValue = std::getenv(pName);
    if (pValue == nullptr) Abandon("quillet_faults: the fault is not described in full\n");
    return pValue;
}

Plan ReadPlan() {
    constexpr int kDecimal = 10;
    Plan plan;
    const char* pKind = std::getenv("QUILLET_FAULT_KIND");
    if (pKind == nullptr) return plan;
    const std::string_view error = Setting("QUILLET_FAULT_ERROR");
    plan.kind = KindNamed(pKind);
    plan.at = std::strtoull(Setting("QUILLET_FAULT_AT"), nullptr, kDecimal);
    plan.keepsFailing = std::string_view(Setting("QUILLET_FAULT_MODE")) == "from";
    plan.isShort = error == "short";
    if (!plan.isShort) plan.error = static_cast<int>(std::strtol(error.data(), nullptr, kDecimal));
    plan.stops = std::getenv("QUILLET_FAULT_STOP") != nullptr;
    if (plan.at == 0 || plan.error == 0) Abandon("quillet_faults: a number is wrong\n");
    return plan;
}

int CountedMain(int argc, char** argv, char** environment) {
    const char* pRecordName = std::getenv("QUILLET_FAULT_RECORD");
    if (pRecordName != nullptr) {
        g_plan = ReadPlan();
        MapRecord(pRecordName);
        ReplaceStandardStreams();
        g_isArmed = true;
    }
    return g_pMain(argc, argv, environment);
}

}  // namespace

// NOLINTBEGIN: names and types are those of the C library
extern "C" {

int __libc_start_main(Main pMain, int argc, char** argv, void (*pInit)(), void (*pEnd)(),
                      void (*pLinkerEnd)(), void* pStackEnd) {
    g_pMain = pMain;
    return Next(__libc_start_main, "__libc_start_main")(CountedMain, argc, argv, pInit, pEnd,
                                                        pLinkerEnd, pStackEnd);
}

ssize_t write(int fd, const void* buffer, size_t size) {
    return Write(fd, buffer, size, SYS_write);
}
ssize_t pwrite(int fd, const void* buffer, size_t size, off_t offset) {
    return Write(fd, buffer, size, SYS_pwrite64, offset);
}
ssize_t pwrite64(int fd, const void* buffer, size_t size, off64_t offset) {
    return Write(fd, buffer, size, SYS_pwrite64, offset);
}
// Short is what the first part holds, or half of it if that is all.
ssize_t writev(int fd, const struct iovec* parts, int count) {
    if (!IsFaultDue(WriteKindOf(fd), fd)) return syscall(SYS_writev, fd, parts, count);
    if (g_plan.isShort && count > 0) {
        const size_t size = parts->iov_len;
        return syscall(SYS_write, fd, parts->iov_base, count > 1 ? size : (size + 1) / 2);
    }
    errno = g_plan.error;
    return -1;
}
ssize_t copy_file_range(int in, off64_t* inOffset, int out, off64_t* outOffset, size_t size,
                        unsigned flags) {
    return Move(WriteKindOf(out), out, size, [&](size_t count) {
        return syscall(SYS_copy_file_range, in, inOffset, out, outOffset, count, flags);
    });
}
ssize_t sendfile(int out, int in, off_t* offset, size_t size) noexcept {
    return Move(WriteKindOf(out), out, size,
                [&](size_t count) { return syscall(SYS_sendfile, out, in, offset, count); });
}

ssize_t read(int fd, void* buffer, size_t size) { return Read(fd, buffer, size, SYS_read); }
ssize_t __read_chk(int fd, void* buffer, size_t size, size_t room) {
    if (size > room) Abandon("quillet_faults: a buffer would overflow\n");
    return read(fd, buffer, size);
}
ssize_t pread(int fd, void* buffer, size_t size, off_t offset) {
    return Read(fd, buffer, size, SYS_pread64, offset);
}
ssize_t pread64(int fd, void* buffer, size_t size, off64_t offset) {
    return Read(fd, buffer, size, SYS_pread64, offset);
}
ssize_t __pread_chk(int fd, void* buffer, size_t size, off_t offset, size_t room) {
    if (size > room) Abandon("quillet_faults: a buffer would overflow\n");
    return pread(fd, buffer, size, offset);
}
ssize_t __pread64_chk(int fd, void* buffer, size_t size, off64_t offset, size_t room) {
    return __pread_chk(fd, buffer, size, offset, room);
}
ssize_t readv(int fd, const struct iovec* parts, int count) {
    return Guarded(Kind::kRead, fd, SYS_readv, fd, parts, count);
}

int open(const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(AT_FDCWD, name, flags, mode);
}
int open64(const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(AT_FDCWD, name, flags, mode);
}
int openat(int folder, const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(folder, name, flags, mode);
}
int openat64(int folder, const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(folder, name, flags, mode);
}
int __open_2(const char* name, int flags) { return Open(AT_FDCWD, name, flags, 0); }
int __open64_2(const char* name, int flags) { return Open(AT_FDCWD, name, flags, 0); }
int __openat_2(int folder, const char* name, int flags) { return Open(folder, name, flags, 0); }
int __openat64_2(int folder, const char* name, int flags) { return Open(folder, name, flags, 0); }
int creat(const char* name, mode_t mode) {
    return Open(AT_FDCWD, name, O_WRONLY | O_CREAT | O_TRUNC, mode);
}
int creat64(const char* name, mode_t mode) { return creat(name, mode); }
FILE* fopen(const char* name, const char* mode) { return OpenNamedStream(name, mode); }
FILE* fopen64(const char* name, const char* mode) { return OpenNamedStream(name, mode); }
FILE* tmpfile() { return OpenTemporaryStream(); }
FILE* tmpfile64() { return OpenTemporaryStream(); }
int memfd_create(const char* name, unsigned flags) noexcept {
    return static_cast<int>(Guarded(Kind::kOpen, -1, SYS_memfd_create, name, flags));
}

int close(int fd) { return Close(fd); }

int rename(const char* from, const char* to) noexcept {
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}
int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    return renameat2(fromFolder, from, toFolder, to, 0);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    return static_cast<int>(
        Guarded(Kind::kRename, -1, SYS_renameat2, fromFolder, from, toFolder, to, flags));
}
int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    return static_cast<int>(
        Guarded(Kind::kRename, -1, SYS_linkat, fromFolder, from, toFolder, to, flags));
}
int link(const char* from, const char* to) noexcept {
    return linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int stat(const char* name, struct stat* status) noexcept {
    return Status(AT_FDCWD, name, status, 0);
}
int stat64(const char* name, struct stat64* status) noexcept {
    return Status(AT_FDCWD, name, reinterpret_cast<struct stat*>(status), 0);
}
int lstat(const char* name, struct stat* status) noexcept {
    return Status(AT_FDCWD, name, status, AT_SYMLINK_NOFOLLOW);
}
int lstat64(const char* name, struct stat64* status) noexcept {
    return Status(AT_FDCWD, name, reinterpret_cast<struct stat*>(status), AT_SYMLINK_NOFOLLOW);
}
int fstat(int fd, struct stat* status) noexcept { return StatusOfDescriptor(fd, status); }
int fstat64(int fd, struct stat64* status) noexcept {
    return StatusOfDescriptor(fd, reinterpret_cast<struct stat*>(status));
}
int fstatat(int folder, const char* name, struct stat* status, int flags) noexcept {
    return Status(folder, name, status, flags);
}
int fstatat64(int folder, const char* name, struct stat64* status, int flags) noexcept {
    return Status(folder, name, reinterpret_cast<struct stat*>(status), flags);
}
int statx(int folder, const char* name, int flags, unsigned mask, struct statx* status) noexcept {
    const Kind kind = *name == '\0' ? Kind::kDescriptorStatus : Kind::kStatus;
    return static_cast<int>(Guarded(kind, folder, SYS_statx, folder, name, flags, mask, status));
}

int ftruncate(int fd, off_t size) noexcept {
    return static_cast<int>(Guarded(Kind::kTruncate, fd, SYS_ftruncate, fd, size));
}
int ftruncate64(int fd, off64_t size) noexcept { return ftruncate(fd, size); }
int truncate(const char* name, off_t size) noexcept {
    return static_cast<int>(Guarded(Kind::kTruncate, -1, SYS_truncate, name, size));
}
int truncate64(const char* name, off64_t size) noexcept { return truncate(name, size); }

int fsync(int fd) { return static_cast<int>(Guarded(Kind::kSync, fd, SYS_fsync, fd)); }
int fdatasync(int fd) { return static_cast<int>(Guarded(Kind::kSync, fd, SYS_fdatasync, fd)); }
int syncfs(int fd) noexcept { return static_cast<int>(Guarded(Kind::kSync, fd, SYS_syncfs, fd)); }

int mkdirat(int folder, const char* name, mode_t mode) noexcept {
    return static_cast<int>(Guarded(Kind::kMakeFolder, folder, SYS_mkdirat, folder, name, mode));
}
int mkdir(const char* name, mode_t mode) noexcept { return mkdirat(AT_FDCWD, name, mode); }

int unlinkat(int folder, const char* name, int flags) noexcept {
    return static_cast<int>(Guarded(Kind::kUnlink, folder, SYS_unlinkat, folder, name, flags));
}
int unlink(const char* name) noexcept { return unlinkat(AT_FDCWD, name, 0); }
int rmdir(const char* name) noexcept { return unlinkat(AT_FDCWD, name, AT_REMOVEDIR); }
int remove(const char* name) noexcept {
    const int result = unlink(name);
    return result != 0 && errno == EISDIR ? rmdir(name) : result;
}

DIR* opendir(const char* name) {
    return Guard(Kind::kFolder, -1, static_cast<DIR*>(nullptr),
                 [&] { return Next(opendir, "opendir")(name); });
}
DIR* fdopendir(int fd) {
    return Guard(Kind::kFolder, fd, static_cast<DIR*>(nullptr),
                 [&] { return Next(fdopendir, "fdopendir")(fd); });
}
struct dirent* readdir(DIR* folder) {
    return Guard(Kind::kFolder, -1, static_cast<struct dirent*>(nullptr),
                 [&] { return Next(readdir, "readdir")(folder); });
}
struct dirent64* readdir64(DIR* folder) {
    return reinterpret_cast<struct dirent64*>(readdir(folder));
}

off_t lseek(int fd, off_t offset, int origin) noexcept { return Seek(fd, offset, origin); }
off64_t lseek64(int fd, off64_t offset, int origin) noexcept { return Seek(fd, offset, origin); }

int dup(int fd) noexcept { return static_cast<int>(Guarded(Kind::kDuplicate, fd, SYS_dup, fd)); }
int dup3(int fd, int copy, int flags) noexcept {
    return static_cast<int>(Guarded(Kind::kDuplicate, fd, SYS_dup3, fd, copy, flags));
}
int fcntl(int fd, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    const long argument = va_arg(arguments, long);
    va_end(arguments);
    return Control(fd, command, argument);
}
int fcntl64(int fd, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    const long argument = va_arg(arguments, long);
    va_end(arguments);
    return Control(fd, command, argument);
}
// There is a structure of the same name.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
int flock(int fd, int operation) noexcept {
    return static_cast<int>(Guarded(Kind::kLock, fd, SYS_flock, fd, operation));
}
#pragma GCC diagnostic pop

int fchmod(int fd, mode_t mode) noexcept {
    return static_cast<int>(Guarded(Kind::kAttributes, fd, SYS_fchmod, fd, mode));
}
int fchmodat(int folder, const char* name, mode_t mode, int flags) noexcept {
    return Guard(Kind::kAttributes, folder, -1,
                 [&] { return Next(fchmodat, "fchmodat")(folder, name, mode, flags); });
}
int chmod(const char* name, mode_t mode) noexcept { return fchmodat(AT_FDCWD, name, mode, 0); }
int utimensat(int folder, const char* name, const struct timespec* times, int flags) noexcept {
    return static_cast<int>(
        Guarded(Kind::kAttributes, folder, SYS_utimensat, folder, name, times, flags));
}
int futimens(int fd, const struct timespec* times) noexcept {
    return static_cast<int>(Guarded(Kind::kAttributes, fd, SYS_utimensat, fd, nullptr, times, 0));
}

char* realpath(const char* name, char* buffer) noexcept {
    return Guard(Kind::kResolve, -1, static_cast<char*>(nullptr),
                 [&] { return Next(realpath, "realpath")(name, buffer); });
}
char* getcwd(char* buffer, size_t size) noexcept {
    return Guard(Kind::kResolve, -1, static_cast<char*>(nullptr),
                 [&] { return Next(getcwd, "getcwd")(buffer, size); });
}
ssize_t readlinkat(int folder, const char* name, char* buffer, size_t size) noexcept {
    return Guarded(Kind::kResolve, folder, SYS_readlinkat, folder, name, buffer, size);
}
ssize_t readlink(const char* name, char* buffer, size_t size) noexcept {
    return readlinkat(AT_FDCWD, name, buffer, size);
}

// The only one of these functions that returns its error.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) noexcept {
    if (IsFaultDue(Kind::kThread)) return g_plan.error;
    return Next(pthread_create, "pthread_create")(thread, attributes, start, argument);
}

void* malloc(size_t size) noexcept {
    return Allocate([&] { return __libc_malloc(size); });
}
void* calloc(size_t count, size_t size) noexcept {
    return Allocate([&] { return __libc_calloc(count, size); });
}
void* realloc(void* block, size_t size) noexcept {
    if (block == nullptr) return malloc(size);
    if (size == 0) {
        free(block);
        return nullptr;
    }
    if (IsFaultDue(Kind::kAllocation)) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_realloc(block, size);
}
void* reallocarray(void* block, size_t count, size_t size) noexcept {
    size_t total = 0;
    if (__builtin_mul_overflow(count, size, &total)) {
        errno = ENOMEM;
        return nullptr;
    }
    return realloc(block, total);
}
void* memalign(size_t alignment, size_t size) noexcept { return AllocateAligned(alignment, size); }
void* aligned_alloc(size_t alignment, size_t size) noexcept {
    return AllocateAligned(alignment, size);
}
int posix_memalign(void** result, size_t alignment, size_t size) noexcept {
    void* block = AllocateAligned(alignment, size);
    if (block == nullptr) return ENOMEM;
    *result = block;
    return 0;
}
void free(void* block) noexcept {
    if (block == nullptr) return;
    if (block != g_pStandardOutput) --g_pRecord->allocations;
    __libc_free(block);
}

}  // extern "C"
// NOLINTEND
