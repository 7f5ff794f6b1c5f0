#include "windows/face/AccessibleNames.h"

#include <initguid.h>
#include <oleacc.h>

namespace tarvik::face {

namespace {

constexpr DWORD self = 0; // the window itself, none of its parts

std::wstring wide(const std::string& text) {
    const auto length = static_cast<int>(text.size());
    std::wstring result(text.size(), L'\0');
    const int count = MultiByteToWideChar(CP_ACP, 0, text.data(), length, result.data(), length);
    result.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return result;
}

} // namespace

AccessibleNames::~AccessibleNames() {
    if (services_ != nullptr) {
        services_->Release();
    }
    if (initialised_) {
        CoUninitialize();
    }
}

IAccPropServices* AccessibleNames::services() {
    if (!tried_) {
        tried_ = true;
        initialised_ = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        void* found = nullptr;
        if (SUCCEEDED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                       IID_IAccPropServices, &found))) {
            services_ = static_cast<IAccPropServices*>(found);
        }
    }
    return services_;
}

void AccessibleNames::set(HWND window, const std::string& name) {
    if (name.empty()) {
        clear(window);
    } else if (IAccPropServices* found = services()) {
        found->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), self, PROPID_ACC_NAME,
                              wide(name).c_str());
        named_.insert(window);
    }
}

void AccessibleNames::clear(HWND window) {
    if (named_.erase(window) == 1) {
        const MSAAPROPID names[] = {PROPID_ACC_NAME};
        services_->ClearHwndProps(window, static_cast<DWORD>(OBJID_CLIENT), self, names, 1);
    }
}

} // namespace tarvik::face
