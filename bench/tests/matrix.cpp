// Where the cells of the picture are, and which colours they have. Cells are 17 wide and 19 apart; the first one lies
// at 136, 208.
#include "report/matrix.h"

#include <gtest/gtest.h>

namespace morvane::bench {
namespace {

bool has(const std::string& picture, const std::string& part) {
  return picture.find(part) != std::string::npos;
}

matrix two_by_two() {
  return {.title = "Title",
          .explanation = "Words",
          .rows_are = "from",
          .columns_are = "to",
          .rows = {{"a"}, {"b"}},
          .columns = {{"c"}, {"d"}},
          .steps = {{0, "below1", "slow"}, {1, "above1", "fast"}, {2, "above2", "faster"}},
          .grey_means = "unknown"};
}

std::string cell_at(int x, int y, const std::string& colour) {
  return "<rect class=\"" + colour + "\" x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) +
         "\" width=\"17\" height=\"17\"";
}

TEST(matrix, names_stand_on_both_axes) {
  const std::string picture = draw(two_by_two());
  EXPECT_TRUE(has(picture, "<text x=\"130\" y=\"220\" class=\"\" text-anchor=\"end\">a</text>")) << picture;
  EXPECT_TRUE(has(picture, "<text x=\"130\" y=\"239\" class=\"\" text-anchor=\"end\">b</text>"));
  EXPECT_TRUE(has(picture, "<text class=\"\" transform=\"translate(148 202) rotate(-90)\">c</text>"));
  EXPECT_TRUE(has(picture, "<text class=\"\" transform=\"translate(167 202) rotate(-90)\">d</text>"));
  EXPECT_TRUE(has(picture, ">from \u2193</text>"));
  EXPECT_TRUE(has(picture, ">to \u2192</text>"));
}

TEST(matrix, groups_stand_apart) {
  matrix m = two_by_two();
  m.rows[1].group = m.columns[1].group = "other";
  m.cells = {{1, 1, 1.0, "tip"}};
  EXPECT_TRUE(has(draw(m), cell_at(136 + 19 + 7, 208 + 19 + 7, "above1")));
}

TEST(matrix, a_cell_stands_in_its_row_and_column) {
  matrix m = two_by_two();
  m.cells = {{0, 1, 1.0, "tip"}};
  const std::string picture = draw(m);
  EXPECT_TRUE(has(picture, cell_at(155, 208, "above1") + "><title>tip</title></rect>")) << picture;
}

TEST(matrix, a_value_has_the_colour_of_the_greatest_step_that_it_reaches) {
  const std::pair<double, const char*> values[] = {{-1.0, "below1"}, {0.0, "below1"}, {0.99, "below1"}, {1.0, "above1"},
                                                   {1.99, "above1"}, {2.0, "above2"}, {9.0, "above2"}};
  for (const auto& [value, colour] : values) {
    matrix m = two_by_two();
    m.cells = {{0, 0, value, ""}};
    EXPECT_TRUE(has(draw(m), cell_at(136, 208, colour))) << value;
  }
}

TEST(matrix, a_cell_without_a_value_is_grey_and_a_pair_without_a_cell_blank) {
  matrix m = two_by_two();
  m.cells = {{0, 0, {}, "tip"}};
  const std::string picture = draw(m);
  EXPECT_TRUE(has(picture, cell_at(136, 208, "none")));
  EXPECT_FALSE(has(picture, "x=\"155\" y=\"208\""));
  EXPECT_FALSE(has(picture, "y=\"227\""));
}

TEST(matrix, the_legend_has_every_step_and_says_what_grey_means_where_there_is_some) {
  matrix m = two_by_two();
  m.cells = {{0, 0, 1.0, ""}};
  std::string picture = draw(m);
  for (const char* text : {">slow</text>", ">fast</text>", ">faster</text>"}) EXPECT_TRUE(has(picture, text)) << text;
  EXPECT_FALSE(has(picture, ">unknown</text>"));
  m.cells.front().value = {};
  EXPECT_TRUE(has(draw(m), ">unknown</text>"));
}

TEST(matrix, escapes_what_svg_would_read) {
  matrix m = two_by_two();
  m.title = "<t>";
  m.explanation = "a & b";
  m.rows[0].text = "<row>";
  m.columns[0].text = "\"column\"";
  m.grey_means = "<none>";
  m.steps[0].text = "< 1";
  m.cells = {{0, 0, {}, "1 < 2 & 3"}};
  const std::string picture = draw(m);
  for (const char* text :
       {">&lt;t&gt;</text>", ">a &amp; b</text>", ">&lt;row&gt;</text>", ">&quot;column&quot;</text>",
        ">&lt;none&gt;</text>", ">&lt; 1</text>", "<title>1 &lt; 2 &amp; 3</title>"})
    EXPECT_TRUE(has(picture, text)) << text;
}

// 41 by 41 names, the last row and column of another group. Cells are 8 wide and touch; the first one lies at 108, 180.
matrix many() {
  matrix m = two_by_two();
  m.rows.assign(41, {"x", "words"});
  m.rows.back().group = "floats";
  m.columns = m.rows;
  m.aim = 1;
  return m;
}

TEST(matrix, many_names_have_small_cells_and_headings_beside_their_groups) {
  matrix m = many();
  m.cells = {{40, 40, 1.0, "tip"}};
  const std::string picture = draw(m);
  EXPECT_TRUE(has(picture, "<rect class=\"above1\" x=\"433\" y=\"505\" width=\"8\" height=\"8\"><title>tip</title>"))
      << picture;
  EXPECT_TRUE(has(picture, "<text x=\"447\" y=\"343\" class=\"small\" text-anchor=\"start\">words</text>"));
  EXPECT_TRUE(has(picture, "<text x=\"447\" y=\"512\" class=\"small\" text-anchor=\"start\">floats</text>"));
  EXPECT_FALSE(has(draw(two_by_two()), ">words</text>"));
}

TEST(matrix, where_low_cells_alone_have_tips_neighbours_of_one_colour_are_one_shape) {
  matrix m = many();
  m.told = matrix::tips::of_low_ones;
  m.cells = {{0, 0, 1.0, "a"},  {0, 1, 1.5, "b"},  {0, 2, 2.0, "c"}, {0, 4, 2.0, "d"},
             {0, 39, 1.0, "e"}, {0, 40, 1.0, "f"}, {1, 0, 1.0, "g"}, {1, 1, 0.5, "low"}};
  const std::string picture = draw(m);
  EXPECT_TRUE(has(picture,
                  "<path class=\"above1\" d=\"M108 180H124v8H108zM420 180H428v8H420zM433 180H441v8H433z"
                  "M108 188H116v8H108z\"/>"))
      << picture;
  EXPECT_TRUE(has(picture, "<path class=\"above2\" d=\"M124 180H132v8H124zM140 180H148v8H140z\"/>"));
  EXPECT_TRUE(has(picture, "<rect class=\"below1\" x=\"116\" y=\"188\" width=\"8\" height=\"8\"><title>low</title>"));
  EXPECT_EQ(picture.find("<title>"), picture.rfind("<title>"));
}

TEST(matrix, is_as_large_as_its_cells) {
  matrix m = two_by_two();
  for (int i = 2; i < 40; ++i) m.columns.push_back({"x"});
  EXPECT_TRUE(has(draw(m), "viewBox=\"0 0 908 266\"")) << draw(m).substr(0, 200);
  EXPECT_TRUE(has(draw(two_by_two()), "viewBox=\"0 0 780 266\""));
}

}  // namespace
}  // namespace morvane::bench
