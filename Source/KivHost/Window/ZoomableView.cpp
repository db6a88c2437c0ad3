#include "ZoomableView.h"

#include <QKeyEvent>
#include <QRectF>
#include <QWheelEvent>
#include <QWidget>

#include <cmath>

namespace KivSystem {

namespace {

constexpr double kZoomStep = 1.25;  // of a key, and of one notch of the wheel
constexpr double kNotchUnits = 120; // of QWheelEvent::angleDelta()
constexpr double kKeyWay = 60;      // pixels

} // namespace

void ZoomableView::zoomBy(double factor)
{
    zoomAbout(QRectF(canvas().rect()).center(), factor);
}

void ZoomableView::fit()
{
    m_isFitted = true;
    showAll();
}

void ZoomableView::turnWheel(QWheelEvent &event)
{
    const int turned = event.angleDelta().y();
    if (turned != 0) {
        zoomAbout(event.position(), std::pow(kZoomStep, turned / kNotchUnits));
    }
    event.accept();
}

bool ZoomableView::pressKey(const QKeyEvent &event)
{
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
        return false;
    }
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomBy(kZoomStep);
        return true;
    case Qt::Key_Minus:
        zoomBy(1 / kZoomStep);
        return true;
    case Qt::Key_Left:
        shift({kKeyWay, 0});
        return true;
    case Qt::Key_Right:
        shift({-kKeyWay, 0});
        return true;
    case Qt::Key_Up:
        shift({0, kKeyWay});
        return true;
    case Qt::Key_Down:
        shift({0, -kKeyWay});
        return true;
    default:
        return false;
    }
}

void ZoomableView::startPan(const QPointF &place)
{
    m_isPanning = true;
    m_panFrom = place;
    canvas().setCursor(Qt::ClosedHandCursor);
}

void ZoomableView::pan(const QPointF &place)
{
    const QPointF way = place - m_panFrom;
    m_panFrom = place;
    shift(way);
}

void ZoomableView::endPan()
{
    m_isPanning = false;
    canvas().setCursor(restingCursor());
}

void ZoomableView::shift(const QPointF &way)
{
    const bool wasFitted = m_isFitted;
    m_isFitted = false;
    moveBy(way, wasFitted);
}

} // namespace KivSystem
