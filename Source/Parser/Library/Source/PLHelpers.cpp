#include "PLHelpers.h"

#include "PLKeywords.h"
#include "PLStatus.h"

#include <QtCore/QStringList>

#include <array>

namespace {

using PLKeyword::keyword;

template <std::size_t N>
QString nameAt(const std::array<QLatin1String, N>& names, int index)
{
    return index >= 0 && std::size_t(index) < N ? QString(names[std::size_t(index)]) : QString();
}

constexpr std::array<QLatin1String, 17> imageTypeNames = {
    keyword("Photograph"),   keyword("Luminescent"),   keyword("Read Bias"),
    keyword("Read Sigma"),   keyword("Background"),    keyword("Bias"),
    keyword("Reference"),    keyword("Structure"),     keyword("Fluorescent Bkg"),
    keyword("FL Reference"), keyword("Luminescent A"), keyword("Luminescent B"),
    keyword("X-Ray"),        keyword("Overlay"),       keyword("Saturation Map"),
    keyword("Height Map"),   keyword("Photo Mask"),
};
constexpr QLatin1String blemishName = keyword("Blemish");

constexpr std::array<QLatin1String, 7> dayNames = {
    keyword("Sunday"),   keyword("Monday"), keyword("Tuesday"),  keyword("Wednesday"),
    keyword("Thursday"), keyword("Friday"), keyword("Saturday"),
};

constexpr std::array<QLatin1String, 12> monthNames = {
    keyword("January"),   keyword("February"), keyword("March"),    keyword("April"),
    keyword("May"),       keyword("June"),     keyword("July"),     keyword("August"),
    keyword("September"), keyword("October"),  keyword("November"), keyword("December"),
};

struct StatusName
{
    tag_estatus status = eSTATUS_SUCCESS;
    QLatin1String name;
};

constexpr StatusName statusNames[] = {
    {eSTATUS_SUCCESS, keyword("eSTATUS_SUCCESS")},
    {eSTATUS_EXTENSION_LOAD_FAILED, keyword("eSTATUS_EXTENSION_LOAD_FAILED")},
    {eSTATUS_NO_CLICK_NUMBERS, keyword("eSTATUS_NO_CLICK_NUMBERS")},
    {eSTATUS_BAD_FORMAT, keyword("eSTATUS_BAD_FORMAT")},
    {eSTATUS_FILE_READ_FAILED, keyword("eSTATUS_FILE_READ_FAILED")},
    {eSTATUS_FILE_OPEN_FAILED, keyword("eSTATUS_FILE_OPEN_FAILED")},
    {eSTATUS_FILE_NOT_FOUND, keyword("eSTATUS_FILE_NOT_FOUND")},
    {eSTATUS_NULL_ARGUMENT, keyword("eSTATUS_NULL_ARGUMENT")},
    {eSTATUS_INVALID_ARGUMENT, keyword("eSTATUS_INVALID_ARGUMENT")},
    {eSTATUS_BAD_LABEL_FORMAT, keyword("eSTATUS_BAD_LABEL_FORMAT")},
    {eSTATUS_KEY_NOT_FOUND, keyword("eSTATUS_KEY_NOT_FOUND")},
    {eSTATUS_SYSTEM_MISMATCH, keyword("eSTATUS_SYSTEM_MISMATCH")},
    {eSTATUS_EXTENSION_CONFLICT, keyword("eSTATUS_EXTENSION_CONFLICT")},
    {eSTATUS_FAILED, keyword("eSTATUS_FAILED")},
    {eSTATUS_EMPTY_SECTION_KEY, keyword("eSTATUS_EMPTY_SECTION_KEY")},
    {eSTATUS_OUT_OF_MEMORY, keyword("eSTATUS_OUT_OF_MEMORY")},
    {eSTATUS_SECTION_EXISTS, keyword("eSTATUS_SECTION_EXISTS")},
    {eSTATUS_EXTENSION_KEY_MISSING, keyword("eSTATUS_EXTENSION_KEY_MISSING")},
    {eSTATUS_INVALID_VALUE, keyword("eSTATUS_INVALID_VALUE")},
    {eSTATUS_SECTION_NOT_FOUND, keyword("eSTATUS_SECTION_NOT_FOUND")},
    {eSTATUS_UNSUPPORTED_IMAGE_TYPE, keyword("eSTATUS_UNSUPPORTED_IMAGE_TYPE")},
    {eSTATUS_FOLDER_NOT_FOUND, keyword("eSTATUS_FOLDER_NOT_FOUND")},
    {eSTATUS_EMPTY_SEQUENCE, keyword("eSTATUS_EMPTY_SEQUENCE")},
};

/** Decimal, with a leading zero when the text is a single character. */
QString twoDigits(int number)
{
    return QString::number(number).rightJustified(2, QLatin1Char('0'));
}

} // namespace

QString getStatusString(tag_estatus status)
{
    for (const StatusName& row : statusNames) {
        if (row.status == status)
            return row.name;
    }
    return {};
}

QString getImageTypeString(tag_eimagetype type)
{
    switch (type) {
    case eIMAGE_LUMINESCENT_CORRECTED:
        return nameAt(imageTypeNames, eIMAGE_LUMINESCENT);
    case eIMAGE_SATURATION_MAP_2:
        return nameAt(imageTypeNames, eIMAGE_SATURATION_MAP);
    case eIMAGE_BLEMISH:
        return blemishName;
    default:
        return nameAt(imageTypeNames, type);
    }
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
