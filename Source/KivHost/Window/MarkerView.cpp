#include "MarkerView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace KivSystem {

namespace {

constexpr double kSmallestZoom = 0.02; // pixels for a centimetre: 500 m on a screen
constexpr double kLargestZoom = 2000;
constexpr double kWheelStep = 1.25; // for a notch of the wheel
constexpr double kNotchUnits = 120; // of QWheelEvent::angleDelta()
constexpr double kRoom = 1.02;      // what is fitted has a little air around it

} // namespace

MarkerView::MarkerView(QWidget *parent) : QGraphicsView(parent)
{
    setRenderHint(QPainter::Antialiasing);
    setRenderHint(QPainter::TextAntialiasing);
    setTransformationAnchor(NoAnchor);
    setResizeAnchor(AnchorViewCenter);
    setDragMode(RubberBandDrag);
    setBackgroundBrush(QColor(0xe5, 0xe7, 0xeb));
    setFrameShape(NoFrame);
    setMouseTracking(true);
    setAcceptDrops(false); // files are dropped on the window
    scale(1, -1);
}

void MarkerView::showScene(QGraphicsScene *shown)
{
    const QPointF centre = mapToScene(viewport()->rect().center());
    setScene(shown);
    if (m_fitted) {
        fit();
    } else {
        centerOn(centre);
        emit viewChanged();
    }
}

void MarkerView::zoomBy(double factor)
{
    zoomAbout(viewport()->rect().center(), factor);
}

void MarkerView::fit()
{
    m_fitted = true;
    if (scene() != nullptr) {
        showAllOf(scene()->sceneRect(), maximumViewportSize()); // the scroll bars go
    }
}

void MarkerView::fit(const QRectF &rect)
{
    m_fitted = false;
    showAllOf(rect, viewport()->size());
}

void MarkerView::showAllOf(const QRectF &rect, const QSize &room)
{
    if (rect.isEmpty() || room.width() < 2 || room.height() < 2) {
        return;
    }
    const double factor =
        std::min(room.width() / (rect.width() * kRoom), room.height() / (rect.height() * kRoom));
    const double bounded = std::min(std::max(factor, kSmallestZoom), kLargestZoom);
    setTransform(QTransform::fromScale(bounded, -bounded));
    centerOn(rect.center());
    emit viewChanged();
}

double MarkerView::boundedFactor(double factor) const
{
    return std::min(std::max(factor, kSmallestZoom / zoom()), kLargestZoom / zoom());
}

// What is under `place` stays there.
void MarkerView::zoomAbout(const QPoint &place, double factor)
{
    m_fitted = false; // before the scroll bars come, with which the view is resized
    const QPointF fixed = mapToScene(place);
    const double bounded = boundedFactor(factor);
    scale(bounded, bounded);
    const QPoint moved = mapFromScene(fixed) - place;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + moved.y());
    emit viewChanged();
}

void MarkerView::wheelEvent(QWheelEvent *event)
{
    const int turned = event->angleDelta().y();
    if (turned != 0) {
        zoomAbout(event->position().toPoint(), std::pow(kWheelStep, turned / kNotchUnits));
    }
    event->accept();
}

void MarkerView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && m_spaceDown)) {
        m_panning = true;
        m_panFrom = event->pos();
        viewport()->setCursor(Qt::ClosedHandCursor);
        event->accept();
        return;
    }
    QGraphicsView::mousePressEvent(event);
}

void MarkerView::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF place = mapToScene(event->pos());
    emit mouseMoved(place.x(), place.y());
    if (m_panning) {
        const QPoint way = event->pos() - m_panFrom;
        m_panFrom = event->pos();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way.x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() - way.y());
        m_fitted = false;
        event->accept();
        return;
    }
    QGraphicsView::mouseMoveEvent(event);
}

void MarkerView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_panning && (event->button() == Qt::MiddleButton || event->button() == Qt::LeftButton)) {
        m_panning = false;
        viewport()->setCursor(m_spaceDown ? Qt::OpenHandCursor : Qt::ArrowCursor);
        event->accept();
        return;
    }
    QGraphicsView::mouseReleaseEvent(event);
}

void MarkerView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        m_spaceDown = true;
        viewport()->setCursor(Qt::OpenHandCursor);
        event->accept();
        return;
    }
    QGraphicsView::keyPressEvent(event);
}

void MarkerView::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        m_spaceDown = false;
        viewport()->setCursor(Qt::ArrowCursor);
        event->accept();
        return;
    }
    QGraphicsView::keyReleaseEvent(event);
}

void MarkerView::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    if (m_fitted) {
        fit();
    }
    emit viewChanged();
}

void MarkerView::showEvent(QShowEvent *event)
{
    QGraphicsView::showEvent(event);
    if (m_fitted) {
        fit();
    }
}

void MarkerView::scrollContentsBy(int dx, int dy)
{
    QGraphicsView::scrollContentsBy(dx, dy);
    emit viewChanged();
}

void MarkerView::leaveEvent(QEvent *event)
{
    QGraphicsView::leaveEvent(event);
    emit mouseLeft();
}

} // namespace KivSystem
