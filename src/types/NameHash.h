#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarvik {

/// A number that is drawn by lot, another one with each call. Whoever writes a file for the program
/// must not be able to tell it.
std::uint64_t drawnSeed();

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

/// The same for texts that differ in case, too. Tables of the standard library take it for texts
/// of a file: their own hash has no seed, and texts of one hash are found in no time.
class TextHash {
public:
    /// With a seed that was drawn by lot when the program started.
    TextHash();
    explicit TextHash(std::uint64_t seed) : seed_(seed) {}

    // Not noexcept: the tables would compute it anew for each text they pass.
    std::size_t operator()(std::string_view text) const;

private:
    std::uint64_t seed_;
};

} // namespace tarvik
