// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The section keys, key names, file names and fixed values that the data files use, each defined
 * once.
 */
#ifndef OVPARSER_PLKEYWORDS_H
#define OVPARSER_PLKEYWORDS_H

#include <QtCore/QLatin1String>

#include <cstddef>

namespace PLKeyword {

/** A keyword from a literal; its length is known when compiling. */
template <std::size_t N>
constexpr QLatin1String keyword(const char (&text)[N])
{
    return QLatin1String(text, int(N - 1));
}

/** The marks of the info-file text format. */
namespace Text {
inline constexpr QLatin1String Marker = keyword("*** ");
inline constexpr QLatin1String BareMarker = keyword("***");
inline constexpr QLatin1String LineEnd = keyword("\r\n");
inline constexpr QLatin1String DocumentEnd = keyword("\r\n\r\n");
inline constexpr QLatin1String KeyEnd = keyword(":\t");
inline constexpr QLatin1String CommentKey = keyword("CommentLine ");
} // namespace Text

/** Names and name parts of files. */
namespace File {
inline constexpr QLatin1String ClickInfo = keyword("ClickInfo.txt");
inline constexpr QLatin1String AnalyzedClickInfo = keyword("AnalyzedClickInfo.txt");
inline constexpr QLatin1String SequenceInfo = keyword("SequenceInfo.txt");
inline constexpr QLatin1String BkgSummary = keyword("BkgSummary.txt");
inline constexpr QLatin1String StructureIndex = keyword("SLindex.txt");
inline constexpr QLatin1String FluorescentIndex = keyword("FLindex.txt");
inline constexpr QLatin1String SettingsExtension = keyword("txt");
inline constexpr QLatin1String DicomSuffix = keyword(".dcm");
inline constexpr QLatin1String CameraInfo = keyword("CameraInfo.txt");
inline constexpr QLatin1String ConfigFolder = keyword("config");
inline constexpr QLatin1String ExtensionPattern = keyword("*.cfg");
inline constexpr QLatin1String EmissionFilterFolder = keyword("emfilters");
inline constexpr QLatin1String StandardFilterWheel = keyword("standard.xem");
inline constexpr QLatin1String UiStatus = keyword("UI_Status.txt");
inline constexpr QLatin1String CorrectedImage = keyword("luminescentFloatCorrected.TIF");
} // namespace File

/** Section keys. */
namespace Section {
// Acquisitions
inline constexpr QLatin1String ClickNumber = keyword("ClickNumber");
inline constexpr QLatin1String UserInput = keyword("User Input");
inline constexpr QLatin1String UserLabelNameSet = keyword("User Label Name Set");
inline constexpr QLatin1String AnalysisUserInput = keyword("Analysis User Input");
// Images
inline constexpr QLatin1String Photograph = keyword("photographic image");
inline constexpr QLatin1String Structure = keyword("structure image");
inline constexpr QLatin1String Luminescent = keyword("luminescent image");
inline constexpr QLatin1String LuminescentCorrected = keyword("saved luminescent corrected image");
inline constexpr QLatin1String ReadBiasOnly = keyword("readbiasonly image");
inline constexpr QLatin1String FluorescentBackground = keyword("fluorescent bkg image");
inline constexpr QLatin1String ReadBias = keyword("readbias image");
inline constexpr QLatin1String ReadSigma = keyword("readsigma image");
inline constexpr QLatin1String DarkCharge = keyword("darkcharge image");
inline constexpr QLatin1String FluorescentReference = keyword("fluorescent reference image");
inline constexpr QLatin1String XRay = keyword("x-ray image");
inline constexpr QLatin1String Blemish = keyword("Blemish Image");
// Sequences
inline constexpr QLatin1String Sequence = keyword("Sequence");
inline constexpr QLatin1String ClickNumbers = keyword("ClickNumbers");
inline constexpr QLatin1String RestoreResults = keyword("Restore Results");
inline constexpr QLatin1String GraphControls = keyword("Graph Controls");
// Instruments
inline constexpr QLatin1String CameraSystemInfo = keyword("Camera System Info");
inline constexpr QLatin1String ExtensionInfo = keyword("Extension Info");
// Catalogues and menus; a number follows
inline constexpr QLatin1String BackgroundClick = keyword("Background Click");
inline constexpr QLatin1String TissueProperties = keyword("Tissue Properties ");
inline constexpr QLatin1String SourceModel = keyword("Source Model ");
inline constexpr QLatin1String RoiFile = keyword("ROI File");
} // namespace Section

/** Keys of the entries of a section. */
namespace Key {
// "ClickNumber" and "Sequence"
inline constexpr QLatin1String ClickInfoType = keyword("ClickInfoType");
inline constexpr QLatin1String Version = keyword("Orvane Version");
inline constexpr QLatin1String ModifiedSinceSaved = keyword("Modified Since Saved");
inline constexpr QLatin1String AcquiredFromFile = keyword("Acquired From File");
inline constexpr QLatin1String SequenceId = keyword("Sequence ID");
inline constexpr QLatin1String FolderOnDisk = keyword("Folder On Disk");
inline constexpr QLatin1String ClickNumberPrefix = keyword("ClickNumber ");
inline constexpr QLatin1String EmptySequence = keyword("Empty Sequence");
// "User Input"
inline constexpr QLatin1String UserId = keyword("User ID");
inline constexpr QLatin1String DisplayType = keyword("Display Type");
inline constexpr QLatin1String DisplayedKeyChoices = keyword("Displayed Key Choices");
// User labels
inline constexpr QLatin1String Group = keyword("Group");
inline constexpr QLatin1String Comment2 = keyword("Comment2");
inline constexpr QLatin1String TimePoint = keyword("Time Point");
inline constexpr QLatin1String AnimalNumber = keyword("Animal Number");
inline constexpr QLatin1String LucInjectionTime = keyword("Luc Injection Time");
/** The sixteen universal label keys, in the order in which a label set holds them. */
inline constexpr QLatin1String UniversalLabels[] = {
    keyword("User"),
    Group,
    keyword("Experiment"),
    keyword("Comment1"),
    Comment2,
    TimePoint,
    AnimalNumber,
    keyword("Animal Strain"),
    keyword("Animal Model"),
    keyword("Sex"),
    keyword("View"),
    keyword("Cell Line"),
    keyword("Reporter"),
    keyword("Treatment"),
    LucInjectionTime,
    keyword("IACUC Number"),
};
// Image sections
inline constexpr QLatin1String AcquisitionDate = keyword("Acquisition Date");
inline constexpr QLatin1String AcquisitionTime = keyword("Acquisition Time");
inline constexpr QLatin1String AcquisitionSeconds = keyword("Acquisition Seconds");
inline constexpr QLatin1String PixelWidth = keyword("Pixel Width");
inline constexpr QLatin1String PixelHeight = keyword("Pixel Height");
inline constexpr QLatin1String ImagingAngle = keyword("Imaging Angle");
inline constexpr QLatin1String SideViewMirrorEnabled = keyword("Side View Mirror Enabled");
inline constexpr QLatin1String BinningFactor = keyword("Binning Factor");
inline constexpr QLatin1String RawBinning = keyword("Raw Binning");
inline constexpr QLatin1String ImageUnits = keyword("Image Units");
inline constexpr QLatin1String FNumber = keyword("f Number");
inline constexpr QLatin1String FieldOfView = keyword("Field of View");
inline constexpr QLatin1String FilterPosition = keyword("Filter Position");
inline constexpr QLatin1String EmissionFilter = keyword("Emission filter");
inline constexpr QLatin1String ExcitationFilter = keyword("Excitation filter");
inline constexpr QLatin1String ExposureTimeSec = keyword("Exposure Time Sec");
inline constexpr QLatin1String ObjectRadius = keyword("Object radius");
inline constexpr QLatin1String SubjectSize = keyword("Subject size");
inline constexpr QLatin1String HeightReference = keyword("Height Reference");
inline constexpr QLatin1String HeightReferencePixelX = keyword("Height Reference Pixel X");
inline constexpr QLatin1String HeightReferencePixelY = keyword("Height Reference Pixel Y");
inline constexpr QLatin1String StructureFrequency = keyword("Structure frequency");
inline constexpr QLatin1String MvStageDistance = keyword("MV stage distance");
inline constexpr QLatin1String StructuredLightLittleL = keyword("Structured Light Little L");
inline constexpr QLatin1String ErrorWave = keyword("Error Wave");
inline constexpr QLatin1String LuminescentExposure = keyword("Luminescent Exposure (Seconds)");
inline constexpr QLatin1String LuminescentExposureUnits = keyword("Luminescent Exposure Units");
inline constexpr QLatin1String BackgroundExposure = keyword("Background Exposure (Seconds)");
inline constexpr QLatin1String EmGain = keyword("EM Gain");
inline constexpr QLatin1String ReadBiasLevel = keyword("Read Bias Level");
inline constexpr QLatin1String ImageSubtype = keyword("Image Subtype");
inline constexpr QLatin1String FluorescenceLevel = keyword("Fluorescence level");
inline constexpr QLatin1String FluorescenceLevelString = keyword("Fluorescence level string");
inline constexpr QLatin1String FlGridName = keyword("FL Grid Name");
inline constexpr QLatin1String FlGridPosition = keyword("FL Grid Position");
inline constexpr QLatin1String FlXMotorPosition = keyword("FL X motor position");
inline constexpr QLatin1String FlYMotorPosition = keyword("FL Y motor position");
inline constexpr QLatin1String FlXSpot = keyword("FL x-spot");
inline constexpr QLatin1String FlYSpot = keyword("FL y-spot");
inline constexpr QLatin1String MinimalCounts = keyword("Minimal Counts For Normalization");
inline constexpr QLatin1String DemandTemperature = keyword("Demand Temperature");
inline constexpr QLatin1String MeasuredTemperature = keyword("Measured Temperature");
inline constexpr QLatin1String DataMultiplier = keyword("Data Multiplier");
inline constexpr QLatin1String Cosmic = keyword("Cosmic");
inline constexpr QLatin1String BackgroundCorrected = keyword("Background Corrected");
inline constexpr QLatin1String FlatFieldCorrected = keyword("Flat Field Corrected");
inline constexpr QLatin1String XRayTubeVoltage = keyword("X-ray tube voltage");
inline constexpr QLatin1String XRayTubePlateCurrent = keyword("X-ray tube plate current");
inline constexpr QLatin1String XRayTubeFilter = keyword("X-ray tube filter");
inline constexpr QLatin1String ImagingMode = keyword("Imaging Mode");
// Instruments
inline constexpr QLatin1String CameraCcdType = keyword("Camera CCD Type");
inline constexpr QLatin1String CameraSystemInfo = Section::CameraSystemInfo;
inline constexpr QLatin1String CcdMap = keyword("CCDmap");
inline constexpr QLatin1String ChipReader = keyword("Chip-Reader");
inline constexpr QLatin1String CorvixImager = keyword("Corvix Imager");
inline constexpr QLatin1String DarkchargePath = keyword("Darkcharge Path");
inline constexpr QLatin1String ElectronicsTrayPartNumber = keyword("Electronics Tray Part Number");
inline constexpr QLatin1String EmFilter2MotorDriver = keyword("EM Filter2 Motor Driver Number");
inline constexpr QLatin1String FiducialBack = keyword("Fiducial Position Back");
inline constexpr QLatin1String FiducialFront = keyword("Fiducial Position Front");
inline constexpr QLatin1String FiducialMiddle = keyword("Fiducial Position Middle");
inline constexpr QLatin1String FiducialMiddleBack = keyword("Fiducial Position Middle Back");
inline constexpr QLatin1String FiducialMiddleFront = keyword("Fiducial Position Middle Front");
inline constexpr QLatin1String Filter2MotorDriver = keyword("Filter2 Motor Driver Number");
inline constexpr QLatin1String FluorescenceKit = keyword("Fluorescence kit installed");
inline constexpr QLatin1String FluorescenceXMotorDriver =
    keyword("Fluorescence X Motor Driver Number");
inline constexpr QLatin1String FluorescenceYMotorDriver =
    keyword("Fluorescence Y Motor Driver Number");
inline constexpr QLatin1String LargeAnimalPosition = keyword("Large animal position");
inline constexpr QLatin1String LightsControlPolarity = keyword("Lights Control Polarity");
inline constexpr QLatin1String MirrorAngle = keyword("Mirror angle");
inline constexpr QLatin1String MirrorXOffset = keyword("Mirror x-offset");
inline constexpr QLatin1String MouseImagingShuttle = keyword("Mouse Imaging Shuttle Enabled");
inline constexpr QLatin1String OmegaController = keyword("Omega controller installed");
inline constexpr QLatin1String RemovableFilterWheel = keyword("Removable Filter Wheel Capable");
inline constexpr QLatin1String RotationStageMotorDriver =
    keyword("Rotation Stage Motor Driver Number");
inline constexpr QLatin1String ShelfPosition = keyword("Shelf Position");
inline constexpr QLatin1String ShelfPositionZ = keyword("Shelf Position Z FOV");
inline constexpr QLatin1String StageOffset = keyword("Stage offset");
inline constexpr QLatin1String StructuredLightDelay = keyword("Structured Light Delay Cycles");
inline constexpr QLatin1String SystemConfiguration = keyword("System Configuration");
inline constexpr QLatin1String UacBoard = keyword("UAC BOARD");
inline constexpr QLatin1String UsbIoBoard = keyword("USB I/O BOARD");
inline constexpr QLatin1String XRayController = keyword("Xray Controller");
inline constexpr QLatin1String Zevr24 = keyword("ZEVR-24");
inline constexpr QLatin1String ZoomLensSupport = keyword("Zoom Lens Support");
// Two keys tell of the large-animal position: the first one when a description is loaded, the
// second one when the instrument is asked later.
inline constexpr QLatin1String XRay2PositionC = keyword("Motor Steps for x-ray2 position c");
inline constexpr QLatin1String XRay2StagePositionC =
    keyword("Motor Steps for x-ray2 stage position c");
// Parts of instrument keys
inline constexpr QLatin1String FovPart = keyword("FOV");
inline constexpr QLatin1String StepsPart = keyword("steps");
// Instrument extensions
inline constexpr QLatin1String ConflictsWith = keyword("Conflicts with extensions");
inline constexpr QLatin1String ExtensionName = keyword("Extension name");
// Multi-view angle, newer and older spelling
inline constexpr QLatin1String Rdx2Angle = keyword("RDX-2 Angle");
inline constexpr QLatin1String RodxAngle = keyword("RoDX Angle");
// Catalogues; the references also are section keys, then a number follows
inline constexpr QLatin1String Time = keyword("Time");
inline constexpr QLatin1String StructureReference = keyword("Structure reference");
inline constexpr QLatin1String FluorescentReference = keyword("Fluorescent reference");
// Settings and menus
inline constexpr QLatin1String MenuName = keyword("MenuName");
inline constexpr QLatin1String FileName = keyword("FileName");
} // namespace Key

/** Fixed values and names. */
namespace Value {
inline constexpr QLatin1String Empty = keyword("");
inline constexpr QLatin1String RawData = keyword("RawData");
inline constexpr QLatin1String SingleClickAnalysis = keyword("SingleClickAnalysis");
inline constexpr QLatin1String Yes = keyword("Yes");
inline constexpr QLatin1String Zero = keyword("0");
inline constexpr QLatin1String One = keyword("1");
inline constexpr QLatin1String Counts = keyword("counts");
inline constexpr QLatin1String OpenFilter = keyword("Open");
inline constexpr QLatin1String NoError = keyword("No Error");
inline constexpr QLatin1String Fluorescent = keyword("fluorescent");
inline constexpr QLatin1String NoExposure = keyword("0.0");
inline constexpr QLatin1String BlemishDate = keyword("13/12/2022");
inline constexpr QLatin1String BlemishTime = keyword("12:40");
inline constexpr QLatin1String BlemishSeconds = keyword("23");
// "Display Type"
inline constexpr QLatin1String DisplayPhotographic = keyword("photographic");
inline constexpr QLatin1String DisplayLuminescent = keyword("luminescent");
inline constexpr QLatin1String DisplayStructure = keyword("structure");
inline constexpr QLatin1String DisplayOverlay = keyword("Overlay");
inline constexpr QLatin1String DisplaySingle = keyword("Single");
// "Imaging Mode" of X-ray images
inline constexpr QLatin1String LargeAnimal = keyword("Large Animal");
inline constexpr QLatin1String HighResolution = keyword("High Resolution");
inline constexpr QLatin1String Mouse = keyword("Mouse");
// Instruments
inline constexpr QLatin1String Vexa50 = keyword("VEXA 50");
inline constexpr QLatin1String Vexa100 = keyword("VEXA 100");
inline constexpr QLatin1String Vexa200 = keyword("VEXA 200");
inline constexpr QLatin1String Corvix = keyword("Corvix");
inline constexpr QLatin1String Sophia = keyword("Sophia");
inline constexpr QLatin1String Du88 = keyword("DU88");
inline constexpr QLatin1String Emccd = keyword("EMCCD");
inline constexpr QLatin1String OldElectronicsTray = keyword("30052");
inline constexpr QLatin1String OmegaCni32 = keyword("cni32");
inline constexpr QLatin1String OmegaOutput1 = keyword("output 1");
inline constexpr QLatin1String OmegaOutput2 = keyword("output 2");
// Label sets; the second name is the one that older files carry
inline constexpr QLatin1String UniversalLabelSet = keyword("Orvane Universal");
inline constexpr QLatin1String FormerUniversalLabelSet = keyword("Mirrane Universal");
inline constexpr QLatin1String Product = keyword("Orvane");
inline constexpr QLatin1String FormerProduct = keyword("Mirrane");
inline constexpr QLatin1String Organization = keyword("Ostrel");
/** Version that made-up click info of a bare image carries. */
inline constexpr QLatin1String ImportVersion = keyword("4.8.4");
} // namespace Value

/** Display names of the image types that more than one place asks for. */
namespace ImageType {
inline constexpr QLatin1String Photograph = keyword("Photograph");
inline constexpr QLatin1String Structure = keyword("Structure");
inline constexpr QLatin1String XRay = keyword("X-Ray");
} // namespace ImageType

/** The machine-wide store of the operator's choices. */
namespace Store {
inline constexpr QLatin1String Group = keyword("/Current_Version");
inline constexpr QLatin1String Zevr24 = keyword("ZEVR24");
inline constexpr QLatin1String Zoom = keyword("Zoom");
inline constexpr QLatin1String FilterWheel = keyword("filterWheel");
} // namespace Store

/** Sub-folders of the machine-wide data folder. */
namespace Folder {
inline constexpr QLatin1String Database = keyword("database");
inline constexpr QLatin1String Organs = keyword("organs");
inline constexpr QLatin1String FlReference = keyword("FLReference");
inline constexpr QLatin1String SlReference = keyword("SLReference");
inline constexpr QLatin1String Background = keyword("Background");
inline constexpr QLatin1String AutoBackground = keyword("Auto Background");
inline constexpr QLatin1String EmissionFilters = File::EmissionFilterFolder;
inline constexpr QLatin1String Usage = keyword("Usage");
inline constexpr QLatin1String AoiCorrections = keyword("AOICorrDB");
} // namespace Folder

/** The fixed texts of XML documents. */
namespace Xml {
/** The declaration stands around the name of the encoding. */
inline constexpr QLatin1String DeclarationStart = keyword(R"(<?xml version="1.0" encoding=")");
inline constexpr QLatin1String DeclarationEnd = keyword(R"("?>)");
inline constexpr QLatin1String DocumentType = keyword("<!DOCTYPE ");
/** Document-type name of a document into which no file has been read. */
inline constexpr QLatin1String EmptyDocument = keyword("XMLFILE");
/** Encoding of a document that names none. */
inline constexpr char Utf8[] = "UTF-8";
} // namespace Xml

/** The spectral-analysis file. */
namespace Spectral {

/** Identifies an element; also its place in the table of elements. */
enum ElementId : int {
    Root = 0,
    Attributes = 1,
    ClickInfo = 2,
    Click = 3,
    FilterProperties = 4,
    ClickRoi = 5,
    RoiProperties = 6,
    RoiMeasurements = 7,
    Results = 8,
    ResultsFlux = 9,
    ResultsDepth = 10,
    PlotResults = 11,
    PlotValues = 12,
    FitResults = 13,
    FitValues = 14,
    LinearFitValues = 15,
};

/** An element and its tag name. */
struct Element
{
    ElementId id = Root; ///< also its place in #Elements
    QLatin1String name;  ///< read in any letter case
};

/** The elements, by their identifiers. */
inline constexpr Element Elements[] = {
    {Root, keyword("OV3.0.SpectralAnalysis")},
    {Attributes, keyword("OV3.0.SpectralAnalysis.Attributes")},
    {ClickInfo, keyword("OV3.0.SpectralAnalysis.ClickInfo")},
    {Click, keyword("OV3.0.SpectralAnalysis.ClickInfo.Click")},
    {FilterProperties, keyword("OV3.0.SpectralAnalysis.Click.Filter.Properties")},
    {ClickRoi, keyword("OV3.0.SpectralAnalysis.Click.ROI")},
    {RoiProperties, keyword("OV3.0.SpectralAnalysis.Click.ROI.Properties")},
    {RoiMeasurements, keyword("OV3.0.SpectralAnalysis.Click.ROI.Measurements")},
    {Results, keyword("OV3.0.SpectralAnalysis.Results")},
    {ResultsFlux, keyword("OV3.0.SpectralAnalysis.Results.Flux")},
    {ResultsDepth, keyword("OV3.0.SpectralAnalysis.Results.Depth")},
    {PlotResults, keyword("OV3.0.SpectralAnalysis.Plot.Results")},
    {PlotValues, keyword("OV3.0.SpectralAnalysis.Plot.Values")},
    {FitResults, keyword("OV3.0.SpectralAnalysis.Fit.Results")},
    {FitValues, keyword("OV3.0.SpectralAnalysis.Fit.Values")},
    {LinearFitValues, keyword("OV3.0.SpectralAnalysis.Linear.Fit.Values")},
};

/** Whether every element stands at the place that its identifier names. */
constexpr bool elementsAreInOrder()
{
    int place = 0;
    for (const Element& element : Elements) {
        if (element.id != place++)
            return false;
    }
    return place == LinearFitValues + 1;
}
static_assert(elementsAreInOrder());

/** Attribute names; letter case counts. */
namespace Attribute {
// Attributes
inline constexpr QLatin1String ActiveImage = keyword("Active.Image");
inline constexpr QLatin1String ActiveWavelength = keyword("Active.Wavelength");
inline constexpr QLatin1String DateTime = keyword("Date.Time");
inline constexpr QLatin1String IndexOfRefraction = keyword("Index.of.Refraction");
inline constexpr QLatin1String NoOfClicks = keyword("No.Of.Clicks");
inline constexpr QLatin1String SequenceId = keyword("SequenceID");
inline constexpr QLatin1String SourceModel = keyword("Source.Model");
inline constexpr QLatin1String TissueProperty = keyword("Tissue.Property");
// Clicks and filters
inline constexpr QLatin1String TotalClicks = keyword("Total.Clicks");
inline constexpr QLatin1String ClickNumber = keyword("Click.Number");
inline constexpr QLatin1String ImageWavelength = keyword("Image.Wavelength");
inline constexpr QLatin1String AvgTransmission = keyword("Avg.Transmission");
inline constexpr QLatin1String BandWidth = keyword("Band.Width");
inline constexpr QLatin1String CentralWavelength = keyword("Central.Wavelength");
// Regions of interest
inline constexpr QLatin1String Roi = keyword("ROI");
inline constexpr QLatin1String RoiLabel = keyword("ROI.Label");
inline constexpr QLatin1String Angle = keyword("Angle");
inline constexpr QLatin1String Area = keyword("Area");
inline constexpr QLatin1String BkgAssociation = keyword("Bkg.Association");
inline constexpr QLatin1String BkgRoi = keyword("Bkg.ROI");
inline constexpr QLatin1String CmPerPixel = keyword("CmPerPixel");
inline constexpr QLatin1String ContourDirections = keyword("Contour.Directions");
inline constexpr QLatin1String ContourPeakX = keyword("Contour.PeakX");
inline constexpr QLatin1String ContourPeakY = keyword("Contour.PeakY");
inline constexpr QLatin1String ContourStartX = keyword("Contour.StartX");
inline constexpr QLatin1String ContourStartY = keyword("Contour.StartY");
inline constexpr QLatin1String ContourXDelta = keyword("Contour.XDelta");
inline constexpr QLatin1String ContourYDelta = keyword("Contour.YDelta");
inline constexpr QLatin1String FractionalPeak = keyword("Fractional.Peak");
inline constexpr QLatin1String Height = keyword("Height");
inline constexpr QLatin1String LockPosition = keyword("Lock.Position");
inline constexpr QLatin1String LockSize = keyword("Lock.Size");
inline constexpr QLatin1String RoiPixels = keyword("ROI.Pixels");
inline constexpr QLatin1String RoiShape = keyword("ROI.Shape");
inline constexpr QLatin1String RoiType = keyword("ROI.Type");
inline constexpr QLatin1String SubAssociation = keyword("Sub.Association");
inline constexpr QLatin1String Width = keyword("Width");
inline constexpr QLatin1String Xc = keyword("Xc");
inline constexpr QLatin1String Yc = keyword("Yc");
inline constexpr QLatin1String AverageRadiance = keyword("Average.Radiance");
inline constexpr QLatin1String FilterLabel = keyword("Filter.Label");
inline constexpr QLatin1String TotalFlux = keyword("Total.Flux");
// Results
inline constexpr QLatin1String FluxStdDev = keyword("Flux.Std.Dev");
inline constexpr QLatin1String FluxUnits = keyword("Flux.Units");
inline constexpr QLatin1String AverageDepth = keyword("Average.Depth");
inline constexpr QLatin1String DepthStdDev = keyword("Depth.Std.Dev");
inline constexpr QLatin1String DepthUnits = keyword("Depth.Units");
// Plot and fits
inline constexpr QLatin1String TotalPlotValues = keyword("Total.Plot.Values");
inline constexpr QLatin1String TotalFitValues = keyword("Total.Fit.Values");
inline constexpr QLatin1String Intensity = keyword("Intensity");
inline constexpr QLatin1String WaveLength = keyword("Wave.Length");
inline constexpr QLatin1String Attenuation = keyword("Attenuation");
inline constexpr QLatin1String FitValue = keyword("Fit.Value");
inline constexpr QLatin1String HorizontalError = keyword("Horizontal.Error");
inline constexpr QLatin1String VerticalError = keyword("Vertical.Error");
inline constexpr QLatin1String LinearFitValueA = keyword("Linear.fit.value.A");
inline constexpr QLatin1String LinearFitValueB = keyword("Linear.fit.value.B");
} // namespace Attribute

/** The shape whose contour is recorded; letter case counts. */
inline constexpr QLatin1String ContourShape = keyword("Contour");
inline constexpr QLatin1String WavelengthUnit = keyword("nm");

} // namespace Spectral

} // namespace PLKeyword

#endif
