# Prints "field<TAB>value" for every value of every tag field of the file
# named first, and whether an embedded picture ends with the bytes of the
# picture file named second.
import base64, sys, mutagen
from mutagen.flac import Picture
sys.stdout.reconfigure(encoding="utf-8")
f = mutagen.File(sys.argv[1])
if f is None or f.tags is None:
    sys.exit(3)
blobs = [p.data for p in getattr(f, "pictures", [])]
def text(value):
    for inner in (value, getattr(value, "data", None), getattr(value, "value", None)):
        if isinstance(inner, (bytes, bytearray)):
            blobs.append(bytes(inner))
            return "<binary>"
    if isinstance(value, tuple):
        return "/".join(str(part) for part in value)
    return str(value)
for key in f.tags.keys():
    values = f.tags[key]
    for value in (values if isinstance(values, list) else [values]):
        if key.lower() == "metadata_block_picture":
            blobs.append(Picture(base64.b64decode(value)).data)
            value = b""
        print(key.lower() + "\t" + text(value).replace("\n", " "))
if len(sys.argv) > 2 and sys.argv[2]:
    picture = open(sys.argv[2], "rb").read()
    print("\tcover " + ("same" if any(b.endswith(picture) for b in blobs) else "missing"))
