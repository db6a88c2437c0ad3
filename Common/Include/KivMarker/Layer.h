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
};

/// The marker's layers in their order; layer numbers count from 1, positions here from 0. The
/// objects belong to the drawing.
class CDbLayerObjectTable : public QVector<CDbLayerObject *>
{
public:
    /// Whether anything is placed on the fabric, in any layer; stand-by groups do not count. A null
    /// fabric gives false and k_error_missing.
    bool isPlacementInTheFabric(const CDbFabricObject *fabric, short *error) const;
};

} // namespace KivSystem

#endif
