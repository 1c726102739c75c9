// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What everything that reads or writes makes of paths that are long or spelled unusually, and of
 * what a path may name instead of an ordinary file.
 */
#include "support/Support.h"

#include "internal/text/TextFile.h"

#include <QtCore/QBuffer>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

QString outcome(tag_estatus status)
{
    return getStatusString(status);
}

QString outcome(bool done)
{
    return done ? outcome(eSTATUS_SUCCESS) : outcome(eSTATUS_FAILED);
}

/** Something that reads or writes a file, and what it then says. */
using Operation = std::function<QString(const QString& path)>;

template <typename Document, typename Status>
Operation with(Status (Document::*operation)(QString))
{
    return [operation](const QString& path) { return outcome((Document().*operation)(path)); };
}

struct Reader
{
    const char* name;
    const char* example;
    tag_estatus notOpened;
    tag_estatus folder;
    tag_estatus tooLarge;
    Operation read;
};

struct Writer
{
    const char* name;
    tag_estatus notOpened;
    Operation write;
};

/** Ends a test's special rights, which do not mind what is read-only, while it lives. */
class OrdinaryUser
{
public:
    OrdinaryUser() { m_changed = ::geteuid() == 0 && ::seteuid(nobody) == 0; }

    ~OrdinaryUser()
    {
        if (m_changed && ::seteuid(0) != 0)
            qFatal("the rights are lost");
    }

    Q_DISABLE_COPY(OrdinaryUser)

private:
    static constexpr uid_t nobody = 65534;
    bool m_changed = false;
};

/** Lets no file grow beyond a size while it lives, as if the disk were full then. */
class FullDisk
{
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit narrow = {size, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &narrow);
    }

    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }

    Q_DISABLE_COPY(FullDisk)

    static constexpr int size = 4096;

private:
    rlimit m_before = {};
};

/** What a file is besides its bytes. */
QString natureOf(const QString& path)
{
    struct stat info = {};
    ::lstat(QFile::encodeName(path).constData(), &info);
    QStringList nature = {QString::number(info.st_mode, 8), QString::number(info.st_uid), QString::number(info.st_gid),
                          QString::number(info.st_nlink), QFile::symLinkTarget(path)};
    for (const char* const name : {"user.note", "system.posix_acl_access"}) {
        QByteArray value(100, '\0');
        const auto size = ::getxattr(QFile::encodeName(path).constData(), name, value.data(), 100);
        nature += QString::fromLatin1(value.left(int(size)).toHex());
    }
    return nature.join(u' ');
}

ino_t inodeOf(const QString& path)
{
    struct stat info = {};
    ::stat(QFile::encodeName(path).constData(), &info);
    return info.st_ino;
}

/** Makes a file something special; false where that is not possible. */
using Preparation = std::function<bool(const QByteArray& folder, const QByteArray& file)>;

/** A file that is saved, and how: by a second one that takes its place, or over the old bytes. */
struct Place
{
    const char* name;
    int size;
    bool replaced;
    Preparation prepare;
};

std::vector<Place> places()
{
    // Version 2: the owner may read and write, user 65534 and the group read.
    static const QByteArray list = QByteArray::fromHex("02000000"
                                                       "01000600ffffffff"
                                                       "02000400feff0000"
                                                       "04000400ffffffff"
                                                       "10000400ffffffff"
                                                       "20000000ffffffff");
    const auto attribute = [](const QByteArray& file, const char* name, const QByteArray& value) {
        return ::setxattr(file.constData(), name, value.constData(), std::size_t(value.size()), 0) == 0;
    };
    const auto second = [](const QByteArray&, const QByteArray& file) {
        return ::link(file.constData(), (file + '2').constData()) == 0;
    };
    return {
        {"ordinary", 6000, true,
         [](const QByteArray&, const QByteArray& file) { return ::chmod(file.constData(), 0640) == 0; }},
        {"read by nobody", 6000, true,
         [](const QByteArray&, const QByteArray& file) { return ::chmod(file.constData(), 0200) == 0; }},
        {"behind links", 6000, true,
         [](const QByteArray& folder, const QByteArray& file) {
             const QByteArray inner = folder + "/inner";
             return ::mkdir(inner.constData(), 0700) == 0 &&
                    ::rename(file.constData(), (inner + "/file").constData()) == 0 &&
                    ::symlink("file", (inner + "/link").constData()) == 0 &&
                    ::symlink("inner/link", file.constData()) == 0;
         }},
        {"link to nothing", 0, false,
         [](const QByteArray& folder, const QByteArray& file) {
             return ::mkdir((folder + "/inner").constData(), 0700) == 0 && ::unlink(file.constData()) == 0 &&
                    ::symlink("inner/none", file.constData()) == 0;
         }},
        {"nothing", 0, true, [](const QByteArray&, const QByteArray& file) { return ::unlink(file.constData()) == 0; }},
        {"several names", 6000, false, second},
        {"several names, short", 100, false, second},
        {"attribute", 6000, true,
         [=](const QByteArray&, const QByteArray& file) { return attribute(file, "user.note", "text"); }},
        {"access control list", 6000, true,
         [=](const QByteArray&, const QByteArray& file) { return attribute(file, "system.posix_acl_access", list); }},
        {"list that a new file gets", 6000, false,
         [=](const QByteArray& folder, const QByteArray&) {
             return attribute(folder, "system.posix_acl_default", list);
         }},
        {"owner that can be kept", 6000, true,
         [](const QByteArray&, const QByteArray& file) { return ::chown(file.constData(), 65533, 65533) == 0; }},
        {"somebody else's", 6000, false,
         [](const QByteArray& folder, const QByteArray& file) {
             return ::chown(file.constData(), 65533, 65533) == 0 && ::chmod(file.constData(), 0666) == 0 &&
                    ::chmod(folder.constData(), 0777) == 0 && ::seteuid(65534) == 0;
         }},
        {"in a folder that takes no other", 6000, false,
         [](const QByteArray& folder, const QByteArray& file) {
             return ::chmod(file.constData(), 0666) == 0 && ::chmod(folder.constData(), 0555) == 0 &&
                    (::geteuid() != 0 || ::seteuid(65534) == 0);
         }},
    };
}

/** A device that tells another size than it has, like a file that changes while it is read. */
class Changing : public QBuffer
{
public:
    Changing(qint64 told, const QByteArray& held)
        : m_told(told)
    {
        setData(held);
        open(ReadOnly);
    }

    [[nodiscard]] qint64 size() const override { return m_told; }

private:
    qint64 m_told;
};

std::vector<Reader> readers()
{
    const auto load = [](const QString& path) { return outcome(CPLClickInfo().loadClickInfo(path, false)); };
    const auto findValue = [](const QString& path) {
        QString value;
        return outcome(CPLClickInfo().obtainValueFromClickInfoFile(path, "User ID"_s, &value));
    };
    const auto settings = [](const QString& path) { return outcome(CPLSettingsFileWrapper().load(path)); };
    const auto xml = [](const QString& path) {
        return outcome(CPLXMLReader().createXMLDocumentFormFile(path, nullptr, nullptr, nullptr));
    };
    const char* const click = "study/SEQ20240305/ABC20240305091502/ClickInfo.txt";
    const char* const analysis = "study/SEQ20240305/ABC20240305091502/AnalyzedClickInfo.txt";
    const char* const camera = "instrument/CameraInfo.txt";
    const char* const spectrum = "spectral/Spectral.xml";
    using Summary = CPLBkgSummaryInfo;
    constexpr tag_estatus opening = eSTATUS_FILE_OPEN_FAILED;
    constexpr tag_estatus memory = eSTATUS_OUT_OF_MEMORY;
    constexpr tag_estatus failed = eSTATUS_FAILED;
    return {
        {"acquisition", click, opening, opening, memory, load},
        {"analysis", analysis, opening, opening, memory, with(&CPLClickInfo::loadAnalyzedClickInfo)},
        {"one value", click, opening, opening, eSTATUS_KEY_NOT_FOUND, findValue},
        {"sequence", "study/SEQ20240305/SequenceInfo.txt", eSTATUS_FILE_NOT_FOUND, eSTATUS_FILE_READ_FAILED, memory,
         with(&CPLSequenceInfo::loadFile)},
        {"summary", "background/BkgSummary.txt", opening, opening, memory, with(&Summary::load)},
        {"structures", "background/SLindex.txt", opening, opening, memory, with(&Summary::SLload)},
        {"filters", "background/FLindex.txt", opening, opening, memory, with(&Summary::FLload)},
        {"settings", "settings/Presets.txt", opening, opening, memory, settings},
        {"optics", "settings/OpticalProperties.txt", opening, opening, memory, with(&CPLOptPropInfo::readSettingFile)},
        {"instrument", camera, opening, opening, memory, with(&CPLCameraInfo::load)},
        {"XML", spectrum, failed, failed, failed, xml},
        {"spectrum", spectrum, failed, failed, failed, with(&CPLSpectralWrapper::loadXMLFile)},
    };
}

std::vector<Writer> writers()
{
    const auto acquisition = [](const QString& path) {
        CPLClickInfo info;
        info.loadTextBuffer("*** A: a\nk: v\n"_s);
        return outcome(info.saveClickInfo(path));
    };
    const auto sequence = [](const QString& path) {
        CPLSequenceInfo info;
        info.addClickNumber("A1"_s);
        return outcome(info.saveFile(path));
    };
    const auto settings = [](const QString& path) {
        CPLSettingsFileWrapper presets;
        presets.loadTextBuffer("*** Preset: a\nMenuName: v\n"_s);
        return outcome(presets.save(path));
    };
    const auto spectrum = [](const QString& path) {
        CPLSpectralWrapper file;
        return outcome(file.createSpectralXMLFile(path));
    };
    return {
        {"acquisition", eSTATUS_FILE_OPEN_FAILED, acquisition},
        {"sequence", eSTATUS_FILE_OPEN_FAILED, sequence},
        {"settings", eSTATUS_FILE_OPEN_FAILED, settings},
        {"spectrum", eSTATUS_FAILED, spectrum},
    };
}

} // namespace

Q_DECLARE_METATYPE(Operation)
Q_DECLARE_METATYPE(Preparation)

class TestFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        // What is read-only must be within reach of an ordinary user.
        QVERIFY(QFile::setPermissions(m_folder.path(), everyonesFolder));
        // Qt takes the name of a file for the bytes that the locale makes of it.
        m_unusualPaths = QStringList{m_folder.filePath("two words \u00e9\u00df # *** a:b.txt"_s), m_folder.path()};
        const QString component = u'/' + QString(199, u'd');
        while (m_unusualPaths[1].size() + component.size() < 4000)
            m_unusualPaths[1] += component;
        QVERIFY(QDir().mkpath(m_unusualPaths[1]));
        m_unusualPaths[1] += "/f"_s.leftJustified(4000 - int(m_unusualPaths[1].size()), u'f');
        QCOMPARE(m_unusualPaths[1].size(), 4000);
        m_unusualPaths += m_folder.filePath(QString(255, u'n')); // no second file can have a longer name
    }

    void reading_data()
    {
        QTest::addColumn<Operation>("read");
        support::textColumns({"example", "notOpened", "folder", "tooLarge"});
        for (const Reader& row : readers())
            support::row(row.name, row.read, QString::fromLatin1(row.example), outcome(row.notOpened),
                         outcome(row.folder), outcome(row.tooLarge));
    }

    void reading()
    {
        QFETCH(Operation, read);
        QFETCH(QString, example);
        QFETCH(QString, notOpened);
        const QByteArray content = support::readFile(support::example(example.toLatin1().constData()));
        for (const QString& path : qAsConst(m_unusualPaths)) {
            support::writeFile(path, content);
            QCOMPARE(read(path), outcome(eSTATUS_SUCCESS));
        }
        for (const QString& path : notFiles())
            QTEST(read(path), "notOpened");
        QTEST(read(m_folder.path()), "folder");
        QTEST(read("/dev/zero"_s), "notOpened");
        const QString secret = m_folder.filePath("secret"_s);
        support::writeFile(secret, content);
        QVERIFY(QFile::setPermissions(secret, QFile::Permissions()));
        const QString outcomeOfSecret = [&] {
            const OrdinaryUser user;
            return read(secret);
        }();
        QFile::remove(secret);
        QCOMPARE(outcomeOfSecret, notOpened);
        QFile sparse(m_folder.filePath("sparse"_s));
        QVERIFY(sparse.open(QIODevice::WriteOnly) && sparse.resize(qint64(3) << 30));
        QTEST(read(sparse.fileName()), "tooLarge");
    }

    void writing_data()
    {
        QTest::addColumn<Operation>("write");
        QTest::addColumn<QString>("notOpened");
        for (const Writer& row : writers())
            support::row(row.name, row.write, outcome(row.notOpened));
    }

    void writing()
    {
        QFETCH(Operation, write);
        const QString ordinary = m_folder.filePath("ordinary"_s);
        QCOMPARE(write(ordinary), outcome(eSTATUS_SUCCESS));
        QVERIFY(!support::readFile(ordinary).isEmpty());
        for (const QString& path : qAsConst(m_unusualPaths)) {
            QFile::remove(path);
            QCOMPARE(write(path), outcome(eSTATUS_SUCCESS));
            QCOMPARE(write(path), outcome(eSTATUS_SUCCESS));
            QCOMPARE(support::readFile(path), support::readFile(ordinary));
        }
        for (const QString& path : notFiles())
            QTEST(write(path), "notOpened");
        QTEST(write(m_folder.path()), "notOpened");
    }

    void readOnly_data() { writing_data(); }

    void readOnly()
    {
        QFETCH(Operation, write);
        const QString folder = m_folder.filePath("locked"_s);
        const QString file = folder + "/file"_s;
        QDir().mkpath(folder);
        support::writeFile(file, "kept");
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        QVERIFY(QFile::setPermissions(folder, everyonesFolder & ~QFile::Permissions(QFile::WriteOwner)));
        QString onFile;
        QString inFolder;
        {
            const OrdinaryUser user;
            onFile = write(file);
            inFolder = write(folder + "/other"_s);
        }
        QVERIFY(QFile::setPermissions(folder, everyonesFolder | QFile::WriteGroup | QFile::WriteOther));
        const QString inOpenFolder = [&] {
            const OrdinaryUser user;
            return write(file);
        }();
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
        QTEST(onFile, "notOpened");
        QTEST(inFolder, "notOpened");
        QTEST(inOpenFolder, "notOpened");
        QCOMPARE(support::readFile(file), QByteArray("kept"));
    }

    void fullDisk()
    {
        if (support::fullDisk().isEmpty())
            return support::skipFullDisk();
        for (const Writer& row : writers()) {
            // A spectral file is opened here, and written later.
            const bool later = row.notOpened == eSTATUS_FAILED;
            QCOMPARE(row.write(support::fullDisk()), outcome(later ? eSTATUS_SUCCESS : eSTATUS_FAILED));
        }
    }

    void saving_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("replaced");
        QTest::addColumn<Preparation>("prepare");
        for (const Place& row : places())
            support::row(row.name, row.size, row.replaced, row.prepare);
    }

    /** A save leaves everything but the bytes as it is; one that falls short leaves the bytes too. */
    void saving()
    {
        using ovparser::internal::WriteMode;
        QFETCH(int, size);
        QFETCH(bool, replaced);
        QFETCH(Preparation, prepare);
        const QTemporaryDir folder(m_folder.filePath("saving"_s));
        const QString file = folder.filePath("file"_s);
        support::writeFile(file, QByteArray(size, 'o'));
        const auto effective = ::geteuid();
        const auto restore = qScopeGuard([&] { static_cast<void>(::seteuid(effective)); });
        if (!prepare(QFile::encodeName(folder.path()), QFile::encodeName(file)))
            QSKIP("not possible here, or not for this user");
        const auto state = [&] { return natureOf(file) + QDir(folder.path()).entryList().join(u' '); };
        const QString before = state();
        const ino_t inode = inodeOf(file);
        for (const WriteMode mode : {WriteMode::Replace, WriteMode::Append}) {
            const FullDisk limit;
            QCOMPARE(ovparser::internal::writeFile(file, QByteArray(10000, 'n'), mode), eSTATUS_FAILED);
            QCOMPARE(state(), before);
            QCOMPARE(QFileInfo::exists(file), size > 0);
            QVERIFY(size == 0 || support::readFile(file) == QByteArray(size, 'o'));
        }
        QCOMPARE(ovparser::internal::writeFile(file, "new", WriteMode::Replace), eSTATUS_SUCCESS);
        QCOMPARE(support::readFile(file), QByteArray("new"));
        QVERIFY(size == 0 || natureOf(file) == before.left(natureOf(file).size()));
        QVERIFY(size == 0 || (inodeOf(file) != inode) == replaced);
        QCOMPARE(ovparser::internal::writeFile(file, "er", WriteMode::Append), eSTATUS_SUCCESS);
        QCOMPARE(support::readFile(file), QByteArray("newer"));
    }

    void overwritesOnlyWhatCanBePutBack()
    {
        const QString file = m_folder.filePath("unread"_s);
        const QByteArray name = QFile::encodeName(file);
        support::writeFile(file, "old");
        QCOMPARE(::link(name.constData(), (name + '2').constData()), 0);
        QVERIFY(::geteuid() != 0 || ::chown(name.constData(), 65534, 65534) == 0);
        QCOMPARE(::chmod(name.constData(), 0200), 0);
        const tag_estatus status = [&] {
            const OrdinaryUser user;
            return ovparser::internal::writeFile(file, "new", ovparser::internal::WriteMode::Replace);
        }();
        QCOMPARE(::chmod(name.constData(), 0600), 0);
        QCOMPARE(status, eSTATUS_FAILED);
        QCOMPARE(support::readFile(file), QByteArray("old"));
    }

    void filesThatChange_data()
    {
        QTest::addColumn<int>("told");
        QTest::addColumn<int>("held");
        QTest::addColumn<int>("read");
        support::row("shrinks", 100000, 40, 40);
        support::row("is emptied", 100000, 0, 0);
        support::row("grows", 10, 90000, 90000);
        support::row("grows beyond the limit", 10, 100002, 100001);
        support::row("is larger", 200000, 200000, 100001);
    }

    void filesThatChange()
    {
        QFETCH(int, told);
        QFETCH(int, held);
        QByteArray content(held, 'c');
        Changing device(told, content);
        const QByteArray bytes = ovparser::internal::readBounded(device, 100000);
        QTEST(int(bytes.size()), "read");
        QVERIFY(content.startsWith(bytes));
    }

    void sequenceThatShrinks()
    {
        // It tells a page as its size and holds a line.
        const QString file = "/sys/devices/system/cpu/online"_s;
        if (QFileInfo(file).size() <= support::readFile(file).size())
            QSKIP("no file that is shorter than it tells");
        QCOMPARE(CPLSequenceInfo().loadFile(file), eSTATUS_FILE_READ_FAILED);
    }

private:
    static constexpr QFile::Permissions everyonesFolder = QFile::Permissions(QFile::ReadOwner) | QFile::WriteOwner |
                                                          QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup |
                                                          QFile::ReadOther | QFile::ExeOther;

    /** Nothing, a pipe, a path through it, one with a NUL, a name and a path that are too long. */
    QStringList notFiles() const
    {
        const QString pipe = m_folder.filePath("pipe"_s);
        ::mkfifo(QFile::encodeName(pipe).constData(), 0600);
        return {m_folder.filePath("absent/f"_s),
                pipe,
                pipe + "/f"_s,
                m_unusualPaths[0] + QChar(0) + u'x',
                m_folder.filePath(QString(300, u'x')),
                m_folder.path() + QString(5000, u'/') + QString(5000, u'x')};
    }

    QTemporaryDir m_folder;
    QStringList m_unusualPaths;
};

QTEST_GUILESS_MAIN(TestFiles)
#include "tst_files.moc"
