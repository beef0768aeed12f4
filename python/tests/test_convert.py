"""Conversions: bytes, arrays with strides, out, batches, and what is refused."""

import mmap
import os
import signal
import threading
import time

import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

import morvane
from conftest import NAMES, kin, random_frame

SIZES = [(1, 1), (7, 3), (50, 4)]


@pytest.mark.parametrize("name", NAMES)
def test_bytes_are_those_of_the_command(name, command, tmp_path):
    for size in SIZES:
        source = random_frame(name, size)
        source.array.tofile(tmp_path / "in.raw")
        to = kin(name)
        command(
            "convert", tmp_path / "in.raw", tmp_path / "out.raw", "-f", name, "-t", to, "-s", "%dx%d" % size,
            "--matrix", "bt601", "--chroma", "nearest",
        )  # fmt: skip
        made = morvane.convert(source, to=to, matrix=601, chroma="nearest")
        assert bytes(memoryview(made).cast("B")) == (tmp_path / "out.raw").read_bytes()


@pytest.mark.parametrize(
    "name, to, options",
    [
        ("nv12", "bgra", {"siting": "center"}),
        ("nv12", "yuv444p", {"matrix": 601, "to_matrix": 2020}),
        ("nv12", "p010", {"range": "full", "to_range": "video"}),
        ("bgra", "nv12", {"rgb_range": "video", "range": "full"}),
        ("bgra", "uyvy", {"background": [9, 80, 200], "threads": 2}),
        ("uyvy", "bgra", {"range": "full", "stores": "streaming"}),
    ],
)
def test_options_are_those_of_the_command(name, to, options, command, tmp_path):
    source = random_frame(name, (30, 8))
    source.array.tofile(tmp_path / "in.raw")
    words = {k: ",".join(map(str, v)) if isinstance(v, list) else str(v) for k, v in options.items()}
    given = [word for k, v in words.items() for word in ("--" + k.replace("_", "-"), v)]
    command("convert", tmp_path / "in.raw", tmp_path / "out.raw", "-f", name, "-t", to, "-s", "30x8", *given)
    made = bytes(memoryview(morvane.convert(source, to=to, **options)).cast("B"))
    assert made == (tmp_path / "out.raw").read_bytes()
    assert made != bytes(memoryview(morvane.convert(source, to=to)).cast("B")) or "stores" in options


@pytest.mark.parametrize("name", NAMES)
def test_any_kind_of_source_gives_the_same(name):
    size, to = (7, 5), kin(name)
    frame = random_frame(name, size)
    expected = bytes(memoryview(morvane.convert(frame, to=to)).cast("B"))
    raw = frame.array.tobytes()
    mapped = mmap.mmap(-1, len(raw))
    mapped.write(raw)
    flat = np.frombuffer(raw, np.uint8)
    planes = morvane.Frame(name, size, list(frame.planes.values()))
    for source in (raw, bytearray(raw), memoryview(raw), mapped, flat, frame.array, planes):
        made = morvane.convert(source, name, to=to, size=size)
        assert bytes(memoryview(made).cast("B")) == expected


@pytest.mark.parametrize("name", NAMES)
def test_rows_may_have_any_stride(name):
    size, to = (9, 6), kin(name)
    upright = random_frame(name, size)
    expected = morvane.convert(upright, to=to)
    wide, flipped = [], []
    for plane in upright.planes.values():
        room = np.zeros((plane.shape[0], 2, *plane.shape[1:]), plane.dtype)
        room[:, 0] = plane
        wide.append(room[:, 0])
        flipped.append(plane[::-1].copy()[::-1])
    for planes in (wide, flipped):
        made = morvane.convert(morvane.Frame(name, size, planes), to=to)
        assert np.array_equal(np.asarray(made), np.asarray(expected))


@settings(max_examples=60, deadline=None)
@given(
    st.sampled_from(NAMES), st.sampled_from(NAMES), st.integers(1, 40), st.integers(1, 9), st.integers(0, 99),
    st.sampled_from(["linear", "nearest"]), st.sampled_from([601, 709, 2020]), st.integers(1, 3),
)  # fmt: skip
def test_out_receives_what_is_returned(source, to, width, height, seed, chroma, matrix, threads):
    frame = random_frame(source, (width, height), seed)
    options = {"chroma": chroma, "matrix": matrix, "threads": threads}
    try:
        made = morvane.convert(frame, to=to, **options)
    except morvane.Error as error:
        assert error.reason == "no_way"
        return
    room = morvane.Frame(to, (width, height))
    assert morvane.convert(frame, to=to, out=room, **options) is room
    assert np.array_equal(np.asarray(made), room.array)
    flat = bytearray(room.array.nbytes)
    assert morvane.convert(frame, to=to, out=flat, **options) is flat
    assert flat == room.array.tobytes()


@settings(max_examples=40, deadline=None)
@given(st.integers(1, 20), st.integers(1, 12), st.integers(1, 3), st.booleans(), st.booleans(), st.integers(0, 5))
def test_views_are_converted_where_they_lie(width, height, step, flip_in, flip_out, left):
    rng = np.random.default_rng(width)
    big = rng.integers(0, 256, (height * step, width + left, 4), np.uint8)
    view = big[::step, left:][:: -1 if flip_in else 1]
    room = np.full((height, 2 * width, 3), 7, np.uint8)
    out = room[:, :width][:: -1 if flip_out else 1]
    assert morvane.convert(view, "bgra", to="rgb", out=out) is out
    assert np.array_equal(out, view[..., 2::-1])
    assert (room[:, width:] == 7).all()


@settings(max_examples=40, deadline=None)
@given(st.integers(1, 9), st.integers(1, 6), st.booleans(), st.booleans(), st.integers(1, 2))
def test_planes_of_one_array_may_have_any_stride(width, height, flip_planes, flip_rows, step):
    rgb = np.random.default_rng(height).integers(0, 256, (3 * step, 2 * height, width + 3), np.uint8)
    view = rgb[::step, ::2, 1 : 1 + width][:: -1 if flip_planes else 1, :: -1 if flip_rows else 1]
    out = np.zeros((3, height, width), np.uint8)[::-1]
    morvane.convert(view, "r_g_b", to="g_b_r", out=out)
    assert np.array_equal(out, view[[1, 2, 0]])


def test_planes_are_read_and_written_where_they_lie():
    y, cbcr = np.zeros((8, 4), np.uint8)[::2], np.zeros((2, 2, 2), np.uint8)
    frame = morvane.Frame("nv12", (4, 4), [y, cbcr])
    morvane.convert(np.full((4, 4, 3), 255, np.uint8), "rgb24", to="nv12", out=frame)
    assert frame["y"] is y and (y == 235).all() and (cbcr == 128).all()
    y[:] = 16
    assert (morvane.convert(frame, to="rgb24") == 0).all()


@pytest.mark.parametrize(
    "name, shape, dtype",
    [
        ("bgra", (3, 5, 4), "uint8"), ("rgb24", (3, 5, 3), "uint8"), ("rgbpf32", (3, 3, 5), "float32"),
        ("yuv444p10le", (3, 3, 5), "uint16"), ("gray", (3, 5), "uint8"), ("rgbaf16", (3, 5, 4), "float16"),
        ("uyvy", (3, 6, 2), "uint8"), ("y210", (3, 6, 2), "uint16"), ("v210", (3, 128), "uint8"),
        ("r210", (3, 256), "uint8"),
    ],
)  # fmt: skip
def test_arrays_have_the_shape_of_their_format(name, shape, dtype):
    made = morvane.convert(np.zeros((3, 5, 3), np.uint8), "rgb24", to=name)
    assert made.shape == shape and made.dtype == dtype
    back = morvane.convert(made, name, to="rgb24", size=(5, 3))
    assert back.shape == (3, 5, 3)


def test_values_are_right():
    white = np.full((2, 2, 3), 255, np.uint8)
    assert morvane.convert(white, "rgb24", to="nv12")["y"].tolist() == [[235, 235], [235, 235]]
    assert morvane.convert(white, "rgb24", to="nv12", range="full")["y"][0, 0] == 255
    assert morvane.convert(white, "rgb24", to="rgbpf32").tolist() == [[[1.0, 1.0]] * 2] * 3
    clear = np.zeros((2, 2, 4), np.uint8)
    assert morvane.convert(clear, "rgba", to="rgb24", background=(1, 2, 3))[0, 0].tolist() == [1, 2, 3]


@pytest.mark.parametrize("to", ["rgbpf32", "nv12", "v210"])
def test_a_batch_is_converted_frame_by_frame(to):
    batch = np.random.default_rng(1).integers(0, 256, (4, 6, 8, 4), np.uint8)
    made = morvane.convert(batch, "bgra", to=to)
    assert len(made) == 4
    for one, from_batch in zip(batch, made):
        assert np.array_equal(np.asarray(morvane.convert(one, "bgra", to=to)), np.asarray(from_batch))
    backward = morvane.convert(batch[::-1], "bgra", to=to)
    assert np.array_equal(np.asarray(backward[0]), np.asarray(made[3]))
    frames = [morvane.Frame("bgra", (8, 6), one) for one in batch]
    out = np.zeros((4, morvane.layout(to, (8, 6)).bytes), np.uint8)
    assert morvane.convert(frames, to=to, out=out) is out
    assert out.tobytes() == b"".join(bytes(memoryview(one).cast("B")) for one in made)


def test_a_frame_brings_its_matrix_and_range_along():
    frame = random_frame("nv12", (8, 8))
    said = morvane.Frame("nv12", (8, 8), frame.array, matrix=601, range="full")
    expected = morvane.convert(frame, to="bgra", matrix=601, range="full")
    assert np.array_equal(morvane.convert(said, to="bgra"), expected)
    assert not np.array_equal(morvane.convert(frame, to="bgra"), expected)
    assert (said.to("v210").matrix, said.to("v210").range, frame.matrix) == (601, "full", None)


def test_plans_tell_what_they_do():
    plan = morvane.Plan("p010", "nv12", (64, 48))
    assert plan.steps and plan.losses == ("10 to 8 bits",)


BGRA = np.zeros((4, 6, 4), np.uint8)
READ_ONLY = np.zeros((4, 6, 3), np.uint8)
READ_ONLY.flags.writeable = False


@pytest.mark.parametrize(
    "reason, call",
    [
        ("size", lambda: morvane.convert(BGRA.astype(np.uint16), "bgra", to="rgb24", size=(6, 4))),
        ("size", lambda: morvane.convert(BGRA[..., :3], "bgra", to="rgb24", size=(6, 4))),
        ("size", lambda: morvane.convert(BGRA, "bgra", to="rgb24", size=(7, 4))),
        ("size", lambda: morvane.convert(bytes(95), "bgra", to="rgb24", size=(6, 4))),
        ("size", lambda: morvane.convert(bytes(96), "bgra", to="rgb24")),
        ("size", lambda: morvane.convert(bytes(96), "nv12", to="rgb24")),
        ("size", lambda: morvane.convert(BGRA, "bgra", to="rgb24", out=np.zeros((4, 6, 4), np.uint8))),
        ("size", lambda: morvane.convert(BGRA[None], "bgra", to="rgb24", out=np.zeros((4, 6, 3), np.uint8))),
        ("size", lambda: morvane.convert(BGRA[None], "bgra", to="rgb24", out=np.zeros((2, 4, 6, 3), np.uint8))),
        ("size", lambda: morvane.convert(BGRA, "bgra", to="rgb24", out=np.zeros((2, 4, 6, 3), np.uint8))),
        ("size", lambda: morvane.convert(BGRA, "bgra", to="nv12", out=morvane.Frame("nv12", (4, 4)))),
        ("stride", lambda: morvane.convert(BGRA[:, ::-1], "bgra", to="rgb24")),
        ("stride", lambda: morvane.convert(BGRA[:, ::2], "bgra", to="rgb24")),
        ("stride", lambda: morvane.convert(BGRA[..., ::-1], "bgra", to="rgb24")),
        ("stride", lambda: morvane.convert(np.broadcast_to(BGRA[:1], BGRA.shape), "bgra", to="rgb24")),
        ("overlap", lambda: morvane.convert(BGRA, "bgra", to="rgba", out=BGRA)),
        ("option", lambda: morvane.convert(BGRA, "bgra", to="rgb24", out=READ_ONLY)),
        ("option", lambda: morvane.convert(BGRA, "bgra", to="rgb24", out=bytes(72))),
        ("option", lambda: morvane.convert(BGRA, "bgra", to="rgb24", out=morvane.Frame("rgb24", (6, 4), bytes(72)))),
        ("option", lambda: morvane.convert(BGRA, "bgra", to="rgb24", threads=1000)),
    ],
)
def test_what_cannot_be_right_is_refused(reason, call):
    with pytest.raises(morvane.Error) as caught:
        call()
    assert caught.value.reason == reason, caught.value.message


@settings(max_examples=300, deadline=None)
@given(
    st.sampled_from(NAMES), st.lists(st.integers(0, 6), max_size=4),
    st.sampled_from(["u1", "u2", ">u2", "f4", "f2", "i8", "?"]),
    st.one_of(st.none(), st.tuples(st.integers(-1, 6), st.integers(-1, 6))), st.booleans(),
)  # fmt: skip
def test_any_array_is_a_picture_or_refused(name, shape, dtype, size, is_out):
    array = np.zeros(shape, dtype)[::-1] if shape else np.zeros((), dtype)
    try:
        if is_out:
            morvane.convert(morvane.Frame(kin(name), size or (4, 4)), to=name, out=array)
        else:
            morvane.convert(array, name, to=kin(name), size=size)
    except morvane.Error as error:
        assert error.message and error.reason in ("size", "stride")


@pytest.mark.parametrize("source", [None, 5, "text", object()])
def test_what_is_no_memory_is_a_type_error(source):
    with pytest.raises(TypeError):
        morvane.convert(source, "bgra", to="rgb24", size=(6, 4))


def test_nothing_is_written_when_a_call_is_refused():
    out = np.full((4, 6, 3), 9, np.uint8)
    with pytest.raises(morvane.Error):
        morvane.convert(np.broadcast_to(BGRA[:1], BGRA.shape), "bgra", to="rgb24", out=out)
    assert (out == 9).all()


def test_read_only_sources_are_read():
    assert morvane.convert(READ_ONLY, "rgb24", to="bgra").shape == (4, 6, 4)


@pytest.mark.parametrize("threads", [1, 2])
def test_threads_share_a_plan(threads):
    plan = morvane.Plan("nv12", "bgra", (160, 90), threads=threads)
    frames = [random_frame("nv12", (160, 90), seed) for seed in range(8)]
    expected = [plan(frame) for frame in frames]
    wrong = []

    def work(frame, right):
        wrong.extend(1 for _ in range(50) if not np.array_equal(plan(frame), right))

    workers = [threading.Thread(target=work, args=pair) for pair in zip(frames, expected)]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    assert not wrong


def test_other_threads_run_during_a_conversion():
    plan = morvane.Plan("rgbaf32", "v210", (4096, 2160))
    source, out = np.zeros((2160, 4096, 4), np.float32), bytearray(morvane.layout("v210", (4096, 2160)).bytes)
    ran = []

    def work():
        began = time.perf_counter()
        plan(source, out)
        ran.append((began, time.perf_counter()))

    plan(source, out)
    worker = threading.Thread(target=work)
    times = []
    worker.start()
    while not ran:
        times.append(time.perf_counter())
    worker.join()
    ((began, ended),) = ran
    quarter = (ended - began) / 4
    assert sum(began + quarter < time < ended - quarter for time in times) > 10


@pytest.mark.parametrize("threads", [1, 2])
def test_a_fork_converts_too(threads):
    frame = random_frame("nv12", (640, 360))
    expected = morvane.convert(frame, to="bgra", threads=threads)
    child = os.fork()
    if child == 0:
        same = np.array_equal(morvane.convert(frame, to="bgra", threads=threads), expected)
        os._exit(0 if same else 1)
    for _ in range(1000):
        pid, status = os.waitpid(child, os.WNOHANG)
        if pid:
            break
        time.sleep(0.01)
    else:
        os.kill(child, signal.SIGKILL)
        os.waitpid(child, 0)
        pytest.fail("the child hangs")
    assert status == 0


def test_all_options_may_be_named():
    picture = np.zeros((1080, 1920, 4), np.uint8)
    made = morvane.convert(
        picture, "bgra", to="nv12", size=(1920, 1080), matrix=709, range="video", chroma="linear", siting="left",
        threads=1, stores="by_size", out=None,
    )  # fmt: skip
    assert np.array_equal(made.array, morvane.convert(picture, "bgra", to="nv12").array)
