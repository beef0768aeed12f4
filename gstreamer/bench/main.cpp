// How long frames take in the element and in videoconvert, in turn in one process: a table in Markdown, and a picture.
//
//     morvane_gstreamer_bench [ROUNDS [PICTURE.svg]]
//
// A frame is pushed into an element and pulled behind it, so buffers and their pools are part of the time. The median
// of the rounds is printed, and how many times as long videoconvert takes on as many threads.
#include <gst/check/gstharness.h>
#include <gst/video/video.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "element.h"
#include "plot.h"

namespace {

using morvane::gstreamer::gain;

constexpr int frames_a_round = 4;

struct pair {
  const char* from;
  const char* to;
};

constexpr pair pairs[] = {{"v210", "UYVY"},      {"UYVY", "v210"}, {"NV12", "I420"}, {"UYVY", "NV12"},
                          {"UYVY", "BGRA"},      {"BGRA", "UYVY"}, {"v210", "BGRA"}, {"BGRA", "NV12"},
                          {"NV12", "BGRA"},      {"BGRA", "I420"}, {"I420", "BGRA"}, {"NV12", "RGB"},
                          {"RGB", "NV12"},       {"I420", "RGB"},  {"RGB", "I420"},  {"P010_10LE", "BGRA"},
                          {"BGRA", "P010_10LE"}, {"I420", "UYVY"}, {"YUY2", "I420"}, {"UYVY", "YUY2"},
                          {"AYUV", "ARGB"},      {"BGRA", "RGBA"}, {"I420", "Y444"}, {"I420", "NV12"}};

class contestant {
 public:
  contestant(const char* launch, const pair& formats) : harness_(gst_harness_new_parse(launch)) {
    const std::string size = ",width=1920,height=1080,framerate=25/1";
    const std::string from = std::string("video/x-raw,format=") + formats.from + size;
    gst_harness_set_sink_caps_str(harness_, (std::string("video/x-raw,format=") + formats.to + size).c_str());
    gst_harness_set_src_caps_str(harness_, from.c_str());
    GstCaps* caps = gst_caps_from_string(from.c_str());
    GstVideoInfo info;
    gst_video_info_from_caps(&info, caps);
    gst_caps_unref(caps);
    frame_ = gst_buffer_new_allocate(nullptr, info.size, nullptr);
    fill(info.size);
    convert(2);
  }
  contestant(const contestant&) = delete;
  contestant& operator=(const contestant&) = delete;
  ~contestant() {
    gst_buffer_unref(frame_);
    gst_harness_teardown(harness_);
  }

  void measure() {
    const auto began = std::chrono::steady_clock::now();
    convert(frames_a_round);
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - began;
    rounds_.push_back(taken.count() / frames_a_round);
  }

  double median() {
    std::ranges::sort(rounds_);
    return rounds_[rounds_.size() / 2];
  }

 private:
  void fill(const gsize size) {
    std::mt19937 random(1);
    std::vector<guint32> words(size / 4 + 1);
    for (guint32& word : words) word = static_cast<guint32>(random());
    gst_buffer_fill(frame_, 0, words.data(), size);
  }

  void convert(const int times) {
    for (int i = 0; i < times; i++) {
      GstBuffer* made = gst_harness_push_and_pull(harness_, gst_buffer_ref(frame_));
      if (!made) std::exit(1);
      gst_buffer_unref(made);
    }
  }

  GstHarness* harness_;
  GstBuffer* frame_;
  std::vector<double> rounds_;
};

gain compare(const pair& formats, const int rounds) {
  contestant one("morvaneconvert", formats), two("morvaneconvert threads=2", formats);
  contestant other_one("videoconvert n-threads=1", formats), other_two("videoconvert n-threads=2", formats);
  for (int i = 0; i < rounds; i++)
    for (contestant* each : {&one, &other_one, &two, &other_two}) each->measure();
  const gain gained{.from = formats.from,
                    .to = formats.to,
                    .one_thread = other_one.median() / one.median(),
                    .two_threads = other_two.median() / two.median()};
  std::printf("| %s to %s | %.2f | %.2f | %.1f | %.2f | %.2f | %.1f |\n", formats.from, formats.to, one.median(),
              other_one.median(), gained.one_thread, two.median(), other_two.median(), gained.two_threads);
  return gained;
}

}  // namespace

int main(int count, char** arguments) {
  gst_init(&count, &arguments);
  if (!morvane::gstreamer::register_element(nullptr)) return 1;
  const int rounds = std::max(1, count > 1 ? std::atoi(arguments[1]) : 15);
  std::puts(
      "| 1920x1080, ms a frame | 1 thread | videoconvert | times | 2 threads | videoconvert | times |\n"
      "|---|---|---|---|---|---|---|");
  std::vector<gain> gains;
  for (const pair& formats : pairs) gains.push_back(compare(formats, rounds));
  if (count <= 2) return 0;
  std::ofstream picture(arguments[2]);
  picture << morvane::gstreamer::gains_plot(gains) << std::flush;
  if (picture) return 0;
  std::fprintf(stderr, "morvane_gstreamer_bench: cannot write %s\n", arguments[2]);
  return 1;
}
