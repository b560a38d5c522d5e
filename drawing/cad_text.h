#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "drawing/drawing_document.h"

// The text of a drawing's labels as stored in the file and as shown.
namespace parvenna::drawing {

// The text a label shows: MTEXT codes taken out (\P and ^J break lines,
// \~ is a blank, {..} groups and \X...; codes vanish, \S stacks read as
// a/b), \U+XXXX made its character, and the percent codes turned into
// their characters (%%d degree, %%p plus-minus, %%c diameter, %%% percent,
// %%nnn a character; %%u and %%o vanish). Single-line text knows no MTEXT
// codes; literal text is shown as it stands.
std::string ShownTextOf(std::string_view raw, TextCodes codes = TextCodes::MText);

// The text a pick hands on: as shown, but with the percent codes as
// written, so that the project's degree text (%%D by default) is read by
// the grabbing as the drawing wrote it.
std::string PickTextOf(std::string_view raw, TextCodes codes = TextCodes::MText);

// Text that is not valid UTF-8 is taken for Windows-1252 and converted.
std::string EnsureUtf8(std::string_view text);

// Lines of a shown text and characters (code points) of its longest line.
struct TextMeasure {
  std::size_t lines = 1;
  std::size_t longest = 0;
};
TextMeasure MeasureText(std::string_view shown);

}  // namespace parvenna::drawing
