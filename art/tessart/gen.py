"""One entry point per group of pictures; each returns the files it wrote."""
from . import appicon, buttons, controls, frames, help, scene
from .common import FORM_H, FORM_W, save, save_svg


def make_background():
    save(scene.make_skinned(), "bitmap/101.png")
    save(scene.make_plain(), "bitmap/102.png")
    # The plain background as drawn, for paper: the printer draws it at its
    # own resolution.
    save_svg(scene.paint_plain, "bitmap/102.svg", FORM_W, FORM_H)
    return ["bitmap/101.png", "bitmap/102.png", "bitmap/102.svg"]


def make_frames():
    save(frames.high_scores(), "bitmap/150.png")
    save(frames.curtain(), "bitmap/175.png")
    return ["bitmap/150.png", "bitmap/175.png"]


def make_help():
    return help.make_all()


def make_buttons():
    return buttons.make_all()


def make_controls():
    return controls.make_all()


def make_icon():
    return appicon.make_all()
