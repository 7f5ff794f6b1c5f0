"""The icon in a real panel, and notes by a real notification service."""

import pathlib
import subprocess
import time
import unittest

from desktop import wait_for
from item_panel import ItemPanel
from support import ProgramTest

MINIMISED_INSTEAD = (
    "This desktop has no notification area.\nThe main window is minimised instead of being hidden."
)


class PanelTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.panel = self.desktop.open_panel()

    def tearDown(self):
        super().tearDown()
        if self.panel is not None:
            self.desktop.close_panel(self.panel)

    def test_the_icon_hides_and_shows_the_window(self):
        program = self.start_quietly()

        self.desktop.click_icon(1)
        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))
        self.desktop.click_icon(1)

        wait_for("the window", lambda: program.is_showing("frmMain"))
        wait_for("the window in front", lambda: self.desktop.is_active("Velmars Tarvik"))

    def test_a_list_of_items_that_cannot_be_started_does_not_keep_the_icon_away(self):
        services = pathlib.Path(self.desktop.environment["XDG_RUNTIME_DIR"]) / "dbus-1/services"
        services.mkdir(parents=True, exist_ok=True)
        broken = services / "org.kde.StatusNotifierWatcher.service"
        broken.write_text("[D-BUS Service]\nName=org.kde.StatusNotifierWatcher\nExec=/bin/false\n")
        self.addCleanup(self.reload_services)
        self.addCleanup(broken.unlink)
        self.reload_services()
        program = self.start_quietly()

        self.desktop.click_icon(1)

        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))

    def reload_services(self):
        subprocess.run(
            ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
             "org.freedesktop.DBus.ReloadConfig"],
            env=self.desktop.environment, check=True, stdout=subprocess.DEVNULL)

    def test_the_menu_of_the_icon_starts_monitoring(self):
        program = self.start_quietly()

        self.desktop.open_menu()
        program.key("Down", "Down", "Return")

        program.wait_text("lblMonitoring", "Monitoring: active")
        self.desktop.open_menu()
        program.key("Down", "Down", "Return")
        program.wait_text("lblMonitoring", "Monitoring: inactive")

    def test_the_menu_of_the_icon_quits(self):
        program = self.start_quietly()

        self.desktop.open_menu()
        program.key("Up", "Return")

        self.assertEqual(program.wait_exit(), 0)
        self.assertIn("IsLocked=0", self.read_ini())

    def test_each_state_has_its_image(self):
        program = self.start_quietly()
        images = {"off": self.stable_image(())}

        program.press("cmdMonitor")
        program.wait_text("lblMonitoring", "Monitoring: active")
        images["waiting"] = self.stable_image(images.values())
        self.connect(program)
        images["online"] = self.stable_image(images.values())

        for name, points in images.items():
            self.assertGreater(len(set(points)), 3, name)

    def stable_image(self, others):
        """The icon's image, once it is none of the others."""

        def image():
            points = self.desktop.icon_image()
            return points if len(set(points)) > 3 and points not in others else None

        return wait_for("another image of the icon", image)

    def test_started_out_of_the_way_the_window_waits_behind_the_icon(self):
        self.write_ini()
        program = self.start("/min")

        self.desktop.icon_area()
        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))
        self.desktop.click_icon(1)

        wait_for("the window", lambda: program.is_showing("frmMain"))

    def test_the_icon_comes_back_with_the_panel(self):
        program = self.start_quietly()
        self.desktop.icon_area()
        self.desktop.close_panel(self.panel)

        self.panel = self.desktop.open_panel()
        self.desktop.click_icon(1)

        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))


class ItemTest(ProgramTest):
    """In a panel that shows items and opens their menus by itself."""

    def setUp(self):
        super().setUp()
        self.panel = ItemPanel(self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"])

    def tearDown(self):
        super().tearDown()
        self.panel.close()

    def test_the_item_hides_and_shows_the_window(self):
        program = self.start_quietly()

        self.panel.click()
        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))
        self.panel.click()

        wait_for("the window", lambda: program.is_showing("frmMain"))

    def test_the_item_tells_the_state_in_its_tip(self):
        program = self.start_quietly()
        self.assertEqual(self.panel.property("ToolTip")[2], "Velmars Tarvik: Not monitoring.")

        program.press("cmdMonitor")

        wait_for(
            "the other tip",
            lambda: self.panel.property("ToolTip")[2] == "Velmars Tarvik: No active connection.",
        )

    def test_the_menu_follows_the_program_and_works(self):
        program = self.start_quietly()
        self.assertEqual(
            self.panel.labels(),
            ["Show/Hide", "Start Monitoring", "", "Connect", "Disconnect", "", "Quit"],
        )

        self.panel.choose("Start Monitoring")
        program.wait_text("lblMonitoring", "Monitoring: active")
        wait_for("the other caption", lambda: self.panel.labels()[1] == "Stop Monitoring")
        self.panel.choose("Show/Hide")

        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))

    def restart_panel(self):
        self.panel.close()
        self.panel = ItemPanel(self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"])

    def assert_the_item_works(self, program):
        self.panel.click()
        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))
        self.panel.choose("Show/Hide")
        wait_for("the window", lambda: program.is_showing("frmMain"))

    def test_a_panel_that_comes_after_the_program_gets_the_item(self):
        self.panel.close()
        program = self.start_quietly()
        self.restart_panel()

        self.assert_the_item_works(program)

    def test_a_panel_that_went_away_and_came_back_gets_the_item_again(self):
        program = self.start_quietly()
        self.assert_the_item_works(program)
        program.press("cmdMonitor")
        program.wait_text("lblMonitoring", "Monitoring: active")

        self.restart_panel()

        self.assert_the_item_works(program)
        wait_for(
            "the tip of the first tick",
            lambda: self.panel.property("ToolTip")[2] == "Velmars Tarvik: No active connection.",
        )
        self.assertEqual(self.panel.labels()[1], "Stop Monitoring")

    def test_started_out_of_the_way_the_window_waits_behind_the_item(self):
        self.write_ini()
        program = self.start("/min")

        wait_for("the item", lambda: self.panel.item)
        self.panel.click()

        # A click shows a hidden window, and hides one that was only minimised.
        wait_for("the window", lambda: program.is_showing("frmMain"))

    def test_a_panel_that_never_answers_does_not_hold_the_program_up(self):
        self.panel.close()
        self.panel = ItemPanel(
            self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"], mute=True
        )

        program = self.start_quietly()
        begin = time.monotonic()
        program.press("cmdMonitor")
        program.wait_text("lblMonitoring", "Monitoring: active")

        self.assertLess(time.monotonic() - begin, 10)  # the bus itself waits for 25 seconds
        self.assertEqual(program.end(), 0)

    def test_the_menu_quits(self):
        program = self.start_quietly()

        self.panel.choose("Quit")

        self.assertEqual(program.wait_exit(), 0)


class NoteTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.desktop.forget_notes()

    def test_the_ticker_is_told_in_a_note(self):
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nTransferTicker=1\nTransferTickerValue=1\n"
        )
        program = self.start_quietly()

        self.connect(program, "Skylark Mobile")

        notes = wait_for("the note", self.desktop.notes)
        self.assertEqual(notes[-1][0], "Tarvik - transfer ticker")
        self.assertRegex(
            notes[-1][1],
            r"^Another \d{7,8} bytes transferred \(1MB were setup\)\.\n"
            r"\d{7,8} bytes transferred in total\.$",
        )

    def test_without_a_panel_the_window_is_minimised_and_that_is_said_once(self):
        program = self.start_quietly()

        program.key("alt+F4")
        wait_for("the note", lambda: self.desktop.is_iconic("Velmars Tarvik"))
        self.assertEqual(
            wait_for("the note", self.desktop.notes), [("Velmars Tarvik", MINIMISED_INSTEAD)]
        )
        self.assertTrue(program.running())

    def test_a_window_that_was_minimised_so_comes_back_with_the_first_click_on_an_icon(self):
        program = self.start_quietly()
        program.key("alt+F4")
        wait_for("the minimised window", lambda: self.desktop.is_iconic("Velmars Tarvik"))
        self.desktop.activate("Velmars Tarvik")
        self.addCleanup(self.desktop.close_panel, self.desktop.open_panel())
        self.desktop.icon_area()
        wait_for("the window in front", lambda: self.desktop.is_active("Velmars Tarvik"))
        program.key("alt+F4")
        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))

        self.desktop.click_icon(1)

        wait_for("the window in front", lambda: self.desktop.is_active("Velmars Tarvik"))
        self.assertFalse(self.desktop.is_iconic("Velmars Tarvik"))


if __name__ == "__main__":
    unittest.main()
