// Preloaded into a program, it counts the program's calls of each kind from `main` on and fails one of them.
//
// FAULT_TALLY: a file of one 64-bit counter for each kind and one for failures, kept however the program ends
// FAULT_KIND: the kind of the call to fail, by its index in Kind
// FAULT_NUMBER: which of them, from 1; 0 fails none
//
// It has the functions that the program and its libraries import: a sweep misses the calls of any other.
// Two kinds of allocations are neither counted nor failed, as no program could handle that: the dynamic
// loader's own, and the table of chunks without which libsndfile 1.2 crashes.

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <string_view>
#include <sys/auxv.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

enum Kind { reading, writing, syncing, renaming, closing, opening, allocation, kinds };

using Counter = std::atomic<std::uint64_t>;
constexpr std::size_t failures = kinds;

Counter unused[kinds + 1];
Counter* tally = unused;
std::atomic<bool> counts = false;
int failing_kind = 0;
std::uint64_t failing_number = 0;
std::uintptr_t loader_begin = 0;
std::uintptr_t loader_end = 0;

/// @returns whether the call is to fail; then errno is set
bool fails(Kind kind, int error_number) {
    if (!counts || ++tally[kind] != failing_number || kind != failing_kind)
        return false;
    ++tally[failures];
    errno = error_number;
    return true;
}

/// Makes the system call, or fails.
template <class Result = ssize_t, class... Arguments>
Result call_or_fail(Kind kind, int error_number, long number, Arguments... arguments) {
    return static_cast<Result>(fails(kind, error_number) ? -1 : syscall(number, arguments...));
}

/// @returns whether the call is to fail; then the stream's error flag is set, as after a write to a stream
/// opened for reading
bool read_fails(FILE* stream) {
    if (!fails(reading, EIO))
        return false;
    fputc(0, stream);
    errno = EIO;
    return true;
}

bool allocation_fails(void* caller) {
    const auto address = reinterpret_cast<std::uintptr_t>(caller);
    const bool is_loader = address >= loader_begin && address < loader_end;
    return !is_loader && fails(allocation, ENOMEM);
}

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

int find_loader(dl_phdr_info* object, std::size_t, void*) {
    if (object->dlpi_addr != getauxval(AT_BASE))
        return 0;
    loader_begin = object->dlpi_addr;
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = object->dlpi_phdr[i];
        loader_end = std::max(loader_end, loader_begin + segment.p_vaddr + segment.p_memsz);
    }
    return 1;
}

void open_tally(const char* file) {
    const int descriptor = static_cast<int>(syscall(SYS_openat, AT_FDCWD, file, O_RDWR | O_CLOEXEC));
    void* shared =
        mmap(nullptr, (kinds + 1) * sizeof(Counter), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (shared == MAP_FAILED)
        std::abort();
    tally = static_cast<Counter*>(shared);
    syscall(SYS_close, descriptor);
}

using Main = int(int, char**, char**);
Main* program_main;

int counted_main(int argc, char** argv, char** environment) {
    counts = true;
    return program_main(argc, argv, environment);
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the C library's own names
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);

int __libc_start_main(Main* main, int argc, char** argv, void (*init)(), void (*fini)(), void (*rtld_fini)(),
                      void* stack_end) {
    using Start = int(Main*, int, char**, void (*)(), void (*)(), void (*)(), void*);
    dl_iterate_phdr(find_loader, nullptr);
    failing_kind = static_cast<int>(std::strtol(getenv("FAULT_KIND"), nullptr, 10));
    failing_number = std::strtoull(getenv("FAULT_NUMBER"), nullptr, 10);
    open_tally(getenv("FAULT_TALLY"));
    program_main = main;
    return next<Start>("__libc_start_main")(counted_main, argc, argv, init, fini, rtld_fini, stack_end);
}
// NOLINTEND(bugprone-reserved-identifier)

#define CALLER __builtin_extract_return_addr(__builtin_return_address(0))

void* malloc(std::size_t bytes) noexcept { return allocation_fails(CALLER) ? nullptr : __libc_malloc(bytes); }
void* calloc(std::size_t count, std::size_t bytes) noexcept {
    constexpr std::size_t chunks = 20;
    constexpr std::size_t chunk_bytes = 96;
    const bool is_chunk_table = count == chunks && bytes == chunk_bytes;
    return !is_chunk_table && allocation_fails(CALLER) ? nullptr : __libc_calloc(count, bytes);
}
void* realloc(void* block, std::size_t bytes) noexcept {
    return allocation_fails(CALLER) ? nullptr : __libc_realloc(block, bytes);
}
void* aligned_alloc(std::size_t alignment, std::size_t bytes) noexcept {
    return allocation_fails(CALLER) ? nullptr : __libc_memalign(alignment, bytes);
}

ssize_t read(int descriptor, void* buffer, std::size_t bytes) {
    return call_or_fail(reading, EIO, SYS_read, descriptor, buffer, bytes);
}
ssize_t pread(int descriptor, void* buffer, std::size_t bytes, off_t offset) {
    return call_or_fail(reading, EIO, SYS_pread64, descriptor, buffer, bytes, offset);
}
dirent* readdir(DIR* folder) {
    static auto* const real = next<decltype(readdir)>("readdir");
    return fails(reading, EIO) ? nullptr : real(folder);
}

ssize_t write(int descriptor, const void* buffer, std::size_t bytes) {
    return call_or_fail(writing, ENOSPC, SYS_write, descriptor, buffer, bytes);
}
ssize_t pwrite(int descriptor, const void* buffer, std::size_t bytes, off_t offset) {
    return call_or_fail(writing, ENOSPC, SYS_pwrite64, descriptor, buffer, bytes, offset);
}
ssize_t writev(int descriptor, const iovec* buffers, int count) {
    return call_or_fail(writing, ENOSPC, SYS_writev, descriptor, buffers, count);
}
ssize_t sendfile(int to, int from, off_t* offset, std::size_t bytes) noexcept {
    return call_or_fail(writing, ENOSPC, SYS_sendfile, to, from, offset, bytes);
}
int ftruncate(int descriptor, off_t bytes) noexcept {
    return call_or_fail<int>(writing, EIO, SYS_ftruncate, descriptor, bytes);
}

int fsync(int descriptor) { return call_or_fail<int>(syncing, EIO, SYS_fsync, descriptor); }

int rename(const char* from, const char* to) noexcept {
    return call_or_fail<int>(renaming, EIO, SYS_rename, from, to);
}
int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) noexcept {
    return call_or_fail<int>(renaming, EIO, SYS_renameat2, from_folder, from, to_folder, to, flags);
}
int link(const char* from, const char* to) noexcept {
    return call_or_fail<int>(renaming, EIO, SYS_link, from, to);
}

/// Nobody can know what a failed close did with the descriptor; on Linux it is gone.
int close(int descriptor) {
    const auto result = static_cast<int>(syscall(SYS_close, descriptor));
    return fails(closing, EIO) ? -1 : result;
}

int openat(int folder, const char* file, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    const mode_t mode = makes ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return call_or_fail<int>(opening, EMFILE, SYS_openat, folder, file, flags, mode);
}
int open(const char* file, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    const mode_t mode = makes ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openat(AT_FDCWD, file, flags, mode);
}
DIR* opendir(const char* folder) {
    static auto* const real = next<DIR*(const char*)>("opendir");
    return fails(opening, EMFILE) ? nullptr : real(folder);
}
DIR* fdopendir(int descriptor) {
    static auto* const real = next<DIR*(int)>("fdopendir");
    return fails(opening, EMFILE) ? nullptr : real(descriptor);
}
FILE* fopen(const char* file, const char* mode) {
    static auto* const real = next<FILE*(const char*, const char*)>("fopen");
    return fails(opening, EMFILE) ? nullptr : real(file, mode);
}
FILE* fopen64(const char* file, const char* mode) __attribute__((alias("fopen")));

// The C library's streams read and write by calls of their own.
std::size_t fread(void* buffer, std::size_t bytes, std::size_t count, FILE* stream) {
    static auto* const real = next<std::size_t(void*, std::size_t, std::size_t, FILE*)>("fread");
    return read_fails(stream) ? 0 : real(buffer, bytes, count, stream);
}
int getc(FILE* stream) {
    static auto* const real = next<int(FILE*)>("getc");
    return read_fails(stream) ? EOF : real(stream);
}
std::size_t fwrite(const void* buffer, std::size_t bytes, std::size_t count, FILE* stream) {
    static auto* const real = next<std::size_t(const void*, std::size_t, std::size_t, FILE*)>("fwrite");
    return fails(writing, ENOSPC) ? 0 : real(buffer, bytes, count, stream);
}
int fflush(FILE* stream) {
    static auto* const real = next<int(FILE*)>("fflush");
    return fails(writing, ENOSPC) ? EOF : real(stream);
}
int fclose(FILE* stream) {
    static auto* const real = next<int(FILE*)>("fclose");
    const int result = real(stream);
    return fails(closing, EIO) ? EOF : result;
}

} // extern "C"
#pragma GCC visibility pop
