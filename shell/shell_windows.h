#pragma once

#include <optional>
#include <string>

#include "store/project_windows.h"

namespace parvenna::shell {

// What the shell asks of the real windows: dialogs, window placement and the
// other programs of the desktop. The Qt main window implements it; tests use a
// recording fake.
class ShellWindows {
 public:
  virtual ~ShellWindows() = default;

  virtual std::optional<std::string> ShowOpen(const store::FileDialogRequest& request) = 0;
  virtual void SetCaptions(const std::string& editorCaption, const std::string& mainCaption) = 0;
  // The editor stays above the drawing while the program is in front.
  virtual void SetEditorTopmost(bool topmost) = 0;
  // The main window comes up, maximised, once the system store is held: a
  // refused start shows nothing but the splash.
  virtual void ShowMain() = 0;
  virtual void ShowEditor() = 0;
  virtual void MinimizeEditor() = 0;
  virtual void MinimizeMain() = 0;
  virtual void CloseMain() = 0;  // the close request of mnuExit
  // The drawing window comes up, with the editor kept above it.
  virtual void BringUpDrawing() = 0;
  // The drawing window shows its views again after they changed.
  virtual void RefreshDrawing() = 0;
  // The working area of the main window, in twips, for the layouts.
  virtual double AreaWidth() const = 0;
  virtual double AreaHeight() const = 0;
  virtual void ShowRowMenu(int row) = 0;
  virtual void ShowCreateDialog() = 0;
  virtual void ShowSettingDialog() = 0;
  virtual void ShowAbout(const std::string& credits) = 0;
  // The report window with that caption, loaded and shown.
  virtual void ShowReport(const std::string& caption) = 0;
  // A page, a file or a mail address opened by the desktop; false when
  // nothing on the desktop opens it.
  virtual bool OpenUrl(const std::string& url) = 0;
};

}  // namespace parvenna::shell
