"""The rules of the house. Each takes files as {name: text} and yields one line per offence."""

import re

LONGEST = 500
LONGEST_FUNCTION = 60
WIDEST = 112

# The folders of src/, from the top floor to the lowest: a file may include files of its own folder
# and of the floors below it, never of a folder beside its own.
FLOORS = [
    ["wiring"],
    ["startup"],
    ["history", "monitor"],
    ["settings"],
    ["plan"],
    ["journal", "ledger"],
    ["ui"],
    ["forms", "dialogs", "connection"],
    ["controls", "state"],
    ["ports"],
    ["types"],
]
# What the folders of platforms/ may include of src/: ports to serve, forms and controls to show.
SHOWN_TO_PLATFORMS = ["src/forms", "src/controls", "src/ports", "src/types"]
# Each platform stands alone, on what all have in common. The programs in app/ choose from all.
PLATFORMS = ["linux", "windows", "scripted", "simulated"]

# What the core may use of the standard library. Clocks, files, streams, threads and locales are
# services of the machine, and some compilers lack <format>.
STANDARD_HEADERS = set(
    "algorithm array bit bitset cassert cctype charconv chrono cmath compare concepts cstddef "
    "cstdint cstdlib cstring deque exception functional initializer_list iterator limits list map "
    "memory new numeric optional queue random ranges ratio set span stack stdexcept string "
    "string_view tuple type_traits typeindex unordered_map unordered_set utility variant vector"
    .split()
)

# What src/ names nowhere, not even in comments. "Windows Sockets" is the name of an interface that
# users read in messages.
SYSTEM_NAMES = [
    r"Qt[0-9]?", r"Q[A-Z][a-z]\w+", "GTK", r"Gtk\w*", "KDE", "GNOME", "Win32", "WinAPI",
    r"Windows(?! [Ss]ockets\b)", "Linux", "Unix", "POSIX", "X11", "Wayland", "D-Bus", r"[Dd][Bb]us\w*",
    "HWND", "HINSTANCE", "DWORD", "LPSTR",
]
# What its code does not use.
BANNED_WORDS = [
    "long", "printf", "fprintf", "sprintf", "snprintf", r"v\w*printf", "strftime", "setlocale", "getenv",
    "cout", "cerr", "cin", "system_clock", "std::time", "std::localtime", "std::gmtime",
]

# Written in pieces, so that this file does not hold what it looks for.
FOREIGN_WORDS = [
    r"\b[Tt]he " + r"specification\b", r"\bspec" + r"\.md\b", r"\bPart " + r"[0-9]+\.[0-9]",
    r"\b[Ii]ssue " + r"#?[0-9]", r"\b[Ii]ssue " + "#", "/wo" + "rk/", "/ho" + "me/",
    "debian" + r"\.org", "npm" + r"js\b", "pypi" + r"\.org", "crates" + r"\.io",
]

# Procedures that report errors under another name than their own, on purpose.
SHARED_NAMES = {
    "cmdConnect_Click": "cmdHistory_Click",
    "cmdDisconnect_Click": "cmdHistory_Click",
    "GetIPAddress": "GetBytes",
    "connectCloseBox": "Form_QueryUnload",
    "valueOfFirstRecord": "GetTransferNthRow",
    "valueOfLaterRecord": "GetTransfer1stRow",
    "cellValue": "GetTransfer",
}

# What several procedures do alike: each hands in its own name.
NAMED_BY_CALLERS = {"nextWeekday", "quarterBoundary", "showChosenView", "onGotFocus", "onKeyDown",
                    "onKeyUp"}

# Procedures of forms that have the same name carry the form's before it.
FORM_PREFIX = re.compile(r"^frm[A-Z][A-Za-z]+_")

# The beginning of a procedure, by its name.
PROCEDURE = re.compile(r"^(?:[\w:<>,&*]+ )+(?:\w+::)?([A-Za-z]\w*)\(", re.MULTILINE)

# Comments and what stands in quotes.
TOKENS = re.compile(
    r"""//[^\n]*|/\*.*?\*/|R"\((?:.*?)\)"|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'""",
    re.DOTALL,
)


def folder_of(name):
    """The folder that a floor or a platform is: src/types, platforms/linux, app; None elsewhere."""
    found = re.match(r"(src/\w+|platforms/\w+|app)/", name)
    folder = found.group(1) if found else None
    return folder if folder in BELOW else None


def below():
    """For each folder what it may include; None for what may include everything."""
    result = {"app": None}
    for number, floor in enumerate(FLOORS):
        lower = ["src/" + one for other in FLOORS[number + 1:] for one in other]
        for one in floor:
            result["src/" + one] = {"src/" + one, *lower}
    result["platforms/common"] = {"platforms/common", *SHOWN_TO_PLATFORMS}
    for one in PLATFORMS:
        result["platforms/" + one] = {"platforms/" + one, *result["platforms/common"]}
    return result


BELOW = below()


def includes(text):
    return re.findall(r'^[ \t]*#[ \t]*include[ \t]*(["<])([^">]+)[">]', text, re.MULTILINE)


def included(name, text, files):
    """The files of ours that this one includes."""
    for _, path in includes(text):
        for folder in ("src/", "platforms/", "app/"):
            if folder + path in files and (folder != "app/" or name.startswith("app/")):
                yield folder + path


def without_comments(text, strings=True):
    """The code alone: comments go, and what stands in quotes."""
    def replacement(found):
        quoted = found.group(0)[0] in "\"'R"
        return found.group(0) if quoted and not strings else " "
    return TOKENS.sub(replacement, text)


def check_order(files):
    for name, text in files.items():
        folder = folder_of(name)
        if folder is None:
            yield name + ": stands on no floor"
        elif BELOW[folder] is not None:
            for target in included(name, text, files):
                if folder_of(target) not in BELOW[folder]:
                    yield "%s: must not include %s" % (name, target)


def check_paths(files):
    """Only an include that names the whole path from src/ or platforms/ can be judged."""
    for name, text in files.items():
        for quote, path in includes(text):
            ours = any(folder + path in files for folder in ("src/", "platforms/", "app/"))
            if (quote == '"') != ours:
                yield "%s: includes %s by another way than its path in quotes" % (name, path)


def circle_in(arrows):
    """One circle of the arrows {from: {to}}, as the way around it; none if there is none."""
    done, trail = set(), []

    def visit(name):
        if name in trail:
            return trail[trail.index(name):] + [name]
        if name in done:
            return None
        trail.append(name)
        for target in sorted(arrows.get(name, ())):
            circle = visit(target)
            if circle:
                return circle
        trail.pop()
        done.add(name)
        return None

    return next(filter(None, map(visit, sorted(arrows))), None)


def arrows_between(files, whole):
    """Who includes whom, where `whole` tells what a file is a part of."""
    arrows = {}
    for name, text in files.items():
        for target in included(name, text, files):
            if whole(name) != whole(target):
                arrows.setdefault(whole(name), set()).add(whole(target))
    return arrows


def units_of(files):
    """A header and the sources beside it that say what it declares, by file: those that bear its name,
    and in src/ those without a header of their name that include it before anything else."""
    units = {}
    for name, text in files.items():
        own = name.rsplit(".", 1)[0]
        first = next(iter(included(name, text, files)), None)
        if name.startswith("src/") and name.endswith(".cpp") and own + ".h" not in files and first:
            beside = first.rsplit("/", 1)[0] == name.rsplit("/", 1)[0]
            own = first.rsplit(".", 1)[0] if beside else own
        units[name] = own
    return units


def check_circles(files):
    """Neither files nor units, nor folders, need each other in a circle."""
    for whole in (lambda name: name, units_of(files).get, lambda name: name.rsplit("/", 1)[0]):
        circle = circle_in(arrows_between(files, whole))
        if circle:
            yield "a circle: " + " -> ".join(circle)
            return


def words_in(text, words):
    """Where one of the words stands alone."""
    return re.finditer(r"\b(?:%s)\b" % "|".join(words), text)


def check_names(files):
    for name, text in files.items():
        if name.startswith("src/"):
            for word in [*words_in(text, SYSTEM_NAMES),
                         *words_in(without_comments(text), BANNED_WORDS)]:
                yield "%s: names %s" % (name, word.group(0))


def check_standard_headers(files):
    for name, text in files.items():
        if name.startswith("src/"):
            for quote, path in includes(text):
                if quote == "<" and path not in STANDARD_HEADERS:
                    yield "%s: includes <%s>" % (name, path)
        elif name.startswith("platforms/") and ("<", "iostream") in includes(text):
            yield name + ": includes <iostream>"


def check_words(files):
    for name, text in files.items():
        for found in re.finditer("|".join(FOREIGN_WORDS), text):
            yield "%s:%d: says %s" % (name, text.count("\n", 0, found.start()) + 1, found.group(0))


def check_length(files):
    for name, text in files.items():
        if text.count("\n") > LONGEST:
            yield "%s: %d lines" % (name, text.count("\n"))


# What Markdown cannot break, and a line that is one: a table's, a heading.
UNBREAKABLE = re.compile(r"`[^`]*`|!?\[[^]]*\]\([^)]*\)")
ONE_LINE = re.compile(r"[|#]")


def check_columns(files):
    """Lines of texts that could be broken are, but for what is quoted between fences."""
    for name, text in files.items():
        fenced = False
        for number, line in enumerate(text.splitlines(), 1):
            fenced ^= line.startswith("```")
            words = UNBREAKABLE.sub("x", re.sub(r"^\s*([-*]|[0-9]+\.) ", "", line)).split()
            if len(line) > WIDEST and len(words) > 1 and not fenced and not ONE_LINE.match(line):
                yield "%s:%d: %d columns" % (name, number, len(line))


# What stands before the brace of a function or of a lambda with parameters, and of what it holds.
FUNCTION_HEAD = re.compile(r"\)\s*(?:(?:const|override|noexcept|mutable)\s*)*(?:->\s*[^{};]+)?$")
BLOCKS = ["if", "else", "for", "while", "switch", "catch"]
BLOCK_HEAD = re.compile(r"\s*(?:%s)\b" % "|".join(BLOCKS))


def braced(code):
    """Everything in braces, the inner before the outer: what stands before it, where it begins, and
    where it ends."""
    open_ones, begin = [], 0
    for found in re.finditer(r"[{};]", code):
        at = found.start()
        if code[at] == "{":
            open_ones.append((code[begin:at], at))
        elif code[at] == "}" and open_ones:
            head, start = open_ones.pop()
            yield head, start, at
        begin = at + 1


def lines_without_table(code, start, end):
    """How many lines a function has, but for a list that it returns."""
    body = code[start + 1:end]
    tables = [body.count("\n", at, to) for head, at, to in braced(body)
              if re.search(r"\breturn\s*$", head)]
    return body.count("\n") - max(tables, default=0)


def check_function_length(files):
    for name, text in files.items():
        if name.endswith((".cpp", ".h")):
            code = without_comments(text)
            for head, start, end in braced(code):
                if FUNCTION_HEAD.search(head) and not BLOCK_HEAD.match(head):
                    lines = lines_without_table(code, start, end)
                    if lines > LONGEST_FUNCTION:
                        yield "%s:%d: %d lines in a function" % (
                            name, code.count("\n", 0, start) + 1, lines)


def check_once(files):
    for name, text in files.items():
        if name.endswith(".h") and not text.startswith("#pragma once\n"):
            yield name + ": does not begin with #pragma once"


def check_exceptions(files):
    """Whoever is excepted from having his own name in the error trap is there."""
    code = "\n".join(without_comments(text) for name, text in files.items()
                     if name.startswith("src/"))
    defined = {found.group(1) for found in PROCEDURE.finditer(code)}
    for name in sorted({*SHARED_NAMES, *NAMED_BY_CALLERS} - defined):
        yield "src/: no procedure is called %s, which tests/lint/rules.py excepts" % name


def check_trap_names(files):
    """The error trap reports a procedure under its own name: that of the function it stands in."""
    for name, text in files.items():
        if not name.startswith("src/"):
            continue
        code = without_comments(text, strings=False)
        begins = [(found.start(), found.group(1)) for found in PROCEDURE.finditer(code)]
        for found in re.finditer(r"\b(\w+)\(\s*(?:\"(\w+)\"|(\w+))\s*[,)(]", code):
            call, literal = found.group(1), found.group(2)
            if call != "guarded" and (call not in NAMED_BY_CALLERS or literal is None):
                continue
            inside = next((one for at, one in reversed(begins) if at <= found.start()), "")
            if inside in ("guarded", call):
                continue
            own = FORM_PREFIX.sub("", inside)
            if literal is None:
                if inside not in NAMED_BY_CALLERS:
                    yield "%s: %s does not say its name" % (name, inside)
            elif literal != SHARED_NAMES.get(inside, own):
                yield "%s: %s reports errors as %s" % (name, inside, literal)


def check_accessors(files):
    """What is in use of platform, state, windows and journal is asked for by procedures alone: what
    those are made of works for any."""
    accessor = re.compile(r"\b\w+& (\w+)\(\) \{\s*return \w+Scope::get\([^)]*\);\s*\}")
    known = {found.group(1) for text in files.values() for found in accessor.finditer(text)}
    asks = re.compile(r"(?<!\w& )(?<![.>])\b(?:%s)\(\)|\b\w+Scope::get\(" % ("|".join(sorted(known)) or "none"))
    for name, text in files.items():
        if name.startswith(("src/types/", "src/ports/", "src/controls/", "src/forms/",
                            "platforms/")):
            for found in asks.finditer(accessor.sub("", without_comments(text))):
                yield "%s: asks %s itself" % (name, found.group(0))


def check_text_tables(files):
    """Texts may come from a file: tables that find them by a number take it from a hash with a seed."""
    for name, text in files.items():
        for found in re.finditer(r"unordered_\w+<\s*std::string[^;{(]*", without_comments(text)):
            if "TextHash" not in found.group(0):
                yield "%s: %s has a hash without a seed" % (name, found.group(0))


def check_lists(files):
    """Every compiler builds every file of src/: found by one glob, none listed, none left out."""
    for name, text in files.items():
        for found in re.finditer(r"src/[\w/]+\.cpp", text):
            yield "%s: lists %s" % (name, found.group(0))
        for found in re.finditer(r"list\(\s*\w+\s+core_sources\b[^)]*\)", text):
            yield "%s: changes the list of sources: %s" % (name, found.group(0))
        if name == "CMakeLists.txt" and not re.search(
                r"^file\(GLOB_RECURSE core_sources .*/src/\*\.cpp\)", text, re.MULTILINE):
            yield name + ": does not take every file of src/"
