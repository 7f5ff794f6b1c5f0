#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarvik::fuzz {

/// Ends the run, so that the input is kept, when the program did not do what it must. The text says
/// what that is.
void require(bool kept, std::string_view rule);

/// The bytes of an input, taken from its front: texts with 0x1D between them, so that seeds can be
/// written by hand. Behind the end there is nothing more: empty texts and zeros.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    bool empty() const { return rest_.empty(); }
    std::string text();
    /// All that is left.
    std::string everything();
    std::uint8_t byte();
    /// From 0 up to, but not including, the limit.
    std::uint8_t below(std::uint8_t limit) { return static_cast<std::uint8_t>(byte() % limit); }
    bool flag() { return (byte() & 1U) != 0; }
    std::uint32_t number();
    std::uint64_t wideNumber();

private:
    std::string_view rest_;
};

} // namespace tarvik::fuzz
