// parvenna-cli drawing and pick on the DWGs of every version, and on files
// that cannot be read.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "app/cli/drawing_command.h"
#include "drawing/messages.h"

namespace parvenna::cli {
namespace {

using ::testing::HasSubstr;

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

std::string Drawings(const std::string& name) {
  return std::string(PARVENNA_TESTDATA_DIR) + "/drawings/" + name;
}

Outcome Command(int (*command)(const std::vector<std::string>&, std::ostream&, std::ostream&),
            std::vector<std::string> args) {
  std::ostringstream out, err;
  const int status = command(args, out, err);
  return {status, out.str(), err.str()};
}

struct Version {
  const char* file;
  const char* code;
};

class EveryVersion : public ::testing::TestWithParam<Version> {};

TEST_P(EveryVersion, ListsTheDrawingAndPicksALabel) {
  const Outcome listed = Command(RunDrawing, {Drawings(GetParam().file)});
  ASSERT_EQ(listed.status, 0) << listed.err;
  EXPECT_THAT(listed.out, HasSubstr(std::string("format\tDWG\t") + GetParam().code + "\n"));
  EXPECT_THAT(listed.out, HasSubstr("file\tTEXT\t29\n"));
  EXPECT_THAT(listed.out, HasSubstr("file\tINSERT\t6\n"));
  // The single-line text at 147.8194, 2.8550: one unit high, left on its baseline.
  EXPECT_THAT(listed.out, HasSubstr("text\t3B9\t147.8194\t2.8550\t0\tHello this is a single line text\tHello"));
  EXPECT_THAT(listed.out, HasSubstr("placing\t3B9\t1.0000\t0.0000\tleft\tbaseline\n"));

  const Outcome picked = Command(RunPick, {Drawings(GetParam().file), "149", "3.2"});
  ASSERT_EQ(picked.status, 0) << picked.err;
  EXPECT_THAT(picked.out, HasSubstr("Hello this is a single line text"));
  // A dimension's label: its paragraph code is no value.
  const Outcome dimension = Command(RunPick, {Drawings(GetParam().file), "338.6", "34.8"});
  ASSERT_EQ(dimension.status, 0) << dimension.err;
  EXPECT_THAT(dimension.out, HasSubstr("\t46,72\n"));
}

INSTANTIATE_TEST_SUITE_P(Dwg, EveryVersion,
                         ::testing::Values(Version{"dwg_r14_many_entities.dwg", "AC1014"},
                                           Version{"dwg_r2000_partial_read.dwg", "AC1015"},
                                           Version{"dwg_r2004_many_entities.dwg", "AC1018"},
                                           Version{"dwg_r2010_many_entities.dwg", "AC1024"},
                                           Version{"dwg_r2018_many_entities.dwg", "AC1032"}),
                         [](const ::testing::TestParamInfo<Version>& p) { return std::string(p.param.code); });

TEST(DrawingCommand, AFileThatCannotBeReadSaysWhyWithStatusTwo) {
  for (const auto& [name, reason] :
       {std::pair{"dwg_r2000_crc_error_UNREADABLE.dwg", drawing::messages::ReasonDwgDamaged},
        std::pair{"dgn_v8_UNSUPPORTED.dgn", drawing::messages::ReasonDgnV8}}) {
    const Outcome r = Command(RunDrawing, {Drawings(name)});
    EXPECT_EQ(r.status, 2);
    EXPECT_THAT(r.err, HasSubstr(drawing::messages::OpenDrawingFileError));
    EXPECT_THAT(r.err, HasSubstr(reason));
    EXPECT_EQ(Command(RunPick, {Drawings(name), "0", "0"}).status, 2);
  }
}

}  // namespace
}  // namespace parvenna::cli
