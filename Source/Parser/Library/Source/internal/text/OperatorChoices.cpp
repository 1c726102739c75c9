// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "OperatorChoices.h"

#include "DataFolders.h"
#include "InfoText.h"
#include "PLKeywords.h"
#include "TextFile.h"

#include <QtCore/QDir>
#include <QtCore/QSettings>

namespace ovparser::internal {

namespace {

/** The line end of the platform's text files. */
#ifdef Q_OS_WIN
constexpr char lineEnd[] = "\r\n";
#else
constexpr char lineEnd[] = "\n";
#endif

/** The open settings store. */
struct Store : QSettings
{
    Store()
        : QSettings(NativeFormat, SystemScope, PLKeyword::Value::Organization,
                    PLKeyword::Value::Product)
    {
        beginGroup(PLKeyword::Store::Group);
    }
};

QString statusFile()
{
    return dataFolderPath(OV_PATH_DATABASE) + QLatin1Char('/') + PLKeyword::File::UiStatus;
}

/** The lines of a file without their line ends, LF or CR LF. */
QList<QByteArray> linesOf(const QByteArray& bytes)
{
    QList<QByteArray> lines = bytes.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QByteArray& line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
    }
    return lines;
}

bool isPositionLine(const QByteArray& line)
{
    return line.split(':').first() == PLKeyword::Key::LargeAnimalPosition.data();
}

QByteArray positionLine(bool selected)
{
    return QByteArray(PLKeyword::Key::LargeAnimalPosition.data()) + (selected ? ":1" : ":0");
}

/** The text with every position line replaced, or with one at its end if it has none. */
QByteArray withPosition(const QByteArray& bytes, bool selected)
{
    QByteArray text;
    bool replaced = false;
    const QList<QByteArray> lines = linesOf(bytes);
    for (const QByteArray& line : lines) {
        const bool position = isPositionLine(line);
        text += (position ? positionLine(selected) : line) + lineEnd;
        replaced = replaced || position;
    }
    return replaced ? text : text + positionLine(selected);
}

} // namespace

QVariant storedChoice(QLatin1String key, const QVariant& fallback)
{
    return Store().value(key, fallback);
}

void storeChoice(QLatin1String key, const QVariant& value)
{
    Store().setValue(key, value);
}

std::optional<bool> storedLargeAnimalPosition()
{
    QByteArray bytes;
    if (readFile(statusFile(), &bytes) != eSTATUS_SUCCESS)
        return std::nullopt;
    std::optional<bool> selected;
    const QList<QByteArray> lines = linesOf(bytes);
    for (const QByteArray& line : lines) {
        const QList<QByteArray> parts = line.split(':');
        if (parts.size() >= 2 && isPositionLine(line))
            selected = parts.at(1) == PLKeyword::Value::One.data();
    }
    return selected;
}

void storeLargeAnimalPosition(bool selected)
{
    if (!QDir(folderInPath(statusFile())).exists())
        return;
    QByteArray bytes;
    if (readFile(statusFile(), &bytes) != eSTATUS_SUCCESS) {
        static_cast<void>(writeFile(statusFile(), positionLine(selected), WriteMode::Append));
        return;
    }
    const QByteArray text = withPosition(bytes, selected);
    if (text != bytes)
        static_cast<void>(writeFile(statusFile(), text, WriteMode::Replace));
}

} // namespace ovparser::internal
