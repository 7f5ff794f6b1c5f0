#include "connection/mdlObtainIP.h"

#include "ports/Platform.h"
#include "ports/Sockets.h"
#include "state/mdlTools.h"
#include "types/Text.h"

#include <array>

namespace tarvik {

namespace {

constexpr std::uint16_t versionRequested = 0x0101;
constexpr Long majorNeeded = 1;
constexpr Long minorNeeded = 1;
constexpr int socketsNeeded = 1;
constexpr int failed = -1;

bool notice(const std::string& text) {
    MsgBox(text, MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
    return false;
}

bool offersEnough(const WSADATA& data) {
    const auto version = static_cast<std::int16_t>(data.wVersion);
    const Long major = LoByte(version);
    const Long minor = HiByte(version);
    if (major < majorNeeded || (major == majorNeeded && minor < minorNeeded)) {
        return notice("Windows Sockets version " + std::to_string(major.value()) + "." +
                      std::to_string(minor.value()) + " is not supported by winsock.dll");
    }
    if (data.iMaxSockets < socketsNeeded) {
        return notice("This application requires a minimum of 1 supported sockets.");
    }
    return true;
}

/// The bytes of an address as decimal numbers.
std::string addressText(const HOSTENT& host, const std::string& address) {
    std::string text;
    for (std::size_t i = 0; i < host.h_length && i < address.size(); ++i) {
        text += i == 0 ? "" : ".";
        text += std::to_string(static_cast<unsigned char>(address[i]));
    }
    return text;
}

std::string addressesText(const HOSTENT& host) {
    std::string text;
    for (const std::string& address : host.h_addr_list) {
        text += text.empty() ? "" : ";";
        text += addressText(host, address);
    }
    return text;
}

void obtain(std::string& hostName, std::string& addresses) {
    Sockets& sockets = platform().sockets;
    std::array<char, 256> buffer{};
    if (sockets.gethostname(buffer.data(), static_cast<int>(buffer.size())) == failed) {
        notice("Windows sockets error " + std::to_string(sockets.WSAGetLastError()));
        return;
    }
    const std::string name(trimSpaces({buffer.data(), buffer.size()}));
    HOSTENT host;
    if (!sockets.gethostbyname(name.c_str(), &host)) {
        notice("Winsock.dll is not responding.");
        return;
    }
    hostName = host.h_name.substr(0, host.h_name.find('\0'));
    addresses = addressesText(host);
}

} // namespace

Long HiByte(std::int16_t Word) {
    return guarded("HiByte", Long(0), [&](Long& result) { result = (Word / 256) & 255; });
}

Long LoByte(std::int16_t Word) {
    return guarded("LoByte", Long(0), [&](Long& result) { result = Word & 255; });
}

bool SocketsInitialize() {
    return guarded("SocketsInitialize", false, [](bool& result) {
        WSADATA data{};
        if (platform().sockets.WSAStartup(versionRequested, &data) != 0) {
            notice("Winsock.dll is not responding.");
            return;
        }
        result = offersEnough(data);
    });
}

bool SocketsCleanup() {
    return guarded("SocketsCleanup", false, [](bool& result) {
        const int error = platform().sockets.WSACleanup();
        if (error != 0) {
            MsgBox("Socket error " + std::to_string(error) + " occurred in Cleanup.",
                   MsgBoxButtons::OkOnly, MsgBoxIcon::None);
        }
        result = error == 0;
    });
}

std::string ObtainIP(std::string& HostName) {
    return guarded("ObtainIP", std::string(), [&](std::string& result) {
        HostName.clear();
        if (SocketsInitialize()) {
            obtain(HostName, result);
            SocketsCleanup();
        }
    });
}

} // namespace tarvik
