"""The properties of cut documents that check_cut_documents.py looks at. Each function takes a run,
one call of the program, and asserts."""

import math
import re

from cut_reading import (NEAR, area, between, box, boxes_meet, clearance, cross, crosses_itself,
                         edges, gap, meets, notches_of, ring_of, same, same_path, to_edge)

CLIPPED = 1e-5  # cm: rounding of an outline that was clipped


def is_piece(run, piece, outline):
    """Whether the outline is the piece's; points may be added and, if asked for, left out."""
    slack, ring = run.tolerance() + NEAR, ring_of(outline)
    if not all(abs(a - b) <= slack for a, b in zip(box(ring), box(piece.contour))):
        return False
    if run.tolerance():
        sizes = abs(area(ring)), abs(area(piece.contour))
        return (abs(sizes[0] - sizes[1]) <= 0.05 * sizes[1] + NEAR and
                (not crosses_itself(ring) or crosses_itself(piece.contour)) and
                all(abs(clearance(p, piece.contour)) <= slack for p in ring) and
                all(abs(clearance(p, ring)) <= slack for p in piece.contour))
    contour = [p for i, p in enumerate(piece.contour) if p != piece.contour[i - 1]]
    starts = [i for i, p in enumerate(ring) if same(p, contour[0])]
    return any(follows(run, contour, ring[i:] + ring[:i], outline) for i in starts)


def follows(run, contour, ring, outline):
    met, bases = 1, {p for _, points in outline.notches for p in points}
    for p in ring[1:]:
        if met < len(contour) and same(p, contour[met]):
            met += 1
        elif (to_edge(p, contour[met - 1], contour[met % len(contour)]) > NEAR or
              not (run.asked("CutInterPoints") or p in bases)):
            return False
    return met == len(contour)


def is_on_cloth(p, cloth):
    return p[0] >= cloth.start and 0 <= p[1] <= cloth.width


def covers_cloth(piece):
    left, bottom, right, top = box(piece.contour)
    return (left < piece.cloth.end and right > piece.cloth.start and
            bottom < piece.cloth.width and top > 0)


def encloses(outlines, pieces):
    """Whether each piece, as far as it lies on the cloth, lies in one of the outlines."""
    rings = [ring_of(outline) for outline in outlines]
    found = ([p for p in piece.contour if is_on_cloth(p, piece.cloth)] for piece in pieces)
    return all(any(all(clearance(p, ring) > -CLIPPED for p in points)
                   for ring in rings if boxes_meet(box(ring), box(points), 0))
               for points in found if points)


def fitting(run, kind, pieces, found):
    """The pieces in the order of the object's outlines; none if it is another object."""
    if kind == "rough":
        plain = not (found.drills or found.lines or any(o.notches for o in found.outlines))
        return pieces if plain and encloses(found.outlines, pieces) else None
    left, order = list(pieces), []
    for outline in found.outlines:
        piece = next((p for p in left if is_piece(run, p, outline)), None)
        if piece is None:
            return None
        left.remove(piece)
        order.append(piece)
    return None if left else order


def each_object_once(run):
    """Each placed piece stands once, alone or in its block, with the outline of the marker."""
    pairs = []
    for document, items in zip(run.documents, run.expected()):
        left = list(items)
        for found in document.objects:
            for item in left:
                order = fitting(run, *item, found)
                if order is not None:
                    pairs.append((item[0], order, found, document))
                    left.remove(item)
                    run.see(item[0])
                    break
            else:
                raise AssertionError(f"an object is none of the marker, reach {found.reach}")
        assert not left, f"missing: {left[0][0]} of {[p.name for p in left[0][1]]}"
    run.pairs = pairs
    run.see("blocks with a document", len(run.documents) - 1)
    if not run.tolerance():
        exact = [(kind, pieces, found) for kind, pieces, found, _ in pairs if kind != "rough"]
        cut = sum(abs(area(ring_of(o))) for _, _, found in exact for o in found.outlines)
        placed = sum(abs(area(p.contour)) for _, pieces, _ in exact for p in pieces)
        assert abs(cut - placed) <= 1e-5 * placed, f"area {cut}, placed {placed}"


def each_label_once(run):
    for document, items in zip(run.documents, run.expected()):
        left = [piece for _, pieces in items for piece in pieces]
        assert not document.skips and not document.advances, "a frame in a label document"
        for found in document.objects:
            assert not found.children, "a label document with paths"
            place = document.points([found.attributes["centreX"] + "," +
                                     found.attributes["centreY"]])[0]
            piece = next((p for p in left if found.attributes["label"].startswith(p.name) and
                          clearance(place, p.contour) > 0), None)
            assert piece, f"the label {found.attributes['label']} at {place} lies on no piece"
            left.remove(piece)
            run.see("labels")
        assert not left, f"no label for {left[0].name}"


def labels_lie_as_pieces_are_cut(run, cut):
    for labels, document in zip(run.documents, cut.documents):
        names = [found.attributes["label"].replace("*", "x")[:36] for found in labels.objects]
        order = [found.attributes["label"] for found in document.objects]
        assert names == order, f"labels {names}, cut as {order}"
        run.see("labels in cutting order", len(order) > 1)


def root_tells_the_cloth(run):
    for number, document in enumerate(run.documents):
        size = float(document.root.get("tissuL")), float(document.root.get("tissuW"))
        assert same(size, (run.laid.length, run.laid.width)), f"size {size}"
        assert document.root.get("block_index", "0") == str(number), "block_index"


def outlines_are_closed(run):
    during = run.asked("CutOrderCrans") == 1
    for found in (o for d in run.documents for o in d.objects):
        assert not found.loose, "notches behind the last outline"
        for outline in found.outlines:
            texts = outline.texts
            assert texts[0] == texts[-1] and len(ring_of(outline)) > 2, "an open outline"
            twice = {a for a, b in zip(texts, texts[1:]) if a == b}
            bases = {notch[0] for notch, _ in outline.notches}
            assert twice == (bases if during else set()), f"points twice {twice}, bases {bases}"
            run.see("bases that stand twice", len(twice))


def notches_start_on_their_outline(run):
    during = run.asked("CutOrderCrans") == 1
    for outline in (o for d in run.documents for f in d.objects for o in f.outlines):
        ring = [t for i, t in enumerate(outline.texts) if i == 0 or t != outline.texts[i - 1]]
        twice = {len(ring) - 1 - ring[::-1].index(t) for t, u in zip(outline.texts,
                                                                     outline.texts[1:]) if t == u}
        last, visits = 0, 0
        for i, text in enumerate(outline.texts[1:]):
            visits += text != outline.texts[i]
            assert text != outline.texts[i] or visits in twice, f"{text} stands twice too early"
        for texts, _ in outline.notches:
            places = [i for i in range(1, len(ring)) if ring[i] == texts[0]]
            index = next((i for i in (places[-1:] if during else places) if i > last), None)
            assert index, f"a notch at {texts[0]} that starts on no vertex or stands out of order"
            run.see("notches gathered", during and len(places) > 1)
            last = index
        run.see("notch at the start", bool(outline.notches) and last == len(ring) - 1)


def notches_are_those_of_the_marker(run):
    for kind, pieces, found, _ in run.pairs:
        for piece, outline in zip(pieces, found.outlines) if kind != "rough" else ():
            strokes = []
            for texts, points in outline.notches:
                for text, point in zip(texts, points):
                    if text == texts[0]:
                        strokes.append([])
                    strokes[-1].append(point)
            for name, ways, _ in notches_of(piece, run.asked("CutNotchSize")):
                stroke = next((s for s in strokes if any(same_path(s, w) for w in ways)), None)
                assert stroke, f"{piece.name}: no {name} {ways[0]}, left {strokes}"
                strokes.remove(stroke)
                run.see(name)
            assert not strokes, f"{piece.name}: a notch too much {strokes}"


def short_notches_are_told(run):
    size, least, most = run.asked("CutNotchSize"), 0, 0
    for piece in run.laid.pieces:
        for name, _, lengths in notches_of(piece, size):
            share = 0.5 if name == "doubleNotch" else 1
            least += share * (max(lengths) < size - NEAR)
            most += share * (min(lengths) < size)
    told = sum(map(int, re.findall(
        r"has (\d+) notches that would cut through it and are made shorter", run.err)))
    assert least <= told <= most, f"{told} notches are told to be shorter, at least {least} are"
    run.see("short notches", told)


EDGES = ("lower edge of the fabric", "upper edge of the fabric", "start of the fabric",
         "start of the next layer")


def told_out_of_range(run):
    return re.findall(f'piece "(.*?)", size .* lies ([0-9.e+]+) cm beyond the ({"|".join(EDGES)})',
                      run.err)


def what_is_out_of_range_is_told(run):
    left = told_out_of_range(run)
    if run.kind == "labels":
        assert not left, "range of labels"
        return
    for piece in run.laid.pieces:
        points, cloth = list(piece.contour), piece.cloth
        if run.asked("CutInternalOrder"):
            points += [p for line in piece.lines for p in line]
        if run.asked("CutOrderCrans"):
            points += [p for _, ways, _ in notches_of(piece, run.asked("CutNotchSize"))
                       for p in ways[0]]
        start, bottom, end, top = box(points)
        excess = -bottom, top - cloth.width, cloth.start - start, end - cloth.next
        first = next((edge for edge, way in zip(EDGES, excess) if way > 1e-3), None)
        slack = run.tolerance() + 1e-3
        told = next((t for t in left if t[0] == piece.name and
                     abs(excess[EDGES.index(t[2])] - float(t[1])) <= slack and
                     (t[2] == first or run.tolerance())), None)
        if told:
            left.remove(told)
            run.see("beyond the " + told[2])
        else:
            assert max(excess) <= slack, f"{piece.name} lies {max(excess)} beyond the {first}"
    assert not left, f"told without a reason: {left}"


def no_coordinate_is_minus_one(run):
    for name, _, value in (n for d in run.documents for n in d.numbers):
        assert math.isfinite(float(value)) and float(value) != -1, f"{name} {value}"


def no_edge_is_too_long(run):
    if run.asked("CutInterPoints"):
        for found in (f for d in run.documents for f in d.objects):
            for points in [o.points for o in found.outlines] + found.lines:
                size = max(math.dist(a, b) for a, b in zip(points, points[1:]))
                assert size <= run.asked("CutInterPointsFreq") + NEAR, f"an edge of {size} cm"
            run.see("intermediate points")


def sharp_corners_are_lifted(run):
    for pieces, outline in ((p, o) for _, p, f, _ in run.pairs for o in f.outlines):
        texts, points, lifts = outline.texts, outline.points, outline.lifts
        assert lifts == sorted(set(lifts)), "indexes not ascending"
        assert not lifts or 1 < lifts[0] and lifts[-1] < len(texts), "indexes outside"
        for i in range(1, len(texts) - 1):
            if texts[i] in (texts[i - 1], texts[i + 1]):
                assert i + 1 not in lifts, "a lift at the base of a notch"
                continue
            before = next((points[j] for j in range(i - 1, -1, -1) if texts[j] != texts[i]), None)
            if before is None:
                continue
            a, p, b = before, points[i], points[i + 1]
            angle = between(a, p, b)
            margin = 0.01 + math.degrees(1e-6 / min(math.dist(a, p), math.dist(b, p)))
            if angle < 80 - margin:
                assert i + 1 in lifts, f"{pieces[0].name}: {angle} degrees at {p} without a lift"
                run.see("sharp corners")
            elif angle > 80 + margin and not run.tolerance():
                assert i + 1 not in lifts, f"{pieces[0].name}: a lift for {angle} degrees at {p}"


def marks_are_those_of_the_marker(run):
    """Holes, lines to be cut and match points of each piece."""
    for kind, pieces, found, _ in run.pairs:
        if kind == "rough":
            assert not found.matches, "match points of a rough outline"
            continue
        drills, name = list(found.drills), pieces[0].name
        wanted = run.kind != "eastman" or run.asked("EastCutTypeDrill") != 0
        for piece in pieces if wanted else ():
            for place, tool in piece.drills:
                depth = clearance(place, piece.contour)
                drill = next((d for d in drills if same(d[0], place) and d[1] == tool), None)
                if depth > -NEAR:  # in the piece or on its contour
                    assert drill, f"{name}: no hole {tool} at {place}, depth {depth}"
                    run.see(tool)
                elif depth < -2 * NEAR:
                    assert not drill, f"{name}: a hole outside at {place}"
                if drill:
                    drills.remove(drill)
        assert not drills, f"{name}: a hole too much {drills}"
        matches = sorted(p for piece in pieces for p in piece.matches)
        assert same_path(matches, sorted(found.matches)) or len(matches) > 1, f"{name}: matches"
        assert len(matches) == len(found.matches), f"{name}: match points"
        lines = list(found.lines)
        for line in (line for piece in pieces for line in piece.lines):
            fit = next((i for i, other in enumerate(lines) if is_line(run, line, other)), None)
            assert fit is not None, f"{name}: a line to be cut is missing {line}"
            del lines[fit]
            run.see("internal lines")
        assert not lines, f"{name}: a line too much {lines[0]}"


def is_line(run, line, found):
    slack = run.tolerance() + NEAR

    def on(points, other):
        return all(min(to_edge(p, a, b) for a, b in zip(other, other[1:])) <= slack for p in points)
    ends = [found[0], found[-1]]
    return ((same_path(ends, [line[0], line[-1]]) or same_path(ends, [line[-1], line[0]])) and
            on(line, found) and on(found, line))


def holes_outside_are_told(run):
    document = run.documents[0]
    left, end = list(document.holes), math.inf
    if run.asked("CutCommandM69"):
        end = run.asked("CutLength") / run.machine_scale() / run.scale[0]
    for piece in run.laid.pieces if run.asked("CutExternalPunchHoles") else ():
        for place in (p for p, _ in piece.drills if clearance(p, piece.contour) < -NEAR):
            depth = max((clearance(place, other.contour) for other in run.laid.pieces
                         if boxes_meet(box(other.contour), box([place]), 2)), default=-2)
            off = min(max(cloth.start - place[0], -place[1], place[1] - cloth.width)
                      for cloth in run.laid.cloths)
            beyond = max(depth, off - 1e-3, place[0] - end)
            if run.asked("CutCommandM69"):
                beyond = max(beyond, -place[0])
            hole = next((h for h in left if same(h, place)), None)
            if beyond < -2 * NEAR:
                assert hole, f"{piece.name}: no hole outside at {place}"
                assert document.tool == ("M44" if run.asked("CutExternalPunchHoleTool")
                                         else "M43"), document.tool
                run.see("holes outside")
            elif beyond > 2 * NEAR:
                assert not hole, f"{piece.name}: a hole outside at {place}, which none can be at"
                run.see("holes left out: " + ("in a piece" if depth > NEAR else "elsewhere"))
            if hole:
                left.remove(hole)
    assert not left, f"a hole outside too much {left}"
    assert not any(d.holes for d in run.documents[1:]), "holes outside in a block's document"


def frames_hold_their_objects(run):
    scale = run.machine_scale() * run.scale[0]
    length, threshold = (run.asked(n) / scale for n in ("CutLength", "CutThresholdAdvance"))
    for document in run.documents:
        if not run.asked("CutCommandM69") or not document.objects:
            assert not document.advances and not document.skips, "M69"
            continue
        places = sorted(document.advances)
        assert all(i < len(document.objects) for i in places), "M69 last"
        assert (0 in places) == document.skips, "M69 first without an empty object"
        advances = [document.advances[i] for i in places]
        starts = [0] + [float(a["tissuL"]) / run.scale[0] for a in advances]
        for i, advance in enumerate(advances):
            assert int(advance["frame"]) == i + 2, "number of a frame"
            way = float(advance["advance"]) / run.scale[0]
            assert abs(starts[i] + way - starts[i + 1]) < NEAR, f"advance {way} to {starts[i + 1]}"
        spans = [(f.reach[0], f.reach[2]) for f in document.objects]
        fit = {s[0] <= threshold + NEAR and s[1] <= length + NEAR for s in spans
               if s[0] <= min(spans)[0] + NEAR}
        assert document.skips != fit.pop() or fit, "an empty object without need or none"
        run.see("frames that start with nothing", document.skips)
        bounds = [0] + places + [len(spans)]
        for i, start in enumerate(starts):
            for left, right in spans[bounds[i]:bounds[i + 1]]:
                assert start - 2 * NEAR <= left <= start + threshold + 2 * NEAR, (
                    f"begins at {left}, frame {i + 1} starts at {start}")
                assert right <= start + length + 2 * NEAR, f"ends at {right} behind frame {i + 1}"
            later = spans[bounds[i + 1]:]
            assert not later or abs(min(later)[0] - starts[i + 1]) < NEAR, "start of a frame"
            assert document.skips and i == 0 or all(
                s[0] > start + threshold or s[1] > start + length for s in later), (
                f"an object waits that fits into frame {i + 1}")
            run.see("frames")


def waste_cuts_touch_nothing(run):
    cuts = [cut for d in run.documents for cut in d.cuts]
    if not run.asked("CutFabricEdge"):
        assert not cuts, "waste cuts"
        return
    assert len(run.documents[0].cuts) == len(cuts), "waste cuts in a block's document"
    paths = [(piece.contour + piece.contour[:1], True) for piece in run.laid.pieces
             if not run.tolerance()]
    objects = [found for d in run.documents for found in d.objects]
    for found in objects:
        paths += [(o.points, True) for o in found.outlines]
        paths += [(line, bool(run.asked("CutInternalOrder"))) for line in found.lines]
        paths += [(points, bool(run.asked("CutOrderCrans")))
                  for o in found.outlines for _, points in o.notches]
    boxes = [box(path) for path, _ in paths]
    # What sticks out behind the occupied length, a notch for example, is kept, too.
    end = max([c.end for c in run.laid.cloths] + [reach[2] for reach in boxes])
    ends = [cut for cut in cuts if abs(cut[0][0] - end) < NEAR]
    assert ends in ([], cuts[-1:]) and (ends or run.asked("CutCommandM69")), "the end is not last"
    order = []
    for a, b, is_open in cuts:
        assert abs(a[0] - b[0]) < NEAR, "a slanting waste cut"
        cloth = next((c for c in run.laid.cloths if c.start < a[0] < c.end - NEAR), None)
        if ends and a is ends[0][0]:
            cloth = run.laid.cloths[-1]
            assert abs(abs(a[1] - b[1]) - cloth.width) < NEAR, "an end that is not cut across"
            paths = [(path, is_cut) for path, is_cut in paths if is_cut]
            boxes = [box(path) for path, _ in paths]
        assert cloth and min(a[1], b[1]) >= -NEAR and max(a[1], b[1]) <= cloth.width + NEAR, (
            f"{a} {b} off the cloth")
        is_upper = is_open and a[1] > NEAR
        assert abs(a[1] - is_upper * cloth.width) < NEAR, f"{a} lies at no edge"
        order.append((cloth.start, not is_upper, -a[0] if is_upper else a[0]))
        for (path, _), reach in zip(paths, boxes):
            if boxes_meet(reach, box([a, b]), 0.2):
                near = min(gap(a, b, p, q) for p, q in zip(path, path[1:]))
                crossing = any(cross(a, b, p, q, NEAR) for p, q in zip(path, path[1:]))
                assert not crossing if ends and a is ends[0][0] else near > NEAR, (
                    f"the waste cut {a} {b} comes as near as {near} to {path[:3]}")
        run.see("waste cuts")
    order = order[:-1] if ends else order
    assert order == sorted(order), f"order of waste cuts {[(c[0], c[1]) for c in cuts]}"
    spacing, size = run.asked("CutFabricEdgeSpacing"), run.asked("CutFabricEdgeLength")
    for cloth in run.laid.cloths:
        for i in range(1, math.ceil((cloth.end - cloth.start) / spacing - NEAR)):
            x = cloth.start + i * spacing
            if any(reach[0] - 0.3 < x < reach[2] + 0.3 for reach in boxes):
                continue
            sizes = sorted(abs(a[1] - b[1]) for a, b, _ in cuts if abs(a[0] - x) < NEAR)
            whole = [cloth.width] if 2 * size >= cloth.width else [size, size]
            if not run.asked("CutCommandM69"):
                assert same_path([(s, 0) for s in sizes], [(s, 0) for s in whole]), f"{x}: {sizes}"


def rough_outlines_keep_clear(run):
    rough = [(pieces, [ring_of(o) for o in found.outlines], found)
             for kind, pieces, found, _ in run.pairs if kind == "rough"]
    for pieces, rings, found in rough:
        assert all(any(encloses([o], [piece]) for piece in pieces) for o in found.outlines), (
            f"an outline of {[p.name for p in pieces]} without a piece")
        cloth = pieces[0].cloth
        left, bottom, right, top = found.reach
        assert left >= cloth.start - CLIPPED and right <= cloth.end + CLIPPED, "beyond the cloth"
        assert bottom >= -CLIPPED and top <= cloth.width + CLIPPED, "beyond the cloth's width"
        # Pieces that all lie before the start of their layer may lie over others.
        others = [(p.name, p.contour) for p in run.laid.pieces
                  if p.cloth.start < p.cloth.end and not any(p is piece for piece in pieces)]
        others += [("rough " + other[0].name, ring) for other, found_rings, _ in rough
                   if other is not pieces for ring in found_rings]
        for name, other in others:
            for ring in (r for r in rings if boxes_meet(box(other), box(r), 0)):
                assert all(clearance(p, other) < CLIPPED for p in ring), name
                assert all(clearance(p, ring) < CLIPPED for p in other), name
                assert not crossing(ring, other), f"enters {name}"
                run.see("rough outlines beside others")
        for piece in pieces:
            if all(is_on_cloth(p, cloth) for p in piece.contour):
                assert not any(crossing(ring, piece.contour) for ring in rings), (
                    f"the rough outline of {piece.name} cuts it")
        is_widened(run, pieces, rings, [box(other) for _, other in others])


def crossing(ring, other):
    reach = box(other)
    near = [edge for edge in edges(ring) if boxes_meet(box(edge), reach, 0)]
    return any(cross(*edge, c, d, CLIPPED) for c, d in edges(other) for edge in near)


def is_widened(run, pieces, rings, others):
    """The gap lies between the pieces and the outline, as far as there is room."""
    gx, gy = run.laid.gaps
    for p in (p for ring in rings for p in ring[::len(ring) // 40 + 1]):
        more = [CLIPPED + (0.02 * max(gx, gy) if len(piece.contour) > 200 else 0)
                for piece in pieces]
        assert any(clearance(p, piece.contour) > 0 or any(
            meets(a, b, around(p, gx + m, gy + m)) for a, b in edges(piece.contour))
                   for piece, m in zip(pieces, more)), f"{p} lies too far from {pieces[0].name}"
    for piece in pieces if gx or gy else ():
        for p in piece.contour[::len(piece.contour) // 40 + 1]:
            for q in ((p[0] + x, p[1] + y) for x in (-gx, gx) for y in (-gy, gy)):
                room = around(q, 1.02 * gx + CLIPPED, 1.02 * gy + CLIPPED)
                if (is_on_cloth(q, piece.cloth) and q[0] <= piece.cloth.end and
                        is_on_cloth(p, piece.cloth) and
                        not any(boxes_meet(box((p, q)), other, 1.02 * max(gx, gy))
                                for other in others)):
                    assert max(clearance(q, ring) for ring in rings) > -CLIPPED, (
                        f"{piece.name}: {q} lies beyond the rough outline")
                    run.see("gaps of rough outlines")


def around(p, x, y):
    return p[0] - x, p[1] - y, p[0] + x, p[1] + y


def texts_stay_on_their_piece(run):
    for _, pieces, found, _ in run.pairs:
        assert run.asked("PenCutInfos") or not found.texts, "texts"
        rings = [[(x * run.scale[0], y * run.scale[1]) for x, y in p.contour] for p in pieces]
        named = set()
        for text in found.texts:
            size = float(text.get("fontSize")) * 0.03528 * 1.2
            widths = [size / 2 if ord(c) < 256 else size for c in text.text]
            start, end = -widths[0] / 2, sum(widths) - widths[0] / 2
            x, y, angle = (float(text.get(a)) for a in ("x", "y", "angle"))
            ux, uy = math.cos(math.radians(angle)), math.sin(math.radians(angle))
            letters = [(x + a * ux - b * uy, y + a * uy + b * ux)
                       for a, b in ((start, -size / 2), (end, -size / 2), (end, size / 2),
                                    (start, size / 2))]
            on = [i for i, ring in enumerate(rings) if all(clearance(p, ring) > 0 for p in letters)
                  and not any(cross(a, b, c, d, 0) for a, b in edges(letters)
                              for c, d in edges(ring))]
            assert on, f"{pieces[0].name}: {text.text} leaves the piece"
            named |= {i for i in on if pieces[i].name in text.text}
            run.see("pen texts")
        for i, ring in enumerate(rings if run.asked("PenCutInfos") else ()):
            middle = [sum(p[axis] for p in ring) / len(ring) for axis in (0, 1)]
            assert i in named or clearance(middle, ring) < 3, f"{pieces[i].name} has no text"


def attributes_tell_the_piece(run):
    for _, pieces, found, document in run.pairs:
        size = min(abs(area(ring_of(o))) for o in found.outlines)
        if min(abs(size - limit) for limit in (400, 100, 25)) > 0.01:
            velocity = sum(size < limit for limit in (400, 100, 25))
            assert int(found.attributes["velocity"]) == velocity, f"{pieces[0].name}: velocity"
        label = found.attributes.get("label")
        assert (label is not None) == bool(run.asked("CutLabelM31")), "label"
        if label is not None:
            place = document.points([found.attributes["centreX"] + "," +
                                     found.attributes["centreY"]])[0]
            largest = max(abs(area(p.contour)) for p in pieces) - CLIPPED
            assert any(clearance(place, p.contour) > 0 for p in pieces
                       if abs(area(p.contour)) > largest), (
                f"{pieces[0].name}: label outside at {place}")
            assert len(label) <= 36 and "*" not in label and any(
                label.startswith(p.name.replace("*", "x")[:36]) for p in pieces), label
            run.see("M31")


LABELS = (root_tells_the_cloth, no_coordinate_is_minus_one, each_label_once)
CUTS = (root_tells_the_cloth, no_coordinate_is_minus_one, each_object_once, outlines_are_closed,
        notches_start_on_their_outline, notches_are_those_of_the_marker, short_notches_are_told,
        no_edge_is_too_long,
        sharp_corners_are_lifted, marks_are_those_of_the_marker, holes_outside_are_told,
        frames_hold_their_objects, waste_cuts_touch_nothing, rough_outlines_keep_clear,
        texts_stay_on_their_piece, attributes_tell_the_piece)
# These go by the pieces that each_object_once() has found.
PAIRED = (notches_are_those_of_the_marker, sharp_corners_are_lifted, marks_are_those_of_the_marker,
          rough_outlines_keep_clear, texts_stay_on_their_piece, attributes_tell_the_piece)
