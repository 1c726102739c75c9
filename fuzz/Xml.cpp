// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Support.h"

#include <QtCore/QBuffer>

using namespace fuzz;

namespace {

constexpr int deepest = 256;

/** White space as a parser hands it on: in attributes a line end is a blank. */
QString plain(const QString& text)
{
    return text.simplified();
}

void checkAttributes(const CPLXMLReader& reader, const QDomElement& element)
{
    int count = -1;
    reader.getAttributeCount(element, count);
    const QDomNamedNodeMap attributes = element.attributes();
    require(count == attributes.count(), "attributes are counted");
    for (int i = 0; i < count; ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        require(reader.doesElementContainAttribute(element, attribute.name()), "a name is known");
        require(reader.getAttributeValue(element, attribute.name()) == attribute.value(),
                "a value is the attribute's");
    }
    QString text;
    reader.getTextDataofElement(element, text);
    require(reader.isTextDataPresent(element) == !text.isEmpty(), "text is present or empty");
}

/** Walks a tree and checks that every move between neighbours has its way back. */
void walk(CPLXMLReader& reader, const QDomElement& element, int depth)
{
    require(depth <= deepest, "nesting is limited");
    checkAttributes(reader, element);
    int count = 0;
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        ++count;
        if (!node.isElement())
            continue;
        const QDomElement child = node.toElement();
        require(reader.getParentElement(child) == element, "a child has its parent");
        require(reader.getCurrentElement() == element, "the cursor follows");
        const QDomElement next = reader.getNextSiblingElement(child);
        require(next.isNull() || reader.getPreviousSiblingElement(next) == child,
                "a sibling leads back");
        walk(reader, child, depth + 1);
    }
    require(reader.getChildElementCount(element) == count, "children are counted");
    const QDomElement last = reader.getLastChild(element);
    require(last.isNull() || reader.getSiblingElementCount(last) == count, "siblings, too");
}

void write(CPLXMLWriter& writer, const QDomElement& element)
{
    AttrMap attributes;
    const QDomNamedNodeMap nodes = element.attributes();
    for (int i = 0; i < nodes.count(); ++i)
        attributes.insert(nodes.item(i).toAttr().name(), nodes.item(i).toAttr().value());
    QDomElement child = element.firstChildElement();
    if (child.isNull())
        return writer.writeTaggedString(element.tagName(), element.text(), attributes);
    writer.writeOpenTag(element.tagName(), attributes);
    for (; !child.isNull(); child = child.nextSiblingElement())
        write(writer, child);
    writer.writeCloseTag(element.tagName());
}

void compare(const QDomElement& a, const QDomElement& b)
{
    require(a.tagName() == b.tagName(), "a written tag is read back");
    const QDomNamedNodeMap attributes = a.attributes();
    require(attributes.count() == b.attributes().count(), "written attributes are read back");
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        require(plain(b.attribute(attribute.name())) == plain(attribute.value()),
                "a written value is read back");
    }
    QDomElement childOfA = a.firstChildElement();
    QDomElement childOfB = b.firstChildElement();
    require(!childOfA.isNull() || plain(a.text()) == plain(b.text()), "written text is read back");
    for (; !childOfA.isNull(); childOfA = childOfA.nextSiblingElement()) {
        require(!childOfB.isNull(), "a written element is read back");
        compare(childOfA, childOfB);
        childOfB = childOfB.nextSiblingElement();
    }
    require(childOfB.isNull(), "no element is added");
}

void checkWriter(const QDomElement& root)
{
    QBuffer buffer;
    require(buffer.open(QIODevice::WriteOnly), "a buffer opens");
    {
        CPLXMLWriter writer(&buffer, nullptr);
        writer.setAutoNewLine(true);
        write(writer, root);
    }
    CPLXMLReader reader;
    QString message;
    const QString path = temporaryFile("Written.xml"_s, buffer.data());
    require(reader.createXMLDocumentFormFile(path, &message, nullptr, nullptr),
            "a written document can be read");
    reader.setRootElement();
    compare(root, reader.getRootElement());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    CPLXMLReader reader;
    QString message;
    int line = 0;
    int column = 0;
    const QString path = temporaryFile("Document.xml"_s, bytes);
    const bool loaded = reader.createXMLDocumentFormFile(path, &message, &line, &column);
    reader.setRootElement();
    require(loaded == message.isEmpty(), "a refusal has a reason");
    const QDomElement root = reader.getRootElement();
    require(reader.getRootElementTag() == root.tagName(), "the root has its tag");
    require(!loaded || !root.isNull(), "a document has a root");
    CPLXMLReader copy(reader);
    reader = CPLXMLReader();
    for (int moves = 0; !copy.getNextChildElement().isNull(); ++moves)
        require(moves < deepest, "the cursor comes to an end");
    walk(copy, root, 1);
    if (loaded)
        checkWriter(root);
    return 0;
}
