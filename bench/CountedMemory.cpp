#include "CountedMemory.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t bytesNow = 0;
std::size_t bytesMost = 0;
/// Room before each allocation for its size, as much as keeps it aligned.
constexpr std::size_t headSize = alignof(std::max_align_t);

} // namespace

void* operator new(std::size_t size) {
    auto* head = static_cast<char*>(std::malloc(size + headSize));
    if (head == nullptr) {
        throw std::bad_alloc();
    }
    *reinterpret_cast<std::size_t*>(head) = size;
    bytesNow += size;
    bytesMost = std::max(bytesMost, bytesNow);
    return head + headSize;
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        char* head = static_cast<char*>(memory) - headSize;
        bytesNow -= *reinterpret_cast<std::size_t*>(head);
        std::free(head);
    }
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace tarvik {

std::size_t bytesHeld() {
    return bytesNow;
}

std::size_t mostBytesHeld() {
    return bytesMost;
}

void forgetMostBytes() {
    bytesMost = bytesNow;
}

} // namespace tarvik
