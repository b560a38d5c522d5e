// The mapcheck in the report window: built from the project file like the
// other reports, its text in the work file, its parcels' rows in the CSV
// work file, its pages printed with the sketches.
#include <charconv>

#include "geometry/numbers.h"
#include "reports/mapcheck.h"
#include "reports/messages.h"
#include "reports/report_filter.h"
#include "reports/report_form.h"
#include "reports/work_files.h"

namespace parvenna::reports {

std::optional<double> RatioOfText(std::string_view text) {
  std::string digits;
  for (char c : text) {
    if (c == ',') continue;
    if (c < '0' || c > '9') return std::nullopt;
    digits += c;
  }
  long long value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (digits.empty() || error != std::errc() || end != digits.data() + digits.size()) {
    return std::nullopt;
  }
  if (value < 1 || value > 1000000000LL) return std::nullopt;
  return static_cast<double>(value);
}

bool WriteMapcheck(store::Database& db, const FilterChoice& choice,
                   const GeometrySettings& settings, const MapcheckOptions& options,
                   std::vector<MapcheckParcel>& parcels) {
  const std::vector<ParcelEntry> entries = ReadParcels(db);
  if (entries.empty()) return false;
  MeasurementSource source =
      choice.parcelChosen ? MeasurementSource::PerParcel(db) : MeasurementSource::All(db);
  for (const ParcelEntry& entry : entries) {
    long id = -1;
    ResumeNext([&] { if (!entry.ParcelID.IsNull()) id = entry.ParcelID.AsLong(); });
    // A parcel is judged by the closure worked out here, as the editor
    // would show it; one that cannot be walked is taken by "All" alone.
    MapcheckParcel parcel =
        CheckParcel(entry.Parcel.AsText(), source.RowsOf(entry.ParcelID), settings, options);
    const std::optional<double> closure =
        parcel.failure.empty() ? std::optional<double>(parcel.closureRounded) : std::nullopt;
    if (ReportFilter(choice, id, closure)) parcels.push_back(std::move(parcel));
  }
  return true;
}

void ReportForm::BuildMapcheckReport() {
  SetWorkPaths(true);
  mapcheck_ = MapcheckDocument();
  MapcheckHeader& h = mapcheck_.header;
  h.projectFile = project.ProjectFile;
  h.drawingFile = project.DrawingFile;
  h.date = ReportDate;
  h.unitFeet = project.UnitIsFeet;
  h.notation = project.notation();
  h.decimals = project.ErrDecimals;
  h.tolerance = project.ClosureToleranceValue;
  h.options = mapcheckOptions;
  bool any = true;
  const bool read = ResumeNext([&] {
    any = WriteMapcheck(db_, Choice(), project.Geometry(), mapcheckOptions, mapcheck_.parcels);
  });
  if (read && !any) {
    WriteWholeFile(ReportCsvPath, "");
    WriteWholeFile(ReportTextPath, "");
    Inform(prompter, messages::NoDataText);
    return;  // the preview keeps what it had
  }
  WriteWholeFile(ReportCsvPath, ParcelsCsv(mapcheck_));
  std::string text = MapcheckText(mapcheck_);
  const bool written = WriteWholeFile(ReportTextPath, text);
  LoadPreview(std::move(text), written);
}

void ReportForm::txtRatio_Change(const std::string& text) {
  const std::optional<double> ratio = RatioOfText(text);
  if (!ratio) {
    txtRatio.Text = PlainNumber(mapcheckOptions.ratio);
    Inform(prompter, messages::mapcheck::RatioRefused);
    return;
  }
  txtRatio.Text = text;
  if (*ratio == mapcheckOptions.ratio) return;
  mapcheckOptions.ratio = *ratio;
  BuildReport();
}

}  // namespace parvenna::reports
