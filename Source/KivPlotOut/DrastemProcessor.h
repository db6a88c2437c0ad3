// NC::DrastemProcessor: cut files for Drastem cutters, with the configuration and the panel of the
// format "Cut File ANSI". No entry of the format table leads to it.

#ifndef KIVPLOTOUT_DRASTEMPROCESSOR_H
#define KIVPLOTOUT_DRASTEMPROCESSOR_H

#include "CutProcessor.h"

#include <QScopedPointer>

namespace KivSystem {
namespace NC {

class ANSIOptionsWidget;

class DrastemProcessor : public CutProcessor
{
public:
    DrastemProcessor();
    ~DrastemProcessor() override;

    /// The panel, owned by the processor; never null.
    QWidget *optionsPanel() override;
    bool applyOptionChanges() override;

protected:
    const SvgOptions &getSvgOpt(const DocumentMak &doc) override;

private:
    QScopedPointer<ANSIOptionsWidget> optionsWidget;
};

} // namespace NC
} // namespace KivSystem

#endif
