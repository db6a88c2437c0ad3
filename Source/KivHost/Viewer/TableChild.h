// TableChild: a report as a table, with a choice of what separates its fields.
#ifndef KIVHOST_TABLECHILD_H
#define KIVHOST_TABLECHILD_H

#include "FileReaders.h"
#include "KivCore/MainWindow.h"

#include <optional>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QTableView;

namespace KivSystem {

class TableChild : public MdiChild
{
    Q_OBJECT

public:
    /// The table of the file at `path`, which is read again when another separator is chosen.
    TableChild(const QString &path, TableFile table, QWidget *parent = nullptr);

private:
    QHBoxLayout *makeChoice(const QString &separator);
    std::optional<QString> chosenSeparator() const;
    void readAgain();
    void show(TableFile table);

    const QString m_path;
    QTableView *m_table = nullptr;
    QComboBox *m_separator = nullptr;
    QLineEdit *m_other = nullptr; // typed when none of the list is it
    QLabel *m_sum = nullptr;
};

} // namespace KivSystem

#endif
