// Feeds arbitrary text to every routine that reads or writes direction text
// and numbers. A RunError is the routines' own way to refuse; any other
// exception, a crash or a sanitizer report is a finding.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>

#include "geometry/bearing_text.h"
#include "geometry/numbers.h"
#include "platform/run_error.h"

namespace {

using namespace parvenna;

template <class Call>
void Try(Call&& call) {
  try {
    call();
  } catch (const RunError&) {
  }
}

// A fixed picture must give a sign, digits, one point and exactly n decimals.
void CheckPicture(const std::string& text, int decimals) {
  std::size_t i = text.empty() || text[0] != '-' ? 0 : 1;
  while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i;
  if (i == text.size() || text[i] != '.') std::abort();
  if (text.size() - i - 1 != static_cast<std::size_t>(decimals)) std::abort();
  for (++i; i < text.size(); ++i) {
    if (text[i] < '0' || text[i] > '9') std::abort();
  }
}

void Directions(const Notation& notation, const std::string& text) {
  DmsTriple dms;
  Try([&] { SplitDms(notation, text, dms); });
  Try([&] {
    std::string copy = text;
    IsValidBearing(notation, copy);
  });
  Try([&] { DmsToDegrees(notation, text); });
  Try([&] { BearingToAngle(notation, text); });
  Try([&] { FormatDms(DmsToDegrees(notation, text)); });
  Try([&] { PerpendicularBearing(notation, text); });
  Try([&] { ReverseBearing(notation, ReverseBearing(notation, text)); });
  Try([&] {
    std::string grabbed = text;
    std::deque<std::string> queue;
    SplitGrabbedText(notation, grabbed, queue, GrabReversed);
    if (!grabbed.empty()) std::abort();  // the text is used up
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  // The first byte chooses the number of places (0 to 255) for the rounding routines;
  // the degree symbol text is the part of the input before the first NUL.
  const int places = data[0];
  std::string_view rest(reinterpret_cast<const char*>(data + 1), size - 1);
  const std::size_t cut = rest.find('\0');
  const std::string degreeText(cut == std::string_view::npos ? std::string_view("%%D")
                                                             : rest.substr(0, cut));
  const std::string text(cut == std::string_view::npos ? rest : rest.substr(cut + 1));

  Directions(Notation{true, degreeText}, text);
  Directions(Notation{false, degreeText}, text);

  Try([&] { OppositeLetter(text); });
  Try([&] {
    std::string copy = text;
    CalDegree(copy);
  });
  Try([&] { AngleFromEast(text); });
  const std::string cleaned = NumberFromText(text);
  if (cleaned.empty()) std::abort();

  Try([&] { TextToDouble(text); });
  Try([&] { ReadNumber(text); });
  Try([&] { ReadNumber(cleaned); });
  const double value = Val(text);
  Try([&] { PlainNumber(value); });
  Try([&] { CheckPicture(FormatFixed(value, places), places); });
  Try([&] { RoundHalfEven(value, places); });
  Try([&] {
    const double parsed = TextToDouble(text);
    const std::string plain = PlainNumber(parsed);
    // 15 significant digits read back lie within a part in 1e14 of the value
    const double back = TextToDouble(plain);
    if (std::abs(back - parsed) > std::abs(parsed) * 1e-14) std::abort();
    CheckPicture(FormatFixed(parsed, places), places);
    RoundHalfEven(parsed, places);
  });
  if (size >= 9) {
    double raw;
    std::memcpy(&raw, data + size - 8, sizeof raw);
    Try([&] { PlainNumber(raw); });
    Try([&] { CheckPicture(FormatFixed(raw, places), places); });
    Try([&] { RoundHalfEven(raw, places); });
    Try([&] { FormatDms(raw); });
    Try([&] { BearingFromPoints(Notation{}, raw, 0, value, 1); });
  }
  return 0;
}
