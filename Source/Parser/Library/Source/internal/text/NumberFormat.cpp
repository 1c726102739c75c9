// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "NumberFormat.h"

#include <array>
#include <charconv>
#include <cmath>

namespace ovparser::internal {

namespace {

// As printf in the C locale. QString differs: it rounds ties upwards (0.5 of the last digit) and
// drops the sign of a negative zero.
QString printed(double value, std::chars_format format)
{
    constexpr int precision = 6;
    std::array<char, 320> text = {}; // the largest number has 309 digits before the point
    const auto* const end =
        std::to_chars(text.data(), text.data() + text.size(), value, format, precision).ptr;
    return QString::fromLatin1(text.data(), int(end - text.data()));
}

} // namespace

QString fixedText(double value)
{
    return printed(value, std::chars_format::fixed);
}

QString fourDecimalText(double value)
{
    return QString::number(value, 'f', 4);
}

QString qtGeneralText(double value)
{
    return QString::number(value, 'g', 6);
}

QString printfGeneralText(double value)
{
    // An ordinary NaN has its sign bit set on x86, and "-nan" does not read as a number.
    return printed(std::isnan(value) ? std::fabs(value) : value, std::chars_format::general);
}

} // namespace ovparser::internal
