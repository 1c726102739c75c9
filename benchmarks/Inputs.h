// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The files that the benchmarks read: one content in the form of every contender.
 *
 * Files are made when they are first asked for, in a folder that goes with the process.
 */
#ifndef OVPARSER_BENCHMARKS_INPUTS_H
#define OVPARSER_BENCHMARKS_INPUTS_H

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVector>

/** A text in the forms that the contenders take. */
struct Text
{
    Text(const QString& text) // NOLINT(google-explicit-constructor): a text is a text
        : string(text)
        , utf8(text.toUtf8())
    {}

    QString string;
    QByteArray utf8;
};

/** A value with its place. */
struct Pair
{
    Text section;
    Text key;
    Text value;
};

/**
 * Sections with one comment and fourteen pairs each, about 465 bytes, as acquisitions have them.
 *
 * A section's name is a pair of its own in the INI form. Comments hold a character outside ASCII:
 * the info text is Latin-1 with CR LF line ends, the INI is UTF-8 with LF line ends. QSettings
 * wants
 * ';' before a comment where the others want '#'.
 */
struct TextInput
{
    QVector<Pair> pairs; ///< in the order of the file; section names left out
    QByteArray info;
    QByteArray ini;
    Text infoPath;
    Text iniPath;
    Text settingsPath;
};

/** The input with this number of sections. */
const TextInput& textInput(int sections);

/** A sequence, and the folders of its acquisitions. */
struct SequenceInput
{
    QList<Text> clickNumbers;
    Text infoPath;
    Text iniPath;
};

/** The sequence with this number of acquisitions, whose folders need not exist. */
const SequenceInput& sequenceInput(int acquisitions);

/**
 * The sequence with this number of acquisitions. Each has a folder beside the sequence file, which
 * holds the acquisition as ClickInfo.txt and ClickInfo.ini.
 */
const SequenceInput& archiveInput(int acquisitions);

/** One value of a spectral plot. */
struct SpectralValue
{
    double intensity;
    double waveLength;
};

QVector<SpectralValue> spectralValues(int count);

/** A path in the folder of the process. */
QString temporaryPath(const QString& name);

/** Gives a file a new time, so that no cache takes it for the one that it read before. */
void touch(const Text& path);

void writeBytes(const QString& path, const QByteArray& bytes);
QByteArray readBytes(const QString& path);

#endif
