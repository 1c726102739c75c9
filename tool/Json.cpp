// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Json.h"

#include <cmath>

QJsonObject object(JsonMembers members)
{
    QJsonObject object;
    for (const auto& [name, value] : members)
        object.insert(QLatin1String(name), value);
    return object;
}

QJsonObject withSchema(const char* schema, QJsonObject object)
{
    object.insert(QLatin1String("schema"), QLatin1String(schema));
    return object;
}

QJsonObject withSchema(const char* schema, JsonMembers members)
{
    return withSchema(schema, object(members));
}

QJsonValue numberOf(const QString& text)
{
    bool spelled = false;
    const double number = text.toDouble(&spelled);
    return spelled && std::isfinite(number) ? QJsonValue(number) : QJsonValue();
}

QJsonValue textOrNull(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}
