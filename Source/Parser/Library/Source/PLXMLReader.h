// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * An XML document with a cursor.
 */
#ifndef OVPARSER_PLXMLREADER_H
#define OVPARSER_PLXMLREADER_H

#include "PLExport.h"

#include <QtCore/QString>
#include <QtXml/QDomDocument>
#include <QtXml/QDomElement>
#include <QtXml/QDomNode>

/**
 * Reads an XML file into a DOM and walks it with a cursor: a current node and a current element.
 *
 * The current element is the element that the cursor reached last; the current node may stand on
 * another kind of node. Operations on a null element give 0, false, an empty text or a null
 * element. A copy refers to the same documents and has a cursor of its own. A document lives as
 * long as a reader's root, cursor or latest load belongs to it.
 */
class PARSERLIBRARY_EXPORT CPLXMLReader
{
public:
    /** A reader without a document. */
    CPLXMLReader();

    /** A reader of the same documents with a cursor of its own. */
    CPLXMLReader(const CPLXMLReader& other);

    /** Takes over the documents of another reader and where its cursor stands. */
    CPLXMLReader& operator=(const CPLXMLReader& other);
    ~CPLXMLReader();

    /** @name Loading */
    ///@{

    /**
     * Reads and parses a file. Root and cursor stay in the document read before until
     * setRootElement() is called. Nothing outside the file is ever fetched.
     *
     * Refused like malformed XML are a file of more than 128 MiB or nine million nodes (an
     * attribute counts as two), elements or content models nested deeper than 256, more than 256
     * entities, and references to entities that expand to more than 16 times the file and a million
     * characters. Entities that hold markup or refer to themselves, and internal parameter
     * entities, may be declared, but not used.
     *
     * @param fileName     the file
     * @param errorMsg     receives what is wrong with a malformed file; may be null, as may the
     *                     other two
     * @param errorLine    receives the line of the error, from 1
     * @param errorColumn  receives the column of the error, from 1; a reference by number to a
     *                     character above U+FFFF counts as the two columns of that character
     * @return false for a malformed file, and for one that cannot be opened, which leaves the
     *         output arguments alone
     */
    bool createXMLDocumentFormFile(QString fileName, QString* errorMsg, int* errorLine,
                                   int* errorColumn);

    /**
     * Takes the root element of the document read last and puts the current node on its first
     * child of any kind; the current element moves there only if that child is an element.
     */
    void setRootElement();
    ///@}

    /** @name Root and cursor */
    ///@{

    /** The root element; null until setRootElement(). */
    [[nodiscard]] QDomElement getRootElement() const;
    void getRootElement(QDomElement& out) const; ///< @overload

    /** The tag name of the root element; empty until setRootElement(). */
    [[nodiscard]] QString getRootElementTag() const;
    void getRootElementTag(QString& out) const; ///< @overload

    /** The element that the cursor reached last. */
    [[nodiscard]] QDomElement getCurrentElement() const;

    /** The tag name of the current element. */
    [[nodiscard]] QString getCurrentElementTag() const;
    ///@}

    /** @name Queries of an element; the cursor stays */
    ///@{

    /** Number of child nodes of every kind. */
    [[nodiscard]] int getChildElementCount(QDomElement e) const;

    /** Number of child nodes of every kind of the parent, `e` included; 0 without a parent. */
    [[nodiscard]] int getSiblingElementCount(QDomElement e) const;

    /** Whether the element has an attribute of exactly this name. */
    [[nodiscard]] bool doesElementContainAttribute(QDomElement e, QString name) const;

    /** Number of attributes. */
    void getAttributeCount(QDomElement e, int& count) const;

    /** The value of an attribute; an empty text, never null, when there is no such attribute. */
    [[nodiscard]] QString getAttributeValue(QDomElement e, QString name) const;

    /** Whether the text of the element is not empty. */
    [[nodiscard]] bool isTextDataPresent(QDomElement e) const;

    /** The text and CDATA below the element at any depth, in document order. */
    void getTextDataofElement(QDomElement e, QString& text) const;
    ///@}

    /**
     * @name Moves from an element
     * Each looks at one neighbouring node. If it is an element, the cursor moves there and it is
     * returned; any other node, or none, gives a null element and leaves the cursor.
     */
    ///@{
    QDomElement getFirstChild(QDomElement e);             ///< To the first child.
    QDomElement getLastChild(QDomElement e);              ///< To the last child.
    QDomElement getParentElement(QDomElement e);          ///< To the parent.
    QDomElement getNextSiblingElement(QDomElement e);     ///< To the node after.
    QDomElement getPreviousSiblingElement(QDomElement e); ///< To the node before.
    ///@}

    /**
     * @name Moves of the cursor
     * Each goes to the first element among the children, or among the later siblings, of the
     * current node and returns it, passing over other nodes. When there is none, a null element is
     * returned and the current element stays; the current node becomes null if nodes were passed.
     */
    ///@{
    QDomElement getNextChildElement();   ///< To the first element among the children.
    QDomElement getNextSiblingElement(); ///< To the next element among the siblings.
    ///@}

private:
    PARSERLIBRARY_NO_EXPORT void setCurrentNode();
    PARSERLIBRARY_NO_EXPORT void setCurrentNode(QDomNode node);
    PARSERLIBRARY_NO_EXPORT void setCurrentElement(QDomElement element);
    PARSERLIBRARY_NO_EXPORT QDomElement moveTo(const QDomNode& from, const QDomNode& node);
    PARSERLIBRARY_NO_EXPORT QDomElement moveToElementFrom(QDomNode node);

    QDomDocument document;
    QString rootTag;
    QDomElement rootElement;
    QDomNode currentNode;
    QDomElement currentElement;

    // A handle of a node does not keep its tree alive; a handle of the tree's top does.
    QDomNode rootTree;
    QDomNode nodeTree;
    QDomNode elementTree;
};

#endif
