#include "faults/Watch.h"

#include <cstdio>
#include <sstream>
#include <string_view>
#include <unistd.h>

namespace tarvik::faults {

Watch* watch = nullptr;
thread_local bool inside = false;

namespace {

[[noreturn]] void die() {
    _exit(cutStatus);
}

[[noreturn]] void cannotHappen() {
    _exit(impossibleStatus);
}

} // namespace

Turn::Turn(const char* call, bool ours, Kind kind)
    : counted_(watch != nullptr && !inside && ours), kind_(kind) {
    if (!counted_) {
        return;
    }
    watch->mutex.lock();
    inside = true;
    ++watch->calls;
    watch->named.append(call).append(" ");
    watch->flushes += std::string_view(call) == "fdatasync" ? 1 : 0;
    decide(watch->fault);
}

Turn::~Turn() {
    if (counted_) {
        inside = false;
        watch->mutex.unlock();
    }
}

void Turn::afterWrite() const {
    if (dies_) {
        die();
    }
}

void Turn::decide(const Fault& fault) {
    const int now = fault.kind == "cutflush" ? watch->flushes : watch->calls;
    const bool here = now == fault.call;
    if (here) {
        watch->happened = true;
    }
    if (fault.kind == "kill" && here) {
        die();
    } else if (fault.kind == "killhalf" && here) {
        if (kind_ != Writes) {
            cannotHappen();
        }
        half_ = dies_ = true;
    } else if (fault.kind.starts_with("cut") && here) {
        watch->disk.cut(fault.first, static_cast<Disk::Loss>(fault.second)) ? die()
                                                                            : cannotHappen();
    } else if (fault.kind == "fail" && now >= fault.call &&
               static_cast<unsigned>(now - fault.call) < fault.second) {
        error_ = static_cast<int>(fault.first);
    } else if (fault.kind == "failkill") {
        error_ = here ? static_cast<int>(fault.first) : 0;
        if (now == static_cast<int>(fault.second)) {
            die();
        }
    } else if (fault.kind == "short" || fault.kind == "full") {
        shorten(fault, now - fault.call);
    } else if (fault.kind == "vanish" && here) {
        static_cast<void>(std::rename(watch->folder.c_str(), (watch->folder + ".gone").c_str()) ==
                          0);
    }
}

void Turn::shorten(const Fault& fault, int since) {
    const bool full = fault.kind == "full";
    if (since == 0 && (kind_ == Other || (full && kind_ != Writes))) {
        cannotHappen();
    }
    half_ = since == 0 || (!full && since > 0 && static_cast<unsigned>(since) < fault.first);
    if (full && since > 0 && kind_ == Writes) {
        error_ = ENOSPC;
    }
}

void arm(const std::string& folder, const std::string& shadow, const std::string& text) {
    inside = true;
    auto* const fresh = new Watch;
    fresh->folder = folder;
    fresh->parent = folder.substr(0, folder.rfind('/'));
    std::istringstream words(text);
    words >> fresh->fault.kind >> fresh->fault.call >> fresh->fault.first >> fresh->fault.second;
    fresh->disk.watch(folder, shadow);
    watch = fresh;
    inside = false;
}

void disarm() {
    if (watch != nullptr) {
        watch->fault = {};
    }
    inside = true;
}

std::string callsNamed() {
    return watch == nullptr ? "" : watch->named;
}

bool happened() {
    return watch->happened;
}

void finish() {
    const Turn turn("end", true);
}

} // namespace tarvik::faults
