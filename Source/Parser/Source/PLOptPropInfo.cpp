// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLOptPropInfo.h"

#include "PLKeywords.h"
#include "internal/text/Guard.h"

using namespace ovparser::internal;

namespace {

/** The settings file that the menus are read from. */
class MenuFile : public CPLClickInfo
{
public:
    using CPLClickInfo::find;
};

/** The menu names of the sections that a stem and the numbers from 1 on name. */
QStringList menuNames(const MenuFile& settings, const QString& stem)
{
    QStringList names;
    for (int n = 1; const CPLSection* const section = settings.find(stem + QString::number(n));
         ++n) {
        QString name;
        if (checked(section->getValue(PLKeyword::Key::MenuName, &name)) == eSTATUS_SUCCESS)
            names.append(name);
    }
    return names;
}

} // namespace

CPLOptPropInfo::CPLOptPropInfo() = default;
CPLOptPropInfo::CPLOptPropInfo(const CPLOptPropInfo& other) = default;
CPLOptPropInfo& CPLOptPropInfo::operator=(const CPLOptPropInfo& other) = default;
CPLOptPropInfo::~CPLOptPropInfo() = default;

tag_estatus CPLOptPropInfo::readSettingFile(QString path)
{
    return guarded([&] {
        tissuePropList.clear();
        srcModelList.clear();
        MenuFile settings;
        const tag_estatus status = settings.loadClickInfo(path, false);
        if (status != eSTATUS_SUCCESS)
            return status;
        tissuePropList = menuNames(settings, PLKeyword::Section::TissueProperties);
        srcModelList = menuNames(settings, PLKeyword::Section::SourceModel);
        return eSTATUS_SUCCESS;
    });
}

QStringList CPLOptPropInfo::getTissuePropList() const
{
    return tissuePropList;
}

QStringList CPLOptPropInfo::getSrcModelList() const
{
    return srcModelList;
}
