// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The forms in which acquisitions are printed.
 */
#ifndef OVINFO_STUDYWRITER_H
#define OVINFO_STUDYWRITER_H

#include "Found.h"

#include <QtCore/QJsonArray>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QTemporaryFile>

/** Takes what was found, in order, and prints it. */
class StudyWriter
{
public:
    explicit StudyWriter(Wanted wanted)
        : m_wanted(std::move(wanted))
    {}
    StudyWriter(const StudyWriter&) = delete;
    StudyWriter& operator=(const StudyWriter&) = delete;
    virtual ~StudyWriter() = default;

    /** Takes a file, readable or not, a sequence or a folder that cannot be read. */
    virtual void add(const Found& found);

    /** Takes the record of a file, or of a failure. */
    virtual void addRecord(const QJsonObject& record) = 0;

    /** Prints what is left. @return what went wrong; empty when nothing did */
    virtual QString finish() { return {}; }

protected:
    [[nodiscard]] const Wanted& wanted() const { return m_wanted; }

private:
    Wanted m_wanted;
};

/** A table per sequence, and one per folder of acquisitions without a sequence. */
class TableWriter : public StudyWriter
{
public:
    /** @param withPaths  whether each table tells its folder */
    TableWriter(Wanted wanted, bool withPaths)
        : StudyWriter(std::move(wanted))
        , m_withPaths(withPaths)
    {}

    void add(const Found& found) override;
    void addRecord(const QJsonObject& /*record*/) override {}
    QString finish() override;

private:
    void start(const QString& path, const QString& title);

    bool m_withPaths;
    bool m_first = true;
    QString m_path;
    QString m_title;
    QList<QStringList> m_rows;
    int m_unreadable = 0;
    bool m_started = false;
};

/**
 * Comma-separated values (RFC 4180): a head line, then a line per record, CR LF ends.
 *
 * The labels that a lab gave names of its own are columns too. They are known only after the last
 * record; until then the records are kept in a temporary file.
 */
class CsvWriter : public StudyWriter
{
public:
    /** @param guarded  whether a spreadsheet is to take every cell for what it is */
    CsvWriter(Wanted wanted, bool guarded)
        : StudyWriter(std::move(wanted))
        , m_guarded(guarded)
    {}

    void addRecord(const QJsonObject& record) override;
    QString finish() override;

private:
    [[nodiscard]] QStringList head() const;
    [[nodiscard]] QStringList row(const QJsonObject& record) const;
    void printLine(QStringList cells) const;

    bool m_guarded;
    QTemporaryFile m_records;
    QMap<QString, QString> m_ownLabels; ///< in lower case, and as the first record spells them
};

/** One JSON object per line and record. */
class JsonLinesWriter : public StudyWriter
{
public:
    explicit JsonLinesWriter(Wanted wanted);
    void addRecord(const QJsonObject& record) override;
};

/** One JSON object. */
class JsonWriter : public StudyWriter
{
public:
    using StudyWriter::StudyWriter;
    void add(const Found& found) override;
    void addRecord(const QJsonObject& record) override;
    QString finish() override;

private:
    QJsonArray m_sequences;
    QJsonArray m_acquisitions;
    QJsonArray m_failures;
};

#endif
