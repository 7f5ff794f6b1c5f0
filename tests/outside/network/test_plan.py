"""A plan on a real VPN with real traffic: it counts what the kernel counted, tells it in notes of a real
notification service, and hangs up."""

from desktop import wait_for
from network.rig import MEGABYTES, RigTest, kernel, pump, tunnel
from plans import PlanUser, used_in
from support import number


class PlanOnVpnTest(PlanUser, RigTest):
    allowance = "20 MB"

    def connect_with_plan(self, *thresholds, **options):
        self.desktop.forget_notes()
        program = self.start_with_plan(*thresholds, **options)
        program.press("cmdMonitor")
        self.connect_vpn(program)
        return program

    def all_bytes(self, program):
        return tuple(number(program.text(name)) for name in ("txtBytesRcvdTotal", "txtBytesSentTotal"))

    def test_a_threshold_is_told_and_the_next_hangs_up(self):
        program = self.connect_with_plan("50 note", "80 hangup")
        pump("down", 8 * MEGABYTES)
        program.wait_text("lblPlan", lambda text: text and 8 <= used_in(text) < 10)
        self.assertEqual(self.desktop.notes(), [])

        pump("up", 3 * MEGABYTES)

        self.desktop.wait_for_note()
        said, figures = self.desktop.notes()[0][1].split("\n")
        self.assertEqual(said, "Home: 50 % is used.")
        self.assertRegex(figures, r"^[\d.]+ of 20 MB · ")
        self.assertTrue(10 <= used_in(figures) < 16, figures)
        self.assertIsNotNone(tunnel())
        pump("down", 60 * MEGABYTES, check=False)  # it does not come through
        wait_for("the end of the line", lambda: tunnel() is None)
        program.wait_text("txtActiveConnection", "")
        self.assertEqual(self.ledger_sums()["testvpn"], self.all_bytes(program))
        self.assertGreaterEqual(sum(self.all_bytes(program)), 16 * MEGABYTES)

    def test_what_comes_after_the_last_one_is_hung_up(self):
        program = self.connect_with_plan("10 note hangup", more="BlockAfterLast=1")
        pump("down", 60 * MEGABYTES, check=False)
        wait_for("the end of the line", lambda: tunnel() is None)
        program.wait_text("txtActiveConnection", "")

        self.dial(program, "testvpn")

        wait_for("the line", lambda: tunnel() is not None)
        wait_for("its end", lambda: tunnel() is None)
        self.assertTrue(program.running())

    def test_it_counts_what_the_kernel_counted_over_a_kill(self):
        program = self.connect_with_plan("90 note")
        pump("down", 5 * MEGABYTES)
        program.wait_text("txtBytesRcvd", lambda text: number(text) == kernel("rx_bytes"))
        wait_for("the journal", lambda: (self.folder / "Tarvik.journal").exists())
        self.wait_used(program, 5)
        program.stop()
        pump("down", MEGABYTES)

        again = self.start_after_kill("/r")

        again.wait_text("txtBytesRcvd", lambda text: number(text) == kernel("rx_bytes"))
        self.wait_used(again, 6)
        again.press("cmdDisconnect")
        again.wait_text("txtActiveConnection", "")
        wait_for("the ledger's sum", lambda: self.ledger_sums().get("testvpn") == self.all_bytes(again))
