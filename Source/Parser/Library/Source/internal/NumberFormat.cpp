#include "NumberFormat.h"

#include <iomanip>
#include <locale>
#include <sstream>

namespace ovparser::internal {

// A stream in the classic locale prints exactly what printf does in the C locale. QString does not:
// it rounds ties upwards (0.5 of the last digit) and drops the sign of a negative zero.
QString fixedText(double value)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(6) << value;
    return QString::fromStdString(text.str());
}

QString spotText(double value)
{
    return QString::number(value, 'f', 4);
}

QString generalText(double value)
{
    return QString::number(value, 'g', 6);
}

QString realText(double value)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << value; // a stream's own form is "%g"
    return QString::fromStdString(text.str());
}

} // namespace ovparser::internal
