/**
 * @file
 * The forms in which acquisitions are printed.
 */
#ifndef OVINFO_STUDYWRITER_H
#define OVINFO_STUDYWRITER_H

#include "Archive.h"

#include <QtCore/QJsonArray>
#include <QtCore/QList>

/** Takes what was found, in order, and prints it. */
class StudyWriter
{
public:
    StudyWriter() = default;
    StudyWriter(const StudyWriter&) = delete;
    StudyWriter& operator=(const StudyWriter&) = delete;
    virtual ~StudyWriter() = default;

    /** Takes an acquisition, readable or not, a sequence or a failure. */
    virtual void add(const Found& found) = 0;

    /** Prints what is left. */
    virtual void finish() {}
};

/** A table per sequence, and one per folder of acquisitions without a sequence. */
class TableWriter : public StudyWriter
{
public:
    /** @param withPaths  whether each table tells its folder */
    explicit TableWriter(bool withPaths)
        : m_withPaths(withPaths)
    {}

    void add(const Found& found) override;
    void finish() override;

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

/** Comma-separated values (RFC 4180): a head line, then a line per acquisition, CR LF ends. */
class CsvWriter : public StudyWriter
{
public:
    CsvWriter();
    void add(const Found& found) override;
};

/** One JSON object per line and acquisition. */
class JsonLinesWriter : public StudyWriter
{
public:
    void add(const Found& found) override;
};

/** One JSON object. */
class JsonWriter : public StudyWriter
{
public:
    void add(const Found& found) override;
    void finish() override;

private:
    QJsonArray m_sequences;
    QJsonArray m_acquisitions;
    QJsonArray m_failures;
};

#endif
