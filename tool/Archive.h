/**
 * @file
 * Finds the acquisitions of folders and reads them on several threads.
 */
#ifndef OVINFO_ARCHIVE_H
#define OVINFO_ARCHIVE_H

#include "Acquisition.h"

#include <QtCore/QSet>
#include <QtCore/QString>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/** What was found: an acquisition, a sequence ahead of its acquisitions, or what cannot be read. */
struct Found
{
    enum Kind {
        AcquisitionFile,
        SequenceStart,
        Failure,
    };

    Kind kind = AcquisitionFile;
    Acquisition acquisition; ///< of a sequence only that; of a failure the path
    QString name;            ///< of the folder: the click number of a file that gives none
    QString problem;         ///< why it cannot be read; empty when it can
    double progress = 0;     ///< how much of the folders lies behind, from 0 to 1
};

/**
 * Walks through folders in the order of their names. A folder that is reached again, by a link or
 * by being named twice, is passed over.
 */
class ArchiveWalk
{
public:
    /** @param found  takes what is found, in order; false ends the walk */
    ArchiveWalk(bool recursive, std::function<bool(Found)> found)
        : m_recursive(recursive)
        , m_found(std::move(found))
    {}

    /** @param start, span  which part of the progress the folder is */
    bool walk(const QString& folder, double start, double span);

private:
    bool visit(const QString& folder, bool listed, double start, double span);
    bool visitChildren(const QString& folder, const QSet<QString>& listed, double start,
                       double span);
    bool readSequence(const QString& file, QSet<QString>* listed, double start, double span);
    bool report(const QString& path, const QString& problem, double progress);

    bool m_recursive;
    std::function<bool(Found)> m_found;
    QSet<QString> m_visited;
};

/** Reads acquisitions on several threads and hands them on in the order in which they came. */
class ArchiveReader
{
public:
    /** @param done  takes each result, on the thread that calls add() and finish() */
    ArchiveReader(int jobs, std::function<void(const Found&)> done);
    ArchiveReader(const ArchiveReader&) = delete;
    ArchiveReader& operator=(const ArchiveReader&) = delete;
    ~ArchiveReader();

    /** Waits while too many acquisitions are on their way. */
    void add(Found found);

    /** Waits for everything that was added. */
    void finish();

private:
    struct Slot
    {
        Found found;
        bool ready = false;
    };

    void work();
    void deliverFront(std::unique_lock<std::mutex>* lock);

    std::function<void(const Found&)> m_done;
    std::size_t m_window;
    std::mutex m_mutex;
    std::condition_variable m_added;
    std::condition_variable m_ready;
    std::deque<Slot> m_slots; ///< in order; adding and removing at the ends moves none
    std::deque<Slot*> m_waiting;
    bool m_ending = false;
    std::vector<std::thread> m_threads;
};

#endif
