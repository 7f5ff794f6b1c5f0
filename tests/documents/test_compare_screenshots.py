"""What counts as a screenshot that the program no longer looks like."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from compare_screenshots import faults  # noqa: E402


class CompareTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.documents = pathlib.Path(folder.name) / "docs"
        self.new = pathlib.Path(folder.name) / "new"
        self.documents.mkdir()
        self.new.mkdir()

    @staticmethod
    def draw(folder, size="200x100", *drawing, name="window"):
        subprocess.run(
            ["convert", "-size", size, "xc:white", *drawing, str(folder / (name + ".png"))], check=True
        )

    def faults_of(self, before, after):
        self.draw(self.documents, "200x100", *before)
        self.draw(self.new, "200x100", *after)
        return faults(self.documents, self.new)

    def test_the_same_screenshot_is_no_fault(self):
        box = ["-draw", "rectangle 10,10 60,30"]
        self.assertEqual(self.faults_of(box, box), [])

    def test_another_shade_is_no_fault(self):
        self.assertEqual(
            self.faults_of(["-fill", "#808080", "-draw", "rectangle 10,10 60,30"],
                           ["-fill", "#888888", "-draw", "rectangle 10,10 60,30"]), [])

    def test_a_few_points_are_no_fault(self):
        self.assertEqual(self.faults_of([], ["-draw", "rectangle 10,10 13,19"]), [])

    def test_more_points_are_a_fault(self):
        self.assertEqual(self.faults_of([], ["-draw", "rectangle 10,10 50,10"]),
                         ["window.png differs in 41 points"])

    def test_a_word_that_became_grey_is_a_fault(self):
        found = self.faults_of(["-fill", "black", "-pointsize", "13", "-draw", "text 10,40 'History'"],
                               ["-fill", "#a0a0a0", "-pointsize", "13", "-draw",
                                "text 10,40 'History'"])
        self.assertEqual(len(found), 1)

    def test_another_size_is_a_fault(self):
        self.draw(self.documents)
        self.draw(self.new, "200x101")
        self.assertEqual(faults(self.documents, self.new),
                         ["window.png is 200 x 100, the program now 200 x 101"])

    def test_a_screenshot_that_is_missing_on_either_side_is_a_fault(self):
        self.draw(self.documents, name="old")
        self.draw(self.new, name="new")
        self.assertEqual(faults(self.documents, self.new),
                         ["new.png is not there", "old.png is not made from the program"])


if __name__ == "__main__":
    unittest.main()
