#pragma once

#include <string>
#include <string_view>

namespace parvenna::reports {

// A rich text document of a report's text: one paragraph a line, in a
// fixed-pitch font (Courier New, 10 points), so that word processors show the
// columns as the preview does. Characters beyond ASCII go as Unicode escapes.
std::string RichTextOf(std::string_view text);

}  // namespace parvenna::reports
