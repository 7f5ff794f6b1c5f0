#include "support/WorldTest.h"

#include "startup/mdlStartUp.h"

namespace tarvik {

WorldTest::WorldTest() {
    machine.desktop.fail = [](const std::string& what) { ADD_FAILURE() << what; };
}

WorldTest::~WorldTest() {
    machine.desktop.verify();
}

void WorldTest::expectBox(std::string text, MsgBoxButtons buttons, MsgBoxIcon icon,
                          MsgBoxAnswer answer, std::function<void()> meanwhile) {
    machine.desktop.expect({std::move(text), buttons, icon, answer, std::move(meanwhile)});
}

void WorldTest::expectError(const std::string& numberAndDescription, const std::string& procedure,
                            std::function<void()> meanwhile) {
    expectBox("Error " + numberAndDescription + "\roccured in function \"" + procedure +
                  "\".\rPlease contact the author for support.",
              MsgBoxButtons::OkOnly, MsgBoxIcon::Critical, MsgBoxAnswer::Ok, std::move(meanwhile));
}

void WorldTest::expectWarning(std::string text) {
    expectBox(std::move(text), MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
}

void WorldTest::expectFailure(std::string text) {
    expectBox(std::move(text), MsgBoxButtons::OkOnly, MsgBoxIcon::Critical);
}

void WorldTest::expectInstanceQuestion(MsgBoxAnswer answer, std::function<void()> meanwhile) {
    expectBox("Warning: Another instance of Velmars Tarvik seems to be running.\rAre you sure that "
              "you want to start another instance?\r(This could cause the protocol file to become "
              "corrupt!)",
              MsgBoxButtons::YesNo, MsgBoxIcon::Question, answer, std::move(meanwhile));
}

void WorldTest::expectFirstRunBoxes() {
    expectWarning("Warning: Unable to set \"IsLocked\"-flag in INI-file!");
    expectWarning("Warning: Old settings could not be loaded.\rAssuming first run.");
}

void WorldTest::expectSessionQuestion(const std::string& bytes, MsgBoxAnswer answer) {
    expectBox("Monitoring has been started and an active connection with transfer has been "
              "detected.\r\rIf you have already monitored this online-session with Tarvik "
              "then\rthis may result in an unwanted offset of the recorded transfer.\r\rDo you "
              "want to use (record) the this online-session (" +
                  bytes + " bytes)?\r(Press NO if you restarted Tarvik.)",
              MsgBoxButtons::YesNo, MsgBoxIcon::Question, answer);
}

void WorldTest::expectStopQuestion(MsgBoxAnswer answer) {
    expectBox("Warning: An active connection has been detected.\rIf monitoring is stopped the "
              "transfer of this connection\rwill no longer be recorded.\rPress OK to stop "
              "monitoring now.",
              MsgBoxButtons::OkCancel, MsgBoxIcon::Exclamation, answer);
}

void WorldTest::phoneBook(std::initializer_list<const char*> names) {
    for (const char* name : names) {
        machine.connections.entries.push_back({.name = name});
    }
}

void WorldTest::start(const std::string& commandLine) {
    machine.program.arguments = commandLine;
    Main();
}

void WorldTest::startQuietly(const std::string& commandLine) {
    if (machine.connections.entries.empty()) {
        phoneBook({"Harbour"});
    }
    if (!machine.files.exists(iniPath)) {
        setIni("[Settings]\r\n");
    }
    start(commandLine);
}

std::uint32_t WorldTest::dialledConnection(const std::string& entry) {
    state().DialInStarted = true;
    return line().connect(entry);
}

void WorldTest::setTotals(Currency sent, Currency rcvd, Currency duration) {
    state().BytesSentTotal = sent;
    state().BytesRcvdTotal = rcvd;
    state().DurationTotal = duration;
}

void WorldTest::newWorld() {
    world.reset();
    machine.instances.endProgram();
    world.emplace(machine.platform);
}

std::vector<std::string> WorldTest::notes() const {
    std::vector<std::string> shown;
    for (const auto& [request, data] : machine.notificationArea.requests) {
        if ((data.uFlags & NotificationArea::info) != 0) {
            shown.emplace_back(data.szInfo);
        }
    }
    return shown;
}

} // namespace tarvik
