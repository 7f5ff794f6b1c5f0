"""What the tests of the packages share: where the packages lie, and running a program."""

import os
import re
import subprocess

from support import ROOT

PACKAGES = ROOT / "build" / "packages"
VERSION = re.search(r"project\(tarvik VERSION ([0-9.]+) ", (ROOT / "CMakeLists.txt").read_text())[1]
DEB = PACKAGES / ("tarvik_%s_amd64.deb" % VERSION)
ZIP = PACKAGES / ("tarvik-%s-windows.zip" % VERSION)


def run(*command, **options):
    """What a program says on both channels; fails when the program does."""
    environment = {**os.environ, "LC_ALL": "C.UTF-8", **options.pop("env", {})}
    done = subprocess.run(
        [str(word) for word in command], env=environment, stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **options,
    )
    if done.returncode != 0:
        raise AssertionError("%s ended with %d:\n%s" % (command[0], done.returncode, done.stdout))
    return done.stdout
