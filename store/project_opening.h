#pragma once

#include <string>

#include "platform/prompter.h"
#include "store/project_state.h"
#include "store/project_windows.h"
#include "store/system_store.h"

// The one sequence by which a project becomes current, and its entrances:
// the Open menu, an entry of the history menu, the command line and the end
// of the create dialog. Also the settings' reading and the relinking of the
// drawing. There is no closing and no saving of a project: it stays current
// until another one takes its place.
namespace parvenna::store {

enum class Entrance { Open, History, CommandLine, Create };

class ProjectOpener {
 public:
  ProjectOpener(ProjectState& state, Prompter& prompter, SystemStore& store, RecentMenu& menu,
                ProjectWindows& windows)
      : state_(state), prompter_(prompter), store_(store), menu_(menu), windows_(windows) {}

  // The common sequence, with ProjectFile already holding the new path and
  // `previous` the path it held before. False when the file failed its check,
  // and then ProjectFile is `previous` again and nothing else changed.
  bool OpenCurrent(Entrance entrance, const std::string& previous);

  void mnuOpen_Click();
  void mnuHistory_Click(int index);
  // The command line, quotation marks and all: acted on only when it names a
  // .pvd file; anything else is ignored without a word.
  void OpenFromCommandLine(const std::string& commandLine);
  // The end of a successful create, in two halves around the unloading of
  // the dialog: ProjectFile and DrawingFile are set before the first.
  void OpenCreated();
  void FinishCreated();
  // The history menu read again and the captions set; false when the table
  // could not be read.
  bool LoadRecentAndCaptions();

  // Copies the settings row of ProjectFile into the state. A failure before
  // the columns that older versions lack ends it silently, with what was
  // read kept.
  void LoadProjectSettings();

  void mnuRelocateCAD_Click();
  void mnuCurrentCAD_Click();

 private:
  bool ReadSettingsRow();
  void OpenDrawing();

  ProjectState& state_;
  Prompter& prompter_;
  SystemStore& store_;
  RecentMenu& menu_;
  ProjectWindows& windows_;
};

// The command line's path when it names a project: quotation marks removed,
// at least 5 characters, ending in ".pvd" in any case once trimmed. The path
// itself keeps its blanks. Empty when the line names none.
std::string ProjectOfCommandLine(const std::string& commandLine);

}  // namespace parvenna::store
