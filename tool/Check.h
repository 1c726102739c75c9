// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What is wrong with a file, line by line.
 */
#ifndef OVINFO_CHECK_H
#define OVINFO_CHECK_H

#include <QtCore/QJsonObject>
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

/** Collects what is found. */
struct Findings
{
    void problem(int line, const char* code, const QString& message)
    {
        findings.push_back({line, true, code, message});
    }

    void note(int line, const char* code, const QString& message)
    {
        findings.push_back({line, false, code, message});
    }

    [[nodiscard]] int problems() const;

    std::vector<Finding> findings;
};

struct CheckedFile : Findings
{
    QString failure; ///< why the file could not be read at all; empty when it was
    QString kind;    ///< as programs know it; empty when the file does not load
    QString title;
};

CheckedFile checkFile(const QString& path);

/** What was found in a file, for programs, without schema. */
QJsonObject fileJson(const QString& file, const CheckedFile& checked);

#endif
