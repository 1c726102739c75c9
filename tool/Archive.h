// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Finds the files of an archive and reads them on several threads.
 */
#ifndef OVINFO_ARCHIVE_H
#define OVINFO_ARCHIVE_H

#include "Found.h"
#include "Shard.h"

#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/** Which folders are walked through, and how their paths are told. */
struct WalkOptions
{
    bool recursive = false;
    bool follow = true; ///< links to files and folders
    Shard shard;
    QString relativeTo;  ///< the folder from which paths are told; empty: as they are given
    bool others = false; ///< whether files that tell of no acquisition are told of
};

/**
 * Walks through folders in the order of their names. A folder that is reached again, by a link or
 * by being named twice, is passed over.
 *
 * A sequence comes before its acquisitions, these in its own order, each with the analysed click
 * info and the DICOM files of its folder; then what lies below the sequence's folder.
 */
class ArchiveWalk
{
public:
    /** @param found  takes what is found, in order; false ends the walk */
    ArchiveWalk(WalkOptions options, std::function<bool(Found)> found)
        : m_options(std::move(options))
        , m_found(std::move(found))
    {}

    /** Walks through folders; all below them when the walk is recursive, in the order of names. */
    void walk(QStringList folders);

private:
    /** A folder in a folder. */
    struct Child
    {
        QString name;
        bool isLink = false;
        bool isSpelled = true; ///< false: its name is none in this locale, and Qt cannot open it
    };

    /** What a folder holds, read once. */
    struct Listing
    {
        bool isReadable = false;
        QStringList names;
        QStringList images; ///< the DICOM files, in the order of their names
        std::vector<Child> folders;

        /** False when there is no file of the name; some systems find it in any letter case. */
        [[nodiscard]] bool mayHold(const QString& name) const;
    };

    /** A folder, and which part of the progress it is. */
    struct Place
    {
        QString folder;
        QString canonical;   ///< the same without links; empty when that is not known
        bool listed = false; ///< whether a sequence has told of the folder's own files already
        double start = 0;
        double span = 0;
    };

    bool walkInto(const Place& place);
    bool visit(Place place);
    [[nodiscard]] Listing listingOf(const QString& folder) const;
    bool tellOwn(const Place& place, const Listing& listing, QSet<QString>* listed);
    bool tellOthers(const Place& place, const Listing& listing);
    bool visitChildren(const Place& place, const Listing& listing, const QSet<QString>& listed);
    bool readSequence(const Place& place, const QString& file, QSet<QString>* listed);
    bool tellListed(const Place& place, const QString& clickNumber, const QString& file,
                    const Found& sequence);
    bool tellFiles(const Place& place, const QString& folder, const Listing& listing, Found found);
    bool tell(const Place& place, Found found);
    bool fail(const Place& place, Found::Kind kind, const QString& path, const QString& problem);
    [[nodiscard]] QString told(const QString& path) const;
    [[nodiscard]] bool isFollowed(const QString& path) const;

    WalkOptions m_options;
    std::function<bool(Found)> m_found;
    QString m_top; ///< the folder that is walked through
    QSet<QString> m_visited;
    QHash<QString, Listing> m_listings; ///< of acquisitions that are still to be visited
};

/** Reads files on several threads and hands them on in the order in which they came. */
class ArchiveReader
{
public:
    /** @param done  takes each result, on the thread that calls add() and finish() */
    ArchiveReader(int jobs, Wanted wanted, std::function<void(const Found&)> done);
    ArchiveReader(const ArchiveReader&) = delete;
    ArchiveReader& operator=(const ArchiveReader&) = delete;
    ~ArchiveReader();

    /** Waits while too many files are on their way. */
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

    Wanted m_wanted;
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
