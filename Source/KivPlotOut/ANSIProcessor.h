// NC::ANSIProcessor: the format "Cut File ANSI".

#ifndef KIVPLOTOUT_ANSIPROCESSOR_H
#define KIVPLOTOUT_ANSIPROCESSOR_H

#include "CutProcessor.h"

#include <QScopedPointer>

namespace KivSystem {
namespace NC {

class ANSIOptionsWidget;

class ANSIProcessor : public CutProcessor
{
public:
    ANSIProcessor();
    ~ANSIProcessor() override;

    /// The panel, owned by the processor; never null.
    QWidget *optionsPanel() override;
    bool applyOptionChanges() override;

protected:
    const SvgOptions &getSvgOpt(const DocumentMak &doc) override;
    /// By the settings of the notches command, of the notch order and of cutting edge cutters.
    QString getNotchLineTo0(const QDomElement &notchConfig) override;

private:
    QScopedPointer<ANSIOptionsWidget> optionsWidget;
};

} // namespace NC
} // namespace KivSystem

#endif
