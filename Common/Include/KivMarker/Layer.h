/// The layers of a marker. A marker has one table of layers; each fabric has contents of its own
/// for each of them.

#ifndef KIVMARKER_LAYER_H
#define KIVMARKER_LAYER_H

#include <QString>
#include <QVector>

namespace KivSystem {

class CDbFabricObject;

class CDbLayerObject
{
public:
    QString layerName;
    /// 1-based place among the layers when they are drawn side by side; 0 for the place that the
    /// layer has in the table. All layers of a marker have a rank, or none has.
    short layerRank = 0;
    bool layerUnused = false; ///< set aside: nothing lies in it, on any fabric
};

/// The marker's layers in their order; layer numbers count from 1, positions here from 0. The
/// objects belong to the drawing.
class CDbLayerObjectTable : public QVector<CDbLayerObject *>
{
public:
    /// Whether anything is placed on the fabric, in any layer; stand-by groups do not count. A null
    /// fabric gives false and k_error_missing.
    bool isPlacementInTheFabric(const CDbFabricObject *fabric, short *error) const;

    /// The 1-based layer at a 1-based rank; 0 when there is none, and with `usedOnly` when the
    /// layer there is set aside.
    short getLayerIndexInGiveRank(short rank, bool usedOnly) const;
    /// The 1-based layer that is drawn last, with `usedOnly` of those that are not set aside; 0
    /// when there is none.
    short lastDefinesLayerIndex(bool usedOnly) const;

private:
    int rankAt(int position) const;
};

} // namespace KivSystem

#endif
