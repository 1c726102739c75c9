// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLIASetupInfo.h"

#include <ctime>

sIASetupInfo::sIASetupInfo()
    : acquisitionTime(qint64(std::time(nullptr)))
{}

sIASetupInfo::sIASetupInfo(const sIASetupInfo& other) = default;
sIASetupInfo& sIASetupInfo::operator=(const sIASetupInfo& other) = default;
sIASetupInfo::~sIASetupInfo() = default;
