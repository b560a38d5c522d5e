#pragma once

// Every text the closure reports show or write, in one place.
namespace parvenna::reports::messages {

// The window's caption names the report it shows.
inline constexpr const char* FullCaption = "Parvenna full report";
inline constexpr const char* SummaryCaption = "Parvenna summary report";
inline constexpr const char* PictureCaption = "Parvenna report with picture";

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

}  // namespace parvenna::reports::messages
