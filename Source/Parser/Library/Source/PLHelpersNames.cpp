// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLHelpers.h"
#include "PLKeywords.h"

#include <QtCore/QStringList>

#include <array>

namespace {

using PLKeyword::keyword;

struct ImageTypeName
{
    tag_eimagetype type = eIMAGE_PHOTOGRAPH;
    QLatin1String name;
};

/** The display names of the image types, each at the place that its type numbers. */
constexpr ImageTypeName imageTypeNames[] = {
    {eIMAGE_PHOTOGRAPH, PLKeyword::ImageType::Photograph},
    {eIMAGE_LUMINESCENT, keyword("Luminescent")},
    {eIMAGE_READ_BIAS, keyword("Read Bias")},
    {eIMAGE_READ_SIGMA, keyword("Read Sigma")},
    {eIMAGE_BACKGROUND, keyword("Background")},
    {eIMAGE_BIAS, keyword("Bias")},
    {eIMAGE_REFERENCE, keyword("Reference")},
    {eIMAGE_STRUCTURE, PLKeyword::ImageType::Structure},
    {eIMAGE_FLUORESCENT_BKG, keyword("Fluorescent Bkg")},
    {eIMAGE_FL_REFERENCE, keyword("FL Reference")},
    {eIMAGE_LUMINESCENT_A, keyword("Luminescent A")},
    {eIMAGE_LUMINESCENT_B, keyword("Luminescent B")},
    {eIMAGE_XRAY, PLKeyword::ImageType::XRay},
    {eIMAGE_OVERLAY, keyword("Overlay")},
    {eIMAGE_SATURATION_MAP, keyword("Saturation Map")},
    {eIMAGE_HEIGHT_MAP, keyword("Height Map")},
    {eIMAGE_PHOTO_MASK, keyword("Photo Mask")},
    {eIMAGE_LUMINESCENT_CORRECTED, keyword("Luminescent")},
    {eIMAGE_SATURATION_MAP_2, keyword("Saturation Map")},
    {eIMAGE_BLEMISH, keyword("Blemish")},
};

constexpr bool imageTypesStandAtTheirPlaces()
{
    int place = 0;
    for (const ImageTypeName& row : imageTypeNames) {
        if (row.type != place++)
            return false;
    }
    return place == eIMAGE_BLEMISH + 1;
}
static_assert(imageTypesStandAtTheirPlaces());

constexpr std::array<QLatin1String, 7> dayNames = {
    keyword("Sunday"),   keyword("Monday"), keyword("Tuesday"),  keyword("Wednesday"),
    keyword("Thursday"), keyword("Friday"), keyword("Saturday"),
};

constexpr std::array<QLatin1String, 12> monthNames = {
    keyword("January"),   keyword("February"), keyword("March"),    keyword("April"),
    keyword("May"),       keyword("June"),     keyword("July"),     keyword("August"),
    keyword("September"), keyword("October"),  keyword("November"), keyword("December"),
};

template <std::size_t N>
QString nameAt(const std::array<QLatin1String, N>& names, int index)
{
    return index >= 0 && std::size_t(index) < N ? QString(names[std::size_t(index)]) : QString();
}

/** Decimal, with a leading zero when the text is a single character. */
QString twoDigits(int number)
{
    return QString::number(number).rightJustified(2, QLatin1Char('0'));
}

} // namespace

QString getImageTypeString(tag_eimagetype type)
{
    const bool known = type >= 0 && type <= eIMAGE_BLEMISH;
    return known ? QString(imageTypeNames[type].name) : QString();
}

QString getTimefrom1904(double secondsSince1970)
{
    constexpr double secondsFrom1904To1970 = 24107.0 * 86400.0;
    const QString seconds = QString::number(secondsSince1970 + secondsFrom1904To1970, 'f', 6);
    return seconds.left(seconds.indexOf(QLatin1Char('.')));
}

QString getDateOVSFormat(struct tm* time)
{
    if (!time)
        return {};
    const QString day = QString::number(time->tm_mday);
    return nameAt(dayNames, time->tm_wday) + QLatin1String(", ") +
           nameAt(monthNames, time->tm_mon) + QLatin1Char(' ') +
           (time->tm_mday < 10 ? QLatin1Char('0') + day : day) + QLatin1String(", ") +
           QString::number(qint64(time->tm_year) + 1900);
}

QString getTimeOVSFormat(struct tm* time)
{
    if (!time)
        return {};
    const QChar separator = QLatin1Char(':');
    return twoDigits(time->tm_hour) + separator + twoDigits(time->tm_min) + separator +
           twoDigits(time->tm_sec);
}

QString camelCaseString(const QString& text)
{
    QStringList words = text.split(QLatin1Char(' '));
    words.removeAll(QString());
    for (QString& word : words)
        word[0] = word.at(0).toUpper();
    return words.join(QLatin1Char(' '));
}

QString updateLabelSetName(QString name)
{
    return name.replace(PLKeyword::Value::FormerProduct, PLKeyword::Value::Product);
}

QString getSectionBuffer(QString text)
{
    const auto start = text.indexOf(PLKeyword::Text::Marker);
    if (start < 0)
        return {};
    const auto end = text.indexOf(PLKeyword::Text::Marker, start + 1);
    return end < 0 ? text.mid(start) : text.mid(start, end - start);
}
