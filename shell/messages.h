#pragma once

// Every text of the shell, read together here.
namespace parvenna::shell::messages {

inline constexpr const char* Version = "1.0.0";  // major, minor, revision
inline constexpr const char* ProgramVersion = "Program Version: ";
inline constexpr const char* InitialConfiguration = "Initial configuration";
inline constexpr const char* AskBearing =
    "What unit of angular measurement would you like to be the default? Yes = Bearing, No = "
    "Azimuth.";
inline constexpr const char* AskUnit =
    "What unit of linear measurement would you like to be the default?  yes = Metric, No = "
    "Imperial.";
inline constexpr const char* SaveBeforeReports =
    "Please save the current parcel before printing reports.";
inline constexpr const char* UnknownErrorTitle = "Unkown Error";
inline constexpr const char* UnknownErrorStart = "Unkown Error Number ";
inline constexpr const char* UnknownErrorEnd = " has occured.";
// ReportUnknownError: the same in its own spelling, with the way to support.
inline constexpr const char* ReportedErrorStart = "Unknown Error Number ";
inline constexpr const char* SupportSentence =
    "Please call Parvenna support at +1 555 0100 or write to support@parvenna.example.org, "
    "saying what you did just before.";
// A page, a file or a mail that nothing on the desktop opens.
inline constexpr const char* CannotOpenStart = "No program on this computer is set up to open ";
inline constexpr const char* CannotOpenEnd = ". Please open it by hand.";
inline constexpr const char* NoVideo =
    "No training video is installed with this copy of Parvenna.";

// Captions of the windows and their reports.
inline constexpr const char* FullReport = "Parvenna full report";
inline constexpr const char* SummaryReport = "Parvenna summary report";
inline constexpr const char* PictureReport = "Parvenna report with picture";
inline constexpr const char* MapcheckReport = "Parvenna mapcheck";

// Where the help menu leads.
inline constexpr const char* FaqAddress = "https://parvenna.example.org/faq";
inline constexpr const char* WebsiteAddress = "https://parvenna.example.org/";
inline constexpr const char* SupportAddress = "mailto:support@parvenna.example.org";
inline constexpr const char* CommentsAddress = "mailto:comments@parvenna.example.org";

}  // namespace parvenna::shell::messages
