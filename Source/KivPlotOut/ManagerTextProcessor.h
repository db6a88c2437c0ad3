// NC::ManagerTextProcessor: the format "KIV System Manager (txt)", the text file with all fields
// and the default separators. It asks nothing and stored options have no influence on it.

#ifndef KIVPLOTOUT_MANAGERTEXTPROCESSOR_H
#define KIVPLOTOUT_MANAGERTEXTPROCESSOR_H

#include "Processor.h"

namespace KivSystem {
namespace NC {

class ManagerTextProcessor : public Processor
{
public:
    /// Null: the format has no options.
    QWidget *optionsPanel() override;
    /// Always true; nothing is stored.
    bool prepare(const DocumentMak &doc, short fabric) override;
    /// Writes the whole file. Throws AssertionError.
    bool buildDocument(const DocumentMak &doc, QIODevice *device) override;
};

} // namespace NC
} // namespace KivSystem

#endif
