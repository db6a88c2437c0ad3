// PictureView: shows a picture that can be zoomed and moved: the wheel and + and - zoom, dragging
// and the arrow keys move, F shows all of it.
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

    void fit() override;
    void zoomBy(double factor) override;
    /// About a point of the widget, which stays where it is.
    void zoom(double factor, const QPointF &about);
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

private:
    void setView(const QTransform &view);
    void moveBy(const QPointF &way);

    Picture m_picture;
    QRectF m_bounds;
    QTransform m_view;
    QPixmap m_drawn; // of the picture by the view; null when it has to be drawn anew
    QPointF m_dragged;
    int m_points = 0;
    bool m_fitted = true; // follows the widget's size
};

} // namespace KivSystem

#endif
