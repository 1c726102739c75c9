#include "Terminal.h"

#include "Files.h"

#include <QtCore/QJsonDocument>

#include <cstdio>

void print(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
}

ExitCode fail(ExitCode code, const QString& message)
{
    const QByteArray bytes = ("ovinfo: " + message.toUtf8() + '\n');
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
    return code;
}

ExitCode fail(const QString& file, const QString& problem)
{
    return fail(BadFile, file + QLatin1String(": ") + problem);
}

ExitCode fail(const QString& file, tag_estatus status)
{
    return fail(file, explained(status));
}

void print(const QJsonObject& object)
{
    print(QString::fromUtf8(QJsonDocument(object).toJson()));
}

QString columns(const QList<QStringList>& rows)
{
    QList<int> widths;
    for (const QStringList& row : rows) {
        for (int i = 0; i < row.size(); ++i) {
            if (i == widths.size())
                widths.append(0);
            widths[i] = qMax(widths.at(i), int(row.at(i).size()));
        }
    }
    QString text;
    for (const QStringList& row : rows) {
        QString line;
        for (int i = 0; i < row.size(); ++i)
            line += row.at(i).leftJustified(widths.at(i) + 2);
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += line + QLatin1Char('\n');
    }
    return text;
}

QString wrapped(const QStringList& words, int indent)
{
    constexpr int width = 79;
    QString text;
    QString line;
    for (const QString& word : words) {
        if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
            text += line + QLatin1Char('\n');
            line = QString(indent, QLatin1Char(' ')) + word;
        } else {
            line += line.isEmpty() ? word : QLatin1Char(' ') + word;
        }
    }
    return text + line + QLatin1Char('\n');
}

QString counted(int count, const char* thing)
{
    const QString text = QString::number(count) + QLatin1Char(' ') + QLatin1String(thing);
    return count == 1 ? text : text + QLatin1Char('s');
}
