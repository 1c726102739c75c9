// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Archive.h"

#include "Files.h"
#include "WalkOrder.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <new>
#include <system_error>

namespace {

/** So many files per thread may be on their way; it bounds the memory. */
constexpr int windowPerThread = 64;

/** So many folders are kept from the look for files to that for folders, for the same reason. */
constexpr int mostListings = 1000;

QString inFolder(const QString& folder, const QString& name)
{
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

/** Whether a click number can name a folder in the one of its sequence. */
bool isPlainName(const QString& name)
{
    const auto separates = [](QChar c) {
        return c == u'/' || c == QDir::separator() || c.isNull();
    };
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") &&
           std::none_of(name.cbegin(), name.cend(), separates);
}

} // namespace

bool ArchiveWalk::Listing::mayHold(const QString& name) const
{
    return names.contains(name, Qt::CaseInsensitive);
}

ArchiveWalk::Listing ArchiveWalk::listingOf(const QString& folder) const
{
    using Entries = std::filesystem::directory_iterator;
    Listing listing;
    std::error_code error;
    Entries entry(QFile::encodeName(folder).toStdString(), error);
    listing.isReadable = !error;
    for (; !error && entry != Entries(); entry.increment(error)) {
        std::error_code unknown;
        const std::string name = entry->path().filename().string();
        const QString spelled = QFile::decodeName(name.c_str());
        const bool isLink = entry->is_symlink(unknown);
        listing.names += spelled;
        if (entry->is_directory(unknown) && (m_options.follow || !isLink))
            listing.folders.push_back(
                {spelled, isLink, QFile::encodeName(spelled) == name.c_str()});
        else if (spelled.endsWith(PLKeyword::File::DicomSuffix, Qt::CaseInsensitive) &&
                 entry->is_regular_file(unknown))
            listing.images += spelled;
    }
    std::sort(listing.folders.begin(), listing.folders.end(),
              [](const Child& a, const Child& b) { return a.name < b.name; });
    listing.images.sort();
    return listing;
}

void ArchiveWalk::walk(QStringList folders)
{
    for (QString& folder : folders)
        folder = QDir::cleanPath(folder);
    if (m_options.recursive)
        std::stable_sort(folders.begin(), folders.end(), [&](const QString& a, const QString& b) {
            const QLatin1String file("x");
            return walkKey(folderOf(told(inFolder(a, file)))) <
                   walkKey(folderOf(told(inFolder(b, file))));
        });
    const double span = 1.0 / double(qMax(1, int(folders.size())));
    for (int i = 0; i < folders.size(); ++i) {
        m_top = folders.at(i);
        if (!walkInto({m_top, QString(), false, span * i, span}))
            return;
    }
}

bool ArchiveWalk::walkInto(const Place& place)
{
    const QFileInfo info(place.folder);
    const QString missing =
        QStringLiteral("no such folder (%1)").arg(getStatusString(eSTATUS_FILE_NOT_FOUND));
    if (!info.exists())
        return fail(place, Found::Folder, place.folder, missing);
    if (!info.isDir())
        return fail(place, Found::Folder, place.folder,
                    QStringLiteral("a file; name its folder, or see 'ovinfo show'"));
    return visit(place);
}

QString ArchiveWalk::told(const QString& path) const
{
    if (m_options.relativeTo.isEmpty())
        return path;
    return QDir(m_options.relativeTo).relativeFilePath(QFileInfo(path).absoluteFilePath());
}

bool ArchiveWalk::isFollowed(const QString& path) const
{
    return m_options.follow || !QFileInfo(path).isSymLink();
}

bool ArchiveWalk::tell(const Place& place, Found found)
{
    if (!m_options.shard.holds(below(m_top, place.folder)))
        return true;
    found.acquisition.path = told(found.file);
    found.toRead = found.toRead && found.problem.isEmpty();
    found.progress = place.start;
    return m_found(std::move(found));
}

bool ArchiveWalk::fail(const Place& place, Found::Kind kind, const QString& path,
                       const QString& problem)
{
    Found found;
    found.kind = kind;
    found.file = path;
    found.problem = problem;
    return tell(place, std::move(found));
}

bool ArchiveWalk::visit(Place place)
{
    if (place.canonical.isEmpty())
        place.canonical = QFileInfo(place.folder).canonicalFilePath();
    if (m_visited.contains(place.canonical))
        return true;
    m_visited.insert(place.canonical);
    const Listing listing =
        m_listings.contains(place.folder) ? m_listings.take(place.folder) : listingOf(place.folder);
    if (!listing.isReadable) {
        const char* const obstacle = obstacleOf(place.folder, Access::Read);
        return fail(place, Found::Folder, place.folder,
                    QLatin1String(obstacle ? obstacle : "the folder cannot be read"));
    }
    QSet<QString> listed;
    return tellOwn(place, listing, &listed) && tellOthers(place, listing) &&
           (!m_options.recursive || visitChildren(place, listing, listed));
}

/** Tells of what a folder itself holds. @param listed  receives the folders of its sequence */
bool ArchiveWalk::tellOwn(const Place& place, const Listing& listing, QSet<QString>* listed)
{
    const auto holds = [&](const QString& name) {
        const QString file = inFolder(place.folder, name);
        return listing.mayHold(name) && QFileInfo::exists(file) && isFollowed(file);
    };
    const QString sequence = inFolder(place.folder, PLKeyword::File::SequenceInfo);
    Found found;
    found.name = QFileInfo(place.folder).fileName();
    found.file = inFolder(place.folder, PLKeyword::File::ClickInfo);
    if (holds(PLKeyword::File::SequenceInfo)) {
        if (!readSequence(place, sequence, listed))
            return false;
    } else if (place.listed) {
        return true;
    } else if (holds(PLKeyword::File::ClickInfo)) {
        if (!tell(place, found))
            return false;
    } else if (!m_options.recursive) {
        return fail(place, Found::Folder, place.folder,
                    QStringLiteral("holds no SequenceInfo.txt; --recursive reads what lies below"));
    }
    return place.listed || tellFiles(place, place.folder, listing, found);
}

/** Tells of files that tell of no acquisition, if they are asked for. */
bool ArchiveWalk::tellOthers(const Place& place, const Listing& listing)
{
    if (!m_options.others)
        return true;
    return std::all_of(listing.names.cbegin(), listing.names.cend(), [&](const QString& name) {
        Found found;
        found.kind = Found::OtherFile;
        found.file = inFolder(place.folder, name);
        return !isOtherFile(name) || !QFileInfo(found.file).isFile() || !isFollowed(found.file) ||
               tell(place, std::move(found));
    });
}

bool ArchiveWalk::visitChildren(const Place& place, const Listing& listing,
                                const QSet<QString>& listed)
{
    const double step = place.span / double(qMax(1, int(listing.folders.size())));
    Place inner = place;
    inner.span = step;
    for (const Child& child : listing.folders) {
        inner.folder = inFolder(place.folder, child.name);
        inner.canonical = child.isLink ? QString() : inFolder(place.canonical, child.name);
        inner.listed = listed.contains(child.name);
        const bool goOn = child.isSpelled
                              ? visit(inner)
                              : fail(inner, Found::Folder, inner.folder,
                                     QStringLiteral("this locale cannot spell the name"));
        if (!goOn)
            return false;
        inner.start += step;
    }
    if (!listed.isEmpty())
        m_listings.clear();
    return true;
}

bool ArchiveWalk::readSequence(const Place& place, const QString& file, QSet<QString>* listed)
{
    const QString other = otherThanFile(file);
    if (!other.isEmpty())
        return fail(place, Found::SequenceFile, file, other);
    CPLSequenceInfo sequence;
    const tag_estatus status = sequence.loadFile(file);
    if (status != eSTATUS_SUCCESS && status != eSTATUS_EMPTY_SEQUENCE)
        return fail(place, Found::SequenceFile, file, explained(status, file));
    const QStringList clickNumbers = sequence.getClickNumberList();
    Found found;
    found.kind = Found::SequenceFile;
    found.file = file;
    found.acquisition.sequence = std::make_shared<SequenceHead>(
        SequenceHead{told(file), sequence.getDatasetName(), int(clickNumbers.size())});
    if (!tell(place, found))
        return false;
    Place item = place;
    for (int i = 0; i < clickNumbers.size(); ++i) {
        listed->insert(clickNumbers.at(i));
        if (!m_options.recursive)
            item.start = place.start + place.span * double(i) / double(clickNumbers.size());
        if (!tellListed(item, clickNumbers.at(i), sequence.getDatasetPath(i), found))
            return false;
    }
    return true;
}

bool ArchiveWalk::tellListed(const Place& place, const QString& clickNumber, const QString& file,
                             const Found& sequence)
{
    Found found = sequence;
    found.kind = Found::AcquisitionFile;
    found.name = clickNumber;
    if (!isPlainName(clickNumber)) {
        found.problem =
            QStringLiteral("lists '%1', which names no folder here; not opened").arg(clickNumber);
        return tell(place, std::move(found));
    }
    found.file = file;
    const QString folder = folderOf(file);
    if (!isFollowed(folder) || !isFollowed(file))
        found.problem = QStringLiteral("a link; not followed");
    if (!tell(place, found))
        return false;
    if (!isFollowed(folder))
        return true;
    const Listing listing = listingOf(folder);
    if (m_options.recursive && listing.isReadable && m_listings.size() < mostListings)
        m_listings.insert(folder, listing);
    return tellFiles(place, folder, listing, found);
}

/** Tells of the other files of an acquisition's folder. */
bool ArchiveWalk::tellFiles(const Place& place, const QString& folder, const Listing& listing,
                            Found found)
{
    const auto tellOne = [&](Found::Kind kind, const QString& name) {
        found.kind = kind;
        found.file = inFolder(folder, name);
        found.problem.clear();
        return !isFollowed(found.file) || tell(place, found);
    };
    const QString analyzed = PLKeyword::File::AnalyzedClickInfo;
    if (listing.mayHold(analyzed) && QFileInfo::exists(inFolder(folder, analyzed)) &&
        !tellOne(Found::AnalyzedFile, analyzed))
        return false;
    return std::all_of(listing.images.cbegin(), listing.images.cend(),
                       [&](const QString& name) { return tellOne(Found::DicomFile, name); });
}

ArchiveReader::ArchiveReader(int jobs, Wanted wanted, std::function<void(const Found&)> done)
    : m_wanted(std::move(wanted))
    , m_done(std::move(done))
    , m_window(std::size_t(jobs) * windowPerThread)
{
    try {
        for (int i = 0; i < jobs; ++i)
            m_threads.emplace_back([this] { work(); });
    } catch (const std::exception&) {
        if (m_threads.empty())
            throw;
        // The system gives no more threads; those that there are will do.
    }
}

ArchiveReader::~ArchiveReader()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ending = true;
        m_waiting.clear();
    }
    m_added.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

void ArchiveReader::add(Found found)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_slots.empty() && (m_slots.front().ready || m_slots.size() >= m_window))
        deliverFront(&lock);
    const bool toRead = found.toRead;
    m_slots.push_back({std::move(found), !toRead});
    if (!toRead)
        return;
    m_waiting.push_back(&m_slots.back());
    m_added.notify_one();
}

void ArchiveReader::finish()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_slots.empty())
        deliverFront(&lock);
}

void ArchiveReader::deliverFront(std::unique_lock<std::mutex>* lock)
{
    m_ready.wait(*lock, [this] { return m_slots.front().ready; });
    Found found = std::move(m_slots.front().found);
    m_slots.pop_front();
    if (found.acquisition.clickNumber.isEmpty())
        found.acquisition.clickNumber = found.name;
    lock->unlock();
    m_done(found);
    lock->lock();
}

void ArchiveReader::work()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_added.wait(lock, [this] { return m_ending || !m_waiting.empty(); });
        if (m_ending)
            return;
        Slot* const slot = m_waiting.front();
        m_waiting.pop_front();
        lock.unlock();
        try {
            read(m_wanted, &slot->found);
        } catch (const std::bad_alloc&) {
            slot->found.problem = explained(eSTATUS_OUT_OF_MEMORY, slot->found.file);
        }
        lock.lock();
        slot->ready = true;
        m_ready.notify_one();
    }
}
