"""How bright each frame of a pipeline is: pictures from GStreamer as arrays, by an appsink.

    /usr/bin/python3 brightness.py "videotestsrc num-buffers=3 ! video/x-raw,format=v210,width=640,height=360"
"""

import sys

import gi

gi.require_version("Gst", "1.0")
gi.require_version("GstVideo", "1.0")
from gi.repository import Gst, GstVideo  # noqa: E402


def brightness(sample: Gst.Sample) -> float:
    """The mean of all bytes of a picture in RGB."""
    info = GstVideo.VideoInfo.new_from_caps(sample.get_caps())
    buffer = sample.get_buffer()
    stride = info.stride[0]
    pixels = buffer.extract_dup(0, buffer.get_size())
    rows = (pixels[y * stride : y * stride + 3 * info.width] for y in range(info.height))
    return sum(sum(row) for row in rows) / (3 * info.width * info.height)


def main(source: str) -> None:
    Gst.init(None)
    pipeline = Gst.parse_launch(f"{source} ! morvaneconvert ! video/x-raw,format=RGB ! appsink name=sink sync=false")
    sink = pipeline.get_by_name("sink")
    pipeline.set_state(Gst.State.PLAYING)
    while sample := sink.emit("pull-sample"):
        print(f"{brightness(sample):.1f}")
    message = pipeline.get_bus().pop_filtered(Gst.MessageType.ERROR)
    pipeline.set_state(Gst.State.NULL)
    if message:
        sys.exit(message.parse_error().gerror.message)


if __name__ == "__main__":
    main(sys.argv[1])
