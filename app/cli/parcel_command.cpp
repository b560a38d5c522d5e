#include "app/cli/parcel_command.h"

#include <filesystem>
#include <fstream>
#include <iostream>

#include "app/cli/parcel_csv.h"
#include "app/cli/project_access.h"
#include "editor/editor_form.h"
#include "reports/recorded_picture.h"
#include "store/places.h"
#include "store/project_file.h"
#include "store/project_opening.h"
#include "store/system_store.h"

namespace parvenna::cli {
namespace {

namespace fs = std::filesystem;

struct UsageError {
  std::string what;
};

struct ParcelOptions {
  std::string action;
  std::string project;
  std::string name;
  std::string file;
  bool answerNo = false;
};

ParcelOptions Parse(const std::vector<std::string>& args) {
  ParcelOptions o;
  std::vector<std::string> words;
  for (const std::string& a : args) {
    if (a == "--no") o.answerNo = true;
    else if (a.size() > 1 && a[0] == '-' && a != "-") throw UsageError{"unknown option " + a};
    else words.push_back(a);
  }
  if (words.empty()) throw UsageError{"no action named"};
  o.action = words[0];
  const std::size_t wanted = o.action == "list" ? 2 : o.action == "add" ? 4 : 3;
  if (o.action != "list" && o.action != "show" && o.action != "add" && o.action != "delete") {
    throw UsageError{"unknown action \"" + o.action + "\""};
  }
  if (words.size() != wanted) {
    throw UsageError{o.action + " takes " + std::to_string(wanted - 1) + " arguments, not " +
                     std::to_string(words.size() - 1)};
  }
  if (o.answerNo && o.action != "add") throw UsageError{"--no is for add"};
  o.project = words[1];
  if (wanted > 2) o.name = words[2];
  if (wanted > 3) o.file = words[3];
  return o;
}

// The rows of the editor from row 0 up to the last course that holds
// anything, as courses.
std::vector<Course> CoursesOnShow(const editor::EditorForm& form) {
  std::vector<Course> courses;
  std::size_t held = 0;
  for (int row = 0; row < CourseLimit && form.IsOpen(row); ++row) {
    Course c;
    c.Kind = form.Kind(row);
    for (CourseField f : {CourseField::BearingLine, CourseField::DistanceLine, CourseField::BearingArc,
                          CourseField::Arc, CourseField::Radius, CourseField::Chord}) {
      c.Field(f) = form.Text(row, f);
      if (!c.Field(f).empty()) held = static_cast<std::size_t>(row) + 1;
    }
    c.SignPlus = form.Sign(row, SignBox::Plus);
    c.SignMinus = form.Sign(row, SignBox::Minus);
    courses.push_back(c);
  }
  courses.resize(held);
  return courses;
}

std::string Unpadded(const std::string& name) {
  const std::size_t first = name.find_first_not_of(' ');
  return first == std::string::npos ? "" : name.substr(first);
}

// The project opened for a command as the program opens it: checked, its
// settings read, and for a change whether it takes one.
class OpenProject {
 public:
  OpenProject(const std::string& project, const std::string& appDirectory, std::ostream& err,
              MsgAnswer answer)
      : prompter(err, answer) {
    state.AppDirectory = appDirectory.empty() ? store::ProgramDirectory() : appDirectory;
    std::error_code ec;
    state.ProjectFile = fs::absolute(project, ec).string();
  }

  bool Open(bool forChange) {
    if (!store::CheckProjectFile(state, prompter)) return false;
    store::SystemStore systemStore(state.AppDirectory);
    store::RecentMenu menu;
    store::NoProjectWindows windows;
    store::ProjectOpener(state, prompter, systemStore, menu, windows).LoadProjectSettings();
    if (forChange) state.ReadOnlyMessage = store::ProjectWriteRefusal(state.ProjectFile);
    form.EnableEditorFrames(true);
    form.Parcel_Bound();
    return true;
  }

  StreamPrompter prompter;
  store::ProjectState state;
  reports::RecordedPicture sketch;
  NoEditorHost host;
  editor::EditorForm form{state, prompter, sketch, host};
};

int List(OpenProject& p, std::ostream& out) {
  editor::EditorForm& form = p.form;
  out << "name\tcourses\tclosure\tprecision\tarea\n";
  for (int i = 0; i < form.cbxParcel.ListCount(); ++i) {
    form.SetListIndex(i);
    const ResultPanel& r = form.results;
    out << Unpadded(form.cbxParcel.List[static_cast<std::size_t>(i)]) << '\t';
    if (form.ParcelOnShow()) {
      out << form.parcel.LastCourse + 1 << '\t' << r.lblClosure.Caption << '\t'
          << r.lblPrecision.Caption << '\t' << r.lblArea.Caption << '\n';
    } else {
      out << "0\t\t\t\n";  // a parcel that could not be shown; the box said why
    }
  }
  return 0;
}

int Select(OpenProject& p, const ParcelOptions& o, std::ostream& err) {
  const int index = IndexOfParcel(p.form.cbxParcel, o.name);
  if (index < 0) err << "parvenna-cli: no parcel named \"" << o.name << "\" in " << o.project << "\n";
  return index;
}

int Show(OpenProject& p, const ParcelOptions& o, std::ostream& out, std::ostream& err) {
  const int index = Select(p, o, err);
  if (index < 0) return 1;
  p.form.SetListIndex(index);
  if (!p.form.ParcelOnShow()) return 1;
  WriteParcelCsv(out, CoursesOnShow(p.form));
  return 0;
}

int Add(OpenProject& p, const ParcelOptions& o, std::istream& in, std::ostream& err) {
  std::vector<Course> courses;
  try {
    if (o.file == "-") {
      courses = ReadParcelCourses(in);
    } else {
      std::ifstream file(o.file, std::ios::binary);
      if (!file) {
        err << "parvenna-cli: cannot open the parcel file " << o.file << "\n";
        return 2;
      }
      courses = ReadParcelCourses(file);
    }
  } catch (const ParcelCsvError& e) {
    err << (o.file == "-" ? std::string("standard input") : o.file) << ": " << e.what() << "\n";
    return 2;
  }
  editor::EditorForm& form = p.form;
  form.cmdInsert_Click();
  // The rows fill as a loaded parcel's do, and compute once.
  form.parcel.CalcEnabled = false;
  form.FillRows(courses);
  form.parcel.CalcEnabled = true;
  form.txtParcel.Text = o.name;
  form.CalculateAndDraw();
  return form.cmdSave_Click() ? 0 : 1;
}

int Delete(OpenProject& p, const ParcelOptions& o, std::ostream& err) {
  const int index = Select(p, o, err);
  if (index < 0) return 1;
  // Chosen without being loaded: a parcel that cannot be shown can be deleted.
  p.form.cbxParcel.ListIndex = index;
  p.form.cbxParcel.Text = p.form.cbxParcel.List[static_cast<std::size_t>(index)];
  return p.form.Delete_Parcel() ? 0 : 1;
}

}  // namespace

int RunParcel(const std::vector<std::string>& args, std::istream& in, std::ostream& out,
              std::ostream& err, const std::string& appDirectory) {
  ParcelOptions o;
  try {
    o = Parse(args);
  } catch (const UsageError& e) {
    err << "parvenna-cli parcel: " << e.what << "\n" << kParcelUsage;
    return 2;
  }
  std::error_code ec;
  if (!fs::is_regular_file(o.project, ec)) {
    err << "parvenna-cli: no project file " << o.project << "\n";
    return 2;
  }
  try {
    OpenProject p(o.project, appDirectory, err, o.answerNo ? MsgAnswer::No : MsgAnswer::Yes);
    const bool change = o.action == "add" || o.action == "delete";
    if (!p.Open(change)) return 1;
    if (o.action == "list") return List(p, out);
    if (o.action == "show") return Show(p, o, out, err);
    if (o.action == "add") return Add(p, o, in, err);
    return Delete(p, o, err);
  } catch (const RunError& e) {
    err << "parvenna-cli: Unkown Error Number " << e.Code() << " has occured. (" << e.what() << ")\n";
    return 1;
  }
}

}  // namespace parvenna::cli
