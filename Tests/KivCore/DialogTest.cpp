#include "KivCore/Dialog.h"
#include "KivCore/Application.h"
#include "KivCore/Validator.h"
#include "Support/ScriptedUserInterface.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>

namespace KivSystem {
namespace {

/// Two pages: a length and an angle on the first, a percentage on the second.
class Panel final : public KivDialog
{
public:
    explicit Panel(QWidget *parent = nullptr) : KivDialog(parent), tabs(new QTabWidget(this))
    {
        setWindowTitle("Cut Parameters");
        auto *const layout = new QVBoxLayout(this);
        layout->addWidget(tabs);
        auto *const first = addPage();
        length = addField(first, "&Length:");
        length->setValidator(new KivLengthValidator(1, 50, false, length));
        angle = addField(first, "Angle:");
        angle->setValidator(new KivAngleValidator(0, 360, false, angle));
        scale = addField(addPage(), "");
        scale->setValidator(new KivPercentageValidator(0.1, 1, false, scale));
        length->setText("10");
        angle->setText("45");
        scale->setText("100");
    }

    QTabWidget *const tabs;
    QLineEdit *length;
    QLineEdit *angle;
    QLineEdit *scale;
    bool ownCheck = true;
    QString ownMessage;

protected:
    bool doValidateInputs(QString &message) override
    {
        message = ownMessage;
        return ownCheck;
    }

private:
    QFormLayout *addPage()
    {
        auto *const page = new QWidget(tabs);
        tabs->addTab(page, QString());
        return new QFormLayout(page);
    }

    static QLineEdit *addField(QFormLayout *form, const char *label)
    {
        auto *const edit = new QLineEdit(form->parentWidget());
        form->addRow(label, edit);
        return edit;
    }
};

class KivDialogTest : public testing::Test
{
protected:
    KivDialogTest()
    {
        auto owned = std::make_unique<ScriptedUserInterface>();
        user = owned.get();
        application = std::make_unique<KivApplication>(std::move(owned), QDir());
    }

    std::string lastWarning() const
    {
        return user->warnings.empty() ? "" : user->warnings.back().message.toStdString();
    }

    ScriptedUserInterface *user;
    std::unique_ptr<KivApplication> application;
};

TEST_F(KivDialogTest, ReportsTheFirstBadFieldOfTheVisiblePageInTabOrder)
{
    Panel panel;
    EXPECT_TRUE(panel.validateInputs());
    panel.scale->setText("5");
    EXPECT_TRUE(panel.validateInputs()) << "the second page is not in front";

    panel.length->setText("51");
    panel.angle->setText("x");
    EXPECT_FALSE(panel.validateInputs());
    ASSERT_EQ(user->warnings.size(), 1u) << "the first failure only";
    EXPECT_EQ(lastWarning(), "Length: enter a value from 1.00 cm to 50.00 cm.");
    EXPECT_EQ(user->warnings.back().title, "Cut Parameters");
    EXPECT_EQ(panel.focusWidget(), panel.length);

    QWidget::setTabOrder(panel.angle, panel.length);
    EXPECT_FALSE(panel.validateInputs());
    EXPECT_EQ(panel.focusWidget(), panel.angle);

    panel.tabs->setCurrentIndex(1);
    EXPECT_FALSE(panel.validateInputs());
    EXPECT_EQ(lastWarning(), "Enter a value from 10.00% to 100.00%.");
}

TEST_F(KivDialogTest, PassesOverFieldsThatCannotBeEdited)
{
    Panel panel;
    panel.length->setText("0");
    panel.length->setEnabled(false);
    panel.angle->setText("400");
    panel.angle->hide();
    EXPECT_TRUE(panel.validateInputs());
    panel.angle->show();
    panel.tabs->widget(0)->setEnabled(false);
    EXPECT_TRUE(panel.validateInputs()) << "disabled with its page";
    EXPECT_TRUE(user->warnings.empty());
}

TEST_F(KivDialogTest, ChecksItsOwnFieldsOnlyWhereItIsEmbedded)
{
    QWidget host;
    Panel panel(&host);
    Panel neighbour(&host);
    panel.setWindowFlags(Qt::Widget);
    neighbour.setWindowFlags(Qt::Widget);
    neighbour.length->setText("0");
    host.show();
    panel.show();
    neighbour.show();
    EXPECT_TRUE(panel.validateInputs());
    panel.angle->setText("-1");
    EXPECT_FALSE(panel.validateInputs());
    EXPECT_EQ(host.focusWidget(), panel.angle);
}

TEST_F(KivDialogTest, ClosesOnlyWhenFieldsAndOwnCheckPass)
{
    const struct
    {
        const char *length;
        bool ownCheck;
        const char *ownMessage;
        int result;
        std::size_t warnings;
    } cases[] = {
        {"10", true, "not shown", QDialog::Accepted, 0},
        {"10", false, "", QDialog::Rejected, 0},
        {"10", false, "lengths cross", QDialog::Rejected, 1},
        {"0", false, "lengths cross", QDialog::Rejected, 1},
    };
    for (const auto &c : cases) {
        user->warnings.clear();
        user->dialogs.push_back([](KivDialog &dialog) {
            dialog.accept();
            return dialog.result();
        });
        Panel panel;
        panel.length->setText(c.length);
        panel.ownCheck = c.ownCheck;
        panel.ownMessage = c.ownMessage;
        EXPECT_EQ(panel.exec(), c.result) << c.length << c.ownMessage;
        EXPECT_EQ(user->warnings.size(), c.warnings) << c.length << c.ownMessage;
    }
}

TEST_F(KivDialogTest, WithoutAnApplicationItRunsAndWarnsByItself)
{
    application.reset();
    Panel panel;
    panel.length->setText("0");
    QString told;
    QTimer::singleShot(0, &panel, [&panel, &told]() {
        QTimer::singleShot(0, &panel, [&panel, &told]() {
            auto *const box = panel.findChild<QMessageBox *>();
            told = box->text();
            box->reject();
        });
        panel.accept();
        panel.length->setText("2");
        panel.accept();
    });
    EXPECT_EQ(panel.exec(), QDialog::Accepted);
    EXPECT_EQ(told, "Length: enter a value from 1.00 cm to 50.00 cm.");
}

} // namespace
} // namespace KivSystem
