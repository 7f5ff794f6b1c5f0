#!/usr/bin/env python3
"""One table from the rows of the measuring programs: FACE=FILE... A row is a measure, the program's
figure, the figure of what stands beside it, and its name, with tabs between them."""

import sys


def shown(figure):
    number = float(figure)
    return "%.0f" % number if number >= 1000 else "%.1f" % number if number >= 10 else "%.3f" % number


def main():
    lines = [("face", "measure", "program", "beside it", "what stands beside it")]
    for argument in sys.argv[1:]:
        face, path = argument.split("=", 1)
        with open(path, encoding="utf-8") as file:
            for line in file.read().splitlines():
                parts = line.split("\t")
                if len(parts) == 4:
                    measure, own, floor, name = parts
                    lines.append((face, measure, shown(own), shown(floor), name))
    widths = [max(len(line[column]) for line in lines) for column in range(5)]
    for number, line in enumerate(lines):
        cells = [
            cell.rjust(width) if column in (2, 3) else cell.ljust(width)
            for column, (cell, width) in enumerate(zip(line, widths))
        ]
        print("| " + " | ".join(cells) + " |")
        if number == 0:
            print("|" + "|".join("-" * (width + 2) for width in widths) + "|")


if __name__ == "__main__":
    main()
