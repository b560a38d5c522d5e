// Feeds arbitrary text to the reader of the DWG converter's output, as if
// the converter had written it, and to the routines that decode a label's
// codes. Every input must give a document (perhaps empty) or a refusal;
// a crash, a hang or a sanitizer report is a finding.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "drawing/cad_text.h"
#include "drawing/dwg_reader.h"
#include "drawing/dwg_records.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace parvenna::drawing;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  for (const TextCodes codes : {TextCodes::MText, TextCodes::Single, TextCodes::Literal}) {
    ShownTextOf(input, codes);
    PickTextOf(input, codes);
  }
  DwgRecords records;
  std::string why;
  if (records.Parse("parvenna-dwg\t1\n" + std::string(input) + "\nend\n", why)) {
    DrawingDocument doc;
    ReadDwgRecords(records, doc);
  }
  return 0;
}
