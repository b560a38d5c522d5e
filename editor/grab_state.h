#pragma once

#include <deque>
#include <string>
#include <vector>

namespace parvenna::editor {

// The state of grabbing text from the drawing for the parcel being edited. A
// double click on a field starts it; picks in the drawing and the Done button
// work on it.
struct GrabState {
  // Values that wait for the fields while GrabActive is set.
  std::deque<std::string> GrabQueue;
  bool GrabActive = false;
  // Handles of the entities grabbed in this parcel; their mark is made once.
  std::vector<std::string> usedEntities;

  void ParcelChanged() { usedEntities.clear(); }
};

}  // namespace parvenna::editor
