// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What a verb is asked for on the command line.
 */
#ifndef OVINFO_REQUEST_H
#define OVINFO_REQUEST_H

#include "Option.h"
#include "Terminal.h"

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

struct Verb;

/** The words after a verb, sorted by what they are. */
struct Request
{
    QStringList files;   ///< files or folders, those that a list names included
    QStringList words;   ///< what follows several files, such as a section and a key
    bool listed = false; ///< whether a list named files
    QHash<QString, QStringList> options;

    [[nodiscard]] bool has(const Option& option) const;

    /** Whether it is about several files, so that each answer must tell its file. */
    [[nodiscard]] bool isForSeveral() const { return listed || files.size() > 1; }

    /** The value that was given last; empty when none was. */
    [[nodiscard]] QString value(const Option& option) const;

    /** Every value that was given, in order. */
    [[nodiscard]] QStringList values(const Option& option) const;
};

/**
 * Parses the words after a verb.
 *
 * @param request  receives them; only to be used when nothing is returned
 * @return the exit code when nothing is left to do: help was asked for, or the words are wrong
 */
std::optional<ExitCode> parse(const Verb& verb, const QStringList& words, Request* request);

#endif
