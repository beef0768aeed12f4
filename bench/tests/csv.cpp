// report.csv.
#include "report/csv.h"

#include <gtest/gtest.h>

#include <sstream>

#include "made_up.h"

namespace morvane::bench {
namespace {

std::string csv_of(std::vector<measurement> all) {
  std::ostringstream out;
  write_csv(out, made_up_results(std::move(all)), made_up_targets());
  const std::string text = out.str();
  const std::string head =
      "conversion,kind,runner,function,agreement,size,shape,threads,pixels,bytes,nanoseconds,gigabytes_per_second,"
      "nanoseconds_per_pixel,memcpy_nanoseconds,share_of_memcpy,over_plain,over_narrower\n";
  EXPECT_EQ(text.substr(0, head.size()), head);
  return text.substr(head.size());
}

TEST(csv, has_a_line_for_each_backend_beside_the_narrowest_and_the_next_narrower_one) {
  EXPECT_EQ(
      csv_of({made_up("y::y", "plain", {full_hd}, 4000), made_up("y::y", "wide", {full_hd}, 2000),
              made_up("y::y", "widest", {full_hd}, 500)}),
      "\"y::y\",\"copy\",plain,\"\",,1920x1080,tight,1,1000,6000,4000.0,1.500,4.00000,1000.0,0.2500,1.000,\n"
      "\"y::y\",\"copy\",wide,\"\",,1920x1080,tight,1,1000,6000,2000.0,3.000,2.00000,1000.0,0.5000,2.000,2.000\n"
      "\"y::y\",\"copy\",widest,\"\",,1920x1080,tight,1,1000,6000,500.0,12.000,0.50000,1000.0,2.0000,8.000,4.000\n");
}

TEST(csv, names_function_and_agreement_of_another_library) {
  EXPECT_EQ(csv_of({made_up_peer("y::y", "libyuv", {in_cache}, 1000)}),
            "\"y::y\",\"copy\",libyuv,\"Convert, twice\",close,1920x16,tight,1,1000,6000,1000.0,6.000,1.00000,1000.0,"
            "1.0000,,\n");
}

TEST(csv, compares_no_backend_with_two_threads) {
  measurement two = made_up("y::y", "widest", {ultra_hd}, 1000);
  two.threads = 2;
  const std::string text = csv_of({made_up("y::y", "plain", {ultra_hd}, 4000), two});
  EXPECT_NE(text.find("tight,2,1000,6000,1000.0,6.000,1.00000,1000.0,1.0000,,\n"), std::string::npos) << text;
}

}  // namespace
}  // namespace morvane::bench
