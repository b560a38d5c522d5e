// Cleaning a label into values, and finding a direction inside it.
#include <gtest/gtest.h>

#include "drawing/cad_text.h"
#include "drawing/grab_text.h"

namespace parvenna::drawing {
namespace {

using Values = std::deque<std::string>;

Notation Quadrant(std::string degree = "%%D") { return {true, std::move(degree)}; }
Notation Azimuth() { return {false, "%%D"}; }

struct CleanCase {
  const char* name;
  const char* text;
  Values values;
};

class CleanQuadrant : public ::testing::TestWithParam<CleanCase> {};

TEST_P(CleanQuadrant, GivesTheValues) {
  EXPECT_EQ(CleanDrawingText(Quadrant(), GetParam().text, 1), GetParam().values);
}

INSTANTIATE_TEST_SUITE_P(
    Labels, CleanQuadrant,
    ::testing::Values(
        // Braces and a short leading code go; the spaced bearing comes out
        // whole without its blanks, and the distance follows.
        CleanCase{"BracesCodeBearingDistance", "{\\A1;N 12%%d30'15\" E 125.43'}",
                  {"N12%%d30'15\"E", "125.43'"}},
        CleanCase{"FiveCharacterCode", "\\H2x;S 77\u00B029'45\" W 210.00",
                  {"S77\u00B029'45\"W", "210.00"}},
        // A code whose ";" stands further in stays with the text.
        CleanCase{"LongCodeStays", "\\fArial|b0;N 12\u00B030'15\" E",
                  {"\\fArial|b0;", "N12\u00B030'15\"E"}},
        CleanCase{"OnlyOneBraceKept", "{N 1\u00B02'3\" E", {"{", "N1\u00B02'3\"E"}},
        CleanCase{"TextBeforeAndAfter", "  CALL N 1\u00B02'3\" W  TO PIN ",
                  {"CALL", "N1\u00B02'3\"W", "TO", "PIN"}},
        CleanCase{"EqualsIsABlank", "L=125.43", {"L", "125.43"}},
        CleanCase{"OneWordIsOneValue", "N12\u00B030'15\"E", {"N12\u00B030'15\"E"}},
        // Without minutes and seconds the scanner finds nothing: plain split.
        CleanCase{"BearingWithoutMinutes", "N 45\u00B0 E 100.00", {"N", "45\u00B0", "E", "100.00"}},
        CleanCase{"NoBearing", "LOT 7  BLOCK B", {"LOT", "7", "BLOCK", "B"}},
        CleanCase{"OemDegreeMark", "S 5\u00F810'20\" E 3", {"S5\u00F810'20\"E", "3"}},
        // A second N or S keeps the scan where it started, at the first.
        CleanCase{"StartStaysAtTheFirstLetter", "N S12\u00B030'15\"E 9", {"NS12\u00B030'15\"E", "9"}}),
    [](const ::testing::TestParamInfo<CleanCase>& c) { return std::string(c.param.name); });

TEST(CleanDrawingText, GrabModeTwoReversesDirections) {
  EXPECT_EQ(CleanDrawingText(Quadrant(), "N 12\u00B030'15\" E 100", GrabReversed),
            (Values{"S12\u00B030'15\"W", "100"}));
  EXPECT_EQ(CleanDrawingText(Quadrant(), "n12\u00B030'15\"e", GrabReversed),
            (Values{"S12\u00B030'15\"W"}));
  EXPECT_EQ(CleanDrawingText(Quadrant(), "100.00", GrabReversed), (Values{"100.00"}));
}

TEST(CleanDrawingText, DegreeCodeCountsOnlyWhenItIsTheProjectsSymbol) {
  // With another degree text the code is no mark, and no bearing is found.
  EXPECT_EQ(CleanDrawingText(Quadrant("deg"), "N 12%%d30'15\" E", 1),
            (Values{"N", "12%%d30'15\"", "E"}));
  EXPECT_EQ(CleanDrawingText(Quadrant("deg"), "N 12deg30'15\" E", 1), (Values{"N12deg30'15\"E"}));
}

TEST(CleanDrawingText, HugeNumbersDoNotThrow) {
  const std::string huge = "N99999999999999999999\u00B030'15\"E";
  EXPECT_EQ(CleanDrawingText(Quadrant(), huge, GrabReversed), (Values{huge}));
  EXPECT_NO_THROW(CleanDrawingText(Quadrant(), "x " + huge + " 1", GrabReversed));
}

TEST(CleanDrawingText, AzimuthLabels) {
  EXPECT_EQ(CleanDrawingText(Azimuth(), "AZ 192\u00B0 30' 15\" 100.5", 1),
            (Values{"AZ", "192\u00B030'15\"", "100.5"}));
  // A lone digit before the angle ends its run at the blank and starts again.
  EXPECT_EQ(CleanDrawingText(Azimuth(), "L1 12%%d5'0\"", 1), (Values{"L1", "12%%d5'0\""}));
  EXPECT_EQ(CleanDrawingText(Azimuth(), "12\u00B05'0\" 7", GrabReversed),
            (Values{"192\u00B05'0\"", "7"}));
}

TEST(FindBearingInText, EndMovesByTheSavedCharactersAndStartDoesNot) {
  int start = 0, end = 0;
  ASSERT_TRUE(FindBearingInText(Quadrant(), start, end, "N 12%%d30'15\" E"));
  EXPECT_EQ(start, 1);
  EXPECT_EQ(end, 15);
  // A degree code before the bearing leaves start two characters short.
  ASSERT_TRUE(FindBearingInText(Quadrant(), start, end, "12%%d N 5\u00B010'20\" E"));
  EXPECT_EQ(start, 5);
  EXPECT_EQ(end, 18);
  EXPECT_EQ(CleanDrawingText(Quadrant(), "12%%d N 5\u00B010'20\" E", 1),
            (Values{"12%%", "dN5\u00B010'20\"E"}));
}

TEST(FindBearingInText, PositionsCountCharactersNotBytes) {
  int start = 0, end = 0;
  ASSERT_TRUE(FindBearingInText(Quadrant(), start, end, "\u00B0\u00B0 S 1\u00B02'3\" W"));
  EXPECT_EQ(start, 4);
  EXPECT_EQ(end, 13);
}

TEST(FindBearingInText, RefusesWhatIsNoFullDirection) {
  int start = 0, end = 0;
  for (const char* text : {"N 12\u00B030' E", "N 12\u00B030'15\"", "12\u00B030'15\" E", "", "NSEW",
                           "N 12\u00B030'15\" X E"}) {
    EXPECT_FALSE(FindBearingInText(Quadrant(), start, end, text)) << text;
  }
  EXPECT_FALSE(FindBearingInText(Azimuth(), start, end, "12 \u00B030'15\""));
  EXPECT_FALSE(FindBearingInText(Azimuth(), start, end, "12\u00B030'15"));
  ASSERT_TRUE(FindBearingInText(Azimuth(), start, end, "x 1\u00B0 2 ' 3 \""));
  EXPECT_EQ(start, 3);
  EXPECT_EQ(end, 12);
}

// A pick hands on the label as shown, its percent codes as written.
Values Picked(std::string_view raw) { return GrabbedValues(Quadrant(), PickTextOf(raw), 1); }

TEST(GrabbedValues, MtextBreaksAndHardSpacesSplitTheLabel) {
  EXPECT_EQ(Picked("S\\~89%%D52'10\"\\~W\\P53.27'"), (Values{"S89%%D52'10\"W", "53.27'"}));
  EXPECT_EQ(Picked("N\\~12%%d30'15\"\\~E"), (Values{"N12%%d30'15\"E"}));
}

TEST(GrabbedValues, FormatCodesNeverReachTheValues) {
  // A font code around a bearing: before, its digits made one long number.
  EXPECT_EQ(Picked("{\\fArial|b0;S15%%d10'20\"W}"), (Values{"S15%%d10'20\"W"}));
  EXPECT_EQ(Picked("{\\C1;\\H2.5x;N 83%%d07'34\" W}\\P{\\fTimes|i1;154.17'}"),
            (Values{"N83%%d07'34\"W", "154.17'"}));
  EXPECT_EQ(Picked("\\A1;7.0711"), (Values{"7.0711"}));
  EXPECT_EQ(Picked("4'-0{\\H1x;\\S1#4;}\""), (Values{"4'-01/4\""}));
  // Single-line text keeps backslashes as characters, but not \U+ codes.
  EXPECT_EQ(GrabbedValues(Quadrant(), PickTextOf("N12\\U+00B030'E", TextCodes::Single), 1),
            (Values{"N12\u00B030'E"}));
}

}  // namespace
}  // namespace parvenna::drawing
