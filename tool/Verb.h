// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The verbs of ovinfo: one table holds all that is to be known of each.
 */
#ifndef OVINFO_VERB_H
#define OVINFO_VERB_H

#include "Option.h"
#include "Terminal.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

struct Request;

/** A verb and what it takes. */
struct Verb
{
    const char* name = "";
    /** The names of its arguments; "..." stands for several, and words may follow those. */
    const char* arguments = "";
    const char* summary = "";
    const char* description = "";
    ExitCode (*run)(const Request& request) = nullptr;
    std::vector<Option> options;
    ExitCode unwritten = BadFile; ///< the exit code when the output cannot be written
    bool optionsFirst = false;    ///< whether a word may begin with '-' after the first argument
};

/** The verb of this name; null when there is none. */
const Verb* findVerb(const QString& name);

/** The verbs with their summaries, for people. */
QString verbList();

/** The options of a verb as it takes them, each with its description. */
QList<QStringList> optionRows(const Verb& verb);

/** The options and arguments of a verb in the form of a usage line, each part by itself. */
QStringList synopsis(const Verb& verb);

#endif
