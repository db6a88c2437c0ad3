#include "SettingsDialog.h"

#include "Console.h"
#include "KivCore/Application.h"
#include "SettingsEditors.h"
#include "WindowText.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QStackedWidget>
#include <QTextStream>
#include <QVBoxLayout>

#include <algorithm>

namespace KivSystem {

namespace {

constexpr int kFirstWidth = 720;
constexpr int kFirstHeight = 520;

struct SettingsPage
{
    const char *title;
    const char *note; ///< under the settings; null for none
    std::function<bool(const QString &name)> has;
};

bool isLetterSize(const QString &name)
{
    return name.endsWith(QLatin1String("LetterSize"), Qt::CaseInsensitive);
}

// Settings of the cutters are on the panels of their formats, and so is the choice of fields.
const std::vector<SettingsPage> &settingsPages()
{
    static const QStringList units = {QStringLiteral("unit"), QStringLiteral("ruler_x"),
        QStringLiteral("ruler_y"), QStringLiteral("decimals"), QStringLiteral("field_separator"),
        QStringLiteral("repeat_separator"), QStringLiteral("one_line_per_size")};
    static const std::vector<SettingsPage> pages = {
        {"Units", "In separators \\t, \\n, \\r, \\\\ and \\xHH stand for bytes.",
            [](const QString &name) { return units.contains(name); }},
        {"Language", "Another language takes effect at the next start.",
            [](const QString &name) { return name == QLatin1String("language"); }},
        {"Plot options", nullptr,
            [](const QString &name) {
                return name.startsWith(QLatin1String("plot_")) && !isLetterSize(name);
            }},
        {"Letters", nullptr, isLetterSize},
        {"Nesting", nullptr,
            [](const QString &name) { return name.startsWith(QLatin1String("nest_")); }},
    };
    return pages;
}

// With an ampersand before the first letter that is not among those in use, to which it is added.
QString withMnemonic(const QString &text, QString &used)
{
    for (int at = 0; at < text.size(); ++at) {
        const QChar letter = text[at].toLower();
        if (letter.isLetter() && !used.contains(letter)) {
            used += letter;
            return QString(text).insert(at, QLatin1Char('&'));
        }
    }
    return text;
}

class SettingsDialog final : public QDialog
{
public:
    explicit SettingsDialog(QWidget *parent);

    void accept() override;

private:
    QWidget *makePage(const SettingsPage &page);
    void addEditor(QFormLayout *form, const Setting &setting, QString &mnemonics);
    void restoreDefaults();
    bool validate();
    bool store();

    QListWidget *m_list;
    QStackedWidget *m_pages;
    QDialogButtonBox *m_buttons;
    std::vector<SettingEditor> m_editors;
    std::vector<QString> m_stored; // for each editor
};

SettingsDialog::SettingsDialog(QWidget *parent)
    : QDialog(parent)
    , m_list(new QListWidget)
    , m_pages(new QStackedWidget)
    , m_buttons(new QDialogButtonBox(
          QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::RestoreDefaults))
{
    setObjectName(QStringLiteral("settingsDialog"));
    setWindowTitle(windowText("Settings"));
    m_list->setObjectName(QStringLiteral("pages"));
    m_list->setAccessibleName(windowText("Pages"));
    m_buttons->button(QDialogButtonBox::RestoreDefaults)
        ->setToolTip(windowText("Put the defaults into the controls of this page"));
    for (const SettingsPage &page : settingsPages()) {
        m_list->addItem(windowText(page.title));
        m_pages->addWidget(makePage(page));
    }
    m_list->setFixedWidth(m_list->sizeHintForColumn(0) + 40);
    connect(m_list, &QListWidget::currentRowChanged, m_pages, &QStackedWidget::setCurrentIndex);
    m_list->setCurrentRow(0);
    connect(m_buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(m_buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    connect(m_buttons->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
        [this] { restoreDefaults(); });

    auto *middle = new QHBoxLayout;
    middle->addWidget(m_list);
    middle->addWidget(m_pages, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(middle);
    layout->addWidget(m_buttons);
    resize(QSize(kFirstWidth, kFirstHeight).boundedTo(screen()->availableGeometry().size()));
}

QWidget *SettingsDialog::makePage(const SettingsPage &page)
{
    auto *content = new QWidget;
    auto *form = new QFormLayout(content);
    QString mnemonics = QStringLiteral("oc"); // of OK and Cancel
    for (const Setting &setting : hostSettings()) {
        if (page.has(setting.name)) {
            addEditor(form, setting, mnemonics);
        }
    }
    if (page.note != nullptr) {
        auto *note = new QLabel(windowText(page.note));
        note->setWordWrap(true);
        form->addRow(note);
    }
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // Tab goes from one control to the next
    area->setWidgetResizable(true);
    area->setWidget(content);
    area->setMinimumWidth(
        qMin(content->minimumSizeHint().width() + area->verticalScrollBar()->sizeHint().width(),
            screen()->availableGeometry().width() / 2)); // above, it scrolls
    return area;
}

void SettingsDialog::addEditor(QFormLayout *form, const Setting &setting, QString &mnemonics)
{
    const QSettings store;
    SettingEditor editor = makeEditor(setting);
    const QString stored = currentText(setting, store);
    editor.setText(findStoredFault(setting, store).isEmpty() ? stored : setting.defaultText);
    const QString label = withMnemonic(labelOf(setting), mnemonics);
    if (auto *box = qobject_cast<QCheckBox *>(editor.control)) {
        box->setText(label);
        form->addRow(box);
    } else {
        form->addRow(label, editor.control);
    }
    m_stored.push_back(stored);
    m_editors.push_back(std::move(editor));
}

void SettingsDialog::restoreDefaults()
{
    for (const SettingEditor &editor : m_editors) {
        if (m_pages->currentWidget()->isAncestorOf(editor.control)) {
            editor.setText(editor.setting->defaultText);
        }
    }
}

// Brings the first control with a wrong text to the front and tells what it may be.
bool SettingsDialog::validate()
{
    const auto wrong = std::find_if(m_editors.begin(), m_editors.end(),
        [](const SettingEditor &editor) { return !editor.isValid(); });
    if (wrong == m_editors.end()) {
        return true;
    }
    for (int page = 0; page < m_pages->count(); ++page) {
        if (m_pages->widget(page)->isAncestorOf(wrong->control)) {
            m_list->setCurrentRow(page);
        }
    }
    wrong->control->setFocus();
    KivApplication::instance()->displayWarning(
        windowText("%1: expected %2.").arg(labelOf(*wrong->setting), wrong->setting->type.meaning),
        windowTitle(), this);
    return false;
}

// False when the store takes nothing: what is in its memory is then as it was, too.
bool SettingsDialog::store()
{
    QSettings store;
    std::vector<std::pair<QString, QVariant>> before;
    const auto set = [&store](const QString &key, const QVariant &value) {
        if (value.isValid()) {
            store.setValue(key, value);
        } else { // there was none, or a default that has a name and no value
            store.remove(key);
        }
    };
    for (std::size_t index = 0; index < m_editors.size(); ++index) {
        const Setting &setting = *m_editors[index].setting;
        const QString text = m_editors[index].text();
        if (text != m_stored[index]) {
            before.emplace_back(setting.key, store.value(setting.key));
            set(setting.key, setting.type.parse(text));
        }
    }
    store.sync();
    if (store.status() == QSettings::NoError) {
        return true;
    }
    for (const auto &[key, value] : before) {
        set(key, value);
    }
    return false;
}

void SettingsDialog::accept()
{
    if (!validate()) {
        return;
    }
    if (store()) {
        QDialog::accept();
        return;
    }
    KivApplication::instance()->displayWarning(
        windowText("%1: the settings cannot be written.").arg(QSettings().fileName()),
        windowTitle(), this);
}

// The running program obeys the store. Bad values in it, which are told at the start, give the
// defaults.
void obeyStore()
{
    QString problems;
    QTextStream stream(&problems);
    const Console console{stream, stream};
    applyConventions(console);
    restoreMarkerSettings(console);
}

} // namespace

bool runSettingsDialog(QWidget *parent)
{
    if (SettingsDialog(parent).exec() != QDialog::Accepted) {
        return false;
    }
    obeyStore();
    return true;
}

} // namespace KivSystem
