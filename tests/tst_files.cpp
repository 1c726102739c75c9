/**
 * @file
 * What everything that reads or writes makes of paths that are long or spelled unusually, and of
 * what a path may name instead of an ordinary file.
 */
#include "support/Support.h"

#include "internal/TextFile.h"

#include <QtCore/QBuffer>

#include <sys/stat.h>
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
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther));
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther));
        QString onFile;
        QString inFolder;
        {
            const OrdinaryUser user;
            onFile = write(file);
            inFolder = write(folder + "/other"_s);
        }
        QVERIFY(QFile::setPermissions(folder, everyonesFolder));
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
        QTEST(onFile, "notOpened");
        QTEST(inFolder, "notOpened");
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
    static constexpr QFile::Permissions everyonesFolder =
        QFile::Permissions(QFile::ReadOwner) | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;

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
