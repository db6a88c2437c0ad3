#include "PictureView.h"

#include "PicturePainter.h"
#include "Window/WindowText.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace KivSystem {

namespace {

constexpr double kMargin = 16;           // pixels
constexpr double kMostScale = 5000;      // pixels for a cm
constexpr int kMostSmoothPoints = 60000; // a picture of more is drawn without smoothing

} // namespace

PictureView::PictureView(Picture picture, QWidget *parent)
    : QWidget(parent)
    , m_picture(std::move(picture))
    , m_bounds(m_picture.bounds())
{
    for (const PictureLayer &layer : m_picture.layers) {
        for (const Stroke &stroke : layer.strokes) {
            m_points += stroke.points.size();
        }
    }
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 80);
    setCursor(Qt::OpenHandCursor);
    setAccessibleName(windowText("Picture"));
    setToolTip(windowText("Wheel, + and -: zoom. Drag, arrow keys: move. F: show all."));
}

void PictureView::showAll()
{
    setView(fitting(m_bounds, size(), kMargin));
}

void PictureView::show(const QRectF &area)
{
    if (area.isNull()) {
        fit();
        return;
    }
    leaveFit();
    setView(fitting(area, size(), kMargin));
}

void PictureView::zoomAbout(const QPointF &place, double factor)
{
    const double least = std::abs(fitting(m_bounds, size(), kMargin).m11()) / 4;
    const double scale = std::abs(m_view.m11());
    factor = qBound(least / scale, factor, std::max(kMostScale, scale) / scale);
    leaveFit();
    QTransform view = m_view;
    view *= QTransform::fromTranslate(-place.x(), -place.y());
    view *= QTransform::fromScale(factor, factor);
    view *= QTransform::fromTranslate(place.x(), place.y());
    setView(view);
}

void PictureView::moveBy(const QPointF &way, bool)
{
    setView(m_view * QTransform::fromTranslate(way.x(), way.y()));
}

void PictureView::setView(const QTransform &view)
{
    m_view = view;
    m_drawn = QPixmap();
    update();
}

void PictureView::paintEvent(QPaintEvent *)
{
    const bool changed = m_drawn.isNull();
    if (changed) {
        const double ratio = devicePixelRatioF();
        m_drawn = QPixmap(size() * ratio);
        m_drawn.setDevicePixelRatio(ratio);
        m_drawn.fill(Qt::white);
        QPainter painter(&m_drawn);
        painter.setRenderHint(QPainter::Antialiasing, m_points <= kMostSmoothPoints);
        paint(painter, m_picture, m_view);
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_drawn);
    painter.setRenderHint(QPainter::Antialiasing);
    paintOver(painter, changed);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void PictureView::resizeEvent(QResizeEvent *)
{
    if (isFitted()) {
        fit();
    } else {
        setView(m_view);
    }
}

void PictureView::wheelEvent(QWheelEvent *event)
{
    turnWheel(*event);
}

void PictureView::mousePressEvent(QMouseEvent *event)
{
    startPan(event->localPos());
}

void PictureView::mouseMoveEvent(QMouseEvent *event)
{
    if (isPanning()) {
        pan(event->localPos());
    }
}

void PictureView::mouseReleaseEvent(QMouseEvent *)
{
    endPan();
}

void PictureView::keyPressEvent(QKeyEvent *event)
{
    if (!pressKey(*event)) {
        QWidget::keyPressEvent(event);
    }
}

} // namespace KivSystem
