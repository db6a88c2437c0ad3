"""BASIC TEE: a T-shirt on plain jersey, with its neck rib on tubular cloth."""

from dataclasses import replace

from .drafting import (
    Line,
    Notch,
    Outline,
    Shape,
    corner,
    number_of,
    rounded,
    sewn,
    straight,
    symmetric,
)
from .layout import Table, box_of, placed
from .marker import (
    Fabric,
    FabricLayer,
    Garments,
    Image,
    Link,
    Marker,
    Piece,
    Polygon,
    Rules,
    Style,
    StyleSize,
    Text,
    orders,
)

STEPS = (-1, 0, 1)  # S, M and L are graded from M
JERSEY_GARMENTS = [[1, 2, 1], [1, 0, 1]]  # for each layer, the garments of S, M and L
RIB_GARMENTS = [[1, 2, 1]]
HEM = 2.5
ALLOWANCE = 1.0


class Measures:
    """The body of a size: x from the hem's edge, y from the centre, allowances included."""

    def __init__(self, step):
        self.length = 71.5 + 1.5 * step
        self.half_width = 27 + 1.0 * step
        self.armhole = self.length - (24 + 0.6 * step)  # x of the underarm
        self.shoulder = 21.5 + 0.5 * step
        self.shoulder_x = self.length - 4
        self.neck = 9 + 0.25 * step
        self.front_drop = 10.5 + 0.25 * step
        self.back_drop = 2.5
        self.biceps = 19.5 + 0.7 * step
        self.cuff = 17 + 0.6 * step
        self.cap = 12.5 + 0.4 * step
        self.rib = 24 + 0.75 * step


def body_outline(m, armhole_depth, neck_drop, armhole_notches):
    """Front and back differ in the depth of the armhole and of the neck."""
    hem_notch = Notch(toward=(1, 0))
    neck_notch = Notch(toward=(-1, 0))
    waist = Notch("userNotch", width=0.4)
    inner = -(m.shoulder - armhole_depth)
    pen = Outline(0, 0, hem_notch).line_to(0, -m.half_width)
    pen.curve_to(
        (14, -(m.half_width - 1.2)),
        (30, -(m.half_width - 1.2)),
        (m.armhole, -m.half_width),
        notches=[(0.55, waist)],
    )
    pen.curve_to(
        (m.armhole + 1, inner + 0.5),
        (m.shoulder_x - 11, inner - 0.2),
        (m.shoulder_x, -m.shoulder),
        notches=armhole_notches,
    )
    pen.line_to(m.length, -m.neck)
    pen.curve_to(
        (m.length - 0.6 * neck_drop, -(m.neck - 0.4)),
        (m.length - neck_drop, -0.55 * m.neck),
        (m.length - neck_drop, 0),
        notch=neck_notch,
    )
    return symmetric(pen.points)


def grain(start, end, y=0.0):
    return straight("grain", (start, y), (end, y))


def front(step):
    m = Measures(step)
    contour = body_outline(m, 3.2, m.front_drop, [(0.5, Notch(match=True))])
    chest = m.length - 22
    place = Line(
        "draw",
        [corner(chest + x, y) for x, y in ((0, 4), (-9.5, 4), (-12, 9.5), (-9.5, 15), (0, 15))],
    )
    marks = [
        corner(chest - 1, 5, kind="punch"),
        corner(chest - 1, 14, kind="userPunch", punch={"plus": 0.6, "square": 0.25}),
        corner(m.armhole, 0, match=True),
    ]
    return sewn(Shape(contour, marks, [grain(12, 46, -8), place]), ALLOWANCE)


def back(step):
    m = Measures(step)
    notches = [(0.42, Notch("doubleNotch", match=True))]
    contour = body_outline(m, 1.8, m.back_drop, notches)
    neck = m.length - m.back_drop
    keyhole = straight("cut", (neck - 1, 0), (neck - 8, 0))
    lines = [grain(12, 46, -8), keyhole]
    return sewn(Shape(contour, [corner(m.armhole, 0, match=True)], lines), ALLOWANCE)


def sleeve(step):
    """Drawn with the front side of the cap at y below 0."""
    m = Measures(step)
    underarm = 11.0
    top = underarm + m.cap
    pen = Outline(0, -m.cuff).line_to(underarm, -m.biceps)
    pen.curve_to(
        (underarm + 1.2, -0.55 * m.biceps),
        (top, -0.58 * m.biceps),
        (top, 0),
        notches=[(0.45, Notch(match=True))],
        notch=Notch("vNotch", toward=(-1, 0)),
        smooth=True,
    )
    pen.curve_to(
        (top, 0.66 * m.biceps),
        (underarm + 1.8, 0.6 * m.biceps),
        (underarm, m.biceps),
        notches=[(0.55, Notch("doubleNotch", match=True))],
    )
    pen.line_to(0, m.cuff)
    reach = m.cuff + (m.biceps - m.cuff) * HEM / underarm - 0.5
    hem = straight("draw", (HEM, -rounded(reach)), (HEM, rounded(reach)))
    return sewn(Shape(pen.points, [], [grain(4, 18), hem]), ALLOWANCE)


def pocket(step):
    """One pocket for all sizes, pointed at the bottom; the V notches mark the fold of its hem."""
    fold = Notch("vNotch", depth=0.4)
    pen = Outline(0, 0).line_to(2.5, -6.25).line_to(15, -6.25, notches=[(0.8, fold)])
    pen.line_to(15, 0)
    return Shape(symmetric(pen.points), [], [grain(4, 11)])


def neck_rib(step):
    """A band across the tube: the grain runs over its width, the tube's fold is its middle."""
    m = Measures(step)
    quarter = Notch(depth=0.4)
    pen = Outline(0, 0, Notch(depth=0.4, toward=(1, 0)))
    pen.line_to(0, -m.rib, notches=[(0.5, replace(quarter, toward=(1, 0)))])
    pen.line_to(6, -m.rib).line_to(6, 0)
    return Shape(symmetric(pen.points), [], [grain(1, 5, 6), grain(1, 5, -6)])


def pieces():
    def drawn(draw):
        return [draw(step) for step in STEPS]

    common = {"fabric": "Jersey navy"}
    single = orders(JERSEY_GARMENTS, 1)
    texts = {
        "Front": ("BT-01", "Front, cut once, pocket on the left chest", "38-01", "T"),
        "Back": ("BT-02", "Back with a keyhole slit", "38-02", "T"),
        "Sleeve": ("BT-03", 'Short sleeve, "set in"', "38-03", "T"),
        "Pocket": ("BT-04", "Patch pocket", "38-04", ""),
    }

    def named(name, draw, chart, **more):
        pattern, description, code, reference = texts[name]
        words = {"pattern": pattern, "description": description, "code": code}
        words.update(codeReference=reference, identification=f"TEE {name.upper()}", **common)
        return Piece(name, drawn(draw), texts=words, chart=chart, **more)

    turning = Rules(rotation_step=90, flip_y=True)
    return [
        named("Front", front, single, single=True),
        named("Back", back, single, single=True),
        named("Sleeve", sleeve, orders(JERSEY_GARMENTS, 1, 1), quantity=2),
        named("Pocket", pocket, single, single=True, rules=turning),
    ]


def rib_pieces():
    words = {"pattern": "BT-05", "description": "Neck rib", "code": "38-05", "fabric": "Rib 1x1"}
    shapes = [neck_rib(step) for step in STEPS]
    return [Piece("Neck rib", shapes, single=True, texts=words, chart=orders(RIB_GARMENTS, 1))]


def jersey():
    layers = [
        FabricLayer(
            160,
            horizontal_lines=[(80, "Middle of the cloth")],
            vertical_lines=[(76, "Splice"), (152, "")],
            texts=[
                Text(["BASIC TEE", "S 1 / M 2 / L 1"], 150, 150, letter_size=24),
                Text(["Basic tee, summer", "38 to 42"], 2, 175, section="header"),
            ],
        ),
        FabricLayer(
            160,
            horizontal_lines=[(40, "Quarter"), (120, "Three quarters")],
            vertical_lines=[(75, "Splice")],
            texts=[Text(["Check the roll's edge"], 2, -8, section="margin")],
        ),
    ]
    fabric = Fabric("Jersey navy", layers, pieces(), gap_x=0.3, gap_y=0.3)
    fabric.rules = Rules(rotation_step=180, fine_rotation=1.5)
    lay_first_layer(fabric)
    lay_second_layer(fabric)
    return fabric


def garment(fabric, size, ballot, color, turn):
    """The polygons of one garment in the order of the fabric's pieces, the sleeve twice."""
    body, rear, arm, patch = fabric.pieces
    common = {"size": size, "ballot": ballot, "color": color}
    m = Measures(STEPS[size - 1])
    tree, seam = pocket_tree(body.shapes[size - 1], m), underarm_seam(arm.shapes[size - 1], m)
    return [
        Polygon(body, rotation=turn, links=tree, **common),
        Polygon(rear, rotation=180 - turn, **common),
        Polygon(arm, rotation=turn, links=seam, **common),
        Polygon(arm, side="right", rotation=turn, links=seam, **common),
        Polygon(patch, **common),
    ]


def pocket_tree(shape, m):
    """From the middle of the chest to the neck, and to the pocket's marks one after the other."""
    neck = number_of(shape.contour, m.length - m.front_drop, 0)
    chest, near, far = ("internal", 3), ("internal", 1), ("internal", 2)
    return [
        Link(near, far, line="dashed", pattern=[1, 0.5], shift=0.3),
        Link(chest, near),
        Link(chest, ("contour", neck), line="chainDotted", pattern=[3, 0.6, 0.2]),
    ]


def underarm_seam(shape, m):
    return [
        Link(
            ("contour", number_of(shape.contour, x, -width)),
            ("contour", number_of(shape.contour, x, width)),
            kind="sewing",
        )
        for x, width in ((0, m.cuff), (11.0, m.biceps))
    ]


def wave_print(polygon):
    """The print between the shoulder blades of a back that has its place."""
    x, y = placed(polygon, Measures(STEPS[polygon.size - 1]).length - 24, -11)
    polygon.images.append(Image(x, y, 14, 22, polygon.rotation, "prints/wave.png"))


def along_neck(polygon, line):
    """A text that follows the neckline, 2 cm inside of it."""
    m = Measures(STEPS[polygon.size - 1])
    neck = [
        placed(polygon, p.x, p.y)
        for p in polygon.piece.shapes[polygon.size - 1].contour
        if abs(p.y) <= rounded(m.neck) and p.x >= rounded(m.length - m.front_drop)
    ]
    x, y = placed(polygon, m.length - m.front_drop - 2, 0)
    origin = placed(polygon, m.length - m.front_drop, 0)
    text = Text([line], x, y, "center", box=(14, 1.5), path=neck, path_origin=origin)
    polygon.texts.append(text)


def label(polygon, *lines):
    """A text in the middle of a polygon that has its place."""
    polygon.texts.append(Text(list(lines), *box_of(polygon).center, "center", 14))


def lay_first_layer(fabric):
    table = Table(fabric, fabric.layers[0])
    small = garment(fabric, 1, "A", 1, 0)
    medium = garment(fabric, 2, "B", 2, 180)
    other_medium = garment(fabric, 2, "C", 3, 0)
    large = garment(fabric, 3, "D", 4, 180)
    for body, rear, left, right, patch in (small, medium, other_medium):
        table.lay(body)
        table.lay(rear)
        pair = table.lay(left, right)
        left.paired_ballot = right.paired_ballot = body is other_medium[0]
        pair.texts.append(Text([f"Pair {left.ballot}"], *box_of(left).center, "center"))
        if body is not small[0]:
            patch.rotation = 90
        patch.turned_over = body is medium[0]
        table.lay(patch)
    table.lay(large[0])
    table.lay(large[1])
    for rear in (medium[1], other_medium[1]):
        wave_print(rear)
    along_neck(other_medium[0], "crew neck")
    label(small[0], "BASIC TEE", "S")
    label(large[0], "BASIC TEE", "L")
    # The sleeves of L wait beside the cloth; its pocket has not left the chart.
    table.stand_by(large[2], large[3])


def lay_second_layer(fabric):
    """A left sleeve of S and the pockets stay in the chart; the front of L was cut shorter."""
    table = Table(fabric, fabric.layers[1])
    small = garment(fabric, 1, "A", 1, 180)
    large = garment(fabric, 3, "é", 5, 0)
    large[0].shape = shortened(large[0].piece.shapes[2], 1.5)
    for polygon in (large[0], large[1], large[2], large[3], small[0], small[1], small[3]):
        table.lay(polygon)
    label(large[0], "Hem 1.5 cm shorter")


def shortened(shape, length):
    """The hem moved up: its points are those at x = 0."""

    def moved(points, hem):
        return [replace(p, x=rounded(hem + length)) if p.x == hem else p for p in points]

    contour, seam = moved(shape.contour, 0), moved(shape.seam, ALLOWANCE)
    return Shape(contour, shape.internal_points, shape.internal_lines, seam)


def rib():
    layers = [FabricLayer(55, vertical_lines=[(25, "End of the tube")]), FabricLayer(55)]
    fabric = Fabric("Rib 1x1", layers, rib_pieces(), type="tubular", fold_any_piece=True)
    fabric.gap_x, fabric.gap_y = 0.5, 0.5
    fabric.rules = Rules(rotation_step=180)
    table = Table(fabric, layers[0])
    places = ((1, "A", 1, False), (2, "B", 2, True), (2, "C", 3, False))
    for size, ballot, color, top in places:
        table.lay_folded(Polygon(fabric.pieces[0], size, ballot=ballot, color=color), top)
    return fabric


def marker():
    sizes = [StyleSize(38, "S"), StyleSize(40, "M", "base size"), StyleSize(42, "L", "long")]
    garments = [
        Garments(1, 1, JERSEY_GARMENTS[0]),
        Garments(1, 2, JERSEY_GARMENTS[1]),
        Garments(2, 1, RIB_GARMENTS[0]),
    ]
    style = Style("BASIC TEE", r"D:\Styles\Summer\basic tee.sty", sizes, garments)
    return Marker(
        keywords='tee, "basic", größe 38-42',
        comments="First marker of the season.\r\nThe rib is cut from the tube, folded.",
        date_stamp="2026-03-14T09:30:00",
        layers=[("Layer 1", 1), ("Layer 2", 2)],
        fabrics=[jersey(), rib()],
        styles=[style],
        single_layer=1,
        optimised=True,
    )
