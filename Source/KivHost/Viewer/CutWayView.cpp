#include "CutWayView.h"

#include "PicturePainter.h"

#include <QPainter>

namespace KivSystem {

namespace {

constexpr double kHeavy = 2.6;    // pixels, of what is done
constexpr double kHeavyNotch = 4; // seen beside the outline
constexpr double kHeavyIdle = 1.6;
constexpr double kHead = 6; // pixels, the radius of the head's ring

void paintStep(QPainter &painter, const CutStep &step, const QPointF &end, const QTransform &view)
{
    StrokeKind kind = StrokeKind::Cut;
    switch (step.action) {
    case CutAction::Cut:
        break;
    case CutAction::Notch:
        kind = StrokeKind::Notch;
        break;
    case CutAction::Pen:
        kind = StrokeKind::Pen;
        break;
    case CutAction::Idle:
        kind = StrokeKind::Idle;
        break;
    case CutAction::Drill:
        paintStroke(painter, {StrokeKind::Drill, {step.to}, false, {}, {}}, view, kHeavy);
        return;
    case CutAction::Label:
    case CutAction::Advance:
        return;
    }
    const double width = kind == StrokeKind::Idle    ? kHeavyIdle
                         : kind == StrokeKind::Notch ? kHeavyNotch
                                                     : kHeavy;
    QPen pen(colourOf(kind), width);
    pen.setCapStyle(Qt::RoundCap);
    if (kind ==
        StrokeKind::Idle) { // dashed as in the picture below, or it would look like the pen's
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern({4 / width, 3 / width});
    }
    painter.setPen(pen);
    painter.drawLine(view.map(step.from), view.map(end));
}

} // namespace

CutWayView::CutWayView(const CutProgram &program, QWidget *parent)
    : PictureView(pictureOf(program), parent)
    , m_program(program)
{}

void CutWayView::setPlace(const CutWay::Place &place)
{
    m_place = place;
    update();
}

void CutWayView::drawSteps(std::size_t first, std::size_t last)
{
    QPainter painter(&m_way);
    painter.setRenderHint(QPainter::Antialiasing, last - first < 30000);
    for (std::size_t i = first; i < last; ++i) {
        paintStep(painter, m_program.steps[i], m_program.steps[i].to, view());
    }
}

// Steps that are done stay drawn as long as the view stays and the head goes on.
void CutWayView::paintOver(QPainter &painter, bool changed)
{
    if (changed || m_way.isNull() || m_place.step < m_done) {
        m_way = QPixmap(size() * devicePixelRatioF());
        m_way.setDevicePixelRatio(devicePixelRatioF());
        m_way.fill(Qt::transparent);
        m_done = 0;
    }
    drawSteps(m_done, m_place.step);
    m_done = m_place.step;
    painter.drawPixmap(0, 0, m_way);
    if (m_place.step < m_program.steps.size()) {
        paintStep(painter, m_program.steps[m_place.step], m_place.point, view());
    }
    painter.setPen(QPen(QColor(0xc0, 0x00, 0x60), 2));
    painter.setBrush(Qt::NoBrush);
    const QPointF head = view().map(m_place.point);
    painter.drawEllipse(head, kHead, kHead);
    painter.drawLine(head - QPointF(kHead + 4, 0), head - QPointF(kHead, 0));
    painter.drawLine(head + QPointF(kHead + 4, 0), head + QPointF(kHead, 0));
}

} // namespace KivSystem
