// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "SpectralFile.h"

#include "Files.h"
#include "SpectralFields.h"

#include <QtCore/QHash>
#include <QtCore/QMap>

#include <variant>

using namespace ovparser::internal;

namespace {

namespace Spectral = PLKeyword::Spectral;

constexpr Field<SpectralAnalysis> analysisFields[] = {
    {Attribute::SequenceId, &SpectralAnalysis::sequenceId},
    {Attribute::ActiveImage, &SpectralAnalysis::activeImage},
    {Attribute::TissueProperty, &SpectralAnalysis::tissue},
    {Attribute::SourceModel, &SpectralAnalysis::sourceModel},
    {Attribute::IndexOfRefraction, &SpectralAnalysis::refraction},
};

using Click = _tagSClickROIInformation;

template <typename Record, std::size_t N>
void addNumbers(const Field<Record> (&fields)[N], QMap<QString, bool>* isWhole)
{
    for (const Field<Record>& field : fields) {
        if (!std::holds_alternative<QString Record::*>(field.member))
            isWhole->insert(field.attribute, std::holds_alternative<int Record::*>(field.member));
    }
}

/** The attributes that are read as numbers, and whether as whole ones. */
QMap<QString, bool> numberAttributes()
{
    QMap<QString, bool> isWhole = {
        {Attribute::NoOfClicks, true},       {Attribute::ActiveWavelength, true},
        {Attribute::TotalClicks, true},      {Attribute::LinearFitValueA, false},
        {Attribute::LinearFitValueB, false},
    };
    addNumbers(filterFields, &isWhole);
    addNumbers(propertyFields, &isWhole);
    addNumbers(contourFields, &isWhole);
    addNumbers(measurementFields, &isWhole);
    addNumbers(fluxFields, &isWhole);
    addNumbers(depthFields, &isWhole);
    addNumbers(plotFields, &isWhole);
    addNumbers(fitFields, &isWhole);
    return isWhole;
}

bool is(const QDomElement& element, Spectral::ElementId id)
{
    return element.tagName().compare(Spectral::Elements[id].name, Qt::CaseInsensitive) == 0;
}

/** Reads the fields of an element that has the name; false when it has another. */
template <typename Record, std::size_t N>
bool readIf(Spectral::ElementId id, const QDomElement& element, const Field<Record> (&fields)[N],
            Record* record)
{
    if (!is(element, id))
        return false;
    for (const Field<Record>& field : fields) {
        const QString text = element.attribute(field.attribute);
        std::visit([&](auto member) { convert(text, &(record->*member)); }, field.member);
    }
    return true;
}

/** Hands each child to `visit` until one is no element, as the library reads such a file. */
template <typename Visit>
void forEachChild(const QDomElement& parent, Visit visit)
{
    QDomElement child = parent.firstChild().toElement();
    for (; !child.isNull(); child = child.nextSibling().toElement())
        visit(child);
}

/** What was measured in a region: inside its element, or in the one after it, as it is written. */
QDomElement measurementsOf(const QDomElement& roi)
{
    const QDomElement inside = roi.firstChild().nextSibling().toElement();
    return inside.isNull() ? roi.nextSibling().firstChild().toElement() : inside;
}

/** An acquisition, as far as its elements stand where they belong. */
Click clickOf(const QDomElement& element)
{
    Click click;
    const QDomElement filter = element.firstChild().toElement();
    const QDomElement roi = filter.nextSibling().toElement();
    const QDomElement properties = roi.firstChild().toElement();
    if (!readIf(Spectral::Click, element, clickFields, &click) ||
        !readIf(Spectral::FilterProperties, filter, filterFields, &click) ||
        !readIf(Spectral::ClickRoi, roi, clickRoiFields, &click) ||
        !readIf(Spectral::RoiProperties, properties, propertyFields, &click))
        return click;
    if (click.roiShape == Spectral::ContourShape)
        readIf(Spectral::RoiProperties, properties, contourFields, &click);
    readIf(Spectral::RoiMeasurements, measurementsOf(roi), measurementFields, &click);
    return click;
}

QList<Click> clicksOf(const QDomElement& clickInfo, SpectralFaults* faults)
{
    QList<Click> clicks;
    if (!is(clickInfo, Spectral::ClickInfo))
        return clicks;
    forEachChild(clickInfo, [&](const QDomElement& element) {
        if (is(element, Spectral::Click))
            clicks.append(clickOf(element));
    });
    const int stated = clickInfo.attribute(Attribute::TotalClicks).toInt();
    if (stated != clicks.size())
        faults->append({clickInfo.lineNumber(), "clicks-differ",
                        QStringLiteral("%1 states %2 acquisitions and holds %3")
                            .arg(clickInfo.tagName())
                            .arg(stated)
                            .arg(clicks.size())});
    return clicks;
}

/** Adds the values of a plot or fit, unless it holds another number than it states. */
template <typename Record, std::size_t N>
void addValues(const QDomElement& results, QLatin1String total, Spectral::ElementId id,
               const Field<Record> (&fields)[N], QList<Record>* list, SpectralFaults* faults)
{
    const QString stated = results.attribute(total);
    const int held = results.childNodes().count();
    if (stated.toInt() != held) {
        faults->append({results.lineNumber(), "total-differs",
                        QStringLiteral("%1 of '%2' states %3 values and holds %4; none is read")
                            .arg(results.tagName(), results.attribute(Attribute::RoiLabel), stated)
                            .arg(held)});
        return;
    }
    forEachChild(results, [&](const QDomElement& element) {
        Record record;
        if (readIf(id, element, fields, &record))
            list->append(record);
    });
}

/** Collects analyses and curves from the children of the root, in one pass. */
class Collector
{
public:
    explicit Collector(SpectralFile* contents)
        : m_contents(*contents)
    {}

    void add(const QDomElement& element);

private:
    SpectralCurve& curveOf(const QDomElement& element);

    SpectralFile& m_contents;
    QHash<QString, int> m_places; // of the curves, by label in lower case
};

void Collector::add(const QDomElement& element)
{
    SpectralAnalysis analysis;
    if (readIf(Spectral::Attributes, element, analysisFields, &analysis)) {
        analysis.clicks = clicksOf(element.nextSibling().toElement(), &m_contents.faults);
        m_contents.analyses.append(analysis);
    } else if (is(element, Spectral::PlotResults)) {
        addValues(element, Attribute::TotalPlotValues, Spectral::PlotValues, plotFields,
                  &curveOf(element).plot, &m_contents.faults);
    } else if (is(element, Spectral::FitResults)) {
        addValues(element, Attribute::TotalFitValues, Spectral::FitValues, fitFields,
                  &curveOf(element).fit, &m_contents.faults);
    }
}

/** The curve of a plot's or fit's region of interest, whose label was perhaps spelled otherwise. */
SpectralCurve& Collector::curveOf(const QDomElement& element)
{
    QList<SpectralCurve>& curves = m_contents.curves;
    const QString label = element.attribute(Attribute::RoiLabel);
    const auto place = m_places.constFind(label.toLower());
    if (place != m_places.constEnd())
        return curves[*place];
    m_places.insert(label.toLower(), int(curves.size()));
    curves.append({label, {}, {}});
    return curves.last();
}

/** What is wrong with a file that does not load. */
QString problemOf(const QString& path)
{
    CPLXMLReader reader;
    QString message;
    int line = 0;
    int column = 0;
    if (reader.createXMLDocumentFormFile(path, &message, &line, &column))
        return QLatin1String("not a spectral-analysis file");
    if (message.isEmpty())
        return explained(eSTATUS_FILE_OPEN_FAILED, path);
    return QStringLiteral("line %1, column %2: %3").arg(line).arg(column).arg(message);
}

bool isNumber(const QString& text, bool isWhole)
{
    bool ok = false;
    if (isWhole)
        text.toInt(&ok);
    else
        text.toDouble(&ok);
    return ok;
}

void checkNumbers(const QDomElement& element, SpectralFaults* faults)
{
    static const QMap<QString, bool> attributes = numberAttributes();
    for (auto row = attributes.begin(); row != attributes.end(); ++row) {
        const QString text = element.attribute(row.key());
        if (element.hasAttribute(row.key()) && !isNumber(text, *row))
            faults->append({element.lineNumber(), "not-a-number",
                            QStringLiteral("%1 of %2 is '%3', not %4; it is read as 0")
                                .arg(row.key(), element.tagName(), text,
                                     QLatin1String(*row ? "a whole number" : "a number"))});
    }
}

/** What stands after a child that is no element is not read. */
void checkOrder(const QDomElement& parent, SpectralFaults* faults)
{
    QDomNode child = parent.firstChild();
    while (child.isElement())
        child = child.nextSibling();
    if (!child.nextSiblingElement().isNull())
        faults->append({child.lineNumber(), "elements-not-read",
                        QStringLiteral("a text or comment in %1; the elements after it are not "
                                       "read")
                            .arg(parent.tagName())});
}

/** Checks an element and everything in it; the reader bounds how deep elements are nested. */
void checkElement(const QDomElement& element, SpectralFaults* faults)
{
    checkOrder(element, faults);
    checkNumbers(element, faults);
    forEachChild(element, [&](const QDomElement& child) { checkElement(child, faults); });
}

std::optional<LinearFit> linearFitOf(CPLSpectralWrapper& file)
{
    LinearFit fit;
    if (!file.getLinearFitResults(&fit.a, &fit.b))
        return std::nullopt;
    return fit;
}

} // namespace

// Each query for one acquisition or label walks the document anew; asking for all of them takes
// time in proportion to their square. Those are read from the document itself.
std::optional<SpectralFile> readSpectralFile(const QString& path, QString* problem)
{
    *problem = otherThanFile(path);
    if (!problem->isEmpty())
        return std::nullopt;
    CPLSpectralWrapper file;
    CPLXMLReader reader;
    if (!file.loadXMLFile(path) ||
        !reader.createXMLDocumentFormFile(path, nullptr, nullptr, nullptr)) {
        *problem = problemOf(path);
        return std::nullopt;
    }
    SpectralFile contents;
    contents.results = file.getROISpectralResults();
    contents.linearFit = linearFitOf(file);
    Collector collector(&contents);
    reader.setRootElement();
    forEachChild(reader.getRootElement(),
                 [&](const QDomElement& element) { collector.add(element); });
    return contents;
}

SpectralFaults elementFaults(const QString& path)
{
    SpectralFaults faults;
    CPLXMLReader reader;
    if (!reader.createXMLDocumentFormFile(path, nullptr, nullptr, nullptr))
        return faults;
    reader.setRootElement();
    checkElement(reader.getRootElement(), &faults);
    return faults;
}
