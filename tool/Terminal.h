/**
 * @file
 * How ovinfo talks: results as UTF-8 on the standard output, one line on the standard error when
 * something is wrong.
 */
#ifndef OVINFO_TERMINAL_H
#define OVINFO_TERMINAL_H

#include "PLStatus.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

enum ExitCode {
    Success = 0,
    BadFile = 1,
    Different = 1, ///< two files differ
    WrongUsage = 2,
    Trouble = 2, ///< a file that is to be compared is at fault
};

/** Prints a text on the standard output. */
void print(const QString& text);

/** Tells what is wrong and gives the exit code back. */
ExitCode fail(ExitCode code, const QString& message);

/** Tells what is wrong with a file; the exit code is BadFile. */
ExitCode fail(const QString& file, const QString& problem);
ExitCode fail(const QString& file, tag_estatus status);

/**
 * Parses the words behind a verb.
 *
 * @param parser     holds the verb's options and description
 * @param verb       the verb
 * @param arguments  the names of the arguments, e.g. "FILE KEY"; the last one may end in "..."
 *                   and stands for one or more then, or in brackets: none or more
 * @return the exit code when there is nothing left to do: help was asked for, or the words are
 *         wrong
 */
std::optional<ExitCode> parse(QCommandLineParser& parser, const QString& verb,
                              const QString& arguments, const QStringList& words);

/** An option without a value. */
QCommandLineOption flag(const char* name, const char* description);

/** An option with a value. */
QCommandLineOption option(const char* name, const char* value, const char* description);

/** The option that asks for JSON instead of text. */
QCommandLineOption jsonOption();

/** Prints a JSON object with its keys in alphabetical order. */
void print(const QJsonObject& object);

/** Lines of cells, padded so that the columns line up. */
QString columns(const QList<QStringList>& rows);

/** A number of things: "1 section", "3 sections". */
QString counted(int count, const char* thing);

#endif
