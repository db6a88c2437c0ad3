// MarkerChild: the window of one marker. It shows one fabric at a time, as it is laid or, as the
// Zentrim view, as it will be cut.
#ifndef KIVHOST_MARKERCHILD_H
#define KIVHOST_MARKERCHILD_H

#include "KivCore/MainWindow.h"
#include "MarkerItems.h"

#include <QString>

#include <memory>
#include <vector>

class QComboBox;
class QLabel;
class QSplitter;

namespace KivSystem {

class DocumentMak;
class MarkerScene;
class MarkerView;
class PieceList;
class ZentrimHold;
class ZentrimScene;

class MarkerChild : public MdiChild
{
    Q_OBJECT

public:
    /// Takes the document over; it has a drawing.
    MarkerChild(std::unique_ptr<DocumentMak> document, const SceneOptions &options);
    ~MarkerChild() override;

    /// Shows another state of the marker, such as its file holds it now: fabric, view, place and
    /// selection stay as far as they can. Takes the document over; it has a drawing. The one of
    /// before goes.
    void setDocument(std::unique_ptr<DocumentMak> document);
    const DocumentMak &document() const { return *m_document; }
    QString path() const; ///< of the marker file, absolute

    short fabric() const { return m_fabric; } ///< 1-based
    /// A number that the marker does not have is passed over.
    void showFabric(short fabric);

    bool isZentrimView() const { return m_isZentrim; }
    /// While a child shows its Zentrim view, its drawing counts as optimised.
    void setZentrimView(bool on);

    void setOptions(const SceneOptions &options);
    void showPieceList(bool shown);
    /// Shows everything again after the settings have changed.
    void refresh();
    void selectAll(bool selected);
    void fitSelection();
    void findPiece();

    MarkerView *view() const { return m_view; }
    MarkerScene *scene() const { return m_scenes.marker.get(); }
    PieceList *pieceList() const { return m_list; }
    QComboBox *fabricBox() const { return m_fabrics; }
    QString statusText() const;

signals:
    void zentrimViewChanged(bool on);

protected:
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Scenes
    {
        std::unique_ptr<MarkerScene> marker; // null for a marker without a fabric
        std::unique_ptr<ZentrimScene> zentrim;
    };

    QWidget *makeHeader();
    QWidget *makeDrawing();
    QWidget *makeStatusLine();
    void listFabrics();
    Scenes makeScenes(const DocumentMak &document, short fabric) const;
    void showScenes(Scenes scenes);
    void keepSelection(const Scenes &scenes) const;
    void listPieces();
    void showStatus();
    QString layersText() const;
    QRectF selectionRect() const;

    std::unique_ptr<DocumentMak> m_document;
    SceneOptions m_options;
    short m_fabric = 1;
    bool m_isZentrim = false;
    bool m_hasList = true;
    std::unique_ptr<ZentrimHold> m_hold;
    Scenes m_scenes;
    MarkerView *m_view = nullptr;
    PieceList *m_list = nullptr;
    QSplitter *m_splitter = nullptr;
    QComboBox *m_fabrics = nullptr;
    QLabel *m_mode = nullptr;
    QLabel *m_messages = nullptr;
    QLabel *m_status = nullptr;
    QLabel *m_mouse = nullptr;
};

} // namespace KivSystem

#endif
