// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What the verbs that read archives are asked for in common.
 */
#ifndef OVINFO_ARCHIVEREQUEST_H
#define OVINFO_ARCHIVEREQUEST_H

#include "Archive.h"
#include "Request.h"

#include <optional>

/** How an archive is to be read. */
struct ArchiveRequest
{
    WalkOptions walk;
    Wanted wanted;
    int jobs = 1;
};

/** Takes the options; tells what is wrong with them, and gives nothing then. */
std::optional<ArchiveRequest> archiveRequestOf(const Request& request);

/** Takes the option that asks for one part of an archive; nothing when its value is none. */
std::optional<Shard> shardOf(const Request& request);

#endif
