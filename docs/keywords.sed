# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

# Doxygen input filter for PLKeywords.h (sed -E). The reference shows the value of every keyword,
# which is all there is to say of one that has no comment.
/\*\/$/ {
    n
    b
}
/^inline constexpr QLatin1String \w+ =$/ N
s/^inline constexpr QLatin1String \w+ =[^;]*;$/& \/**< A keyword: the text in the files. *\//
