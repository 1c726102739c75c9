#include "LabelSets.h"

#include "PLHelpers.h"

namespace ovparser::internal {

namespace {

constexpr int displayedChoices = 5;

bool isUniversal(const CPLSection& labelSet)
{
    QString name;
    labelSet.getSectionName(&name, false);
    name = updateLabelSetName(name);
    return name.compare(PLKeyword::Value::UniversalLabelSet, Qt::CaseInsensitive) == 0 ||
           name.compare(PLKeyword::Value::FormerUniversalLabelSet, Qt::CaseInsensitive) == 0;
}

tag_estatus copyLabels(const CPLSection& labelSet, const QStringList& labels, CPLSection& userInput)
{
    for (int i = 0; i < labels.size(); ++i) {
        const tag_estatus status = userInput.addKeyValue(labels.at(i), labelSet[i]);
        if (status != eSTATUS_SUCCESS)
            return status;
    }
    return eSTATUS_SUCCESS;
}

} // namespace

std::unique_ptr<CPLSection> makeUniversalLabelSet()
{
    auto labelSet =
        makeSection(PLKeyword::Section::UserLabelNameSet, PLKeyword::Value::UniversalLabelSet);
    if (!labelSet)
        return nullptr;
    for (const QLatin1String label : PLKeyword::Key::UniversalLabels)
        labelSet->addKeyValue(label, PLKeyword::Value::Empty);
    return labelSet;
}

tag_estatus makeUserInput(const CPLSection& labelSet, bool userFields,
                          std::unique_ptr<CPLSection>* userInput)
{
    auto section = makeSection(PLKeyword::Section::UserInput, PLKeyword::Value::Empty);
    if (!section)
        return eSTATUS_OUT_OF_MEMORY;
    if (userFields) {
        section->addKeyValue(PLKeyword::Key::UserId, PLKeyword::Value::Empty);
        section->addKeyValue(PLKeyword::Key::DisplayType, PLKeyword::Value::DisplaySingle);
    }
    QStringList labels;
    labelSet.getKeyList(&labels);
    if (isUniversal(labelSet)) {
        const tag_estatus status = copyLabels(labelSet, labels, *section);
        if (status != eSTATUS_SUCCESS)
            return status;
    }
    QString choices = PLKeyword::Value::Empty;
    for (const QString& label : labels.mid(0, displayedChoices))
        choices += label + QLatin1Char(';');
    section->addKeyValue(PLKeyword::Key::DisplayedKeyChoices, choices);
    *userInput = std::move(section);
    return eSTATUS_SUCCESS;
}

} // namespace ovparser::internal
