/// Links between pieces: points of two pieces that must meet the same stripe or plaid line.

#ifndef KIVMARKER_TWAINLINKS_H
#define KIVMARKER_TWAINLINKS_H

#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerPointObject;
class CDbPolygon;

/// A point of a piece, the same in all of its sizes.
struct TiedPoint
{
    short piece = 0;       ///< 1-based in the fabric
    int point = 0;         ///< 1-based in the contour, or among the internal points
    bool internal = false; ///< an internal point
};

/// Two points that are tied, of two pieces of one style, or of one piece with its mirrored partner.
struct TwainLink
{
    TiedPoint first;
    TiedPoint second;
};

/// The links of one style on a fabric.
class CDbTwainLinkPiecesObjectTable
{
public:
    short getTwainLinkPiecesCount() const;
    /// By 0-based position.
    const TwainLink &at(int position) const
    {
        return m_links.at(static_cast<std::size_t>(position));
    }
    void addLink(const TwainLink &link) { m_links.push_back(link); }

    /// Whether the 1-based `link` ties two polygons of the fabric: `found`. Then `onA` and `onB`
    /// receive the tied points where they lie now, in cm.
    ///
    /// A link ties polygons of one size number: a left-hand with a left-hand piece, right with
    /// right, and a single piece with both sides of the other one. A link of a piece with itself
    /// ties a left-hand piece, at its first point, with a right-hand one, at its second.
    ///
    /// A polygon with a shape of its own has its points by their numbers there, if it has so many.
    ///
    /// k_error_index for a link past the end; k_error_missing for a null fabric or polygon.
    void getTheVectorsLinkTwoPolys(const CDbFabricObject *fabric, short link,
        const CDbPolygon *polygonA, const CDbPolygon *polygonB, short *error,
        CDbMarkerPointObject *onA, CDbMarkerPointObject *onB, bool *found) const;

private:
    std::vector<TwainLink> m_links;
};

} // namespace KivSystem

#endif
