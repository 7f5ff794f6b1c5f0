"""The built program on a real NetworkManager and a real VPN, in a world of their own. Run it inside
that world: scripts/nm-rig.sh run ..."""

import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time

from desktop import wait_for
from network.rig import MEGABYTES, SERVER, SOURCE, TRAFFIC, RigTest, kernel, nmcli, pump, tunnel
from support import EXECUTABLE, INSTANCE_QUESTION, STOP_QUESTION, keys_of, number

DAY_OF_TICKS = pathlib.Path(EXECUTABLE).with_name("day_of_ticks")
TICKS_OF_A_DAY = 24 * 60 * 60
READY = b"Initialization Sequence Completed"
DENIED = (
    "Error: RasDial failed with 691:\nAccess was denied because the user name or the password "
    "was not valid on the domain."
)
NOT_RUNNING = (
    "Error: RasEnumConnections failed with 711:\nThe remote access service cannot start."
)


def has_ended(process):
    try:
        return pathlib.Path("/proc/%d/stat" % process).read_text().rsplit(")", 1)[1].split()[0] == "Z"
    except FileNotFoundError:
        return True


class NetworkTest(RigTest):
    def wait_figures(self, program, received, sent):
        """The program's figures are those that the kernel has."""
        program.wait_text("txtBytesRcvd", lambda text: number(text) == received())
        program.wait_text("txtBytesSent", lambda text: number(text) == sent())

    def wait_kernel_figures(self, program):
        self.wait_figures(program, lambda: kernel("rx_bytes"), lambda: kernel("tx_bytes"))

    def wait_ticks(self, program, count=2):
        """The program has looked at its lines again: what was received is read."""
        for _ in range(count):
            shown = program.text("txtDurationCurrent")
            program.wait_text("txtDurationCurrent", lambda text, shown=shown: text != shown)

    def wait_ticks_offline(self, program):
        """Long enough for ten ticks; nothing tells of them."""
        time.sleep(1)
        program.text("txtBytesRcvdTotal")

    def totals(self, program):
        return (number(program.text("txtBytesRcvdTotal")), number(program.text("txtBytesSentTotal")))

    def test_a_session_is_counted_to_the_byte_that_the_kernel_counted(self):
        program = self.start_quietly()
        program.press("cmdMonitor")
        self.connect_vpn(program)
        pump("up", 50 * MEGABYTES)
        pump("down", 50 * MEGABYTES)

        self.wait_kernel_figures(program)
        received, sent = self.totals(program)
        self.assertGreater(received, 50 * MEGABYTES)
        self.assertGreater(sent, 50 * MEGABYTES)

        program.press("cmdDisconnect")
        program.wait_text("txtActiveConnection", "")
        program.wait_text("txtBytesRcvd", "0")
        total = self.totals(program)
        self.assertGreaterEqual(total[0], received)
        self.assertLess(total[0], received + 10_000)
        program.press("cmdMonitor")
        program.wait_text("lblMonitoring", "Monitoring: inactive")
        self.quit(program)
        text = self.read_ini()
        record = keys_of(text, keys_of(text, "Settings")["LastState"])
        self.assertEqual((int(record["Rcvd"]), int(record["Sent"])), total)

    def session_before_the_start(self, answer):
        begin = time.monotonic()
        nmcli("connection", "up", "testvpn")
        self.activated = (begin, time.monotonic())
        pump("down", 2 * MEGABYTES)
        program = self.start_quietly()
        program.press("cmdMonitor")
        self.assertIn("Do you want to use (record) the this online-session", program.box_text())
        before = kernel("rx_bytes")
        program.answer(answer)
        return program, before

    def test_a_session_before_the_start_is_counted_when_the_user_agrees(self):
        program, _ = self.session_before_the_start("Yes")
        self.wait_kernel_figures(program)
        self.assertGreater(number(program.text("txtBytesRcvdTotal")), 2 * MEGABYTES)
        hours, minutes, seconds, thousandths = map(
            int, program.text("txtDurationCurrent").split(":"))
        now = time.monotonic()
        lasted = (hours * 60 + minutes) * 60 + seconds + thousandths / 1000
        # The kernel stamps addresses in a time that is some tenths of a second behind the clock's.
        self.assertLess(lasted, now - self.activated[0] + 1)
        # As much less as passed since the last tick.
        self.assertGreater(lasted, now - self.activated[1] - 2)

    def test_a_session_before_the_start_is_left_out_when_the_user_declines(self):
        program, before = self.session_before_the_start("No")
        pump("down", MEGABYTES)
        program.wait_text("txtBytesRcvd", lambda text: number(text) > MEGABYTES)
        wait_for("the kernel's figure",
                 lambda: abs(number(program.text("txtBytesRcvd")) - (kernel("rx_bytes") - before))
                 < 5_000)

    def killed_within_a_session(self):
        """A program that has counted a session; what it last showed, and the kill."""
        program = self.start_quietly("/r")
        self.connect_vpn(program)
        pump("down", 2 * MEGABYTES)
        self.wait_kernel_figures(program)
        time.sleep(6)  # longer than what was counted may be kept in memory
        shown = self.totals(program)
        program.end(signal.SIGKILL)
        return shown

    def test_a_session_outlives_three_kills_to_the_byte_that_the_kernel_counted(self):
        self.killed_within_a_session()
        for _ in range(3):
            source = subprocess.Popen(
                [sys.executable, str(TRAFFIC), "down", SERVER, SOURCE, str(20 * MEGABYTES), "0"],
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            program = self.start_after_kill("/r")
            source.wait()
            counted = (kernel("rx_bytes"), kernel("tx_bytes"))
            self.wait_kernel_figures(program)
            self.assertGreaterEqual(self.totals(program), counted)
            # Nobody but the session has counted: the totals are what the kernel says.
            self.wait_figures(program, lambda: number(program.text("txtBytesRcvdTotal")),
                              lambda: number(program.text("txtBytesSentTotal")))
            program.end(signal.SIGKILL)
        program = self.start_after_kill("/r")
        self.wait_kernel_figures(program)
        program.press("cmdDisconnect")
        program.wait_text("txtBytesRcvd", "0")
        self.assertGreater(self.totals(program)[0], 62 * MEGABYTES)
        self.assertLess(self.totals(program)[0], 68 * MEGABYTES)
        self.end_and_find_only_the_ini_file(program)

    def test_a_session_that_is_hung_up_while_the_program_is_killed_is_kept_as_it_was(self):
        shown = self.killed_within_a_session()
        self.hang_up_all()
        program = self.start_after_kill("/r")
        # As it was written last: five seconds before the kill at most.
        received, sent = self.totals(program)
        self.assertLessEqual(received, shown[0] + 10_000)
        self.assertGreater(received, 2 * MEGABYTES)
        self.wait_ticks_offline(program)
        self.assertEqual(self.totals(program), (received, sent))
        self.end_and_find_only_the_ini_file(program)

    def test_another_session_that_is_up_after_a_kill_is_asked_about(self):
        shown = self.killed_within_a_session()
        self.hang_up_all()
        nmcli("connection", "up", "testvpn")
        pump("down", MEGABYTES)
        program = self.start("/r")
        program.expect_box(INSTANCE_QUESTION, "Yes")
        self.assertIn("Do you want to use (record) the this online-session", program.box_text())
        program.answer("No")
        program.wait_text("txtActiveConnection", lambda text: text.startswith("vpn: testvpn"))
        received = self.totals(program)[0]
        self.assertGreater(received, 2 * MEGABYTES)  # what the session that was killed had counted
        self.assertLess(received, shown[0] + MEGABYTES // 2)
        self.end_and_find_only_the_ini_file(program)

    def test_a_line_that_is_being_made_beside_another_adds_nothing(self):
        program = self.start_quietly()
        program.press("cmdMonitor")
        self.connect_vpn(program)
        pump("down", 2 * MEGABYTES)
        self.wait_kernel_figures(program)
        # Waits for a server that is not there, while the program goes on ticking.
        waiting = subprocess.Popen(["nmcli", "connection", "up", "unreachable"],
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for("the second line's beginning", lambda: "unreachable:activating" in nmcli(
            "-t", "-f", "NAME,STATE", "connection", "show", "--active"))
        pump("down", MEGABYTES)
        self.wait_kernel_figures(program)
        self.assertIsNone(waiting.poll())
        total = lambda text: number(text) == kernel("rx_bytes")  # noqa: E731
        program.wait_text("txtBytesRcvdTotal", total)
        waiting.wait()
        program.wait_text("txtBytesRcvdTotal", total)

    def test_two_lines_side_by_side_are_both_kept(self):
        program = self.start_quietly()
        program.press("cmdMonitor")
        self.connect_vpn(program)
        pump("down", 2 * MEGABYTES)
        self.wait_kernel_figures(program)
        first = kernel("rx_bytes")
        nmcli("connection", "up", "testvpn2")
        pump("down", MEGABYTES, "10.8.2.1")
        self.wait_ticks(program)
        self.hang_up_all()
        program.wait_text("txtActiveConnection", "")
        received = number(program.text("txtBytesRcvdTotal"))
        self.assertGreater(received, first + MEGABYTES)
        self.assertLess(received, first + MEGABYTES + 200_000)

    def test_a_wrong_password_is_told(self):
        program = self.start_quietly()
        self.dial(program, "badpass")
        program.expect_box(DENIED, "OK")

    def test_a_server_that_does_not_answer_is_told(self):
        program = self.start_quietly()
        self.dial(program, "unreachable")
        program.expect_box("Error: RasDial failed with 678:\nThere was no answer.", "OK")

    def test_a_session_that_the_other_side_ends_is_kept(self):
        program = self.start_quietly()
        program.press("cmdMonitor")
        self.connect_vpn(program)
        pump("down", MEGABYTES)
        program.wait_text("txtBytesRcvd", lambda text: number(text) > MEGABYTES)
        received = number(program.text("txtBytesRcvd"))
        try:
            subprocess.run(["ip", "-n", "server", "link", "set", "peer0", "down"], check=True)
            program.wait_text("txtActiveConnection", "")
        finally:
            subprocess.run(["ip", "-n", "server", "link", "set", "peer0", "up"], check=True)
        self.assertGreaterEqual(number(program.text("txtBytesRcvdTotal")), received)
        wait_for("the wire", lambda: "wire:" in nmcli("-t", "-f", "NAME,STATE", "connection",
                                                      "show", "--active"))

    def restart_server(self, addresses):
        """The server comes back with other addresses: its clients make their tunnels anew."""
        state = pathlib.Path(os.environ["RIG_STATE"])
        log = state / "log" / "server1"
        former = int((state / "server1.pid").read_text())
        os.kill(former, signal.SIGKILL)
        # Until it is gone it has the port, and the next one would end at once.
        wait_for("the server's end", lambda: has_ended(former))
        before = log.stat().st_size
        configuration = (state / "server1.conf").read_text()
        other = state / "server1.other"
        other.write_text(configuration.replace("server 10.8.1.0", "server " + addresses))
        subprocess.run(
            ["ip", "netns", "exec", "server", "openvpn", "--config", str(other), "--daemon",
             "--log-append", str(log), "--writepid", str(state / "server1.pid")], check=True)
        wait_for("the server", lambda: READY in log.read_bytes()[before:])

    def index(self):
        try:
            return int((tunnel() / "ifindex").read_text()) if tunnel() else 0
        except FileNotFoundError:
            return 0

    def test_a_tunnel_made_anew_within_a_session_is_counted_on(self):
        program = self.start_quietly()
        program.press("cmdMonitor")
        self.connect_vpn(program)
        pump("down", 2 * MEGABYTES)
        self.wait_kernel_figures(program)
        first = self.index()
        received, sent = kernel("rx_bytes"), kernel("tx_bytes")

        def made_anew():
            # What the system itself sends through a tunnel goes on until that tunnel's end.
            nonlocal received, sent
            last = kernel("rx_bytes"), kernel("tx_bytes")
            if self.index() == first:
                received, sent = last
            return self.index() not in (0, first)

        try:
            self.restart_server("10.8.9.0")
            wait_for("another tunnel", made_anew, 30)
            # NetworkManager leaves the new one as it is; what set it up would do this.
            subprocess.run(["ip", "address", "add", "10.8.9.2/24", "dev", tunnel().name], check=True)
            subprocess.run(["ip", "link", "set", tunnel().name, "up"], check=True)
            wait_for("the other side", lambda: pump("down", 3 * MEGABYTES, "10.8.9.1", False) == 0)

            self.assertLess(kernel("rx_bytes"), received + 3 * MEGABYTES)
            self.wait_figures(program, lambda: received + kernel("rx_bytes"),
                              lambda: sent + kernel("tx_bytes"))
            self.assertTrue(program.text("txtActiveConnection").startswith("vpn: testvpn"))
        finally:
            self.hang_up_all()
            self.restart_server("10.8.1.0")
        program.wait_text("txtActiveConnection", "")
        self.assertGreater(number(program.text("txtBytesRcvdTotal")), 5 * MEGABYTES)

    def test_a_service_that_does_not_answer_holds_the_window_up_for_two_seconds_at_most(self):
        program = self.start_quietly()
        program.press("cmdMonitor")
        self.connect_vpn(program)
        subprocess.run(["pkill", "-STOP", "-x", "NetworkManager"], check=True)
        try:
            pump("down", MEGABYTES)
            # What the kernel counts is counted all the same.
            self.wait_kernel_figures(program)
            begin = time.monotonic()
            program.press("cmdDisconnect")
            program.expect_box(
                "Error: RasHangUp failed with 638:\nThe request has timed out.", "OK")
            # Two seconds, and what reading the window from outside takes.
            self.assertLess(time.monotonic() - begin, 8)
            program.expect_box(STOP_QUESTION, "OK")
            program.wait_text("lblMonitoring", "Monitoring: inactive")
        finally:
            subprocess.run(["pkill", "-CONT", "-x", "NetworkManager"], check=True)
        wait_for("the tunnel's end", lambda: tunnel() is None, 30)

    def test_a_day_of_ticks_takes_neither_memory_nor_descriptors(self):
        self.write_ini("[Settings]\nIsLocked=0\nStartUpRunMonitoring=1\n")
        nmcli("connection", "up", "testvpn")
        self.executable = pathlib.Path(shutil.copy(DAY_OF_TICKS, self.folder / "day_of_ticks"))
        program = self.start(str(TICKS_OF_A_DAY))
        self.assertIn("Do you want to use (record) the this online-session", program.box_text())
        program.answer("Yes")
        received = 0
        while program.running():
            pump("down", MEGABYTES)
            received += MEGABYTES
        figures = {words[0]: words[1:] for words in map(str.split, program.written().splitlines())}
        (memory_before, files_before), (memory_after, files_after) = (
            map(int, figures[when]) for when in ("before", "after"))
        print("\n%d ticks: %d to %d KB, %d to %d descriptors, %d MB received" % (
            TICKS_OF_A_DAY, memory_before, memory_after, files_before, files_after,
            received // MEGABYTES))
        self.assertEqual(files_after, files_before)
        self.assertLess(memory_after - memory_before, 512)
        self.assertGreater(int(figures["received"][0]), received - 2 * MEGABYTES)

    def stop_network_manager(self):
        subprocess.run(["pkill", "-KILL", "-x", "NetworkManager"], check=True)

    def start_network_manager(self):
        subprocess.run(["sh", "-c", 'setsid NetworkManager --debug </dev/null >>"$0" 2>&1 &',
                        os.environ["RIG_STATE"] + "/log/nm"], check=True)
        subprocess.run(["nm-online", "-q", "-s", "-t", "20"], check=True)

    def test_a_service_that_stops_within_a_session_is_told_and_comes_back(self):
        program = self.start_quietly()
        program.press("cmdMonitor")
        self.connect_vpn(program)
        pump("down", MEGABYTES)
        self.wait_kernel_figures(program)
        received = number(program.text("txtBytesRcvd"))
        self.stop_network_manager()
        try:
            # Told twice, by the enumeration and by the tick: two boxes of one text.
            self.assertEqual(program.box_text(), NOT_RUNNING)
            for _ in range(2):
                program.key("Return")
                time.sleep(0.5)
            program.wait_text("lblMonitoring", "Monitoring: inactive")
        finally:
            self.start_network_manager()
        self.assertEqual(number(program.text("txtBytesRcvd")), received)
        program.press("cmdMonitor")
        self.connect_vpn(program)

    def test_without_the_service_the_program_runs_on_and_finds_it_later(self):
        self.stop_network_manager()
        try:
            program = self.start()
            program.expect_box(NOT_RUNNING, "OK")
            self.assertIn("Enumerating RAS connections failed.", program.box_text())
            program.answer("Cancel")
            program.find("cmdQuit")
        finally:
            self.start_network_manager()
        program.press("cmdMonitor")
        program.wait_text("lblMonitoring", "Monitoring: active")
        self.connect_vpn(program)

    def test_stopping_within_a_session_asks(self):
        program = self.start_quietly()
        program.press("cmdMonitor")
        self.connect_vpn(program)
        program.press("cmdMonitor")
        program.expect_box(STOP_QUESTION, "OK")
        time.sleep(0.2)
        self.quit(program)
