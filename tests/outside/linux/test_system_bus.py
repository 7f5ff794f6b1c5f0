"""How long the window waits for the login manager and the system bus: less than an eye sees, whether they
are mute, slow, halted or talk nonsense, at the start and later."""

import pathlib
import shutil
import unittest

from desktop import wait_for
from faulty_service import SLOWNESS
from support import EXECUTABLE
from waiting import StartMeasure, WindowTest

SLOW = SLOWNESS / 1000  # seconds
A_LITTLE = 0.02  # each answer alone would not be seen
LOGIN = "org.freedesktop.login1"
KINDS = ("mute", "slow", "nonsense", "refusing", "handleless")


class LoginManagerStartTest(StartMeasure):
    def check_kind(self, kind, is_halted=False):
        own = self.another_bus()
        service = self.faulty(kind, own, LOGIN)
        if is_halted:
            service.halt()
        self.check(DBUS_SYSTEM_BUS_ADDRESS=own)
        if not is_halted:
            self.assertIn("Inhibit", service.calls)

    def test_with_one_that_does_not_give_what_it_should(self):
        for kind in ("mute", "slow", "nonsense", "handleless"):
            with self.subTest(kind):
                self.check_kind(kind)

    def test_with_a_halted_one(self):
        self.check_kind("mute", is_halted=True)


class LoginManagerTest(WindowTest):
    def test_one_that_comes_and_does_not_give_what_it_should(self):
        own = self.another_bus()
        program = self.start_quietly(DBUS_SYSTEM_BUS_ADDRESS=own)

        with self.hardly_waiting(program):
            for kind in KINDS:
                service = self.faulty(kind, own, LOGIN)
                wait_for("the question", lambda asked=service.calls: "Inhibit" in asked)
                self.change_the_lamp(program)
                service.close()

        with self.without_delay("the end"):
            self.assertEqual(program.end(), 0)

    def test_one_that_comes_and_is_halted(self):
        own = self.another_bus()
        program = self.start_quietly(DBUS_SYSTEM_BUS_ADDRESS=own)

        with self.hardly_waiting(program):
            service = self.faulty("mute", own, LOGIN)
            wait_for("the question", lambda: "Inhibit" in service.calls)
            service.halt()
            self.change_the_lamp(program)

        with self.without_delay("the end"):
            self.assertEqual(program.end(), 0)


class SystemBusStartTest(StartMeasure):
    """The program itself, which looks for NetworkManager there; the demonstration does not."""

    def setUp(self):
        self.real = pathlib.Path(EXECUTABLE).with_name("tarvik")
        if not self.real.exists():
            raise unittest.SkipTest("only the demonstration has been built")
        super().setUp()

    def first_waits(self, process):
        """Nothing: the first window is a box, as no NetworkManager is there."""
        return 0.0

    def check_bus(self, address):
        shutil.copy(self.real, self.executable)
        self.check(DBUS_SYSTEM_BUS_ADDRESS=address)

    def test_with_a_mute_one(self):
        self.check_bus(self.mute())

    def test_with_a_slow_one(self):
        self.check_bus(self.way_to_bus(self.another_bus(), SLOW).address)

    def test_with_one_that_is_a_little_slow_with_everything(self):
        self.check_bus(self.way_to_bus(self.another_bus(), A_LITTLE).address)

    def test_with_one_that_talks_nonsense(self):
        for greets in (False, True):
            with self.subTest(greets=greets):
                self.check_bus(self.odd_bus(greets))


if __name__ == "__main__":
    unittest.main()
