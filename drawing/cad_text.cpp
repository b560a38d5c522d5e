#include "drawing/cad_text.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace parvenna::drawing {
namespace {

void AppendUtf8(std::string& out, unsigned long cp) {
  if (cp == 0 || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) cp = 0xFFFD;
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool IsHex(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }

// Code points 0x80-0x9F of Windows-1252; the rest of the page is Latin-1.
constexpr std::array<unsigned short, 32> kCp1252High = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

bool ValidUtf8(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const auto c = static_cast<unsigned char>(text[i]);
    std::size_t extra = 0;
    if (c < 0x80) extra = 0;
    else if (c >= 0xC2 && c <= 0xDF) extra = 1;
    else if ((c & 0xF0) == 0xE0) extra = 2;
    else if (c >= 0xF0 && c <= 0xF4) extra = 3;
    else return false;
    if (i + extra >= text.size()) return false;
    for (std::size_t k = 1; k <= extra; ++k) {
      if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) return false;
    }
    i += extra + 1;
  }
  return true;
}

unsigned long HexValue(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned long>(c - '0');
  return static_cast<unsigned long>(Lower(c) - 'a' + 10);
}

}  // namespace

std::string EnsureUtf8(std::string_view text) {
  if (ValidUtf8(text)) return std::string(text);
  std::string out;
  out.reserve(text.size() + 8);
  for (char ch : text) {
    const auto c = static_cast<unsigned char>(ch);
    if (c < 0x80) out += ch;
    else if (c < 0xA0) AppendUtf8(out, kCp1252High[c - 0x80]);
    else AppendUtf8(out, c);
  }
  return out;
}

namespace {

// Appends the character of a percent code at raw[i] ("%%d" and the like) and
// moves i past it; false when raw[i] starts none.
bool PercentCode(std::string_view raw, std::size_t& i, std::string& out) {
  const std::size_t n = raw.size();
  if (raw[i] != '%' || i + 2 >= n || raw[i + 1] != '%') return false;
  const char code = Lower(raw[i + 2]);
  if (code == 'd') out += "\u00B0";
  else if (code == 'p') out += "\u00B1";
  else if (code == 'c') out += "\u2205";
  else if (code == '%') out += '%';
  else if (code == 'u' || code == 'o' || code == 'k') {}
  else if (std::isdigit(static_cast<unsigned char>(code))) {
    std::size_t j = i + 2;
    unsigned long value = 0;
    while (j < n && j < i + 5 && std::isdigit(static_cast<unsigned char>(raw[j]))) {
      value = value * 10 + static_cast<unsigned long>(raw[j] - '0');
      ++j;
    }
    AppendUtf8(out, value);
    i = j;
    return true;
  } else {
    return false;
  }
  i += 3;
  return true;
}

// \U+XXXX at raw[i]: the character; false when it is no such code.
bool UnicodeCode(std::string_view raw, std::size_t& i, std::string& out) {
  const std::size_t n = raw.size();
  if (raw[i] != '\\' || i + 6 >= n || raw[i + 1] != 'U' || raw[i + 2] != '+') return false;
  unsigned long value = 0;
  for (std::size_t j = i + 3; j < i + 7; ++j) {
    if (!IsHex(raw[j])) return false;
    value = value * 16 + HexValue(raw[j]);
  }
  AppendUtf8(out, value);
  i += 7;
  return true;
}

// The MTEXT code at raw[i], a backslash, brace or caret; false when raw[i]
// starts none, and the character then stands for itself.
bool MTextCode(std::string_view raw, std::size_t& i, std::string& out) {
  const std::size_t n = raw.size();
  const char c = raw[i];
  if (c == '^' && i + 1 < n && (raw[i + 1] == 'I' || raw[i + 1] == 'J')) {
    out += raw[i + 1] == 'J' ? '\n' : ' ';
    i += 2;
    return true;
  }
  if (c == '{' || c == '}') {
    ++i;
    return true;
  }
  if (c != '\\' || i + 1 >= n) return false;
  const char code = raw[i + 1];
  switch (code) {
    case 'P': case 'X': out += '\n'; i += 2; return true;
    case '~': out += ' '; i += 2; return true;
    case '\\': case '{': case '}': out += code; i += 2; return true;
    case 'L': case 'l': case 'O': case 'o': case 'K': case 'k': case 'N': i += 2; return true;
    case 'M':
      // \M+nXXXX: a character of a multibyte code page; shown as a placeholder.
      if (i + 7 < n && raw[i + 2] == '+') {
        out += '?';
        i += 8;
        return true;
      }
      return false;
    case 'S': {
      // \Snum^den; or \Snum/den; or \Snum#den; stacks read as num/den.
      const auto end = raw.find(';', i + 2);
      if (end == std::string_view::npos) return false;
      for (std::size_t j = i + 2; j < end; ++j) {
        const char s = raw[j];
        out += (s == '^' || s == '#') ? '/' : s;
      }
      i = end + 1;
      return true;
    }
    case 'A': case 'C': case 'c': case 'F': case 'f': case 'H': case 'h': case 'Q': case 'q':
    case 'T': case 't': case 'W': case 'w': case 'p': {
      const auto end = raw.find(';', i + 2);
      if (end == std::string_view::npos) return false;
      i = end + 1;
      return true;
    }
    default:
      return false;
  }
}

std::string Decode(std::string_view raw, TextCodes codes, bool percent) {
  if (codes == TextCodes::Literal) return std::string(raw);
  std::string out;
  out.reserve(raw.size());
  for (std::size_t i = 0; i < raw.size();) {
    if (percent && PercentCode(raw, i, out)) continue;
    if (UnicodeCode(raw, i, out)) continue;
    if (codes == TextCodes::MText && MTextCode(raw, i, out)) continue;
    out += raw[i++];
  }
  return out;
}

}  // namespace

std::string ShownTextOf(std::string_view raw, TextCodes codes) { return Decode(raw, codes, true); }

std::string PickTextOf(std::string_view raw, TextCodes codes) { return Decode(raw, codes, false); }

TextMeasure MeasureText(std::string_view shown) {
  TextMeasure m;
  std::size_t current = 0;
  for (char c : shown) {
    if (c == '\n') {
      ++m.lines;
      m.longest = std::max(m.longest, current);
      current = 0;
    } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
      ++current;
    }
  }
  m.longest = std::max(m.longest, current);
  return m;
}

}  // namespace parvenna::drawing
