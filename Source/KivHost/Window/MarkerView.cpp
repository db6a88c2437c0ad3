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
        leaveFit();
        centerOn(centre);
        noteChange();
    }
}

void MarkerView::zoomBy(double factor)
{
    zoomAbout(viewport()->rect().center(), factor);
}

void MarkerView::fit()
{
    m_fitted = true;
    setSceneRect(QRectF()); // the scene's own: the scroll bars go
    if (scene() != nullptr) {
        showAllOf(scene()->sceneRect(), maximumViewportSize());
    }
}

void MarkerView::fit(const QRectF &rect)
{
    leaveFit();
    showAllOf(rect, viewport()->size());
    leaveFit(); // with the margin of the new scale
    centerOn(rect.center());
}

void MarkerView::reveal(const QRectF &rect)
{
    if (!mapToScene(viewport()->rect()).boundingRect().intersects(rect)) {
        leaveFit();
        centerOn(rect.center());
    }
}

// Beyond the scene there is as much room as the window shows: what is under the mouse can stay
// there whatever the scale is.
void MarkerView::leaveFit()
{
    m_fitted = false;
    if (scene() != nullptr) {
        const double x = viewport()->width() / zoom();
        const double y = viewport()->height() / zoom();
        setSceneRect(scene()->sceneRect().adjusted(-x, -y, x, y));
    }
}

void MarkerView::noteChange()
{
    emit viewChanged();
    if (m_hasMouse) {
        const QPointF place = mapToScene(m_mouse);
        emit mouseMoved(place.x(), place.y());
    }
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
    noteChange();
}

double MarkerView::boundedFactor(double factor) const
{
    return std::min(std::max(factor, kSmallestZoom / zoom()), kLargestZoom / zoom());
}

// What is under `place` stays there.
void MarkerView::zoomAbout(const QPoint &place, double factor)
{
    const QPointF fixed = mapToScene(place);
    m_fitted = false; // before the scroll bars come, with which the view is resized
    const double bounded = boundedFactor(factor);
    scale(bounded, bounded);
    leaveFit();
    const QPoint moved = mapFromScene(fixed) - place;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + moved.y());
    noteChange();
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
        const QPointF centre = mapToScene(viewport()->rect().center());
        leaveFit();
        centerOn(centre);
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
    m_mouse = event->pos();
    m_hasMouse = true;
    noteChange();
    if (m_panning) {
        const QPoint way = event->pos() - m_panFrom;
        m_panFrom = event->pos();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way.x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() - way.y());
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
    noteChange();
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
    noteChange();
}

void MarkerView::leaveEvent(QEvent *event)
{
    QGraphicsView::leaveEvent(event);
    m_hasMouse = false;
    emit mouseLeft();
}

} // namespace KivSystem
