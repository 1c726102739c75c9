// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Acquisition.h"

#include "Json.h"

#include <QtCore/QLocale>
#include <QtCore/QTime>

#include <algorithm>

namespace {

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;
using PLKeyword::keyword;

/** The image sections; of those that an acquisition holds, the first is its main image. */
constexpr AcquiredImage knownImages[] = {
    {keyword("luminescent"), Section::Luminescent, eIMAGE_LUMINESCENT},
    {keyword("luminescentCorrected"), Section::LuminescentCorrected, eIMAGE_LUMINESCENT_CORRECTED},
    {keyword("fluorescentReference"), Section::FluorescentReference, eIMAGE_FL_REFERENCE},
    {keyword("xray"), Section::XRay, eIMAGE_XRAY},
    {keyword("structure"), Section::Structure, eIMAGE_STRUCTURE},
    {keyword("photograph"), Section::Photograph, eIMAGE_PHOTOGRAPH},
    {keyword("fluorescentBackground"), Section::FluorescentBackground, eIMAGE_FLUORESCENT_BKG},
    {keyword("darkCharge"), Section::DarkCharge, eIMAGE_BACKGROUND},
    {keyword("readBiasOnly"), Section::ReadBiasOnly, eIMAGE_BIAS},
    {keyword("readBias"), Section::ReadBias, eIMAGE_READ_BIAS},
    {keyword("readSigma"), Section::ReadSigma, eIMAGE_READ_SIGMA},
    {keyword("blemish"), Section::Blemish, eIMAGE_BLEMISH},
};

constexpr QLatin1String exposureKeys[] = {Key::LuminescentExposure, Key::ExposureTimeSec,
                                          Key::BackgroundExposure};

/** Keys of "User Input" that are no labels. */
constexpr QLatin1String otherUserKeys[] = {Key::UserId, Key::DisplayType, Key::DisplayedKeyChoices};

struct Unit
{
    QLatin1String name;
    double seconds = 1;
};

constexpr Unit units[] = {
    {keyword("sec"), 1},    {keyword("s"), 1},        {keyword("seconds"), 1},
    {keyword("min"), 60},   {keyword("minutes"), 60}, {keyword("msec"), 0.001},
    {keyword("ms"), 0.001},
};

void readExposure(const CPLSection& image, Acquisition* acquisition)
{
    for (const QLatin1String key : exposureKeys) {
        if (!image.isKeyPresent(key))
            continue;
        acquisition->exposure = image[key];
        if (key == Key::LuminescentExposure)
            acquisition->exposureUnits = image[Key::LuminescentExposureUnits];
        if (acquisition->exposureUnits.isEmpty())
            acquisition->exposureUnits = units[0].name;
        return;
    }
}

void readMainImage(const CPLSection& image, Acquisition* acquisition)
{
    acquisition->date = image[Key::AcquisitionDate];
    acquisition->time = image[Key::AcquisitionTime];
    acquisition->binning = image[Key::BinningFactor];
    acquisition->fieldOfView = image[Key::FieldOfView];
    acquisition->fNumber = image[Key::FNumber];
    acquisition->emissionFilter = image[Key::EmissionFilter];
    acquisition->excitationFilter = image[Key::ExcitationFilter];
    readExposure(image, acquisition);
}

void readLabels(const CPLSection& user, Acquisition* acquisition)
{
    acquisition->userId = user[Key::UserId];
    QStringList keys;
    user.getKeyList(&keys);
    for (const QString& key : qAsConst(keys)) {
        if (isLabel(key))
            acquisition->labels.append({key, user[key]});
    }
}

/** The value of a column: null when there is no such key, empty when the key has no value. */
QString valueOf(const CPLClickInfo& info, const Column& column)
{
    QString value;
    const bool found = info.getValue(column.section, column.key, &value) == eSTATUS_SUCCESS;
    return found && value.isNull() ? QString(QLatin1String("")) : value;
}

QJsonValue exposureSeconds(const Acquisition& acquisition)
{
    const auto* const unit = std::find_if(std::begin(units), std::end(units), [&](const Unit& row) {
        return acquisition.exposureUnits.compare(row.name, Qt::CaseInsensitive) == 0;
    });
    const QJsonValue number = numberOf(acquisition.exposure);
    if (unit == std::end(units) || !number.isDouble())
        return {};
    return number.toDouble() * unit->seconds;
}

// Qt's parser of forms takes as long as reading the file, as it looks for the time zone each time.
// It is asked only for what is not written as the application does.
QDate dateOf(const QString& text)
{
    const QLocale names = QLocale::c();
    const QString form = QStringLiteral("dddd, MMMM dd, yyyy");
    const QStringList words = text.split(QLatin1Char(' '));
    for (int month = 1; words.size() == 4 && month <= 12; ++month) {
        if (words.at(1) != names.monthName(month))
            continue;
        const QDate date(words.at(3).toInt(), month, words.at(2).left(2).toInt());
        if (names.toString(date, form) == text)
            return date;
    }
    return names.toDate(text, form);
}

QTime timeOf(const QString& text)
{
    const QTime time = QTime::fromString(text, Qt::ISODate);
    if (time.isValid() && time.toString(Qt::ISODate) == text)
        return time;
    return QTime::fromString(text, QStringLiteral("HH:mm:ss"));
}

QJsonValue isoDate(const Acquisition& acquisition)
{
    return textOrNull(dateOf(acquisition.date).toString(Qt::ISODate));
}

QJsonValue isoTime(const Acquisition& acquisition)
{
    return textOrNull(timeOf(acquisition.time).toString(Qt::ISODate));
}

QJsonValue imageNames(const Acquisition& acquisition)
{
    return arrayOf(acquisition.images,
                   [](const AcquiredImage* image) { return QString(image->name); });
}

QJsonValue mainImage(const Acquisition& acquisition)
{
    return acquisition.images.isEmpty() ? QJsonValue()
                                        : QJsonValue(acquisition.images.first()->name);
}

/** A member of the record, and a column of the table. */
struct Member
{
    const char* name;
    QJsonValue (*value)(const Acquisition& acquisition);
};

constexpr Member members[] = {
    {"path", [](const Acquisition& a) { return QJsonValue(a.path); }},
    {"sequencePath",
     [](const Acquisition& a) { return a.sequence ? QJsonValue(a.sequence->path) : QJsonValue(); }},
    {"sequenceName",
     [](const Acquisition& a) { return a.sequence ? QJsonValue(a.sequence->name) : QJsonValue(); }},
    {"sequenceId", [](const Acquisition& a) { return textOrNull(a.sequenceId); }},
    {"clickNumber", [](const Acquisition& a) { return textOrNull(a.clickNumber); }},
    {"userId", [](const Acquisition& a) { return textOrNull(a.userId); }},
    {"date", isoDate},
    {"time", isoTime},
    {"images", imageNames},
    {"mainImage", mainImage},
    {"exposureSeconds", exposureSeconds},
    {"binning", [](const Acquisition& a) { return numberOf(a.binning); }},
    {"fieldOfView", [](const Acquisition& a) { return numberOf(a.fieldOfView); }},
    {"fNumber", [](const Acquisition& a) { return numberOf(a.fNumber); }},
    {"emissionFilter", [](const Acquisition& a) { return textOrNull(a.emissionFilter); }},
    {"excitationFilter", [](const Acquisition& a) { return textOrNull(a.excitationFilter); }},
};

} // namespace

std::optional<Column> columnOf(const QString& name)
{
    const auto slash = name.indexOf(QLatin1Char('/'));
    if (slash < 1 || slash == name.size() - 1)
        return std::nullopt;
    return Column{name, name.left(slash), name.mid(slash + 1)};
}

void readAcquisition(const CPLClickInfo& info, const Wanted& wanted, Acquisition* acquisition)
{
    info.getClickNumber(&acquisition->clickNumber);
    info.getValue(Section::ClickNumber, Key::SequenceId, &acquisition->sequenceId);
    for (const AcquiredImage& image : knownImages) {
        const CPLSection* const section = info[image.section];
        if (!section)
            continue;
        if (acquisition->images.isEmpty())
            readMainImage(*section, acquisition);
        acquisition->images.append(&image);
    }
    if (const CPLSection* const user = info[Section::UserInput])
        readLabels(*user, acquisition);
    for (const Column& column : wanted.columns)
        acquisition->columns += valueOf(info, column);
    if (wanted.sections)
        acquisition->sections = sectionsOf(info);
}

QStringList tableHead()
{
    return {QStringLiteral("Click number"), QStringLiteral("Date"),     QStringLiteral("Time"),
            QStringLiteral("Images"),       QStringLiteral("Exposure"), QStringLiteral("Binning"),
            QStringLiteral("Field of view")};
}

QStringList tableRow(const Acquisition& acquisition)
{
    QStringList images;
    for (const AcquiredImage* const image : acquisition.images)
        images += getImageTypeString(image->type);
    images.removeDuplicates();
    const QString exposure =
        acquisition.exposure.isNull()
            ? QString()
            : acquisition.exposure + QLatin1Char(' ') + acquisition.exposureUnits;
    return {acquisition.clickNumber,          acquisition.date, acquisition.time,
            images.join(QLatin1String(", ")), exposure,         acquisition.binning,
            acquisition.fieldOfView};
}

QJsonObject acquisitionJson(const Wanted& wanted, const Acquisition& acquisition)
{
    QJsonObject record;
    for (const Member& member : members)
        record.insert(QLatin1String(member.name), member.value(acquisition));
    QJsonObject labels;
    for (const auto& label : acquisition.labels)
        labels.insert(label.first, label.second);
    record.insert(QStringLiteral("labels"), labels);
    for (int i = 0; i < wanted.columns.size(); ++i) {
        const QString value = acquisition.columns.value(i);
        record.insert(wanted.columns.at(i).name, value.isNull() ? QJsonValue() : value);
    }
    if (wanted.sections)
        record.insert(QStringLiteral("sections"), arrayOf(acquisition.sections, sectionJson));
    return record;
}

QStringList memberNames()
{
    QStringList names;
    for (const Member& member : members)
        names += QLatin1String(member.name);
    return names;
}

QString imageTitle(const QString& name)
{
    const auto* const image =
        std::find_if(std::begin(knownImages), std::end(knownImages),
                     [&](const AcquiredImage& known) { return known.name == name; });
    return image == std::end(knownImages) ? name : getImageTypeString(image->type);
}

bool isLabel(const QString& key)
{
    return !key.isEmpty() && std::none_of(std::begin(otherUserKeys), std::end(otherUserKeys),
                                          [&](QLatin1String name) {
                                              return key.compare(name, Qt::CaseInsensitive) == 0;
                                          });
}

QString cellOf(const QJsonValue& value)
{
    if (value.isDouble())
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    if (!value.isArray())
        return value.toString();
    QStringList parts;
    const QJsonArray elements = value.toArray();
    for (const QJsonValue& element : elements)
        parts += element.toString();
    return parts.join(QLatin1Char(';'));
}
