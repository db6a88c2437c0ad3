#include "CutDocument/CutRange.h"

#include "CutDocument/CutPlan.h"

namespace KivSystem {

QString findOutOfRange(const CutObject &object, const GeoRectangle &cloth)
{
    const GeoRectangle reach = object.reach();
    const struct
    {
        double excess;
        const char *edge;
    } edges[] = {
        {cloth.bottom() - reach.bottom(), "lower edge"},
        {reach.top() - cloth.top(), "upper edge"},
        {cloth.left() - reach.left(), "start"},
    };
    for (const auto &[excess, edge] : edges) {
        if (excess > kRangeTolerance) {
            return QStringLiteral("%1 lies %2 cm beyond the %3 of the fabric")
                .arg(object.name, QString::number(excess, 'f', 3), QLatin1String(edge));
        }
    }
    return QString();
}

} // namespace KivSystem
