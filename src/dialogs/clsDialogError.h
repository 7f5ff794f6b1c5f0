#pragma once

#include <cstdint>
#include <string>

namespace tarvik {

/// How the last file dialog ended.
class clsDialogError {
public:
    /// The number of a dialog that the user cancelled.
    static constexpr std::uint32_t cancelled = 32755;

    /// 0 when a file was chosen.
    std::uint32_t Number() const { return number_; }
    const std::string& Description() const { return description_; }
    /// The procedure that met it.
    const std::string& Source() const { return source_; }

    void Raise(std::uint32_t Number, std::string Source, std::string Description);
    void Clear();

private:
    std::uint32_t number_ = 0;
    std::string description_;
    std::string source_;
};

} // namespace tarvik
