#include "contracts/DialogsUnderTest.h"

#include "scripted/ScriptedServices.h"

namespace tarvik {
namespace {

class ScriptedDialogsUnderTest : public DialogsUnderTest {
public:
    CommonDialogs& dialogs() override { return dialogs_; }
    std::string path(const std::string& name) const override { return "C:\\Prog\\" + name; }
    void makeFile(const std::string&) override {}
    void cancelNext() override { dialogs_.chosen.clear(); }
    void chooseNext(const std::string& path, MsgBoxAnswer) override { dialogs_.chosen = path; }
    std::string title() const override { return dialogs_.title; }
    std::vector<std::string> questions() const override { return {}; }

private:
    ScriptedDialogs dialogs_;
};

} // namespace

std::unique_ptr<DialogsUnderTest> dialogsUnderTest() {
    return std::make_unique<ScriptedDialogsUnderTest>();
}

} // namespace tarvik
