#!/usr/bin/env python3
"""Turns the results of ovparser_benchmarks into tables: table.py RESULTS.json [DOCUMENT.md]

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

# Name and size of a case, what it is, and for the contenders that count: the ratio of the library's
# time to theirs that must not be exceeded, and the one that is aimed at.
CASES = [
    ("load", 8, "load 4 KB, look three values up", {"GKeyFile": (1.4, 0.7)}),
    ("load", 40000, "load 20 MB, look three values up", {"GKeyFile": (1.6, 0.3)}),
    ("read", 40000, "load 20 MB, read every pair",
     {"GKeyFile": (1.5, 0.8), "QSettings": (0.7, 0.4)}),
    ("save", 8, "load 4 KB, change one value, save",
     {"GKeyFile": (1.4, 0.6), "QSettings": (0.4, 0.15)}),
    ("save", 40000, "load 20 MB, change one value, save",
     {"GKeyFile": (1.6, 0.4), "QSettings": (0.5, 0.15)}),
    ("value", 8, "one value of a 4 KB file", {"getline": (2.0, 1.0)}),
    ("value", 40000, "one value of a 20 MB file", {"getline": (2.0, 1.0)}),
    ("get", 8, "look a value up", {"GKeyFile": (1.7, 1.0)}),
    ("set", 8, "set a value", {"GKeyFile": (1.4, 0.8)}),
    ("sequence", 5000, "load a sequence of 5,000", {"GKeyFile": (2.0, 0.8)}),
    ("append", 5000, "make a sequence of 5,000 one by one", {"GKeyFile": (1.8, 0.9)}),
    ("archive", 5000, "one value of each of 5,000 acquisitions", {"GKeyFile": (1.3, 0.65)}),
    ("write", 20000, "write 20,000 spectral values, each line flushed",
     {"QXmlStreamWriter": (1.3, 0.9)}),
    ("parse", 20000, "load 20,000 spectral values", {"QDomDocument": (1.2, 1.05)}),
    ("plot", 20000, "collect 20,000 values of a loaded plot", {"QDomDocument": (1.4, 0.8)}),
]
GROWTH = (5.3, 4.6)  # of the time, with four times the input
HEAP = (9, 3)  # bytes per byte of text


def medians(results):
    """Seconds of processor time, or bytes of heap, by (case, contender, size)."""
    found = {}
    for run in results["benchmarks"]:
        if run.get("aggregate_name") != "median" or run.get("error_occurred"):
            continue
        case, contender, size = run["run_name"].split("/")
        seconds = run["cpu_time"] * {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}[run["time_unit"]]
        found[case, contender, int(size)] = run.get("heap_per_byte", seconds)
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
    for case, size, title, targets in CASES:
        ours = found.get((case, OURS, size))
        others = [key[1] for key in found if key[0] == case and key[2] == size and key[1] != OURS]
        if ours is None:
            continue
        for other in sorted(others, key=lambda name: name not in targets):
            theirs = found[case, other, size]
            ratio = ours / theirs
            rows.append([title, duration(ours), other, duration(theirs), f"{ratio:.2f}",
                         *verdict(ratio, targets.get(other))])
            title = ""
    return table(["case", "ovparser", "against", "theirs", "ratio", "at most", "aim", ""], rows)


def growth(found):
    rows = []
    for case, size, title, _ in CASES:
        sizes = sorted(key[2] for key in found if key[:2] == (case, OURS))
        pair = next(((n, 4 * n) for n in sizes if 4 * n in sizes and size in (n, 4 * n)), None)
        if pair is None:
            continue
        small, large = (found[case, OURS, n] for n in pair)
        rows.append([title, duration(small), duration(large), f"{large / small:.2f}",
                     *verdict(large / small, GROWTH)])
    return table(["case", "time", "four times the input", "growth", "at most", "aim", ""], rows)


def heap(found):
    rows = [[key[1], f"{value:.2f}", *verdict(value, HEAP if key[1] == OURS else None)]
            for key, value in found.items() if key[0] == "heap"]
    return table(["held by", "bytes of heap per byte of text", "at most", "aim", ""], rows)


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


def report(results):
    found = medians(results)
    parts = [machine(), comparison(found)]
    if any(key[:2] == ("heap", OURS) for key in found):
        parts.append(heap(found))
    parts.append(growth(found))
    return "\n".join(parts)


def replace_between_markers(path, text):
    with open(path, encoding="utf-8") as document:
        before, rest = document.read().split(MARKERS[0])
    after = rest.split(MARKERS[1])[1]
    with open(path, "w", encoding="utf-8") as document:
        document.write(f"{before}{MARKERS[0]}\n\n{text}\n{MARKERS[1]}{after}")


def main():
    with open(sys.argv[1], encoding="utf-8") as results:
        contents = json.load(results)
    text = report(contents)
    print(text)
    if len(sys.argv) > 2:
        replace_between_markers(sys.argv[2], text)
    failed = [run["run_name"] for run in contents["benchmarks"] if run.get("error_occurred")]
    for name in sorted(set(failed)):
        print(f"{name} did not do its work", file=sys.stderr)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
