"""The table of measured figures, and what it holds against the stored ones."""

import pathlib
import subprocess
import tempfile
import unittest

TABLE = pathlib.Path(__file__).resolve().parents[2] / "bench" / "table.py"


class TableTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.stored = pathlib.Path(folder.name, "ratios.txt")
        self.rows = pathlib.Path(folder.name, "rows")

    def table(self, rows, *arguments):
        self.rows.write_text("".join("\t".join(row) + "\n" for row in rows), encoding="utf-8")
        return subprocess.run(["/usr/bin/python3", "-B", str(TABLE), *arguments, "Linux=%s" % self.rows],
                              capture_output=True, text=True, check=False)

    def check_against_one_and_a_half(self, rows):
        self.table([("tick, us", "300", "200", "another")], "--keep", str(self.stored))
        return self.table(rows, "--check", str(self.stored))

    def test_a_row_tells_both_figures_and_how_they_compare(self):
        said = self.table([("tick, us", "300", "200", "another")]).stdout

        self.assertEqual(said.splitlines()[2].split("|")[1:7],
                         [" Linux ", " tick, us ", "   300.0 ", "     200.0 ", " 1.500 ",
                          " another               "])

    def test_what_compares_as_stored_passes_whatever_the_times(self):
        said = self.check_against_one_and_a_half([("tick, us", "3000", "2000", "another")])

        self.assertEqual((said.returncode, said.stdout.splitlines()[-1]),
                         (0, "None is a third worse than what is stored."))

    def test_what_has_become_a_third_worse_fails(self):
        said = self.check_against_one_and_a_half([("tick, us", "410", "200", "another")])

        self.assertEqual((said.returncode, said.stdout.splitlines()[-1]),
                         (1, "a third worse: Linux, tick, us, another: 2.050, stored 1.500"))

    def test_what_is_not_measured_any_more_fails(self):
        said = self.check_against_one_and_a_half([("tock, us", "1", "200", "another")])

        self.assertEqual((said.returncode, said.stdout.splitlines()[-1]),
                         (1, "not measured: Linux, tick, us, another"))

    def test_what_stands_beside_nothing_is_told_and_not_compared(self):
        said = self.table([("tick, us", "300", "0", "nothing")], "--keep", str(self.stored))

        self.assertIn("nothing", said.stdout)
        self.assertEqual(self.stored.read_text(encoding="utf-8"), "")


if __name__ == "__main__":
    unittest.main()
