#include "reports/mapcheck_text.h"

#include <chrono>
#include <cmath>
#include <ctime>

#include "geometry/closure.h"
#include "geometry/numbers.h"
#include "reports/messages.h"
#include "reports/report_format.h"
#include "store/value.h"

namespace parvenna::reports {
namespace {

namespace mc = messages::mapcheck;
using messages::CrLf;

constexpr long long kSecondsInCircle = 360LL * 3600;

std::string SecondsText(long long seconds) {
  return std::to_string(seconds / 3600) + "\u00B0" + std::to_string(seconds % 3600 / 60) + "'" +
         std::to_string(seconds % 60) + "\"";
}

// A number through the reports' picture, and a whole number without its point.
std::string F(double value, int decimals) { return FormatReportNumber(value, decimals); }
std::string Whole(double value) {
  std::string text = FormatReportNumber(value, 0);
  if (!text.empty() && text.back() == '.') text.pop_back();
  return text;
}
std::string Signed(double value, int decimals) {
  std::string text = F(value, decimals);
  return text[0] == '-' ? text : "+" + text;
}

// Lengths are stated at the project's decimals; the closure, its components
// and the coordinates two places further, since they are not rounded.
int Working(const MapcheckHeader& h) { return h.decimals + 2; }

std::string UnitShort(const MapcheckHeader& h) { return h.unitFeet ? mc::FeetShort : mc::MetresShort; }

std::string PadRight(std::string text, std::size_t width) {
  const std::size_t count = store::CharacterCount(text);
  text.append(count < width ? width - count : 1, ' ');
  return text;
}

std::string Right(const std::string& text, int width) {
  std::string out;
  AppendWidened(out, text, width);
  return out;
}

std::string AreaUnit(const char* unit) {
  // The area lines' units begin with a blank: " sq.f.", " Acres".
  return std::string(unit).substr(1);
}

// A finding in lines of at most `width` characters, broken at blanks, the
// lines after the first indented further, so that it stays on the paper.
constexpr std::size_t kLineWidth = 96;
void AddWrapped(std::vector<std::string>& out, const std::string& text) {
  std::string line = "  ";
  bool fresh = true;  // nothing on the line yet but its indent
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = text.find(' ', start);
    if (end == std::string::npos) end = text.size();
    const std::string word = text.substr(start, end - start);
    if (!fresh && store::CharacterCount(line) + 1 + store::CharacterCount(word) > kLineWidth) {
      out.push_back(line);
      line = "    ";
      fresh = true;
    }
    if (!fresh) line += ' ';
    line += word;
    fresh = false;
    start = end + 1;
  }
  out.push_back(line);
}

std::string Verdict(bool pass) { return pass ? mc::Pass : mc::Fail; }

std::string ClosureDirection(const MapcheckHeader& h, const MapcheckParcel& p) {
  return p.closureAzimuth ? DirectionText(h.notation, *p.closureAzimuth) : mc::NotShown;
}

std::vector<std::string> CourseLines(const MapcheckHeader& h, const MapcheckCourse& c) {
  const int d = h.decimals;
  const int w = Working(h);
  std::string first = Right(std::to_string(c.number), 4) + " " +
                      PadRight(c.curve ? mc::CurveWord : mc::LineWord, 7) + PadRight(c.direction, 16) +
                      Right(F(c.length, d), 12) + Right(F(c.north, w), 16) + Right(F(c.east, w), 16);
  if (!c.curve) return {first};
  const CurveFigures& k = c.curveData;
  const std::string indent(13, ' ');
  const std::string word = h.notation.BearingMode ? "bearing " : "azimuth ";
  std::string radius = indent + mc::RadiusWord + F(k.radius, d) + mc::ArcWord + F(k.arc, d) +
                       mc::ChordWord + F(k.chord, d) + mc::ChordBearingWord + word +
                       DirectionText(h.notation, k.chordAzimuth);
  std::string delta = indent + mc::DeltaWord + (k.delta ? AngleText(*k.delta) : mc::NotShown) +
                      mc::TangentWord + (k.tangent ? F(*k.tangent, d) : mc::NotShown) +
                      (k.turn == Turn::Right  ? mc::TurnRight
                       : k.turn == Turn::Left ? mc::TurnLeft
                                              : mc::TurnUnknown);
  const auto direction = [&](const std::optional<double>& az) {
    return az ? DirectionText(h.notation, *az) : std::string(mc::NotShown);
  };
  std::string tangents = indent + mc::TangentInWord + direction(k.tangentIn) + mc::TangentOutWord +
                         direction(k.tangentOut);
  return {first, radius, delta, tangents};
}

// The head of a parcel's section, or of the summary when no parcel is named.
std::vector<std::string> HeadLines(const MapcheckHeader& h, const std::string* parcel) {
  const std::string unit = h.unitFeet ? mc::Feet : mc::Metres;
  const std::string date = mc::DateWord + h.date;
  return {
      parcel ? PadRight(mc::ParcelWord + *parcel, 48) + date : date,
      mc::ProjectWord + h.projectFile,
      mc::DrawingWord + h.drawingFile,
      mc::UnitsWord + unit + mc::NotationWord +
          (h.notation.BearingMode ? mc::QuadrantBearing : mc::AzimuthWord) + mc::DecimalsWord +
          std::to_string(h.decimals),
      mc::TolerancesWord + PlainNumber(h.tolerance) + UnitShort(h) + mc::RatioWord +
          Whole(h.options.ratio),
      mc::BeginningWord + F(h.options.pobNorth, Working(h)) + mc::EastWord +
          F(h.options.pobEast, Working(h)),
  };
}

// The area in the project's unit, then in the two others, on one line.
std::string AreaText(const MapcheckHeader& h, const MapcheckParcel& p) {
  if (!p.areaGood) return mc::AreaNotGood;
  const auto lines = AreaInUnits(p.area, h.unitFeet, h.decimals);
  std::string text;
  for (std::size_t k = 0; k < lines.size(); ++k) {
    if (k > 0) text += " = ";
    text += F(lines[k].value, lines[k].decimals) + lines[k].unit;
  }
  return text;
}

std::vector<std::string> ClosureLines(const MapcheckHeader& h, const MapcheckParcel& p) {
  const int w = Working(h);
  const std::string unit = UnitShort(h);
  std::vector<std::string> out = {
      mc::ClosureHead,
      mc::ErrorNorth + Signed(p.errorNorth, w),
      mc::ErrorEast + Signed(p.errorEast, w),
      mc::ErrorDistance + F(p.closure, w) + mc::RoundedStart + F(p.closureRounded, h.decimals) +
          mc::RoundedEnd,
      mc::ErrorBearing + ClosureDirection(h, p),
      mc::PerimeterLine + F(p.perimeter, h.decimals),
      mc::PrecisionLine + PrecisionText(p),
  };
  out.push_back(mc::AreaLine + AreaText(h, p));
  out.push_back("");
  out.push_back(PadRight(mc::ToleranceVerdict + PlainNumber(h.tolerance) + unit, 32) + ": " +
                Verdict(p.passTolerance) + "   (closure " + F(p.closureRounded, h.decimals) + unit +
                ")");
  out.push_back(PadRight(mc::RatioVerdict + Whole(h.options.ratio), 32) + ": " +
                Verdict(p.passRatio) + "   (" + PrecisionText(p) + ")");
  out.push_back(PadRight(mc::ResultVerdict, 32) + ": " + Verdict(p.Pass()));
  return out;
}

}  // namespace

std::string AngleText(double degrees) {
  long long seconds = std::llround(degrees * 3600);
  return (seconds < 0 ? "-" : "") + SecondsText(seconds < 0 ? -seconds : seconds);
}

std::string DirectionText(const Notation& notation, double azimuth) {
  long long s = std::llround(azimuth * 3600) % kSecondsInCircle;
  if (s < 0) s += kSecondsInCircle;
  if (!notation.BearingMode) return SecondsText(s);
  constexpr long long q = 90LL * 3600;
  if (s <= q) return "N" + SecondsText(s) + "E";
  if (s <= 2 * q) return "S" + SecondsText(2 * q - s) + "E";
  if (s < 3 * q) return "S" + SecondsText(s - 2 * q) + "W";
  return "N" + SecondsText(4 * q - s) + "W";
}

std::string PrecisionText(const MapcheckParcel& parcel) {
  if (!parcel.precision) return mc::PerfectWord;
  return "1:" + Whole(WholePrecision(*parcel.precision));
}

std::string TodayText() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm local{};
  localtime_r(&now, &local);
  char text[16];
  std::strftime(text, sizeof text, "%Y-%m-%d", &local);
  return text;
}

ParcelSection SectionOf(const MapcheckHeader& h, const MapcheckParcel& p) {
  ParcelSection s;
  s.head.push_back(std::string(mc::Title) + " - " + p.name);
  for (std::string& line : HeadLines(h, &p.name)) s.head.push_back(std::move(line));
  if (!p.failure.empty()) {
    s.findings.push_back(mc::FindingsHead);
    AddWrapped(s.findings, p.failure);
    for (const std::string& f : p.findings) AddWrapped(s.findings, f);
    return s;
  }
  s.tableHead = mc::CourseHeadStart + PadRight(h.notation.BearingMode ? mc::BearingHead : mc::AzimuthHead, 16) +
                mc::CourseHeadEnd;
  for (const MapcheckCourse& c : p.courses) s.courses.push_back(CourseLines(h, c));
  s.closure = ClosureLines(h, p);
  s.findings.push_back(mc::FindingsHead);
  if (p.findings.empty()) s.findings.push_back(mc::NoFindings);
  for (const std::string& f : p.findings) AddWrapped(s.findings, f);
  return s;
}

std::vector<std::string> SummaryLines(const MapcheckDocument& document) {
  const MapcheckHeader& h = document.header;
  const bool feet = h.unitFeet;
  std::vector<std::string> out = {mc::SummaryTitle};
  for (std::string& line : HeadLines(h, nullptr)) out.push_back(std::move(line));
  out.push_back("");
  const auto units = AreaInUnits(0, feet, h.decimals);
  out.push_back(mc::SummaryHead + Right("Area " + AreaUnit(units[0].unit), 15) +
                Right(AreaUnit(units[1].unit), 12) + mc::SummaryClosureHead);
  double total = 0;
  int passed = 0;
  for (const MapcheckParcel& p : document.parcels) {
    std::string line = " " + PadRight(p.name, 20);
    if (!p.failure.empty()) {
      out.push_back(line + Right(std::to_string(p.courses.size()), 4) + "   " + mc::NoCoursesShort +
                    Right(mc::Fail, 49));
      continue;
    }
    line += Right(std::to_string(p.courses.size()), 4) + Right(F(p.perimeter, h.decimals), 12);
    if (p.areaGood) {
      const auto area = AreaInUnits(p.area, feet, h.decimals);
      line += Right(F(area[0].value, area[0].decimals), 15) + Right(F(area[1].value, 4), 12);
      total += p.area;
    } else {
      line += Right(mc::NotShown, 15) + Right(mc::NotShown, 12);
    }
    line += Right(F(p.closureRounded, h.decimals), 9) + Right(PrecisionText(p), 12) +
            Right(Verdict(p.Pass()), 8);
    out.push_back(line);
    if (p.Pass()) ++passed;
  }
  const auto area = AreaInUnits(total, feet, h.decimals);
  const std::size_t count = document.parcels.size();
  out.push_back("");
  out.push_back(" " + std::to_string(count) + (count == 1 ? mc::OneParcelWord : mc::ParcelsWord) +
                mc::TotalAreaWord + F(area[0].value, area[0].decimals) + area[0].unit + " = " +
                F(area[1].value, 4) + area[1].unit + ", " + std::to_string(passed) +
                mc::PassCountWord + std::to_string(count - static_cast<std::size_t>(passed)) +
                mc::FailCountWord);
  return out;
}

std::string MapcheckText(const MapcheckDocument& document) {
  std::string out;
  const auto add = [&out](const std::string& line) {
    out += line;
    out += CrLf;
  };
  for (const std::string& line : SummaryLines(document)) add(line);
  for (const MapcheckParcel& p : document.parcels) {
    const ParcelSection s = SectionOf(document.header, p);
    add("");
    add(std::string(kLineWidth, '='));
    for (const std::string& line : s.head) add(line);
    if (!s.tableHead.empty()) {
      add("");
      add(s.tableHead);
      for (const auto& course : s.courses) {
        for (const std::string& line : course) add(line);
      }
    }
    if (!s.closure.empty()) {
      add("");
      for (const std::string& line : s.closure) add(line);
    }
    add("");
    for (const std::string& line : s.findings) add(line);
  }
  return out;
}

namespace {

void Row(std::string& out, std::initializer_list<std::string> fields) {
  bool first = true;
  for (const std::string& field : fields) {
    if (!first) out += ',';
    first = false;
    AppendCsvField(out, field);
  }
  out += CrLf;
}

std::string Plain(double value) { return PlainNumber(value); }
std::string Plain(const std::optional<double>& value) { return value ? PlainNumber(*value) : ""; }

}  // namespace

std::string ParcelsCsv(const MapcheckDocument& document) {
  const MapcheckHeader& h = document.header;
  const auto units = AreaInUnits(0, h.unitFeet, h.decimals);
  std::string out = messages::Utf8Bom;
  Row(out, {"Parcel", "Courses", "Perimeter", "Area " + AreaUnit(units[0].unit),
            AreaUnit(units[1].unit), "Error north", "Error east", "Closure", "Closure rounded",
            "Direction", "Precision", "Closure tolerance", "Precision tolerance", "Result"});
  for (const MapcheckParcel& p : document.parcels) {
    if (!p.failure.empty()) {
      Row(out, {p.name, "0", "", "", "", "", "", "", "", "", "", mc::Fail, mc::Fail, mc::Fail});
      continue;
    }
    const auto area = AreaInUnits(p.area, h.unitFeet, h.decimals);
    Row(out, {p.name, std::to_string(p.courses.size()), Plain(p.perimeter),
              p.areaGood ? Plain(area[0].value) : "", p.areaGood ? Plain(area[1].value) : "",
              Plain(p.errorNorth), Plain(p.errorEast), Plain(p.closure), Plain(p.closureRounded),
              ClosureDirection(h, p), PrecisionText(p), Verdict(p.passTolerance),
              Verdict(p.passRatio), Verdict(p.Pass())});
  }
  return out;
}

std::string CoursesCsv(const MapcheckDocument& document) {
  const MapcheckHeader& h = document.header;
  std::string out = messages::Utf8Bom;
  Row(out, {"Parcel", "Course", "Kind", h.notation.BearingMode ? mc::BearingHead : mc::AzimuthHead, "Distance",
            "Radius", "Arc", "Chord", "Delta", "Tangent", "Curve", "Tangent in", "Tangent out",
            "Northing", "Easting"});
  for (const MapcheckParcel& p : document.parcels) {
    for (const MapcheckCourse& c : p.courses) {
      const CurveFigures& k = c.curveData;
      const auto direction = [&](const std::optional<double>& az) {
        return az ? DirectionText(h.notation, *az) : std::string();
      };
      if (!c.curve) {
        Row(out, {p.name, std::to_string(c.number), mc::LineWord, c.direction, Plain(c.length), "",
                  "", "", "", "", "", "", "", Plain(c.north), Plain(c.east)});
        continue;
      }
      Row(out, {p.name, std::to_string(c.number), mc::CurveWord, c.direction, Plain(c.length),
                Plain(k.radius), Plain(k.arc), Plain(k.chord), k.delta ? AngleText(*k.delta) : "",
                Plain(k.tangent),
                k.turn == Turn::Right ? "right" : k.turn == Turn::Left ? "left" : "",
                direction(k.tangentIn), direction(k.tangentOut), Plain(c.north), Plain(c.east)});
    }
  }
  return out;
}

}  // namespace parvenna::reports
