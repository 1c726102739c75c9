// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Request.h"
#include "Terminal.h"
#include "Verb.h"

#include <QtCore/QCoreApplication>

#include <cstdio>

namespace {

QString wrappedText(const char* text)
{
    return wrapped(QString::fromLatin1(text).split(QLatin1Char(' ')), 0);
}

QString helpText()
{
    return wrappedText("ovinfo reads, checks and edits the data files of Orvane.") +
           QLatin1String("Usage: ovinfo VERB [OPTION...] FILE...\n\n") + verbList() +
           QLatin1Char('\n') +
           wrappedText("'ovinfo VERB --help' tells more, 'ovinfo --version' the version. Exit "
                       "codes: 0 done, 1 a file is at fault or two differ, 2 wrong usage (diff: "
                       "or a file cannot be read).");
}

/** Tells of success only when the output has arrived. */
int finish(int code, ExitCode unwritten = BadFile)
{
    const bool written = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return written ? code : fail(unwritten, QStringLiteral("the output cannot be written"));
}

/** Prints what the library tells as every other message. */
void tell(QtMsgType, const QMessageLogContext&, const QString& text)
{
    fail(BadFile, text);
}

int runVerb(const Verb& verb, const QStringList& words)
{
    Request request;
    const auto done = parse(verb, words, &request);
    return finish(done ? *done : verb.run(request), verb.unwritten);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(tell);
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
    if (const Verb* const verb = findVerb(name))
        return runVerb(*verb, words.mid(2));
    return fail(WrongUsage, name.isEmpty() ? QLatin1String("no verb given; see 'ovinfo --help'")
                                           : QLatin1String("no verb '") + name +
                                                 QLatin1String("'; see 'ovinfo --help'"));
}
