#include "KivMarker/Links.h"

#include <algorithm>
#include <deque>
#include <map>
#include <stdexcept>
#include <tuple>

namespace KivSystem {

const CDbMarkerPointObject *LinkEnd::find(
    const CDbVectorsObjectTable *contour, const CDbVectorsObjectTable *internalPoints) const
{
    const CDbVectorsObjectTable *table = internal ? internalPoints : contour;
    return table != nullptr && index >= 0 && index < table->size() ? &(*table)[index] : nullptr;
}

bool operator==(const LinkEnd &left, const LinkEnd &right)
{
    return left.internal == right.internal && left.index == right.index;
}

bool operator<(const LinkEnd &left, const LinkEnd &right)
{
    return std::tie(left.internal, left.index) < std::tie(right.internal, right.index);
}

CDbLinkObject::CDbLinkObject(LinkObjectType kind, const LinkEnd &from, const LinkEnd &to)
    : linkKind(kind)
    , m_from(from)
    , m_to(to)
{}

CDbLinkObject::~CDbLinkObject() = default;

bool CDbLinkObject::isLinkDisplays(const CDbLinkObject &link, e_Type_Preference preference)
{
    return link.m_hasEnds && (!link.screenOnly || preference == PreferenceScreen);
}

void CDbLinkObject::getVectorsFromLink(const CDbVectorsObjectTable *contour,
    const CDbVectorsObjectTable *internalPoints, CDbMarkerPointObject *first,
    CDbMarkerPointObject *second) const
{
    const CDbMarkerPointObject *from = m_from.find(contour, internalPoints);
    const CDbMarkerPointObject *to = m_to.find(contour, internalPoints);
    const CDbMarkerPointObject none;
    const CDbMarkerPointObject &either = from != nullptr ? *from : to != nullptr ? *to : none;
    if (first != nullptr) {
        *first = either;
    }
    if (second != nullptr) {
        *second = to != nullptr ? *to : either;
    }
}

void CDbLinkObject::getExtremitiesMarkerLink(const CDbVectorsObjectTable *contour,
    const CDbVectorsObjectTable *internalPoints, const CDbLinkObject &link, GeoPoint2D *first,
    GeoPoint2D *second)
{
    CDbMarkerPointObject from;
    CDbMarkerPointObject to;
    link.getVectorsFromLink(contour, internalPoints, &from, &to);
    if (first != nullptr) {
        *first = from;
    }
    if (second != nullptr) {
        *second = to;
    }
}

void CDbLinkObject::refreshLine(
    const CDbVectorsObjectTable *contour, const CDbVectorsObjectTable *internalPoints)
{
    const CDbMarkerPointObject *from = m_from.find(contour, internalPoints);
    const CDbMarkerPointObject *to = m_to.find(contour, internalPoints);
    m_hasEnds = from != nullptr && to != nullptr;
    if (!m_hasEnds) {
        m_line.reset();
    } else {
        m_first = CDbPointMAK(from->x, from->y);
        m_second = CDbPointMAK(to->x, to->y);
        if (m_line == nullptr) {
            m_line = std::make_unique<LineObject>();
            m_line->setV1AndV2(&m_first, &m_second);
        }
        *m_line->lineTrait = TraitInfo{traitScalar, traitTriple, traitFlag, 0};
    }
    linkLine = m_line.get();
}

CDbLinksObjectTable::CDbLinksObjectTable() = default;

CDbLinksObjectTable::~CDbLinksObjectTable() = default;

CDbLinkObject &CDbLinksObjectTable::addLink(
    LinkObjectType kind, const LinkEnd &from, const LinkEnd &to)
{
    m_links.push_back(std::make_unique<CDbLinkObject>(kind, from, to));
    return *m_links.back();
}

const CDbLinkObject &CDbLinksObjectTable::operator[](short index) const
{
    if (index < 0 || index >= size()) {
        throw std::out_of_range("the table has no such link");
    }
    return *m_links[static_cast<std::size_t>(index)];
}

CDbLinkObject &CDbLinksObjectTable::operator[](short index)
{
    return const_cast<CDbLinkObject &>(std::as_const(*this)[index]);
}

bool CDbLinksObjectTable::isLinkExistByType(short type) const
{
    return std::any_of(m_links.begin(), m_links.end(),
        [type](const auto &link) { return link->linkKind == type; });
}

void CDbLinksObjectTable::refreshMkTreesLines(const CDbPieceObject & /*piece*/,
    const CDbVectorsObjectTable *contour, const CDbVectorsObjectTable *internalPoints)
{
    // The placed points alone tell where the lines lie: a shape may have been altered by hand, and
    // then the piece no longer knows.
    for (const auto &link : m_links) {
        if (link->linkKind == TreeLink) {
            link->refreshLine(contour, internalPoints);
        }
    }
}

CDbMarkerLink::CDbMarkerLink() = default;

CDbMarkerLink::~CDbMarkerLink() = default;

CDbMarkerLink::CDbMarkerLink(CDbMarkerLink &&) noexcept = default;

CDbMarkerLink &CDbMarkerLink::operator=(CDbMarkerLink &&) noexcept = default;

void CDbMarkerLink::reOrderLinks(std::vector<CDbMarkerLink> &links)
{
    // Links of one point have its coordinates to the last bit.
    using Place = std::pair<double, double>;
    const auto placeOf = [](const CDbPointKIV &point) { return Place(point.x, point.y); };
    std::map<Place, std::vector<std::size_t>> starting;
    std::map<Place, int> awaited; // links that end there and have not come yet
    const auto goesNowhere = [&](const CDbMarkerLink &link) { // it would wait for itself
        return placeOf(link.first) == placeOf(link.second);
    };
    for (std::size_t index = 0; index < links.size(); ++index) {
        starting[placeOf(links[index].first)].push_back(index);
        if (!goesNowhere(links[index])) {
            ++awaited[placeOf(links[index].second)];
        }
    }

    std::deque<std::size_t> ready;
    for (std::size_t index = 0; index < links.size(); ++index) {
        if (awaited.count(placeOf(links[index].first)) == 0) {
            ready.push_back(index);
        }
    }
    std::vector<CDbMarkerLink> ordered;
    std::vector<bool> taken(links.size(), false);
    while (!ready.empty()) {
        const std::size_t index = ready.front();
        ready.pop_front();
        const Place end = placeOf(links[index].second);
        if (!goesNowhere(links[index]) && --awaited[end] == 0) {
            const std::vector<std::size_t> &branches = starting[end];
            ready.insert(ready.end(), branches.begin(), branches.end());
        }
        taken[index] = true;
        ordered.push_back(std::move(links[index]));
    }
    for (std::size_t index = 0; index < links.size(); ++index) {
        if (!taken[index]) {
            ordered.push_back(std::move(links[index]));
        }
    }
    links = std::move(ordered);
}

} // namespace KivSystem
