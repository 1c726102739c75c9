// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Inputs.h"

#include "Benchmarks.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <cstdlib>
#include <ctime>
#include <map>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

struct Entry
{
    const char* key;
    const char* value; // %1 stands for a number that differs from section to section
};

constexpr Entry entries[] = {
    {"Acquisition Date", "Tuesday March 05 2024"},
    {"Acquisition Time", "09:15:%1"},
    {"Acquisition Seconds", "379249%1"},
    {"Pixel Width", "1"},
    {"Pixel Height", "1"},
    {"Image Units", "counts"},
    {"Binning Factor", "8"},
    {"Luminescent Exposure (Seconds)", "60.%1"},
    {"Luminescent Exposure Units", "sec"},
    {"Field of View", "12.%1"},
    {"Read Bias Level", "1.%1"},
    {"Excitation filter", "Block"},
    {"Measured Temperature", "-89.%1"},
    {"Error Wave", "No Error"},
};

QString sectionKey(int number)
{
    return QStringLiteral("luminescent image %1").arg(number, 6, 10, QLatin1Char('0'));
}

QString sectionName(int number)
{
    return QStringLiteral("luminescent%1.TIF").arg(number, 6, 10, QLatin1Char('0'));
}

QString comment(int number)
{
    return QStringLiteral("# stage at %1 \u00B0C when the exposure began").arg(number % 40);
}

QString valueOf(const Entry& entry, int number)
{
    const QString value = QString::fromLatin1(entry.value);
    return value.contains(QLatin1Char('%')) ? value.arg(10 + number % 90) : value;
}

TextInput makeTextInput(int sections)
{
    QVector<Pair> pairs;
    QString info;
    QString ini;
    for (int number = 0; number < sections; ++number) {
        const Text section = sectionKey(number);
        const QString name = sectionName(number);
        info += QStringLiteral("*** %1:\t%2\r\n%3\r\n").arg(section.string, name, comment(number));
        ini += QStringLiteral("[%1]\nName=%2\n%3\n").arg(section.string, name, comment(number));
        for (const Entry& entry : entries) {
            const Text key = QString::fromLatin1(entry.key);
            const Text value = valueOf(entry, number);
            info += QStringLiteral("%1:\t%2\r\n").arg(key.string, value.string);
            ini += QStringLiteral("%1=%2\n").arg(key.string, value.string);
            pairs.append({section, key, value});
        }
        info += QLatin1String("\r\n");
        ini += QLatin1Char('\n');
    }
    const QString base = temporaryPath(QStringLiteral("sections%1").arg(sections));
    TextInput input = {pairs,
                       info.toLatin1(),
                       ini.toUtf8(),
                       base + QLatin1String(".txt"),
                       base + QLatin1String(".ini"),
                       base + QLatin1String(".settings")};
    writeBytes(input.infoPath.string, input.info);
    writeBytes(input.iniPath.string, input.ini);
    writeBytes(input.settingsPath.string, QByteArray(input.ini).replace('#', ';'));
    return input;
}

SequenceInput makeSequenceInput(int acquisitions)
{
    QList<Text> clickNumbers;
    QString info = QStringLiteral("*** Sequence:\tDose response\r\n\r\n*** ClickNumbers:\t\r\n");
    QString ini = QStringLiteral("[Sequence]\nName=Dose response\n\n[ClickNumbers]\n");
    for (int number = 1; number <= acquisitions; ++number) {
        const auto clickNumber = QStringLiteral("ABC2024%1").arg(number, 10, 10, QLatin1Char('0'));
        info += QStringLiteral("ClickNumber %1:\t%2\r\n").arg(number).arg(clickNumber);
        ini += QStringLiteral("ClickNumber %1=%2\n").arg(number).arg(clickNumber);
        clickNumbers.append(clickNumber);
    }
    info += QLatin1String("\r\n");
    ini += QLatin1Char('\n');
    const QString base = temporaryPath(QStringLiteral("sequence%1").arg(acquisitions));
    SequenceInput input = {clickNumbers, base + QLatin1String(".txt"),
                           base + QLatin1String(".ini")};
    writeBytes(input.infoPath.string, info.toLatin1());
    writeBytes(input.iniPath.string, ini.toUtf8());
    return input;
}

/** The input of this size, made when it is first asked for. */
template <typename Input>
const Input& cached(int size, Input (*make)(int))
{
    static std::map<int, Input> inputs;
    const auto found = inputs.find(size);
    return found != inputs.end() ? found->second : inputs.emplace(size, make(size)).first->second;
}

} // namespace

const TextInput& textInput(int sections)
{
    return cached(sections, &makeTextInput);
}

const SequenceInput& sequenceInput(int acquisitions)
{
    return cached(acquisitions, &makeSequenceInput);
}

const SequenceInput& archiveInput(int acquisitions)
{
    const SequenceInput& input = sequenceInput(acquisitions);
    const TextInput& acquisition = textInput(smallText.compared);
    const QDir folder(temporaryPath({}));
    for (const Text& clickNumber : input.clickNumbers) {
        if (!folder.mkdir(clickNumber.string))
            continue; // another sequence has it
        const QString base = folder.filePath(clickNumber.string);
        writeBytes(base + QLatin1String("/ClickInfo.txt"), acquisition.info);
        writeBytes(base + QLatin1String("/ClickInfo.ini"), acquisition.ini);
    }
    return input;
}

QVector<SpectralValue> spectralValues(int count)
{
    QVector<SpectralValue> values;
    for (int i = 0; i < count; ++i)
        values.append({1000.5 + 0.5 * (i % 9000), 400.0 + i % 400});
    return values;
}

QString temporaryPath(const QString& name)
{
    static const QTemporaryDir folder;
    return folder.filePath(name);
}

void touch(const Text& path)
{
    static std::time_t time = 0; // seconds: the caches do not look closer
    const timespec times[] = {{++time, 0}, {time, 0}};
    ::utimensat(AT_FDCWD, path.utf8, times, 0);
}

void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qCritical("%s cannot be written", qPrintable(path));
        std::abort();
    }
}

QByteArray readBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
