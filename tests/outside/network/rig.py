"""What the tests on a real NetworkManager and a real VPN share. They run in the world that scripts/nm-rig.sh
makes."""

import pathlib
import subprocess
import sys
import time

from desktop import NoEntry, wait_for
from support import ROOT, ProgramTest

TRAFFIC = ROOT / "scripts/tunnel_traffic.py"
SERVER, SINK, SOURCE = "10.8.1.1", "5001", "5002"
MEGABYTES = 1_000_000


def nmcli(*arguments):
    return subprocess.run(["nmcli", *arguments], check=True, capture_output=True, text=True).stdout


def answers_at_once():
    """Well within the two seconds that the program gives NetworkManager: what was tested before may
    keep it, or the machine, busy for a while."""
    begin = time.monotonic()
    nmcli("-t", "-f", "STATE", "general")
    return time.monotonic() - begin < 0.5


def pump(way, amount, server=SERVER, check=True):
    port = SINK if way == "up" else SOURCE
    return subprocess.run([sys.executable, str(TRAFFIC), way, server, port, str(amount), "0"],
                          check=check, capture_output=True).returncode


def tunnel():
    """The interface of the VPN."""
    return next((path for path in pathlib.Path("/sys/class/net").iterdir()
                 if path.name.startswith("tun")), None)


def kernel(counter):
    return int((tunnel() / "statistics" / counter).read_text())


class RigTest(ProgramTest):
    """No VPN is up before a test or after it."""

    def setUp(self):
        super().setUp()
        self.write_ini("[Settings]\nRefreshInterval=100\n")
        self.hang_up_all()
        wait_for("NetworkManager's answer without delay", answers_at_once)

    def tearDown(self):
        super().tearDown()
        self.hang_up_all()

    def hang_up_all(self):
        for line in nmcli("-t", "-f", "UUID,TYPE", "connection", "show", "--active").splitlines():
            uuid, kind = line.split(":")
            if kind == "vpn":
                subprocess.run(["nmcli", "connection", "down", uuid], check=False,
                               capture_output=True)
        wait_for("the tunnel's end", lambda: tunnel() is None)

    def dial(self, program, entry):
        wait_for("the entry", lambda: self.chosen(program, entry))
        program.press("cmdConnect")

    @staticmethod
    def chosen(program, entry):
        """Not where NetworkManager, on a busy machine, still has to tell what that entry is."""
        try:
            program.choose("cboConnections", entry)
            return True
        except NoEntry:
            program.key("Escape")
            return False

    def connect_vpn(self, program):
        self.dial(program, "testvpn")
        program.wait_text("txtActiveConnection", lambda text: text.startswith("vpn: testvpn"))
