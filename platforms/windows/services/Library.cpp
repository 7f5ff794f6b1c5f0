#include "windows/services/Library.h"

#include <array>

namespace tarvik {

namespace {

/// Those that an old system does not keep to its own folder by itself: of the windows' looks, the
/// file dialogs, the networks, the remote access service and the boxes of the shell.
constexpr std::array askedFor{
    "apphelp.dll",
    "bcrypt.dll",
    "bcryptprimitives.dll",
    "credssp.dll",
    "cryptbase.dll",
    "cryptsp.dll",
    "cscapi.dll",
    "cscdll.dll",
    "cscui.dll",
    "davhlpr.dll",
    "dhcpcsvc.dll",
    "dhcpcsvc6.dll",
    "dnsapi.dll",
    "drprov.dll",
    "duser.dll",
    "dui70.dll",
    "dwmapi.dll",
    "ehstorshell.dll",
    "explorerframe.dll",
    "fwpuclnt.dll",
    "gpapi.dll",
    "iphlpapi.dll",
    "linkinfo.dll",
    "mpr.dll",
    "msimg32.dll",
    "mswsock.dll",
    "napinsp.dll",
    "netapi32.dll",
    "netutils.dll",
    "nlaapi.dll",
    "ntlanman.dll",
    "ntmarta.dll",
    "ntshrui.dll",
    "oleacc.dll",
    "oleaccrc.dll",
    "pnrpnsp.dll",
    "profapi.dll",
    "propsys.dll",
    "rasadhlp.dll",
    "rasapi32.dll",
    "rasdlg.dll",
    "rasman.dll",
    "rpcrtremote.dll",
    "rsaenh.dll",
    "rtutils.dll",
    "samcli.dll",
    "samlib.dll",
    "secur32.dll",
    "sensapi.dll",
    "slc.dll",
    "srvcli.dll",
    "sspicli.dll",
    "structuredquery.dll",
    "sxs.dll",
    "tapi32.dll",
    "thumbcache.dll",
    "userenv.dll",
    "uxtheme.dll",
    "version.dll",
    "windowscodecs.dll",
    "winmm.dll",
    "winnsi.dll",
    "winrnr.dll",
    "winsta.dll",
    "wkscli.dll",
    "wship6.dll",
    "wshtcpip.dll",
    "wtsapi32.dll",
    "xmllite.dll",
};

/// What the library itself needs is looked for beside it, not beside the program.
HMODULE loadFromSystemFolder(const std::string& fileName) {
    return LoadLibraryExA((systemFolder() + "\\" + fileName).c_str(), nullptr,
                          LOAD_WITH_ALTERED_SEARCH_PATH);
}

} // namespace

std::string systemFolder() {
    char path[MAX_PATH];
    const UINT length = GetSystemDirectoryA(path, MAX_PATH);
    return length < MAX_PATH ? std::string(path, length) : std::string();
}

SystemLibrariesOnly::SystemLibrariesOnly() {
    using SetDirectories = BOOL WINAPI(DWORD);
    auto* const setDirectories = reinterpret_cast<SetDirectories*>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories")));
    if (setDirectories == nullptr || setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32) == FALSE) {
        // A system without that update can leave out the current folder at least.
        SetDllDirectoryA("");
        loadWhatTheSystemAsksForByName();
    }
}

std::span<const char* const> namesAskedFor() {
    return askedFor;
}

void loadWhatTheSystemAsksForByName() {
    for (const char* const name : namesAskedFor()) {
        loadFromSystemFolder(name);
    }
}

FARPROC Library::address(const char* name) {
    if (!tried_) {
        tried_ = true;
        module_ = loadFromSystemFolder(fileName_);
    }
    return module_ == nullptr ? nullptr : GetProcAddress(module_, name);
}

} // namespace tarvik
