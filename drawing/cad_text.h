#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The text of a drawing's labels as stored in the file and as shown.
namespace parvenna::drawing {

// The text a label shows: MTEXT codes taken out (\P and ^J break lines,
// \~ is a blank, \U+XXXX a character, {..} groups and \X...; codes vanish,
// \S stacks read as a/b), and the percent codes of single-line text turned
// into their characters (%%d degree, %%p plus-minus, %%c diameter, %%%
// percent, %%nnn a character; %%u and %%o vanish).
std::string ShownTextOf(std::string_view raw);

// Text that is not valid UTF-8 is taken for Windows-1252 and converted.
std::string EnsureUtf8(std::string_view text);

// Lines of a shown text and characters (code points) of its longest line.
struct TextMeasure {
  std::size_t lines = 1;
  std::size_t longest = 0;
};
TextMeasure MeasureText(std::string_view shown);

}  // namespace parvenna::drawing
