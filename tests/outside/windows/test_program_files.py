"""What the files of the built Windows programs tell the system before they run."""

import os
import pathlib
import unittest
import xml.etree.ElementTree

import pefile

FOLDER = pathlib.Path(os.environ["TARVIK_WINDOWS_BIN"])

# Libraries that every Windows from version 7 on has without any installation.
SYSTEM_LIBRARIES = {"advapi32.dll", "comctl32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
                    "shell32.dll", "user32.dll"}
# Functions that came with later versions; the program asks for such at run time, if at all.
LATER_FUNCTIONS = {"GetDpiForWindow", "GetDpiForSystem", "AdjustWindowRectExForDpi",
                   "SystemParametersInfoForDpi", "SetDialogDpiChangeBehavior",
                   "SetProcessDpiAwarenessContext", "GetSystemTimePreciseAsFileTime",
                   "WaitOnAddress", "WakeByAddressAll", "WakeByAddressSingle"}


def resource(image, kind):
    """The bytes of the first resource of a kind."""
    root = image.DIRECTORY_ENTRY_RESOURCE
    entry = next(item for item in root.entries if item.id == pefile.RESOURCE_TYPE[kind])
    while hasattr(entry, "directory"):
        entry = entry.directory.entries[0]
    data = entry.data.struct
    return image.get_data(data.OffsetToData, data.Size)


class ProgramFile:
    """The promises that hold for either program."""

    name = ""
    description = ""

    @classmethod
    def setUpClass(cls):
        cls.image = pefile.PE(str(FOLDER / cls.name))

    def imports(self):
        return {entry.dll.decode().lower(): {function.name.decode() for function in entry.imports}
                for entry in self.image.DIRECTORY_ENTRY_IMPORT}

    def test_only_libraries_of_every_system_are_needed(self):
        self.assertLessEqual(set(self.imports()), SYSTEM_LIBRARIES)

    def test_no_function_of_a_later_system_is_needed(self):
        needed = set().union(*self.imports().values())
        self.assertFalse(needed & LATER_FUNCTIONS)
        self.assertIn("CreateWindowExA", needed)

    def test_it_is_a_32_bit_program_with_windows(self):
        self.assertEqual(self.image.FILE_HEADER.Machine, pefile.MACHINE_TYPE["IMAGE_FILE_MACHINE_I386"])
        self.assertEqual(self.image.OPTIONAL_HEADER.Subsystem,
                         pefile.SUBSYSTEM_TYPE["IMAGE_SUBSYSTEM_WINDOWS_GUI"])

    def test_it_runs_on_the_oldest_listed_system(self):
        header = self.image.OPTIONAL_HEADER
        self.assertLessEqual((header.MajorSubsystemVersion, header.MinorSubsystemVersion), (6, 1))

    def test_it_lies_anywhere_in_memory_and_data_is_not_run(self):
        flags = self.image.OPTIONAL_HEADER
        self.assertTrue(flags.IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE)
        self.assertTrue(flags.IMAGE_DLLCHARACTERISTICS_NX_COMPAT)
        # Without a table of what is to be moved along, the first flag has no effect.
        self.assertFalse(self.image.FILE_HEADER.IMAGE_FILE_RELOCS_STRIPPED)
        self.assertGreater(len(self.image.DIRECTORY_ENTRY_BASERELOC), 0)

    def test_the_manifest_asks_for_what_the_windows_are_made_for(self):
        root = xml.etree.ElementTree.fromstring(resource(self.image, "RT_MANIFEST"))
        texts = {element.tag.split("}")[1]: (element.text or "").strip() for element in root.iter()}
        self.assertEqual(texts["dpiAwareness"], "PerMonitorV2, PerMonitor")
        self.assertEqual(texts["dpiAware"], "true/pm")
        self.assertEqual(texts["longPathAware"], "true")
        attributes = [element.attrib for element in root.iter()]
        self.assertTrue(any(each.get("name") == "Microsoft.Windows.Common-Controls"
                            and each.get("version") == "6.0.0.0" for each in attributes))
        self.assertTrue(any(each.get("level") == "asInvoker" for each in attributes))
        self.assertEqual(sum(tag.endswith("supportedOS") for tag in
                             (element.tag for element in root.iter())), 4)

    def test_the_version_resource_names_the_program(self):
        tables = [table for info in self.image.FileInfo[0] if info.Key == b"StringFileInfo"
                  for table in info.StringTable]
        strings = {key.decode(): value.decode() for key, value in tables[0].entries.items()}
        self.assertEqual(strings["ProductName"], "Velmars Tarvik")
        self.assertEqual(strings["FileDescription"], self.description)
        self.assertEqual(strings["OriginalFilename"], self.name)

    def test_the_icon_comes_in_sizes_for_small_and_fine_screens(self):
        group = resource(self.image, "RT_GROUP_ICON")
        count = int.from_bytes(group[4:6], "little")
        widths = {group[6 + 14 * i] or 256 for i in range(count)}
        self.assertLessEqual({16, 24, 32, 48, 256}, widths)


class TarvikTest(ProgramFile, unittest.TestCase):
    name = "tarvik.exe"
    description = "Velmars Tarvik"


class DemoTest(ProgramFile, unittest.TestCase):
    name = "tarvik-demo.exe"
    description = "Velmars Tarvik on a simulated link"


if __name__ == "__main__":
    unittest.main()
