#include "ui/guarded.h"

#include <exception>

#include "platform/run_error.h"
#include "shell/messages.h"
#include "shell/shell.h"

namespace parvenna::ui {

bool RunGuarded(Prompter& prompter, const std::function<void()>& handler, FailureReport report) {
  int number = 0;
  try {
    handler();
    return true;
  } catch (const RunError& e) {
    number = e.Code();
  } catch (const std::exception&) {
    // Anything else the program did not foresee reads as an invalid call.
    number = static_cast<int>(ErrorNumber::InvalidCall);
  }
  if (report == FailureReport::Support) {
    shell::ReportUnknownError(prompter, number);
  } else {
    Inform(prompter, shell::UnknownErrorText(number), MsgIcon::Critical,
           shell::messages::UnknownErrorTitle);
  }
  return false;
}

}  // namespace parvenna::ui
