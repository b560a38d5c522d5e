#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/printer.h"

// What the report window asks of the platform and of the windows around it.
// The Qt shell implements it; tests and the command-line tool use fakes.
namespace parvenna::reports {

class ReportWindows {
 public:
  virtual ~ReportWindows() = default;

  // dlgIOFile.ShowSave with the filter: the name chosen, nothing on cancel.
  virtual std::optional<std::string> ShowSave(const std::string& filter) = 0;
  // dlgIOFile.ShowPrinter with its Flags (256 return a printer, +1 print the
  // selection): the printer chosen, paper or a PDF file; nothing on cancel.
  virtual std::unique_ptr<Printer> ShowPrinter(int flags) = 0;
  // The printer of a picture run, chosen when its first page is due and
  // kept by the run to its end: on paper each EndDoc sends a parcel's job, a
  // PDF file holds every page of the run and is complete when the printer
  // goes. Nothing when the choice is cancelled.
  virtual std::unique_ptr<Printer> PicturePrinter() = 0;

  // The window calls: topmost states, the editor moved off the screen while
  // it serves as the print source and brought back to the centre.
  virtual void SetReportTopmost() = 0;
  virtual void SetEditorTopmost(bool topmost) = 0;
  virtual void MoveEditorOffScreen() = 0;
  virtual void CenterEditor() = 0;
  // Lets pending events run.
  virtual void DoEvents() = 0;
  // Runs an entry of the main menu by its name (the Help menu's namesakes).
  virtual void RunMainMenu(const std::string& name) { (void)name; }

  // The screen in twips.
  virtual double ScreenWidth() const { return 1920 * 15.0; }
  virtual double ScreenHeight() const { return 1080 * 15.0; }
};

}  // namespace parvenna::reports
