#include "CutDocument/CutRange.h"

#include "CutDocument/CutSelection.h"

namespace KivSystem {

QString findOutOfRange(
    const CutObject &piece, const SelectedBlock &block, const CutSettings &settings)
{
    const GeoRectangle reach = piece.reach(settings);
    const GeoRectangle &cloth = block.cloth;
    const struct
    {
        double excess;
        const char *edge;
    } edges[] = {
        {cloth.bottom() - reach.bottom(), "lower edge of the fabric"},
        {reach.top() - cloth.top(), "upper edge of the fabric"},
        {cloth.left() - reach.left(), "start of the fabric"},
        {reach.right() - block.nextLayer, "start of the next layer"},
    };
    for (const auto &[excess, edge] : edges) {
        if (excess > kRangeTolerance) {
            return QStringLiteral("%1 lies %2 cm beyond the %3")
                .arg(piece.name, QString::number(excess, 'f', 3), QLatin1String(edge));
        }
    }
    return QString();
}

} // namespace KivSystem
