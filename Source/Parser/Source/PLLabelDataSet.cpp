// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLLabelDataSet.h"

#include "PLKeywords.h"
#include "internal/text/Guard.h"
#include "internal/text/InfoText.h"

using namespace ovparser::internal;

CPLLabelDataSet::CPLLabelDataSet() = default;

CPLLabelDataSet::CPLLabelDataSet(QString name)
    : labelName(name)
{}

CPLLabelDataSet::CPLLabelDataSet(const CPLLabelDataSet& other) = default;
CPLLabelDataSet& CPLLabelDataSet::operator=(const CPLLabelDataSet& other) = default;
CPLLabelDataSet::~CPLLabelDataSet() = default;

tag_estatus CPLLabelDataSet::loadData(QString text)
{
    return guarded([&] {
        const QStringList lines = text.split(QLatin1Char('\n'));
        if (labelName.isEmpty()) {
            const tag_estatus status = loadLabelName(lines.first());
            if (status != eSTATUS_SUCCESS)
                return status;
        }
        for (int i = 1; i < lines.size(); ++i)
            appendLabel(lines.at(i), i + 1 < lines.size());
        return eSTATUS_SUCCESS;
    });
}

void CPLLabelDataSet::appendLabel(const QString& line, bool closed)
{
    const auto colon = line.indexOf(QLatin1Char(':'));
    const QString label = line.left(colon);
    if (colon > 0 || (colon == 0 && !closed))
        labelData.append(closed ? label : trimmed(label));
}

tag_estatus CPLLabelDataSet::loadLabelName(QString headerLine)
{
    return guarded([&] {
        const int keyStart = PLKeyword::Text::Marker.size();
        const auto colon = headerLine.indexOf(QLatin1Char(':'));
        if (!headerLine.startsWith(PLKeyword::Text::Marker) || colon < 0)
            return eSTATUS_BAD_LABEL_FORMAT;
        const auto nameStart = colon + PLKeyword::Text::KeyEnd.size();
        const auto comment = headerLine.indexOf(QLatin1Char('#'));
        if (comment >= 0 && comment <= nameStart)
            return eSTATUS_BAD_LABEL_FORMAT;
        const QString sectionKey = headerLine.mid(keyStart, colon - keyStart);
        if (sectionKey.compare(PLKeyword::Section::UserLabelNameSet, Qt::CaseInsensitive) != 0)
            return eSTATUS_SECTION_NOT_FOUND;
        if (headerLine.indexOf(QLatin1Char('\t')) != colon + 1)
            return eSTATUS_BAD_LABEL_FORMAT;
        labelName = headerLine.mid(nameStart, comment < 0 ? -1 : comment - nameStart);
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLLabelDataSet::getLabelName(QString* name) const
{
    if (!name)
        return eSTATUS_INVALID_VALUE;
    *name = labelName;
    return eSTATUS_SUCCESS;
}

tag_estatus CPLLabelDataSet::setLabelName(QString name)
{
    if (name.isEmpty())
        return eSTATUS_INVALID_VALUE;
    labelName = name;
    return eSTATUS_SUCCESS;
}

tag_estatus CPLLabelDataSet::getLabelData(QStringList* labels) const
{
    if (!labels)
        return eSTATUS_INVALID_VALUE;
    *labels = labelData;
    return eSTATUS_SUCCESS;
}

void CPLLabelDataSet::setLabelData(QStringList labels)
{
    labelData = labels;
}

int CPLLabelDataSet::getCount() const
{
    return int(labelData.size());
}

QString CPLLabelDataSet::operator[](int index) const
{
    return labelData.value(index);
}
