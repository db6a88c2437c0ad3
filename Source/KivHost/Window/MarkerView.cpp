#include "MarkerView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace KivSystem {

namespace {

constexpr double kSmallestZoom = 0.02; // pixels for a centimetre: 500 m on a screen
constexpr double kLargestZoom = 2000;
constexpr double kRoom = 1.02; // what is fitted has a little air around it

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
    const QPoint middle = viewport()->rect().center();
    const QPointF centre = mapToScene(middle);
    setScene(shown);
    if (isFitted()) {
        fit();
    } else {
        makeRoom();
        centerOn(centre); // else the next resize goes to the middle of the scene
        scrollTo(centre, middle);
        noteChange();
    }
}

void MarkerView::showAll()
{
    setSceneRect(QRectF()); // the scene's own: the scroll bars go
    if (scene() != nullptr) {
        showAllOf(scene()->sceneRect(), maximumViewportSize());
    }
}

void MarkerView::fitTo(const QRectF &rect)
{
    leaveFit();
    makeRoom();
    showAllOf(rect, viewport()->size());
    makeRoom(); // of the new scale
    centerOn(rect.center());
}

void MarkerView::reveal(const QRectF &rect)
{
    if (!mapToScene(viewport()->rect()).boundingRect().intersects(rect)) {
        leaveFit();
        makeRoom();
        centerOn(rect.center());
    }
}

// Beyond the scene there is as much room as the window shows: what is under the mouse can stay
// there whatever the scale is.
void MarkerView::makeRoom()
{
    if (scene() != nullptr) {
        const double x = viewport()->width() / zoom();
        const double y = viewport()->height() / zoom();
        setSceneRect(scene()->sceneRect().adjusted(-x, -y, x, y));
    }
}

// Until what is there in the scene stands at `place` in the viewport. centerOn() rounds otherwise,
// and would move on by a pixel each time.
void MarkerView::scrollTo(const QPointF &inScene, const QPoint &place)
{
    const QPoint way = mapFromScene(inScene) - place;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + way.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + way.y());
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

void MarkerView::zoomAbout(const QPointF &place, double factor)
{
    const QPoint pixel = place.toPoint();
    const QPointF fixed = mapToScene(pixel);
    leaveFit(); // before the scroll bars come, with which the view is resized
    const double bounded = boundedFactor(factor);
    scale(bounded, bounded);
    makeRoom();
    scrollTo(fixed, pixel);
    noteChange();
}

void MarkerView::moveBy(const QPointF &way, bool wasFitted)
{
    if (wasFitted) {
        const QPoint middle = viewport()->rect().center();
        const QPointF centre = mapToScene(middle);
        makeRoom();
        scrollTo(centre, middle);
    }
    const QPoint pixels = way.toPoint();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - pixels.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - pixels.y());
}

Qt::CursorShape MarkerView::restingCursor() const
{
    return m_spaceDown ? Qt::OpenHandCursor : Qt::ArrowCursor;
}

void MarkerView::wheelEvent(QWheelEvent *event)
{
    turnWheel(*event);
}

void MarkerView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && m_spaceDown)) {
        startPan(event->pos());
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
    if (isPanning()) {
        pan(event->pos());
        event->accept();
        return;
    }
    QGraphicsView::mouseMoveEvent(event);
}

void MarkerView::mouseReleaseEvent(QMouseEvent *event)
{
    if (isPanning() && (event->button() == Qt::MiddleButton || event->button() == Qt::LeftButton)) {
        endPan();
        event->accept();
        return;
    }
    QGraphicsView::mouseReleaseEvent(event);
}

void MarkerView::holdSpace(bool down)
{
    m_spaceDown = down;
    if (!isPanning()) {
        viewport()->setCursor(restingCursor());
    }
}

void MarkerView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        holdSpace(true);
        event->accept();
    } else if (!pressKey(*event)) {
        QGraphicsView::keyPressEvent(event);
    }
}

void MarkerView::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        holdSpace(false);
        event->accept();
        return;
    }
    QGraphicsView::keyReleaseEvent(event);
}

void MarkerView::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    if (isFitted()) {
        fit();
    }
    noteChange();
}

void MarkerView::showEvent(QShowEvent *event)
{
    QGraphicsView::showEvent(event);
    if (isFitted()) {
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
