// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include <QtCore/QDir>
#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>

#include <cstdio>

using Query = bool (CPLCameraInfo::*)() const;
Q_DECLARE_METATYPE(Query)

namespace {

QStringList messages;

void collectMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool located = context.file && context.line > 0 && context.function;
    if (type == QtDebugMsg || type == QtWarningMsg)
        messages += located ? text : "no source location: "_s + text;
}

} // namespace

class TestCameraInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        qputenv("XDG_DATA_HOME", m_folder->filePath("home"_s).toLocal8Bit());
        qputenv("XDG_DATA_DIRS", m_folder->filePath("share"_s).toLocal8Bit());
        QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, m_folder->filePath("store"_s));
        messages.clear();
        qInstallMessageHandler(collectMessage);
    }

    void cleanup() { qInstallMessageHandler(nullptr); }

    void capabilities_data()
    {
        QTest::addColumn<Query>("query");
        QTest::addColumn<QByteArray>("keys");
        QTest::addColumn<bool>("expected");
        const auto rule = [](const char* name, Query query, const QByteArray& with, const QByteArray& without) {
            QTest::addRow("%s", name) << query << with << true;
            QTest::addRow("not %s", name) << query << without << false;
        };
        using Camera = CPLCameraInfo;
        const QByteArray v200 = "System Configuration: vexa 200 Series\n";
        const QByteArray v100 = "System Configuration: VEXA 100\n";
        const QByteArray kit = "Fluorescence kit installed: YES # c\n";
        const QByteArray drivers = "Fluorescence X Motor Driver Number: 1\n"
                                   "Fluorescence Y Motor Driver Number: abc\n";
        rule("USB board", &Camera::isUSB_IO_BoardInstalled, "USB I/O BOARD: Yes", "USB I/O BOARD: on");
        rule("UAC board", &Camera::isUACBoardInstalled, "UAC BOARD: yes", "UAC BOARD:");
        rule("spinner", &Camera::isSpinnerInstalled, "Corvix Imager: yes", "Corvix Imager: no");
        rule("spinner active", &Camera::isSpinnerDeviceActive, "Corvix Imager: yes", "x: yes");
        rule("chip reader", &Camera::isChipReaderInstalled, "Chip-Reader: yes", "Chip-Reader: y");
        rule("X-ray", &Camera::isXrayInstalled, "Xray Controller: yes", "Xray Controller: no");
        rule("second wheel", &Camera::isEmissionWheel2Installed, "Filter2 Motor Driver Number: x",
             "Filter Motor Driver Number: 1");
        rule("second emission wheel", &Camera::isEmissionWheel2Installed, "EM Filter2 Motor Driver Number: 1",
             "EM Filter Motor Driver Number: 1");
        rule("kit", &Camera::isFluorescentKitInstalled, kit, "Fluorescence kit installed: no");
        rule("BL", &Camera::isVEXABL, v200, v200 + kit);
        rule("BL only on 200", &Camera::isVEXABL, v200, v100);
        rule("Aurora", &Camera::isVEXAAurora, v200 + kit + drivers, v200 + drivers);
        rule("Aurora with both", &Camera::isVEXAAurora, v200 + kit + drivers,
             v200 + kit + "Fluorescence X Motor Driver Number: 1");
        rule("Aurora only on 200", &Camera::isVEXAAurora, v200 + kit + drivers, v100 + kit + drivers);
        rule("Princeton", &Camera::isPrincetonAurora, v200 + "Camera System Info: a sophia b",
             v100 + "Camera System Info: Sophia");
        rule("CT", &Camera::isVEXACT, v200 + "Rotation Stage Motor Driver Number: 0",
             v200 + "Rotation Stage Motor Driver Number: -1");
        rule("CT, no number", &Camera::isVEXACT, v200 + "Rotation Stage Motor Driver Number: x",
             v100 + "Rotation Stage Motor Driver Number: 0");
        rule("Kestrel", &Camera::isVEXAKestrel, "Camera System Info: du888", "Camera System Info: 88");
        rule("Kestrel by CCD", &Camera::isVEXAKestrel, "Camera CCD Type: an emccd", "Camera CCD Type: ccd");
        rule("Tessel", &Camera::isVEXATesselHT, v100 + "Filter2 Motor Driver Number: 1",
             v200 + "Filter2 Motor Driver Number: 1");
        rule("bed with Aurora", &Camera::isTransportBedSupported, v200 + kit + drivers, v200 + kit);
        rule("bed with shuttle", &Camera::isTransportBedSupported, v200 + "Mouse Imaging Shuttle Enabled: yes",
             v100 + "Mouse Imaging Shuttle Enabled: yes");
        const QByteArray mirror = "Side View Mirror Enabled: yes\nStage offset: 1\nMirror angle: 2\n";
        rule("mirror", &Camera::isSideMirrorChecked, v200 + mirror + "Mirror x-offset: 3", v200 + mirror);
        rule("mirror only on 200", &Camera::isSideMirrorChecked, v200 + mirror + "Mirror x-offset: 3",
             v100 + mirror + "Mirror x-offset: 3");
        rule("wide-field lens", &Camera::isZEVR24Available, v200 + "ZEVR-24: yes", "ZEVR-24: no");
        for (const char* const place : {"Middle", "Front", "Middle Front", "Middle Back", "Back"})
            rule(place, &Camera::isTrayInstalled, QByteArray("Fiducial Position ") + place + ": 1",
                 QByteArray("Fiducial ") + place + ": 1");
        const auto omega = [&](const char* name, const QByteArray& keys, bool installed, bool output2) {
            QTest::addRow("omega, %s", name) << Query(&Camera::isOmegaInstalled) << keys << installed;
            QTest::addRow("omega on output 2, %s", name) << Query(&Camera::isOmegaOutput2) << keys << output2;
        };
        omega("CNi32", "Omega controller installed: CNi32", true, true);
        omega("output 2", "Omega controller installed: Output 2", true, true);
        omega("output 1", "Omega controller installed: output 1", true, false);
        omega("yes", "Omega controller installed: yes", true, false);
        omega("no", v200 + "Omega controller installed: no", false, false);
        omega("empty on 200", v200 + "Omega controller installed:", true, false);
        omega("absent on 200", v200, true, false);
        omega("absent", v100, false, false);
        omega("board", v100 + "UAC BOARD: yes\nOmega controller installed: no", true, false);
        const auto door = [&](const char* name, const QByteArray& keys, bool closed, bool old) {
            QTest::addRow("door, %s", name) << Query(&Camera::isDoorClosedOnZeroStatus) << keys << closed;
            QTest::addRow("controller, %s", name) << Query(&Camera::isOldIllumController) << keys << old;
        };
        door("old tray", v100 + "Electronics Tray Part Number: 30052 # c", false, false);
        door("new tray", v100 + "Electronics Tray Part Number: 12345", true, true);
        door("no tray", v100, true, true);
        door("board", v100 + "USB I/O BOARD: yes", false, false);
        door("200", v200 + "Electronics Tray Part Number: 12345", false, false);
    }

    void capabilities()
    {
        QFETCH(Query, query);
        QFETCH(QByteArray, keys);
        CPLCameraInfo camera;
        QVERIFY(loadText(camera, keys));
        QTEST((camera.*query)(), "expected");
        QCOMPARE(messages, QStringList());
    }

    void numbers_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::addColumn<int>("system");
        QTest::addColumn<int>("tray");
        QTest::addColumn<int>("polarity");
        QTest::addColumn<int>("delay");
        support::row("absent", QByteArray("x: y"), 0, 0, -1, 0);
        support::row("given",
                     QByteArray("System Configuration: VEXA 200\nElectronics Tray Part "
                                "Number: 7\nLights Control Polarity: 1\nStructured Light "
                                "Delay Cycles: 9"),
                     1, 7, 1, 9);
        support::row("no numbers",
                     QByteArray("System Configuration: Corvix 2\nElectronics Tray "
                                "Part Number: abc\nLights Control Polarity: x"),
                     2, 0, 0, 0);
        support::row("delay only on 200",
                     QByteArray("System Configuration: vexa 50 200\nStructured Light Delay Cycles: 9"), 0, 0, -1, 0);
        support::row("first name wins", QByteArray("System Configuration: Corvix VEXA 200"), 1, 0, -1, 0);
    }

    void numbers()
    {
        QFETCH(QByteArray, keys);
        CPLCameraInfo camera;
        QVERIFY(loadText(camera, keys));
        QTEST(int(camera.getSystemType()), "system");
        QTEST(camera.getElectronicsTrayPartNum(), "tray");
        QTEST(camera.getPolarity(), "polarity");
        QTEST(camera.getStructureLaserDelay(), "delay");
    }

    void derivesAnew()
    {
        CPLCameraInfo camera;
        camera.setVICChecked(true);
        camera.setOmegaInstalled(true);
        QVERIFY(loadText(camera, "System Configuration: VEXA 200\nUSB I/O BOARD: yes\n"
                                 "Corvix Imager: yes\nXray Controller: yes\n"
                                 "Fiducial Position Back: 1\nCamera CCD Type: EMCCD\n"
                                 "Electronics Tray Part Number: 5\nStructured Light Delay Cycles: 3\n"
                                 "Mouse Imaging Shuttle Enabled: yes\nSide View Mirror Enabled: yes\nStage offset: 1\n"
                                 "Mirror x-offset: 1\nMirror angle: 1"));
        QVERIFY(camera.isVEXABL() && camera.isXrayInstalled() && camera.isOmegaInstalled());
        QCOMPARE(camera.getStructureLaserDelay(), 3);
        QVERIFY(camera.isTransportBedSupported() && camera.isSideMirrorChecked());
        QVERIFY(loadText(camera, "Filter2 Motor Driver Number: 1"));
        QVERIFY(camera.isVEXATesselHT() && camera.isEmissionWheel2Installed());
        QVERIFY(loadText(camera, "System Configuration: VEXA 100"));
        QVERIFY(camera.isVEXATesselHT() && !camera.isEmissionWheel2Installed() && !camera.isTransportBedSupported());
        QVERIFY(camera.isSideMirrorChecked() && !camera.isDoorClosedOnZeroStatus());
        QCOMPARE(camera.getStructureLaserDelay(), 0);
        // These only ever rise ...
        QVERIFY(camera.isVEXABL() && camera.isUSB_IO_BoardInstalled() && camera.isSpinnerInstalled() &&
                camera.isSpinnerDeviceActive() && camera.isVICChecked() && camera.isOmegaInstalled());
        // ... and these start anew.
        QVERIFY(!camera.isXrayInstalled() && !camera.isTrayInstalled() && !camera.isVEXAKestrel());
        QCOMPARE(camera.getElectronicsTrayPartNum(), 0);
        camera.setSpinnerDeviceStatus(false);
        camera.setSideMirrorChecked(true);
        QVERIFY(!camera.isSpinnerDeviceActive() && camera.isSpinnerInstalled() && camera.isSideMirrorChecked());
    }

    void sample()
    {
        CPLCameraInfo camera;
        QVERIFY(camera.loadCameraInfo(support::example("instrument/CameraInfo.txt")));
        const CPLSection& section = *camera.getCameraInfoSection();
        QCOMPARE(section["Stage Motor Driver Number"_s], "7"_s);
        QCOMPARE(section["F/Stop Min"_s], "0.95"_s);
        QCOMPARE(section["Emission Filter 2"_s], "520 nm band 20"_s);
        QVERIFY(!section.isKeyPresent("Rotation Stage Motor Driver Number"_s));
        QVERIFY(camera.isVEXATesselHT() && !camera.isDoorClosedOnZeroStatus());
        QCOMPARE(camera.getFileSectionCount(), 1);
        QByteArray name;
        QVERIFY(getFOVName(&camera, 23.0, name));
        QCOMPARE(name, QByteArray("D"));
        QVERIFY(hasCCDMapData(camera));
        // The extension for another family is no fault.
        QCOMPARE(messages, QStringList());
    }

    void mergesExtensions_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("merged");
        support::row("flat", QByteArray("A: 1\nB: 2\n"),
                     QByteArray("*** Camera System Info:\t\r\nA:\t1\r\nB:\t2\r\nB:\t2\r\n"
                                "C:\t4\r\n\r\n*** More:\t\r\nk:\tv\r\n\r\n\r\n\r\n")
                         .replace("B:\t2", "B:\t3"));
        support::row("sectioned", QByteArray("*** camera SYSTEM info: n\nA: 1\n"),
                     QByteArray("B: 3\r\nC: 4\r\n*** More:\t\r\nk:\tv\r\n\r\n"
                                "*** camera SYSTEM info:\tn\r\nA:\t1\r\n\r\n\r\n\r\n"));
        support::row("keys before another section", QByteArray("A: 1\n*** Other: o\nx: y"),
                     QByteArray("*** Camera System Info:\t\r\nA:\t1\r\n\r\nB:\t3\r\nC:\t4\r\n\r\n"
                                "*** More:\t\r\nk:\tv\r\n\r\n*** Other:\to\r\nx:\ty\r\n\r\n\r\n\r\n"));
        support::row("preamble", QByteArray("first\n*** Camera System Info:\nA: 1\n"),
                     QByteArray("first\r\n\r\nB: 3\r\nC: 4\r\n*** More:\t\r\n"
                                "k:\tv\r\n\r\n*** Camera System Info:\t\r\nA:\t1\r\n"
                                "\r\n\r\n\r\n"));
    }

    void mergesExtensions()
    {
        QFETCH(QByteArray, file);
        write("share/Ostrel/Orvane/CameraInfo.txt"_s, "x: 1\r\nSystem Configuration:\tVEXA 200\r\n");
        write("config/a.cfg"_s, "*** Extension Info: e\r\nExtension name: A\r\nSystem Configuration: VEXA 200\r\n"
                                "Conflicts with extensions:\r\n*** Camera System Info:\r\nB: 3\r\nC: 4\r\n"
                                "*** More:\r\nk: v");
        write("config/a.txt"_s, "*** no extension");
        write("CameraInfo.txt"_s, file);
        CPLCameraInfo camera;
        camera.loadTextBuffer("*** Old: 1"_s);
        QCOMPARE(camera.load(instrument("CameraInfo.txt"_s)), eSTATUS_SUCCESS);
        QTEST(camera.getClickInfoData(), "merged");
        QVERIFY(!camera.getCameraInfoSection());
    }

    void checksExtensions_data()
    {
        QTest::addColumn<QByteArray>("extension");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<bool>("merged");
        const QByteArray info = "*** Extension Info:\n";
        const QByteArray name = "Extension name: N\n";
        const QByteArray system = "System Configuration: other\n";
        const QByteArray conflicts = "Conflicts with extensions: A, B\n";
        const QByteArray camera = "*** Camera System Info:\nKey: v\n";
        support::row("fits", info + name + system + conflicts + camera, QString(), true);
        support::row("unusual header",
                     QByteArray(info + name + system + conflicts + camera)
                         .replace("*** C", "***c")
                         .replace("o:\nKey", "o : n\nKey"),
                     QString(), true);
        support::row("no text", QByteArray(), "'Extension Info' section not present"_s, false);
        support::row("no name", info + system + conflicts + camera, "'Extension name' key/value not present"_s, false);
        support::row("no system", info + name + conflicts + camera, "'System Configuration' key/value not present"_s,
                     false);
        support::row("no conflicts", info + name + system + camera,
                     "'Conflicts with extensions' key/value not present"_s, false);
        support::row("no camera", info + name + system + conflicts, "'Camera System Info' section not present"_s,
                     false);
        support::row("other family", info + name + "System Configuration: VEXA 200\n" + conflicts + camera, QString(),
                     false);
        support::row("malformed", info + name + system + conflicts + camera + "*** x", QString(), false);
    }

    void checksExtensions()
    {
        QFETCH(QByteArray, extension);
        QFETCH(QString, reason);
        write("config/one.CFG"_s, extension);
        CPLCameraInfo camera;
        QVERIFY(loadText(camera, "A: 1"));
        QTEST(camera.getCameraInfoSection()->isKeyPresent("Key"_s), "merged");
        QStringList expected;
        if (!reason.isNull())
            expected += "Loading cameraInfo extension 'one.CFG' failed: "_s + reason;
        QCOMPARE(messages, expected);
    }

    void conflictsGoByFolderOrder()
    {
        const auto extension = [](const QByteArray& name, const QByteArray& rivals) -> QByteArray {
            return "*** Extension Info:\nExtension name: " + name + "\nSystem Configuration: x\n" +
                   "Conflicts with extensions: " + rivals + "\n*** Camera System Info:\n" + name + ": 1\n";
        };
        write("config/1.cfg"_s, extension("A", "X,B"));
        write("config/2.cfg"_s, extension("B", "A"));
        write("config/3.cfg"_s, extension("C", "X, A, B"));
        CPLCameraInfo camera;
        QVERIFY(loadText(camera, "Own: 1"));
        const CPLSection& section = *camera.getCameraInfoSection();
        // Of two rivals the one that the folder lists first joins; a blank keeps a name from matching.
        QVERIFY(section.isKeyPresent("A"_s) != section.isKeyPresent("B"_s));
        QVERIFY(section.isKeyPresent("C"_s));
        QCOMPARE(messages.size(), 1);
        QVERIFY(messages.at(0).endsWith("failed: Conflicts with already loaded extensions."_s));
        QFile large(m_folder->filePath("config/4.cfg"_s));
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(qint64(600) << 20));
        QVERIFY(loadText(camera, "Own: 1"));
    }

    void extensionThatTheLocaleCannotSpell()
    {
        const QByteArray name = "no\xFFtext.cfg";
        if (QFile::encodeName(QFile::decodeName(name)) == name)
            QSKIP("The locale knows every byte");
        write("config/plain.txt"_s, "x");
        const QByteArray folder = QFile::encodeName(instrument("config/"_s));
        if (std::rename((folder + "plain.txt").constData(), (folder + name).constData()) != 0)
            QSKIP("The file system takes no such name");
        CPLCameraInfo camera;
        const bool loaded = loadText(camera, "Own: 1");
        std::remove((folder + name).constData()); // Qt cannot
        QVERIFY(loaded);
        QCOMPARE(messages, QStringList("Loading cameraInfo extension 'no\uFFFDtext.cfg' failed: "
                                       "File name not valid in the locale"_s));
    }

    void filterWheels_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("loaded");
        QTest::addColumn<QString>("wheel");
        QTest::addColumn<QString>("keysAfter");
        QTest::addColumn<QString>("message");
        const QByteArray capable = "A: 1\nRemovable Filter Wheel Capable: YES\n";
        const QString own = "A|Removable Filter Wheel Capable"_s;
        support::row("standard", capable, QString(), true, "standard.xem"_s, own + "|B"_s, QString());
        support::row("stored", capable, "mine.xem"_s, true, "mine.xem"_s, own + "|C"_s, QString());
        support::row("stored empty", capable, ""_s, true, "standard.xem"_s, own + "|B"_s, QString());
        support::row("missing", capable, "gone.xem"_s, false, "gone.xem"_s, QString(),
                     "The Emission Filter Wheel Information file %1 does not exist."_s);
        support::row("no file name", capable, "a\0b"_s, false, "a\0b"_s, QString(),
                     "The Emission Filter Wheel Information file %1 does not exist."_s);
        support::row("unreadable", capable, "folder"_s, false, "folder"_s, own,
                     "Loading Removable filter wheel information file failed."_s);
        support::row("not capable", QByteArray("A: 1"), "gone.xem"_s, true, "standard.xem"_s, "A"_s, QString());
        support::row("other family", "System Configuration: VEXA 200\n" + capable, "gone.xem"_s, true, "standard.xem"_s,
                     "System Configuration|"_s + own, QString());
    }

    void filterWheels()
    {
        QFETCH(QByteArray, keys);
        QFETCH(QString, stored);
        QFETCH(QString, keysAfter);
        QFETCH(QString, message);
        if (!stored.isNull())
            std::unique_ptr<QSettings>(store())->setValue("filterWheel"_s, stored);
        write("emfilters/standard.xem"_s, "# none\n  B  x : 1\n# C: 2\nplain\nA: 7   8\xA0\n");
        write("emfilters/mine.xem"_s, "C: 1");
        QVERIFY(QDir().mkpath(instrument("emfilters/folder"_s)));
        CPLCameraInfo camera;
        QTEST(loadText(camera, keys), "loaded");
        QTEST(camera.getCurrentFilterWheelName(), "wheel");
        const CPLSection* const section = camera.getCameraInfoSection();
        QCOMPARE(support::keysOf(section).replace("B x"_s, "B"_s), keysAfter);
        QCOMPARE(section == nullptr, keysAfter.isNull());
        QCOMPARE(camera[0], section);
        if (keysAfter.endsWith("|B"_s))
            QCOMPARE((*section)["A"_s], "7 8\u00a0"_s);
        QStringList expected;
        if (!message.isNull())
            expected += message.replace("%1"_s, instrument("emfilters/"_s + stored));
        QCOMPARE(messages, expected);
    }

    void zoomLens()
    {
        std::unique_ptr<QSettings>(store())->setValue("Zoom"_s, true);
        CPLCameraInfo camera;
        QVERIFY(loadText(camera, "Zoom Lens Support: yes"));
        QCOMPARE(messages, QStringList("The Zoom Lens is supported. The Shelf position information for "
                                       "the zoom lens is missing in the camerainfo file"_s));
        QVERIFY(!camera.isZoomLensSupported() && !camera.isZoomLensAttached());
        QVERIFY(loadText(camera, "Zoom Lens Support: yes\nShelf Position Z FOV: 4"));
        QVERIFY(camera.isZoomLensSupported() && camera.isZoomLensAttached());
    }

    void choicesPersist()
    {
        CPLCameraInfo camera;
        camera.setZEVR24Attached(false);
        camera.setZoomLensAttached(false);
        camera.setCurrentFilterWheelName("standard.xem"_s);
        QVERIFY(std::unique_ptr<QSettings>(store())->childKeys().isEmpty());
        camera.setZEVR24Attached(true);
        camera.setZoomLensAttached(true);
        camera.setCurrentFilterWheelName("Standard.xem"_s);
        const std::unique_ptr<QSettings> settings(store());
        QCOMPARE(settings->value("ZEVR24"_s).toBool(), true);
        QCOMPARE(settings->value("Zoom"_s).toBool(), true);
        QCOMPARE(settings->value("filterWheel"_s).toString(), "Standard.xem"_s);
        CPLCameraInfo other;
        QVERIFY(loadText(other, "ZEVR-24: yes"));
        QVERIFY(other.isZEVR24Attached() && !other.isZoomLensAttached());
    }

    void largeAnimal_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QByteArray>("written");
        const QByteArray line = "Large animal position:1";
        support::row("no file", QByteArray(), false, line);
        support::row("no line", QByteArray("a:\xE9\r\nb"), false, "a:\xE9\nb\n" + line);
        support::row("selected", QByteArray("Large animal position:1\r\nx"), true, line + "\nx\n");
        support::row("blank before the value", QByteArray("Large animal position: 1\n"), false, line + "\n");
        support::row("last line wins", QByteArray("Large animal position:1\nLarge animal position:0"), false,
                     line + "\n" + line + "\n");
        support::row("further parts", QByteArray("Large animal position:1:2"), true, line + "\n");
        support::row("other letter case", QByteArray("large animal position:1\n"), false,
                     "large animal position:1\n" + line);
        support::row("no colon", QByteArray("Large animal position"), false, line + "\n");
    }

    void largeAnimal()
    {
        QFETCH(QByteArray, file);
        const QString status = "share/Ostrel/Orvane/database/UI_Status.txt"_s;
        CPLCameraInfo camera;
        camera.setLargeAnimalState(true);
        QVERIFY(!QFile::exists(instrument(status)) && !camera.isLargeAnimalSelected());
        write(status, file);
        if (file.isNull())
            QVERIFY(QFile::remove(instrument(status)));
        QVERIFY(loadText(camera, "Motor Steps for x-ray2 stage position c: 1"));
        QTEST(camera.isLargeAnimalSelected(), "selected");
        camera.setLargeAnimalState(true);
        QTEST(support::readFile(instrument(status)), "written");
        QVERIFY(camera.isLargeAnimalSelected());
        camera.setLargeAnimalState(false);
        QVERIFY(!camera.isLargeAnimalSelected() && camera.isLargeAnimalCapable());
        QVERIFY(loadText(camera, "Motor Steps for x-ray2 position c: 1"));
        QVERIFY(!camera.isLargeAnimalCapable());
    }

    void heldSectionNeverDangles()
    {
        CPLCameraInfo camera;
        QVERIFY(loadText(camera, "Darkcharge Path: D:/dark # c\nZEVR-24: yes"));
        CPLSection* const section = camera.getCameraInfoSection();
        QCOMPARE(camera["Camera System Info"_s], section);
        QCOMPARE(getOVPath(OV_PATH_BACKGROUND, false, &camera), "D:/dark"_s);
        QCOMPARE(getOVPath(OV_PATH_BACKGROUND, true, &camera), "D:/dark/"_s);
        const CPLCameraInfo copy(camera);
        CPLCameraInfo assigned;
        assigned = camera;
        QVERIFY(copy.getCameraInfoSection() != section && copy.isZEVR24Available());
        camera.removeSection("Camera System Info"_s);
        QVERIFY(!camera.getCameraInfoSection() && !camera.isZEVR24Available());
        QVERIFY(!camera.isLargeAnimalCapable());
        QVERIFY(assigned.isZEVR24Available());
        assigned.clearData();
        QVERIFY(!assigned.getCameraInfoSection());
        QCOMPARE(assigned.loadClickInfo(instrument("absent"_s), false), eSTATUS_FILE_OPEN_FAILED);
        QVERIFY(getOVPath(OV_PATH_BACKGROUND, false, &assigned).endsWith("/Background"_s));
    }

    void selectsKeys()
    {
        CPLCameraInfo camera;
        QStringList keys = {"old"_s};
        QCOMPARE(camera.getKeyListWithSameKey("F"_s, &keys), eSTATUS_SUCCESS);
        QVERIFY(loadText(camera, "F/Stop Max: 8\n# F/Stop\nf/stop Min: 1\nLens fstop 8 Steps: 3\n"
                                 "Lens fstop Motor Speed F: 4"));
        QCOMPARE(camera.getKeyListWithSameKey("F/Stop"_s, &keys), eSTATUS_SUCCESS);
        QCOMPARE(keys.join(u'|'), "old|F/Stop Max|f/stop Min"_s);
        keys.clear();
        QCOMPARE(camera.getLensFStopStepList("lens FSTOP"_s, &keys), eSTATUS_SUCCESS);
        QCOMPARE(keys.join(u'|'), "Lens fstop 8 Steps"_s);
        QCOMPARE(camera.getKeylistFromKeyAndSubkey(""_s, ""_s, &keys), eSTATUS_SUCCESS);
        QCOMPARE(keys.size(), 1);
        QCOMPARE(camera.getKeylistFromKeyAndSubkey(""_s, QString(), &keys), eSTATUS_SUCCESS);
        QCOMPARE(keys.size(), 5);
        QCOMPARE(camera.getKeyListWithSameKey("F"_s, nullptr), eSTATUS_NULL_ARGUMENT);
    }

    void failingLoads()
    {
        CPLCameraInfo camera;
        QVERIFY(loadText(camera, "System Configuration: VEXA 200\nLights Control Polarity: 1"));
        QCOMPARE(camera.load(instrument("absent"_s)), eSTATUS_FILE_OPEN_FAILED);
        QVERIFY(camera.getCameraInfoSection());
        QVERIFY(!camera.loadCameraInfo(instrument("absent"_s)));
        QVERIFY(!camera.getCameraInfoSection() && !camera[0]);
        QVERIFY(!loadText(camera, "*** broken\n*** Camera System Info:\n"));
        const QString failed = "Loading camera information failed."_s;
        QCOMPARE(messages, (QStringList{failed, failed}));
        QVERIFY(!loadText(camera, "#*** Camera System Info:\n*** Other: x"));
        QCOMPARE(messages.last(), "Invalid camera information, while loading camera info."_s);
        QVERIFY(!camera.getCameraInfoSection());
        QCOMPARE(camera.getSystemType(), eVEXA_200);
        QCOMPARE(camera.getPolarity(), 1);
    }

private:
    QString instrument(const QString& name) const { return m_folder->filePath(name); }

    void write(const QString& name, const QByteArray& text) const
    {
        QVERIFY(QDir().mkpath(QFileInfo(instrument(name)).path()));
        support::writeFile(instrument(name), text);
    }

    bool loadText(CPLCameraInfo& camera, const QByteArray& text) const
    {
        write("CameraInfo.txt"_s, text);
        return camera.loadCameraInfo(instrument("CameraInfo.txt"_s));
    }

    static QSettings* store()
    {
        auto* const settings = new QSettings(QSettings::NativeFormat, QSettings::SystemScope, "Ostrel"_s, "Orvane"_s);
        settings->beginGroup("Current_Version"_s);
        return settings;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestCameraInfo)
#include "tst_plcamerainfo.moc"
