#pragma once

#include "ports/SingleInstance.h"

namespace tarvik {

/// Named objects of the system, seen by all programs of the user's session.
class WindowsSingleInstance : public SingleInstance {
public:
    std::int32_t CreateMutexA(const std::string& name, std::uint32_t* lastError) override;
    bool CloseHandle(std::int32_t handle) override;
};

} // namespace tarvik
