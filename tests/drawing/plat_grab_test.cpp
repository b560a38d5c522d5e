// The generated plat of lot 7, in DXF and in DGN: every label of its source
// table is found where the table puts it, and clicking the bearing and
// distance labels in turn keys in the five courses.
#include <gtest/gtest.h>

#include "drawing/cad_text.h"
#include "drawing/grabbing.h"
#include "drawing/viewer.h"
#include "tests/drawing/fake_grab_editor.h"
#include "tests/store/temp_dir.h"

namespace parvenna::drawing {
namespace {

struct Label {
  double x = 0, y = 0;
  std::string layer;
  std::string text;
};

// The POINT rows of the table that carry a label: position, layer and the t:
// of the style.
std::vector<Label> ReadLabels(const std::string& csv) {
  std::vector<Label> labels;
  for (std::size_t at = csv.find("POINT ("); at != std::string::npos; at = csv.find("POINT (", at + 1)) {
    Label label;
    char* end = nullptr;
    label.x = std::strtod(csv.c_str() + at + 7, &end);
    label.y = std::strtod(end, &end);
    const std::size_t comma = csv.find(',', at);
    label.layer = csv.substr(comma + 1, csv.find(',', comma + 1) - comma - 1);
    std::size_t t = csv.find("t:\"\"", at);
    if (t == std::string::npos || t > csv.find('\n', at)) continue;  // a corner point
    t += 4;
    while (t < csv.size() && csv.compare(t, 2, "\"\"") != 0) {
      if (csv.compare(t, 3, "\\\"\"") == 0) {
        label.text += '"';
        t += 3;
      } else {
        label.text += csv[t++];
      }
    }
    labels.push_back(label);
  }
  return labels;
}

struct Plat {
  const char* drawing;
  const char* table;
};

class PlatTest : public ::testing::TestWithParam<Plat> {
 protected:
  void SetUp() override {
    const std::string dir = std::string(PARVENNA_TESTDATA_DIR) + "/drawings/generated/";
    labels = ReadLabels(testing::ReadFile(dir + GetParam().table));
    ASSERT_GE(labels.size(), 17u);
    ASSERT_TRUE(view.Load(dir + GetParam().drawing)) << view.LoadDetail();
  }
  std::vector<Label> labels;
  Viewer view;
};

TEST_P(PlatTest, EveryLabelIsFoundWhereTheTableHasIt) {
  const DrawingDocument& doc = *view.Document();
  for (const Label& label : labels) {
    ASSERT_TRUE(view.FindTextAt({label.x, label.y})) << label.text;
    const Entity& e = doc.entities[view.Found() - 1];
    EXPECT_EQ(doc.layers[e.layer].name == label.layer || doc.format == DrawingFormat::Dgn, true);
    EXPECT_EQ(doc.ShownText(doc.TextOf(e)),
              doc.format == DrawingFormat::Dgn ? label.text : ShownTextOf(label.text));
  }
}

TEST_P(PlatTest, ClickingTheLabelsKeysInTheCourses) {
  testing::FakeGrabEditor editor;
  GrabState state;
  const Notation notation{true, "%%D"};
  for (const Label& label : labels) {
    if (label.layer != "BEARINGS" && label.layer != "DISTANCES" && label.layer != "20" &&
        label.layer != "21") {
      continue;
    }
    PickInView(view, {label.x, label.y}, editor, state, notation, 1);
  }
  const std::vector<std::pair<std::string, std::string>> courses = {
      {"N12\u00B030'15\"E", "125.43"}, {"S77\u00B029'45\"E", "210.00"},
      {"S15\u00B010'20\"W", "98.76"},  {"S89\u00B052'10\"W", "53.27"},
      {"N83\u00B007'34\"W", "154.17"}};
  for (std::size_t i = 0; i < courses.size(); ++i) {
    const int row = static_cast<int>(i);
    EXPECT_EQ(editor.Text(row, CourseField::BearingLine), courses[i].first) << row;
    EXPECT_EQ(editor.Text(row, CourseField::DistanceLine), courses[i].second) << row;
  }
  EXPECT_EQ(editor.focusRow, 6);
  // The DXF holds course 4 in one label.
  EXPECT_EQ(state.usedEntities.size(),
            std::string(GetParam().drawing).ends_with(".dxf") ? 9u : 10u);
}

INSTANTIATE_TEST_SUITE_P(Lot7, PlatTest,
                         ::testing::Values(Plat{"generated_plat_lot7.dxf", "plat_lot7.csv"},
                                           Plat{"generated_plat_lot7.dgn", "plat_lot7_dgn.csv"}),
                         [](const ::testing::TestParamInfo<Plat>& p) {
                           return std::string(p.param.drawing).substr(20);
                         });

}  // namespace
}  // namespace parvenna::drawing
