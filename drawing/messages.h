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

// Prefixes of the layer menus of the first and the second view.
inline constexpr const char* Layer1Prefix = "Layer1 ";
inline constexpr const char* Layer2Prefix = "Layer2 ";

}  // namespace parvenna::drawing::messages
