#include "harness.h"

harness::harness(const std::string& properties)
    : converter_(gst_parse_launch(("morvaneconvert " + properties).c_str(), nullptr)),
      h_(gst_harness_new_with_element(converter_, "sink", "src")),
      bus_(gst_bus_new()) {
  gst_object_unref(converter_);
  gst_element_set_bus(converter_, bus_);
}

harness::~harness() {
  gst_element_set_bus(converter_, nullptr);
  gst_harness_teardown(h_);
  gst_object_unref(bus_);
}

void harness::set_caps(const std::string& from, const std::string& to) {
  gst_harness_set_sink_caps_str(h_, to.c_str());
  gst_harness_set_src_caps_str(h_, from.c_str());
}

bytes harness::pull() {
  GstBuffer* buffer = pull_buffer();
  if (!buffer) return {};
  bytes content = bytes_of(buffer);
  gst_buffer_unref(buffer);
  return content;
}

std::string harness::caps_out() const {
  GstCaps* caps = gst_pad_get_current_caps(h_->sinkpad);
  if (!caps) return {};
  gchar* text = gst_caps_to_string(caps);
  std::string said = text;
  g_free(text);
  gst_caps_unref(caps);
  return said;
}

std::string harness::error() {
  GstMessage* message = gst_bus_pop_filtered(bus_, GST_MESSAGE_ERROR);
  if (!message) return {};
  GError* error = nullptr;
  gst_message_parse_error(message, &error, nullptr);
  std::string said = error->message;
  g_error_free(error);
  gst_message_unref(message);
  return said;
}
