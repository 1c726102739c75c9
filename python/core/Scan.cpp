// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Module.h"

#include "Archive.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonObject>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

namespace ovpython {

namespace {

/** So many records wait for Python at most; it bounds the memory. */
constexpr std::size_t mostWaiting = 256;

/** How often Python is asked whether it was interrupted. */
constexpr std::chrono::milliseconds patience(100);

/** Reads an archive on threads of its own, which know nothing of Python. */
class Reading
{
public:
    Reading(const QString& folder, bool recursive, int jobs)
        : m_thread([=] { run(folder, recursive, jobs); })
    {}
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    ~Reading() { close(); }

    /** Ends the reading. */
    void close()
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_stopped = true;
            m_records.clear();
        }
        m_changed.notify_all();
        const std::lock_guard<std::mutex> lock(m_closing);
        if (m_thread.joinable())
            m_thread.join();
    }

    /** Waits for a record. @return false when there was none in time */
    bool wait(std::optional<QJsonObject>* record)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const bool ready = m_changed.wait_for(
            lock, patience, [this] { return m_ended || m_stopped || !m_records.empty(); });
        if (!ready || m_records.empty())
            return ready;
        *record = std::move(m_records.front());
        m_records.pop_front();
        m_changed.notify_all();
        return true;
    }

    /** Whether memory or threads could not be had. */
    [[nodiscard]] bool hasFailed() const { return m_failed; }

private:
    void run(const QString& folder, bool recursive, int jobs)
    {
        try {
            read(folder, recursive, jobs);
        } catch (const std::exception&) {
            m_failed = true;
        }
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ended = true;
        m_changed.notify_all();
    }

    void read(const QString& folder, bool recursive, int jobs)
    {
        ArchiveReader reader(jobs, m_wanted, [this](const Found& found) { take(found); });
        WalkOptions options;
        options.recursive = recursive;
        ArchiveWalk walk(options, [&](Found found) {
            reader.add(std::move(found));
            return !m_stopped;
        });
        walk.walk({folder});
        if (!m_stopped)
            reader.finish();
    }

    void take(const Found& found)
    {
        if (found.problem.isEmpty() && !found.isRecord())
            return;
        QJsonObject record = ::recordOf(m_wanted, found);
        if (!found.problem.isEmpty())
            record.insert(QStringLiteral("error"), found.problem);
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_stopped || m_records.size() < mostWaiting; });
        if (!m_stopped)
            m_records.push_back(std::move(record));
        m_changed.notify_all();
    }

    const Wanted m_wanted;
    std::mutex m_mutex;
    std::mutex m_closing;
    std::condition_variable m_changed;
    std::deque<QJsonObject> m_records;
    std::atomic<bool> m_stopped = false;
    std::atomic<bool> m_failed = false;
    bool m_ended = false;
    std::thread m_thread; ///< the last member: it uses the others
};

/** A reading that Python holds. In a process that was forked it has no threads, and is let alone.
 */
class Scan
{
public:
    Scan(const QString& folder, bool recursive, int jobs)
        : m_process(QCoreApplication::applicationPid())
        , m_reading(std::make_unique<Reading>(folder, recursive, jobs))
    {}
    Scan(const Scan&) = delete;
    Scan& operator=(const Scan&) = delete;

    /** Python, which destroys it, goes on while a file is still being read. */
    ~Scan()
    {
        close();
        if (!isHere())
            m_reading.release(); // NOLINT(bugprone-unused-return-value): nothing of it can be used
    }

    void close()
    {
        if (isHere())
            released([&] {
                m_reading->close();
                return true;
            });
    }

    py::object next()
    {
        if (!isHere())
            throw std::runtime_error("the scan belongs to the process that was forked");
        std::optional<QJsonObject> record;
        while (!released([&] { return m_reading->wait(&record); })) {
            if (PyErr_CheckSignals() != 0)
                throw py::error_already_set();
        }
        if (m_reading->hasFailed())
            raise({eSTATUS_OUT_OF_MEMORY, QString(), QStringLiteral("cannot read on")});
        if (!record)
            throw py::stop_iteration();
        return toPython(QJsonValue(*record));
    }

private:
    [[nodiscard]] bool isHere() const { return m_process == QCoreApplication::applicationPid(); }

    qint64 m_process;
    std::unique_ptr<Reading> m_reading;
};

std::unique_ptr<Scan> start(const QString& folder, bool recursive, std::optional<int> jobs)
{
    constexpr int mostJobs = 256;
    const int cores = std::max(1, int(std::thread::hardware_concurrency()));
    const int count = jobs.value_or(cores);
    if (count < 1 || count > mostJobs)
        raiseValueError(QStringLiteral("jobs is a number from 1 to %1").arg(mostJobs));
    return std::make_unique<Scan>(folder, recursive, count);
}

} // namespace

void defineScan(py::module_& module)
{
    py::class_<Scan>(module, "Scan", madeHereOnly(),
                     "The records of an archive, read while they are asked for.")
        .def("__iter__", [](const py::object& self) { return self; })
        .def("__next__", &Scan::next)
        .def("close", &Scan::close, "Ends the reading; what was not taken yet is lost.");
    module.def("start_scan", &start, py::arg("folder"), py::arg("recursive"), py::arg("jobs"));
}

} // namespace ovpython
