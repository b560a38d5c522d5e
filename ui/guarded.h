#pragma once

#include <functional>

#include "platform/prompter.h"

namespace parvenna::ui {

// Runs one handler of a model. A failure that nothing in it caught gets the
// box "Unkown Error Number ... has occured." under "Unkown Error", and the
// program goes on. False when the handler failed.
bool RunGuarded(Prompter& prompter, const std::function<void()>& handler);

}  // namespace parvenna::ui
