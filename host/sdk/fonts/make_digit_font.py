"""Writes a font that draws the Latin digits 0-9 with the Persian digit glyphs of another font.

Put first in a font's family list, it makes every digit on screen a Persian one while the text
itself keeps the digits the program reads. Usage: make_digit_font.py SOURCE.ttf OUT.ttf FAMILY (once per style of the source family)
"""
import sys

from fontTools import subset
from fontTools.ttLib import TTFont

PERSIAN_ZERO = 0x06F0


def main(source, out, family):
    font = TTFont(source)
    glyphs = [font.getBestCmap()[PERSIAN_ZERO + digit] for digit in range(10)]
    options = subset.Options()
    options.name_IDs = ["*"]
    options.notdef_outline = True
    options.layout_features = []
    subsetter = subset.Subsetter(options)
    subsetter.populate(glyphs=glyphs)
    subsetter.subset(font)
    for table in font["cmap"].tables:
        table.cmap = {ord("0") + digit: glyphs[digit] for digit in range(10)}
    # The style (regular, bold) stays the source's; the family takes the new name.
    style = str(font["name"].getDebugName(2) or "Regular")
    full = family if style == "Regular" else family + " " + style
    for record in font["name"].names:
        if record.nameID in (1, 16):
            record.string = family
        elif record.nameID == 4:
            record.string = full
        elif record.nameID == 6:
            record.string = full.replace(" ", "-").replace(family, family.replace(" ", ""))
    font.save(out)


if __name__ == "__main__":
    main(*sys.argv[1:4])
