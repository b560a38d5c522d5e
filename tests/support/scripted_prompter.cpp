#include "tests/support/scripted_prompter.h"

namespace parvenna::testing {

MsgAnswer ScriptedPrompter::MsgBox(const Message& message) {
  shown.push_back(message);
  if (message.Buttons == MsgButtons::OK) return MsgAnswer::OK;
  if (answers.empty()) return fallback;
  MsgAnswer answer = answers.front();
  answers.pop_front();
  return answer;
}

std::vector<std::string> ScriptedPrompter::Prompts() const {
  std::vector<std::string> prompts;
  for (const Message& m : shown) prompts.push_back(m.Prompt);
  return prompts;
}

}  // namespace parvenna::testing
