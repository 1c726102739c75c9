// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLHelpers.h"

#include "PLCameraInfo.h"
#include "PLKeywords.h"
#include "internal/sections/Capabilities.h"
#include "internal/text/DataFolders.h"
#include "internal/text/Guard.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

#include <cmath>

using namespace ovparser::internal;

namespace {

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
            const QByteArray position = positionName(key).toLatin1();
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
