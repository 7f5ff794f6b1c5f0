"""What run.sh and test.sh say and do where something is closed, missing or silent. They run in a
folder of their own, whose name has blanks and umlauts, beside stand-ins for what installs and builds."""

import os
import pathlib
import re
import shlex
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "outside"))

from displays import WaylandDisplay, XDisplay  # noqa: E402

# Each takes what it needs to know from its environment.
STAND_INS = {
    "dpkg-query": """#!/bin/bash
for package in "${@:4}"; do
    [[ " $NOT_INSTALLED " == *" $package "* && ! -e $HOME/installed ]] || printf '\\n%s ii ' "$package"
done""",
    "apt-get": """#!/bin/bash
[[ $1 != update && $2 != --help ]] || exit 0
printf '%b' "$APT_SAYS"
[[ $APT_SAYS == *E:* ]] || echo "$DEBIAN_FRONTEND" >"$HOME/installed"
""",
    # Never asks for a password; -v is what every user may say who may say anything.
    "sudo": """#!/bin/bash
[ "$1" != -n ] || shift
[[ "$1" != -v || -z "$SUDO_ALLOWS" ]] || exit 0
[[ "$1" != -l ]] || { echo -n "$SUDO_LIST_SAYS"; exit 1; }
[ -n "$SUDO_ALLOWS" ] && [[ "$*" == $SUDO_ALLOWS ]] && exec env "$@"
echo "Sorry, user bob is not allowed to execute '$*' as root on here." >&2
exit 1
""",
    "id": """#!/bin/bash
case $1 in -u) echo "${USER_NUMBER:-$(/usr/bin/id -u)}" ;; -nG) echo "$USER_GROUPS" ;; *) echo bob ;; esac""",
    "cmake": """#!/bin/bash
mkdir -p build/release/bin
printf '#!/bin/sh\\necho "opened on [$DISPLAY] [$WAYLAND_DISPLAY] [$QT_QPA_PLATFORM]"\\n' >build/release/bin/tarvik-demo
chmod +x build/release/bin/tarvik-demo""",
}


def wait_for(condition, what):
    until = time.monotonic() + 20
    while not condition():
        if time.monotonic() > until:
            raise AssertionError("waited in vain for " + what)
        time.sleep(0.05)


class ScriptTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tarvik-scripts-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.folder.chmod(0o755)
        self.sources = self.folder / "Öl und Gas"
        (self.sources / "scripts").mkdir(parents=True)
        (self.sources / "tests" / "lint").mkdir(parents=True)
        for path in (ROOT / "run.sh", ROOT / "test.sh", *(ROOT / "scripts").glob("*.sh")):
            shutil.copy(path, self.sources / path.relative_to(ROOT))
        for name in ("scripts/play_session.py", "tests/lint/lint.py"):
            (self.sources / name).write_text('print("played by %s")\n' % name)
        (self.folder / "bin").mkdir()
        for name, text in STAND_INS.items():
            path = self.folder / "bin" / name
            path.write_text(text)
            path.chmod(0o755)
        self.environment = {"PATH": "%s/bin:/usr/bin:/bin" % self.folder, "HOME": str(self.folder),
                            "XDG_RUNTIME_DIR": str(self.folder)}

    def run_script(self, status, *words, by=(), **environment):
        """What the script says; it has no terminal, and must end with the status."""
        done = subprocess.run(
            [*by, self.sources / words[0], *words[1:]], env={**self.environment, **environment},
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
            timeout=60, check=False, start_new_session=True,
        )
        self.assertEqual(done.returncode, status, done.stdout)
        return done.stdout

    @staticmethod
    def ordinary_user():
        """Words before a command that make it an ordinary user's."""
        nobody = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
        return nobody if os.getuid() == 0 else []


class DisplayTest(ScriptTest):
    def display(self, kind):
        display = kind({**os.environ, **self.environment})
        self.addCleanup(display.close)
        return display.environment

    def silent_socket(self):
        """A socket that takes connections and never answers."""
        listening = socket.socket(socket.AF_UNIX)
        self.addCleanup(listening.close)
        path = str(self.folder / "silent")
        listening.bind(path)
        listening.listen()
        return path

    def test_without_a_display_the_session_plays_by_itself(self):
        said = self.run_script(0, "run.sh")
        self.assertIn("There is no display: a virtual one is used", said)
        self.assertIn("played by scripts/play_session.py", said)

    def test_the_window_opens_on_a_display_that_answers(self):
        number = self.display(XDisplay)["DISPLAY"]
        self.assertIn("opened on [%s] [] []" % number, self.run_script(0, "run.sh", DISPLAY=number))

    def test_a_display_that_is_not_there_is_left_alone(self):
        said = self.run_script(0, "run.sh", DISPLAY=str(self.folder / "nothing"))
        self.assertIn("nothing does not answer, or does not let bob in: it is left alone.", said)
        self.assertIn("played by", said)

    def test_a_display_that_never_answers_is_left_alone(self):
        path = self.silent_socket()
        said = self.run_script(0, "run.sh", DISPLAY=path)
        self.assertIn("The display %s does not answer" % path, said)
        self.assertIn("played by", said)

    def test_a_compositor_that_never_answers_is_left_alone_for_a_display_that_does(self):
        number, path = self.display(XDisplay)["DISPLAY"], self.silent_socket()
        said = self.run_script(0, "run.sh", DISPLAY=number, WAYLAND_DISPLAY=path)
        self.assertIn("The display %s does not answer" % path, said)
        self.assertIn("opened on [%s] [] [xcb]" % number, said)

    def test_a_display_that_is_not_there_is_left_alone_for_a_compositor_that_answers(self):
        path = self.display(WaylandDisplay)["WAYLAND_DISPLAY"]
        said = self.run_script(0, "run.sh", DISPLAY=str(self.folder / "nothing"), WAYLAND_DISPLAY=path)
        self.assertIn("opened on [] [%s] [wayland]" % path, said)

    def without_a_probe(self):
        """The display cannot be asked: the programs that ask it are not there."""
        programs = self.folder / "programs"
        programs.mkdir()
        for path in pathlib.Path("/usr/bin").iterdir():
            if path.name not in ("xprop", "wayland-info"):
                (programs / path.name).symlink_to(path)
        return {"PATH": "%s/bin:%s" % (self.folder, programs), "NOT_INSTALLED": "x11-utils wayland-utils"}

    def test_a_display_that_cannot_be_asked_is_taken_at_its_word(self):
        said = self.run_script(0, "run.sh", DISPLAY=":7", USER_NUMBER="1000", **self.without_a_probe())
        self.assertIn("The display :7 cannot be asked whether it answers: xprop is not installed.\n", said)
        self.assertIn("opened on [:7] [] []", said)
        self.assertNotIn("Only root can install", said)

    def test_a_compositor_that_cannot_be_asked_is_taken_at_its_word(self):
        said = self.run_script(0, "run.sh", WAYLAND_DISPLAY="wayland-7", USER_NUMBER="1000",
                               **self.without_a_probe())
        self.assertIn("The display wayland-7 cannot be asked", said)
        self.assertIn("opened on [] [wayland-7] []", said)

    def test_without_a_network_a_display_that_cannot_be_asked_is_taken_at_its_word(self):
        said = self.run_script(0, "run.sh", DISPLAY=":7", USER_NUMBER="0",
                               APT_SAYS="E: Unable to locate package x11-utils\\n", **self.without_a_probe())
        self.assertNotIn("Nothing was installed", said)
        self.assertIn("opened on [:7] [] []", said)

    def test_what_asks_the_display_is_installed_where_it_can_be(self):
        number = self.display(XDisplay)["DISPLAY"]
        said = self.run_script(0, "run.sh", DISPLAY=number, USER_NUMBER="0", NOT_INSTALLED="x11-utils")
        self.assertIn("Installing, which can take minutes: x11-utils", said)
        self.assertIn("opened on [%s] [] []" % number, said)

    def test_the_tests_never_see_the_users_display(self):
        (self.sources / "tests/lint/lint.py").write_text('import os\nprint(os.environ.get("DISPLAY"))\n')
        said = self.run_script(0, "test.sh", "lint", DISPLAY=":0", WAYLAND_DISPLAY="wayland-0")
        self.assertIn("\nNone\n", said)


class FolderTest(ScriptTest):
    def test_sources_that_are_closed_are_to_be_copied(self):
        self.sources.chmod(0o555)
        self.addCleanup(self.sources.chmod, 0o755)
        for script in ("run.sh", "test.sh"):
            said = self.run_script(1, script, by=self.ordinary_user())
            self.assertIn("Nothing can be written in %s. Copy it" % self.sources, said)
            self.assertIn("\n    cp -r '%s' ~/tarvik && cd ~/tarvik\n" % self.sources, said)
            self.assertEqual(len(said.splitlines()), 2)

    def test_what_somebody_else_has_built_is_named_with_the_command_that_mends_it(self):
        self.sources.chmod(0o777)
        (self.sources / "build").symlink_to("/usr/share/dpkg")
        for script in ("run.sh", "test.sh"):
            said = self.run_script(1, script, by=self.ordinary_user(), USER_GROUPS="sudo")
            self.assertIn("%s/build belongs to root" % self.sources, said)
            self.assertTrue(said.endswith(
                "\n    sudo sh -c 'chown -R bob \"%s/build\"'\n" % self.sources), said)
            self.assertEqual(len(said.splitlines()), 2)

    def test_what_somebody_else_has_built_for_everybody_is_no_fault(self):
        if os.getuid() != 0:
            self.skipTest("only root can make what is another user's")
        (self.sources / "build").mkdir()
        for folder in (self.sources, self.sources / "build"):
            folder.chmod(0o777)
        self.run_script(0, "run.sh", by=self.ordinary_user())

    def test_what_was_built_in_another_folder_is_built_anew(self):
        cache = self.sources / "build/release/CMakeCache.txt"
        cache.parent.mkdir(parents=True)
        cache.write_text("CMAKE_CACHEFILE_DIR:INTERNAL=%s\n" % self.folder)
        said = self.run_script(0, "run.sh")
        self.assertIn("build/release was built in another folder and is built anew.", said)
        self.assertFalse(cache.exists())

    def test_what_was_built_here_is_kept(self):
        cache = self.sources / "build/release/CMakeCache.txt"
        cache.parent.mkdir(parents=True)
        cache.write_text("CMAKE_CACHEFILE_DIR:INTERNAL=%s\n" % cache.parent)
        self.run_script(0, "run.sh")
        self.assertTrue(cache.exists())


class PackagesTest(ScriptTest):
    def test_who_may_not_install_is_told_what_root_has_to_type(self):
        said = self.run_script(77, "run.sh", USER_NUMBER="1000", NOT_INSTALLED="g++ xvfb")
        self.assertIn("\nOnly root can install what is missing. Type this and start again:\n"
                      "    su - -c 'apt-get update && apt-get install -y --no-install-recommends g++ xvfb'\n",
                      said)

    def test_who_may_use_sudo_with_a_password_is_told_so(self):
        said = self.run_script(77, "run.sh", USER_NUMBER="1000", USER_GROUPS="bob sudo",
                               NOT_INSTALLED="g++")
        self.assertIn("\n    sudo sh -c 'apt-get update && apt-get install", said)

    def test_who_may_use_sudo_for_anything_installs_without_questions(self):
        self.run_script(0, "run.sh", USER_NUMBER="1000", SUDO_ALLOWS="*", NOT_INSTALLED="g++")
        self.assertEqual((self.folder / "installed").read_text(), "noninteractive\n")

    def test_who_may_use_sudo_for_apt_get_alone_installs(self):
        self.run_script(0, "run.sh", USER_NUMBER="1000", SUDO_ALLOWS="apt-get *", NOT_INSTALLED="g++")
        self.assertTrue((self.folder / "installed").exists())

    def test_who_may_use_apt_get_in_two_ways_alone_installs(self):
        self.run_script(0, "run.sh", USER_NUMBER="1000", SUDO_ALLOWS="apt-get install *",
                        NOT_INSTALLED="g++")
        self.assertTrue((self.folder / "installed").exists())

    def run_at_a_terminal(self, **environment):
        """What run.sh says at a terminal to a user for whom it cannot install what is missing."""
        done = subprocess.run(
            ["script", "-qec", shlex.quote(str(self.sources / "run.sh")), "/dev/null"],
            env={**self.environment, "USER_NUMBER": "1000", "NOT_INSTALLED": "g++", **environment},
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True, timeout=60, check=False)
        self.assertEqual(done.returncode, 77, done.stdout)
        return done.stdout

    only_root = ("\nOnly root can install what is missing. Type this and start again:\n"
                 "    su - -c 'apt-get update && apt-get install -y --no-install-recommends g++'\n")

    def test_who_may_use_sudo_for_other_things_is_told_what_root_has_to_type(self):
        said = self.run_at_a_terminal(SUDO_ALLOWS="reboot")
        self.assertNotIn("Installing", said)
        self.assertTrue(said.endswith(self.only_root), said)

    def test_whom_sudo_refuses_when_it_comes_to_it_is_told_what_root_has_to_type(self):
        said = self.run_at_a_terminal(SUDO_ALLOWS="reboot", SUDO_LIST_SAYS="sudo: a password is required")
        self.assertIn("Installing", said)
        self.assertTrue(said.endswith(self.only_root), said)

    def test_sources_out_of_reach_are_told_in_one_line(self):
        said = self.run_script(77, "run.sh", USER_NUMBER="0", NOT_INSTALLED="g++",
                               APT_SAYS="E: Unable to locate package g++\\n" * 5)
        self.assertTrue(said.endswith(
            "  apt-get: Unable to locate package g++\n"
            "Nothing was installed: the sources in /etc/apt cannot be reached, or are not those of "
            "Debian 12.\n"), said)
        self.assertEqual(said.count("apt-get: "), 1)

    def test_another_failure_is_told_with_the_words_of_apt(self):
        said = self.run_script(77, "run.sh", USER_NUMBER="0", NOT_INSTALLED="g++",
                               APT_SAYS="E: You don't have enough free space\\n")
        self.assertTrue(said.endswith(
            "  apt-get: You don't have enough free space\n"
            "Not everything was installed: see to what apt-get says, and start again.\n"), said)

    def test_the_progress_of_an_installation_is_shown(self):
        lines = ["0 upgraded, 250 newly installed, 0 to remove and 3 not upgraded.",
                 "After this operation, 900 MB of additional disk space will be used.",
                 *(["Unpacking a"] * 250), *(["Setting up a"] * 250)]
        said = self.run_script(0, "run.sh", USER_NUMBER="0", NOT_INSTALLED="g++",
                               APT_SAYS="".join(line + "\\n" for line in lines))
        self.assertIn("Installing, which can take minutes: g++\n"
                      "  After this operation, 900 MB of additional disk space will be used.\n"
                      "  100 of 250 unpacked\n  200 of 250 unpacked\n"
                      "  100 of 250 set up\n  200 of 250 set up\n", said)

    def test_the_first_run_tells_what_it_takes_and_later_ones_do_not(self):
        self.assertTrue(self.run_script(0, "run.sh").startswith("A first run installs what is missing"))
        self.assertNotIn("A first run", self.run_script(0, "run.sh"))


class StagesTest(ScriptTest):
    def test_only_the_stages_that_are_named_run(self):
        said = self.run_script(0, "test.sh", "lint")
        self.assertIn("played by tests/lint/lint.py", said)
        self.assertIn("\n1 passed, 0 failed, 0 skipped\n", said)

    def test_help_tells_the_names_and_runs_nothing(self):
        for word in ("help", "--help", "-h", "--list"):
            said = self.run_script(0, "test.sh", word)
            self.assertTrue(said.startswith("The stages of test.sh:\n"), said)
            self.assertIn("\n  lint: lint\n", said)
            self.assertNotIn("Summary", said)

    def test_a_stage_that_nobody_knows_runs_nothing_and_tells_the_names(self):
        said = self.run_script(2, "test.sh", "lint", "lnit")
        self.assertNotIn("played", said)
        self.assertTrue(said.startswith("No stage is called lnit. The stages of test.sh:\n"), said)
        self.assertIn("\n  lint: lint\n", said)
        self.assertRegex(said, r"\n  bare: .* \(only when named\)\n")

    def with_stages(self, *lines):
        """test.sh with these lines in place of its own stages."""
        test = self.sources / "test.sh"
        own = r"(?m)(^stage .*\n)+"
        test.write_text(re.sub(own, lambda _: "\n".join(lines) + "\n", test.read_text()))

    def test_a_stage_that_runs_only_when_named_is_not_among_all(self):
        self.with_stages()
        self.assertIn("\n0 passed, 0 failed, 0 skipped\n", self.run_script(0, "test.sh"))
        said = self.run_script(0, "test.sh", "bare", NOT_INSTALLED="debootstrap")
        self.assertIn("\n0 passed, 0 failed, 1 skipped\n", said)

    def test_lanes_run_side_by_side_and_stages_wait_for_those_they_name(self):
        # Each of the first two waits for the other's file; the third for both of them to be over.
        self.with_stages(
            "one() { touch 1; until [ -e 2 ]; do sleep 0.1; done; }",
            "two() { touch 2; until [ -e 1 ]; do sleep 0.1; done; sleep 1; touch over; }",
            "three() { [ -e over ]; }",
            'stage "the first" one a', 'stage "the second" two b', 'stage "the third" three a two')
        said = self.run_script(0, "test.sh")
        self.assertIn("\n3 passed, 0 failed, 0 skipped\n", said)
        self.assertRegex(said, r"\n== Summary\npassed +the first \(\d+ s, \d+ s of a processor\)\npassed +the second ")

    def test_stages_of_one_lane_take_turns_and_the_first_lane_comes_first(self):
        self.with_stages(
            "early() { sleep 0.5; touch early; }",
            "one() { [ -e early ] && sleep 0.5 && touch one; }", "two() { [ -e one ]; }",
            'stage "early" early first', 'stage "the first" one a', 'stage "the second" two a')
        self.assertIn("\n3 passed, 0 failed, 0 skipped\n", self.run_script(0, "test.sh"))

    def test_what_the_first_lane_says_is_seen_as_it_goes(self):
        # The stage ends only when what it says has been read.
        self.with_stages("one() { echo Installing; until [ -e read ]; do sleep 0.1; done; }",
                         'stage "the first" one first')
        running = subprocess.Popen([self.sources / "test.sh"], env={**os.environ, **self.environment},
                                   stdout=subprocess.PIPE, text=True, start_new_session=True)
        try:
            self.assertIn("Installing\n", iter(running.stdout.readline, ""))
            (self.sources / "read").touch()
            self.assertIn("\n1 passed, 0 failed, 0 skipped\n", running.communicate(timeout=20)[0])
        finally:
            running.kill()

    def test_what_a_stage_says_stands_together_and_a_failure_stops_nothing(self):
        self.with_stages(
            "one() { echo one begins; sleep 1; echo one ends >&2; return 1; }", "two() { echo two; return 77; }",
            'stage "the first" one a', 'stage "the second" two b')
        said = self.run_script(1, "test.sh")
        self.assertIn("\n== the first\none begins\none ends\n", said)
        self.assertIn("\n== the second\ntwo\n", said)
        self.assertRegex(said, r"\nFAILED +the first .*\nSKIPPED +the second .*\n\n0 passed, 1 failed, 1 skipped\n$")

    def test_a_stage_whose_build_has_failed_is_skipped_and_says_why(self):
        self.with_stages(
            "one() { return 1; }", "two() { touch ran; }", "three() { touch ran; }",
            'stage "the build" one a', 'stage "the test" two b one', 'stage "what follows" three b two')
        for wanted in ((), ("three", "two")):
            said = self.run_script(1, "test.sh", *wanted)
            self.assertIn("\n== the test\nWaited in vain for: the build\n", said)
            self.assertIn("\n== what follows\nWaited in vain for: the test\n", said)
            self.assertIn("\n0 passed, 1 failed, 2 skipped\n", said)
            self.assertFalse((self.sources / "ran").exists())

    def test_a_skipped_stage_fails_where_everything_must_run(self):
        self.with_stages("one() { return 77; }", 'stage "the first" one a')
        self.run_script(0, "test.sh")
        self.run_script(1, "test.sh", CI="true")

    def test_what_is_interrupted_leaves_nothing_running(self):
        self.with_stages("one() { echo $BASHPID >pid; sleep 60; }", 'stage "the first" one a')
        running = subprocess.Popen([self.sources / "test.sh"], env={**os.environ, **self.environment},
                                   stdout=subprocess.DEVNULL, start_new_session=True)
        pid = self.sources / "pid"
        wait_for(lambda: pid.exists() and pid.read_text().strip(), "the stage to begin")
        running.terminate()
        self.assertEqual(running.wait(20), 130)
        wait_for(lambda: not pathlib.Path("/proc", pid.read_text().strip()).exists(), "the stage to end")

    def test_quick_stands_for_what_tells_soon(self):
        said = self.run_script(1, "test.sh", "quick")
        self.assertIn("\n== lint\n", said)
        self.assertIn("\n== unit tests and user stories on the scripted face\n", said)
        self.assertIn("\n2 passed, 1 failed, 0 skipped\n", said)  # nothing is built by the stand-ins

    def test_quick_installs_what_it_needs(self):
        said = self.run_script(1, "test.sh", "quick", USER_NUMBER="0", NOT_INSTALLED="clang-format")
        self.assertIn("Installing, which can take minutes: clang-format\n", said)

    def test_a_stage_that_is_named_brings_its_build(self):
        self.with_stages("one() { touch built; }", "two() { [ -e built ]; }",
                         'stage "the build" one a', 'stage "the test" two b one', 'stage "another" three b')
        said = self.run_script(0, "test.sh", "two")
        self.assertIn("\n2 passed, 0 failed, 0 skipped\n", said)

    def test_each_stage_waits_for_stages_that_there_are(self):
        own = (ROOT / "test.sh").read_text()
        declared = re.findall(r'(?m)^stage ".*" (\w+) \w+((?: \w+)*)$', own)
        names = [name for name, _ in declared]
        self.assertEqual(len(names), len(re.findall(r"(?m)^stage ", own)))
        for name, earlier in declared:
            self.assertRegex(own, r"(?m)^%s\(\) \{$" % name)
            for other in earlier.split():
                self.assertIn(other, names[:names.index(name)], name)

    def test_without_what_it_needs_a_stage_is_named_as_skipped(self):
        said = self.run_script(0, "test.sh", "lint", NOT_INSTALLED="git")
        self.assertIn("Not installed: git", said)
        self.assertIn("\n0 passed, 0 failed, 1 skipped\n", said)

    def test_a_trial_that_nobody_knows_tells_what_there_is(self):
        said = self.run_script(2, "scripts/bare.sh", "run", "rnu")
        self.assertIn("\n    run     run.sh as root", said)

    def test_a_trial_goes_by_its_name(self):
        for name in ("faults", "run_user", "deb_install"):
            self.assertIn("needs root", self.run_script(77, "scripts/bare.sh", name, USER_NUMBER="1000"))

    def test_lint_finds_the_files_without_git(self):
        code = "import lint\nprint(lint.all_names())"
        names = subprocess.run(
            [sys.executable, "-B", "-c", code], cwd=ROOT / "tests" / "lint", check=True,
            env={"PATH": str(self.folder / "nothing")}, capture_output=True, text=True).stdout
        self.assertIn("'tests/lint/lint.py'", names)
        self.assertNotIn("'.git/", names)


class BreaksTest(unittest.TestCase):
    def test_each_break_of_the_code_still_finds_its_place(self):
        told = subprocess.run([sys.executable, "-B", ROOT / "scripts/mutants.py", "--texts"],
                              capture_output=True, text=True)
        self.assertEqual((told.returncode, told.stdout), (0, ""))


if __name__ == "__main__":
    unittest.main()
