"""Frames, files of frames, comparisons and pictures of them."""

import copy
import io
import json
import pickle

import numpy as np
import pytest
from PIL import Image

import morvane
from conftest import ALL, NAMES, random_frame


@pytest.mark.parametrize("name", [f.name for f in ALL])
def test_planes_are_views_of_one_buffer(name):
    frame = random_frame(name, (7, 5))
    assert list(frame.planes) == [plane.name for plane in frame.format.planes]
    assert memoryview(frame).nbytes == morvane.layout(name, (7, 5)).bytes
    assert np.shares_memory(np.asarray(frame), frame.array)
    for plane in frame.planes.values():
        assert np.shares_memory(plane, frame.array)
    again = morvane.Frame(name, (7, 5), frame.array.tobytes())
    for plane in frame.planes:
        assert np.array_equal(again[plane], frame[plane], equal_nan=True)


def test_planes_outlive_what_was_given():
    given = [np.full((4, 4), 5, np.uint8), np.full((2, 2, 2), 6, np.uint8)]
    frame = morvane.Frame("nv12", (4, 4), given)
    given.clear()
    assert (frame.samples()["Y"] == 5).all() and (frame["cbcr"] == 6).all()
    with pytest.raises(TypeError):
        frame.planes["y"] = np.zeros((4, 4), np.uint8)


@pytest.mark.parametrize("planes", [None, [np.full((4, 4), 5, np.uint8), np.full((2, 2, 2), 6, np.uint8)]])
def test_frames_go_to_other_processes(planes):
    frame = morvane.Frame("nv12", (4, 4), planes, matrix=601, range="full")
    for again in (pickle.loads(pickle.dumps(frame)), copy.deepcopy(frame)):
        assert (again.matrix, again.range) == (601, "full")
        assert all(np.array_equal(again[name], plane) for name, plane in frame.planes.items())
        assert not any(np.shares_memory(again[name], plane) for name, plane in frame.planes.items())


def test_pillow_takes_a_frame():
    frame = random_frame("rgb24", (6, 4))
    assert np.array_equal(np.asarray(Image.fromarray(frame)), frame.array)


def test_a_picture_of_pillow_is_a_source():
    picture = Image.new("RGB", (6, 4), (10, 20, 30))
    assert morvane.convert(picture, "rgb24", to="bgr24")[0, 0].tolist() == [30, 20, 10]
    with pytest.raises(morvane.Error):
        morvane.convert(random_frame("bgr24", (6, 4)), to="rgb24", out=picture)


def test_planes_that_lie_apart_lend_no_memory():
    frame = morvane.Frame("nv12", (4, 4), [np.zeros((4, 4), np.uint8), np.zeros((2, 2, 2), np.uint8)])
    with pytest.raises(BufferError):
        memoryview(frame)
    with pytest.raises(BufferError):
        frame.array


@pytest.mark.parametrize(
    "data",
    [
        bytes(23), [np.zeros((4, 4), np.uint8)], [np.zeros((4, 4), np.uint8), np.zeros((2, 4), np.uint8)],
        np.zeros((2, 24), np.uint8),
    ],
)  # fmt: skip
def test_data_of_another_size_is_refused(data):
    with pytest.raises(morvane.Error):
        morvane.Frame("nv12", (4, 4), data)


@pytest.mark.parametrize("name", NAMES)
def test_a_frame_shows_itself(name):
    frame = random_frame(name, (9, 5))
    shown = frame._repr_png_()
    if frame.format.model in ("alpha", "chroma"):
        assert shown is None
    else:
        assert np.array_equal(np.asarray(Image.open(io.BytesIO(shown))), frame.rgb())


@pytest.mark.parametrize("name", [f.name for f in ALL if not f.planes[0].is_float])
def test_comparisons_are_those_of_the_command(name, command, tmp_path):
    a, b = random_frame(name, (13, 6), 1), random_frame(name, (13, 6), 2)
    a.array.tofile(tmp_path / "a")
    b.array.tofile(tmp_path / "b")
    told = json.loads(command("compare", tmp_path / "a", tmp_path / "b", "-f", name, "-s", "13x6", "--json", ok=(0, 1)))
    found = morvane.compare(a, b)
    assert not found.identical and found.frames == 1
    assert found.overall.sum == told["overall"]["sum_of_absolute_differences"]
    assert found.overall.psnr == pytest.approx(told["overall"]["psnr_db"])
    components = [c for plane in told["planes"] for c in plane["components"]]
    assert [d.maximum for d in found.components.values()] == [c["max_difference"] for c in components]
    assert morvane.compare(a, a).identical


def test_only_pictures_of_a_kind_are_compared():
    with pytest.raises(morvane.Error):
        morvane.compare(morvane.Frame("nv12", (4, 4)), morvane.Frame("nv12", (4, 6)))
    with pytest.raises(TypeError):
        morvane.compare(morvane.Frame("nv12", (4, 4)), bytes(24))


@pytest.mark.parametrize("format, size", [("v210", (50, 6)), ("nv12", (31, 7)), ("p010", (16, 16)), ("gbrp", (9, 9))])
def test_raw_files_are_opened_by_their_name(pattern, format, size):
    path = pattern("zone", f"clip_{size[0]}x{size[1]}_{format}.raw", format, size, "--frames", "5")
    clip = morvane.open(path)
    assert (len(clip), clip.format, clip.size) == (5, morvane.format(format), size)
    assert b"".join(bytes(memoryview(frame).cast("B")) for frame in clip) == path.read_bytes()
    assert len(clip[1:4]) == 3 and np.array_equal(clip[1:4][-1].array, clip[3].array)
    assert morvane.convert(clip[::2], to="rgbpf32" if clip.format.model == "rgb" else "bgra").shape[0] == 3
    with pytest.raises(IndexError):
        clip[5]
    assert not clip[0].planes[clip.format.planes[0].name].flags.writeable


@pytest.mark.parametrize("name", ["y_u_v_420", "y_u_v_422", "y_u_v_444", "y_u_v_a_444", "y", "y_u_v_420_10u16", "y16"])
def test_y4m_is_read(pattern, command, tmp_path, name):
    path = pattern("bars", "clip.y4m", name, (33, 9), "--frames", "3")
    command("convert", path, tmp_path / "raw", "-t", name)
    clip = morvane.open(path)
    assert (clip.format.name, clip.size, len(clip)) == (name, (33, 9), 3)
    assert b"".join(bytes(memoryview(frame).cast("B")) for frame in clip) == (tmp_path / "raw").read_bytes()
    assert clip[2].rgb().shape == (9, 33, 3)


def test_y4m_says_range_and_siting(tmp_path):
    path = tmp_path / "v.y4m"
    path.write_bytes(b"YUV4MPEG2 W2 H2 F25:1 C420jpeg XCOLORRANGE=FULL\nFRAME Ix\n" + bytes(6))
    clip = morvane.open(path, matrix=601)
    assert (clip.siting, len(clip)) == ("center", 1)
    assert (clip.matrix, clip.range) == (clip[0].matrix, clip[0].range) == (601, "full")


@pytest.mark.parametrize(
    "name, content",
    [
        ("a.raw", b"123"), ("a_4x4.raw", bytes(16)), ("a_nv12.raw", bytes(16)), ("a_4x4_nv12.raw", bytes(25)),
        ("a_4x4_nv12.raw", b""), ("a.y4m", b"YUV4MPEG2 W2\n"), ("a.y4m", b"YUV4MPEG2 W2 H2 C999\n"),
        ("a.y4m", b"YUV4MPEG2 W2 H2 Cmono\nFRAME\n123"), ("a.y4m", b"YUV4MPEG2 W2 H2 Cmono\nF\n1234"),
        ("a.y4m", b"YUV4MPEG2"),
        ("a.y4m", b"YUV4MPEG2 W2 H2 XCOLORRANGE=SOME\n"),
    ],
)  # fmt: skip
def test_files_that_are_no_frames_are_refused(tmp_path, name, content):
    (tmp_path / name).write_bytes(content)
    with pytest.raises(morvane.Error):
        morvane.open(tmp_path / name)


def test_the_longest_name_of_a_format_is_meant(tmp_path):
    path = tmp_path / "rgb_5x3_y_u_v_420_10u16.raw"
    path.write_bytes(bytes(morvane.layout("y_u_v_420_10u16", (5, 3)).bytes))
    assert morvane.open(path).format.name == "y_u_v_420_10u16"
    assert morvane.open(path, "gray", (6, 9)).size == (6, 9)


def test_a_file_that_there_is_not_is_an_os_error(tmp_path):
    with pytest.raises(FileNotFoundError):
        morvane.open(tmp_path / "nothing")
