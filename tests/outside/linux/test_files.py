"""The program's file as the user may find it, damage it, lock it away or move it."""

import os
import random
import stat
import time

from desktop import powerless
from support import FIRST_RUN_WARNING, LOCK_WARNING, SETTINGS, ProgramTest, keys_of


class FileTest(ProgramTest):
    def test_a_folder_that_cannot_be_written_leaves_the_file_to_the_users_data(self):
        self.folder.chmod(stat.S_IRUSR | stat.S_IXUSR)
        data = self.desktop.folder / "data"
        program = self.start_without_file(before=powerless(), XDG_DATA_HOME=str(data))
        self.quit(program)
        text = (data / "velmars-tarvik" / "Tarvik.ini").read_text(encoding="utf-8")
        self.assertEqual(keys_of(text, "Settings")["IsLocked"], "0")
        self.assertFalse(self.ini.exists())

    def test_a_read_only_file_is_left_as_it_was(self):
        self.write_ini("[Settings]\nRefreshInterval=500\n")
        self.ini.chmod(0o444)
        program = self.start()
        program.expect_box(LOCK_WARNING, "OK")
        program.find("cmdQuit")
        self.quit_without_file(program)
        self.assertEqual(self.read_ini(), "[Settings]\nRefreshInterval=500\n")

    def test_a_directory_in_the_files_place_is_told_and_the_program_runs(self):
        self.ini.mkdir()
        directory = "Error: INI file exists as directory."
        program = self.start()
        program.expect_box(directory, "OK")
        program.expect_box(LOCK_WARNING, "OK")
        program.expect_box(directory, "OK")
        program.expect_box(FIRST_RUN_WARNING, "OK")
        program.press("cmdQuit")
        program.expect_box(directory, "OK")
        self.expect_unsaved(program)

    def assert_told_and_left(self):
        """The program runs without the file and says that nothing is saved."""
        before = self.ini.lstat()
        program = self.start_without_file()
        self.quit_without_file(program)
        after = self.ini.lstat()
        self.assertEqual((after.st_ino, after.st_mode), (before.st_ino, before.st_mode))

    def test_a_pipe_in_the_files_place_holds_nothing_up(self):
        os.mkfifo(self.ini)
        self.assert_told_and_left()

    def test_a_link_to_endless_zeros_is_neither_read_nor_replaced(self):
        self.ini.symlink_to("/dev/zero")
        self.assert_told_and_left()

    def test_a_link_that_leads_to_itself_is_left(self):
        self.ini.symlink_to(self.ini.name)
        self.assert_told_and_left()

    def test_a_file_of_a_gigabyte_is_left_and_the_window_comes_soon(self):
        with self.ini.open("wb") as file:
            file.truncate(1 << 30)
        before = self.ini.stat()
        begin = time.monotonic()
        program = self.start_without_file()
        program.find("cmdQuit")
        # Reading it once takes a second, and each key would have it read.
        self.assertLess(time.monotonic() - begin, 10)
        self.quit_without_file(program)
        after = self.ini.stat()
        self.assertEqual((after.st_ino, after.st_size, after.st_blocks, after.st_mtime_ns),
                         (before.st_ino, before.st_size, before.st_blocks, before.st_mtime_ns))

    def test_a_file_behind_a_link_is_kept_up_to_date(self):
        real = self.folder / "real.ini"
        real.write_text("[Settings]\nRefreshInterval=200\n", encoding="utf-8")
        self.ini.symlink_to("real.ini")
        program = self.start_quietly()
        self.assertIn("IsLocked=1\n", real.read_text(encoding="utf-8"))
        self.quit(program)
        self.assertTrue(self.ini.is_symlink())
        self.assertIn("IsLocked=0\n", real.read_text(encoding="utf-8"))

    def test_the_programs_folder_may_have_any_name(self):
        name = b" -\xff\xfe'\"\n;[=]%s\t" + bytes(range(1, 32))
        odd = os.path.join(os.fsencode(self.folder), name)
        os.mkdir(odd)
        self.executable = self.executable.rename(os.fsdecode(odd) + "/tarvik-demo")
        ini = os.path.join(odd, b"Tarvik.ini")
        with open(ini, "wb") as file:
            file.write(b"[Settings]\nRefreshInterval=200\n")
        program = self.start()
        program.find("cmdQuit")
        self.quit(program)
        with open(ini, "rb") as file:
            self.assertIn(b"IsLocked=0\n", file.read())
        self.assertEqual(sorted(os.listdir(odd)), [b"Tarvik.ini", b"tarvik-demo"])

    def test_strange_content_is_survived_and_kept(self):
        strange = (
            "key before any section=1\n; comment\n[Strange\n[Settings]\r\nRefreshInterval=200\r\n"
            "Odd\0Key=\0\n" + "x" * 1_000_000 + "\n[Other]\nKeep=me\n[Settings]\nRefreshInterval=9"
        )
        self.write_ini(strange)
        program = self.start_quietly()
        self.quit(program)
        text = self.ini.read_bytes().decode()
        for kept in ("key before any section=1\n; comment\n[Strange\n", "Odd\0Key=\0\n",
                     "x" * 1_000_000 + "\n", "[Other]\nKeep=me\n", "\nRefreshInterval=9"):
            self.assertIn(kept, text)
        self.assertIn("[Settings]\r\nRefreshInterval=200\r\n", text)

    def test_nothing_but_the_file_is_left_beside_the_program(self):
        program = self.start_quietly()
        self.quit(program)
        self.assertEqual(
            sorted(path.name for path in self.folder.iterdir()), ["Tarvik.ini", "tarvik-demo"]
        )


class DamageTest(ProgramTest):
    def survive(self, content):
        """Starts on the file and quits; gives what the file is then."""
        self.ini.write_bytes(content)
        program = self.start_quietly()
        self.quit(program)
        return self.ini.read_bytes()

    def test_an_empty_file_is_filled(self):
        text = self.survive(b"").decode()
        self.assertEqual(list(keys_of(text, "Settings")), ["IsLocked", *SETTINGS])

    def test_a_byte_order_mark_stays_in_front(self):
        after = self.survive(b"\xef\xbb\xbf[Settings]\r\nRefreshInterval=300\r\n")
        self.assertTrue(after.startswith(b"\xef\xbb\xbf[Settings]\r\nRefreshInterval=300\r\n"))
        self.assertNotIn(b"RefreshInterval=1000", after)

    def test_a_file_of_two_bytes_a_character_is_read_and_stays_one(self):
        before = "\ufeff[Settings]\r\nRefreshInterval=300\r\n; \u4e2d\r\n"
        for form in ("utf-16-le", "utf-16-be"):
            after = self.survive(before.encode(form)).decode(form)
            self.assertTrue(after.startswith(before), after)
            self.assertEqual(list(keys_of(after[1:], "Settings"))[1], "IsLocked")
            self.assertNotIn("RefreshInterval=1000", after)

    def test_bytes_that_are_no_text_are_kept(self):
        noise = random.Random(7).randbytes(200_000).replace(b"[", b".")
        self.assertIn(noise, self.survive(noise + b"\n"))

    def test_a_file_of_a_hundred_thousand_records_opens_and_closes(self):
        count = 100_000
        index = "".join("DateStamp%d=r%d\n" % (n, n) for n in range(1, count + 1))
        records = "".join("[r%d]\nSent=%d\nRcvd=5\nDuration=9\n" % (n, n)
                          for n in range(1, count + 1))
        head = "[Settings]\nLastState=r100000\nLastDateStamp=100000\n"
        before = (head + index + records).encode()
        self.ini.write_bytes(before)
        program = self.start_quietly()
        program.wait_text("txtBytesSentTotal", "100,000")
        self.quit(program)
        after = self.ini.read_bytes()
        self.assertTrue(after.startswith(head.encode() + index.encode()))
        self.assertTrue(after.endswith(records.encode()))

    def test_a_setting_that_does_not_fit_is_told_and_the_program_runs(self):
        self.write_ini("[Settings]\nTransferLimit=999\n")
        program = self.start()
        program.expect_box(
            'Error 6 (Overflow)\noccured in function "LoadState".\n'
            "Please contact the author for support.",
            "OK",
        )
        program.expect_box(FIRST_RUN_WARNING, "OK")
        self.quit(program)
