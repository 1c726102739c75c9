#include "OperatorChoices.h"

#include "DataFolders.h"
#include "PLKeywords.h"
#include "TextFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSettings>

namespace ovparser::internal {

namespace {

/** Calls `use` with the open settings store. */
template <typename Use>
auto withStore(Use use)
{
    QSettings store(QSettings::NativeFormat, QSettings::SystemScope, PLKeyword::Value::Organization,
                    PLKeyword::Value::Product);
    store.beginGroup(PLKeyword::Store::Group);
    return use(store);
}

QString statusFolder()
{
    return dataFolderPath(OV_PATH_DATABASE) + QLatin1Char('/');
}

QString statusFile()
{
    return statusFolder() + PLKeyword::File::UiStatus;
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

void writeText(const QByteArray& text, QIODevice::OpenMode mode)
{
    QFile file(statusFile());
    if (openToWrite(file, QIODevice::Text | mode))
        file.write(text);
}

} // namespace

QVariant storedChoice(QLatin1String key, const QVariant& fallback)
{
    return withStore([&](const QSettings& store) { return store.value(key, fallback); });
}

void storeChoice(QLatin1String key, const QVariant& value)
{
    withStore([&](QSettings& store) { store.setValue(key, value); });
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
    if (!QDir(statusFolder()).exists())
        return;
    bool replaced = false;
    QByteArray bytes;
    if (readFile(statusFile(), &bytes) == eSTATUS_SUCCESS) {
        QByteArray text;
        const QList<QByteArray> lines = linesOf(bytes);
        for (const QByteArray& line : lines) {
            const bool position = isPositionLine(line);
            text += (position ? positionLine(selected) : line) + '\n';
            replaced = replaced || position;
        }
        if (text != bytes)
            writeText(text, QIODevice::Truncate);
    }
    if (!replaced)
        writeText(positionLine(selected), QIODevice::Append);
}

} // namespace ovparser::internal
