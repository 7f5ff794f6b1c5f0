#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// Many short texts one behind the other: a text costs its bytes and four more.
class TextColumn {
public:
    void reserve(std::size_t count, std::size_t bytes) {
        ends_.reserve(count);
        bytes_.reserve(bytes);
    }

    void add(std::string_view text) {
        bytes_ += text;
        ends_.push_back(static_cast<std::uint32_t>(bytes_.size()));
    }

    std::size_t size() const { return ends_.size(); }

    std::string_view operator[](std::size_t place) const {
        const std::size_t begin = place == 0 ? 0 : ends_[place - 1];
        return std::string_view(bytes_).substr(begin, ends_[place] - begin);
    }

private:
    std::string bytes_;
    std::vector<std::uint32_t> ends_;
};

} // namespace tarvik
