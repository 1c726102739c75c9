#include "Commands.h"
#include "Terminal.h"

#include "ParserLibrary.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

QList<QStringList> settingsOf(const CPLSettingsFileWrapper& wrapper)
{
    QList<QStringList> rows;
    const QStringList names = wrapper.getMenuNames();
    for (const QString& name : names)
        rows.append({name, wrapper.getFileNameForMenuName(name, QString())});
    return rows;
}

QList<QStringList> filesOf(const CPLSettingsFileWrapper& wrapper)
{
    QList<QStringList> rows;
    // Without a prefix the names are whole; a file is found by what follows its first '-'.
    const QStringList names = wrapper.getMenuNames(QString());
    for (const QString& name : names) {
        const QString menuName = name.mid(name.indexOf(QLatin1Char('-')) + 1);
        rows.append({menuName, wrapper.getFileNameForMenuName(menuName, name)});
    }
    return rows;
}

} // namespace

int presetsCommand(const QStringList& words)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QLatin1String(
        "Prints the menu names of a settings file or of a folder of settings, with their files."));
    if (const auto done =
            parse(parser, QLatin1String("presets"), QLatin1String("FILE|FOLDER"), words))
        return *done;
    const QString path = QDir::cleanPath(parser.positionalArguments().at(0));
    const bool folder = QFileInfo(path).isDir();
    CPLSettingsFileWrapper wrapper;
    wrapper.setLoadMode(folder ? eLOAD_FOLDER : eLOAD_FILE);
    wrapper.setFolderPath(path);
    const tag_estatus status = wrapper.load(path);
    if (status != eSTATUS_SUCCESS)
        return fail(path, status);
    const QList<QStringList> rows = folder ? filesOf(wrapper) : settingsOf(wrapper);
    const QList<QStringList> heading = {{QLatin1String("Menu name"), QLatin1String("File")}};
    print(counted(int(rows.size()), "preset") + QLatin1String("\n\n") + columns(heading + rows));
    return Success;
}
