#include "shell/main_menu.h"

#include "editor/messages.h"

namespace parvenna::shell {

MainMenu::MainMenu(editor::EditorMenus& menus) : editorMenus(menus) {
  mnuHistory[0].Caption = "No recent projects";
  for (std::size_t i = 1; i < mnuHistory.size(); ++i) mnuHistory[i].Visible = false;
  mnuWhite.Checked = true;
  mnuFOriginal.Checked = true;
  BuildTree();
}

void MainMenu::BuildTree() {
  auto entry = [](const char* name, MenuItem& item, std::vector<MenuNode> children = {}) {
    return MenuNode{name, &item, std::move(children)};
  };
  const MenuNode rule{"", nullptr, {}};
  editor::EditorMenus& e = editorMenus;

  std::vector<MenuNode> file{entry("mnuNew", mnuNew), entry("mnuOpen", mnuOpen), rule,
                             entry("mnuCADLink", mnuCADLink,
                                   {entry("mnuRelocateCAD", e.mnuRelocateCAD),
                                    entry("mnuCurrentCAD", e.mnuCurrentCAD)}),
                             rule};
  for (std::size_t i = 0; i < mnuHistory.size(); ++i) {
    file.push_back(entry("mnuHistory", mnuHistory[i]));
  }
  file.push_back(rule);
  file.push_back(entry("mnuExit", mnuExit));

  tree_ = {
      entry("mnuFile", mnuFile, std::move(file)),
      entry("mnuEdit", e.mnuEdit,
            {entry("mnuSaveParcel", e.mnuSaveParcel), entry("mnuCancelParcel", e.mnuCancelParcel),
             entry("mnuEditMode", e.mnuEditMode), entry("mnuDeleteParcel", e.mnuDeleteParcel),
             entry("mnuInsertParcel", e.mnuInsertParcel), rule,
             entry("mnuDeleteCourse", mnuDeleteCourse), entry("mnuInsertBefore", mnuInsertBefore),
             entry("mnuInsertAfter", mnuInsertAfter), entry("mnuFlipBearing", mnuFlipBearing), rule,
             entry("mnuChangeLineCurve", mnuChangeLineCurve), entry("mnuNorthing", mnuNorthing)}),
      entry("mnuView", e.mnuView,
            {entry("mnuSizePicture", e.mnuSizePicture), entry("mnuMiniWin", mnuMiniWin),
             entry("mnuRefresh", mnuRefresh), rule,
             entry("mnuBackColour", mnuBackColour,
                   {entry("mnuWhite", mnuWhite), entry("mnuBlack", mnuBlack),
                    entry("mnuYellow", mnuYellow), entry("mnuBlue", mnuBlue)}),
             entry("mnuForeColour", mnuForeColour,
                   {entry("mnuFOriginal", mnuFOriginal), entry("mnuFWhite", mnuFWhite),
                    entry("mnuFBlack", mnuFBlack), entry("mnuFYellow", mnuFYellow),
                    entry("mnuFBlue", mnuFBlue)})}),
      entry("mnuOptions", e.mnuOptions,
            {entry("mnuSetting", mnuSetting), entry("mnuVerfyCurves", mnuVerfyCurves),
             entry("mnuAutoInvert", mnuAutoInvert), entry("mnuVerfyTangent", mnuVerfyTangent),
             entry("mnuMiniWindow", mnuMiniWindow)}),
      entry("mnuReport", e.mnuReport,
            {entry("mnuFullReport", mnuFullReport), entry("mnuSumReport", mnuSumReport),
             entry("mnuPicReport", mnuPicReport), entry("mnuMapcheckReport", mnuMapcheckReport)}),
      entry("mnuWindows", mnuWindows,
            {entry("mnuNativeView", mnuNativeView), entry("mnuSplitVertical", mnuSplitVertical)}),
      entry("mnuHelpMain", mnuHelpMain,
            {entry("mnuHelp", mnuHelp),
             entry("mnuVideos", mnuVideos,
                   {entry("mnuVideoQuick", mnuVideoQuick),
                    entry("mnuVideoFullTraining", mnuVideoFullTraining),
                    entry("mnuVideoConfg", mnuVideoConfg)}),
             entry("mnuAbout", mnuAbout), entry("mnuFAQ", mnuFAQ), entry("mnuSupport", mnuSupport),
             entry("mnuComment", mnuComment), entry("mnuWebsite", mnuWebsite)}),
  };
}

namespace {
MenuItem* FindIn(std::vector<MenuNode>& nodes, const std::string& name) {
  for (MenuNode& node : nodes) {
    if (node.name == name) return node.item;
    if (MenuItem* found = FindIn(node.children, name)) return found;
  }
  return nullptr;
}
}  // namespace

MenuItem* MainMenu::Find(const std::string& name) { return FindIn(tree_, name); }

void MainMenu::mnuEdit_DropDown(const editor::EditorForm& editor) {
  const bool rowCommands = editor.RowCommandsEnabled();
  for (MenuItem* m :
       {&mnuDeleteCourse, &mnuInsertBefore, &mnuInsertAfter, &mnuFlipBearing, &mnuChangeLineCurve}) {
    m->Enabled = rowCommands;
  }
  if (rowCommands) {
    mnuChangeLineCurve.Caption = editor.frameLine[editor.CurrentRow].Visible
                                     ? editor::messages::ChangeToCurve
                                     : editor::messages::ChangeToLine;
  }
  mnuNorthing.Enabled = editor.cmdSave.Enabled;
}

void MainMenu::mnuView_DropDown(const editor::EditorForm& editor) {
  editorMenus.mnuSizePicture.Caption =
      editor.picParcel.Width == editor.Width ? "Thumbnail picture" : "Full picture";
}

void MainMenu::mnuOptions_DropDown(const store::ProjectState& state) {
  const bool open = !state.ProjectFile.empty();
  for (MenuItem* m : {&mnuSetting, &mnuVerfyCurves, &mnuAutoInvert, &mnuVerfyTangent, &mnuMiniWindow}) {
    m->Enabled = open;
  }
}

void MainMenu::ShowBackColourMenu(const store::ProjectState& state) {
  const store::BackColourRgb rgb{state.BackRed, state.BackGreen, state.BackBlue};
  const std::array<std::pair<MenuItem*, int>, 4> rows{
      {{&mnuWhite, 0}, {&mnuBlack, 1}, {&mnuYellow, 2}, {&mnuBlue, 3}}};
  MenuItem* match = nullptr;
  for (auto [item, number] : rows) {
    const store::BackColourRgb c = store::BackColourOf(number);
    if (c.Red == rgb.Red && c.Green == rgb.Green && c.Blue == rgb.Blue) match = item;
  }
  if (!match) return;  // no row of the table: the ticks stay
  for (auto [item, number] : rows) item->Checked = item == match;
}

void MainMenu::ShowForeColourMenu(int number) {
  store::ForeColourEntry entry;
  if (!store::ForeColourMenuEntry(number, entry)) return;
  mnuFWhite.Checked = entry == store::ForeColourEntry::mnuFWhite;
  mnuFBlack.Checked = entry == store::ForeColourEntry::mnuFBlack;
  mnuFYellow.Checked = entry == store::ForeColourEntry::mnuFYellow;
  mnuFBlue.Checked = entry == store::ForeColourEntry::mnuFBlue;
  mnuFOriginal.Checked = entry == store::ForeColourEntry::mnuFOriginal;
}

void MainMenu::ShowOptionTicks(const store::ProjectState& state) {
  mnuVerfyCurves.Checked = state.AddAreaCheckOn;
  mnuAutoInvert.Checked = state.AutoInvertOn;
  mnuVerfyTangent.Checked = state.TangentCheckOn;
  mnuMiniWindow.Checked = state.MinimizeDuringGrab;
}

void MainMenu::ShowHistory(const store::RecentMenu& recent) {
  for (std::size_t i = 0; i < mnuHistory.size(); ++i) {
    if (i < recent.mnuHistory.size()) {
      const store::MenuEntry& e = recent.mnuHistory[i];
      mnuHistory[i].Caption = e.Caption;
      mnuHistory[i].Enabled = e.Enabled;
      mnuHistory[i].Visible = e.Visible;
    } else {
      mnuHistory[i].Visible = false;
    }
  }
}

}  // namespace parvenna::shell
