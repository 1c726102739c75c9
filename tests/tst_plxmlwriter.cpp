// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include <QtCore/QBuffer>

#include <QTextCodec>

#include <functional>

using Use = std::function<void(CPLXMLWriter&)>;
Q_DECLARE_METATYPE(Use)

namespace {

const QString a = "a"_s;
const QString b = "b"_s;

QByteArray written(const Use& use, const char* codec = nullptr)
{
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    {
        CPLXMLWriter writer(&device, codec ? QTextCodec::codecForName(codec) : nullptr);
        use(writer);
    }
    return device.data();
}

int messages = 0;

void countMessage(QtMsgType, const QMessageLogContext&, const QString&)
{
    ++messages;
}

} // namespace

class TestXmlWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void output_data()
    {
        QTest::addColumn<Use>("use");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char* name, const Use& use, const char* expected) {
            support::row(name, use, QByteArray(expected));
        };

        row(
            "attributes in UTF-16 order, escaped; text; nesting",
            [](CPLXMLWriter& writer) {
                writer.setAutoNewLine(true);
                writer.writeOpenTag(a, {});
                writer.writeAtomTag(b, AttrMap{{"yc"_s, "2"_s}, {"Xc"_s, "1<"_s}, {"X.c"_s, "&lt;"_s}});
                writer.writeTaggedString("c"_s, "t&t"_s, {});
                writer.writeCloseTag(a);
            },
            "<a>\n    <b X.c=\"&amp;lt;\" Xc=\"1&lt;\" yc=\"2\"/>\n    <c>t&amp;t</c>\n</a>\n");
        row(
            "only five characters are escaped",
            [](CPLXMLWriter& writer) { writer.writeString("a<b & 'c' > \"d\"\t\u00e9\n"_s); },
            "a&lt;b &amp; &apos;c&apos; &gt; &quot;d&quot;\t\xC3\xA9\n");
        row(
            "names are written as given",
            [](CPLXMLWriter& writer) {
                writer.writeAtomTag("<"_s, AttrMap{{"&"_s, a}});
            },
            "<< &=\"a\"/>");
        row(
            "lines end only when asked",
            [](CPLXMLWriter& writer) {
                writer.writeOpenTag(a, {});
                writer.writeOpenTag(b, {});
                writer.newLine();
                writer.writeAtomTag(b, {});
                writer.writeRaw(a);
            },
            "<a><b>\n        <b/>a");
        row(
            "a step left behind",
            [](CPLXMLWriter& writer) {
                writer.setAutoNewLine(true);
                writer.writeOpenTag(a, {});
                writer.setIndentSize(2);
                writer.writeCloseTag(a);
                writer.setIndentSize(-1);
                writer.writeOpenTag(b, {});
                writer.writeCloseTag(b);
                writer.setIndentSize(4);
                writer.writeCloseTag(b);
            },
            "<a>\n  </a>\n  <b>\n  </b>\n</b>\n");
        row(
            "raw text takes the indentation of its line",
            [](CPLXMLWriter& writer) {
                writer.setAutoNewLine(true);
                writer.writeOpenTag(a, {});
                writer.writeRaw("<!-- -->"_s);
                writer.writeAtomTag(b, {});
                writer.writeRaw("x"_s);
            },
            "<a>\n<!-- --><b/>\nx\n");
    }

    void output()
    {
        QFETCH(Use, use);
        QFETCH(QByteArray, expected);
        QCOMPARE(written(use), expected);
    }

    void encodings()
    {
        const Use use = [](CPLXMLWriter& writer) { writer.writeRaw("\u00e9"_s); };
        QCOMPARE(written(use, "UTF-8"), QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n\xC3\xA9"));
        QCOMPARE(written(use, "ISO-8859-1"), QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n\xE9"));
        const QByteArray utf16 = written(use, "UTF-16LE");
        QVERIFY2(utf16.startsWith(QByteArray("<\0?\0", 4)), "no byte-order mark");
        QVERIFY(utf16.endsWith(QByteArray("\n\0\xE9\0", 4)));
        const Use face = [](CPLXMLWriter& writer) { writer.writeString("\U0001F600&\U0001F600"_s); };
        for (const char* codec : {"UTF-32", "UTF-32BE", "UTF-32LE"}) {
            const QByteArray utf32 = written(face, codec);
            QVERIFY(QTextCodec::codecForName(codec)->toUnicode(utf32).endsWith("\"?>\n\U0001F600&amp;\U0001F600"_s));
        }
    }

    void aFinishedLineIsOnTheDevice()
    {
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        CPLXMLWriter writer(&device, nullptr);
        writer.setAutoNewLine(true);
        writer.writeAtomTag(a, {});
        QCOMPARE(device.data(), QByteArray("<a/>\n"));
    }

    void aClosedDeviceLosesTextSilently()
    {
        QBuffer device;
        const QtMessageHandler before = qInstallMessageHandler(countMessage);
        {
            CPLXMLWriter writer(&device, QTextCodec::codecForName("UTF-8"));
            writer.writeAtomTag(a, {});
            writer.newLine();
        }
        qInstallMessageHandler(before);
        QCOMPARE(messages, 0);
        QVERIFY(device.data().isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestXmlWriter)
#include "tst_plxmlwriter.moc"
