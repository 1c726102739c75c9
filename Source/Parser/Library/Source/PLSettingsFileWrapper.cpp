// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLSettingsFileWrapper.h"

#include "PLKeywords.h"
#include "internal/sections/SectionAccess.h"
#include "internal/text/Guard.h"
#include "internal/text/InfoText.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <vector>

using namespace ovparser::internal;

namespace {

// Wider than the numbers in the files, so that "the number after the last one" always exists.
using Numbers = std::vector<qint64>;

QString keyOf(const CPLSection& section)
{
    QString key;
    section.getSectionKey(&key);
    return key;
}

std::unique_ptr<CPLSection> newSection(const QString& key)
{
    return std::make_unique<CPLSection>(key, PLKeyword::Value::Empty);
}

bool equalsIgnoringCase(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/** Collects the number that stands `gap` characters after the first `stem` of a text, if any. */
void collectNumber(const QString& text, const QString& stem, int gap, Numbers* numbers)
{
    const auto found = text.indexOf(stem);
    if (found < 0)
        return;
    bool converted = false;
    const int number = text.mid(found + stem.size() + gap).toInt(&converted);
    if (converted)
        numbers->push_back(number);
}

/** Where sorted numbers stop to run 1, 2, 3; a repeated number stops them. */
qint64 nextSectionNumber(const Numbers& sorted)
{
    qint64 next = 1;
    for (const qint64 number : sorted) {
        if (number != next)
            break;
        ++next;
    }
    return next;
}

/** The first gap of sorted numbers; a gap right after a repeated number does not count. */
qint64 nextMenuNumber(const Numbers& sorted)
{
    if (!std::binary_search(sorted.begin(), sorted.end(), 1))
        return 1;
    qint64 previous = sorted.front() - 1;
    qint64 beforePrevious = previous;
    for (const qint64 current : sorted) {
        const bool gap = current != previous && current != previous + 1;
        if (gap && beforePrevious != previous)
            break;
        beforePrevious = previous;
        previous = current;
    }
    return previous + 1;
}

QString withoutExtension(const QString& name)
{
    const auto dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

/** Names of the settings files of a folder, sorted; a file named just "txt" counts. */
QStringList settingsFilesIn(const QString& folder)
{
    if (!QFileInfo(folder).isDir())
        return {};
    QStringList names = QDir(folder).entryList(QDir::Files, QDir::Name);
    const auto isOther = [](const QString& name) {
        const QString extension = name.mid(name.lastIndexOf(QLatin1Char('.')) + 1);
        return !equalsIgnoringCase(extension, PLKeyword::File::SettingsExtension);
    };
    names.erase(std::remove_if(names.begin(), names.end(), isOther), names.end());
    return names;
}

QStringList menuNamesIn(const QString& folder, const QString& prefix)
{
    QStringList names;
    const QStringList files = settingsFilesIn(folder);
    for (const QString& file : files) {
        if (file.startsWith(prefix))
            names.append(withoutExtension(file).mid(prefix.size()));
    }
    return names;
}

QString fileForMenuName(const QString& folder, const QString& menuName, const QString& prefix)
{
    const QStringList files = settingsFilesIn(folder);
    for (const QString& file : files) {
        const QString name = withoutExtension(file);
        const bool named =
            equalsIgnoringCase(name.mid(name.indexOf(QLatin1Char('-')) + 1), menuName);
        if (named && file.contains(prefix))
            return fileNameInPath(folder) + QLatin1Char('/') + file;
    }
    return {};
}

void setUnlessEmpty(QString& field, const QString& text)
{
    if (!text.isEmpty())
        field = text;
}

} // namespace

CPLSettingsFileWrapper::CPLSettingsFileWrapper()
    : CPLSettingsFileWrapper(QString(), QString())
{}

CPLSettingsFileWrapper::CPLSettingsFileWrapper(const QString& sectionTag)
    : CPLSettingsFileWrapper(sectionTag, QString())
{}

CPLSettingsFileWrapper::CPLSettingsFileWrapper(const QString& sectionTag, const QString& autoTag)
    : sectionNameTag(sectionTag)
    , menuNameTag(PLKeyword::Key::MenuName)
    , fileNameTag(PLKeyword::Key::FileName)
    , autoMenuNameTag(autoTag)
{}

CPLSettingsFileWrapper::CPLSettingsFileWrapper(const CPLSettingsFileWrapper& other) = default;
CPLSettingsFileWrapper&
CPLSettingsFileWrapper::operator=(const CPLSettingsFileWrapper& other) = default;
CPLSettingsFileWrapper::~CPLSettingsFileWrapper() = default;

tag_estatus CPLSettingsFileWrapper::addSection(CPLSection* section)
{
    return CPLClickInfo::addSection(section);
}

tag_estatus CPLSettingsFileWrapper::load(const QString& path)
{
    if (loadMode == eLOAD_FOLDER)
        return guarded([&] { return checkFolder(); });
    if (loadMode != eLOAD_FILE)
        return eSTATUS_SUCCESS;
    if (path.isEmpty())
        return eSTATUS_INVALID_ARGUMENT;
    const tag_estatus status = loadClickInfo(path, false);
    if (status == eSTATUS_SUCCESS)
        settingsFileName = path;
    return status;
}

tag_estatus CPLSettingsFileWrapper::checkFolder() const
{
    if (folderPath.isEmpty())
        return eSTATUS_INVALID_ARGUMENT;
    return QFileInfo(folderPath).isDir() ? eSTATUS_SUCCESS : eSTATUS_FOLDER_NOT_FOUND;
}

tag_estatus CPLSettingsFileWrapper::load()
{
    return load(settingsFileName);
}

tag_estatus CPLSettingsFileWrapper::save(const QString& path) const
{
    return path.isEmpty() ? eSTATUS_INVALID_ARGUMENT : saveClickInfo(path);
}

tag_estatus CPLSettingsFileWrapper::save() const
{
    return save(settingsFileName);
}

QList<CPLSection*> CPLSettingsFileWrapper::getSections() const
{
    return getSections(QString());
}

QList<CPLSection*> CPLSettingsFileWrapper::getSections(QString prefix) const
{
    return answerOf([&] { return settingsWith(prefix); });
}

QList<CPLSection*> CPLSettingsFileWrapper::settingsWith(const QString& prefix) const
{
    QList<CPLSection*> settings;
    for (const QString& sectionKey : sectionKeys) {
        CPLSection* const section = find(sectionKey);
        const QString key = keyOf(*section);
        if (key.contains(sectionNameTag) && key.contains(prefix))
            settings.append(section);
    }
    return settings;
}

tag_estatus CPLSettingsFileWrapper::readMenuName(const CPLSection& section, QString* name) const
{
    return checked(useSectionNameForMenuName ? section.getSectionName(name, true)
                                             : section.getRawValue(menuNameTag, name));
}

QStringList CPLSettingsFileWrapper::menuNamesOf(const QList<CPLSection*>& settings) const
{
    QStringList names;
    for (const CPLSection* const section : settings) {
        QString name;
        readMenuName(*section, &name);
        if (!trimmed(name).isEmpty())
            names.append(name);
    }
    return names;
}

QList<CPLSection*> CPLSettingsFileWrapper::withMenuName(const QString& menuName,
                                                        Qt::CaseSensitivity letterCase) const
{
    QList<CPLSection*> found;
    const QList<CPLSection*> settings = settingsWith(QString());
    for (CPLSection* const section : settings) {
        QString name;
        if (readMenuName(*section, &name) == eSTATUS_SUCCESS &&
            name.compare(menuName, letterCase) == 0)
            found.append(section);
    }
    return found;
}

QStringList CPLSettingsFileWrapper::getMenuNames() const
{
    return answerOf([&] { return menuNamesOf(settingsWith(QString())); });
}

QStringList CPLSettingsFileWrapper::getMenuNames(const QString& prefix) const
{
    return answerOf([&] {
        if (loadMode == eLOAD_FOLDER)
            return menuNamesIn(folderPath, prefix);
        return loadMode == eLOAD_FILE ? menuNamesOf(settingsWith(prefix)) : QStringList();
    });
}

bool CPLSettingsFileWrapper::isUnique(const QString& menuName) const
{
    return answerOf([&] { return withMenuName(menuName, Qt::CaseInsensitive).isEmpty(); });
}

CPLSection* CPLSettingsFileWrapper::getSectionByMenuName(const QString& menuName) const
{
    return answerOf([&] {
        const auto letterCase = useSectionNameForMenuName ? Qt::CaseInsensitive : Qt::CaseSensitive;
        return withMenuName(menuName, letterCase).value(0);
    });
}

QString CPLSettingsFileWrapper::getFileNameForMenuName(const QString& menuName,
                                                       QString prefix) const
{
    return answerOf([&] {
        if (loadMode == eLOAD_FOLDER)
            return fileForMenuName(folderPath, menuName, prefix);
        QString file;
        if (loadMode != eLOAD_FILE)
            return file;
        const QList<CPLSection*> named = withMenuName(menuName, Qt::CaseInsensitive);
        for (const CPLSection* const section : named) {
            if (checked(section->getRawValue(fileNameTag, &file)) == eSTATUS_SUCCESS)
                break;
        }
        return file;
    });
}

tag_estatus CPLSettingsFileWrapper::setFileNameForMenuName(const QString& menuName,
                                                           const QString& fileName)
{
    return guarded([&] {
        if (settingsWith(QString()).isEmpty())
            return eSTATUS_EMPTY_SECTION_KEY;
        tag_estatus status = eSTATUS_KEY_NOT_FOUND;
        const QList<CPLSection*> named = withMenuName(menuName, Qt::CaseInsensitive);
        for (CPLSection* const section : named)
            status = checked(section->setValue(fileNameTag, fileName));
        return status;
    });
}

QString CPLSettingsFileWrapper::getNextAvailableSectionName() const
{
    return answerOf(
        [&] { return getNextAvailableSectionName_core(settingsWith(QString()), sectionNameTag); });
}

QString CPLSettingsFileWrapper::getNextAvailableSectionName(const QString& prefix) const
{
    return answerOf([&] { return getNextAvailableSectionName_core(settingsWith(prefix), prefix); });
}

QString CPLSettingsFileWrapper::getNextAvailableSectionName_core(const QList<CPLSection*>& settings,
                                                                 const QString& prefix) const
{
    Numbers numbers;
    for (const CPLSection* const section : settings)
        collectNumber(keyOf(*section), prefix, 1, &numbers);
    std::sort(numbers.begin(), numbers.end());
    return prefix + QLatin1Char(' ') + QString::number(nextSectionNumber(numbers));
}

QString CPLSettingsFileWrapper::getNextAutoMenuName() const
{
    return answerOf([&] { return getNextAutoMenuName_core(settingsWith(QString())); });
}

QString CPLSettingsFileWrapper::getNextAutoMenuName(const QString& prefix) const
{
    return answerOf([&] { return getNextAutoMenuName_core(settingsWith(prefix)); });
}

QString CPLSettingsFileWrapper::getNextAutoMenuName_core(const QList<CPLSection*>& settings) const
{
    Numbers numbers;
    for (const CPLSection* const section : settings) {
        QString name;
        const tag_estatus status =
            checked(useSectionNameForMenuName ? section->getSectionName(&name, false)
                                              : section->getRawValue(menuNameTag, &name));
        if (status == eSTATUS_SUCCESS)
            collectNumber(name, autoMenuNameTag, 0, &numbers);
    }
    std::sort(numbers.begin(), numbers.end());
    return autoMenuNameTag + QString::number(nextMenuNumber(numbers));
}

tag_estatus CPLSettingsFileWrapper::addSection(const QString& prefix, const QString& menuName)
{
    return guarded([&] {
        auto section = newSection(getNextAvailableSectionName_core(settingsWith(prefix), prefix));
        if (useSectionNameForMenuName)
            checked(section->setSectionName(menuName));
        else
            addPair(*section, menuNameTag, menuName);
        return take(std::move(section));
    });
}

tag_estatus CPLSettingsFileWrapper::addSection(const QString& prefix, const QString& menuName,
                                               const QString& fileName)
{
    return guarded([&] {
        auto section = newSection(getNextAvailableSectionName_core(settingsWith(prefix), prefix));
        addPair(*section, menuNameTag, menuName);
        addPair(*section, fileNameTag, fileName);
        return take(std::move(section));
    });
}

tag_estatus CPLSettingsFileWrapper::addSection(const QString& menuName)
{
    return guarded([&] {
        auto section =
            newSection(getNextAvailableSectionName_core(settingsWith(QString()), sectionNameTag));
        addPair(*section, menuNameTag, menuName);
        return take(std::move(section));
    });
}

tag_estatus CPLSettingsFileWrapper::deleteSection(const QString&)
{
    return eSTATUS_FAILED;
}

tag_estatus CPLSettingsFileWrapper::deleteSection(int)
{
    return eSTATUS_FAILED;
}

tag_estatus CPLSettingsFileWrapper::initFromSections(const QList<CPLSection*>& list)
{
    return guarded([&] {
        for (const CPLSection* const section : list) {
            if (!section)
                return eSTATUS_NULL_ARGUMENT;
            const tag_estatus status = take(std::make_unique<CPLSection>(*section));
            if (status != eSTATUS_SUCCESS)
                return status;
        }
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLSettingsFileWrapper::initFromROISections(const QList<CPLSection*>& list)
{
    return guarded([&] {
        QList<CPLSection*> regions;
        for (CPLSection* const section : list) {
            if (!section ||
                keyOf(*section).contains(PLKeyword::Section::RoiFile, Qt::CaseInsensitive))
                regions.append(section);
        }
        return initFromSections(regions);
    });
}

void CPLSettingsFileWrapper::setSectionNameTag(const QString& tag)
{
    sectionNameTag = tag;
}

void CPLSettingsFileWrapper::setMenuNameTag(const QString& tag)
{
    setUnlessEmpty(menuNameTag, tag);
}

void CPLSettingsFileWrapper::setFileNameTag(const QString& tag)
{
    setUnlessEmpty(fileNameTag, tag);
}

void CPLSettingsFileWrapper::setAutoMenuNameTag(const QString& tag)
{
    setUnlessEmpty(autoMenuNameTag, tag);
}

void CPLSettingsFileWrapper::setSettingsFileName(const QString& path)
{
    setUnlessEmpty(settingsFileName, path);
}

const QString& CPLSettingsFileWrapper::getMenuNameTag() const
{
    return menuNameTag;
}

const QString& CPLSettingsFileWrapper::getFileNameTag() const
{
    return fileNameTag;
}

const QString& CPLSettingsFileWrapper::getAutoMenuNameTag() const
{
    return autoMenuNameTag;
}

const QString& CPLSettingsFileWrapper::getSettingsFileName() const
{
    return settingsFileName;
}

void CPLSettingsFileWrapper::setFolderPath(const QString& path)
{
    folderPath = path;
}

QString CPLSettingsFileWrapper::getFolderPath() const
{
    return folderPath;
}

void CPLSettingsFileWrapper::setLoadMode(LOAD_MODE mode)
{
    loadMode = mode;
}

LOAD_MODE CPLSettingsFileWrapper::getLoadMode() const
{
    return loadMode;
}

void CPLSettingsFileWrapper::setUseSectionNameForMenuName(bool use)
{
    useSectionNameForMenuName = use;
}

bool CPLSettingsFileWrapper::isUsingSectionNameForMenuName() const
{
    return useSectionNameForMenuName;
}
