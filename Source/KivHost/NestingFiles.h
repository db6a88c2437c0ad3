// NestingFiles: readers of published nesting problems and of their layouts.
//
// An instance is JSON: a strip of fixed height, and items with an outline and a demand. A layout is
// an SVG picture of the strip, which at the same time is the exact solution: one <use> for each
// placed piece. Both give abstract units; the readers turn them into centimetres. x runs along the
// strip, y across it. The picture's y points down, the marker's up: coordinates and turns are taken
// as they are all the same, since turning the axis round would mirror every piece.
#ifndef KIVHOST_NESTINGFILES_H
#define KIVHOST_NESTINGFILES_H

#include "KivGeo/Point2D.h"

#include <QString>

#include <vector>

namespace KivSystem {

struct NestingItem
{
    int id = 0;
    int demand = 0;
    short rotationStep = 0;          ///< degrees; 0 forbids turning
    bool turnsFreely = false;        ///< no list of orientations: any angle is allowed
    std::vector<GeoPoint2D> outline; ///< closed without a repeated last point
};

struct NestingInstance
{
    QString name;
    double height = 0; ///< of the strip
    std::vector<NestingItem> items;
};

/// One piece of a layout: turned about its item's origin, then shifted.
struct NestingPlace
{
    int item = 0; ///< 0-based position in the instance
    double x = 0;
    double y = 0;
    double rotation = 0; ///< degrees, at least 0 and less than 360
};

struct NestingLayout
{
    double length = 0; ///< of the strip
    std::vector<NestingPlace> places;
};

/// `unit` is the length of the file's unit in centimetres. Both throw HostError (ExitUnreadable)
/// with `FILE: place: what is wrong, what is expected`.
NestingInstance readNestingInstance(const QString &path, double unit);
NestingLayout readNestingLayout(const QString &path, double unit, const NestingInstance &instance);

} // namespace KivSystem

#endif
