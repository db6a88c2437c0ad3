#include "KivMarker/CutStatistics.h"

#include "CutDocument/CutPlan.h"
#include "KivMarker/ShareGlobales.h"

#include <QDomDocument>
#include <QRegularExpression>

#include <algorithm>

namespace KivSystem {
namespace {

CutPath pathOf(const QString &data)
{
    static const QRegularExpression separators(QStringLiteral("[ML,\\s]+"));
    const QVector<QStringRef> numbers = data.splitRef(separators, Qt::SkipEmptyParts);
    CutPath path;
    for (int i = 0; i + 1 < numbers.size(); i += 2) {
        path.emplace_back(numbers[i].toDouble(), numbers[i + 1].toDouble());
    }
    return path;
}

GeoPoint2D placeOf(const QDomElement &element, const char *x, const char *y)
{
    return {element.attribute(QLatin1String(x)).toDouble(),
        element.attribute(QLatin1String(y)).toDouble()};
}

template <class Visit>
void forEachChild(const QDomElement &parent, const char *tag, const Visit &visit)
{
    const QString name = QString::fromLatin1(tag);
    for (QDomElement child = parent.firstChildElement(name); !child.isNull();
         child = child.nextSiblingElement(name)) {
        visit(child);
    }
}

class Tool
{
public:
    Tool(CutStatistics &statistics, const CutVisitor &visitor)
        : m_statistics(statistics)
        , m_visitor(visitor)
    {}

    void moveTo(const GeoPoint2D &place)
    {
        lift();
        go(CutMove::Idle, place, m_statistics.idleLength);
    }
    void lift() { m_isDown = false; }
    void plunge()
    {
        if (!m_isDown) {
            m_isDown = true;
            ++m_statistics.plunges;
            report(CutMove::Plunge, m_place);
        }
    }
    void cutTo(const GeoPoint2D &place)
    {
        plunge();
        go(CutMove::Cut, place, m_statistics.cutLength);
    }
    void punch(const GeoPoint2D &place)
    {
        moveTo(place);
        ++m_statistics.holes;
        report(CutMove::Punch, place);
    }
    void cut(const CutPath &path)
    {
        if (path.size() < 2) {
            return;
        }
        moveTo(path.front());
        std::for_each(
            path.begin() + 1, path.end(), [this](const GeoPoint2D &place) { cutTo(place); });
    }

private:
    void go(CutMove::Kind kind, const GeoPoint2D &place, double &length)
    {
        const double way = distance(m_place, place);
        if (way > 0) {
            length += way;
            report(kind, place);
        }
    }
    void report(CutMove::Kind kind, const GeoPoint2D &place)
    {
        if (m_visitor) {
            m_visitor({kind, m_place, place});
        }
        m_place = place;
    }

    CutStatistics &m_statistics;
    const CutVisitor &m_visitor;
    GeoPoint2D m_place;
    bool m_isDown = false;
};

// An outline with its notches.
struct OutlinePaths
{
    CutPath outline;
    std::vector<CutPath> notches;
    std::vector<std::size_t> lifts; // points in front of which the knife comes up and goes down
};

struct ObjectPaths
{
    std::vector<CutPath> holes;
    std::vector<CutPath> internals;
    std::vector<OutlinePaths> outlines;
};

ObjectPaths pathsOf(const QDomElement &object)
{
    ObjectPaths paths;
    OutlinePaths next;
    forEachChild(object, "path", [&](const QDomElement &path) {
        const QString kind = path.attribute(QStringLiteral("t"));
        if (path.hasAttribute(QStringLiteral("drill"))) {
            paths.holes.push_back(pathOf(path.attribute(QStringLiteral("drill"))));
        } else if (kind == QLatin1String("internal")) {
            paths.internals.push_back(pathOf(path.text()));
        } else if (kind == QLatin1String("notch")) {
            next.notches.push_back(pathOf(path.text()));
        } else if (kind == QLatin1String("outline")) {
            next.outline = pathOf(path.text());
            for (const QString &lift : path.attribute(QStringLiteral("LiftPlunge"))
                                           .split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
                next.lifts.push_back(lift.toUInt());
            }
            paths.outlines.push_back(std::move(next));
            next = {};
        }
    });
    return paths;
}

// The cuts of an object in one order.
class ObjectWalk
{
public:
    ObjectWalk(Tool &tool, NotchOrder notches, CutLine internals)
        : m_tool(tool)
        , m_notches(notches)
        , m_internals(internals)
    {
        const CutSettings &settings = CDbMarkerShareGlobales::instance()->cutSettings();
        m_staysDown = settings.cutCommandM19 &&
                      (notches == NotchDuringOutline ||
                          (notches == NotchBeforeOutline && settings.cutCuttingEdge));
    }

    void cut(const ObjectPaths &paths)
    {
        for (const CutPath &hole : paths.holes) {
            m_tool.punch(hole.front());
        }
        cutInternals(paths, CutLineBeforeOutline);
        cutNotches(paths, NotchBeforeOutline);
        for (const OutlinePaths &outline : paths.outlines) {
            cutOutline(outline);
        }
        cutNotches(paths, NotchAfterOutline);
        cutInternals(paths, CutLineAfterOutline);
    }

private:
    void cutInternals(const ObjectPaths &paths, CutLine order)
    {
        for (const CutPath &line : paths.internals) {
            if (m_internals == order) {
                m_tool.cut(line);
            }
        }
    }

    void cutNotches(const ObjectPaths &paths, NotchOrder order)
    {
        for (const OutlinePaths &outline : paths.outlines) {
            for (const CutPath &notch : outline.notches) {
                if (m_notches == order && notch.size() > 1) {
                    m_tool.moveTo(notch.front());
                    cutLegs(notch);
                }
            }
        }
    }

    // Each leg plunges unless the knife is down. The command of the second leg of a notch during
    // the outline lifts the knife behind it.
    void cutLegs(const CutPath &notch)
    {
        for (std::size_t i = 1; i < notch.size(); ++i) {
            m_tool.cutTo(notch[i]);
            if ((i == 1 && !m_staysDown) || (i == 2 && m_notches == NotchDuringOutline)) {
                m_tool.lift();
            }
        }
    }

    // A notch during the outline starts where the outline comes to its base for the last time; a
    // move leads back from its end to the base, which stands there twice.
    void cutOutline(const OutlinePaths &paths)
    {
        const CutPath &outline = paths.outline;
        auto next = outline.begin();
        auto lift = paths.lifts.begin();
        const auto cutUpTo = [&](CutPath::const_iterator stop) {
            for (const auto start = next; next != stop; ++next) {
                if (lift != paths.lifts.end() &&
                    static_cast<std::size_t>(next - outline.begin()) == *lift) {
                    ++lift;
                    m_tool.lift();
                    m_tool.plunge();
                }
                if (next == start) {
                    m_tool.moveTo(*next);
                } else {
                    m_tool.cutTo(*next);
                }
            }
        };
        for (const CutPath &notch : paths.notches) {
            if (m_notches == NotchDuringOutline && notch.size() > 1) {
                const auto base = std::find_if(outline.rbegin(), std::make_reverse_iterator(next),
                    [&](const GeoPoint2D &place) { return distance(place, notch.front()) == 0; });
                if (base != std::make_reverse_iterator(next)) {
                    cutUpTo(base.base() - 1);
                } else {
                    m_tool.moveTo(notch.front());
                }
                cutLegs(notch);
            }
        }
        cutUpTo(outline.end());
    }

    Tool &m_tool;
    NotchOrder m_notches;
    CutLine m_internals;
    bool m_staysDown; // at the tip of a notch
};

// A cut from the cloth's edge has one open end: its start stands in one element, its end in the
// next.
void cutWaste(Tool &tool, const QDomElement &scrap)
{
    CutPath open;
    forEachChild(scrap, "s", [&](const QDomElement &cut) {
        const CutPath path = pathOf(cut.text());
        open.insert(open.end(), path.begin(), path.end());
        if (open.size() == 2) {
            tool.cut(open);
            open.clear();
        }
    });
}

} // namespace

CutStatistics measureCuts(const QDomDocument &document, NotchOrder notches, CutLine internalLines,
    const CutVisitor &visitor)
{
    CutStatistics statistics;
    Tool tool(statistics, visitor);
    const QDomElement root = document.documentElement();
    forEachChild(root.firstChildElement(QStringLiteral("external")), "circle",
        [&](const QDomElement &circle) { tool.punch(placeOf(circle, "cx", "cy")); });
    ObjectWalk walk(tool, notches, internalLines);
    forEachChild(root, "object", [&](const QDomElement &object) {
        ++statistics.objects;
        if (object.hasAttribute(QStringLiteral("label"))) {
            tool.moveTo(placeOf(object, "centreX", "centreY"));
        }
        walk.cut(pathsOf(object));
    });
    forEachChild(root, "M69", [&](const QDomElement &) { ++statistics.frameAdvances; });
    cutWaste(tool, root.firstChildElement(QStringLiteral("scrap")));
    return statistics;
}

} // namespace KivSystem
