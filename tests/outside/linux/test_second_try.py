"""What becomes of a test of the built program that fails."""

import contextlib
import io
import unittest
from unittest import mock

import support
from desktop import Failure


def result_of(failures):
    """Of a test that fails so often; with how often it was tried, and what was said."""
    tries = []

    class Tried(support.ProgramTest):
        def test_it(self):
            tries.append(self.folder)
            if len(tries) <= failures:
                raise Failure("try %d" % len(tries))

    said = io.StringIO()
    result = unittest.TestResult()
    with contextlib.redirect_stdout(said), mock.patch("support.take_screenshot"), \
            mock.patch("support._second_tries", ["another"]) as told:
        Tried("test_it").run(result)
        return result, tries, said.getvalue(), told


class SecondTryTest(unittest.TestCase):
    def test_a_test_that_passes_is_not_tried_again(self):
        result, tries, said, _ = result_of(0)
        self.assertTrue(result.wasSuccessful())
        self.assertEqual((len(tries), said), (1, ""))

    def test_one_that_fails_once_begins_anew_and_is_told(self):
        result, tries, said, told = result_of(1)
        self.assertTrue(result.wasSuccessful())
        self.assertEqual(len(set(tries)), 2)
        self.assertIn("try 1", said)
        self.assertEqual(len(told), 2)

    def test_one_that_fails_twice_has_failed(self):
        result, tries, _, told = result_of(2)
        self.assertFalse(result.wasSuccessful())
        self.assertEqual((len(tries), len(told)), (2, 1))
