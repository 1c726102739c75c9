// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Csv.h"
#include "IndexFile.h"
#include "Json.h"

#include <algorithm>

namespace {

/** A value that a file must have. */
struct Condition
{
    Column column;
    QChar sign; ///< '=', '<' or '>'
    QString value;

    [[nodiscard]] bool holds(const QVariant& found) const
    {
        const QString text = found.toString();
        if (sign == QLatin1Char('='))
            return !found.isNull() && text.compare(value, Qt::CaseInsensitive) == 0;
        const QJsonValue number = numberOf(text);
        const double limit = value.toDouble();
        return number.isDouble() &&
               (sign == QLatin1Char('<') ? number.toDouble() < limit : number.toDouble() > limit);
    }
};

std::optional<Condition> conditionOf(const QString& text)
{
    const auto isSign = [](QChar c) { return c == u'=' || c == u'<' || c == u'>'; };
    const auto* const sign = std::find_if(text.cbegin(), text.cend(), isSign);
    if (sign == text.cend())
        return std::nullopt;
    const auto place = int(sign - text.cbegin());
    const auto column = columnOf(text.left(place));
    const Condition condition = {column.value_or(Column()), *sign, text.mid(place + 1)};
    const bool isNumber = numberOf(condition.value).isDouble();
    return column && (isNumber || *sign == QLatin1Char('=')) ? std::optional(condition)
                                                             : std::nullopt;
}

/** What is asked: the columns to print, and the conditions. */
struct Question
{
    QList<Column> columns;
    QList<Condition> conditions;

    /** The columns to print, then those of the conditions. */
    [[nodiscard]] QList<Column> everyColumn() const
    {
        QList<Column> all = columns;
        for (const Condition& condition : conditions)
            all += condition.column;
        return all;
    }
};

/** Takes the words of a request; tells what is wrong with them. */
std::optional<Question> questionOf(const Request& request)
{
    Question question;
    const QStringList words = request.files.mid(1);
    if (words.size() % 2 != 0) {
        fail(WrongUsage, QStringLiteral("query takes pairs of SECTION and KEY"));
        return std::nullopt;
    }
    for (int i = 0; i < words.size(); i += 2)
        question.columns +=
            {words.at(i) + QLatin1Char('/') + words.at(i + 1), words.at(i), words.at(i + 1)};
    const QStringList conditions = request.values(Options::where);
    for (const QString& text : conditions) {
        const auto condition = conditionOf(text);
        if (!condition) {
            fail(WrongUsage, QStringLiteral("--where takes SECTION/KEY=VALUE, not '%1'").arg(text));
            return std::nullopt;
        }
        question.conditions += *condition;
    }
    return question;
}

/** The files that have one of the columns to print, with the values of all columns. */
QString statementFor(const Question& question)
{
    const QString entry = QStringLiteral("section = ? AND key = ?");
    QStringList values;
    for (int i = 0; i < question.everyColumn().size(); ++i)
        values += QStringLiteral("(SELECT value FROM entries WHERE file = files.id AND %1 LIMIT 1)")
                      .arg(entry);
    QStringList files;
    for (int i = 0; i < question.columns.size(); ++i)
        files += QStringLiteral("SELECT file FROM entries WHERE %1").arg(entry);
    return QStringLiteral("SELECT \"clickNumber\", files.kind, files.path, %1 FROM files "
                          "LEFT JOIN acquisitions ON file = id WHERE id IN (%2) ORDER BY id")
        .arg(values.join(QLatin1String(", ")), files.join(QLatin1String(" UNION ")));
}

QVariantList valuesFor(const Question& question)
{
    QVariantList values;
    const QList<Column> columns = question.everyColumn() + question.columns;
    for (const Column& column : columns)
        values << column.section << column.key;
    return values;
}

/** Prints the rows of an answer in the form that is asked for. */
class AnswerWriter
{
public:
    AnswerWriter(const Request& request, const Question& question)
        : m_csv(request.has(Options::csv))
        , m_lines(request.has(Options::jsonl))
        , m_names({QStringLiteral("clickNumber"), QStringLiteral("kind"), QStringLiteral("path")})
    {
        for (const Column& column : question.columns)
            m_names += column.name;
        if (m_csv)
            printExact(csvLine(m_names));
        m_rows += m_names;
    }

    void add(const QVariantList& row)
    {
        QStringList cells;
        QJsonObject record = withSchema("ovinfo-query/1", {});
        for (int i = 0; i < m_names.size(); ++i) {
            cells += row.at(i).toString();
            record.insert(m_names.at(i),
                          row.at(i).isNull() ? QJsonValue() : QJsonValue(cells.last()));
        }
        if (m_csv)
            printExact(csvLine(cells));
        else if (m_lines)
            printJsonLine(record);
        else
            m_rows += cells;
    }

    void finish() const
    {
        if (!m_csv && !m_lines)
            print(columns(m_rows));
    }

private:
    bool m_csv;
    bool m_lines;
    QStringList m_names;
    QList<QStringList> m_rows;
};

bool holds(const Question& question, const QVariantList& row)
{
    const auto first = row.size() - question.conditions.size();
    for (int i = 0; i < question.conditions.size(); ++i) {
        if (!question.conditions.at(i).holds(row.at(first + i)))
            return false;
    }
    return true;
}

} // namespace

ExitCode queryCommand(const Request& request)
{
    const auto question = questionOf(request);
    if (!question)
        return WrongUsage;
    const QString path = request.files.at(0);
    QString problem;
    const auto file = IndexFile::open(path, &problem);
    if (!file)
        return fail(path, problem);
    QSqlQuery query = file->prepared(statementFor(*question));
    if (!file->run(&query, valuesFor(*question)))
        return fail(path, file->problem());
    AnswerWriter writer(request, *question);
    const int columns = 3 + int(question->everyColumn().size());
    while (query.next()) {
        QVariantList row;
        for (int i = 0; i < columns; ++i)
            row += query.value(i);
        if (holds(*question, row))
            writer.add(row);
    }
    writer.finish();
    return Success;
}
