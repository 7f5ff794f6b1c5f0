#include "contracts/FilesUnderTest.h"

#include "scripted/ScriptedFiles.h"

namespace tarvik {
namespace {

class ScriptedFilesUnderTest : public FilesUnderTest {
public:
    ScriptedFilesUnderTest() {
        files_.setKind(folder_, FileKind::Directory);
        files_.setKind("CON", FileKind::Other);
        files_.missingFolders = {folder_ + "\\none", folder_ + "\\Velmars Tarvik"};
    }

    Files& files() override { return files_; }
    Files& others() override { return files_; }
    Files& withHome(const std::string& home) override {
        files_.home = home;
        return files_;
    }

    const std::string& folder() const override { return folder_; }
    char separator() const override { return '\\'; }
    const char* lineEnd() const override { return "\r\n"; }
    std::vector<std::string> names() const override { return files_.namesIn(folder_); }
    std::string device() const override { return "CON"; }
    ErrorNumber missingFolder() const override { return ErrorNumber::PathNotFound; }

    void makeFolder(const std::string& path) override { files_.setKind(path, FileKind::Directory); }
    void makeReadOnly(const std::string& path) override { files_.setReadOnly(path); }
    void makePrivate(const std::string& path) override { files_.setPrivate(path); }
    bool isPrivate(const std::string& path) const override { return files_.isPrivate(path); }
    bool giveSecondName(const std::string& path, const std::string& name) override {
        files_.setFile(name, files_.file(path));
        files_.setTwoNames(path);
        files_.setTwoNames(name);
        return true;
    }
    void writeInPlace(const std::string& path, const std::string& bytes) override {
        files_.setFile(path, bytes);
    }

    std::string temporaryName() const override { return "new file"; }
    std::vector<std::string> similarNames() const override { return {"new", "new file 2"}; }
    std::shared_ptr<void> beginWriting(const std::string& path) override {
        files_.beginWriting(path);
        return {nullptr, [this, path](void*) { files_.breakOff(path); }};
    }

private:
    std::string folder_ = "C:\\Prog";
    ScriptedFiles files_;
};

} // namespace

std::unique_ptr<FilesUnderTest> filesUnderTest() {
    return std::make_unique<ScriptedFilesUnderTest>();
}

} // namespace tarvik
