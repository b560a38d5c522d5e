#pragma once

// Every text that the course geometry shows or writes, read together here.
namespace parvenna::messages {

// Results.
inline constexpr const char* NotAvailable = "N/A";
inline constexpr const char* Perfect = "Perfect";
inline constexpr const char* RatioPrefix = "1:";
inline constexpr const char* FixedEastQuadrant = "N90\u00B0 0'0\"E";
inline constexpr const char* FixedEastAzimuth = "90\u00B0 0'0\"";

// Sketch tooltips.
inline constexpr const char* ZoomIn = "Double click to zoom in";
inline constexpr const char* ZoomRestore = "Double Click to restore normal view";

// Curve checks.
inline constexpr const char* ArcShorterThanChord =
    "ERROR: The arc length must be greater than the chord length.";
inline constexpr const char* ChordOverDiameter =
    "ERROR: The chord length cannot be greater than 2 x radius.";
inline constexpr const char* ArcEmpty = "ERROR: The arc cannot be empty.";
inline constexpr const char* ArcWarningStart = "Warning: In course #";
inline constexpr const char* ArcWarningMiddle =
    " the arc length does not agree with the radius and chord length.";
inline constexpr const char* ArcWarningShould = " The arc length should be ";
inline constexpr const char* WouldYouSave = ". Would you like to save it?";

// Tangency.
inline constexpr const char* PleaseCheck = "Please check ";

// Automatic inversion.
inline constexpr const char* RecommendManualClose =
    "We recommend that you manually close this figure.";
// A quadrant bearing without its minutes or seconds: the pass cannot weigh the
// course against the one before, so it refuses to start.
inline constexpr const char* AutoInverseNeedsFullBearingStart = "Course #";
inline constexpr const char* AutoInverseNeedsFullBearingEnd =
    " needs degrees, minutes and seconds (as N12\u00B030'0\"E) before the bearings can be "
    "inverted automatically. Nothing was changed.";

// The checks before a parcel is stored.
inline constexpr const char* NoCourse = "You cannot save the parcel without at least one course.";
inline constexpr const char* ConfirmSegmentArea =
    "You must confirm segment area (+/-) before saving.";
inline constexpr const char* BearingInvalid = "The bearing value is invalid.";

}  // namespace parvenna::messages
