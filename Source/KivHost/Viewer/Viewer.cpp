#include "Viewer.h"

#include "CutFileChild.h"
#include "PictureView.h"
#include "ViewedFile.h"
#include "Window/WindowText.h"

#include <QAbstractTableModel>
#include <QBoxLayout>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>
#include <QTableView>
#include <QTreeWidget>

namespace KivSystem {

namespace {

QString text(const char *english)
{
    return windowText(english);
}

std::unique_ptr<MdiChild> childWith(QWidget *content)
{
    auto child = std::make_unique<MdiChild>();
    auto *layout = new QVBoxLayout(child.get());
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(content, 1);
    child->setFocusProxy(content);
    return child;
}

std::unique_ptr<MdiChild> makeChild(const CutProgram &program)
{
    return std::make_unique<CutFileChild>(program);
}

std::unique_ptr<MdiChild> makeChild(const Picture &picture)
{
    return childWith(new PictureView(picture));
}

QTreeWidget *blockList(const NesterFile &file)
{
    auto *list = new QTreeWidget;
    list->setColumnCount(2);
    list->setHeaderLabels({text("Block"), text("Wanted")});
    list->setAccessibleName(text("Blocks"));
    list->setToolTip(text("Blocks with their keywords; one that is chosen is shown large"));
    auto *all = new QTreeWidgetItem(list, {text("All blocks"), QString()});
    for (const QString &keyword : file.keywords) {
        new QTreeWidgetItem(all, {keyword, QString()});
    }
    all->setExpanded(true);
    for (const NesterBlock &block : file.blocks) {
        auto *item = new QTreeWidgetItem(list, {block.name, QString::number(block.instances)});
        for (const QString &keyword : block.keywords) {
            new QTreeWidgetItem(item, {keyword, QString()});
        }
    }
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    return list;
}

std::unique_ptr<MdiChild> makeChild(const NesterFile &file)
{
    const Picture picture = pictureOf(file);
    std::vector<QRectF> areas;
    for (const PictureLayer &layer : picture.layers) {
        areas.push_back(Picture{{layer}}.bounds());
    }
    auto *view = new PictureView(picture);
    QTreeWidget *list = blockList(file);
    QObject::connect(list, &QTreeWidget::currentItemChanged, view, [=](QTreeWidgetItem *chosen) {
        if (chosen == nullptr) {
            return;
        }
        QTreeWidgetItem *block = chosen->parent() == nullptr ? chosen : chosen->parent();
        const int number = list->indexOfTopLevelItem(block) - 1; // behind that of all blocks
        view->show(number < 0 ? QRectF() : areas[static_cast<std::size_t>(number)]);
    });
    auto *splitter = new QSplitter;
    splitter->addWidget(list);
    splitter->addWidget(view);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({280, 640});
    std::unique_ptr<MdiChild> child = childWith(splitter);
    child->setFocusProxy(list);
    return child;
}

// The repeated values of a field, and its lines, in one line.
QString cellText(QString field)
{
    field.replace(QLatin1Char('\x1d'), QStringLiteral(" | "));
    field.replace(QLatin1Char('\x0b'), QLatin1Char(' '));
    return field;
}

// Holds no item for a field: reports are long, and one line may be much longer than the others.
class TableModel : public QAbstractTableModel
{
public:
    explicit TableModel(TableFile file, QObject *parent)
        : QAbstractTableModel(parent)
        , m_file(std::move(file))
    {}

    int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_file.rows.size());
    }
    int columnCount(const QModelIndex &parent) const override
    {
        return parent.isValid() ? 0 : m_file.columns;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        const QStringList &fields = m_file.rows[static_cast<std::size_t>(index.row())];
        const QString field = cellText(fields.value(index.column()));
        return role == Qt::DisplayRole   ? QVariant(field)
               : role == Qt::ToolTipRole ? QVariant(field.toHtmlEscaped())
                                         : QVariant();
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        return role == Qt::DisplayRole && orientation == Qt::Horizontal
                   ? QVariant(section)
                   : QAbstractTableModel::headerData(section, orientation, role);
    }

private:
    TableFile m_file;
};

std::unique_ptr<MdiChild> makeChild(const TableFile &file)
{
    constexpr int widest = 320;
    constexpr int mostMeasured = 200; // rows, and columns
    auto *table = new QTableView;
    table->setModel(new TableModel(file, table));
    table->setAlternatingRowColors(true);
    table->setTabKeyNavigation(false); // Tab leaves the table, the arrow keys move in it
    table->setAccessibleName(text("Fields"));
    table->setToolTip(text("A line of the file is a row; fields are numbered from 0"));
    table->horizontalHeader()->setMaximumSectionSize(widest);
    table->horizontalHeader()->setResizeContentsPrecision(mostMeasured);
    for (int column = 0; column < std::min(file.columns, mostMeasured); ++column) {
        table->resizeColumnToContents(column);
    }
    return childWith(table);
}

} // namespace

bool canView(const QString &path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) &&
           kindOf(file.read(4096), path) != FileKind::Unknown;
}

std::unique_ptr<MdiChild> makeViewer(const QString &path)
{
    std::unique_ptr<MdiChild> child =
        std::visit([](const auto &content) { return makeChild(content); }, readExportedFile(path));
    child->setWindowTitle(QFileInfo(path).fileName());
    return child;
}

} // namespace KivSystem
