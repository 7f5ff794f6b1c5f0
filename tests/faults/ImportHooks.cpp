// Puts itself between this program and the system's library, through the table of the functions
// that the program imports.

#include "faults/ImportHooks.h"

#include "windows/services/SystemHeader.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <sstream>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tarvik::faults {

namespace {

struct Written {
    std::string path;
    LONGLONG flushed = 0;
    std::optional<std::string> before = {}; ///< what stood there when it was last flushed
};

std::string kind;
int target = 0;
DWORD first = 0;
int times = 1;
std::vector<std::string> named;
bool armed = false;
std::string struck;
std::map<HANDLE, Written> open;
std::vector<Written> closed;

/// The system's own function of that name: the program's way to it is bent.
template <class Function>
Function* real(const char* name, Function*) {
    const HMODULE library = GetModuleHandleA("kernel32.dll");
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

#define REAL(function) real(#function, &function)

void dropUnflushed(const Written& file) {
    const HANDLE handle =
        REAL(CreateFileA)(file.path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    LARGE_INTEGER size{};
    size.QuadPart = file.flushed;
    if (handle != INVALID_HANDLE_VALUE && file.before) {
        DWORD written = 0;
        REAL(WriteFile)
        (handle, file.before->data(), static_cast<DWORD>(file.before->size()), &written, nullptr);
    }
    if (handle != INVALID_HANDLE_VALUE) {
        SetFilePointerEx(handle, size, nullptr, FILE_BEGIN);
        SetEndOfFile(handle);
        REAL(CloseHandle)(handle);
    }
}

[[noreturn]] void die(bool cut) {
    armed = false;
    if (cut) {
        for (const auto& [handle, file] : open) {
            REAL(CloseHandle)(handle);
            closed.push_back(file);
        }
        std::for_each(closed.begin(), closed.end(), dropUnflushed);
    }
    TerminateProcess(GetCurrentProcess(), cutStatus);
    std::abort();
}

enum class Way { Through, Fails, Half, HalfAndDie };

/// What becomes of the next call.
Way next(const char* name, bool moves = false) {
    if (!armed) {
        return Way::Through;
    }
    named.emplace_back(name);
    const int since = static_cast<int>(named.size()) - target;
    if (since == 0) {
        struck = name;
    }
    if (since == 0 && (kind == "kill" || kind == "cut")) {
        die(kind == "cut");
    }
    if (kind == "killhalf" && since == 0 && moves) {
        return Way::HalfAndDie;
    }
    const bool strikes = since >= 0 && since < times;
    if (kind == "fail" && strikes) {
        SetLastError(first);
        return Way::Fails;
    }
    return kind == "short" && strikes && moves ? Way::Half : Way::Through;
}

/// What the file holds, before other bytes are written over it.
std::string contentOf(HANDLE file) {
    LARGE_INTEGER size{};
    REAL(GetFileSizeEx)(file, &size);
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    OVERLAPPED beginning{};
    DWORD count = 0;
    REAL(ReadFile)(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, &beginning);
    bytes.resize(count);
    return bytes;
}

DWORD share(Way way, DWORD size) {
    return way == Way::Half || way == Way::HalfAndDie ? (size + 1) / 2 : size;
}

HANDLE WINAPI createFile(LPCSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                         DWORD how, DWORD flags, HANDLE likeness) {
    if (next("CreateFileA") == Way::Fails) {
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE file = REAL(CreateFileA)(path, access, sharing, security, how, flags, likeness);
    if (armed && file != INVALID_HANDLE_VALUE && (access & GENERIC_WRITE) != 0) {
        LARGE_INTEGER size{};
        if (how == OPEN_EXISTING) {
            REAL(GetFileSizeEx)(file, &size);
        }
        open[file] = {.path = path, .flushed = size.QuadPart};
    }
    return file;
}

BOOL WINAPI writeFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED place) {
    const Way way = next("WriteFile", true);
    if (way == Way::Fails) {
        return FALSE;
    }
    if (const auto found = open.find(file); place != nullptr && found != open.end()) {
        std::optional<std::string>& before = found->second.before;
        before = before ? before : contentOf(file);
    }
    const BOOL result = REAL(WriteFile)(file, bytes, share(way, size), written, place);
    if (way == Way::HalfAndDie) {
        die(false);
    }
    return result;
}

BOOL WINAPI readFile(HANDLE file, LPVOID bytes, DWORD size, LPDWORD count, LPOVERLAPPED place) {
    const Way way = next("ReadFile", kind == "short");
    return way == Way::Fails ? FALSE : REAL(ReadFile)(file, bytes, share(way, size), count, place);
}

BOOL WINAPI flushFile(HANDLE file) {
    if (next("FlushFileBuffers") == Way::Fails) {
        return FALSE;
    }
    LARGE_INTEGER size{};
    if (open.contains(file) && REAL(GetFileSizeEx)(file, &size) != FALSE) {
        Written& written = open[file];
        written.flushed = size.QuadPart;
        written.before.reset();
        // With it goes what was written to the same file before it was closed and opened again.
        std::erase_if(closed, [&](const Written& one) { return one.path == written.path; });
    }
    return REAL(FlushFileBuffers)(file);
}

BOOL WINAPI closeHandle(HANDLE handle) {
    const Way way = next("CloseHandle");
    if (const auto file = open.find(handle); file != open.end()) {
        closed.push_back(file->second);
        open.erase(file);
    }
    // The system closes it in any case.
    const BOOL result = REAL(CloseHandle)(handle);
    return way == Way::Fails ? FALSE : result;
}

BOOL WINAPI moveFile(LPCSTR from, LPCSTR to, DWORD flags) {
    if (next("MoveFileExA") == Way::Fails) {
        return FALSE;
    }
    const BOOL moved = REAL(MoveFileExA)(from, to, flags);
    if (moved != FALSE) {
        std::erase_if(closed, [&](const Written& file) { return file.path == to; });
        for (auto& [handle, file] : open) {
            file.path = file.path == from ? to : file.path;
        }
        for (Written& file : closed) {
            file.path = file.path == from ? to : file.path;
        }
    }
    return moved;
}

/// Any other call of the system: it fails, or it goes through.
template <const char* const* name, class Pointer>
struct Plain;

template <const char* const* name, class Result, class... Arguments>
struct Plain<name, Result(WINAPI*)(Arguments...)> {
    static Result WINAPI call(Arguments... arguments) {
        if (next(*name) != Way::Fails) {
            using Function = Result WINAPI(Arguments...);
            return real(*name, static_cast<Function*>(nullptr))(arguments...);
        }
        if constexpr (std::is_same_v<Result, HANDLE>) {
            return INVALID_HANDLE_VALUE;
        } else if constexpr (std::is_same_v<Result, DWORD>) {
            return *name == std::string_view("GetFileType") ? FILE_TYPE_UNKNOWN
                                                            : INVALID_FILE_ATTRIBUTES;
        } else {
            return FALSE;
        }
    }
};

void WINAPI dontSleep(DWORD) {}

struct Hook {
    std::string_view name;
    void* replacement;
};

template <class Function>
void* address(Function* function) {
    return reinterpret_cast<void*>(function);
}

#define PLAIN(function)                                                                            \
    Hook {                                                                                         \
#function, address(&Plain <&name##function, decltype(&function)>::call)                    \
    }
#define NAME(function) constexpr const char* name##function = #function

NAME(DeleteFileA);
NAME(GetFileAttributesA);
NAME(SetFileAttributesA);
NAME(CreateDirectoryA);
NAME(GetFileSizeEx);
NAME(GetFileType);
NAME(GetFileInformationByHandle);
NAME(GetFileInformationByHandleEx);
NAME(FindFirstFileA);
NAME(FindNextFileA);
NAME(FindClose);
NAME(SetFileInformationByHandle);
NAME(SetFilePointerEx);

const std::vector<Hook>& hooks() {
    static const std::vector<Hook> all{{"CreateFileA", address(&createFile)},
                                       {"WriteFile", address(&writeFile)},
                                       {"ReadFile", address(&readFile)},
                                       {"FlushFileBuffers", address(&flushFile)},
                                       {"CloseHandle", address(&closeHandle)},
                                       {"MoveFileExA", address(&moveFile)},
                                       {"Sleep", address(&dontSleep)},
                                       PLAIN(DeleteFileA),
                                       PLAIN(GetFileAttributesA),
                                       PLAIN(SetFileAttributesA),
                                       PLAIN(CreateDirectoryA),
                                       PLAIN(GetFileSizeEx),
                                       PLAIN(GetFileType),
                                       PLAIN(GetFileInformationByHandle),
                                       PLAIN(GetFileInformationByHandleEx),
                                       PLAIN(FindFirstFileA),
                                       PLAIN(FindNextFileA),
                                       PLAIN(FindClose),
                                       PLAIN(SetFileInformationByHandle),
                                       PLAIN(SetFilePointerEx)};
    return all;
}

/// Puts a hook in the place where the program finds one of the system's functions.
void bend(IMAGE_THUNK_DATA& place, const char* name) {
    const auto hook = std::find_if(hooks().begin(), hooks().end(),
                                   [&](const Hook& one) { return one.name == name; });
    DWORD before = 0;
    if (hook != hooks().end() &&
        VirtualProtect(&place, sizeof place, PAGE_READWRITE, &before) != FALSE) {
        place.u1.Function = reinterpret_cast<ULONG_PTR>(hook->replacement);
    }
}

template <class Record>
Record* at(std::size_t offset) {
    return reinterpret_cast<Record*>(reinterpret_cast<char*>(GetModuleHandleA(nullptr)) + offset);
}

/// Bends every import that has a hook.
void bendAll() {
    const auto* const start = at<IMAGE_DOS_HEADER>(0);
    const auto* const headers = at<IMAGE_NT_HEADERS>(static_cast<std::size_t>(start->e_lfanew));
    const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* library = at<IMAGE_IMPORT_DESCRIPTOR>(table.VirtualAddress); library->Name != 0;
         ++library) {
        auto* const names = at<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
        auto* const places = at<IMAGE_THUNK_DATA>(library->FirstThunk);
        for (std::size_t i = 0; names[i].u1.AddressOfData != 0; ++i) {
            if (!IMAGE_SNAP_BY_ORDINAL(names[i].u1.Ordinal)) {
                bend(places[i], at<IMAGE_IMPORT_BY_NAME>(names[i].u1.AddressOfData)->Name);
            }
        }
    }
}

} // namespace

void arm(const std::string& fault) {
    static const bool bent = (bendAll(), true);
    static_cast<void>(bent);
    times = 1;
    first = 0;
    target = 0;
    std::istringstream words(fault);
    words >> kind >> target;
    if (kind == "fail") {
        words >> first;
    }
    words >> times;
    times = std::max(times, 1);
    named.clear();
    struck.clear();
    open.clear();
    closed.clear();
    armed = true;
}

void disarm() {
    armed = false;
}

std::vector<std::string> callsNamed() {
    return named;
}

std::string callStruck() {
    return struck;
}

void finish() {
    next("end");
}

} // namespace tarvik::faults
