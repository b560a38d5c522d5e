#pragma once

// Every text that the editor shows, read together here.
namespace parvenna::editor::messages {

inline constexpr const char* BearingNotFormatted = "The bearing is not formatted correctly.";
inline constexpr const char* MaximumCoursesStart = "The maximum number of courses is ";

inline constexpr const char* NoParcelName = "You cannot save without parcel name.";
inline constexpr const char* NoValidParcel = "There is no valid parcel to save.";
inline constexpr const char* FailedTolerance =
    "This parcel has failed the closure tolerance. Would you like to save?";
inline constexpr const char* LotStart = "The lot ";
inline constexpr const char* LotExistsInsert =
    " already exists. Please rename the parcel before saving again.";
inline constexpr const char* LotExistsRename =
    " already exists. Please rename the parcel then try to save again.";
inline constexpr const char* NoMatchingEntries = "There are no matching entries in the database.";
// A stored parcel longer than the grid cannot be shown.
inline constexpr const char* TooManyCoursesStart = "This parcel has ";
inline constexpr const char* TooManyCoursesEnd =
    " courses, more than the 50 that the editor can hold. It is left as it is stored "
    "and cannot be shown here.";
inline constexpr const char* ConfirmDeleteParcel =
    "Are you sure you want to delete the current parcel?";
inline constexpr const char* ExitParvenna = "Exit Parvenna?";

// Captions and tooltips of the grid.
inline constexpr const char* RowMenuTip = "Menu button - click for course editing menu";
inline constexpr const char* InvertCaption = "N<-->S";
inline constexpr const char* InvertTip = "Invert the bearing";
inline constexpr const char* AddAreaTip = "ARC area is to be added to the overall parcel area";
inline constexpr const char* SubtractAreaTip =
    "ARC area is to be subtracted to the overall parcel area";
inline constexpr const char* ChangeToCurve = "Change to curve";
inline constexpr const char* ChangeToLine = "Change to line";
inline constexpr const char* ParcelListTip = "Parcels of the project";
inline constexpr const char* BearingCaption = "Bearing";
inline constexpr const char* AzimuthCaption = "Azimuth";

}  // namespace parvenna::editor::messages
