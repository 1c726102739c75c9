// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLHelpers.h"

#include "PLCameraInfo.h"
#include "PLKeywords.h"
#include "internal/DataFolders.h"
#include "internal/Guard.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <cmath>

using namespace ovparser::internal;

namespace {

/** The word character that stands between white space in a stage-position key. */
QByteArray positionName(const QString& key)
{
    static const QRegularExpression betweenBlanks(QStringLiteral("\\s(\\w)\\s"),
                                                  QRegularExpression::UseUnicodePropertiesOption);
    return betweenBlanks.match(key).captured(1).toLatin1();
}

bool isPositionKey(const QString& key)
{
    return key.startsWith(PLKeyword::Key::ShelfPosition, Qt::CaseInsensitive) &&
           key.contains(PLKeyword::Key::FovPart, Qt::CaseInsensitive);
}

bool hasFieldOfView(const CPLSection& section, const QString& key, double fieldOfView)
{
    constexpr double tolerance = 1e-5;
    float value = 0;
    return section.getValue(key, &value) == eSTATUS_SUCCESS &&
           std::abs(fieldOfView - double(value)) <= tolerance;
}

/** Gives the background folder that the instrument asks for; false when it asks for none. */
bool getInstrumentBackground(const CPLCameraInfo* camera, QString* path)
{
    const CPLSection* const section = camera ? camera->getCameraInfoSection() : nullptr;
    return section && section->getValue(PLKeyword::Key::DarkchargePath, path) == eSTATUS_SUCCESS;
}

QString folderPath(OV_PATH_TAGS tag, const CPLCameraInfo* camera)
{
    if (tag == OV_PATH_APPLICATION)
        return QCoreApplication::applicationDirPath();
    QString background;
    if (tag == OV_PATH_BACKGROUND && getInstrumentBackground(camera, &background))
        return background;
    return dataFolderPath(tag);
}

} // namespace

bool hasCCDMapData(const CPLClickInfo& info)
{
    return answerOf([&] {
        const CPLSection* const section = info[PLKeyword::Section::CameraSystemInfo];
        return section && section->isKeyPresent(PLKeyword::Key::CcdMap);
    });
}

bool getFOVName(const CPLClickInfo* info, double fieldOfView, QByteArray& name)
{
    return answerOf([&] {
        const CPLSection* const section =
            info ? (*info)[PLKeyword::Section::CameraSystemInfo] : nullptr;
        if (!section)
            return false;
        QStringList keys;
        checked(section->getKeyList(&keys));
        for (const QString& key : qAsConst(keys)) {
            if (!isPositionKey(key) || !hasFieldOfView(*section, key, fieldOfView))
                continue;
            const QByteArray position = positionName(key);
            if (position.isEmpty())
                continue;
            name = position;
            return true;
        }
        return false;
    });
}

QString getOVPath(OV_PATH_TAGS tag, bool withSlash, const CPLCameraInfo* camera)
{
    const QString path = folderPath(tag, camera);
    const bool complete = !withSlash || path.endsWith(QLatin1Char('/'));
    return complete ? path : path + QLatin1Char('/');
}
