// MarkerView: looks at a scene in centimetres, y upward. The wheel zooms about the mouse; the
// middle button, or the left one with the space key, pans; a left drag selects.
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
    void zoomBy(double factor) override;
    /// All of the scene. It stays so when the view is resized, until somebody zooms or pans.
    void fit() override;
    void fit(const QRectF &rect);
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

private:
    void showAllOf(const QRectF &rect, const QSize &room);
    void zoomAbout(const QPoint &place, double factor);
    double boundedFactor(double factor) const;
    void leaveFit();
    void noteChange();

    QPoint m_panFrom;
    QPoint m_mouse; // in the viewport
    bool m_hasMouse = false;
    bool m_panning = false;
    bool m_spaceDown = false;
    bool m_fitted = true;
};

} // namespace KivSystem

#endif
