#include "TypeAhead.h"

#include <QKeyEvent>
#include <QWidget>

namespace KivSystem {

namespace {

bool isLetter(const QKeyEvent &event)
{
    return !event.text().isEmpty() && event.text().at(0).isPrint() &&
           !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

// Before a key is looked up in the menus, Qt asks the widget whether it wants it for itself.
class LetterKeeper : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ShortcutOverride &&
            isLetter(*static_cast<QKeyEvent *>(event))) {
            event->accept();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }
};

// The editing keys of another system that Qt knows for text fields.
class ControlKeyLeaver : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::ShortcutOverride) {
            return QObject::eventFilter(watched, event);
        }
        const auto &key = static_cast<QKeyEvent &>(*event);
        const bool isLeft = key.modifiers() == Qt::ControlModifier &&
                            (key.key() == Qt::Key_E || key.key() == Qt::Key_K);
        if (isLeft) {
            event->ignore();
        }
        return isLeft;
    }
};

} // namespace

void keepTypedLetters(QWidget &list)
{
    list.installEventFilter(new LetterKeeper(&list));
}

void leaveControlKeys(QWidget &field)
{
    field.installEventFilter(new ControlKeyLeaver(&field));
}

} // namespace KivSystem
