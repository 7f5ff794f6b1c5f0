#include "contracts/FilesUnderTest.h"

#include "linux/services/LinuxFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <fstream>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvik {
namespace {

class LinuxFilesUnderTest : public FilesUnderTest {
public:
    LinuxFilesUnderTest() : mask_(umask(022)) {}
    ~LinuxFilesUnderTest() override { umask(mask_); }

    Files& files() override { return files_; }
    Files& others() override { return others_; }
    Files& withHome(const std::string& home) override { return withHome_.emplace(home); }

    const std::string& folder() const override { return folder_.path(); }
    char separator() const override { return '/'; }
    const char* lineEnd() const override { return "\n"; }
    std::vector<std::string> names() const override { return folder_.names(); }
    std::string device() const override { return "/dev/null"; }
    ErrorNumber missingFolder() const override { return ErrorNumber::FileNotFound; }

    void makeFolder(const std::string& path) override { EXPECT_EQ(mkdir(path.c_str(), 0755), 0); }
    void makeReadOnly(const std::string& path) override { EXPECT_EQ(chmod(path.c_str(), 0444), 0); }
    void makePrivate(const std::string& path) override { EXPECT_EQ(chmod(path.c_str(), 0600), 0); }
    bool isPrivate(const std::string& path) const override {
        struct stat info {};
        EXPECT_EQ(stat(path.c_str(), &info), 0) << path;
        return (info.st_mode & 07777U) == 0600U;
    }
    bool giveSecondName(const std::string& path, const std::string& name) override {
        return link(path.c_str(), name.c_str()) == 0;
    }
    void writeInPlace(const std::string& path, const std::string& bytes) override {
        std::ofstream(path, std::ios::binary) << bytes;
    }

    std::string temporaryName() const override { return ".tarvik-aB3xYz.tmp"; }
    std::vector<std::string> similarNames() const override {
        return {".tarvik-aB3xY.tmp", ".tarvik-aB3xYz.tmp2", ".tarvik-aB3x-z.tmp",
                "tarvik-aB3xYz.tmp"};
    }
    std::shared_ptr<void> beginWriting(const std::string& path) override {
        const int file = open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        EXPECT_EQ(flock(file, LOCK_EX), 0);
        return {nullptr, [file](void*) { close(file); }};
    }

private:
    TemporaryFolder folder_;
    LinuxFiles files_;
    LinuxFiles others_;
    std::optional<LinuxFiles> withHome_;
    mode_t mask_;
};

} // namespace

std::unique_ptr<FilesUnderTest> filesUnderTest() {
    return std::make_unique<LinuxFilesUnderTest>();
}

} // namespace tarvik
