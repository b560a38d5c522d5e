#pragma once

#include "drawing/drawing_document.h"
#include "drawing/dwg_records.h"

namespace parvenna::drawing {

// Makes the document of a DWG from the converter's records: the layers of
// its table, the model space with every block reference drawn in place
// (layer 0 and colour "by block" inside a block taking the reference's),
// dimensions through their blocks, texts with their height, angle and
// alignment, curves as the views draw them, hatches as their rings, and the
// model space's count of entities by type. A record that does not read is
// left out; so are references nested deeper than a drawing sensibly goes.
void ReadDwgRecords(const DwgRecords& records, DrawingDocument& document);

}  // namespace parvenna::drawing
