#include "SpectralFile.h"

namespace {

namespace Spectral = PLKeyword::Spectral;

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
        return QLatin1String("cannot be opened");
    return QStringLiteral("line %1, column %2: %3").arg(line).arg(column).arg(message);
}

QList<_tagSClickROIInformation> clicksOf(CPLSpectralWrapper& file, int analysis)
{
    QList<_tagSClickROIInformation> clicks;
    for (int i = 0;; ++i) {
        _tagSClickROIInformation click;
        // False also when only the measurements are missing; an acquisition that is there has a
        // click number, be it empty.
        file.getClickAndROIInformationForIndex(&click, i, analysis);
        if (click.clickNumber.isNull())
            return clicks;
        clicks.append(click);
    }
}

QList<SpectralAnalysis> analysesOf(CPLSpectralWrapper& file)
{
    QList<SpectralAnalysis> analyses;
    SpectralAnalysis next;
    int clicks = 0;
    while (file.getSpectralAttributes(&next.sequenceId, &clicks, &next.activeImage, &next.tissue,
                                      &next.sourceModel, int(analyses.size()), &next.refraction)) {
        next.clicks = clicksOf(file, int(analyses.size()));
        analyses.append(next);
    }
    return analyses;
}

/** The labels of all plots and fits, each once, in file order. */
QStringList labelsIn(const QString& path)
{
    CPLXMLReader reader;
    reader.createXMLDocumentFormFile(path, nullptr, nullptr, nullptr);
    reader.setRootElement();
    QStringList labels;
    QDomElement element = reader.getFirstChild(reader.getRootElement());
    for (; !element.isNull(); element = reader.getNextSiblingElement(element)) {
        const QString tag = element.tagName();
        for (const Spectral::ElementId id : {Spectral::PlotResults, Spectral::FitResults}) {
            if (tag.compare(Spectral::Elements[id].name, Qt::CaseInsensitive) == 0)
                labels += reader.getAttributeValue(element, Spectral::Attribute::RoiLabel);
        }
    }
    labels.removeDuplicates();
    return labels;
}

std::optional<LinearFit> linearFitOf(CPLSpectralWrapper& file)
{
    LinearFit fit;
    if (!file.getLinearFitResults(&fit.a, &fit.b))
        return std::nullopt;
    return fit;
}

} // namespace

std::optional<SpectralFile> readSpectralFile(const QString& path, QString* problem)
{
    CPLSpectralWrapper file;
    if (!file.loadXMLFile(path)) {
        *problem = problemOf(path);
        return std::nullopt;
    }
    SpectralFile contents;
    contents.analyses = analysesOf(file);
    contents.results = file.getROISpectralResults();
    const QStringList labels = labelsIn(path);
    for (const QString& label : labels)
        contents.curves.append(
            {label, file.getROIPlotResultsForROI(label), file.getROIFitResultsForROI(label)});
    contents.linearFit = linearFitOf(file);
    return contents;
}
