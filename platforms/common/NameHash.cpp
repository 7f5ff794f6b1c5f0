#include "common/NameHash.h"

#include <cstring>
#include <random>

namespace tarvik {

namespace {

constexpr std::uint64_t eachByte(std::uint64_t value) {
    return value * 0x0101010101010101ULL;
}

/// Small ASCII letters of the eight bytes as capitals, all at once: a byte's upper bit is set where
/// it is at least the first number and not above the second.
std::uint64_t withoutCase(std::uint64_t bytes) {
    constexpr std::uint64_t upperBits = eachByte(0x80);
    const std::uint64_t lower = bytes & ~upperBits;
    const std::uint64_t fromA = lower + eachByte(0x80 - 'a');
    const std::uint64_t beyondZ = lower + eachByte(0x80 - ('z' + 1));
    return bytes ^ ((fromA & ~beyondZ & ~bytes & upperBits) >> 2U);
}

/// Every bit of the result depends on every bit of the value; no two values have one result.
std::uint64_t mixed(std::uint64_t value) {
    value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    value = (value ^ (value >> 27U)) * 0x94D049BB133111EBULL;
    return value ^ (value >> 31U);
}

std::uint64_t drawnSeed() {
    std::random_device lot;
    return (std::uint64_t{lot()} << 32U) | lot();
}

} // namespace

const NameHash& NameHash::ofThisRun() {
    static const NameHash hash(drawnSeed());
    return hash;
}

std::uint32_t NameHash::operator()(std::string_view name) const {
    std::uint64_t hash = mixed(seed_ ^ name.size());
    std::uint64_t word = 0;
    while (name.size() >= sizeof word) {
        std::memcpy(&word, name.data(), sizeof word);
        hash = mixed(hash ^ withoutCase(word));
        name.remove_prefix(sizeof word);
    }
    word = 0;
    std::memcpy(&word, name.data(), name.size());
    return static_cast<std::uint32_t>(mixed(hash ^ withoutCase(word)) >> 32U);
}

} // namespace tarvik
