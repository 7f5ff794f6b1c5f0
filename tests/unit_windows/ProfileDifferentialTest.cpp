#include "ProfileChance.h"
#include "common/ProfileEngine.h"
#include "support/FileBytes.h"
#include "support/TemporaryFolder.h"
#include "windows/services/FileHandle.h"
#include "windows/services/WindowsCodePage.h"
#include "windows/services/WindowsFiles.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

void put(const std::string& path, const std::vector<std::string_view>& pieces) {
    const FileHandle file(CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    for (const std::string_view piece : pieces) {
        ASSERT_TRUE(writeAll(file, piece));
    }
}

/// Files that are written without waiting for the disk, which thousands of them would make long.
class QuickFiles : public WindowsFiles {
public:
    FileResult replaceIf(const std::string& path, const std::vector<std::string_view>& pieces,
                         const LastLook&) override {
        std::string text;
        for (const std::string_view piece : pieces) {
            text += piece;
        }
        put(path, {text}); // the pieces may be parts of the old text
        return std::nullopt;
    }
};

/// The program's engine and the system's own functions, each on a file of its own that began with
/// the same bytes.
class ProfileDifferentialTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string ours = folder.path() + "\\ours.ini";
    std::string theirs = folder.path() + "\\theirs.ini";
    QuickFiles files;
    ProfileEngine engine{files, "\r\n", windowsCodePage()};
    ProfileChance chance;

    /// What reading a text gives: its count and the whole buffer.
    std::string engineText(const std::string& path, const ProfileRead& read) {
        std::string buffer(read.size, '\xCC');
        const auto count =
            engine.GetPrivateProfileStringA(read.section, read.key, read.fallback, buffer.data(),
                                            static_cast<std::uint32_t>(buffer.size()), path);
        return std::to_string(count) + ":" + std::string(buffer.c_str());
    }
    static std::string systemText(const std::string& path, const ProfileRead& read) {
        std::string buffer(read.size, '\xCC');
        const DWORD count = ::GetPrivateProfileStringA(
            read.section.c_str(), read.key.c_str(), read.fallback.c_str(), buffer.data(),
            static_cast<DWORD>(buffer.size()), path.c_str());
        return std::to_string(count) + ":" + std::string(buffer.c_str());
    }

    std::int32_t engineNumber(const std::string& path, const ProfileRead& read) {
        return engine.GetPrivateProfileIntA(read.section, read.key, -1, path);
    }
    static std::int32_t systemNumber(const std::string& path, const ProfileRead& read) {
        return static_cast<std::int32_t>(
            ::GetPrivateProfileIntA(read.section.c_str(), read.key.c_str(), -1, path.c_str()));
    }

    /// Forgets what the system keeps of a file in memory.
    static void flush(const std::string& path) {
        ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, path.c_str());
    }

    /// What both files hold, for whoever is told of a difference.
    std::string bothFiles() const { return contentOf(ours) + "\n-- theirs\n" + contentOf(theirs); }

    void compareRead(const ProfileRead& read) {
        const std::string key = "[" + read.section + "]" + read.key + "\n";
        ASSERT_EQ(engineText(ours, read), systemText(theirs, read)) << key << bothFiles();
        ASSERT_EQ(engineNumber(ours, read), systemNumber(theirs, read)) << key << bothFiles();
    }

    void compareSomeReads() {
        for (int i = 0; i < 4; ++i) {
            ASSERT_NO_FATAL_FAILURE(compareRead(chance.read()));
        }
    }

    void writeKey(const ProfileWrite& write) {
        const bool done =
            engine.WritePrivateProfileStringA(write.section, write.key, write.value, ours);
        const bool systemDone =
            ::WritePrivateProfileStringA(write.section.c_str(), write.key.c_str(),
                                         write.value.c_str(), theirs.c_str()) != FALSE;
        ASSERT_EQ(done, systemDone);
    }

    void writeSection(const ProfileWrite& write) {
        const std::string lines = write.lines();
        const bool done = engine.WritePrivateProfileSectionA(write.section, lines, ours);
        const bool systemDone = ::WritePrivateProfileSectionA(write.section.c_str(), lines.data(),
                                                              theirs.c_str()) != FALSE;
        ASSERT_EQ(done, systemDone);
    }

    /// A few writes to both files, each followed by a look.
    void compareSomeWrites() {
        for (int i = 0; i < 5; ++i) {
            if (chance.oneIn(4)) {
                ASSERT_NO_FATAL_FAILURE(writeSection(chance.sectionWrite()));
            } else {
                ASSERT_NO_FATAL_FAILURE(writeKey(chance.keyWrite()));
            }
            ASSERT_NO_FATAL_FAILURE(compareRead(chance.read()));
        }
    }

    /// A dozen keys of either file, by either side.
    void compareCrosswise() {
        flush(ours);
        flush(theirs);
        for (int i = 0; i < 12; ++i) {
            const ProfileRead read = chance.read();
            const std::string text = engineText(ours, read);
            ASSERT_EQ(systemText(theirs, read), text) << read.section << "/" << read.key;
            ASSERT_EQ(systemText(ours, read), text) << read.section << "/" << read.key;
            ASSERT_EQ(engineText(theirs, read), text) << read.section << "/" << read.key;
        }
    }

    void begin() { beginWith(chance.file()); }

    void beginWith(const std::string& text) {
        put(ours, {text});
        put(theirs, {text});
        flush(theirs);
    }
};

/// The same on files of two bytes a character, with either byte first.
class WideProfileDifferentialTest : public ProfileDifferentialTest,
                                    public testing::WithParamInterface<bool> {
protected:
    /// Characters that no code page of one byte a character has beside each other.
    const std::wstring foreign = L"\x4E2D\x0416=\x6587 \x05D0\r\n";

    std::string bytesOf(const std::wstring& units) const {
        std::string bytes;
        for (const wchar_t unit : units) {
            const auto low = static_cast<char>(unit & 0xFF);
            const auto high = static_cast<char>(unit >> 8);
            bytes += GetParam() ? low : high;
            bytes += GetParam() ? high : low;
        }
        return bytes;
    }

    /// Both files begin with lines that only this form can hold.
    void beginWide() {
        const std::string text = chance.file();
        std::wstring units(text.size(), L'\0');
        const auto length = static_cast<int>(text.size());
        MultiByteToWideChar(CP_ACP, 0, text.data(), length, units.data(), length);
        beginWith(bytesOf(L"\xFEFF[\x4E2D]\r\n" + foreign + L"[a]\r\nSent=\x4E2D 5\r\n" + units));
    }

    void expectForeignLinesKept() {
        for (const std::string& path : {ours, theirs}) {
            const std::string content = contentOf(path);
            ASSERT_EQ(content.substr(0, 2), bytesOf(L"\xFEFF")) << path;
            ASSERT_NE(content.find(bytesOf(foreign)), std::string::npos) << path;
        }
    }
};

TEST_P(WideProfileDifferentialTest, EveryReadOfRandomFilesGivesTheSame) {
    for (int round = 0; round < 300; ++round) {
        ASSERT_NO_FATAL_FAILURE(beginWide());
        ASSERT_NO_FATAL_FAILURE(
            compareRead({.section = "a", .key = "Sent", .fallback = "", .size = 128}));
        ASSERT_NO_FATAL_FAILURE(compareSomeReads()) << "round " << round;
    }
}

TEST_P(WideProfileDifferentialTest, RandomWritesLeaveFilesOfTheirFormThatReadTheSameToBoth) {
    for (int round = 0; round < 150; ++round) {
        ASSERT_NO_FATAL_FAILURE(beginWide());
        ASSERT_NO_FATAL_FAILURE(compareSomeWrites()) << "round " << round;
        ASSERT_NO_FATAL_FAILURE(compareCrosswise()) << "round " << round;
        ASSERT_NO_FATAL_FAILURE(expectForeignLinesKept()) << "round " << round;
    }
}

INSTANTIATE_TEST_SUITE_P(Each, WideProfileDifferentialTest, testing::Bool(), [](const auto& given) {
    return given.param ? "LowByteFirst" : "HighByteFirst";
});

TEST_F(ProfileDifferentialTest, EveryReadOfRandomFilesGivesTheSame) {
    for (int round = 0; round < 1000; ++round) {
        ASSERT_NO_FATAL_FAILURE(begin());
        ASSERT_NO_FATAL_FAILURE(compareSomeReads()) << "round " << round;
    }
}

TEST_F(ProfileDifferentialTest, ABufferThatIsTooSmallIsFilledTheSame) {
    ASSERT_NO_FATAL_FAILURE(beginWith("[a]\r\nx=some text\r\n"));
    for (std::size_t size = 1; size < 12; ++size) {
        for (const char* key : {"x", "missing"}) {
            ASSERT_NO_FATAL_FAILURE(
                compareRead({.section = "a", .key = key, .fallback = "fallback", .size = size}))
                << size;
        }
    }
}

TEST_F(ProfileDifferentialTest, RandomWritesLeaveFilesThatReadTheSameToBoth) {
    for (int round = 0; round < 400; ++round) {
        ASSERT_NO_FATAL_FAILURE(begin());
        ASSERT_NO_FATAL_FAILURE(compareSomeWrites()) << "round " << round;
        ASSERT_NO_FATAL_FAILURE(compareCrosswise()) << "round " << round << "\n" << bothFiles();
    }
}

} // namespace
} // namespace tarvik
