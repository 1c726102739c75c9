// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "WalkOrder.h"

#include <QtCore/QStringList>

// '/' sorts before every character of a name, and the way upwards after every name: what lies
// below one folder then stays together.
QString walkKey(const QString& folder)
{
    if (folder == QLatin1String("."))
        return {};
    QStringList names = folder.split(QLatin1Char('/'));
    for (QString& name : names) {
        if (name == QLatin1String(".."))
            name = QChar(0xFFFF);
    }
    return names.join(QChar(u'\0'));
}

QString folderOf(const QString& path)
{
    const auto slash = path.lastIndexOf(QLatin1Char('/'));
    if (slash < 0)
        return {};
    return slash == 0 ? QStringLiteral("/") : path.left(slash);
}
