// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Loading.h"

#include "Dicom.h"
#include "Document.h"
#include "Files.h"
#include "Instrument.h"
#include "internal/text/InfoText.h"
#include "internal/text/TextFile.h"

#include <QtCore/QFile>

#include <algorithm>

namespace ovpython {

namespace {

/** What has nothing but its sections. */
constexpr FileKind plainKinds[] = {FileKind::InfoText,
                                   FileKind::Acquisition,
                                   FileKind::AnalyzedAcquisition,
                                   FileKind::InstrumentExtension,
                                   FileKind::LabelSet,
                                   FileKind::Settings};

void checkLoaded(tag_estatus status, const QString& path)
{
    if (status != eSTATUS_SUCCESS)
        raise({status, path, explained(status, path)});
}

QByteArray bytesOf(const py::bytes& bytes)
{
    char* data = nullptr;
    Py_ssize_t size = 0;
    if (PyBytes_AsStringAndSize(bytes.ptr(), &data, &size) != 0)
        throw py::error_already_set();
    if (size > ovparser::internal::maxTextFileSize)
        raise({eSTATUS_OUT_OF_MEMORY, QString(), QStringLiteral("more than 512 MiB of text")});
    return {data, int(size)};
}

/** Whether a file is a DICOM file, or is to be one by its name. */
bool holdsImage(const QString& path)
{
    constexpr qint64 head = 132; // with the mark of DICOM
    if (path.endsWith(PLKeyword::File::DicomSuffix, Qt::CaseInsensitive))
        return true;
    QFile file(path);
    return otherThanFile(path).isEmpty() && file.open(QIODevice::ReadOnly) &&
           isDicom(file.read(head));
}

/** Loads a document of its own, which no other thread knows yet. */
template <typename Load>
InfoPointer loadedInfo(const QString& path, Load load)
{
    InfoPointer info = newInfo();
    checkLoaded(released([&] { return load(*info->clickInfo()); }), path);
    return info;
}

/** Loads a file as ovinfo does. */
std::unique_ptr<Document> documentOf(const QString& path)
{
    auto document = std::make_unique<Document>();
    if (!released([&] { return document->load(path); })) {
        const tag_estatus status =
            document->wasRead() ? document->status() : eSTATUS_FILE_OPEN_FAILED;
        raise({status, path, document->problem()});
    }
    return document;
}

/** Values of an index end as its lines do; without that they can be written. */
void dropLineEnds(CPLSection* section)
{
    QStringList keys;
    QStringList values;
    section->getKeyList(&keys);
    section->getRawValueList(&values);
    for (int i = 0; i < keys.size(); ++i)
        section->setRawValue(keys.at(i), ovparser::internal::trimmed(values.at(i)));
    QString name;
    section->getSectionName(&name, true);
    section->setSectionName(ovparser::internal::trimmed(name));
}

} // namespace

std::pair<QString, InfoPointer> openedByKind(const QString& path)
{
    const auto document = documentOf(path);
    if (document->isDicom())
        return {QStringLiteral("dicom"), nullptr};
    const FileKind kind = document->kind();
    const bool isPlain =
        std::find(std::begin(plainKinds), std::end(plainKinds), kind) != std::end(plainKinds) &&
        !document->startsWithoutHeader();
    return {document->kindName(),
            isPlain ? std::make_shared<Info>(std::make_unique<CPLClickInfo>(document->infoText()))
                    : nullptr};
}

InfoPointer newInfo()
{
    return std::make_shared<Info>(std::make_unique<CPLClickInfo>());
}

InfoPointer newSequence()
{
    return std::make_shared<Info>(std::make_unique<CPLSequenceInfo>());
}

InfoPointer loadInfo(const QString& path)
{
    return loadedInfo(path, [&](CPLClickInfo& info) { return info.loadClickInfo(path, false); });
}

InfoPointer loadDicom(const QString& path)
{
    QString problem;
    const auto bytes = released([&] { return readFile(path, &problem); });
    if (!bytes)
        raise({eSTATUS_FILE_OPEN_FAILED, path, problem});
    const auto start = appendedText(*bytes);
    if (!isDicom(*bytes) || !start)
        raise({eSTATUS_BAD_FORMAT, path, QStringLiteral("no DICOM file with click info")});
    const QByteArray text = ovparser::internal::withLineFeeds(bytes->mid(*start));
    return loadedInfo(path, [&](CPLClickInfo& info) {
        return info.loadTextBuffer(ovparser::internal::latin1View(text));
    });
}

InfoPointer loadSequence(const QString& path)
{
    InfoPointer info = newSequence();
    CPLSequenceInfo& sequence = *info->sequence();
    const tag_estatus status = released([&] { return sequence.loadFile(path); });
    const bool holdsSections = info->find(PLKeyword::Section::Sequence) != nullptr ||
                               info->find(PLKeyword::Section::ClickNumbers) != nullptr;
    const bool listsNothing =
        status == eSTATUS_EMPTY_SEQUENCE || status == eSTATUS_NO_CLICK_NUMBERS;
    if (!listsNothing || !holdsSections)
        checkLoaded(status, path);
    return info;
}

std::pair<InfoPointer, bool> loadCatalogue(const QString& path)
{
    CPLBkgSummaryInfo catalogue;
    bool isIndex = false;
    const tag_estatus status = released([&] {
        for (const auto load : {&CPLBkgSummaryInfo::SLload, &CPLBkgSummaryInfo::FLload}) {
            isIndex = (catalogue.*load)(path) == eSTATUS_SUCCESS && catalogue[0];
            if (isIndex)
                return eSTATUS_SUCCESS;
        }
        return catalogue.load(path);
    });
    checkLoaded(status, path);
    for (int i = 0; CPLSection* const section = isIndex ? catalogue[i] : nullptr; ++i)
        dropLineEnds(section);
    return {std::make_shared<Info>(std::make_unique<CPLClickInfo>(catalogue)), isIndex};
}

InfoPointer loadKeyLines(const QString& path)
{
    const auto document = documentOf(path);
    InfoPointer info = newInfo();
    info->hidesHeader = document->startsWithoutHeader();
    const QList<CPLSection*> sections = document->sections();
    for (const CPLSection* const section : sections)
        info->add(std::make_unique<CPLSection>(*section));
    return info;
}

// Other threads of Python wait: the handler of the library's messages is that of the whole process.
std::pair<InfoPointer, py::object> loadCamera(const QString& path)
{
    QString problem;
    if (!readFile(path, &problem))
        raise({eSTATUS_FILE_OPEN_FAILED, path, problem});
    CPLCameraInfo camera;
    Instrument instrument;
    if (!loadInstrument(path, &camera, &instrument)) {
        problem = instrument.messages.isEmpty() ? QStringLiteral("describes no instrument")
                                                : instrument.messages.join(QLatin1String("; "));
        raise({eSTATUS_BAD_FORMAT, path, problem});
    }
    return {std::make_shared<Info>(std::make_unique<CPLClickInfo>(camera)),
            toPython(QJsonValue(instrumentJson(instrument)))};
}

std::tuple<InfoPointer, QStringList, QStringList> loadOptical(const QString& path)
{
    CPLOptPropInfo menus;
    checkLoaded(released([&] { return menus.readSettingFile(path); }), path);
    return {loadInfo(path), menus.getTissuePropList(), menus.getSrcModelList()};
}

InfoPointer infoOf(const py::bytes& bytes)
{
    InfoPointer info = newInfo();
    const tag_estatus status = info->loadBytes(bytesOf(bytes));
    if (status != eSTATUS_SUCCESS)
        raise({status, QString(), explained(status, QString())});
    return info;
}

InfoPointer infoForImage(const QString& path, const QString& prefix, int type, int binning)
{
    checkText(path);
    checkText(prefix);
    InfoPointer info = newInfo();
    check(info->clickInfo()->loadClickInfo(path, prefix, tag_eimagetype(type), binning));
    return info;
}

py::bytes readBytes(const QString& path)
{
    QString problem;
    const auto bytes = released([&] { return readFile(path, &problem); });
    if (!bytes)
        raise({eSTATUS_FILE_OPEN_FAILED, path, problem});
    return {bytes->constData(), std::size_t(bytes->size())};
}

// The image of a DICOM file stays, whatever the file is called.
void save(const Info& info, const QString& path)
{
    using namespace ovparser::internal;
    const QByteArray bytes = info.bytes();
    const bool isImage = released([&] { return holdsImage(path); });
    if (isImage && !info.clickInfo())
        raise({eSTATUS_INVALID_ARGUMENT, path, QStringLiteral("a DICOM file; not replaced")});
    const tag_estatus status = released(
        [&] { return writeFile(path, bytes, isImage ? WriteMode::Append : WriteMode::Replace); });
    if (status != eSTATUS_SUCCESS)
        raise({status, path, explained(status, path, Access::Write), true});
}

void rewrite(const QString& path, const py::bytes& old, const py::bytes& bytes)
{
    const QByteArray before = bytesOf(old);
    const QByteArray after = bytesOf(bytes);
    const QString problem = released([&] { return rewriteFile(path, before, after); });
    if (!problem.isEmpty())
        raise({eSTATUS_FAILED, path, problem, true});
}

void saveBytes(const QString& path, const py::bytes& bytes)
{
    const QByteArray data = bytesOf(bytes);
    if (released([&] { return holdsImage(path); }))
        raise({eSTATUS_INVALID_ARGUMENT, path, QStringLiteral("a DICOM file; not replaced")});
    if (!released([&] { return saveFile(path, data); }))
        raise({eSTATUS_FILE_OPEN_FAILED, path,
               explained(eSTATUS_FILE_OPEN_FAILED, path, Access::Write), true});
}

} // namespace ovpython
