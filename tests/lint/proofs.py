"""Offenders and innocents made up for the rules: a rule that cannot fail, or that fails for what is
right, is no rule."""

import pathlib
import tempfile

import rules
import tools

ROOT = pathlib.Path(__file__).resolve().parents[2]
GLOB = "file(GLOB_RECURSE core_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.cpp)\n"


def including(name, target):
    path = target.split("/", 1)[1]
    return {name: '#include "%s"\n' % path, target: ""}


def trap(function, name, call="guarded"):
    return {"src/ui/mdlA.cpp": "%s\n    %s(%s, [] {});\n}\n" % (function, call, name)}


EXCEPTED = {*rules.SHARED_NAMES, *rules.NAMED_BY_CALLERS}


def procedures(names):
    return {"src/ui/A.cpp": "".join("void %s() {\n}\n" % name for name in sorted(names))}


STATEMENT = "    a();\n"
LONG = STATEMENT * rules.LONGEST_FUNCTION


def body(head, lines):
    return "%s {\n%s}\n" % (head, lines)


OFFENDERS = [
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
    (rules.check_accessors, {"src/controls/A.cpp": "void f() { platform().desktop.beep(); }\n"}),
    (rules.check_accessors, {"src/forms/A.cpp": "int a = state().a;\n"}),
    (rules.check_accessors, {"src/controls/A.cpp": "bool a = b && platform().c;\n"}),
    (rules.check_accessors, {"src/types/A.cpp": "forms().frmMain.unload();\n"}),
    (rules.check_accessors, {"src/ports/A.h": "bool a = !state().a;\n"}),
    (rules.check_accessors, {"src/forms/A.cpp": "journal().leave();\n"}),
    (rules.check_accessors, {"src/forms/A.cpp": "int a = StateScope::get(b).a;\n"}),
    (rules.check_accessors, {"platforms/linux/A.cpp": "platform().desktop.beep();\n"}),
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
    (rules.check_names, {"src/types/A.h": "// a long line\nQuoteMark q = \"long\";\n"}),
    (rules.check_names, {"src/types/A.h": "const int a = 1'000'000; // long\nint b = 1'0;\n"}),
    (rules.check_names, {"platforms/linux/A.h": "QString text;\n"}),
    (rules.check_names, {"src/types/A.h": 'text = "Windows Sockets version ";\n'}),
    (rules.check_exceptions, procedures(EXCEPTED)),
    (rules.check_accessors, {"src/ports/Platform.h": "Platform& platform();\n"}),
    (rules.check_accessors, {"src/ui/A.cpp": "void f() { platform().desktop.beep(); }\n"}),
    (rules.check_accessors, {"src/forms/A.cpp": "A& a() {\n    return AScope::get(\"none\");\n}\n"}),
    (rules.check_accessors, {"platforms/linux/A.cpp": "int a = bus_.state();\nint b = c->state();\n"}),
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


def failed_proofs():
    for check, files in OFFENDERS:
        if not list(check(files)):
            yield "%s lets pass: %s" % (check.__name__, files)
    for check, files in INNOCENTS:
        for problem in check(files):
            yield "%s is wrong: %s" % (check.__name__, problem)
    proven = {check for check, _ in OFFENDERS}
    for name, rule in vars(rules).items():
        if name.startswith("check_") and rule not in proven:
            yield name + " was never seen to fail"
    yield from failed_tool_proofs()
