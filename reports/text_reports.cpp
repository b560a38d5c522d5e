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

template <class... Parts>
void Append(std::string& out, const Parts&... parts) {
  ((out += parts), ...);
}

// The last number put through the report's picture: one buffer, reused
// from number to number.
class Figure {
 public:
  explicit Figure(int decimals) : decimals_(decimals) {}
  const std::string& operator()(double value) {
    text_.clear();
    AppendReportNumber(text_, value, decimals_);
    return text_;
  }

 private:
  int decimals_;
  std::string text_;
};

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

// A field that the rows write after a blank: quoted without the blank when
// it must be, since a quote after a blank would not open a quoted field.
void AppendBlankOrQuoted(std::string& out, std::string_view field) {
  if (NeedsQuotes(field)) {
    AppendQuoted(out, field);
  } else {
    out += ' ';
    out += field;
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

  Append(text, DrawingLine, settings.DrawingFile, CrLf, CrLf);
  Append(text, LotLine, name, CrLf, CrLf);
  Append(text, StartLine, CrLf);
  Append(text, LegHead, label, LengthHead, unit, ArcHead, CrLf);
  Append(text, RuleLine, CrLf);
  AppendQuoted(csv, settings.DrawingFile);
  csv += CrLf;
  Append(csv, CsvHeadStart, label, CsvHeadLength, unit, CsvHeadEnd, CrLf);

  // Each line is put together apart and added whole, so that a statement
  // that fails adds nothing.
  std::string line;
  Figure figure(d);
  for (int i = 0; i < count; ++i) {
    ResumeNext([&] {
      if (i >= CourseLimit) throw RunError(ErrorNumber::SubscriptOutOfRange, "Subscript out of range");
      const ReportCourse& row = work.rows[static_cast<std::size_t>(i)];
      const std::string n = std::to_string(row.RowNo + 1);
      const auto startCsvRow = [&] {
        line.clear();
        AppendQuoted(line, name);
        Append(line, ",\"", n, "\",");
        AppendBlankOrQuoted(line, row.Direction);
      };
      if (row.IsLine()) {
        ResumeNext([&] {
          line.clear();
          AppendPadded(line, n, 4);
          AppendPadded(line, row.Direction, 12);
          AppendPadded(line, figure(row.Length), 12);
          Append(text, line, CrLf);
        });
        ResumeNext([&] {
          startCsvRow();
          line += ',';
          AppendBlankOrQuoted(line, figure(row.Length));
          Append(csv, line, CrLf);
        });
      } else {
        // The sign completes the line in a write of its own, so it is
        // written even when the figures before it were too wide.
        ResumeNext([&] {
          line.clear();
          AppendPadded(line, n, 4);
          AppendPadded(line, row.Direction, 12);
          AppendPadded(line, figure(row.Length), 12);
          AppendPadded(line, figure(row.Arc), 12);
          AppendPadded(line, figure(row.Radius), 12);
          text += line;
        });
        Append(text, row.Plus == 0 ? "   +" : "   -", CrLf);
        ResumeNext([&] {
          startCsvRow();
          Append(line, ",\"", figure(row.Length), "\",\"");
          Append(line, figure(row.Arc), "\",\"");
          Append(line, figure(row.Radius), "\",\"");
          csv += line;
        });
        Append(csv, row.Plus == 0 ? "+\"" : "-\"", CrLf);
      }
    });
  }

  text += CrLf;
  Append(text, TotalLine, PlainNumber(total), CrLf);
  Append(text, DirectionLine, closureBearing, CrLf);
  ResumeNext([&] { Append(text, DistanceLine, PlainNumber(closure), CrLf); });
  Append(text, ErrorLine, precision, CrLf);
  std::string areaText;
  ResumeNext([&] { areaText = AreaText(area, settings); });
  Append(text, AreaLine, areaText, "\r\n\r\n\r\n\r\n\r\n\r\n");
}

BuildResult WriteFullReport(store::Database& db, const FilterChoice& choice,
                            const ReportSettings& settings, ReportWork& work,
                            ReportStreams& out) {
  const std::vector<ParcelEntry> parcels = ReadParcels(db);
  if (parcels.empty()) return BuildResult::NoData;
  // UTF-8 with its byte-order mark, by which a spreadsheet knows the degree sign.
  out.csv += Utf8Bom;
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
  std::string line;  // put together apart and added whole, or not at all
  Figure figure(d);
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
    // A figure wider than its column widens the column on this line: a lot
    // is never left out of the summary.
    ResumeNext([&] {
      line.clear();
      AppendPadded(line, LeftChars(parcel.Parcel.AsText(), 24), 24);
      AppendWidened(line, figure(area), 11);
      AppendWidened(line, figure(closure), 8);
      AppendWidened(line, closureBearing, 14);
      Append(out, line, precision, CrLf);
    });
  }
  return BuildResult::Built;
}

}  // namespace parvenna::reports
