#include "reports/text_reports.h"

#include <cmath>

#include "geometry/bearing_text.h"
#include "geometry/closure.h"
#include "geometry/numbers.h"
#include "reports/messages.h"
#include "reports/report_format.h"
#include "reports/report_source.h"

namespace parvenna::reports {
namespace {

using namespace messages;

const std::string kBlanks25(25, ' ');

// The misclosure point: where the walk ends.
const Point& EndPoint(const ReportWork& work, int count) {
  if (count < 0 || count > CourseLimit) {
    throw RunError(ErrorNumber::SubscriptOutOfRange, "Subscript out of range");
  }
  return work.coords[static_cast<std::size_t>(count)];
}

double ClosureOf(const Point& end, int decimals) {
  return RoundHalfEven(SquareRoot(Checked(Square(end.x) + Square(end.y))), decimals);
}

std::optional<double> SavedClosure(const store::Value& value) {
  if (value.IsNull()) return std::nullopt;
  try {
    return value.AsDouble();
  } catch (const RunError&) {
    return std::nullopt;
  }
}

bool ParcelIdOf(const store::Value& value, long& id) {
  if (value.IsNull()) return false;
  try {
    id = value.AsLong();
    return true;
  } catch (const RunError&) {
    return false;
  }
}

std::string AreaText(double area, const ReportSettings& settings) {
  const auto lines = AreaInUnits(area, settings.UnitFeet, settings.Decimal);
  std::string text;
  for (std::size_t k = 0; k < lines.size(); ++k) {
    if (k > 0) text += kBlanks25 + "= ";
    text += PlainNumber(lines[k].value);
    text += lines[k].unit;
    text += CrLf;
  }
  return text;
}

}  // namespace

void LotBody(const ReportSettings& settings, ReportWork& work, ReportStreams& out,
             const std::string& name, int count) {
  const int d = settings.Decimal;
  double area = 0;
  ReportCoords(settings.notation, work.rows, count, work.coords, work.ReportTotalDistance);
  ReportArea(work.rows, count, work.coords, area, d);
  const Point end = EndPoint(work, count);
  const double closure = ClosureOf(end, d);
  const std::string closureBearing = BearingFromPoints(settings.notation, end.x, end.y, 0, 0);

  // From here on a failing statement is skipped and the next one runs.
  const double total = work.ReportTotalDistance;
  double ratio = 0;
  double p = 0;
  std::string precision;
  ResumeNext([&] { ratio = total == 0 ? 1 : Divide(closure, total); });
  ResumeNext([&] { p = PrecisionRatio(ratio); });
  ResumeNext([&] {
    precision = p == -1 ? std::string(Perfect) : RatioPrefix + PlainNumber(RoundHalfEven(p, 0));
  });
  const std::string unit = settings.UnitFeet ? FeetUnit : MetreUnit;
  const std::string& label = settings.DirectionLabel;
  std::string& text = out.text;
  std::string& csv = out.csv;

  text += DrawingLine + settings.DrawingFile + CrLf + CrLf;
  text += LotLine + name + CrLf + CrLf;
  text += StartLine + std::string(CrLf);
  text += LegHead + label + LengthHead + unit + ArcHead + CrLf;
  text += RuleLine + std::string(CrLf);
  csv += "\"" + settings.DrawingFile + "\"" + CrLf;
  csv += CsvHeadStart + label + CsvHeadLength + unit + CsvHeadEnd + CrLf;

  for (int i = 0; i < count; ++i) {
    ResumeNext([&] {
      if (i >= CourseLimit) throw RunError(ErrorNumber::SubscriptOutOfRange, "Subscript out of range");
      const ReportCourse& row = work.rows[static_cast<std::size_t>(i)];
      const std::string n = std::to_string(row.RowNo + 1);
      const std::string quotedName = "\"" + name + "\",\"" + n + "\",";
      if (row.IsLine()) {
        ResumeNext([&] {
          text += PadLeft(n, 4) + PadLeft(row.Direction, 12) +
                  PadLeft(FormatReportNumber(row.Length, d), 12) + CrLf;
        });
        ResumeNext([&] {
          csv += quotedName + " " + row.Direction + ", " + FormatReportNumber(row.Length, d) + CrLf;
        });
      } else {
        // The sign completes the line in a write of its own, so it is
        // written even when the figures before it were too wide.
        ResumeNext([&] {
          text += PadLeft(n, 4) + PadLeft(row.Direction, 12) +
                  PadLeft(FormatReportNumber(row.Length, d), 12) +
                  PadLeft(FormatReportNumber(row.Arc, d), 12) +
                  PadLeft(FormatReportNumber(row.Radius, d), 12);
        });
        text += row.Plus == 0 ? "   +" : "   -";
        text += CrLf;
        ResumeNext([&] {
          csv += quotedName + " " + row.Direction + ",\"" + FormatReportNumber(row.Length, d) +
                 "\",\"" + FormatReportNumber(row.Arc, d) + "\",\"" +
                 FormatReportNumber(row.Radius, d) + "\",\"";
        });
        csv += row.Plus == 0 ? "+\"" : "-\"";
        csv += CrLf;
      }
    });
  }

  text += CrLf;
  text += TotalLine + PlainNumber(total) + CrLf;
  text += DirectionLine + closureBearing + CrLf;
  ResumeNext([&] { text += DistanceLine + PlainNumber(closure) + CrLf; });
  text += ErrorLine + precision + CrLf;
  std::string areaText;
  ResumeNext([&] { areaText = AreaText(area, settings); });
  text += AreaLine + areaText;
  text += "\r\n\r\n\r\n\r\n\r\n\r\n";
}

BuildResult WriteFullReport(store::Database& db, const FilterChoice& choice,
                            const ReportSettings& settings, ReportWork& work,
                            ReportStreams& out) {
  const std::vector<ParcelEntry> parcels = ReadParcels(db);
  if (parcels.empty()) return BuildResult::NoData;
  MeasurementSource source =
      choice.parcelChosen ? MeasurementSource::PerParcel(db) : MeasurementSource::All(db);
  for (const ParcelEntry& parcel : parcels) {
    ResumeNext([&] {
      long id = 0;
      const bool hasId = ParcelIdOf(parcel.ParcelID, id);
      if (!ReportFilter(choice, hasId ? id : -1, SavedClosure(parcel.Closure))) return;
      if (!hasId) return;
      const int count = ReadCourses(source.RowsOf(parcel.ParcelID), work);
      if (count > 0) LotBody(settings, work, out, parcel.Parcel.AsText(), count);
    });
  }
  return BuildResult::Built;
}

BuildResult WriteSummaryReport(store::Database& db, const FilterChoice& choice,
                               const ReportSettings& settings, ReportWork& work,
                               std::string& out) {
  const bool feet = settings.UnitFeet;
  const std::string areaUnit = feet ? SummaryFeetArea : SummaryMetreArea;
  const std::string lengthUnit = feet ? SummaryFeetLength : SummaryMetreLength;
  const std::vector<ParcelEntry> parcels = ReadParcels(db);
  if (parcels.empty()) return BuildResult::NoData;

  out += DrawingLine + settings.DrawingFile + CrLf + CrLf;
  out += SummaryHead1 + std::string(SummaryHead2) + CrLf;
  out += std::string(30, ' ') + areaUnit + "  " + lengthUnit + std::string(5, ' ') +
         settings.DirectionLabel + std::string(12, ' ') + CrLf;
  out += std::string(68, '_') + CrLf + CrLf;

  // From here on a failing statement is skipped and the next one runs; the
  // values below live from parcel to parcel.
  const int d = settings.Decimal;
  MeasurementSource source = MeasurementSource::All(db);
  double area = 0, closure = 0, ratio = 0, p = 0;
  std::string closureBearing, precision;
  for (const ParcelEntry& parcel : parcels) {
    int count = 0;
    ResumeNext([&] { count = ReadCourses(source.RowsOf(parcel.ParcelID), work); });
    if (count == 0) continue;
    ResumeNext([&] {
      ReportCoords(settings.notation, work.rows, count, work.coords, work.ReportTotalDistance);
    });
    ResumeNext([&] { ReportArea(work.rows, count, work.coords, area, d); });
    ResumeNext([&] { closure = ClosureOf(EndPoint(work, count), d); });
    ResumeNext([&] {
      const Point& end = EndPoint(work, count);
      closureBearing = BearingFromPoints(settings.notation, end.x, end.y, 0, 0);
    });
    long id = 0;
    const bool hasId = ParcelIdOf(parcel.ParcelID, id);
    if (!ReportFilter(choice, hasId ? id : -1, closure)) continue;
    ResumeNext([&] { ratio = Divide(closure, work.ReportTotalDistance); });
    ResumeNext([&] { p = PrecisionRatio(ratio); });
    ResumeNext([&] {
      precision = p == -1 ? std::string(SummaryPerfect)
                          : SummaryRatioPrefix + PlainNumber(RoundHalfEven(p, 0));
    });
    ResumeNext([&] {
      const std::string name = LeftChars(parcel.Parcel.AsText(), 24);
      out += PadLeft(name, 24) + PadLeft(FormatReportNumber(area, d), 11) +
             PadLeft(FormatReportNumber(closure, d), 8) + PadLeft(closureBearing, 14) +
             precision + CrLf;
    });
  }
  return BuildResult::Built;
}

}  // namespace parvenna::reports
