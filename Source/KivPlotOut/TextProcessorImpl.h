// NC::TextProcessorImpl: the format "Text File", the user's own report. Its panel chooses the
// separators, a dialog at the start of each export the fields; both are remembered.

#ifndef KIVPLOTOUT_TEXTPROCESSORIMPL_H
#define KIVPLOTOUT_TEXTPROCESSORIMPL_H

#include "Processor.h"

#include <QScopedPointer>

namespace KivSystem {

class TextExportOptionsWidget;

namespace NC {

class TextProcessorImpl : public Processor
{
public:
    /// The panel begins with the stored separators.
    TextProcessorImpl();
    /// Stores the separators of the panel, whether or not anything was exported.
    ~TextProcessorImpl() override;

    /// The panel, owned by the processor; never null.
    QWidget *optionsPanel() override;
    /// Asks for the fields and stores them; false when the dialog is cancelled, with nothing
    /// stored.
    bool prepare(const DocumentMak &doc, short fabric) override;
    /// Writes the whole file with the stored fields and the panel's separators. Throws
    /// AssertionError.
    bool buildDocument(const DocumentMak &doc, QIODevice *device) override;

private:
    QScopedPointer<TextExportOptionsWidget> m_optionsWidget;
};

} // namespace NC
} // namespace KivSystem

#endif
