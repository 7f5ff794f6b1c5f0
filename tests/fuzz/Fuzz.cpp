#include "Fuzz.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace tarvik::fuzz {

void require(bool kept, std::string_view rule) {
    if (!kept) {
        std::fprintf(stderr, "Not kept: %.*s\n", static_cast<int>(rule.size()), rule.data());
        std::abort();
    }
}

std::string Input::text() {
    const std::size_t length = std::min(rest_.find('\x1D'), rest_.size());
    std::string result(rest_.substr(0, length));
    rest_.remove_prefix(std::min(length + 1, rest_.size()));
    return result;
}

std::string Input::everything() {
    std::string result(rest_);
    rest_ = {};
    return result;
}

std::uint8_t Input::byte() {
    if (rest_.empty()) {
        return 0;
    }
    const auto result = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return result;
}

std::uint32_t Input::number() {
    std::uint32_t result = 0;
    for (int i = 0; i < 4; ++i) {
        result = result << 8U | byte();
    }
    return result;
}

std::uint64_t Input::wideNumber() {
    const std::uint64_t upper = number();
    return upper << 32U | number();
}

} // namespace tarvik::fuzz
