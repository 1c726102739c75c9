// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * One interface to every contender for texts; each does what its users would do.
 *
 *     path(input)              the input in the contender's form
 *     load(path)               reads a file
 *     value(section, key)      the value in the contender's own type
 *     toString(value)          that value as a QString
 *     set(section, key, value)
 *     save(path)
 *     readAll()                reads every pair: the number of characters of all values
 */
#ifndef OVPARSER_BENCHMARKS_DOCUMENTS_H
#define OVPARSER_BENCHMARKS_DOCUMENTS_H

#include "Inputs.h"
#include "ParserLibrary.h"

#include <INIReader.h>
#include <KConfigCore/KConfig>
#include <KConfigCore/KConfigGroup>
#include <QtCore/QSettings>
#include <glib.h>
#include <ini.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

class InfoDocument
{
public:
    static constexpr bool keepsComments = true;

    static const Text& path(const TextInput& input) { return input.infoPath; }

    bool load(const Text& path)
    {
        return document.loadClickInfo(path.string, false) == eSTATUS_SUCCESS;
    }

    QString value(const Text& section, const Text& key) const
    {
        QString value;
        document.getValue(section.string, key.string, &value);
        return value;
    }

    static QString toString(const QString& value) { return value; }

    bool set(const Text& section, const Text& key, const Text& value)
    {
        return document.setValue(section.string, key.string, value.string) == eSTATUS_SUCCESS;
    }

    bool save(const Text& path) const
    {
        return document.saveClickInfo(path.string) == eSTATUS_SUCCESS;
    }

    qint64 readAll() const
    {
        qint64 characters = 0;
        int sections = 0;
        document.getSectionCount(&sections);
        for (int i = 0; i < sections; ++i) {
            const CPLSection* const section = document[i];
            QString name;
            QStringList keys;
            QStringList values;
            section->getSectionName(&name, false);
            section->getKeyList(&keys);
            section->getValueList(&values);
            characters += name.size();
            for (const QString& value : values)
                characters += value.size();
        }
        return characters;
    }

private:
    CPLClickInfo document;
};

class GlibDocument
{
public:
    static constexpr bool keepsComments = true;

    using String = std::unique_ptr<char, decltype(&g_free)>;

    static const Text& path(const TextInput& input) { return input.iniPath; }

    bool load(const Text& path)
    {
        return g_key_file_load_from_file(file.get(), path.utf8, G_KEY_FILE_KEEP_COMMENTS, nullptr);
    }

    String value(const Text& section, const Text& key) const
    {
        return {g_key_file_get_string(file.get(), section.utf8, key.utf8, nullptr), &g_free};
    }

    static QString toString(const String& value) { return QString::fromUtf8(value.get()); }

    bool set(const Text& section, const Text& key, const Text& value)
    {
        g_key_file_set_string(file.get(), section.utf8, key.utf8, value.utf8);
        return true;
    }

    /** Writes in place, as a program that is not careful does. */
    bool save(const Text& path) const
    {
        gsize length = 0;
        const String text(g_key_file_to_data(file.get(), &length, nullptr), &g_free);
        std::FILE* const out = std::fopen(path.utf8, "wb");
        const bool written = std::fwrite(text.get(), 1, length, out) == length;
        return std::fclose(out) == 0 && written;
    }

    qint64 readAll() const
    {
        qint64 characters = 0;
        const Strings groups(g_key_file_get_groups(file.get(), nullptr), &g_strfreev);
        for (char** group = groups.get(); *group != nullptr; ++group) {
            const Strings keys(g_key_file_get_keys(file.get(), *group, nullptr, nullptr),
                               &g_strfreev);
            for (char** key = keys.get(); *key != nullptr; ++key) {
                const String value(g_key_file_get_string(file.get(), *group, *key, nullptr),
                                   &g_free);
                characters += qint64(std::strlen(value.get()));
            }
        }
        return characters;
    }

protected:
    std::unique_ptr<GKeyFile, decltype(&g_key_file_free)> file{g_key_file_new(), &g_key_file_free};

private:
    using Strings = std::unique_ptr<char*, decltype(&g_strfreev)>;
};

/** Saves in its own way: a second file, which is renamed. */
class GlibAtomicDocument : public GlibDocument
{
public:
    bool save(const Text& path) const
    {
        return g_key_file_save_to_file(file.get(), path.utf8, nullptr);
    }
};

/** Parses a section when it is first asked for; drops the comments. */
class SettingsDocument
{
public:
    static constexpr bool keepsComments = false;

    static const Text& path(const TextInput& input) { return input.settingsPath; }

    bool load(const Text& path)
    {
        settings = std::make_unique<QSettings>(path.string, QSettings::IniFormat);
        settings->setIniCodec("UTF-8");
        return settings->status() == QSettings::NoError;
    }

    QString value(const Text& section, const Text& key) const
    {
        return settings->value(section.string + QLatin1Char('/') + key.string).toString();
    }

    static QString toString(const QString& value) { return value; }

    bool set(const Text& section, const Text& key, const Text& value)
    {
        settings->setValue(section.string + QLatin1Char('/') + key.string, value.string);
        return true;
    }

    bool save(const Text&) const
    {
        settings->sync();
        return settings->status() == QSettings::NoError;
    }

    qint64 readAll() const
    {
        qint64 characters = 0;
        const QStringList keys = settings->allKeys();
        for (const QString& key : keys)
            characters += settings->value(key).toString().size();
        return characters;
    }

private:
    std::unique_ptr<QSettings> settings;
};

/** Drops the comments. */
class KConfigDocument
{
public:
    static constexpr bool keepsComments = false;

    static const Text& path(const TextInput& input) { return input.iniPath; }

    bool load(const Text& path)
    {
        config = std::make_unique<KConfig>(path.string, KConfig::SimpleConfig);
        return true;
    }

    QString value(const Text& section, const Text& key) const
    {
        return config->group(section.string).readEntry(key.string, QString());
    }

    static QString toString(const QString& value) { return value; }

    bool set(const Text& section, const Text& key, const Text& value)
    {
        config->group(section.string).writeEntry(key.string, value.string);
        return true;
    }

    bool save(const Text&) const { return config->sync(); }

    qint64 readAll() const
    {
        qint64 characters = 0;
        const QStringList groups = config->groupList();
        for (const QString& group : groups) {
            const QMap<QString, QString> entries = config->entryMap(group);
            for (const QString& value : entries)
                characters += value.size();
        }
        return characters;
    }

private:
    std::unique_ptr<KConfig> config;
};

/** Cannot be written; drops the comments and the order. */
class InihDocument
{
public:
    static const Text& path(const TextInput& input) { return input.iniPath; }

    bool load(const Text& path)
    {
        reader = std::make_unique<INIReader>(path.utf8.toStdString());
        return reader->ParseError() == 0;
    }

    std::string value(const Text& section, const Text& key) const
    {
        return reader->GetString(section.utf8.constData(), key.utf8.constData(), {});
    }

    static QString toString(const std::string& value) { return QString::fromStdString(value); }

private:
    std::unique_ptr<INIReader> reader;
};

#endif
