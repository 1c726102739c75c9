# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""What goes wrong, as exceptions."""

from __future__ import annotations

import errno
import os
from enum import IntEnum


class Status(IntEnum):
    """The statuses of the library; the values never change."""

    SUCCESS = 0
    EXTENSION_LOAD_FAILED = 2
    NO_CLICK_NUMBERS = 4
    BAD_FORMAT = 5
    FILE_READ_FAILED = 10
    FILE_OPEN_FAILED = 11
    FILE_NOT_FOUND = 12
    NULL_ARGUMENT = 16
    INVALID_ARGUMENT = 19
    BAD_LABEL_FORMAT = 20
    KEY_NOT_FOUND = 24
    SYSTEM_MISMATCH = 28
    EXTENSION_CONFLICT = 30
    FAILED = 31
    EMPTY_SECTION_KEY = 33
    OUT_OF_MEMORY = 34
    SECTION_EXISTS = 38
    EXTENSION_KEY_MISSING = 47
    INVALID_VALUE = 48
    SECTION_NOT_FOUND = 49
    UNSUPPORTED_IMAGE_TYPE = 61
    FOLDER_NOT_FOUND = 62
    EMPTY_SEQUENCE = 88


class Error(Exception):
    """An operation that failed.

    ``status`` is the status of the library, ``path`` the file that it is about, or None.
    """

    def __init__(self, sentence: str, status: Status, path: str | None = None) -> None:
        super().__init__(sentence)
        self.status = status
        self.path = path
        self._sentence = sentence

    def __str__(self) -> str:
        return self._sentence if self.path is None else f"{self.path}: {self._sentence}"

    def __reduce__(self) -> tuple[type[Error], tuple[str, Status, str | None]]:
        return type(self), (self._sentence, self.status, self.path)


class FileError(Error, OSError):
    """A file that cannot be read or written, or is not what it should be."""

    def __init__(self, sentence: str, status: Status, path: str | None = None) -> None:
        super().__init__(sentence, status, path)
        self.errno = self._number
        self.strerror = sentence
        self.filename = path

    _number = errno.EIO


class MissingFileError(FileError, FileNotFoundError):
    """There is no such file or folder."""

    _number = errno.ENOENT


class DeniedFileError(FileError, PermissionError):
    """The file may not be read or written."""

    _number = errno.EACCES


def make_error(status: int, sentence: str) -> Error:
    """The exception for a status."""
    return Error(sentence, Status(status))


def make_file_error(status: int, sentence: str, path: str, writing: bool) -> FileError:
    """The exception for a status about a file, by what is in its way."""
    return _kind_of(path, writing)(sentence, Status(status), path)


def _kind_of(path: str, writing: bool) -> type[FileError]:
    mode = os.W_OK if writing else os.R_OK
    try:
        os.stat(path)
    except PermissionError:
        return DeniedFileError
    except OSError:
        folder = os.path.dirname(path) or "."
        denied = writing and os.path.isdir(folder) and not os.access(folder, mode)
        return DeniedFileError if denied else MissingFileError
    return FileError if os.access(path, mode) else DeniedFileError
