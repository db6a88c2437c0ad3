// NC::EastmanProcessor: the format "Cut File Eastman". Numbers stand in columns, holes are made as
// the panel says, and the panel's scale is in the document already. With two decimals:
//
//     MOVE       1.00     2.00
//     HOLE      12.50    30.00     45.00
//     SLIT

#ifndef KIVPLOTOUT_EASTMANPROCESSOR_H
#define KIVPLOTOUT_EASTMANPROCESSOR_H

#include "CutProcessor.h"

#include <QScopedPointer>

namespace KivSystem {
namespace NC {

class EastmanOptionsWidget;

class EastmanProcessor : public CutProcessor
{
public:
    EastmanProcessor();
    ~EastmanProcessor() override;

    /// The panel, owned by the processor; never null. What it shows is what is exported.
    QWidget *optionsPanel() override;
    bool applyOptionChanges() override;

protected:
    const SvgOptions &getSvgOpt(const DocumentMak &doc) override;
    int getNotchOrder() override;
    int getInternalOrder() override;
    /// The number of decimals alone: there are no expressions and no synchronisation.
    void parseAttributes(const QDomElement &configRoot) override;
    void exportDrill(const QDomElement &object, const QDomElement &drillConfig) override;
    using CutProcessor::exportPoint;
    void exportPoint(const GeoPoint2D &point, const QString &format, bool wrap) override;
    QString parseItem(const QDomElement &data, QDomElement &item, int n) override;

private:
    const EastmanOptionsWidget &panel() const;

    QScopedPointer<EastmanOptionsWidget> optionsWidget;
};

} // namespace NC
} // namespace KivSystem

#endif
