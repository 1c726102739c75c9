#include "KindCheck.h"

#include "Document.h"
#include "Entries.h"
#include "Files.h"

namespace {

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;

using Findings = std::vector<Finding>;

QString quoted(const QString& text)
{
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

void add(Findings* findings, const char* code, const QString& message)
{
    findings->push_back({0, true, code, message});
}

void checkLabelSet(const QString&, const Document& document, Findings* findings)
{
    QByteArray bytes = document.bytes();
    bytes.replace("\r\n", "\n").replace('\r', '\n');
    CPLLabelDataSet labels;
    const tag_estatus status =
        labels.loadData(QString::fromLatin1(bytes.constData(), bytes.size()));
    if (status != eSTATUS_SUCCESS)
        add(findings, "label-set-header",
            QStringLiteral(
                "the first line is not '*** User Label Name Set:', a TAB and a name; the "
                "label set is not read, with %1")
                .arg(getStatusString(status)));
}

void checkExtension(const QString&, const Document& document, Findings* findings)
{
    const CPLSection* const head = document.section(Section::ExtensionInfo);
    for (const QLatin1String key :
         {Key::ExtensionName, Key::SystemConfiguration, Key::ConflictsWith}) {
        if (head && !head->isKeyPresent(key))
            add(findings, "extension-incomplete",
                QStringLiteral("no key %1 in section 'Extension Info'; instruments do without this "
                               "extension")
                    .arg(quoted(key)));
    }
    if (!document.section(Section::CameraSystemInfo))
        add(findings, "extension-incomplete",
            QStringLiteral(
                "no section 'Camera System Info'; instruments do without this extension"));
}

void checkInstrument(const QString&, const Document& document, Findings* findings)
{
    const QStringList lines = document.preamble();
    for (const QString& line : lines) {
        if (line.contains(QLatin1Char(':')) && !line.startsWith(QLatin1Char('#')))
            add(findings, "key-before-section",
                QStringLiteral("%1 stands before the first section; it is not read")
                    .arg(quoted(line)));
    }
}

void checkAnalysis(const QString&, const Document& document, Findings* findings)
{
    if (!document.preamble().isEmpty())
        findings->push_back(
            {0, false, "preamble-dropped",
             QStringLiteral("lines before the first section; loading as an analysis drops them")});
}

void checkOptics(const QString& path, const Document& document, Findings* findings)
{
    CPLOptPropInfo optics;
    optics.readSettingFile(path);
    const auto inMenus = optics.getTissuePropList().size() + optics.getSrcModelList().size();
    const auto sections = document.sections().size();
    if (inMenus < sections)
        add(findings, "menu-incomplete",
            QStringLiteral(
                "%1 of %2 sections are in a menu; the others have no 'MenuName', or their "
                "number is not the next one")
                .arg(inMenus)
                .arg(sections));
}

void checkSettings(const QString&, const Document& document, Findings* findings)
{
    const QList<CPLSection*> sections = document.sections();
    for (const CPLSection* const section : sections) {
        if (!section->isKeyPresent(Key::MenuName))
            add(findings, "menu-name-missing",
                QStringLiteral("no 'MenuName' in section %1; it is in no menu")
                    .arg(quoted(keyOf(*section))));
    }
}

void checkSpectral(const QString&, const Document& document, Findings* findings)
{
    for (const QString& fault : document.spectral()->faults)
        add(findings, "total-differs", fault);
}

struct KindCheck
{
    FileKind kind = FileKind::InfoText;
    void (*check)(const QString& path, const Document& document, Findings* findings) = nullptr;
};

constexpr KindCheck kindChecks[] = {
    {FileKind::LabelSet, checkLabelSet},         {FileKind::InstrumentExtension, checkExtension},
    {FileKind::Instrument, checkInstrument},     {FileKind::AnalyzedAcquisition, checkAnalysis},
    {FileKind::OpticalProperties, checkOptics},  {FileKind::Settings, checkSettings},
    {FileKind::SpectralAnalysis, checkSpectral},
};

} // namespace

std::vector<Finding> checkKind(const QString& path, const Document& document)
{
    Findings findings;
    for (const KindCheck& row : kindChecks) {
        if (row.kind == document.kind())
            row.check(path, document, &findings);
    }
    return findings;
}
