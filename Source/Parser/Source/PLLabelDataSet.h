// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * A named set of user labels.
 */
#ifndef OVPARSER_PLLABELDATASET_H
#define OVPARSER_PLLABELDATASET_H

#include "PLExport.h"
#include "PLStatus.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/**
 * The name of a label set and its labels in order.
 *
 * A failing operation changes neither the set nor its output argument. A set is a value: copies
 * share nothing.
 */
class PARSERLIBRARY_EXPORT CPLLabelDataSet
{
public:
    /** A set without name and labels. */
    CPLLabelDataSet();

    /** A set without labels. */
    CPLLabelDataSet(QString name);

    /** A copy, which shares nothing with the original. */
    CPLLabelDataSet(const CPLLabelDataSet& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLLabelDataSet& operator=(const CPLLabelDataSet& other);
    virtual ~CPLLabelDataSet();

    /**
     * Reads the text of a "User Label Name Set" section and appends its labels.
     *
     * A label is what stands before the first ':' of a line, as it is written; lines without ':'
     * are passed over. A last line without LF gives its label trimmed, even an empty one. A set
     * that has a name keeps it and passes over the header line, whatever that is.
     *
     * @param text  header line and label lines, ending in LF
     * @return the status of loadLabelName()
     */
    tag_estatus loadData(QString text);

    /**
     * Takes the name from a header line: "*** ", the section key, ':', one TAB, the name.
     *
     * The name ends before a '#' and is not trimmed; a CR at its end stays.
     *
     * @return eSTATUS_BAD_LABEL_FORMAT for another form, also when a '#' stands before the ':' or
     *         in one of the two places after it; eSTATUS_SECTION_NOT_FOUND when the section key is
     *         not "User Label Name Set" (in any letter case)
     */
    tag_estatus loadLabelName(QString headerLine);

    /**
     * The name of the set.
     *
     * @return eSTATUS_INVALID_VALUE when `name` is null
     */
    tag_estatus getLabelName(QString* name) const;

    /**
     * Sets the name.
     *
     * @return eSTATUS_INVALID_VALUE when it is empty; the old name stays
     */
    tag_estatus setLabelName(QString name);

    /**
     * The labels in order.
     *
     * @return eSTATUS_INVALID_VALUE when `labels` is null
     */
    tag_estatus getLabelData(QStringList* labels) const;

    /** Replaces the labels. */
    void setLabelData(QStringList labels);

    /** Number of labels. */
    [[nodiscard]] int getCount() const;

    /** The label at this place, counted from 0; a null string when there is no such place. */
    [[nodiscard]] QString operator[](int index) const;

private:
    PARSERLIBRARY_NO_EXPORT void appendLabel(const QString& line, bool closed);

    QString labelName;
    QStringList labelData;
};

#endif
