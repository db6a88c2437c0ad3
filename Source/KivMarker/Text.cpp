#include "KivMarker/Text.h"

#include "CutDocument/InteriorPlace.h"
#include "KivMarker/ErrorCodes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace KivSystem {
namespace {

struct TextBox
{
    double width = 0;
    double height = 0;
};

// From line to line; a single line counts as one step, so that it has a height.
qsizetype lineSteps(const CDbTextObject &text)
{
    const qsizetype lines = text.textLines.size();
    return lines == 0 ? 0 : std::max<qsizetype>(lines - 1, 1);
}

TextBox measured(const CDbTextObject &text)
{
    qsizetype longest = 0;
    for (const QString &line : text.textLines) {
        longest = std::max<qsizetype>(longest, line.size());
    }
    const double step =
        text.textLetterSize * CDbTextObject::LetterHeight * CDbTextObject::LetterSpacing;
    return {static_cast<double>(longest) * step * CDbTextObject::LetterWidth,
        static_cast<double>(lineSteps(text)) * step};
}

TextBox boxOf(const CDbTextObject &text)
{
    const TextBox given{text.textBoxWidth, text.textBoxHeight};
    return given.width == 0 && given.height == 0 ? measured(text) : given;
}

double leftOf(const CDbTextObject &text, double width)
{
    const double x = text.textPosition.x;
    if (text.textAlignment.testFlag(Qt::AlignLeft)) {
        return x;
    }
    return text.textAlignment.testFlag(Qt::AlignRight) ? x - width : x - width / 2;
}

// How far the outline leaves room on both sides of the place, along the horizontal line through it.
double freeHalfWidth(const std::vector<GeoPoint2D> &outline, const GeoPoint2D &place)
{
    double nearest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const GeoPoint2D &from = outline[i];
        const GeoPoint2D &to = outline[i + 1 < outline.size() ? i + 1 : 0];
        if ((from.y > place.y) == (to.y > place.y)) {
            continue;
        }
        const double x = from.x + (to.x - from.x) * (place.y - from.y) / (to.y - from.y);
        nearest = std::min(nearest, std::abs(x - place.x));
    }
    return std::isfinite(nearest) ? nearest : 0;
}

int widthPercent(double width, double rectWidth)
{
    constexpr double whole = 100;
    constexpr double rounding = 1e-9; // a chord as long as the rectangle is all of it
    return rectWidth > 0
               ? static_cast<int>(std::clamp(width / rectWidth * whole + rounding, 0.0, whole))
               : 0;
}

} // namespace

CDbTextObject::CDbTextObject() = default;

CDbTextObject::CDbTextObject(const CDbTextObject &) = default;

CDbTextObject &CDbTextObject::operator=(const CDbTextObject &) = default;

CDbTextObject::~CDbTextObject() = default;

void CDbTextObject::setMinAndMax(short *error)
{
    if (textLetterSize < 1) {
        setErrorCode(error, k_error_index);
        return;
    }
    const TextBox box = measured(*this);
    textBoxWidth = box.width;
    textBoxHeight = box.height;
    setErrorCode(error, k_no_error);
}

GeoRectangle CDbTextObject::boundingRect(DisplayRect kind) const
{
    const TextBox box = boxOf(*this);
    const qsizetype steps = lineSteps(*this);
    const double step = steps > 0 ? box.height / static_cast<double>(steps) : 0;
    const double left = leftOf(*this, box.width);
    const double top = textPosition.y + step;
    const double height =
        kind == PlacingRect ? box.height : step * static_cast<double>(textLines.size());
    return {left, left + box.width, top - height, top};
}

std::vector<GeoPoint2D> CDbTextObject::pathPoints() const
{
    return {textPath.begin(), textPath.end()};
}

TextWorkSection CDbTextObject::getWorkSection(const CDbTextObject &text, short *error)
{
    const bool isKnown =
        text.textWorkSection >= WorkAreaSection && text.textWorkSection <= MarginSection;
    setErrorCode(error, isKnown ? k_no_error : k_error_index);
    return static_cast<TextWorkSection>(text.textWorkSection);
}

void CDbTextObject::computationTextCenter(
    CDbMarkerPointObject *centre, const CDbVectorsObjectTable *outline, const GeoRectangle &rect)
{
    if (centre == nullptr) {
        return;
    }
    GeoPoint2D place = rect.center();
    double width = rect.width();
    if (outline != nullptr && !outline->isEmpty()) {
        const std::vector<GeoPoint2D> points(outline->begin(), outline->end());
        place = interiorPlace(points);
        width = 2 * freeHalfWidth(points, place);
    }
    centre->notchDx = static_cast<float>(place.x);
    centre->notchDy = static_cast<float>(place.y);
    centre->pointType = widthPercent(width, rect.width());
}

} // namespace KivSystem
