#pragma once

#include "platform/printer.h"

namespace parvenna::editor {
class EditorForm;
}

namespace parvenna::reports {

class ReportForm;

// The report with picture: the editor, off the screen, is stepped through
// its parcels, and each parcel that the window's choice takes is printed as
// its own job from the texts of the editor's fields and labels and from the
// image of its sketch, so that the paper shows what the editor shows.
class PictureReport {
 public:
  PictureReport(ReportForm& form, editor::EditorForm& editor) : form_(form), editor_(editor) {}

  // Asks, steps the parcels, prints, and gives the editor its sketch box back.
  void PictureRun();
  // One page (or more, for a long parcel) of the parcel the editor shows.
  // Failures before the first curve's area reach the caller; from there on
  // each statement stands alone and the page omits what fails.
  void PicturePage(Printer& printer);

 private:
  ReportForm& form_;
  editor::EditorForm& editor_;
};

}  // namespace parvenna::reports
