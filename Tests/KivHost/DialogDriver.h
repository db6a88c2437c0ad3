// DialogDriver: works modal dialogs as a person does, one step after the other. Each step waits
// until a dialog of its kind is in front:
//
//     DialogDriver driver;
//     driver.then("exportDialog", [](QWidget &dialog) { click(dialog, "export"); });
//     driver.then("QMessageBox", [](QWidget &box) { press(box, "Cancel"); });
//     runExportDialog(...);
//     EXPECT_TRUE(driver.isDone());
#ifndef KIVHOST_DIALOGDRIVER_H
#define KIVHOST_DIALOGDRIVER_H

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace KivSystem {

class DialogDriver : public QObject
{
public:
    using Step = std::function<void(QWidget &dialog)>;

    /// `kind` is the dialog's name or class, or the name of something that it shows now.
    void then(const QString &kind, const Step &step)
    {
        if (m_steps.empty()) {
            m_sinceStep.start();
            look();
        }
        m_steps.push_back({kind, step});
    }

    bool isDone() const { return m_steps.empty(); }

private:
    static constexpr int kPatience = 8000; // ms for one step

    void look()
    {
        QTimer::singleShot(5, this, [this] { lookNow(); });
    }

    static bool isOfKind(const QWidget &dialog, const QString &kind)
    {
        const auto *part = dialog.findChild<QWidget *>(kind);
        return dialog.isVisible() &&
               (dialog.metaObject()->className() == kind || dialog.objectName() == kind ||
                   (part != nullptr && part->isVisible()));
    }

    void lookNow()
    {
        QWidget *front = QApplication::activeModalWidget();
        if (m_steps.empty() && front == nullptr) {
            return;
        }
        if (!m_steps.empty() && front != nullptr && isOfKind(*front, m_steps.front().first)) {
            const Step step = m_steps.front().second;
            m_steps.pop_front();
            m_sinceStep.start();
            look(); // a step may open the next dialog and come back when that is closed
            step(*front);
        } else if (m_sinceStep.elapsed() > kPatience) {
            ADD_FAILURE() << "waited for "
                          << (m_steps.empty() ? "the end" : m_steps.front().first.toStdString())
                          << " in front of "
                          << (front == nullptr ? "nothing" : front->metaObject()->className());
            m_steps.clear();
            closeAll();
        } else {
            look();
        }
    }

    void closeAll()
    {
        if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
            QTimer::singleShot(5, this, [this] { closeAll(); });
            dialog->done(QDialog::Rejected);
        }
    }

    std::deque<std::pair<QString, Step>> m_steps;
    QElapsedTimer m_sinceStep;
};

template <class Widget>
Widget &in(QWidget &dialog, const QString &name)
{
    auto *widget = dialog.findChild<Widget *>(name);
    if (widget == nullptr) {
        throw std::logic_error("there is no widget " + name.toStdString());
    }
    return *widget;
}

inline void click(QWidget &dialog, const QString &button)
{
    in<QAbstractButton>(dialog, button).click();
}

/// Clicks a button by its text, without mnemonics.
inline void press(QWidget &dialog, const QString &text)
{
    for (QAbstractButton *button : dialog.findChildren<QAbstractButton *>()) {
        if (button->isVisible() && button->text().remove('&').trimmed() == text) {
            button->click();
            return;
        }
    }
    ADD_FAILURE() << "there is no button " << text.toStdString();
}

} // namespace KivSystem

#endif
