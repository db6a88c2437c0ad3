// CutWayView: the picture of a cut file with the way so far drawn heavier, and the head.
#ifndef KIVHOST_CUTWAYVIEW_H
#define KIVHOST_CUTWAYVIEW_H

#include "CutProgram.h"
#include "PictureView.h"

namespace KivSystem {

class CutWayView : public PictureView
{
public:
    /// The program outlives the view.
    explicit CutWayView(const CutProgram &program, QWidget *parent = nullptr);

    void setPlace(const CutWay::Place &place);

protected:
    void paintOver(QPainter &painter, bool changed) override;

private:
    void drawSteps(std::size_t first, std::size_t last);

    const CutProgram &m_program;
    CutWay::Place m_place;
    QPixmap m_way;          // steps that are done, by the view
    std::size_t m_done = 0; // how many of them
};

} // namespace KivSystem

#endif
