#include "drawing/grab_text.h"

#include <algorithm>

#include "platform/run_error.h"

namespace parvenna::drawing {
namespace {

constexpr char32_t kDegree = 0x00B0;
constexpr char32_t kOemDegree = 0x00F8;

std::u32string Decode(std::string_view text) {
  std::u32string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto c = static_cast<unsigned char>(text[i]);
    std::size_t n = c < 0x80 ? 1 : (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xE ? 3 : (c >> 3) == 0x1E ? 4 : 1;
    if (i + n > text.size()) n = 1;
    char32_t cp = n == 1 ? c : n == 2 ? (c & 0x1F) : n == 3 ? (c & 0x0F) : (c & 0x07);
    for (std::size_t k = 1; k < n; ++k) cp = (cp << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
    out += cp;
    i += n;
  }
  return out;
}

// Byte offset of character position p (from 1); the size when past the end.
std::size_t ByteOffset(std::string_view text, int position) {
  int count = 1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) == 0x80) continue;
    if (count == position) return i;
    ++count;
  }
  return text.size();
}

// Characters p to q (from 1, both included) of a UTF-8 text, clamped.
std::string_view Characters(std::string_view text, int p, int q) {
  if (q < p || q < 1) return {};
  const std::size_t from = ByteOffset(text, std::max(p, 1));
  const std::size_t to = ByteOffset(text, q + 1);
  return text.substr(from, to > from ? to - from : 0);
}

void ReplaceAll(std::u32string& text, const std::u32string& find, char32_t with) {
  if (find.empty()) return;
  for (std::size_t at = text.find(find); at != std::u32string::npos; at = text.find(find, at + 1)) {
    text.replace(at, find.size(), 1, with);
  }
}

char32_t Upper(char32_t c) { return (c >= 'a' && c <= 'z') ? c - 'a' + 'A' : c; }
char32_t Lower(char32_t c) { return (c >= 'A' && c <= 'Z') ? c - 'A' + 'a' : c; }
bool Digit(char32_t c) { return c >= '0' && c <= '9'; }

std::string Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(' ');
  return std::string(text.substr(first, last - first + 1));
}

bool ValidBearing(const Notation& notation, std::string& text) {
  try {
    return IsValidBearing(notation, text);
  } catch (const RunError&) {
    return false;  // an angle too long for its number is no direction
  }
}

void Split(const Notation& notation, std::string_view piece, std::deque<std::string>& values,
           int grabMode) {
  std::string text(piece);
  try {
    SplitGrabbedText(notation, text, values, grabMode);
  } catch (const RunError&) {
    std::string again(piece);
    SplitGrabbedText(notation, again, values, 0);
  }
}

}  // namespace

bool FindBearingInText(const Notation& notation, int& start, int& end, std::string_view text) {
  std::u32string s = Decode(text);
  const std::size_t before = s.size();
  std::u32string upperSymbol, lowerSymbol;
  for (char32_t c : Decode(notation.DegreeSymbolText)) {
    upperSymbol += Upper(c);
    lowerSymbol += Lower(c);
  }
  ReplaceAll(s, upperSymbol, kDegree);
  ReplaceAll(s, lowerSymbol, kDegree);
  ReplaceAll(s, std::u32string(1, kOemDegree), kDegree);
  const int saved = static_cast<int>(before - s.size());
  for (char32_t& c : s) c = Upper(c);

  int state = -1;
  start = 0;
  end = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const char32_t c = s[i];
    const int position = static_cast<int>(i) + 1;
    const bool blank = c == ' ';
    const bool ns = c == 'N' || c == 'S';
    if (notation.BearingMode) {
      const int fallback = ns ? 0 : -1;
      switch (state) {
        case -1:
          if (ns) {
            state = 0;
            start = position;
          }
          break;
        case 0: state = Digit(c) ? 1 : (blank || ns) ? 0 : -1; break;
        case 1: state = c == kDegree ? 2 : (Digit(c) || blank) ? 1 : fallback; break;
        case 2: state = Digit(c) ? 3 : blank ? 2 : fallback; break;
        case 3: state = c == '\'' ? 4 : (Digit(c) || blank) ? 3 : fallback; break;
        case 4: state = Digit(c) ? 5 : blank ? 4 : fallback; break;
        case 5: state = c == '"' ? 6 : (Digit(c) || blank) ? 5 : fallback; break;
        case 6:
          if (c == 'E' || c == 'W') {
            end = position + saved;
            return true;
          }
          state = blank ? 6 : fallback;
          break;
        default: break;
      }
    } else {
      switch (state) {
        case -1:
          if (Digit(c)) {
            state = 1;
            start = position;
          }
          break;
        case 1: state = c == kDegree ? 2 : Digit(c) ? 1 : -1; break;
        case 2: state = Digit(c) ? 3 : blank ? 2 : -1; break;
        case 3: state = c == '\'' ? 4 : (Digit(c) || blank) ? 3 : -1; break;
        case 4: state = Digit(c) ? 5 : blank ? 4 : -1; break;
        case 5:
          if (c == '"') {
            end = position + saved;
            return true;
          }
          state = (Digit(c) || blank) ? 5 : -1;
          break;
        default: break;
      }
    }
  }
  return false;
}

std::deque<std::string> CleanDrawingText(const Notation& notation, std::string_view input,
                                         int grabMode) {
  std::deque<std::string> values;
  std::string text = Trim(input);
  std::replace(text.begin(), text.end(), '=', ' ');
  if (text.size() >= 2 && text.front() == '{' && text.back() == '}') {
    text = text.substr(1, text.size() - 2);
  }
  if (!text.empty() && text.front() == '\\') {
    // One leading paragraph or width code such as \A1; or \W0.8;
    const auto semicolon = text.find(';');
    if (semicolon == 3 || semicolon == 4) text = text.substr(semicolon + 1);
  }
  if (text.find(' ') == std::string::npos) {
    std::string value = text;
    if (grabMode == GrabReversed && ValidBearing(notation, value)) {
      value = ReverseBearing(notation, value);
    }
    values.push_back(value);
    return values;
  }
  int start = 0, end = 0;
  if (!FindBearingInText(notation, start, end, text)) {
    Split(notation, text, values, grabMode);
    return values;
  }
  const std::string_view whole(text);
  const std::string_view head = Characters(whole, 1, start - 1);
  if (!head.empty()) Split(notation, head, values, grabMode);
  std::string bearing = RemoveBlanks(Characters(whole, start, end));
  if (grabMode == GrabReversed) {
    try {
      bearing = ReverseBearing(notation, bearing);
    } catch (const RunError&) {
      // left as it was
    }
  }
  values.push_back(bearing);
  const std::size_t tailFrom = ByteOffset(whole, end + 1);
  if (tailFrom < whole.size()) Split(notation, whole.substr(tailFrom), values, grabMode);
  return values;
}

std::string BlankTextBreaks(std::string_view text) {
  std::string out(text);
  std::replace_if(out.begin(), out.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  return out;
}

std::deque<std::string> GrabbedValues(const Notation& notation, std::string_view picked, int grabMode) {
  return CleanDrawingText(notation, BlankTextBreaks(picked), grabMode);
}

}  // namespace parvenna::drawing
