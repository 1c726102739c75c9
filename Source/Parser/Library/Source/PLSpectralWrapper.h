// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The spectral-analysis result file.
 */
#ifndef OVPARSER_PLSPECTRALWRAPPER_H
#define OVPARSER_PLSPECTRALWRAPPER_H

#include "PLExport.h"
#include "PLXMLReader.h"
#include "PLXMLWriter.h"

#include <QtCore/QFile>
#include <QtCore/QList>
#include <QtCore/QString>

#include <memory>

// The records keep their published names, a leading underscore included.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

/** A region of interest as setClickNumberROIProperties() writes it. */
struct _tagsROIProperties
{
    qint64 value0 = 0;           ///< belongs to the application; not written
    QString text0;               ///< belongs to the application; not written
    QString roiLabel;            ///< label of the region
    QString roiShape;            ///< "Contour" makes a reader look for the contour fields
    double xc = 0.0;             ///< centre
    double yc = 0.0;             ///< centre
    double angle = 0.0;          ///< rotation
    double width = 0.0;          ///< extent
    double height = 0.0;         ///< extent
    double cmPerPixel = 0.0;     ///< scale of the image
    int roiPixels = 0;           ///< number of pixels
    double area = 0.0;           ///< of the region
    QString lockPosition;        ///< whether the position is locked
    QString lockSize;            ///< whether the size is locked
    QString roiType;             ///< what the region is for
    qint64 value1 = 0;           ///< belongs to the application; not written
    QString contourDirections;   ///< steps along the contour
    double contourStartX = 0.0;  ///< where the contour starts
    double contourStartY = 0.0;  ///< where the contour starts
    double contourPeakX = 0.0;   ///< peak inside the contour
    double contourPeakY = 0.0;   ///< peak inside the contour
    int contourXDelta = 0;       ///< of the contour
    int contourYDelta = 0;       ///< of the contour
    double fractionalPeak = 0.0; ///< fraction of the peak at which the contour was drawn
    QString bkgAssociation;      ///< association with a background region
    QString subAssociation;      ///< not written
    QString bkgROI;              ///< the background region
};

/** One acquisition and one of its regions of interest, as they are read. */
struct _tagSClickROIInformation
{
    QString clickNumber;          ///< of the acquisition
    QString imageWavelength;      ///< with its unit, "560nm"
    double avgTransmission = 0.0; ///< average transmission of the filter
    double bandWidth = 0.0;       ///< of the filter, in nanometres
    QString centralWavelength;    ///< with its unit, "560nm"
    qint64 value0 = 0;            ///< belongs to the application; not read
    QString roi;                  ///< identifier of the region
    QString roiLabel;             ///< label of the region
    QString roiShape;             ///< as it is written; "Contour" has contour fields
    QString roiType;              ///< what the region is for
    double xc = 0.0;              ///< centre
    double yc = 0.0;              ///< centre
    double angle = 0.0;           ///< rotation
    double width = 0.0;           ///< extent
    double height = 0.0;          ///< extent
    double cmPerPixel = 0.0;      ///< scale of the image
    int roiPixels = 0;            ///< number of pixels
    double area = 0.0;            ///< of the region
    double averageRadiance = 0.0; ///< of the measurements, as are the next two
    QString filterLabel;          ///< of the measurements
    double totalFlux = 0.0;       ///< of the region
    QString lockPosition;         ///< whether the position is locked
    QString lockSize;             ///< whether the size is locked
    QString contourDirections;    ///< read only for the shape "Contour", as are the next six
    double contourStartX = 0.0;   ///< where the contour starts
    double contourStartY = 0.0;   ///< where the contour starts
    double contourPeakX = 0.0;    ///< peak inside the contour
    double contourPeakY = 0.0;    ///< peak inside the contour
    int contourXDelta = 0;        ///< of the contour
    int contourYDelta = 0;        ///< of the contour
    double fractionalPeak = 0.0;  ///< fraction of the peak at which the contour was drawn
    QString bkgAssociation;       ///< association with a background region
    QString subAssociation;       ///< association with a subject region
    QString bkgROI;               ///< the background region
};

/** The results of one region of interest; what the file does not hold is 0 or empty. */
struct _tagSROISpectralResults
{
    QString label = QLatin1String(""); ///< not read
    QString roi = QLatin1String("");   ///< identifier of the region
    double totalFlux = 0.0;            ///< of the region
    double fluxStdDev = 0.0;           ///< standard deviation of the flux
    double averageDepth = 0.0;         ///< of the source
    double depthStdDev = 0.0;          ///< standard deviation of the depth
};

// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

/** One value of a spectral plot. */
struct SPlotResults
{
    QString label = QLatin1String(""); ///< not read
    double intensity = 0.0;            ///< measured
    double waveLength = 0.0;           ///< in nanometres
};

/** One fitted value. */
struct SFitResults
{
    QString label = QLatin1String(""); ///< not read
    double intensity = 0.0;            ///< measured
    double attenuation = 0.0;          ///< of the tissue at the wavelength
    double fitValue = 0.0;             ///< the value of the fit
    double horizontalError = 0.0;      ///< error along the attenuation
    double verticalError = 0.0;        ///< error along the fitted value
};

/**
 * Writes and reads the results of a spectral analysis: its attributes, every acquisition with its
 * filter and regions of interest, and the results, plot, fit and linear fit.
 *
 * Writing: createSpectralXMLFile(), then the set... operations in the order of the file, each open
 * with its close, setCloseSpectralAnalysis() last. Order and nesting are not checked. Every line is
 * in the file when the operation returns; before createSpectralXMLFile(), and when the file could
 * not be opened, nothing is written and nothing reported.
 *
 * Reading: loadXMLFile(), then the get... operations in any order. Each walks the document from its
 * root and moves the reader's cursor. A missing attribute reads as 0 or empty; a null output
 * pointer gives false. Texts are compared exactly, element names and labels ignoring letter case.
 */
class PARSERLIBRARY_EXPORT CPLSpectralWrapper
{
public:
    /** Neither file nor document. */
    CPLSpectralWrapper();

    CPLSpectralWrapper(const CPLSpectralWrapper&) = delete;
    CPLSpectralWrapper& operator=(const CPLSpectralWrapper&) = delete;

    /** Ends an unfinished line and closes the file. */
    virtual ~CPLSpectralWrapper();

    /** @name Writing */
    ///@{

    /**
     * Creates the file, replacing an existing one, and opens its root element. A file that this
     * object was writing before is finished and closed first.
     *
     * @return false when the file cannot be opened or there is no memory
     */
    bool createSpectralXMLFile(QString fileName);

    /** The current local time and date in the system's short formats: "3:07 PM, 11/17/2026". */
    [[nodiscard]] QString setDateAndTime() const;

    /** Writes the attributes of an analysis, with the current time and date. */
    void setSpectralAttributes(QString sequenceId, int numberOfClicks, QString activeImage,
                               QString tissueProperty, QString sourceModel,
                               float indexOfRefraction);

    /** Opens the acquisitions of the analysis whose attributes were written just before. */
    void setOpenClickInfo(int totalClicks);
    void setCloseClickInfo(); ///< Closes the acquisitions.

    /**
     * Opens an acquisition.
     *
     * @param clickNumber  its click number
     * @param wavelength   in nanometres, without the unit
     */
    void setClickNumberInfo(QString clickNumber, QString wavelength);
    void setCloseClickNumberInfo(); ///< Closes the acquisition.

    /** Writes the filter of the open acquisition; wavelength and band width in nanometres. */
    void setClickNumberFilterProperties(int centralWavelength, float bandWidth,
                                        float avgTransmission);

    /** Writes a region of interest of the open acquisition. */
    void setClickNumberROIProperties(QString roi, _tagsROIProperties properties, bool withContour);

    /**
     * Writes measurements into an element of their own after the region of interest;
     * getClickAndROIInformationForIndex() does not find them there.
     */
    void setROIMeasurementsProperties(QString filterLabel, double totalFlux,
                                      double averageRadiance);

    /** Writes the results of a region of interest. */
    void setSpectralAnalysisResults(QString roi, double totalFlux, double fluxStdDev,
                                    QString fluxUnits, double averageDepth, double depthStdDev,
                                    QString depthUnits);

    /**
     * Opens the spectral plot of a region of interest.
     *
     * @param roiLabel         label of the region
     * @param totalPlotValues  how many values will follow; a reader passes over a plot that holds
     *                         another number
     */
    void setOpenSpectralAnalysisPlotResults(QString roiLabel, int totalPlotValues);

    /** Writes a value of the open plot; the wavelength in nanometres. */
    void setSpectralAnalysisPlotResults(double intensity, double waveLength);
    void setCloseSpectralAnalysisPlotResults(); ///< Closes the plot.

    /**
     * Opens the fit of a region of interest.
     *
     * @param roiLabel        label of the region
     * @param totalFitValues  how many values will follow, as for a plot
     */
    void setOpenSpectralAnalysisFitResults(QString roiLabel, int totalFitValues);

    /** Writes a value of the open fit. */
    void setSpectralAnalysisFitResults(double intensity, double attenuation, double fitValue,
                                       double horizontalError, double verticalError);
    void setCloseSpectralAnalysisFitResults(); ///< Closes the fit.

    /** Writes the two values of the linear fit. */
    void setLinearFitResults(double valueA, double valueB);

    /** Closes the root element; nothing may follow. */
    void setCloseSpectralAnalysis();
    ///@}

    /** @name Reading */
    ///@{

    /**
     * Parses a file. After a failed parse the queries go on answering from the file parsed before.
     *
     * @return false when the file cannot be read or parsed, or when its root element is another
     *         one; in that last case the document is loaded all the same
     */
    bool loadXMLFile(QString fileName);

    /**
     * Reads the attributes of an analysis.
     *
     * @param sequenceId         receives the sequence that was analysed
     * @param numberOfClicks     receives the number of acquisitions
     * @param activeImage        receives the image that was analysed
     * @param tissueProperty     receives the menu name of the tissue property set
     * @param sourceModel        receives the menu name of the source model
     * @param index              its place among the analyses of the file, from 0
     * @param indexOfRefraction  the text as it is written
     * @return false when there is no such analysis; the outputs are left alone
     */
    bool getSpectralAttributes(QString* sequenceId, int* numberOfClicks, QString* activeImage,
                               QString* tissueProperty, QString* sourceModel, int index,
                               QString* indexOfRefraction);

    /**
     * Reads the attributes of the first analysis in their form with eight attributes.
     *
     * @param sequenceId      receives the sequence that was analysed
     * @param firstNumber     receives the number of acquisitions
     * @param secondNumber    receives the active wavelength
     * @param tissueProperty  receives the menu name of the tissue property set
     * @param sourceModel     receives the menu name of the source model
     * @return false, with the outputs left alone, when the root does not begin with attributes or
     *         when they are not eight; setSpectralAttributes() writes seven
     */
    bool getSpectralAnalysisAttributes(QString* sequenceId, int* firstNumber, int* secondNumber,
                                       QString* tissueProperty, QString* sourceModel);

    /**
     * Reads the number of acquisitions of the analysis on whose attributes the cursor stands: right
     * after loadXMLFile() the first one, after getSpectralAttributes() the one read.
     *
     * @return false, with the output left alone, when its acquisitions do not follow
     */
    bool getNumberOfClicksForROIIndex(int* totalClicks);

    /**
     * Reads an acquisition and its first region of interest.
     *
     * @param info        receives the fields; the contour fields only for the shape "Contour"
     * @param clickIndex  place of the acquisition in its analysis, from 0
     * @param roiIndex    place of the analysis in the file, from 0
     * @return false when an element is missing; fields read before it keep their new values.
     *         Measurements are found only inside the element of the region of interest.
     */
    bool getClickAndROIInformationForIndex(_tagSClickROIInformation* info, int clickIndex,
                                           int roiIndex);

    /** The results of every region of interest, in file order. */
    QList<_tagSROISpectralResults> getROISpectralResults();

    /** The values of all plots with this label, in file order; incomplete plots are left out. */
    QList<SPlotResults> getROIPlotResultsForROI(QString roiLabel);

    /** The values of all fits with this label, in file order; incomplete fits are left out. */
    QList<SFitResults> getROIFitResultsForROI(QString roiLabel);

    /**
     * Reads the first linear fit.
     *
     * @return false, with the outputs left alone, when there is none
     */
    bool getLinearFitResults(double* valueA, double* valueB);
    ///@}

private:
    PARSERLIBRARY_NO_EXPORT bool getClickROIInformation(_tagSClickROIInformation* info,
                                                        const QDomElement& clickInfo,
                                                        int clickIndex);
    PARSERLIBRARY_NO_EXPORT void openElement(int id, const AttrMap& attrs);
    PARSERLIBRARY_NO_EXPORT void closeElement(int id);
    PARSERLIBRARY_NO_EXPORT void writeElement(int id, const AttrMap& attrs);

    QFile file;
    CPLXMLReader reader;
    std::unique_ptr<CPLXMLWriter> writer;
    QString fileName;
};

#endif
