#include "windows/services/WindowsSingleInstance.h"

#include "windows/services/SystemHeader.h"

namespace tarvik {

// A handle fits: the system gives out small numbers, on 64-bit systems too.

std::int32_t WindowsSingleInstance::CreateMutexA(const std::string& name,
                                                 std::uint32_t* lastError) {
    SetLastError(ERROR_SUCCESS);
    const HANDLE handle = ::CreateMutexA(nullptr, FALSE, name.c_str());
    *lastError = GetLastError();
    return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(handle));
}

bool WindowsSingleInstance::CloseHandle(std::int32_t handle) {
    return handle != 0 &&
           ::CloseHandle(reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(handle))) != FALSE;
}

} // namespace tarvik
