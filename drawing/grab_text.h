#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "geometry/bearing_text.h"
#include "geometry/notation.h"

// From the text of a drawing label to the values it holds: a label may carry
// a bearing and a distance at once, with CAD codes around them.
namespace parvenna::drawing {

// Finds a direction in a label, in the notation's mode. start and end are
// character positions from 1, applied to the text as given. The scan reads
// the degree text of the project (and the OEM degree mark) as one degree
// mark; end is moved on by the characters that this shortened the text,
// start is not, so a degree text before the direction leaves start short.
// Quadrant bearings need their minutes and seconds to be found.
bool FindBearingInText(const Notation& notation, int& start, int& end, std::string_view text);

// The values of a label: trimmed, "=" read as a blank, outer braces and one
// short leading format code (\X..; with its ";" at character 4 or 5) taken
// off, the direction found with its blanks removed, and the rest split at
// blanks. Grab mode 2 reverses the directions.
std::deque<std::string> CleanDrawingText(const Notation& notation, std::string_view text,
                                         int grabMode);

// The line breaks and tabs of a label read as blanks, so that a label of
// several lines splits where it shows a gap.
std::string BlankTextBreaks(std::string_view text);

// The values a click on a label yields: the text the pick hands on (as the
// label shows it, percent codes as written; Viewer::FoundText) with its
// breaks made blanks, cleaned.
std::deque<std::string> GrabbedValues(const Notation& notation, std::string_view picked, int grabMode);

}  // namespace parvenna::drawing
