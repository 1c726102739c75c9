// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * One value of a text file set, added or taken out, while every other byte stays.
 */
#ifndef OVINFO_EDIT_H
#define OVINFO_EDIT_H

#include "Document.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/** What is to become of a value. */
struct Edit
{
    QString section;
    QString key;
    QString value;
    enum Kind {
        Set,      ///< the key must be there
        SetOrAdd, ///< a missing key, or section, is added at the end
        Unset,    ///< the lines of the key are taken out
    };
    Kind kind = Set;
};

/** The bytes of a file after an edit; or what is wrong, and the word that is to blame for it. */
struct Edited
{
    std::optional<QByteArray> bytes;
    tag_estatus status = eSTATUS_SUCCESS; ///< what is missing
    QString word;                         ///< the section or key that is missing
    QString problem;                      ///< what else is wrong
};

/** Edits a document that is loaded. */
Edited edited(const Document& document, const Edit& edit);

/** Whether a document differs from an earlier one by an edit, and by nothing else. */
bool isEditedOnly(const Document& before, const Document& after, const Edit& edit);

#endif
