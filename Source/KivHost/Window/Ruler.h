// Ruler: shows the length along a view in the unit of the user's ruler in X.
#ifndef KIVHOST_RULER_H
#define KIVHOST_RULER_H

#include <QWidget>

namespace KivSystem {

class MarkerView;

/// Stands above the view, as wide as it is.
class Ruler : public QWidget
{
    Q_OBJECT

public:
    /// The view is borrowed and outlives the ruler.
    explicit Ruler(MarkerView &view, QWidget *parent = nullptr);

    QSize sizeHint() const override;

    /// Distance of two numbered marks in the unit of the ruler: 1, 2 or 5 times a power of 10, at
    /// least `leastPixels` apart where a unit is `pixels` wide.
    static double markDistance(double pixels, double leastPixels);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintMarks(QPainter &painter) const;
    void paintUnit(QPainter &painter) const;

    MarkerView &m_view;
    double m_mouse = 0; // cm
    bool m_hasMouse = false;
};

} // namespace KivSystem

#endif
