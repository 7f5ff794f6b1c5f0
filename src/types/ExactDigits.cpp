#include "types/ExactDigits.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace tarvik {

namespace {

/// As many digits at a time as fit a limb.
constexpr int groupDigits = 9;
constexpr std::uint32_t group = 1'000'000'000;

/// A natural number with room for the largest double and as many decimals: 1,024 and 100 bits.
class Natural {
public:
    explicit Natural(std::uint64_t value)
        : limbs_{static_cast<std::uint32_t>(value), static_cast<std::uint32_t>(value >> limbBits)},
          size_(2) {}

    bool isZero() const {
        return std::all_of(limbs_.begin(), end(), [](std::uint32_t limb) { return limb == 0; });
    }

    void multiply(std::uint32_t factor) { multiplyAndAdd(factor, 0); }

    void shiftLeft(int bits) {
        constexpr int most = 31;
        for (; bits > 0; bits -= most) {
            multiply(std::uint32_t{1} << std::min(bits, most));
        }
    }

    /// Divides by two so often, and rounds to the nearest, ties to even.
    void shiftRight(int bits) {
        bool half = false;
        bool more = false;
        for (; bits >= limbBits && size_ > 0; bits -= limbBits) {
            constexpr std::uint32_t highest = std::uint32_t{1} << 31U;
            more = more || half || (limbs_[0] & ~highest) != 0;
            half = (limbs_[0] & highest) != 0;
            std::copy(limbs_.begin() + 1, limbs_.end(), limbs_.begin());
            --size_;
        }
        for (; bits > 0 && (half || !isZero()); --bits) {
            more = more || half;
            half = limbs_[0] % 2 != 0;
            halve();
        }
        if (bits == 0 && half && (more || limbs_[0] % 2 != 0)) {
            multiplyAndAdd(1, 1);
        }
    }

    /// Divides, and returns what is left over.
    std::uint32_t divide(std::uint32_t divisor) {
        std::uint64_t rest = 0;
        for (std::size_t i = size_; i-- > 0;) {
            const std::uint64_t part = rest << limbBits | limbs_[i];
            limbs_[i] = static_cast<std::uint32_t>(part / divisor);
            rest = part % divisor;
        }
        while (size_ > 0 && limbs_[size_ - 1] == 0) {
            --size_;
        }
        return static_cast<std::uint32_t>(rest);
    }

private:
    static constexpr int limbBits = 32;
    using Limbs = std::array<std::uint32_t, 37>;

    Limbs::const_iterator end() const {
        return limbs_.begin() + static_cast<std::ptrdiff_t>(size_);
    }

    void multiplyAndAdd(std::uint32_t factor, std::uint32_t addend) {
        std::uint64_t carry = addend;
        for (std::size_t i = 0; i < size_; ++i) {
            carry += std::uint64_t{limbs_[i]} * factor;
            limbs_[i] = static_cast<std::uint32_t>(carry);
            carry >>= limbBits;
        }
        if (carry != 0) {
            limbs_.at(size_++) = static_cast<std::uint32_t>(carry);
        }
    }

    void halve() {
        std::uint32_t above = 0;
        for (std::size_t i = size_; i-- > 0;) {
            const std::uint32_t limb = limbs_[i];
            limbs_[i] = limb >> 1U | above << (limbBits - 1);
            above = limb;
        }
    }

    Limbs limbs_; ///< the lowest first; those from `size_` on are 0
    std::size_t size_;
};

/// The number times 10^exactDecimals.
Natural scaled(double magnitude) {
    constexpr int mantissaBits = 53;
    int exponent = 0;
    const double fraction = std::frexp(magnitude, &exponent);
    Natural number(static_cast<std::uint64_t>(std::ldexp(fraction, mantissaBits)));
    static_assert(exactDecimals == 3 * groupDigits + 3);
    number.multiply(group);
    number.multiply(group);
    number.multiply(group);
    number.multiply(1000);
    exponent -= mantissaBits;
    number.shiftLeft(exponent);
    number.shiftRight(-exponent);
    return number;
}

} // namespace

std::string exactDigits(double magnitude) {
    constexpr std::ptrdiff_t least = exactDecimals + 1;
    Natural number = scaled(magnitude);
    std::array<char, 400> digits{}; // from behind; the largest number has 339
    digits.fill('0');
    auto first = digits.end();
    while (!number.isZero()) {
        std::uint32_t part = number.divide(group);
        for (int i = 0; i < groupDigits; ++i, part /= 10) {
            *--first = static_cast<char>('0' + part % 10);
        }
    }
    first = std::min(std::find_if(first, digits.end(), [](char digit) { return digit != '0'; }),
                     digits.end() - least);
    return {first, digits.end()};
}

} // namespace tarvik
