// DxfNester::DXFNESTERProcessor: the format "DXF-NESTER", the pieces of the current fabric that are
// still to be placed, for a nesting program.

#ifndef KIVPLOTOUT_DXFNESTERPROCESSOR_H
#define KIVPLOTOUT_DXFNESTERPROCESSOR_H

#include "Processor.h"

namespace KivSystem {
namespace DxfNester {

class DXFNESTERProcessor : public Processor
{
public:
    DXFNESTERProcessor();
    ~DXFNESTERProcessor() override;

    /// Null: there is nothing to choose.
    QWidget *optionsPanel() override;
    /// Refuses a marker with a warning when two pieces of the current fabric have the same name,
    /// letter for letter: blocks are named after them. One that is not set to a single layer is
    /// not looked at. The fabric asked for does not matter.
    bool prepare(const DocumentMak &document, short fabric) override;
    /// Writes the current fabric in the one layer that the marker is set to. Throws AssertionError
    /// when the marker cannot give what is needed.
    bool buildDocument(const DocumentMak &document, QIODevice *device) override;
    /// True; nothing is asked.
    virtual bool prompt();
};

} // namespace DxfNester
} // namespace KivSystem

#endif
