// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Support.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

using namespace fuzz;

namespace {

void checkMenuNames(const CPLSettingsFileWrapper& settings)
{
    const QStringList names = settings.getMenuNames();
    for (const QString& name : names) {
        require(!settings.isUnique(name), "a listed menu name is taken");
        require(settings.getSectionByMenuName(name) != nullptr, "a listed menu name has a section");
    }
    const QStringList tagged = settings.getMenuNames("Preset"_s);
    for (const QString& name : tagged)
        require(names.contains(name), "a prefix takes some of the names");
}

void addSetting(CPLSettingsFileWrapper& settings, const QString& prefix, const QString& menuName)
{
    int before = 0;
    int after = 0;
    settings.getSectionCount(&before);
    const QString key = settings.getNextAvailableSectionName(prefix);
    const bool taken = settings.isSectionPresent(key);
    succeeded(settings.addSection(prefix, menuName, "some.txt"_s), {});
    settings.getSectionCount(&after);
    require(after == before + int(!taken), "a setting is added unless its key is taken");
    require(settings.isSectionPresent(key), "a setting has the next key");
    const QString automatic = settings.getNextAutoMenuName();
    require(automatic.startsWith(settings.getAutoMenuNameTag()), "a menu name has its stem");
}

void renameFiles(CPLSettingsFileWrapper& settings, const QString& menuName)
{
    const tag_estatus status = settings.setFileNameForMenuName(menuName, "other.txt"_s);
    const QString file = settings.getFileNameForMenuName(menuName, QString());
    if (succeeded(status, {eSTATUS_EMPTY_SECTION_KEY, eSTATUS_KEY_NOT_FOUND}))
        require(file.startsWith("other.txt"_s), "a changed file name is the new one");
}

/** The settings of a part: section-name tag, stem, prefix and menu name, a line each. */
void checkSettings(const QString& path, const QStringList& words, bool useSectionName)
{
    CPLSettingsFileWrapper settings(words.value(0), words.value(1));
    settings.setUseSectionNameForMenuName(useSectionName);
    CPLClickInfo document;
    const tag_estatus status = settings.load(path);
    succeeded(status, {eSTATUS_BAD_FORMAT, eSTATUS_EMPTY_SECTION_KEY});
    require(document.loadClickInfo(path, false) == status, "settings load as click info");
    require(settings.getClickInfoData() == document.getClickInfoData(), "and alike");
    checkSections(settings);
    checkMenuNames(settings);
    QList<CPLSection*> sections;
    for (int i = 0; CPLSection* const section = settings[i]; ++i)
        sections += section;
    CPLSettingsFileWrapper copies;
    require(copies.initFromSections(sections) == eSTATUS_SUCCESS, "sections can be copied");
    require(checkSections(copies) == sections.size(), "all are copied");
    addSetting(settings, words.value(2), words.value(3));
    renameFiles(settings, words.value(3));
    checkMenuNames(settings);
    require(settings.save(path) == eSTATUS_SUCCESS, "settings can be saved");
    checkRoundTrip(contentOf(path));
}

/** In folder mode a file is a setting, whatever its name. */
void checkFolder(QString menuName)
{
    for (QChar& c : menuName) {
        if (c < u' ' || c > u'~' || c == u'/')
            c = u'_';
    }
    menuName.truncate(100);
    QDir folder(temporaryPath("presets"_s));
    require(folder.mkpath(folder.path()), "a folder can be made");
    const QString file = "Preset-"_s + menuName + ".txt"_s;
    temporaryFile("presets/"_s + file, "*** Preset 1:\t\r\n");
    CPLSettingsFileWrapper settings;
    settings.setLoadMode(eLOAD_FOLDER);
    settings.setFolderPath(folder.path());
    require(settings.load() == eSTATUS_SUCCESS, "a folder loads");
    require(settings.getMenuNames("Preset-"_s) == QStringList(menuName), "a file is a setting");
    require(settings.getFileNameForMenuName(menuName, "Preset"_s) == "presets/"_s + file,
            "a menu name leads to its file");
    folder.remove(file);
}

/** The lists of optical properties are what the document's sections say. */
void checkOpticalProperties(const QString& path)
{
    CPLOptPropInfo menus;
    CPLClickInfo document;
    require(menus.readSettingFile(path) == document.loadClickInfo(path, false),
            "optical properties load as click info");
    require(checkSections(menus) == 0, "the document has no part in it");
    QStringList names;
    for (int n = 1; const CPLSection* const section =
                        document[PLKeyword::Section::TissueProperties + QString::number(n)];
         ++n) {
        if (section->isKeyPresent(PLKeyword::Key::MenuName))
            names += (*section)[PLKeyword::Key::MenuName];
    }
    const QStringList tissues = menus.getTissuePropList();
    require(tissues == names || (tissues.isEmpty() && checkSections(document) > 0),
            "the tissues are the numbered sections");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Input input(data, size);
    const QStringList words = input.lines("words");
    checkOpticalProperties(temporaryFile("Settings.txt"_s, input.file));
    checkSettings(temporaryFile("Settings.txt"_s, input.file), words, false);
    checkSettings(temporaryFile("Settings.txt"_s, input.file), words, true);
    if (!words.isEmpty())
        checkFolder(words.value(3));
    return 0;
}
