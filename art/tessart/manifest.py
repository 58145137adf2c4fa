"""Every picture and font the game ships, with its size, its colour mode and
the back colour its button keys against. make_art.py writes resources/art.qrc
from this list and checks every file against it after a run."""
import os

from .common import RES

CREAM = (245, 245, 212)
WHITE = (255, 255, 255)

# path under resources/, (w, h), mode, key colour (top-left pixel) or None
ASSETS = []


def _add(path, size, mode="RGB", key=None):
    ASSETS.append((path, size, mode, key))


_add("bitmap/101.png", (638, 478))
_add("bitmap/102.png", (638, 478))
_add("bitmap/102.svg", None)
_add("bitmap/103.png", (89, 14))
_add("bitmap/150.png", (392, 392))
_add("bitmap/175.png", (392, 392))
for _i in range(201, 211):
    _add("bitmap/%d.png" % _i, (392, 392))
for _i in range(9):
    _add("buttons/sidenav%d.png" % _i, (86, 54), key=CREAM)
    _add("buttons/sidenav%d_hover.png" % _i, (86, 54), key=CREAM)
_add("buttons/ok.png", (86, 54), key=CREAM)
_add("buttons/ok_hover.png", (86, 54), key=CREAM)
for _n, _w in (("minimize", 28), ("maximize", 27), ("restore", 27), ("close", 42)):
    _add("buttons/%s.png" % _n, (_w, 16), key=WHITE)
    _add("buttons/%s_hover.png" % _n, (_w, 16), key=WHITE)
for _n in ("showoptions", "hideoptions"):
    _add("buttons/%s.png" % _n, (16, 42), key="unique")
    _add("buttons/%s_hover.png" % _n, (16, 42), key="unique")
for _i in range(10):
    _add("controls/ring%d.png" % _i, (16, 18))
for _i in range(18):
    _add("controls/markchoice%d.png" % _i, (16, 16))
_add("controls/markclose.png", (16, 16))
_add("controls/volume_thumb.png", (14, 14), "RGBA")
_add("controls/helpnav.png", (112, 361))
_add("controls/monkey.png", (110, 110), "RGBA")
_add("controls/message_bg.png", (392, 160))
_add("controls/update_bg.png", (392, 160))
_add("controls/hand.png", (32, 32), "RGBA")
_add("icons/tessuma.svg", None, None)
_add("icons/tessuma-64.png", (64, 64), "RGBA")

FONTS = ["Dosis-ExtraBold.otf", "RobotoSlab-Bold.otf", "DejaVuSans.ttf",
         "DejaVuSans-Bold.ttf", "LiberationMono-Bold.ttf", "LiberationSans-Regular.ttf",
         "LiberationSans-Bold.ttf"]


def write_qrc():
    lines = ['<!DOCTYPE RCC>', '<!-- Made by art/make_art.py from art/tessart/manifest.py. -->',
             '<RCC version="1.0">', '<qresource prefix="/">']
    for path, _, _, _ in ASSETS:
        lines.append("    <file>%s</file>" % path)
    for f in FONTS:
        lines.append("    <file>fonts/%s</file>" % f)
    lines += ["</qresource>", "</RCC>", ""]
    with open(os.path.join(RES, "art.qrc"), "w") as fh:
        fh.write("\n".join(lines))


def check():
    """Returns a list of problems (empty when all is well)."""
    from PIL import Image
    problems = []
    for path, size, mode, key in ASSETS:
        full = os.path.join(RES, path)
        if not os.path.exists(full):
            problems.append("missing " + path)
            continue
        if size is None:
            continue
        img = Image.open(full)
        if img.size != size:
            problems.append("%s is %s, wants %s" % (path, img.size, size))
        if img.mode != mode:
            problems.append("%s is %s, wants %s" % (path, img.mode, mode))
        if key is not None:
            rgb = img.convert("RGB")
            k = rgb.getpixel((0, 0))
            if key == "unique":
                count = sum(1 for px in rgb.getdata() if px == k)
                if count != 1:
                    problems.append("%s: key colour %s used %d times" % (path, k, count))
            elif k != key:
                problems.append("%s: top-left pixel %s, wants %s" % (path, k, key))
    for f in FONTS:
        if not os.path.exists(os.path.join(RES, "fonts", f)):
            problems.append("missing font " + f)
    return problems
