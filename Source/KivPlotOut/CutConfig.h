// Small questions that all sources of CutProcessor ask.

#ifndef KIVPLOTOUT_CUTCONFIG_H
#define KIVPLOTOUT_CUTCONFIG_H

#include "KivGeo/Point2D.h"

#include <QDomElement>

namespace KivSystem {
namespace NC {

inline bool isSet(const QDomElement &element, const QString &attribute)
{
    return element.attribute(attribute) == QLatin1String("1");
}

/// Whether a line end follows each command of an element of the configuration.
inline bool isWrapped(const QDomElement &config)
{
    return isSet(config, QStringLiteral("bWrap"));
}

/// A coordinate of exactly -1 stands for no point.
inline bool isNoPoint(const GeoPoint2D &point)
{
    constexpr double noCoordinate = -1.0;
    return point.x == noCoordinate || point.y == noCoordinate;
}

} // namespace NC
} // namespace KivSystem

#endif
