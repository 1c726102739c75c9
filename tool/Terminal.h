// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * How ovinfo talks: results as UTF-8 on the standard output, one line on the standard error when
 * something is wrong.
 */
#ifndef OVINFO_TERMINAL_H
#define OVINFO_TERMINAL_H

#include "PLStatus.h"

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

enum ExitCode {
    Success = 0,
    BadFile = 1,
    Different = 1, ///< two files differ
    WrongUsage = 2,
    Trouble = 2, ///< a file that is to be compared is at fault
};

/**
 * A text in one line, without a control character that a terminal would obey: each is spelled as
 * \\x1b and the like.
 */
QString printable(const QString& text);

/** Prints lines for people on the standard output, printable but for the line ends. */
void print(const QString& text);

/**
 * Prints what programs read, exactly. On a terminal lines end in LF, and other control characters
 * but TAB are spelled as print() does.
 */
void printExact(const QString& text);

/** Whether what is printed on the standard output is shown on a terminal. */
bool showsOutput();

/** Tells in one line what is wrong and gives the exit code back. */
ExitCode fail(ExitCode code, const QString& message);

/** Tells what is wrong with a file; the exit code is BadFile. */
ExitCode fail(const QString& file, const QString& problem);
ExitCode fail(const QString& file, tag_estatus status);

/** Prints a JSON object with its keys in alphabetical order, or the same on one line. */
void print(const QJsonObject& object);
void printJsonLine(const QJsonObject& object);

/** A JSON object on one line, which ends in LF. */
QString jsonLine(const QJsonObject& object);

/** Lines of cells, padded so that the columns line up. */
QString columns(const QList<QStringList>& rows);

/**
 * Words in lines that the terminal holds, or 79 characters when it is wider; all but the first line
 * are indented, and a line end follows.
 */
QString wrapped(const QStringList& words, int indent);

/** Names with what they are, wrapped; the rows are pairs. */
QString described(const QList<QStringList>& rows);

/** A number of things: "1 section", "3 sections". */
QString counted(int count, const char* thing);

#endif
