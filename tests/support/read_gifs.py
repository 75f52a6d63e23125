# read_gifs.py - reads GIF files with Pillow and prints what it found, for the tests.
#
# For each file named on the command line, to standard output: width, height, transparent position or -1 and palette
# size in colours (four signed numbers of 4 bytes, low byte first), the palette (3 bytes a colour), the pixels (1 byte).

import struct
import sys

from PIL import Image

for path in sys.argv[1:]:
    with Image.open(path) as image:
        image.load()
        if image.mode != "P":
            sys.exit(path + ": read as " + image.mode)
        palette = image.palette.getdata()[1]
        header = struct.pack("<4i", image.width, image.height, image.info.get("transparency", -1), len(palette) // 3)
        sys.stdout.buffer.write(header + palette + image.tobytes())
