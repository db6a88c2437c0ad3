// ScriptedUserInterface: answers the questions of KivApplication from queues that a test fills,
// and records what was asked. A question without an answer left is a failure of the test and is
// answered as if the user had cancelled.
//
//     auto owned = std::make_unique<ScriptedUserInterface>();
//     ScriptedUserInterface &user = *owned;
//     const KivApplication application(std::move(owned), pluginsDir);
//     user.saveNames.push_back("/tmp/a.txt");
#ifndef KIVTESTS_SCRIPTEDUSERINTERFACE_H
#define KIVTESTS_SCRIPTEDUSERINTERFACE_H

#include "KivCore/Dialog.h"
#include "KivCore/MainWindow.h"
#include "KivCore/UserInterface.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <vector>

namespace KivSystem {

class ScriptedUserInterface final : public KivUserInterface
{
public:
    struct SaveQuestion
    {
        QStringList filters;
        QString title;
        QString proposedName;
    };
    struct Question
    {
        QString message;
        QString title;
        QStringList buttons;
    };
    struct Warning
    {
        QString message;
        QString title;
    };

    /// Answers, taken from the front.
    std::deque<QString> saveNames; ///< empty: cancelled
    std::deque<int> choices;       ///< 0-based button
    std::deque<std::function<int(KivDialog &)>> dialogs;

    /// What was asked, in order.
    std::vector<SaveQuestion> saveQuestions;
    std::vector<Question> questions;
    std::vector<Warning> warnings; ///< warnings need no answer

    MainWindow *window = nullptr; ///< borrowed

    MainWindow *mainWindow() const override { return window; }

    QString getSaveFileName(const QStringList &filters, const QString &title,
        const QString &proposedName, int *selectedFilter, QWidget *) override
    {
        saveQuestions.push_back({filters, title, proposedName});
        const QString name = next(saveNames, QString(), "file name", proposedName);
        if (selectedFilter && !name.isEmpty()) {
            *selectedFilter = 0;
        }
        return name;
    }

    int confirmContinue(const QString &message, const QString &title, const QString &button1,
        const QString &button2, const QString &button3, QWidget *) override
    {
        questions.push_back({message, title, {button1, button2, button3}});
        return next(choices, 2, "choice", message);
    }

    void displayWarning(const QString &message, const QString &title, QWidget *) override
    {
        warnings.push_back({message, title});
    }

    int execDialog(KivDialog &dialog) override
    {
        const std::function<int(KivDialog &)> cancel = [](KivDialog &) {
            return int(QDialog::Rejected);
        };
        return next(dialogs, cancel, "dialog", dialog.windowTitle())(dialog);
    }

private:
    template <class Answer>
    static Answer next(
        std::deque<Answer> &answers, const Answer &none, const char *kind, const QString &question)
    {
        if (answers.empty()) {
            ADD_FAILURE() << "no " << kind << " left for: " << question.toStdString();
            return none;
        }
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

} // namespace KivSystem

#endif
