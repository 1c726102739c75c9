// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The description of the imaging instrument, and the capabilities derived from it.
 */
#ifndef OVPARSER_PLCAMERAINFO_H
#define OVPARSER_PLCAMERAINFO_H

#include "PLClickInfo.h"
#include "PLExport.h"

#include <memory>

namespace ovparser::internal {
struct InstrumentState;
}

/**
 * The description of the instrument attached to the workstation.
 *
 * It is the text of a camera-info file, merged with the instrument extensions ("config/...cfg"
 * beside the file) that fit the installed instrument and, where the instrument takes one, with the
 * description of the emission filter wheel in use ("emfilters/..."). loadCameraInfo() derives the
 * capabilities once; the queries then return what it derived.
 *
 * The operator's choices outlive the program: lens and filter wheel in the machine's settings
 * store (a choice that cannot be written there holds for this object only), the large-animal
 * position in a status file of the data folder.
 *
 * Messages go to the Qt log at debug level.
 */
class PARSERLIBRARY_EXPORT CPLCameraInfo : public CPLClickInfo
{
public:
    /** An empty description; nothing is installed, the filter wheel is "standard.xem". */
    CPLCameraInfo();

    /** A deep copy; getCameraInfoSection() gives the copy's own section if it holds one. */
    CPLCameraInfo(const CPLCameraInfo& other);

    /** Becomes a deep copy of another. */
    CPLCameraInfo& operator=(const CPLCameraInfo& other);
    ~CPLCameraInfo() override;

    /** @name Loading */
    ///@{

    /**
     * Loads an instrument description and derives the capabilities.
     *
     * @param path  the camera-info file
     * @return false when the file or the filter wheel's description cannot be loaded, or there is
     *         no "Camera System Info" section. Derived fields keep their values when the
     *         description itself cannot be used. When the description of the filter wheel does
     *         not exist, the document is empty; when it cannot be read, the document stays loaded
     *         and only the system type and the operator's choices are new.
     */
    bool loadCameraInfo(QString path);

    /**
     * Replaces the document by a camera-info file, merged with its extensions; derives nothing.
     *
     * A file without the "Camera System Info" header gets it in front. An extension that cannot be
     * used is left out; what it lacks, that it conflicts with another, or that the locale cannot
     * spell its name, goes to the Qt log.
     *
     * @return eSTATUS_FILE_OPEN_FAILED, eSTATUS_FILE_READ_FAILED or, for a file of more than
     *         512 MiB, eSTATUS_OUT_OF_MEMORY (the document is unchanged then); otherwise the
     *         status of loadTextBuffer()
     */
    tag_estatus load(QString path);
    ///@}

    /** @name Keys of the description */
    ///@{

    /**
     * The "Camera System Info" section, borrowed; null unless loadCameraInfo() has found it or the
     * document is a copy of one that holds it.
     */
    [[nodiscard]] CPLSection* getCameraInfoSection() const;

    /**
     * Appends the keys of the "Camera System Info" section that start with a prefix, in any letter
     * case.
     *
     * @return eSTATUS_NULL_ARGUMENT when `keys` is null; eSTATUS_SUCCESS also without the section
     */
    tag_estatus getKeyListWithSameKey(QString prefix, QStringList* keys) const;

    /** The same for keys that also contain "steps". */
    tag_estatus getLensFStopStepList(QString prefix, QStringList* keys) const;

    /**
     * The same for keys that also contain `subkey`; a null one takes every key, an empty one none.
     */
    tag_estatus getKeylistFromKeyAndSubkey(QString key, QString subkey, QStringList* keys) const;
    ///@}

    /** @name What the instrument is */
    ///@{
    /** The family that "System Configuration" names. */
    [[nodiscard]] EVEXA_Types getSystemType() const;

    /** Part number of the electronics tray; 0 when not given. */
    [[nodiscard]] int getElectronicsTrayPartNum() const;

    /** Polarity of the lights control; -1 when not given. */
    [[nodiscard]] int getPolarity() const;

    /** Delay of the structured light, in cycles. */
    [[nodiscard]] int getStructureLaserDelay() const;

    /** "Fluorescence kit installed" reads yes. */
    [[nodiscard]] bool isFluorescentKitInstalled() const;

    /** A VEXA 200 with both fluorescence motor drivers and the fluorescence kit. */
    [[nodiscard]] bool isVEXAAurora() const;

    /** A VEXA 200 whose camera is a Sophia. */
    [[nodiscard]] bool isPrincetonAurora() const;

    /** One of the five fiducial positions of a tray is given. */
    [[nodiscard]] bool isTrayInstalled() const;

    /** A VEXA 200 with a rotation stage: its motor driver number is 0 or more. */
    [[nodiscard]] bool isVEXACT() const;

    /** The camera is a DU88 or its CCD an EMCCD. */
    [[nodiscard]] bool isVEXAKestrel() const;

    /**
     * The controller value is "yes", "output 1", "output 2" or "cni32"; otherwise there is one on a
     * VEXA 200 that gives no value, and where a USB I/O or UAC board is. The operator can decide
     * differently.
     */
    [[nodiscard]] bool isOmegaInstalled() const;

    /** The controller value is "output 2" or "cni32". */
    [[nodiscard]] bool isOmegaOutput2() const;

    /** A motor driver of a second filter wheel is given. */
    [[nodiscard]] bool isEmissionWheel2Installed() const;

    /** No VEXA 200, no USB I/O board, and the electronics tray is not part 30052. */
    [[nodiscard]] bool isDoorClosedOnZeroStatus() const;

    /** "USB I/O BOARD" reads yes. */
    [[nodiscard]] bool isUSB_IO_BoardInstalled() const;

    /** "UAC BOARD" reads yes. */
    [[nodiscard]] bool isUACBoardInstalled() const;

    /** "Xray Controller" reads yes. */
    [[nodiscard]] bool isXrayInstalled() const;

    /** "Corvix Imager" reads yes. */
    [[nodiscard]] bool isSpinnerInstalled() const;

    /** "Chip-Reader" reads yes. */
    [[nodiscard]] bool isChipReaderInstalled() const;

    /** A spinner is installed, unless the operator says otherwise. */
    [[nodiscard]] bool isSpinnerDeviceActive() const;

    /** A standard instrument with a second emission filter wheel. */
    [[nodiscard]] bool isVEXATesselHT() const;

    /** A standard instrument that takes the zoom lens and gives its shelf position. */
    [[nodiscard]] bool isZoomLensSupported() const;

    /** The operator's choice. */
    [[nodiscard]] bool isZoomLensAttached() const;

    /** The operator's choice. */
    [[nodiscard]] bool isVICChecked() const;

    /** An Aurora, or a VEXA 200 whose mouse imaging shuttle is enabled. */
    [[nodiscard]] bool isTransportBedSupported() const;

    /** A VEXA 200 with side-view mirror and its geometry, or the operator's choice. */
    [[nodiscard]] bool isSideMirrorChecked() const;

    /** The operator's choice of the wide-field lens. */
    [[nodiscard]] bool isZEVR24Attached() const;

    /** A VEXA 200 without the fluorescence kit. */
    [[nodiscard]] bool isVEXABL() const;

    /** Whether the door reads closed on a zero status; never on a VEXA 200. */
    [[nodiscard]] bool isOldIllumController() const;

    /** Whether the instrument takes the wide-field lens; reads the description. */
    [[nodiscard]] bool isZEVR24Available() const;

    /**
     * Whether the stage has a large-animal position; reads the description anew and remembers the
     * answer.
     */
    bool isLargeAnimalCapable();

    /**
     * Whether the operator has selected the large-animal position; reads the status file anew. The
     * answer stays as it was when there is no such file, or nothing in it.
     */
    bool isLargeAnimalSelected();

    /** File name of the description of the emission filter wheel in use. */
    [[nodiscard]] QString getCurrentFilterWheelName() const;
    ///@}

    /** @name The operator's choices */
    ///@{
    /** What isOmegaInstalled() gives from now on. */
    void setOmegaInstalled(bool on);

    /** What isSideMirrorChecked() gives from now on. */
    void setSideMirrorChecked(bool on);

    /** What isSpinnerDeviceActive() gives from now on. */
    void setSpinnerDeviceStatus(bool on);

    /** What isVICChecked() gives from now on. */
    void setVICChecked(bool on);

    /** Whether the wide-field lens is attached; a change goes to the settings store. */
    void setZEVR24Attached(bool on);

    /** Whether the zoom lens is attached; a change goes to the settings store. */
    void setZoomLensAttached(bool on);

    /** The emission filter wheel in use; a change goes to the settings store. */
    void setCurrentFilterWheelName(const QString& name);

    /**
     * Writes the large-animal position to the status file, whose other lines stay (ended by LF);
     * nothing happens without the file's folder. isLargeAnimalSelected() reads it back.
     */
    void setLargeAnimalState(bool on);
    ///@}

private:
    PARSERLIBRARY_NO_EXPORT tag_estatus loadCameraInfoExtensions(QString configFolder,
                                                                 QString& extensionText);
    PARSERLIBRARY_NO_EXPORT tag_estatus loadappend(QString path);
    PARSERLIBRARY_NO_EXPORT tag_estatus addTextBuffer(QString text);
    PARSERLIBRARY_NO_EXPORT bool loadStandardState(const QString& path);
    PARSERLIBRARY_NO_EXPORT bool loadFilterWheel(const QString& path);
    PARSERLIBRARY_NO_EXPORT void loadZoomLens(const CPLSection& section);

    std::unique_ptr<ovparser::internal::InstrumentState> state;
    /**
     * Whether loadCameraInfo() has found the section. The section itself is looked up whenever it
     * is needed: a pointer would dangle as soon as the section is removed.
     */
    bool cameraInfoSectionHeld = false;
};

#endif
