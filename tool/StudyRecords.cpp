// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "StudyRecords.h"

#include "Found.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace {

namespace Key = PLKeyword::Key;

/** A setting and the member of a record that holds it. */
struct SettingRow
{
    const char* name = "";
    const char* member = ""; ///< empty for what follows from several
    const char* before = ""; ///< its value
    const char* after = "";
};

constexpr SettingRow settingRows[settingCount] = {
    {"exposure", "exposureSeconds", "", " s"},
    {"binning", "binning", "", ""},
    {"f number", "fNumber", "f/", ""},
    {"field of view", "fieldOfView", "", " cm"},
    {"emission filter", "emissionFilter", "", ""},
    {"excitation filter", "excitationFilter", "", ""},
    {"time since injection", "", "", " min"},
};

constexpr int secondsPerMinute = 60;
constexpr int secondsPerDay = 24 * 60 * secondsPerMinute;

QString textOf(const QJsonObject& record, const char* member)
{
    return record.value(QLatin1String(member)).toString();
}

QString settingOf(const QJsonObject& record, const SettingRow& row)
{
    constexpr int digits = 9; // so that 0.1 min are 6 s
    const QJsonValue value = record.value(QLatin1String(row.member));
    const QString text =
        value.isDouble() ? QString::number(value.toDouble(), 'g', digits) : value.toString();
    return text.isEmpty() ? text : QLatin1String(row.before) + text + QLatin1String(row.after);
}

/** The seconds since midnight of a time such as "9:05", "09:05:00" or "9:05 PM". */
std::optional<int> timeOf(const QString& text)
{
    static const QRegularExpression form(QStringLiteral(
        "^\\s*([0-9]{1,2}):([0-9]{2})(?::([0-9]{2}))?\\s*(?:([AaPp])\\.?[Mm]?\\.?)?\\s*$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QString half = match.captured(4).toLower();
    int hour = match.captured(1).toInt();
    if (!half.isEmpty())
        hour = hour % 12 + (half == QLatin1String("p") ? 12 : 0);
    const QTime time(hour, match.captured(2).toInt(), match.captured(3).toInt());
    return time.isValid() ? std::optional(time.msecsSinceStartOfDay() / 1000) : std::nullopt;
}

/**
 * The time from the injection to an acquisition, which may be after midnight. Up to an hour before
 * it counts as before it: an injection time may be rounded, or written down late.
 */
std::optional<int> intervalOf(const ReportedAcquisition& acquisition)
{
    const auto injection = timeOf(labelOf(acquisition.labels, Key::LucInjectionTime).toString());
    if (!injection || !acquisition.time.isValid())
        return std::nullopt;
    constexpr int secondsPerHour = 3600;
    const int interval = acquisition.time.msecsSinceStartOfDay() / 1000 - *injection;
    return interval < -secondsPerHour ? interval + secondsPerDay : interval;
}

/** A value that --column or --all of 'study' added to a record. */
QString addedValue(const QJsonObject& record, const QString& section, const QString& key)
{
    const QJsonValue value = record.value(section + QLatin1Char('/') + key);
    if (value.isString())
        return value.toString();
    const QJsonArray sections = record.value(QLatin1String("sections")).toArray();
    for (const QJsonValue& element : sections) {
        if (textOf(element.toObject(), "key") != section)
            continue;
        const QJsonArray entries = element.toObject().value(QLatin1String("entries")).toArray();
        for (const QJsonValue& entry : entries) {
            if (textOf(entry.toObject(), "key") == key)
                return textOf(entry.toObject(), "value");
        }
    }
    return {};
}

} // namespace

QString settingName(Setting setting)
{
    return QLatin1String(settingRows[setting].name);
}

QString minutesText(int count)
{
    return QString::number(count) + QLatin1String(settingRows[Interval].after);
}

void StudyRecords::add(const QJsonObject& record)
{
    const QString kind = textOf(record, "kind");
    const QString problem = textOf(record, "problem");
    const QString sequence = textOf(record, "sequencePath");
    if (record.contains(QLatin1String("findings")))
        return addFindings(record);
    if (!problem.isEmpty())
        return addProblem(textOf(record, "path"), {QStringLiteral("study"), 0, problem});
    if (!sequence.isEmpty())
        sequences += sequence;
    if (kind == kindName(Found::AcquisitionFile) || kind == kindName(Found::DicomFile))
        addAcquisition(record);
}

// The same file may be told of by several parts.
void StudyRecords::addAcquisition(const QJsonObject& record)
{
    ReportedAcquisition acquisition;
    acquisition.clickNumber = textOf(record, "clickNumber");
    acquisition.isDicom = textOf(record, "kind") == kindName(Found::DicomFile);
    acquisition.path = textOf(record, "path");
    if (m_paths.contains(acquisition.path))
        return;
    m_paths += acquisition.path;
    acquisition.image = textOf(record, "mainImage");
    acquisition.date = QDate::fromString(textOf(record, "date"), Qt::ISODate);
    acquisition.time = QTime::fromString(textOf(record, "time"), Qt::ISODate);
    acquisition.labels = record.value(QLatin1String("labels")).toObject();
    for (int i = 0; i < Interval; ++i)
        acquisition.settings.at(std::size_t(i)) = settingOf(record, settingRows[i]);
    acquisition.interval = intervalOf(acquisition);
    const QString injection = labelOf(acquisition.labels, Key::LucInjectionTime).toString();
    if (!injection.trimmed().isEmpty() && !timeOf(injection))
        addProblem(acquisition.path,
                   {QStringLiteral("report"), 0,
                    QStringLiteral("%1 '%2' is no time").arg(Key::LucInjectionTime, injection)});
    if (acquisition.interval)
        acquisition.settings.at(Interval) = minutesText(*acquisition.interval / secondsPerMinute);
    const QString version = addedValue(record, PLKeyword::Section::ClickNumber, Key::Version);
    if (!version.isEmpty())
        versions += version;
    acquisitions += acquisition;
}

// What keeps a file from being read is told by both.
void StudyRecords::addProblem(const QString& file, const ReportedProblem& problem)
{
    QList<ReportedProblem>& known = problems[file];
    const bool isKnown =
        std::any_of(known.cbegin(), known.cend(), [&](const ReportedProblem& other) {
            return other.line == problem.line && other.message == problem.message;
        });
    if (!isKnown)
        known += problem;
}

void StudyRecords::addFindings(const QJsonObject& record)
{
    areChecked = true;
    const QString source = QStringLiteral("check");
    const QString file = textOf(record, "file");
    const QString failure = textOf(record, "failure");
    if (!failure.isEmpty())
        addProblem(file, {source, 0, failure});
    const QJsonArray findings = record.value(QLatin1String("findings")).toArray();
    for (const QJsonValue& element : findings) {
        const QJsonObject finding = element.toObject();
        if (textOf(finding, "severity") == QLatin1String("problem"))
            addProblem(file, {source, finding.value(QLatin1String("line")).toInt(),
                              textOf(finding, "message")});
    }
}
