"""Offenders and innocents made up for the rules: a rule that cannot fail, or that fails for what is
right, is no rule."""

import pathlib
import re
import tempfile

import rules
import tools

ROOT = pathlib.Path(__file__).resolve().parents[2]
GLOB = "file(GLOB_RECURSE core_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.cpp)\n"


def including(name, target):
    path = target.split("/", 1)[1]
    return {name: '#include "%s"\n' % path, target: ""}


def trap(function, name, call="guarded", folder="src/ui"):
    return {folder + "/mdlA.cpp": "%s\n    %s(%s, [] {});\n}\n" % (function, call, name)}


def asking(name, code):
    """A file, and accessors that it may ask or not."""
    return {name: code, "src/state/Accessors.cpp": "".join(
        "A& %s() {\n    return AScope::get(\"none\");\n}\n" % one
        for one in ("platform", "state", "forms", "journal", "ledger"))}


EXCEPTED = {*rules.SHARED_NAMES, *rules.NAMED_BY_CALLERS}


def procedures(names):
    return {"src/ui/A.cpp": "".join("void %s() {\n}\n" % name for name in sorted(names))}


STATEMENT = "    a();\n"
LONG = STATEMENT * rules.LONGEST_FUNCTION


def body(head, lines):
    return "%s {\n%s}\n" % (head, lines)


FOLDERS = ["src/" + one for floor in rules.FLOORS for one in floor]
# The floors as they are meant, by one folder of each, the lowest first: whoever turns two of them
# around in the rules is told.
UPWARDS = ["types", "ports", "state", "forms", "ui", "ledger", "plan", "settings", "monitor", "startup",
           "wiring"]
# What platforms may include of src/, as it is meant.
SEEN = ["src/types", "src/ports", "src/controls", "src/forms"]
# Examples of the words that stand for several; any other word is its own.
EXAMPLES = [
    "Qt", "Qt6", "QString", "Gtk", "GtkWidget", "Windows", "DBus", "dbus_bus_get", "vprintf", "vsnprintf",
    "the " + "specification", "The " + "specification", "spec" + ".md", "Part " + "1.1", "issue " + "7",
    "Issue " + "#7", "issue " + "#", "debian" + ".org", "npm" + "js",
    "pypi" + ".org", "crates" + ".io",
]


def examples_of(word):
    """What that word of a list stands for: at least one, whatever is added to the list."""
    plain = [word] if re.fullmatch(r"[\w:/-]+", word) else []
    return plain or [one for one in EXAMPLES if re.fullmatch(word, one)]


def offending_orders():
    """Each folder of a floor includes each one beside it, and each of the floor above."""
    for below, above in zip(UPWARDS, UPWARDS[1:]):
        yield including("src/%s/A.h" % below, "src/%s/B.h" % above)
    for number, floor in enumerate(rules.FLOORS):
        for one in floor:
            for other in [*floor, *(rules.FLOORS[number - 1] if number else [])]:
                if one != other:
                    yield including("src/%s/A.h" % one, "src/%s/B.h" % other)
    for platform in ["common", *rules.PLATFORMS]:
        others = ["platforms/" + one for one in rules.PLATFORMS if one != platform]
        for folder in [*others, *(one for one in FOLDERS if one not in SEEN)]:
            yield including("platforms/%s/A.h" % platform, folder + "/B.h")


def innocent_orders():
    """Each folder includes each one of the floor below, itself, and what platforms may see."""
    for above, below in zip(rules.FLOORS, [*rules.FLOORS[1:], []]):
        for one in above:
            for other in [one, *below]:
                yield including("src/%s/A.h" % one, "src/%s/B.h" % other)
    for platform in ["common", *rules.PLATFORMS]:
        for folder in ["platforms/common", *SEEN]:
            yield including("platforms/%s/A.h" % platform, folder + "/B.h")


def offending_words():
    for check, words, name in ((rules.check_names, rules.SYSTEM_NAMES, "src/types/A.h"),
                               (rules.check_names, rules.BANNED_WORDS, "src/types/A.h"),
                               (rules.check_words, rules.FOREIGN_WORDS, "README.md")):
        for word in words:
            for example in examples_of(word):
                yield check, {name: "a %s b;\n" % example}


def table_with(block):
    """A function that returns a list of nothing but a lambda with a long block in it."""
    return {"src/ui/A.cpp": body("T f()", "    return {[] {\n%s {\n%s}\n}};\n" % (block, LONG))}


def long_blocks():
    heads = {"else": "else if (a)", "for": "for (int a : b)"}
    words = {"if", "else", "for", "while", "switch", "catch", *rules.BLOCKS}
    return [table_with(heads.get(word, word + " (a)")) for word in sorted(words)]


RETURNED = "    return {\n" + "{1},\n" * (rules.LONGEST_FUNCTION + 1) + "};\n"
WIDE = "a " * (rules.WIDEST // 2) + "a"

OFFENDERS = [
    *((rules.check_order, files) for files in offending_orders()),
    *offending_words(),
    *((rules.check_names, {folder + "/A.h": "HWND window;\n"}) for folder in FOLDERS),
    *((rules.check_trap_names, trap("void A() {", '"B"', folder=folder)) for folder in FOLDERS),
    (rules.check_names, {"src/types/A.h": "/* a\n// */ long b;\n"}),
    (rules.check_names, {"src/types/A.h": 'auto a = R"(")"; long b; // "\n'}),
    (rules.check_once, {"src/types/A.h": "\n#pragma once\n"}),
    (rules.check_once, {"src/types/A.h": "// A list.\n#pragma once\n"}),
    *((rules.check_function_length, {"src/ui/A.h": body("int f() " + word, LONG)})
      for word in ("override", "noexcept", "const noexcept override")),
    (rules.check_function_length, {"src/ui/A.cpp": body("auto f() -> std::vector<int>", LONG)}),
    (rules.check_function_length, {"src/ui/A.cpp": body("int a = [](int b) mutable", LONG)}),
    (rules.check_function_length, {"src/ui/A.cpp": body("T f()", RETURNED + RETURNED)}),
    (rules.check_function_length, {"src/ui/A.cpp": body("T f()", RETURNED + "    a({\n" + LONG + "});\n")}),
    (rules.check_function_length, table_with("g(a)")),
    (rules.check_columns, {"README.md": WIDE + "\n"}),
    (rules.check_columns, {"README.md": "- " + WIDE[2:] + "\n"}),
    (rules.check_columns, {"README.md": "[a](b) %s\n" % ("a" * rules.WIDEST)}),
    (rules.check_columns, {"README.md": "```\na\n```\n" + WIDE + "\n"}),
    (rules.check_order, including("src/types/A.h", "src/ports/B.h")),
    (rules.check_order, including("src/ports/A.h", "src/state/mdlVar.h")),
    (rules.check_order, including("src/state/mdlTools.h", "src/forms/Forms.h")),
    (rules.check_order, including("src/controls/A.h", "src/settings/mdlB.h")),
    (rules.check_order, including("src/forms/frmMain.cpp", "src/ui/mdlGUI.h")),
    (rules.check_order, including("src/ui/mdlGUI.cpp", "src/wiring/frmMainEvents.h")),
    (rules.check_order, including("src/startup/mdlA.cpp", "src/wiring/World.h")),
    (rules.check_order, including("src/history/mdlA.cpp", "src/monitor/mdlB.h")),
    (rules.check_order, including("platforms/linux/A.h", "src/settings/mdlB.h")),
    (rules.check_order, including("platforms/linux/A.h", "src/state/mdlVar.h")),
    (rules.check_order, including("platforms/linux/A.h", "platforms/scripted/B.h")),
    (rules.check_order, including("platforms/scripted/A.h", "src/wiring/frmMainEvents.h")),
    (rules.check_order, including("platforms/windows/A.h", "platforms/linux/B.h")),
    (rules.check_order, including("src/types/A.h", "platforms/common/B.h")),
    (rules.check_order, {"src/elsewhere/A.h": ""}),
    (rules.check_paths, {"src/types/A.h": '#include "B.h"\n', "src/types/B.h": ""}),
    (rules.check_paths, {"src/types/A.h": "#include <types/B.h>\n", "src/types/B.h": ""}),
    (rules.check_paths, {"platforms/linux/A.h": '#include "../common/B.h"\n'}),
    (rules.check_circles, {"src/types/A.h": '#include "types/B.h"\n',
                           "src/types/B.h": '#include "types/C.h"\n',
                           "src/types/C.h": '#include "types/A.h"\n'}),
    (rules.check_circles, {"src/types/A.h": "", "src/types/A.cpp": '#include "types/B.h"\n',
                           "src/types/B.h": '#include "types/A.h"\n'}),
    (rules.check_circles, {"src/types/A.h": "", "src/types/ALoad.cpp": '#include "types/A.h"\n#include "types/B.h"\n',
                           "src/types/B.h": "", "src/types/B.cpp": '#include "types/A.h"\n'}),
    (rules.check_circles, {"platforms/linux/a/A.cpp": '#include "linux/b/B.h"\n',
                           "platforms/linux/b/B.h": "", "platforms/linux/a/C.h": "",
                           "platforms/linux/b/D.cpp": '#include "linux/a/C.h"\n'}),
    (rules.check_names, {"src/types/A.h": "QString text;\n"}),
    (rules.check_names, {"src/types/A.h": "// as Qt does\n"}),
    (rules.check_names, {"src/types/A.h": "#ifdef Win32\n"}),
    (rules.check_names, {"src/types/A.h": "// as Windows does\n"}),
    (rules.check_names, {"src/types/A.h": "HWND window;\n"}),
    (rules.check_names, {"src/types/A.h": "unsigned long a;\n"}),
    (rules.check_names, {"src/types/A.h": "std::printf(text);\n"}),
    (rules.check_names, {"src/types/A.h": "char a = '\"';\nlong b;\nchar c = '\"';\n"}),
    (rules.check_text_tables, {"src/types/A.h": "std::unordered_map<std::string, int> a;\n"}),
    (rules.check_text_tables, {"src/types/A.h": "std::unordered_set<std::string_view> a;\n"}),
    (rules.check_standard_headers, {"src/types/A.h": "#include <QString>\n"}),
    (rules.check_standard_headers, {"src/types/A.h": "#include <unistd.h>\n"}),
    (rules.check_standard_headers, {"src/types/A.h": "#include <sys/stat.h>\n"}),
    (rules.check_standard_headers, {"src/types/A.h": "#include <format>\n"}),
    (rules.check_standard_headers, {"src/types/A.h": "  # include <iostream>\n"}),
    (rules.check_standard_headers, {"platforms/common/A.h": "#include <iostream>\n"}),
    (rules.check_trap_names, trap("void A() {", '"B"')),
    (rules.check_trap_names, {"src/ui/mdlA.cpp": 'void A() {\n    guarded("A", f);\n}\n'
                                                 'bool B() {\n    return guarded("A", f);\n}\n'}),
    (rules.check_trap_names, trap("void A() {", "name")),
    (rules.check_trap_names, trap("void cmdConnect_Click() {", '"cmdConnect_Click"')),
    (rules.check_trap_names, trap("void optA_Click() {", '"optB_Click"', "showChosenView")),
    (rules.check_exceptions, procedures(EXCEPTED - {"cmdConnect_Click"})),
    (rules.check_exceptions, {**procedures(EXCEPTED - {"nextWeekday"}),
                              "src/ui/B.cpp": "    nextWeekday();\n// void nextWeekday() {\n"}),
    (rules.check_accessors, asking("src/controls/A.cpp", "void f() { platform().desktop.beep(); }\n")),
    (rules.check_accessors, asking("src/forms/A.cpp", "int a = state().a;\n")),
    (rules.check_accessors, asking("src/controls/A.cpp", "bool a = b && platform().c;\n")),
    (rules.check_accessors, asking("src/types/A.cpp", "forms().frmMain.unload();\n")),
    (rules.check_accessors, asking("src/ports/A.h", "bool a = !state().a;\n")),
    (rules.check_accessors, asking("src/forms/A.cpp", "journal().leave();\n")),
    (rules.check_accessors, asking("src/forms/A.cpp", "ledger().release();\n")),
    (rules.check_accessors, {"src/forms/A.cpp": "int a = StateScope::get(b).a;\n"}),
    (rules.check_accessors, asking("platforms/linux/A.cpp", "platform().desktop.beep();\n")),
    (rules.check_words, {"README.md": "as Part " + "1.1 says\n"}),
    (rules.check_words, {"README.md": "The " + "specification says\n"}),
    (rules.check_words, {"README.md": "see issue " + "#7\n"}),
    (rules.check_words, {"README.md": "see spec" + ".md\n"}),
    (rules.check_words, {"run.sh": "cd /ho" + "me/somebody\n"}),
    (rules.check_words, {"run.sh": "cd /wo" + "rk/main\n"}),
    (rules.check_words, {"run.sh": "curl deb.debian" + ".org\n"}),
    (rules.check_length, {"tests/a.py": "\n" * (rules.LONGEST + 1)}),
    (rules.check_function_length, {"src/ui/A.cpp": body("void f(int a,\n       int b)", LONG)}),
    (rules.check_function_length, {"src/ui/A.h": "class A {\n" + body("int f() const", LONG) + "};\n"}),
    (rules.check_function_length, {"src/ui/A.cpp": body("A::A() : b_(0)", LONG)}),
    (rules.check_function_length, {"tests/unit/A.cpp": body("TEST_F(A, B)", LONG)}),
    (rules.check_function_length, {"src/ui/A.cpp": body("int f()", LONG + "    return {\n1};\n")}),
    (rules.check_once, {"src/types/A.h": "int a;\n"}),
    (rules.check_lists, {"CMakeLists.txt": GLOB + "add_library(x src/controls/A.cpp)\n"}),
    (rules.check_lists, {"CMakeLists.txt": GLOB + 'list(FILTER core_sources EXCLUDE REGEX "x")\n'}),
    (rules.check_lists, {"CMakeLists.txt": "add_library(tarvik_core STATIC)\n"}),
]

INNOCENTS = [
    *((rules.check_order, files) for files in innocent_orders()),
    *((rules.check_function_length, files) for files in long_blocks()),
    (rules.check_names, {"src/types/A.h": "/* a long\nlong line */\nint a;\n"}),
    (rules.check_names, {"src/types/A.h": 'auto a = R"(a "long" line)";\n'}),
    (rules.check_columns, {"README.md": WIDE[1:] + "\n"}),
    (rules.check_columns, {"README.md": "| " + WIDE + " |\n# " + WIDE + "\n"}),
    (rules.check_columns, {"README.md": "```\n" + WIDE + "\n```\n"}),
    (rules.check_columns, {"README.md": "- [%s](b)\n![%s](c d)\n`%s`\n" % (WIDE, WIDE, WIDE)}),
    (rules.check_text_tables, {"src/types/A.h": "std::unordered_set<std::string, TextHash> a;\n"}),
    (rules.check_text_tables, {"src/types/A.h": "std::unordered_map<int, std::string> a;\n"}),
    (rules.check_order, including("src/ui/mdlGUI.cpp", "src/forms/Forms.h")),
    (rules.check_order, including("src/startup/mdlShutDown.cpp", "src/ui/mdlSysTray.h")),
    (rules.check_order, including("src/wiring/frmMainEvents.cpp", "src/startup/mdlShutDown.h")),
    (rules.check_order, including("platforms/linux/A.h", "platforms/common/B.h")),
    (rules.check_order, including("platforms/scripted/A.h", "src/forms/StatusLamp.h")),
    (rules.check_order, including("app/a.cpp", "src/wiring/World.h")),
    (rules.check_paths, {"src/types/A.h": '#include "types/B.h"\n#include <string>\n',
                         "src/types/B.h": ""}),
    (rules.check_circles, {"src/types/A.h": '#include "types/B.h"\n#include "types/C.h"\n',
                           "src/types/B.h": '#include "types/C.h"\n', "src/types/C.h": ""}),
    (rules.check_circles, {"platforms/linux/A.h": "", "platforms/linux/B.h": '#include "linux/A.h"\n',
                           "platforms/linux/Kind.cpp": '#include "linux/A.h"\n#include "linux/B.h"\n'}),
    (rules.check_names, {"src/types/A.h": "// a long line\nQuoteMark q = \"long\";\n"}),
    (rules.check_names, {"src/types/A.h": "const int a = 1'000'000; // long\nint b = 1'0;\n"}),
    (rules.check_names, {"platforms/linux/A.h": "QString text;\n"}),
    (rules.check_names, {"src/types/A.h": 'text = "Windows Sockets version ";\n'}),
    (rules.check_exceptions, procedures(EXCEPTED)),
    (rules.check_accessors, {"src/ports/Platform.h": "Platform& platform();\n"}),
    (rules.check_accessors, asking("src/ui/A.cpp", "void f() { platform().desktop.beep(); }\n")),
    (rules.check_accessors, {"src/forms/A.cpp": "A& a() {\n    return AScope::get(\"none\");\n}\n"}),
    (rules.check_accessors, asking("platforms/linux/A.cpp", "int a = bus_.state();\nint b = c->state();\n")),
    (rules.check_trap_names, trap("std::string A(const std::string& b) {", '"A"')),
    (rules.check_trap_names, trap("void frmMine_cmdOK_Click() {", '"cmdOK_Click"')),
    (rules.check_trap_names, trap("void clsA::B() {", '"B"')),
    (rules.check_trap_names, trap("void cmdConnect_Click() {", '"cmdHistory_Click"')),
    (rules.check_words, {"README.md": "Take part in 2 tests; a debian machine at home.\n"}),
    (rules.check_length, {"src/types/A.h": "\n" * rules.LONGEST}),
    (rules.check_function_length, {"src/ui/A.cpp": body("void f()", LONG[len(STATEMENT):])}),
    (rules.check_function_length, {"src/ui/A.cpp": body("T f()", "    return {\n" + "{1},\n" * 90 + "};\n")}),
    (rules.check_function_length, {"src/ui/A.h": body("class A", LONG) + body("namespace a", LONG)}),
    (rules.check_function_length, {"src/ui/A.cpp": body("void f()", "    a(); // {\n") + LONG}),
    (rules.check_once, {"src/types/A.h": "#pragma once\n\nint a;\n", "src/types/A.cpp": "int a;\n"}),
    (rules.check_standard_headers, {"src/types/A.h": '#include <vector>\n#include "types/B.h"\n',
                                    "platforms/linux/A.cpp": "#include <fstream>\n"}),
    (rules.check_lists, {"CMakeLists.txt": GLOB}),
    (rules.check_lists, {"tests/CMakeLists.txt": "add_executable(x unit/A.cpp)\n"}),
]


def failed_tool_proofs():
    """The same for the tools, on files in a folder of their own."""
    with tempfile.TemporaryDirectory(prefix="tarvik-lint-") as folder:
        root = pathlib.Path(folder)
        (root / ".clang-format").write_text((ROOT / ".clang-format").read_text())
        (root / "Good.h").write_text("#pragma once\n#include <string>\nstd::string good();\n")
        (root / "Bad.h").write_text("#pragma once\nstd::string   bad();\n")
        (root / "good.sh").write_text("#!/bin/sh\necho \"$1\"\n")
        (root / "bad.sh").write_text("#!/bin/sh\necho $1\n")
        (root / "good.py").write_text("import sys\nsys.exit(0)\n")
        (root / "bad.py").write_text("import sys\nexit(nobody)\n")
        for check, good, bad in (
            (tools.check_format, ["Good.h"], ["Bad.h"]),
            (tools.check_headers_alone, [("Good.h", ["."])], [("Bad.h", ["."])]),
            (tools.check_shell, ["good.sh"], ["bad.sh"]),
            (tools.check_python, ["good.py"], ["bad.py"]),
        ):
            try:
                if list(check(good, root)):
                    yield check.__name__ + " fails for what is right"
                if not list(check(bad, root)):
                    yield check.__name__ + " cannot fail"
            except tools.Missing:
                pass  # whoever calls the check is told
        yield from failed_memory_proofs(root)


def failed_memory_proofs(root):
    """A header that has compiled is compiled again when something that it includes is another."""
    (root / "Part.h").write_text("#pragma once\nusing Part = int;\n")
    (root / "Whole.h").write_text('#pragma once\n#include "Part.h"\nPart whole();\n')
    try:
        list(tools.check_headers_alone([("Whole.h", ["."])], root))
        (root / "Part.h").write_text("#pragma once\nusing Piece = int;\n")
        if not list(tools.check_headers_alone([("Whole.h", ["."])], root)):
            yield "check_headers_alone does not see that an included file is another"
    except tools.Missing:
        pass


def failed_proofs():
    for check, files in OFFENDERS:
        if not list(check(files)):
            yield "%s lets pass: %s" % (check.__name__, files)
    for check, files in INNOCENTS:
        for problem in check(files):
            yield "%s is wrong: %s" % (check.__name__, problem)
    proven = {check for check, _ in OFFENDERS}
    words = [*rules.SYSTEM_NAMES, *rules.BANNED_WORDS, *rules.FOREIGN_WORDS]
    for word in words:
        if not examples_of(word):
            yield "%s: no example of it in tests/lint/proofs.py" % word
    for example in set(EXAMPLES).difference(*map(examples_of, words)):
        yield "%s: the example of no word in tests/lint/rules.py" % example
    if {"src/" + one for one in UPWARDS} - set(FOLDERS) or len(UPWARDS) != len(rules.FLOORS):
        yield "UPWARDS: not one folder of each floor"
    for name, rule in vars(rules).items():
        if name.startswith("check_") and rule not in proven:
            yield name + " was never seen to fail"
    yield from failed_tool_proofs()
