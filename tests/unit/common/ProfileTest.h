#pragma once

#include "common/MemoryFiles.h"
#include "common/ProfileEngine.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace tarvik {

/// An engine over files in memory, with one file that the tests read and write.
class ProfileTest : public testing::Test {
protected:
    const std::string file = "/here/Tarvik.ini";
    MemoryFiles files;
    ProfileEngine engine{files, "\n"};

    void given(std::string bytes) { files.put(file, std::move(bytes)); }

    std::string bytes() const { return files.bytes(file); }

    /// The key's value; "none" when there is none.
    std::string value(std::string_view section, std::string_view key) {
        std::array<char, 4096> buffer{};
        const std::uint32_t count = engine.GetPrivateProfileStringA(
            section, key, "none", buffer.data(), static_cast<std::uint32_t>(buffer.size()), file);
        return {buffer.data(), count};
    }

    std::int32_t number(std::string_view key) {
        return engine.GetPrivateProfileIntA("s", key, -77, file);
    }

    bool write(std::string_view section, std::string_view key, std::string_view text) {
        return engine.WritePrivateProfileStringA(section, key, text, file);
    }

    bool writeSection(std::string_view section, std::string_view lines) {
        return engine.WritePrivateProfileSectionA(section, lines, file);
    }
};

} // namespace tarvik
