# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

# Doxygen input filter for Markdown pages: gives headings the anchors that web hosts give them, with
# the name of the page before them, and links the same. Links into the tree lead out of the pages.

FNR == 1 {
    page = FILENAME
    sub(/.*\//, "", page)
    sub(/\.md$/, "", page)
    page = tolower(page)
}

/^```/ { code = !code }

!code && /^##+ / {
    anchor = tolower($0)
    sub(/^#+ /, "", anchor)
    gsub(/[^a-z0-9 _-]/, "", anchor)
    gsub(/ /, "-", anchor)
    $0 = $0 " {#" page "-" anchor "}"
}

!code {
    gsub(/\]\(#/, "](#" page "-")
    while (match($0, /\]\([^()#:]*[a-zA-Z-]+\.md#/)) {
        other = substr($0, RSTART + 2, RLENGTH - 6)
        sub(/.*\//, "", other)
        $0 = substr($0, 1, RSTART + 1) "#" tolower(other) "-" substr($0, RSTART + RLENGTH)
    }
    gsub(/\]\((\.\.\/)*(examples|tests)/, "](../&")
    gsub(/\(\.\.\/\]\((\.\.\/)*/, "(../")
}

{ print }
