#include "store/system_store.h"

#include <ctime>

#include "store/messages.h"
#include "store/paths.h"

namespace parvenna::store {

namespace {

// The first n characters (code points) of a UTF-8 text.
std::string FirstCharacters(const std::string& text, std::size_t n) {
  std::size_t end = 0;
  std::size_t count = 0;
  while (end < text.size()) {
    if ((static_cast<unsigned char>(text[end]) & 0xC0) != 0x80) {
      if (count == n) break;
      ++count;
    }
    ++end;
  }
  return text.substr(0, end);
}

// The drive, an ellipsis and the file: enough to tell the projects apart
// without a menu as wide as the screen.
std::string ShortCaption(const std::string& location, const std::string& name) {
  return FirstCharacters(location, 2) + kSeparator + messages::RecentEllipsis + kSeparator + name;
}

// A store made before paths of any length were kept holds the recent
// projects' names and locations to 255 characters. The table is made again
// without the limit, its rows and numbering kept; a store that cannot be
// changed keeps its table as it is.
void WidenRecentTable(Database& db) {
  bool limited = false;
  for (const FieldInfo& field : db.Fields("tblRecentProject")) {
    if (field.Type == FieldType::Text && field.Size > 0) limited = true;
  }
  if (!limited) return;
  try {
    Transaction transaction(db);
    db.ExecuteScript(
        "CREATE TABLE \"tblRecentProject wide\" (\"AccessID\" INTEGER PRIMARY KEY AUTOINCREMENT, "
        "\"AccessDate\" DATETIME, \"ProjectName\" TEXT, \"ProjectLocation\" TEXT);"
        "INSERT INTO \"tblRecentProject wide\" SELECT AccessID, AccessDate, ProjectName, "
        "ProjectLocation FROM tblRecentProject;"
        "DROP TABLE tblRecentProject;"
        "ALTER TABLE \"tblRecentProject wide\" RENAME TO tblRecentProject;");
    transaction.Commit();
  } catch (const RunError&) {
  }
}

}  // namespace

std::string NowText() {
  std::time_t now = std::time(nullptr);
  std::tm local{};
#ifdef _WIN32
  localtime_s(&local, &now);
#else
  localtime_r(&now, &local);
#endif
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
  return text;
}

SystemStore::SystemStore(std::string appDirectory)
    : appDirectory_(std::move(appDirectory)), path_(SystemStorePath(appDirectory_)) {}

Database SystemStore::OpenBriefly() const { return Database::Open(NativePath(path_)); }

bool SystemStore::Open(Prompter& prompter) {
  try {
    Database db = Database::Open(NativePath(path_), OpenMode::Exclusive);
    // A file that opens but lacks the store's tables is as good as missing.
    db.Fields("tblSetting");
    WidenRecentTable(db);
    held_ = std::move(db);
    return true;
  } catch (const StoreError& e) {
    Inform(prompter,
           e.Code() == errors::ExclusiveRefused ? messages::AlreadyRunning : messages::StoreMissing,
           MsgIcon::Critical);
    return false;
  }
}

bool SystemStore::ReadAutoName(Prompter& prompter) const {
  try {
    Database db = OpenBriefly();
    Recordset rs = db.OpenRecordset("tblSetting");
    return rs.Get("AutoName").AsBool();
  } catch (const RunError&) {
    Inform(prompter, messages::GeneralError);
    return false;
  }
}

void SystemStore::SaveAutoName(bool value, Prompter& prompter) const {
  try {
    Database db = OpenBriefly();
    Recordset rs = db.OpenRecordset("tblSetting");
    rs.Edit();
    rs.Set("AutoName", value);
    rs.Update();
  } catch (const RunError&) {
    Inform(prompter, messages::GeneralError);
  }
}

static void WriteDefaultAt(const SystemStore& store, int position, bool value, Prompter& prompter) {
  try {
    Database db = store.OpenBriefly();
    Recordset rs = db.OpenRecordset("SELECT * FROM tblSetting");
    rs.MoveFirst();
    rs.Edit();
    rs.Set(position, value);
    rs.Update();
  } catch (const RunError&) {
    Inform(prompter, messages::DefaultNotChanged, MsgIcon::Exclamation, messages::WarningTitle);
  }
}

void SystemStore::WriteDefaultBearing(bool value, Prompter& prompter) const {
  WriteDefaultAt(*this, system_columns::Bearing, value, prompter);
}

void SystemStore::WriteDefaultUnit(bool metric, Prompter& prompter) const {
  WriteDefaultAt(*this, system_columns::unitfeet, !metric, prompter);
}

bool SystemStore::ReadFirstRun(Prompter& prompter) const {
  try {
    Database db = OpenBriefly();
    Recordset rs = db.OpenRecordset("tblSetting");
    rs.MoveFirst();
    bool firstRun = rs.Get("FirstRun").AsBool();
    if (firstRun) {
      rs.Edit();
      rs.Set("FirstRun", false);
      rs.Update();
    }
    return firstRun;
  } catch (const RunError&) {
    Inform(prompter, messages::OpenSystemDbError);
    return false;
  }
}

void SystemStore::RewriteRelativeRecent() const {
  try {
    Database db = OpenBriefly();
    Recordset rs = db.OpenRecordset("tblRecentProject");
    for (; !rs.Eof(); rs.MoveNext()) {
      std::string location = rs.Get("ProjectLocation").AsText();
      if (location.size() == 2 && IsRelativePath(location)) {
        rs.Edit();
        rs.Set("ProjectLocation", WithSeparator(appDirectory_));
        rs.Update();
      }
    }
  } catch (const RunError&) {
    // Ignored: the sample entry then keeps its relative location.
  }
}

bool SystemStore::RecordRecentProject(const std::string& path, Prompter& prompter) const {
  std::string name = FileNameOfPath(path);
  std::string location = path.substr(0, path.size() - name.size());
  try {
    Database db = OpenBriefly();
    Recordset rs = db.OpenRecordset("tblRecentProject");
    // Every older entry of the project goes, whatever the case of its path.
    for (; !rs.Eof(); rs.MoveNext()) {
      if (UpperCase(rs.Get("ProjectName").AsText()) == UpperCase(name) &&
          UpperCase(rs.Get("ProjectLocation").AsText()) == UpperCase(location)) {
        rs.Delete();
      }
    }
    rs.AddNew();
    rs.Set("AccessDate", NowText());
    rs.Set("ProjectName", name);
    rs.Set("ProjectLocation", location);
    rs.Update();
  } catch (const RunError&) {
    Inform(prompter, messages::RecentUpdateError);
  }
  return true;
}

void SystemStore::AddRecentProject(const std::string& projectName,
                                   const std::string& location) const {
  Database db = OpenBriefly();
  Recordset rs = db.OpenRecordset("tblRecentProject");
  rs.AddNew();
  rs.Set("ProjectName", projectName);
  rs.Set("ProjectLocation", location);
  rs.Set("AccessDate", NowText());
  rs.Update();
  long excess = rs.RecordCount() - kRecentCount;
  for (long k = 0; k < excess; ++k) {
    rs.MoveFirst();
    rs.Delete();
  }
}

bool SystemStore::FillMenu(Recordset& rs, ProjectState& state, RecentMenu& menu) const {
  rs.MoveFirst();
  auto fill = [&](std::size_t i) {
    std::string location = rs.Get("ProjectLocation").AsText();
    std::string name = rs.Get("ProjectName").AsText();
    menu.mnuHistory[i].Caption = ShortCaption(location, name);
    state.RecentProjects[i] = location + name;
    menu.mnuHistory[i].Enabled = true;
    rs.MoveNext();
  };
  // The entries there already are filled whatever the table holds: a table
  // with fewer rows than entries fails here, as an empty one does.
  std::size_t highest = menu.mnuHistory.size() - 1;
  for (std::size_t i = 0; i <= highest; ++i) fill(i);
  for (std::size_t i = highest + 1; i < kRecentCount && !rs.Eof(); ++i) {
    menu.mnuHistory.push_back(MenuEntry{});
    fill(i);
  }
  return true;
}

bool SystemStore::LoadRecentProjects(ProjectState& state, RecentMenu& menu) const {
  try {
    Database db = OpenBriefly();
    Recordset rs = db.OpenRecordset("SELECT * FROM tblRecentProject ORDER BY AccessID DESC");
    return FillMenu(rs, state, menu);
  } catch (const RunError&) {
    return false;
  }
}

bool SystemStore::FillRecentMenuAtStart(ProjectState& state, RecentMenu& menu) const {
  try {
    Database db = OpenBriefly();
    Recordset rs = db.OpenRecordset("SELECT * FROM tblRecentProject ORDER BY AccessID DESC");
    if (rs.Eof()) {
      menu.mnuHistory.front().Caption = messages::NoRecentProjects;
      menu.mnuHistory.front().Enabled = false;
      return false;
    }
    for (; !rs.Eof(); rs.MoveNext()) {
      std::string location = rs.Get("ProjectLocation").AsText();
      if (location.size() == 2 && IsRelativePath(location)) {
        rs.Edit();
        rs.Set("ProjectLocation", WithSeparator(appDirectory_));
        rs.Update();
      }
    }
    return FillMenu(rs, state, menu);
  } catch (const RunError&) {
    return false;
  }
}

std::string SystemStore::ReadCredits() {
  std::string text;
  try {
    Database brief;
    if (!held_.IsOpen()) brief = OpenBriefly();
    Database& source = held_.IsOpen() ? held_ : brief;
    Recordset contributions = source.OpenRecordset("SELECT DISTINCT Contribution FROM tblCredits");
    for (; !contributions.Eof(); contributions.MoveNext()) {
      std::string contribution = contributions.Get(0).AsText();
      text += "\n" + contribution + "\n";
      try {
        // The contribution goes into the query as it stands: one holding an
        // apostrophe finds no names, and the credits go on without them.
        Recordset names = source.OpenRecordset(
            "SELECT Name from tblCredits WHERE Contribution = '" + contribution + "'");
        for (; !names.Eof(); names.MoveNext()) text += names.Get("Name").AsText() + "\n";
      } catch (const RunError&) {
      }
    }
  } catch (const RunError&) {
  }
  return text;
}

}  // namespace parvenna::store
