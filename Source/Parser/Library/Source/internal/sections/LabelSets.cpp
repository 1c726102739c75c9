// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "LabelSets.h"

namespace ovparser::internal {

namespace {

constexpr int displayedChoices = 5;

bool isUniversal(const CPLSection& labelSet)
{
    QString name;
    checked(labelSet.getSectionName(&name, false));
    return name.compare(PLKeyword::Value::UniversalLabelSet, Qt::CaseInsensitive) == 0 ||
           name.compare(PLKeyword::Value::FormerUniversalLabelSet, Qt::CaseInsensitive) == 0;
}

tag_estatus copyLabels(const CPLSection& labelSet, const QStringList& labels, CPLSection& userInput)
{
    for (const QString& label : labels) {
        const tag_estatus status = checked(userInput.addKeyValue(label, valueOf(labelSet, label)));
        if (status != eSTATUS_SUCCESS)
            return status;
    }
    return eSTATUS_SUCCESS;
}

} // namespace

std::unique_ptr<CPLSection> makeUniversalLabelSet()
{
    auto labelSet = std::make_unique<CPLSection>(PLKeyword::Section::UserLabelNameSet,
                                                 PLKeyword::Value::UniversalLabelSet);
    for (const QLatin1String label : PLKeyword::Key::UniversalLabels)
        addPair(*labelSet, label, PLKeyword::Value::Empty);
    return labelSet;
}

tag_estatus makeUserInput(const CPLSection& labelSet, bool userFields,
                          std::unique_ptr<CPLSection>* userInput)
{
    auto section =
        std::make_unique<CPLSection>(PLKeyword::Section::UserInput, PLKeyword::Value::Empty);
    if (userFields) {
        addPair(*section, PLKeyword::Key::UserId, PLKeyword::Value::Empty);
        addPair(*section, PLKeyword::Key::DisplayType, PLKeyword::Value::DisplaySingle);
    }
    QStringList labels;
    checked(labelSet.getKeyList(&labels));
    if (isUniversal(labelSet)) {
        const tag_estatus status = copyLabels(labelSet, labels, *section);
        if (status != eSTATUS_SUCCESS)
            return status;
    }
    QString choices = PLKeyword::Value::Empty;
    for (const QString& label : labels.mid(0, displayedChoices))
        choices += label + QLatin1Char(';');
    addPair(*section, PLKeyword::Key::DisplayedKeyChoices, choices);
    *userInput = std::move(section);
    return eSTATUS_SUCCESS;
}

} // namespace ovparser::internal
