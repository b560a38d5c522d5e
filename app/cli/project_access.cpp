#include "app/cli/project_access.h"

#include <ostream>

namespace parvenna::cli {

MsgAnswer StreamPrompter::MsgBox(const Message& message) {
  shown.push_back(message.Prompt);
  if (message.Buttons == MsgButtons::YesNo || message.Buttons == MsgButtons::YesNoCancel) {
    err_ << "parvenna-cli: " << message.Prompt << " -> "
         << (answer_ == MsgAnswer::Yes ? "Yes" : "No") << "\n";
    return answer_;
  }
  err_ << "parvenna-cli: " << message.Prompt << "\n";
  return MsgAnswer::OK;
}

int IndexOfParcel(const ComboBox& combo, const std::string& name) {
  for (int i = 0; i < combo.ListCount(); ++i) {
    if (combo.List[static_cast<std::size_t>(i)] == name) return i;
  }
  for (int i = 0; i < combo.ListCount(); ++i) {
    const std::string& listed = combo.List[static_cast<std::size_t>(i)];
    const std::size_t first = listed.find_first_not_of(' ');
    if (first != std::string::npos && listed.substr(first) == name) return i;
  }
  return -1;
}

}  // namespace parvenna::cli
