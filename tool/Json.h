// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * How JSON values are made.
 */
#ifndef OVINFO_JSON_H
#define OVINFO_JSON_H

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <initializer_list>
#include <utility>

using JsonMembers = std::initializer_list<std::pair<const char*, QJsonValue>>;

/** A JSON object with these members. */
QJsonObject object(JsonMembers members);

/** The same with the member "schema": the name and version of what the object holds. */
QJsonObject withSchema(const char* schema, JsonMembers members);
QJsonObject withSchema(const char* schema, QJsonObject object);

/** The number that a text spells; null when it spells none. */
QJsonValue numberOf(const QString& text);

/** The text; null when it is empty. */
QJsonValue textOrNull(const QString& text);

template <typename List, typename Make>
QJsonArray arrayOf(const List& list, Make make)
{
    QJsonArray array;
    for (const auto& item : list)
        array.append(make(item));
    return array;
}

#endif
