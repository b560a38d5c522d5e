#pragma once

#include <string>
#include <string_view>

// How the reports write numbers and fill columns.
namespace parvenna::reports {

// The number picture of every report: "###,##0." followed by `decimals`
// zeros. With 0 decimals it keeps its point, so amounts end in one.
std::string ReportNumberFormat(int decimals);

// A number through that picture: thousands commas, a 0 before the point,
// exactly `decimals` decimals rounded half even as written. An infinite
// number is an overflow.
std::string FormatReportNumber(double value, int decimals);
// The same text added to the end of `out`; nothing is added when it fails.
void AppendReportNumber(std::string& out, double value, int decimals);

// A text through the picture: a text that reads as a number is formatted,
// anything else (an empty field, "N/A", a direction) comes out as it stands.
std::string FormatReportText(std::string_view text, int decimals);

// `width` minus the length of the text in blanks, then the text. Lengths are
// characters, not bytes. A text wider than its column is an invalid call: in
// the reports that drops the line it stands in.
std::string PadLeft(std::string_view text, int width);
// The same, added to the end of `out`; nothing is added when it fails.
void AppendPadded(std::string& out, std::string_view text, int width);

// The same, but a text that fills its column or is wider is kept whole with
// one blank before it, so that it stands apart from the column before: the
// line grows wider rather than lose a figure or run two together.
void AppendWidened(std::string& out, std::string_view text, int width);

// The CSV rows are read by spreadsheets: a field that holds a comma or a
// quote (a length of 1,000 or more, every direction with its seconds mark)
// is quoted, its quotes doubled, so that it stays one cell.
bool NeedsQuotes(std::string_view field);
// The field quoted, its quotes doubled.
void AppendQuoted(std::string& out, std::string_view field);
// The field as it stands, or quoted when it needs quotes.
void AppendCsvField(std::string& out, std::string_view field);

// The first `count` characters of a text.
std::string LeftChars(std::string_view text, std::size_t count);

}  // namespace parvenna::reports
