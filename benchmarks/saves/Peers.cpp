// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Savers.h"

#include <KConfigCore/KConfig>
#include <KConfigCore/KConfigGroup>
#include <QtCore/QSettings>
#include <glib.h>

namespace {

const QString firstSection = QStringLiteral("Section1");

class IniSaver : public Saver
{
public:
    QByteArray text(int sections) const override
    {
        return sectionsText(sections, "[%1]", "%1=%2", "\n");
    }
};

class KConfigSaver : public IniSaver
{
public:
    bool load(const QString& path) override
    {
        m_config = std::make_unique<KConfig>(path, KConfig::SimpleConfig);
        return m_config->hasGroup(firstSection);
    }

    void set(const QString& key, const QString& value) override
    {
        m_config->group(firstSection).writeEntry(key, value);
    }

    bool save(const QString&) override { return m_config->sync(); }

private:
    std::unique_ptr<KConfig> m_config;
};

class SettingsSaver : public IniSaver
{
public:
    bool load(const QString& path) override
    {
        m_settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
        return m_settings->contains(firstSection + QStringLiteral("/Key1"));
    }

    void set(const QString& key, const QString& value) override
    {
        m_settings->setValue(firstSection + QLatin1Char('/') + key, value);
    }

    bool save(const QString&) override
    {
        m_settings->sync();
        return m_settings->status() == QSettings::NoError;
    }

private:
    std::unique_ptr<QSettings> m_settings;
};

class KeyFileSaver : public IniSaver
{
public:
    bool load(const QString& path) override
    {
        return g_key_file_load_from_file(m_file.get(), path.toLocal8Bit().constData(),
                                         G_KEY_FILE_KEEP_COMMENTS, nullptr) != FALSE;
    }

    void set(const QString& key, const QString& value) override
    {
        g_key_file_set_string(m_file.get(), "Section1", key.toUtf8().constData(),
                              value.toUtf8().constData());
    }

    bool save(const QString& path) override
    {
        return g_key_file_save_to_file(m_file.get(), path.toLocal8Bit().constData(), nullptr) !=
               FALSE;
    }

private:
    std::unique_ptr<GKeyFile, void (*)(GKeyFile*)> m_file{g_key_file_new(), &g_key_file_unref};
};

} // namespace

std::vector<Contender> otherContenders()
{
    std::vector<Contender> contenders;
    contenders.push_back({"KConfig", Promise::None, false, std::make_unique<KConfigSaver>()});
    contenders.push_back({"QSettings", Promise::None, false, std::make_unique<SettingsSaver>()});
    contenders.push_back({"GKeyFile", Promise::None, false, std::make_unique<KeyFileSaver>()});
    return contenders;
}
