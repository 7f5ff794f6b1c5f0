#pragma once

#include "support/WorldTest.h"
#include "wiring/World.h"

#include <cstdint>
#include <optional>

namespace tarvik {

/// What every fault raises.
[[noreturn]] inline void fault() {
    raise(ErrorNumber::PermissionDenied);
}

class FaultyConnections : public ScriptedConnections {
public:
    std::uint32_t RasEnumEntriesA(const char*, const char*, void*, std::uint32_t*,
                                  std::uint32_t*) override {
        fault();
    }
    std::uint32_t RasEnumConnectionsA(RASCONNA*, std::uint32_t*, std::uint32_t*) override {
        fault();
    }
    std::uint32_t RasGetEntryDialParamsA(const char*, RASDIALPARAMSA*, bool*) override { fault(); }
    std::uint32_t RasGetErrorStringA(std::uint32_t, char*, std::uint32_t) override { fault(); }
};

class FaultyInternet : public ScriptedInternetState {
public:
    bool InternetGetConnectedState(std::uint32_t*, std::uint32_t) override { fault(); }
};

class FaultySockets : public ScriptedSockets {
public:
    int WSAStartup(std::uint16_t, WSADATA*) override { fault(); }
    int WSACleanup() override { fault(); }
};

class FaultyArea : public ScriptedNotificationArea {
public:
    bool Shell_NotifyIconA(std::uint32_t, NOTIFYICONDATAA*) override { fault(); }
    std::uint32_t GetVersion() override { fault(); }
};

class FaultyDialogs : public ScriptedDialogs {
public:
    bool GetOpenFileNameA(OPENFILENAMEA*, const DialogPlacement&) override { fault(); }
};

class NoConventions : public ScriptedLocale {
public:
    const LocaleData& data() override { fault(); }
};

/// A window or a control whose widget cannot be changed.
class FaultyView : public FormView, public ControlView {
public:
    void refreshVisibility() override { fault(); }
    void bringToFront() override { fault(); }
    void focusOn(Control&) override { fault(); }
    void refresh(Property) override { fault(); }
    std::uint32_t handle() const override { return 0; }
};

/// The program has started, and a case breaks what it likes.
class Faults {
public:
    Faults(ScriptedPlatform& machine, World& world) : forms(world.forms), state(world.state) {
        const Platform& whole = machine.platform;
        broken_.emplace(Platform{connections_, whole.systemErrors, internet_, sockets_,
                                 whole.profile, whole.files, whole.instances, area_, dialogs_,
                                 whole.desktop, whole.clock, whole.locale, whole.program});
        noLocale_.emplace(Platform{whole.connections, whole.systemErrors, whole.internet,
                                   whole.sockets, whole.profile, whole.files, whole.instances,
                                   whole.notificationArea, whole.dialogs, whole.desktop,
                                   whole.clock, locale_, whole.program});
    }

    Forms& forms;
    State& state;

    /// The line, the sockets, the Internet's state, the notification area and the file dialogs
    /// fail at every call from here on.
    void breakServices() { scope_.emplace(*broken_); }
    void breakLocale() { scope_.emplace(*noLocale_); }
    void breakView(Control& control) { control.attach(&view_); }
    void breakView(Form& form) { form.attach(&view_); }

private:
    FaultyConnections connections_;
    FaultyInternet internet_;
    FaultySockets sockets_;
    FaultyArea area_;
    FaultyDialogs dialogs_;
    NoConventions locale_;
    FaultyView view_;
    std::optional<Platform> broken_;
    std::optional<Platform> noLocale_;
    std::optional<PlatformScope> scope_;
};

} // namespace tarvik
