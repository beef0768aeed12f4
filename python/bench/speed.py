"""How fast conversions are from Python, beside the C call and beside what else there is for the same job.

    python bench/speed.py [--rounds N] [--size 1920x1080]

All that is compared runs in turn in one process, on one thread, and writes to memory that is there already where it
can. A ratio is taken in every round, and the median of the rounds is printed. OpenCV (python3-opencv) and PyAV
(python3-av) take part where they are installed.
"""

from __future__ import annotations

import argparse
import importlib
import statistics
import time
from typing import Any, Callable

import numpy as np

import morvane
from morvane._morvane import ffi, lib

Job = Callable[[], Any]


def installed(name: str) -> Any:
    try:
        return importlib.import_module(name)
    except ImportError:
        return None


def seconds(job: Job, times: int) -> float:
    began = time.perf_counter()
    for _ in range(times):
        job()
    return (time.perf_counter() - began) / times


def in_turn(jobs: dict[str, Job], rounds: int, times: int) -> dict[str, list[float]]:
    for job in jobs.values():
        seconds(job, 2)
    taken: dict[str, list[float]] = {name: [] for name in jobs}
    for _ in range(rounds):
        for name, job in jobs.items():
            taken[name].append(seconds(job, times))
    return taken


def report(title: str, jobs: dict[str, Job], rounds: int, times: int) -> None:
    """A line for every job: its time, and how many times that of the first it is."""
    taken = in_turn(jobs, rounds, times)
    first = taken[next(iter(jobs))]
    for name, mine in taken.items():
        ratio = statistics.median(a / b for a, b in zip(mine, first))
        print(f"| {title} | {name} | {1e3 * statistics.median(mine):.2f} ms | {ratio:.2f} |", flush=True)


def c_call(plan: morvane.Plan, source: morvane.Frame, out: morvane.Frame) -> Job:
    """The call of the C library alone."""
    error = ffi.new("morvane_error *")
    scratch_bytes = lib.morvane_plan_scratch_bytes(plan._plan)
    scratch = ffi.new("char[]", scratch_bytes) if scratch_bytes else ffi.NULL
    run, arguments = lib.morvane_plan_run, (plan._plan, source._picture, out._picture, scratch, scratch_bytes, error)
    return lambda: run(*arguments)


def overhead(rounds: int) -> None:
    """What a call costs above that of C, on a picture so small that little else takes time."""
    size = (16, 4)
    source, out = morvane.Frame("bgra", size), morvane.Frame("rgb24", size)
    plan = morvane.Plan("bgra", "rgb24", size)
    bgra, rgb = source.array, out.array
    jobs: dict[str, Job] = {
        "the C call": c_call(plan, source, out),
        "plan(frame, out=frame)": lambda: plan(source, out),
        "plan(array, out=array)": lambda: plan(bgra, rgb),
        "plan(array)": lambda: plan(bgra),
        "convert(array, out=array)": lambda: morvane.convert(bgra, "bgra", to="rgb24", out=rgb),
        "convert(array)": lambda: morvane.convert(bgra, "bgra", to="rgb24"),
        "convert(array) to a Frame": lambda: morvane.convert(bgra, "bgra", to="nv12"),
    }
    taken = in_turn(jobs, rounds, 2000)
    c = taken.pop("the C call")
    for name, mine in taken.items():
        above = statistics.median(a - b for a, b in zip(mine, c))
        print(f"| {name} | {1e6 * above:.1f} us |", flush=True)


def nv12_to_rgb(cv2: Any, av: Any, size: tuple[int, int], picture: morvane.Frame) -> dict[str, Job]:
    width, height = size
    out = np.empty((height, width, 3), np.uint8)
    stacked = picture.array.reshape(height * 3 // 2, width)
    plan = morvane.Plan("nv12", "rgb24", size, matrix=601)
    jobs: dict[str, Job] = {"morvane": lambda: plan(picture, out)}
    if cv2:
        jobs["OpenCV"] = lambda: cv2.cvtColor(stacked, cv2.COLOR_YUV2RGB_NV12, out)
    if av:
        frame = av.VideoFrame.from_ndarray(stacked, format="nv12")
        jobs["PyAV's reformat"] = lambda: frame.reformat(format="rgb24")
    y, cbcr = picture["y"], picture["cbcr"]
    jobs["numpy"] = lambda: by_numpy(y, cbcr)
    return jobs


def by_numpy(y: Any, cbcr: Any) -> Any:
    """BT.601 with chroma of the nearest pixel, in floats."""
    luma = 1.164 * (y.astype(np.float32) - 16)
    chroma = cbcr.astype(np.float32).repeat(2, axis=0).repeat(2, axis=1) - 128
    cb, cr = chroma[..., 0], chroma[..., 1]
    rgb = np.stack([luma + 1.596 * cr, luma - 0.392 * cb - 0.813 * cr, luma + 2.017 * cb], axis=-1)
    return rgb.clip(0, 255).astype(np.uint8)


def uyvy_to_bgra(cv2: Any, av: Any, size: tuple[int, int], picture: morvane.Frame) -> dict[str, Job]:
    width, height = size
    uyvy, out = picture.to("uyvy").array, np.empty((height, width, 4), np.uint8)
    plan = morvane.Plan("uyvy", "bgra", size, matrix=601)
    jobs: dict[str, Job] = {"morvane": lambda: plan(uyvy, out)}
    if cv2:
        jobs["OpenCV"] = lambda: cv2.cvtColor(uyvy, cv2.COLOR_YUV2BGRA_UYVY, out)
    if av:
        frame = av.VideoFrame(width, height, "uyvy422")
        jobs["PyAV's reformat"] = lambda: frame.reformat(format="bgra")
    return jobs


def nv12_to_tensor(cv2: Any, av: Any, size: tuple[int, int], picture: morvane.Frame) -> dict[str, Job]:
    width, height = size
    out, rgb = np.empty((3, height, width), np.float32), np.empty((height, width, 3), np.uint8)
    stacked = picture.array.reshape(height * 3 // 2, width)
    plan = morvane.Plan("nv12", "rgbpf32", size, matrix=601)

    def with_opencv() -> Any:
        cv2.cvtColor(stacked, cv2.COLOR_YUV2RGB_NV12, rgb)
        return np.ascontiguousarray(rgb.astype(np.float32).transpose(2, 0, 1) / 255)

    def with_opencv_in_place() -> Any:
        cv2.cvtColor(stacked, cv2.COLOR_YUV2RGB_NV12, rgb)
        np.copyto(out, rgb.transpose(2, 0, 1))
        return np.divide(out, np.float32(255), out=out)

    jobs: dict[str, Job] = {"morvane": lambda: plan(picture, out), "morvane, new array": lambda: plan(picture)}
    if cv2:
        jobs["OpenCV, astype, transpose, division"] = with_opencv
        jobs["OpenCV, copied and divided in place"] = with_opencv_in_place
    return jobs


def main() -> None:
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--rounds", type=int, default=15)
    options.add_argument("--size", default="1920x1080")
    given = options.parse_args()
    width, height = map(int, given.size.split("x"))
    cv2, av = installed("cv2"), installed("av")
    if cv2:
        cv2.setNumThreads(1)
    picture = morvane.Frame("nv12", (width, height))
    for plane in picture.planes.values():
        plane[:] = np.random.default_rng(1).integers(16, 236, plane.shape, np.uint8)
    print("| call | above the C call |\n|---|---|")
    overhead(given.rounds)
    print(f"\n| {width}x{height} | with | time | times morvane's |\n|---|---|---|---|")
    kinds = {"nv12 to rgb24": nv12_to_rgb, "uyvy to bgra": uyvy_to_bgra, "nv12 to rgbpf32": nv12_to_tensor}
    for title, kind in kinds.items():
        report(title, kind(cv2, av, (width, height), picture), given.rounds, 3)


if __name__ == "__main__":
    main()
