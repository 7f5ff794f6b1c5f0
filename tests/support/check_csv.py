"""Opens an exported history in a spreadsheet program and compares every cell with the log:

    check_csv.py LOG.ini EXPORT.csv
"""

import csv
import datetime
import pathlib
import subprocess
import sys
import tempfile

HEADER = ["ID", "Date", "Time", "Duration", "Bytes sent", "Bytes rcvd", "IP address"]
SEMICOLONS = "CSV:59,34,76,1"
TABS = "csv:Text - txt - csv (StarCalc):9,34,76,1,,0,false,true"


def sections_of(ini):
    """The sections of an INI file, each as its keys with their values."""
    sections, keys = {}, {}
    for line in ini.splitlines():
        if line.startswith("["):
            keys = sections.setdefault(line[1:-1], {})
        elif "=" in line:
            name, value = line.split("=", 1)
            keys.setdefault(name, value)
    return sections


def records_of(ini):
    """The records of a log in their order: date, time, and the numbers as such."""
    sections = sections_of(ini)
    settings = sections["Settings"]
    records = []
    for number in range(1, int(settings["LastDateStamp"]) + 1):
        stamp = settings["DateStamp%d" % number]
        values = sections[stamp]
        date, time = stamp.split("|", 1)
        records.append({
            "date": date, "time": time, "sent": int(values["Sent"]), "rcvd": int(values["Rcvd"]),
            "duration": int(values["Duration"]), "address": values["IPAddress"],
        })
    return records


def duration_text(milliseconds):
    seconds, rest = divmod(milliseconds, 1000)
    minutes, seconds = divmod(seconds, 60)
    hours, minutes = divmod(minutes, 60)
    return "%02d:%02d:%02d:%03d" % (hours, minutes, seconds, rest)


def expected_rows(ini):
    return [HEADER] + [
        [str(number), record["date"], record["time"], duration_text(record["duration"]),
         str(record["sent"]), str(record["rcvd"]), record["address"]]
        for number, record in enumerate(records_of(ini), 1)
    ]


def time_of_day(cell):
    """Spreadsheets show a time in their own way."""
    try:
        return datetime.datetime.strptime(cell, "%I:%M:%S %p").strftime("%H:%M:%S")
    except ValueError:
        return cell


def spreadsheet_rows(path):
    """The cells that a spreadsheet program shows of the file."""
    with tempfile.TemporaryDirectory(prefix="tarvik-sheet-") as folder:
        subprocess.run(
            ["soffice", "-env:UserInstallation=" + pathlib.Path(folder, "user").as_uri(),
             "--headless", "--infilter=" + SEMICOLONS, "--convert-to", TABS,
             "--outdir", folder, str(path)],
            check=True, capture_output=True, timeout=120,
        )
        shown = pathlib.Path(folder, pathlib.Path(path).stem + ".csv")
        with open(shown, encoding="utf-8", newline="") as file:
            rows = list(csv.reader(file, delimiter="\t"))
    return [row[:2] + [time_of_day(row[2])] + row[3:] for row in rows]


def main(log, export):
    wanted = expected_rows(pathlib.Path(log).read_text(encoding="utf-8"))
    shown = spreadsheet_rows(export)
    for number, (row, cells) in enumerate(zip(wanted, shown)):
        if row != cells:
            sys.exit("row %d: wanted %s, the spreadsheet shows %s" % (number, row, cells))
    if len(wanted) != len(shown):
        sys.exit("wanted %d rows, the spreadsheet shows %d" % (len(wanted), len(shown)))
    print("%d rows as they are in the log" % len(shown))


if __name__ == "__main__":
    main(*sys.argv[1:])
