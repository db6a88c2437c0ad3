/// Styles, their sizes and how many garments of each size a marker makes.

#ifndef KIVMARKER_STYLE_H
#define KIVMARKER_STYLE_H

#include <QString>

#include <map>
#include <memory>
#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbPieceObject;
class CDbStyleObject;

/// One size of a style.
struct StyleSize
{
    short number = 0; ///< the size number by which pieces refer to it, unique in its style
    QString name;     ///< "S", "38"
    QString special;  ///< a second text, such as a length or a fitting; often empty
};

/// The sizes of one style on one fabric with their garment quantities. Owned by the style.
class CDbStyleSizeObjectTable
{
public:
    /// All quantities start at 0. The style and the fabric outlive the table.
    CDbStyleSizeObjectTable(const CDbStyleObject &style, const CDbFabricObject *fabric);

    /// Number of sizes in the table.
    short getNumberStyleSize() const;

    /// Number of garments of a size in a layer. `size` is the 1-based index of the piece's sizes;
    /// with a null piece it is the 1-based index of the table's own sizes. 0 for a fabric that is
    /// not the table's, for a layer or size past the end, and for a size that the style lacks.
    short quantityClothingBySize(
        const CDbFabricObject *fabric, short layer, const CDbPieceObject *piece, short size) const;

    /// Garments of all sizes in a 1-based layer.
    qint64 garmentsInLayer(short layer) const;

    /// Sets the quantity of the table's own 1-based `size` in the 1-based `layer`; false past the
    /// end, with nothing changed.
    bool setQuantity(short layer, short size, short quantity);

    /// The size with that number, null when there is none.
    const StyleSize *findByNumber(short number) const;

private:
    const CDbStyleObject *m_style;
    const CDbFabricObject *m_fabric;
    std::map<short, std::vector<short>> m_quantities; // by layer, then by size; none: all zero
};

class CDbStyleObject
{
public:
    CDbStyleObject(const QString &name, const QString &sourceFile, std::vector<StyleSize> sizes);

    QString getStyleName() const { return m_name; }
    /// Path of the file that the style came from; empty when it was made in the marker.
    QString getOriginalFileNameLinkInfo() const { return m_sourceFile; }

    /// The sizes in their order, the same on every fabric.
    const std::vector<StyleSize> &sizes() const { return m_sizes; }
    /// 0-based position of the size with that number; -1 when there is none.
    int sizePosition(short number) const;

    /// The size table of the style for a 1-based fabric, owned by the style. Past the end: null and
    /// k_error_index.
    CDbStyleSizeObjectTable *findStyleSizeObjectTable(short fabric, short *error) const;

    /// Adds the next fabric. The drawing calls it for each of its fabrics, in their order.
    void addFabric(const CDbFabricObject *fabric);

private:
    QString m_name;
    QString m_sourceFile;
    std::vector<StyleSize> m_sizes;
    std::map<short, int> m_positions; // of the sizes, by their numbers
    std::vector<const CDbFabricObject *> m_fabrics;
    // By fabric, made when they are first asked for: few styles are on many fabrics.
    mutable std::map<short, std::unique_ptr<CDbStyleSizeObjectTable>> m_tables;
};

} // namespace KivSystem

#endif
