#include "ExportPanel.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

namespace KivSystem {

ExportPanel::ExportPanel(QWidget *parent)
    : QScrollArea(parent)
    , m_text(new QLabel)
    , m_frame(new QWidget)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
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
        panel->installEventFilter(this);
        for (QLineEdit *field : panel->findChildren<QLineEdit *>()) {
            field->installEventFilter(this);
        }
        panel->show();
        width = panel->minimumSizeHint().expandedTo(panel->minimumSize()).width();
    }
    setMinimumWidth(qMin(qMax(minimumWidth(), width + verticalScrollBar()->sizeHint().width()),
        screen()->availableGeometry().width() / 2)); // above, it scrolls
}

void ExportPanel::release()
{
    if (m_panel != nullptr) {
        m_panel->removeEventFilter(this);
        for (QLineEdit *field : m_panel->findChildren<QLineEdit *>()) {
            field->removeEventFilter(this);
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
    const bool isMeant = field != nullptr ? !field->hasAcceptableInput() : object == m_panel;
    return isMeant && takeKey(static_cast<QKeyEvent *>(event)->key());
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
