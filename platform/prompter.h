#pragma once

#include <string>

namespace parvenna {

enum class MsgButtons { OK, OKCancel, YesNo, YesNoCancel };
enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgAnswer { OK, Cancel, Yes, No };

inline constexpr const char* kDefaultTitle = "Parvenna";

struct Message {
  std::string Prompt;
  MsgButtons Buttons = MsgButtons::OK;
  MsgIcon Icon = MsgIcon::None;
  std::string Title = kDefaultTitle;
  int DefaultButton = 1;  // 1 the first button, 2 the second, 3 the third
};

// Message boxes. The core asks through this port and never sees a widget:
// production shows a QMessageBox, tests answer from a script and keep every
// text that was shown.
class Prompter {
 public:
  virtual ~Prompter() = default;
  virtual MsgAnswer MsgBox(const Message& message) = 0;
};

inline void Inform(Prompter& prompter, std::string prompt, MsgIcon icon = MsgIcon::None,
                   std::string title = kDefaultTitle) {
  prompter.MsgBox({std::move(prompt), MsgButtons::OK, icon, std::move(title), 1});
}

inline bool AskYesNo(Prompter& prompter, std::string prompt, MsgIcon icon = MsgIcon::None,
                     std::string title = kDefaultTitle, int defaultButton = 1) {
  return prompter.MsgBox({std::move(prompt), MsgButtons::YesNo, icon, std::move(title),
                          defaultButton}) == MsgAnswer::Yes;
}

}  // namespace parvenna
