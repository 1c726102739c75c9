#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Turns the results of ovparser_benchmarks into tables.

    table.py RESULTS.json... [DOCUMENT.md]

Prints the tables; with a document, also puts them between its two markers.
"""

import json
import os
import platform
import re
import subprocess
import sys

MARKERS = ("<!-- benchmarks -->", "<!-- end of benchmarks -->")
OURS = "ovparser"
UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}

# What a case is, and for the contenders that count: the ratio of the library's time to theirs that
# must not be exceeded, and the one that is aimed at.
CASES = {
    "load-small": ("load 4 KB, look three values up", {"GKeyFile": (0.5, 0.3)}),
    "load-large": ("load 20 MB, look three values up",
                   {"GKeyFile": (0.2, 0.12), "QSettings": (1.0, 0.6)}),
    "read": ("load 20 MB, read every pair", {"GKeyFile": (0.6, 0.35)}),
    "save-small": ("load 4 KB, change one value, save",
                   {"GKeyFile, second file": (0.8, 0.5)}),
    "save-large": ("load 20 MB, change one value, save",
                   {"GKeyFile, second file": (0.35, 0.25)}),
    "value-small": ("one value of a 4 KB file", {"getline": (2.0, 1.0)}),
    "value-large": ("one value of a 20 MB file", {"getline": (2.0, 1.0)}),
    "get": ("look a value up in a loaded 4 KB", {"GKeyFile": (1.0, 0.7)}),
    "set": ("set a value in a loaded 4 KB", {"GKeyFile": (0.9, 0.6)}),
    "section": ("make a section of 5,000 keys one by one", {"GKeyFile": (1.0, 0.5)}),
    "build": ("make an acquisition and its text", {"GKeyFile": (1.0, 0.8)}),
    "sequence": ("load a sequence of 5,000", {"GKeyFile": (1.0, 0.6)}),
    "append": ("make a sequence of 5,000 one by one", {"GKeyFile": (1.0, 0.8)}),
    "archive": ("one value of each of 5,000 acquisitions", {"GKeyFile": (0.8, 0.5)}),
    "spectral-write": ("write 20,000 spectral values, each line flushed",
                       {"QXmlStreamWriter": (1.3, 0.9)}),
    "spectral-load": ("load 20,000 spectral values", {"QDomDocument": (1.2, 1.05)}),
    "spectral-plot": ("take 20,000 values out of a loaded plot", {"QDomDocument": (1.0, 0.8)}),
}
GROWTH = (4.8, 4.4)
HEAP = {"heap_loaded": (2, 1.7), "heap_read": (4, 3)}


def read_results(paths):
    runs = []
    for path in paths:
        with open(path, encoding="utf-8") as results:
            runs += json.load(results)["benchmarks"]
    return runs


def medians(runs):
    """Seconds of processor time by case, contender and size."""
    found = {}
    for run in runs:
        if run.get("aggregate_name") == "median" and not run.get("error_occurred"):
            case, contender, size = run["run_name"].split("/")
            seconds = run["cpu_time"] * UNITS[run["time_unit"]]
            found.setdefault(case, {}).setdefault(contender, {})[int(size)] = seconds
    return found


def duration(seconds):
    for unit, name in ((1, "s"), (1e-3, "ms"), (1e-6, "µs"), (1e-9, "ns")):
        if seconds >= unit:
            return f"{seconds / unit:.3g} {name}"
    return f"{seconds * 1e9:.2g} ns"


def verdict(value, target):
    if target is None:
        return "", "", ""
    limit, aim = target
    reached = "aim reached" if value <= aim else "within the limit" if value <= limit else "**missed**"
    return limit, aim, reached


def table(header, rows):
    lines = [header, ["---"] * len(header)] + rows
    return "\n".join("| " + " | ".join(map(str, line)) + " |" for line in lines) + "\n"


def comparison(found):
    rows = []
    for case, (title, targets) in CASES.items():
        contenders = dict(found.get(case, {}))
        times = contenders.pop(OURS, {})
        for other in sorted(contenders, key=lambda name: name not in targets):
            (size, theirs), = contenders[other].items()
            if size in times:
                ratio = times[size] / theirs
                rows.append([title, duration(times[size]), other, duration(theirs),
                             f"{ratio:.2f}", *verdict(ratio, targets.get(other))])
    return table(["case", "ovparser", "against", "theirs", "ratio", "at most", "aim", ""], rows)


def growth(found):
    rows = []
    for case, (title, _) in CASES.items():
        times = sorted(found.get(case, {}).get(OURS, {}).items())
        if len(times) == 2:
            (size, small), (large_size, large) = times
            rows.append([title, f"{size:,} to {large_size:,}", duration(small), duration(large),
                         f"{large / small:.2f}", *verdict(large / small, GROWTH)])
    return table(["case", "input", "from", "to", "growth", "at most", "aim", ""], rows)


def heap(runs):
    rows = []
    for run in runs:
        if run["name"].startswith("heap/") and not run.get("error_occurred"):
            contender = run["name"].split("/")[1]
            targets = HEAP if contender == OURS else {}
            rows += [[contender, when, f"{run[counter]:.2f}",
                      *verdict(run[counter], targets.get(counter))]
                     for when, counter in (("loaded", "heap_loaded"),
                                           ("every pair read", "heap_read"))]
    rows.sort(key=lambda row: row[0] != OURS)
    return table(["held by", "when", "bytes", "at most", "aim", ""], rows)


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout.strip()


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as info:
        model = re.search(r"model name\s*:\s*(.*)", info.read())
    parts = [
        model.group(1) if model else platform.processor(),
        f"{os.cpu_count()} cores",
        output_of("c++", "--version").split("\n")[0],
        "Qt " + output_of("pkg-config", "--modversion", "Qt5Core"),
        "GLib " + output_of("pkg-config", "--modversion", "glib-2.0"),
    ]
    return "Measured on " + ", ".join(parts) + ".\n"


def report(runs):
    found = medians(runs)
    return "\n".join([
        machine(),
        "Processor time:\n", comparison(found),
        "Processor time with four times the input (sections, acquisitions or values):\n",
        growth(found),
        "Bytes of heap per byte of a 20 MB text:\n", heap(runs),
    ])


def replace_between_markers(path, text):
    with open(path, encoding="utf-8") as document:
        before, rest = document.read().split(MARKERS[0])
    after = rest.split(MARKERS[1])[1]
    with open(path, "w", encoding="utf-8") as document:
        document.write(f"{before}{MARKERS[0]}\n\n{text}\n{MARKERS[1]}{after}")


def main(paths):
    runs = read_results(path for path in paths if path.endswith(".json"))
    text = report(runs)
    print(text)
    for path in paths:
        if path.endswith(".md"):
            replace_between_markers(path, text)
    failed = sorted({run["run_name"] for run in runs if run.get("error_occurred")})
    for name in failed:
        print(f"{name} did not do its work", file=sys.stderr)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
