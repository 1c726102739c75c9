/**
 * @file
 * Numbers as the files spell them; the program's locale never matters.
 */
#ifndef OVPARSER_INTERNAL_NUMBERFORMAT_H
#define OVPARSER_INTERNAL_NUMBERFORMAT_H

#include <QtCore/QString>

namespace ovparser::internal {

/** Six digits after the point, as printf's "%f": 2.5 gives "2.500000". */
[[nodiscard]] QString fixedText(double value);

/** Four digits after the point: 1.5 gives "1.5000". */
[[nodiscard]] QString spotText(double value);

/** Six significant digits, shortest form: 1.5 gives "1.5", 1234567 gives "1.23457e+06". */
[[nodiscard]] QString generalText(double value);

/**
 * Six significant digits as printf's "%g": also "-0", and ties as printf rounds them; but "nan" for
 * every NaN, without a sign.
 */
[[nodiscard]] QString realText(double value);

} // namespace ovparser::internal

#endif
