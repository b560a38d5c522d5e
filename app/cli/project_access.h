#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "editor/editor_host.h"
#include "platform/controls.h"
#include "platform/prompter.h"

// What the commands that work on a project share: boxes as lines on the
// error stream, an editor without windows around it, the program's own
// directory, and a parcel found in the list by the name a script gives.
namespace parvenna::cli {

// Boxes become lines on the error stream; each question is answered with
// `answer`, and the line says which. Every text shown is kept.
class StreamPrompter : public Prompter {
 public:
  explicit StreamPrompter(std::ostream& err, MsgAnswer answer = MsgAnswer::Yes)
      : err_(err), answer_(answer) {}
  MsgAnswer MsgBox(const Message& message) override;
  std::vector<std::string> shown;

 private:
  std::ostream& err_;
  MsgAnswer answer_;
};

class NoEditorHost : public editor::EditorHost {
 public:
  void BringUpDrawing() override {}
  void MinimizeEditor() override {}
  void ShowRowMenu(int) override {}
};

// The position of the parcel in the list: its name as stored, or as typed
// (short names are stored right-aligned in six). -1 when it is not there.
int IndexOfParcel(const ComboBox& combo, const std::string& name);

}  // namespace parvenna::cli
