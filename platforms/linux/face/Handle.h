#pragma once

#include <cstdint>

namespace tarvik::face {

/// A number by which the program can name what shows a form or control; each is given once, from 1.
/// The toolkit's own would make a native window of every widget.
class Handle {
public:
    Handle() : number_(++last) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    std::uint32_t number() const { return number_; }

private:
    static inline std::uint32_t last = 0;
    std::uint32_t number_;
};

} // namespace tarvik::face
