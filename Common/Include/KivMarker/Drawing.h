/// The marker drawing: the root of the object model.

#ifndef KIVMARKER_DRAWING_H
#define KIVMARKER_DRAWING_H

#include "KivMarker/Fabric.h"
#include "KivMarker/Layer.h"
#include "KivMarker/Style.h"
#include "KivMarker/Summary.h"

#include <QString>

#include <memory>
#include <vector>

namespace KivSystem {

/// A layer with something on it, laid along the length behind those before it.
struct LaidLayer
{
    short layer = 0;   ///< 1-based
    double start = 0;  ///< cm from the start of the first layer
    double length = 0; ///< cm occupied
};

/// A layer that occupies no more than this, in cm, holds nothing.
constexpr double kEmptyLayerLength = 0.00006;

/// A drawing owns its layers, fabrics and styles. It is built in that order: the number of layers
/// is fixed before the first fabric, and the fabrics before the first style. Adding out of order is
/// a programming error and throws std::logic_error.
class CDbMarkerDrawing
{
public:
    CDbMarkerDrawing();
    ~CDbMarkerDrawing();
    CDbMarkerDrawing(const CDbMarkerDrawing &) = delete;
    CDbMarkerDrawing &operator=(const CDbMarkerDrawing &) = delete;

    QString filePath;          ///< full path of the marker file; empty for one never saved
    short currentFabric = 1;   ///< 1-based index of the fabric that is current in the host
    bool zentrimActif = false; ///< this drawing is the one optimised in the Zentrim view
    std::vector<CDbStyleObject *> stylesList;

    /// The marker's name without extension; "Untitled" before it is saved.
    QString drawingName() const;

    const SummaryInfo &summaryInfo() const { return m_summary; }
    void setSummaryInfo(const SummaryInfo &summary) { m_summary = summary; }

    int getFabricsQty() const { return m_fabrics.size(); }
    CDbFabricsObjectTable &getFabricsTable() { return m_fabrics; }
    const CDbFabricsObjectTable &getFabricsTable() const { return m_fabrics; }
    /// By 0-based index; null when it does not exist.
    CDbFabricObject *getFabric(short index) const;

    CDbLayerObjectTable &getLayerObjectTable() { return m_layers; }
    const CDbLayerObjectTable &getLayerObjectTable() const { return m_layers; }
    int getLayersQty(short *error) const;
    /// Whether the marker is set to one layer; `layer`, when not null, receives its 1-based number,
    /// or 0.
    bool isSetToSingleLayer(short *error, short *layer) const;
    /// 0 sets the marker to all of its layers.
    void setSingleLayer(short layer) { m_singleLayer = layer; }

    /// By 0-based index; null when it does not exist.
    CDbStyleObject *getStyle(short index) const;
    /// The size table of a 0-based style on a 1-based fabric, owned by the style. Past either end:
    /// null and k_error_index.
    CDbStyleSizeObjectTable *findSizesList(short style, short fabric, short *error) const;
    /// The contour of a piece in a 1-based size, owned by the piece; `isCurved`, when not null,
    /// tells whether it has curves. Errors: k_error_missing for a null piece, k_error_index for a
    /// size past the end; the contour is null then.
    void getPieceSizeContourList(const CDbPieceObject *piece, short size, short *error,
        const CDbVectorsObjectTable **contour, bool *isCurved) const;
    /// The links between pieces of a 1-based style on a 1-based fabric, an empty table for none and
    /// past the end. Owned by the drawing.
    void getLinksListOfPiecesInFabricStyle(
        short fabric, short style, CDbTwainLinkPiecesObjectTable **links) const;
    /// Garments in a 1-based layer of all the styles that have pieces on the fabric.
    qint64 garmentsInLayer(const CDbFabricObject *fabric, short layer) const;

    /// Total length in cm that the layers of the fabric occupy when they are laid one behind the
    /// other, with the plot options' space between two of them. `onlySingleLayer`: that of the
    /// layer alone that the marker is set to, if it is set to one. Null pointers are passed over.
    void calculateTheLengthOccupiedTheLayers(
        const CDbFabricObject *fabric, bool onlySingleLayer, double *length) const;
    /// The layers of the fabric that hold something, in their order, one behind the other.
    std::vector<LaidLayer> laidLayers(const CDbFabricObject *fabric) const;

    CDbLayerObject *addLayer(const QString &name);
    CDbFabricObject *addFabric(const QString &name);
    CDbStyleObject *addStyle(
        const QString &name, const QString &sourceFile, std::vector<StyleSize> sizes);

private:
    SummaryInfo m_summary;
    short m_singleLayer = 0;
    CDbLayerObjectTable m_layers;
    CDbFabricsObjectTable m_fabrics;
    std::vector<std::unique_ptr<CDbLayerObject>> m_ownedLayers;
    std::vector<std::unique_ptr<CDbFabricObject>> m_ownedFabrics;
    std::vector<std::unique_ptr<CDbStyleObject>> m_ownedStyles;
};

} // namespace KivSystem

#endif
