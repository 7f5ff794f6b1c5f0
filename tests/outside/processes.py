"""Processes that end with the test that started them, and waiting for what they do."""

import contextlib
import ctypes
import pathlib
import signal
import subprocess
import time
import unittest

DEADLINE = 60.0
_process_control = ctypes.CDLL(None).prctl


class Failure(AssertionError):
    """The program did not do what was waited for."""


def end_with_parent():
    """In a new process: it ends when the one that started it is gone, however that ended."""
    set_death_signal = 1
    _process_control(set_death_signal, int(signal.SIGTERM), 0, 0, 0)


def start(command, environment, **options):
    """A helper of the test, whose output nobody reads unless it is asked for."""
    return subprocess.Popen(
        command,
        env=environment,
        stdout=options.pop("stdout", subprocess.DEVNULL),
        stdin=options.pop("stdin", subprocess.DEVNULL),
        stderr=subprocess.DEVNULL,
        preexec_fn=end_with_parent,
        **options,
    )


def stop(process):
    """Ends it and waits until it is gone."""
    process.terminate()
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()
    if process.stdout is not None:
        process.stdout.close()


def threads_of(process):
    """What each thread of a process waits for, as far as the kernel tells."""
    told = []
    for task in sorted(pathlib.Path("/proc/%d/task" % process).iterdir()):
        with contextlib.suppress(OSError):
            words = [(task / name).read_text().strip() for name in ("comm", "wchan", "syscall")]
            told.append(" ".join([task.name, *words]))
    return "its threads:\n" + "\n".join(told)


def wait_for(what, condition, deadline=DEADLINE):
    """The first true answer of the condition; fails when it does not come in time."""
    end = time.monotonic() + deadline
    while True:
        try:
            answer = condition()
        except (Failure, unittest.SkipTest):
            raise
        except Exception:  # a widget that has just gone
            answer = None
        if answer:
            return answer
        if time.monotonic() > end:
            raise Failure("waited in vain for " + what)
        time.sleep(0.03)


def wait_for_rest(what, look):
    """The first true answer that is given twice, one time right after the other."""
    answers = [None]

    def at_rest():
        answers.append(look())
        return answers[-1] if answers[-1] == answers[-2] else None

    return wait_for(what, at_rest)
