"""The history of years of use: imported, looked at in every way, exported and opened elsewhere."""

import decimal
import os
import pathlib
import re
import subprocess
import sys
import time
import unittest

from desktop import wait_for
from support import EXECUTABLE, IMPORT_QUESTION, ROOT, ProgramTest

sys.path.insert(0, str(ROOT / "tests/support"))
from check_csv import expected_rows, records_of  # noqa: E402

YEARS_OF_DAYS = pathlib.Path(EXECUTABLE).with_name("years_of_days")
CHECK_CSV = ROOT / "tests/support/check_csv.py"
READING = re.compile(r"(.*)\. ([0-9,]+) \((.*?)\): (.*)")
REPLACE = "history.csv already exists.\nDo you want to replace it?"
EXPORTED = "All records have been successfully exported."
TITLES = {
    "Rcvd and Sent": "Data sent/received", "Received only": "Data received",
    "Sent only": "Data sent", "Total (rcvd+sent)": "Data total (received+sent)",
    "Duration": "Duration of connections",
}
LISTS = ["cboChartType", "cboDataType", "cboDataToShow", "cboTransferUnit"]  # in tab order
TYPES = ["plot as line", "plot as bars", "plot as area", "plot as step"]
DATA_TYPES = ["total transfer", "differential transfer", "percentual"]
BYTE_UNITS = {"Bytes": 1, "Kilo-Bytes": 2**10, "Mega-Bytes": 2**20, "Giga-Bytes": 2**30}
TIME_UNITS = {"Milli-Seconds": 1, "Seconds": 1000, "Minutes": 60000, "Hours": 3600000}


def series_of(records, shown):
    """What the chart shows of each record, by the names of its columns."""
    sent = [record["sent"] for record in records]
    rcvd = [record["rcvd"] for record in records]
    return {
        "Rcvd and Sent": {"Rcvd": rcvd, "Sent": sent},
        "Received only": {"Rcvd": rcvd},
        "Sent only": {"Sent": sent},
        "Total (rcvd+sent)": {"Total": [a + b for a, b in zip(sent, rcvd)]},
        "Duration": {"Duration": [record["duration"] for record in records]},
    }[shown]


def value_text(values, number, data_type, divisor):
    """A value as the chart reads it off: four decimals at most, thousands set apart."""
    value = values[number - 1]
    if data_type == "percentual":
        value = value / values[-1] * 100
    elif data_type == "differential transfer" and number > 1:
        value -= values[number - 2]
    if data_type != "percentual":
        value = value / divisor
    exact = decimal.Decimal(value).quantize(decimal.Decimal("0.0001"), decimal.ROUND_HALF_EVEN)
    text = "{:,f}".format(exact)
    return text.rstrip("0").rstrip(".")


class HistoryTest(ProgramTest):
    def open_history(self):
        """Starts the program on the file that years of use have left, and imports it."""
        subprocess.run([str(YEARS_OF_DAYS), str(self.ini)], check=True)
        self.records = records_of(self.read_ini())
        self.assertEqual(len(self.records), 1096)
        program = self.start_quietly()
        program.press("cmdHistory")
        program.press("cmdImport")
        program.expect_box(IMPORT_QUESTION, "Yes")
        wait_for("the records", lambda: program.is_enabled("cboDataToShow"))
        if self.desktop.wayland:
            # There the compositor decides what is in front after a box; a window that comes anew is.
            program.press("cmdCancel")
            program.press("cmdHistory")
        return program

    def pointer_to(self, node, offset, *then):
        area = node.get_extents(0)
        subprocess.run(
            ["xdotool", "mousemove", str(area.x + area.width - 40 - offset),
             str(area.y + area.height // 2), *then],
            env=self.desktop.environment, check=True,
        )

    def reads(self, chart):
        """What the chart says once the pointer has moved over it; nothing when it says nothing."""
        self.moves = getattr(self, "moves", 0) + 1
        self.pointer_to(chart, 20 * (self.moves % 2))
        end = time.monotonic() + 1  # a move may have gone to a list that was just closing
        while time.monotonic() < end:
            chart.clear_cache()
            if said := READING.fullmatch(chart.get_name()):
                return said
            time.sleep(0.02)
        return None

    def reads_after_click(self, chart):
        """The same after a click beside the chart, which leaves the focus where it is. On Wayland no
        window hears of the pointer after a list that was closed as it opened, until then."""
        self.pointer_to(chart, -45, "click", "1")
        return self.reads(chart)

    def reading(self, chart):
        """What the chart reads off under the pointer: the title, the record, the values."""
        said = wait_for("a reading", lambda: self.reads(chart) or self.reads_after_click(chart))
        title, number, moment, values = said.groups()
        number = int(number.replace(",", ""))
        record = self.records[number - 1]
        self.assertEqual(moment, record["date"] + " " + record["time"])
        return title, number, values

    def turn_to(self, program, name, position, entry):
        """Chooses an entry with the keyboard alone."""
        way = LISTS.index(name) - LISTS.index(self.focused)
        self.focused = name
        program.key(*["Tab" if way > 0 else "shift+Tab"] * abs(way), "Home", *["Down"] * position)
        program.wait_text(name, entry)

    def test_all_combinations_show_what_the_log_holds(self):
        program = self.open_history()
        chart = program.find("mscHistory")
        program.choose("cboDataToShow", "Sent only")
        self.focused = "cboDataToShow"
        for i, shown in enumerate(TITLES):
            self.turn_to(program, "cboDataToShow", i, shown)
            series = series_of(self.records, shown)
            units = TIME_UNITS if shown == "Duration" else BYTE_UNITS
            for j, data_type in enumerate(DATA_TYPES):
                self.turn_to(program, "cboDataType", j, data_type)
                self.assertEqual(program.is_enabled("cboTransferUnit"), data_type != "percentual")
                for k, chart_type in enumerate(TYPES):
                    self.turn_to(program, "cboChartType", k, chart_type)
                    for m, (unit, divisor) in enumerate(units.items()):
                        if data_type != "percentual":
                            self.turn_to(program, "cboTransferUnit", m, unit)
                        elif m > 0:
                            continue
                        with self.subTest(shown=shown, data=data_type, type=chart_type, unit=unit):
                            title, number, values = self.reading(chart)
                            self.assertEqual(title, TITLES[shown])
                            self.assertEqual(values, "; ".join(
                                name + " " + value_text(column, number, data_type, divisor)
                                + ("%" if data_type == "percentual" else " " + unit.lower())
                                for name, column in series.items()
                            ))

    def export_as(self, program, name):
        """Presses the button and types a name into the dialog."""
        program.press("cmdExport")
        self.name_export(program, name)

    def name_export(self, program, name):
        """Types a name into the dialog, once it is there."""
        wait_for("the dialog", lambda: self.desktop.is_active("Export history as CSV..."))
        program.key("ctrl+a")
        subprocess.run(
            ["xdotool", "type", "--delay", "5", str(self.folder / name)],
            env=self.desktop.environment, check=True,
        )
        program.key("Return")

    def test_before_a_file_is_replaced_by_an_export_its_name_is_asked_about_once(self):
        program = self.open_history()
        program.press("optStatistics")
        export = self.folder / "history.csv"
        export.write_text("of great value")

        self.export_as(program, "history")
        program.expect_box(REPLACE, "No")
        self.assertEqual(export.read_text(), "of great value")

        # The dialog comes again, for another name or the same one.
        self.name_export(program, "history")
        program.expect_box(REPLACE, "Yes")
        program.expect_box(EXPORTED, "OK")
        self.assertTrue(export.read_text().startswith('"ID";"Date"'))

        # Of the whole name the dialog itself asks in the same way, and nobody after it.
        export.write_text("of great value")
        self.export_as(program, "history.csv")
        program.expect_box(REPLACE, "No")
        self.assertEqual(export.read_text(), "of great value")
        self.name_export(program, "history.csv")
        program.expect_box(REPLACE, "Yes")
        program.expect_box(EXPORTED, "OK")
        self.assertTrue(export.read_text().startswith('"ID";"Date"'))

    def question_size(self, program, name):
        """The size of the question before a file of that name is replaced; it is declined."""
        (self.folder / name).write_text("of great value")
        self.export_as(program, name)
        question = wait_for("the dialog's question", lambda: next(
            iter(self.desktop.areas_called("Velmars Tarvik.")), None))
        program.key("alt+n")
        wait_for("the dialog", lambda: not self.desktop.areas_called("Velmars Tarvik."))
        program.key("Escape")
        wait_for("the end of the dialog", lambda: not self.desktop.areas_called(
            "Export history as CSV..."))
        return question[2:]

    def test_before_a_file_is_replaced_a_name_that_looks_like_markup_is_shown_as_it_stands(self):
        program = self.open_history()
        program.press("optStatistics")

        plain = self.question_size(program, "-h1-Big-u-name.csv")
        marked = self.question_size(program, "<h1>Big<u>name.csv")

        # Large letters would be higher, and the marks take their place.
        self.assertEqual(marked[1], plain[1])
        self.assertGreater(marked[0], plain[0])

    def test_the_export_opens_in_a_spreadsheet_with_all_figures(self):
        program = self.open_history()
        program.press("optStatistics")
        self.export_as(program, "years")
        program.expect_box(EXPORTED, "OK")

        export = self.folder / "years.csv"
        rows = [";".join(row) for row in expected_rows(self.read_ini())[1:]]
        header = '"ID";"Date";"Time";"Duration";"Bytes sent";"Bytes rcvd";"IP address"'
        self.assertEqual(export.read_bytes().decode(), "\r\n".join([header, *rows, ""]))
        check = subprocess.run(
            [sys.executable, "-B", str(CHECK_CSV), str(self.ini), str(export)],
            capture_output=True, text=True, check=False, env={**os.environ, "LC_ALL": "C.UTF-8"},
        )
        self.assertEqual(check.returncode, 0, check.stdout + check.stderr)

    def test_a_very_long_import_is_stopped_without_harm(self):
        program = self.open_history()
        names = ["%d.%d.%d|%d:00:00" % (day, month, year, hour) for year in range(1980, 2280)
                 for month in range(1, 13) for day in range(1, 29) for hour in range(10, 20)]
        long_log = self.folder / "long.ini"
        long_log.write_text(
            "[Settings]\nLastDateStamp=%d\n" % len(names)
            + "".join("DateStamp%d=%s\n" % entry for entry in enumerate(names, 1))
            + "".join("[%s]\nSent=1\nRcvd=2\nDuration=3\nIPAddress=\n" % name for name in names),
            encoding="utf-8",
        )
        chart = program.find("mscHistory")
        before = self.reading(chart)
        program.press("cmdImport")
        program.expect_box(IMPORT_QUESTION, "No")
        wait_for("the dialog", lambda: self.desktop.is_active("Import history..."))
        program.key("ctrl+a")
        subprocess.run(
            ["xdotool", "type", "--delay", "5", str(long_log)],
            env=self.desktop.environment, check=True,
        )
        program.key("Return")
        wait_for("the dialog to go", lambda: not self.desktop.is_active("Import history..."))
        for _ in range(10):
            program.key("alt+p")

        wait_for("the end of it", lambda: program.is_enabled("cmdImport"))
        self.assertFalse(program.is_showing("prgWork"))
        title, number, _ = self.reading(chart)
        self.assertEqual(title, before[0])
        self.assertLessEqual(number, 1096)
        self.quit(program)


if __name__ == "__main__":
    unittest.main()
