// The field dialog and the panel of the user's own report, worked with keys and clicks, and what
// the format remembers of them.

#include "Dialogs/TextExportFormatDialog.h"
#include "Dialogs/TextExportOptionsWidget.h"
#include "ManagerTextProcessor.h"
#include "ScriptedUserInterface.h"
#include "Support.h"
#include "TextProcessorImpl.h"

#include "KivCore/Application.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTest>

namespace KivSystem {
namespace {

// A window with its controls by name.
template <class Window>
struct Shown
{
    template <class... Arguments>
    explicit Shown(Arguments &&...arguments) : window(std::forward<Arguments>(arguments)...)
    {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    template <class Control>
    Control *find(const char *name)
    {
        auto *control = window.template findChild<Control *>(QLatin1String(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }

    Window window;
};

class Dialog : public Shown<TextExportFormatDialog>
{
public:
    explicit Dialog(const TextIndexList &selection)
        : Shown(QStringList{"First", "Second", "Third"},
              QListEx<QStringList>{{"a", "b", "c"}, {"d", "e"}, {"f", "g"}}, selection, nullptr)
    {}

    // Clicks a row with Ctrl, so that the selection grows or shrinks by it.
    static void pick(QListWidget *list, int row)
    {
        const QRect place = list->visualItemRect(list->item(row));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier, place.center());
    }

    void click(const char *button) { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }

    QPushButton *ok() { return find<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Ok); }

    // The names on the right-hand side, as one text.
    QString chosen()
    {
        QString names;
        for (int row = 0; row < destination->count(); ++row) {
            names += destination->item(row)->text();
        }
        return names;
    }

    QListWidget *source = find<QListWidget>("listSource");
    QListWidget *destination = find<QListWidget>("listDestination");
};

TEST(TextExportFormatDialog, BeginsWithTheSelectionOrWithAllFields)
{
    EXPECT_EQ(Dialog({}).chosen(), "abcdefg");
    EXPECT_EQ(Dialog({6, 0, 3}).chosen(), "gad");
    // Past the last, and below the first, is no field; twice is twice.
    EXPECT_EQ(Dialog({7, 1, 99, -1, 1}).chosen(), "bb");

    Dialog dialog({4});
    EXPECT_EQ(dialog.window.windowTitle(), "Export Format");
    EXPECT_EQ(dialog.find<QComboBox>("selectFormat")->itemData(1), 2);
    EXPECT_EQ(dialog.source->count(), 3);
    for (const char *button : {"buttonInsert", "buttonClear"}) {
        EXPECT_FALSE(dialog.find<QPushButton>(button)->icon().availableSizes().isEmpty());
        EXPECT_TRUE(dialog.find<QPushButton>(button)->text().isEmpty());
    }
}

TEST(TextExportFormatDialog, InsertsWhatIsSelectedButNothingTwice)
{
    Dialog dialog({1});
    EXPECT_FALSE(dialog.find<QPushButton>("buttonInsert")->isEnabled());
    Dialog::pick(dialog.source, 0);
    Dialog::pick(dialog.source, 1); // stands there already
    Dialog::pick(dialog.source, 2);
    EXPECT_TRUE(dialog.find<QPushButton>("buttonInsert")->isEnabled());
    dialog.click("buttonInsert");
    EXPECT_EQ(dialog.chosen(), "bac");
    dialog.click("buttonInsert");
    EXPECT_EQ(dialog.chosen(), "bac");

    // Another group: the right-hand side stays, and its fields have their own indexes.
    QTest::keyClick(dialog.find<QComboBox>("selectFormat"), Qt::Key_End);
    EXPECT_EQ(dialog.source->item(0)->text(), "f");
    EXPECT_FALSE(dialog.find<QPushButton>("buttonInsert")->isEnabled());
    Dialog::pick(dialog.source, 1);
    dialog.click("buttonInsert");
    EXPECT_EQ(dialog.chosen(), "bacg");
    QTest::mouseClick(dialog.ok(), Qt::LeftButton);
    EXPECT_EQ(dialog.window.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.window.exportContents(), TextIndexList({1, 0, 2, 6}));
}

TEST(TextExportFormatDialog, RemovesWhatIsSelectedAndAcceptsNoEmptyList)
{
    Dialog dialog({0, 3, 5});
    EXPECT_FALSE(dialog.find<QPushButton>("buttonClear")->isEnabled());
    Dialog::pick(dialog.destination, 0);
    Dialog::pick(dialog.destination, 2);
    EXPECT_TRUE(dialog.find<QPushButton>("buttonClear")->isEnabled());
    dialog.click("buttonClear");
    EXPECT_EQ(dialog.chosen(), "d");
    EXPECT_TRUE(dialog.ok()->isEnabled());
    Dialog::pick(dialog.destination, 0);
    dialog.click("buttonClear");
    EXPECT_EQ(dialog.chosen(), "");
    EXPECT_FALSE(dialog.ok()->isEnabled());
    EXPECT_FALSE(dialog.find<QPushButton>("buttonClear")->isEnabled());
    Dialog::pick(dialog.source, 1);
    dialog.click("buttonInsert");
    EXPECT_TRUE(dialog.ok()->isEnabled());

    QTest::keyClick(&dialog.window, Qt::Key_Escape);
    EXPECT_EQ(dialog.window.result(), QDialog::Rejected);
    EXPECT_TRUE(dialog.window.exportContents().isEmpty());
}

TEST(TextExportFormatDialog, TheTabKeyGoesFromLeftToRight)
{
    Dialog dialog({0});
    Dialog::pick(dialog.source, 1);
    Dialog::pick(dialog.destination, 0);
    dialog.window.activateWindow();
    dialog.find<QComboBox>("selectFormat")->setFocus();
    for (const char *next : {"listSource", "buttonInsert", "buttonClear", "listDestination"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->parent(), dialog.find<QDialogButtonBox>("buttonBox"));
}

TextProcessorOptions optionsOf(
    const QByteArray &field, const QByteArray &repeat, bool oneLine = false)
{
    TextProcessorOptions options;
    options.setFiledSeperator(field);
    options.setrepeatSeperator(repeat);
    options.setOneLine(oneLine);
    return options;
}

TEST(TextExportOptionsWidget, GivesBackTheSeparatorsThatItWasGiven)
{
    const struct
    {
        QByteArray given;
        QByteArray back;
        const char *fieldButton;
        const char *repeatButton;
    } cases[] = {
        {"\t", "\t", "radioFiledTab", "radioRepeatTab"},
        {"\x1D", "\x1D", "radioFiledOther", "radioRepeatFiled"},
        {"; ", "; ", "radioFiledOther", "radioRepeatOther"},
        {"", "", "radioFiledOther", "radioRepeatOther"},
        {"\xC3\xA9", "\xC3\xA9", "radioFiledOther", "radioRepeatOther"},
        {QByteArray("a\0b", 3), "a", "radioFiledOther", "radioRepeatOther"},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.given.toStdString());
        Shown<TextExportOptionsWidget> panel(optionsOf(row.given, row.given, true));
        EXPECT_EQ(panel.window.windowTitle(), "Text File Options");
        EXPECT_TRUE(panel.find<QRadioButton>(row.fieldButton)->isChecked());
        EXPECT_TRUE(panel.find<QRadioButton>(row.repeatButton)->isChecked());
        const TextProcessorOptions options = panel.window.options();
        EXPECT_EQ(options.filedSeperator(), row.back);
        EXPECT_EQ(options.repeatSeperator(), row.back);
        EXPECT_TRUE(options.oneLine());
    }
}

TEST(TextExportOptionsWidget, TouchingATextFieldChecksItsButton)
{
    for (const auto &[edit, button] : {std::pair("editFiledOther", "radioFiledOther"),
             std::pair("editRepeatOther", "radioRepeatOther")}) {
        Shown<TextExportOptionsWidget> panel(optionsOf("\t", "\t"));
        EXPECT_FALSE(panel.find<QRadioButton>(button)->isChecked());
        QTest::keyClicks(panel.find<QLineEdit>(edit), "|x");
        EXPECT_TRUE(panel.find<QRadioButton>(button)->isChecked()) << edit;

        // The text stays while the tab is chosen; selecting it chooses it again.
        const char *tab =
            button == std::string("radioFiledOther") ? "radioFiledTab" : "radioRepeatTab";
        QTest::mouseClick(panel.find<QRadioButton>(tab), Qt::LeftButton);
        EXPECT_FALSE(panel.find<QRadioButton>(button)->isChecked());
        QTest::keyClick(panel.find<QLineEdit>(edit), Qt::Key_Home, Qt::ShiftModifier);
        EXPECT_TRUE(panel.find<QRadioButton>(button)->isChecked()) << edit;
    }
    Shown<TextExportOptionsWidget> panel(optionsOf("\t", "\x1D"));
    QTest::keyClick(panel.find<QCheckBox>("checkOneLine"), Qt::Key_Space);
    EXPECT_TRUE(panel.window.options().oneLine());
}

// A job of the format "Text File", and a user whose answer to the dialog a test gives.
class TextFileJob : public testing::Test
{
protected:
    void SetUp() override { QSettings().clear(); }
    void TearDown() override { QSettings().clear(); }

    static std::unique_ptr<KivUserInterface> scripted(ScriptedUserInterface *&user)
    {
        auto owned = std::make_unique<ScriptedUserInterface>();
        user = owned.get();
        return owned;
    }

    static QStringList stored() { return QSettings().value("marker_export_list").toStringList(); }

    static std::string written(Processor &processor, const DocumentMak &document)
    {
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        EXPECT_TRUE(processor.buildDocument(document, &device));
        return device.data().toStdString();
    }

    ScriptedUserInterface *user = nullptr;
    const KivApplication application{scripted(user), QDir()};
    const std::unique_ptr<DocumentMak> document = MarkerBuilder()
                                                      .layer("L")
                                                      .fabric("F;1", {150})
                                                      .style("S", {"36", "38"})
                                                      .garments(1, 1, 1, {1, 2})
                                                      .piece(1, 1, "P")
                                                      .take();
};

TEST_F(TextFileJob, AnAcceptedDialogStoresTheFieldsAndACancelledOneNothing)
{
    NC::TextProcessorImpl job;
    user->dialogs.push_back([](KivDialog &dialog) {
        EXPECT_EQ(dialog.findChild<QListWidget *>("listDestination")->count(), 22);
        EXPECT_EQ(dialog.findChild<QComboBox *>("selectFormat")->itemText(2), "Fabric and Layer");
        dialog.accept();
        return dialog.result();
    });
    EXPECT_TRUE(job.prepare(*document, 0));
    EXPECT_EQ(stored().size(), 22);

    QSettings().setValue("marker_export_list", QStringList{"8", "21"});
    user->dialogs.push_back([](KivDialog &dialog) {
        auto *list = dialog.findChild<QListWidget *>("listDestination");
        EXPECT_EQ(list->item(0)->text(), "Fabric name");
        EXPECT_EQ(list->item(1)->text(), "Breakdown value");
        list->clear();
        dialog.reject();
        return dialog.result();
    });
    EXPECT_FALSE(job.prepare(*document, 0));
    EXPECT_EQ(stored(), QStringList({"8", "21"}));
}

TEST_F(TextFileJob, TheDialogBelongsToTheActiveWindow)
{
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    user->dialogs.push_back([&](KivDialog &dialog) {
        EXPECT_EQ(dialog.parentWidget(), &window);
        return int(QDialog::Rejected);
    });
    NC::TextProcessorImpl job;
    EXPECT_FALSE(job.prepare(*document, 0));
}

TEST_F(TextFileJob, ThePanelIsReadWhenTheFileIsWrittenAndStoredWhenTheJobGoes)
{
    QSettings().setValue("marker_export_list", QStringList{"8", "19"});
    const std::string managers = written(*std::make_unique<NC::ManagerTextProcessor>(), *document);
    {
        NC::TextProcessorImpl job;
        EXPECT_EQ(written(job, *document), "F;1\t36\x1D"
                                           "38\n");
        auto *edit = job.optionsPanel()->findChild<QLineEdit *>("editFiledOther");
        QTest::keyClicks(edit, ";");
        EXPECT_EQ(written(job, *document), "\"F;1\";36\x1D"
                                           "38\n");
        job.optionsPanel()->findChild<QCheckBox *>("checkOneLine")->setChecked(true);
        EXPECT_EQ(written(job, *document), "\"F;1\";36\n\"F;1\";38\n");
        EXPECT_FALSE(QSettings().contains("text_export/option/_0"));
    }
    EXPECT_EQ(QSettings().value("text_export/option/_0").toByteArray(), ";");
    EXPECT_EQ(QSettings().value("text_export/option/_1").toByteArray(), "\x1D");
    EXPECT_TRUE(QSettings().value("text_export/option/_2").toBool());

    // A new job shows them again; the manager's report knows nothing of them.
    NC::TextProcessorImpl next;
    EXPECT_EQ(next.optionsPanel()->findChild<QLineEdit *>("editFiledOther")->text(), ";");
    EXPECT_EQ(written(*std::make_unique<NC::ManagerTextProcessor>(), *document), managers);
}

} // namespace
} // namespace KivSystem
