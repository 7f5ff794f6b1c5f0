#!/usr/bin/env python3
"""One table from the rows of the measuring programs: [--keep FILE | --check FILE] FACE=FILE...

A row is a measure, the program's figure, the figure of what stands beside it in the same run, and its
name, with tabs between them. `--keep` stores how they compare; `--check` fails when one has become a
third worse than what is stored, or is not measured any more. Times alone are never compared: they tell
of the computer."""

import sys

WORSE = 4 / 3


def shown(figure):
    return "%.0f" % figure if figure >= 1000 else "%.1f" % figure if figure >= 10 else "%.3f" % figure


def rows_of(arguments):
    """Face, measure, own figure, figure beside it, and its name."""
    for argument in arguments:
        face, path = argument.split("=", 1)
        with open(path, encoding="utf-8") as file:
            for line in file.read().splitlines():
                parts = line.split("\t")
                if len(parts) == 4:
                    measure, own, floor, name = parts
                    yield face, measure, float(own), float(floor), name


def ratios_of(rows):
    """By face, measure and what stands beside it; not where that costs nothing."""
    return {(face, measure, name): own / floor for face, measure, own, floor, name in rows if floor > 0}


def read_ratios(path):
    with open(path, encoding="utf-8") as file:
        lines = [line.split("\t") for line in file.read().splitlines()]
    return {tuple(key): float(ratio) for *key, ratio in lines}


def keep(path, ratios):
    with open(path, "w", encoding="utf-8") as file:
        for key, ratio in sorted(ratios.items()):
            file.write("%s\t%.3f\n" % ("\t".join(key), ratio))


def print_table(rows):
    lines = [("face", "measure", "program", "beside it", "ratio", "what stands beside it")]
    for face, measure, own, floor, name in rows:
        ratio = shown(own / floor) if floor > 0 else ""
        lines.append((face, measure, shown(own), shown(floor), ratio, name))
    widths = [max(len(line[column]) for line in lines) for column in range(6)]
    for number, line in enumerate(lines):
        cells = [
            cell.rjust(width) if column in (2, 3, 4) else cell.ljust(width)
            for column, (cell, width) in enumerate(zip(line, widths))
        ]
        print("| " + " | ".join(cells) + " |")
        if number == 0:
            print("|" + "|".join("-" * (width + 2) for width in widths) + "|")


def worse(stored, ratios):
    """What to tell of each that is."""
    for key, ratio in sorted(stored.items()):
        name = ", ".join(key)
        if key not in ratios:
            yield "not measured: " + name
        elif ratios[key] > ratio * WORSE:
            yield "a third worse: %s: %s, stored %s" % (name, shown(ratios[key]), shown(ratio))


def main():
    arguments = sys.argv[1:]
    mode, path = "", ""
    if arguments and arguments[0] in ("--keep", "--check"):
        mode, path = arguments[:2]
        arguments = arguments[2:]
    rows = list(rows_of(arguments))
    print_table(rows)
    if mode == "--keep":
        keep(path, ratios_of(rows))
    elif mode == "--check":
        found = list(worse(read_ratios(path), ratios_of(rows)))
        print("\n" + ("\n".join(found) or "None is a third worse than what is stored."))
        sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
