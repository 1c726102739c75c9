/**
 * @file
 * What an XML file must not hold before it is parsed into a DOM.
 *
 * The DOM parses content models and destroys nested elements recursively, takes time in proportion
 * to the square of the number of entities, and lets their expansion multiply; each crashes or
 * stalls on a small file made for it. The limits lie far above what real files need.
 *
 * Some well-formed declarations are refused too, used or not: entities that hold markup, entities
 * that refer to other declared entities or to characters above U+FFFF, and internal parameter
 * entities. External entities pass, since the DOM never fetches them.
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

/** The largest file, in bytes. The DOM takes about twenty times as much memory. */
inline constexpr int maxXmlBytes = 128 * 1024 * 1024;
/** How deep elements, and groups in a content model, may be nested. */
inline constexpr int maxXmlNesting = 256;
/** How many entities a file may declare. */
inline constexpr int maxXmlEntities = 256;
/** How many characters all references to declared entities may expand to. */
inline constexpr qint64 maxXmlExpansion = 1 << 20;

/** Why a file is refused, and where: line and column count from 1. */
struct XmlHazard
{
    QString message;
    int line = 1;
    int column = 1;
};

/** The text of an XML file, decoded by its byte-order mark, its declaration, or as UTF-8. */
[[nodiscard]] QString decodeXml(const QByteArray& bytes);

/**
 * Looks for a hazard in an XML text, in one pass. Text that is malformed is left to the parser.
 *
 * @return the first hazard; nothing when the text may be parsed
 */
[[nodiscard]] std::optional<XmlHazard> findXmlHazard(const QString& text);

/**
 * Reads the text of an XML file that may be parsed.
 *
 * @param device  open for reading; never more than the largest file is read from it
 * @param text    receives the text
 * @return the hazard for which the file is refused; nothing on success
 */
[[nodiscard]] std::optional<XmlHazard> readXml(QIODevice& device, QString* text);

} // namespace ovparser::internal

#endif
