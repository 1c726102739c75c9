// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Named settings, kept as sections of one file or as the files of a folder.
 */
#ifndef OVPARSER_PLSETTINGSFILEWRAPPER_H
#define OVPARSER_PLSETTINGSFILEWRAPPER_H

#include "PLClickInfo.h"

#include <QtCore/QList>

/** How settings are kept. With any other value the operations that depend on it do nothing. */
enum LOAD_MODE : int {
    eLOAD_FOLDER = 0, ///< one ".txt" file of a folder per setting
    eLOAD_FILE = 1,   ///< one section of a file per setting
};

/**
 * Named settings of the user, each shown in a menu under its menu name.
 *
 * In file mode the document's sections are the settings. Those whose key contains the section-name
 * tag (all of them while the tag is empty) are "the wrapper's sections". A setting's menu name is
 * the stored value of the menu-name tag or, when the section names serve as menu names, the stored
 * section name; comments count. In folder mode menu names derive from file names; the folder is
 * read anew on every call.
 *
 * Tags and prefixes are matched with their letter case, menu names without, unless said otherwise.
 * Sections that the lookups return are borrowed. Nothing is written before save(). Copies are deep.
 */
class PARSERLIBRARY_EXPORT CPLSettingsFileWrapper : public CPLClickInfo
{
public:
    /** An empty wrapper in file mode; each tag that is not given is null. */
    CPLSettingsFileWrapper();
    CPLSettingsFileWrapper(const QString& sectionTag);                         ///< @overload
    CPLSettingsFileWrapper(const QString& sectionTag, const QString& autoTag); ///< @overload

    /** A copy, which shares nothing with the original. */
    CPLSettingsFileWrapper(const CPLSettingsFileWrapper& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLSettingsFileWrapper& operator=(const CPLSettingsFileWrapper& other);
    ~CPLSettingsFileWrapper() override;

    /** Adds a section, as CPLClickInfo::addSection() does. */
    tag_estatus addSection(CPLSection* section) override;

    /** @name Loading and saving */
    ///@{

    /**
     * In file mode loads a settings file and remembers its path; in folder mode checks that the
     * folder exists.
     *
     * @param path  the settings file; not used in folder mode
     * @return eSTATUS_INVALID_ARGUMENT when the file or folder path is empty,
     *         eSTATUS_FOLDER_NOT_FOUND, otherwise the status of loadClickInfo()
     */
    tag_estatus load(const QString& path);

    /** The same with the remembered settings file. */
    tag_estatus load();

    /**
     * Writes the document to a file, in every mode, as saveClickInfo() does. The remembered
     * settings file stays.
     *
     * @return eSTATUS_INVALID_ARGUMENT when the path is empty, otherwise the status of
     *         saveClickInfo()
     */
    tag_estatus save(const QString& path) const;

    /** The same with the remembered settings file. */
    tag_estatus save() const;
    ///@}

    /** @name Lookup */
    ///@{

    /**
     * The menu names of the wrapper's sections in order, in every mode; blank ones are left out.
     */
    [[nodiscard]] QStringList getMenuNames() const;

    /**
     * The menu names of the settings that belong to a prefix.
     *
     * @param prefix  in file mode, text that the section keys contain as well; in folder mode, how
     *                the file names begin: the rest without ".txt" (in any letter case) is the
     *                menu name
     * @return the names in document order, or in the order of the file names
     */
    [[nodiscard]] QStringList getMenuNames(const QString& prefix) const;

    /** Whether none of the wrapper's sections has this menu name. */
    [[nodiscard]] bool isUnique(const QString& menuName) const;

    /**
     * The first of the wrapper's sections with this menu name. Letter case counts, unless the
     * section names serve as menu names.
     *
     * @return the section, borrowed; null when there is none
     */
    [[nodiscard]] CPLSection* getSectionByMenuName(const QString& menuName) const;

    /**
     * The file that belongs to a menu name.
     *
     * In file mode it is the stored file name of the first of the wrapper's sections that has the
     * menu name and a file name. In folder mode it is the first ".txt" file whose name contains
     * the prefix and whose menu name (here what follows the first '-' of its name) is the one
     * given, with the last component of the folder path in front: "Presets/Preset-Dark.txt".
     *
     * @return an empty string when there is none
     */
    [[nodiscard]] QString getFileNameForMenuName(const QString& menuName, QString prefix) const;

    /**
     * Changes the file name of every one of the wrapper's sections with this menu name; never adds
     * the key. Works in every mode.
     *
     * @return eSTATUS_EMPTY_SECTION_KEY when the wrapper has no sections, eSTATUS_KEY_NOT_FOUND
     *         when none has the menu name or the last one that has it lacks a file name
     */
    tag_estatus setFileNameForMenuName(const QString& menuName, const QString& fileName);
    ///@}

    /** @name New settings */
    ///@{

    /** The next free section key of the section-name tag. */
    [[nodiscard]] QString getNextAvailableSectionName() const;

    /**
     * The next free section key: prefix, blank and the first number from 1 that is missing among
     * the numbers of the wrapper's sections. A number below 1 or one that occurs twice ends the
     * search, so that the key may be taken.
     *
     * @param prefix  start of the key, which the counted sections contain
     */
    [[nodiscard]] QString getNextAvailableSectionName(const QString& prefix) const;

    /** The next automatic menu name among all of the wrapper's sections. */
    [[nodiscard]] QString getNextAutoMenuName() const;

    /**
     * The next automatic menu name: the auto-menu-name tag, directly followed by the first number
     * from 1 that is missing among the menu names of the wrapper's sections. A number that occurs
     * twice right before a gap hides the gap; once 1 is taken, a gap among numbers below 1 counts.
     *
     * @param prefix  text that the keys of the counted sections contain as well
     */
    [[nodiscard]] QString getNextAutoMenuName(const QString& prefix) const;

    /**
     * Adds a setting under the next available section key of the prefix. The form with a file name
     * always stores the menu name as a value.
     *
     * @return eSTATUS_OUT_OF_MEMORY, otherwise the status of addSection(); eSTATUS_SUCCESS also
     *         when the key is taken and nothing was added
     */
    tag_estatus addSection(const QString& prefix, const QString& menuName);

    /** @overload */
    tag_estatus addSection(const QString& prefix, const QString& menuName, const QString& fileName);

    /**
     * The same under the next available key of the section-name tag; stores the name as a value.
     */
    tag_estatus addSection(const QString& menuName);

    /** Not supported; changes nothing. Always eSTATUS_FAILED. */
    tag_estatus deleteSection(const QString& menuName);
    tag_estatus deleteSection(int index); ///< @overload

    /**
     * Adds a copy of every section of a list; one whose key is held already is passed over. The
     * sections of the list stay the caller's.
     *
     * @return the first failing status, eSTATUS_NULL_ARGUMENT for a null section included; the
     *         copies added before the failure stay
     */
    tag_estatus initFromSections(const QList<CPLSection*>& list);

    /** The same with the sections whose key contains "ROI File" in any letter case. */
    tag_estatus initFromROISections(const QList<CPLSection*>& list);
    ///@}

    /** @name Tags and mode */
    ///@{

    /** Text that marks the wrapper's sections by their keys; empty takes every section. */
    void setSectionNameTag(const QString& tag);

    /** Key of the value that holds the menu name, "MenuName" at first. An empty tag is ignored. */
    void setMenuNameTag(const QString& tag);

    /** Key of the value that holds the file name, "FileName" at first. An empty tag is ignored. */
    void setFileNameTag(const QString& tag);

    /** Stem of the automatic menu names. An empty tag is ignored. */
    void setAutoMenuNameTag(const QString& tag);

    /** The settings file that load() and save() use. An empty path is ignored. */
    void setSettingsFileName(const QString& path);

    /** Key of the value that holds the menu name. */
    [[nodiscard]] const QString& getMenuNameTag() const;

    /** Key of the value that holds the file name. */
    [[nodiscard]] const QString& getFileNameTag() const;

    /** Stem of the automatic menu names. */
    [[nodiscard]] const QString& getAutoMenuNameTag() const;

    /** The settings file that load() and save() use. */
    [[nodiscard]] const QString& getSettingsFileName() const;

    /** The folder of folder mode; folders are separated by '/'. */
    void setFolderPath(const QString& path);

    /** The folder of folder mode. */
    [[nodiscard]] QString getFolderPath() const;

    /** Whether settings are sections of a file or files of a folder. */
    void setLoadMode(LOAD_MODE mode);

    /** Whether settings are sections or files. */
    [[nodiscard]] LOAD_MODE getLoadMode() const;

    /** Whether the section names serve as menu names. */
    void setUseSectionNameForMenuName(bool use);

    /** Whether the section names serve as menu names. */
    [[nodiscard]] bool isUsingSectionNameForMenuName() const;
    ///@}

protected:
    /** The wrapper's sections in document order, borrowed. */
    [[nodiscard]] QList<CPLSection*> getSections() const;

    /** Those of the wrapper's sections whose key contains the prefix. */
    [[nodiscard]] QList<CPLSection*> getSections(QString prefix) const;

private:
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT QList<CPLSection*>
    settingsWith(const QString& prefix) const;
    PARSERLIBRARY_NO_EXPORT tag_estatus checkFolder() const;
    PARSERLIBRARY_NO_EXPORT tag_estatus readMenuName(const CPLSection& section,
                                                     QString* name) const;
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT QStringList
    menuNamesOf(const QList<CPLSection*>& settings) const;
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT QList<CPLSection*>
    withMenuName(const QString& menuName, Qt::CaseSensitivity letterCase) const;
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT QString getNextAvailableSectionName_core(
        const QList<CPLSection*>& settings, const QString& prefix) const;
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT QString
    getNextAutoMenuName_core(const QList<CPLSection*>& settings) const;

    QString sectionNameTag;
    QString settingsFileName;
    QString menuNameTag;
    QString fileNameTag;
    QString autoMenuNameTag;
    LOAD_MODE loadMode = eLOAD_FILE;
    QString folderPath;
    bool useSectionNameForMenuName = false;
};

#endif
