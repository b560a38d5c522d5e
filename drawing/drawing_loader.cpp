// Which reader a drawing goes to: DWG to the converter, DXF and DGN V7 to
// GDAL.
#include <exception>

#include "drawing/drawing_document.h"
#include "drawing/dwg_reader.h"
#include "drawing/gdal_reader.h"
#include "drawing/messages.h"

namespace parvenna::drawing {
namespace {

LoadResult ReadDwg(const std::string& path, const FormatGuess& guess, const DwgOptions& options) {
  LoadResult result;
  DwgConversion converted = ConvertDwg(path, options);
  if (converted.failure != DwgFailure::None) {
    result.detail = std::move(converted.detail);
    return result;
  }
  DwgRecords records;
  std::string why;
  if (!records.Parse(std::move(converted.records), why)) {
    result.detail = messages::ReasonDwgDamaged;
    return result;
  }
  auto doc = std::make_unique<DrawingDocument>();
  doc->format = DrawingFormat::Dwg;
  doc->version = guess.version;
  doc->path = path;
  ReadDwgRecords(records, *doc);
  result.document = std::move(doc);
  return result;
}

}  // namespace

LoadResult LoadDrawing(const std::string& path, const DwgOptions& dwg) {
  LoadResult result;
  try {
    bool opened = false;
    const std::string head = ReadHead(path, opened);
    if (!opened) {
      result.detail = messages::ReasonNotFound;
      return result;
    }
    const FormatGuess guess = GuessFormat(path, head);
    if (!guess.readable) {
      result.detail = guess.detail;
      return result;
    }
    if (guess.format == DrawingFormat::Dwg) return ReadDwg(path, guess, dwg);
    return ReadWithGdal(path, guess);
  } catch (const std::exception& e) {
    result.document.reset();
    result.detail = std::string(messages::ReasonUnreadable) + e.what() + ".";
  }
  return result;
}

}  // namespace parvenna::drawing
