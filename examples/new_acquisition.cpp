// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// Builds the click info of a new acquisition and saves it: new_acquisition FILE

#include "ParserLibrary.h"

#include <cstdio>

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fputs("usage: new_acquisition FILE\n", stderr);
        return 2;
    }

    // How the two images were taken.
    sIASetupInfo setup;
    setup.photographBinning = 4;
    setup.photographExposure = 0.2;
    setup.luminescentBinning = 8;
    setup.luminescentExposure = 60;
    setup.fieldOfView = 12.5;
    setup.demandTemperature = QStringLiteral("-90");
    setup.measuredTemperature = QStringLiteral("-89.8");

    // What the acquisition is, who took it, and its images.
    const QString user = QStringLiteral("ABC");
    CPLClickInfo acquisition;
    acquisition.setClickNumber(QStringLiteral("ABC20240305093015"));
    acquisition.addTiffClickNumberSection(true, false, QStringLiteral("4.8.4"));
    acquisition.addTiffUserSection(eIMAGE_LUMINESCENT, user);
    acquisition.appendUserSpecificSections(false);
    acquisition.addImageSection(QStringLiteral("photograph.TIF"), user, eIMAGE_PHOTOGRAPH, &setup,
                                true);
    acquisition.addImageSection(QStringLiteral("luminescent.TIF"), user, eIMAGE_LUMINESCENT, &setup,
                                true);

    const tag_estatus status = acquisition.saveClickInfo(QString::fromLocal8Bit(argv[1]));
    if (status != eSTATUS_SUCCESS)
        std::fprintf(stderr, "%s: %s\n", argv[1], qPrintable(getStatusString(status)));
    return status == eSTATUS_SUCCESS ? 0 : 1;
}
