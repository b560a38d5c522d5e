#pragma once

#include <functional>

#include "platform/printer.h"

namespace parvenna::reports {

// The fonts of the printed pages: the words in the printer's proportional
// font, the blank-padded columns in a fixed-pitch one, whose 16 characters
// of 0.6 em span the 1.2 inches from one column to the next at 9 points.
inline constexpr const char* PageFont = "Arial";
inline constexpr const char* ColumnFont = "Courier New";
inline constexpr double ColumnFontSize = 9;
// The printable band of a page, in inches from its top and its bottom edge.
inline constexpr double PageTopMargin = 0.5;
inline constexpr double PageBottomMargin = 0.5;

// Text going down printed pages between a top and a bottom margin. Before a
// block is printed the flow is asked for room for it: a block that would
// cross the bottom margin begins a new page, where the heads of what is being
// printed are printed again first. So no line is cut at the paper's edge, and
// a page that goes on from the one before says what it goes on with.
class PageFlow {
 public:
  // Margins in inches from the paper's top and bottom edges.
  PageFlow(Printer& printer, double topMargin, double bottomMargin)
      : printer_(printer), top_(topMargin), bottomMargin_(bottomMargin) {}

  // Printed at the top margin of each page that a break begins; none when
  // empty. It may change the printer's font: the caller sets its own again.
  std::function<void()> repeatHeads;

  // Room for `height` inches below CurrentY: when the block would cross the
  // bottom margin a new page begins (unless the page holds nothing yet) and
  // the heads are printed. True when a page was begun.
  bool Room(double height);
  // A new page at the top margin, with the heads.
  void Break();

  double Top() const { return top_; }
  double Bottom() const { return printer_.ScaleHeight() - bottomMargin_; }

 private:
  Printer& printer_;
  double top_;
  double bottomMargin_;
};

}  // namespace parvenna::reports
