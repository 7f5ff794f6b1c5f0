#include "startup/mdlSingleInstance.h"

#include "ports/Platform.h"
#include "ports/SingleInstance.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"

namespace tarvik {

bool RegisterApp(const std::string& AppKey) {
    return guarded("RegisterApp", false, [&](bool& result) {
        std::uint32_t lastError = 0;
        state().InstanceMutex = 0;
        state().InstanceMutex = platform().instances.CreateMutexA(
            AppKey.empty() ? std::string(InstanceKey) : AppKey, &lastError);
        result = lastError != SingleInstance::alreadyExists;
    });
}

void ReleaseApp() {
    guarded("ReleaseApp", [] {
        if (state().InstanceMutex >= 1) {
            platform().instances.CloseHandle(state().InstanceMutex);
            state().InstanceMutex = 0;
        }
    });
}

} // namespace tarvik
