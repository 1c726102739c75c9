// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Runs of the program.
 */
#ifndef OVPARSER_TESTS_OVINFO_H
#define OVPARSER_TESTS_OVINFO_H

#include <QtCore/QProcess>
#include <QtCore/QStringList>

/** What a run gave; the code is -1 when the program did not end by itself. */
struct Answer
{
    int code = -1;
    QByteArray bytes; ///< what it printed
    QString error;
    QString output; ///< the bytes as text
};

inline Answer run(const QStringList& words)
{
    QProcess process;
    process.start(QStringLiteral(OVPARSER_OVINFO), words);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    const QByteArray output = process.readAllStandardOutput();
    return {process.exitCode(), output, QString::fromUtf8(process.readAllStandardError()), QString::fromUtf8(output)};
}

#endif
