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

} // namespace

void keepTypedLetters(QWidget &list)
{
    list.installEventFilter(new LetterKeeper(&list));
}

} // namespace KivSystem
