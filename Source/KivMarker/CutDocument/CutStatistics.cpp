#include "KivMarker/CutStatistics.h"

#include "CutDocument/CutPlan.h"

#include <QDomDocument>

namespace KivSystem {
namespace {

CutPath pathOf(const QString &data)
{
    CutPath path;
    const QStringList parts = data.split(QRegExp(QStringLiteral("M|L")), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const QStringList numbers = part.trimmed().split(QLatin1Char(','));
        if (numbers.size() == 2) {
            path.emplace_back(numbers[0].toDouble(), numbers[1].toDouble());
        }
    }
    return path;
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
    explicit Tool(CutStatistics &statistics) : m_statistics(statistics) {}

    void moveTo(const GeoPoint2D &place)
    {
        m_statistics.idleLength += distance(m_place, place);
        m_place = place;
    }
    void cutTo(const GeoPoint2D &place)
    {
        m_statistics.cutLength += distance(m_place, place);
        m_place = place;
    }
    void punch(const GeoPoint2D &place)
    {
        moveTo(place);
        ++m_statistics.holes;
    }
    void plungeAt(const GeoPoint2D &place)
    {
        moveTo(place);
        ++m_statistics.plunges;
    }
    void cut(const CutPath &path)
    {
        if (path.size() < 2) {
            return;
        }
        plungeAt(path.front());
        for (std::size_t i = 1; i < path.size(); ++i) {
            cutTo(path[i]);
        }
    }
    // Breaks the outline off where a notch starts, and goes on from there.
    void cut(const CutPath &outline, const std::vector<CutPath> &notches)
    {
        auto notch = notches.begin();
        plungeAt(outline.front());
        for (std::size_t i = 1; i < outline.size(); ++i) {
            cutTo(outline[i]);
            if (notch != notches.end() && distance(outline[i], notch->front()) == 0) {
                for (std::size_t k = 1; k < notch->size(); ++k) {
                    cutTo((*notch)[k]);
                }
                ++notch;
                plungeAt(outline[i]);
            }
        }
    }
    void liftAndPlunge(int times) { m_statistics.plunges += times; }

private:
    CutStatistics &m_statistics;
    GeoPoint2D m_place;
};

struct ObjectPaths
{
    std::vector<CutPath> holes;
    std::vector<CutPath> internals;
    std::vector<CutPath> notches; // of all outlines
    std::vector<CutPath> outlines;
    std::vector<std::vector<CutPath>> notchesOf; // of each outline
    int lifts = 0;
};

ObjectPaths pathsOf(const QDomElement &object)
{
    ObjectPaths paths;
    std::vector<CutPath> run;
    forEachChild(object, "path", [&](const QDomElement &path) {
        const QString kind = path.attribute(QStringLiteral("t"));
        if (path.hasAttribute(QStringLiteral("drill"))) {
            paths.holes.push_back(pathOf(path.attribute(QStringLiteral("drill"))));
        } else if (kind == QLatin1String("internal")) {
            paths.internals.push_back(pathOf(path.text()));
        } else if (kind == QLatin1String("notch")) {
            run.push_back(pathOf(path.text()));
            paths.notches.push_back(run.back());
        } else if (kind == QLatin1String("outline")) {
            paths.outlines.push_back(pathOf(path.text()));
            paths.notchesOf.push_back(std::move(run));
            run.clear();
            paths.lifts += path.attribute(QStringLiteral("LiftPlunge"))
                               .split(QLatin1Char(' '), Qt::SkipEmptyParts)
                               .size();
        }
    });
    return paths;
}

void cutAll(Tool &tool, const std::vector<CutPath> &paths)
{
    for (const CutPath &path : paths) {
        tool.cut(path);
    }
}

void cutObject(Tool &tool, const ObjectPaths &paths, NotchOrder notches, CutLine internalLines)
{
    for (const CutPath &hole : paths.holes) {
        tool.punch(hole.front());
    }
    if (internalLines == CutLineBeforeOutline) {
        cutAll(tool, paths.internals);
    }
    if (notches == NotchBeforeOutline) {
        cutAll(tool, paths.notches);
    }
    for (std::size_t i = 0; i < paths.outlines.size(); ++i) {
        if (notches == NotchDuringOutline) {
            tool.cut(paths.outlines[i], paths.notchesOf[i]);
        } else {
            tool.cut(paths.outlines[i]);
        }
    }
    tool.liftAndPlunge(paths.lifts);
    if (notches == NotchAfterOutline) {
        cutAll(tool, paths.notches);
    }
    if (internalLines == CutLineAfterOutline) {
        cutAll(tool, paths.internals);
    }
}

} // namespace

CutStatistics measureCuts(const QDomDocument &document, NotchOrder notches, CutLine internalLines)
{
    CutStatistics statistics;
    Tool tool(statistics);
    const QDomElement root = document.documentElement();
    forEachChild(root.firstChildElement(QStringLiteral("external")), "circle",
        [&](const QDomElement &circle) {
            tool.punch({circle.attribute(QStringLiteral("cx")).toDouble(),
                circle.attribute(QStringLiteral("cy")).toDouble()});
        });
    forEachChild(root, "object", [&](const QDomElement &object) {
        ++statistics.objects;
        cutObject(tool, pathsOf(object), notches, internalLines);
    });
    forEachChild(root, "M69", [&](const QDomElement &) { ++statistics.frameAdvances; });

    // A cut with one open end: its start stands in one element, its end in the next.
    CutPath open;
    forEachChild(root.firstChildElement(QStringLiteral("scrap")), "s", [&](const QDomElement &cut) {
        const CutPath path = pathOf(cut.text());
        open.insert(open.end(), path.begin(), path.end());
        if (open.size() == 2) {
            tool.cut(open);
            open.clear();
        }
    });
    return statistics;
}

} // namespace KivSystem
