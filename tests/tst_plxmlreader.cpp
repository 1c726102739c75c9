// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include "internal/text/QtVersion.h"

#include <QTextCodec>

#include <memory>

using namespace ovparser::internal;

namespace {

/** Elements of all kinds of neighbours: text, CDATA, comment, instruction. */
const QByteArray mixed = "<a>\n <b x='1' y=''>t<i>u</i><![CDATA[v]]></b> <!-- --> <?p?> <c/>\n"
                         " <d/> <!-- -->\n</a>";

} // namespace

class TestXmlReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void withoutDocument()
    {
        CPLXMLReader reader;
        reader.setRootElement();
        QVERIFY(reader.getRootElement().isNull());
        QCOMPARE(reader.getRootElementTag(), QString());
        QVERIFY(reader.getNextChildElement().isNull() && reader.getNextSiblingElement().isNull());
        QVERIFY(reader.getParentElement({}).isNull() && reader.getNextSiblingElement({}).isNull());
        QCOMPARE(reader.getChildElementCount({}) + reader.getSiblingElementCount({}), 0);
        QVERIFY(!reader.isTextDataPresent({}) && !reader.doesElementContainAttribute({}, {}));
        QVERIFY(!reader.getAttributeValue({}, "x"_s).isNull());
    }

    void queries()
    {
        CPLXMLReader reader;
        QVERIFY(load(reader, mixed));
        const QDomElement root = reader.getRootElement();
        const QDomElement b = reader.getCurrentElement();
        QCOMPARE(reader.getRootElementTag(), "a"_s);
        QCOMPARE(reader.getCurrentElementTag(), "b"_s);
        QCOMPARE(reader.getChildElementCount(root), 6);
        QCOMPARE(reader.getSiblingElementCount(b), 6);
        QCOMPARE(reader.getSiblingElementCount(root), 1);
        int count = -1;
        reader.getAttributeCount(b, count);
        QCOMPARE(count, 2);
        reader.getAttributeCount(root, count);
        QCOMPARE(count, 0);
        QVERIFY(reader.doesElementContainAttribute(b, "y"_s));
        QVERIFY(!reader.doesElementContainAttribute(b, "X"_s));
        QCOMPARE(reader.getAttributeValue(b, "x"_s), "1"_s);
        for (const char* name : {"y", "z"}) {
            const QString value = reader.getAttributeValue(b, QLatin1String(name));
            QVERIFY(value.isEmpty() && !value.isNull());
        }
        QString text;
        reader.getTextDataofElement(b, text);
        QCOMPARE(text, "tuv"_s);
        QVERIFY(reader.isTextDataPresent(root));
        QCOMPARE(reader.getCurrentElement(), b);
    }

    void movesFromAnElementLookAtOneNode()
    {
        CPLXMLReader reader;
        QVERIFY(load(reader, mixed));
        const QDomElement root = reader.getRootElement();
        const QDomElement b = reader.getCurrentElement();
        for (const QDomElement& missed :
             {reader.getFirstChild(b), reader.getLastChild(b), reader.getLastChild(root),
              reader.getNextSiblingElement(b), reader.getPreviousSiblingElement(b), reader.getParentElement(root)}) {
            QVERIFY(missed.isNull());
            QCOMPARE(reader.getCurrentElementTag(), "b"_s);
        }
        const QDomElement c = reader.getNextSiblingElement();
        QCOMPARE(c.tagName(), "c"_s);
        QCOMPARE(reader.getNextSiblingElement(c).tagName(), "d"_s);
        QCOMPARE(reader.getCurrentElementTag(), "d"_s);
        QCOMPARE(reader.getPreviousSiblingElement(reader.getCurrentElement()), c);
        QCOMPARE(reader.getParentElement(c), root);
        QCOMPARE(reader.getNextChildElement(), b);
    }

    void movesOfTheCursorPassOverNodes()
    {
        CPLXMLReader reader;
        QVERIFY(load(reader, mixed));
        CPLXMLReader copy(reader);
        QCOMPARE(copy.getNextChildElement().tagName(), "i"_s);
        QVERIFY(copy.getNextChildElement().isNull()); // only text below
        QCOMPARE(copy.getCurrentElementTag(), "i"_s);
        QVERIFY(copy.getNextSiblingElement().isNull()); // and the node is lost now
        QCOMPARE(copy.getCurrentElementTag(), "i"_s);

        QCOMPARE(reader.getNextSiblingElement().tagName(), "c"_s);
        QCOMPARE(reader.getNextSiblingElement().tagName(), "d"_s);
        QVERIFY(reader.getNextChildElement().isNull()); // no child: the cursor stays
        QVERIFY(reader.getNextSiblingElement().isNull());
        reader.getFirstChild(reader.getRootElement());
        QCOMPARE(reader.getNextSiblingElement().tagName(), "c"_s);
    }

    void failures()
    {
        CPLXMLReader reader;
        QVERIFY(load(reader, mixed));
        QString message = "untouched"_s;
        int line = -1;
        int column = -1;
        const QString missing = m_folder.filePath("missing"_s);
        QVERIFY(!reader.createXMLDocumentFormFile(missing, &message, &line, &column));
        QCOMPARE(message, "untouched"_s);
        QCOMPARE(line + column, -2);
        QCOMPARE(reader.getRootElementTag(), "a"_s);
        QCOMPARE(reader.getNextSiblingElement().tagName(), "c"_s);

        QVERIFY(!reader.createXMLDocumentFormFile(stored("<a>\n<b></c></a>"), &message, &line, &column));
        QVERIFY(message != "untouched"_s);
        QCOMPARE(line, 2);
        QVERIFY(column > 3);

        QVERIFY(!reader.createXMLDocumentFormFile(missing, nullptr, nullptr, nullptr));
        reader.setRootElement();
        QVERIFY(reader.getRootElement().isNull() && reader.getNextSiblingElement().isNull());
    }

    void encodings_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QString plain = "<a>\u00e9\u03b1</a>"_s;
        const QByteArray utf8 = plain.toUtf8();
        const auto coded = [&](const char* name) {
            const QTextCodec* codec = QTextCodec::codecForName(name);
            return std::unique_ptr<QTextEncoder>(codec->makeEncoder(QTextCodec::IgnoreHeader))->fromUnicode(plain);
        };
        support::row("UTF-8", utf8);
        support::row("UTF-8 with mark", "\xEF\xBB\xBF" + utf8);
        support::row("unknown name", "<?xml version='1.0' encoding='none'?>" + utf8);
        support::row("declared", "<?xml version='1.0' encoding='GB18030'?>" + coded("GB18030"));
        support::row("UTF-16 with mark", "\xFF\xFE" + coded("UTF-16LE"));
        support::row("big end first", "\xFE\xFF" + coded("UTF-16BE"));
        support::row("UTF-16 without mark", coded("UTF-16LE"));
        support::row("UTF-32 with mark", QByteArray("\xFF\xFE\0\0", 4) + coded("UTF-32LE"));
    }

    void encodings()
    {
        QFETCH(QByteArray, bytes);
        CPLXMLReader reader;
        QVERIFY(load(reader, bytes));
        QString text;
        reader.getTextDataofElement(reader.getRootElement(), text);
        QCOMPARE(text, "\u00e9\u03b1"_s);
    }

    void lineEndsOfText()
    {
        CPLXMLReader reader;
        QVERIFY(load(reader, "<a x='1\n2'>1\r\n2</a>"));
        QString text;
        reader.getTextDataofElement(reader.getRootElement(), text);
        QCOMPARE(text, strictXml ? "1\n2"_s : "1\r\n2"_s);
        QCOMPARE(reader.getAttributeValue(reader.getRootElement(), "x"_s), strictXml ? "1 2"_s : "1\n2"_s);
    }

    void references_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        const QString face = "\U0001F600"_s;
        const QString name = "&#x1F600;"_s;
        support::row("in a text", QByteArray("<a>[&#x1F600;&#128512;&#x0001f600;]</a>"),
                     "["_s + face + face + face + "]"_s);
        support::row("in an attribute", QByteArray("<a x='&#x1F600;&amp;&#65;'>&#x3b1;</a>"), face + "&A\u03b1"_s);
        support::row("the first and the last beyond the basic plane", QByteArray("<a>&#65533;&#65536;&#x10FFFF;</a>"),
                     "\uFFFD\U00010000\U0010FFFF"_s);
        support::row("where they are none",
                     QByteArray("<a><![CDATA[&#x1F600;]]><!--&#x1F600;--><?p &#x1F600;?>&amp;#x1F600;</a>"),
                     name + name + name + name);
        support::row("in an entity, through another",
                     QByteArray("<!DOCTYPE a [<!ENTITY q '&#x1F600;'><!ENTITY r '&q;A'>]><a x='&r;'>&r;</a>"),
                     face + "A"_s + face + "A"_s);
        support::row("in an entity, escaped",
                     QByteArray("<!DOCTYPE a [<!ENTITY q '&#38;#x1F600;&#x26;#128512;&#38;#38;#x1F600;'>]><a>&q;</a>"),
                     face + face + name);
        support::row("in UTF-16", QByteArray("\xFF\xFE<\0a\0>\0&\0#\0x\0001\0F\0006\0000\0000\0;\0<\0/\0a\0>\0", 34),
                     face);
    }

    void references()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        CPLXMLReader reader;
        QVERIFY(load(reader, bytes));
        QString text = reader.getAttributeValue(reader.getRootElement(), "x"_s);
        for (QDomNode node = reader.getRootElement().firstChild(); !node.isNull(); node = node.nextSibling())
            text += node.nodeValue();
        QCOMPARE(text, expected);
    }

    void hostileFiles_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("loads");
        QTest::addColumn<int>("column");
        const auto row = [](const char* name, const QByteArray& bytes, bool loads, int column = 0) {
            support::row(name, bytes, loads, column);
        };
        const auto nested = [](int depth) {
            return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
        };
        const auto withSubset = [](const QByteArray& subset, const QByteArray& rest) {
            return "<!DOCTYPE a [" + subset + "]>" + rest;
        };
        row("deep", nested(256), true);
        row("too deep", nested(257), false, 3 * 257);
        row("a million open", QByteArray("<a>").repeated(1000000), false, 3 * 257);
        row("hidden by an encoding",
            "<?xml version='1.0' encoding='UTF-7'?>" + QByteArray("+ADw-a+AD4-").repeated(100000), false);
        const QByteArray decoys = QByteArray("<!-- </a></a> --><?p </a></a>?><![CDATA[</a></a>]]>"
                                             "<a x='/>' y=\"</a>\">");
        row("hidden by decoys", decoys.repeated(100000), false);
        const QByteArray tag = QByteArray("<a> ").repeated(1000);
        row("tags that are none",
            withSubset("<!-- ' ]>" + tag + "--><!ELEMENT a ANY>", "<a><!--" + tag + "--><?p " + tag + "?><![CDATA[" +
                                                                      tag + "]]>" +
                                                                      QByteArray("<b x='>'/>").repeated(1000) + "</a>"),
            true);
        row(
            "a million attributes' tenth",
            [] {
                QByteArray bytes = "<a";
                for (int i = 0; i < 100000; ++i)
                    bytes += " x" + QByteArray::number(i) + "='1'";
                return bytes + "/>";
            }(),
            !strictXml);
        for (const char* text : {"<a x='1' x='2'/>", "<a x='1'y='2'/>", "<a>&none;</a>", "<?xml version='1.1'?><a/>",
                                 "<!DOCTYPE a [<!ENTITY q SYSTEM 'u?a&b'>]><a/>"})
            row(text, text, !strictXml);
        const QByteArray attribute = "<!ATTLIST a x CDATA '" + QByteArray(1000, 'd') + "'>";
        row("default, often", withSubset(attribute, "<r>" + QByteArray("<a/>").repeated(2000) + "</r>"), !strictXml);
        row("many defaults", withSubset(attribute.repeated(2000), "<a/>"), !strictXml);

        row("plain entity", withSubset("<!ENTITY q 'a&#160;b'>", "<a>&q;&amp;</a>"), true);
        row("nested entities", withSubset("<!ENTITY q 'qq'><!ENTITY r '&q;&q;'>", "<a>&r;</a>"), true);
        const QByteArray laughs = [] {
            QByteArray bytes = "<!ENTITY e0 'lol'>";
            for (int i = 1; i < 10; ++i)
                bytes += "<!ENTITY e%1 '&e%2;&e%2;'>"_s.arg(i).arg(i - 1).toLatin1();
            return bytes;
        }();
        const QByteArray unused = laughs + "<!ENTITY m '<b/>'><!ENTITY % p 'q'><!ENTITY i '&i;'><!ENTITY j 'j'>";
        row("entities that would be refused, unused", withSubset(unused, "<a>&j;<!--&m;--><![CDATA[&e9;]]></a>"), true);
        for (const char* reference : {"&m;", "&i;", "&n;"})
            row(qPrintable("used in a text: %1"_s.arg(QLatin1String(reference))),
                withSubset(unused + "<!ENTITY n '&j;&m;'>", "<a>" + QByteArray(reference) + "</a>"), false);
        const QByteArray often = QByteArray("&e9;").repeated(1000);
        row("used often in a text", withSubset(laughs, "<a>" + often + "</a>"), false);
        row("used often in an attribute", withSubset(laughs, "<a x='" + often + "'/>"), false);
        row("used often in a default", withSubset(laughs + "<!ATTLIST a x CDATA '" + often + "'>", "<a/>"), false);
        row("entities without text, used often",
            withSubset("<!ENTITY e ''><!ENTITY f '" + QByteArray("&e;").repeated(20000) + "'>",
                       "<a>" + QByteArray("&f;").repeated(1000) + "</a>"),
            false);
        row("many references",
            withSubset("<!ENTITY q '" + QByteArray(30, 'q') + "'>", "<a>" + QByteArray("&q;").repeated(40000) + "</a>"),
            true);
        row("four and a half million elements", "<a>" + QByteArray("x<a/>").repeated(4500000) + "</a>", false);
        row("entity that opens an element",
            withSubset("<!ENTITY q '<b>'>", "<a>" + QByteArray("&q;").repeated(1000000)), false);
        row("the same in disguise", withSubset("<!ENTITY q \"&#x3C;b>\">", "<a>" + QByteArray("&q;").repeated(1000000)),
            false);
        row("long entity, often",
            withSubset("<!ENTITY q '" + QByteArray(4000, 'q') + "'>",
                       "<a>" + QByteArray("&q;").repeated(20000) + "</a>"),
            false);
        row("many entities", withSubset(QByteArray("<!ENTITY q 'q'>").repeated(100000), "<a/>"), false);
        row("parameter entity", withSubset("<!ENTITY % p 'q'>%p;", "<a/>"), false);
        row("parameter entity in a value", withSubset("<!ENTITY % p 'q'><!ENTITY q '%p;'>", "<a/>"), false);
        row("parameter entity named SYSTEM", withSubset("<!ENTITY % SYSTEM 'q'>%SYSTEM;", "<a/>"), false);
        row("long entity, often in a default",
            withSubset("<!ENTITY q '" + QByteArray(4000, 'q') + "'><!ATTLIST a b CDATA '" +
                           QByteArray("&q;").repeated(20000) + "'>",
                       "<a/>"),
            false);
        for (const int depth : {256, 257, 100000})
            row(qPrintable("content model %1 deep"_s.arg(depth)),
                withSubset("<!ELEMENT a " + QByteArray(depth, '(') + "b" + QByteArray(depth, ')') + ">", "<a/>"),
                depth == 256);
        row("many declarations that are none", QByteArray("<!>").repeated(100000), false);
        for (const char* value : {"<b>", "&SYSTEM;", "&#38;SYSTEM;", "&#38;r", "&#0060;", "&#xA1F000;",
                                  "&#99999999999999999999;", "&#x00000000000000000003C;", "&#38;#x1F6&#48;0;"})
            row(value, withSubset("<!ENTITY r 'r'><!ENTITY SYSTEM \"" + QByteArray(value) + "\">", "<a>&SYSTEM;;</a>"),
                false);
        for (const char* value : {"R&amp;D", "&lt;b>", "&#38;#38;r;", "&#x3b1;&#65533;", "100&#37;", "&r;", "&#38;r;",
                                  "&#x0026;r;", "&#65574;r;", "&#65596;b>", "&#x1003C;b>"})
            row(value, withSubset("<!ENTITY r 'r'><!ENTITY q \"" + QByteArray(value) + "\">", "<a>&q;</a>"), true);
        row("predefined entities",
            withSubset("<!ENTITY lt '&#38;#60;'><!ENTITY amp '&#38;#38;'><!ENTITY gt '&#62;'><!ENTITY apos '&#39;'>"
                       "<!ENTITY quot '&#34;'><!ENTITY q '" +
                           QByteArray(4000, 'q') + "'>",
                       "<a>" + QByteArray("&lt;&#65;").repeated(20000) + "</a>"),
            true);
        const QByteArray address = "'" + QByteArray(4000, 'u') + "?a;b%20c'";
        row("addresses",
            withSubset("<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM " + address + " NDATA n><!ENTITY f PUBLIC 'p' " +
                           address + "><!ENTITY % p SYSTEM " + address + ">%p;<!ELEMENT a ((b|c)*)>",
                       "<a>" + QByteArray("&f;").repeated(1000) + "</a>"),
            true);

        const QByteArray whole = support::readFile(support::example("spectral/Spectral.xml"));
        for (const int size : {0, 1, 50, 500, int(whole.size()) - 5})
            row(qPrintable("cut at %1"_s.arg(size)), whole.left(size), false);
        row("quote never closed", "<a x='" + QByteArray(1000000, '<'), false);
        row("subset never closed", "<!DOCTYPE a [<!ENTITY q '", false);
        row("zeros", QByteArray(1000000, '\0'), false);
        row("binary", "<\x89PNG\r\n\x1A\n" + QByteArray(1000, '\xFF'), false);
    }

    void hostileFiles()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, loads);
        QFETCH(int, column);
        CPLXMLReader reader;
        QString message;
        int line = 0;
        int foundColumn = 0;
        QCOMPARE(reader.createXMLDocumentFormFile(stored(bytes), &message, &line, &foundColumn), loads);
        QCOMPARE(message.isEmpty(), loads);
        if (column > 0)
            QCOMPARE(foundColumn, column);
    }

    void externalEntitiesAreNotFetched()
    {
        const QByteArray secret = stored("secret", "secret").toUtf8();
        CPLXMLReader reader;
        QVERIFY(load(reader, "<!DOCTYPE a [<!ENTITY q SYSTEM 'file://" + secret + "'>]><a>[&q;]</a>"));
        QString text;
        reader.getTextDataofElement(reader.getRootElement(), text);
        QCOMPARE(text, "[]"_s);
    }

    void handlesOutliveALoad()
    {
        auto reader = std::make_unique<CPLXMLReader>();
        QVERIFY(load(*reader, mixed));
        QVERIFY(reader->createXMLDocumentFormFile(stored("<z>text</z>"), nullptr, nullptr, nullptr));
        QCOMPARE(reader->getSiblingElementCount(reader->getCurrentElement()), 6);
        QCOMPARE(reader->getNextSiblingElement().tagName(), "c"_s);
        reader->setRootElement(); // its first child is no element: the current one stays
        QCOMPARE(reader->getCurrentElementTag(), "c"_s);
        QCOMPARE(reader->getParentElement(reader->getCurrentElement()).tagName(), "a"_s);
        reader->getFirstChild(reader->getCurrentElement());
        reader->getNextSiblingElement();

        CPLXMLReader copy;
        copy = *reader;
        const QDomElement kept = reader->getCurrentElement();
        QVERIFY(load(*reader, "<y><x/></y>"));
        reader.reset();
        QCOMPARE(copy.getRootElementTag(), "z"_s);
        QCOMPARE(copy.getNextSiblingElement(kept).tagName(), "d"_s);
        QVERIFY(load(copy, "<y><x/></y>"));
        // No reader keeps this document any more: what is left of it is the element.
        QVERIFY(copy.getNextSiblingElement(kept).isNull());
        QVERIFY(copy.getPreviousSiblingElement(kept).isNull());
        QVERIFY(copy.getParentElement(kept).isNull() && copy.getFirstChild(kept).isNull());
        QCOMPARE(copy.getSiblingElementCount(kept) + copy.getChildElementCount(kept), 0);
    }

private:
    QString stored(const QByteArray& bytes, const char* name = "file.xml")
    {
        QString path = m_folder.filePath(QLatin1String(name));
        support::writeFile(path, bytes);
        return path;
    }

    bool load(CPLXMLReader& reader, const QByteArray& bytes)
    {
        if (!reader.createXMLDocumentFormFile(stored(bytes), nullptr, nullptr, nullptr))
            return false;
        reader.setRootElement();
        return true;
    }

    QTemporaryDir m_folder;
};

QTEST_APPLESS_MAIN(TestXmlReader)
#include "tst_plxmlreader.moc"
