// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "DataFolders.h"

#include "PLKeywords.h"

#include <QtCore/QDir>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>

namespace ovparser::internal {

namespace {

struct DataFolder
{
    OV_PATH_TAGS tag = OV_PATH_BASE;
    QLatin1String name;
};

constexpr DataFolder dataFolders[] = {
    {OV_PATH_BASE, PLKeyword::Value::Empty},
    {OV_PATH_DATABASE, PLKeyword::Folder::Database},
    {OV_PATH_ORGANS, PLKeyword::Folder::Organs},
    {OV_PATH_FL_REFERENCE, PLKeyword::Folder::FlReference},
    {OV_PATH_SL_REFERENCE, PLKeyword::Folder::SlReference},
    {OV_PATH_BACKGROUND, PLKeyword::Folder::Background},
    {OV_PATH_AUTO_BACKGROUND, PLKeyword::Folder::AutoBackground},
    {OV_PATH_EMFILTERS, PLKeyword::Folder::EmissionFilters},
    {OV_PATH_USAGE, PLKeyword::Folder::Usage},
    {OV_PATH_AOI_CORR_DB, PLKeyword::Folder::AoiCorrections},
};

/**
 * The machine-wide data folder: beside the second of the platform's locations for local data, or
 * the last one where there are fewer. The location's parent is taken by name; it need not exist.
 */
QString dataFolder()
{
    const QStringList locations =
        QStandardPaths::standardLocations(QStandardPaths::AppLocalDataLocation);
    const QString location =
        QDir::cleanPath(QDir(locations.value(1, locations.value(0))).absolutePath());
    const QString parent = location.left(location.lastIndexOf(QLatin1Char('/')));
    return parent + QLatin1Char('/') + PLKeyword::Value::Organization + QLatin1Char('/') +
           PLKeyword::Value::Product + QLatin1Char('/');
}

} // namespace

QString dataFolderPath(OV_PATH_TAGS tag)
{
    for (const DataFolder& row : dataFolders) {
        if (row.tag == tag)
            return dataFolder() + row.name;
    }
    return {};
}

} // namespace ovparser::internal
