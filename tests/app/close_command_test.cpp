#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/cli/close_command.h"
#include "app/cli/parcel_csv.h"

namespace parvenna::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kHeader = "kind,bearing,distance,arc,radius,chord,plus,minus\n";

struct CloseRun {
  int status;
  std::string out;
  std::string err;
};

CloseRun Close(const std::string& csv, std::vector<std::string> args = {}) {
  args.insert(args.begin(), "-");
  std::istringstream in(csv);
  std::ostringstream out, err;
  const int status = RunClose(args, in, out, err);
  return {status, out.str(), err.str()};
}

// ---- Reading a parcel ----------------------------------------------------

TEST(ParcelCsv, TakesTextsAsTypedWithQuotesOnlyWhereAFieldStartsWithOne) {
  std::istringstream in(std::string("\xEF\xBB\xBF") + kHeader +
                        "line,N12°30'15\"E,150.00,,,,0,0\r\n"
                        "curve,\"S77°29'45\"\"E\",,101.95,150.00,100.00,1,2\n"
                        "line,,  7,,,,,\n");
  const CourseList parcel = ReadParcelCsv(in);
  EXPECT_EQ(parcel.rows[0].BearingLine, "N12°30'15\"E");
  EXPECT_EQ(parcel.rows[0].DistanceLine, "150.00");
  EXPECT_EQ(parcel.rows[1].Kind, CourseKind::Curve);
  EXPECT_EQ(parcel.rows[1].BearingArc, "S77°29'45\"E");
  EXPECT_EQ(parcel.rows[1].SignPlus, SignTicked);
  EXPECT_EQ(parcel.rows[1].SignMinus, SignGrey);
  EXPECT_EQ(parcel.rows[2].BearingLine, "");
  EXPECT_EQ(parcel.rows[2].DistanceLine, "  7");  // blanks are the surveyor's own
  EXPECT_EQ(parcel.rows[3].BearingLine, "");
}

TEST(ParcelCsv, RefusesMalformedFilesNamingTheLine) {
  struct Case {
    std::string text;
    std::string message;
  };
  std::string fiftyOne = kHeader;
  for (int i = 0; i < 51; ++i) fiftyOne += "line,N1°0'0\"E,1,,,,0,0\n";
  const Case cases[] = {
      {"", "line 1: the file is empty"},
      {"bearing,distance\nline,N1°E,1\n", "line 1: the first line must be the header"},
      {std::string(kHeader) + "line,N1°E,1\n", "line 2: expected 8 fields, found 3"},
      {std::string(kHeader) + "arc,N1°E,1,,,,0,0\n", "line 2: unknown kind \"arc\""},
      {std::string(kHeader) + "\nline,N1°E,1,,,,0,3\n", "line 3: the minus sign must be 0, 1 or 2"},
      {std::string(kHeader) + "line,\"N1°E,1,,,,0,0\n", "line 2: a quoted field is not closed"},
      {fiftyOne, "line 52: a parcel has at most 50 courses"},
  };
  for (const Case& c : cases) {
    std::istringstream in(c.text);
    try {
      ReadParcelCsv(in);
      ADD_FAILURE() << "accepted: " << c.text;
    } catch (const ParcelCsvError& e) {
      EXPECT_THAT(e.what(), HasSubstr(c.message)) << c.text;
    }
  }
}

TEST(ParcelCsv, AcceptsExactlyFiftyCourses) {
  std::string text = kHeader;
  for (int i = 0; i < 50; ++i) text += "line,N1°0'0\"E,1,,,,0,0\n";
  std::istringstream in(text);
  EXPECT_EQ(ReadParcelCsv(in).rows[49].DistanceLine, "1");
}

// ---- The close command ---------------------------------------------------

const std::string kRectangle = std::string(kHeader) +
                               "line,N0°0'0\"E,100,,,,,\n"
                               "line,N90°0'0\"E,50,,,,,\n"
                               "line,S0°0'0\"W,100.03,,,,,\n"
                               "line,N90°0'0\"W,50,,,,,\n";

TEST(CloseCommand, PrintsTheFourLabelsAsTheEditorShowsThem) {
  const CloseRun run = Close(kRectangle);
  EXPECT_EQ(run.status, 0) << run.err;
  // The closure is the 0.03 of northing, pointing home to the north; 0.03 in
  // 300.03 is 1 in 10001. The end lies a hair west of the beginning (the
  // cosines of the rounded pi), so the way home reads east.
  EXPECT_THAT(run.out, HasSubstr("Closure:   0.03  (red)"));
  EXPECT_THAT(run.out, HasSubstr("Direction: N0°0'0\"E"));
  EXPECT_THAT(run.out, HasSubstr("Precision: 1:10001"));
  EXPECT_THAT(run.out, HasSubstr("Area:      5001.5"));
}

TEST(CloseCommand, ToleranceAndDecimalsComeFromTheOptions) {
  const CloseRun run = Close(kRectangle, {"--tolerance", "0.03", "--decimals", "1"});
  EXPECT_THAT(run.out, HasSubstr("Closure:   0  (green)"));
  EXPECT_THAT(run.out, HasSubstr("Precision: Perfect"));
}

TEST(CloseCommand, JsonCarriesEveryResultAndThePoints) {
  const CloseRun run = Close(kRectangle, {"--json"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("\"LastCourse\": 3"));
  EXPECT_THAT(run.out, HasSubstr("\"Perimeter\": 300.03"));
  EXPECT_THAT(run.out, HasSubstr("\"Closure\": 0.03"));
  EXPECT_THAT(run.out, HasSubstr("\"lblDirection\": \"N0°0'0\\\"E\""));
  EXPECT_THAT(run.out, HasSubstr("\"ClosureColour\": \"red\""));
  // Points 0 to LastCourse + 1: five pairs.
  const auto coord = run.out.substr(run.out.find("\"Coord\""));
  EXPECT_EQ(std::count(coord.begin(), coord.end(), '['), 6);
}

TEST(CloseCommand, AzimuthsReadAsAzimuths) {
  const std::string parcel = std::string(kHeader) + "line,0°,100,,,,,\n" + "line,90°,100,,,,,\n" +
                             "line,180°,100,,,,,\n" + "line,270°,100,,,,,\n";
  const CloseRun run = Close(parcel, {"--azimuth"});
  EXPECT_THAT(run.out, HasSubstr("Closure:   0  (green)"));
  EXPECT_THAT(run.out, HasSubstr("Area:      10000"));
}

TEST(CloseCommand, AutoInvertTurnsTheCoursesHomeAndListsThem) {
  // A rectangle keyed as the plat labels it, every course in the north half.
  const std::string parcel = std::string(kHeader) + "line,N10°0'0\"E,100,,,,,\n" +
                             "line,N80°0'0\"W,50,,,,,\n" + "line,N10°0'0\"E,100,,,,,\n" +
                             "line,N80°0'0\"W,50,,,,,\n";
  const CloseRun run = Close(parcel, {"--auto-invert"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("course 2: S80°0'0\"E"));
  EXPECT_THAT(run.out, HasSubstr("course 3: S10°0'0\"W"));
  EXPECT_THAT(run.out, HasSubstr("course 4: N80°0'0\"W"));
  EXPECT_THAT(run.out, HasSubstr("Closure:   0  (green)"));
}

TEST(CloseCommand, CheckShowsEachBoxAndItsVerdict) {
  const std::string parcel = std::string(kHeader) + "line,N0°0'0\"E,100,,,,,\n" +
                             "curve,S90°0'0\"E,,100,1000,100,0,0\n";
  const CloseRun run = Close(parcel, {"--check"});
  EXPECT_THAT(run.out,
              HasSubstr("message: You must confirm segment area (+/-) before saving.\n"));
  EXPECT_THAT(run.out, HasSubstr("question: Warning: In course #2 the arc length does not agree "
                                 "with the radius and chord length. The arc length should be "
                                 "100.042. Would you like to save it? -> Yes"));
  EXPECT_THAT(run.out, HasSubstr("check: the parcel would not be saved"));
}

TEST(CloseCommand, ARunTimeFailureIsReportedAsTheEditorWould) {
  const CloseRun run = Close(std::string(kHeader) + "line,N0°0'0\"E,1.2.3,,,,,\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("Unkown Error Number 13 has occured."));
}

TEST(CloseCommand, BadArgumentsExitWithTwo) {
  for (const std::vector<std::string>& args :
       std::vector<std::vector<std::string>>{{"--decimals", "-1"},
                                             {"--tolerance", "abc"},
                                             {"--warning-range", "1,2"},
                                             {"--frobnicate"},
                                             {"--sketch"}}) {
    const CloseRun run = Close(kRectangle, args);
    EXPECT_EQ(run.status, 2) << args[0];
    EXPECT_THAT(run.err, HasSubstr("usage: parvenna-cli close")) << args[0];
  }
  std::istringstream none;
  std::ostringstream out, err;
  EXPECT_EQ(RunClose({"/nonexistent/parcel.csv"}, none, out, err), 2);
  EXPECT_THAT(err.str(), HasSubstr("cannot open the parcel file"));
}

TEST(CloseCommand, SketchIsWrittenAsSvgWithCurvesAndNumbers) {
  const auto path = std::filesystem::temp_directory_path() / "parvenna_close_sketch.svg";
  const CloseRun run = Close(std::string(kHeader) + "line,N0°0'0\"E,100,,,,,\n" +
                            "curve,S90°0'0\"E,,104.72,100,100,1,0\n" +
                            "line,S0°0'0\"W,100,,,,,\n",
                        {"--sketch", path.string()});
  ASSERT_EQ(run.status, 0) << run.err;
  std::ifstream in(path);
  std::stringstream svg;
  svg << in.rdbuf();
  EXPECT_THAT(svg.str(), HasSubstr("<path d=\"M "));      // the curve as an arc
  EXPECT_THAT(svg.str(), HasSubstr("stroke=\"#008000\""));  // added area in green
  EXPECT_THAT(svg.str(), HasSubstr(">3</text>"));
  EXPECT_THAT(svg.str(), Not(HasSubstr(">4</text>")));
  std::filesystem::remove(path);
}

}  // namespace
}  // namespace parvenna::cli
