// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLXMLReader.h"

#include "PLKeywords.h"
#include "internal/text/Guard.h"
#include "internal/text/TextFile.h"
#include "internal/text/XmlGuard.h"

#include <QtCore/QFile>

using namespace ovparser::internal;

namespace {

/** The topmost ancestor: the document, or the top of a tree that has lost its document. */
QDomNode topOf(QDomNode node)
{
    for (QDomNode parent = node.parentNode(); !parent.isNull(); parent = parent.parentNode())
        node = parent;
    return node;
}

// A node that has outlived its parent still points at siblings that are gone.
QDomNode nextSibling(const QDomNode& node)
{
    return node.parentNode().isNull() ? QDomNode() : node.nextSibling();
}

QDomNode previousSibling(const QDomNode& node)
{
    return node.parentNode().isNull() ? QDomNode() : node.previousSibling();
}

int childCount(const QDomNode& node)
{
    int count = 0;
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
        ++count;
    return count;
}

template <typename T>
void store(const T& value, T* out)
{
    if (out != nullptr)
        *out = value;
}

} // namespace

CPLXMLReader::CPLXMLReader() = default;
CPLXMLReader::CPLXMLReader(const CPLXMLReader& other) = default;
CPLXMLReader& CPLXMLReader::operator=(const CPLXMLReader& other) = default;
CPLXMLReader::~CPLXMLReader() = default;

bool CPLXMLReader::createXMLDocumentFormFile(QString fileName, QString* errorMsg, int* errorLine,
                                             int* errorColumn)
{
    return answerOf([&] {
        document = QDomDocument(PLKeyword::Xml::EmptyDocument);
        QFile file(fileName);
        if (!openToRead(file))
            return false;
        QString text;
        if (const auto hazard = readXml(file, &text)) {
            store(hazard->message, errorMsg);
            store(hazard->line, errorLine);
            store(hazard->column, errorColumn);
            return false;
        }
        return document.setContent(text, false, errorMsg, errorLine, errorColumn);
    });
}

void CPLXMLReader::setRootElement()
{
    rootElement = document.documentElement();
    rootTree = document;
    rootTag = rootElement.tagName();
    setCurrentNode();
}

QDomElement CPLXMLReader::getRootElement() const
{
    return rootElement;
}

void CPLXMLReader::getRootElement(QDomElement& out) const
{
    out = rootElement;
}

QString CPLXMLReader::getRootElementTag() const
{
    return rootTag;
}

void CPLXMLReader::getRootElementTag(QString& out) const
{
    out = rootTag;
}

QDomElement CPLXMLReader::getCurrentElement() const
{
    return currentElement;
}

QString CPLXMLReader::getCurrentElementTag() const
{
    return currentElement.tagName();
}

int CPLXMLReader::getChildElementCount(QDomElement e) const
{
    return childCount(e);
}

int CPLXMLReader::getSiblingElementCount(QDomElement e) const
{
    return childCount(e.parentNode());
}

bool CPLXMLReader::doesElementContainAttribute(QDomElement e, QString name) const
{
    return answerOf([&] { return e.hasAttribute(name); });
}

void CPLXMLReader::getAttributeCount(QDomElement e, int& count) const
{
    count = answerOf([&] { return int(e.attributes().count()); });
}

QString CPLXMLReader::getAttributeValue(QDomElement e, QString name) const
{
    return answerOf([&] {
        const QString value = e.attribute(name);
        return value.isNull() ? QString(PLKeyword::Value::Empty) : value;
    });
}

bool CPLXMLReader::isTextDataPresent(QDomElement e) const
{
    return answerOf([&] { return !e.text().isEmpty(); });
}

void CPLXMLReader::getTextDataofElement(QDomElement e, QString& text) const
{
    text = answerOf([&] { return e.text(); });
}

QDomElement CPLXMLReader::getFirstChild(QDomElement e)
{
    return moveTo(e, e.firstChild());
}

QDomElement CPLXMLReader::getLastChild(QDomElement e)
{
    return moveTo(e, e.lastChild());
}

QDomElement CPLXMLReader::getParentElement(QDomElement e)
{
    return moveTo(e, e.parentNode());
}

QDomElement CPLXMLReader::getNextSiblingElement(QDomElement e)
{
    return moveTo(e, nextSibling(e));
}

QDomElement CPLXMLReader::getPreviousSiblingElement(QDomElement e)
{
    return moveTo(e, previousSibling(e));
}

QDomElement CPLXMLReader::getNextChildElement()
{
    return moveToElementFrom(currentNode.firstChild());
}

QDomElement CPLXMLReader::getNextSiblingElement()
{
    return moveToElementFrom(nextSibling(currentNode));
}

void CPLXMLReader::setCurrentNode()
{
    const QDomNode first = rootElement.firstChild();
    setCurrentNode(first);
    if (first.isElement())
        setCurrentElement(first.toElement());
}

void CPLXMLReader::setCurrentNode(QDomNode node)
{
    currentNode = node;
    nodeTree = topOf(node);
}

// The current node was set just before, in the same tree.
void CPLXMLReader::setCurrentElement(QDomElement element)
{
    currentElement = element;
    elementTree = nodeTree;
}

QDomElement CPLXMLReader::moveTo(const QDomNode& from, const QDomNode& node)
{
    if (!node.isElement())
        return {};
    // A neighbour of the current node is in its tree: no step of a walk looks for the top.
    if (from != currentNode)
        nodeTree = topOf(node);
    currentNode = node;
    setCurrentElement(node.toElement());
    return currentElement;
}

QDomElement CPLXMLReader::moveToElementFrom(QDomNode node)
{
    while (!node.isNull() && !node.isElement()) {
        node = nextSibling(node);
        currentNode = node;
    }
    return moveTo(currentNode, node);
}
