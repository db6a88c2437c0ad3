/// Links of a polygon: each ties two points of its cut contour or of its internal points.
///
/// Tree links branch out from a root and are drawn as lines with a trait, sewing links tell what is
/// sewn to what. Positions in the tables count from 0.

#ifndef KIVMARKER_LINKS_H
#define KIVMARKER_LINKS_H

#include "KivConjoin/Device.h"
#include "KivConjoin/TraitLine.h"
#include "KivMarker/Point.h"

#include <memory>
#include <vector>

namespace KivSystem {

class CDbPieceObject;

/// Values of CDbLinkObject::linkKind.
enum LinkObjectType : short
{
    TreeLink = 0,
    SewingLink = 1,
};

/// The point that a link ends at.
struct LinkEnd
{
    bool internal = false; ///< of the internal points; otherwise of the contour
    int index = 0;         ///< 0-based

    /// Null when the table lacks the point, and for a table that is null.
    const CDbMarkerPointObject *find(
        const CDbVectorsObjectTable *contour, const CDbVectorsObjectTable *internalPoints) const;
};

bool operator==(const LinkEnd &left, const LinkEnd &right);
bool operator<(const LinkEnd &left, const LinkEnd &right);

/// One link. A tree link leads from `from`, which is nearer to the root, to `to`.
class CDbLinkObject
{
public:
    CDbLinkObject(LinkObjectType kind, const LinkEnd &from, const LinkEnd &to);
    ~CDbLinkObject();
    CDbLinkObject(const CDbLinkObject &) = delete;
    CDbLinkObject &operator=(const CDbLinkObject &) = delete;

    short linkKind;                 ///< a LinkObjectType
    LineObject *linkLine = nullptr; ///< of a tree link that was refreshed and has both ends; owned
    double traitScalar = 0;         ///< these three: see TraitInfo
    TraitTriple traitTriple{0, 0, 0};
    unsigned char traitFlag = SolidTrait;
    bool screenOnly = false; ///< an aid at the screen, in no plot

    const LinkEnd &from() const { return m_from; }
    const LinkEnd &to() const { return m_to; }

    /// Whether the link is drawn: not when an end was missing as it was last refreshed, and not in
    /// a plot when it is for the screen only.
    static bool isLinkDisplays(const CDbLinkObject &link, e_Type_Preference preference);

    /// The two points of the link. In place of one that is missing the other stands, and without
    /// both the zero point. Null pointers are passed over.
    void getVectorsFromLink(const CDbVectorsObjectTable *contour,
        const CDbVectorsObjectTable *internalPoints, CDbMarkerPointObject *first,
        CDbMarkerPointObject *second) const;
    /// The places of these two points, in the same way.
    static void getExtremitiesMarkerLink(const CDbVectorsObjectTable *contour,
        const CDbVectorsObjectTable *internalPoints, const CDbLinkObject &link, GeoPoint2D *first,
        GeoPoint2D *second);

private:
    friend class CDbLinksObjectTable; // refreshes the line

    void refreshLine(
        const CDbVectorsObjectTable *contour, const CDbVectorsObjectTable *internalPoints);

    LinkEnd m_from;
    LinkEnd m_to;
    bool m_hasEnds = true;
    CDbPointMAK m_first;
    CDbPointMAK m_second;
    std::unique_ptr<LineObject> m_line;
};

/// The links of one polygon, in their order. Owns them.
class CDbLinksObjectTable
{
public:
    CDbLinksObjectTable();
    ~CDbLinksObjectTable();

    CDbLinkObject &addLink(LinkObjectType kind, const LinkEnd &from, const LinkEnd &to);

    short size() const { return static_cast<short>(m_links.size()); }
    /// 0-based; throws std::out_of_range outside the table.
    CDbLinkObject &operator[](short index);
    const CDbLinkObject &operator[](short index) const;

    /// Whether there is a link of the LinkObjectType.
    bool isLinkExistByType(short type) const;

    /// Gives the tree links' lines the ends that the points have now, and the links' traits. A link
    /// to a point that there is no more loses its line and is not displayed until the point is
    /// back. `piece` is the piece that the polygon was made from.
    void refreshMkTreesLines(const CDbPieceObject &piece, const CDbVectorsObjectTable *contour,
        const CDbVectorsObjectTable *internalPoints);

private:
    std::vector<std::unique_ptr<CDbLinkObject>> m_links;
};

/// A tree link on its way to a drawing.
class CDbMarkerLink
{
public:
    CDbMarkerLink();
    ~CDbMarkerLink();
    CDbMarkerLink(CDbMarkerLink &&) noexcept;
    CDbMarkerLink &operator=(CDbMarkerLink &&) noexcept;

    std::unique_ptr<LineObject> line; ///< null until somebody gives one
    CDbPointKIV first;                ///< the end nearer to the root
    CDbPointKIV second;

    /// Orders from the roots outward: a line comes after all that end where it starts. Roots are
    /// taken, and branches of one point, in their order so far. Of links that run in a ring those
    /// that wait for each other keep their order at the end.
    static void reOrderLinks(std::vector<CDbMarkerLink> &links);
};

} // namespace KivSystem

#endif
