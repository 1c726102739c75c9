#include "Archive.h"

#include "Files.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <filesystem>
#include <system_error>

namespace {

/** So many acquisitions per thread may be on their way; it bounds the memory. */
constexpr int windowPerThread = 64;

QString inFolder(const QString& folder, const QString& name)
{
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

/** The folders in a folder that Qt passes over, since their names are none in this locale. */
QStringList unspelledFolders(const QString& folder)
{
    using Entries = std::filesystem::directory_iterator;
    QStringList names;
    std::error_code error;
    Entries entry(QFile::encodeName(folder).toStdString(), error);
    for (; !error && entry != Entries(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const QString spelled = QFile::decodeName(name.c_str());
        std::error_code unknown;
        if (QFile::encodeName(spelled) != name.c_str() && entry->is_directory(unknown))
            names.append(spelled);
    }
    return names;
}

/** Reads an acquisition. Each has a document of its own, so that threads share none. */
void read(Found* found)
{
    const QString path = found->acquisition.path;
    found->problem = otherThanFile(path);
    if (!found->problem.isEmpty())
        return;
    CPLClickInfo info;
    const tag_estatus status = info.loadClickInfo(path, false);
    if (status != eSTATUS_SUCCESS)
        found->problem = explained(status, path);
    else if (!info[0])
        found->problem = QStringLiteral("no section; not a file that the library knows");
    else
        readAcquisition(info, &found->acquisition);
}

} // namespace

bool ArchiveWalk::walk(const QString& folder, double start, double span)
{
    const QFileInfo info(folder);
    const QString path = QDir::cleanPath(folder);
    if (m_recursive && !info.isDir())
        return report(path, QStringLiteral("no such folder"), start);
    return visit(path, false, start, span);
}

bool ArchiveWalk::report(const QString& path, const QString& problem, double progress)
{
    Found found;
    found.kind = Found::Failure;
    found.acquisition.path = path;
    found.problem = problem;
    found.progress = progress;
    return m_found(found);
}

/** @param listed  whether a sequence has told of the folder's own acquisition already */
bool ArchiveWalk::visit(const QString& folder, bool listed, double start, double span)
{
    const QFileInfo info(folder);
    const QString canonical = info.canonicalFilePath();
    if (m_visited.contains(canonical))
        return true;
    if (info.isDir())
        m_visited.insert(canonical);
    if (info.isDir() && !info.isReadable())
        return report(folder, QStringLiteral("the folder cannot be read"), start);
    const QString sequence = inFolder(folder, PLKeyword::File::SequenceInfo);
    const QString acquisition = inFolder(folder, PLKeyword::File::ClickInfo);
    QSet<QString> inSequence;
    if (QFileInfo::exists(sequence)) {
        if (!readSequence(sequence, &inSequence, start, m_recursive ? 0 : span))
            return false;
    } else if (!listed && QFileInfo::exists(acquisition)) {
        Found found;
        found.acquisition.path = acquisition;
        found.name = info.fileName();
        found.progress = start;
        if (!m_found(found))
            return false;
    } else if (!m_recursive) {
        return report(sequence, explained(eSTATUS_FILE_NOT_FOUND, sequence), start);
    }
    return !m_recursive || visitChildren(folder, inSequence, start, span);
}

bool ArchiveWalk::visitChildren(const QString& folder, const QSet<QString>& listed, double start,
                                double span)
{
    const QStringList children =
        QDir(folder).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    const double step = children.isEmpty() ? 0 : span / double(children.size());
    const QStringList passedOver = unspelledFolders(folder);
    for (const QString& child : passedOver) {
        if (!report(inFolder(folder, child), QStringLiteral("this locale cannot spell the name"),
                    start))
            return false;
    }
    double place = start;
    for (const QString& child : children) {
        if (!visit(inFolder(folder, child), listed.contains(child), place, step))
            return false;
        place += step;
    }
    return true;
}

bool ArchiveWalk::readSequence(const QString& file, QSet<QString>* listed, double start,
                               double span)
{
    const QString other = otherThanFile(file);
    if (!other.isEmpty())
        return report(file, other, start);
    CPLSequenceInfo sequence;
    const tag_estatus status = sequence.loadFile(file);
    if (status != eSTATUS_SUCCESS && status != eSTATUS_EMPTY_SEQUENCE)
        return report(file, explained(status, file), start);
    const QStringList clickNumbers = sequence.getClickNumberList();
    Found found;
    found.kind = Found::SequenceStart;
    found.progress = start;
    found.acquisition.sequence = std::make_shared<SequenceHead>(
        SequenceHead{file, sequence.getDatasetName(), int(clickNumbers.size())});
    if (!m_found(found))
        return false;
    found.kind = Found::AcquisitionFile;
    for (int i = 0; i < clickNumbers.size(); ++i) {
        listed->insert(clickNumbers.at(i));
        found.acquisition.path = sequence.getDatasetPath(i);
        found.name = clickNumbers.at(i);
        found.progress = start + span * double(i) / double(clickNumbers.size());
        if (!m_found(found))
            return false;
    }
    return true;
}

ArchiveReader::ArchiveReader(int jobs, std::function<void(const Found&)> done)
    : m_done(std::move(done))
    , m_window(std::size_t(jobs) * windowPerThread)
{
    for (int i = 0; i < jobs; ++i)
        m_threads.emplace_back([this] { work(); });
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
    const bool toRead = found.kind == Found::AcquisitionFile;
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
        read(&slot->found);
        lock.lock();
        slot->ready = true;
        m_ready.notify_one();
    }
}
