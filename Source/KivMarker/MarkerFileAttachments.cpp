#include "MarkerFileAttachments.h"

#include "JsonNode.h"
#include "JsonTree.h"
#include "KivMarker/Image.h"
#include "KivMarker/Links.h"
#include "KivMarker/Polygon.h"
#include "MarkerFileWords.h"

#include <map>

namespace KivSystem {
namespace {

constexpr int kTurn = 360;

const std::array<Word<LinkObjectType>, 2> kLinkKindWords{{
    {TreeLink, "tree"},
    {SewingLink, "sewing"},
}};

const std::array<Word<TraitStyle>, 3> kTraitWords{{
    {SolidTrait, "solid"},
    {DashedTrait, "dashed"},
    {ChainDottedTrait, "chainDotted"},
}};

// A dashed line has a dash and a gap, a chain-dotted one a dot, too.
int patternLengths(unsigned char style)
{
    return style == DashedTrait ? 2 : style == ChainDottedTrait ? 3 : 0;
}

LinkEnd readEnd(const JsonNode &node, const CDbPolygon &polygon)
{
    node.allow({"contour", "internal"});
    LinkEnd end;
    end.internal = node.has("internal");
    if (end.internal == node.has("contour")) {
        node.fail(QStringLiteral("found %1 of the keys").arg(end.internal ? 2 : 0),
            QStringLiteral("either contour or internal"));
    }
    const JsonNode number = node.member(end.internal ? "internal" : "contour");
    const int points =
        end.internal ? polygon.internalPoints.size() : polygon.currentContour()->size();
    if (points == 0) {
        number.fail(QStringLiteral("the polygon has no internal points"),
            QStringLiteral("a link to its contour"));
    }
    end.index = number.asInteger(1, points) - 1;
    return end;
}

void readTrait(const JsonNode &node, CDbLinkObject &link)
{
    link.traitFlag = wordMember(node, "line", kTraitWords);
    link.traitScalar = node.number("shift", -kMaxCoordinate, kMaxCoordinate, 0.0);
    link.screenOnly = node.boolean("screenOnly", false);
    const int lengths = patternLengths(link.traitFlag);
    if (lengths == 0 && !node.has("pattern")) {
        return;
    }
    const JsonNode pattern = node.member("pattern");
    if (lengths == 0) {
        pattern.fail(QStringLiteral("found a pattern on a solid line"),
            QStringLiteral("it on dashed and chain-dotted lines only"));
    }
    pattern.count(lengths, lengths);
    for (int index = 0; index < lengths; ++index) {
        const JsonNode length = pattern.item(index);
        const double value = length.asNumber(0, kMaxCoordinate);
        if (!(value > 0)) {
            length.failType(QStringLiteral("a length above 0"));
        }
        link.traitTriple[static_cast<std::size_t>(index)] = value;
    }
}

// Which points hang together by tree links.
class Forest
{
public:
    // False when the two hang together already.
    bool join(const LinkEnd &first, const LinkEnd &second)
    {
        const LinkEnd firstRoot = rootOf(first);
        const LinkEnd secondRoot = rootOf(second);
        if (firstRoot == secondRoot) {
            return false;
        }
        m_above.emplace(firstRoot, secondRoot);
        return true;
    }

private:
    LinkEnd rootOf(LinkEnd end)
    {
        for (auto step = m_above.find(end); step != m_above.end(); step = m_above.find(end)) {
            const auto next = m_above.find(step->second);
            if (next != m_above.end()) {
                step->second = next->second; // halves the way of the next search
            }
            end = step->second;
        }
        return end;
    }

    std::map<LinkEnd, LinkEnd> m_above; // a root is not in it
};

void readLink(
    const JsonNode &node, const CDbPolygon &polygon, CDbLinksObjectTable &links, Forest &forest)
{
    const LinkObjectType kind = wordMember(node, "kind", kLinkKindWords);
    if (kind == TreeLink) {
        node.allow({"kind", "from", "to", "line", "pattern", "shift", "screenOnly"});
    } else {
        node.allow({"kind", "from", "to"});
    }
    const JsonNode from = node.member("from");
    const JsonNode to = node.member("to");
    const LinkEnd first = readEnd(from, polygon);
    const LinkEnd second = readEnd(to, polygon);
    if (first == second) {
        node.fail(QStringLiteral("both ends are the same point"), QStringLiteral("two points"));
    }
    CDbLinkObject &link = links.addLink(kind, first, second);
    if (kind == TreeLink) {
        readTrait(node, link);
        if (!forest.join(first, second)) {
            node.fail(QStringLiteral("the tree links close a ring"), QStringLiteral("trees"));
        }
    }
}

std::unique_ptr<CDbImage> readImage(const JsonNode &node)
{
    node.allow({"x", "y", "width", "height", "rotation", "file"});
    const auto size = [&node](const char *key) {
        const double value = node.number(key, 0, kMaxCoordinate);
        if (!(value > 0)) {
            node.member(key).failType(QStringLiteral("a %1 above 0").arg(QLatin1String(key)));
        }
        return value;
    };
    auto image = std::make_unique<CDbImage>();
    image->x = node.number("x", -kMaxCoordinate, kMaxCoordinate);
    image->y = node.number("y", -kMaxCoordinate, kMaxCoordinate);
    image->width = size("width");
    image->height = size("height");
    image->rotation = node.number("rotation", -kTurn, kTurn, 0.0);
    image->file = node.line("file", QString());
    return image;
}

JsonTree writeEnd(const LinkEnd &end)
{
    return JsonTree::object().add(
        end.internal ? "internal" : "contour", JsonTree::integer(end.index + 1));
}

JsonTree writeLink(const CDbLinkObject &link)
{
    JsonTree object = JsonTree::object();
    const auto kind = static_cast<LinkObjectType>(link.linkKind);
    if (kind != TreeLink) {
        object.add("kind", JsonTree::text(wordOf(kind, kLinkKindWords)));
    }
    object.add("from", writeEnd(link.from())).add("to", writeEnd(link.to()));
    const int lengths = patternLengths(link.traitFlag);
    if (lengths > 0) {
        JsonTree pattern = JsonTree::array();
        for (int index = 0; index < lengths; ++index) {
            const auto place = static_cast<std::size_t>(index);
            pattern.append(JsonTree::number(link.traitTriple[place]));
        }
        const auto style = static_cast<TraitStyle>(link.traitFlag);
        object.add("line", JsonTree::text(wordOf(style, kTraitWords)))
            .add("pattern", std::move(pattern));
    }
    if (link.traitScalar != 0) {
        object.add("shift", JsonTree::number(link.traitScalar));
    }
    if (link.screenOnly) {
        object.add("screenOnly", JsonTree::boolean(true));
    }
    return object.flattened();
}

JsonTree writeImage(const CDbImage &image)
{
    JsonTree object = JsonTree::object();
    object.add("x", JsonTree::number(image.x))
        .add("y", JsonTree::number(image.y))
        .add("width", JsonTree::number(image.width))
        .add("height", JsonTree::number(image.height));
    if (image.rotation != 0) {
        object.add("rotation", JsonTree::number(image.rotation));
    }
    if (!image.file.isEmpty()) {
        object.add("file", JsonTree::text(image.file));
    }
    return object;
}

} // namespace

void readAttachments(const JsonNode &node, CDbPolygon &polygon)
{
    if (node.has("links")) {
        const JsonNode list = node.member("links");
        const int count = list.count(0, kMaxCount);
        auto links = std::make_unique<CDbLinksObjectTable>();
        Forest forest;
        for (int index = 0; index < count; ++index) {
            readLink(list.item(index), polygon, *links, forest);
        }
        polygon.setLinks(count > 0 ? std::move(links) : nullptr);
    }
    if (node.has("images")) {
        const JsonNode list = node.member("images");
        const int count = list.count(0, kMaxCount);
        for (int index = 0; index < count; ++index) {
            polygon.addImage(readImage(list.item(index)));
        }
    }
}

void writeAttachments(JsonTree &object, const CDbPolygon &polygon)
{
    if (polygon.polygonLinks != nullptr) {
        JsonTree links = JsonTree::column();
        for (short index = 0; index < polygon.polygonLinks->size(); ++index) {
            links.append(writeLink((*polygon.polygonLinks)[index]));
        }
        object.add("links", std::move(links));
    }
    const QVector<CDbImage *> images = polygon.getImages();
    if (!images.isEmpty()) {
        JsonTree list = JsonTree::array();
        for (const CDbImage *image : images) {
            list.append(writeImage(*image));
        }
        object.add("images", std::move(list));
    }
}

} // namespace KivSystem
