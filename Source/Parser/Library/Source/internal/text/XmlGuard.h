// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What an XML file must not hold before it is parsed into a DOM.
 *
 * The DOM parses content models and destroys nested elements recursively, takes time in proportion
 * to the square of the number of entities, needs hundreds of bytes for a node, and lets the
 * expansion of entities multiply; each crashes or stalls on a small file made for it. The limits
 * lie far above what real files need.
 *
 * Entities may be declared as XML allows, also in terms of each other. Refused is the use of an
 * entity that holds markup or refers to itself, and of an internal parameter entity. External
 * entities pass, since the DOM never fetches them.
 * Against Qt 6, whose DOM compares the attributes of a tag in pairs and fills in declared defaults,
 * tags with very many attributes and defaults that add up to too much are refused as well.
 */
#ifndef OVPARSER_INTERNAL_XMLGUARD_H
#define OVPARSER_INTERNAL_XMLGUARD_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

class QIODevice;

namespace ovparser::internal {

/** The largest file, in bytes. */
inline constexpr int maxXmlBytes = 128 * 1024 * 1024;
/**
 * How many nodes a document may have: elements, texts, comments and so on; an attribute counts as
 * two. With Qt 5 a document takes 3.1 GiB at most, 25 times the size of the largest file.
 */
inline constexpr qint64 maxXmlNodes = 9'000'000;
/** How deep elements, and groups in a content model, may be nested. */
inline constexpr int maxXmlNesting = 256;
/** How many entities a file may declare. */
inline constexpr int maxXmlEntities = 256;
/**
 * How many characters all references to declared entities may expand to: so many times the length
 * of the text, but always the least number, and never more than the largest file has bytes.
 */
inline constexpr qint64 xmlExpansionFactor = 16;
inline constexpr qint64 minXmlExpansion = 1 << 20;

/** Why a file is refused, and where: line and column count from 1. */
struct XmlHazard
{
    QString message;
    int line = 1;
    int column = 1;
};

/**
 * Reads the text of an XML file that may be parsed. It takes one pass; text that is malformed is
 * left to the parser. References to characters above U+FFFF, which the parser of Qt 5 cuts to 16
 * bits, are resolved wherever XML knows them.
 *
 * @param device  open for reading; never more than the largest file is read from it
 * @param text    receives the text
 * @return the first hazard, for which the file is refused; nothing on success
 */
[[nodiscard]] std::optional<XmlHazard> readXml(QIODevice& device, QString* text);

} // namespace ovparser::internal

#endif
