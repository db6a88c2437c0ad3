// PicturePainter: draws a Picture with a QPainter, and writes it as a PNG or an SVG file.
#ifndef KIVHOST_PICTUREPAINTER_H
#define KIVHOST_PICTUREPAINTER_H

#include "Picture.h"

#include <QImage>
#include <QSize>
#include <QTransform>

class QPainter;

namespace KivSystem {

/// From the picture to a canvas of that size in pixels, y turned: all of `area` is in sight, with
/// the same scale in both directions, in the middle of what `margin` pixels on each side leave.
QTransform fitting(const QRectF &area, const QSize &canvas, double margin);

/// The width of lines, in pixels of the painter's device.
void paint(QPainter &painter, const Picture &picture, const QTransform &view, double lineWidth = 1);
void paintStroke(
    QPainter &painter, const Stroke &stroke, const QTransform &view, double lineWidth = 1);

/// On white. Throws HostError (ExitFailed) for a size that there is no memory for.
QImage imageOf(const Picture &picture, const QSize &size);

/// The same as an SVG document of that size, in UTF-8; the same picture is the same text.
QByteArray svgOf(const Picture &picture, const QSize &size);

} // namespace KivSystem

#endif
