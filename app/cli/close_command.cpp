#include "app/cli/close_command.h"

#include <charconv>
#include <fstream>
#include <iostream>
#include <optional>

#include "app/cli/parcel_csv.h"
#include "app/cli/svg_canvas.h"
#include "geometry/auto_inverse.h"
#include "geometry/closure.h"
#include "geometry/numbers.h"
#include "geometry/validation.h"
#include "platform/prompter.h"

namespace parvenna::cli {
namespace {

struct UsageError {
  std::string what;
};

struct CloseOptions {
  std::string file;
  GeometrySettings settings;
  bool autoInvert = false;
  bool check = false;
  bool json = false;
  std::string sketchFile;
  double sketchWidth = 4320;  // three inches square
  double sketchHeight = 4320;
};

double ParseNumber(const std::string& option, const std::string& text) {
  try {
    const double value = TextToDouble(text);
    if (value < 0) throw UsageError{option + " must not be negative"};
    return value;
  } catch (const RunError&) {
    throw UsageError{option + " expects a number, not \"" + text + "\""};
  }
}

std::vector<double> ParseList(const std::string& option, const std::string& text,
                              std::size_t count) {
  std::vector<double> values;
  std::size_t start = 0;
  while (true) {
    const std::size_t comma = text.find(',', start);
    values.push_back(ParseNumber(option, text.substr(start, comma - start)));
    if (comma == std::string::npos) break;
    start = comma + 1;
  }
  if (values.size() != count) {
    throw UsageError{option + " expects " + std::to_string(count) + " numbers separated by commas"};
  }
  return values;
}

CloseOptions ParseOptions(const std::vector<std::string>& args) {
  CloseOptions o;
  o.settings.TangentTolerance = DegreesOf(0, 0, 30);
  o.settings.WarningRange = DegreesOf(10, 0, 0);
  auto value = [&](std::size_t& i) -> const std::string& {
    if (i + 1 >= args.size()) throw UsageError{args[i] + " needs a value"};
    return args[++i];
  };
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--azimuth") o.settings.notation.BearingMode = false;
    else if (a == "--decimals") {
      const std::string& text = value(i);
      int n = -1;
      auto r = std::from_chars(text.data(), text.data() + text.size(), n);
      if (r.ec != std::errc() || r.ptr != text.data() + text.size() || n < 0 || n > 15) {
        throw UsageError{"--decimals expects a whole number from 0 to 15, not \"" + text + "\""};
      }
      o.settings.ErrDecimal = n;
    } else if (a == "--tolerance") o.settings.ClosureTolerance = ParseNumber(a, value(i));
    else if (a == "--degree-symbol") o.settings.notation.DegreeSymbolText = value(i);
    else if (a == "--tangent-tolerance" || a == "--warning-range") {
      auto dms = ParseList(a, value(i), 3);
      (a == "--tangent-tolerance" ? o.settings.TangentTolerance : o.settings.WarningRange) =
          DegreesOf(dms[0], dms[1], dms[2]);
    } else if (a == "--auto-invert") o.autoInvert = true;
    else if (a == "--check") o.check = true;
    else if (a == "--json") o.json = true;
    else if (a == "--sketch") o.sketchFile = value(i);
    else if (a == "--sketch-size") {
      auto size = ParseList(a, value(i), 2);
      if (size[0] < 400 || size[1] < 400) throw UsageError{"--sketch-size is in twips, at least 400"};
      o.sketchWidth = size[0];
      o.sketchHeight = size[1];
    } else if (a.size() > 1 && a[0] == '-' && a != "-") throw UsageError{"unknown option " + a};
    else if (o.file.empty()) o.file = a;
    else throw UsageError{"only one parcel file, found also \"" + a + "\""};
  }
  if (o.file.empty()) throw UsageError{"no parcel file given"};
  return o;
}

// Shows every box on the console and answers each question with Yes.
class ConsolePrompter : public Prompter {
 public:
  explicit ConsolePrompter(std::ostream& out) : out_(out) {}
  MsgAnswer MsgBox(const Message& m) override {
    if (m.Buttons == MsgButtons::OK) {
      out_ << "message: " << m.Prompt << '\n';
      return MsgAnswer::OK;
    }
    out_ << "question: " << m.Prompt << " -> Yes\n";
    return MsgAnswer::Yes;
  }

 private:
  std::ostream& out_;
};

std::string JsonNumber(double v) {
  char buffer[32];
  auto r = std::to_chars(buffer, buffer + sizeof buffer, v);
  return std::string(buffer, r.ptr);
}

std::string JsonString(const std::string& s) {
  std::string out = "\"";
  for (char c : s) {
    if (c == '"' || c == '\\') out += '\\';
    if (static_cast<unsigned char>(c) < 0x20) {
      char buffer[8];
      std::snprintf(buffer, sizeof buffer, "\\u%04x", c);
      out += buffer;
      continue;
    }
    out += c;
  }
  return out + "\"";
}

std::string ColourName(Rgb c) {
  if (c == colours::Red) return "red";
  if (c == colours::Green) return "green";
  return "black";
}

void PrintJson(std::ostream& out, const ParcelState& st, const ResultPanel& panel) {
  out << "{\n"
      << "  \"LastCourse\": " << st.LastCourse << ",\n"
      << "  \"Perimeter\": " << JsonNumber(st.Perimeter) << ",\n"
      << "  \"Area\": " << JsonNumber(st.Area) << ",\n"
      << "  \"AreaGood\": " << (st.AreaGood ? "true" : "false") << ",\n"
      << "  \"Closure\": " << JsonNumber(st.Closure) << ",\n"
      << "  \"ClosureBearing\": " << JsonString(st.ClosureBearing) << ",\n"
      << "  \"Precision\": " << JsonNumber(st.Precision) << ",\n"
      << "  \"lblClosure\": " << JsonString(panel.lblClosure.Caption) << ",\n"
      << "  \"lblDirection\": " << JsonString(panel.lblDirection.Caption) << ",\n"
      << "  \"lblPrecision\": " << JsonString(panel.lblPrecision.Caption) << ",\n"
      << "  \"lblArea\": " << JsonString(panel.lblArea.Caption) << ",\n"
      << "  \"ClosureColour\": " << JsonString(ColourName(panel.lblClosure.ForeColor)) << ",\n"
      << "  \"Coord\": [";
  for (int k = 0; k <= st.LastCourse + 1; ++k) {
    out << (k ? ", " : "") << "[" << JsonNumber(st.Coord[k].x) << ", "
        << JsonNumber(st.Coord[k].y) << "]";
  }
  out << "]\n}\n";
}

void PrintLabels(std::ostream& out, const ResultPanel& panel) {
  out << "Closure:   " << panel.lblClosure.Caption << "  ("
      << ColourName(panel.lblClosure.ForeColor) << ")\n"
      << "Direction: " << panel.lblDirection.Caption << '\n'
      << "Precision: " << panel.lblPrecision.Caption << '\n'
      << "Area:      " << panel.lblArea.Caption << '\n';
}

}  // namespace

int RunClose(const std::vector<std::string>& args, std::istream& in, std::ostream& out,
             std::ostream& err) {
  CloseOptions options;
  CourseList parcel;
  try {
    options = ParseOptions(args);
    if (options.file == "-") {
      parcel = ReadParcelCsv(in);
    } else {
      std::ifstream file(options.file, std::ios::binary);
      if (!file) {
        err << "parvenna-cli: cannot open the parcel file " << options.file << '\n';
        return 2;
      }
      parcel = ReadParcelCsv(file);
    }
  } catch (const UsageError& e) {
    err << "parvenna-cli close: " << e.what << '\n' << kCloseUsage;
    return 2;
  } catch (const ParcelCsvError& e) {
    err << (options.file == "-" ? std::string("standard input") : options.file) << ": " << e.what()
        << '\n';
    return 2;
  }

  const GeometrySettings& settings = options.settings;
  ParcelState state;
  ResultPanel panel;
  SvgCanvas picParcel(options.sketchWidth, options.sketchHeight);
  ConsolePrompter prompter(out);
  // As in the editor, a changed bearing recomputes everything at once.
  parcel.onChange = [&](int, CourseField) {
    if (!state.RecalcSuspended) CalculateAndDraw(parcel, settings, state, panel, picParcel);
  };

  try {
    CalculateAndDraw(parcel, settings, state, panel, picParcel);
    if (options.autoInvert) {
      AutoInverse(parcel, settings, state, prompter);
      for (int row = 0; row <= state.LastCourse; ++row) {
        const bool line = parcel.Kind(row) == CourseKind::Line;
        out << "course " << row + 1 << ": "
            << parcel.Text(row, line ? CourseField::BearingLine : CourseField::BearingArc) << '\n';
      }
    }
    if (options.check) {
      const bool ok = ValidateCourses(parcel, settings, state, prompter);
      out << "check: " << (ok ? "the parcel may be saved" : "the parcel would not be saved") << '\n';
      CalculateAndDraw(parcel, settings, state, panel, picParcel);
    }
  } catch (const RunError& e) {
    // What the editor's catch-all would show.
    err << "Unkown Error Number " << e.Code() << " has occured. (" << e.what() << ")\n";
    return 1;
  }

  if (options.json) PrintJson(out, state, panel);
  else PrintLabels(out, panel);

  if (!options.sketchFile.empty()) {
    std::ofstream svg(options.sketchFile, std::ios::binary);
    svg << picParcel.Document(panel.lblLineNo);
    if (!svg) {
      err << "parvenna-cli: cannot write the sketch " << options.sketchFile << '\n';
      return 2;
    }
  }
  return 0;
}

}  // namespace parvenna::cli
