#pragma once

// Every text that the drawing views and the grabbing show, read together here.
namespace parvenna::drawing::messages {

inline constexpr const char* OpenDrawingFileError = "Open drawing file error!";

// The limit box of the course grid: the text, then the limit, then ".".
inline constexpr const char* CourseLimitStart = "The maximum number of courses is ";
inline constexpr const char* CourseLimitEnd = ".";

// The two view tabs.
inline constexpr const char* FirstView = "First View";
inline constexpr const char* SecondView = "Second View";

// Why a drawing cannot be read, shown under OpenDrawingFileError, with what
// to do about it.
inline constexpr const char* SaveAsAdvice =
    "Save it in the CAD program as DXF, or as a DWG of version R14 to 2018, and open that.";
inline constexpr const char* ReasonNotFound = "The file cannot be found or cannot be opened.";
inline constexpr const char* ReasonEmpty = "The file is empty.";
inline constexpr const char* ReasonNotADrawing =
    "The file is no drawing of a kind that can be read here (DWG, DXF or DGN V7).";
inline constexpr const char* ReasonDwgVersion = "The DWG file is of version ";  // + name
inline constexpr const char* ReasonDwgTooOld = ", older than R13, which cannot be read here. ";
inline constexpr const char* ReasonDwgTooNew = ", newer than 2018, which cannot be read here. ";
inline constexpr const char* ReasonDwgDamaged =
    "The DWG file is damaged: its contents cannot be made out. Repair it in the CAD program "
    "(RECOVER), or save it as DXF, and open it again.";
inline constexpr const char* ReasonDwgTimedOut = "Reading the DWG file took longer than ";  // + seconds
inline constexpr const char* ReasonDwgTimedOutEnd = " seconds and was stopped. ";
inline constexpr const char* ReasonConverterMissing = "The DWG reader is not installed (";  // + what
inline constexpr const char* ReasonConverterMissingEnd =
    "). Install the program again with its DWG reader, which needs Node.js, or save the "
    "drawing as DXF and open that.";
inline constexpr const char* ReasonDgnV8 =
    "The file is a MicroStation DGN V8 drawing, which cannot be read here. Save it in the CAD "
    "program as DGN V7, DXF or DWG, and open that.";
inline constexpr const char* ReasonBinaryDxf =
    "The file is a binary DXF, which cannot be read here. Save it as an ASCII DXF and open that.";
inline constexpr const char* ReasonUnreadable = "The drawing cannot be read: ";  // + the reader's words

// Prefixes of the layer menus of the first and the second view.
inline constexpr const char* Layer1Prefix = "Layer1 ";
inline constexpr const char* Layer2Prefix = "Layer2 ";

}  // namespace parvenna::drawing::messages
