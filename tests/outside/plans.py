"""What tests of plans in the built program share."""

from desktop import wait_for

LEDGER_QUESTION = (
    'Do you want Tarvik to write down from now on, in the file "Tarvik.ledger" beside the INI file, what each '
    "line carries?"
)


def used_in(line):
    """The megabytes that a plan's line begins with."""
    return float(line.split()[0])


class PlanUser:
    """A user with a plan, and with the ledger that it is reckoned from: beside `ProgramTest`."""

    allowance = "5 MB"

    def plan(self, *thresholds, more=""):
        lines = ["[Settings]", "RefreshInterval=200", "[Plan 1]", 'Name="Home"',
                 "Allowance=" + self.allowance, "Period=Month", more]
        lines += ["Threshold%d=%s" % one for one in enumerate(thresholds, 1)]
        self.write_ini("\n".join(lines) + "\n")

    @property
    def ledger(self):
        return self.folder / "Tarvik.ledger"

    def ledger_sums(self):
        """Bytes received and sent of each line, as the ledger tells them."""
        sums = {}
        for line in self.ledger.read_text(encoding="utf-8").splitlines():
            words = line.split(maxsplit=8)
            if words[1] == "Q":
                before = sums.get(words[8], (0, 0))
                sums[words[8]] = before[0] + int(words[4]), before[1] + int(words[5])
        return sums

    def said_to_ledger(self):
        """What the user has said of plans: the words of each line that is no quarter hour."""
        lines = self.ledger.read_text(encoding="utf-8").splitlines()
        return [line.split()[1:] for line in lines[1:] if line.split()[1] != "Q"]

    def open_plans(self, program):
        program.press("cmdOptions")
        program.press("cmdPlan")
        wait_for("the plans", lambda: program.is_showing("frmPlan"))

    def begin_ledger(self, program):
        """The user agrees to it in the plans' window, and leaves that."""
        self.open_plans(program)
        program.press("cmdLedger")
        program.expect_box(LEDGER_QUESTION, "Yes")
        wait_for("the ledger", self.ledger.exists)
        program.press_within("frmPlan", "cmdCancel")
        wait_for("the closed window", lambda: not program.is_showing("frmPlan"))
        program.press_within("frmOptions", "cmdCancel")
        wait_for("the closed options", lambda: not program.is_showing("frmOptions"))

    def start_with_plan(self, *thresholds, **options):
        self.plan(*thresholds, **options)
        program = self.start_quietly()
        self.begin_ledger(program)
        return program

    def used(self, program):
        """The megabytes that the line at the foot tells."""
        return used_in(program.text("lblPlan"))

    def wait_used(self, program, least):
        """Until the line at the foot tells so many megabytes used."""
        program.wait_text("lblPlan", lambda text: text and used_in(text) >= least)
