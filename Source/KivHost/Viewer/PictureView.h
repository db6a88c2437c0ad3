// PictureView: shows a picture that can be zoomed and moved; any button drags it.
#ifndef KIVHOST_PICTUREVIEW_H
#define KIVHOST_PICTUREVIEW_H

#include "Picture.h"
#include "Window/ZoomableView.h"

#include <QPixmap>
#include <QTransform>
#include <QWidget>

namespace KivSystem {

class PictureView : public QWidget, public ZoomableView
{
public:
    explicit PictureView(Picture picture, QWidget *parent = nullptr);

    /// So that this part of the picture is in sight; a null one shows all.
    void show(const QRectF &area);

    /// From the picture to the widget.
    const QTransform &view() const { return m_view; }
    QSize sizeHint() const override { return {900, 500}; }

protected:
    /// Draws over the picture; `changed` tells that the view is another than at the last call.
    virtual void paintOver(QPainter &, bool /*changed*/) {}

    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

    QWidget &canvas() override { return *this; }
    Qt::CursorShape restingCursor() const override { return Qt::OpenHandCursor; }
    void showAll() override;
    void zoomAbout(const QPointF &place, double factor) override;
    void moveBy(const QPointF &way, bool wasFitted) override;

private:
    void setView(const QTransform &view);

    Picture m_picture;
    QRectF m_bounds;
    QTransform m_view;
    QPixmap m_drawn; // of the picture by the view; null when it has to be drawn anew
    int m_points = 0;
};

} // namespace KivSystem

#endif
