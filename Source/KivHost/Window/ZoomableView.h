// ZoomableView: what the drawings of the window have in common, whatever they show. The wheel and
// + and - zoom, a drag and the arrow keys move, and what is fitted stays so until then.
#ifndef KIVHOST_ZOOMABLEVIEW_H
#define KIVHOST_ZOOMABLEVIEW_H

#include <QPointF>
#include <Qt>

class QKeyEvent;
class QWheelEvent;
class QWidget;

namespace KivSystem {

class ZoomableView
{
public:
    virtual ~ZoomableView() = default;

    /// About the middle of the view.
    void zoomBy(double factor);
    /// All that there is to see. It stays so when the view is resized, until somebody zooms or
    /// moves it.
    void fit();

protected:
    bool isFitted() const { return m_isFitted; }
    /// What is shown is no longer all, or need not stay so.
    void leaveFit() { m_isFitted = false; }

    void turnWheel(QWheelEvent &event);
    /// False for a key that neither zooms nor moves.
    bool pressKey(const QKeyEvent &event);

    /// A drag that moves the view; places are pixels of the canvas.
    void startPan(const QPointF &place);
    bool isPanning() const { return m_isPanning; }
    void pan(const QPointF &place);
    void endPan();

    /// The widget that is drawn on.
    virtual QWidget &canvas() = 0;
    virtual Qt::CursorShape restingCursor() const = 0;
    virtual void showAll() = 0;
    /// Zooms about a place of the canvas, which stays where it is.
    virtual void zoomAbout(const QPointF &place, double factor) = 0;
    /// Moves what is shown by so many pixels; `wasFitted` tells that this is the first move since
    /// all was shown.
    virtual void moveBy(const QPointF &way, bool wasFitted) = 0;

private:
    void shift(const QPointF &way);

    bool m_isFitted = true;
    bool m_isPanning = false;
    QPointF m_panFrom;
};

} // namespace KivSystem

#endif
