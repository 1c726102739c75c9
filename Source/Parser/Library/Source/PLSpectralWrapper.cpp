// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLSpectralWrapper.h"

#include "PLKeywords.h"
#include "SpectralFields.h"
#include "internal/text/Guard.h"
#include "internal/text/NumberFormat.h"
#include "internal/text/TextFile.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <algorithm>
#include <array>
#include <charconv>
#include <initializer_list>
#include <new>
#include <utility>
#include <variant>

using namespace ovparser::internal;

namespace Spectral = PLKeyword::Spectral;
namespace Xml = PLKeyword::Xml;

namespace {

/** The attributes of a tag; unlike a map made of a list, nothing is lost when memory runs out. */
AttrMap attributesOf(std::initializer_list<std::pair<QString, QString>> list)
{
    AttrMap attributes;
    for (const auto& [name, value] : list)
        attributes.insert(name, value);
    return attributes;
}

using Roi = _tagsROIProperties;

constexpr Field<Roi> roiFields[] = {
    {Attribute::Angle, &Roi::angle},
    {Attribute::Area, &Roi::area},
    {Attribute::BkgAssociation, &Roi::bkgAssociation},
    {Attribute::BkgRoi, &Roi::bkgROI},
    {Attribute::CmPerPixel, &Roi::cmPerPixel},
    {Attribute::FractionalPeak, &Roi::fractionalPeak},
    {Attribute::Height, &Roi::height},
    {Attribute::LockPosition, &Roi::lockPosition},
    {Attribute::LockSize, &Roi::lockSize},
    {Attribute::RoiPixels, &Roi::roiPixels},
    {Attribute::RoiShape, &Roi::roiShape},
    {Attribute::RoiType, &Roi::roiType},
    {Attribute::Width, &Roi::width},
    {Attribute::Xc, &Roi::xc},
    {Attribute::Yc, &Roi::yc},
};

constexpr Field<Roi> roiContourFields[] = {
    {Attribute::ContourDirections, &Roi::contourDirections},
    {Attribute::ContourPeakX, &Roi::contourPeakX},
    {Attribute::ContourPeakY, &Roi::contourPeakY},
    {Attribute::ContourStartX, &Roi::contourStartX},
    {Attribute::ContourStartY, &Roi::contourStartY},
    {Attribute::ContourXDelta, &Roi::contourXDelta},
    {Attribute::ContourYDelta, &Roi::contourYDelta},
};

using Info = _tagSClickROIInformation;
using SpectralResults = _tagSROISpectralResults;

constexpr Field<SpectralResults> resultFields[] = {
    {Attribute::Roi, &SpectralResults::roi},
};

/** The elements of a plot or fit: the whole, the attribute with its size, and one value. */
struct ValuesForm
{
    Spectral::ElementId results = Spectral::Root;
    QLatin1String total;
    Spectral::ElementId values = Spectral::Root;
};

constexpr ValuesForm plotForm = {Spectral::PlotResults, Attribute::TotalPlotValues,
                                 Spectral::PlotValues};
constexpr ValuesForm fitForm = {Spectral::FitResults, Attribute::TotalFitValues,
                                Spectral::FitValues};

QString asText(const QString& value)
{
    return value;
}

QString asText(int value)
{
    return QString::number(value);
}

QString asText(double value)
{
    return printfGeneralText(value);
}

template <typename Record, std::size_t N>
void addTo(AttrMap& attrs, const Field<Record> (&fields)[N], const Record& record)
{
    for (const Field<Record>& field : fields) {
        std::visit([&](auto member) { attrs.insert(field.attribute, asText(record.*member)); },
                   field.member);
    }
}

/** The elements of one document, reached by moves of the reader's cursor. */
class Walk
{
public:
    explicit Walk(CPLXMLReader& reader)
        : m_reader(reader)
    {}

    // The sizes of tag and name decide most comparisons before anything is copied.
    [[nodiscard]] static bool matches(const QDomElement& element, Spectral::ElementId id)
    {
        const QLatin1String name = Spectral::Elements[id].name;
        const QString tag = element.tagName();
        return tag.size() == name.size() &&
               (tag == name || tag.toLower() == QString(name).toLower());
    }

    [[nodiscard]] bool hasAttributes(const QDomElement& element, int count) const
    {
        int found = 0;
        m_reader.getAttributeCount(element, found);
        return found == count;
    }

    template <typename Value>
    void value(const QDomElement& element, QLatin1String attribute, Value* value) const
    {
        convert(m_reader.getAttributeValue(element, attribute), value);
    }

    template <typename Record, std::size_t N>
    void read(const QDomElement& element, const Field<Record> (&fields)[N], Record* record) const
    {
        for (const Field<Record>& field : fields) {
            std::visit([&](auto member) { value(element, field.attribute, &(record->*member)); },
                       field.member);
        }
    }

    /** Reads the fields of an element that has the name; false when it has another. */
    template <typename Record, std::size_t N>
    bool readIf(Spectral::ElementId id, const QDomElement& element,
                const Field<Record> (&fields)[N], Record* record) const
    {
        if (!matches(element, id))
            return false;
        read(element, fields, record);
        return true;
    }

    /** Hands each child to `visit` until that returns true or a child is no element. */
    template <typename Visit>
    void children(const QDomElement& parent, Visit visit)
    {
        QDomElement child = m_reader.getFirstChild(parent);
        while (!child.isNull() && !visit(child))
            child = m_reader.getNextSiblingElement(child);
    }

    /**
     * As children(), for a visit that moves no cursor. The caller has settle() put the cursor on
     * the last child reached, which is returned: a step that moves it takes several times as long.
     */
    template <typename Visit>
    static QDomElement scan(const QDomElement& parent, Visit visit)
    {
        QDomElement last;
        QDomElement child = parent.firstChild().toElement();
        while (!child.isNull()) {
            last = child;
            if (visit(child))
                break;
            child = child.nextSibling().toElement();
        }
        return last;
    }

    /** Puts the cursor on an element that was reached by steps over elements only. */
    void settle(const QDomElement& element)
    {
        const QDomElement previous = element.previousSibling().toElement();
        if (previous.isNull())
            m_reader.getFirstChild(element.parentNode().toElement());
        else
            m_reader.getNextSiblingElement(previous);
    }

    /** The child of this name at a place among its equals, from 0; null when there is none. */
    QDomElement child(const QDomElement& parent, Spectral::ElementId id, int index);

    /** Adds the values of one plot or fit, unless it holds another number than it states. */
    template <typename Record, std::size_t N>
    void addValues(const QDomElement& results, const ValuesForm& form,
                   const Field<Record> (&fields)[N], QList<Record>* list);

    /** The values of all complete plots or fits that have the label. */
    template <typename Record, std::size_t N>
    QList<Record> values(const QString& label, const ValuesForm& form,
                         const Field<Record> (&fields)[N]);

    /** The results of one region of interest. */
    SpectralResults results(const QDomElement& element);

private:
    CPLXMLReader& m_reader;
};

QDomElement Walk::child(const QDomElement& parent, Spectral::ElementId id, int index)
{
    bool found = false;
    int counter = -1;
    const QDomElement last = scan(parent, [&](const QDomElement& element) {
        found = matches(element, id) && ++counter == index;
        return found;
    });
    if (!found && index > m_reader.getChildElementCount(parent))
        return {};
    settle(last);
    return found ? last : QDomElement();
}

template <typename Record, std::size_t N>
void Walk::addValues(const QDomElement& results, const ValuesForm& form,
                     const Field<Record> (&fields)[N], QList<Record>* list)
{
    int total = 0;
    value(results, form.total, &total);
    if (total != m_reader.getChildElementCount(results))
        return;
    settle(scan(results, [&](const QDomElement& element) {
        Record record;
        if (matches(element, form.values)) {
            read(element, fields, &record);
            list->append(record);
        }
        return false;
    }));
}

template <typename Record, std::size_t N>
QList<Record> Walk::values(const QString& label, const ValuesForm& form,
                           const Field<Record> (&fields)[N])
{
    QList<Record> list;
    const QString wanted = label.toLower();
    children(m_reader.getRootElement(), [&](const QDomElement& results) {
        if (matches(results, form.results) &&
            m_reader.getAttributeValue(results, Attribute::RoiLabel).toLower() == wanted)
            addValues(results, form, fields, &list);
        return false;
    });
    return list;
}

SpectralResults Walk::results(const QDomElement& element)
{
    SpectralResults record;
    if (hasAttributes(element, 1))
        read(element, resultFields, &record);
    const QDomElement first = m_reader.getFirstChild(element);
    if (hasAttributes(first, 3))
        readIf(Spectral::ResultsFlux, first, fluxFields, &record);
    const QDomElement last = m_reader.getLastChild(element);
    if (hasAttributes(last, 3))
        readIf(Spectral::ResultsDepth, last, depthFields, &record);
    return record;
}

template <typename... Pointers>
bool allGiven(const Pointers*... pointers)
{
    return ((pointers != nullptr) && ...);
}

/** Writes elements; no more is written after some that memory did not suffice for. */
template <typename Write>
void writeAll(std::unique_ptr<CPLXMLWriter>& writer, Write write)
{
    if (guarded(write) != eSTATUS_SUCCESS)
        writer.reset();
}

/** The time now, as the system's locale writes it. */
QString dateAndTime()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QLocale system = QLocale::system();
    return system.toString(now.time(), QLocale::ShortFormat) + QLatin1String(", ") +
           system.toString(now.date(), QLocale::ShortFormat);
}

} // namespace

CPLSpectralWrapper::CPLSpectralWrapper() = default;

CPLSpectralWrapper::~CPLSpectralWrapper() = default;

bool CPLSpectralWrapper::createSpectralXMLFile(QString newFileName)
{
    return answerOf([&] {
        writer.reset();
        file.close();
        fileName = newFileName;
        file.setFileName(fileName);
        const bool opened = openToWrite(file, QIODevice::Truncate);
        writer.reset(new (std::nothrow) CPLXMLWriter(&file, nullptr));
        if (!writer)
            return false;
        writer->setAutoNewLine(true);
        const QString root = Spectral::Elements[Spectral::Root].name;
        writer->writeRaw(Xml::DeclarationStart + QLatin1String(Xml::Utf8) + Xml::DeclarationEnd);
        writer->newLine();
        writer->writeRaw(Xml::DocumentType + root + QLatin1String("><") + root + QLatin1Char('>'));
        writer->newLine();
        return opened;
    });
}

QString CPLSpectralWrapper::setDateAndTime() const
{
    return answerOf(dateAndTime);
}

void CPLSpectralWrapper::setSpectralAttributes(QString sequenceId, int numberOfClicks,
                                               QString activeImage, QString tissueProperty,
                                               QString sourceModel, float indexOfRefraction)
{
    writeAll(writer, [&] {
        writeElement(Spectral::Attributes,
                     attributesOf({{Attribute::ActiveImage, activeImage},
                                   {Attribute::DateTime, dateAndTime()},
                                   {Attribute::IndexOfRefraction,
                                    printfGeneralText(double(indexOfRefraction))},
                                   {Attribute::NoOfClicks, QString::number(numberOfClicks)},
                                   {Attribute::SequenceId, sequenceId},
                                   {Attribute::SourceModel, sourceModel},
                                   {Attribute::TissueProperty, tissueProperty}}));
    });
}

void CPLSpectralWrapper::setOpenClickInfo(int totalClicks)
{
    writeAll(writer, [&] {
        openElement(Spectral::ClickInfo,
                    attributesOf({{Attribute::TotalClicks, QString::number(totalClicks)}}));
    });
}

void CPLSpectralWrapper::setCloseClickInfo()
{
    writeAll(writer, [&] { closeElement(Spectral::ClickInfo); });
}

void CPLSpectralWrapper::setClickNumberInfo(QString clickNumber, QString wavelength)
{
    writeAll(writer, [&] {
        openElement(Spectral::Click, attributesOf({{Attribute::ClickNumber, clickNumber},
                                                   {Attribute::ImageWavelength,
                                                    wavelength + Spectral::WavelengthUnit}}));
    });
}

void CPLSpectralWrapper::setCloseClickNumberInfo()
{
    writeAll(writer, [&] { closeElement(Spectral::Click); });
}

void CPLSpectralWrapper::setClickNumberFilterProperties(int centralWavelength, float bandWidth,
                                                        float avgTransmission)
{
    writeAll(writer, [&] {
        writeElement(
            Spectral::FilterProperties,
            attributesOf({{Attribute::AvgTransmission, printfGeneralText(double(avgTransmission))},
                          {Attribute::BandWidth, printfGeneralText(double(bandWidth))},
                          {Attribute::CentralWavelength,
                           QString::number(centralWavelength) + Spectral::WavelengthUnit}}));
    });
}

void CPLSpectralWrapper::setClickNumberROIProperties(QString roi, _tagsROIProperties properties,
                                                     bool withContour)
{
    writeAll(writer, [&] {
        AttrMap attrs;
        addTo(attrs, roiFields, properties);
        if (withContour)
            addTo(attrs, roiContourFields, properties);
        openElement(Spectral::ClickRoi, attributesOf({{Attribute::Roi, roi},
                                                      {Attribute::RoiLabel, properties.roiLabel}}));
        writeElement(Spectral::RoiProperties, attrs);
        closeElement(Spectral::ClickRoi);
    });
}

void CPLSpectralWrapper::setROIMeasurementsProperties(QString filterLabel, double totalFlux,
                                                      double averageRadiance)
{
    writeAll(writer, [&] {
        openElement(Spectral::ClickRoi, {});
        writeElement(Spectral::RoiMeasurements,
                     attributesOf({{Attribute::AverageRadiance, printfGeneralText(averageRadiance)},
                                   {Attribute::FilterLabel, filterLabel},
                                   {Attribute::TotalFlux, printfGeneralText(totalFlux)}}));
        closeElement(Spectral::ClickRoi);
    });
}

void CPLSpectralWrapper::setSpectralAnalysisResults(QString roi, double totalFlux,
                                                    double fluxStdDev, QString fluxUnits,
                                                    double averageDepth, double depthStdDev,
                                                    QString depthUnits)
{
    writeAll(writer, [&] {
        openElement(Spectral::Results, attributesOf({{Attribute::Roi, roi}}));
        writeElement(Spectral::ResultsFlux,
                     attributesOf({{Attribute::FluxStdDev, printfGeneralText(fluxStdDev)},
                                   {Attribute::FluxUnits, fluxUnits},
                                   {Attribute::TotalFlux, printfGeneralText(totalFlux)}}));
        writeElement(Spectral::ResultsDepth,
                     attributesOf({{Attribute::AverageDepth, printfGeneralText(averageDepth)},
                                   {Attribute::DepthStdDev, printfGeneralText(depthStdDev)},
                                   {Attribute::DepthUnits, depthUnits}}));
        closeElement(Spectral::Results);
    });
}

void CPLSpectralWrapper::setOpenSpectralAnalysisPlotResults(QString roiLabel, int totalPlotValues)
{
    writeAll(writer, [&] {
        openElement(Spectral::PlotResults,
                    attributesOf({{Attribute::RoiLabel, roiLabel},
                                  {Attribute::TotalPlotValues, QString::number(totalPlotValues)}}));
    });
}

void CPLSpectralWrapper::setSpectralAnalysisPlotResults(double intensity, double waveLength)
{
    writeAll(writer, [&] {
        writeElement(Spectral::PlotValues,
                     attributesOf({{Attribute::Intensity, printfGeneralText(intensity)},
                                   {Attribute::WaveLength, printfGeneralText(waveLength)}}));
    });
}

void CPLSpectralWrapper::setCloseSpectralAnalysisPlotResults()
{
    writeAll(writer, [&] { closeElement(Spectral::PlotResults); });
}

void CPLSpectralWrapper::setOpenSpectralAnalysisFitResults(QString roiLabel, int totalFitValues)
{
    writeAll(writer, [&] {
        openElement(Spectral::FitResults,
                    attributesOf({{Attribute::RoiLabel, roiLabel},
                                  {Attribute::TotalFitValues, QString::number(totalFitValues)}}));
    });
}

void CPLSpectralWrapper::setSpectralAnalysisFitResults(double intensity, double attenuation,
                                                       double fitValue, double horizontalError,
                                                       double verticalError)
{
    writeAll(writer, [&] {
        writeElement(Spectral::FitValues,
                     attributesOf({{Attribute::Attenuation, printfGeneralText(attenuation)},
                                   {Attribute::FitValue, printfGeneralText(fitValue)},
                                   {Attribute::HorizontalError, printfGeneralText(horizontalError)},
                                   {Attribute::Intensity, printfGeneralText(intensity)},
                                   {Attribute::VerticalError, printfGeneralText(verticalError)}}));
    });
}

void CPLSpectralWrapper::setCloseSpectralAnalysisFitResults()
{
    writeAll(writer, [&] { closeElement(Spectral::FitResults); });
}

void CPLSpectralWrapper::setLinearFitResults(double valueA, double valueB)
{
    writeAll(writer, [&] {
        writeElement(Spectral::LinearFitValues,
                     attributesOf({{Attribute::LinearFitValueA, printfGeneralText(valueA)},
                                   {Attribute::LinearFitValueB, printfGeneralText(valueB)}}));
    });
}

void CPLSpectralWrapper::setCloseSpectralAnalysis()
{
    writeAll(writer, [&] { closeElement(Spectral::Root); });
}

bool CPLSpectralWrapper::loadXMLFile(QString newFileName)
{
    return answerOf([&] {
        fileName = newFileName;
        if (!reader.createXMLDocumentFormFile(fileName, nullptr, nullptr, nullptr))
            return false;
        reader.setRootElement();
        return Walk::matches(reader.getRootElement(), Spectral::Root);
    });
}

bool CPLSpectralWrapper::getSpectralAttributes(QString* sequenceId, int* numberOfClicks,
                                               QString* activeImage, QString* tissueProperty,
                                               QString* sourceModel, int index,
                                               QString* indexOfRefraction)
{
    return answerOf([&] {
        if (!allGiven(sequenceId, numberOfClicks, activeImage, tissueProperty, sourceModel,
                      indexOfRefraction))
            return false;
        Walk walk(reader);
        const QDomElement attributes =
            walk.child(reader.getRootElement(), Spectral::Attributes, index);
        if (attributes.isNull())
            return false;
        walk.value(attributes, Attribute::SequenceId, sequenceId);
        walk.value(attributes, Attribute::NoOfClicks, numberOfClicks);
        walk.value(attributes, Attribute::ActiveImage, activeImage);
        walk.value(attributes, Attribute::TissueProperty, tissueProperty);
        walk.value(attributes, Attribute::SourceModel, sourceModel);
        walk.value(attributes, Attribute::IndexOfRefraction, indexOfRefraction);
        return true;
    });
}

bool CPLSpectralWrapper::getSpectralAnalysisAttributes(QString* sequenceId, int* firstNumber,
                                                       int* secondNumber, QString* tissueProperty,
                                                       QString* sourceModel)
{
    return answerOf([&] {
        constexpr int attributeCount = 8;
        if (!allGiven(sequenceId, firstNumber, secondNumber, tissueProperty, sourceModel))
            return false;
        const Walk walk(reader);
        const QDomElement attributes = reader.getFirstChild(reader.getRootElement());
        if (!Walk::matches(attributes, Spectral::Attributes) ||
            !walk.hasAttributes(attributes, attributeCount))
            return false;
        walk.value(attributes, Attribute::SequenceId, sequenceId);
        walk.value(attributes, Attribute::NoOfClicks, firstNumber);
        walk.value(attributes, Attribute::ActiveWavelength, secondNumber);
        walk.value(attributes, Attribute::TissueProperty, tissueProperty);
        walk.value(attributes, Attribute::SourceModel, sourceModel);
        return true;
    });
}

bool CPLSpectralWrapper::getNumberOfClicksForROIIndex(int* totalClicks)
{
    return answerOf([&] {
        if (totalClicks == nullptr)
            return false;
        const QDomElement next = reader.getNextSiblingElement(reader.getCurrentElement());
        if (!Walk::matches(next, Spectral::ClickInfo))
            return false;
        Walk(reader).value(next, Attribute::TotalClicks, totalClicks);
        return true;
    });
}

bool CPLSpectralWrapper::getClickAndROIInformationForIndex(_tagSClickROIInformation* info,
                                                           int clickIndex, int roiIndex)
{
    return answerOf([&] {
        if (info == nullptr)
            return false;
        const QDomElement attributes =
            Walk(reader).child(reader.getRootElement(), Spectral::Attributes, roiIndex);
        const QDomElement clickInfo = reader.getNextSiblingElement(attributes);
        return Walk::matches(clickInfo, Spectral::ClickInfo) &&
               getClickROIInformation(info, clickInfo, clickIndex);
    });
}

bool CPLSpectralWrapper::getClickROIInformation(_tagSClickROIInformation* info,
                                                const QDomElement& clickInfo, int clickIndex)
{
    Walk walk(reader);
    const QDomElement click = walk.child(clickInfo, Spectral::Click, clickIndex);
    if (!walk.readIf(Spectral::Click, click, clickFields, info))
        return false;
    const QDomElement filter = reader.getFirstChild(click);
    if (!walk.readIf(Spectral::FilterProperties, filter, filterFields, info))
        return false;
    const QDomElement roi = reader.getNextSiblingElement(filter);
    if (!walk.readIf(Spectral::ClickRoi, roi, clickRoiFields, info))
        return false;
    const QDomElement properties = reader.getFirstChild(roi);
    if (!walk.readIf(Spectral::RoiProperties, properties, propertyFields, info))
        return false;
    if (info->roiShape == Spectral::ContourShape)
        walk.read(properties, contourFields, info);
    const QDomElement measurements = reader.getNextSiblingElement(properties);
    return walk.readIf(Spectral::RoiMeasurements, measurements, measurementFields, info);
}

QList<_tagSROISpectralResults> CPLSpectralWrapper::getROISpectralResults()
{
    return answerOf([&] {
        QList<_tagSROISpectralResults> list;
        Walk walk(reader);
        walk.children(reader.getRootElement(), [&](const QDomElement& element) {
            if (Walk::matches(element, Spectral::Results))
                list.append(walk.results(element));
            return false;
        });
        return list;
    });
}

QList<SPlotResults> CPLSpectralWrapper::getROIPlotResultsForROI(QString roiLabel)
{
    return answerOf([&] { return Walk(reader).values(roiLabel, plotForm, plotFields); });
}

QList<SFitResults> CPLSpectralWrapper::getROIFitResultsForROI(QString roiLabel)
{
    return answerOf([&] { return Walk(reader).values(roiLabel, fitForm, fitFields); });
}

bool CPLSpectralWrapper::getLinearFitResults(double* valueA, double* valueB)
{
    return answerOf([&] {
        if (!allGiven(valueA, valueB))
            return false;
        Walk walk(reader);
        const QDomElement fit = walk.child(reader.getRootElement(), Spectral::LinearFitValues, 0);
        if (fit.isNull())
            return false;
        walk.value(fit, Attribute::LinearFitValueA, valueA);
        walk.value(fit, Attribute::LinearFitValueB, valueB);
        return true;
    });
}

void CPLSpectralWrapper::openElement(int id, const AttrMap& attrs)
{
    if (writer)
        writer->writeOpenTag(Spectral::Elements[id].name, attrs);
}

void CPLSpectralWrapper::closeElement(int id)
{
    if (writer)
        writer->writeCloseTag(Spectral::Elements[id].name);
}

void CPLSpectralWrapper::writeElement(int id, const AttrMap& attrs)
{
    if (writer)
        writer->writeAtomTag(Spectral::Elements[id].name, attrs);
}
