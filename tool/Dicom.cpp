// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Dicom.h"

#include "PLKeywords.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <cstring>

namespace {

constexpr int preambleSize = 128;
constexpr int headSize = 8; ///< the shortest head of an element
constexpr quint32 undefinedLength = 0xFFFFFFFF;

// Tags as numbers in the order of the elements.
constexpr quint32 transferSyntax = 0x00020010;
constexpr quint32 item = 0xFFFEE000;
constexpr quint32 sequenceEnd = 0xFFFEE0DD;
constexpr quint32 delimiters = 0xFFFE;

constexpr char implicitSyntax[] = "1.2.840.10008.1.2";
constexpr const char* otherSyntaxes[] = {
    "1.2.840.10008.1.2.1.99", // deflated
    "1.2.840.10008.1.2.2",    // big-endian
};

constexpr char representations[][3] = {
    "AE", "AS", "AT", "CS", "DA", "DS", "DT", "FD", "FL", "IS", "LO",
    "LT", "PN", "SH", "SL", "SS", "ST", "TM", "UI", "UL", "US",
};

/** These have two bytes more, and a length of four bytes. */
constexpr char longRepresentations[][3] = {
    "OB", "OD", "OF", "OL", "OV", "OW", "SQ", "SV", "UC", "UN", "UR", "UT", "UV",
};

template <std::size_t N>
bool isOneOf(const char (&names)[N][3], const char* text)
{
    return std::any_of(std::begin(names), std::end(names),
                       [&](const char* name) { return std::memcmp(name, text, 2) == 0; });
}

/** The head of a data element. */
struct Head
{
    quint32 tag = 0;
    quint32 length = 0;
    int size = 0;
};

class ElementWalk
{
public:
    explicit ElementWalk(const QByteArray& bytes)
        : m_bytes(bytes)
        , m_place(preambleSize + 4)
    {}

    std::optional<int> end();

private:
    [[nodiscard]] quint32 number(int place) const;
    [[nodiscard]] std::optional<Head> head() const;
    bool readSyntax(const Head& head);
    bool pass(const Head& head);

    const QByteArray& m_bytes;
    int m_place;
    int m_depth = 0; ///< how many sequences of undefined length are open
    quint32 m_last = 0;
    bool m_explicit = true; ///< of the data set; the group of the file itself always is
};

quint32 ElementWalk::number(int place) const
{
    return qFromLittleEndian<quint32>(m_bytes.constData() + place);
}

/** The head at the place; nothing when no element can begin there. */
std::optional<Head> ElementWalk::head() const
{
    if (m_place + headSize > m_bytes.size())
        return std::nullopt;
    const char* const bytes = m_bytes.constData() + m_place;
    const quint32 tag = number(m_place) << 16U | number(m_place) >> 16U;
    const quint32 group = tag >> 16U;
    if (group == delimiters || (!m_explicit && group != 2))
        return Head{tag, number(m_place + 4), headSize};
    if (isOneOf(representations, bytes + 4))
        return Head{tag, qFromLittleEndian<quint16>(bytes + 6), headSize};
    if (!isOneOf(longRepresentations, bytes + 4) || m_place + 12 > m_bytes.size())
        return std::nullopt;
    return Head{tag, number(m_place + headSize), 12};
}

/** False for a syntax that cannot be followed. */
bool ElementWalk::readSyntax(const Head& head)
{
    QByteArray syntax = m_bytes.mid(m_place + head.size, int(head.length));
    syntax = syntax.mid(0, syntax.indexOf('\0')).trimmed();
    m_explicit = syntax != implicitSyntax;
    return std::none_of(std::begin(otherSyntaxes), std::end(otherSyntaxes),
                        [&](const char* other) { return syntax == other; });
}

/** Goes to what follows the head or the element; false when that is beyond the end. */
bool ElementWalk::pass(const Head& head)
{
    const bool holds = head.length == undefinedLength && head.tag != item;
    if (holds)
        ++m_depth;
    else if (head.tag == sequenceEnd)
        --m_depth;
    const qint64 length = head.length == undefinedLength ? 0 : qint64(head.length);
    const qint64 next = m_place + head.size + length;
    if (next > m_bytes.size() || m_depth < 0)
        return false;
    m_place = int(next);
    return true;
}

std::optional<int> ElementWalk::end()
{
    while (const auto next = head()) {
        const bool inOrder = m_depth > 0 || (next->tag > m_last && next->tag >> 16U != delimiters);
        const Head element = *next;
        if (!inOrder)
            break;
        if (element.tag == transferSyntax && !readSyntax(element))
            return std::nullopt;
        const int before = m_depth;
        if (!pass(element))
            break;
        if (before == 0)
            m_last = element.tag;
    }
    return m_depth == 0 ? std::optional(m_place) : std::nullopt;
}

} // namespace

std::optional<int> dataSetEnd(const QByteArray& bytes)
{
    return isDicom(bytes) ? ElementWalk(bytes).end() : std::nullopt;
}

bool isDicom(const QByteArray& bytes)
{
    return bytes.mid(preambleSize, 4) == "DICM";
}

std::optional<int> appendedText(const QByteArray& bytes)
{
    const QByteArray header =
        QByteArray(PLKeyword::Text::Marker.data()) + PLKeyword::Section::ClickNumber.data() + ':';
    const auto start = bytes.toLower().lastIndexOf(header.toLower());
    return start < 0 ? std::nullopt : std::optional(int(start));
}
