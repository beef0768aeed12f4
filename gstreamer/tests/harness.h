// The element between two pads.
#pragma once

#include <gst/check/gstharness.h>

#include <string>

#include "frames.h"

class harness {
 public:
  // `properties` as programs that launch pipelines take them: "chroma=nearest threads=2".
  explicit harness(const std::string& properties = "");
  harness(const harness&) = delete;
  harness& operator=(const harness&) = delete;
  ~harness();

  void set_caps(const std::string& from, const std::string& to);
  // Takes the buffer.
  GstFlowReturn push(GstBuffer* buffer) { return gst_harness_push(h_, buffer); }
  // The bytes of the next frame that came out.
  bytes pull();
  // Null, or the next buffer that came out, which the caller owns.
  GstBuffer* pull_buffer() { return gst_harness_try_pull(h_); }
  std::string caps_out() const;
  // The sentence of the next error of the element, or nothing.
  std::string error();
  GstElement* converter() { return converter_; }

 private:
  GstElement* converter_;
  GstHarness* h_;
  GstBus* bus_;
};
