#pragma once

#include "NetworkStandIn.h"

#include "linux/network/NetworkConnections.h"
#include "support/RasCalls.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace tarvik {

using Names = std::vector<std::string>;
using Settings = NetworkStandIn::Settings;

inline constexpr std::uint32_t activating = 1;
inline constexpr std::uint32_t activated = 2;
inline constexpr std::uint32_t deactivated = 4;

/// The program's network connections on a stand-in for NetworkManager.
template <class Service>
class NetworkUserTest : public testing::Test {
protected:
    /// The names of the entries; the code that the listing answered with is kept.
    Names entries() {
        std::vector<RASENTRYNAMEA> records(50);
        records.front().dwSize = 532;
        auto bytes = static_cast<std::uint32_t>(records.size() * sizeof records.front());
        std::uint32_t count = 0;
        code = connections.RasEnumEntriesA(nullptr, nullptr, records.data(), &bytes, &count);
        Names names;
        for (std::uint32_t i = 0; i < count; ++i) {
            names.emplace_back(records[i].szEntryName);
        }
        return names;
    }

    std::vector<RASCONNA> lines() {
        std::vector<RASCONNA> records(50);
        records.front().dwSize = 412;
        auto bytes = static_cast<std::uint32_t>(records.size() * sizeof records.front());
        std::uint32_t count = 0;
        code = connections.RasEnumConnectionsA(records.data(), &bytes, &count);
        records.resize(count);
        return records;
    }

    std::uint32_t dial(const std::string& name) { return dial(name, connections); }

    std::uint32_t dial(const std::string& name, NetworkConnections& by) {
        handle = 0;
        return dialEntry(by, name, handle);
    }

    std::uint32_t stateOf(std::uint32_t line) {
        RASCONNSTATUSA status{};
        status.dwSize = 160;
        code = connections.RasGetConnectStatusA(line, &status);
        return status.rasconnstate;
    }

    RAS_STATS statisticsOf(std::uint32_t line) {
        RAS_STATS statistics{};
        statistics.dwSize = 60;
        code = connections.RasGetConnectionStatistics(line, &statistics);
        return statistics;
    }

    void write(const std::string& interface, const std::string& name, std::uint64_t number) {
        const auto path = std::filesystem::path(folder.path()) / interface / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << number << '\n';
    }

    void makeInterface(const std::string& interface, std::uint64_t index, std::uint64_t received,
                       std::uint64_t sent) {
        write(interface, "ifindex", index);
        write(interface, "statistics/rx_bytes", received);
        write(interface, "statistics/tx_bytes", sent);
    }

    /// Asks again until the signals have arrived that make it so; false when they do not.
    static bool soon(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!condition() && std::chrono::steady_clock::now() < end) {
            std::this_thread::yield();
        }
        return condition();
    }

    TemporaryFolder folder;
    Service service;
    NetworkConnections connections{LinkReader(folder.path())};
    std::uint32_t code = 0;
    std::uint32_t handle = 0;
};

class NetworkServiceTest : public NetworkUserTest<NetworkStandIn> {
protected:
    /// A VPN that is up over a tunnel.
    std::string addVpn(const std::string& name) {
        const std::string wire = service.addDevice("eth0", "/ip/eth0");
        service.addDevice("tun0", "/ip/tun0");
        return service.addLine(service.addProfile(name, "vpn"), activated,
                               {sdbus::ObjectPath(wire)}, "/ip/tun0");
    }
};

} // namespace tarvik
