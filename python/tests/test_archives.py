# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Whole archives, tables of them, and what goes on at the same time."""

from __future__ import annotations

import gc
import json
import os
import subprocess
import sys
import threading
import time
from pathlib import Path

import pytest
from conftest import SANITIZED

import ovparser
from ovparser import ClickInfo


def resident() -> int:
    """The memory that the process uses, in bytes."""
    pages = int(Path("/proc/self/statm").read_text().split()[1])
    return pages * os.sysconf("SC_PAGESIZE")


def test_a_scan_gives_the_records_of_the_program(examples: Path) -> None:
    (examples / "study/broken").mkdir()
    (examples / "study/broken/ClickInfo.txt").write_bytes(b"*** A\n")
    # A sanitizer that is loaded into Python is not for the program, which has its own.
    environment = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
    command = ["ovinfo", "study", "--recursive", "--jsonl", str(examples / "study")]
    printed = subprocess.run(command, env=environment, capture_output=True, check=False)
    expected = [json.loads(line) for line in printed.stdout.splitlines()]
    records = list(ovparser.scan(examples / "study"))
    assert [record for record in records if "error" not in record] == expected
    errors = [record for record in records if "error" in record]
    assert [Path(error["path"]).parent.name for error in errors] == ["broken"]
    assert len(expected) == 4 and "header line" in errors[0]["error"]


def test_a_scan_of_one_folder(examples: Path, tmp_path: Path) -> None:
    folder = examples / "study/SEQ20240305"
    assert len(list(ovparser.scan(folder, recursive=False, jobs=1))) == 4
    for where in (examples, tmp_path / "none"):
        (record,) = ovparser.scan(where, recursive=False)
        assert record["kind"] == "folder" and record["error"]
    for jobs in (0, -1, 257):
        with pytest.raises(ValueError, match="jobs"):
            ovparser.scan(folder, jobs=jobs)


def test_a_scan_can_be_left(tmp_path: Path) -> None:
    for number in range(1000):
        folder = tmp_path / f"A{number:04}"
        folder.mkdir()
        (folder / "ClickInfo.txt").write_bytes(b"*** ClickNumber:\tA1\n")
    threads = threading.active_count()
    started = os.listdir("/proc/self/task")
    records = ovparser.scan(tmp_path, jobs=3)
    next(records)
    records.close()  # type: ignore[attr-defined]
    with pytest.raises(StopIteration):
        next(records)
    del records
    unused = ovparser.scan(tmp_path)
    del unused
    gc.collect()
    assert threading.active_count() == threads
    deadline = time.monotonic() + 10  # the system lists a thread that has ended for a moment more
    while os.listdir("/proc/self/task") != started:
        assert time.monotonic() < deadline
        time.sleep(0.01)
    # Python ends although a scan goes on.
    code = f"import ovparser; r = ovparser.scan({str(tmp_path)!r}); next(r)"
    subprocess.run([sys.executable, "-c", code], timeout=60, check=True)


@pytest.mark.parametrize(
    "work", ["list(ovparser.scan(folder))", "ovparser.ClickInfo.load(folder + '/ClickInfo.txt')"]
)
def test_python_ends_while_threads_are_at_work(file: Path, work: str) -> None:
    code = f"""
import threading, time, ovparser
folder = {str(file.parent)!r}
def work():
    while True:
        {work}
for _ in range(4):
    threading.Thread(target=work, daemon=True).start()
time.sleep(0.2)
"""
    for _ in range(3):
        subprocess.run([sys.executable, "-c", code], timeout=60, check=True)


@pytest.mark.skipif(SANITIZED, reason="a fork may leave the sanitizer's allocator locked")
def test_a_scan_is_let_alone_after_a_fork(file: Path) -> None:
    code = f"""
import os, ovparser
records = ovparser.scan({str(file.parents[2])!r})
next(records)
child = os.fork()
if child == 0:
    try:
        next(records)
    except RuntimeError:
        raise SystemExit(0)
    raise SystemExit(1)
assert os.waitpid(child, 0)[1] == 0
assert list(records)
"""
    subprocess.run([sys.executable, "-c", code], timeout=60, check=True)


@pytest.mark.skipif(SANITIZED, reason="takes terabytes of address space")
def test_a_scan_does_with_the_threads_that_there_are(file: Path) -> None:
    code = f"""
import resource, ovparser
resource.setrlimit(resource.RLIMIT_AS, (1 << 30, 1 << 30))
assert len(list(ovparser.scan({str(file.parents[1])!r}, jobs=256))) == 4
"""
    subprocess.run([sys.executable, "-c", code], timeout=60, check=True)


def test_tables_keep_identifiers_as_text() -> None:
    pandas = pytest.importorskip("pandas")
    records = [
        {"path": "a", "clickNumber": "007", "date": "2024-03-05", "time": "09:15:02",
         "binning": 8.0, "images": ["luminescent", "photograph"],
         "labels": {"Group": "NA", "Animal Number": "007"}},
        {"path": "b", "clickNumber": "NA", "date": None, "time": None, "binning": None,
         "images": [], "labels": {"GROUP": "nan"}},
        {"path": "c", "kind": "folder", "error": "permission denied", "date": "1624-03-05"},
    ]  # fmt: skip
    table = ovparser.to_dataframe(records)
    assert list(table["label.Group"].fillna("-")) == ["NA", "nan", "-"]
    assert table["label.Animal Number"][0] == "007" and list(table["clickNumber"])[:2] == ["007", "NA"]
    assert str(table["date"].dtype) == str(table["datetime"].dtype) == "datetime64[ns]"
    assert table["datetime"][0] == pandas.Timestamp("2024-03-05 09:15:02")
    assert table["binning"].dtype == float and table["binning"].isna().tolist() == [False, True, True]
    assert table["images"][0] == "luminescent;photograph" and table["error"][2] == "permission denied"
    assert list(ovparser.to_dataframe([]).columns) == list(table.columns)[:-2]
    assert str(ovparser.to_dataframe([])["date"].dtype) == "datetime64[ns]"


def test_two_threads_with_a_document_each(file: Path) -> None:
    failures: list[BaseException] = []

    def work(group: str) -> None:
        try:
            info = ClickInfo.load(file)
            for number in range(2000):
                info["User Input"]["Group"] = group
                info[f"Notes {number % 7}"] = {"Cage": number}
                assert info["user input"]["group"] == group
                del info[f"Notes {number % 7}"]
            info.save(file.with_name(group))
        except BaseException as failure:  # noqa: BLE001
            failures.append(failure)

    threads = [threading.Thread(target=work, args=(group,)) for group in "AB"]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not failures
    assert {ClickInfo.load(file.with_name(group))["User Input"]["Group"] for group in "AB"} == {"A", "B"}


def test_threads_share_a_document(info: ClickInfo) -> None:
    """Nothing crashes when one thread removes what another uses."""
    failures: list[BaseException] = []
    stop = threading.Event()

    def use() -> None:
        while not stop.is_set():
            try:
                dict(info["Notes"])
            except KeyError:
                pass
            except BaseException as failure:  # noqa: BLE001
                failures.append(failure)

    threads = [threading.Thread(target=use) for _ in range(2)]
    for thread in threads:
        thread.start()
    for number in range(2000):
        info["Notes"] = {"Cage": number, "Cell Line": "4T1"}
        del info["Notes"]
    stop.set()
    for thread in threads:
        thread.join()
    assert "Notes" not in info and not failures


@pytest.mark.skipif(SANITIZED, reason="freed memory is kept")
def test_memory_does_not_grow(file: Path, tmp_path: Path) -> None:
    def loads(count: int) -> None:
        for _ in range(count):
            info = ovparser.ClickInfo.load(file)
            info["User Input"]["Group"]

    loads(2000)
    before = resident()
    loads(100_000)
    assert resident() - before < 2 << 20
