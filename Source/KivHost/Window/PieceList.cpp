#include "PieceList.h"

#include "ColumnStore.h"
#include "KivMarker/Drawing.h"
#include "MarkerFacts.h"
#include "MarkerScene.h"
#include "TypeAhead.h"
#include "WindowText.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace KivSystem {

namespace {

constexpr int kPositionRole = Qt::UserRole;
constexpr int kNoPosition = -1;
constexpr int kIconSize = 12;

// Numbers in a column stand in the order of their values.
class Row : public QTreeWidgetItem
{
public:
    using QTreeWidgetItem::QTreeWidgetItem;

    bool operator<(const QTreeWidgetItem &other) const override
    {
        const int column = treeWidget()->sortColumn();
        bool isNumber = false;
        bool isOtherNumber = false;
        const double mine = text(column).toDouble(&isNumber);
        const double others = other.text(column).toDouble(&isOtherNumber);
        return isNumber && isOtherNumber
                   ? mine < others
                   : QString::localeAwareCompare(text(column), other.text(column)) < 0;
    }
};

int positionOf(const QTreeWidgetItem &row)
{
    return row.data(0, kPositionRole).toInt();
}

QIcon colourIcon(const QColor &color)
{
    QPixmap pixmap(kIconSize, kIconSize);
    pixmap.fill(color);
    QPainter painter(&pixmap);
    painter.setPen(color.darker(150));
    painter.drawRect(0, 0, kIconSize - 1, kIconSize - 1);
    return QIcon(pixmap);
}

} // namespace

PieceList::PieceList(QWidget *parent)
    : QWidget(parent)
    , m_filter(new QLineEdit(this))
    , m_tabs(new QTabWidget(this))
    , m_placed(makeTree("placed", "The pieces on the fabric; select some to see them there"))
    , m_toPlace(makeTree("toPlace", "Pieces in stand-by, and what the chart still holds"))
    , m_placedColumns(new ColumnStore(*m_placed, QStringLiteral("window/placed")))
    , m_toPlaceColumns(new ColumnStore(*m_toPlace, QStringLiteral("window/to_place")))
{
    m_filter->setPlaceholderText(windowText("Find piece, size or style"));
    m_filter->setToolTip(windowText("Lists the pieces alone that have all of these words"));
    m_filter->setAccessibleName(windowText("Find piece"));
    m_filter->setClearButtonEnabled(true);
    leaveControlKeys(*m_filter);
    m_tabs->addTab(m_placed, QString());
    m_tabs->addTab(m_toPlace, QString());
    m_tabs->setDocumentMode(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_filter);
    layout->addWidget(m_tabs);
    connect(
        m_filter, &QLineEdit::textChanged, this, [this](const QString &words) { filter(words); });
}

QTreeWidget *PieceList::makeTree(const char *name, const char *tip)
{
    auto *tree = new QTreeWidget(this);
    tree->setObjectName(QString::fromLatin1(name));
    tree->setToolTip(windowText(tip));
    tree->setHeaderLabels({windowText("Piece"), windowText("Size"), windowText("Side"),
        windowText("Layer"), windowText("Quantity"), windowText("Style")});
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    tree->setAllColumnsShowFocus(true);
    tree->setAlternatingRowColors(true);
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tree->setFrameShape(QFrame::NoFrame);
    keepTypedLetters(*tree);
    connect(tree, &QTreeWidget::itemSelectionChanged, this, [this, tree] { noteSelection(*tree); });
    connect(tree, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *row) {
        if (positionOf(*row) != kNoPosition) {
            emit pieceActivated(positionOf(*row));
        }
    });
    return tree;
}

// What is selected in the other list goes, unless the user adds to it. The drawing answers with the
// selection that it has got, which knows nothing of rows without a piece.
void PieceList::noteSelection(const QTreeWidget &tree)
{
    if (m_selecting) {
        return;
    }
    m_selecting = true;
    if (!QApplication::keyboardModifiers().testFlag(Qt::ControlModifier)) {
        (&tree == m_placed ? m_toPlace : m_placed)->clearSelection();
    }
    emit piecesSelected(selectedPieces());
    m_selecting = false;
}

void PieceList::clear()
{
    const QSignalBlocker placedBlocker(m_placed);
    const QSignalBlocker toPlaceBlocker(m_toPlace);
    m_placed->clear();
    m_toPlace->clear();
    m_rows.clear();
    m_standBy = 0;
    m_inChart = 0;
    showCounts();
}

void PieceList::fill(
    const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric, const MarkerScene &scene)
{
    clear();
    const QSignalBlocker placedBlocker(m_placed);
    const QSignalBlocker toPlaceBlocker(m_toPlace);
    for (QTreeWidget *tree : {m_placed, m_toPlace}) {
        tree->setSortingEnabled(false);
    }
    const std::vector<ScenePiece> &pieces = scene.pieces();
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const QString layer = drawing.getLayerObjectTable()[pieces[i].layer - 1]->layerName;
        addRow(pieces[i].standBy ? *m_toPlace : *m_placed, pieces[i], static_cast<int>(i), layer);
    }
    m_standBy = m_toPlace->topLevelItemCount();
    addChartRows(drawing, fabric);
    showColours(scene);
    for (QTreeWidget *tree : {m_placed, m_toPlace}) {
        tree->setSortingEnabled(true); // by the column that the header shows
    }
    m_placedColumns->arrange(fabric.layerCount() < 2 ? std::set<int>{QuantityColumn, LayerColumn}
                                                     : std::set<int>{QuantityColumn});
    m_toPlaceColumns->arrange({});
    showCounts();
    filter(m_filter->text());
}

void PieceList::showCounts()
{
    m_tabs->setTabText(0, windowText("&Placed (%1)").arg(m_placed->topLevelItemCount()));
    m_tabs->setTabText(1, windowText("&To place (%1)").arg(m_standBy + m_inChart));
}

void PieceList::addRow(
    QTreeWidget &tree, const ScenePiece &piece, int position, const QString &layer)
{
    auto *row = new Row(&tree);
    row->setText(PieceColumn, piece.name);
    row->setText(SizeColumn, piece.size);
    row->setText(SideColumn, piece.side);
    row->setText(LayerColumn, piece.standBy ? windowText("%1 (stand-by)").arg(layer) : layer);
    row->setText(QuantityColumn, QStringLiteral("1"));
    row->setText(StyleColumn, piece.style);
    row->setData(0, kPositionRole, position);
    m_rows.push_back(row);
}

void PieceList::addChartRows(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
{
    for (const CDbPieceObject *piece = fabric.firstPiece(); piece; piece = piece->getNextPiece()) {
        const CDbStyleObject *style = drawing.getStyle(static_cast<short>(piece->getStyleNo() - 1));
        for (const auto &ordered : piece->orderedQuantities()) {
            const ChartKey &key = ordered.first;
            const short left = piece->getQtyPieceSizeLayer(key.size, key.left, key.layer);
            if (left == 0) {
                continue;
            }
            m_inChart += left;
            auto *row = new Row(m_toPlace);
            row->setText(PieceColumn, piece->getName());
            row->setText(SizeColumn, sizeText(style, piece->getPieceSize(key.size).sizeNumber));
            row->setText(SideColumn, sideText(piece, key.left));
            row->setText(LayerColumn, drawing.getLayerObjectTable()[key.layer - 1]->layerName);
            row->setText(QuantityColumn, QString::number(left));
            row->setText(StyleColumn, style ? style->getStyleName() : QString());
            row->setData(0, kPositionRole, kNoPosition);
        }
    }
}

void PieceList::showColours(const MarkerScene &scene)
{
    std::vector<std::pair<QRgb, QIcon>> icons;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const QColor color = scene.pieces()[i].item->fill();
        auto found = std::find_if(icons.begin(), icons.end(),
            [&color](const auto &entry) { return entry.first == color.rgb(); });
        if (found == icons.end()) {
            found = icons.insert(icons.end(), {color.rgb(), colourIcon(color)});
        }
        m_rows[i]->setIcon(PieceColumn, found->second);
    }
}

void PieceList::selectPieces(const std::vector<int> &positions)
{
    if (m_selecting) {
        return;
    }
    m_selecting = true;
    m_placed->clearSelection();
    m_toPlace->clearSelection();
    QTreeWidgetItem *first = nullptr;
    for (const int position : positions) {
        QTreeWidgetItem *row = m_rows.at(static_cast<std::size_t>(position));
        row->setSelected(true);
        first = first != nullptr ? first : row;
    }
    if (first != nullptr) {
        m_tabs->setCurrentWidget(first->treeWidget());
        first->treeWidget()->scrollToItem(first);
    }
    m_selecting = false;
}

std::vector<int> PieceList::selectedPieces() const
{
    std::vector<int> positions;
    for (const QTreeWidget *tree : {m_placed, m_toPlace}) {
        for (const QTreeWidgetItem *row : tree->selectedItems()) {
            if (positionOf(*row) != kNoPosition) {
                positions.push_back(positionOf(*row));
            }
        }
    }
    std::sort(positions.begin(), positions.end());
    return positions;
}

void PieceList::findPiece()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void PieceList::filter(const QString &words)
{
    const QStringList parts = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (QTreeWidget *tree : {m_placed, m_toPlace}) {
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            QTreeWidgetItem *row = tree->topLevelItem(i);
            const QString text = QStringList{row->text(PieceColumn), row->text(SizeColumn),
                row->text(SideColumn), row->text(LayerColumn), row->text(StyleColumn)}
                                     .join(QLatin1Char('\n'));
            row->setHidden(!std::all_of(parts.begin(), parts.end(),
                [&text](const QString &part) { return text.contains(part, Qt::CaseInsensitive); }));
        }
    }
}

} // namespace KivSystem
