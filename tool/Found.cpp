// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Found.h"

#include "Dicom.h"
#include "Files.h"
#include "Json.h"
#include "internal/text/InfoText.h"

#include <QtCore/QFile>

using namespace ovparser::internal;

namespace {

/** What the kinds are called, and the form of their records. */
struct KindRow
{
    QLatin1String name;
    const char* schema = "";
};

constexpr KindRow kinds[] = {
    {PLKeyword::keyword("acquisition"), "ovinfo-acquisition/1"},
    {PLKeyword::keyword("analyzed"), "ovinfo-analyzed/1"},
    {PLKeyword::keyword("dicom"), "ovinfo-dicom/1"},
    {PLKeyword::keyword("sequence"), ""},
    {PLKeyword::keyword("folder"), ""},
};

/** Click info that was appended to an image begins within so many bytes of the file's end. */
constexpr qint64 dicomTail = qint64(1) << 20;

/** Takes over what a document read, or why it did not. */
void take(tag_estatus status, const CPLClickInfo& info, const Wanted& wanted, Found* found)
{
    if (status != eSTATUS_SUCCESS)
        found->problem = explained(status, found->file);
    else if (!info[0])
        found->problem = QStringLiteral("no section; not a file that the library knows");
    else
        readAcquisition(info, wanted, &found->acquisition);
}

void readText(const Wanted& wanted, Found* found)
{
    CPLClickInfo info;
    const tag_estatus status = info.loadClickInfo(found->file, false);
    take(status, info, wanted, found);
}

void readDicom(const Wanted& wanted, Found* found)
{
    QFile file(found->file);
    if (!file.open(QIODevice::ReadOnly)) {
        found->problem = explained(eSTATUS_FILE_OPEN_FAILED, found->file);
        return;
    }
    file.seek(qMax(qint64(0), file.size() - dicomTail));
    const QByteArray tail = file.readAll();
    const auto start = appendedText(tail);
    found->empty = !start;
    if (found->empty)
        return;
    CPLClickInfo info;
    const tag_estatus status = info.loadTextBuffer(latin1View(withLineFeeds(tail.mid(*start))));
    take(status, info, wanted, found);
}

void readSequence(const Wanted& wanted, Found* found)
{
    if (!wanted.sections)
        return;
    CPLSequenceInfo sequence;
    sequence.loadFile(found->file); // has succeeded before, when its acquisitions were listed
    found->acquisition.sections = sectionsOf(sequence);
}

using Reader = void (*)(const Wanted& wanted, Found* found);

constexpr Reader readers[] = {readText, readText, readDicom, readSequence};

} // namespace

QLatin1String kindName(Found::Kind kind)
{
    return kinds[kind].name;
}

void read(const Wanted& wanted, Found* found)
{
    found->problem = otherThanFile(found->file);
    if (found->problem.isEmpty())
        readers[found->kind](wanted, found);
}

QJsonObject recordOf(const Wanted& wanted, const Found& found)
{
    const SequenceHead* const sequence = found.acquisition.sequence.get();
    if (!found.problem.isEmpty())
        return withSchema("ovinfo-failure/1",
                          {{"kind", QString(kindName(found.kind))},
                           {"path", found.acquisition.path},
                           {"sequencePath", sequence ? QJsonValue(sequence->path) : QJsonValue()},
                           {"problem", found.problem}});
    QJsonObject record = acquisitionJson(wanted, found.acquisition);
    record.insert(QStringLiteral("schema"), QLatin1String(kinds[found.kind].schema));
    record.insert(QStringLiteral("kind"), QString(kindName(found.kind)));
    return record;
}

QStringList recordColumns()
{
    QStringList columns = memberNames();
    for (const QLatin1String label : PLKeyword::Key::UniversalLabels)
        columns += label;
    return columns << QStringLiteral("kind");
}

QJsonArray recordRow(const QJsonObject& record)
{
    QJsonArray row;
    const QStringList members = memberNames();
    for (const QString& name : members)
        row += record.value(name);
    const QJsonObject labels = record.value(QLatin1String("labels")).toObject();
    for (const QLatin1String label : PLKeyword::Key::UniversalLabels)
        row += labelOf(labels, label);
    row += record.value(QLatin1String("kind"));
    return row;
}

QJsonValue labelOf(const QJsonObject& labels, const QString& name)
{
    for (auto label = labels.begin(); label != labels.end(); ++label) {
        if (label.key().compare(name, Qt::CaseInsensitive) == 0)
            return label.value();
    }
    return {};
}
