#include "Picture.h"
#include "Window/WindowText.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>

namespace KivSystem {

QColor colourOf(StrokeKind kind)
{
    switch (kind) {
    case StrokeKind::Cut:
        return {0x20, 0x20, 0x20};
    case StrokeKind::Idle:
        return {0x4a, 0x9a, 0xd8};
    case StrokeKind::Notch:
        return {0xd0, 0x1c, 0x1c};
    case StrokeKind::Drill:
        return {0xd8, 0x70, 0x00};
    case StrokeKind::Pen:
        return {0x18, 0x80, 0x38};
    case StrokeKind::Frame:
        return {0x9a, 0x9a, 0xa4};
    case StrokeKind::Text:
        break;
    }
    return {0x40, 0x40, 0x60};
}

QString nameOf(StrokeKind kind)
{
    const auto text = [](const char *name) { return windowText(name); };
    switch (kind) {
    case StrokeKind::Cut:
        return text("Cut");
    case StrokeKind::Idle:
        return text("Idle way");
    case StrokeKind::Notch:
        return text("Notch");
    case StrokeKind::Drill:
        return text("Drill");
    case StrokeKind::Pen:
        return text("Pen");
    case StrokeKind::Frame:
        return text("Cloth");
    case StrokeKind::Text:
        break;
    }
    return text("Label");
}

QRectF Picture::bounds() const
{
    // QRectF::united() passes over rectangles without an area, such as those of straight lines.
    constexpr double kBelowBaseLine = 0.3; // of a letter's height
    constexpr double none = std::numeric_limits<double>::infinity();
    double left = none;
    double right = -none;
    double bottom = none;
    double top = -none;
    const auto take = [&](const QPointF &point) {
        if (std::isfinite(point.x()) && std::isfinite(point.y())) {
            left = std::min(left, point.x());
            right = std::max(right, point.x());
            bottom = std::min(bottom, point.y());
            top = std::max(top, point.y());
        }
    };
    for (const PictureLayer &layer : layers) {
        for (const Stroke &stroke : layer.strokes) {
            std::for_each(stroke.points.cbegin(), stroke.points.cend(), take);
        }
        for (const PictureText &text : layer.texts) {
            // How wide letters are is not known here. No text widens the picture beyond its room.
            const double letters = 0.7 * text.height * text.text.size();
            const double width = text.room > 0 ? std::min(letters, text.room) : letters;
            const bool level = text.angle == 0;
            const QPointF up = level ? QPointF(0, text.height) : QPointF(-text.height, 0);
            take(text.place + up);
            take(text.place - up * kBelowBaseLine);
            take(text.place - QPointF(level && text.centred ? width / 2 : 0, 0));
            take(text.place + QPointF(level ? width / (text.centred ? 2 : 1) : 0, 0));
        }
    }
    return left <= right ? QRectF(left, bottom, right - left, top - bottom) : QRectF();
}

} // namespace KivSystem
