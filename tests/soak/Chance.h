#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace tarvik::soak {

/// Chance that comes out alike on every machine.
class Chance {
public:
    explicit Chance(std::uint32_t seed) : engine_(seed) {}

    /// 0 up to, but not including, `limit`.
    std::uint64_t below(std::uint64_t limit) { return engine_() % limit; }
    std::uint64_t between(std::uint64_t least, std::uint64_t most) {
        return least + below(most - least + 1);
    }
    /// A place in a row of that many.
    std::size_t index(std::size_t count) { return static_cast<std::size_t>(below(count)); }
    /// True once in so many times.
    bool onceIn(std::uint64_t times) { return below(times) == 0; }

private:
    std::mt19937_64 engine_;
};

} // namespace tarvik::soak
