"""Reads what GCC's --coverage writes: notes (.gcno) and counts (.gcda), as gcc/gcov-io.h lays them out
since GCC 12: lengths in bytes, numbers in the machine's order."""
import struct
from pathlib import Path

FUNCTION = 0x01000000
ARC_COUNTERS = 0x01A10000


def _records(data, offset):
    while offset + 8 <= len(data):
        tag, length = struct.unpack_from("<Ii", data, offset)
        if tag == 0:
            break
        offset += 8
        yield tag, length, offset
        offset += max(length, 0)  # a negative length: that many counters, all zero, not written


def counters_of(path):
    """{function: [indices of the arcs that were taken]} of a file of counts."""
    data = Path(path).read_bytes()
    taken = {}
    function = None
    for tag, length, offset in _records(data, 16):
        if tag == FUNCTION and length > 0:
            function = struct.unpack_from("<I", data, offset)[0]
        elif tag == ARC_COUNTERS and length > 0:
            counts = struct.unpack_from(f"<{length // 8}Q", data, offset)
            indices = [index for index, count in enumerate(counts) if count]
            if indices:
                taken[function] = indices
    return taken


def _text(data, offset):
    length = struct.unpack_from("<I", data, offset)[0]
    return data[offset + 4:offset + 4 + length].rstrip(b"\0").decode(), offset + 4 + length


def functions_of(path):
    """(function, source, first line, last line) of each function in a file of notes."""
    data = Path(path).read_bytes()
    _, offset = _text(data, 16)  # the folder of the compilation, then a flag
    for tag, _, place in _records(data, offset + 4):
        if tag == FUNCTION:
            ident = struct.unpack_from("<I", data, place)[0]
            _, place = _text(data, place + 12)
            source, place = _text(data, place + 4)
            first, _, last = struct.unpack_from("<III", data, place)
            yield ident, source, first, last
