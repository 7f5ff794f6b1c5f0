"""The notes that programs show on a desktop, by a real notification service."""

import json
import pathlib
import subprocess

from processes import wait_for

# Whoever clicks on a note chooses among its buttons in a list; here that is a program that takes the one whose
# text stands in a file.
SETTINGS = """[global]
    dmenu = %s
    mouse_left_click = context
    mouse_middle_click = do_action
"""


class NoteService:
    """What a desktop does with notes. It has an environment, and says what its windows are."""

    last_note = 0
    chosen = None

    def prepare_notes(self, home):
        """Before the service is first asked for; it reads its settings in that folder."""
        folder = pathlib.Path(home) / ".config" / "dunst"
        folder.mkdir(parents=True)
        self.chosen = folder / "chosen"
        chooser = folder / "choose"
        chooser.write_text('#!/bin/sh\nexec grep -m 1 -F -f "%s"\n' % self.chosen, encoding="utf-8")
        chooser.chmod(0o755)
        (folder / "dunstrc").write_text(SETTINGS % chooser, encoding="utf-8")

    def _ask_for_notes(self, *words):
        return subprocess.run(
            ["dunstctl", *words], env=self.environment, capture_output=True, text=True, check=True
        ).stdout

    def _note_entries(self):
        self._ask_for_notes("close-all")
        return json.loads(self._ask_for_notes("history"))["data"][0]

    def notes(self):
        """Title and text of every note that has been shown since `forget_notes`, the newest first."""
        return [
            (entry["summary"]["data"], entry["body"]["data"])
            for entry in self._note_entries()
            if entry["id"]["data"] > self.last_note
        ]

    def forget_notes(self):
        self.last_note = max((entry["id"]["data"] for entry in self._note_entries()), default=0)

    # What the user does with the one that is shown ---------------------------------------------

    def wait_for_note(self):
        """Until one is shown; its place."""
        self._only_on_x("a note's place")
        return wait_for("a note", lambda: next(self._areas("--class", "^Dunst$"), None))

    def press_in_note(self, button):
        """Presses the button of that text in it."""
        self.chosen.write_text(button + "\n", encoding="utf-8")
        self._click_note(1)

    def click_note(self):
        """Clicks on it, beside all buttons."""
        self._click_note(2)

    def _click_note(self, button):
        left, top, width, height = self.wait_for_note()
        subprocess.run(
            ["xdotool", "mousemove", str(left + width // 2), str(top + height // 2), "click", str(button)],
            env=self.environment, check=True,
        )
