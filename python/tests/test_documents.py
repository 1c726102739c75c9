# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Documents and their sections as mappings, and what is saved of them."""

from __future__ import annotations

import copy
import gc
import pickle
from collections.abc import Mapping, MutableMapping
from pathlib import Path

import pytest
from conftest import ACQUISITION

import ovparser
from ovparser import ClickInfo, Section, Sequence

DICOM = bytes(128) + b"DICM" + b"\x02\x00\x10\x00UI\x12\x001.2.840.10008.1.2\x00\x00\x00"
TEXT = (
    b"of the preamble\r\n\r\n"
    b"*** ClickNumber:\tABC1\r\nNumber:\t1\r\n\r\n"
    b"*** Notes:\tfirst # who\r\n# a line\r\nCage:\t7 # north\r\nCell Line:\t4T1\r\n\r\n"
    b"\r\n\r\n"
)


@pytest.fixture
def doc() -> ClickInfo:
    return ClickInfo.from_bytes(TEXT)


def test_documents_are_mappings_in_the_order_of_the_file(doc: ClickInfo) -> None:
    assert isinstance(doc, MutableMapping) and isinstance(doc["Notes"], MutableMapping)
    assert list(doc) == ["ClickNumber", "Notes"] and len(doc) == 2
    assert "NOTES" in doc and "Other" not in doc and 3 not in doc and "\ud800" not in doc
    assert doc.get("Other") is None and doc.get("notes") == {"Cage": "7", "Cell Line": "4T1"}
    assert doc == {"ClickNumber": {"Number": "1"}, "Notes": {"Cage": "7", "Cell Line": "4T1"}}
    with pytest.raises(KeyError, match="Other"):
        doc["Other"]


def test_sections_are_mappings_that_ignore_letter_case(doc: ClickInfo) -> None:
    notes = doc["nOTES"]
    assert (notes.key, notes.name) == ("Notes", "first")
    assert list(notes) == ["Cage", "Cell Line"] and len(notes) == 2
    assert notes["CAGE"] == "7" and "cell line" in notes and "Sex" not in notes
    assert notes.get("Sex", "?") == "?" and list(notes.items())[1] == ("Cell Line", "4T1")
    assert notes.raw("Cage") == "7 # north" and notes.comment("Cage") == "# north"
    assert notes.comment("Cell Line") is None
    for failing in (lambda: notes["Sex"], lambda: notes.raw("Sex"), lambda: notes[3]):
        with pytest.raises(KeyError):
            failing()


def test_a_key_that_repeats_is_one(tmp_path: Path) -> None:
    doc = ClickInfo.from_bytes(b"*** A:\t\r\nk:\t1\r\nK:\t2\r\nx:\t3\r\n")
    assert dict(doc["A"]) == {"k": "2", "x": "3"} and len(doc["A"]) == 2


@pytest.mark.parametrize(
    ("value", "text"),
    [("9", "9"), (9, "9"), (2**70, str(2**70)), (2.5, "2.500000"), (True, "1"), (False, "0")],
)
def test_values_are_assigned_as_the_library_writes_them(
    doc: ClickInfo, value: ovparser.Value, text: str
) -> None:
    doc["Notes"]["cage"] = value
    doc["Notes"]["New"] = value
    assert doc["Notes"].raw("Cage") == f"{text}\t# north"
    assert list(doc["Notes"]) == ["Cage", "Cell Line", "New"] and doc["Notes"]["New"] == text


@pytest.mark.parametrize(
    ("key", "value", "error"),
    [
        ("Cage", "two\nlines", ValueError),
        ("Cage", "one\rline", ValueError),
        ("Cage", "\u20ac", UnicodeEncodeError),
        ("Cage", float("nan"), ValueError),
        ("Cage", None, TypeError),
        ("Cage", b"7", TypeError),
        ("", "7", ValueError),
        (" Cage", "7", ValueError),
        ("a:b", "7", ValueError),
        ("a#b", "7", ValueError),
        ("a\nb", "7", ValueError),
        ("*** a", "7", ValueError),
        ("\u20ac", "7", UnicodeEncodeError),
        (3, "7", TypeError),
    ],
)
def test_what_a_file_cannot_hold_is_refused(
    doc: ClickInfo, key: str, value: ovparser.Value, error: type[Exception]
) -> None:
    with pytest.raises(error):
        doc["Notes"][key] = value
    with pytest.raises(error):
        doc["Notes"] = {"Cage": "8", key: value}
    assert bytes(doc) == TEXT


@pytest.mark.parametrize("key", ["", "a:b", "a\nb", "#a", "a ", "\u20ac"])
def test_section_keys_that_a_file_cannot_hold_are_refused(doc: ClickInfo, key: str) -> None:
    with pytest.raises(ValueError):
        doc[key] = {"Cage": "7"}
    with pytest.raises(ValueError):
        doc[key] = doc["Notes"]
    assert bytes(doc) == TEXT


def test_sections_are_assigned_from_mappings_and_sections(doc: ClickInfo) -> None:
    doc["notes"] = {"Cell Line": "B16", "Sex": "F"}
    assert doc["Notes"].name == "first" and b"# a line\r\nCell Line:\tB16\r\nSex:\tF" in bytes(doc)
    other = ClickInfo.from_bytes(TEXT)
    doc["Copy"] = other["Notes"]
    doc["NOTES"] = other["Notes"]
    assert list(doc) == ["ClickNumber", "Notes", "Copy"]
    assert bytes(doc).count(b"first # who\r\n# a line\r\nCage:\t7 # north") == 2
    with pytest.raises(TypeError):
        doc["Notes"] = "text"  # type: ignore[assignment]


def test_a_name_keeps_its_comment(doc: ClickInfo) -> None:
    doc["Notes"].name = "second"
    assert b"*** Notes:\tsecond\t# who\r\n" in bytes(doc)
    with pytest.raises(ValueError):
        doc["Notes"].name = "two\nlines"


def test_a_key_is_deleted_and_nothing_else(doc: ClickInfo) -> None:
    before = bytes(doc)
    del doc["Notes"]["CELL line"]
    assert bytes(doc) == before.replace(b"Cell Line:\t4T1\r\n", b"")
    with pytest.raises(KeyError):
        del doc["Notes"]["Cell Line"]
    assert doc["Notes"].pop("Cage") == "7" and bytes(doc).count(b"# a line") == 1
    doc["Notes"] = {f"k{number}": number for number in range(50)}
    doc["Notes"].clear()
    assert len(doc["Notes"]) == 0 and b"# a line" in bytes(doc)
    for missing in (3, "\ud800", "none"):
        with pytest.raises(KeyError):
            del doc[missing]  # type: ignore[arg-type]
        with pytest.raises(KeyError):
            del doc["Notes"][missing]  # type: ignore[arg-type]


def test_what_is_assigned_is_as_it_is_read(doc: ClickInfo) -> None:
    before = bytes(doc)
    doc["Notes"]["Cage"] = 7  # as it is, with the space before its comment
    assert bytes(doc) == before
    doc["Notes"]["Cage"] = "  "
    doc["Notes"]["Cell Line"] = "  a  # b  "
    doc["Notes"].name = "  padded "
    assert ClickInfo.from_bytes(bytes(doc)) == doc and doc["Notes"].raw("Cell Line") == "a  # b"


def test_a_section_is_added_where_it_is_missing(doc: ClickInfo) -> None:
    assert doc.setdefault("notes", {"Cage": "8"})["Cage"] == "7"
    assert doc.setdefault("New", {"Cage": "8"})["Cage"] == "8" and len(doc.setdefault("x")) == 0
    doc.update({"New": {"Cage": 9}})
    assert doc["New"] == {"Cage": "9"}


def test_numbers_are_read_strictly(doc: ClickInfo) -> None:
    doc["Notes"] = {"a": "12.5", "b": "-3 # cm", "c": "1e3", "d": "12,5", "e": "", "f": "12x"}
    notes = doc["Notes"]
    assert [notes.float(key) for key in "abc"] == [12.5, -3.0, 1000.0] and notes.int("b") == -3
    for key in "def":
        with pytest.raises(ValueError, match=key):
            notes.float(key)
        with pytest.raises(ValueError):
            notes.int(key)
    with pytest.raises(ValueError):
        notes.int("a")
    with pytest.raises(KeyError):
        notes.float("g")


def uses(section: Section) -> list[object]:
    """Every use of a section; each is expected to raise KeyError."""

    def assign() -> None:
        section["Cage"] = "8"

    def delete() -> None:
        del section["Cage"]

    def rename() -> None:
        section.name = "x"

    return [
        lambda: section["Cage"], assign, delete, rename, lambda: len(section),
        lambda: list(section), lambda: section.raw("Cage"), lambda: section.comment("Cage"),
        lambda: section.float("Cage"), lambda: section.int("Cage"), lambda: section.key,
        lambda: section.name, lambda: dict(section), lambda: repr(section),
    ]  # fmt: skip


@pytest.mark.parametrize("how", ["del", "clear", "pop", "reload"])
def test_a_section_that_is_gone_is_a_key_error(tmp_path: Path, how: str) -> None:
    path = tmp_path / "a.txt"
    path.write_bytes(TEXT)
    doc = ClickInfo.load(path)
    section = doc["Notes"]
    iterator = iter(section)
    if how == "reload":
        path.write_bytes(b"*** Other:\t\r\n")
        doc.reload()
    elif how == "pop":
        doc.popitem(), doc.popitem()
    else:
        del doc["Notes"]
        doc.clear()
    gc.collect()
    for use in uses(section):
        with pytest.raises(KeyError):
            use()  # type: ignore[operator]
    assert list(iterator) == ["Cage", "Cell Line"]  # the keys when it was made
    doc["Notes"] = {"Cage": "9"}
    assert section["Cage"] == "9"


def test_a_section_keeps_its_document_alive(file: Path) -> None:
    section = ClickInfo.load(file)["luminescent image"]
    items = ClickInfo.load(file)["luminescent image"].items()
    gc.collect()
    assert section["Field of View"] == "12.5" and ("Field of View", "12.5") in items


@pytest.mark.parametrize("kind", [Section, ovparser._core.Info, ovparser._core.Scan])
def test_objects_that_would_hold_nothing_cannot_be_made(kind: type) -> None:
    for make in (kind, lambda: kind.__new__(kind), lambda: type("Sub", (kind,), {})()):
        with pytest.raises(TypeError):
            make()


def test_a_class_is_what_an_object_was_made_with(doc: ClickInfo) -> None:
    with pytest.raises(TypeError):
        doc["Notes"].__class__ = ovparser._core.Info  # type: ignore[assignment]


def test_code_that_runs_in_an_assignment_may_remove_the_section(doc: ClickInfo) -> None:
    class Number:
        def __index__(self) -> int:
            doc.clear()
            return 5

        def __float__(self) -> float:
            doc.clear()
            return 5.0

    with pytest.raises(KeyError):
        doc["Notes"]["Cage"] = Number()  # type: ignore[assignment]
    assert not doc


def test_copies_and_pickles_share_nothing(doc: ClickInfo) -> None:
    doc.path = "a.txt"
    copies = [copy.copy(doc), copy.deepcopy(doc), pickle.loads(pickle.dumps(doc))]
    for other in copies:
        assert other == doc and bytes(other) == TEXT and other.path == "a.txt"
        assert type(other) is ClickInfo and other.click_number == "ABC1"
        other["Notes"]["Cage"] = "8"
        assert other != doc and doc["Notes"]["Cage"] == "7"


def test_every_kind_of_document_pickles(examples: Path) -> None:
    (examples / "CMakeLists.txt").unlink()
    files = [path for path in examples.rglob("*") if path.suffix in (".txt", ".xml", ".xem")]
    assert len(files) > 10
    for path in files:
        document = ovparser.load(path)
        again = pickle.loads(pickle.dumps(document))
        assert again == document and type(again) is type(document), path
        assert copy.deepcopy(document) == document


def test_equality_is_by_content(doc: ClickInfo) -> None:
    assert doc == ClickInfo.from_bytes(TEXT) and doc != ClickInfo()
    assert doc != ClickInfo.from_bytes(TEXT.replace(b"# north", b"# south"))
    assert doc != ClickInfo.from_bytes(TEXT.replace(b"preamble", b"beginning"))
    assert doc != 3 and doc["Notes"] != doc["ClickNumber"]
    for unhashable in (doc, doc["Notes"]):
        with pytest.raises(TypeError):
            hash(unhashable)


def test_bytes_and_files_are_one_thing(tmp_path: Path, doc: ClickInfo) -> None:
    assert bytes(doc) == TEXT and doc.preamble == ["of the preamble", ""]
    path = tmp_path / "a.txt"
    doc.save(path)
    assert path.read_bytes() == TEXT
    for start in (b"\xef\xbb\xbf", b""):
        path.write_bytes(start + TEXT.replace(b"\r\n", b"\r"))
        assert ClickInfo.load(path) == ClickInfo.from_bytes(path.read_bytes()) == doc


def test_a_document_saves_to_its_file_unless_told_another(file: Path, tmp_path: Path) -> None:
    info = ClickInfo.load(str(file))
    info["User Input"]["Group"] = "B"
    info.save()
    other = tmp_path / "other.txt"
    info.save(other)
    assert ClickInfo.load(file)["user input"]["group"] == "B"
    assert other.read_bytes() == file.read_bytes() == bytes(info)
    with pytest.raises(ovparser.Error) as raised:
        ClickInfo().save()
    assert raised.value.status is ovparser.Status.INVALID_ARGUMENT


def test_edit_saves_what_changed_and_only_then(file: Path) -> None:
    before = file.read_bytes()
    stamp = file.stat().st_mtime_ns, file.stat().st_ino
    with ovparser.edit(file) as doc:
        doc["User Input"]["Group"] = doc["User Input"]["Group"]
    assert (file.stat().st_mtime_ns, file.stat().st_ino) == stamp
    with pytest.raises(ZeroDivisionError), ovparser.edit(file) as doc:
        doc["User Input"]["Group"] = "C"
        1 / 0  # noqa: B018
    assert file.read_bytes() == before
    with ovparser.edit(file) as doc:
        doc["User Input"]["Group"] = "C"
    assert file.read_bytes() == before.replace(b"Group:\tOncology", b"Group:\tC")


@pytest.fixture
def image(tmp_path: Path, file: Path) -> Path:
    """A DICOM file with click info, whose name does not tell what it is."""
    image = tmp_path / "IM0001"
    image.write_bytes(DICOM)
    ClickInfo.load(file).save(image)
    return image


@pytest.mark.parametrize("kind", ["file", "image"])
def test_edit_does_not_overwrite_what_another_has_saved(
    kind: str, request: pytest.FixtureRequest
) -> None:
    path = request.getfixturevalue(kind)
    with pytest.raises(ovparser.Error, match="has changed") as raised, ovparser.edit(path) as doc:
        doc["User Input"]["Group"] = "mine"
        with ovparser.edit(path) as other:
            other["User Input"]["Group"] = "theirs"
    assert raised.value.status is ovparser.Status.FAILED
    assert ovparser.load(path)["User Input"]["Group"] == "theirs"
    with ovparser.edit(path) as doc:
        doc["User Input"]["Group"] = "third"
        doc.save()  # the block then has nothing to do
    assert ovparser.load(path)["User Input"]["Group"] == "third"


def test_click_info_in_dicom_is_read_and_appended(image: Path, tmp_path: Path) -> None:
    assert image.read_bytes().startswith(DICOM) and ClickInfo.from_dicom(image).path == str(image)
    with ovparser.edit(image) as doc:
        doc["User Input"]["Group"] = "B"
    assert ovparser.load(image)["User Input"]["Group"] == "B"
    assert image.read_bytes().startswith(DICOM)
    assert image.read_bytes().count(b"*** ClickNumber") == 2
    before = image.read_bytes()
    for fails in (Sequence("a").save, ovparser.SpectralAnalysis.write):
        with pytest.raises(ovparser.Error, match="DICOM"):
            fails(image)
    assert image.read_bytes() == before
    bare = tmp_path / "bare.dcm"
    bare.write_bytes(DICOM)
    with pytest.raises(ovparser.Error) as raised:
        ClickInfo.from_dicom(bare)
    assert raised.value.status is ovparser.Status.BAD_FORMAT


def test_a_wheel_without_header_is_saved_without(examples: Path) -> None:
    path = examples / "instrument/emfilters/standard.xem"
    before = path.read_bytes()
    with ovparser.edit(path) as wheel:
        key, value = next(iter(next(iter(wheel.values())).items()))
        wheel[next(iter(wheel))][key] = value + "x"
    assert b"***" not in path.read_bytes() and path.read_bytes() != before
    assert ovparser.load(path) == wheel


def test_a_sequence_is_a_list_of_acquisitions(examples: Path) -> None:
    path = examples / "study/SEQ20240305/SequenceInfo.txt"
    sequence = Sequence.load(path)
    numbers = list(sequence.click_numbers)
    assert sequence.name == "Dose response, day 3" and len(numbers) == 3
    assert [info.click_number for info in sequence.acquisitions()] == numbers
    assert "SEQUENCE" in sequence and sequence["clicknumbers"]
    sequence.click_numbers.append("ABC4")
    del sequence.click_numbers[0]
    sequence.click_numbers[0] = "ABC5"
    sequence.click_numbers.insert(1, "ABC6")
    expected = ["ABC5", "ABC6", numbers[2], "ABC4"]
    assert sequence.click_numbers == expected and sequence.click_numbers[1:2] == ["ABC6"]
    sequence.save()
    again = Sequence.load(path)
    assert again == sequence and list(again["ClickNumbers"].values()) == expected
    rest = sequence.acquisitions()
    for _ in range(2):
        with pytest.raises(FileNotFoundError):
            next(rest)
    assert next(rest).click_number == numbers[2]  # the one after those that are missing
    sequence.click_numbers[:] = ["../" + numbers[2]]
    with pytest.raises(ovparser.Error, match="no folder"):
        next(sequence.acquisitions())


def test_what_a_section_tells_and_what_the_document_tells_are_one(examples: Path) -> None:
    path = examples / "study/SEQ20240305/SequenceInfo.txt"
    with ovparser.edit(path) as sequence:
        sequence.name = "new"
        sequence["ClickNumbers"]["ClickNumber 1"] = "A9"
        sequence.click_numbers.append("A10")
    again = Sequence.load(path)
    assert (again.name, again.click_numbers[0], again.click_numbers[-1]) == ("new", "A9", "A10")
    again["Sequence"].name = "other"
    del again["ClickNumbers"]
    assert again.name == "other" and again.click_numbers == []
    acquisition = examples / ACQUISITION
    with ovparser.edit(acquisition) as info:
        info.click_number = "ABC9"
    info = ClickInfo.load(acquisition)
    assert info.click_number == info["ClickNumber"].name == "ABC9"
    info["ClickNumber"].name = "ABC8"
    assert info.click_number == "ABC8"


def test_a_new_sequence_saves_what_it_is_given(tmp_path: Path) -> None:
    sequence = Sequence("Day 3", version="4.7")
    sequence.click_numbers = ["A1", "A2"]
    sequence.save(tmp_path / "SequenceInfo.txt")
    again = Sequence.load(tmp_path / "SequenceInfo.txt")
    assert again.name == "Day 3" and again.click_numbers == ["A1", "A2"] and again == sequence
    for bad in ("two\nlines", "", " a", "a # b", "\u20ac"):
        with pytest.raises(ValueError):
            sequence.click_numbers.append(bad)
    with pytest.raises(TypeError):
        sequence.click_numbers = "ABC"  # type: ignore[assignment]


def test_a_sequence_loses_no_character(tmp_path: Path) -> None:
    path = tmp_path / "SequenceInfo.txt"
    path.write_bytes("*** Sequence:\t\u20ac\r\n\r\n*** ClickNumbers:\t\r\na:\tA1\r\n".encode())
    before = path.read_bytes()
    with pytest.raises(UnicodeEncodeError), ovparser.edit(path) as sequence:
        sequence.click_numbers.append("A2")
    assert path.read_bytes() == before


def test_the_mapping_of_another_kind_is_saved_only_where_told(examples: Path) -> None:
    for name in ("background/SLindex.txt", "instrument/CameraInfo.txt"):
        path = examples / name
        before = path.read_bytes()
        document = ovparser.load(path)
        with pytest.raises(ovparser.Error):
            document.save()
        with pytest.raises(ovparser.Error), ovparser.edit(path):
            pytest.fail("the block is not to be entered")
        document.save(examples / "copy.txt")
        assert path.read_bytes() == before
        assert ClickInfo.load(examples / "copy.txt") == document


def test_catalogues_settings_labels_and_properties(examples: Path) -> None:
    index = ovparser.BackgroundSummary.load(examples / "background/SLindex.txt")
    assert list(index) == ["Structure reference1", "Structure reference2"]
    assert all(value == value.strip() for part in index.values() for value in part.values())
    settings = ovparser.Settings.load(examples / "settings/Presets.txt")
    assert settings.menu_names == ["Bright field", "Deep tissue # slow", "Preset1"]
    assert settings.by_menu_name("Bright field")["Exposure"] == "0.2"
    with pytest.raises(KeyError):
        settings.by_menu_name("bright field")
    labels = ovparser.LabelSets.load(examples / "settings/Labels.txt")
    assert labels.sets == {"Orvane Universal": ["User", "Group", "Experiment"]}
    optical = ovparser.OpticalProperties.load(examples / "settings/OpticalProperties.txt")
    assert optical.tissue_properties == ["Mouse tissue", "Muscle"]
    assert optical.source_models == ["Firefly", "Bacterial"]
    assert optical["Tissue Properties 2"].float("Index of refraction") == 1.37


def test_an_instrument_tells_what_it_can_do(examples: Path) -> None:
    camera = ovparser.CameraInfo.load(examples / "instrument/CameraInfo.txt")
    assert camera.family == "standard" and not camera.xray and camera.fluorescence_kit
    assert camera.fields_of_view == {"A": 5.0, "B": 7.5, "C": 12.5, "D": 23.0}
    assert camera.binnings["luminescent"] == {"large": 8.0, "medium": 4.0, "small": 2.0}
    assert camera.ccd_pixels > 0 and camera.emission_filter_wheel == "standard.xem"
    assert camera["camera system info"] and isinstance(camera.messages, list)
    named = {
        kind._name: getattr(camera, name)
        for name, kind in vars(ovparser.CameraInfo).items()
        if isinstance(kind, ovparser._camera._Capability)
    }
    assert named == camera._facts["capabilities"]  # each capability has its property
    with pytest.raises(AttributeError):
        camera.xray = True  # type: ignore[assignment]
    assert ovparser.CameraInfo().fields_of_view == {}


def test_documents_are_shown_in_notebooks(doc: ClickInfo, examples: Path) -> None:
    doc["Notes"]["Cage"] = "<script>alert('&')</script>"
    html = doc._repr_html_()
    assert html.count("<table>") == 2 and "<script>" not in html and "&lt;script&gt;" in html
    assert "# north" in html and repr(doc) == "<ClickInfo 'ABC1', 2 sections>"
    sequence = ovparser.load(examples / "study/SEQ20240305/SequenceInfo.txt")
    assert "ABC20240305092010" in sequence._repr_html_() and "3 acquisitions" in repr(sequence)
    assert repr(doc["ClickNumber"]) == "Section('ClickNumber', {'Number': '1'})"
    assert isinstance(doc["Notes"], Mapping)
