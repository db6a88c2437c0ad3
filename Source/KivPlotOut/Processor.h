// Processor: the base of every export format. The driver (MarkerExporter) owns the conversation
// with the user and the files and reaches a format through these operations alone; the base gives
// the behaviour of a format that needs nothing.

#ifndef KIVPLOTOUT_PROCESSOR_H
#define KIVPLOTOUT_PROCESSOR_H

#include <QtGlobal>

class QIODevice;
class QString;
class QWidget;

namespace KivSystem {

class DocumentMak;

/// The order of the virtual operations is part of the interface. Main thread only.
class Processor
{
public:
    Processor();
    Processor(const Processor &) = delete;
    Processor &operator=(const Processor &) = delete;
    virtual ~Processor();

    /// The format's options, owned by the processor; null when it has none.
    virtual QWidget *optionsPanel() = 0;

    /// Runs before every output. `fabric` is 1-based; 0 asks for the whole document. False means
    /// that nothing is to be written. The base refuses a fabric whose status is not 1 and one
    /// without anything placed. A fabric past the end is an error of the program and ends it.
    virtual bool prepare(const DocumentMak &doc, short fabric);

    virtual void setIndexTiss(short fabric);

    /// Runs once at the start of an export; false ends it.
    virtual bool initProcessing(QIODevice *device, const QString &filter);

    /// Writes the output into the open device. The driver does not look at the result.
    virtual bool buildDocument(const DocumentMak &doc, QIODevice *device) = 0;

    /// True asks the user before polygons are exported that are not optimised.
    virtual bool checkPolygonOptimization();

    /// True means one run and one file for each fabric.
    virtual bool isNeedSelectFabirc();

    /// Asked after each file of a fabric; true means that there is one more to write.
    virtual bool exportMoreFiles();

    /// The file name to propose for the 1-based `fabric`, which has passed prepare().
    virtual QString generateFileName(const DocumentMak &doc, short fabric);

protected:
    /// The 1-based fabric of this run; 0 for the whole document, -1 before the first prepare().
    qint32 indexTiss = -1;
};

} // namespace KivSystem

#endif
