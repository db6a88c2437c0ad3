#include "Ruler.h"

#include "KivCore/Locale.h"
#include "MarkerView.h"
#include "WindowText.h"

#include <QPainter>

#include <cmath>

namespace KivSystem {

namespace {

constexpr double kLeastMarkDistance = 64; // pixels
constexpr int kPartsOfMark = 10;
constexpr int kLongMark = 9;
constexpr int kShortMark = 4;

double centimetresOf(LengthUnit unit)
{
    switch (unit) {
    case LengthUnit::Millimetre:
        return 0.1;
    case LengthUnit::Inch:
        return 2.54;
    default:
        return 1;
    }
}

} // namespace

Ruler::Ruler(MarkerView &view, QWidget *parent) : QWidget(parent), m_view(view)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setToolTip(windowText("Length along the fabric, in the unit of the rulers"));
    connect(&view, &MarkerView::viewChanged, this, [this] { update(); });
    connect(&view, &MarkerView::mouseMoved, this, [this](double x, double) {
        m_mouse = x;
        m_hasMouse = true;
        update();
    });
    connect(&view, &MarkerView::mouseLeft, this, [this] {
        m_hasMouse = false;
        update();
    });
}

QSize Ruler::sizeHint() const
{
    return {100, fontMetrics().height() + kLongMark + 3};
}

double Ruler::markDistance(double pixels, double leastPixels)
{
    const double least = leastPixels / pixels;
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double step : {1.0, 2.0, 5.0}) {
        if (step * power >= least * (1 - 1e-9)) {
            return step * power;
        }
    }
    return 10 * power;
}

void Ruler::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(0, height() - 1, width(), height() - 1);
    paintMarks(painter);
    paintUnit(painter);
    if (m_hasMouse) {
        const int x = m_view.mapFromScene(m_mouse, 0).x();
        painter.setPen(QColor(0xc8, 0x1e, 0x1e));
        painter.drawLine(x, 0, x, height());
    }
}

void Ruler::paintMarks(QPainter &painter) const
{
    const LengthUnit unit = KivLocale::applicationConventions().rulerX;
    const double centimetres = centimetresOf(unit);
    const double pixels = m_view.zoom() * centimetres; // for one unit
    const double step = markDistance(pixels, kLeastMarkDistance);
    const double origin =
        m_view.viewportTransform().map(QPointF(0, 0)).x(); // where the cloth starts

    const int decimals = std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
    const KivLocale locale;
    painter.setPen(palette().color(QPalette::WindowText));
    const auto first = static_cast<qint64>(std::floor(-origin / pixels / step));
    const auto last = static_cast<qint64>(std::ceil((width() - origin) / pixels / step));
    for (qint64 mark = first; mark <= last; ++mark) {
        const double value = static_cast<double>(mark) * step;
        const double x = origin + value * pixels;
        painter.drawLine(QPointF(x, height() - kLongMark), QPointF(x, height() - 1));
        painter.drawText(QPointF(x + 3, fontMetrics().ascent() + 1.0),
            locale.toString(mark == 0 ? 0 : value, 'f', decimals));
        for (int part = 1; part < kPartsOfMark; ++part) {
            const double between = x + part * step * pixels / kPartsOfMark;
            painter.drawLine(
                QPointF(between, height() - kShortMark), QPointF(between, height() - 1));
        }
    }
}

// In the corner, whatever part of the cloth is in sight.
void Ruler::paintUnit(QPainter &painter) const
{
    const QString symbol = unitSymbol(KivLocale::applicationConventions().rulerX);
    const int room = fontMetrics().horizontalAdvance(symbol) + 12;
    const QRect corner(width() - room, 0, room, height() - 1);
    painter.fillRect(corner, palette().window());
    painter.drawText(corner, Qt::AlignCenter, symbol);
}

} // namespace KivSystem
