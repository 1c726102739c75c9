# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Documents: mappings of sections, and what their files are."""

from __future__ import annotations

import copy
import os
from collections.abc import Iterable, Iterator, Mapping, MutableMapping, MutableSequence
from enum import IntEnum
from typing import Any, TypeVar, Union, cast, overload

from . import _core, _html
from ._core import Section
from ._errors import Error, FileError, Status
from ._setup import Setup

PathLike = Union[str, "os.PathLike[str]"]
#: What a value can be set to.
Value = Union[str, int, float, bool]

_Doc = TypeVar("_Doc", bound="Document")

# A section is a mapping, though its class is made in C++ and cannot derive from one.
for _name in (
    "__contains__ __eq__ __reversed__ get items keys values "
    "clear pop popitem setdefault update"
).split():
    if _name not in Section.__dict__:
        setattr(Section, _name, getattr(MutableMapping, _name))
MutableMapping.register(Section)


def _repr_of_section(self: Section) -> str:
    return f"Section({self.key!r}, {dict(self)!r})"


for _name, _value in {
    "__module__": "ovparser",
    "__hash__": None,
    "__repr__": _repr_of_section,
}.items():
    setattr(Section, _name, _value)
_core.seal(Section, _core.Info, _core.Scan)


class ImageType(IntEnum):
    """The kinds of images."""

    PHOTOGRAPH = 0
    LUMINESCENT = 1
    READ_BIAS = 2
    READ_SIGMA = 3
    BACKGROUND = 4
    BIAS = 5
    REFERENCE = 6
    STRUCTURE = 7
    FLUORESCENT_BKG = 8
    FL_REFERENCE = 9
    LUMINESCENT_A = 10
    LUMINESCENT_B = 11
    XRAY = 12
    OVERLAY = 13
    SATURATION_MAP = 14
    HEIGHT_MAP = 15
    PHOTO_MASK = 16
    LUMINESCENT_CORRECTED = 17
    SATURATION_MAP_2 = 18
    BLEMISH = 19


def path_of(path: PathLike) -> str:
    """The path as text."""
    text = os.fsdecode(path)
    if "\0" in text:
        raise ValueError("embedded null character in path")
    try:
        text.encode()
    except UnicodeEncodeError:
        problem = "the name of the file is no UTF-8"
        raise FileError(problem, Status.FILE_OPEN_FAILED, text) from None
    return text


def counted(number: int, word: str) -> str:
    """A number of things: "1 section", "2 sections"."""
    return f"{number} {word}" if number == 1 else f"{number} {word}s"


class Document(MutableMapping[str, Any]):
    """The sections of a file, by their keys in the order of the file; letter case is ignored.

    A section is looked up anew whenever it is used, so that one that was removed gives a KeyError.
    What is assigned to a key is a mapping of keys to values; a section that is there keeps its
    place, its name and its comments. A section of another document is copied with its comments.
    """

    #: The file that the document was loaded from; None for a new one.
    path: str | None
    _info: _core.Info
    #: Whether save() may replace the file that the document was loaded from.
    _replaces = True
    #: The class method that loads the file.
    _loader = "load"

    def __init__(self) -> None:
        self._become(_core.new_info())

    def _become(self: _Doc, core: _core.Info, path: str | None = None) -> _Doc:
        self._info = core
        self.path = path
        return self

    @classmethod
    def load(cls: type[_Doc], path: PathLike) -> _Doc:
        """Loads a file.

        Raises Error, which is an OSError too: BAD_FORMAT and EMPTY_SECTION_KEY for a malformed
        section, OUT_OF_MEMORY for more than 512 MiB, FILE_OPEN_FAILED and FILE_READ_FAILED
        (FileNotFoundError or PermissionError where it is that).
        """
        text = path_of(path)
        return cls._made(_core.load_info(text), text)

    @classmethod
    def _made(cls: type[_Doc], core: _core.Info, path: str | None = None) -> _Doc:
        return cls.__new__(cls)._become(core, path)

    def reload(self) -> None:
        """Loads the file anew; what was changed since it was loaded or saved is lost.

        Raises what load() raises; the document is unchanged then.
        """
        if self.path is None:
            raise Error("the document has no file", Status.INVALID_ARGUMENT)
        other = getattr(type(self), self._loader)(self.path)
        self._info.swap(other._info)
        self.__dict__.update({**other.__dict__, "_info": self._info})

    def save(self, path: PathLike | None = None) -> None:
        """Saves to a file, the one that the document was loaded from unless another is given.

        A file is replaced at once, by one that is complete: a crash or a full disk leaves the old
        one. What another program has written to it meanwhile is lost; see edit(). To a DICOM file
        the text is appended.

        Raises Error, which is an OSError too: FILE_OPEN_FAILED, or FAILED when fewer bytes than
        asked could be stored; INVALID_ARGUMENT without a file; and a UnicodeEncodeError when the
        file cannot hold a character.
        """
        self._info.save(self._target(path))

    def _target(self, path: PathLike | None) -> str:
        if path is not None:
            return path_of(path)
        if self.path is None:
            raise Error("a new document needs the name of a file", Status.INVALID_ARGUMENT)
        if not self._replaces:
            raise Error(
                "loaded as sections, a form that is not the file's own; name another file",
                Status.INVALID_ARGUMENT,
                self.path,
            )
        return self.path

    def __getitem__(self, key: str) -> Section:
        return self._info[key]

    def __setitem__(self, key: str, value: Mapping[str, Value] | Section) -> None:
        if isinstance(value, Section):
            self._info.copy_section(key, value)
        elif isinstance(value, Mapping):
            self._info.set_section(key, value)
        else:
            raise TypeError(f"a section is a mapping, not {type(value).__name__}")

    def __delitem__(self, key: str) -> None:
        del self._info[key]

    def __iter__(self) -> Iterator[str]:
        return iter(self._info.keys())

    def __len__(self) -> int:
        return self._info.count()

    def clear(self) -> None:
        """Removes everything that the document holds."""
        self._info.clear()

    def setdefault(
        self, key: str, default: Mapping[str, Value] | Section | None = None
    ) -> Section:
        """The section, which is added with these values if it is missing."""
        if key not in self:
            self[key] = {} if default is None else default
        return self[key]

    @property
    def preamble(self) -> list[str]:
        """The lines before the first section."""
        return self._info.preamble

    def __bytes__(self) -> bytes:
        """The bytes that save() writes."""
        return self._info.bytes()

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Document):
            return super().__eq__(other)
        return self._content() == other._content()

    __hash__ = None  # type: ignore[assignment]

    def _content(self) -> tuple[Any, ...]:
        return self._info.state()

    def __repr__(self) -> str:
        where = "" if self.path is None else f", {self.path!r}"
        return f"<{type(self).__name__}{self._title()}, {counted(len(self), 'section')}{where}>"

    def _title(self) -> str:
        return ""

    def _repr_html_(self) -> str:
        return _html.document(self)

    def __copy__(self: _Doc) -> _Doc:
        document = type(self).__new__(type(self))
        document.__dict__.update(self.__dict__)
        document._info = self._info.copy()
        return document

    def __deepcopy__(self: _Doc, memo: dict[int, Any]) -> _Doc:
        document = self.__copy__()
        for name, value in self.__dict__.items():
            if name != "_info":
                document.__dict__[name] = copy.deepcopy(value, memo)
        return document

    def __reduce__(self) -> tuple[Any, ...]:
        others = {name: value for name, value in self.__dict__.items() if name != "_info"}
        return _restored, (type(self), self._info.state(), others)


def _restored(cls: type[_Doc], state: tuple[Any, ...], others: dict[str, Any]) -> _Doc:
    document = cls._made(_core.info_from(state))
    document.__dict__.update(others)
    return document


class ClickInfo(Document):
    """An acquisition, or any other info text."""

    @classmethod
    def from_bytes(cls: type[_Doc], data: bytes) -> _Doc:
        """Loads what a file with these bytes would give.

        Raises Error: BAD_FORMAT or EMPTY_SECTION_KEY for a malformed section.
        """
        return cls._made(_core.info_of(bytes(memoryview(data))))

    @classmethod
    def from_dicom(cls: type[_Doc], path: PathLike) -> _Doc:
        """Loads the click info that was appended last to a DICOM file.

        Raises Error, which is an OSError too: BAD_FORMAT when the file holds none.
        """
        text = path_of(path)
        info = cls._made(_core.load_dicom(text), text)
        info._loader = "from_dicom"
        return info

    @classmethod
    def _from_key_lines(cls: type[_Doc], path: PathLike) -> _Doc:
        """Loads the lines of a file without header lines, as those of one section."""
        text = path_of(path)
        info = cls._made(_core.load_key_lines(text), text)
        info._loader = "_from_key_lines"
        return info

    @classmethod
    def for_image(
        cls: type[_Doc], path: PathLike, prefix: str, image_type: ImageType, binning: int
    ) -> _Doc:
        """Makes up click info for a bare image file, which is not read.

        ``prefix`` starts the click number and is the user ID; the current local time follows it.
        ``image_type`` is PHOTOGRAPH, LUMINESCENT or STRUCTURE; another raises Error
        (UNSUPPORTED_IMAGE_TYPE). ``binning`` is the binning factor of the image.
        """
        return cls._made(_core.info_for_image(path_of(path), prefix, image_type, binning))

    @property
    def click_number(self) -> str:
        """The identifier of the acquisition, and the name of its section "ClickNumber".

        Setting an empty one raises Error (INVALID_VALUE).
        """
        return self._info.click_number

    @click_number.setter
    def click_number(self, number: str) -> None:
        self._info.click_number = number

    def add_image(
        self,
        path: PathLike,
        image_type: ImageType,
        setup: Setup,
        *,
        user_id: str | None = None,
        settings: bool = True,
    ) -> None:
        """Adds the section of an image with the keys that belong to its type.

        ``path`` gives the section its name; ``user_id`` goes to a "User Input" section that is
        there. Without ``settings`` only the fixed keys of the type are written.

        Raises Error: UNSUPPORTED_IMAGE_TYPE for a type without a section, SECTION_EXISTS when there
        is one already; TypeError or ValueError for a field of the setup that is of another type,
        too large, or text that a file cannot hold. Nothing has changed then.
        """
        self._info.add_image(path_of(path), image_type, setup, user_id, settings)

    def add_click_number(
        self, *, acquired: bool = True, in_sequence: bool = False, version: str = ""
    ) -> None:
        """Adds the "ClickNumber" section, if it is missing.

        ``acquired`` is False for an image that was read from a file, ``in_sequence`` makes the
        click number the sequence ID, too, ``version`` is that of the acquiring software.
        """
        self._info.add_click_number(acquired, in_sequence, version)

    def add_user(self, image_type: ImageType, user_id: str) -> None:
        """Adds the "User Input" section with user ID and display type, if it is missing.

        ``image_type`` is PHOTOGRAPH, LUMINESCENT or STRUCTURE; another raises Error
        (UNSUPPORTED_IMAGE_TYPE).
        """
        self._info.add_user(image_type, user_id)

    def _title(self) -> str:
        return f" {self.click_number!r}" if self.click_number else ""


class BackgroundSummary(Document):
    """A catalogue of stored background images, or an index of references.

    An index is loaded as sections, a form that is not its own: save() needs the name of a file.
    """

    @classmethod
    def load(cls: type[_Doc], path: PathLike) -> _Doc:
        """Loads a background summary, or an index of structure or fluorescent references.

        Raises Error, which is an OSError too: FILE_OPEN_FAILED. A malformed section ends the
        reading; the sections before it are loaded.
        """
        text = path_of(path)
        core, is_index = _core.load_catalogue(text)
        catalogue = cls._made(core, text)
        catalogue._replaces = not is_index
        return catalogue


class Settings(Document):
    """Named settings of the user, such as presets."""

    @property
    def menu_names(self) -> list[str]:
        """The names of the settings in order, as they are stored."""
        return self._info.menu_names()

    def by_menu_name(self, name: str) -> Section:
        """The first section with this menu name, in exactly this spelling.

        Raises KeyError when there is none.
        """
        return self[self._info.setting_with_menu_name(name)]


class LabelSets(Document):
    """Sets of labels that are remembered for users."""

    @property
    def sets(self) -> dict[str, list[str]]:
        """The labels of each set by its name."""
        return dict(self._info.label_sets())


class OpticalProperties(Document):
    """Tissue property sets and source models."""

    #: The menu names of the tissue property sets, as the file was loaded.
    tissue_properties: list[str]
    #: The menu names of the source models, as the file was loaded.
    source_models: list[str]

    def __init__(self) -> None:
        super().__init__()
        self.tissue_properties = []
        self.source_models = []

    @classmethod
    def load(cls: type[_Doc], path: PathLike) -> _Doc:
        """Loads a settings file with optical properties; raises what Document.load() raises."""
        text = path_of(path)
        core, tissues, sources = _core.load_optical(text)
        properties = cast(Any, cls._made(core, text))
        properties.tissue_properties = tissues
        properties.source_models = sources
        return cast(_Doc, properties)


def _listed(numbers: Iterable[str]) -> list[str]:
    if isinstance(numbers, str):
        raise TypeError("click numbers are several; one is appended")
    return list(numbers)


class ClickNumbers(MutableSequence[str]):
    """The click numbers of a sequence: a list whose changes change the sequence.

    A number that a file cannot hold is a ValueError: an empty one, white space at its ends, a '#'.
    """

    def __init__(self, core: _core.Info) -> None:
        self._info = core

    @overload
    def __getitem__(self, index: int) -> str: ...
    @overload
    def __getitem__(self, index: slice) -> list[str]: ...
    def __getitem__(self, index: int | slice) -> str | list[str]:
        return self._info.click_numbers[index]

    @overload
    def __setitem__(self, index: int, value: str) -> None: ...
    @overload
    def __setitem__(self, index: slice, value: Iterable[str]) -> None: ...
    def __setitem__(self, index: int | slice, value: str | Iterable[str]) -> None:
        numbers: Any = self._info.click_numbers
        numbers[index] = value
        self._info.click_numbers = numbers

    def __delitem__(self, index: int | slice) -> None:
        numbers = self._info.click_numbers
        del numbers[index]
        self._info.click_numbers = numbers

    def __len__(self) -> int:
        return len(self._info.click_numbers)

    def insert(self, index: int, value: str) -> None:
        """Inserts a click number before a place."""
        numbers = self._info.click_numbers
        numbers.insert(index, value)
        self._info.click_numbers = numbers

    def extend(self, values: Iterable[str]) -> None:
        """Appends click numbers."""
        self._info.click_numbers = self._info.click_numbers + _listed(values)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, (list, ClickNumbers)) and list(self) == list(other)

    __hash__ = None  # type: ignore[assignment]

    def __iter__(self) -> Iterator[str]:
        return iter(self._info.click_numbers)

    def __repr__(self) -> str:
        return repr(self._info.click_numbers)


class _Acquisitions(Iterator[ClickInfo]):
    """Loads the acquisitions of a folder; goes on after one that cannot be loaded."""

    def __init__(self, folder: str, numbers: list[str]) -> None:
        self._folder = folder
        self._numbers = iter(numbers)

    def __next__(self) -> ClickInfo:
        number = next(self._numbers)
        if number in ("", ".", "..") or "/" in number or os.sep in number or "\0" in number:
            raise Error(f"{number!r} names no folder of the sequence", Status.INVALID_VALUE)
        return ClickInfo.load(f"{self._folder}{number}/ClickInfo.txt")


class Sequence(Document):
    """A sequence of acquisitions.

    A name makes a new sequence with the sections "Sequence" and "ClickNumbers"; ``version`` is that
    of the software that makes it.
    """

    def __init__(self, name: str = "", *, version: str = "") -> None:
        self._become(_core.new_sequence())
        if name:
            self.name = name
            self._info.add_sequence(version)
            self._info.click_numbers = []

    @classmethod
    def load(cls: type[_Doc], path: PathLike) -> _Doc:
        """Loads a "SequenceInfo.txt".

        Raises Error, which is an OSError too: FILE_NOT_FOUND, FILE_READ_FAILED, OUT_OF_MEMORY for
        more than 512 MiB, NO_CLICK_NUMBERS for a file without the sections of a sequence. A section
        that is malformed is passed over.
        """
        text = path_of(path)
        return cls._made(_core.load_sequence(text), text)

    @property
    def name(self) -> str:
        """The name of the sequence, and of its section "Sequence"."""
        return self._info.name

    @name.setter
    def name(self, name: str) -> None:
        self._info.name = name

    @property
    def click_numbers(self) -> ClickNumbers:
        """The click numbers in the order of the sequence, a list that can be changed.

        They are the values of the section "ClickNumbers", which a change adds when it is missing.
        """
        return ClickNumbers(self._info)

    @click_numbers.setter
    def click_numbers(self, numbers: Iterable[str]) -> None:
        self._info.click_numbers = _listed(numbers)

    def acquisitions(self) -> Iterator[ClickInfo]:
        """Loads the acquisitions one by one, as they are asked for.

        When its turn comes, one that cannot be loaded raises what ClickInfo.load() raises, and a
        click number that names no folder here Error (INVALID_VALUE); the next one follows all the
        same.
        """
        return _Acquisitions(self._info.folder, self._info.click_numbers)

    def _content(self) -> tuple[Any, ...]:
        kind, name, numbers, _folder, sections = self._info.state()
        return kind, name, numbers, sections

    def _title(self) -> str:
        return f" {self.name!r}, {counted(len(self.click_numbers), 'acquisition')}"

    def _repr_html_(self) -> str:
        return _html.sequence(self)

