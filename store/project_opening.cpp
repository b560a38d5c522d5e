#include "store/project_opening.h"

#include "store/messages.h"
#include "store/paths.h"
#include "store/project_file.h"

namespace parvenna::store {

namespace {

// A text column read for the state. A Null, which a file written by another
// program may hold, counts as a failed read, as does a missing column.
std::string TextOf(const Recordset& rs, std::string_view name) {
  Value value = rs.Get(name);
  if (value.IsNull()) throw StoreError(errors::InvalidUseOfNull, "Invalid use of Null");
  return value.AsText();
}

std::string Trimmed(std::string text) {
  auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  auto last = text.find_last_not_of(' ');
  return text.substr(first, last - first + 1);
}

template <class Statement>
void Ignoring(Statement&& statement) {
  try {
    statement();
  } catch (const RunError&) {
  }
}

}  // namespace

std::string ProjectOfCommandLine(const std::string& commandLine) {
  std::string path;
  for (char c : commandLine) {
    if (c != '"') path += c;
  }
  std::string trimmed = Trimmed(path);
  if (path.size() < 5 || trimmed.size() < 4) return "";
  if (UpperCase(trimmed.substr(trimmed.size() - 4)) != ".PVD") return "";
  return path;
}

bool ProjectOpener::OpenCurrent(Entrance entrance, const std::string& previous) {
  if (!CheckProjectFile(state_, prompter_)) {
    state_.ProjectFile = previous;
    return false;
  }
  state_.ReadOnlyMessage = ProjectWriteRefusal(state_.ProjectFile);
  LoadProjectSettings();
  windows_.ShowForeColourMenu(state_.ForeColourNumber);
  windows_.ShowBackColourMenu();
  windows_.EnableEditorFrames(true);
  // From the Open menu the list is refilled at the end, by the editor's own
  // state for an opened project.
  if (entrance == Entrance::History || entrance == Entrance::CommandLine) windows_.ShowParcels();
  OpenDrawing();
  windows_.ShowDrawingPath(state_.DrawingFile);
  windows_.ClearEditingFlag();
  // Only a project that has opened goes to the top of the recent list.
  store_.RecordRecentProject(state_.ProjectFile, prompter_);
  if (!state_.ReadOnlyMessage.empty()) Inform(prompter_, state_.ReadOnlyMessage);
  if (!LoadRecentAndCaptions()) {
    // The words claim more than happened: the project is loaded and stays so.
    Inform(prompter_, entrance == Entrance::Open ? messages::OpenRecentFailed
                                                 : messages::HistoryRecentFailed);
  }
  return true;
}

bool ProjectOpener::LoadRecentAndCaptions() {
  if (!store_.LoadRecentProjects(state_, menu_)) return false;
  windows_.SetCaptions(EditorCaption(menu_), MainCaption(menu_));
  return true;
}

void ProjectOpener::OpenDrawing() { windows_.SetCurrentCadEnabled(!windows_.OpenDrawing()); }

void ProjectOpener::mnuOpen_Click() {
  if (windows_.SaveEnabled()) {
    Inform(prompter_, messages::SaveBeforeNew);
    return;
  }
  windows_.SetEditorTopmost(false);
  try {
    std::optional<std::string> chosen =
        windows_.ShowOpen(FileDialogRequest{messages::ProjectFilter, 1, 4, false});
    if (!chosen) {
      windows_.SetEditorTopmost(true);
      return;
    }
    std::string previous = state_.ProjectFile;
    state_.ProjectFile = *chosen;
    if (FileExists(*chosen) && !chosen->empty() && CheckProjectFile(state_, prompter_)) {
      OpenCurrent(Entrance::Open, previous);
      windows_.SetCaptions(EditorCaption(menu_), MainCaption(menu_));
      windows_.ShowDrawingPath(state_.DrawingFile);
      windows_.ShowOpenedProject();
    } else {
      state_.ProjectFile = previous;
      windows_.SetEditorTopmost(true);
    }
  } catch (const std::exception&) {
    windows_.SetEditorTopmost(true);
  }
}

void ProjectOpener::mnuHistory_Click(int index) {
  if (windows_.SaveEnabled()) {
    Inform(prompter_, messages::SaveBeforeAnother);
    return;
  }
  if (index < 0 || index >= kRecentCount) return;
  std::string previous = state_.ProjectFile;
  state_.ProjectFile = state_.RecentProjects[static_cast<std::size_t>(index)];
  if (CheckProjectFile(state_, prompter_)) {
    OpenCurrent(Entrance::History, previous);
  } else {
    state_.ProjectFile = previous;
  }
}

void ProjectOpener::OpenFromCommandLine(const std::string& commandLine) {
  std::string path = ProjectOfCommandLine(commandLine);
  if (path.empty()) return;
  // The path stays in ProjectFile even when it cannot be opened.
  state_.ProjectFile = path;
  if (FileExists(path) && CheckProjectFile(state_, prompter_)) {
    OpenCurrent(Entrance::CommandLine, path);
  }
}

void ProjectOpener::OpenCreated() {
  state_.ReadOnlyMessage.clear();  // a project just made takes parcels
  windows_.ShowEditor();
  LoadProjectSettings();
  windows_.ShowForeColourMenu(state_.ForeColourNumber);
  windows_.ShowBackColourMenu();
  windows_.EnableEditorFrames(true);
  OpenDrawing();
  windows_.ShowDrawingPath(state_.DrawingFile);
}

void ProjectOpener::FinishCreated() {
  if (!LoadRecentAndCaptions()) Inform(prompter_, messages::CreatedRecentFailed);
  windows_.RefreshParcelList();
}

bool ProjectOpener::ReadSettingsRow() {
  Database db;
  Recordset rs;
  try {
    db = Database::Open(NativePath(state_.ProjectFile));
    rs = db.OpenRecordset("tblSetting");
    rs.MoveFirst();
    state_.ArcOrder.Arc = rs.Get("txtArc").AsInteger();
    state_.ArcOrder.Radius = rs.Get("txtRadius").AsInteger();
    state_.ArcOrder.Chord = rs.Get("txtChord").AsInteger();
    state_.ArcOrder.Bearing = rs.Get("txtBearing").AsInteger();

    state_.DrawingFile = ResolveDrawingPath(TextOf(rs, "AutoCADFile"), state_.AppDirectory);
    if (!FileExists(state_.DrawingFile)) {
      Inform(prompter_, messages::CantOpenDrawingStart + state_.DrawingFile +
                            messages::CantOpenDrawingEnd);
      state_.DrawingFile = DefaultDrawingPath(state_.AppDirectory);
    }

    state_.ClosureToleranceValue = rs.Get("ClosureTolerance").AsDouble();
    state_.UnitIsFeet = rs.Get("unitfeet").AsBool();
    state_.SquareX = rs.Get("SquareX").AsBool();
    state_.MinimizeDuringGrab = rs.Get("Minimize").AsBool();
    state_.ErrDecimals = rs.Get("ErrDecimal").AsInteger();
    state_.AddAreaCheckOn = rs.Get("AddAreaCheck").AsBool();
    state_.AutoInvertOn = rs.Get("AutoInvert").AsBool();
    state_.TangentCheckOn = rs.Get("TangentCheck").AsBool();

    state_.WarningRange = DegreesOf(rs.Get("WarningRanged").AsDouble(), rs.Get("WarningRangem").AsDouble(),
                                    rs.Get("WarningRanges").AsDouble());
    state_.TangentTolerance =
        DegreesOf(rs.Get("TangentToleranced").AsDouble(), rs.Get("TangentTolerancem").AsDouble(),
                  rs.Get("TangentTolerances").AsDouble());
    state_.ToolTipsOn = rs.Get("ToolTipOn").AsBool();
  } catch (const RunError&) {
    return false;
  }

  // The columns that older versions lack: their presets stand wherever a
  // read fails, so such a project opens with bearings, "%%D" and the
  // standard colours.
  state_.BearingMode = true;
  state_.DegreeSymbolText = "%%D";
  state_.BackRed = state_.BackGreen = state_.BackBlue = 255;
  state_.ForeColourNumber = 256;
  Ignoring([&] { state_.BearingMode = rs.Get("Bearing").AsBool(); });
  Ignoring([&] { state_.DegreeSymbolText = Trimmed(TextOf(rs, "DegreeSymbol")); });
  Ignoring([&] {
    BackColourRgb rgb = BackColourOf(rs.Get("BackColor").AsInteger());
    state_.BackRed = rgb.Red;
    state_.BackGreen = rgb.Green;
    state_.BackBlue = rgb.Blue;
  });
  Ignoring([&] { state_.ForeColourNumber = rs.Get("ForeColor").AsInteger(); });

  try {
    for (std::size_t v = 0; v < kViewCount; ++v) {
      std::string n = std::to_string(v + 1);
      state_.ViewZoom[v] = rs.Get("ZoomFactor" + n).AsDouble();
      state_.ViewBLX[v] = rs.Get("BLX" + n).AsDouble();
      state_.ViewBLY[v] = rs.Get("BLY" + n).AsDouble();
      state_.ViewTRX[v] = rs.Get("TRX" + n).AsDouble();
      state_.ViewTRY[v] = rs.Get("TRY" + n).AsDouble();
    }
  } catch (const RunError&) {
    state_.ViewZoom = state_.ViewBLX = state_.ViewBLY = state_.ViewTRX = state_.ViewTRY = {};
  }
  return true;
}

void ProjectOpener::LoadProjectSettings() {
  if (!ReadSettingsRow()) return;
  windows_.ShowBackColourMenu();
  windows_.SettingsLoaded();
}

void ProjectOpener::mnuRelocateCAD_Click() {
  windows_.SetEditorTopmost(false);
  std::optional<std::string> chosen =
      windows_.ShowOpen(FileDialogRequest{messages::DrawingFilter, 1, 4, false});
  std::string previous = state_.DrawingFile;
  if (!chosen || chosen->empty() || !FileExists(*chosen)) {
    windows_.SetEditorTopmost(true);
    return;
  }
  state_.DrawingFile = *chosen;
  if (!SaveProjectSetting(state_, prompter_, project_columns::AutoCADFile, state_.DrawingFile)) {
    Inform(prompter_, messages::RelocateFailed);
    state_.DrawingFile = previous;
    windows_.SetEditorTopmost(true);
    return;
  }
  windows_.ShowDrawingPath(state_.DrawingFile);
  LoadProjectSettings();
  windows_.ShowForeColourMenu(state_.ForeColourNumber);
  windows_.ShowBackColourMenu();
  // The saved windows belong to the old drawing.
  if (state_.DrawingFile != previous) {
    state_.ViewZoom = state_.ViewBLX = state_.ViewBLY = state_.ViewTRX = state_.ViewTRY = {};
  }
  OpenDrawing();
  windows_.SetEditorTopmost(true);
}

void ProjectOpener::mnuCurrentCAD_Click() { OpenDrawing(); }

}  // namespace parvenna::store
