#pragma once

// Every text the closure reports show or write, in one place.
namespace parvenna::reports::messages {

// The window's caption names the report it shows.
inline constexpr const char* FullCaption = "Parvenna full report";
inline constexpr const char* SummaryCaption = "Parvenna summary report";
inline constexpr const char* PictureCaption = "Parvenna report with picture";
inline constexpr const char* MapcheckCaption = "Parvenna mapcheck";

// Boxes.
inline constexpr const char* SaveFirst = "Please save the current parcel before printing reports.";
inline constexpr const char* NoDataText = "there is no data to print.";     // the text reports
inline constexpr const char* NoDataPicture = "There is no data to print.";  // the picture report
inline constexpr const char* PrintThisReport = "Print this report?";

// The bar of the window: captions and tooltips.
inline constexpr const char* ComboDesignText = "Combo1";
inline constexpr const char* ParcelTip = "Select a single parcel to report on.";
inline constexpr const char* ExportCaption = "&Save as";
inline constexpr const char* ExportTip = "Save the report to a text file.";
inline constexpr const char* PrintCaption = "&Print";
inline constexpr const char* PrintTip = "Click to print this report.";
inline constexpr const char* CloseCaption = "&Close";
inline constexpr const char* CloseTip = "Close the print preview window.";
inline constexpr const char* AllCaption = "All";
inline constexpr const char* AllTip = "Report on all parcels in the project.";
inline constexpr const char* PassCaption = "Pass";
inline constexpr const char* PassTip =
    "Show only parcels that have a closure distance better than the tolerance found in settings.";
inline constexpr const char* FailCaption = "Fail";
inline constexpr const char* FailTip =
    "Show only parcels that have a closure lower than what is indicated in settings.";
inline constexpr const char* ParcelLabel = "Parcel:";
inline constexpr const char* PreviewTip = "The preview of the report.";
inline constexpr const char* SaveFilter =
    "Rich Text File(*.rtf)|*.rtf|TEXT (*.txt)|*.txt|Excel File(*.csv)|*.csv|";

// The window's help menu.
inline constexpr const char* HelpMenu = "&Help";
inline constexpr const char* QuickHelpMenu = "&Quick help";
inline constexpr const char* AboutMenu = "About Parvenna";
inline constexpr const char* FaqMenu = "FAQ online";
inline constexpr const char* SupportMenu = "Email to support";
inline constexpr const char* CommentMenu = "Email Comment";

// Work files beside the program.
inline constexpr const char* TextWorkFile = "temp.rpt";
inline constexpr const char* CsvWorkFile = "tempcsv.rpt";

// Words of the reports.
inline constexpr const char* Bearing = "BEARING";
inline constexpr const char* Azimuth = "AZIMUTH";
inline constexpr const char* CrLf = "\r\n";
inline constexpr const char* DrawingLine = "Auto CAD file name: ";
inline constexpr const char* LotLine = "Lot Closure Report - Lot # ";
inline constexpr const char* StartLine = "Starting location (North, East) = ( 0, 0 )";
inline constexpr const char* LegHead = " LEG    ";
inline constexpr const char* LengthHead = "       LENGTH";
inline constexpr const char* ArcHead = "    ARC      RADIUS  AREA+/-";
inline constexpr const char* RuleLine = " ---    -------       ------        ---      ------  -------";
inline constexpr const char* FeetUnit = "(ft)";
inline constexpr const char* MetreUnit = "(m) ";  // the blank keeps both heads one width
inline constexpr const char* TotalLine = "Total Distance         : ";
inline constexpr const char* DirectionLine = "Misclosure Direction   : ";
inline constexpr const char* DistanceLine = "Misclosure Distance    : ";
inline constexpr const char* ErrorLine = "Error of Closure       : ";
inline constexpr const char* AreaLine = "AREA                   : ";
inline constexpr const char* Perfect = "Perfect";
inline constexpr const char* RatioPrefix = "1:";
inline constexpr const char* Utf8Bom = "\xEF\xBB\xBF";
inline constexpr const char* CsvHeadStart = "\"LOT #\",\"LEG\",\"";
inline constexpr const char* CsvHeadLength = "\",\"LENGTH";
inline constexpr const char* CsvHeadEnd = "\",\"ARC\",\"RADIUS\",\"AREA+/-\"";

// The summary.
inline constexpr const char* SummaryHead1 = "             PARCEL NAME      AREA  CLOSURE  ";
inline constexpr const char* SummaryHead2 = "  CLOSURE     PRECISION";
inline constexpr const char* SummaryFeetArea = "sq.f.";
inline constexpr const char* SummaryFeetLength = " feet";
inline constexpr const char* SummaryMetreArea = "sq.m.";
inline constexpr const char* SummaryMetreLength = "meter";
inline constexpr const char* SummaryPerfect = "   Perfect";
inline constexpr const char* SummaryRatioPrefix = "   1:";

// The page with the picture.
inline constexpr const char* PictureTitle = "CLOSURE AND AREA REPORT";
inline constexpr const char* PassWord = "(PASS)";
inline constexpr const char* FailWord = "(FAIL)";
inline constexpr const char* ParcelWord = "PARCEL: ";
inline constexpr const char* DrawingWord = "AutoCAD FILE: ";
inline constexpr const char* PageHeadStart = "LEG          ";
inline constexpr const char* PageHeadEnd =
    "            LENGTH      ARCLENGTH         RADIUS       ARCAREA +/-";
inline constexpr const char* Continued = " (continued)";  // the name on a page that goes on
inline constexpr const char* PlusMark = " + ";
inline constexpr const char* MinusMark = "  -";
inline constexpr const char* AreaWord = "AREA: ";
inline constexpr const char* DistanceWord = "Misclosure Distance: ";
inline constexpr const char* ErrorWord = "Error of closure: ";
inline constexpr const char* TotalWord = "Total Distance: ";
inline constexpr const char* DirectionWord = "Misclosure Direction: ";

// The mapcheck.
namespace mapcheck {

inline constexpr const char* RatioTip = "The precision a parcel must reach to pass, 1 in this number.";
inline constexpr const char* RatioLabel = "Precision 1:";
inline constexpr const char* RatioRefused =
    "The precision must be a whole number from 1 to 1,000,000,000. The former value stays.";

inline constexpr const char* Title = "MAPCHECK";
inline constexpr const char* SummaryTitle = "MAPCHECK SUMMARY";
inline constexpr const char* ProjectWord = "Project file : ";
inline constexpr const char* DrawingWord = "Drawing file : ";
inline constexpr const char* ParcelWord = "Parcel       : ";
inline constexpr const char* DateWord = "Date : ";
inline constexpr const char* UnitsWord = "Units        : ";
inline constexpr const char* Feet = "feet";
inline constexpr const char* Metres = "metres";
inline constexpr const char* NotationWord = "   Notation: ";
inline constexpr const char* QuadrantBearing = "quadrant bearing";
inline constexpr const char* AzimuthWord = "azimuth";
inline constexpr const char* DecimalsWord = "   Decimals: ";
inline constexpr const char* TolerancesWord = "Tolerances   : closure ";
inline constexpr const char* RatioWord = ", precision 1:";
inline constexpr const char* BeginningWord = "Point of beginning : N ";
inline constexpr const char* EastWord = "  E ";
inline constexpr const char* FeetShort = " ft";
inline constexpr const char* MetresShort = " m";

inline constexpr const char* CourseHeadStart = " No. Course ";
inline constexpr const char* BearingHead = "Bearing";
inline constexpr const char* AzimuthHead = "Azimuth";
inline constexpr const char* CourseHeadEnd = "    Distance        Northing         Easting";
inline constexpr const char* LineWord = "Line";
inline constexpr const char* CurveWord = "Curve";
inline constexpr const char* RadiusWord = "Radius ";
inline constexpr const char* ArcWord = "   Arc ";
inline constexpr const char* ChordWord = "   Chord ";
inline constexpr const char* ChordBearingWord = "   Chord ";  // followed by the notation's word
inline constexpr const char* DeltaWord = "Delta ";
inline constexpr const char* TangentWord = "   Tangent ";
inline constexpr const char* TurnRight = "   Curve right";
inline constexpr const char* TurnLeft = "   Curve left";
inline constexpr const char* TurnUnknown = "   Curve side unknown (no sign set)";
inline constexpr const char* TangentInWord = "Tangent in ";
inline constexpr const char* TangentOutWord = "   Tangent out ";
inline constexpr const char* NotShown = "-";

inline constexpr const char* ClosureHead = "Closure";
inline constexpr const char* ErrorNorth = "  Error north (end - beginning)  : ";
inline constexpr const char* ErrorEast = "  Error east (end - beginning)   : ";
inline constexpr const char* ErrorDistance = "  Error distance                 : ";
inline constexpr const char* RoundedStart = "   (";
inline constexpr const char* RoundedEnd = " at the project's decimals)";
inline constexpr const char* ErrorBearing = "  Error direction (end to POB)   : ";
inline constexpr const char* PerimeterLine = "  Perimeter (arcs for curves)    : ";
inline constexpr const char* PrecisionLine = "  Precision                      : ";
inline constexpr const char* AreaLine = "  Area                           : ";
inline constexpr const char* AreaNotGood = "N/A (a curve's sign is not set)";
inline constexpr const char* PerfectWord = "Perfect";
inline constexpr const char* ToleranceVerdict = "Closure tolerance ";
inline constexpr const char* RatioVerdict = "Precision tolerance 1:";
inline constexpr const char* ResultVerdict = "Result";
inline constexpr const char* Pass = "PASS";
inline constexpr const char* Fail = "FAIL";
inline constexpr const char* FindingsHead = "Findings";
inline constexpr const char* NoFindings = "  None.";

inline constexpr const char* CourseWord = "Course #";
inline constexpr const char* NotADirection = "is not a direction of this project's notation.";
inline constexpr const char* SignNotConfirmed =
    "the curve's segment area is not confirmed (+/-), so its side is unknown.";
inline constexpr const char* CurvesNotChecked = "The curves could not be checked against their radius and chord.";
inline constexpr const char* TangencyNotChecked = "The joints of the curves could not be checked for tangency.";
inline constexpr const char* TooManyStart = "The parcel has ";
inline constexpr const char* TooManyEnd = " courses stored; only the first 50 are checked.";
inline constexpr const char* IncompleteStart = "Course #";
inline constexpr const char* IncompleteEnd =
    " is incomplete: it and the courses after it are not counted.";
inline constexpr const char* NoCourses = "No complete course is stored for this parcel.";
inline constexpr const char* CannotWalk = "The courses cannot be computed: ";

inline constexpr const char* SummaryHead =
    " Parcel               No.   Perimeter";
inline constexpr const char* SummaryClosureHead = "  Closure   Precision  Result";
inline constexpr const char* ParcelsWord = " parcels";
inline constexpr const char* OneParcelWord = " parcel";
inline constexpr const char* TotalAreaWord = ", total area ";
inline constexpr const char* PassCountWord = " pass, ";
inline constexpr const char* FailCountWord = " fail";
inline constexpr const char* NoCoursesShort = "no courses";

inline constexpr const char* PageWord = "Page ";
inline constexpr const char* OfWord = " of ";
inline constexpr const char* ContinuedWord = " (continued)";

}  // namespace mapcheck

}  // namespace parvenna::reports::messages
