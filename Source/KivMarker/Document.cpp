#include "KivMarker/Document.h"

#include "KivMarker/Drawing.h"

namespace KivSystem {

DocumentMak::DocumentMak(std::unique_ptr<CDbMarkerDrawing> drawing) : m_drawing(std::move(drawing))
{}

DocumentMak::~DocumentMak() = default;

QString DocumentMak::name() const
{
    return m_drawing != nullptr ? m_drawing->drawingName() : QString();
}

} // namespace KivSystem
