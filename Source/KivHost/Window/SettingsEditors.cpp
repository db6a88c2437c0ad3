#include "SettingsEditors.h"

#include "KivCore/Locale.h"
#include "WindowText.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>

#include <cmath>

namespace KivSystem {

namespace {

using Input = SettingType::Input;

bool hasNamedDefault(const Setting &setting)
{
    return !setting.type.parse(setting.defaultText).isValid();
}

QStringList choicesOf(const Setting &setting)
{
    QStringList choices = setting.type.choices;
    if (setting.type.input == Input::WholeNumber) {
        for (int number = int(setting.type.lowest); number <= int(setting.type.highest); ++number) {
            choices << QString::number(number);
        }
    }
    if (hasNamedDefault(setting)) {
        choices.prepend(setting.defaultText);
    }
    return choices;
}

SettingEditor comboEditor(const Setting &setting)
{
    auto *combo = new QComboBox;
    for (const QString &choice : choicesOf(setting)) {
        combo->addItem(choiceLabel(setting, choice), choice);
    }
    return {&setting, combo, [combo] { return combo->currentData().toString(); },
        [combo](const QString &text) { combo->setCurrentIndex(qMax(0, combo->findData(text))); },
        [] { return true; }};
}

SettingEditor flagEditor(const Setting &setting)
{
    auto *box = new QCheckBox(labelOf(setting));
    return {&setting, box,
        [box] { return box->isChecked() ? QStringLiteral("true") : QStringLiteral("false"); },
        [box](const QString &text) { box->setChecked(text == QLatin1String("true")); },
        [] { return true; }};
}

// How many of the user's units a setting's unit has, and how they are written.
struct ShownUnit
{
    double factor = 1;
    QString suffix;
    int decimals = 2;
};

ShownUnit shownUnit(const Setting &setting)
{
    constexpr double kInch = 2.54;
    if (setting.type.unit != QLatin1String("cm")) {
        const QString unit = setting.type.unit;
        return {1, unit.isEmpty() ? QString() : QLatin1Char(' ') + unit, 2};
    }
    const LengthUnit unit = KivLocale::applicationConventions().length;
    const QString suffix = QLatin1Char(' ') + unitSymbol(unit);
    return unit == LengthUnit::Inch         ? ShownUnit{1 / kInch, suffix, 4}
           : unit == LengthUnit::Millimetre ? ShownUnit{10, suffix, 2}
                                            : ShownUnit{1, suffix, 3};
}

SettingEditor numberEditor(const Setting &setting)
{
    const ShownUnit unit = shownUnit(setting);
    const double step = std::pow(10, unit.decimals);
    auto *spin = new QDoubleSpinBox;
    spin->setDecimals(unit.decimals);
    spin->setSuffix(unit.suffix);
    QLocale locale; // a German 1.234 is neither a number of one nor of thousands
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    spin->setLocale(locale);
    // Rounded inwards: what is shown can be had.
    spin->setRange(std::ceil(setting.type.lowest * unit.factor * step - 1e-6) / step,
        std::floor(setting.type.highest * unit.factor * step + 1e-6) / step);
    spin->setSingleStep(0.1);
    // What the control rounds stays as it was until the user changes it.
    const auto given = std::make_shared<QString>();
    const auto shown = std::make_shared<double>(0);
    const auto text = [spin, given, shown, unit] {
        return spin->value() == *shown ? *given
                                       : QString::number(spin->value() / unit.factor, 'g',
                                             QLocale::FloatingPointShortest);
    };
    const auto setText = [spin, given, shown, unit](const QString &value) {
        spin->setValue(value.toDouble() * unit.factor);
        *given = value;
        *shown = spin->value();
    };
    return {&setting, spin, text, setText, [] { return true; }};
}

SettingEditor colorEditor(const Setting &setting)
{
    auto *button = new QPushButton;
    const auto setText = [button](const QString &text) {
        QPixmap swatch(32, 14);
        swatch.fill(QColor(text));
        button->setIcon(swatch);
        button->setIconSize(swatch.size());
        button->setText(text);
    };
    QObject::connect(button, &QPushButton::clicked, button, [button, setText, &setting] {
        const QColor color =
            QColorDialog::getColor(QColor(button->text()), button->window(), labelOf(setting));
        if (color.isValid()) {
            setText(color.name());
        }
    });
    return {&setting, button, [button] { return button->text(); }, setText, [] { return true; }};
}

SettingEditor textEditor(const Setting &setting)
{
    auto *edit = new QLineEdit;
    const auto isValid = [edit, &setting] { return setting.type.parse(edit->text()).isValid(); };
    QObject::connect(edit, &QLineEdit::textChanged, edit, [edit, isValid] {
        edit->setStyleSheet(isValid() ? QString() : QStringLiteral("color: #b00020"));
    });
    return {&setting, edit, [edit] { return edit->text(); },
        [edit](const QString &text) { edit->setText(text); }, isValid};
}

SettingEditor editorFor(const Setting &setting)
{
    switch (setting.type.input) {
    case Input::Choice:
    case Input::WholeNumber:
        return comboEditor(setting);
    case Input::Flag:
        return flagEditor(setting);
    case Input::Number:
        return numberEditor(setting);
    case Input::Color:
        return colorEditor(setting);
    case Input::Text:
        break;
    }
    return textEditor(setting);
}

// A number is told as its control shows it, in the user's unit.
QString toolTipOf(const SettingEditor &editor)
{
    const Setting &setting = *editor.setting;
    QString meaning = setting.type.meaning;
    QString fallback = setting.defaultText;
    if (auto *spin = qobject_cast<QDoubleSpinBox *>(editor.control)) {
        const auto shown = [spin](double value) {
            return spin->textFromValue(value) + spin->suffix();
        };
        meaning = windowText("from %1 to %2").arg(shown(spin->minimum()), shown(spin->maximum()));
        editor.setText(setting.defaultText);
        fallback = spin->text();
    }
    return windowText("%1: %2; default: %3").arg(setting.name, meaning, fallback);
}

// Who scrolls the page changes no value on the way.
class WheelGuard : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *object, QEvent *event) override
    {
        const auto *control = qobject_cast<QWidget *>(object);
        if (event->type() != QEvent::Wheel || control == nullptr || control->hasFocus()) {
            return false;
        }
        event->ignore();
        return true;
    }
};

} // namespace

SettingEditor makeEditor(const Setting &setting)
{
    SettingEditor editor = editorFor(setting);
    editor.control->setObjectName(setting.name);
    editor.control->setFocusPolicy(Qt::StrongFocus); // not by the wheel
    editor.control->installEventFilter(new WheelGuard(editor.control));
    editor.control->setAccessibleName(labelOf(setting));
    editor.control->setToolTip(toolTipOf(editor));
    return editor;
}

QString labelOf(const Setting &setting)
{
    QString label = setting.meaning;
    label[0] = label[0].toUpper();
    const QString digit = setting.name.right(1); // the colours differ in their number alone
    return setting.type.input == Input::Color ? QStringLiteral("%1 %2").arg(label, digit) : label;
}

QString choiceLabel(const Setting &setting, const QString &choice)
{
    static const QMap<QString, const char *> words = {
        {QStringLiteral("cm"), "Centimetre"},
        {QStringLiteral("mm"), "Millimetre"},
        {QStringLiteral("in"), "Inch"},
        {QStringLiteral("as unit"), "As the unit of lengths"},
        {QStringLiteral("by unit"), "By unit"},
        {QStringLiteral("system"), "As the system"},
        {QStringLiteral("en"), "English"},
        {QStringLiteral("de"), "Deutsch"},
        {QStringLiteral("fr"), "Fran\xc3\xa7"
                               "ais"},
    };
    const auto word = words.constFind(choice);
    if (word != words.constEnd()) {
        return windowText(*word);
    }
    return setting.type.unit.isEmpty() ? choice
                                       : QStringLiteral("%1 %2").arg(choice, setting.type.unit);
}

} // namespace KivSystem
