// The paths of a piece: outlines, notches and internal lines.

#include "CutProcessor.h"

#include "CutConfig.h"
#include "CutOutlineSearch.h"
#include "CutShapePath.h"

namespace KivSystem {
namespace NC {
namespace {

bool isKind(const QDomElement &path, const char *kind)
{
    return path.attribute(QStringLiteral("t")) == QLatin1String(kind);
}

QDomElement firstPath(const QDomElement &object)
{
    return object.firstChildElement(QStringLiteral("path"));
}

QDomElement nextPath(const QDomElement &path)
{
    return path.nextSiblingElement(QStringLiteral("path"));
}

std::vector<GeoPoint2D> pointsOf(const QDomElement &path)
{
    std::vector<GeoPoint2D> points;
    parseShapePath(path.text(), points);
    return points;
}

QString moveFormat(const QDomElement &config)
{
    return config.attribute(QStringLiteral("pathto"));
}

QString lineFormat(const QDomElement &config)
{
    return config.attribute(QStringLiteral("lineto"));
}

const QString &liftAttribute()
{
    static const QString name = QStringLiteral("LiftPlunge");
    return name;
}

// What is written in front of the points that the path names; empty when it names none.
QString liftText(const QDomElement &path, const QDomElement &config)
{
    const bool namesPoints = !path.attribute(liftAttribute()).isEmpty();
    return namesPoints ? config.attribute(liftAttribute()) : QString();
}

std::vector<int> liftNumbers(const QDomElement &path)
{
    std::vector<int> numbers;
    parseNumbers(path.attribute(liftAttribute()), numbers);
    return numbers;
}

} // namespace

QString CutProcessor::getNotchLineTo0(const QDomElement &notchConfig)
{
    return notchConfig.attribute(QStringLiteral("lineto0"));
}

QString CutProcessor::getOutlineTo0(const QDomElement &object, const QDomElement &outlineConfig)
{
    const int velocity = object.attribute(QStringLiteral("velocity")).toInt();
    return outlineConfig.attribute(QStringLiteral("v%1").arg(velocity)) +
           outlineConfig.attribute(QStringLiteral("lineto0"));
}

void CutProcessor::exportNotchs(const QDomElement &object, const QDomElement &config)
{
    const QString move = moveFormat(config);
    const QString firstLine = getNotchLineTo0(config);
    const QString line = lineFormat(config);
    const bool wrap = isWrapped(config);
    for (QDomElement path = firstPath(object); !path.isNull(); path = nextPath(path)) {
        if (isKind(path, "notch")) {
            exportPoints(pointsOf(path), move, firstLine, line, wrap);
        }
    }
}

void CutProcessor::exportOutline(const QDomElement &object, const QDomElement &config)
{
    const QString move = moveFormat(config);
    const QString firstLine = getOutlineTo0(object, config);
    const QString line = lineFormat(config);
    const bool wrap = isWrapped(config);
    for (QDomElement path = firstPath(object); !path.isNull(); path = nextPath(path)) {
        if (!isKind(path, "outline")) {
            continue;
        }
        const QString lift = liftText(path, config);
        const std::vector<GeoPoint2D> points = pointsOf(path);
        if (lift.isEmpty()) {
            exportPoints(points, move, firstLine, line, wrap);
            continue;
        }
        const std::vector<int> liftIndexes = liftNumbers(path);
        int pointIndex = 0;
        int liftIndex = 0;
        for (std::size_t index = 0; points.size() >= 2 && index < points.size(); ++index) {
            const QString &format = index == 0 ? move : index == 1 ? firstLine : line;
            exportPoint(points[index], format, wrap, lift, liftIndexes, pointIndex, liftIndex);
        }
    }
}

void CutProcessor::exportInternal(const QDomElement &object, const QDomElement &config)
{
    const QString move = moveFormat(config);
    const QString firstLine = config.attribute(QStringLiteral("lineto0"));
    const QString line = lineFormat(config);
    const bool wrap = isWrapped(config);
    for (QDomElement path = firstPath(object); !path.isNull(); path = nextPath(path)) {
        if (!isKind(path, "internal")) {
            continue;
        }
        const std::vector<GeoPoint2D> points = pointsOf(path);
        if (points.size() < 2) {
            continue;
        }
        exportPoint(points[0], move, wrap);
        exportPoint(points[1], firstLine, wrap);
        for (std::size_t index = 2; index < points.size(); ++index) {
            if (!line.isEmpty()) {
                exportPoint(points[index], line, wrap);
            } else { // a cutter without a command to go on: each segment is a stroke of its own
                exportPoint(points[index - 1], move, wrap);
                exportPoint(points[index], firstLine, wrap);
            }
        }
    }
}

// --- Notches in the course of the outline -------------------------------------------------------

// An outline that is being cut: it is broken off where a notch begins and taken up again behind it.
class CutProcessor::DuringOutline
{
public:
    // The outline may be null: there is nothing to cut then but the notches.
    DuringOutline(CutProcessor &cutProcessor, const QDomElement &outlinePath,
        const QDomElement &object, const QDomElement &notchConfig, const QDomElement &outlineConfig)
        : processor(cutProcessor)
        , notchMove(moveFormat(notchConfig))
        , notchFirstLine(processor.getNotchLineTo0(notchConfig))
        , notchPenUpLine(notchConfig.attribute(QStringLiteral("linetopenup")))
        , notchLine(lineFormat(notchConfig))
        , move(moveFormat(outlineConfig))
        , firstLine(processor.getOutlineTo0(object, outlineConfig))
        , line(lineFormat(outlineConfig))
        , lift(liftText(outlinePath, outlineConfig))
        , wrap(isWrapped(outlineConfig))
        , liftIndexes(liftNumbers(outlinePath))
        , points(pointsOf(outlinePath))
    {}

    void cutNotch(std::vector<GeoPoint2D> notch)
    {
        if (notch.size() < 2) {
            return;
        }
        const GeoPoint2D start = notch.front();
        if (const boost::optional<std::size_t> vertex = search.vertexAt(start, next)) {
            cutUpTo(*vertex);
            next = *vertex;
            notch.erase(notch.begin());
            cutFromVertex(notch);
        } else if (!isNoPoint(start)) {
            const boost::optional<std::size_t> end = search.segmentThrough(start, next);
            if (end && next + 1 < *end) {
                cutUpTo(*end);
                --next; // the outline goes on from the last point that was cut
            }
            const QString &second = notch.size() > 2 ? notchPenUpLine : notchFirstLine;
            processor.exportPoints(notch, notchMove, second, notchLine, wrap);
        }
    }

    void cutRest() { cutUpTo(points.size()); }

private:
    // The points before `stop` that are not cut yet: a stroke that begins with a move.
    void cutUpTo(std::size_t stop)
    {
        for (std::size_t start = next; next < stop; ++next, ++written) {
            if (liftIndex < liftIndexes.size() && written == liftIndexes[liftIndex]) {
                processor.stream << lift;
                ++liftIndex;
            }
            const QString &format = next == start ? move : next == start + 1 ? firstLine : line;
            processor.exportPoint(points[next], format, wrap);
        }
    }

    // The knife stands on the outline: the notch goes on from there without a move.
    void cutFromVertex(const std::vector<GeoPoint2D> &rest)
    {
        if (rest.size() == 1) {
            processor.exportPoint(rest.front(), notchFirstLine, wrap);
        } else {
            processor.exportPoints(rest, notchFirstLine, notchPenUpLine, notchLine, wrap);
        }
    }

    CutProcessor &processor;
    const QString notchMove;
    const QString notchFirstLine;
    const QString notchPenUpLine;
    const QString notchLine;
    const QString move;
    const QString firstLine;
    const QString line;
    const QString lift;
    const bool wrap;
    const std::vector<int> liftIndexes;
    const std::vector<GeoPoint2D> points;
    CutOutlineSearch search{points};
    std::size_t next = 0;      // point to be cut next
    int written = 0;           // points cut, those that were cut twice counted twice
    std::size_t liftIndex = 0; // the lift that is due next
};

void CutProcessor::exportDuringOutlines(
    const QDomElement &object, const QDomElement &notchConfig, const QDomElement &outlineConfig)
{
    QDomElement pending; // the first notch of the outline that comes
    for (QDomElement path = firstPath(object); !path.isNull(); path = nextPath(path)) {
        if (isKind(path, "outline")) {
            exportDuringOutline(path, pending, notchConfig, outlineConfig);
            pending.clear();
        } else if (pending.isNull() && isKind(path, "notch")) {
            pending = path;
        }
    }
    if (!pending.isNull()) {
        exportDuringOutline(QDomElement(), pending, notchConfig, outlineConfig);
    }
}

void CutProcessor::exportDuringOutline(const QDomElement &outlinePath, QDomElement &notchPath,
    const QDomElement &notchConfig, const QDomElement &outlineConfig)
{
    const QDomElement &ofObject = outlinePath.isNull() ? notchPath : outlinePath;
    DuringOutline outline(
        *this, outlinePath, ofObject.parentNode().toElement(), notchConfig, outlineConfig);
    for (; isKind(notchPath, "notch"); notchPath = nextPath(notchPath)) {
        outline.cutNotch(pointsOf(notchPath));
    }
    outline.cutRest();
}

} // namespace NC
} // namespace KivSystem
