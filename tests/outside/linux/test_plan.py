"""Plans in the built program: made with mouse and keys, told in notes of a real notification service whose
buttons are pressed, and acted upon on the simulated line."""

from desktop import wait_for
from item_panel import ItemPanel
from plans import LEDGER_QUESTION, PlanUser
from support import INSTANCE_QUESTION, ProgramTest

PLAN_WINDOW = "Velmars Tarvik - Plan"
WARNING_WINDOW = "Velmars Tarvik - Plan warning"
TODAY, PERIOD = "Extend by 500 MB today", "Extend by 500 MB to the period's end"


class PlanTest(PlanUser, ProgramTest):
    pass


class PlanWindowTest(PlanTest):
    def fill(self, program, name, text):
        program.click(name)
        program.key("ctrl+a")
        program.type(text)

    def test_a_plan_is_made_with_mouse_and_keys(self):
        program = self.start_quietly()
        self.open_plans(program)
        size = self.desktop.size_of(PLAN_WINDOW)
        program.click("cmdNew")
        wait_for("the new plan", lambda: program.text("txtName"))
        program.choose("cboPage", "What may be used")
        self.fill(program, "txtName", "Home & away")
        self.fill(program, "txtAllowance", "apples")
        program.key("Tab")
        program.wait_text("lblAllowanceReason", "A size, such as 10 GB.")
        self.fill(program, "txtAllowance", "10 GB")
        program.key("Tab")
        program.wait_text("lblAllowanceReason", lambda text: not text.startswith("A size"))
        program.choose("cboPage", "What happens on the way")
        self.assertEqual(self.desktop.size_of(PLAN_WINDOW), size)

        program.key("Return")
        program.expect_box(LEDGER_QUESTION, "Yes")

        wait_for("the ledger", self.ledger.exists)
        wait_for("the plan", lambda: 'Name="Home & away"' in self.read_ini())
        self.assertIn("Allowance=10 GB", self.read_ini())
        program.wait_text("lblPlan", lambda text: text.startswith("0 of 10 GB"))

    def test_a_plan_that_is_left_with_escape_is_none(self):
        program = self.start_quietly()
        self.open_plans(program)
        program.click("cmdNew")
        wait_for("the new plan", lambda: program.text("txtName"))

        program.key("Escape")

        wait_for("the closed window", lambda: not program.is_showing("frmPlan"))
        self.assertNotIn("[Plan", self.read_ini())
        self.assertFalse(self.ledger.exists())

    def test_the_warning_comes_once_and_does_not_take_the_keys(self):
        program = self.start_with_plan("50 window")
        self.desktop.activate("Velmars Tarvik")
        self.connect(program, "Skylark Mobile")

        wait_for("the warning", lambda: program.is_showing("frmPlanWarning"))
        self.assertTrue(self.desktop.is_active("Velmars Tarvik"))
        self.desktop.activate(WARNING_WINDOW)
        program.key("Escape")
        wait_for("its end", lambda: not program.is_showing("frmPlanWarning"))
        self.wait_used(program, 5)
        self.assertFalse(program.is_showing("frmPlanWarning"))
        self.assertIn("50", self.read_ini().partition("Said=")[2].partition("\n")[0])

    def test_what_was_said_is_not_said_again_after_a_kill(self):
        program = self.start_with_plan("10 window")
        self.connect(program, "Skylark Mobile")
        wait_for("the warning", lambda: program.is_showing("frmPlanWarning"))
        self.wait_used(program, 8)  # that takes longer than the journal waits
        program.stop()

        again = self.start("/r")
        again.expect_box(INSTANCE_QUESTION, "Yes")

        self.wait_used(again, 0.5)
        self.assertFalse(again.is_showing("frmPlanWarning"))


class PlanActsTest(PlanTest):
    def test_the_line_is_hung_up(self):
        program = self.start_with_plan("50 hangup")

        self.connect(program, "Skylark Mobile")

        program.wait_text("txtActiveConnection", "")

    def test_new_connections_are_hung_up_where_the_user_wants_that(self):
        program = self.start_with_plan("50 hangup", more="BlockAfterLast=1")
        self.connect(program, "Skylark Mobile")
        program.wait_text("txtActiveConnection", "")
        used = self.used(program)

        self.connect(program, "Ridge DSL")

        program.wait_text("txtActiveConnection", "")
        # What a line brings until it is down was transferred, and counts.
        self.assertLess(self.used(program) - used, 2)

    def test_a_program_gets_the_figures_in_its_environment_and_no_shell(self):
        tells = self.folder / "tells them; touch here"
        tells.write_text("#!/bin/sh\nenv | grep TARVIK_ > %s/told.new && mv %s/told.new %s/told\n"
                         % ((self.folder,) * 3), encoding="utf-8")
        tells.chmod(0o755)
        program = self.start_with_plan("50 | " + str(tells))

        self.connect(program, "Skylark Mobile")

        told = self.folder / "told"
        wait_for("what was told", told.exists)
        figures = dict(line.split("=", 1) for line in told.read_text(encoding="utf-8").splitlines())
        self.assertEqual(figures["TARVIK_PLAN"], "Home")
        self.assertEqual(figures["TARVIK_PERCENT"], "50")
        self.assertEqual(figures["TARVIK_TOTAL_BYTES"], "5000000")
        self.assertEqual(
            int(figures["TARVIK_USED_BYTES"]) + int(figures["TARVIK_LEFT_BYTES"]), 5000000)
        self.assertGreaterEqual(int(figures["TARVIK_USED_BYTES"]), 2500000)
        self.assertFalse((self.folder / "here").exists())
        self.assertTrue(program.running())

    def test_the_panels_menu_extends_it(self):
        panel = ItemPanel(self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.addCleanup(panel.close)
        program = self.start_with_plan("50 note")
        own = ["Show/Hide", "Start Monitoring", "", "Connect", "Disconnect", "", "Quit"]
        wait_for("the entries", lambda: panel.labels() == [TODAY, PERIOD, "", *own])

        panel.choose(PERIOD)

        program.wait_text("lblPlan", lambda text: text.startswith("0 of 505 MB"))
        panel.choose("Show/Hide")
        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))


class PlanNoteTest(PlanTest):
    """The notes of a real notification service, worked with the mouse."""

    def setUp(self):
        super().setUp()
        self.desktop.forget_notes()

    def start_and_reach(self, *thresholds):
        program = self.start_with_plan(*thresholds)
        self.connect(program, "Skylark Mobile")
        self.desktop.wait_for_note()
        return program

    def test_a_buttons_press_extends_it(self):
        program = self.start_and_reach("50 note")

        self.desktop.press_in_note(PERIOD)

        program.wait_text("lblPlan", lambda text: " of 505 MB" in text)
        self.assertEqual(len(self.said_to_ledger()), 1)
        title, text = self.desktop.notes()[0]
        self.assertEqual(title, "Velmars Tarvik")
        self.assertRegex(text, r"^Home: 50 % is used\.\n\d\.\d of 5 MB")

    def test_a_click_on_it_opens_the_window(self):
        program = self.start_with_plan("50 note")
        self.addCleanup(self.desktop.close_panel, self.desktop.open_panel())
        self.connect(program, "Skylark Mobile")
        self.desktop.click_icon(1)
        wait_for("the hidden window", lambda: not program.is_showing("frmMain"))
        self.desktop.wait_for_note()

        self.desktop.click_note()

        wait_for("the window", lambda: program.is_showing("frmMain"))


del PlanTest
