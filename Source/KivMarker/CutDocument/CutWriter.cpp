#include "CutDocument/CutWriter.h"

#include "CutDocument/CutOrder.h"
#include "CutDocument/CutPlan.h"
#include "CutDocument/CutRequest.h"

#include <array>
#include <charconv>

namespace KivSystem {
namespace {

// Names of the tools, which are tags in the configuration of a cut format.
constexpr char kPlainTool[] = "M43";
constexpr char kUserTool[] = "M44";

class Writer
{
public:
    Writer(const CutPlan &plan, const CutRequest &request) : m_plan(plan), m_request(request) {}

    QDomDocument document(const QString &fabricName)
    {
        QDomElement root = m_document.createElement(QStringLiteral("svg"));
        m_document.appendChild(root);
        root.setAttribute(QStringLiteral("tissuL"), number(m_plan.length));
        root.setAttribute(QStringLiteral("tissuW"), number(m_plan.width));
        root.setAttribute(QStringLiteral("fabric"), fabricName);
        root.setAttribute(QStringLiteral("unit"), QStringLiteral("cm"));
        if (m_plan.block > 0) {
            root.setAttribute(QStringLiteral("block_index"), m_plan.block);
        }
        if (!m_request.labelsOnly) {
            addHoles(root);
        }
        for (const CutObject &object : m_plan.objects) {
            if (m_request.labelsOnly && object.pieces.empty()) {
                continue;
            }
            addObject(root, object);
            if (object.advanceBehind && !m_request.labelsOnly) {
                addAdvance(root, object.frame);
            }
        }
        if (!m_request.labelsOnly) {
            addWaste(root);
        }
        return m_document;
    }

private:
    // The shortest text that reads back to the value, with a point whatever the locale.
    static QString number(double value)
    {
        std::array<char, 32> buffer{};
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
        return QString::fromLatin1(buffer.data(), static_cast<int>(end - buffer.data()));
    }

    static QString coordinate(double value)
    {
        constexpr double noPoint = -1;
        // Dividing by a whole number gives the shortest decimal fraction again.
        double rounded = std::round(value * kCoordinateSteps) / kCoordinateSteps;
        if (rounded == noPoint) {
            rounded = noPoint + 1 / kCoordinateSteps;
        }
        return number(rounded == 0 ? 0 : rounded); // no -0
    }

    QString x(const GeoPoint2D &place) const { return coordinate(place.x * m_request.scaleX); }
    QString y(const GeoPoint2D &place) const { return coordinate(place.y * m_request.scaleY); }
    QString pair(const GeoPoint2D &place) const { return x(place) + QLatin1Char(',') + y(place); }

    void addPoint(QString &data, const GeoPoint2D &place) const
    {
        data += data.isEmpty() ? QLatin1String("M ") : QLatin1String(" L ");
        data += x(place);
        data += QLatin1Char(',');
        data += y(place);
    }

    QString pathData(const CutPath &path) const
    {
        QString data;
        for (const GeoPoint2D &point : path) {
            addPoint(data, point);
        }
        return data;
    }

    QDomElement child(QDomElement &parent, const char *tag)
    {
        QDomElement element = m_document.createElement(QLatin1String(tag));
        parent.appendChild(element);
        return element;
    }

    QDomElement addPath(QDomElement &parent, const char *kind, const QString &data)
    {
        QDomElement path = child(parent, "path");
        path.setAttribute(QStringLiteral("t"), QLatin1String(kind));
        path.appendChild(m_document.createTextNode(data));
        return path;
    }

    void addHoles(QDomElement &root)
    {
        if (m_plan.holes.empty()) {
            return;
        }
        QDomElement external = child(root, "external");
        external.setAttribute(QStringLiteral("outil"),
            QLatin1String(
                m_request.settings.cutExternalPunchHoleTool == 0 ? kPlainTool : kUserTool));
        for (const GeoPoint2D &hole : m_plan.holes) {
            QDomElement circle = child(external, "circle");
            circle.setAttribute(QStringLiteral("cx"), x(hole));
            circle.setAttribute(QStringLiteral("cy"), y(hole));
        }
    }

    void addObject(QDomElement &root, const CutObject &object)
    {
        QDomElement element = child(root, "object");
        if (object.label) {
            element.setAttribute(QStringLiteral("label"), *object.label);
            element.setAttribute(QStringLiteral("centreX"), x(object.labelPlace));
            element.setAttribute(QStringLiteral("centreY"), y(object.labelPlace));
        }
        if (m_request.labelsOnly) {
            return;
        }
        element.setAttribute(QStringLiteral("velocity"), object.velocity);
        for (const CutDrill &drill : object.drills) {
            addDrill(element, drill);
        }
        for (const CutPath &line : object.internals) {
            addPath(element, "internal", pathData(line));
        }
        for (const CutOutline &outline : object.outlines) {
            addOutline(element, outline);
        }
        for (const FittedText &text : object.texts) {
            addText(element, text);
        }
        for (const GeoPoint2D &point : object.matchPoints) {
            QDomElement match = child(element, "match_point");
            match.setAttribute(QStringLiteral("matchPointX"), x(point));
            match.setAttribute(QStringLiteral("matchPointY"), y(point));
        }
    }

    void addDrill(QDomElement &element, const CutDrill &drill)
    {
        if (!m_request.drills) {
            return;
        }
        QDomElement path = child(element, "path");
        path.setAttribute(QStringLiteral("t"), QLatin1String(drill.user ? kUserTool : kPlainTool));
        path.setAttribute(QStringLiteral("drill"), QLatin1String("M ") + pair(drill.place));
        if (m_request.drillSize != 0) {
            path.setAttribute(QStringLiteral("drillSize"), m_request.drillSize);
        }
    }

    // The notches stand before their outline, which closes with its first point.
    void addOutline(QDomElement &element, const CutOutline &outline)
    {
        for (const int notch : notchOrder(outline)) {
            addPath(element, "notch", pathData(outline.notches[static_cast<std::size_t>(notch)]));
        }
        QString data;
        QStringList lifts;
        int index = 0;
        const std::size_t count = outline.points.size();
        for (std::size_t i = 0; i <= count; ++i) {
            const CutPoint &point = outline.points[i % count];
            addPoint(data, point.place());
            ++index;
            // An outline that is broken off for a notch goes on with a move back to the notch's
            // base: the base stands twice, once for the cut that reaches it and once for the move.
            if (i > 0 && point.notch >= 0 && m_request.notchesDuringOutline()) {
                addPoint(data, point.place());
                ++index;
            }
            const bool brokenOff = point.notch >= 0 && m_request.notchesDuringOutline();
            if (point.lift && !brokenOff && i > 0 && i < count) {
                lifts.append(QString::number(index)); // in front of the next point
            }
        }
        QDomElement path = addPath(element, "outline", data);
        if (!lifts.isEmpty()) {
            path.setAttribute(QStringLiteral("LiftPlunge"), lifts.join(QLatin1Char(' ')));
        }
    }

    void addText(QDomElement &element, const FittedText &text)
    {
        for (const FittedLine &line : text.lines) {
            QDomElement place = child(element, "text");
            place.setAttribute(QStringLiteral("x"), x({line.x, line.y}));
            place.setAttribute(QStringLiteral("y"), y({line.x, line.y}));
            place.setAttribute(QStringLiteral("fontSize"),
                number(text.fontSize * std::min(m_request.scaleX, m_request.scaleY)));
            place.setAttribute(QStringLiteral("angle"), number(text.angle));
            place.appendChild(m_document.createTextNode(line.text));
        }
    }

    void addAdvance(QDomElement &root, int frame)
    {
        const CutFrame &present = m_plan.frames[static_cast<std::size_t>(frame)];
        const CutFrame &next = m_plan.frames[static_cast<std::size_t>(frame) + 1];
        QDomElement advance = child(root, "M69");
        advance.setAttribute(QStringLiteral("frame"), frame + 2);
        advance.setAttribute(QStringLiteral("tissuL"), coordinate(next.start * m_request.scaleX));
        advance.setAttribute(
            QStringLiteral("advance"), coordinate((next.start - present.start) * m_request.scaleX));
    }

    // A cut that comes in from the edge is two halves, each with one end open.
    void addWaste(QDomElement &root)
    {
        if (m_plan.wasteCuts.empty()) {
            return;
        }
        QDomElement scrap = child(root, "scrap");
        const auto add = [&](const QString &data) {
            child(scrap, "s").appendChild(m_document.createTextNode(data));
        };
        for (const WasteCut &cut : m_plan.wasteCuts) {
            if (cut.fromEdge) {
                add(QLatin1String("M ") + pair(cut.from));
                add(QLatin1String("L ") + pair(cut.to));
            } else {
                add(pathData({cut.from, cut.to}));
            }
        }
    }

    const CutPlan &m_plan;
    const CutRequest &m_request;
    QDomDocument m_document;
};

} // namespace

QDomDocument writeCutDocument(
    const CutPlan &plan, const QString &fabricName, const CutRequest &request)
{
    return Writer(plan, request).document(fabricName);
}

} // namespace KivSystem
