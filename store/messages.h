#pragma once

// Every text the project store shows or writes into a control, in one place so
// that they can be read together. They stand as users of earlier versions know
// them, slips of spelling included.
namespace parvenna::store::messages {

// System store and recent projects.
inline constexpr const char* AlreadyRunning =
    "The database is already opened by another instance of Parvenna.\n"
    "The single-user version can only be used by one instance at a time.";
inline constexpr const char* StoreMissing =
    "Parvenna could not find the database or it has become corrupted.\n"
    "This program cannot continue.  Please re-install Parvenna.";
inline constexpr const char* RecentUpdateError = "Update error.  Database was not modified.";
inline constexpr const char* DefaultNotChanged = "Couldn't change the default setting!";
inline constexpr const char* WarningTitle = "Warning";
inline constexpr const char* GeneralError =
    "An error has occured. Please continue using the program, but some features may not work "
    "correctly without restarting.";
inline constexpr const char* OpenSystemDbError = "Open system DB error!";
// An installed program keeps the user's copy of the store in the user's data
// folder; followed by the path and the system's reason.
inline constexpr const char* UserFolderFailed =
    "Parvenna could not set up its folder for your data and settings:\n";
inline constexpr const char* NoRecentProjects = "No recent projects";
inline constexpr const char* RecentEllipsis = "...";
inline constexpr const char* EditorCaptionPrefix = "Parvenna Editor - ";
inline constexpr const char* MainCaptionPrefix = "Parvenna Main - ";

// Creating a project.
inline constexpr const char* CreateTitle = "Create new project";
inline constexpr const char* DirLocateTitle = "Locate the project path";
inline constexpr const char* LabelProjectName = "Project Name:";
inline constexpr const char* LabelProjectLocation = "Project Location:";
inline constexpr const char* LabelCadFile = "Drawing File Associated:";
inline constexpr const char* TipProjectName = "The filename that this project will be saved as.";
inline constexpr const char* TipCadFile =
    "The path and filename of the AutoCAD drawing file that this project will link with.";
inline constexpr const char* CaptionBrowseLoc = "Browse &Project Location";
inline constexpr const char* CaptionBrowseCad = "Browse &Drawing File";
inline constexpr const char* CaptionAutoName = "Auto name project file";
inline constexpr const char* CaptionCreate = "C&reate";
inline constexpr const char* CaptionCancel = "&Cancel";
inline constexpr const char* CaptionOK = "&OK";
inline constexpr const char* AskCreateDirectory =
    "The directory does not exist. Would you like to create the directory?";
inline constexpr const char* CreateDirectoryTitle = "Closure project settings";
inline constexpr const char* DirectoryNotCreated = "Directory cannot be created.";
inline constexpr const char* AskNoDrawing = "No drawing file selected. Would you like to continue?";
inline constexpr const char* DrawingPathTooLong =
    "The drawing file name and path must be less than 256 characters.";
inline constexpr const char* DrawingNotFound = "The drawing file could not be found.";
inline constexpr const char* ProjectExists = "This project already exists!";
inline constexpr const char* CreatedRecentFailed =
    "Project file failed to load.  Some changes may be lost.";
inline constexpr const char* DeviceNotReadyTitle = "Device Not Ready";
inline constexpr const char* DeviceNotReady = "Device Not Ready.  Please Insert Disc/CD and try again.";
// The drawings that can be read come first, DXF among them; then the
// dialog's own entries.
inline constexpr const char* DrawingFilter =
    "Drawings (*.dwg *.dxf *.dgn)|*.dwg;*.dxf;*.dgn|"
    "AutoCAD Files (*.dwg)|*.dwg|Micro Station Files (*.dgn)|*.dgn|All Files (*.*)|*.*";
inline constexpr const char* ProjectFilter =
    "Parvenna Files (*.pvd)|*.pvd|MS Access Files (*.mdb)|*.mdb|All Files (*.*)|*.*";

// Opening a project.
inline constexpr const char* SaveBeforeNew = "Please save the current parcel before opening a new project.";
inline constexpr const char* SaveBeforeAnother =
    "Please save the current parcel before opening another project.";
inline constexpr const char* CantOpenProject = "Can't open the project: ";
// Why a project cannot be opened, on the line after the path.
inline constexpr const char* TableMissingStart = "The table ";
inline constexpr const char* TableMissingEnd = " is missing.";
inline constexpr const char* ColumnMissingStart = "The column ";
inline constexpr const char* ColumnMissingMiddle = " is missing from ";
inline constexpr const char* PlaceHolds = " of tblSetting holds ";
inline constexpr const char* PlaceEnd = ", which is no place from 1 to 4.";
inline constexpr const char* PathTooLongStart = "Its path is longer than the ";
inline constexpr const char* PathTooLongEnd = " characters a project's path can have.";
// A project that opens but cannot take parcels: said once at the opening,
// and again at each save or delete that it refuses.
inline constexpr const char* ProjectStart = "The project ";
inline constexpr const char* ReadOnlyEnd = " is read-only. Parcels cannot be saved to it.";
inline constexpr const char* LacksColumnMiddle = " lacks the column ";
inline constexpr const char* LacksColumnOf = " of ";
inline constexpr const char* CannotTakeParcels = ". Parcels cannot be saved to it.";
// The reason a write to a project failed, as it ends a sentence.
inline constexpr const char* ReasonDiskFull = "the disk is full";
inline constexpr const char* ReasonReadOnly = "the project is read-only";
inline constexpr const char* ReasonLocked = "another program is using the project";
inline constexpr const char* ReasonDiskError = "the disk could not be written";
inline constexpr const char* ReasonDamaged = "the project file is damaged";
inline constexpr const char* ReasonNotFound = "the project file cannot be found";
inline constexpr const char* ReasonSchema = "the project lacks a table or column of its parcels";
inline constexpr const char* ReasonParcelGone = "the parcel is no longer in the project";
inline constexpr const char* ReasonTooLong = "a text is longer than its field can hold";
inline constexpr const char* ReasonOtherStart = "error ";
inline constexpr const char* CantOpenDrawingStart = "Can't open the associated drawing: ";
inline constexpr const char* CantOpenDrawingEnd =
    ". The default drawing will be opened. Please relocate the drawing.";
inline constexpr const char* OpenRecentFailed = "Load of project database failed.  Database is not loaded.";
inline constexpr const char* HistoryRecentFailed = "Error loading project.  Project database not changed.";
inline constexpr const char* RelocateFailed = "Error setting drawing file!";
inline constexpr const char* BearingCaption = "Bearing";
inline constexpr const char* AzimuthCaption = "Azimuth";

// Project options.
inline constexpr const char* SettingTitle = "Project Options";
inline constexpr const char* OldBearing =
    "You are working on the project that was created by the Parvenna V1.5.3 or earlier. You can "
    "only use the Bearing mode for this project.";
inline constexpr const char* OldDegreeSymbol =
    "You are working on the project that was created by the Parvenna V1.6.0 or earlier. You cannot "
    "set the degree symbol. The default degree symbol is %%D.";
inline constexpr const char* OldColour =
    "You are working on the project that was created by the Parvenna/Parvenna 1.5.4 or earlier. "
    "You cannot set the colour.";
inline constexpr const char* RestartForToolTips = "You must restart Parvenna to enable Tooltip help.";
inline constexpr const char* OrderArc = "Arc";
inline constexpr const char* OrderChord = "Chord";
inline constexpr const char* OrderRadius = "Radius";
inline constexpr const char* OrderBearing = "Bearing";

inline constexpr const char* LabelTolerance = "Closure tolerance of success:";
inline constexpr const char* LabelMinimize = "Minimize during grabbing:";
inline constexpr const char* LabelDecimals = "Number of decimals to display:";
inline constexpr const char* LabelForceArc = "Force arc direction ( + / - ) to be set:";
inline constexpr const char* LabelAutoInvert = "Auto invert:";
inline constexpr const char* LabelTangentCheck = "Perform tangential curve check:";
inline constexpr const char* LabelToolTip = "ToolTip help On/Off:";
inline constexpr const char* LabelDegreeSymbol = "The Degree symbol:";
inline constexpr const char* FrameOrder = "Order of arc fields for data entry";
inline constexpr const char* FrameUnits = "Units of measure";
inline constexpr const char* FrameAreaFeet = "Area reported in";
inline constexpr const char* FrameAreaMetres = "Area reportd in";
inline constexpr const char* FrameTangential = "Tangential tolerance";
inline constexpr const char* FrameBearing = "Bearing";
inline constexpr const char* FrameBackColour = "Back Colour";
inline constexpr const char* FrameForeColour = "Fore Colour";
inline constexpr const char* LabelUnder = "UNDER";
inline constexpr const char* LabelAcceptable = "will be acceptable";
inline constexpr const char* LabelNotChecked = "will not be checked";
inline constexpr const char* Instructions =
    "Instructions: Click the field and use the arrows to change the order";
inline constexpr const char* OptFeet = "Feet";
inline constexpr const char* OptMeters = "Meters";
inline constexpr const char* OptSquareFeet = "Square feet";
inline constexpr const char* OptAcres = "Acres";
inline constexpr const char* OptSquareMeters = "Square meters";
inline constexpr const char* OptHectares = "Hectares";
inline constexpr const char* OptBearing = "Bearing";
inline constexpr const char* OptAzimuth = "Azimuth";
inline constexpr const char* ColourWhite = "White";
inline constexpr const char* ColourBlack = "Black";
inline constexpr const char* ColourYellow = "Yellow";
inline constexpr const char* ColourBlue = "Blue";
inline constexpr const char* ColourOriginal = "Original";
inline constexpr const char* CaptionApply = "&Apply";
inline constexpr const char* CaptionDefault = "&Restore defaults";
inline constexpr const char* CaptionAsDefault = "&Set as defaults";

inline constexpr const char* TipTolerance =
    "The value at which you want the program to indicate to you an error in closure accuracy.";
inline constexpr const char* TipErrDecimal =
    "The number of decimals that will be reported for calculated fields.";
inline constexpr const char* TipMini =
    "If selected, the program will minimze when focus is transfered to AutoCAD.";
inline constexpr const char* TipCurveOpt =
    "If checked, program will ensure you have selected a value of +  or - for arc area.";
inline constexpr const char* TipAutoInvert =
    "If selected, the program will automatically attempt to invert bearings to create the minimum "
    "closure of a parcel.";
inline constexpr const char* TipTangent =
    "If selected, the program will inspect curves to determine if they are tangential to their "
    "leading line.";
inline constexpr const char* TipWarning =
    "The value after which the program determines a curve was NOT MEANT TO BE TANGENTIAL.";
inline constexpr const char* TipTangentTolerance =
    "The value at which the program thinks a curve is close enought to being tangential.";
inline constexpr const char* TipAsDefault =
    "Take these settings and make them the default settings for all future projects.";
inline constexpr const char* TipApply = "Commit the current settings to act on this project.";
inline constexpr const char* TipDefault = "Replace these settings with the default settings.";
inline constexpr const char* TipCancel = "Leave this form without committing changes.";
inline constexpr const char* TipOK = "Leave this form and commit the changes.";
inline constexpr const char* TipForward = "Click here to move the selected field further to the left.";
inline constexpr const char* TipBackward = "Click here to move the selected field further to  the right.";

}  // namespace parvenna::store::messages
