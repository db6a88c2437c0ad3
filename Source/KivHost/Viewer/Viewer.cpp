#include "Viewer.h"

#include "CutFileChild.h"
#include "PictureView.h"
#include "TableChild.h"
#include "ViewedFile.h"
#include "Window/TypeAhead.h"
#include "Window/WindowText.h"

#include <QBoxLayout>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QHelpEvent>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QToolTip>
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

std::unique_ptr<MdiChild> makeChild(const CutProgram &program, const QString &)
{
    return std::make_unique<CutFileChild>(program);
}

std::unique_ptr<MdiChild> makeChild(const Picture &picture, const QString &)
{
    return childWith(new PictureView(picture));
}

std::unique_ptr<MdiChild> makeChild(const TableFile &table, const QString &path)
{
    return std::make_unique<TableChild>(path, table);
}

// Texts that do not fit into their column are told in full.
class ElidedTexts : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
        const QModelIndex &index) override
    {
        if (event->type() == QEvent::ToolTip && index.isValid() &&
            sizeHint(option, index).width() > view->visualRect(index).width()) {
            QToolTip::showText(event->globalPos(), plainToolTip(index.data().toString()), view);
            return true;
        }
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
};

void addKeywords(QTreeWidgetItem *item, const QStringList &keywords)
{
    for (const QString &keyword : keywords) {
        auto *line = new QTreeWidgetItem(item, {keyword});
        line->setFirstColumnSpanned(true);
    }
}

QTreeWidget *blockList(const NesterFile &file)
{
    auto *list = new QTreeWidget;
    list->setColumnCount(2);
    list->setHeaderLabels({text("Block"), text("Wanted")});
    list->setAccessibleName(text("Blocks"));
    list->setToolTip(text("Blocks with their keywords; one that is chosen is shown large"));
    list->setItemDelegate(new ElidedTexts(list));
    keepTypedLetters(*list);
    auto *all = new QTreeWidgetItem(list, {text("All blocks"), QString()});
    addKeywords(all, file.keywords);
    all->setExpanded(true);
    for (const NesterBlock &block : file.blocks) {
        auto *item = new QTreeWidgetItem(list, {block.name, QString::number(block.instances)});
        addKeywords(item, block.keywords);
    }
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    return list;
}

std::unique_ptr<MdiChild> makeChild(const NesterFile &file, const QString &)
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

} // namespace

bool canView(const QString &path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) &&
           kindOf(file.read(4096), path) != FileKind::Unknown;
}

std::unique_ptr<MdiChild> makeViewer(const QString &path)
{
    std::unique_ptr<MdiChild> child = std::visit(
        [&path](const auto &content) { return makeChild(content, path); }, readExportedFile(path));
    child->setWindowTitle(QFileInfo(path).fileName());
    return child;
}

} // namespace KivSystem
