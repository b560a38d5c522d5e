#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/prompter.h"

namespace parvenna::testing {

// Answers message boxes from a script and keeps every box shown. A box with
// only an OK button takes no answer from the script; a question with the
// script used up is answered with `fallback`.
class ScriptedPrompter : public Prompter {
 public:
  std::deque<MsgAnswer> answers;
  MsgAnswer fallback = MsgAnswer::Yes;
  std::vector<Message> shown;

  MsgAnswer MsgBox(const Message& message) override;

  std::vector<std::string> Prompts() const;
  void Answer(std::initializer_list<MsgAnswer> script) { answers.insert(answers.end(), script); }
};

}  // namespace parvenna::testing
