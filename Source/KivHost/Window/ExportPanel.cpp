#include "ExportPanel.h"

#include <QAbstractSpinBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

namespace KivSystem {

namespace {

// The panel and its fields that check what is typed.
QList<QWidget *> watchedIn(QWidget &panel)
{
    QList<QWidget *> watched{&panel};
    for (QLineEdit *field : panel.findChildren<QLineEdit *>()) {
        watched << field;
    }
    for (QAbstractSpinBox *field : panel.findChildren<QAbstractSpinBox *>()) {
        watched << field;
    }
    return watched;
}

} // namespace

ExportPanel::ExportPanel(QWidget *parent)
    : QScrollArea(parent)
    , m_text(new QLabel)
    , m_frame(new QWidget)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus); // Tab goes to the fields
    m_text->setWordWrap(true);
    m_text->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_text->setMargin(8);
    auto *layout = new QVBoxLayout(m_frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
    setWidget(m_frame);
}

ExportPanel::~ExportPanel()
{
    release();
}

void ExportPanel::showPanel(QWidget *panel, const QString &text)
{
    release();
    m_text->setText(text);
    m_text->setVisible(panel == nullptr);
    m_panel = panel;
    int width = 0;
    if (panel != nullptr) {
        panel->setParent(m_frame, Qt::Widget);
        m_frame->layout()->addWidget(panel);
        for (QWidget *watched : watchedIn(*panel)) {
            watched->installEventFilter(this);
        }
        panel->show();
        width = panel->minimumSizeHint().expandedTo(panel->minimumSize()).width();
    }
    setMinimumWidth(qMin(qMax(minimumWidth(), width + verticalScrollBar()->sizeHint().width()),
        screen()->availableGeometry().width() / 2)); // above, it scrolls
}

QWidget *ExportPanel::lastField() const
{
    QWidget *last = m_panel;
    for (QWidget *next = last; next != nullptr && m_panel->isAncestorOf(next->nextInFocusChain());
         next = next->nextInFocusChain()) {
        last = next->nextInFocusChain();
    }
    return last;
}

void ExportPanel::release()
{
    if (m_panel != nullptr) {
        for (QWidget *watched : watchedIn(*m_panel)) {
            watched->removeEventFilter(this);
        }
        m_frame->layout()->removeWidget(m_panel);
        m_panel->setParent(nullptr);
    }
    m_panel = nullptr;
}

QVariantList ExportPanel::valuesIn(const QWidget &panel)
{
    QVariantList values;
    for (const QWidget *field : panel.findChildren<QWidget *>()) {
        const QMetaProperty value = field->metaObject()->userProperty();
        if (value.isValid()) {
            values << value.read(field);
        }
    }
    return values;
}

// A panel that is a dialog of its own would take the two keys and close. A field with a wrong value
// would mend it at Enter, and what it makes of it would be exported before the user sees it.
bool ExportPanel::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto *field = qobject_cast<QLineEdit *>(object);
    const auto *spinBox = qobject_cast<QAbstractSpinBox *>(object);
    const bool isWrong = (field != nullptr && !field->hasAcceptableInput()) ||
                         (spinBox != nullptr && !spinBox->hasAcceptableInput());
    return (isWrong || object == m_panel) && takeKey(static_cast<QKeyEvent *>(event)->key());
}

bool ExportPanel::takeKey(int key)
{
    const bool accepts = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (accepts && onAccept) {
        onAccept();
    } else if (key == Qt::Key_Escape && onReject) {
        onReject();
    }
    return accepts || key == Qt::Key_Escape;
}

} // namespace KivSystem
