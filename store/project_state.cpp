#include "store/project_state.h"

#include "store/messages.h"

namespace parvenna::store {

RecentMenu::RecentMenu() { mnuHistory.push_back(MenuEntry{messages::NoRecentProjects}); }

std::string EditorCaption(const RecentMenu& menu) {
  return messages::EditorCaptionPrefix + menu.mnuHistory.front().Caption;
}

std::string MainCaption(const RecentMenu& menu) {
  return messages::MainCaptionPrefix + menu.mnuHistory.front().Caption;
}

BackColourRgb BackColourOf(int backColor) {
  switch (backColor) {
    case 1:
      return {0, 0, 0};
    case 2:
      return {255, 255, 0};
    case 3:
      return {0, 0, 255};
    default:
      return {255, 255, 255};
  }
}

bool BackColourMenuEntry(const ProjectState& state, BackColourEntry& entry) {
  const BackColourEntry entries[] = {BackColourEntry::mnuWhite, BackColourEntry::mnuBlack,
                                     BackColourEntry::mnuYellow, BackColourEntry::mnuBlue};
  for (int number = 0; number < 4; ++number) {
    BackColourRgb rgb = BackColourOf(number);
    if (rgb.Red == state.BackRed && rgb.Green == state.BackGreen && rgb.Blue == state.BackBlue) {
      entry = entries[number];
      return true;
    }
  }
  return false;
}

bool ForeColourMenuEntry(int number, ForeColourEntry& entry) {
  const ForeColourEntry entries[] = {ForeColourEntry::mnuFWhite, ForeColourEntry::mnuFBlack,
                                     ForeColourEntry::mnuFYellow, ForeColourEntry::mnuFBlue,
                                     ForeColourEntry::mnuFOriginal};
  for (std::size_t i = 0; i < kForeColourNumbers.size(); ++i) {
    if (kForeColourNumbers[i] == number) {
      entry = entries[i];
      return true;
    }
  }
  return false;
}

}  // namespace parvenna::store
