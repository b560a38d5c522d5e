#include "geometry/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace parvenna {
namespace {

constexpr int kSignificant = 15;

// The powers of ten that a double holds exactly.
constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                              1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The 15 significant digits of x (no sign) and the decimal exponent of the
// first one: x = 0.d1d2...d15 * 10^(exponent + 1).
struct Digits15 {
  char digits[kSignificant];
  int exponent;
};

Digits15 DigitsOf(double magnitude) {
  char buffer[40];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, magnitude,
                              std::chars_format::scientific, kSignificant - 1);
  *result.ptr = '\0';
  Digits15 out{};
  out.digits[0] = buffer[0];
  std::memcpy(out.digits + 1, buffer + 2, kSignificant - 1);  // skip the point
  const char* e = std::strchr(buffer, 'e');
  std::from_chars(e + (e[1] == '+' ? 2 : 1), result.ptr, out.exponent);
  return out;
}

double ParseDecimal(const char* first, const char* last) {
  double value = 0;
  std::from_chars(first, last, value);
  return value;
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Decimal rounding from the 15-digit text, for the values near a tie.
double RoundFromDigits(double x, int n) {
  const bool negative = x < 0;
  Digits15 d = DigitsOf(std::fabs(x));
  const int keep = d.exponent + 1 + n;  // significant digits that survive
  if (keep >= kSignificant) return x;
  if (keep < 0) return 0.0;
  // A leading zero takes the carry of 9.99 -> 10.0.
  char kept[kSignificant + 2];
  kept[0] = '0';
  std::memcpy(kept + 1, d.digits, keep);
  const char next = d.digits[keep];
  bool restNonZero = false;
  for (int i = keep + 1; i < kSignificant; ++i) restNonZero |= d.digits[i] != '0';
  const bool lastOdd = (kept[keep] - '0') % 2 == 1;
  if (next > '5' || (next == '5' && (restNonZero || lastOdd))) {
    int i = keep;
    while (kept[i] == '9') kept[i--] = '0';
    ++kept[i];
  }
  // kept holds keep + 1 digits whose last stands at 10^(exponent + 1 - keep).
  char text[64];
  int length = keep + 1;
  std::memcpy(text, kept, length);
  text[length++] = 'e';
  auto r = std::to_chars(text + length, text + sizeof text, d.exponent + 1 - keep);
  double value = ParseDecimal(text, r.ptr);
  return value == 0 ? 0.0 : (negative ? -value : value);
}

}  // namespace

double RoundHalfEven(double x, int n) {
  if (n < 0) throw RunError(ErrorNumber::InvalidCall, "Rounding to a negative number of places");
  Checked(x);
  if (x == 0) return 0.0;
  // The common case, far from a tie: binary rounding agrees with decimal
  // rounding, and the division by an exact power of ten is correctly rounded.
  if (n <= 22) {
    const double scaled = std::fabs(x) * kPowers[n];
    if (scaled < 1e12) {
      const double whole = std::floor(scaled);
      const double fraction = scaled - whole;
      const double margin = scaled * 1e-13 + 1e-9;
      if (std::fabs(fraction - 0.5) > margin) {
        const double rounded = (fraction > 0.5 ? whole + 1 : whole) / kPowers[n];
        return rounded == 0 ? 0.0 : std::copysign(rounded, x);
      }
    }
  }
  return RoundFromDigits(x, n);
}

int WholeOf(double x) {
  const double v = x - 0.5;
  if (!(v > -32768.5 && v < 32767.5)) {
    throw RunError(ErrorNumber::Overflow, "Angle too large for a whole number of degrees");
  }
  return static_cast<int>(std::nearbyint(v));  // the default mode: to nearest, ties to even
}

double TextToDouble(std::string_view text) {
  std::size_t first = 0, last = text.size();
  while (first < last && IsBlank(text[first])) ++first;
  while (last > first && IsBlank(text[last - 1])) --last;
  std::string_view body = text.substr(first, last - first);

  // Shape: [sign] digits [. digits] [e [sign] digits], at least one mantissa digit.
  std::size_t i = 0;
  bool negative = false;
  if (i < body.size() && (body[i] == '+' || body[i] == '-')) negative = body[i++] == '-';
  const std::size_t mantissaStart = i;
  int mantissaDigits = 0, digitsBeforePoint = 0, leadingZeros = 0;
  bool seenPoint = false, seenNonZero = false;
  for (; i < body.size(); ++i) {
    const char c = body[i];
    if (IsDigit(c)) {
      ++mantissaDigits;
      if (c != '0') seenNonZero = true;
      if (!seenPoint) {
        ++digitsBeforePoint;
        if (!seenNonZero) ++leadingZeros;
      }
    } else if (c == '.' && !seenPoint) {
      seenPoint = true;
    } else {
      break;
    }
  }
  const std::size_t mantissaEnd = i;
  long exponent = 0;
  if (i < body.size() && (body[i] == 'e' || body[i] == 'E')) {
    std::size_t j = i + 1;
    bool expNegative = false;
    if (j < body.size() && (body[j] == '+' || body[j] == '-')) expNegative = body[j++] == '-';
    const std::size_t expStart = j;
    while (j < body.size() && IsDigit(body[j])) {
      if (exponent < 100000) exponent = exponent * 10 + (body[j] - '0');
      ++j;
    }
    if (j == expStart) i = body.size() + 1;  // an exponent mark with no digits
    else {
      i = j;
      if (expNegative) exponent = -exponent;
    }
  }
  if (mantissaDigits == 0 || i != body.size()) {
    throw RunError(ErrorNumber::TypeMismatch, "Not a number: \"" + std::string(text) + "\"");
  }
  if (!seenNonZero) return 0.0;

  std::string plain(body.substr(mantissaStart, mantissaEnd - mantissaStart));
  plain += 'e';
  plain += std::to_string(exponent);
  double value = 0;
  auto result = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // Too large is an overflow; too small reads as zero.
    const long magnitude = (digitsBeforePoint - leadingZeros) + exponent;
    if (magnitude > 0) throw RunError(ErrorNumber::Overflow, "Number too large: " + plain);
    return 0.0;
  }
  return negative ? -value : value;
}

double ReadNumber(std::string_view text) {
  // Digits alone, as the fields of an angle hold them, are a whole number
  // that a double holds exactly up to 15 of them.
  if (text.size() <= 15 && std::all_of(text.begin(), text.end(), IsDigit)) {
    std::int64_t whole = 0;
    for (char c : text) whole = whole * 10 + (c - '0');
    return static_cast<double>(whole);
  }
  // The "0" put in front makes the empty text 0 and refuses a sign.
  std::string prefixed = "0";
  prefixed += text;
  return TextToDouble(prefixed);
}

std::int32_t ReadLong(std::string_view text) {
  const double value = ReadNumber(text);
  if (!(value > -2147483648.5 && value < 2147483647.5)) {
    throw RunError(ErrorNumber::Overflow, "Number too large for a long integer: " + std::string(text));
  }
  return static_cast<std::int32_t>(std::nearbyint(value));
}

double Val(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  std::size_t start = i;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  bool seenPoint = false, seenDigit = false;
  for (; i < text.size(); ++i) {
    if (IsDigit(text[i])) seenDigit = true;
    else if (text[i] == '.' && !seenPoint) seenPoint = true;
    else break;
  }
  if (!seenDigit) return 0.0;
  try {
    return TextToDouble(text.substr(start, i - start));
  } catch (const RunError&) {
    return 0.0;
  }
}

std::string PlainNumber(double x) {
  Checked(x);
  if (x == 0) return "0";
  std::string out;
  if (x < 0) out += '-';
  Digits15 d = DigitsOf(std::fabs(x));
  int count = kSignificant;
  while (count > 1 && d.digits[count - 1] == '0') --count;
  const int e = d.exponent;
  if (e >= 15 || e < -5) {
    out += d.digits[0];
    if (count > 1) {
      out += '.';
      out.append(d.digits + 1, count - 1);
    }
    out += 'E';
    out += e < 0 ? '-' : '+';
    const int magnitude = e < 0 ? -e : e;
    if (magnitude < 10) out += '0';
    out += std::to_string(magnitude);
    return out;
  }
  if (e < 0) {
    out += "0.";
    out.append(static_cast<std::size_t>(-e - 1), '0');
    out.append(d.digits, count);
    return out;
  }
  const int whole = e + 1;
  for (int i = 0; i < whole; ++i) out += i < count ? d.digits[i] : '0';
  if (count > whole) {
    out += '.';
    out.append(d.digits + whole, count - whole);
  }
  return out;
}

std::string FormatFixed(double x, int decimals) {
  std::string text;
  AppendFixed(text, x, decimals);
  return text;
}

void AppendFixed(std::string& out, double x, int decimals) {
  const double rounded = RoundHalfEven(x, decimals);
  const double magnitude = std::fabs(rounded);
  // Below 10^13 in units of the last decimal, the rounded value is the double
  // nearest to a whole number of those units, and one multiplication gives
  // that number back exactly: the digits are its digits.
  if (decimals <= 13 && magnitude * kPowers[decimals] < 1e13) {
    const auto units = static_cast<std::uint64_t>(std::llround(magnitude * kPowers[decimals]));
    const auto scale = static_cast<std::uint64_t>(kPowers[decimals]);
    char text[32];  // a sign, 13 digits and a point
    char* end = text;
    if (rounded < 0) *end++ = '-';
    // No leading zero before the point, and a point even when no decimals follow.
    if (units >= scale) end = std::to_chars(end, text + sizeof text, units / scale).ptr;
    *end++ = '.';
    end += decimals;
    std::uint64_t fraction = units % scale;
    for (char* digit = end; digit != end - decimals; fraction /= 10) {
      *--digit = static_cast<char>('0' + fraction % 10);
    }
    out.append(text, static_cast<std::size_t>(end - text));
    return;
  }
  if (rounded < 0) out += '-';
  // Room for the 309 digits of the largest double, the point and the decimals.
  std::string text(static_cast<std::size_t>(decimals) + 320, '\0');
  auto result = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                              std::chars_format::fixed, decimals);
  text.resize(static_cast<std::size_t>(result.ptr - text.data()));
  if (text.rfind("0", 0) == 0 && (text.size() == 1 || text[1] == '.')) text.erase(0, 1);
  if (decimals == 0) text += '.';
  out += text;
}

double Divide(double numerator, double denominator) {
  if (denominator == 0) {
    if (numerator == 0) throw RunError(ErrorNumber::Overflow, "0 / 0");
    throw RunError(ErrorNumber::DivisionByZero, "Division by zero");
  }
  return Checked(numerator / denominator);
}

double SquareRoot(double x) {
  if (x < 0) throw RunError(ErrorNumber::InvalidCall, "Root of a negative number");
  return std::sqrt(Checked(x));
}

double Square(double x) { return Checked(std::pow(x, 2.0)); }

double Checked(double x) {
  if (!std::isfinite(x)) throw RunError(ErrorNumber::Overflow, "Overflow");
  return x;
}

}  // namespace parvenna
