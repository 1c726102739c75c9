// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// Spectral analyses: writing, loading and querying XML.

#include "Benchmarks.h"
#include "Inputs.h"
#include "ParserLibrary.h"

#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>
#include <QtXml/QDomDocument>
#include <pugixml.hpp>

#include <algorithm>
#include <cstring>

namespace {

namespace Attribute = PLKeyword::Spectral::Attribute;
namespace Spectral = PLKeyword::Spectral;

using Plot = QList<SPlotResults>;

const QString label = QStringLiteral("ROI 1");

QString nameOf(Spectral::ElementId id)
{
    return Spectral::Elements[id].name;
}

SPlotResults plotValue(double intensity, double waveLength)
{
    SPlotResults value;
    value.intensity = intensity;
    value.waveLength = waveLength;
    return value;
}

bool holds(const Plot& plot, const QVector<SpectralValue>& values)
{
    return std::equal(plot.begin(), plot.end(), values.begin(), values.end(),
                      [](const SPlotResults& a, const SpectralValue& b) {
                          return a.intensity == b.intensity && a.waveLength == b.waveLength;
                      });
}

void write(const QString& path, const QVector<SpectralValue>& values)
{
    CPLSpectralWrapper file;
    file.createSpectralXMLFile(path);
    file.setOpenSpectralAnalysisPlotResults(label, int(values.size()));
    for (const SpectralValue& value : values)
        file.setSpectralAnalysisPlotResults(value.intensity, value.waveLength);
    file.setCloseSpectralAnalysisPlotResults();
    file.setCloseSpectralAnalysis();
}

void writeWithQt(const QString& path, const QVector<SpectralValue>& values)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    QXmlStreamWriter xml(&file);
    xml.writeStartDocument();
    xml.writeDTD(QLatin1String("<!DOCTYPE ") + nameOf(Spectral::Root) + QLatin1Char('>'));
    xml.writeStartElement(nameOf(Spectral::Root));
    xml.writeCharacters(QStringLiteral("\n"));
    xml.writeStartElement(nameOf(Spectral::PlotResults));
    xml.writeAttribute(Attribute::RoiLabel, label);
    xml.writeAttribute(Attribute::TotalPlotValues, QString::number(values.size()));
    xml.writeCharacters(QStringLiteral("\n"));
    for (const SpectralValue& value : values) {
        xml.writeCharacters(QStringLiteral("    "));
        xml.writeEmptyElement(nameOf(Spectral::PlotValues));
        xml.writeAttribute(Attribute::Intensity, QString::number(value.intensity));
        xml.writeAttribute(Attribute::WaveLength, QString::number(value.waveLength));
        xml.writeCharacters(QStringLiteral("\n"));
        file.flush();
    }
    xml.writeEndElement();
    xml.writeEndDocument();
}

QDomDocument loadedDom(const QString& path)
{
    QDomDocument document;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file))
        return {};
    return document;
}

Plot plotOf(const QDomDocument& document)
{
    Plot plot;
    QDomElement results = document.documentElement().firstChildElement();
    while (!results.isNull() && (results.tagName() != nameOf(Spectral::PlotResults) ||
                                 results.attribute(Attribute::RoiLabel) != label))
        results = results.nextSiblingElement();
    QDomElement value = results.firstChildElement();
    for (; !value.isNull(); value = value.nextSiblingElement()) {
        plot.append(plotValue(value.attribute(Attribute::Intensity).toDouble(),
                              value.attribute(Attribute::WaveLength).toDouble()));
    }
    return plot;
}

Plot plotOf(const pugi::xml_document& document)
{
    Plot plot;
    const pugi::xml_node results = document.document_element().find_child_by_attribute(
        Spectral::Elements[Spectral::PlotResults].name.data(), Attribute::RoiLabel.data(), "ROI 1");
    for (const pugi::xml_node value : results.children()) {
        plot.append(plotValue(value.attribute(Attribute::Intensity.data()).as_double(),
                              value.attribute(Attribute::WaveLength.data()).as_double()));
    }
    return plot;
}

/** Reads without keeping a document: all that a program needs that wants nothing but the plot. */
Plot streamedPlot(const QString& path)
{
    Plot plot;
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement ||
            xml.name() != nameOf(Spectral::PlotValues))
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        plot.append(plotValue(attributes.value(Attribute::Intensity).toDouble(),
                              attributes.value(Attribute::WaveLength).toDouble()));
    }
    return plot;
}

template <auto run>
void onNewFile(benchmark::State& state)
{
    const QVector<SpectralValue> values = spectralValues(int(state.range(0)));
    const QString path = temporaryPath(QStringLiteral("written.xml"));
    for (auto _ : state)
        run(path, values);
    if (!holds(plotOf(loadedDom(path)), values))
        state.SkipWithError("does not write the values");
}

/** The file that is read; as the library writes it. */
QString inputPath(const QVector<SpectralValue>& values)
{
    QString path = temporaryPath(QStringLiteral("plot%1.xml").arg(values.size()));
    if (!QFile::exists(path))
        write(path, values);
    return path;
}

/** One way to get at a file's plot: load a document, then ask it. */
struct LibraryWay
{
    explicit LibraryWay(const QString& path) { file.loadXMLFile(path); }
    Plot plot() { return file.getROIPlotResultsForROI(label); }
    CPLSpectralWrapper file;
};

struct DomWay
{
    explicit DomWay(const QString& path)
        : document(loadedDom(path))
    {}
    [[nodiscard]] Plot plot() const { return plotOf(document); }
    QDomDocument document;
};

struct PugiWay
{
    explicit PugiWay(const QString& path) { document.load_file(path.toUtf8().constData()); }
    [[nodiscard]] Plot plot() const { return plotOf(document); }
    pugi::xml_document document;
};

template <typename Way>
void load(benchmark::State& state)
{
    const QVector<SpectralValue> values = spectralValues(int(state.range(0)));
    const QString path = inputPath(values);
    if (!holds(Way(path).plot(), values))
        return state.SkipWithError("does not give the values");
    for (auto _ : state)
        benchmark::DoNotOptimize(Way(path));
}

void stream(benchmark::State& state)
{
    const QVector<SpectralValue> values = spectralValues(int(state.range(0)));
    const QString path = inputPath(values);
    if (!holds(streamedPlot(path), values))
        return state.SkipWithError("does not give the values");
    for (auto _ : state)
        benchmark::DoNotOptimize(streamedPlot(path));
}

template <typename Way>
void query(benchmark::State& state)
{
    const QVector<SpectralValue> values = spectralValues(int(state.range(0)));
    Way way(inputPath(values));
    if (!holds(way.plot(), values))
        return state.SkipWithError("does not give the values");
    for (auto _ : state)
        benchmark::DoNotOptimize(way.plot());
}

} // namespace

void registerXmlBenchmarks()
{
    add("spectral-write", library, onNewFile<write>, spectralPlot);
    add("spectral-write", "QXmlStreamWriter", onNewFile<writeWithQt>, spectralPlot);
    add("spectral-load", library, load<LibraryWay>, spectralPlot);
    add("spectral-load", "QDomDocument", load<DomWay>, spectralPlot);
    add("spectral-load", "QXmlStreamReader, plot only", stream, spectralPlot);
    add("spectral-load", "pugixml", load<PugiWay>, spectralPlot);
    add("spectral-plot", library, query<LibraryWay>, spectralPlot);
    add("spectral-plot", "QDomDocument", query<DomWay>, spectralPlot);
    add("spectral-plot", "pugixml", query<PugiWay>, spectralPlot);
}
