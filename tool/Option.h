// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The options of the verbs: every one is stated here once.
 */
#ifndef OVINFO_OPTION_H
#define OVINFO_OPTION_H

/** An option of a verb. */
struct Option
{
    /** What an option is to its verb. At most one form and one list may be given. */
    enum Role {
        Plain,
        Required,
        Form, ///< says in which form to print or to read
        List, ///< names a list of files
    };

    const char* name = nullptr;
    const char* value = nullptr; ///< what the value is called; null for an option without one
    const char* description = "";
    Role role = Plain;
    const char* letter = nullptr; ///< its short form; null when it has none
};

namespace Options {

inline constexpr Option json = {"json", nullptr, "Prints JSON instead of text.", Option::Form};
inline constexpr Option jsonl = {"jsonl", nullptr, "Prints one JSON object per line.",
                                 Option::Form};
inline constexpr Option csv = {"csv", nullptr, "Prints comma-separated values (RFC 4180).",
                               Option::Form};
inline constexpr Option fromFile = {
    "from-file", "LIST", "Reads more names from a file, one a line; - is standard input.",
    Option::List};
inline constexpr Option fromFile0 = {"from-file0", "LIST",
                                     "The same with names that end in a NUL byte.", Option::List};
inline constexpr Option keys = {"keys", nullptr, "Prints sections and keys only, a TAB between.",
                                Option::Form};
inline constexpr Option quiet = {"quiet", nullptr, "Prints problems only, one line each.",
                                 Option::Form};
inline constexpr Option otherwise = {"default", "TEXT",
                                     "Prints TEXT for a section or key that is missing."};
inline constexpr Option add = {"add", nullptr, "Adds a section or key that is missing."};
inline constexpr Option dryRun = {"dry-run", nullptr,
                                  "Prints what would change, as a diff; changes nothing."};
inline constexpr Option below = {
    "recursive", nullptr, "Checks every file below folders that are named as data files are."};
inline constexpr Option recursive = {"recursive", nullptr,
                                     "Reads every sequence and acquisition below the folders."};
inline constexpr Option jobs = {"jobs", "N",
                                "Reads with N threads; as many as there are cores if not given."};
inline constexpr Option column = {"column", "SECTION/KEY",
                                  "Tells the value of a key as well; may be given several times."};
inline constexpr Option all = {"all", nullptr,
                               "Tells every section, as 'show --json' does; for JSON."};
inline constexpr Option spreadsheet = {
    "spreadsheet", nullptr,
    "Makes CSV for spreadsheets: byte-order mark, no cell that is taken for a formula."};
inline constexpr Option failures = {"failures", "FILE",
                                    "Writes what cannot be read to a file, as JSON lines."};
inline constexpr Option noFollow = {"no-follow", nullptr, "Follows no link."};
inline constexpr Option relativeTo = {"relative-to", "FOLDER", "Tells paths from a folder on."};
inline constexpr Option shard = {
    "shard", "K/N", "Reads the K-th of N parts only; a sequence and its acquisitions stay whole."};
inline constexpr Option merge = {"merge", nullptr,
                                 "Puts the results of several runs together; takes their files."};
inline constexpr Option indexFile = {"output", "FILE", "The index.", Option::Required, "o"};
inline constexpr Option where = {
    "where", "SECTION/KEY=VALUE",
    "Only files with this value; with < or > numbers are compared. May be given several times."};
inline constexpr Option user = {"user", "ID",
                                "The user, without whom there is no click number; it begins so.",
                                Option::Required};
inline constexpr Option type = {"type", "TYPE",
                                "photograph (if not given), luminescent or structure."};
inline constexpr Option binning = {"binning", "N", "Binning factor; 1 if not given."};
inline constexpr Option output = {"output", "FILE",
                                  "Where to write; ClickInfo.txt beside the image if not given."};
inline constexpr Option force = {
    "force", nullptr, "Replaces a file that is there already; appends to DICOM with click info."};
inline constexpr Option svg = {"svg", "OUT.svg", "Draws the plots and the fit to a file as well."};
inline constexpr Option reportFile = {"output", "FILE", "The page.", Option::Required, "o"};
inline constexpr Option title = {"title", "TEXT", "The title; 'Study report' if not given."};
inline constexpr Option groupBy = {"group-by", "LABEL",
                                   "The label that tells groups apart; Group if not given."};
inline constexpr Option subject = {
    "subject", "LABEL", "The label that tells animals apart; Animal Number if not given."};
inline constexpr Option fromJsonl = {
    "from-jsonl", nullptr,
    "Takes files that 'study' and 'check' printed with --jsonl, instead of folders.", Option::Form};
inline constexpr Option fromIndex = {"from-index", nullptr, "Takes indexes instead of folders.",
                                     Option::Form};

} // namespace Options

#endif
