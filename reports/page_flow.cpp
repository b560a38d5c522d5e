#include "reports/page_flow.h"

namespace parvenna::reports {

bool PageFlow::Room(double height) {
  // A block taller than a whole page is printed from the top all the same.
  if (printer_.CurrentY + height <= Bottom() || printer_.CurrentY <= top_) return false;
  Break();
  return true;
}

void PageFlow::Break() {
  printer_.NewPage();
  printer_.CurrentY = top_;
  if (repeatHeads) repeatHeads();
}

}  // namespace parvenna::reports
