// NC::LabelProcessor: the format "Cut Labels", the label of every piece of a fabric, one to a line,
// for a label printer:
//
//     Back M A BASIC TEE
//     Front M A BASIC TEE

#ifndef KIVPLOTOUT_LABELPROCESSOR_H
#define KIVPLOTOUT_LABELPROCESSOR_H

#include "Processor.h"

#include <QDomDocument>
#include <QVector>

namespace KivSystem {
namespace NC {

class LabelProcessor : public Processor
{
public:
    LabelProcessor();
    ~LabelProcessor() override;

    /// Null: there is nothing to choose.
    QWidget *optionsPanel() override;
    /// Asks the marker for the documents of a fabric; false when there are none.
    bool prepare(const DocumentMak &doc, short fabricIndex) override;
    /// Writes the current document; false, with nothing written, when there is none.
    bool buildDocument(const DocumentMak &doc, QIODevice *device) override;
    bool isNeedSelectFabirc() override;
    /// Goes on to the next document of the fabric; false after the last.
    bool exportMoreFiles() override;

private:
    QVector<QDomDocument> documents; ///< of the fabric that was prepared
    int currentDocument = 0;         ///< 0-based
};

} // namespace NC
} // namespace KivSystem

#endif
