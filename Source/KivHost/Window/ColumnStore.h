// ColumnStore: keeps how the user has arranged the columns of a list, in QSettings.
#ifndef KIVHOST_COLUMNSTORE_H
#define KIVHOST_COLUMNSTORE_H

#include <QObject>
#include <QString>

#include <set>

class QTreeWidget;

namespace KivSystem {

/// Widths and order of the columns, and what the rows are sorted by. Lives as long as its tree.
class ColumnStore : public QObject
{
public:
    /// Restores what is stored under `key`; else the rows are sorted by the first column. The tree
    /// has its columns, and owns the store.
    ColumnStore(QTreeWidget &tree, const QString &key);

    /// Hides these columns and no others. As long as the user has chosen no widths, they are those
    /// of the rows.
    void arrange(const std::set<int> &hidden);

private:
    void restore();
    bool isStretched(int column) const;
    void storeColumns();

    QTreeWidget &m_tree;
    const QString m_columnsKey;
    const QString m_sortKey;
    const QString m_descendingKey;
    bool m_isChosen = false; // by the user, at any time
    bool m_isArranging = false;
};

} // namespace KivSystem

#endif
