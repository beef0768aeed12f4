"""No memory is kept: neither by conversions, nor by frames, nor by errors."""

import gc
import os
import weakref

import numpy as np

import morvane


def resident():
    with open("/proc/self/statm", encoding="ascii") as told:
        return int(told.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def grows_by(action, times):
    """What the process grows by while something is done so often, after it has been done for a while."""
    for _ in range(2000):
        action()
    gc.collect()
    before = resident()
    for _ in range(times):
        action()
    gc.collect()
    return resident() - before


def test_a_million_conversions_keep_nothing():
    source, out = np.zeros((4, 8, 4), np.uint8), np.zeros((4, 8, 3), np.uint8)
    plan = morvane.Plan("bgra", "rgb24", (8, 4))
    assert grows_by(lambda: plan.run(source, out), 1_000_000) < 1 << 20


def test_new_results_plans_and_errors_keep_nothing():
    frame = morvane.Frame("nv12", (8, 4))

    def work():
        morvane.convert(frame, to="p010")
        morvane.Plan("nv12", "rgb24", (8, 4))(frame)
        try:
            morvane.convert(bytes(3), "bgra", to="rgb24", size=(8, 4))
        except morvane.Error:
            pass

    assert grows_by(work, 20_000) < 1 << 20


def test_memory_lives_as_long_as_views_of_it():
    frame = morvane.Frame("nv12", (64, 64))
    frame["y"][:] = 5
    plane, lent, gone = frame["y"], memoryview(frame), weakref.ref(frame)
    del frame
    gc.collect()
    assert gone() is None
    assert (plane == 5).all() and lent[0] == 5


def test_frames_in_circles_are_collected():
    frame = morvane.Frame("nv12", (64, 64))
    frame.itself = frame
    gone = weakref.ref(frame)
    del frame
    gc.collect()
    assert gone() is None
