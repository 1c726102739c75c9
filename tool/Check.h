// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What is wrong with a file, line by line.
 */
#ifndef OVINFO_CHECK_H
#define OVINFO_CHECK_H

#include <QtCore/QString>

#include <vector>

/** Something that was found in a file. */
struct Finding
{
    int line = 0; ///< from 1; 0 for the file as a whole
    /** A problem is not read or kept as it looks; a note is. */
    bool isProblem = true;
    const char* code = ""; ///< for programs; never changes its meaning
    QString message;
};

struct CheckedFile
{
    QString failure; ///< why the file could not be read at all; empty when it was
    QString kind;    ///< as programs know it; empty when the file does not load
    QString title;
    std::vector<Finding> findings; ///< in the order of their lines

    [[nodiscard]] int problems() const;
};

CheckedFile checkFile(const QString& path);

#endif
