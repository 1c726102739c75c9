// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Numbers as the files spell them; the program's locale never matters.
 */
#ifndef OVPARSER_INTERNAL_NUMBERFORMAT_H
#define OVPARSER_INTERNAL_NUMBERFORMAT_H

#include <QtCore/QString>

#include <type_traits>

namespace ovparser::internal {

/** Six digits after the point, as printf's "%f": 2.5 gives "2.500000". */
[[nodiscard]] QString fixedText(double value);

/** Four digits after the point: 1.5 gives "1.5000". */
[[nodiscard]] QString fourDecimalText(double value);

/** Six significant digits, shortest form: 1.5 gives "1.5", 1234567 gives "1.23457e+06". */
[[nodiscard]] QString qtGeneralText(double value);

/**
 * Six significant digits as printf's "%g": also "-0", and ties as printf rounds them; but "nan" for
 * every NaN, without a sign.
 */
[[nodiscard]] QString printfGeneralText(double value);

/** The text of a number that a section is given. */
template <typename Number>
[[nodiscard]] QString numberText(Number value)
{
    if constexpr (std::is_floating_point_v<Number>)
        return fixedText(double(value));
    else
        return QString::number(value);
}

/** The number that a text gives: base 10, '.' as decimal point; 0 when it is none. */
template <typename Number>
[[nodiscard]] Number numberIn(const QString& text)
{
    bool ok = false;
    Number number = {};
    if constexpr (std::is_same_v<Number, short>)
        number = text.toShort(&ok);
    else if constexpr (std::is_same_v<Number, int>)
        number = text.toInt(&ok);
    else if constexpr (std::is_same_v<Number, unsigned>)
        number = text.toUInt(&ok);
    else if constexpr (std::is_same_v<Number, long>)
        number = text.toLong(&ok);
    else if constexpr (std::is_same_v<Number, qint64>)
        number = text.toLongLong(&ok);
    else if constexpr (std::is_same_v<Number, float>)
        number = text.toFloat(&ok);
    else
        number = text.toDouble(&ok);
    return ok ? number : Number();
}

template <>
[[nodiscard]] inline bool numberIn<bool>(const QString& text)
{
    return numberIn<int>(text) != 0;
}

} // namespace ovparser::internal

#endif
