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

std::vector<Contour> contoursOf(const std::vector<LaidPiece> &pieces)
{
    std::vector<Contour> contours;
    contours.reserve(pieces.size());
    for (const LaidPiece &piece : pieces) {
        contours.push_back(piece.contour());
    }
    return contours;
}

// A rectangle that encloses the polygon with the gap around it.
GeoRectangle widened(const GeoRectangle &rect, double gapX, double gapY)
{
    return {rect.left() - gapX, rect.right() + gapX, rect.bottom() - gapY, rect.top() + gapY};
}

// Makes the rough outlines of blocks, one after the other. Where the room between two blocks is
// less than the gap, each gets the half of it, and none enters what another one has.
class RoughOutlines
{
public:
    RoughOutlines(const std::vector<ShapedBlock> &blocks, const CDbFabricObject &fabric,
        const CutSettings &settings)
        : m_gapX(std::abs(fabric.getGapInX()))
        , m_gapY(fabric.getGapInY())
        , m_settings(settings)
    {
        for (const ShapedBlock &block : blocks) {
            std::vector<GeoRectangle> rects;
            for (const LaidPiece &piece : block.selected.pieces) {
                rects.push_back(widened(piece.rect(), m_gapX, m_gapY));
            }
            m_blocks.push_back({&block.selected, std::move(rects), {}});
        }
    }

    std::vector<CutOutline> outlines(std::size_t index)
    {
        LaidBlock &own = m_blocks[index];
        const std::vector<Contour> pieces = contoursOf(own.block->pieces);
        std::vector<Contour> others;
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            if (i != index && areNear(own, m_blocks[i])) {
                addRoomOf(m_blocks[i], others);
            }
        }
        const Region region =
            remainder(widenedUnion(pieces, m_gapX, m_gapY), others, pieces, own.block->cloth);
        own.rough = region.outer;
        std::vector<CutOutline> result;
        // What a neighbour has cut off holds no piece and is not cut; a hole is cut that holds one.
        addThoseAround(result, pieces, region.outer);
        addThoseAround(result, others, region.holes);
        return result;
    }

private:
    struct LaidBlock
    {
        const SelectedBlock *block;
        std::vector<GeoRectangle> rects; // of its pieces, widened
        std::vector<Contour> rough;      // once it is made
    };

    static bool areNear(const LaidBlock &a, const LaidBlock &b)
    {
        return std::any_of(a.rects.begin(), a.rects.end(), [&b](const GeoRectangle &rect) {
            return std::any_of(b.rects.begin(), b.rects.end(),
                [&rect](const GeoRectangle &other) { return rect.intersects(other); });
        });
    }

    void addRoomOf(const LaidBlock &other, std::vector<Contour> &room) const
    {
        const std::vector<Contour> half =
            widenedUnion(contoursOf(other.block->pieces), m_gapX / 2, m_gapY / 2);
        room.insert(room.end(), half.begin(), half.end());
        room.insert(room.end(), other.rough.begin(), other.rough.end());
    }

    void addThoseAround(std::vector<CutOutline> &result, const std::vector<Contour> &pieces,
        const std::vector<Contour> &contours) const
    {
        for (const Contour &contour : contours) {
            if (std::any_of(pieces.begin(), pieces.end(), [&contour](const Contour &piece) {
                    return clearance(contour, interiorPlace(piece)) > 0;
                })) {
                result.push_back(outlineOf(contour));
            }
        }
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
    std::vector<LaidBlock> m_blocks;
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
    RoughOutlines rough(blocks, fabric, settings);
    std::vector<std::vector<CutObject>> documents(1);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        ShapedBlock &block = blocks[i];
        const bool several = block.pieces.size() > 1;
        bool isRough =
            several ? settings.cutFusing == NC::CutBlockOutlineOnly : settings.cutBlocking;
        if (isRough) {
            std::vector<CutOutline> outlines = rough.outlines(i);
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
