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
    WrongUsage = 2,
};

/** Prints a text on the standard output. */
void print(const QString& text);

/** Tells what is wrong and gives the exit code back. */
ExitCode fail(ExitCode code, const QString& message);

/** Tells that an operation on a file ended with a status; the exit code is BadFile. */
ExitCode fail(const QString& file, tag_estatus status);

/**
 * Parses the words behind a verb.
 *
 * @param parser     holds the verb's options and description
 * @param verb       the verb
 * @param arguments  the names of the arguments that must be given, e.g. "FILE KEY"
 * @return the exit code when there is nothing left to do: help was asked for, or the words are
 *         wrong
 */
std::optional<ExitCode> parse(QCommandLineParser& parser, const QString& verb,
                              const QString& arguments, const QStringList& words);

/** The option that asks for JSON instead of text. */
QCommandLineOption jsonOption();

/** Prints a JSON object with its keys in alphabetical order. */
void print(const QJsonObject& object);

/** Lines of cells, padded so that the columns line up. */
QString columns(const QList<QStringList>& rows);

/** A number of things: "1 section", "3 sections". */
QString counted(int count, const char* thing);

#endif
