#include "MarkerPicture.h"

#include "KivMarker/Drawing.h"
#include "Window/MarkerScene.h"

#include <algorithm>
#include <cmath>

namespace KivSystem {

namespace {

constexpr double kLetterHeight = 2; // cm, of a piece's name
constexpr double kShareOfRoom = 0.8;
constexpr double kTall = 1.3; // a piece as much higher than long has its name upright
constexpr double kLineStep = 1.4;

class MarkerPainter
{
public:
    MarkerPainter(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
        : m_drawing(drawing)
        , m_fabric(fabric)
    {
        m_picture.layers.resize(3); // the cloth; the pieces; texts on all of them
    }

    Picture picture(const SceneOptions &options)
    {
        for (const LaidLayer &laid : m_drawing.laidLayers(&m_fabric)) {
            addCloth(laid);
        }
        const MarkerScene scene(m_drawing, m_fabric, options);
        for (const ScenePiece &piece : scene.pieces()) {
            addPiece(piece);
        }
        return std::move(m_picture);
    }

private:
    void addCloth(const LaidLayer &laid)
    {
        const double width = m_fabric.getFabricLayerWidth(laid.layer);
        const double end = laid.start + laid.length;
        m_picture.layers[0].strokes.push_back(
            {StrokeKind::Frame, {{laid.start, 0}, {end, 0}, {end, width}, {laid.start, width}},
                true, {}, QColor(0xfd, 0xfd, 0xfb)});
        m_picture.layers[2].texts.push_back({{laid.start, -1.8 * kLetterHeight},
            m_drawing.getLayerObjectTable()[laid.layer - 1]->layerName, 1.2 * kLetterHeight, 0,
            false, {}, laid.length});
        for (const auto &text : m_fabric.findLayer(laid.layer)->texts) {
            if (text->textWorkSection == WorkAreaSection) {
                addFreeText(*text, {laid.start, 0});
            }
        }
    }

    void addPiece(const ScenePiece &piece)
    {
        const QPointF shift = piece.item->pos();
        addPolygon(*piece.polygon, shift, piece.item->fill());
        if (piece.polygon->cutDownPolygon != nullptr) {
            addPolygon(*piece.polygon->cutDownPolygon, shift, piece.item->fill());
        }
        for (const auto &text : piece.polygon->polygonTexts) {
            addFreeText(*text, shift);
        }
        addName(piece, shift);
    }

    void addPolygon(const CDbPolygon &polygon, const QPointF &shift, const QColor &fill)
    {
        const PieceOutline outline = outlineOf(polygon);
        const auto add = [&](const QPainterPath &path, StrokeKind kind, const QColor &colour) {
            addPath(path.translated(shift), kind, colour);
        };
        for (const QPolygonF &ring : outline.contour.translated(shift).toSubpathPolygons()) {
            m_picture.layers[1].strokes.push_back({StrokeKind::Cut, ring, true, {}, fill});
        }
        add(outline.seam, StrokeKind::Frame, {});
        add(outline.drawnLines, StrokeKind::Pen, {});
        add(outline.cutLines, StrokeKind::Cut, {});
        add(outline.notches, StrokeKind::Notch, {});
        add(outline.marks, StrokeKind::Drill, {});
    }

    void addPath(const QPainterPath &path, StrokeKind kind, const QColor &colour)
    {
        for (const QPolygonF &line : path.toSubpathPolygons()) {
            m_picture.layers[1].strokes.push_back({kind, line, false, colour, {}});
        }
    }

    // Name and size in two lines, where the outline leaves room for them.
    void addName(const ScenePiece &piece, const QPointF &shift)
    {
        const GeoRectangle &rect = piece.polygon->polygonRect;
        CDbMarkerPointObject centre;
        CDbTextObject::computationTextCenter(&centre, piece.polygon->findContour(CutContour), rect);
        const bool upright = rect.height() > kTall * rect.width();
        const double along = upright ? rect.height() : rect.width() * centre.pointType / 100;
        const double across = upright ? rect.width() : rect.height();
        QStringList lines{piece.name, piece.size};
        lines.removeAll(QString());
        const double height =
            std::min(kLetterHeight, kShareOfRoom * across / (kLineStep * (lines.size() + 0.5)));
        const QPointF place =
            QPointF(static_cast<double>(centre.notchDx), static_cast<double>(centre.notchDy)) +
            shift;
        for (int i = 0; i < lines.size(); ++i) {
            // From the middle of the block of lines to this one's base, downward.
            const double down = kLineStep * height * (i - (lines.size() - 1) / 2.0) + height / 2;
            m_picture.layers[2].texts.push_back(
                {place + (upright ? QPointF(down, 0) : QPointF(0, -down)), lines[i], height,
                    upright ? 90.0 : 0.0, true, {}, kShareOfRoom * along});
        }
    }

    void addFreeText(const CDbTextObject &text, const QPointF &shift)
    {
        QPointF place(text.textPosition.x, text.textPosition.y);
        if (text.textPath.size() > 2) { // it stands at the middle of its line
            const CDbMarkerPointObject &middle = text.textPath[text.textPath.size() / 2];
            place = {middle.x, middle.y};
        }
        const double height = text.textLetterSize * CDbTextObject::LetterHeight;
        for (const QString &line : text.textLines) {
            const bool left = text.textAlignment.testFlag(Qt::AlignLeft);
            m_picture.layers[2].texts.push_back(
                {place + shift, line, height, 0, !left, QColor(0x1e, 0x6b, 0x3a), 0});
            place.ry() -= CDbTextObject::LetterSpacing * height;
        }
    }

    const CDbMarkerDrawing &m_drawing;
    const CDbFabricObject &m_fabric;
    Picture m_picture;
};

} // namespace

Picture pictureOf(
    const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric, const SceneOptions &options)
{
    return MarkerPainter(drawing, fabric).picture(options);
}

} // namespace KivSystem
