"""Formats, layouts and errors as the library tells them."""

import pickle

import pytest

import morvane
from conftest import ALL


def test_all_formats_are_there_once():
    assert len(ALL) > 100
    assert len({f.name for f in ALL}) == len(ALL)


@pytest.mark.parametrize("name", ["nv12", "NV12", "420v", "V4L2_PIX_FMT_NV12", "y_uv_420"])
def test_a_format_answers_to_names_of_other_systems(name):
    assert morvane.format(name).name == "y_uv_420"


def test_what_the_catalogue_knows_is_told():
    f = morvane.format("v210")
    assert (f.model, f.has_alpha, f.planes[0].bits, f.planes[0].group_bytes) == ("ycbcr", False, 10, 16)
    assert f.planes[0].components[:4] == ("Cb", "Y", "Cr", "Y")
    assert morvane.format("rgbaf16").planes[0].dtype == "float16"


def test_the_command_lists_the_same_formats(command):
    listed = command("formats")
    assert all(f.name in listed for f in ALL)


def test_layouts_are_those_of_files():
    found = morvane.layout("nv12", (5, 3))
    assert [(p.name, p.offset, p.stride, p.rows) for p in found.planes] == [("y", 0, 5, 3), ("cbcr", 15, 6, 2)]
    assert morvane.layout("nv12", (5, 3), 64).planes[1].stride == 64


@pytest.mark.parametrize(
    "call, reason",
    [
        (lambda: morvane.format("nothing"), "unknown_format"),
        (lambda: morvane.format("AYUV"), "unknown_format"),
        (lambda: morvane.layout("v210", (0, 1)), "size"),
        (lambda: morvane.layout("v210", (1 << 40, 1)), "size"),
        (lambda: morvane.layout("v210", (4, 4), 3), "option"),
        (lambda: morvane.Plan("uyvy", "alpha", (4, 4)), "no_way"),
        (lambda: morvane.Plan("uyvy", "bgra", (4, 4), matrix=2), "option"),
        (lambda: morvane.Plan("uyvy", "bgra", (4, 4), chroma="cubic"), "option"),
        (lambda: morvane.Plan("uyvy", "bgra", (4, 4), range="tv"), "option"),
        (lambda: morvane.Plan("bgra", "bgr", (4, 4), background=(0, 0, 256)), "option"),
        (lambda: morvane.Plan("uyvy", "bgra", (4, 4), via="nothing"), "via"),
    ],
)
def test_what_there_is_not_is_refused(call, reason):
    with pytest.raises(morvane.Error) as caught:
        call()
    error = caught.value
    assert isinstance(error, ValueError)
    assert error.reason == reason and str(error) == error.message
    again = pickle.loads(pickle.dumps(error))
    assert (again.code, again.argument, again.got) == (error.code, error.argument, error.got)
