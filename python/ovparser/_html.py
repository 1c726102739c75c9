# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Documents as notebooks show them."""

from __future__ import annotations

from collections.abc import Iterable
from html import escape
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from ._core import Section
    from ._documents import Document, Sequence


def _row(cells: Iterable[str], tag: str = "td") -> str:
    inner = "".join(f'<{tag} style="text-align:left">{escape(cell)}</{tag}>' for cell in cells)
    return f"<tr>{inner}</tr>"


def _table(title: str, rows: Iterable[Iterable[str]], head: Iterable[str] = ()) -> str:
    heading = _row(head, "th")
    top = f"<thead>{heading}</thead>" if head else ""
    body = "".join(_row(row) for row in rows)
    caption = f'<caption style="text-align:left"><b>{escape(title)}</b></caption>'
    return f"<table>{caption}{top}<tbody>{body}</tbody></table>"


def _section(section: Section) -> str:
    title = f"{section.key}: {section.name}" if section.name else section.key
    rows = [[key, value, section.comment(key) or ""] for key, value in section.items()]
    commented = any(row[2] for row in rows)
    return _table(title, rows if commented else [row[:2] for row in rows])


def document(shown: Document) -> str:
    """A table for each section."""
    return "".join(_section(section) for section in shown.values())


def sequence(shown: Sequence) -> str:
    """A table of the acquisitions, then one for each other section."""
    numbers = enumerate(shown.click_numbers, start=1)
    rows = [(str(place), number) for place, number in numbers]
    others = (section for key, section in shown.items() if key != "ClickNumbers")
    return _table(f"Sequence {shown.name}", rows, ("", "Click number")) + "".join(
        _section(section) for section in others
    )
