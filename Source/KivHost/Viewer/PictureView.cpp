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
constexpr double kKeyZoom = 1.25;        // of a key, and of one notch of the wheel
constexpr double kKeyShift = 60;         // pixels
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

void PictureView::fit()
{
    m_fitted = true;
    setView(fitting(m_bounds, size(), kMargin));
}

void PictureView::show(const QRectF &area)
{
    if (area.isNull()) {
        fit();
        return;
    }
    m_fitted = false;
    setView(fitting(area, size(), kMargin));
}

void PictureView::zoom(double factor, const QPointF &about)
{
    const double least = std::abs(fitting(m_bounds, size(), kMargin).m11()) / 4;
    const double scale = std::abs(m_view.m11());
    factor = qBound(least / scale, factor, std::max(kMostScale, scale) / scale);
    m_fitted = false;
    QTransform view = m_view;
    view *= QTransform::fromTranslate(-about.x(), -about.y());
    view *= QTransform::fromScale(factor, factor);
    view *= QTransform::fromTranslate(about.x(), about.y());
    setView(view);
}

void PictureView::zoomBy(double factor)
{
    zoom(factor, QPointF(width() / 2.0, height() / 2.0));
}

void PictureView::moveBy(const QPointF &way)
{
    m_fitted = false;
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
    if (m_fitted) {
        fit();
    } else {
        setView(m_view);
    }
}

void PictureView::wheelEvent(QWheelEvent *event)
{
    zoom(std::pow(kKeyZoom, event->angleDelta().y() / 120.0), event->position());
    event->accept();
}

void PictureView::mousePressEvent(QMouseEvent *event)
{
    m_dragged = event->localPos();
    setCursor(Qt::ClosedHandCursor);
}

void PictureView::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() != Qt::NoButton) {
        moveBy(event->localPos() - m_dragged);
        m_dragged = event->localPos();
    }
}

void PictureView::mouseReleaseEvent(QMouseEvent *)
{
    setCursor(Qt::OpenHandCursor);
}

void PictureView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomBy(kKeyZoom);
        break;
    case Qt::Key_Minus:
        zoomBy(1 / kKeyZoom);
        break;
    case Qt::Key_Left:
        moveBy({kKeyShift, 0});
        break;
    case Qt::Key_Right:
        moveBy({-kKeyShift, 0});
        break;
    case Qt::Key_Up:
        moveBy({0, kKeyShift});
        break;
    case Qt::Key_Down:
        moveBy({0, -kKeyShift});
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace KivSystem
