#pragma once

#include <array>
#include <deque>
#include <string>
#include <string_view>

#include "geometry/notation.h"

// Directions live as text, as typed or grabbed; they become numbers only for
// the moment of a computation. Text is UTF-8; the degree mark is U+00B0 and
// the OEM reading of it, U+00F8, is taken for a degree mark as well.
namespace parvenna {

inline constexpr std::string_view DegreeMark = "\u00B0";

// Degrees, minutes, seconds: each only digits, or empty for 0.
using DmsTriple = std::array<std::string, 3>;
inline constexpr int DmsDegrees = 0;
inline constexpr int DmsMinutes = 1;
inline constexpr int DmsSeconds = 2;

// Splits angle text read from its right end. True when well formed; on a
// refusal the triple keeps what had been gathered.
bool SplitDms(const Notation& notation, std::string_view text, DmsTriple& dms);

// True when the text is a direction of the current mode. In quadrant mode its
// blanks are removed in place; in azimuth mode it is left untouched. Throws an
// overflow for a digit run too long for its integer.
bool IsValidBearing(const Notation& notation, std::string& text);

// Decimal degrees of an angle text without letters.
double DmsToDegrees(const Notation& notation, std::string_view text);

// Degrees anticlockwise from east. Quadrant pairs other than NE, NW, SE, SW
// (compared exactly) give 0; azimuths give 450 - azimuth. A quadrant text of
// fewer than two characters is an invalid call.
double BearingToAngle(const Notation& notation, std::string_view text);

// The direction from point 1 to point 2, seconds cut off. An equal northing
// gives the fixed text N90° 0'0"E (90° 0'0" for azimuths), whatever the eastings.
std::string BearingFromPoints(const Notation& notation, double x1, double y1, double x2,
                              double y2);

// Angle text of decimal degrees, seconds rounded with no carry, degrees
// modulo 360 with the sign of the degrees.
std::string FormatDms(double degrees);

std::string PerpendicularBearing(const Notation& notation, std::string_view text);
std::string ReverseBearing(const Notation& notation, std::string_view text);
std::string OppositeLetter(std::string_view letter);

// The older pair kept for the automatic inversion. CalDegree removes blanks
// in place and needs all three fields: an empty one is a type mismatch.
double CalDegree(std::string& text);
double AngleFromEast(std::string_view text);

// The digits and points of a text, in order; "0" when none or a lone point.
std::string NumberFromText(std::string_view text);

// Grab modes of SplitGrabbedText: 2 reverses every token that is a direction.
inline constexpr int GrabReversed = 2;

// Splits a grabbed label at blanks and appends its tokens to the queue; the
// text is used up.
void SplitGrabbedText(const Notation& notation, std::string& text, std::deque<std::string>& queue,
                      int grabMode);

// Removes every blank (U+0020) of a text.
std::string RemoveBlanks(std::string_view text);

}  // namespace parvenna
