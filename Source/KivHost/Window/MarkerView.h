// MarkerView: looks at a scene in centimetres, y upward. The middle button, or the left one with
// the space key, pans; a left drag selects.
#ifndef KIVHOST_MARKERVIEW_H
#define KIVHOST_MARKERVIEW_H

#include "ZoomableView.h"

#include <QGraphicsView>

namespace KivSystem {

class MarkerView : public QGraphicsView, public ZoomableView
{
    Q_OBJECT

public:
    explicit MarkerView(QWidget *parent = nullptr);

    /// Shows a scene at the place and in the scale of the one before; all of it while all was
    /// shown. The scene is borrowed; null shows nothing.
    void showScene(QGraphicsScene *scene);

    /// Pixels for a centimetre.
    double zoom() const { return transform().m11(); }
    /// A part of the scene, as large as the view has room for.
    void fitTo(const QRectF &rect);
    /// Moves the scene if nothing of the rectangle is in sight.
    void reveal(const QRectF &rect);

signals:
    /// What the view shows has moved or changed its scale.
    void viewChanged();
    /// The place under the mouse is another one. Centimetres in the scene.
    void mouseMoved(double x, double y);
    void mouseLeft();

protected:
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void leaveEvent(QEvent *event) override;

    QWidget &canvas() override { return *viewport(); }
    Qt::CursorShape restingCursor() const override;
    void showAll() override;
    void zoomAbout(const QPointF &place, double factor) override;
    void moveBy(const QPointF &way, bool wasFitted) override;

private:
    void showAllOf(const QRectF &rect, const QSize &room);
    double boundedFactor(double factor) const;
    void makeRoom();
    void scrollTo(const QPointF &inScene, const QPoint &place);
    void holdSpace(bool down);
    void noteChange();

    QPoint m_mouse; // in the viewport
    bool m_hasMouse = false;
    bool m_spaceDown = false;
};

} // namespace KivSystem

#endif
