// ZentrimView: the fabric as it will be cut. The scene shows the cut documents that an ANSI cutter
// gets; the hold makes a drawing count as optimised while its Zentrim view is shown.
#ifndef KIVHOST_ZENTRIMVIEW_H
#define KIVHOST_ZENTRIMVIEW_H

#include <QGraphicsScene>
#include <QStringList>

class QDomDocument;
class QDomElement;
class QPainterPath;

namespace KivSystem {

class CDbMarkerDrawing;
class DocumentMak;

/// While it lives the drawing counts as optimised, and it goes back to what it was. The host's
/// Zentrim view is active as long as any hold lives.
class ZentrimHold
{
public:
    /// The drawing is borrowed and outlives the hold.
    explicit ZentrimHold(CDbMarkerDrawing &drawing);
    ~ZentrimHold();
    ZentrimHold(const ZentrimHold &) = delete;
    ZentrimHold &operator=(const ZentrimHold &) = delete;

private:
    CDbMarkerDrawing &m_drawing;
    bool m_wasOptimised;
};

/// Outlines, notches, internal lines, holes, pen texts, waste cuts, the number of each object in
/// cutting order, and the way from one to the next, dashed. Centimetres, y upward.
class ZentrimScene : public QGraphicsScene
{
    Q_OBJECT

public:
    /// Makes the documents of a 1-based fabric with the settings and flags of this moment.
    ZentrimScene(const DocumentMak &document, short fabric, QObject *parent = nullptr);

    int objectCount() const { return m_objects; }
    bool isRefused() const { return m_refused; }
    /// What was refused or left out; why the scene shows nothing.
    QStringList messages() const { return m_messages; }
    /// Cut and idle length and plunges, in the user's unit.
    QString summary() const { return m_summary; }

private:
    struct Way;

    void addCloth(const CDbMarkerDrawing &drawing, short fabric);
    void addDocument(const QDomDocument &document);
    void addObject(const QDomElement &object, Way &way);
    void addTexts(const QDomElement &object);
    void addOthers(const QDomElement &root, QPainterPath &holes);
    void measure(const QVector<QDomDocument> &documents);

    QRectF m_extent; // of cloth and outlines
    int m_objects = 0;
    bool m_refused = false;
    QStringList m_messages;
    QString m_summary;
};

} // namespace KivSystem

#endif
