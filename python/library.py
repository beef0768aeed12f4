"""The C library as cffi takes it: where it is built, what its header declares, and how it is linked."""

import os
import re
import subprocess
import sys
from pathlib import Path

import cffi

ROOT = Path(__file__).resolve().parent.parent
SOURCES = ROOT / "Processing" / "Morvane"
HEADER = SOURCES / "morvane.h"
# A finished build may be named, from the root on, so that the library is not compiled a second time.
FINISHED = os.environ.get("MORVANE_BUILD_DIR")
BUILD = ROOT / (FINISHED or "build/python")
ARCHIVE = BUILD / "Processing" / "Morvane" / "libmorvane.a"


def build():
    """Compiles the library, unless a finished build is named."""
    if FINISHED:
        if not ARCHIVE.exists():
            sys.exit(f"MORVANE_BUILD_DIR: there is no {ARCHIVE}")
        return
    without = [f"-DMORVANE_{part}=OFF" for part in ("BUILD_TOOL", "BUILD_TESTS", "BUILD_BENCH", "WARNINGS_AS_ERRORS")]
    jobs = str(os.cpu_count() or 1)
    subprocess.run(["cmake", "-S", ROOT, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release", *without], check=True)
    subprocess.run(["cmake", "--build", BUILD, "--target", "morvane_static", "--parallel", jobs], check=True)


def declarations(header):
    """What the header declares, without comments, the preprocessor and C++."""
    text = re.sub(r"/\*.*?\*/", "", header, flags=re.DOTALL)
    text = re.sub(r"^#ifdef __cplusplus$.*?^#endif$", "", text, flags=re.DOTALL | re.MULTILINE)
    text = re.sub(r"^#(?!define \w+ \d+$).*$", "", text, flags=re.MULTILINE)
    return text.replace("MORVANE_C_API ", "")


def linked():
    """Flags of the linker: the C++ library goes into the wheel where that is possible, and no name leaves it."""
    if sys.platform == "darwin":
        return ["-lc++", "-framework", "Accelerate"]
    return ["-Wl,-Bstatic", "-lstdc++", "-Wl,-Bdynamic", "-Wl,--exclude-libs,ALL"]


ffi = cffi.FFI()
ffi.cdef(declarations(HEADER.read_text(encoding="utf-8")))
ffi.set_source(
    "morvane._morvane",
    '#include "morvane.h"',
    include_dirs=[str(SOURCES)],
    extra_objects=[str(ARCHIVE)],
    depends=[str(ARCHIVE), str(HEADER)],
    extra_link_args=linked(),
)
