// PieceList: the pieces of a fabric beside its drawing, in two tabs: what is placed, and what is
// still to be placed, with those in stand-by.
#ifndef KIVHOST_PIECELIST_H
#define KIVHOST_PIECELIST_H

#include <QWidget>

#include <vector>

class QLineEdit;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;
class ColumnStore;
class MarkerScene;
struct ScenePiece;

class PieceList : public QWidget
{
    Q_OBJECT

public:
    enum Column
    {
        PieceColumn,
        SizeColumn,
        SideColumn,
        LayerColumn,
        QuantityColumn, ///< to place: how many
        StyleColumn,
    };

    explicit PieceList(QWidget *parent = nullptr);

    /// Lists the pieces of the scene and what the fabric's chart still holds.
    void fill(
        const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric, const MarkerScene &scene);
    void clear();
    /// Takes the colours of the scene over.
    void showColours(const MarkerScene &scene);

    /// Selects rows by positions in MarkerScene::pieces(), without emitting piecesSelected(); not
    /// while that is emitted.
    void selectPieces(const std::vector<int> &positions);
    std::vector<int> selectedPieces() const;

    void findPiece(); ///< puts the cursor into the field that filters

    QTreeWidget *placedTree() const { return m_placed; }
    QTreeWidget *toPlaceTree() const { return m_toPlace; }

signals:
    /// The user has selected rows.
    void piecesSelected(const std::vector<int> &positions);
    /// The user wants to see the piece.
    void pieceActivated(int position);

private:
    QTreeWidget *makeTree(const char *name, const char *tip);
    void showCounts();
    void addRow(QTreeWidget &tree, const ScenePiece &piece, int position, const QString &layer);
    void addChartRows(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric);
    void noteSelection(const QTreeWidget &tree);
    void filter(const QString &words);

    QLineEdit *m_filter;
    QTabWidget *m_tabs;
    QTreeWidget *m_placed;
    QTreeWidget *m_toPlace;
    ColumnStore *m_placedColumns;
    ColumnStore *m_toPlaceColumns;
    std::vector<QTreeWidgetItem *> m_rows; // by position; owned by the trees
    int m_standBy = 0;
    int m_inChart = 0;
    bool m_selecting = false;
};

} // namespace KivSystem

#endif
