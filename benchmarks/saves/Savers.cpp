// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Savers.h"

#include "ParserLibrary.h"

#include <unistd.h>

namespace {

const QString firstSection = QStringLiteral("Section1");

QByteArray infoText(int sections)
{
    return sectionsText(sections, "*** %1:\t", "%1:\t%2", "\r\n");
}

class AcquisitionSaver : public Saver
{
public:
    QByteArray text(int sections) const override { return infoText(sections) + "\r\n\r\n"; }

    bool load(const QString& path) override
    {
        return m_document.loadClickInfo(path, false) == eSTATUS_SUCCESS;
    }

    void set(const QString& key, const QString& value) override
    {
        m_document.setValue(firstSection, key, value);
    }

    bool save(const QString& path) override
    {
        return m_document.saveClickInfo(path) == eSTATUS_SUCCESS;
    }

private:
    CPLClickInfo m_document;
};

class SequenceSaver : public Saver
{
public:
    QByteArray text(int sections) const override
    {
        return infoText(sections) + "*** ClickNumbers:\t\r\n1:\tA1\r\n\r\n\r\n\r\n";
    }

    bool load(const QString& path) override { return m_document.loadFile(path) == eSTATUS_SUCCESS; }

    void set(const QString& key, const QString& value) override
    {
        m_document[firstSection]->addKeyValue(key, value);
    }

    bool save(const QString& path) override { return m_document.saveFile(path) == eSTATUS_SUCCESS; }

private:
    CPLSequenceInfo m_document;
};

class ToolSaver : public AcquisitionSaver
{
public:
    explicit ToolSaver(QByteArray program)
        : m_program(std::move(program))
    {}

    bool load(const QString&) override { return ::access(m_program.constData(), X_OK) == 0; }

    void set(const QString& key, const QString& value) override
    {
        m_key = key.toLatin1();
        m_value = value.toLatin1();
    }

    bool save(const QString& path) override
    {
        ::execl(m_program.constData(), "ovinfo", "set", path.toLocal8Bit().constData(), "Section1",
                m_key.constData(), m_value.constData(), nullptr);
        return false;
    }

private:
    QByteArray m_program;
    QByteArray m_key;
    QByteArray m_value;
};

} // namespace

QByteArray sectionsText(int count, const char* header, const char* pair, const char* lineEnd)
{
    const QString end = QLatin1String(lineEnd);
    QString pairs;
    for (int key = 1; key <= 10; ++key) {
        const QString value = QStringLiteral("the value of key %1, measured in counts").arg(key);
        pairs += QString(QLatin1String(pair)).arg(QStringLiteral("Key%1").arg(key), value) + end;
    }
    QString text;
    for (int section = 1; section <= count; ++section)
        text += QString(QLatin1String(header)).arg(QStringLiteral("Section%1").arg(section)) + end +
                pairs + end;
    return text.toLatin1();
}

std::vector<Contender> ownContenders(const QByteArray& tool)
{
    std::vector<Contender> contenders;
    contenders.push_back(
        {"`saveClickInfo`", Promise::Always, false, std::make_unique<AcquisitionSaver>()});
    contenders.push_back(
        {"`CPLSequenceInfo::saveFile`", Promise::Always, false, std::make_unique<SequenceSaver>()});
    contenders.push_back(
        {"`ovinfo set`", Promise::AllChanges, false, std::make_unique<ToolSaver>(tool)});
    contenders.push_back({"`saveClickInfo`, a file with two hard links", Promise::FullDisk, true,
                          std::make_unique<AcquisitionSaver>()});
    return contenders;
}
