"""Just enough of PNG to tell a complete picture of the right size from anything else."""

import pathlib
import struct
import subprocess
import time
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
LAST_CHUNK = b"\0\0\0\0IEND\xaeB`\x82"
LIMIT_SECONDS = 60
POINTER_PIXELS = 64 * 64  # some programs draw the mouse pointer into the picture, some do not


def looks_complete(path):
    """Whether the file ends as a PNG does: cheap enough to ask while a program is still writing it."""
    try:
        with open(path, "rb") as file:
            size = file.seek(0, 2)
            file.seek(max(0, size - len(LAST_CHUNK)))
            return file.read() == LAST_CHUNK
    except FileNotFoundError:
        return False


def wait_for(folder, name):
    """The complete PNG that appears in `folder`, looked for every half millisecond: programs create it differently."""
    deadline = time.monotonic() + LIMIT_SECONDS
    while time.monotonic() < deadline:
        for entry in folder.glob("**/*.png"):
            if looks_complete(entry):
                return entry
        time.sleep(0.0005)
    raise TimeoutError(f"{name} wrote no complete picture in {LIMIT_SECONDS} s")


def compare(path, screen, name, width, height):
    """Raises where the picture that the program `name` took differs from the upper left `width` x `height` of `screen`
    by more than a pointer's pixels."""
    compared = subprocess.run(["compare-im6.q16", "-alpha", "off", "-metric", "AE",
                               f"{screen}[{width}x{height}+0+0]", str(path), "null:"],
                              capture_output=True, text=True, timeout=120, check=False)
    if float(compared.stderr.split()[0]) > POINTER_PIXELS:
        raise RuntimeError(f"{name}: {compared.stderr.strip()} pixels differ from the screen")


def check(path, width, height):
    """Raises unless the file is a sound 8-bit RGB or RGBA PNG of that size with every row in it."""
    content = pathlib.Path(path).read_bytes()
    if not content.startswith(SIGNATURE):
        raise ValueError(f"{path} is no PNG")
    header, pixels = None, zlib.decompressobj()
    length = 0
    for kind, data in chunks(content):
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", data)
        elif kind == b"IDAT":
            length += len(pixels.decompress(data))
    length += len(pixels.flush())
    if header is None or header[:3] != (width, height, 8) or header[3] not in (2, 6):
        raise ValueError(f"{path} is not {width}x{height} in 8-bit colour: {header}")
    if length != height * (1 + width * (3 if header[3] == 2 else 4)):
        raise ValueError(f"{path} holds {length} bytes of pixels")


def chunks(content):
    """Kind and data of each chunk, with its checksum verified."""
    offset = len(SIGNATURE)
    while offset < len(content):
        length, = struct.unpack_from(">I", content, offset)
        body = content[offset + 4:offset + 8 + length]
        checksum, = struct.unpack_from(">I", content, offset + 8 + length)
        if zlib.crc32(body) != checksum:
            raise ValueError("a PNG chunk has a wrong checksum")
        yield body[:4], body[4:]
        offset += length + 12
