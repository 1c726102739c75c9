// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * A file of any kind, opened by what it holds.
 */
#ifndef OVINFO_DOCUMENT_H
#define OVINFO_DOCUMENT_H

#include "SpectralFile.h"

#include "ParserLibrary.h"

#include <QtCore/QList>

#include <optional>

/** What a file is. */
enum class FileKind {
    InfoText, ///< sections without a meaning of their own
    Acquisition,
    AnalyzedAcquisition,
    Sequence,
    BackgroundSummary,
    StructureReferences,
    FluorescentReferences,
    Instrument,
    InstrumentExtension,
    FilterWheel,
    Settings,
    LabelSet,
    OpticalProperties,
    SpectralAnalysis,
};

/** A file of one of the kinds, as the library reads it. */
class Document
{
public:
    /** Loads a file; false leaves the document unusable and problem() says why. */
    bool load(const QString& file);

    [[nodiscard]] QString problem() const { return m_problem; }

    /** What kind of problem it is. */
    [[nodiscard]] tag_estatus status() const { return m_status; }

    /** Whether the file could be read, be it of use or not. */
    [[nodiscard]] bool wasRead() const { return m_wasRead; }

    [[nodiscard]] FileKind kind() const { return m_kind; }

    /** The kind as programs know it, e.g. "structureReferences". */
    [[nodiscard]] QString kindName() const;

    /** What the file is, for a heading. */
    [[nodiscard]] QString title() const { return m_title; }

    /** Whether the sections are made of the lines of an index of references. */
    [[nodiscard]] bool isIndex() const;

    /** The key that every line of such an index has. */
    [[nodiscard]] QString referenceName() const;

    /** The section with this key, in any letter case; null when there is none. */
    [[nodiscard]] CPLSection* section(const QString& key) const;

    /** Every section in order; a spectral analysis has none. */
    [[nodiscard]] QList<CPLSection*> sections() const;

    /** The sections of an info text; none of a sequence or catalogue. */
    [[nodiscard]] const CPLClickInfo& infoText() const { return m_text; }

    /** The lines before the first section. */
    [[nodiscard]] QStringList preamble() const;

    /** The click number; empty when there is none. */
    [[nodiscard]] QString clickNumber() const;

    /** What the file holds when it is a spectral analysis. */
    [[nodiscard]] const std::optional<SpectralFile>& spectral() const { return m_spectral; }

    /** The bytes of the file. */
    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }

    /** The text in them: after a byte order mark or the image of a DICOM file; LF for a lone CR. */
    [[nodiscard]] QLatin1String text() const;

    /** Where the text begins in the bytes. */
    [[nodiscard]] int textStart() const { return m_textStart; }

    /** Where a place of the text is in the bytes. */
    [[nodiscard]] int placeOf(const char* place) const { return int(place - m_lines.constData()); }

    /** Whether it is a DICOM file. */
    [[nodiscard]] bool isDicom() const;

    /** Whether the lines before the first header line are those of the first section. */
    [[nodiscard]] bool startsWithoutHeader() const { return m_startsWithoutHeader; }

    /** What the library would write for the sections; nothing for a kind that it does not write. */
    [[nodiscard]] std::optional<QByteArray> writtenForm() const;

private:
    bool setProblem(tag_estatus status);
    bool loadSpectral(const QString& file);
    bool loadText(const QString& file);
    bool loadSequence(const QString& file);
    bool loadIndex(const QString& file);
    bool loadSummary(const QString& file);
    bool loadDicom();
    bool loadKeyLines();
    void setTextKind();

    QString m_path;
    QByteArray m_bytes;
    QByteArray m_lines; ///< the same with LF for a lone CR
    bool m_wasRead = false;
    int m_textStart = 0;
    CPLClickInfo m_text;
    CPLSequenceInfo m_sequence;
    CPLBkgSummaryInfo m_catalogue;
    std::optional<SpectralFile> m_spectral;
    FileKind m_kind = FileKind::InfoText;
    QString m_title;
    QString m_problem;
    tag_estatus m_status = eSTATUS_BAD_FORMAT; ///< of a problem
    bool m_startsWithoutHeader = false;
};

/** What the library would write for a sequence. */
QByteArray writtenForm(const CPLSequenceInfo& sequence);

#endif
