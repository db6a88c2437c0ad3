// ZentrimView: the fabric as it will be cut. The scene shows the cut documents that an ANSI cutter
// gets; the hold makes a drawing count as optimised while its Zentrim view is shown.
#ifndef KIVHOST_ZENTRIMVIEW_H
#define KIVHOST_ZENTRIMVIEW_H

#include <QGraphicsScene>
#include <QStringList>

#include <functional>
#include <vector>

class QDomDocument;
class QDomElement;
class QPainterPath;

namespace KivSystem {

class CDbMarkerDrawing;
class DocumentMak;
struct CutStatistics;
struct SceneOptions;

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

/// Outlines, notches, internal lines, holes, pen texts, waste cuts, the number that each object has
/// in its file, and the ways with the tool up, dashed: from a ring at the origin, the first with
/// an arrow, to a square. Centimetres, y upward.
class ZentrimScene : public QGraphicsScene
{
    Q_OBJECT

public:
    /// Makes the documents of a 1-based fabric with the settings and flags of this moment.
    ZentrimScene(const DocumentMak &document, short fabric, const SceneOptions &options,
        QObject *parent = nullptr);
    ~ZentrimScene() override;

    /// Hides texts, and notches and holes. Colours are not for this scene.
    void setOptions(const SceneOptions &options);

    int objectCount() const { return m_objects; } ///< of which something is cut
    bool isRefused() const { return m_refused; }
    /// What was refused or left out; why the scene shows nothing.
    QStringList messages() const { return m_messages; }
    /// Cut and idle length, plunges and the like, in the user's unit.
    QString summary() const { return m_summary; }

private:
    struct Number;
    struct ObjectCuts;

    static ObjectCuts cutsOf(const QDomElement &object);
    void addCloth(const CDbMarkerDrawing &drawing, short fabric);
    void addDocument(const QDomDocument &document, CutStatistics &sum);
    void addObject(const QDomElement &object, int position);
    void addNumber(const ObjectCuts &cuts, int position);
    void showNumbers();
    static void makeWay(
        Number &number, const std::function<bool(const QRectF &, bool offOthers)> &isFree);
    void addHoles(const QPainterPath &holes);
    void addTexts(const QDomElement &object);
    void addOthers(const QDomElement &root);
    void addWay(const QDomDocument &document, CutStatistics &sum);
    QGraphicsItem *addSign(const QPainterPath &shape, const QPointF &place, const QColor &color);
    void summarise(const CutStatistics &sum);

    std::vector<Number> m_numbers;          // until they are shown
    std::vector<QGraphicsItem *> m_texts;   // the scene's, like those of the next
    std::vector<QGraphicsItem *> m_details; // notches and holes
    QRectF m_extent;                        // of cloth and outlines
    int m_objects = 0;
    bool m_refused = false;
    QStringList m_messages;
    QString m_summary;
};

} // namespace KivSystem

#endif
