#include "tests/support/recording_canvas.h"

#include <algorithm>

namespace parvenna::testing {

std::vector<RecordingCanvas::Call> RecordingCanvas::Picture() const {
  auto lastCls = std::find_if(calls.rbegin(), calls.rend(),
                              [](const Call& c) { return c.op == Op::Cls; });
  return {lastCls.base(), calls.end()};
}

std::size_t RecordingCanvas::Count(Op op) const {
  auto picture = Picture();
  return static_cast<std::size_t>(
      std::count_if(picture.begin(), picture.end(), [op](const Call& c) { return c.op == op; }));
}

}  // namespace parvenna::testing
