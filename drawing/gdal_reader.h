#pragma once

#include <string>

#include "drawing/drawing_document.h"
#include "drawing/drawing_format.h"

// DXF and DGN V7 drawings, read through GDAL.
namespace parvenna::drawing {

// Reads a file whose format is told by guess (readable, DXF or DGN).
LoadResult ReadWithGdal(const std::string& path, const FormatGuess& guess);

// What reading costs GDAL alone: every feature of a DXF or DGN read with the
// options the loader uses, its geometry and fields touched, nothing kept.
// The number of features, or -1 when the file cannot be read.
long long ReadFeaturesOnly(const std::string& path);

}  // namespace parvenna::drawing
