# Reads bitmaps and PNGs; as a program, prints a PNG's rows in hexadecimal.
import struct
import sys
import zlib


def bitmap_rows(data):
    """The rows of a bitmap of 24 bits a pixel, as red, green and blue, the upper one first."""
    first, width, height = struct.unpack("<I4xii", data[10:26])
    stride = (3 * width + 3) // 4 * 4
    rows = [data[first + stride * row:][:3 * width] for row in range(height)][::-1]
    return [bytes(channel for pixel in zip(row[2::3], row[1::3], row[::3]) for channel in pixel) for row in rows]


def unfiltered(raw, stride, step):
    """The rows behind PNG's filters; `step` bytes are a pixel."""
    rows, above = [], bytes(stride)
    for start in range(0, len(raw), stride + 1):
        kind, row = raw[start], bytearray(raw[start + 1:start + 1 + stride])
        for i in range(len(row)):
            left, up, corner = (row[i - step], above[i], above[i - step]) if i >= step else (0, above[i], 0)
            nearest = min((left, up, corner), key=lambda one: abs(left + up - corner - one))
            row[i] = (row[i] + (0, left, up, (left + up) // 2, nearest)[kind]) & 255
        above = bytes(row)
        rows.append(above)
    return rows


def png_rows(data):
    """The same of a PNG of 8 bits a colour, or of 8 bits a pixel that name a colour of its table."""
    place, chunks = 8, {}
    while place < len(data):
        length, kind = struct.unpack(">I4s", data[place:place + 8])
        body, crc = data[place + 8:place + 8 + length], data[place + 8 + length:place + 12 + length]
        assert struct.pack(">I", zlib.crc32(kind + body)) == crc, kind
        chunks[kind] = chunks.get(kind, b"") + body
        place += length + 12
    width, height, bits, colours = struct.unpack(">IIBB", chunks[b"IHDR"][:10])
    assert bits == 8 and colours in (2, 3) and place == len(data) and chunks[b"IEND"] == b""
    step = 3 if colours == 2 else 1
    rows = unfiltered(zlib.decompress(chunks[b"IDAT"]), step * width, step)
    assert len(rows) == height and all(len(row) == step * width for row in rows)
    table = chunks.get(b"PLTE", b"")
    return rows if colours == 2 else [b"".join(table[3 * one:3 * one + 3] for one in row) for row in rows]


if __name__ == "__main__":
    with open(sys.argv[1], "rb") as file:
        print(" ".join(row.hex() for row in png_rows(file.read())))
