#include "TableChild.h"

#include "Console.h"
#include "HostSettings.h"
#include "ViewedFile.h"
#include "Window/WindowText.h"

#include <QAbstractTableModel>
#include <QBoxLayout>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

#include <algorithm>
#include <memory>

namespace KivSystem {

namespace {

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
    TableModel(TableFile file, QObject *parent)
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
               : role == Qt::ToolTipRole ? QVariant(plainToolTip(field))
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

const SettingType &separatorType()
{
    return findSetting(QStringLiteral("field_separator"))->type;
}

QTableView *makeTable()
{
    constexpr int widest = 320;
    auto *table = new QTableView;
    table->setAlternatingRowColors(true);
    table->setTabKeyNavigation(false); // Tab leaves the table, the arrow keys move in it
    table->setAccessibleName(windowText("Fields"));
    table->setToolTip(windowText("A line of the file is a row; fields are numbered from 0"));
    table->horizontalHeader()->setMaximumSectionSize(widest);
    return table;
}

} // namespace

TableChild::TableChild(const QString &path, TableFile table, QWidget *parent)
    : MdiChild(parent)
    , m_path(path)
    , m_table(makeTable())
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_table, 1);
    layout->addLayout(makeChoice(table.separator));
    show(std::move(table));
    setFocusProxy(m_table);
}

QHBoxLayout *TableChild::makeChoice(const QString &separator)
{
    m_separator = new QComboBox;
    m_separator->setObjectName(QStringLiteral("separator"));
    m_separator->setToolTip(windowText("What stands between two fields of a line"));
    m_separator->addItem(windowText("Tab"), QStringLiteral("\t"));
    m_separator->addItem(windowText("Semicolon"), QStringLiteral(";"));
    m_separator->addItem(windowText("Comma"), QStringLiteral(","));
    m_separator->addItem(windowText("Vertical bar"), QStringLiteral("|"));
    m_separator->addItem(windowText("Space"), QStringLiteral(" "));
    m_separator->addItem(windowText("None"), QString());
    m_separator->addItem(windowText("Other"));
    m_other = new QLineEdit;
    m_other->setObjectName(QStringLiteral("otherSeparator"));
    m_other->setMaximumWidth(80);
    m_other->setAccessibleName(windowText("Other separator"));
    m_other->setToolTip(windowText("The separator, where it is none of the list; \\t, \\n, \\r, "
                                   "\\\\ and \\xHH stand for bytes"));
    const int other = m_separator->count() - 1;
    const int listed = separator.isEmpty() ? other - 1 : m_separator->findData(separator);
    m_separator->setCurrentIndex(listed < 0 ? other : listed);
    m_other->setText(listed < 0 ? separatorType().format(separator.toUtf8()) : QString());
    m_other->setEnabled(listed < 0);
    connect(m_separator, qOverload<int>(&QComboBox::currentIndexChanged), this, [=](int chosen) {
        m_other->setEnabled(chosen == other);
        readAgain();
    });
    connect(m_other, &QLineEdit::textEdited, this, [this] { readAgain(); });
    m_sum = new QLabel;
    m_sum->setObjectName(QStringLiteral("sum"));
    m_sum->setWordWrap(true);
    m_sum->setTextFormat(Qt::PlainText);
    m_sum->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *label = new QLabel(windowText("&Separator"));
    label->setBuddy(m_separator);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_separator);
    row->addWidget(m_other);
    row->addSpacing(10);
    row->addWidget(m_sum, 1);
    return row;
}

// None while it is still to be typed.
std::optional<QString> TableChild::chosenSeparator() const
{
    if (!m_other->isEnabled()) {
        return m_separator->currentData().toString();
    }
    const QVariant bytes = separatorType().parse(m_other->text());
    const bool isTyped = bytes.isValid() && !m_other->text().isEmpty();
    return isTyped ? std::optional(QString::fromUtf8(bytes.toByteArray())) : std::nullopt;
}

// A fault leaves the table as it is.
void TableChild::readAgain()
{
    const std::optional<QString> separator = chosenSeparator();
    if (!separator) {
        return;
    }
    try {
        FileContent content = readExportedFile(m_path, separator);
        if (auto *table = std::get_if<TableFile>(&content)) {
            show(std::move(*table));
        } else {
            m_sum->setText(windowText("%1: the file is no report any more").arg(m_path));
        }
    } catch (const HostError &error) {
        m_sum->setText(windowText("still with the separator of before: %1").arg(error.sentence()));
    }
}

void TableChild::show(TableFile table)
{
    constexpr int mostMeasured = 200; // rows, and columns
    QString sum = windowText("lines: %1   columns: %2").arg(table.rows.size()).arg(table.columns);
    if (table.isSingleByte) {
        sum += QStringLiteral("   ") + windowText("read as Windows-1252");
    }
    if (!table.doubt.isEmpty()) {
        sum += QStringLiteral("   ") + windowText("without a separator: %1").arg(table.doubt);
    }
    m_sum->setText(sum);
    const int columns = std::min(table.columns, mostMeasured);
    const int row = m_table->currentIndex().row();
    const std::unique_ptr<QAbstractItemModel> before(m_table->model());
    m_table->setModel(new TableModel(std::move(table), m_table));
    m_table->horizontalHeader()->setResizeContentsPrecision(mostMeasured);
    for (int column = 0; column < columns; ++column) {
        m_table->resizeColumnToContents(column);
    }
    m_table->setCurrentIndex(m_table->model()->index(std::max(row, 0), 0));
}

} // namespace KivSystem
