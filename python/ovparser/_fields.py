# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Fields of dataclasses whose documentation help() shows."""

from __future__ import annotations

import dataclasses
from typing import Any, TypeVar

_Value = TypeVar("_Value")
_Class = TypeVar("_Class", bound=type)


def documented(default: _Value, text: str) -> _Value:
    """A field with a default and what it means."""
    made: Any = dataclasses.field(default=default, metadata={"text": text})
    return made  # type: ignore[no-any-return]


def with_fields(cls: _Class) -> _Class:
    """A dataclass whose documentation lists its fields."""
    lines = [
        f"    {field.name}: {field.metadata['text']}"
        for field in dataclasses.fields(cls)
        if "text" in field.metadata
    ]
    cls.__doc__ = f"{cls.__doc__}\n\nFields:\n" + "\n".join(lines)
    return cls
