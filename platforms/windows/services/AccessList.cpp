#include "windows/services/AccessList.h"

#include "windows/services/SystemHeader.h"

namespace tarvik {

AccessList AccessList::of(const std::string& path) {
    AccessList list;
    DWORD size = 0;
    GetFileSecurityA(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    list.descriptor_.resize(size);
    if (size == 0 || GetFileSecurityA(path.c_str(), DACL_SECURITY_INFORMATION,
                                      list.descriptor_.data(), size, &size) == FALSE) {
        list.descriptor_.clear();
        return list;
    }
    // What came from the folder keeps counting as such only where this is asked for.
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (GetSecurityDescriptorControl(list.descriptor_.data(), &control, &revision) != FALSE &&
        (control & SE_DACL_AUTO_INHERITED) != 0) {
        SetSecurityDescriptorControl(list.descriptor_.data(), SE_DACL_AUTO_INHERIT_REQ,
                                     SE_DACL_AUTO_INHERIT_REQ);
    }
    return list;
}

std::vector<unsigned char> AccessList::forMaking() const {
    std::vector<unsigned char> descriptor = descriptor_;
    if (!descriptor.empty()) {
        // The folder adds nothing of its own.
        SetSecurityDescriptorControl(descriptor.data(), SE_DACL_PROTECTED, SE_DACL_PROTECTED);
    }
    return descriptor;
}

bool AccessList::giveTo(const std::string& path) const {
    if (descriptor_.empty()) {
        return true;
    }
    std::vector<unsigned char> descriptor = descriptor_;
    if (SetFileSecurityA(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data()) != FALSE) {
        return true;
    }
    const DWORD error = GetLastError();
    return error == ERROR_NOT_SUPPORTED || error == ERROR_INVALID_FUNCTION;
}

} // namespace tarvik
