#include "CutDocument/CutBlocks.h"

#include "Clipping.h"
#include "CutDocument/CutCorners.h"
#include "CutDocument/CutReduction.h"
#include "CutDocument/CutRequest.h"
#include "CutDocument/InteriorPlace.h"
#include "KivMarker/Fabric.h"
#include "KivMarker/Polygon.h"

#include <iterator>

namespace KivSystem {
namespace {

Contour contourOf(const CDbPolygon &polygon, double offset)
{
    Contour contour;
    for (const CDbMarkerPointObject &point : *polygon.currentContour()) {
        contour.emplace_back(point.x + offset, point.y);
    }
    return contour;
}

std::vector<Contour> contoursOf(const SelectedBlock &block)
{
    std::vector<Contour> contours;
    for (const CDbPolygon *polygon : block.polygons) {
        contours.push_back(contourOf(*polygon, block.offset));
    }
    return contours;
}

// A rectangle that encloses the polygon with the gap around it.
GeoRectangle widened(const GeoRectangle &rect, double gapX, double gapY)
{
    return {rect.left() - gapX, rect.right() + gapX, rect.bottom() - gapY, rect.top() + gapY};
}

// Makes the rough outlines of blocks, among the pieces of all the others.
class RoughOutlines
{
public:
    RoughOutlines(const std::vector<ShapedBlock> &blocks, const CDbFabricObject &fabric,
        const CutSettings &settings)
        : m_gapX(std::abs(fabric.getGapInX()))
        , m_gapY(fabric.getGapInY())
        , m_settings(settings)
    {
        for (std::size_t block = 0; block < blocks.size(); ++block) {
            const SelectedBlock &selected = blocks[block].selected;
            for (const CDbPolygon *polygon : selected.polygons) {
                m_polygons.push_back({block, polygon,
                    polygon->polygonRect.translated(selected.offset, 0), selected.offset});
            }
        }
    }

    std::vector<CutOutline> outlines(std::size_t index, const SelectedBlock &block) const
    {
        const std::vector<Contour> pieces = contoursOf(block);
        const std::vector<Contour> wide = widenedUnion(pieces, m_gapX, m_gapY);
        std::vector<CutOutline> result;
        for (const Contour &contour : remainder(wide, neighbours(index, block), block.cloth)) {
            // What a neighbour has cut off holds no piece and is not cut.
            if (holdsPiece(contour, pieces)) {
                result.push_back(outlineOf(contour));
            }
        }
        return result;
    }

private:
    struct LaidPolygon
    {
        std::size_t block;
        const CDbPolygon *polygon;
        GeoRectangle rect;
        double offset;
    };

    std::vector<Contour> neighbours(std::size_t index, const SelectedBlock &block) const
    {
        std::vector<GeoRectangle> near;
        for (const CDbPolygon *polygon : block.polygons) {
            near.push_back(
                widened(polygon->polygonRect.translated(block.offset, 0), m_gapX, m_gapY));
        }
        std::vector<Contour> found;
        for (const LaidPolygon &other : m_polygons) {
            const auto meets = [&other](const GeoRectangle &rect) {
                return rect.intersects(other.rect);
            };
            if (other.block != index && std::any_of(near.begin(), near.end(), meets)) {
                found.push_back(contourOf(*other.polygon, other.offset));
            }
        }
        return found;
    }

    static bool holdsPiece(const Contour &contour, const std::vector<Contour> &pieces)
    {
        return std::any_of(pieces.begin(), pieces.end(), [&contour](const Contour &piece) {
            return clearance(contour, interiorPlace(piece)) > 0;
        });
    }

    CutOutline outlineOf(const Contour &contour) const
    {
        CutOutline outline;
        for (const GeoPoint2D &place : contour) {
            CutPoint point;
            point.x = place.x;
            point.y = place.y;
            outline.points.push_back(point);
        }
        markCorners(outline);
        divideLongEdges(outline, m_settings); // to leave out points would bring it nearer to others
        return outline;
    }

    double m_gapX;
    double m_gapY;
    const CutSettings &m_settings;
    std::vector<LaidPolygon> m_polygons;
};

QString joinedNames(const std::vector<CutObject> &pieces)
{
    QStringList names;
    for (const CutObject &piece : pieces) {
        names.append(piece.name);
    }
    return names.join(QStringLiteral(" with "));
}

// Nothing of a piece but its name: what is inside is cut later, from the block.
CutObject roughObject(const ShapedBlock &block, std::vector<CutOutline> outlines)
{
    CutObject object;
    object.name = joinedNames(block.pieces);
    object.pieces = block.pieces.front().pieces;
    for (std::size_t i = 1; i < block.pieces.size(); ++i) {
        const auto &more = block.pieces[i].pieces;
        object.pieces.insert(object.pieces.end(), more.begin(), more.end());
    }
    object.outlines = std::move(outlines);
    return object;
}

template <class Value>
void append(std::vector<Value> &target, std::vector<Value> &&source)
{
    target.insert(target.end(), std::make_move_iterator(source.begin()),
        std::make_move_iterator(source.end()));
}

CutObject joinedObject(std::vector<CutObject> &&pieces)
{
    CutObject object;
    object.name = joinedNames(pieces);
    for (CutObject &piece : pieces) {
        append(object.pieces, std::move(piece.pieces));
        append(object.outlines, std::move(piece.outlines));
        append(object.internals, std::move(piece.internals));
        append(object.drills, std::move(piece.drills));
        append(object.matchPoints, std::move(piece.matchPoints));
    }
    return object;
}

} // namespace

std::vector<std::vector<CutObject>> arrangeBlocks(
    std::vector<ShapedBlock> blocks, const CDbFabricObject &fabric, const CutRequest &request)
{
    const CutSettings &settings = request.settings;
    const RoughOutlines rough(blocks, fabric, settings);
    std::vector<std::vector<CutObject>> documents(1);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        ShapedBlock &block = blocks[i];
        const bool several = block.pieces.size() > 1;
        bool isRough =
            several ? settings.cutFusing == NC::CutBlockOutlineOnly : settings.cutBlocking;
        if (isRough) {
            std::vector<CutOutline> outlines = rough.outlines(i, block.selected);
            isRough = !outlines.empty(); // a piece that others cover is cut as it is
            if (isRough) {
                documents[0].push_back(roughObject(block, std::move(outlines)));
            }
        }
        if (several && settings.miniCutFileBlock) {
            documents.push_back(std::move(block.pieces));
        } else if (!isRough && several && settings.cutFusing == NC::CutBlockInternalPiecesOnly) {
            documents[0].push_back(joinedObject(std::move(block.pieces)));
        } else if (!isRough) {
            append(documents[0], std::move(block.pieces));
        }
    }
    return documents;
}

} // namespace KivSystem
