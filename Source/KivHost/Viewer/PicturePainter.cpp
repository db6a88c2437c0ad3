#include "PicturePainter.h"

#include "Console.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <cmath>

namespace KivSystem {

namespace {

constexpr double kMargin = 12;       // pixels around a picture
constexpr double kMarkArm = 0.3;     // cm, of a single point's cross
constexpr double kLeastArm = 2.5;    // pixels
constexpr double kLeastLetters = 3;  // pixels; smaller ones are left out
constexpr double kEmOfHeight = 1.35; // letters are as high as their capitals
constexpr int kFontPixels = 64;      // texts are laid out so large and scaled down

QColor colourFor(const Stroke &stroke)
{
    return stroke.colour.isValid() ? stroke.colour : colourOf(stroke.kind);
}

QColor colourFor(const PictureText &text)
{
    return text.colour.isValid() ? text.colour : colourOf(StrokeKind::Text);
}

double scaleOf(const QTransform &view)
{
    return std::hypot(view.m11(), view.m12());
}

// The cross of a mark, in pixels: two lines.
std::array<QLineF, 2> crossAt(const QPointF &point, const QTransform &view)
{
    const QPointF at = view.map(point);
    const double arm = std::max(kMarkArm * scaleOf(view), kLeastArm);
    return {QLineF(at.x() - arm, at.y(), at.x() + arm, at.y()),
        QLineF(at.x(), at.y() - arm, at.x(), at.y() + arm)};
}

// The size of the em in pixels, after the text was made to fit its room.
double emOf(const PictureText &text, const QTransform &view, double widthOfEm)
{
    double em = text.height * kEmOfHeight * scaleOf(view);
    if (text.room > 0 && widthOfEm > 0) {
        em = std::min(em, text.room * scaleOf(view) / widthOfEm);
    }
    return em;
}

void paintText(QPainter &painter, const PictureText &text, const QTransform &view)
{
    QFont font = painter.font();
    font.setPixelSize(kFontPixels);
    const double width = QFontMetricsF(font).horizontalAdvance(text.text);
    const double em = emOf(text, view, width / kFontPixels);
    if (em < kLeastLetters || width <= 0) {
        return;
    }
    painter.save();
    painter.setFont(font);
    painter.setPen(colourFor(text));
    painter.translate(view.map(text.place));
    painter.rotate(-text.angle);
    painter.scale(em / kFontPixels, em / kFontPixels);
    painter.drawText(QPointF(text.centred ? -width / 2 : 0, 0), text.text);
    painter.restore();
}

QString number(double value)
{
    QString text = QString::number(value, 'f', 2);
    return text == QLatin1String("-0.00") ? QStringLiteral("0.00") : text;
}

class SvgWriter
{
public:
    SvgWriter(QByteArray &bytes, const QSize &size, const QTransform &view)
        : m_out(&bytes)
        , m_size(size)
        , m_view(view)
    {
        m_out.setAutoFormatting(true);
        m_out.setAutoFormattingIndent(1);
    }

    void write(const Picture &picture)
    {
        m_out.writeStartDocument();
        m_out.writeStartElement(QStringLiteral("svg"));
        m_out.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
        set("width", QString::number(m_size.width()));
        set("height", QString::number(m_size.height()));
        set("viewBox", QStringLiteral("0 0 %1 %2").arg(m_size.width()).arg(m_size.height()));
        m_out.writeEmptyElement(QStringLiteral("rect"));
        set("width", QStringLiteral("100%"));
        set("height", QStringLiteral("100%"));
        set("fill", QStringLiteral("white"));
        for (const PictureLayer &layer : picture.layers) {
            m_out.writeStartElement(QStringLiteral("g"));
            set("stroke-linejoin", QStringLiteral("round"));
            for (const Stroke &stroke : layer.strokes) {
                write(stroke);
            }
            for (const PictureText &text : layer.texts) {
                write(text);
            }
            m_out.writeEndElement();
        }
        m_out.writeEndDocument();
    }

private:
    void set(const char *name, const QString &value)
    {
        m_out.writeAttribute(QLatin1String(name), value);
    }

    static QString pair(const QPointF &point)
    {
        return number(point.x()) + QLatin1Char(',') + number(point.y());
    }

    void write(const Stroke &stroke)
    {
        QString data;
        if (stroke.points.size() == 1) {
            for (const QLineF &line : crossAt(stroke.points.first(), m_view)) {
                data += QStringLiteral("M%1L%2").arg(pair(line.p1()), pair(line.p2()));
            }
        }
        for (int i = 0; i < stroke.points.size() && stroke.points.size() > 1; ++i) {
            data += QLatin1Char(i == 0 ? 'M' : 'L') + pair(m_view.map(stroke.points[i]));
        }
        m_out.writeEmptyElement(QStringLiteral("path"));
        set("d", stroke.closed ? data + QLatin1Char('Z') : data);
        set("stroke", colourFor(stroke).name());
        set("fill", stroke.fill.isValid() ? stroke.fill.name() : QStringLiteral("none"));
        if (stroke.kind == StrokeKind::Notch) {
            set("stroke-width", QStringLiteral("2"));
        } else if (stroke.kind == StrokeKind::Idle) {
            set("stroke-dasharray", QStringLiteral("4,3"));
        }
    }

    void write(const PictureText &text)
    {
        constexpr double widthOfLetter = 0.6; // em, as no font is at hand that all readers have
        const double em = emOf(text, m_view, widthOfLetter * text.text.size());
        const QPointF place = m_view.map(text.place);
        m_out.writeStartElement(QStringLiteral("text"));
        set("x", number(place.x()));
        set("y", number(place.y()));
        set("font-family", QStringLiteral("sans-serif"));
        set("font-size", number(em));
        set("fill", colourFor(text).name());
        if (text.centred) {
            set("text-anchor", QStringLiteral("middle"));
        }
        if (text.angle != 0) {
            set("transform", QStringLiteral("rotate(%1 %2 %3)")
                                 .arg(number(-text.angle), number(place.x()), number(place.y())));
        }
        m_out.writeCharacters(onOneLine(text.text));
        m_out.writeEndElement();
    }

    QXmlStreamWriter m_out;
    QSize m_size;
    QTransform m_view;
};

} // namespace

QTransform fitting(const QRectF &area, const QSize &canvas, double margin)
{
    const double width = std::max(canvas.width() - 2 * margin, 1.0);
    const double height = std::max(canvas.height() - 2 * margin, 1.0);
    constexpr double leastSize = 1e-3; // cm: a picture of one point
    const double scale = std::min(
        width / std::max(area.width(), leastSize), height / std::max(area.height(), leastSize));
    const QPointF middle = area.center();
    return {scale, 0, 0, -scale, canvas.width() / 2.0 - scale * middle.x(),
        canvas.height() / 2.0 + scale * middle.y()};
}

void paintStroke(QPainter &painter, const Stroke &stroke, const QTransform &view, double lineWidth)
{
    // Notches are short: they are drawn heavier, so as to be seen.
    QPen pen(colourFor(stroke), stroke.kind == StrokeKind::Notch ? 2 * lineWidth : lineWidth);
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(Qt::FlatCap);
    if (stroke.kind == StrokeKind::Idle) {
        pen.setDashPattern({4, 3});
    }
    painter.setPen(pen);
    if (stroke.points.size() == 1) {
        for (const QLineF &line : crossAt(stroke.points.first(), view)) {
            painter.drawLine(line);
        }
        return;
    }
    const QPolygonF points = view.map(QPolygonF(stroke.points));
    if (stroke.closed) {
        painter.setBrush(stroke.fill.isValid() ? QBrush(stroke.fill) : QBrush(Qt::NoBrush));
        painter.drawPolygon(points);
    } else {
        painter.drawPolyline(points);
    }
}

void paint(QPainter &painter, const Picture &picture, const QTransform &view, double lineWidth)
{
    for (const PictureLayer &layer : picture.layers) {
        for (const Stroke &stroke : layer.strokes) {
            paintStroke(painter, stroke, view, lineWidth);
        }
        for (const PictureText &text : layer.texts) {
            paintText(painter, text, view);
        }
    }
}

QImage imageOf(const Picture &picture, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull()) {
        throw HostError(ExitFailed, QStringLiteral("a picture of %1x%2 does not fit into memory")
                                        .arg(size.width())
                                        .arg(size.height()));
    }
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    paint(painter, picture, fitting(picture.bounds(), size, kMargin));
    return image;
}

QByteArray svgOf(const Picture &picture, const QSize &size)
{
    QByteArray bytes;
    SvgWriter(bytes, size, fitting(picture.bounds(), size, kMargin)).write(picture);
    return bytes;
}

} // namespace KivSystem
