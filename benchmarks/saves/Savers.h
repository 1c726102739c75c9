// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * One interface to everything that saves a file and is watched at it.
 */
#ifndef OVPARSER_BENCHMARKS_SAVERS_H
#define OVPARSER_BENCHMARKS_SAVERS_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <vector>

/** A document, or a program that changes one. Each save happens in a process of its own. */
class Saver
{
public:
    Saver() = default;
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;
    virtual ~Saver() = default;

    /** The file to begin with: `sections` sections of ten keys each. */
    [[nodiscard]] virtual QByteArray text(int sections) const = 0;

    virtual bool load(const QString& path) = 0;

    /** Sets the value of a key in the first section. */
    virtual void set(const QString& key, const QString& value) = 0;

    /** Saves; may end the process, with exit code 0 for success. */
    virtual bool save(const QString& path) = 0;
};

/** What is asked of a saver. */
enum class Promise {
    None,      ///< it is compared only
    FullDisk,  ///< nothing is lost by a full disk
    Always,    ///< nor by a kill, and no reader meets half a file
    AllChanges ///< nor does one of two changes at a time undo the other
};

struct Contender
{
    const char* name;
    Promise promise;
    bool twoNames; ///< the file has a second hard link
    std::unique_ptr<Saver> saver;
};

/** The library's savers and the tool, which is called by its path. */
std::vector<Contender> ownContenders(const QByteArray& tool);

/** What else saves such files. */
std::vector<Contender> otherContenders();

/** The sections in the form of info text or of an INI file; each line ends in `lineEnd`. */
QByteArray sectionsText(int count, const char* header, const char* pair, const char* lineEnd);

#endif
