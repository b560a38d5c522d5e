#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Numbers as the program reads, rounds and writes them. Every failure that the
// closure rules count on is raised here as a RunError (platform/run_error.h).
namespace parvenna {

inline constexpr double Pi = 3.14159265358979;      // as written, not the full double
inline constexpr double TwoPi = 6.28318530717958;

// RoundHalfEven(x, n): decimal rounding to n places, ties to the even digit.
// "Decimal" means the value as written: x is first taken at 15 significant
// digits (the text that PlainNumber prints), and that text is rounded. So
// 2.675 to 2 places gives 2.68 although the double lies a hair below 2.675,
// and 2.665 gives 2.66. A negative n is an invalid call.
double RoundHalfEven(double x, int n);

// WholeOf(x): x - 0.5 rounded to the nearest 16-bit integer, ties to even.
// Nearly always the floor of x, but an exact odd whole number gives one less
// (45 gives 44) and an exact even one itself (46 gives 46). Overflow outside
// the 16-bit range.
int WholeOf(double x);

// A text as a floating number, read as it stands: blanks around it, an
// optional sign, digits with one optional point, an optional exponent. The
// empty text and anything else is a type mismatch; a value beyond the double
// range an overflow.
double TextToDouble(std::string_view text);

// A course field read with "0" put before it: the empty text reads 0 and ".5"
// reads 0.5, while "-5" or "1.2.3" are no numbers.
double ReadNumber(std::string_view text);

// A field of digits read as a 32-bit integer with "0" put before it.
std::int32_t ReadLong(std::string_view text);

// The leading number of a text, as far as it goes; never fails ("12abc" is 12,
// "abc" is 0). Used where a caption is read back as a number.
double Val(std::string_view text);

// A number in plain decimal: up to 15 significant digits, no trailing zeros,
// a point as decimal mark, an exponent only for magnitudes from 1E+15 up or
// below 1E-05.
std::string PlainNumber(double x);

// The number picture "##########." followed by n zeros: no leading zeros, no
// grouping, exactly n decimals (rounded half even as written), a trailing
// point when n is 0.
std::string FormatFixed(double x, int decimals);
// The same text added to the end of `out`, which keeps its former text when
// the rounding fails.
void AppendFixed(std::string& out, double x, int decimals);

// Checked arithmetic: the failures that a division, a root or an overflow
// must raise.
double Divide(double numerator, double denominator);
double SquareRoot(double x);
double Square(double x);  // the power function with exponent 2.0
double Checked(double x);  // an overflow when x is not finite

// Runs one statement of a resume-at-next-statement routine: a RunError in it
// is swallowed, and the statement's effect is whatever it got done. Returns
// false when the statement failed.
template <class Statement>
bool ResumeNext(Statement&& statement);

}  // namespace parvenna

#include "platform/run_error.h"

namespace parvenna {
template <class Statement>
bool ResumeNext(Statement&& statement) {
  try {
    statement();
    return true;
  } catch (const RunError&) {
    return false;
  }
}
}  // namespace parvenna
