"""Pictures as PNG, for notebooks."""

from __future__ import annotations

import struct
import zlib

import numpy as np

from ._formats import Array


def _chunk(kind: bytes, data: bytes) -> bytes:
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(rgb: Array) -> bytes:
    """A PNG of uint8 of height x width x 3."""
    height, width = rgb.shape[:2]
    lines = np.zeros((height, 1 + 3 * width), np.uint8)  # every line begins with its filter, which is none
    lines[:, 1:] = rgb.reshape(height, 3 * width)
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    data = zlib.compress(lines.tobytes(), 1)
    return b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", header) + _chunk(b"IDAT", data) + _chunk(b"IEND", b"")
