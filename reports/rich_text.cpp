#include "reports/rich_text.h"

#include <cstdint>

namespace parvenna::reports {
namespace {

// The next code point of a UTF-8 text; a stray byte stands for itself.
char32_t NextCodePoint(std::string_view text, std::size_t& i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
  const unsigned char lead = byte(i);
  int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  if (i + static_cast<std::size_t>(extra) >= text.size()) extra = 0;  // cut short
  char32_t cp = extra == 0 ? lead : lead & (0x3F >> extra);
  for (int k = 1; k <= extra; ++k) {
    const unsigned char next = byte(i + static_cast<std::size_t>(k));
    if ((next & 0xC0) != 0x80) {
      extra = 0;
      cp = lead;
      break;
    }
    cp = (cp << 6) | (next & 0x3F);
  }
  i += 1 + static_cast<std::size_t>(extra);
  return cp;
}

void AppendUnicode(std::string& out, char32_t cp) {
  // \uN takes a signed 16-bit number; beyond the first plane a surrogate pair.
  auto unit = [&](std::uint32_t u) {
    out += "\\u" + std::to_string(static_cast<std::int16_t>(static_cast<std::uint16_t>(u))) + "?";
  };
  if (cp > 0xFFFF) {
    const std::uint32_t v = static_cast<std::uint32_t>(cp) - 0x10000;
    unit(0xD800 + (v >> 10));
    unit(0xDC00 + (v & 0x3FF));
  } else {
    unit(static_cast<std::uint32_t>(cp));
  }
}

}  // namespace

std::string RichTextOf(std::string_view text) {
  std::string out =
      "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1"
      "{\\fonttbl{\\f0\\fmodern\\fprq1\\fcharset0 Courier New;}}\r\n"
      "\\viewkind4\\pard\\plain\\f0\\fs20 ";
  std::size_t i = 0;
  while (i < text.size()) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
      out += "\\par\r\n";
      i += 2;
      continue;
    }
    const char32_t cp = NextCodePoint(text, i);
    if (cp == '\n' || cp == '\r') out += "\\par\r\n";
    else if (cp == '\\' || cp == '{' || cp == '}') {
      out += '\\';
      out += static_cast<char>(cp);
    } else if (cp == '\t') out += "\\tab ";
    else if (cp < 0x80) out += static_cast<char>(cp);
    else AppendUnicode(out, cp);
  }
  out += "\r\n}\r\n";
  return out;
}

}  // namespace parvenna::reports
