// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What could not be read.
 */
#ifndef OVINFO_FAILURELIST_H
#define OVINFO_FAILURELIST_H

#include "Found.h"
#include "Terminal.h"

/** Remembers failures until the end of a run. */
class FailureList
{
public:
    /** Remembers a file or folder if it could not be read. */
    void add(const Found& found);

    [[nodiscard]] int count() const { return int(m_failures.size()); }

    /**
     * Tells the failures, or writes them to a file.
     *
     * @param file  where to write them, one JSON object per line; empty: they are told
     * @return Success when there are none
     */
    [[nodiscard]] ExitCode tell(const QString& file) const;

private:
    QList<QJsonObject> m_failures;
};

#endif
