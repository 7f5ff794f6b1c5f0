#include "types/NameHash.h"

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

std::uint64_t seedOfThisRun() {
    static const std::uint64_t seed = drawnSeed();
    return seed;
}

std::uint64_t asItStands(std::uint64_t bytes) {
    return bytes;
}

template <class View>
std::uint64_t hashOf(std::uint64_t seed, std::string_view text, View&& view) {
    std::uint64_t hash = mixed(seed ^ text.size());
    std::uint64_t word = 0;
    while (text.size() >= sizeof word) {
        std::memcpy(&word, text.data(), sizeof word);
        hash = mixed(hash ^ view(word));
        text.remove_prefix(sizeof word);
    }
    word = 0;
    std::memcpy(&word, text.data(), text.size());
    return mixed(hash ^ view(word));
}

} // namespace

std::uint64_t drawnSeed() {
    std::random_device lot;
    return (std::uint64_t{lot()} << 32U) | lot();
}

const NameHash& NameHash::ofThisRun() {
    static const NameHash hash(seedOfThisRun());
    return hash;
}

std::uint32_t NameHash::operator()(std::string_view name) const {
    return static_cast<std::uint32_t>(hashOf(seed_, name, withoutCase) >> 32U);
}

TextHash::TextHash() : seed_(seedOfThisRun()) {}

std::size_t TextHash::operator()(std::string_view text) const {
    return static_cast<std::size_t>(hashOf(seed_, text, asItStands));
}

} // namespace tarvik
