#pragma once

#include <functional>

#include "platform/prompter.h"

namespace parvenna::ui {

// How a failure that nothing caught is told.
enum class FailureReport {
  CatchAll,  // "Unkown Error Number ... has occured." under "Unkown Error"
  Support,   // ReportUnknownError: the number and the way to support
};

// Runs one handler of a model. A failure that nothing in it caught gets the
// box of `report`, and the program goes on. False when the handler failed.
bool RunGuarded(Prompter& prompter, const std::function<void()>& handler,
                FailureReport report = FailureReport::CatchAll);

}  // namespace parvenna::ui
