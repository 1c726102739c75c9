// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Kills savers, fills the disk under them, reads while they save, and looks at what became of the
 * file: ovparser_check_saves --short|--full OVINFO FOLDER. Every save runs in a process of its own.
 */
#include "Savers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <functional>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/** How often each case is tried, and with how large a file. */
struct Effort
{
    int sections = 0;
    int kills = 0;
    int limits = 0;
    int fullDisks = 0;
    int readSaves = 0;
    int pairs = 0;
};

constexpr Effort shortEffort = {400, 40, 20, 20, 10, 20};
constexpr Effort fullEffort = {10000, 200, 50, 50, 20, 30};

/** What became of the file in the runs of a case. */
struct Count
{
    int runs = 0; ///< or reads
    int lost = 0; ///< neither the old file nor the new one
    int left = 0; ///< other files that stayed in the folder
};

double random(double end)
{
    static std::mt19937 numbers(1);
    return std::uniform_real_distribution<>(0, end)(numbers);
}

void sleepFor(double seconds)
{
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

/** Ends a process that only saves, without any of the parent's clean-up. */
[[noreturn]] void leave(bool succeeded)
{
    ::_exit(succeeded ? 0 : 1);
}

/** Whether a process ended by itself and claims success. */
bool succeeded(pid_t process)
{
    int state = 0;
    ::waitpid(process, &state, 0);
    return WIFEXITED(state) && WEXITSTATUS(state) == 0;
}

void kill(pid_t process)
{
    ::kill(process, SIGKILL);
    static_cast<void>(succeeded(process));
}

const QString firstKey = QStringLiteral("Key1");
const QString secondKey = QStringLiteral("Key2");
const QString shortValue = QStringLiteral("short");
const QString longValue = QString(20000, QLatin1Char('l'));

/** A contender's file in a folder of its own, and what it may hold. */
class Scene
{
public:
    using Before = std::function<void()>;

    Scene(const Contender& contender, const QString& folder, int sections)
        : m_contender(contender)
        , m_folder(folder)
        , m_start(contender.saver->text(sections))
    {}

    /** Writes the first file and finds out what whole ones look like; false if that fails. */
    bool prepare()
    {
        reset();
        const QByteArray path = QFile::encodeName(file());
        if (m_contender.twoNames && ::link(path.constData(), (path + '2').constData()) != 0)
            return false;
        if (!m_contender.saver->load(file()))
            return false;
        const auto saved = [this](const QString& key, const QString& value) {
            return succeeded(begin(key, value)) ? content() : QByteArray();
        };
        m_changed[0] = saved(firstKey, shortValue);
        reset();
        m_changed[1] = saved(firstKey, longValue);
        m_both = saved(secondKey, shortValue);
        reset();
        m_second = saved(secondKey, shortValue);
        leftovers();
        return !m_changed[0].isEmpty() && !m_changed[1].isEmpty() && !m_both.isEmpty();
    }

    /** Puts the first file back. */
    void reset()
    {
        if (content() == m_start)
            return;
        QFile old(file());
        old.open(QIODevice::WriteOnly);
        old.write(m_start);
    }

    /** Starts a save, after something else in the same process. */
    pid_t begin(
        const QString& key, const QString& value, const Before& before = [] {}) const
    {
        const pid_t process = ::fork();
        if (process != 0)
            return process;
        ::dup2(::open("/dev/null", O_WRONLY), 2);
        before();
        m_contender.saver->set(key, value);
        leave(m_contender.saver->save(file()));
    }

    /** Looks at what became of the file. */
    void look(const QList<QByteArray>& allowed, Count* count)
    {
        ++count->runs;
        count->lost += allowed.contains(content()) ? 0 : 1;
        count->left += leftovers();
    }

    /** What the file may be after a save of the long value that claimed success, or did not. */
    [[nodiscard]] QByteArray expected(bool success) const
    {
        return success ? m_changed[1] : m_start;
    }

    /** What the file may be after two saves at a time. */
    [[nodiscard]] QList<QByteArray> expected(bool first, bool second) const
    {
        if (m_contender.promise != Promise::AllChanges && (first || second))
            return {m_changed[1], m_second, m_both};
        if (first)
            return {second ? m_both : m_changed[1]};
        return {second ? m_second : m_start};
    }

    [[nodiscard]] QList<QByteArray> wholeFiles() const
    {
        return {m_start, m_changed[0], m_changed[1]};
    }

    [[nodiscard]] QByteArray content() const
    {
        QFile held(file());
        return held.open(QIODevice::ReadOnly) ? held.readAll() : QByteArray();
    }

    [[nodiscard]] QString folder() const { return m_folder; }

    [[nodiscard]] QString file() const { return m_folder + QStringLiteral("/file.txt"); }

    [[nodiscard]] int size() const { return int(m_changed[1].size()); }

private:
    int leftovers() const
    {
        int count = 0;
        const QDir folder(m_folder);
        const QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
        for (const QString& name : names) {
            if (name != QLatin1String("file.txt") && name != QLatin1String("file.txt2") &&
                name != QLatin1String("filler"))
                count += QFile::remove(folder.filePath(name)) ? 1 : 0;
        }
        return count;
    }

    const Contender& m_contender;
    QString m_folder;
    QByteArray m_start;
    QByteArray m_changed[2];
    QByteArray m_second;
    QByteArray m_both;
};

Count killedAtAnyMoment(Scene& scene, int runs)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 3; ++i)
        static_cast<void>(succeeded(scene.begin(firstKey, longValue)));
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    Count count;
    while (count.runs < runs) {
        scene.reset();
        const pid_t process = scene.begin(firstKey, longValue);
        sleepFor(random(taken.count() / 3));
        kill(process);
        scene.look({scene.expected(false), scene.expected(true)}, &count);
    }
    return count;
}

/** Whether a traced process stands before a write to a file of the folder, but for locks. */
bool isAboutToWrite(pid_t process, const QByteArray& folder)
{
    __ptrace_syscall_info info = {};
    ::ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof info, &info);
    const auto number = info.entry.nr;
    if (info.op != PTRACE_SYSCALL_INFO_ENTRY ||
        (number != SYS_write && number != SYS_pwrite64 && number != SYS_writev))
        return false;
    const QString link = QStringLiteral("/proc/%1/fd/%2").arg(process).arg(info.entry.args[0]);
    const QByteArray target = QFile::encodeName(QFile::symLinkTarget(link));
    return target.startsWith(folder) && !target.contains(".lock");
}

/** Lets a traced process run up to its first write; false when it ends before. */
bool runToWrite(pid_t process, const QByteArray& folder)
{
    int state = 0;
    ::waitpid(process, &state, 0);
    ::ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    while (WIFSTOPPED(state)) {
        if (WSTOPSIG(state) == (SIGTRAP | 0x80) && isAboutToWrite(process, folder))
            return true;
        ::ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
        ::waitpid(process, &state, 0);
    }
    return false;
}

Count killedAfterTheFirstWrite(Scene& scene, int runs)
{
    const auto traced = [] {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            leave(false);
        ::raise(SIGSTOP);
    };
    Count count;
    while (count.runs < runs) {
        scene.reset();
        const pid_t process = scene.begin(firstKey, longValue, traced);
        if (!runToWrite(process, QFile::encodeName(scene.folder())))
            return {};
        ::ptrace(PTRACE_DETACH, process, nullptr, nullptr);
        sleepFor(random(0.004));
        kill(process);
        scene.look({scene.expected(false), scene.expected(true)}, &count);
    }
    return count;
}

Count limited(Scene& scene, int runs)
{
    Count count;
    while (count.runs < runs) {
        scene.reset();
        const auto limit = rlim_t(random(scene.size() - 1));
        const bool success = succeeded(scene.begin(firstKey, longValue, [limit] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit narrow = {limit, limit};
            ::setrlimit(RLIMIT_FSIZE, &narrow);
        }));
        scene.look({scene.expected(success)}, &count);
    }
    return count;
}

/** Fills a disk but for some bytes. */
bool fill(const QString& path, qint64 room)
{
    QFile filler(path);
    struct statvfs disk = {};
    if (!filler.open(QIODevice::WriteOnly) ||
        ::statvfs(QFile::encodeName(path).constData(), &disk) != 0)
        return false;
    const QByteArray bytes(int(qint64(disk.f_bavail * disk.f_bsize) - room), 'f');
    return filler.write(bytes) == bytes.size();
}

Count onFullDisk(Scene& scene, int runs)
{
    const QString filler = scene.folder() + QStringLiteral("/filler");
    Count count;
    while (count.runs < runs) {
        scene.reset();
        // What is written over the old bytes needs few new ones.
        const double room = random(count.runs % 2 == 0 ? scene.size() : longValue.size());
        if (!fill(filler, qint64(room)))
            return {};
        const bool success = succeeded(scene.begin(firstKey, longValue));
        scene.look({scene.expected(success)}, &count);
        QFile::remove(filler);
    }
    return count;
}

Count read(Scene& scene, int saves)
{
    const pid_t saver = ::fork();
    if (saver == 0) {
        for (int i = 0; i < saves; ++i)
            static_cast<void>(succeeded(scene.begin(firstKey, i % 2 ? longValue : shortValue)));
        leave(true);
    }
    Count count;
    const QList<QByteArray> whole = scene.wholeFiles();
    while (::waitpid(saver, nullptr, WNOHANG) == 0) {
        ++count.runs;
        count.lost += whole.contains(scene.content()) ? 0 : 1;
    }
    scene.look(whole, &count);
    return count;
}

Count twoAtOnce(Scene& scene, int runs)
{
    Count count;
    while (count.runs < runs) {
        scene.reset();
        const pid_t first = scene.begin(firstKey, longValue);
        const pid_t second = scene.begin(secondKey, shortValue);
        const bool firstSucceeded = succeeded(first);
        const bool secondSucceeded = succeeded(second);
        scene.look(scene.expected(firstSucceeded, secondSucceeded), &count);
    }
    return count;
}

/** A small file system in memory that only this program and its children see. */
bool mountSmallDisk(const QString& folder, int bytes)
{
    const QByteArray size = "size=" + QByteArray::number(bytes);
    return QDir().mkpath(folder) && ::unshare(CLONE_NEWNS) == 0 &&
           ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", QFile::encodeName(folder).constData(), "tmpfs", 0, size.constData()) ==
               0;
}

void print(const Count& count)
{
    if (count.runs == 0)
        std::printf(" not measured |");
    else if (count.left == 0)
        std::printf(" %d of %d |", count.lost, count.runs);
    else
        std::printf(" %d of %d, %d left |", count.lost, count.runs, count.left);
}

/** Measures a contender; whether it keeps what it promises. */
bool measure(const Contender& contender, const QString& folder, const QString& smallDisk,
             const Effort& effort)
{
    QDir().mkpath(folder);
    Scene scene(contender, folder, effort.sections);
    if (!scene.prepare()) {
        std::fprintf(stderr, "%s: cannot be measured\n", contender.name);
        return false;
    }
    const Count anyMoment = killedAtAnyMoment(scene, effort.kills);
    const Count firstWrite = killedAfterTheFirstWrite(scene, effort.kills);
    const Count limit = limited(scene, effort.limits);
    const Count reads = read(scene, effort.readSaves);
    const Count pairs = twoAtOnce(scene, effort.pairs);
    Count full;
    Scene small(contender, smallDisk, effort.sections); // last, for the saver goes there
    if (!smallDisk.isEmpty() && small.prepare())
        full = onFullDisk(small, effort.fullDisks);
    std::printf("| %s |", contender.name);
    for (const Count& count : {anyMoment, firstWrite, limit, full, reads, pairs})
        print(count);
    std::printf("\n");
    const bool disk = limit.lost + limit.left + full.lost + full.left == 0;
    const bool all = disk && anyMoment.lost + firstWrite.lost + reads.lost + reads.left == 0 &&
                     pairs.lost + pairs.left == 0;
    std::fflush(stdout);
    return contender.promise == Promise::None ||
           (contender.promise == Promise::FullDisk ? disk : all);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s --short|--full OVINFO FOLDER\n", argv[0]);
        return 2;
    }
    const Effort& effort = qstrcmp(argv[1], "--full") == 0 ? fullEffort : shortEffort;
    const QTemporaryDir folder(QFile::decodeName(argv[3]) + QStringLiteral("/saves"));
    QString smallDisk = QDir(folder.path()).absoluteFilePath(QStringLiteral("small"));
    std::vector<Contender> contenders = ownContenders(argv[2]);
#ifdef OVPARSER_WITH_PEERS
    for (Contender& contender : otherContenders())
        contenders.push_back(std::move(contender));
#endif
    std::printf("| Saver | Killed at any moment | Killed within 4 ms of the first write | Limit on "
                "the size | Full disk | Reads in between | Two at once |\n"
                "| --- | --- | --- | --- | --- | --- | --- |\n");
    int broken = 0;
    for (const Contender& contender : contenders) {
        const QString own = folder.filePath(QString::number(&contender - contenders.data()));
        const bool mounted = mountSmallDisk(smallDisk, effort.sections * 2500);
        broken +=
            measure(contender, QDir(own).absolutePath(), mounted ? smallDisk : QString(), effort)
                ? 0
                : 1;
        ::umount(QFile::encodeName(smallDisk).constData());
    }
    if (broken > 0)
        std::fprintf(stderr, "%d of them did not keep what is promised\n", broken);
    return broken > 0 ? 1 : 0;
}
