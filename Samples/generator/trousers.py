"""CHINO: trousers on folded twill, with pockets from a checked lining."""

from .drafting import (
    Line,
    Notch,
    Outline,
    Shape,
    corner,
    number_of,
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
    Plaid,
    Polygon,
    Rules,
    Style,
    StyleSize,
    Text,
    orders,
)

STEPS = (0, 1)  # sizes 48 and 50
TWILL_GARMENTS = [[1, 2], [1, 1]]
LINING_GARMENTS = [[1, 2], [1, 1]]
ALLOWANCE = 1.0
HEM = 4.0
KNEE = 49.0


class Measures:
    """A leg: x from the edge of the hem, y from the crease, allowances included."""

    def __init__(self, step):
        self.crotch = 86 + 0.5 * step
        self.rise = 25.5 + 0.5 * step
        self.waist_x = self.crotch + self.rise
        self.hip_x = self.crotch + 8.5
        self.front_hip = 13.6 + 0.5 * step
        self.front_fork = 16.4 + 0.6 * step
        self.back_hip = 15.6 + 0.5 * step
        self.back_fork = 22.2 + 0.8 * step
        self.hem = 9.2 + 0.25 * step
        self.knee = 10.9 + 0.3 * step
        self.waistband = 94 + 4.0 * step


def leg(m, fork, hip, wider, centre, side, dip):
    """A trouser leg from the hem up the inseam, over fork, waist and side seam.

    `wider`: what hem and knee have more than the front; `centre`, `side`: the ends of the waist;
    `dip`: how much deeper the fork lies.
    """
    hem, knee = m.hem + wider, m.knee + wider
    crotch = m.crotch - dip
    pen = Outline(0, -hem)
    at_knee = {"notch": Notch(match=True), "smooth": True}
    pen.curve_to((18, -(hem + 0.4)), (34, -(knee - 0.4)), (KNEE, -knee), **at_knee)
    pen.curve_to((KNEE + 16, -(knee + 0.6)), (crotch - 8, -(fork - 3.2)), (crotch, -fork))
    seat = m.hip_x + 1.0
    on_seat = centre[1] - (centre[0] - seat) * (0.22 if wider else 0.09)
    pen.curve_to(
        (crotch + 0.4, -(fork - 0.55 * (fork + on_seat))),
        (crotch + 3.6, on_seat - (0.9 if wider else 0.4)),
        (seat, on_seat),
        notch=Notch("doubleNotch" if wider else "simpleNotch"),
        smooth=True,
    )
    pen.line_to(*centre).line_to(*side)
    pen.curve_to(
        (m.waist_x - 6, side[1] + 1.6),
        (m.hip_x + 6, hip),
        (m.hip_x, hip),
        notch=Notch(match=True),
        smooth=True,
    )
    pen.curve_to((m.hip_x - 14, hip), (KNEE + 18, knee + 0.9), (KNEE, knee), **at_knee)
    pen.curve_to((34, knee - 0.4), (18, hem + 0.4), (0, hem))
    return pen.points


def grain(start, end, y=0.0):
    return straight("grain", (start, y), (end, y))


def front_leg(step):
    m = Measures(step)
    centre, side = (m.waist_x - 0.8, -9.6), (m.waist_x, 11.4 + 0.5 * step)
    contour = leg(m, m.front_fork, m.front_hip, 0.0, centre, side, 0.0)
    crease = straight("draw", (HEM, 0), (m.waist_x - 8, 0))
    slant = straight("draw", (m.waist_x - 1, side[1] - 4.5), (m.waist_x - 17, m.front_hip - 1))
    fly = Line(
        "draw",
        [
            corner(m.waist_x - 1.5, centre[1] + 3.6),
            corner(m.waist_x - 14, centre[1] + 3.2),
            corner(m.waist_x - 16.4, centre[1] + 2.2, kind="curve"),
            corner(m.waist_x - 17.6, centre[1] + 0.2),
        ],
    )
    pocket = corner(m.waist_x - 16, m.front_hip - 2.2, kind="punch", punch={"cross": 0.5})
    return sewn(Shape(contour, [pocket], [grain(20, 70, 3), crease, slant, fly]), ALLOWANCE)


def back_leg(step):
    m = Measures(step)
    centre, side = (m.waist_x + 2.8, -5.4), (m.waist_x, 14.2 + 0.5 * step)
    contour = leg(m, m.back_fork, m.back_hip, 1.6, centre, side, 0.8)
    crease = straight("draw", (HEM, 0), (m.waist_x - 30, 0))
    dart = corner(m.waist_x - 8.5, 4.8, kind="punch", punch={"plus": 0.5})
    legs = straight("draw", (m.waist_x + 0.6, 3.8), (dart.x, dart.y), (m.waist_x + 0.3, 6.2))
    welt = straight("cut", (m.waist_x - 9.5, -1.4), (m.waist_x - 9.5, 11.6))
    # The welt's ends are drilled lying across the grain: the matrix turns the mark by 90 degrees.
    mark = {"barLeft": 0.3, "barRight": 0.3, "diamond": 0.25, "matrix": [0, 1, -1, 0]}
    marks = [corner(m.waist_x - 9.5, y, kind="userPunch", punch=mark) for y in (-2, 12.2)]
    lines = [grain(20, 70, 3), crease, legs, welt]
    return sewn(Shape(contour, [dart, *marks], lines), ALLOWANCE)


def waistband(step):
    """Both halves of the band, its upper edge along y = 0, where the cloth is folded."""
    length = Measures(step).waistband
    ends = [(0.06, Notch()), (0.28, Notch()), (0.53, Notch("vNotch", depth=0.4)), (0.78, Notch())]
    pen = Outline(0, 0).line_to(0, -4.8).line_to(length, -4.8, notches=ends).line_to(length, 0)
    lines = [grain(30, 60, 2.4), grain(30, 60, -2.4)]
    return sewn(Shape(symmetric(pen.points), [], lines), ALLOWANCE)


def belt_loop(step):
    pen = Outline(0, -1.6).line_to(9, -1.6).line_to(9, 1.6).line_to(0, 1.6)
    return Shape(pen.points, [], [grain(2, 7)])


def fly_facing(step):
    length = 19 + 0.5 * step
    pen = Outline(0, -0.4)
    pen.curve_to((0.6, -3.2), (2.6, -5.4), (6.5, -5.6), smooth=True)
    pen.line_to(length, -5.8).line_to(length, 0, notches=[(0.8, Notch())])
    return Shape(pen.points, [], [grain(6, 15, -2.8)])


def pocket_bag(step):
    """Opens aslant at the side seam (y above 0); the match point keeps the check in line."""
    length = 33 + 0.5 * step
    pen = Outline(3, -8.5).line_to(length, -8.5).line_to(length, 4.6)
    pen.line_to(length - 16, 9.2, notches=[(0.2, Notch()), (0.85, Notch())])
    pen.line_to(5, 9.2)
    pen.curve_to((1.6, 9.2), (0, 6.5), (0, 3), smooth=True)
    pen.line_to(0, -4)
    pen.curve_to((0, -6.6), (1, -8.5), (3, -8.5))
    pen.points.pop()  # the pen is back at its start
    return Shape(pen.points, [corner(10, 0, match=True)], [grain(8, 24, -3)])


def words(number, name, cloth):
    return {
        "pattern": f"CH-{number:02}",
        "description": f"{name}, chino",
        "code": f"50-{number:02}",
        "fabric": cloth,
        "identification": f"CHINO {name.upper()}",
    }


def drawn(draw):
    return [draw(step) for step in STEPS]


def twill_pieces():
    """On folded cloth a pair is cut from one polygon, so only left pieces are ordered."""
    cloth = "Twill sand"
    once = orders(TWILL_GARMENTS, 1)
    front = Piece("Front leg", drawn(front_leg), quantity=2, chart=once)
    back = Piece("Back leg", drawn(back_leg), quantity=2, chart=once)
    band = Piece("Waistband", drawn(waistband), single=True, chart=once)
    loop = Piece("Belt loop", drawn(belt_loop), quantity=6, chart=orders(TWILL_GARMENTS, 3))
    loop.rules = Rules(rotation_step=90, fine_rotation=5, flip_x=True, flip_y=True)
    for number, piece in enumerate((front, back, band, loop), 1):
        piece.texts = words(number, piece.name, cloth)
    return [front, back, band, loop]


def lining_pieces():
    cloth = "Check lining"
    facing = Piece("Fly facing", drawn(fly_facing), single=True, chart=orders(LINING_GARMENTS, 1))
    bag = Piece("Pocket bag", drawn(pocket_bag), quantity=2, chart=orders(LINING_GARMENTS, 1, 1))
    bag.rules = Rules(rotation_step=180, fine_rotation=2)
    for number, piece in enumerate((facing, bag), 5):
        piece.texts = words(number, piece.name, cloth)
    return [facing, bag]


# What lies in each layer: size, ballot and colour of the garments.
LAYER_GARMENTS = [
    [(2, "A", 1), (2, "B", 2), (1, "C", 3)],
    [(2, "A", 1), (1, "B", 6)],
]


def twill():
    guides = [(120, "Splice"), (240, "")]
    heading = Text(["CHINO", "Twill sand, folded"], 300, 76, letter_size=24)
    roll = Text(["Chino, twill sand", "Fold at the table's edge"], 2, -6, section="margin")
    layers = [
        FabricLayer(78, vertical_lines=guides, texts=[heading, roll]),
        FabricLayer(78, horizontal_lines=[(39, "Half")], vertical_lines=[(110, "Splice")]),
    ]
    fabric = Fabric("Twill sand", layers, twill_pieces(), type="foldBottom", gap_x=0.4, gap_y=0.4)
    fabric.rules = Rules(rotation_step=180)
    for layer, garments in zip(layers, LAYER_GARMENTS):
        lay_trousers(fabric, layer, garments)
    return fabric


def lay_trousers(fabric, layer, garments):
    """Bands on the fold, then the legs; of the last garment two belt loops stay in the chart."""
    front, back, band, loop = fabric.pieces
    table = Table(fabric, layer)
    for size, ballot, color in garments:
        table.lay_folded(Polygon(band, size, ballot=ballot, color=color))
    for size, ballot, color in garments:
        legs = [
            Polygon(front, size, rotation=180, ballot=ballot, color=color),
            Polygon(back, size, ballot=ballot, color=color, links=back_pocket_tree()),
        ]
        group = table.lay(*legs)
        legs[1].images.append(brand_label(legs[1]))
        group.texts.append(along_side(legs[0]))
        lines = [f"CHINO {48 + 2 * (size - 1)}", ballot]
        group.texts.append(Text(lines, *box_of(legs[1]).center, "center"))
    for size, ballot, color in garments:
        last = (size, ballot, color) == garments[-1]
        for number in range(1 if last else 3):
            turn = 90 if number == 2 else 0
            table.lay(Polygon(loop, size, rotation=turn, ballot=ballot, color=color))


def back_pocket_tree():
    """From the tip of the dart to the ends of the welt, and from there on to each other."""
    dart, left, right = ("internal", 1), ("internal", 2), ("internal", 3)
    return [
        Link(dart, left, line="dashed", pattern=[1.5, 0.5]),
        Link(left, right, line="chainDotted", pattern=[2, 0.5, 0.2], shift=-0.4),
    ]


def brand_label(polygon):
    """The woven label under the welt of a back leg that has its place."""
    x, y = placed(polygon, Measures(STEPS[polygon.size - 1]).waist_x - 16, 2)
    return Image(x, y, 3, 5, polygon.rotation, "labels/chino.svg")


def along_side(polygon):
    """A text that follows the side seam of a front leg from the knee to the hip."""
    m = Measures(STEPS[polygon.size - 1])
    side = [
        placed(polygon, point.x, point.y)
        for point in polygon.piece.shapes[polygon.size - 1].seam
        if KNEE <= point.x <= m.hip_x and point.y > 0
    ]
    x, y = side[len(side) // 2]
    return Text(["side seam"], x, y, "center", box=(12, 1.5), path=side)


def bag_seam(shape):
    """The bag is folded along its middle: the ends of its bottom edge meet."""
    end = max(point.x for point in shape.contour)
    start, other = (number_of(shape.contour, end, y) for y in (-8.5, 4.6))
    return [Link(("contour", start), ("contour", other), kind="sewing")]


def lining():
    plaid = Plaid(10, 8, 2.5, 1, [(0, "Bar"), (4, "")], [(0, "Bar"), (5, "")])
    layers = [
        FabricLayer(140, horizontal_lines=[(70, "Half width")]),
        FabricLayer(138.5, texts=[Text(["Second layer", "narrower roll"], 2, 130)]),
    ]
    fabric = Fabric("Check lining", layers, lining_pieces(), one_way=True, hybrid=True)
    fabric.edge_gap, fabric.gap_x, fabric.gap_y = True, 0.5, 0.5
    fabric.plaid = plaid
    for layer, garments in zip(layers, LAYER_GARMENTS):
        lay_lining(fabric, layer, garments)
    return fabric


def lay_lining(fabric, layer, garments):
    """The facings lie with the cloth, the bags follow their own rules and may be turned."""
    facing, bag = fabric.pieces
    table = Table(fabric, layer)
    for size, ballot, color in garments:
        common = {"size": size, "ballot": ballot, "color": color, "spacing": fabric.gap_y}
        seam = bag_seam(bag.shapes[size - 1])
        left = Polygon(bag, paired_ballot=True, links=seam, **common)
        right = Polygon(bag, side="right", rotation=180, paired_ballot=True, links=seam, **common)
        if ballot == "B":
            right.rotation = 181.5
        table.lay(left, right)
        strip = Polygon(facing, **common)
        table.lay(strip)
        strip.texts = [Text([ballot], *box_of(strip).center, "center", 12)]


def marker():
    sizes = [StyleSize(48, "48"), StyleSize(50, "50", "regular")]
    garments = [
        Garments(fabric, layer, quantities)
        for fabric, layers in enumerate((TWILL_GARMENTS, LINING_GARMENTS), 1)
        for layer, quantities in enumerate(layers, 1)
    ]
    return Marker(
        keywords="chino, men's, 48-50",
        comments="Twill laid folded.\r\nCheck the lining's bars before cutting the pocket bags.",
        date_stamp="2026-04-02T14:05:30",
        layers=[("Layer 1", 2), ("Layer 2", 1)],
        fabrics=[twill(), lining()],
        styles=[Style("CHINO", "styles/trousers/chino.sty", sizes, garments)],
    )
