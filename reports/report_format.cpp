#include "reports/report_format.h"

#include "geometry/numbers.h"
#include "platform/run_error.h"
#include "store/value.h"

namespace parvenna::reports {

std::string ReportNumberFormat(int decimals) {
  return "###,##0." + std::string(static_cast<std::size_t>(decimals < 0 ? 0 : decimals), '0');
}

std::string FormatReportNumber(double value, int decimals) {
  // FormatFixed gives "##########." with the decimals; the picture adds the
  // grouping and the 0 before the point.
  std::string fixed = FormatFixed(value, decimals);
  std::string sign;
  if (!fixed.empty() && fixed[0] == '-') {
    sign = "-";
    fixed.erase(0, 1);
  }
  const std::size_t point = fixed.find('.');
  std::string whole = fixed.substr(0, point);
  const std::string rest = point == std::string::npos ? "" : fixed.substr(point);
  if (whole.empty()) whole = "0";
  std::string grouped;
  grouped.reserve(whole.size() + whole.size() / 3);
  const std::size_t lead = whole.size() % 3;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    if (i != 0 && i % 3 == lead) grouped += ',';
    grouped += whole[i];
  }
  return sign + grouped + rest;
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
  const long count = width - static_cast<long>(store::CharacterCount(text));
  if (count < 0) {
    throw RunError(ErrorNumber::InvalidCall,
                   "\"" + std::string(text) + "\" is wider than " + std::to_string(width));
  }
  std::string out(static_cast<std::size_t>(count), ' ');
  out += text;
  return out;
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
