// Files are opened so that they can be renamed and removed while they are open, as on other systems. What is
// open has a descriptor of the C library.

#include "headless/system/files.hpp"

#include "headless/system/windows/error.hpp"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <limits>
#include <string>
#include <string_view>
#include <windows.h>

namespace headless::system {
namespace {

using windows::set_errno;
namespace fs = std::filesystem;

constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE handle_of(int descriptor) { return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)); }

int descriptor_of(HANDLE file) {
    if (file == INVALID_HANDLE_VALUE) {
        set_errno();
        return -1;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_BINARY | _O_NOINHERIT);
    if (descriptor < 0)
        CloseHandle(file);
    return descriptor;
}

int open_file(const fs::path& file, DWORD access, DWORD disposition, DWORD flags) {
    return descriptor_of(CreateFileW(file.c_str(), access, shared, nullptr, disposition, flags, nullptr));
}

OVERLAPPED at(std::int64_t position) {
    OVERLAPPED place{};
    const auto offset = static_cast<std::uint64_t>(position);
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32U);
    return place;
}

/// Where write() goes on, which reading and writing elsewhere would move.
class KeptPosition {
public:
    explicit KeptPosition(HANDLE file) : file_(file) {
        SetFilePointerEx(file_, LARGE_INTEGER{}, &position_, FILE_CURRENT);
    }
    KeptPosition(const KeptPosition&) = delete;
    KeptPosition& operator=(const KeptPosition&) = delete;
    ~KeptPosition() { SetFilePointerEx(file_, position_, nullptr, FILE_BEGIN); }

private:
    HANDLE file_;
    LARGE_INTEGER position_{};
};

DWORD at_most(std::size_t count) {
    constexpr std::size_t largest = std::size_t{1} << 30;
    return static_cast<DWORD>(std::min(count, largest));
}

/// 100 ns since 1601, as seconds and nanoseconds.
void set_change(FileStatus& status, FILETIME time) {
    constexpr std::uint64_t ticks_a_second = 10'000'000;
    const std::uint64_t ticks = std::uint64_t{time.dwHighDateTime} << 32U | time.dwLowDateTime;
    status.changed_seconds = static_cast<std::int64_t>(ticks / ticks_a_second);
    status.changed_nanoseconds = static_cast<std::int64_t>(ticks % ticks_a_second * 100);
}

std::optional<FileStatus> status_of_handle(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION found{};
    FILE_STANDARD_INFO standard{};
    if (!GetFileInformationByHandle(file, &found) ||
        !GetFileInformationByHandleEx(file, FileStandardInfo, &standard, sizeof standard)) {
        set_errno();
        return std::nullopt;
    }
    FileStatus status;
    const bool is_folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    status.type = is_folder                             ? FileType::folder
                  : GetFileType(file) == FILE_TYPE_DISK ? FileType::regular
                                                        : FileType::other;
    status.identity = {found.dwVolumeSerialNumber,
                       std::uint64_t{found.nFileIndexHigh} << 32U | found.nFileIndexLow};
    status.names = standard.DeletePending ? 0 : found.nNumberOfLinks;
    status.bytes = static_cast<std::int64_t>(std::uint64_t{found.nFileSizeHigh} << 32U | found.nFileSizeLow);
    set_change(status, found.ftLastWriteTime);
    return status;
}

bool move(const fs::path& file, const fs::path& new_name, DWORD flags) {
    return MoveFileExW(file.c_str(), new_name.c_str(), flags | MOVEFILE_WRITE_THROUGH) != 0 || set_errno();
}

} // namespace

int open_to_read(const fs::path& file) { return open_file(file, GENERIC_READ, OPEN_EXISTING, 0); }

int open_unlinked_to_read(const fs::path& file) {
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        errno = ELOOP;
        return -1;
    }
    return open_file(file, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT);
}

int create_new(const fs::path& file) {
    return open_file(file, GENERIC_READ | GENERIC_WRITE, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
}

int duplicate(int descriptor) {
    HANDLE copy = INVALID_HANDLE_VALUE;
    if (!DuplicateHandle(GetCurrentProcess(), handle_of(descriptor), GetCurrentProcess(), &copy, 0, FALSE,
                         DUPLICATE_SAME_ACCESS))
        copy = INVALID_HANDLE_VALUE;
    return descriptor_of(copy);
}

int close(int descriptor) { return _close(descriptor); }

std::int64_t read_at(int descriptor, void* bytes, std::size_t count, std::int64_t position) {
    const KeptPosition kept(handle_of(descriptor));
    OVERLAPPED place = at(position);
    DWORD got = 0;
    if (!ReadFile(handle_of(descriptor), bytes, at_most(count), &got, &place) &&
        GetLastError() != ERROR_HANDLE_EOF) {
        set_errno();
        return -1;
    }
    return got;
}

std::int64_t write_at(int descriptor, const void* bytes, std::size_t count, std::int64_t position) {
    const KeptPosition kept(handle_of(descriptor));
    OVERLAPPED place = at(position);
    DWORD written = 0;
    if (!WriteFile(handle_of(descriptor), bytes, at_most(count), &written, &place)) {
        set_errno();
        return -1;
    }
    return written;
}

std::int64_t write(int descriptor, const void* bytes, std::size_t count) {
    DWORD written = 0;
    if (!WriteFile(handle_of(descriptor), bytes, at_most(count), &written, nullptr)) {
        set_errno();
        return -1;
    }
    return written;
}

bool sync(int descriptor) { return FlushFileBuffers(handle_of(descriptor)) != 0 || set_errno(); }

// Renames are written through; a removed file may come back.
bool sync_folder(const fs::path&) { return true; }

// The locked byte lies beyond the end of every file, as nobody else could read the bytes under a lock.
bool try_lock(int descriptor) {
    OVERLAPPED place = at(std::numeric_limits<std::int64_t>::max() - 1);
    return LockFileEx(handle_of(descriptor), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                      &place) != 0 ||
           set_errno();
}

bool rename_replacing(const fs::path& file, const fs::path& new_name) {
    return move(file, new_name, MOVEFILE_REPLACE_EXISTING);
}

bool rename_keeping(const fs::path& file, const fs::path& new_name) { return move(file, new_name, 0); }

bool remove_file(const fs::path& file) { return DeleteFileW(file.c_str()) != 0 || set_errno(); }

bool is_link(const fs::path& file) {
    WIN32_FIND_DATAW entry{};
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return false;
    const HANDLE search = FindFirstFileW(file.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    FindClose(search);
    return IsReparseTagNameSurrogate(entry.dwReserved0);
}

fs::path target_of(const fs::path& link) {
    constexpr std::wstring_view server_prefix = L"\\\\?\\UNC\\";
    constexpr std::wstring_view prefix = L"\\\\?\\";
    const Descriptor opened(open_file(link, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
    if (opened < 0)
        return {};
    std::wstring path(32768, L'\0'); // no path is longer
    const DWORD length = GetFinalPathNameByHandleW(handle_of(opened), path.data(),
                                                   static_cast<DWORD>(path.size()), VOLUME_NAME_DOS);
    if (length == 0 || length >= path.size()) {
        set_errno();
        return {};
    }
    path.resize(length);
    if (path.starts_with(server_prefix))
        return L"\\\\" + path.substr(server_prefix.size());
    return path.starts_with(prefix) ? path.substr(prefix.size()) : path;
}

int reserve_space(const fs::path& folder, std::uintmax_t bytes) {
    static std::atomic<unsigned> serial{0};
    const fs::path name = folder / (".felspar-" + std::to_string(GetCurrentProcessId()) + "--" +
                                    std::to_string(serial++) + ".tmp");
    Descriptor reserve(open_file(name, GENERIC_WRITE | DELETE, CREATE_NEW,
                                 FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE));
    FILE_ALLOCATION_INFO space{};
    space.AllocationSize.QuadPart = static_cast<LONGLONG>(bytes);
    const bool is_reserved =
        reserve >= 0 &&
        SetFileInformationByHandle(handle_of(reserve), FileAllocationInfo, &space, sizeof space) != 0;
    return is_reserved ? reserve.release() : -1;
}

std::optional<FileStatus> status_of(const fs::path& file) {
    const Descriptor opened(open_file(file, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
    return opened < 0 ? std::nullopt : status_of(int{opened});
}

std::optional<FileStatus> status_of(int descriptor) { return status_of_handle(handle_of(descriptor)); }

} // namespace headless::system
