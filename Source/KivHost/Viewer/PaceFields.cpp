#include "PaceFields.h"

#include "KivCore/Locale.h"
#include "Window/WindowText.h"

#include <QBoxLayout>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLocale>
#include <QSettings>
#include <QSignalBlocker>

#include <array>
#include <cmath>

namespace KivSystem {

namespace {

constexpr double kLeastSpeed = 0.1; // m/min
constexpr double kMostSpeed = 500;
constexpr double kLongestTime = 600; // s

bool isInInches()
{
    return KivLocale::applicationConventions().length == LengthUnit::Inch;
}

// How much of the shown unit a metre a minute is.
double shownSpeed()
{
    return isInInches() ? 100 / 2.54 / 60 : 1;
}

} // namespace

struct PaceFields::Field
{
    const char *key; // in the settings; of m/min and seconds
    double CutPace::*value;
    bool isSpeed;
    const char *label;
    const char *tip;

    double least() const { return isSpeed ? kLeastSpeed : 0; }
    double most() const { return isSpeed ? kMostSpeed : kLongestTime; }
    static const std::array<Field, 5> &all();
};

const std::array<PaceFields::Field, 5> &PaceFields::Field::all()
{
    static const std::array<Field, 5> fields{{
        {"viewer/knife_speed", &CutPace::knife, true, "&Knife",
            "Full speed of the knife and of the pen, for the time"},
        {"viewer/idle_speed", &CutPace::idle, true, "&Idle",
            "Speed with all tools up, for the time"},
        {"viewer/plunge_time", &CutPace::plunge, false, "P&lunge",
            "How long the knife takes down and up again, each time"},
        {"viewer/drill_time", &CutPace::drill, false, "&Drill", "How long each hole takes"},
        {"viewer/advance_time", &CutPace::advance, false, "&Advance",
            "How long the conveyor takes for a frame"},
    }};
    return fields;
}

PaceFields::PaceFields(QWidget *parent) : QWidget(parent)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (const Field &field : Field::all()) {
        add(field);
    }
    row->addStretch(1);
    applyUnit();
}

void PaceFields::add(const Field &field)
{
    const QString key = QLatin1String(field.key);
    bool isNumber = false;
    const double stored = QSettings().value(key).toDouble(&isNumber);
    if (isNumber && std::isfinite(stored)) {
        m_pace.*field.value = qBound(field.least(), stored, field.most());
    }
    auto *box = new QDoubleSpinBox;
    QLocale locale; // an English 7,5 is not 75
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    box->setLocale(locale);
    box->setObjectName(key);
    box->setToolTip(windowText(field.tip));
    connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
        [this, &field](double shown) { take(field, shown); });
    auto *label = new QLabel(windowText(field.label));
    label->setBuddy(box);
    layout()->addWidget(label);
    layout()->addWidget(box);
    m_boxes.push_back(box);
}

void PaceFields::take(const Field &field, double shown)
{
    m_pace.*field.value = field.isSpeed ? shown / shownSpeed() : shown;
    QSettings().setValue(QLatin1String(field.key), m_pace.*field.value);
    emit changed();
}

void PaceFields::applyUnit()
{
    std::size_t number = 0;
    for (const Field &field : Field::all()) {
        QDoubleSpinBox *box = m_boxes[number++];
        const QSignalBlocker blocker(box); // its rounded value is not the one that holds
        const double factor = field.isSpeed ? shownSpeed() : 1;
        box->setDecimals(field.isSpeed ? 1 : 2);
        box->setSingleStep(field.isSpeed ? 1 : 0.1);
        box->setSuffix(!field.isSpeed
                           ? windowText(" s")
                           : (isInInches() ? windowText(" in/s") : windowText(" m/min")));
        box->setRange(field.least() * factor, field.most() * factor);
        box->setValue(m_pace.*field.value * factor);
    }
}

} // namespace KivSystem
