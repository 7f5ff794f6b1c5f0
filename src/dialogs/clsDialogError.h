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

    /// The code that the desktop gave for it, 0 when it gave none: a cancelled dialog has its own
    /// number, but no code.
    std::uint32_t LastDllError() const { return lastDllError_; }
    /// The topic of a help file that explains it; 0 for none, as the program has no help file.
    std::uint32_t HelpContext() const { return helpContext_; }

    void Raise(std::uint32_t Number, std::string Source, std::string Description,
               std::uint32_t LastDllError = 0, std::uint32_t HelpContext = 0);
    void Clear();

private:
    std::uint32_t number_ = 0;
    std::string description_;
    std::string source_;
    std::uint32_t lastDllError_ = 0;
    std::uint32_t helpContext_ = 0;
};

} // namespace tarvik
