#include "ColumnStore.h"

#include <QHeaderView>
#include <QSettings>
#include <QTreeWidget>

namespace KivSystem {

ColumnStore::ColumnStore(QTreeWidget &tree, const QString &key)
    : QObject(&tree)
    , m_tree(tree)
    , m_columnsKey(key + QStringLiteral("_columns"))
    , m_sortKey(key + QStringLiteral("_sorted_by"))
    , m_descendingKey(key + QStringLiteral("_descending"))
{
    restore();
    connect(tree.header(), &QHeaderView::sectionMoved, this, [this] { storeColumns(); });
    connect(tree.header(), &QHeaderView::sectionResized, this, [this](int column) {
        if (!isStretched(column)) {
            storeColumns();
        }
    });
    connect(tree.header(), &QHeaderView::sortIndicatorChanged, this,
        [this](int column, Qt::SortOrder order) {
            QSettings settings;
            settings.setValue(m_sortKey, column);
            settings.setValue(m_descendingKey, order == Qt::DescendingOrder);
        });
}

void ColumnStore::restore()
{
    const QSettings settings;
    QHeaderView &header = *m_tree.header();
    m_isChosen = header.restoreState(settings.value(m_columnsKey).toByteArray());
    const int sorted = settings.value(m_sortKey, 0).toInt();
    const bool isColumn = sorted >= 0 && sorted < header.count();
    header.setSortIndicator(isColumn ? sorted : 0,
        settings.value(m_descendingKey, false).toBool() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

// The last one that is seen follows the width of the tree by itself.
bool ColumnStore::isStretched(int column) const
{
    const QHeaderView &header = *m_tree.header();
    int last = header.count() - 1;
    while (last > 0 && header.isSectionHidden(header.logicalIndex(last))) {
        --last;
    }
    return header.stretchLastSection() && header.visualIndex(column) == last;
}

void ColumnStore::storeColumns()
{
    if (!m_isArranging) {
        m_isChosen = true;
        QSettings().setValue(m_columnsKey, m_tree.header()->saveState());
    }
}

void ColumnStore::arrange(const std::set<int> &hidden)
{
    m_isArranging = true;
    for (int column = 0; column < m_tree.columnCount(); ++column) {
        m_tree.setColumnHidden(column, hidden.count(column) > 0);
        if (!m_isChosen) {
            m_tree.resizeColumnToContents(column);
        }
    }
    m_isArranging = false;
}

} // namespace KivSystem
