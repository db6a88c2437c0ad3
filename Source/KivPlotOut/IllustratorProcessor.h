// KivIllustrator::IllustratorProcessor: the format "Illustrator(TM)", a drawing of each fabric in a
// file of its own.

#ifndef KIVPLOTOUT_ILLUSTRATORPROCESSOR_H
#define KIVPLOTOUT_ILLUSTRATORPROCESSOR_H

#include "Processor.h"

#include <QScopedPointer>

namespace KivSystem {
namespace KivIllustrator {

class IllustratorExportOptionsWidget;

/// The order of the virtual operations is part of the interface.
class IllustratorProcessor : public Processor
{
public:
    IllustratorProcessor();
    ~IllustratorProcessor() override;

    /// The panel, owned by the processor; never null.
    QWidget *optionsPanel() override;
    /// False for the whole document, for a fabric whose status is not 1 and for one on which
    /// nothing lies. Throws AssertionError for a fabric past the end.
    bool prepare(const DocumentMak &doc, short fabric) override;
    /// Writes the fabric that was prepared, in the scale that the panel shows now. False, with
    /// nothing written, before a fabric was prepared. Switches the device to text mode.
    bool buildDocument(const DocumentMak &doc, QIODevice *device) override;
    bool isNeedSelectFabirc() override;

    virtual bool canExport(const DocumentMak &doc) const;
    virtual bool prompt();

private:
    QScopedPointer<IllustratorExportOptionsWidget> optionsWidget;
};

} // namespace KivIllustrator
} // namespace KivSystem

#endif
