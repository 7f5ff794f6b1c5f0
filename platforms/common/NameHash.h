#pragma once

#include <cstdint>
#include <string_view>

namespace tarvik {

/// A number for a name, the same for names that differ in the case of ASCII letters only. It
/// depends on a seed: whoever does not know it cannot make up names that get equal numbers.
class NameHash {
public:
    explicit NameHash(std::uint64_t seed) : seed_(seed) {}

    /// With a seed that was drawn by lot when the program started.
    static const NameHash& ofThisRun();

    std::uint32_t operator()(std::string_view name) const;

private:
    std::uint64_t seed_;
};

} // namespace tarvik
