// ZoomableView: what the window's commands do to the drawing in front, whatever it shows.
#ifndef KIVHOST_ZOOMABLEVIEW_H
#define KIVHOST_ZOOMABLEVIEW_H

namespace KivSystem {

class ZoomableView
{
public:
    virtual ~ZoomableView() = default;

    virtual void zoomBy(double factor) = 0;
    /// All that there is to see.
    virtual void fit() = 0;
};

} // namespace KivSystem

#endif
