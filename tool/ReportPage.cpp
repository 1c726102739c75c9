// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ReportPage.h"

#include "ReportSpectra.h"
#include "ReportTables.h"
#include "ReportTimeline.h"
#include "Terminal.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>

#include <algorithm>

// Outside of any namespace, as Qt asks for it.
static void takeResources()
{
    Q_INIT_RESOURCE(report);
}

namespace {

/** With more acquisitions than these, the timeline of each group is a page of its own. */
constexpr int mostOnAPage = 10000;

const char* const generator = "ovinfo report";

QByteArray resource(const char* name)
{
    takeResources();
    QFile file(QLatin1String(":/report/") + QLatin1String(name));
    file.open(QIODevice::ReadOnly);
    const QByteArray text = file.readAll();
    return text.mid(text.indexOf("*/") + 2); // the notice of the licence
}

QString hashOf(const QByteArray& content)
{
    const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Sha256);
    return QStringLiteral("'sha256-%1'").arg(QString::fromLatin1(hash.toBase64()));
}

/** A part of the page that its head leads to. */
struct Section
{
    const char* id = "";
    const char* title = "";
};

constexpr Section summary = {"summary", "Summary"};
constexpr Section timeline = {"timeline", "Timeline"};
constexpr Section deviations = {"deviations", "Deviations"};
constexpr Section labelValues = {"labels", "Labels"};
constexpr Section spectralResults = {"spectral-results", "Spectral results"};
constexpr Section problems = {"problems", "Problems"};
constexpr Section sections[] = {summary,     timeline,        deviations,
                                labelValues, spectralResults, problems};

QString linkTo(const Section& section)
{
    return QLatin1Char('#') + QLatin1String(section.id);
}

/** A link to a page beside this one, whatever its name. */
QString linkTo(const QString& page)
{
    return QLatin1String("./") + QString::fromLatin1(QUrl::toPercentEncoding(page));
}

QString datesOf(const StudyReport& report)
{
    QDate first;
    QDate last;
    for (const ReportedAcquisition& acquisition : report.acquisitions) {
        if (!acquisition.date.isValid())
            continue;
        first = first.isValid() ? qMin(first, acquisition.date) : acquisition.date;
        last = last.isValid() ? qMax(last, acquisition.date) : acquisition.date;
    }
    if (!first.isValid())
        return {};
    return first == last
               ? first.toString(Qt::ISODate)
               : first.toString(Qt::ISODate) + QLatin1String(" to ") + last.toString(Qt::ISODate);
}

/** Writes one page. */
class PageWriter
{
public:
    PageWriter(const StudyReport& report, const ReportLabels& labels, const QString& title,
               QByteArray* bytes)
        : m_report(report)
        , m_labels(labels)
        , m_title(title)
        , m_layout(report)
        , m_page(bytes, Markup::Html)
    {}

    /** The page of the whole study, with the timeline, or with links to those of the groups. */
    void writeWhole(const QStringList& groupPages);

    /** The page of one group of a very large study. */
    void writeGroup(const QString& wholePage);

private:
    template <typename Content>
    void writePage(Content content);
    void writeHead();
    void writeNavigation();
    template <typename Content>
    void writeSection(const Section& section, Content content);

    void writeSummary();
    [[nodiscard]] QList<QPair<QString, Section>> whatNeedsALook() const;
    void writeFacts();
    void writeGroupLinks(const QStringList& groupPages);
    void writeTimeline();

    const StudyReport& m_report;
    const ReportLabels& m_labels;
    QString m_title;
    TimelineLayout m_layout;
    Markup m_page;
    ReportContext m_context = {m_page, m_report, m_labels};
};

template <typename Content>
void PageWriter::writePage(Content content)
{
    const Element html(m_page, "html", {{"lang", "en"}});
    writeHead();
    const Element body(m_page, "body");
    drawShapes(m_page);
    content();
    m_page.verbatim("script", resource("report.js"));
}

void PageWriter::writeHead()
{
    const QByteArray style = resource("report.css") + m_layout.style().toUtf8();
    const QString policy =
        QStringLiteral("default-src 'none'; style-src %1; script-src %2; base-uri 'none'; "
                       "form-action 'none'")
            .arg(hashOf(style), hashOf(resource("report.js")));
    const Element head(m_page, "head");
    m_page.empty("meta", {{"charset", "utf-8"}});
    m_page.empty("meta", {{"http-equiv", "Content-Security-Policy"}, {"content", policy}});
    m_page.empty("meta", {{"name", "generator"}, {"content", generator}});
    m_page.empty("meta",
                 {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
    m_page.empty("meta", {{"name", "color-scheme"}, {"content", "light dark"}});
    m_page.element("title", m_title);
    m_page.verbatim("style", style);
}

void PageWriter::writeNavigation()
{
    const Element list(m_page, "nav", {{"aria-label", "Sections"}});
    for (const Section& section : sections)
        m_page.element("a", {{"href", linkTo(section)}}, QLatin1String(section.title));
}

template <typename Content>
void PageWriter::writeSection(const Section& section, Content content)
{
    const QString heading = QLatin1String(section.id) + QLatin1String("-heading");
    const Element element(m_page, "section", {{"id", section.id}, {"aria-labelledby", heading}});
    m_page.element("h2", {{"id", heading}}, QLatin1String(section.title));
    content();
}

void PageWriter::writeWhole(const QStringList& groupPages)
{
    writePage([&] {
        {
            const Element header(m_page, "header");
            m_page.element("h1", m_title);
            writeNavigation();
        }
        const Element main(m_page, "main");
        writeSection(summary, [&] { writeSummary(); });
        writeSection(timeline, [&] {
            if (groupPages.isEmpty())
                writeTimeline();
            else
                writeGroupLinks(groupPages);
        });
        writeSection(deviations, [&] {
            if (groupPages.isEmpty())
                writeDeviations(m_context);
            else
                writeParagraph(m_page, QStringLiteral("They are on the pages of the groups."));
        });
        writeSection(labelValues, [&] { writeLabels(m_context); });
        writeSection(spectralResults, [&] { writeSpectralResults(m_context); });
        writeSection(problems, [&] { writeProblems(m_context); });
    });
}

void PageWriter::writeGroup(const QString& wholePage)
{
    writePage([&] {
        {
            const Element header(m_page, "header");
            m_page.element("h1", m_title);
            const Element list(m_page, "nav", {{"aria-label", "Sections"}});
            m_page.element("a", {{"href", linkTo(wholePage)}}, QStringLiteral("The whole study"));
            for (const Section& section : {timeline, deviations})
                m_page.element("a", {{"href", linkTo(section)}}, QLatin1String(section.title));
        }
        const Element main(m_page, "main");
        writeSection(timeline, [&] { writeTimeline(); });
        writeSection(deviations, [&] { writeDeviations(m_context); });
    });
}

/** What a reader should look at, each with the section that shows it. */
QList<QPair<QString, Section>> PageWriter::whatNeedsALook() const
{
    QSet<int> deviating;
    for (const Deviation& deviation : m_report.deviations)
        deviating += deviation.acquisition;
    int ambiguous = 0;
    int partlyEmpty = 0;
    for (const ReportedLabel& label : m_report.labels) {
        ambiguous += label.ambiguous();
        partlyEmpty += label.empty > 0 && !label.values.isEmpty() ? 1 : 0;
    }
    const QList<std::tuple<int, const char*, Section>> rows = {
        {m_report.gapCount(), "missing time point", timeline},
        {int(deviating.size()), "deviating acquisition", deviations},
        {int(m_report.mixed.size()),
         "setting without a commonest value|settings without a commonest value", deviations},
        {ambiguous, "label value spelled in several ways|label values spelled in several ways",
         labelValues},
        {partlyEmpty, "label not filled in everywhere|labels not filled in everywhere",
         labelValues},
        {int(m_report.problems.size()), "file with problems|files with problems", problems},
    };
    QList<QPair<QString, Section>> parts;
    for (const auto& [count, thing, section] : rows) {
        const QStringList forms = QString::fromLatin1(thing).split(QLatin1Char('|'));
        const QString text = forms.size() == 1 ? counted(count, thing)
                                               : QString::number(count) + QLatin1Char(' ') +
                                                     forms.at(count == 1 ? 0 : 1);
        if (count > 0)
            parts.append({text, section});
    }
    return parts;
}

void PageWriter::writeSummary()
{
    const QList<QPair<QString, Section>> parts = whatNeedsALook();
    {
        const Element sentence(m_page, "p",
                               {{"class", parts.isEmpty() ? "verdict fine" : "verdict look"}});
        m_page.text(parts.isEmpty() ? QStringLiteral("Nothing needs a look.")
                                    : QStringLiteral("What needs a look: "));
        for (int i = 0; i < parts.size(); ++i) {
            if (i > 0)
                m_page.text(i + 1 < parts.size() ? QStringLiteral(", ") : QStringLiteral(" and "));
            m_page.element("a", {{"href", linkTo(parts.at(i).second)}}, parts.at(i).first);
        }
        if (!parts.isEmpty())
            m_page.text(QStringLiteral("."));
    }
    writeFacts();
}

void PageWriter::writeFacts()
{
    const QString untold = QStringLiteral("not told");
    const auto textOr = [&](const QStringList& list) {
        return list.isEmpty() ? untold : list.join(QLatin1String(", "));
    };
    QStringList groups;
    for (const ReportedGroup& group : m_report.groups)
        groups += nameOr(group.name, m_labels.group);
    const QString dates = datesOf(m_report);
    const QList<QPair<QString, QString>> facts = {
        {QStringLiteral("Acquisitions"), QString::number(m_report.acquisitions.size())},
        {QStringLiteral("Animals"), QString::number(m_report.subjectCount())},
        {QStringLiteral("Groups"), QString::number(m_report.groups.size())},
        {QStringLiteral("Sequences"), QString::number(m_report.sequences.size())},
        {QStringLiteral("Dates"), dates.isEmpty() ? untold : dates},
        {QStringLiteral("Instruments"), textOr(m_report.instruments)},
        {QStringLiteral("Versions"), textOr(m_report.versions)},
    };
    const Element list(m_page, "dl", {{"class", "facts"}});
    for (const auto& [name, value] : facts) {
        const Element fact(m_page, "div");
        m_page.element("dt", name);
        m_page.element("dd", value);
    }
}

void PageWriter::writeTimeline()
{
    if (m_report.groups.isEmpty())
        return writeParagraph(m_page, QStringLiteral("There are no acquisitions."));
    QStringList named;
    for (const ReportedGroup& group : m_report.groups) {
        if (group.hasNamedTimePoints)
            named += nameOr(group.name, m_labels.group);
    }
    const bool areAllNamed = named.size() == m_report.groups.size();
    writeParagraph(
        m_page,
        QStringLiteral("A mark is an acquisition; point at it or move to it by keyboard for more. "
                       "Time points are told by ") +
            (named.isEmpty() ? QStringLiteral("the days")
                             : QStringLiteral("the label Time Point") +
                                   (areAllNamed ? QString()
                                                : QLatin1String(" in ") + listed(named) +
                                                      QLatin1String(", elsewhere by the days"))) +
            QStringLiteral(". One is missing when at least half of the group has it."));
    drawTimeline(m_context, m_layout);
}

void PageWriter::writeGroupLinks(const QStringList& groupPages)
{
    writeParagraph(m_page,
                   QStringLiteral("Each group has a page of its own, with its deviations:"));
    const Element list(m_page, "ul");
    for (int i = 0; i < m_report.groups.size(); ++i) {
        const ReportedGroup& group = m_report.groups.at(i);
        int acquisitions = 0;
        for (const ReportedSubject& subject : group.subjects)
            acquisitions += int(subject.acquisitions.size());
        const Element item(m_page, "li");
        m_page.element("a", {{"href", linkTo(groupPages.at(i))}},
                       nameOr(group.name, m_labels.group));
        m_page.text(QStringLiteral(": %1, %2")
                        .arg(counted(int(group.subjects.size()), "animal"),
                             counted(acquisitions, "acquisition")));
    }
}

/** The name of the page of a group, which stands beside the first page. */
QString pageName(const QString& name, int group)
{
    const QFileInfo file(name);
    const QString suffix = file.suffix().isEmpty() ? QString() : QLatin1Char('.') + file.suffix();
    return file.completeBaseName() + QLatin1Char('-') + QString::number(group + 1) + suffix;
}

} // namespace

QList<ReportPage> reportPages(const StudyReport& report, const ReportLabels& labels,
                              const QString& title, const QString& name)
{
    QStringList names;
    for (int i = 0; report.acquisitions.size() > mostOnAPage && i < report.groups.size(); ++i)
        names += pageName(name, i);
    QList<ReportPage> pages = {{name, {}}};
    PageWriter(report, labels, title, &pages.last().bytes).writeWhole(names);
    for (int i = 0; i < names.size(); ++i) {
        const StudyReport part = partOf(report, i);
        const QString heading =
            title + QLatin1String(": ") + nameOr(report.groups.at(i).name, labels.group);
        pages.append({names.at(i), {}});
        PageWriter(part, labels, heading, &pages.last().bytes).writeGroup(name);
    }
    return pages;
}

bool isReportPage(const QByteArray& bytes)
{
    constexpr int head = 2048; // the policy stands before it
    return bytes.left(head).contains(QByteArray("content=\"") + generator + '"');
}
