#include "Commands.h"
#include "Terminal.h"

#include <QtCore/QCoreApplication>

#include <cstdio>

namespace {

struct Verb
{
    const char* name;
    const char* arguments;
    const char* summary;
    int (*run)(const QStringList& words);
};

constexpr Verb verbs[] = {
    {"show", "[--json] FILE", "print a file of any kind", showCommand},
    {"get", "[--json] FILE SECTION KEY", "print one value", getCommand},
    {"set", "FILE SECTION KEY VALUE", "change one value; every other byte stays", setCommand},
    {"new", "--user ID [--type TYPE] [--binning N] [--output FILE] [--force] IMAGE",
     "make up the click info of a bare image", newCommand},
    {"check", "[--json] FILE...", "tell what is wrong with files, line by line", checkCommand},
    {"diff", "[--json] FILE FILE", "compare two files section by section", diffCommand},
    {"study", "[--recursive] [--json | --jsonl | --csv] [--jobs N] [--from-file LIST] [FOLDER...]",
     "print sequences with tables of their acquisitions, or a whole archive", studyCommand},
    {"presets", "[--json] FILE|FOLDER", "print the menu names of settings with their files",
     presetsCommand},
    {"camera", "[--json] FILE", "print what an instrument can do", cameraCommand},
    {"spectral", "[--json] [--svg OUT.svg] FILE", "print a spectral analysis, or draw it",
     spectralCommand},
};

QString helpText()
{
    QString text = QStringLiteral("ovinfo reads, checks and edits the data files of Orvane.\n\n");
    for (const Verb& verb : verbs)
        text += QStringLiteral("  ovinfo %1 %2\n      %3\n")
                    .arg(QLatin1String(verb.name), QLatin1String(verb.arguments),
                         QLatin1String(verb.summary));
    return text +
           QLatin1String("\n'ovinfo VERB --help' tells more, 'ovinfo --version' the version. Exit "
                         "codes: 0 done,\n1 a file is at fault or two differ, 2 wrong usage (diff: "
                         "or a file cannot be read).\n");
}

/** Sees to it that the output has arrived before success is claimed. */
int finish(int code)
{
    const bool written = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return written ? code : fail(BadFile, QStringLiteral("the output cannot be written"));
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const QString name = words.value(1);
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        print(helpText());
        return finish(Success);
    }
    if (name == QLatin1String("--version")) {
        print(QLatin1String("ovinfo " OVPARSER_VERSION "\n"));
        return finish(Success);
    }
    for (const Verb& verb : verbs) {
        if (name == QLatin1String(verb.name))
            return finish(verb.run(words.mid(2)));
    }
    return fail(WrongUsage, name.isEmpty() ? QLatin1String("no verb given; see 'ovinfo --help'")
                                           : QLatin1String("no verb '") + name +
                                                 QLatin1String("'; see 'ovinfo --help'"));
}
