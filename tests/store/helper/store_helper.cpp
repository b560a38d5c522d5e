// A second process for the store's and the editor's tests.
//   store_test_helper hold APPDIR      holds the system store until stdin closes
//   store_test_helper open APPDIR      tries to hold it; prints what it was told
//   store_test_helper write PROJECT N  writes a parcel of N courses, a line per committed row
//   store_test_helper save PROJECT same|rename|insert
//       the editor's own save of a parcel of 30 courses over the first stored
//       parcel (under its name or a new one) or as a new parcel "Lot 2".
//       With PARVENNA_KILL_AT=k in the environment the process kills itself
//       right after the k-th write, sync or removal of a file during the save;
//       without it, it prints "writes N", the number of those calls.
#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

#include "editor/editor_form.h"
#include "store/project_opening.h"
#include "store/store.h"
#include "store/system_store.h"

namespace {

// The writes of the save, counted where SQLite reaches the kernel: this
// program's own pwrite64, fdatasync and unlink stand in front of the C
// library's, and each call, once done, may be the last of the process.
bool armed = false;
long calls = 0;
long killAt = 0;

template <class Result>
Result Counted(Result result) {
  if (!armed) return result;
  ++calls;
  if (killAt > 0 && calls == killAt) raise(SIGKILL);
  return result;
}

}  // namespace

extern "C" ssize_t pwrite64(int fd, const void* buffer, size_t count, off64_t offset) {
  return Counted(static_cast<ssize_t>(syscall(SYS_pwrite64, fd, buffer, count, offset)));
}

extern "C" int fdatasync(int fd) { return Counted(static_cast<int>(syscall(SYS_fdatasync, fd))); }

extern "C" int unlink(const char* path) {
  return Counted(static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, 0)));
}

namespace {

class PrintingPrompter : public parvenna::Prompter {
 public:
  parvenna::MsgAnswer MsgBox(const parvenna::Message& message) override {
    std::cout << "box: " << message.Prompt << std::endl;
    return message.Buttons == parvenna::MsgButtons::OK ? parvenna::MsgAnswer::OK
                                                       : parvenna::MsgAnswer::Yes;
  }
};

class NoCanvas : public parvenna::Canvas {
 public:
  double Width() const override { return 4995; }
  double Height() const override { return 4995; }
  void SetSize(double, double) override {}
  void Cls() override {}
  void Line(double, double, double, double, parvenna::Rgb) override {}
  void Box(double, double, double, double, parvenna::Rgb) override {}
  void Circle(double, double, double, parvenna::Rgb, double, double) override {}
};

class NoHost : public parvenna::editor::EditorHost {
 public:
  void BringUpDrawing() override {}
  void MinimizeEditor() override {}
  void ShowRowMenu(int) override {}
};

int Hold(const std::string& appDirectory, bool wait) {
  PrintingPrompter prompter;
  parvenna::store::SystemStore store(appDirectory);
  if (!store.Open(prompter)) return 3;
  std::cout << "held" << std::endl;
  if (wait) {
    std::string line;
    while (std::getline(std::cin, line)) {
    }
  }
  return 0;
}

int WriteParcel(const std::string& project, int courses) {
  using namespace parvenna::store;
  Database db = Database::Open(project);
  Recordset parcels = db.OpenRecordset("tblParcel");
  parcels.AddNew();
  parcels.Set("Parcel", "Killed lot");
  parcels.Set("Closure", 0.0);
  parcels.Update();
  parcels.Bookmark(parcels.LastModified());
  std::int32_t id = parcels.Get("ParcelID").AsLong();
  std::cout << "parcel " << id << std::endl;
  Recordset rows = db.OpenRecordset("tblMeasurements");
  for (int i = 0; i < courses; ++i) {
    rows.AddNew();
    rows.Set("parcelID", id);
    rows.Set("RowNo", i);
    rows.Set("RowType", 1);
    rows.Set("Length", 100.0 + i);
    rows.Set("Direction", "N12\u00B030'15\"E");
    rows.Update();
    std::cout << "row " << i << std::endl;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return 0;
}

// The new parcel of every save: 30 courses of 20 feet.
constexpr int kNewCourses = 30;

int SaveParcel(const std::string& project, const std::string& scenario) {
  using namespace parvenna;
  PrintingPrompter prompter;
  NoCanvas canvas;
  NoHost host;
  store::ProjectState state;
  state.ProjectFile = project;
  store::SystemStore noStore("");
  store::RecentMenu menu;
  store::NoProjectWindows windows;
  store::ProjectOpener(state, prompter, noStore, menu, windows).LoadProjectSettings();
  editor::EditorForm form(state, prompter, canvas, host);
  form.EnableEditorFrames(true);
  form.Show_Parcels();
  if (scenario == "insert") {
    form.cmdInsert_Click();
    form.txtParcel.Text = "Lot 2";
  } else {
    form.cmdEdit_Click();
    if (scenario == "rename") form.txtParcel.Text = "Lot 1 renamed";
  }
  for (int i = 0; i < kNewCourses; ++i) {
    form.SetFieldText(i, CourseField::BearingLine, "N" + std::to_string(i) + "\u00B00'0\"E");
    form.SetFieldText(i, CourseField::DistanceLine, "20");
  }
  if (const char* at = std::getenv("PARVENNA_KILL_AT")) killAt = std::atol(at);
  armed = true;
  const bool saved = form.cmdSave_Click();
  armed = false;
  std::cout << (saved ? "saved" : "not saved") << std::endl;
  if (killAt == 0) std::cout << "writes " << calls << std::endl;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  std::string mode = argv[1];
  try {
    if (mode == "hold") return Hold(argv[2], true);
    if (mode == "open") return Hold(argv[2], false);
    if (mode == "write" && argc >= 4) return WriteParcel(argv[2], std::stoi(argv[3]));
    if (mode == "save" && argc >= 4) return SaveParcel(argv[2], argv[3]);
  } catch (const std::exception& e) {
    std::cout << "error: " << e.what() << std::endl;
    return 1;
  }
  return 2;
}
