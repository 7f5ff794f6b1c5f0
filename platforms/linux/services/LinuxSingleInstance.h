#pragma once

#include "linux/services/FileDescriptor.h"
#include "ports/SingleInstance.h"

#include <map>
#include <string>

namespace tarvik {

/// Named objects as locks on files that are the user's own. The system frees a lock when its holder
/// ends, however it ends; the empty file stays and means nothing.
class LinuxSingleInstance : public SingleInstance {
public:
    LinuxSingleInstance();
    /// Keeps the lock files in that folder, which is made if need be.
    explicit LinuxSingleInstance(std::string folder) : folder_(std::move(folder)) {}

    std::int32_t CreateMutexA(const std::string& name, std::uint32_t* lastError) override;
    bool CloseHandle(std::int32_t handle) override;

private:
    std::string folder_;
    std::map<std::int32_t, FileDescriptor> held_;
    std::int32_t lastHandle_ = 0;
};

} // namespace tarvik
