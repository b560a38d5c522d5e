#include "reports/report_format.h"

#include "geometry/numbers.h"
#include "platform/run_error.h"
#include "store/value.h"

namespace parvenna::reports {

std::string ReportNumberFormat(int decimals) {
  return "###,##0." + std::string(static_cast<std::size_t>(decimals < 0 ? 0 : decimals), '0');
}

std::string FormatReportNumber(double value, int decimals) {
  std::string text;
  AppendReportNumber(text, value, decimals);
  return text;
}

void AppendReportNumber(std::string& out, double value, int decimals) {
  // FormatFixed gives "##########." with the decimals; the picture adds the
  // 0 before the point and the grouping.
  const std::size_t start = out.size();
  AppendFixed(out, value, decimals);
  const std::size_t first = out[start] == '-' ? start + 1 : start;
  const std::size_t point = out.find('.', first);
  if (point == first) {
    out.insert(first, 1, '0');
    return;
  }
  for (std::size_t comma = point; comma > first + 3;) {
    comma -= 3;
    out.insert(comma, 1, ',');
  }
}

std::string FormatReportText(std::string_view text, int decimals) {
  double value = 0;
  try {
    value = TextToDouble(text);
  } catch (const RunError&) {
    return std::string(text);
  }
  return FormatReportNumber(value, decimals);
}

std::string PadLeft(std::string_view text, int width) {
  std::string out;
  AppendPadded(out, text, width);
  return out;
}

void AppendPadded(std::string& out, std::string_view text, int width) {
  const long count = width - static_cast<long>(store::CharacterCount(text));
  if (count < 0) {
    throw RunError(ErrorNumber::InvalidCall,
                   "\"" + std::string(text) + "\" is wider than " + std::to_string(width));
  }
  out.append(static_cast<std::size_t>(count), ' ');
  out += text;
}

void AppendWidened(std::string& out, std::string_view text, int width) {
  const long count = width - static_cast<long>(store::CharacterCount(text));
  out.append(static_cast<std::size_t>(count > 0 ? count : 1), ' ');
  out += text;
}

bool NeedsQuotes(std::string_view field) {
  return field.find_first_of(",\"") != std::string_view::npos;
}

void AppendQuoted(std::string& out, std::string_view field) {
  out += '"';
  for (char c : field) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

void AppendCsvField(std::string& out, std::string_view field) {
  if (NeedsQuotes(field)) AppendQuoted(out, field);
  else out += field;
}

std::string LeftChars(std::string_view text, std::size_t count) {
  std::size_t chars = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
      if (chars == count) return std::string(text.substr(0, i));
      ++chars;
    }
  }
  return std::string(text);
}

}  // namespace parvenna::reports
