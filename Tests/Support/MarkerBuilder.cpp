#include "MarkerBuilder.h"

#include "KivMarker/Layer.h"
#include "KivMarker/Style.h"

#include <stdexcept>
#include <utility>

namespace KivSystem {
namespace {

// A wrong index is a fault of the test that builds the marker.
template <class T>
T &existing(T *object)
{
    if (object == nullptr) {
        throw std::out_of_range("MarkerBuilder: there is no such object");
    }
    return *object;
}

} // namespace

MarkerBuilder::MarkerBuilder() : m_drawing(std::make_unique<CDbMarkerDrawing>()) {}

MarkerBuilder &MarkerBuilder::layer(const QString &name)
{
    m_drawing->addLayer(name);
    return *this;
}

MarkerBuilder &MarkerBuilder::fabric(const QString &name, const std::vector<double> &widths)
{
    CDbFabricObject *fabric = m_drawing->addFabric(name);
    short layer = 0;
    for (const double width : widths) {
        existing(fabric->findLayer(++layer)).width = width;
    }
    return *this;
}

MarkerBuilder &MarkerBuilder::style(const QString &name, std::initializer_list<const char *> sizes)
{
    std::vector<StyleSize> records;
    for (const char *size : sizes) {
        const QString text = QString::fromUtf8(size);
        StyleSize record;
        record.number = static_cast<short>(records.size() + 1);
        record.name = text.section(QLatin1Char('/'), 0, 0);
        record.special = text.section(QLatin1Char('/'), 1);
        records.push_back(record);
    }
    m_drawing->addStyle(name, QString(), std::move(records));
    return *this;
}

MarkerBuilder &MarkerBuilder::garments(
    short style, short fabric, short layer, std::initializer_list<short> quantities)
{
    CDbStyleSizeObjectTable &sizes =
        existing(m_drawing->findSizesList(static_cast<short>(style - 1), fabric, nullptr));
    short size = 0;
    for (const short quantity : quantities) {
        if (!sizes.setQuantity(layer, ++size, quantity)) {
            throw std::out_of_range("MarkerBuilder: there is no such layer or size");
        }
    }
    return *this;
}

MarkerBuilder &MarkerBuilder::piece(
    short fabric, short style, const QString &name, double length, double width)
{
    PieceShape shape;
    shape.contour = {{0, 0}, {length, 0}, {length, width}, {0, width}};
    auto piece = std::make_unique<CDbPieceObject>(name, style);
    const CDbStyleObject &styleObject =
        existing(m_drawing->getStyle(static_cast<short>(style - 1)));
    for (const StyleSize &size : styleObject.sizes()) {
        piece->addSize(size.number, shape);
    }
    fabricAt(fabric).addPiece(std::move(piece));
    return *this;
}

MarkerBuilder &MarkerBuilder::order(
    short fabric, short piece, short size, short layer, short quantity)
{
    existing(fabricAt(fabric).findPieceAccordingIndex(piece, nullptr))
        .setOrderedQuantity({size, layer, true}, quantity);
    return *this;
}

MarkerBuilder &MarkerBuilder::place(
    short fabric, short layer, short piece, short size, double x, double y, GroupPlace place)
{
    CDbFabricObject &fabricObject = fabricAt(fabric);
    const CDbPieceObject &pieceObject =
        existing(fabricObject.findPieceAccordingIndex(piece, nullptr));
    auto polygon = std::make_unique<CDbPolygon>(piece, size, true);
    Placement placement;
    placement.x = x;
    placement.y = y;
    polygon->place(pieceObject.getPieceSize(size), placement);
    auto group = std::make_unique<CDbGrPolysObject>(place);
    group->addPolygon(std::move(polygon));
    fabricObject.addGroup(layer, std::move(group));
    return *this;
}

CDbFabricObject &MarkerBuilder::fabricAt(short fabric)
{
    return existing(m_drawing->getFabric(static_cast<short>(fabric - 1)));
}

std::unique_ptr<DocumentMak> MarkerBuilder::take()
{
    return std::make_unique<DocumentMak>(std::move(m_drawing));
}

} // namespace KivSystem
