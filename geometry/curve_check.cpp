#include "geometry/curve_check.h"

#include <cmath>

#include "geometry/messages.h"
#include "geometry/numbers.h"

namespace parvenna {
namespace {

// The arc that radius and chord imply, always the short one: the test that
// would take a long arc is made twice, and the second undoes the first, so a
// typed long arc always meets the warning. Reports of older versions agree.
double ImpliedArc(double radius, double chord, double typedArc) {
  const double h = SquareRoot(Square(radius) - Square(chord / 2));
  // A half circle has no distance from centre to chord; its arc is the half
  // circumference, which the general formula reaches only in the limit.
  double a = h == 0 ? radius * Pi : (radius + radius) * std::atan(Divide(chord, h + h));
  if (radius * Pi < typedArc) a = radius * TwoPi - a;
  if (radius * Pi < typedArc) a = radius * TwoPi - a;
  return a;
}

// The decimals typed in an arc: the characters after the first point, or all
// of them when there is none, so whole arcs are compared to as many decimals
// as they have digits.
int TypedDecimals(const std::string& arc) {
  const std::size_t point = arc.find('.');
  const std::size_t p = point == std::string::npos ? 0 : point + 1;
  return static_cast<int>(arc.size() - p);
}

}  // namespace

bool CheckCurves(CourseGrid& grid, Prompter& prompter) {
  const int last = FindLastLine(grid);
  bool result = true;
  auto markArc = [&](int row) {
    grid.MoveFocus(row, CourseField::Arc);
    grid.MarkField(row, CourseField::Arc, colours::MarkColour);
  };
  for (int row = 0; row <= last; ++row) {
    if (grid.Kind(row) != CourseKind::Curve) continue;
    const std::string& arcText = grid.Text(row, CourseField::Arc);
    const std::string& chordText = grid.Text(row, CourseField::Chord);
    const std::string& radiusText = grid.Text(row, CourseField::Radius);

    const double arc = ReadNumber(arcText);
    const double chord = ReadNumber(chordText);
    if (arc < chord) {  // equal passes: a straight curve is tolerated
      markArc(row);
      Inform(prompter, messages::ArcShorterThanChord);
      result = false;
      continue;
    }
    const double radius = TextToDouble(radiusText);
    if (radius + radius < chord) {
      markArc(row);
      Inform(prompter, messages::ChordOverDiameter);
      result = false;
      continue;
    }
    const double implied = ImpliedArc(radius, TextToDouble(chordText), arc);
    const int n = TypedDecimals(arcText);
    const double shouldBe = RoundHalfEven(implied, n);
    if (FormatFixed(shouldBe, n) != FormatFixed(arc, n)) {
      markArc(row);
      std::string prompt = messages::ArcWarningStart + std::to_string(row + 1) +
                           messages::ArcWarningMiddle + messages::ArcWarningShould +
                           PlainNumber(shouldBe) + messages::WouldYouSave;
      if (!AskYesNo(prompter, prompt)) result = false;
    }
  }
  return result;
}

}  // namespace parvenna
