// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Verb.h"

#include <algorithm>

namespace {

using namespace Options;

const Verb verbs[] = {
    {"show",
     "FILE...",
     "print files of any kind",
     "Prints files of any kind: their sections with names, keys, values and comments, or the "
     "tables of a spectral analysis.",
     showCommand,
     {json, jsonl, keys}},
    {"get",
     "FILE... SECTION KEY",
     "print a value of each file",
     "Prints a value of each file, without its comment; of several files with the name of the file "
     "and a TAB before it.",
     getCommand,
     {json, jsonl, otherwise, fromFile, fromFile0}},
    {"set",
     "FILE... SECTION KEY VALUE",
     "change a value of each file; every other byte stays",
     "Changes a value of each file; every other byte stays. The key must be there already unless "
     "it may be added; its comment stays unless VALUE brings one ('12.5 # cm').",
     setCommand,
     {add, dryRun, fromFile, fromFile0},
     BadFile,
     true},
    {"unset",
     "FILE... SECTION KEY",
     "take a key out of each file; every other byte stays",
     "Takes a key out of each file: every line of it in the section. Every other byte stays.",
     unsetCommand,
     {dryRun, fromFile, fromFile0}},
    {"new",
     "IMAGE",
     "make up the click info of a bare image",
     "Makes up the click info of an image that has none: click number (user and time), user labels "
     "without values, and the section of the image, which is not read itself.",
     newCommand,
     {user, type, binning, output, force}},
    {"check",
     "FILE...",
     "tell what is wrong with files, line by line",
     "Tells what is wrong with files, line by line, and what the library makes of it. The exit "
     "code is 1 when there is a problem; a note tells what a save would change.",
     checkCommand,
     {json, jsonl, quiet, below, shard}},
    {"strip",
     "FILE...",
     "take the click info off DICOM files again",
     "Takes the click info off DICOM files again: the text after the last data element. Programs "
     "that read nothing else may stop at such a text.",
     stripCommand,
     {}},
    {"diff",
     "FILE FILE",
     "compare two files section by section",
     "Compares two files section by section and key by key. Layout does not count: white space, "
     "blank lines, line ends, letter case of keys, order of sections and keys. Exit codes: 0 no "
     "difference, 1 different, 2 a file cannot be read or the output cannot be written.",
     diffCommand,
     {json},
     Trouble},
    {"study",
     "FOLDER...",
     "print sequences with tables of their acquisitions, or a whole archive",
     "Prints sequence folders: each sequence and a table of its acquisitions. Exposure, binning "
     "and field of view are those of the main image. What cannot be read is told at the end.",
     studyCommand,
     {recursive, json, jsonl, csv, spreadsheet, column, all, failures, jobs, fromFile, noFollow,
      relativeTo, shard, merge}},
    {"index",
     "FOLDER...",
     "index a whole archive in one SQLite file",
     "Reads every file of archives into one SQLite file: the files, their acquisitions and every "
     "value. Run again it reads only what has changed. Each moment leaves a valid index.",
     indexCommand,
     {indexFile, failures, jobs, fromFile, noFollow, relativeTo, shard, merge}},
    {"query",
     "INDEX SECTION KEY...",
     "print values from an index",
     "Prints the values of keys for every file of an index that has one of them. Several pairs of "
     "SECTION and KEY may be given.",
     queryCommand,
     {csv, jsonl, where}},
    {"report",
     "FOLDER...",
     "show a study at a glance, in one page of HTML",
     "Lays all acquisitions in and below folders side by side in one page that any browser opens: "
     "a timeline of each animal, missing time points, settings that deviate, labels, spectral "
     "results and problems. With more than 10,000 acquisitions each group has a page of its own.",
     reportCommand,
     {reportFile, title, groupBy, subject, fromJsonl, fromIndex, jobs, fromFile, noFollow,
      relativeTo}},
    {"presets",
     "FILE|FOLDER",
     "print the menu names of settings with their files",
     "Prints the menu names of a settings file or of a folder of settings, with their files.",
     presetsCommand,
     {json}},
    {"camera",
     "FILE",
     "print what an instrument can do",
     "Prints what an instrument can do: its family, capabilities, stage positions with their "
     "fields of view, CCD pixels and binning presets.",
     cameraCommand,
     {json}},
    {"spectral",
     "FILE",
     "print a spectral analysis, or draw it",
     "Prints a spectral analysis: its acquisitions with filters and regions of interest, the "
     "results, the plots and the fit. Wavelengths are in nanometres; intensity and attenuation "
     "are in the file's own units.",
     spectralCommand,
     {json, svg}},
};

QString spelled(const Option& option)
{
    const QString flag = QLatin1String("--") + QLatin1String(option.name);
    return option.value ? flag + QLatin1Char(' ') + QLatin1String(option.value) : flag;
}

} // namespace

const Verb* findVerb(const QString& name)
{
    const auto* const verb = std::find_if(std::begin(verbs), std::end(verbs), [&](const Verb& v) {
        return name == QLatin1String(v.name);
    });
    return verb == std::end(verbs) ? nullptr : verb;
}

QString verbList()
{
    QList<QStringList> rows;
    for (const Verb& verb : verbs)
        rows.append({QLatin1String(verb.name), QLatin1String(verb.summary)});
    return described(rows);
}

QList<QStringList> optionRows(const Verb& verb)
{
    QList<QStringList> rows = {{QStringLiteral("-h, --help"), QStringLiteral("Prints this help.")}};
    for (const Option& option : verb.options)
        rows.append({spelled(option), QLatin1String(option.description)});
    return rows;
}

QStringList synopsis(const Verb& verb)
{
    QStringList parts;
    Option::Role last = Option::Plain;
    for (const Option& option : verb.options) {
        const bool alternative = option.role == last && option.role >= Option::Form;
        last = option.role;
        if (alternative)
            parts.last().insert(parts.last().size() - 1, QLatin1String(" | ") + spelled(option));
        else if (option.role == Option::Required)
            parts += spelled(option);
        else
            parts += QLatin1Char('[') + spelled(option) + QLatin1Char(']');
    }
    return parts + QString::fromLatin1(verb.arguments).split(QLatin1Char(' '));
}
