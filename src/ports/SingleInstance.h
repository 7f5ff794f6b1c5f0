#pragma once

#include <cstdint>
#include <string>

namespace tarvik {

/// Named objects that one process of the user's session can own first.
class SingleInstance {
public:
    /// The error left by `CreateMutexA` when the name was taken already.
    static constexpr std::uint32_t alreadyExists = 183;

    virtual ~SingleInstance() = default;

    /// Makes or opens the object of that name; it ends with its last holder, however that process
    /// ends. Returns a handle of 1 or more, 0 when it could not be made. `lastError` is 0 for a new
    /// object, 183 when another holder has it, else the platform's error.
    virtual std::int32_t CreateMutexA(const std::string& name, std::uint32_t* lastError) = 0;

    /// Lets a handle go; false when it is not one.
    virtual bool CloseHandle(std::int32_t handle) = 0;
};

} // namespace tarvik
