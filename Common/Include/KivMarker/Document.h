/// The document that the host hands to the exporters.

#ifndef KIVMARKER_DOCUMENT_H
#define KIVMARKER_DOCUMENT_H

#include <QDomDocument>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

namespace KivSystem {

class CDbMarkerDrawing;
class SvgOptions;

/// One sentence about a cut document, naming the fabric and the piece.
struct CutMessage
{
    bool refused = false; ///< no document was made; otherwise something small was left out
    QString text;
};

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

    /// The documents that the cut formats read, in centimetres (Docs/CutDocuments.md): one of a
    /// 1-based fabric, of all fabrics that are exported for 0, and behind it one for each block
    /// that has a document of its own. Empty when nothing lies on the fabric, when it does not
    /// exist, and when what lies there must not be cut; takeCutMessages() then tells why. Made by
    /// the options and by the settings of this moment.
    QVector<QDomDocument> toSVG(const SvgOptions &options, short fabric) const;

    /// What toSVG() refused or left out since this was last called, in order.
    std::vector<CutMessage> takeCutMessages() const;

private:
    std::unique_ptr<CDbMarkerDrawing> m_drawing;
    mutable std::vector<CutMessage> m_cutMessages;
};

} // namespace KivSystem

#endif
