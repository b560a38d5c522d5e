#include "geometry/bearing_text.h"

#include <cmath>
#include <cstdint>

#include "geometry/messages.h"
#include "geometry/numbers.h"

namespace parvenna {
namespace {

// U+00B0, the degree mark, and U+00F8, what the OEM degree mark reads as.
constexpr char kDegreeLead = '\xC2', kDegreeTail = '\xB0';
constexpr std::string_view kOemDegree = "\u00F8";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

char UpperAscii(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

std::string UpperAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = UpperAscii(c);
  return out;
}

std::string LowerAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return out;
}

void ReplaceAll(std::string& text, std::string_view find, std::string_view with) {
  if (find.empty()) return;
  for (std::size_t at = text.find(find); at != std::string::npos;
       at = text.find(find, at + with.size())) {
    text.replace(at, find.size(), with);
  }
}

// Walks a UTF-8 text from its end, one character (code point) at a time.
// A character is a digit, a mark, or "other".
enum class Glyph { Digit, Seconds, Minutes, Degrees, Other };

struct ReverseReader {
  std::string_view text;
  std::size_t end;  // one past the character still to read

  explicit ReverseReader(std::string_view t) : text(t), end(t.size()) {}
  bool Done() const { return end == 0; }

  // Reads the character before `end`, moving `end` to its first byte.
  Glyph Next(char& digit) {
    const char c = text[end - 1];
    if (static_cast<unsigned char>(c) < 0x80) {
      --end;
      digit = c;
      if (IsDigit(c)) return Glyph::Digit;
      if (c == '"') return Glyph::Seconds;
      if (c == '\'') return Glyph::Minutes;
      return Glyph::Other;
    }
    std::size_t start = end - 1;
    while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80) --start;
    const bool degree = end - start == 2 && text[start] == kDegreeLead && text[start + 1] == kDegreeTail;
    end = start;
    return degree ? Glyph::Degrees : Glyph::Other;
  }
};

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (char c : text) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return count;
}

// The first and last bytes stand for the first and last characters whenever
// they are the ASCII letters that a quadrant needs.
std::string QuadrantPair(std::string_view text) {
  return {text.front(), text.back()};
}

// The bytes of the first and of the last character (code point) of a text.
std::size_t FirstCharacterSize(std::string_view text) {
  std::size_t size = 1;
  while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) ++size;
  return size;
}

std::size_t LastCharacterStart(std::string_view text) {
  std::size_t start = text.size() - 1;
  while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80) --start;
  return start;
}

// The characters between the first and the last; fewer than two characters
// is an invalid call.
std::string_view Between(std::string_view text) {
  if (CharacterCount(text) < 2) {
    throw RunError(ErrorNumber::InvalidCall, "A quadrant bearing needs two letters");
  }
  const std::size_t first = FirstCharacterSize(text);
  return text.substr(first, LastCharacterStart(text) - first);
}

double DegreesBetweenLetters(const Notation& notation, std::string_view blankFree) {
  return DmsToDegrees(notation, Between(blankFree));
}

std::string Join(const DmsTriple& dms) {
  std::string out = dms[DmsDegrees];
  out += DegreeMark;
  out += dms[DmsMinutes];
  out += '\'';
  out += dms[DmsSeconds];
  out += '"';
  return out;
}

// Degrees, minutes and seconds with marks, from three whole numbers.
std::string DmsText(long d, long m, const std::string& s) {
  std::string out = std::to_string(d);
  out += DegreeMark;
  out += std::to_string(m);
  out += '\'';
  out += s;
  out += '"';
  return out;
}

}  // namespace

std::string RemoveBlanks(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    if (c != ' ') out += c;
  }
  return out;
}

bool SplitDms(const Notation& notation, std::string_view text, DmsTriple& dms) {
  dms = {};
  std::string copy(text);
  // Most texts carry the mark itself; the replacements are skipped when the
  // text cannot hold the written form (this runs twice per course a keystroke).
  const std::string& symbol = notation.DegreeSymbolText;
  if (!symbol.empty() &&
      copy.find_first_of(std::string{UpperAscii(symbol[0]), LowerAscii(symbol.substr(0, 1))[0]}) !=
          std::string::npos) {
    ReplaceAll(copy, UpperAscii(symbol), DegreeMark);
    ReplaceAll(copy, LowerAscii(symbol), DegreeMark);
  }
  if (copy.find(kOemDegree) != std::string::npos) ReplaceAll(copy, kOemDegree, DegreeMark);

  ReverseReader reader(copy);
  int current = DmsDegrees;
  bool last = true;
  while (!reader.Done()) {
    char digit = 0;
    const Glyph glyph = reader.Next(digit);
    if (glyph == Glyph::Digit) {
      if (last) return false;  // every angle text ends in a mark
      dms[current].insert(dms[current].begin(), digit);
    } else if (last) {
      if (glyph == Glyph::Seconds) current = DmsSeconds;
      else if (glyph == Glyph::Minutes) current = DmsMinutes;
      else if (glyph == Glyph::Degrees) current = DmsDegrees;
      else return false;
    } else {
      switch (glyph) {
        case Glyph::Minutes:
          if (current != DmsSeconds) return false;
          current = DmsMinutes;
          break;
        case Glyph::Degrees:
          if (current == DmsDegrees) return false;
          current = DmsDegrees;
          break;
        default:  // seconds stand only at the end; anything else is refused
          return false;
      }
    }
    last = false;
  }
  return true;
}

bool IsValidBearing(const Notation& notation, std::string& text) {
  DmsTriple dms;
  int degreeLimit = 0;
  if (notation.BearingMode) {
    text = RemoveBlanks(text);
    if (text.size() < 3) return false;
    const char first = UpperAscii(text.front());
    const char last = UpperAscii(text.back());
    if ((first != 'N' && first != 'S') || (last != 'E' && last != 'W')) return false;
    if (!SplitDms(notation, UpperAscii(Between(text)), dms)) return false;
    degreeLimit = 91;  // N90°59'59"E passes
  } else {
    if (CharacterCount(text) < 3) return false;  // blanks count here: "7 °" passes, "7°" not
    if (!SplitDms(notation, RemoveBlanks(text), dms)) return false;
    degreeLimit = 360;
  }
  // Each field is read before any is judged, so a run too long for its
  // integer is an overflow wherever it stands.
  const std::int32_t seconds = ReadLong(dms[DmsSeconds]);
  const std::int32_t minutes = ReadLong(dms[DmsMinutes]);
  const std::int32_t degrees = ReadLong(dms[DmsDegrees]);
  return seconds < 60 && minutes < 60 && degrees < degreeLimit;
}

double DmsToDegrees(const Notation& notation, std::string_view text) {
  DmsTriple dms;
  SplitDms(notation, RemoveBlanks(text), dms);  // a refusal computes with the fragments
  return ReadNumber(dms[DmsMinutes]) / 60 + ReadNumber(dms[DmsDegrees]) +
         ReadNumber(dms[DmsSeconds]) / 3600;
}

double BearingToAngle(const Notation& notation, std::string_view text) {
  const std::string plain = RemoveBlanks(text);
  if (!notation.BearingMode) return 450 - DmsToDegrees(notation, plain);
  const double d = DegreesBetweenLetters(notation, plain);
  const std::string pair = QuadrantPair(plain);
  if (pair == "NE") return 90 - d;
  if (pair == "NW") return d + 90;
  if (pair == "SE") return d + 270;
  if (pair == "SW") return 270 - d;
  return 0;
}

std::string BearingFromPoints(const Notation& notation, double x1, double y1, double x2,
                              double y2) {
  const char first = y2 <= y1 ? 'S' : 'N';
  const char last = x2 <= x1 ? 'W' : 'E';
  double q = 0;
  try {
    q = std::fabs(Divide(x2 - x1, y2 - y1));
  } catch (const RunError&) {
    // No northing difference: the fixed text, whichever way the points lie.
    return notation.BearingMode ? messages::FixedEastQuadrant : messages::FixedEastAzimuth;
  }
  double a = std::atan(q) * 180 / Pi;
  if (!notation.BearingMode) {
    if (first == 'N' && last == 'W') a = 360 - a;
    else if (first == 'S' && last == 'W') a = a + 180;
    else if (first == 'S' && last == 'E') a = 180 - a;
  }
  const int d = WholeOf(a);
  a = (a - d) * 60;
  const int m = WholeOf(a);
  a = (a - m) * 60;
  const int s = WholeOf(a);  // seconds are cut off here, not rounded
  std::string body = DmsText(d, m, std::to_string(s));
  if (!notation.BearingMode) return body;
  return first + body + last;
}

std::string FormatDms(double degrees) {
  double a = degrees;
  const int d = WholeOf(a);
  a = (a - d) * 60;
  const int m = WholeOf(a);
  a = (a - m) * 60;
  // Rounded with no carry: 12°59'60" can come out, and stands.
  const double s = RoundHalfEven(a, 0);
  return DmsText(d % 360, m, PlainNumber(s));
}

std::string PerpendicularBearing(const Notation& notation, std::string_view text) {
  const std::string plain = RemoveBlanks(text);
  if (!notation.BearingMode) return FormatDms(DmsToDegrees(notation, plain) + 270);
  const double d = DegreesBetweenLetters(notation, plain);
  const std::string pair = QuadrantPair(plain);
  const std::string t = FormatDms(90 - d);
  if (pair == "NE") return "N" + t + "W";
  if (pair == "NW") return "S" + t + "W";
  if (pair == "SW") return "S" + t + "E";
  if (pair == "SE") return "N" + t + "E";
  return "";
}

std::string OppositeLetter(std::string_view letter) {
  if (letter.size() != 1) return "";
  switch (UpperAscii(letter[0])) {
    case 'N': return "S";
    case 'S': return "N";
    case 'E': return "W";
    case 'W': return "E";
    default: return "";
  }
}

std::string ReverseBearing(const Notation& notation, std::string_view text) {
  if (text.empty()) return "";
  if (notation.BearingMode) {
    // Only the letters turn; the angle stays as typed. A lone letter turns alone.
    if (CharacterCount(text) == 1) return OppositeLetter(text);
    return OppositeLetter(text.substr(0, FirstCharacterSize(text))) + std::string(Between(text)) +
           OppositeLetter(text.substr(LastCharacterStart(text)));
  }
  DmsTriple dms;
  SplitDms(notation, text, dms);
  const long degrees = (static_cast<long>(ReadLong(dms[DmsDegrees])) + 180) % 360;
  dms[DmsDegrees] = std::to_string(degrees);
  return Join(dms);
}

double CalDegree(std::string& text) {
  text = RemoveBlanks(text);
  DmsTriple dms;
  int current = DmsSeconds;
  ReverseReader reader(text);
  while (!reader.Done()) {
    char digit = 0;
    switch (reader.Next(digit)) {
      case Glyph::Digit: dms[current].insert(dms[current].begin(), digit); break;
      case Glyph::Degrees: current = DmsDegrees; break;
      case Glyph::Minutes: current = DmsMinutes; break;
      case Glyph::Seconds: current = DmsSeconds; break;
      case Glyph::Other: break;  // the quadrant letters, and anything else
    }
  }
  // Each field read as it stands: an empty one is no number.
  return TextToDouble(dms[DmsMinutes]) / 60 + TextToDouble(dms[DmsDegrees]) +
         TextToDouble(dms[DmsSeconds]) / 3600;
}

double AngleFromEast(std::string_view text) {
  if (text.empty()) return 0;
  const char first = UpperAscii(text.front());
  const char last = UpperAscii(text.back());
  if ((first != 'N' && first != 'S') || (last != 'E' && last != 'W')) return 0;
  std::string copy(text);
  const double d = CalDegree(copy);
  if (first == 'N') return last == 'E' ? 90 - d : d + 90;
  return last == 'E' ? d + 270 : 270 - d;
}

std::string NumberFromText(std::string_view text) {
  std::string out;
  for (char c : text) {
    if (IsDigit(c) || c == '.') out += c;
  }
  if (out.empty() || out == ".") return "0";
  return out;
}

void SplitGrabbedText(const Notation& notation, std::string& text, std::deque<std::string>& queue,
                      int grabMode) {
  std::string token;
  auto flush = [&] {
    if (token.empty()) return;
    if (grabMode == GrabReversed && IsValidBearing(notation, token)) {
      token = ReverseBearing(notation, token);
    }
    queue.push_back(token);
    token.clear();
  };
  for (char c : text) {
    if (c == ' ') flush();
    else token += c;
  }
  flush();
  text.clear();
}

}  // namespace parvenna
