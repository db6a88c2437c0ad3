#include "MarkerFileShapes.h"

#include "MarkerFileWords.h"

namespace KivSystem {
namespace {

constexpr int kMaxLetterSize = 400;
constexpr int kFewestCorners = 3;
constexpr int kFewestPathPoints = 3;   // below it a text stands straight
constexpr double kSmallestArea = 1e-6; // square cm; below it a contour encloses nothing

double coordinate(const JsonNode &node, const char *key, std::optional<double> fallback = {})
{
    return node.number(key, -kMaxCoordinate, kMaxCoordinate, fallback);
}

PunchFeature readPunch(const JsonNode &node)
{
    node.allow({"barLeft", "barRight", "barDown", "barUp", "plus", "cross", "bowTie", "square",
        "diamond", "octagon", "triangleLeft", "triangleRight", "twinStroke", "twinCurve",
        "halfDiscs", "corner", "matrix"});
    PunchFeature punch;
    for (const auto &size : kPunchSizeWords) {
        punch.*size.value = static_cast<float>(coordinate(node, size.word, 0));
    }
    if (node.has("matrix")) {
        const JsonNode matrix = node.member("matrix");
        matrix.count(4, 4);
        for (int index = 0; index < 4; ++index) {
            punch.punchMatrix[static_cast<std::size_t>(index)] =
                matrix.item(index).asNumber(-kMaxCoordinate, kMaxCoordinate);
        }
    }
    return punch;
}

// A point that is more than a corner.
CDbMarkerPointObject readMarkedPoint(const JsonNode &node)
{
    node.allow({"x", "y", "type", "notch", "notchWidth", "match", "punch"});
    CDbMarkerPointObject point(coordinate(node, "x"), coordinate(node, "y"));
    point.pointType = wordMember(node, "type", kPointTypeWords);
    point.matchPoint = node.boolean("match", false);
    if (isNotchType(point.pointType)) {
        const JsonNode notch = node.member("notch");
        notch.count(2, 2);
        point.notchDx = static_cast<float>(notch.item(0).asNumber(-kMaxCoordinate, kMaxCoordinate));
        point.notchDy = static_cast<float>(notch.item(1).asNumber(-kMaxCoordinate, kMaxCoordinate));
    } else if (node.has("notch")) {
        node.member("notch").fail(
            QStringLiteral("found a notch vector on a point that is no notch"),
            QStringLiteral("it on notches only"));
    }
    point.notchWidth = static_cast<float>(
        node.number("notchWidth", 0, point.pointType == UserNotch ? kMaxCoordinate : 0, 0));
    if (node.has("punch")) {
        const JsonNode punch = node.member("punch");
        if (!isPunchType(point.pointType)) {
            punch.fail(QStringLiteral("found a punch shape on a point that is no punch"),
                QStringLiteral("it on punches only"));
        }
        point.setPunch(readPunch(punch));
    }
    return point;
}

// A point that is a place and no more.
CDbMarkerPointObject readPlace(const JsonNode &node)
{
    node.count(2, 2);
    return {node.item(0).asNumber(-kMaxCoordinate, kMaxCoordinate),
        node.item(1).asNumber(-kMaxCoordinate, kMaxCoordinate)};
}

JsonTree writePlace(const GeoPoint2D &place)
{
    return JsonTree::array()
        .append(JsonTree::number(place.x))
        .append(JsonTree::number(place.y))
        .flattened();
}

CDbMarkerPointObject readPoint(const JsonNode &node)
{
    if (node.value().isObject()) {
        return readMarkedPoint(node);
    }
    if (!node.value().isArray()) {
        node.failType(QStringLiteral("a point: [x, y] or an object"));
    }
    return readPlace(node);
}

CDbVectorsObjectTable readPoints(const JsonNode &node, int fewest)
{
    CDbVectorsObjectTable points;
    const int count = node.count(fewest, kMaxCount);
    points.reserve(count);
    for (int index = 0; index < count; ++index) {
        points.append(readPoint(node.item(index)));
    }
    return points;
}

CDbVectorsObjectTable readContour(const JsonNode &node)
{
    CDbVectorsObjectTable contour = readPoints(node, kFewestCorners);
    if (contour.first().equals(contour.last(), 0)) {
        node.fail(QStringLiteral("the last point repeats the first"),
            QStringLiteral("a contour that closes by itself"));
    }
    if (!(contour.area() > kSmallestArea)) {
        node.fail(QStringLiteral("the contour encloses nothing"), QStringLiteral("an area"));
    }
    return contour;
}

InternalLine readInternalLine(const JsonNode &node)
{
    node.allow({"kind", "points"});
    InternalLine line;
    line.kind = valueOfWord(node.member("kind"), kLineKindWords);
    const JsonNode points = node.member("points");
    line.points = readPoints(points, 2);
    return line;
}

JsonTree writePunch(const PunchFeature &punch)
{
    JsonTree object = JsonTree::object();
    for (const auto &size : kPunchSizeWords) {
        if (punch.*size.value != 0.0F) {
            object.add(size.word, JsonTree::number(punch.*size.value));
        }
    }
    if (punch.punchMatrix != PunchFeature().punchMatrix) {
        JsonTree matrix = JsonTree::array();
        for (const double entry : punch.punchMatrix) {
            matrix.append(JsonTree::number(entry));
        }
        object.add("matrix", std::move(matrix));
    }
    return object;
}

JsonTree writePoint(const CDbMarkerPointObject &point)
{
    const bool corner = point.pointType == PlainPoint && !point.matchPoint;
    if (corner) {
        return writePlace(point);
    }
    JsonTree object = JsonTree::object();
    object.add("x", JsonTree::number(point.x)).add("y", JsonTree::number(point.y));
    if (point.pointType != PlainPoint) {
        const auto type = static_cast<MarkerPointType>(point.pointType);
        object.add("type", JsonTree::text(wordOf(type, kPointTypeWords)));
    }
    if (isNotchType(point.pointType)) {
        object.add("notch", JsonTree::array()
                                .append(JsonTree::number(point.notchDx))
                                .append(JsonTree::number(point.notchDy)));
    }
    if (point.notchWidth != 0.0F) {
        object.add("notchWidth", JsonTree::number(point.notchWidth));
    }
    if (point.matchPoint) {
        object.add("match", JsonTree::boolean(true));
    }
    if (point.ownPunch() != nullptr) {
        object.add("punch", writePunch(*point.ownPunch()));
    }
    return object.flattened();
}

JsonTree writePoints(const CDbVectorsObjectTable &points)
{
    JsonTree column = JsonTree::column();
    for (const CDbMarkerPointObject &point : points) {
        column.append(writePoint(point));
    }
    return column;
}

void readTextPath(const JsonNode &node, CDbTextObject &text)
{
    if (node.has("box")) {
        const JsonNode box = node.member("box");
        box.count(2, 2);
        text.textBoxWidth = box.item(0).asNumber(0, kMaxCoordinate);
        text.textBoxHeight = box.item(1).asNumber(0, kMaxCoordinate);
    }
    text.textPathOrigin = text.textPosition;
    if (node.has("pathOrigin")) {
        const JsonNode origin = node.member("pathOrigin");
        if (!node.has("path")) {
            origin.fail(QStringLiteral("found the origin of a path that is not there"),
                QStringLiteral("it with a path only"));
        }
        text.textPathOrigin = readPlace(origin);
    }
    if (node.has("path")) {
        const JsonNode path = node.member("path");
        const int count = path.count(kFewestPathPoints, kMaxCount);
        for (int index = 0; index < count; ++index) {
            text.textPath.append(readPlace(path.item(index)));
        }
        if (text.textBoxWidth == 0 && text.textBoxHeight == 0) {
            text.setMinAndMax(nullptr); // it is placed by its own measure
        }
    }
}

std::unique_ptr<CDbTextObject> readText(const JsonNode &node)
{
    node.allow({"lines", "x", "y", "align", "letterSize", "section", "box", "path", "pathOrigin"});
    auto text = std::make_unique<CDbTextObject>();
    const JsonNode lines = node.member("lines");
    const int count = lines.count(1, kMaxCount);
    for (int index = 0; index < count; ++index) {
        text->textLines << lines.item(index).asLine();
    }
    text->textPosition = CDbMarkerPointObject(coordinate(node, "x"), coordinate(node, "y"));
    text->textAlignment = wordMember(node, "align", kAlignmentWords);
    text->textLetterSize = static_cast<short>(
        node.integer("letterSize", 1, kMaxLetterSize, CDbTextObject::DefaultLetterSize));
    text->textWorkSection = wordMember(node, "section", kSectionWords);
    readTextPath(node, *text);
    return text;
}

void writeTextPath(JsonTree &object, const CDbTextObject &text)
{
    if (text.textBoxWidth != 0 || text.textBoxHeight != 0) {
        object.add("box", writePlace({text.textBoxWidth, text.textBoxHeight}));
    }
    if (!text.textPath.isEmpty()) {
        JsonTree path = JsonTree::column();
        for (const GeoPoint2D &point : text.textPath) {
            path.append(writePlace(point));
        }
        object.add("path", std::move(path));
        if (!text.textPathOrigin.equals(text.textPosition, 0)) {
            object.add("pathOrigin", writePlace(text.textPathOrigin));
        }
    }
}

JsonTree writeText(const CDbTextObject &text)
{
    JsonTree lines = JsonTree::array();
    for (const QString &line : text.textLines) {
        lines.append(JsonTree::text(line));
    }
    JsonTree object = JsonTree::object();
    object.add("lines", std::move(lines))
        .add("x", JsonTree::number(text.textPosition.x))
        .add("y", JsonTree::number(text.textPosition.y));
    const Qt::AlignmentFlag align = text.textAlignment.testFlag(Qt::AlignRight) ? Qt::AlignRight
                                    : text.textAlignment.testFlag(Qt::AlignHCenter)
                                        ? Qt::AlignHCenter
                                        : Qt::AlignLeft;
    if (align != Qt::AlignLeft) {
        object.add("align", JsonTree::text(wordOf(align, kAlignmentWords)));
    }
    if (text.textLetterSize != CDbTextObject::DefaultLetterSize) {
        object.add("letterSize", JsonTree::integer(text.textLetterSize));
    }
    const auto section = static_cast<TextWorkSection>(text.textWorkSection);
    if (section != WorkAreaSection) {
        object.add("section", JsonTree::text(wordOf(section, kSectionWords)));
    }
    writeTextPath(object, text);
    return object;
}

} // namespace

PieceShape readShape(const JsonNode &node)
{
    PieceShape shape;
    const JsonNode contour = node.member("contour");
    shape.contour = readContour(contour);
    if (node.has("seam")) {
        const JsonNode seam = node.member("seam");
        shape.seam = readContour(seam);
    }
    if (node.has("internalPoints")) {
        const JsonNode points = node.member("internalPoints");
        shape.internalPoints = readPoints(points, 0);
    }
    if (node.has("internalLines")) {
        const JsonNode lines = node.member("internalLines");
        const int count = lines.count(0, kMaxCount);
        for (int index = 0; index < count; ++index) {
            shape.internalLines.push_back(readInternalLine(lines.item(index)));
        }
    }
    return shape;
}

void writeShape(JsonTree &object, const CDbVectorsObjectTable &contour,
    const CDbVectorsObjectTable *seam, const CDbVectorsObjectTable &internalPoints,
    const std::vector<InternalLine> &internalLines)
{
    object.add("contour", writePoints(contour));
    if (seam != nullptr && !seam->isEmpty()) {
        object.add("seam", writePoints(*seam));
    }
    if (!internalPoints.isEmpty()) {
        object.add("internalPoints", writePoints(internalPoints));
    }
    if (!internalLines.empty()) {
        JsonTree lines = JsonTree::array();
        for (const InternalLine &line : internalLines) {
            lines.append(JsonTree::object()
                             .add("kind", JsonTree::text(wordOf(line.kind, kLineKindWords)))
                             .add("points", writePoints(line.points)));
        }
        object.add("internalLines", std::move(lines));
    }
}

TextList readTexts(const JsonNode &node, const char *key)
{
    TextList texts;
    if (node.has(key)) {
        const JsonNode list = node.member(key);
        const int count = list.count(0, kMaxCount);
        for (int index = 0; index < count; ++index) {
            texts.push_back(readText(list.item(index)));
        }
    }
    return texts;
}

void writeTexts(JsonTree &object, const char *key, const TextList &texts)
{
    if (!texts.empty()) {
        JsonTree list = JsonTree::array();
        for (const auto &text : texts) {
            list.append(writeText(*text));
        }
        object.add(key, std::move(list));
    }
}

CDbLineObjectList readLines(const JsonNode &node, const char *key)
{
    CDbLineObjectList lines;
    if (node.has(key)) {
        const JsonNode list = node.member(key);
        const int count = list.count(0, kMaxCount);
        for (int index = 0; index < count; ++index) {
            const JsonNode line = list.item(index);
            line.allow({"position", "text"});
            lines.addLine(coordinate(line, "position"), line.line("text", QString()));
        }
    }
    return lines;
}

void writeLines(JsonTree &object, const char *key, const CDbLineObjectList &lines)
{
    if (!lines.isEmpty()) {
        JsonTree list = JsonTree::array();
        for (const CDbLineObject &line : lines) {
            JsonTree entry = JsonTree::object();
            entry.add("position", JsonTree::number(line.linePosition));
            if (!line.getText().isEmpty()) {
                entry.add("text", JsonTree::text(line.getText()));
            }
            list.append(std::move(entry));
        }
        object.add(key, std::move(list));
    }
}

PlacementRules readRules(const JsonNode &node)
{
    node.allow({"rotationStep", "fineRotation", "flipX", "flipY"});
    PlacementRules rules;
    rules.rotationStep = static_cast<short>(node.integer("rotationStep", 0, 360, 0));
    rules.fineRotation = node.number("fineRotation", 0, 180, 0.0);
    rules.flipX = node.boolean("flipX", false);
    rules.flipY = node.boolean("flipY", false);
    return rules;
}

JsonTree writeRules(const PlacementRules &rules)
{
    JsonTree object = JsonTree::object();
    if (rules.rotationStep != 0) {
        object.add("rotationStep", JsonTree::integer(rules.rotationStep));
    }
    if (rules.fineRotation != 0) {
        object.add("fineRotation", JsonTree::number(rules.fineRotation));
    }
    if (rules.flipX) {
        object.add("flipX", JsonTree::boolean(true));
    }
    if (rules.flipY) {
        object.add("flipY", JsonTree::boolean(true));
    }
    return object;
}

} // namespace KivSystem
