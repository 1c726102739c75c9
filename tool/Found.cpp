// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Found.h"

#include "Dicom.h"
#include "Files.h"
#include "Json.h"
#include "internal/text/InfoText.h"

#include <QtCore/QFile>

#include <algorithm>

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
    {PLKeyword::keyword("other"), ""},
};

/** The names of data files that tell of no acquisition. */
constexpr QLatin1String otherFiles[] = {
    PLKeyword::File::BkgSummary,
    PLKeyword::File::StructureIndex,
    PLKeyword::File::FluorescentIndex,
    PLKeyword::File::CameraInfo,
};

constexpr QLatin1String xmlSuffix = PLKeyword::keyword(".xml");

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

/** The system that an instrument's description is of, which may have no header. */
QString instrumentOf(const QString& file)
{
    QString problem;
    QString text = QString::fromLatin1(readFile(file, &problem).value_or(QByteArray()));
    const QString header = PLKeyword::Text::Marker + QString(PLKeyword::Section::CameraSystemInfo);
    if (!text.contains(header, Qt::CaseInsensitive))
        text.prepend(header + QLatin1String(":\n"));
    CPLClickInfo info;
    QString system;
    info.loadTextBuffer(text);
    info.getValue(PLKeyword::Section::CameraSystemInfo, PLKeyword::Key::SystemConfiguration,
                  &system);
    return system;
}

/** Whether an XML file begins as a spectral analysis; others are nobody's business here. */
bool beginsAsSpectral(const QString& path)
{
    constexpr qint64 head = 4096;
    const QLatin1String root = PLKeyword::Spectral::Elements[PLKeyword::Spectral::Root].name;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(head).contains(root.data());
}

void readOther(const Wanted& /*wanted*/, Found* found)
{
    if (found->file.endsWith(PLKeyword::File::CameraInfo))
        found->instrument = instrumentOf(found->file);
    if (!found->file.endsWith(xmlSuffix, Qt::CaseInsensitive))
        return;
    found->empty = !beginsAsSpectral(found->file);
    QString problem;
    auto file = found->empty ? std::nullopt : readSpectralFile(found->file, &problem);
    if (file)
        found->spectrum = std::make_shared<SpectralFile>(std::move(*file));
}

using Reader = void (*)(const Wanted& wanted, Found* found);

constexpr Reader readers[] = {readText, readText, readDicom, readSequence, nullptr, readOther};

} // namespace

QLatin1String kindName(Found::Kind kind)
{
    return kinds[kind].name;
}

void read(const Wanted& wanted, Found* found)
{
    found->problem = otherThanFile(found->file);
    if (!found->problem.isEmpty())
        return;
    readers[found->kind](wanted, found);
    if (wanted.findings && !found->empty)
        found->checked = checkFile(found->file);
}

bool isOtherFile(const QString& name)
{
    return name.endsWith(xmlSuffix, Qt::CaseInsensitive) ||
           std::find(std::begin(otherFiles), std::end(otherFiles), name) != std::end(otherFiles);
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
