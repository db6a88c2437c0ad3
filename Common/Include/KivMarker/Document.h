/// The document that the host hands to the exporters.

#ifndef KIVMARKER_DOCUMENT_H
#define KIVMARKER_DOCUMENT_H

#include <QString>

#include <memory>

namespace KivSystem {

class CDbMarkerDrawing;

class DocumentMak
{
public:
    /// Takes the drawing over. It is null only in a broken document.
    explicit DocumentMak(std::unique_ptr<CDbMarkerDrawing> drawing);
    ~DocumentMak();
    DocumentMak(const DocumentMak &) = delete;
    DocumentMak &operator=(const DocumentMak &) = delete;

    /// The drawing, which stays owned by the document.
    CDbMarkerDrawing *drawing() const { return m_drawing.get(); }
    /// The document's name, proposed for a file of the whole document; empty without a drawing.
    QString name() const;

private:
    std::unique_ptr<CDbMarkerDrawing> m_drawing;
};

} // namespace KivSystem

#endif
