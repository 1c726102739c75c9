// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * How documents are made: from files, from bytes, for an image.
 */
#ifndef OVPYTHON_LOADING_H
#define OVPYTHON_LOADING_H

#include "Info.h"

namespace ovpython {

using InfoPointer = std::shared_ptr<Info>;

/**
 * What a file is, by its content; "dicom" for a DICOM file with click info. @return also its
 * sections when these are all that there is to load
 */
std::pair<QString, InfoPointer> openedByKind(const QString& path);

InfoPointer newInfo();
InfoPointer newSequence();

InfoPointer loadInfo(const QString& path);
InfoPointer loadDicom(const QString& path);
InfoPointer loadSequence(const QString& path);

/** Loads a background summary, or an index of references. @return also whether it is an index */
std::pair<InfoPointer, bool> loadCatalogue(const QString& path);

/** Loads lines that stand in no section as those of a section, whose header is not saved. */
InfoPointer loadKeyLines(const QString& path);

/** Loads the description of an instrument. @return also what it tells */
std::pair<InfoPointer, py::object> loadCamera(const QString& path);

/** Loads optical properties. @return also the menu names of the tissues and of the sources */
std::tuple<InfoPointer, QStringList, QStringList> loadOptical(const QString& path);

InfoPointer infoOf(const py::bytes& bytes);
InfoPointer infoForImage(const QString& path, const QString& prefix, int type, int binning);

/** The bytes of a file. */
py::bytes readBytes(const QString& path);

/** Saves the bytes of a document, which are appended to a DICOM file. */
void save(const Info& info, const QString& path);

/** Replaces a file, if it holds the old bytes still. */
void rewrite(const QString& path, const py::bytes& old, const py::bytes& bytes);

/** Replaces a file, or makes one. */
void saveBytes(const QString& path, const py::bytes& bytes);

} // namespace ovpython

#endif
