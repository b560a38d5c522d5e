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
// A save or a delete that the store refused: the parcel, the project and
// the reason, and what became of the work.
inline constexpr const char* ParcelStart = "The parcel ";
inline constexpr const char* NotSavedTo = " could not be saved to the project ";
inline constexpr const char* NotDeletedFrom = " could not be deleted from the project ";
inline constexpr const char* NothingChanged =
    ".\nNothing was changed in the project, and the parcel stays on screen.";
// What the store could not keep as the rows hold it.
inline constexpr const char* NameTooLong =
    "The parcel name can be at most 50 characters long. Shorten it and save again.";
inline constexpr const char* CourseStart = "Course ";
inline constexpr const char* CourseBlank =
    " is blank. Key it, or delete the course, and save again.";
inline constexpr const char* CourseCannotSave = " cannot be saved: its ";
inline constexpr const char* FieldEmpty = " is empty. Key it, or delete the course, and save again.";
inline constexpr const char* FieldNoNumber = " is not a number.";
// An insertion that would push the last course off the grid.
inline constexpr const char* DropLastCourse =
    "Course 50 is the last the parcel can hold, and inserting a course pushes it off the grid. "
    "Insert all the same and lose course 50?";
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
