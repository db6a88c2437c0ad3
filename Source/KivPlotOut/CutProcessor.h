// NC::CutProcessor: what the formats of the cutters share. A cut format is an interpreter: the
// marker library makes a document of what is to be cut, the configuration of the format
// (io/CutFileConfig below the plug-ins directory) holds the commands of the cutter, and both are
// walked side by side. All text of a file comes from the configuration but numbers, the file's
// name, labels and pen strokes. With the commands of a made-up cutter:
//
//     P1                 items of `begin`, before each piece
//     U10.0,20.0         `outline`: `pathto`, to the first point with the knife up
//     D30.0,20.0         `lineto0`, to the second point
//     L30.0,40.0         `lineto`, to each further point
//     END                items of `root`, the trailer
//
// A point with a coordinate of exactly -1 is no point: only the word of its command is written.

#ifndef KIVPLOTOUT_CUTPROCESSOR_H
#define KIVPLOTOUT_CUTPROCESSOR_H

#include "CutCommands.h"
#include "CutExpressions.h"
#include "Processor.h"

#include "KivGeo/Point2D.h"
#include "KivMarker/SvgOptions.h"

#include <QDomDocument>
#include <QDomElement>
#include <QString>
#include <QTextStream>
#include <QVector>

#include <memory>
#include <vector>

namespace KivSystem {

class FontTable;

namespace NC {

/// The order of the virtual operations is part of the interface.
class CutProcessor : public Processor
{
public:
    /// `configFile` is the configuration's name with a leading slash, as "/ANSI.xml".
    explicit CutProcessor(const char *configFile);
    ~CutProcessor() override;

    /// Null: the formats have panels of their own.
    QWidget *optionsPanel() override;
    /// Asks the marker for the documents of a fabric; false when there are none.
    bool prepare(const DocumentMak &doc, short fabricIndex) override;
    /// Writes the current document. False, with nothing written, when there is none and when the
    /// configuration cannot be read. The stream stays attached to the device, and is flushed.
    bool buildDocument(const DocumentMak &doc, QIODevice *device) override;
    bool checkPolygonOptimization() override;
    bool isNeedSelectFabirc() override;
    /// Goes on to the next document of the fabric; false after the last.
    bool exportMoreFiles() override;
    /// The fabric's name, with "Zent" in front or the number of the block behind it.
    QString generateFileName(const DocumentMak &doc, short fabricIndex) override;

    /// Takes the choices of the panel into the settings.
    virtual bool applyOptionChanges();

protected:
    /// What is asked of the marker. The drawing optimised in the Zentrim view makes the caller
    /// CallerZentrim for good.
    virtual const SvgOptions &getSvgOpt(const DocumentMak &doc);
    virtual int getNotchOrder();    ///< a NotchOrder
    virtual int getInternalOrder(); ///< a CutLine
    /// The format of the line to the second point of a notch.
    virtual QString getNotchLineTo0(const QDomElement &notchConfig);
    virtual void parseAttributes(const QDomElement &configRoot);

    virtual bool fileExport(const QDomDocument &svg);
    virtual void exportPolygones(const QDomElement &svgRoot, const QDomElement &configRoot);
    /// Holes outside the pieces, which are numbered from `n` on.
    virtual void exportExternalHole(const QDomElement &svgRoot, const QDomElement &drillConfig,
        const QDomElement &beginConfig, int &n);
    virtual void exportScrap(const QDomElement &scrap, const QDomElement &configRoot, int n);
    /// Writes the items of an element of the configuration. `n` is the piece's number, from 1.
    virtual void exportItems(const QDomElement &data, const QDomElement &config, int n);

    virtual void exportNotchs(const QDomElement &object, const QDomElement &config);
    virtual void exportOutline(const QDomElement &object, const QDomElement &config);
    virtual void exportDuringOutlines(const QDomElement &object, const QDomElement &notchConfig,
        const QDomElement &outlineConfig);
    /// Cuts an outline and, in its course, the notches from `notchPath` on; `notchPath` is left at
    /// the first path that is no notch. Without an outline the notches are cut by themselves.
    virtual void exportDuringOutline(const QDomElement &outlinePath, QDomElement &notchPath,
        const QDomElement &notchConfig, const QDomElement &outlineConfig);
    virtual void exportInternal(const QDomElement &object, const QDomElement &config);

    /// Draws `text` and its following siblings with the pen; `out` is empty afterwards.
    virtual void exportPieceInfo(const QDomElement &text, const QDomElement &item, QString &out);
    virtual void exportInfo(
        const QDomElement &text, const QDomElement &item, const QString &format);
    virtual void exportDrill(const QDomElement &object, const QDomElement &drillConfig);

    /// Writes one command, with a line end when `wrap` is set.
    virtual void exportPoint(const GeoPoint2D &point, const QString &format, bool wrap);
    /// The same with `lift` in front when the point is the next one that `liftIndexes` names.
    /// `pointIndex` counts the points, `liftIndex` the names that were met. Every point counts as
    /// one here, also a coordinate of -1.
    virtual void exportPoint(const GeoPoint2D &point, const QString &format, bool wrap,
        const QString &lift, const std::vector<int> &liftIndexes, int &pointIndex, int &liftIndex);
    /// Writes a line of two points or more, unless its first point is none.
    virtual void exportPoints(const std::vector<GeoPoint2D> &points, const QString &first,
        const QString &second, const QString &rest, bool wrap);
    /// The text of an item; what an item makes of many elements goes to the stream by itself.
    virtual QString parseItem(const QDomElement &data, QDomElement &item, int n);
    virtual QString formatPoint(
        const QString &format, const QString &x, const QString &y, const QString &third);
    /// The format of the line to the second point of an outline, by the object's velocity.
    virtual QString getOutlineTo0(const QDomElement &object, const QDomElement &outlineConfig);

    // For formats with columns: the two above with at least so many characters for a coordinate
    // and for a piece's number.
    void writePoint(const GeoPoint2D &point, const QString &format, bool wrap, int width);
    QString itemText(const QDomElement &data, const QDomElement &item, int n, int numberWidth);

    QString configFile;
    QVector<QDomDocument> documents; ///< of the fabric that was prepared
    int currentDocument = 0;         ///< 0-based
    QTextStream stream;
    SvgOptions svgOptions;
    QString xExpression; ///< applied to each x; empty for none
    QString yExpression;
    int precision = 0; ///< decimals
    QString synchro;   ///< written when the pen goes up; empty for none
    /// Null before the first pen text. It may outlive the processor.
    std::shared_ptr<FontTable> fontTable;

private:
    class DuringOutline;
    struct ObjectConfig;

    double scaledX(double x);
    double scaledY(double y);
    void exportObject(const QDomElement &object, const ObjectConfig &config, int n);
    QString choiceText(const QDomElement &data, const QDomElement &item, const QString &out);
    QString consoleText(const QDomElement &data, const QDomElement &item, const QString &out);
    void exportPenMoves(const QDomElement &data, const QDomElement &item, const QString &out);
    void exportMatchPoints(const QDomElement &data, const QString &format);

    CutExpression m_x; // what the texts above say, read
    CutExpression m_y;
    CutCommands m_commands;
};

} // namespace NC
} // namespace KivSystem

#endif
