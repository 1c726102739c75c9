// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Files.h"
#include "Instrument.h"
#include "Json.h"
#include "Terminal.h"

namespace {

QString textOf(const Instrument& instrument)
{
    const auto number = [](double value) { return QString::number(value); };
    QList<QStringList> facts = {
        {QStringLiteral("Family"), QLatin1String(instrument.family.label)},
        {QStringLiteral("System configuration"), instrument.configuration},
        {QStringLiteral("Camera"), instrument.camera},
        {QStringLiteral("CCD pixels"), number(instrument.pixels)},
        {QStringLiteral("Electronics tray"), number(instrument.electronicsTray)},
        {QStringLiteral("Lights polarity"), number(instrument.lightsPolarity)},
        {QStringLiteral("Structured-light delay"), number(instrument.structuredLightDelay)},
        {QStringLiteral("Emission filter wheel"), instrument.emissionFilterWheel},
        {},
    };
    for (const Answer& capability : instrument.capabilities)
        facts += {capability.label, QLatin1String(capability.yes ? "yes" : "no")};
    QList<QStringList> positions = {{QStringLiteral("Position"), QStringLiteral("Field of view")}};
    for (const StagePosition& position : instrument.positions)
        positions +=
            {position.name, position.fieldOfView ? number(*position.fieldOfView) : QString()};
    QList<QStringList> binnings = {{QStringLiteral("Binning"), QStringLiteral("Large"),
                                    QStringLiteral("Medium"), QStringLiteral("Small")}};
    for (const Binning& binning : instrument.binnings)
        binnings += {getImageTypeString(binning.imageType.type), number(double(binning.large)),
                     number(double(binning.medium)), number(double(binning.small))};
    const QChar gap = QLatin1Char('\n');
    return columns(facts) + gap + columns(positions) + gap + columns(binnings);
}

QJsonObject jsonOf(const QString& file, const Instrument& instrument)
{
    QJsonObject json = instrumentJson(instrument);
    json.insert(QStringLiteral("file"), file);
    return withSchema("ovinfo-camera/1", json);
}

} // namespace

ExitCode cameraCommand(const Request& request)
{
    const QString file = request.files.at(0);
    QString problem;
    if (!readFile(file, &problem))
        return fail(file, problem);
    CPLCameraInfo info;
    Instrument instrument;
    const bool loaded = loadInstrument(file, &info, &instrument);
    for (const QString& message : qAsConst(instrument.messages))
        fail(file, message);
    if (!loaded)
        return instrument.messages.isEmpty() ? fail(file, QLatin1String("describes no instrument"))
                                             : BadFile;
    if (request.has(Options::json))
        print(jsonOf(file, instrument));
    else
        print(textOf(instrument));
    return Success;
}
