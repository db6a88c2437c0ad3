#include "KivConjoin/Device.h"

#include "KivConjoin/TraitLine.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace KivSystem {
namespace {

// Lengths of strokes and gaps by turns, a stroke first; empty for a solid line.
std::vector<double> patternOf(const TraitInfo &trait)
{
    const auto [dash, gap, dot] = trait.traitTriple;
    std::vector<double> parts;
    if (trait.traitFlag == DashedTrait) {
        parts = {dash, gap};
    } else if (trait.traitFlag == ChainDottedTrait) {
        parts = {dash, gap, dot, gap};
    }
    const bool usable = std::all_of(
        parts.begin(), parts.end(), [](double part) { return part > 0 && std::isfinite(part); });
    return usable ? parts : std::vector<double>();
}

// A way along which strokes are put down.
class Way
{
public:
    Way(const GeoPoint2D &from, const GeoPoint2D &to, CDbTraitParams &params)
        : m_from(from)
        , m_to(to)
        , m_length(std::hypot(to.x - from.x, to.y - from.y))
        , m_params(params)
    {}

    double length() const { return m_length; }

    void stroke(double begin, double end)
    {
        const double from = std::max(begin, 0.0);
        const double to = std::min(end, m_length);
        if (to > from) {
            m_params.drawingSingleLine(at(from), at(to));
        }
    }

private:
    GeoPoint2D at(double distance) const
    {
        if (distance >= m_length) {
            return m_to; // exactly, however long the way is
        }
        const double part = distance / m_length;
        return {m_from.x + part * (m_to.x - m_from.x), m_from.y + part * (m_to.y - m_from.y)};
    }

    GeoPoint2D m_from;
    GeoPoint2D m_to;
    double m_length;
    CDbTraitParams &m_params;
};

void drawPattern(Way &way, const std::vector<double> &parts, int counter)
{
    double period = 0;
    for (const double part : parts) {
        period += part;
    }
    const auto partCount = static_cast<int>(parts.size());
    const double strokes = way.length() / period * partCount / 2;
    if (parts.empty() || strokes > CDbDevice::MostStrokes) {
        way.stroke(0, way.length());
        return;
    }
    const int passedOver = (counter % partCount + partCount) % partCount;
    double start = 0;
    for (int part = 0; part < passedOver; ++part) {
        start -= parts[static_cast<std::size_t>(part)];
    }
    const int periods = static_cast<int>((way.length() - start) / period) + 1;
    for (int number = 0; number < periods; ++number) {
        double begin = start + number * period;
        for (std::size_t part = 0; part < parts.size(); ++part) {
            if (part % 2 == 0) {
                way.stroke(begin, begin + parts[part]);
            }
            begin += parts[part];
        }
    }
}

} // namespace

CDbTraitParams::CDbTraitParams() = default;

CDbTraitParams::~CDbTraitParams() = default;

GeoPoint2D CDbTraitParams::getTranslation() const
{
    return GeoPoint2D::Point2D_Nul;
}

e_Type_Preference CDbTraitParams::preferenceOutput() const
{
    return PreferencePlot;
}

GeoPoint2D CDbTraitParams::gradedCoordinate(const CDbPointKIV &point) const
{
    return {point.x, point.y};
}

GeoPoint2D CDbTraitParams::Get_Translation() const
{
    return GeoPoint2D::Point2D_Nul;
}

void CDbDevice::drawKivLineObject(LineObject *line, CDbTraitParams *params, double aside)
{
    if (line == nullptr || params == nullptr || line->v1() == nullptr || line->v2() == nullptr) {
        return;
    }
    const GeoPoint2D first = params->gradedCoordinate(*line->v1());
    const GeoPoint2D second = params->gradedCoordinate(*line->v2());
    const double length = std::hypot(second.x - first.x, second.y - first.y);
    if (!(length > 0) || !std::isfinite(length)) {
        return;
    }
    const double shift = (line->lineTrait->traitScalar + aside) / length;
    const GeoPoint2D move = params->Get_Translation().translated(
        -shift * (second.y - first.y), shift * (second.x - first.x));
    Way way(first.translated(move), second.translated(move), *params);
    drawPattern(way, patternOf(*line->lineTrait), line->lineTrait->traitCounter);
}

} // namespace KivSystem
