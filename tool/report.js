/* SPDX-FileCopyrightText: 2026 The ovparser authors
   SPDX-License-Identifier: MIT */
"use strict";
{
    const collator = new Intl.Collator("en", { numeric: true });
    const numberIn = (text) => Number.parseFloat(text.replace("\u2212", "-"));
    const compare = (a, b) => {
        const difference = numberIn(a) - numberIn(b);
        return difference || collator.compare(a, b);
    };
    const textOf = (row, column) => row.cells[column].textContent.trim();
    const rowsOf = (table) => [...table.querySelectorAll("tbody tr:not(.group)")];

    const sortBy = (table, heading, column) => {
        const down = heading.getAttribute("aria-sort") === "ascending";
        const rows = rowsOf(table);
        rows.sort((a, b) => compare(textOf(a, column), textOf(b, column)));
        table.tBodies[0].append(...(down ? rows.reverse() : rows));
        for (const other of table.tHead.rows[0].cells) other.removeAttribute("aria-sort");
        heading.setAttribute("aria-sort", down ? "descending" : "ascending");
    };

    const filterBy = (table, text, told) => {
        const wanted = text.trim().toLowerCase();
        let count = 0;
        for (const body of table.tBodies) {
            const group = body.querySelector(".group");
            const name = group ? group.cells[0].firstElementChild.textContent : "";
            let kept = 0;
            for (const row of body.querySelectorAll("tr:not(.group)")) {
                const titles = [...row.querySelectorAll("[title]")].map((mark) => mark.title);
                const content = [name, row.textContent, ...titles].join(" ").toLowerCase();
                row.hidden = !content.includes(wanted);
                kept += row.hidden ? 0 : 1;
            }
            body.hidden = kept === 0;
            count += kept;
        }
        told.textContent = text.trim() ? `${count} of ${rowsOf(table).length} rows` : "";
    };

    for (const table of document.querySelectorAll("table.sortable")) {
        [...table.tHead.rows[0].cells].forEach((heading, column) => {
            const button = document.createElement("button");
            button.type = "button";
            button.textContent = heading.textContent;
            button.addEventListener("click", () => sortBy(table, heading, column));
            heading.replaceChildren(button);
        });
    }

    for (const table of document.querySelectorAll("table.filterable")) {
        const label = document.createElement("label");
        const input = document.createElement("input");
        const told = document.createElement("output");
        label.className = "filter";
        input.type = "search";
        input.addEventListener("input", () => filterBy(table, input.value, told));
        label.append("Filter ", input, told);
        table.parentElement.before(label);
    }
}
